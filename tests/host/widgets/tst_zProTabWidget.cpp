#include "zProTabWidget.h"

#include <QLabel>
#include <QMenu>
#include <QSignalSpy>
#include <QtTest>

// The page tab strip: lazy pages, base order, visibility and the context menu.
class tst_zProTabWidget : public QObject
{
    Q_OBJECT

private:
    int m_created = 0;

    void fill(zProTabWidget& tabs)
    {
        QObject::connect(&tabs, &zProTabWidget::signalCreateTabWidget, &tabs,
                         [this](TabPageInfo* info) {
                             ++m_created;
                             info->pWidget = new QLabel(info->strPageName);
                         });
        tabs.AddTabWithoutCreateWidget("丙", "S3", false, true, {});
        tabs.AddTabWithoutCreateWidget("甲", "S1", false, true, {});
        tabs.AddTabWithoutCreateWidget("乙", "S2", true, true, {});
        tabs.SetTabPageOriginalOrder({"甲", "乙", "丙"});
    }

private slots:
    void init() { m_created = 0; }

    void pagesAreMadeOnceWhenShown()
    {
        zProTabWidget tabs(4);
        fill(tabs);
        QCOMPARE(tabs.visiblePageNames(), QStringList({"甲", "乙", "丙"}));
        QCOMPARE(m_created, 0);
        QVERIFY(!tabs.GetCurrentContentWidget());
        tabs.show();
        QCOMPARE(m_created, 1);
        QCOMPARE(tabs.GetSysNameByIndex(tabs.currentIndex()), QString("乙"));
        tabs.setCurrentIndex(0);
        tabs.setCurrentIndex(1);
        tabs.setCurrentIndex(0);
        QCOMPARE(m_created, 2);
        QCOMPARE(tabs.GetAlreadyCreatePage().keys(), QStringList({"S1", "S2"}));
        QSignalSpy deleted(&tabs, &zProTabWidget::signalToDeleteTabWidget);
        tabs.InformToManageDeleteWidget();
        QCOMPARE(deleted.count(), 2);
    }

    void aTabWithoutAPageIsAskedAgain()
    {
        zProTabWidget tabs(4);
        tabs.AddTabWithoutCreateWidget("甲", "S1", true, true, {});
        QSignalSpy asked(&tabs, &zProTabWidget::signalCreateTabWidget);
        tabs.show();
        QCOMPARE(asked.count(), 1);
        QVERIFY(!tabs.GetCurrentContentWidget());
        tabs.hide();
        tabs.show();
        QCOMPARE(asked.count(), 2);
    }

    void hidingKeepsAtLeastOneTab()
    {
        zProTabWidget tabs(4);
        fill(tabs);
        tabs.show();
        QSignalSpy arrangement(&tabs, &zProTabWidget::signalTabPageChanged);
        QSignalSpy refused(&tabs, &zProTabWidget::signalOperateMsg);
        tabs.SetTabVisibleBySysName("甲", false, true);
        tabs.SetTabVisibleBySysName("丙", false, true);
        QCOMPARE(tabs.visiblePageNames(), QStringList{"乙"});
        QCOMPARE(arrangement.count(), 2);
        std::unique_ptr<QMenu> menu(tabs.buildContextMenu());
        QAction* last = menu->actions().at(1); // 乙
        QCOMPARE(last->text(), QString("乙"));
        last->trigger();
        QCOMPARE(refused.count(), 1);
        QCOMPARE(refused.first().first().toString(), QString("请至少保留一个页签!"));
        QCOMPARE(tabs.count(), 1);
        tabs.SetTabVisibleBySysName("乙", false, false);
        QCOMPARE(refused.count(), 2);
        QCOMPARE(tabs.visiblePageNames(), QStringList{"乙"});
        QCOMPARE(arrangement.count(), 2);
        tabs.SetTabVisibleBySysName("丙", true, false);
        QCOMPARE(tabs.GetSysNameByIndex(tabs.currentIndex()), QString("丙"));
    }

