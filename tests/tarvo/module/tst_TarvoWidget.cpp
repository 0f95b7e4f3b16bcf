#include "ModulePages.h"
#include "TestProject.h"

#include "TarvoWidget.h"
#include "common/BillModel.h"
#include "common/BillPageWidget.h"
#include "common/BillSjWidget.h"

#include "Communication.h"
#include "InteractionSeam.h"
#include "MsgExplain.h"
#include "ProjectSettingHelper.h"
#include "SharedInterface.h"
#include "TabPageInfo.h"
#include "zProTabWidget.h"
#include "zTableView.h"

#include <QTabBar>
#include <QTemporaryDir>
#include <QtTest>

// The tab container: lazy pages, message routing, the current page per node.
class tst_TarvoWidget : public QObject
{
    Q_OBJECT

private:
    static const QStringList& pageOrder()
    {
        static const QStringList order = {
            "其他项目清单", "招标人材料购置费清单", "零星工作项目人工单价清单",
            "规费税金清单", "需评审的材料清单",     "暂估材料(工程设备)清单"};
        return order;
    }

    static QMap<QString, SerContentInfo> services()
    {
        QMap<QString, SerContentInfo> map;
        const QStringList names = {"QtXmQdJJjbService",       "ZbrClGzfQdService",
                                   "LxGzXmQdJJjbService",     "GfQdService",
                                   "XSjCqPsDClQdJJgbService", "ZgClQdService"};
        for (int i = 0; i < names.size(); ++i)
            map.insert(names.at(i), SerContentInfo{names.at(i), true, false, {pageOrder().at(i)}});
        return map;
    }

    static QList<ProjectSettingSpace::ProFuncPageInfo> pages(const QStringList& names)
    {
        QList<ProjectSettingSpace::ProFuncPageInfo> list;
        for (const QString& name : names) {
            ProjectSettingSpace::ProFuncPageInfo p;
            p.strPageName = name;
            list << p;
        }
        return list;
    }

    static QList<int> sentIds(const QSignalSpy& spy)
    {
        QList<int> ids;
        for (const QList<QVariant>& call : spy)
            ids << call.at(1).toInt();
        return ids;
    }

private slots:
    void init()
    {
        InteractionSeam::setScripted(true);
        InteractionSeam::clear();
    }

    void tabsInTheFixedOrderOnlyForProvidedPages()
    {
        QStringList reversed = pageOrder();
        std::reverse(reversed.begin(), reversed.end());
        reversed.insert(2, "不存在的页面");
        TarvoWidget widget(services(), pages(reversed));
        QCOMPARE(widget.tabs()->visiblePageNames(), pageOrder());
        QVERIFY(widget.widgetService().isEmpty()); // no page is made before it is shown
        QCOMPARE(widget.CreateWidgetByTypeName("NoSuchService"), nullptr);
    }

    void messagesBeforeAnyTabReachNothing()
    {
        TestProject p;
        TarvoWidget widget(services(), pages(pageOrder()));
        showNode(widget, p.unit);
        QVariant text("插入行");
        widget.ProcMsg(6, &text);
        widget.ProcActiveWidgetChanged();
        QCOMPARE(widget.currentNode(), p.unit);
        QVERIFY(widget.widgetService().isEmpty());
    }

    void pagesAreCreatedOnceWhenFirstShown()
    {
        TarvoWidget widget(services(), pages(pageOrder()));
        widget.show();
        QCOMPARE(widget.widgetService().size(), 1);
        QWidget* first = widget.tabs()->GetCurrentContentWidget();
        QCOMPARE(widget.widgetService().value(first), QString("QtXmQdJJjbService"));
        widget.tabs()->setCurrentIndex(3);
        widget.tabs()->setCurrentIndex(0);
        widget.tabs()->setCurrentIndex(3);
        QCOMPARE(widget.widgetService().size(), 2);
        QCOMPARE(widget.tabs()->GetAlreadyCreatePage().keys(),
                 QStringList({"GfQdService", "QtXmQdJJjbService"}));
    }

