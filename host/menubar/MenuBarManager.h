#pragma once

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QVector>

class QMenu;

// One item of a ribbon group: a button, a drop-down with items, or a combo with choices.
struct RibbonItem
{
    QString text;
    QString type; // "button", "dropdown", "combo"
    QString icon;
    QString shortcut;
    QStringList items;
};

struct RibbonGroup
{
    QString title;
    QVector<RibbonItem> items;
};

// The ribbon of one page, read from a menu configuration file.
struct RibbonConfig
{
    QString page;
    QVector<RibbonGroup> groups;
    bool isValid() const { return !groups.isEmpty(); }
};

// The host's ribbon state: which configuration is shown, item states (from message 47),
// drop-down menus installed by pages, disabled items.
class MenuBarManager : public QObject
{
    Q_OBJECT
public:
    static MenuBarManager* getInstance();

    // Reads a ribbon configuration; an unreadable or malformed file gives an invalid config
    // and the reason in error.
    static RibbonConfig ReadMenuBarInfoFromFileEx(const QString& path, QString* error = nullptr);

    void SetRibbonActionMenu(int page, const QString& title, QMenu* menu);
    QMenu* ribbonActionMenu(const QString& title) const;
    void ChangeMenuToDisable(const QStringList& texts);
    // State of an item by its text: 0/1 enabled, 2 checked, 3 disabled.
    void SetItemState(const QString& text, int state);
    int itemState(const QString& text) const { return m_states.value(text, 0); }
    bool isEnabled(const QString& text) const { return itemState(text) != 3; }
    void SetComboText(const QString& item, const QString& text);
    QString comboText(const QString& item) const { return m_comboTexts.value(item); }
    // The choices of a combo, when a page gives them (otherwise the configured ones).
    void SetComboItems(const QString& item, const QStringList& choices);
    QStringList comboItems(const QString& item) const { return m_comboItems.value(item); }
    bool hasComboItems(const QString& item) const { return m_comboItems.contains(item); }
    void reset();

signals:
    void itemStateChanged(const QString& text);
    void menusChanged();

private:
    MenuBarManager() = default;
    QHash<QString, int> m_states;
    QHash<QString, QString> m_comboTexts;
    QHash<QString, QStringList> m_comboItems;
    QHash<QString, QPointer<QMenu>> m_menus;
};
