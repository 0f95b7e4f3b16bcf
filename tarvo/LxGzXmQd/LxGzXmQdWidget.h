#pragma once

#include "common/BillPageWidget.h"

class SporadicWorksWidget;

// The page "零星工作项目人工单价清单".
class LxGzXmQdWidget : public BillPageWidget
{
    Q_OBJECT
public:
    explicit LxGzXmQdWidget(QWidget* parent = nullptr);
    SporadicWorksWidget* sporadicWidget() const { return m_sporadic; }

protected:
    BillSjWidget* createSjWidget() override;
    BillSsWidget* createSsWidget() override;
    QString sourceFile() const override { return QStringLiteral("LxGzXmQd\\LxGzXmQdWidget"); }
    QString className() const override { return QStringLiteral("LxGzXmQdWidget"); }

protected:
    // The daywork page keeps the labour-rate query panel beside its grid.
    void InitWidget() override;
    void afterMsg(int msgId) override;

private:
    SporadicWorksWidget* m_sporadic = nullptr;
};
