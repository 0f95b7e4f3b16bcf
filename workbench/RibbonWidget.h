#pragma once

#include "MenuBarManager.h"

#include <QHash>
#include <QPointer>
#include <QWidget>

class QHBoxLayout;
class QMenu;
class QToolButton;

// The ribbon strip: the groups of the current page's menu configuration as tool buttons,
// drop-downs, split buttons and combos. Commands come out as signals with the item's text.
class RibbonWidget : public QWidget
{
    Q_OBJECT
public:
    explicit RibbonWidget(QWidget* parent = nullptr);

    // Replaces the strip; menus the page installed for it are taken and then forgotten.
    void showConfig(const RibbonConfig& config);
    const RibbonConfig& config() const { return m_config; }
    QWidget* itemWidget(const QString& text) const { return m_widgets.value(text); }

signals:
    void commandTriggered(const QString& text);
    void comboChanged(const QString& item, const QString& text);

private:
    void updateState(const QString& text);
    void installMenu(const QString& title);
    QWidget* makeItem(const RibbonItem& item, QWidget* parent);
    int standardHeight();
    QMenu* configuredMenu(const RibbonItem& item, QWidget* parent);

    RibbonConfig m_config;
    QHBoxLayout* m_layout;
    QHash<QString, QPointer<QWidget>> m_widgets;
};
