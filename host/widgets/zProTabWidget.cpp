#include "zProTabWidget.h"

#include <QGridLayout>
#include <QMenu>
#include <QTabBar>

#include <algorithm>

struct zProTabWidget::Tab
{
    TabPageInfo info;
    QWidget* placeholder = nullptr;
    bool created = false;
};

zProTabWidget::zProTabWidget(int type, QWidget* parent) : QTabWidget(parent), m_type(type)
{
    qRegisterMetaType<TabPageInfo*>("TabPageInfo*");
    setDocumentMode(true);
    tabBar()->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(tabBar(), &QWidget::customContextMenuRequested, this, [this](const QPoint& pos) {
        if (!m_haveContextMenu)
            return;
        const int index = tabBar()->tabAt(pos);
        if (index >= 0 && index != currentIndex())
            setCurrentIndex(index);
        QMenu* menu = buildContextMenu();
        menu->exec(tabBar()->mapToGlobal(pos));
        menu->deleteLater();
    });
    connect(this, &QTabWidget::currentChanged, this, &zProTabWidget::onCurrentChanged);
    // The user arranges the pages by dragging their tabs; hidden pages keep their places.
    tabBar()->setMovable(true);
    connect(tabBar(), &QTabBar::tabMoved, this, [this] {
        if (m_rebuilding)
            return;
        // The shown tabs take the strip's order in the places shown tabs held.
        std::vector<Tab*> shown;
        for (int i = 0; i < count(); ++i)
            for (const auto& tab : m_tabs)
                if (tab->placeholder == widget(i))
                    shown.push_back(tab.get());
        std::vector<Tab*> order;
        std::size_t next = 0;
        for (const auto& tab : m_tabs)
            order.push_back(tab->info.bVisible && next < shown.size() ? shown.at(next++)
                                                                      : tab.get());
        std::vector<std::unique_ptr<Tab>> sorted;
        for (Tab* wanted : order)
            for (auto& tab : m_tabs)
                if (tab && tab.get() == wanted) {
                    sorted.push_back(std::move(tab));
                    break;
                }
        m_tabs.swap(sorted);
        emitPageArrangement();
    });
}

zProTabWidget::~zProTabWidget() = default;

void zProTabWidget::SetHaveContextMenu(bool have)
{
    m_haveContextMenu = have;
}

void zProTabWidget::SetTabOnTop(bool onTop)
{
    setTabPosition(onTop ? QTabWidget::North : QTabWidget::South);
}

void zProTabWidget::UpdateTabWidgetStyle()
{
    const QString text = m_readOnly ? QStringLiteral("#7a7a7a") : QStringLiteral("#1f2d3d");
    setStyleSheet(
        QStringLiteral(
            "QTabBar::tab { background: #eef2f7; color: %1; border: 1px solid #c9d2dd;"
            " padding: 4px 14px; margin-right: 1px; font-family: SimSun; font-size: 9pt; }"
            "QTabBar::tab:selected { background: #ffffff; color: #0b5cad; font-weight: bold; }"
            "QTabBar::tab:hover { background: #dde8f5; }")
            .arg(text));
}

void zProTabWidget::AddTabWithoutCreateWidget(const QString& pageName, const QString& serviceName,
                                              bool bCurrent, bool bServiceFlag,
                                              const QVariant& data)
{
    auto tab = std::make_unique<Tab>();
    tab->info.strPageName = pageName;
    tab->info.strServiceName = serviceName;
    tab->info.bCurrent = bCurrent;
    tab->info.bServiceFlag = bServiceFlag;
    tab->info.data = data;
    tab->placeholder = new QWidget(this);
    auto* layout = new QGridLayout(tab->placeholder);
    layout->setContentsMargins(0, 0, 0, 0);
    m_tabs.push_back(std::move(tab));
    rebuildTabs();
    if (bCurrent) {
        m_rebuilding = true;
        setCurrentIndex(indexOfPage(pageName));
        m_rebuilding = false;
    }
}

