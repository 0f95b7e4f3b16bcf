#include "MenuBarManager.h"
#include "RibbonWidget.h"

#include "SharedInterface.h"
#include "StaticFileHelper.h"

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QMenu>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QToolButton>
#include <QtTest>

// The ribbon configuration files as shipped and as a careless editor might leave them, the
// ribbon state that pages drive by message, and the strip that turns both into buttons.
class tst_Ribbon : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;

    QString write(const QString& name, const QByteArray& content)
    {
        QFile file(m_dir.filePath(name));
        if (!file.open(QIODevice::WriteOnly))
            return QString();
        file.write(content);
        return file.fileName();
    }

    static QStringList texts(const RibbonConfig& config)
    {
        QStringList all;
        for (const RibbonGroup& group : config.groups)
            for (const RibbonItem& item : group.items)
                all << item.text << item.items;
        return all;
    }

private slots:
    void init() { MenuBarManager::getInstance()->reset(); }

    void shippedFilesCarryEachPagesCommands_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("page");
        QTest::addColumn<QStringList>("commands");
        const QStringList rows = {"插入行", "招投标-删除行", "自动行高", "表格自适应行高",
                                  "表格置最小行高"};
        auto row = [&rows](const char* file, const char* page, const QStringList& more) {
            QTest::newRow(file) << QString(file) << QString(page) << rows + more;
        };
        row("XiangMu-QiTaXiangMuQingDanJiJiJiaBiao.json", "其他项目清单",
            {"清除所有行", "编辑公式", "提取零星工作项目费", "模板选择"});
        row("XiangMu-ZhaoBiaoRenCaiLiaoGouZhiFeiQingDan.json", "招标人材料购置费清单",
            {"汇总工程材料", "重新生成材料序号", "刷新数量&价格", "清除数量&价格", "编制:批量删除",
             "保留前30行,其余删除", "编制:排序", "招投标-块选", "定义块首"});
        row("XiangMu-LingXingGongZuoXiangMuQingDanJiJiJiaBiao.json", "零星工作项目人工单价清单",
            {"清除所有行", "模板选择", "另存模板"});
        row("XiangMu-GuiFeiQingDan.json", "规费税金清单",
            {"模板选择", "另存模板", "导出招投标CJZ", "导出竣工CJZ", "导出备案CJZX"});
        row("XiangMu-ZanGuCaiLiaoQingDan.json", "暂估材料(工程设备)清单",
            {"查看单位工程暂估设置", "汇总工程暂估材料", "生成序号与招标编码", "查看招标暂估材料",
             "对应整理投标暂估材料"});
        row("XiangMu-XuPingShenCaiLiaoQingDan.json", "需评审的材料清单",
            {"汇总工程材料", "生成序号与招标编码", "查看招标需评审材料", "对应整理投标需评审材料"});
        row("XiangMu-XuSuiJiChouQuPingShenCaiLiaoQingDan.json", "需评审的材料清单",
            {"汇总工程材料", "生成序号与招标编码", "刷新数量&价格", "清除数量&价格",
             "编制:批量删除", "查看招标需评审材料", "对应整理投标需评审材料"});
    }

    void shippedFilesCarryEachPagesCommands()
    {
        QFETCH(QString, file);
        QFETCH(QString, page);
        QFETCH(QStringList, commands);
        // The regional file is the one the host picks ("AreaVer" is "SiChuan").
        const QString regional = StaticFileHelper::AquireMenuConfig(file);
        QVERIFY(regional.endsWith("/Config/Menu/SiChuan/" + file));
        const QString plain = SharedInterface::GetAppPath() + "Config/Menu/" + file;
        for (const QString& path : {regional, plain}) {
            QString error;
            const RibbonConfig config = MenuBarManager::ReadMenuBarInfoFromFileEx(path, &error);
            QVERIFY2(error.isEmpty(), qPrintable(error));
            QCOMPARE(config.page, page);
            const QStringList all = texts(config);
            for (const QString& command : commands)
                QVERIFY2(all.contains(command), qPrintable(command));
            QCOMPARE(all.size(), QSet<QString>(all.begin(), all.end()).size());
        }
    }

    void faultyFilesAreNamedAndKeepWhatIsGood()
    {
        QString error;
        RibbonConfig config =
            MenuBarManager::ReadMenuBarInfoFromFileEx(m_dir.filePath("absent.json"), &error);
        QVERIFY(!config.isValid());
        QCOMPARE(error, "菜单配置文件无法打开：" + m_dir.filePath("absent.json"));

        const QString broken = write("broken.json", "{ \"groups\": [ ");
        config = MenuBarManager::ReadMenuBarInfoFromFileEx(broken, &error);
        QVERIFY(!config.isValid());
        QVERIFY(error.startsWith("菜单配置文件格式错误：" + broken));

        const QString array = write("array.json", "[1, 2]");
        config = MenuBarManager::ReadMenuBarInfoFromFileEx(array, &error);
        QCOMPARE(error, "菜单配置文件格式错误：" + array + "（最外层应为对象）");

        const QString empty = write("empty.json", "{\"page\": \"规费税金清单\", \"groups\": []}");
        config = MenuBarManager::ReadMenuBarInfoFromFileEx(empty, &error);
        QVERIFY(!config.isValid());
        QCOMPARE(error, "菜单配置文件没有任何分组：" + empty);

        // One bad item is left out and named; the good ones stay, a missing type is a button.
        const QString mixed = write("mixed.json", R"({"page": "p", "groups": [{"title": "行操作",
            "items": [{"text": "插入行"}, {"type": "button"}, {"text": "删除", "type": "slider"},
                      {"text": "自动行高", "type": "dropdown", "items": ["表格自适应行高"]}]}]})");
        config = MenuBarManager::ReadMenuBarInfoFromFileEx(mixed, &error);
        QCOMPARE(config.groups.size(), 1);
        QCOMPARE(config.groups.first().items.size(), 2);
        QCOMPARE(config.groups.first().items.at(0).type, QString("button"));
        QCOMPARE(config.groups.first().items.at(1).items, QStringList{"表格自适应行高"});
        QCOMPARE(error, QString("菜单配置文件有误：%1\n分组“行操作”中有未命名的菜单项\n"
                                "菜单项“删除”的类型“slider”无效")
                            .arg(mixed));
    }

    void itemStatesAndCombosFollowThePage()
    {
        MenuBarManager* manager = MenuBarManager::getInstance();
        RibbonWidget ribbon;
        QString error;
        ribbon.showConfig(MenuBarManager::ReadMenuBarInfoFromFileEx(
            StaticFileHelper::AquireMenuConfig("XiangMu-GuiFeiQingDan.json"), &error));
        QWidget* insert = ribbon.itemWidget("插入行");
        QVERIFY(insert && insert->isEnabled());

        manager->SetItemState("插入行", 3);
        QVERIFY(!insert->isEnabled());
        manager->SetItemState("插入行", 1);
        QVERIFY(insert->isEnabled());

        manager->ChangeMenuToDisable({"导出招投标CJZ", "导出竣工CJZ", "不存在的菜单"});
        QVERIFY(!ribbon.itemWidget("导出招投标CJZ")->isEnabled());
        QVERIFY(!ribbon.itemWidget("导出竣工CJZ")->isEnabled());
        QVERIFY(ribbon.itemWidget("导出备案CJZX")->isEnabled());

        // A page gives the combo its choices and its current text without a change message.
        auto* combo = ribbon.itemWidget("模板选择")->findChild<QComboBox*>();
        QSignalSpy chosen(&ribbon, &RibbonWidget::comboChanged);
        manager->SetComboItems("模板选择", {"甲", "乙"});
        manager->SetComboText("模板选择", "乙");
        QCOMPARE(combo->count(), 2);
        QCOMPARE(combo->currentText(), QString("乙"));
        manager->SetComboText("模板选择", "不在列表中");
        QCOMPARE(combo->currentIndex(), -1);
        QCOMPARE(chosen.size(), 0);
        emit combo->textActivated("甲");
        QCOMPARE(chosen.size(), 1);
        QCOMPARE(chosen.first(), QList<QVariant>({"模板选择", "甲"}));

        // A new page's ribbon starts from its file again.
        manager->reset();
        ribbon.showConfig(ribbon.config());
        QVERIFY(ribbon.itemWidget("导出招投标CJZ")->isEnabled());
        QCOMPARE(ribbon.itemWidget("模板选择")->findChild<QComboBox*>()->count(), 0);
    }

    void buttonsMenusAndPageMenus()
    {
        const QString path = write("menus.json", R"({"page": "p", "groups": [{"title": "g",
            "items": [{"text": "刷新数量&价格", "shortcut": "Ctrl+R"},
                      {"text": "清除数量&价格", "type": "dropdown", "items": ["清除所有数量"]},
                      {"text": "招投标-删除行", "type": "split", "items": ["删除当前行/块"]},
                      {"text": "编制:排序", "type": "dropdown", "items": ["金额"], "size": "small"}]}]})");
        const RibbonConfig config = MenuBarManager::ReadMenuBarInfoFromFileEx(path);
        MenuBarManager* manager = MenuBarManager::getInstance();
        QMenu pageMenu;
        pageMenu.addAction("材料名称");
        manager->SetRibbonActionMenu(4, "编制:排序", &pageMenu);

        RibbonWidget ribbon;
        QSignalSpy commands(&ribbon, &RibbonWidget::commandTriggered);
        ribbon.showConfig(config);
        auto button = [&](const char* text) {
            return qobject_cast<QToolButton*>(ribbon.itemWidget(text));
        };
        // "&" is shown, not taken as a mnemonic, and the command keeps its text.
        QCOMPARE(button("刷新数量&价格")->text(), QString("刷新数量&&价格"));
        QCOMPARE(button("刷新数量&价格")->shortcut(), QKeySequence("Ctrl+R"));
        button("刷新数量&价格")->click();
        button("清除数量&价格")->menu()->actions().first()->trigger();
        button("招投标-删除行")->click();
        QCOMPARE(button("招投标-删除行")->popupMode(), QToolButton::MenuButtonPopup);
        QCOMPARE(button("编制:排序")->toolButtonStyle(), Qt::ToolButtonTextBesideIcon);
        QCOMPARE(button("招投标-删除行")->toolButtonStyle(), Qt::ToolButtonTextUnderIcon);
        QList<QString> sentTexts;
        for (const QList<QVariant>& c : commands)
            sentTexts << c.first().toString();
        QCOMPARE(sentTexts, QList<QString>({"刷新数量&价格", "清除所有数量", "招投标-删除行"}));
        // A drop-down only opens its menu (a click would run it modally).
        QCOMPARE(button("清除数量&价格")->popupMode(), QToolButton::InstantPopup);

        // The page's menu replaces the configured one, for this ribbon only.
        QCOMPARE(button("编制:排序")->menu(), &pageMenu);
        ribbon.showConfig(config);
        QVERIFY(button("编制:排序")->menu() != &pageMenu);
        // A menu installed while its ribbon shows is put on at once.
        manager->SetRibbonActionMenu(4, "编制:排序", &pageMenu);
        QCOMPARE(button("编制:排序")->menu(), &pageMenu);
        // Plain buttons never get one.
        manager->SetRibbonActionMenu(4, "刷新数量&价格", &pageMenu);
        QVERIFY(!button("刷新数量&价格")->menu());
        manager->ForgetRibbonActionMenus();
    }
};

QTEST_MAIN(tst_Ribbon)
#include "tst_Ribbon.moc"
