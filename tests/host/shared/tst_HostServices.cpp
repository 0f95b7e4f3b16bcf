#include "BundleLoader.h"
#include "JsonConfig.h"
#include "MenuBarManager.h"
#include "ProcExceptionNew.h"
#include "ProjectSettingHelper.h"
#include "SharedInterface.h"
#include "SkinManager.h"
#include "StaticFileHelper.h"

#include <QTemporaryDir>
#include <QtTest>

// The host's shared services over their configuration files: settings by region, child
// services, skin colours, ribbon configurations, module loading and failure reports.
class tst_HostServices : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_app;
    QTemporaryDir m_user;

    void write(const QString& relative, const QByteArray& text)
    {
        const QString path = m_app.filePath(relative);
        QDir().mkpath(QFileInfo(path).absolutePath());
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

private slots:
    void initTestCase()
    {
        SharedInterface::SetAppPath(m_app.path());
        SharedInterface::SetUserDataPath(m_user.path());
        write("Config/Settings.json", R"({"AreaVer": "SiChuan"})");
        write(
            "Config/Menu/A.json",
            R"({"page": "默认", "groups": [{"title": "行操作", "items": [{"text": "插入行"}]}]})");
        write("Config/Menu/SiChuan/B.json",
              R"({"page": "四川", "groups": [{"title": "模板", "items": [
            {"text": "模板选择", "type": "combo", "items": ["甲", "乙"]},
            {"text": "自动行高", "type": "dropdown", "items": ["表格自适应行高", "表格置最小行高"]},
            {"text": ""}]}]})");
        write("Config/Menu/Bad.json", "{ groups: ");
        write("Config/ServicePages.json", R"({"TarvoService": [
            {"service": "GfQdService", "pages": ["规费税金清单"]},
            {"service": "ZgClQdService", "contextMenu": false, "pages": ["暂估材料(工程设备)清单", "另一页"]}]})");
        // (A raw string holding '#' trips moc; this one is escaped by hand.)
        write("Config/Skin.json",
              "{\"FeiLvEmptyColor\": \"#102030\", \"Broken\": \"not a colour\"}");
    }

    void regionalMenusFallBackToTheDefault()
    {
        QCOMPARE(StaticFileHelper::AquireMenuConfig("B.json"),
                 m_app.filePath("Config/Menu/SiChuan/B.json"));
        QCOMPARE(StaticFileHelper::AquireMenuConfig("A.json"),
                 m_app.filePath("Config/Menu/A.json"));
        ProjectSettingHelper::GetProjectSettingHelper()->SetSetting("AreaVer", "ChongQing");
        QCOMPARE(StaticFileHelper::AquireMenuConfig("B.json"),
                 m_app.filePath("Config/Menu/B.json"));
        ProjectSettingHelper::GetProjectSettingHelper()->SetSetting("AreaVer", "SiChuan");
    }

    void ribbonConfigurations()
    {
        QString error;
        const RibbonConfig config = MenuBarManager::ReadMenuBarInfoFromFileEx(
            m_app.filePath("Config/Menu/SiChuan/B.json"), &error);
        QVERIFY(config.isValid());
        QCOMPARE(config.page, QString("四川"));
        QCOMPARE(config.groups.first().items.size(), 2); // an item without text is dropped
        QCOMPARE(config.groups.first().items.at(0).type, QString("combo"));
        QCOMPARE(config.groups.first().items.at(1).items,
                 QStringList({"表格自适应行高", "表格置最小行高"}));
        QVERIFY(!MenuBarManager::ReadMenuBarInfoFromFileEx(m_app.filePath("Config/Menu/Bad.json"),
                                                           &error)
                     .isValid());
        QVERIFY(error.contains("格式错误"));
        QVERIFY(!MenuBarManager::ReadMenuBarInfoFromFileEx(m_app.filePath("none.json"), &error)
                     .isValid());
        QVERIFY(error.contains("无法打开"));
    }

    void ribbonItemStates()
    {
        MenuBarManager* manager = MenuBarManager::getInstance();
        manager->reset();
        QSignalSpy changed(manager, &MenuBarManager::itemStateChanged);
        QVERIFY(manager->isEnabled("插入行"));
        manager->SetItemState("插入行", 3);
        manager->SetItemState("插入行", 3); // no change, no signal
        QVERIFY(!manager->isEnabled("插入行"));
        manager->ChangeMenuToDisable({"导出招投标CJZ", "导出竣工CJZ"});
        QVERIFY(!manager->isEnabled("导出竣工CJZ"));
        QCOMPARE(changed.count(), 3);
        manager->reset();
        QVERIFY(manager->isEnabled("插入行"));
    }

    void childServicesAndColours()
    {
        const QList<SerContentInfo> services =
            ProjectSettingHelper::GetProjectSettingHelper()->GetChildrenServiceInfo("Tarvo",
                                                                                    "TarvoService");
        QCOMPARE(services.size(), 2);
        QVERIFY(services.at(0).bHaveContextMenu);
        QVERIFY(!services.at(1).bHaveContextMenu);
        QCOMPARE(services.at(1).listPageNames.size(), 2);
        QVERIFY(ProjectSettingHelper::GetProjectSettingHelper()
                    ->GetChildrenServiceInfo("Tarvo", "Other")
                    .isEmpty());

        SkinManager::getInstance()->reload();
        QCOMPARE(SkinManager::getInstance()->getVXColor("FeiLvEmptyColor", Qt::white),
                 QColor("#102030"));
        QCOMPARE(SkinManager::getInstance()->getVXColor("Broken", QColor(1, 2, 3)),
                 QColor(1, 2, 3));
        QCOMPARE(SkinManager::getInstance()->getVXColor("Missing", QColor(255, 236, 255)),
                 QColor(255, 236, 255));
        QCOMPARE(ProjectSettingHelper::GetProjectSettingHelper()->getItemColor(24),
                 QColor(0, 0, 255));
        // Without the colour file every cell still gets its colour, and the file is reported
        // missing once, not once per cell.
        static QStringList logged;
        logged.clear();
        const QtMessageHandler previous = qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext&, const QString& text) { logged << text; });
        for (int cell = 0; cell < 50; ++cell)
            QCOMPARE(ProjectSettingHelper::GetProjectSettingHelper()->getItemColor(25),
                     QColor(204, 232, 255));
        qInstallMessageHandler(previous);
        QVERIFY2(logged.filter("ItemColors.json").size() <= 1, qPrintable(logged.join('\n')));
    }

    void moduleLoadingSaysWhatWentWrong()
    {
        QString error;
        QVERIFY(osgi::BundleLoader::Load(m_app.filePath("libmissing.so"), &error).isEmpty());
        QVERIFY(error.contains("模块文件不存在"));
        write("libbroken.so", "not a library");
        QVERIFY(osgi::BundleLoader::Load(m_app.filePath("libbroken.so"), &error).isEmpty());
        QVERIFY(error.contains("模块加载失败"));
        // A real library that registers no activator.
        const QString plain = QCoreApplication::applicationDirPath() + "/libhostmenubar.so";
        QVERIFY(osgi::BundleLoader::Load(plain, &error).isEmpty());
        QVERIFY(error.contains("未注册任何激活器"));
    }

    void failureReportsAreKeptAndLogged()
    {
        ClearExceptionReports();
        ProcExceptionNew(std::runtime_error("磁盘已满"), "GfQd\\GfQdSjWidget", 42,
                         "GfQdSjWidget::SaveTemplate");
        QCOMPARE(RecentExceptionReports().size(), 1);
        QCOMPARE(RecentExceptionReports().first().line, 42);
        QFile log(m_user.filePath("log/exception.log"));
        QVERIFY(log.open(QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(log.readAll());
        QVERIFY(text.contains("GfQdSjWidget::SaveTemplate"));
        QVERIFY(text.contains("磁盘已满"));
    }
};

QTEST_MAIN(tst_HostServices)
#include "tst_HostServices.moc"
