#pragma once

#include "ProjectSettingSpace.h"
#include "TabPageInfo.h"

#include <QList>
#include <QMap>
#include <QStringList>
#include <QTabWidget>

class QMenu;

#include <memory>
#include <vector>

// The host's page tab strip. Tabs are added without their page; the page is asked for
// (signalCreateTabWidget) the first time its tab becomes current, and put into the tab.
// Tabs keep a base order; the user may hide tabs from the context menu, which also offers
// the table-header template commands of the current page.
class zProTabWidget : public QTabWidget
{
    Q_OBJECT
public:
    explicit zProTabWidget(int type, QWidget* parent = nullptr);
    ~zProTabWidget() override;

    void SetHaveContextMenu(bool have);
    void SetTabOnTop(bool onTop);
    void UpdateTabWidgetStyle();
    void AddTabWithoutCreateWidget(const QString& pageName, const QString& serviceName,
                                   bool bCurrent, bool bServiceFlag, const QVariant& data);
    // Sorts the tabs by this order of page names; pages not named keep their place at the end.
    void SetTabPageOriginalOrder(const QStringList& pageNames);
    void SetServiceContentInfo(const QMap<QString, SerContentInfo>& info);
    void slotUpdateIndicatorBtnPos(int index);
    void UpdateIndicatorGeometry();

    // Page service name -> the page widgets created so far for it.
    QMap<QString, QList<QWidget*>> GetAlreadyCreatePage() const;
    // The page widget in the current tab, or null when it has not been created.
    QWidget* GetCurrentContentWidget() const;
    QWidget* contentWidget(int index) const;
    // Tells every created page's owner that the page goes (signalToDeleteTabWidget).
    void InformToManageDeleteWidget();

    // Shows or hides a tab; a shown tab also becomes current unless keepCurrent. The last
    // visible tab is never hidden: signalOperateMsg tells why instead.
    void SetTabVisibleBySysName(const QString& pageName, bool visible, bool keepCurrent);
    QString GetSysNameByIndex(int index) const;
    int indexOfPage(const QString& pageName) const;
    QStringList visiblePageNames() const;
    // Every page, shown or hidden, in tab order.
    QStringList pageOrder() const;
    // Puts back an arrangement the user made: tabs in this order (pages not named keep their
    // place after), these pages hidden (never all of them). Nothing is announced as a change.
    void ApplyPageArrangement(const QStringList& order, const QStringList& hidden);

    void ChangeROState(bool readOnly);
    bool IsReadOnlyState() const { return m_readOnly; }

    // Names of the current page's table-header templates, for the context menu.
    void SetTableHeaderTempList(const QStringList& names);
    QStringList tableHeaderTempList() const { return m_headerTemplates; }
    // The context menu as it would pop up at the current tab (tests, keyboard).
    QMenu* buildContextMenu();

signals:
    void signalCurPageIndexChanged(int index);
    void signalCreateTabWidget(TabPageInfo* pTabPageInfo);
    void signalToDeleteTabWidget(TabPageInfo* pTabPageInfo);
    void signalTabPageChanged(QList<ProjectSettingSpace::ProFuncPageInfo> listCurProFuncPageInfo);
    void signalOperateMsg(QString strMsg);
    void sigHeaderTemplateChanged(QString strHeaderTempName);
    void signalSaveTableheaderTemp();
    void signalModifyCurrentColumnTittle();
    void signalTableHeaderAdvancedSetting();
    void signalTabMenuAboutToShow();

protected:
    // The current tab's page is created when the strip is first shown.
    void showEvent(QShowEvent* event) override;

private:
    struct Tab;
    void onCurrentChanged(int index);
    void ensureCreated(int index);
    Tab* tabAt(int index) const;
    void rebuildTabs();
    void emitPageArrangement();

    int m_type; // the host's strip type; 4 is a module's bottom strip
    bool m_haveContextMenu = false;
    bool m_readOnly = false;
    bool m_rebuilding = false;
    QStringList m_originalOrder;
    QStringList m_headerTemplates;
    QMap<QString, SerContentInfo> m_serviceInfo;
    std::vector<std::unique_ptr<Tab>> m_tabs; // in base order, hidden ones included
};