void zProTabWidget::SetTabPageOriginalOrder(const QStringList& pageNames)
{
    m_originalOrder = pageNames;
    auto rank = [&](const std::unique_ptr<Tab>& t) {
        const int i = pageNames.indexOf(t->info.strPageName);
        return i < 0 ? pageNames.size() : i;
    };
    std::stable_sort(m_tabs.begin(), m_tabs.end(),
                     [&](const auto& a, const auto& b) { return rank(a) < rank(b); });
    rebuildTabs();
}

void zProTabWidget::SetServiceContentInfo(const QMap<QString, SerContentInfo>& info)
{
    m_serviceInfo = info;
}

// The host's tab strip has no indicator button here; these keep the host's call sequence.
void zProTabWidget::slotUpdateIndicatorBtnPos(int index)
{
    Q_UNUSED(index)
}

void zProTabWidget::UpdateIndicatorGeometry() {}

QMap<QString, QList<QWidget*>> zProTabWidget::GetAlreadyCreatePage() const
{
    QMap<QString, QList<QWidget*>> pages;
    for (const auto& tab : m_tabs)
        if (tab->created && tab->info.pWidget)
            pages[tab->info.strServiceName].append(tab->info.pWidget);
    return pages;
}

zProTabWidget::Tab* zProTabWidget::tabAt(int index) const
{
    QWidget* placeholder = widget(index);
    for (const auto& tab : m_tabs)
        if (tab->placeholder == placeholder && placeholder)
            return tab.get();
    return nullptr;
}

QWidget* zProTabWidget::contentWidget(int index) const
{
    const Tab* tab = tabAt(index);
    return tab && tab->created ? tab->info.pWidget : nullptr;
}

QWidget* zProTabWidget::GetCurrentContentWidget() const
{
    return contentWidget(currentIndex());
}

void zProTabWidget::InformToManageDeleteWidget()
{
    for (const auto& tab : m_tabs)
        if (tab->created)
            emit signalToDeleteTabWidget(&tab->info);
}

void zProTabWidget::SetTabVisibleBySysName(const QString& pageName, bool visible, bool keepCurrent)
{
    for (const auto& tab : m_tabs) {
        if (tab->info.strPageName != pageName)
            continue;
        if (!visible && tab->info.bVisible && count() <= 1) {
            emit signalOperateMsg(QStringLiteral("请至少保留一个页签!"));
            return;
        }
        if (tab->info.bVisible != visible) {
            tab->info.bVisible = visible;
            QWidget* before = currentWidget();
            rebuildTabs();
            emitPageArrangement();
            // Hiding the current tab moves the strip to another page: make and announce it.
            if (currentWidget() != before && isVisible())
                onCurrentChanged(currentIndex());
        }
        if (visible && !keepCurrent)
            setCurrentIndex(indexOfPage(pageName));
        return;
    }
}

QStringList zProTabWidget::pageOrder() const
{
    QStringList names;
    for (const auto& tab : m_tabs)
        names << tab->info.strPageName;
    return names;
}

void zProTabWidget::ApplyPageArrangement(const QStringList& order, const QStringList& hidden)
{
    auto rank = [&](const std::unique_ptr<Tab>& t) {
        const int i = order.indexOf(t->info.strPageName);
        return i < 0 ? order.size() : i;
    };
    std::stable_sort(m_tabs.begin(), m_tabs.end(),
                     [&](const auto& a, const auto& b) { return rank(a) < rank(b); });
    bool anyShown = false;
    for (const auto& tab : m_tabs) {
        tab->info.bVisible = !hidden.contains(tab->info.strPageName);
        anyShown = anyShown || tab->info.bVisible;
    }
    if (!anyShown && !m_tabs.empty())
        m_tabs.front()->info.bVisible = true;
    QWidget* before = currentWidget();
    rebuildTabs();
    // The page shown before may be hidden now: the strip moves on, and that page is made.
    if (currentWidget() != before && isVisible())
        onCurrentChanged(currentIndex());
}

QString zProTabWidget::GetSysNameByIndex(int index) const
{
    const Tab* tab = tabAt(index);
    return tab ? tab->info.strPageName : QString();
}

