// Every configuration file the program ships validates against the schema of its kind, and a
// value of the wrong type or out of range is named by file, JSON pointer and value: a refusal
// for ribbons, a warning once (and the documented defaults) for settings and colours.
#include "JsonConfig.h"
#include "JsonSchemaCheck.h"
#include "MenuBarManager.h"

#include <QDirIterator>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QtTest>

namespace {

QStringList g_warnings;

void collect(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    if (type == QtWarningMsg)
        g_warnings << text;
}

QByteArray contents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class tst_ConfigSchemas : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    QString write(const QString& name, const QByteArray& bytes) const
    {
        QFile file(m_dir.filePath(name));
        file.open(QIODevice::WriteOnly);
        file.write(bytes);
        return file.fileName();
    }

private slots:
    void everyShippedFileValidates()
    {
        const QString appdir = QStringLiteral(APPDIR_SOURCE);
        const QVector<QPair<QString, QStringList>> kinds = {
            {"table-header", {"Config/TableHeader"}},
            {"ribbon", {"Config/Menu"}},
            {"content-template", {"Template"}},
        };
        int checked = 0;
        for (const auto& [kind, folders] : kinds)
            for (const QString& folder : folders) {
                QDirIterator it(appdir + '/' + folder, {"*.json", "*.gfqd", "*.qtxm", "*.lxgz"},
                                QDir::Files, QDirIterator::Subdirectories);
                while (it.hasNext()) {
                    const QString path = it.next();
                    const QByteArray json = contents(path);
                    QString problem;
                    QVERIFY2(JsonSchemaCheck::validate(json, kind, &problem),
                             qPrintable(path + ": " + problem));
                    ++checked;
                    if (kind != "ribbon")
                        continue;
                    // Every item of a shipped ribbon is whole: none is left out.
                    for (const QJsonValue& group :
                         QJsonDocument::fromJson(json).object().value("groups").toArray())
                        for (const QJsonValue& item : group.toObject().value("items").toArray())
                            QVERIFY2(
                                JsonSchemaCheck::validate(QJsonDocument(item.toObject()).toJson(),
                                                          "ribbon-item", &problem),
                                qPrintable(path + ": " + problem));
                }
            }
        QVERIFY2(checked >= 30, qPrintable(QString::number(checked)));
        QString problem;
        QVERIFY2(JsonSchemaCheck::validate(contents(appdir + "/Config/Settings.json"), "settings",
                                           &problem),
                 qPrintable(problem));
        QVERIFY2(
            JsonSchemaCheck::validate(contents(appdir + "/Config/Skin.json"), "colours", &problem),
            qPrintable(problem));
    }

    void wrongValuesAreNamedByPointerAndValue()
    {
        const QVector<std::tuple<QByteArray, QString, QString>> cases = {
            {R"({"AreaVer": 3})", "settings", "/AreaVer 的值 3 类型不符"},
            {R"({"AreaVer": "Si Chuan"})", "settings", "/AreaVer 的值 \"Si Chuan\" 写法不符"},
            {R"({"Theme": true})", "settings", "/Theme 的值 true 类型不符"},
            {R"({"ListBackground": "#12345"})", "colours",
             "/ListBackground 的值 \"#12345\" 写法不符"},
            {R"({"24": [0, 0, 255]})", "colours", "/24 的值 [0,0,255] 类型不符"},
            {R"({"groups": [{"title": 5, "items": []}]})", "ribbon",
             "/groups/0/title 的值 5 类型不符"},
            {R"({"groups": [{"title": "a"}]})", "ribbon",
             "/groups/0 的值 {\"title\":\"a\"} 缺少必需的项"},
            {R"({"text": "插入行", "size": 5})", "ribbon-item", "/size 的值 5 不是允许的值"},
            {R"({"text": "插入行", "items": ["a", 2]})", "ribbon-item", "/items/1 的值 2 类型不符"},
            // A key twice: Qt would silently keep the last one (and leak the first).
            {R"({"groups": [{"title": "a", "items": [], "items": []}]})", "ribbon",
             "/groups/0 中的键“items”出现了两次"},
            {R"({"AreaVer": "A", "AreaVer": "B"})", "settings", "/ 中的键“AreaVer”出现了两次"},
            // A number no setting can take, which the validator cannot convert to compare.
            {R"({"columns": [{"field": 1, "align": 99992E16}]})", "table-header",
             "/columns/0/align 的值 999920000000000000000.0 超出范围"},
        };
        for (const auto& [json, kind, expected] : cases) {
            QString problem;
            QVERIFY2(!JsonSchemaCheck::validate(json, kind, &problem), json.constData());
            QCOMPARE(problem, expected);
        }
    }

