#pragma once

#include <QFrame>

// A frame without a border of its own; pages put their splitter into it.
class zBaseFrame : public QFrame
{
    Q_OBJECT
public:
    explicit zBaseFrame(QWidget* parent = nullptr);
};
