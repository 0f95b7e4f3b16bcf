#include "ModulePages.h"
#include "TestProject.h"

#include "TarvoActivator.h"
#include "TarvoService.h"
#include "TarvoWidget.h"

#include "BundleActivatorFactory.h"
#include "Communication.h"
#include "ObjectHelper.h"
#include "ProjectSettingHelper.h"
#include "zProTabWidget.h"

#include <QtTest>

// Activation of the module and routing of host messages by its service.
class tst_TarvoService : public QObject
{
    Q_OBJECT

private slots:
    void registeredWhenLoaded()
    {
        // Linking the module ran its static initialiser.
        QVERIFY(osgi::BundleActivatorFactory::GetActivator("TarvoActivator"));
    }

    void startOnlyWithTheServiceNameAndOnlyOnce()
    {
        TarvoActivator activator;
        activator.Start("TarvoServic");
        activator.Start("TarvoService ");
        activator.Start("tarvoservice");
        QVERIFY(!activator.service());
        activator.Start("TarvoService");
        TarvoService* first = activator.service();
        QVERIFY(first);
        QCOMPARE(osgi::ObjectHelper::GetService("TarvoService"),
                 static_cast<UISerInterface*>(first));
        activator.Start("TarvoService");
        QCOMPARE(activator.service(), first);

        activator.Stop("OtherService");
        QCOMPARE(activator.service(), first);
        activator.Stop("TarvoService");
        QVERIFY(!activator.service());
    }

    void duplicateChildServicesLastOneWins()
    {
        SerContentInfo a{"GfQdService", true, false, {"规费清单"}};
        SerContentInfo b{"GfQdService", false, true, {"规费税金清单"}};
        ProjectSettingHelper::GetProjectSettingHelper()->SetChildrenServiceInfo("TarvoService",
                                                                                {a, b});
        TarvoService service;
        ProjectSettingHelper::GetProjectSettingHelper()->ResetChildrenServiceInfo();
        QCOMPARE(service.childPages().size(), 1);
        QCOMPARE(service.childPages().value("GfQdService").listPageNames,
                 QStringList{"规费税金清单"});
        QVERIFY(service.childPages().value("GfQdService").bReserved);
    }

    void createWidgetWithAnyPayload()
    {
        TarvoService service;
        std::unique_ptr<QWidget> full(service.CreateWidget(QVariant::fromValue(sixModulePages())));
        std::unique_ptr<QWidget> empty(service.CreateWidget(QVariant(42)));
        QVERIFY(full && empty);
        QCOMPARE(static_cast<TarvoWidget*>(full.get())->tabs()->count(), 6);
        QCOMPARE(static_cast<TarvoWidget*>(empty.get())->tabs()->count(), 0);
        QCOMPARE(service.widgets(), QList<QWidget*>({full.get(), empty.get()}));
        service.DeleteWidget(full.get());
        service.DeleteWidget(empty.get());
    }

    void deleteWidgetOnlyForOwnWidgets()
    {
        TarvoService service;
        std::unique_ptr<QWidget> mine(service.CreateWidget(QVariant::fromValue(sixModulePages())));
        QWidget foreign;
        Communication::GetInstance()->SaveActiveFirstLevelWidget(&foreign);
        service.DeleteWidget(&foreign);
        QCOMPARE(Communication::GetInstance()->GetActiveFirstLevelWidget(), &foreign);
        QCOMPARE(service.widgets().size(), 1);

        Communication::GetInstance()->SaveActiveFirstLevelWidget(mine.get());
        service.DeleteWidget(mine.get());
        QVERIFY(!Communication::GetInstance()->GetActiveFirstLevelWidget());
        QVERIFY(service.widgets().isEmpty());
    }

    void messagesGoToTheActiveContainerOnly()
    {
        TestProject p;
        TarvoService service;
        std::unique_ptr<QWidget> widget(
            service.CreateWidget(QVariant::fromValue(sixModulePages())));
        auto* container = static_cast<TarvoWidget*>(widget.get());
        QWidget foreign;
        Communication::GetInstance()->SaveActiveFirstLevelWidget(&foreign);
        QVariant node = QVariant::fromValue(p.unit);
        service.ProcessMsg(74, &node);
        QVERIFY(!container->currentNode()); // another module's container is active

        Communication::GetInstance()->SaveActiveFirstLevelWidget(container);
        service.ProcessMsg(74, &node);
        QCOMPARE(container->currentNode(), p.unit);

        // 41 names its container in the payload, whichever is active.
        container->show(); // creates the first page
        auto* page = container->tabs()->GetCurrentContentWidget();
        QVERIFY(page);
        auto* model = page->findChild<QAbstractItemModel*>();
        QSignalSpy resets(model, &QAbstractItemModel::modelReset);
        Communication::GetInstance()->SaveActiveFirstLevelWidget(&foreign);
        QVariant wrong = QVariant::fromValue<QObject*>(&foreign);
        service.ProcessMsg(41, &wrong);
        QVariant nothing;
        service.ProcessMsg(41, &nothing);
        QCOMPARE(resets.count(), 0);
        QVariant self = QVariant::fromValue<QObject*>(container);
        service.ProcessMsg(41, &self);
        QVERIFY(resets.count() > 0);
        service.DeleteWidget(container);
    }
};

QTEST_MAIN(tst_TarvoService)
#include "tst_TarvoService.moc"