    void hidingTheCurrentTabMakesAndAnnouncesTheNext()
    {
        zProTabWidget tabs(4);
        fill(tabs);
        tabs.show();
        QCOMPARE(m_created, 1); // 乙
        QSignalSpy current(&tabs, &zProTabWidget::signalCurPageIndexChanged);
        tabs.SetTabVisibleBySysName("乙", false, true);
        QCOMPARE(tabs.visiblePageNames(), QStringList({"甲", "丙"}));
        QCOMPARE(current.count(), 1);
        QVERIFY(tabs.GetCurrentContentWidget());
        QCOMPARE(m_created, 2);
        const QString now = tabs.GetSysNameByIndex(current.first().first().toInt());
        QCOMPARE(qobject_cast<QLabel*>(tabs.GetCurrentContentWidget())->text(), now);

        // Showing it again in place keeps the current page; its own page is not made twice.
        tabs.SetTabVisibleBySysName("乙", true, true);
        QCOMPARE(tabs.visiblePageNames(), QStringList({"甲", "乙", "丙"}));
        QCOMPARE(tabs.GetSysNameByIndex(tabs.currentIndex()), now);
        tabs.SetTabVisibleBySysName("乙", true, false);
        QCOMPARE(tabs.GetSysNameByIndex(tabs.currentIndex()), QString("乙"));
        QCOMPARE(m_created, 2);
        QCOMPARE(tabs.GetAlreadyCreatePage().value("S2").size(), 1);
        tabs.SetTabVisibleBySysName("没有这页", false, true); // unknown names change nothing
        QCOMPARE(tabs.count(), 3);
    }

    void arrangementListsEveryPage()
    {
        zProTabWidget tabs(4);
        fill(tabs);
        tabs.show();
        QSignalSpy arrangement(&tabs, &zProTabWidget::signalTabPageChanged);
        tabs.SetTabVisibleBySysName("丙", false, true);
        QCOMPARE(arrangement.count(), 1);
        const auto pages =
            arrangement.first().first().value<QList<ProjectSettingSpace::ProFuncPageInfo>>();
        QCOMPARE(pages.size(), 3);
        QStringList names;
        for (const auto& page : pages)
            names << page.strPageName + (page.bVisible ? "+" : "-") + (page.bCurrent ? "*" : "");
        QCOMPARE(names, QStringList({"甲+", "乙+*", "丙-"}));
        QCOMPARE(pages.at(2).strServiceName, QString("S3"));
        // Hiding what is hidden is no change.
        tabs.SetTabVisibleBySysName("丙", false, true);
        QCOMPARE(arrangement.count(), 1);
    }

    void namesOutOfRange()
    {
        zProTabWidget tabs(4);
        fill(tabs);
        QCOMPARE(tabs.GetSysNameByIndex(7), QString());
        QCOMPARE(tabs.GetSysNameByIndex(-1), QString());
        QVERIFY(!tabs.contentWidget(7));
        QCOMPARE(tabs.indexOfPage("丙"), 2);
        QCOMPARE(tabs.indexOfPage("没有这页"), -1);
    }

    void contextMenuAsksForTemplatesFirst()
    {
        zProTabWidget tabs(4);
        fill(tabs);
        QObject::connect(&tabs, &zProTabWidget::signalTabMenuAboutToShow, &tabs, [&tabs] {
            tabs.SetTableHeaderTempList({"默认表头", "我的表头"});
        });
        QSignalSpy chosen(&tabs, &zProTabWidget::sigHeaderTemplateChanged);
        std::unique_ptr<QMenu> menu(tabs.buildContextMenu());
        QMenu* templates = nullptr;
        for (QAction* action : menu->actions())
            if (action->menu())
                templates = action->menu();
        QVERIFY(templates);
        QCOMPARE(templates->actions().size(), 2);
        templates->actions().at(1)->trigger();
        QCOMPARE(chosen.first().first().toString(), QString("我的表头"));
    }
};

QTEST_MAIN(tst_zProTabWidget)
#include "tst_zProTabWidget.moc"