    void broadcastReachesCreatedPagesOnly()
    {
        TestProject p;
        TarvoWidget widget(services(), pages(pageOrder()));
        widget.show();
        widget.tabs()->setCurrentIndex(1);
        QVariant node = QVariant::fromValue(p.unit);
        widget.ProcMsg(74, &node); // only the current page loads the node
        QList<QSignalSpy*> spies;
        for (int i = 0; i < widget.tabs()->count(); ++i)
            if (auto* page = qobject_cast<BillPageWidget*>(widget.tabs()->contentWidget(i)))
                spies << new QSignalSpy(page->sjWidget()->model(), &QAbstractItemModel::modelReset);
        QCOMPARE(spies.size(), 2);
        QVariant self = QVariant::fromValue<QObject*>(&widget);
        widget.ProcMsg(41, &self);
        for (QSignalSpy* spy : spies)
            QVERIFY(spy->count() > 0); // the page that is not current too
        qDeleteAll(spies);
    }

    void nullNodeKeepsThePreviousOne()
    {
        TestProject p;
        p.project->SetReadOnly(true);
        TarvoWidget widget(services(), pages(pageOrder()));
        showNode(widget, p.unit);
        QVERIFY(widget.tabs()->IsReadOnlyState());
        p.project->SetReadOnly(false);
        QVariant null = QVariant::fromValue<ProTreeNode*>(nullptr);
        widget.ProcMsg(79, &null);
        QVariant junk("not a node");
        widget.ProcMsg(74, &junk);
        QCOMPARE(widget.currentNode(), p.unit);
        QVERIFY(!widget.tabs()->IsReadOnlyState()); // read from the kept node's project
    }

    void closedProjectsNodeIsForgotten()
    {
        auto p = std::make_unique<TestProject>();
        TarvoWidget widget(services(), pages(pageOrder()));
        widget.show();
        showNode(widget, p->unit);
        p.reset();
        QCOMPARE(widget.currentNode(), nullptr);
        QSignalSpy sent(Communication::GetInstance(), &Communication::signalMsg);
        widget.tabs()->setCurrentIndex(3); // stores nothing, still announces the page
        QCOMPARE(sentIds(sent).last(), 30);
    }

    void tabChangeAnnouncesThePageAndStoresItForTheNode()
    {
        TestProject p;
        TarvoWidget widget(services(), pages(pageOrder()));
        widget.show();
        QSignalSpy sent(Communication::GetInstance(), &Communication::signalMsg);
        widget.tabs()->setCurrentIndex(2);
        // Without a node: the page is announced (its ribbon, 15) and the host told (30).
        QVERIFY(sentIds(sent).contains(15));
        QCOMPARE(sentIds(sent).last(), 30);
        QVERIFY(p.current->getXtBl(25).isNull());

        showNode(widget, p.unit);
        widget.tabs()->setCurrentIndex(3);
        QCOMPARE(p.current->getXtBl(25).toString(), QString("规费税金清单"));
        QCOMPARE(p.current->getConfig()->getItem(25).toString(), QString("规费税金清单"));
        QCOMPARE(Communication::GetInstance()->GetActiveSecondLevelWidget(),
                 widget.tabs()->GetCurrentContentWidget());
    }

    void pageArrangementIsRecordedAndRestored()
    {
        TestProject p;
        {
            TarvoWidget widget(services(), pages(pageOrder()));
            widget.show();
            showNode(widget, p.unit);
            // The user drags the fees tab to the front and hides the daywork page.
            widget.tabs()->tabBar()->moveTab(3, 0);
            widget.tabs()->SetTabVisibleBySysName("零星工作项目人工单价清单", false, true);
            QCOMPARE(widget.tabs()->visiblePageNames().first(), QString("规费税金清单"));
            QVERIFY(p.project->isProjectWorkChanged());
        }
        p.project->setProjectWorkChanged(false);
        // The project shown again (another container, as after reopening) looks as it was left.
        TarvoWidget again(services(), pages(pageOrder()));
        again.show();
        QVariant node = QVariant::fromValue(p.unit);
        again.ProcMsg(74, &node);
        const QStringList shown = again.tabs()->visiblePageNames();
        QCOMPARE(shown.size(), 5);
        QCOMPARE(shown.first(), QString("规费税金清单"));
        QVERIFY(!shown.contains("零星工作项目人工单价清单"));
        QCOMPARE(again.tabs()->pageOrder().at(3), QString("零星工作项目人工单价清单"));
        QVERIFY(!p.project->isProjectWorkChanged()); // putting it back is no change
        // A value of the wrong kind is ignored, not taken for an arrangement.
        p.project->GetPriceModelConfig()->setItem(27, 42);
        p.project->GetPriceModelConfig()->setItem(26, QVariant());
        TarvoWidget third(services(), pages(pageOrder()));
        third.ProcMsg(74, &node);
        QCOMPARE(third.tabs()->visiblePageNames(), pageOrder());
    }

