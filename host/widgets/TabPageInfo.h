#pragma once

#include <QMetaType>
#include <QString>
#include <QVariant>

class QWidget;

// One tab of a zProTabWidget. The owner of the tab strip fills in pWidget when asked to
// create the page (signalCreateTabWidget).
struct TabPageInfo
{
    QString strPageName;
    QString strServiceName;
    QWidget* pWidget = nullptr;
    bool bCurrent = false;
    bool bServiceFlag = false;
    bool bVisible = true;
    QVariant data;
};

Q_DECLARE_METATYPE(TabPageInfo*)
