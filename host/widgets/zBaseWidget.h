#pragma once

#include <QFrame>
#include <QSplitter>
#include <QWidget>

// Base of the host's page widgets: a plain widget that paints its style-sheet background.
class zBaseWidget : public QWidget
{
    Q_OBJECT
public:
    explicit zBaseWidget(QWidget* parent = nullptr);
};

// A styled frame.
class zBaseFrame : public QFrame
{
    Q_OBJECT
public:
    explicit zBaseFrame(QWidget* parent = nullptr);
};

// The host's splitter; type and style select the handle look.
class zCommonSplitter : public QSplitter
{
    Q_OBJECT
public:
    zCommonSplitter(int type, int style, QWidget* parent = nullptr);
};
