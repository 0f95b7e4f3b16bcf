#pragma once

#include <QSplitter>

// The host's splitter; type 1 is horizontal (side by side), any other vertical.
class zCommonSplitter : public QSplitter
{
    Q_OBJECT
public:
    zCommonSplitter(int type, int style, QWidget* parent = nullptr);
};