int zProTabWidget::indexOfPage(const QString& pageName) const
{
    for (const auto& tab : m_tabs)
        if (tab->info.strPageName == pageName)
            return indexOf(tab->placeholder);
    return -1;
}

QStringList zProTabWidget::visiblePageNames() const
{
    QStringList names;
    for (int i = 0; i < count(); ++i)
        names << GetSysNameByIndex(i);
    return names;
}

void zProTabWidget::ChangeROState(bool readOnly)
{
    if (m_readOnly == readOnly)
        return;
    m_readOnly = readOnly;
    UpdateTabWidgetStyle();
}

void zProTabWidget::SetTableHeaderTempList(const QStringList& names)
{
    m_headerTemplates = names;
}

QMenu* zProTabWidget::buildContextMenu()
{
    // The owner answers with the current page's templates before the menu is built.
    emit signalTabMenuAboutToShow();
    auto* menu = new QMenu(this);
    for (const auto& tab : m_tabs) {
        QAction* action = menu->addAction(tab->info.strPageName);
        action->setCheckable(true);
        action->setChecked(tab->info.bVisible);
        const QString name = tab->info.strPageName;
        connect(action, &QAction::triggered, this,
                [this, name](bool checked) { SetTabVisibleBySysName(name, checked, true); });
    }
    menu->addSeparator();
    QMenu* templates = menu->addMenu(QStringLiteral("表头模板"));
    for (const QString& name : std::as_const(m_headerTemplates)) {
        QAction* action = templates->addAction(name);
        connect(action, &QAction::triggered, this,
                [this, name] { emit sigHeaderTemplateChanged(name); });
    }
    connect(menu->addAction(QStringLiteral("保存表头模板")), &QAction::triggered, this,
            &zProTabWidget::signalSaveTableheaderTemp);
    connect(menu->addAction(QStringLiteral("修改当前列标题")), &QAction::triggered, this,
            &zProTabWidget::signalModifyCurrentColumnTittle);
    connect(menu->addAction(QStringLiteral("表头高级设置")), &QAction::triggered, this,
            &zProTabWidget::signalTableHeaderAdvancedSetting);
    return menu;
}

void zProTabWidget::ensureCreated(int index)
{
    Tab* tab = tabAt(index);
    if (!tab || tab->created)
        return;
    emit signalCreateTabWidget(&tab->info);
    if (!tab->info.pWidget)
        return; // nobody made the page; asked again next time the tab is shown
    tab->created = true;
    tab->placeholder->layout()->addWidget(tab->info.pWidget);
}

void zProTabWidget::onCurrentChanged(int index)
{
    if (m_rebuilding || index < 0)
        return;
    ensureCreated(index);
    emit signalCurPageIndexChanged(index);
}

void zProTabWidget::showEvent(QShowEvent* event)
{
    QTabWidget::showEvent(event);
    const Tab* tab = tabAt(currentIndex());
    if (tab && !tab->created)
        onCurrentChanged(currentIndex());
}

void zProTabWidget::rebuildTabs()
{
    QWidget* current = currentWidget();
    m_rebuilding = true;
    while (count() > 0)
        removeTab(0);
    for (const auto& tab : m_tabs) {
        if (tab->info.bVisible)
            addTab(tab->placeholder, tab->info.strPageName);
        tab->placeholder->setVisible(tab->info.bVisible);
    }
    const int restored = current ? indexOf(current) : -1;
    if (restored >= 0)
        setCurrentIndex(restored);
    m_rebuilding = false;
}

void zProTabWidget::emitPageArrangement()
{
    QList<ProjectSettingSpace::ProFuncPageInfo> list;
    for (const auto& tab : m_tabs) {
        ProjectSettingSpace::ProFuncPageInfo page;
        page.strPageName = tab->info.strPageName;
        page.strServiceName = tab->info.strServiceName;
        page.bVisible = tab->info.bVisible;
        page.bCurrent = tab->placeholder == currentWidget();
        list << page;
    }
    emit signalTabPageChanged(list);
}