    void changeActivePageShowsAndSelectsIt()
    {
        TarvoWidget widget(services(), pages(pageOrder()));
        widget.show();
        widget.tabs()->SetTabVisibleBySysName("规费税金清单", false, true);
        QCOMPARE(widget.tabs()->count(), 5);
        QVariant info = QVariant::fromValue(MsgExplain::ToChangeActivePageInfo{"规费税金清单"});
        widget.ProcMsg(49, &info);
        QCOMPARE(widget.tabs()->count(), 6);
        QCOMPARE(widget.tabs()->GetSysNameByIndex(widget.tabs()->currentIndex()),
                 QString("规费税金清单"));
    }

    void headerTemplateSlotsAskTheHost()
    {
        TarvoWidget widget(services(), pages(pageOrder()));
        QSignalSpy sent(Communication::GetInstance(), &Communication::signalMsg);
        widget.slotHeaderTemplateChanged("我的表头");
        widget.slotSaveTableheaderTemp();
        widget.slotModifyCurrentColumnTittle();
        widget.slotTableHeaderAdvancedSetting();
        widget.slotTabMenuAboutToShow();
        QCOMPARE(sentIds(sent), QList<int>({7002, 7003, 7004, 7005, 7006}));
        QCOMPARE(sent.first().at(2).toString(), QString("我的表头"));
        QVariant names = QStringList{"默认表头", "我的表头"};
        widget.ProcMsg(7000, &names);
        QCOMPARE(widget.tabs()->tableHeaderTempList(), names.toStringList());
    }

    void headerTemplateCommandsReachTheCurrentPageOnly()
    {
        QTemporaryDir user;
        SharedInterface::SetUserDataPath(user.path() + "/");
        TarvoWidget widget(services(), pages(pageOrder()));
        widget.show();
        widget.tabs()->setCurrentIndex(3);
        widget.tabs()->setCurrentIndex(0);
        auto viewAt = [&](int index) {
            return qobject_cast<BillPageWidget*>(widget.tabs()->contentWidget(index))
                ->sjWidget()
                ->view();
        };
        zTableView* current = viewAt(0);
        zTableView* other = viewAt(3);
        QString error;
        QVERIFY2(current->saveUserTemplate("我的表头", &error), qPrintable(error));
        QVERIFY2(other->saveUserTemplate("我的表头", &error), qPrintable(error));
        zTableView::callSwitchTableHeaderConfig(other, 1, 1, "默认表头");

        QVariant name("我的表头");
        widget.ProcMsg(7002, &name);
        QCOMPARE(current->currentTemplateName(), QString("我的表头"));
        QCOMPARE(other->currentTemplateName(), QString("默认表头"));
        SharedInterface::SetUserDataPath(QString());
    }

    void removedPageLeavesTheContainer()
    {
        TestProject p;
        TarvoWidget widget(services(), pages(pageOrder()));
        widget.show();
        QWidget* page = widget.tabs()->GetCurrentContentWidget();
        widget.tabs()->setCurrentIndex(3);
        widget.tabs()->setCurrentIndex(0);
        QCOMPARE(Communication::GetInstance()->GetActiveSecondLevelWidget(), page);

        TabPageInfo info;
        info.strPageName = "其他项目清单";
        info.pWidget = page;
        widget.slotRemoveTabWidget(&info);
        QVERIFY(!widget.widgetService().contains(page));
        QCOMPARE(Communication::GetInstance()->GetActiveSecondLevelWidget(), nullptr);

        // A page the container no longer knows gets no messages.
        auto* bill = qobject_cast<BillPageWidget*>(page);
        showNode(widget, p.unit);
        QVERIFY(!bill->sjWidget()->works());

        // A page name no service lists produces no widget.
        TabPageInfo foreign;
        foreign.strPageName = "不存在的页面";
        widget.slotCreateTabWidget(&foreign);
        QCOMPARE(foreign.pWidget, nullptr);
    }
};

QTEST_MAIN(tst_TarvoWidget)
#include "tst_TarvoWidget.moc"
