#pragma once

#include <QList>
#include <QString>
#include <QVariant>

class QWidget;

// A UI service published by a module: it creates the module's top-level widgets and
// receives the host messages it asked for.
class UISerInterface
{
public:
    virtual ~UISerInterface() = default;
    virtual QString GetServiceName() = 0;
    virtual QWidget* CreateWidget(const QVariant& info) = 0;
    virtual void DeleteWidget(QWidget* widget) = 0;
    virtual void GetMsgIdList(QList<int>& ids) = 0;
    virtual void ProcessMsg(int msgId, QVariant* payload) = 0;
};
