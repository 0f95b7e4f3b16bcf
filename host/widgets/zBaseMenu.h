#pragma once

#include <QMenu>

// The host's menu; its title is part of what its items stand for (the formula dialog puts
// a group menu's title in front of the item's text).
class zBaseMenu : public QMenu
{
    Q_OBJECT
public:
    explicit zBaseMenu(const QString& title = QString(), QWidget* parent = nullptr)
        : QMenu(title, parent)
    {
    }
};