    // Settings and colours have documented defaults: a faulty value takes its own, the rest
    // stay, and one warning names the file, the place and the value, however often it is read.
    void faultySettingsWarnOnceAndGiveDefaults()
    {
        const QString skin = write("Skin.json", "{\"ListBackground\": \"#ffffff\", \"x\": [1]}");
        const QString bad = write("Settings.json", R"({"AreaVer": 3, "Other": "y"})");
        g_warnings.clear();
        const QtMessageHandler previous = qInstallMessageHandler(collect);
        const QJsonObject colours = ReadJsonConfig(skin, "colours");
        const QJsonObject first = ReadJsonConfig(bad, "settings");
        const QJsonObject second = ReadJsonConfig(bad, "settings");
        qInstallMessageHandler(previous);
        QCOMPARE(colours.keys(), QStringList{"ListBackground"});
        QCOMPARE(first.keys(), QStringList{"Other"});
        QCOMPARE(second, first);
        QCOMPARE(g_warnings,
                 QStringList({"配置文件“" + skin +
                                  "”中的值不符合格式，已按默认值使用：/x 的值 [1] 类型不符",
                              "配置文件“" + bad +
                                  "”中的值不符合格式，已按默认值使用：/AreaVer 的值 3 类型不符"}));
    }

    // A ribbon whose frame is wrong is refused whole; a faulty item is left out and named
    // with its place in the file, the rest shows.
    void ribbonFramesAreRefusedAndFaultyItemsLeftOut()
    {
        QString error;
        const QString frame = write("frame.json", R"({"groups": [{"title": 5, "items": []}]})");
        QVERIFY(!MenuBarManager::ReadMenuBarInfoFromFileEx(frame, &error).isValid());
        QCOMPARE(error, "菜单配置文件格式错误：" + frame + "（/groups/0/title 的值 5 类型不符）");

        const QString items = write("items.json", R"({"page": "p", "groups": [{"title": "行",
            "items": [{"text": "插入行"}, {"text": "删除", "icon": 7},
                      {"text": "行高", "type": "dropdown", "items": ["a", null]}]}]})");
        g_warnings.clear();
        const QtMessageHandler previous = qInstallMessageHandler(collect);
        const RibbonConfig config = MenuBarManager::ReadMenuBarInfoFromFileEx(items, &error);
        MenuBarManager::ReadMenuBarInfoFromFileEx(items, &error);
        qInstallMessageHandler(previous);
        QCOMPARE(config.groups.first().items.size(), 1);
        QCOMPARE(error, "菜单配置文件有误：" + items +
                            "\n菜单项“删除”不符合格式：/groups/0/items/1/icon 的值 7 类型不符"
                            "\n菜单项“行高”不符合格式：/groups/0/items/2/items/1 的值 null "
                            "类型不符");
        QCOMPARE(g_warnings.size(), 2); // once each, though the file was read twice

        // Found by fuzzing: a duplicated key reached Qt's JSON reader, which leaks on it.
        const QString twice = write("twice.json", R"({"groups": [{"title": "行", "items": [
            {"text": "行高", "items": ["a"], "items": []}]}]})");
        QVERIFY(!MenuBarManager::ReadMenuBarInfoFromFileEx(twice, &error).isValid());
        QCOMPARE(error, "菜单配置文件格式错误：" + twice +
                            "（/groups/0/items/0 中的键“items”出现了两次）");
    }
};

QTEST_GUILESS_MAIN(tst_ConfigSchemas)
#include "tst_ConfigSchemas.moc"
