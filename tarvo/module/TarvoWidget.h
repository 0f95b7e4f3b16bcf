#pragma once

#include "ProjectSettingSpace.h"

#include <QMap>
#include <QVariant>
#include <QWidget>

class ProTreeNode;
class ProjectWorks;
class QGridLayout;
class zProTabWidget;
struct TabPageInfo;

// The module's top-level widget: the bill pages as tabs along the bottom, each page created
// the first time its tab is shown. Routes host messages to the current page, or to every
// created page for a broadcast, and keeps the host told of the current page.
class TarvoWidget : public QWidget
{
    Q_OBJECT
public:
    TarvoWidget(const QMap<QString, SerContentInfo>& serviceContent,
                const QList<ProjectSettingSpace::ProFuncPageInfo>& pages,
                QWidget* parent = nullptr);
    ~TarvoWidget() override;

    void ProcMsg(int msgId, QVariant* payload);
    void ProcActiveWidgetChanged();
    QWidget* CreateWidgetByTypeName(const QString& serviceName);
    void DistributeMsg(QWidget* page, QString serviceName, int msgId, QVariant* payload);

    zProTabWidget* tabs() const { return m_tabs; }
    ProTreeNode* currentNode() const { return m_currentNode; }
    const QMap<QWidget*, QString>& widgetService() const { return m_widgetService; }

public slots:
    void slotCurTabChanged(int index);
    void slotCreateTabWidget(TabPageInfo* pTabPageInfo);
    void slotTabPageChanged(QList<ProjectSettingSpace::ProFuncPageInfo> listCurProFuncPageInfo);
    void slotTabOperateMsg(QString strMsg);
    void slotRemoveTabWidget(TabPageInfo* pTabPageInfo);
    void slotHeaderTemplateChanged(QString strHeaderTempName);
    void slotSaveTableheaderTemp();
    void slotModifyCurrentColumnTittle();
    void slotTableHeaderAdvancedSetting();
    void slotTabMenuAboutToShow();

private:
    // The project's configuration items that keep the user's page arrangement.
    static constexpr int HiddenPagesItem = 26;
    static constexpr int PageOrderItem = 27;
    // Puts back the arrangement the user left in the current node's project.
    void RestorePageArrangement();
    void ProcessProjectTreeClickedMsg(QVariant* payload);
    void ProcessChangeActivePageMsg(QVariant* payload);
    void SaveCurPageIndexToConfig(int index);
    void forward(int msgId, QVariant* payload);
    QString serviceOfPage(const QString& pageName) const;

    QMap<QString, SerContentInfo> m_serviceContent;
    QMap<QWidget*, QString> m_widgetService;
    QGridLayout* m_layout = nullptr;
    zProTabWidget* m_tabs = nullptr;
    ProTreeNode* m_currentNode = nullptr;
    ProTreeNode* m_decodedNode = nullptr; // of the node message being handled
    const ProjectWorks* m_arrangedProject = nullptr;
};
