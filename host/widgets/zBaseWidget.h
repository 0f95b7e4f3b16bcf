#pragma once

#include "zBaseFrame.h"
#include "zCommonSplitter.h"

#include <QWidget>

// Base of the host's page widgets: a plain widget that paints its style-sheet background.
class zBaseWidget : public QWidget
{
    Q_OBJECT
public:
    explicit zBaseWidget(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};
