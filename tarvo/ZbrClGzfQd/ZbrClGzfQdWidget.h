#pragma once

#include "common/BillPageWidget.h"

// The page "招标人材料购置费清单".
class ZbrClGzfQdWidget : public BillPageWidget
{
    Q_OBJECT
public:
    explicit ZbrClGzfQdWidget(QWidget* parent = nullptr);

protected:
    BillSjWidget* createSjWidget() override;
    BillSsWidget* createSsWidget() override;
    QString sourceFile() const override { return QStringLiteral("ZbrClGzfQd\\ZbrClGzfQdWidget"); }
    QString className() const override { return QStringLiteral("ZbrClGzfQdWidget"); }
};
