#include "MenuBarManager.h"

#include "JsonSchemaCheck.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMenu>

MenuBarManager* MenuBarManager::getInstance()
{
    static MenuBarManager* instance = new MenuBarManager;
    return instance;
}

RibbonConfig MenuBarManager::ReadMenuBarInfoFromFileEx(const QString& path, QString* error)
{
    RibbonConfig config;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        if (error)
            *error = QStringLiteral("菜单配置文件无法打开：%1").arg(path);
        return config;
    }
    // Read whole, within a bound (read(max) would reserve the bound itself every time).
    if (file.size() > (16 << 20)) {
        if (error)
            *error = QStringLiteral("菜单配置文件过大：%1").arg(path);
        return config;
    }
    const QByteArray bytes = file.readAll();
    QString problem;
    if (!JsonSchemaCheck::wellFormed(bytes, &problem)) {
        if (error)
            *error = QStringLiteral("菜单配置文件格式错误：%1（%2）").arg(path, problem);
        return config;
    }
    QJsonParseError parseError;
    const QJsonDocument doc = QJsonDocument::fromJson(bytes, &parseError);
    if (parseError.error != QJsonParseError::NoError || !doc.isObject()) {
        if (error)
            *error = QStringLiteral("菜单配置文件格式错误：%1（%2）")
                         .arg(path, parseError.error != QJsonParseError::NoError
                                        ? parseError.errorString()
                                        : QStringLiteral("最外层应为对象"));
        return config;
    }
    // The file's frame (groups, titles, item lists) must be right, or nothing of it is shown.
    if (!JsonSchemaCheck::validate(bytes, QStringLiteral("ribbon"), &problem)) {
        if (error)
            *error = QStringLiteral("菜单配置文件格式错误：%1（%2）").arg(path, problem);
        return config;
    }
    static const QStringList kTypes = {QStringLiteral("button"), QStringLiteral("dropdown"),
                                       QStringLiteral("split"), QStringLiteral("combo")};
    QStringList problems;
    const QJsonObject root = doc.object();
    config.page = root.value(QStringLiteral("page")).toString();
    const QJsonArray groups = root.value(QStringLiteral("groups")).toArray();
    for (int g = 0; g < groups.size(); ++g) {
        RibbonGroup group;
        group.title = groups.at(g).toObject().value(QStringLiteral("title")).toString();
        const QJsonArray items = groups.at(g).toObject().value(QStringLiteral("items")).toArray();
        for (int n = 0; n < items.size(); ++n) {
            const QJsonValue i = items.at(n);
            const QJsonObject o = i.toObject();
            RibbonItem item;
            item.text = o.value(QStringLiteral("text")).toString();
            item.type = o.value(QStringLiteral("type")).toString(QStringLiteral("button"));
            item.icon = o.value(QStringLiteral("icon")).toString();
            item.shortcut = o.value(QStringLiteral("shortcut")).toString();
            item.small = o.value(QStringLiteral("size")).toString() == QLatin1String("small");
            for (const QJsonValue& sub : o.value(QStringLiteral("items")).toArray())
                item.items << sub.toString();
            // A faulty item is left out and named; the rest of the ribbon still shows.
            if (item.text.isEmpty())
                problems << QStringLiteral("分组“%1”中有未命名的菜单项").arg(group.title);
            else if (!kTypes.contains(item.type))
                problems << QStringLiteral("菜单项“%1”的类型“%2”无效").arg(item.text, item.type);
            else if (!JsonSchemaCheck::validate(QJsonDocument(o).toJson(QJsonDocument::Compact),
                                                QStringLiteral("ribbon-item"), &problem))
                problems << QStringLiteral("菜单项“%1”不符合格式：/groups/%2/items/%3%4")
                                .arg(item.text)
                                .arg(g)
                                .arg(n)
                                .arg(problem.startsWith(QLatin1Char('/'))
                                         ? problem
                                         : QString(problem).prepend(QLatin1Char(' ')));
            else
                group.items << item;
        }
        config.groups << group;
    }
    if (!config.isValid())
        problems.prepend(QStringLiteral("菜单配置文件没有任何分组：%1").arg(path));
    else if (!problems.isEmpty())
        problems.prepend(QStringLiteral("菜单配置文件有误：%1").arg(path));
    // The faulty items are left out by design; each is said once in the log, however often
    // the page's ribbon is shown again.
    for (int p = 1; p < problems.size(); ++p)
        JsonSchemaCheck::warnOnce(problems.at(0) + QLatin1Char(' ') + problems.at(p));
    if (error)
        *error = problems.join(QLatin1Char('\n'));
    return config;
}

void MenuBarManager::SetRibbonActionMenu(int page, const QString& title, QMenu* menu)
{
    Q_UNUSED(page)
    m_menus.insert(title, menu);
    emit ribbonActionMenuChanged(title);
}

void MenuBarManager::ForgetRibbonActionMenus()
{
    m_menus.clear();
}

QMenu* MenuBarManager::ribbonActionMenu(const QString& title) const
{
    return m_menus.value(title);
}

void MenuBarManager::ChangeMenuToDisable(const QStringList& texts)
{
    for (const QString& text : texts)
        SetItemState(text, 3);
}

void MenuBarManager::SetItemState(const QString& text, int state)
{
    if (m_states.value(text, 0) == state && m_states.contains(text))
        return;
    m_states.insert(text, state);
    emit itemStateChanged(text);
}

void MenuBarManager::SetComboText(const QString& item, const QString& text)
{
    m_comboTexts.insert(item, text);
    emit itemStateChanged(item);
}

void MenuBarManager::SetComboItems(const QString& item, const QStringList& choices)
{
    m_comboItems.insert(item, choices);
    emit itemStateChanged(item);
}

void MenuBarManager::reset()
{
    m_states.clear();
    m_comboTexts.clear();
    m_comboItems.clear();
}
