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
    QString type; // "button", "dropdown", "split" (a button with a menu beside it), "combo"
    QString icon;
    QString shortcut;
    QStringList items;
    bool small = false; // "size": "small": a short button, stacked three to a column
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

// The host's ribbon state: item states (from message 47), combo texts and choices, drop-down
// menus installed by pages, disabled items. Everything is keyed by the item's text.
class MenuBarManager : public QObject
{
    Q_OBJECT
public:
    static MenuBarManager* getInstance();

    // Reads a ribbon configuration; an unreadable or malformed file gives an invalid config
    // and the reason in error.
    static RibbonConfig ReadMenuBarInfoFromFileEx(const QString& path, QString* error = nullptr);

    // A page installs its own menu on a drop-down item of the ribbon it is about to show (or
    // shows); the menu stays the page's. The next ribbon takes it and then forgets it, so a
    // menu never turns up on another page's item of the same text.
    void SetRibbonActionMenu(int page, const QString& title, QMenu* menu);
    QMenu* ribbonActionMenu(const QString& title) const;
    void ForgetRibbonActionMenus();
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
    // Forgets states, combo texts and choices: a new page's ribbon starts from its file.
    void reset();

signals:
    void itemStateChanged(const QString& text);
    void ribbonActionMenuChanged(const QString& title);

private:
    MenuBarManager() = default;
    QHash<QString, int> m_states;
    QHash<QString, QString> m_comboTexts;
    QHash<QString, QStringList> m_comboItems;
    QHash<QString, QPointer<QMenu>> m_menus;
};
