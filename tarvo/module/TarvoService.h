#pragma once

#include "ProjectSettingSpace.h"
#include "UISerInterface.h"

#include <QList>
#include <QMap>

class QWidget;

// The module's UI service: creates the tab containers the host asks for and routes host
// messages to the active one (or, for 41, to the one named in the payload).
class TarvoService : public UISerInterface
{
public:
    TarvoService();
    ~TarvoService() override;

    QString GetServiceName() override;
    QWidget* CreateWidget(const QVariant& info) override;
    void DeleteWidget(QWidget* widget) override;
    void GetMsgIdList(QList<int>& ids) override;
    void ProcessMsg(int msgId, QVariant* payload) override;

    const QList<QWidget*>& widgets() const { return m_widgets; }
    const QMap<QString, SerContentInfo>& childPages() const { return m_childPages; }

private:
    void LoadChildrenPageInfo();

    QList<QWidget*> m_widgets;
    QMap<QString, SerContentInfo> m_childPages;
};
