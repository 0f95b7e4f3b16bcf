#include "RibbonWidget.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QKeySequence>
#include <QLabel>
#include <QMenu>
#include <QStyle>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

QIcon iconFor(const QString& name, QStyle* style)
{
    static const QHash<QString, QStyle::StandardPixmap> icons = {
        {QStringLiteral("insert"), QStyle::SP_FileDialogNewFolder},
        {QStringLiteral("delete"), QStyle::SP_TrashIcon},
        {QStringLiteral("clear"), QStyle::SP_DialogResetButton},
        {QStringLiteral("rowheight"), QStyle::SP_ToolBarVerticalExtensionButton},
        {QStringLiteral("formula"), QStyle::SP_FileDialogDetailedView},
        {QStringLiteral("extract"), QStyle::SP_ArrowDown},
        {QStringLiteral("symbol"), QStyle::SP_FileDialogInfoView},
        {QStringLiteral("summary"), QStyle::SP_FileDialogListView},
        {QStringLiteral("renumber"), QStyle::SP_BrowserReload},
        {QStringLiteral("refresh"), QStyle::SP_BrowserReload},
        {QStringLiteral("sort"), QStyle::SP_ArrowUp},
        {QStringLiteral("block"), QStyle::SP_DialogApplyButton},
        {QStringLiteral("save"), QStyle::SP_DialogSaveButton},
        {QStringLiteral("export"), QStyle::SP_DriveFDIcon},
        {QStringLiteral("view"), QStyle::SP_FileDialogContentsView},
        {QStringLiteral("tender"), QStyle::SP_DirOpenIcon},
        {QStringLiteral("match"), QStyle::SP_CommandLink},
        {QStringLiteral("append"), QStyle::SP_ArrowRight},
    };
    return style->standardIcon(icons.value(name, QStyle::SP_FileIcon));
}

QStringList itemsOf(const QComboBox* combo)
{
    QStringList items;
    for (int i = 0; i < combo->count(); ++i)
        items << combo->itemText(i);
    return items;
}

// "&" in a command text ("刷新数量&价格") is text, not a mnemonic.
QString shownText(const QString& text)
{
    return QString(text).replace(QLatin1Char('&'), QStringLiteral("&&"));
}

} // namespace

RibbonWidget::RibbonWidget(QWidget* parent) : QWidget(parent), m_layout(new QHBoxLayout(this))
{
    setObjectName(QStringLiteral("ribbon"));
    setAttribute(Qt::WA_StyledBackground);
    setStyleSheet(QStringLiteral(
        "#ribbon { background: #f3f6fa; border-bottom: 1px solid #c9d2dd; }"
        "QToolButton { border: 1px solid transparent; padding: 2px; font-size: 9pt; }"
        "QToolButton:hover { background: #dde8f5; border: 1px solid #9fbbe0; }"
        "QToolButton:disabled { color: #a0a0a0; }"
        // Room for the arrow of a split button and of a drop-down, beside the text.
        "QToolButton[popupMode=\"1\"] { padding-right: 12px; }"
        "QToolButton::menu-button { width: 14px; border: none; }"
        "QToolButton[popupMode=\"2\"] { padding-right: 10px; }"
        "QLabel#groupTitle { color: #5a6b7d; font-size: 8pt; }"));
    m_layout->setContentsMargins(6, 3, 6, 3);
    m_layout->setSpacing(4);
    m_layout->addStretch();
    MenuBarManager* manager = MenuBarManager::getInstance();
    connect(manager, &MenuBarManager::itemStateChanged, this, &RibbonWidget::updateState);
    connect(manager, &MenuBarManager::ribbonActionMenuChanged, this, &RibbonWidget::installMenu);
    setFixedHeight(standardHeight());
}

int RibbonWidget::standardHeight()
{
    // One height for every page, so the window never jumps when the page changes: the
    // tallest a group can be (three small buttons stacked, a large button or a labelled combo)
    // over the group's title.
    QWidget probe;
    probe.setStyleSheet(styleSheet());
    RibbonItem small{QStringLiteral("插入行"),
                     QStringLiteral("button"),
                     QStringLiteral("insert"),
                     QString(),
                     {},
                     true};
    RibbonItem large = small;
    large.small = false;
    RibbonItem combo{
        QStringLiteral("模板选择"), QStringLiteral("combo"), QString(), QString(), {}, false};
    QWidget* smallButton = makeItem(small, &probe);
    QWidget* largeButton = makeItem(large, &probe);
    QWidget* comboBox = makeItem(combo, &probe);
    QLabel title(QStringLiteral("行操作"), &probe);
    title.setObjectName(QStringLiteral("groupTitle"));
    probe.ensurePolished();
    for (QWidget* w : probe.findChildren<QWidget*>())
        w->ensurePolished();
    const int items = qMax(3 * smallButton->sizeHint().height(),
                           qMax(largeButton->sizeHint().height(), comboBox->sizeHint().height()));
    const QMargins margins = m_layout->contentsMargins();
    return items + 1 + title.sizeHint().height() + margins.top() + margins.bottom() + 2;
}

QMenu* RibbonWidget::configuredMenu(const RibbonItem& item, QWidget* parent)
{
    auto* menu = new QMenu(parent);
    for (const QString& sub : item.items) {
        connect(menu->addAction(shownText(sub)), &QAction::triggered, this,
                [this, sub] { emit commandTriggered(sub); });
    }
    return menu;
}

QWidget* RibbonWidget::makeItem(const RibbonItem& item, QWidget* parent)
{
    const QString text = item.text;
    if (item.type == QLatin1String("combo")) {
        auto* box = new QWidget(parent);
        auto* layout = new QVBoxLayout(box);
        layout->setContentsMargins(2, 2, 2, 2);
        layout->addWidget(new QLabel(item.text, box));
        auto* combo = new QComboBox(box);
        combo->setMinimumWidth(220);
        combo->addItems(item.items);
        combo->setCurrentIndex(-1);
        connect(combo, &QComboBox::textActivated, this,
                [this, text](const QString& value) { emit comboChanged(text, value); });
        layout->addWidget(combo);
        layout->addStretch();
        return box;
    }
    auto* button = new QToolButton(parent);
    button->setText(shownText(item.text));
    button->setIcon(iconFor(item.icon, style()));
    button->setAutoRaise(true);
    if (item.small) {
        button->setIconSize(QSize(16, 16));
        button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    } else {
        button->setIconSize(QSize(24, 24));
        button->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
        // Large buttons keep their whole text (and a split button its arrow besides).
        const int arrow = item.type == QLatin1String("split") ? 16 : 0;
        button->setMinimumWidth(
            qMax(64, button->fontMetrics().horizontalAdvance(item.text) + 16 + arrow));
    }
    if (!item.shortcut.isEmpty()) {
        button->setShortcut(QKeySequence(item.shortcut));
        button->setToolTip(QStringLiteral("%1 (%2)").arg(item.text, item.shortcut));
    }
    const bool hasMenu =
        item.type == QLatin1String("dropdown") || item.type == QLatin1String("split");
    if (hasMenu) {
        // A page may install its own menu for the item; otherwise the configured entries.
        QMenu* menu = MenuBarManager::getInstance()->ribbonActionMenu(item.text);
        button->setMenu(menu ? menu : configuredMenu(item, button));
        button->setPopupMode(item.type == QLatin1String("split") ? QToolButton::MenuButtonPopup
                                                                 : QToolButton::InstantPopup);
    }
    if (!hasMenu || item.type == QLatin1String("split"))
        connect(button, &QToolButton::clicked, this, [this, text] { emit commandTriggered(text); });
    return button;
}

void RibbonWidget::installMenu(const QString& title)
{
    auto* button = qobject_cast<QToolButton*>(m_widgets.value(title).data());
    QMenu* menu = MenuBarManager::getInstance()->ribbonActionMenu(title);
    if (button && button->menu() && menu)
        button->setMenu(menu);
}

void RibbonWidget::showConfig(const RibbonConfig& config)
{
    while (QLayoutItem* child = m_layout->takeAt(0)) {
        delete child->widget();
        delete child;
    }
    m_widgets.clear();
    m_config = config;
    for (const RibbonGroup& group : config.groups) {
        auto* frame = new QWidget(this);
        auto* column = new QVBoxLayout(frame);
        column->setContentsMargins(2, 0, 2, 0);
        column->setSpacing(1);
        auto* row = new QHBoxLayout;
        row->setSpacing(2);
        QVBoxLayout* stack = nullptr; // the column small items are stacked into
        QList<QVBoxLayout*> stacks;
        for (const RibbonItem& item : group.items) {
            QWidget* widget = makeItem(item, frame);
            m_widgets.insert(item.text, widget);
            if (!item.small) {
                stack = nullptr;
                row->addWidget(widget);
            } else {
                if (!stack || stack->count() == 3) {
                    stack = new QVBoxLayout;
                    stack->setSpacing(0);
                    row->addLayout(stack);
                    stacks << stack;
                }
                stack->addWidget(widget, 0, Qt::AlignLeft);
            }
            updateState(item.text);
        }
        // A column not filled keeps its buttons at the top.
        for (QVBoxLayout* small : stacks)
            small->addStretch();
        column->addLayout(row);
        auto* title = new QLabel(group.title, frame);
        title->setObjectName(QStringLiteral("groupTitle"));
        title->setAlignment(Qt::AlignCenter);
        column->addWidget(title);
        m_layout->addWidget(frame);
        auto* line = new QFrame(this);
        line->setFrameShape(QFrame::VLine);
        line->setStyleSheet(QStringLiteral("color: #c9d2dd;"));
        m_layout->addWidget(line);
    }
    m_layout->addStretch();
    MenuBarManager::getInstance()->ForgetRibbonActionMenus();
}

void RibbonWidget::updateState(const QString& text)
{
    QWidget* widget = m_widgets.value(text);
    if (!widget)
        return;
    MenuBarManager* manager = MenuBarManager::getInstance();
    widget->setEnabled(manager->isEnabled(text));
    if (auto* combo = widget->findChild<QComboBox*>()) {
        if (manager->hasComboItems(text) &&
            manager->comboItems(text) != QStringList(itemsOf(combo))) {
            const QSignalBlocker blocker(combo);
            combo->clear();
            combo->addItems(manager->comboItems(text));
        }
        const QSignalBlocker blocker(combo);
        combo->setCurrentIndex(combo->findText(manager->comboText(text)));
    }
}
