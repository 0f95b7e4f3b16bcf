#include "zTableView.h"

#include "BaseDataItemModel.h"
#include "InteractionSeam.h"
#include "SharedInterface.h"
#include "VXEditorDelegate.h"
#include "zFileDialog.h"
#include "zMessageBox.h"
#include "zRowHeaderView.h"
#include "zTitleModal.h"

#include <QClipboard>
#include <QCollator>
#include <QDebug>
#include <QDialog>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QListWidget>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QRegularExpression>
#include <QSaveFile>
#include <QScrollBar>
#include <QSet>
#include <QVBoxLayout>

#include <algorithm>

zTableView::zTableView(QWidget* parent) : QTableView(parent)
{
    setSelectionBehavior(QAbstractItemView::SelectItems);
    setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                    QAbstractItemView::AnyKeyPressed);
    setAlternatingRowColors(false);
    horizontalHeader()->setHighlightSections(false);
    setVerticalHeader(new zRowHeaderView(this));
    verticalHeader()->setSectionResizeMode(QHeaderView::Interactive);
    verticalHeader()->installEventFilter(this);
    setItemDelegate(new VXEditorDelegate(this));
    verticalHeader()->viewport()->installEventFilter(this);
    setStyleSheet(QStringLiteral(
        "QTableView { gridline-color: #d0d7e1; selection-background-color: #cde8ff;"
        " selection-color: black; }"
        "QHeaderView::section { background: #eef2f7; border: 1px solid #d0d7e1; padding: 2px; }"));
}

QString zTableView::templateDir() const
{
    return SharedInterface::GetUserDataPath() + QStringLiteral("TableHeader/") + m_config.listName;
}

bool zTableView::loadTemplateFile(const QString& path, QString* error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        if (error)
            *error = QStringLiteral("无法读取表头配置“%1”").arg(path);
        return false;
    }
    const QString listName = m_config.listName;
    HeaderConfig config = HeaderConfig::fromJson(file.readAll(), error);
    if (!config.isValid())
        return false;
    if (config.listName.isEmpty())
        config.listName = listName;
    applyHeaderConfig(config);
    return true;
}

bool zTableView::LoadTableHeader(const QString& listName)
{
    const QString path = SharedInterface::GetAppPath() + QStringLiteral("Config/TableHeader/") +
                         listName + QStringLiteral(".json");
    QString error;
    m_config.listName = listName;
    if (!loadTemplateFile(path, &error)) {
        qDebug().noquote() << QStringLiteral("表头加载失败 %1: %2").arg(listName, error);
        return false;
    }
    m_currentTemplate = DefaultTemplateName;
    // The user's last chosen template of this list, if it is still there.
    QFile current(templateDir() + QStringLiteral("/.current"));
    if (current.open(QIODevice::ReadOnly)) {
        const QString name = QString::fromUtf8(current.readAll()).trimmed();
        if (!name.isEmpty() && name != DefaultTemplateName) {
            const QString templatePath =
                templateDir() + QLatin1Char('/') + name + QStringLiteral(".json");
            if (loadTemplateFile(templatePath, &error))
                m_currentTemplate = name;
            else
                qDebug().noquote()
                    << QStringLiteral("表头模板加载失败 %1/%2: %3").arg(listName, name, error);
        }
    }
    return true;
}

void zTableView::applyHeaderConfig(const HeaderConfig& config)
{
    m_config = config;
    setFont(QFont(config.fontFamily, config.fontPointSize));
    verticalHeader()->setDefaultSectionSize(config.rowHeight);
    pushColumnsToModel();
    emit headerConfigChanged();
}

void zTableView::setModel(QAbstractItemModel* model)
{
    QTableView::setModel(model);
    pushColumnsToModel();
    if (m_footer) {
        m_footer->setModel(model);
        setFooterEnabled(true); // follows the new model
    }
}

void zTableView::pushColumnsToModel()
{
    if (auto* m = qobject_cast<BaseDataItemModel*>(model()))
        m->setColumns(m_config.columns);
    for (int c = 0; c < m_config.columns.size(); ++c) {
        setColumnWidth(c, m_config.columns.at(c).width);
        setColumnHidden(c, !m_config.columns.at(c).visible);
    }
}

int zTableView::fieldOfColumn(int column) const
{
    return column >= 0 && column < m_config.columns.size() ? m_config.columns.at(column).field : -1;
}

int zTableView::columnOfField(int field) const
{
    for (int c = 0; c < m_config.columns.size(); ++c)
        if (m_config.columns.at(c).field == field)
            return c;
    return -1;
}

void zTableView::closeEditor()
{
    if (QWidget* editor = indexWidget(currentIndex()))
        QTableView::commitData(editor);
    if (state() == QAbstractItemView::EditingState) {
        QWidget* focus = focusWidget();
        if (focus && focus != this && isAncestorOf(focus)) {
            commitData(focus);
            QTableView::closeEditor(focus, QAbstractItemDelegate::NoHint);
        }
    }
}

void zTableView::rememberTemplate(const QString& name)
{
    m_currentTemplate = name;
    QDir().mkpath(templateDir());
    QSaveFile file(templateDir() + QStringLiteral("/.current"));
    if (file.open(QIODevice::WriteOnly)) {
        file.write(name.toUtf8());
        file.commit();
    }
}

void zTableView::callSwitchTableHeaderConfig(zTableView* view, int type, int scope,
                                             const QString& name)
{
    Q_UNUSED(type)
    Q_UNUSED(scope)
    if (!view)
        return;
    if (name.isEmpty() || name == DefaultTemplateName) {
        view->rememberTemplate(DefaultTemplateName);
        view->LoadTableHeader(view->listName());
        return;
    }
    QString error;
    if (view->loadTemplateFile(
            view->templateDir() + QLatin1Char('/') + name + QStringLiteral(".json"), &error))
        view->rememberTemplate(name);
    else
        showWarning(view, QStringLiteral("提示"), error);
}

bool zTableView::saveUserTemplate(const QString& name, QString* error)
{
    static const QRegularExpression invalid(QStringLiteral("[\\\\/:*?\"<>|]"));
    const QString trimmed = name.trimmed();
    if (trimmed.isEmpty() || trimmed == DefaultTemplateName ||
        trimmed.startsWith(QLatin1Char('.')) || trimmed.contains(invalid)) {
        if (error)
            *error = QStringLiteral("模板名称“%1”无效，请重新输入。").arg(name);
        return false;
    }
    QDir().mkpath(templateDir());
    QSaveFile file(templateDir() + QLatin1Char('/') + trimmed + QStringLiteral(".json"));
    if (!file.open(QIODevice::WriteOnly) || file.write(m_config.toJson()) < 0 || !file.commit()) {
        if (error)
            *error = QStringLiteral("表头模板保存失败：%1").arg(file.errorString());
        return false;
    }
    rememberTemplate(trimmed);
    return true;
}

void zTableView::callSaveUserTemplateToJsonFilePanel(zTableView* view)
{
    if (!view)
        return;
    bool ok = false;
    const QString name =
        zFileDialog::getText(view, QStringLiteral("保存表头模板"), QStringLiteral("模板名称："),
                             view->currentTemplateName(), &ok);
    if (!ok)
        return;
    // Saving over a template of the same name replaces it: only when the user says so.
    const QString path =
        view->templateDir() + QLatin1Char('/') + name.trimmed() + QStringLiteral(".json");
    if (!name.trimmed().isEmpty() && QFileInfo::exists(path) &&
        !showQuestion(view, QStringLiteral("提示"),
                      QStringLiteral("表头模板“%1”已存在，是否覆盖？").arg(name.trimmed())))
        return;
    QString error;
    if (!view->saveUserTemplate(name, &error))
        showWarning(view, QStringLiteral("提示"), error);
}

void zTableView::callModifyCurrColNamePanel(zTableView* view)
{
    if (!view)
        return;
    const int column = view->currentIndex().isValid() ? view->currentIndex().column() : 0;
    if (column < 0 || column >= view->m_config.columns.size())
        return;
    bool ok = false;
    const QString title =
        zFileDialog::getText(view, QStringLiteral("修改当前列标题"), QStringLiteral("列标题："),
                             view->m_config.columns.at(column).title, &ok);
    if (!ok)
        return;
    if (title.trimmed().isEmpty()) {
        showInformation(view, QStringLiteral("提示"), QStringLiteral("列标题不能为空!"));
        return;
    }
    HeaderConfig config = view->m_config;
    config.columns[column].title = title.trimmed();
    view->applyHeaderConfig(config);
}

void zTableView::callHeaderSettingsPanel(zTableView* view)
{
    if (!view)
        return;
    QDialog dialog(view);
    dialog.setObjectName(QStringLiteral("HeaderSettingsDialog"));
    dialog.setWindowTitle(QStringLiteral("表头高级设置"));
    auto* layout = new QVBoxLayout(&dialog);
    auto* list = new QListWidget(&dialog);
    for (const HeaderColumn& column : view->m_config.columns) {
        auto* item = new QListWidgetItem(column.title, list);
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable | Qt::ItemIsEditable);
        item->setCheckState(column.visible ? Qt::Checked : Qt::Unchecked);
    }
    // Unchecking the last shown column or blanking a title is undone on the spot, so what
    // the user accepts is always a usable header.
    QObject::connect(list, &QListWidget::itemChanged, &dialog, [view, list](QListWidgetItem* item) {
        const int row = list->row(item);
        if (item->text().trimmed().isEmpty() && row >= 0 && row < view->m_config.columns.size()) {
            item->setText(view->m_config.columns.at(row).title);
            showInformation(view, QStringLiteral("提示"), QStringLiteral("列标题不能为空!"));
            return;
        }
        if (item->checkState() == Qt::Checked)
            return;
        for (int i = 0; i < list->count(); ++i)
            if (list->item(i)->checkState() == Qt::Checked)
                return;
        item->setCheckState(Qt::Checked);
        showInformation(view, QStringLiteral("提示"), QStringLiteral("请至少保留一列!"));
    });
    layout->addWidget(list);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
    buttons->button(QDialogButtonBox::Ok)->setText(QStringLiteral("确定"));
    buttons->button(QDialogButtonBox::Cancel)->setText(QStringLiteral("取消"));
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    layout->addWidget(buttons);
    dialog.resize(320, 420);
    if (zTitleModal::ShowModal(&dialog) != 0)
        return;
    HeaderConfig config = view->m_config;
    int visible = 0;
    for (int c = 0; c < config.columns.size() && c < list->count(); ++c) {
        config.columns[c].visible = list->item(c)->checkState() == Qt::Checked;
        config.columns[c].title = list->item(c)->text();
        visible += config.columns.at(c).visible ? 1 : 0;
    }
    if (visible == 0) {
        showInformation(view, QStringLiteral("提示"), QStringLiteral("请至少保留一列!"));
        return;
    }
    view->applyHeaderConfig(config);
}

QStringList zTableView::getCurrentTableAllTemplateName(zTableView* view)
{
    if (!view)
        return {};
    QStringList names;
    const QFileInfoList files =
        QDir(view->templateDir()).entryInfoList({QStringLiteral("*.json")}, QDir::Files);
    for (const QFileInfo& info : files)
        names << info.completeBaseName();
    // In the order a Chinese user looks for a name: pinyin.
    QCollator collator{QLocale(QLocale::Chinese, QLocale::China)};
    collator.setNumericMode(true);
    std::sort(names.begin(), names.end(), collator);
    return names;
}

bool zTableView::eventFilter(QObject* watched, QEvent* event)
{
    QHeaderView* header = verticalHeader();
    if (watched != header->viewport())
        return QTableView::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::MouseButtonPress: {
        auto* e = static_cast<QMouseEvent*>(event);
        m_dragFrom = e->button() == Qt::LeftButton ? header->logicalIndexAt(e->pos()) : -1;
        break;
    }
    case QEvent::MouseMove: {
        auto* e = static_cast<QMouseEvent*>(event);
        const int to = header->logicalIndexAt(e->pos());
        if (m_dragFrom >= 0 && to >= 0 && to != m_dragFrom)
            emit signalMouseMoveRows(m_dragFrom, to, false);
        break;
    }
    case QEvent::MouseButtonRelease: {
        auto* e = static_cast<QMouseEvent*>(event);
        const int to = header->logicalIndexAt(e->pos());
        const int from = m_dragFrom;
        m_dragFrom = -1;
        clearMoveTarget();
        if (from >= 0 && to >= 0 && to != from)
            emit signalMouseMoveRows(from, to, true);
        break;
    }
    default:
        break;
    }
    return QTableView::eventFilter(watched, event);
}

void zTableView::setMoveTarget(int row, bool allowed)
{
    if (row == m_moveTarget && allowed == m_moveAllowed)
        return;
    m_moveTarget = row;
    m_moveAllowed = allowed;
    viewport()->setCursor(allowed ? Qt::DragMoveCursor : Qt::ForbiddenCursor);
    verticalHeader()->viewport()->setCursor(allowed ? Qt::DragMoveCursor : Qt::ForbiddenCursor);
    viewport()->update();
}

void zTableView::clearMoveTarget()
{
    if (m_moveTarget < 0)
        return;
    m_moveTarget = -1;
    m_moveAllowed = false;
    viewport()->unsetCursor();
    verticalHeader()->viewport()->unsetCursor();
    viewport()->update();
}

void zTableView::paintEvent(QPaintEvent* event)
{
    QTableView::paintEvent(event);
    if (m_moveTarget < 0 || !m_moveAllowed)
        return;
    // The line the dragged row will sit on: above the target when it goes up, below it
    // when it goes down.
    const int top = rowViewportPosition(m_moveTarget);
    const int y = m_dragFrom > m_moveTarget ? top : top + rowHeight(m_moveTarget) - 1;
    QPainter painter(viewport());
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.drawLine(0, y, viewport()->width(), y);
}

void zTableView::setFooterEnabled(bool enabled)
{
    if (!enabled) {
        delete m_footer;
        m_footer = nullptr;
        if (m_footerRow >= 0)
            setRowHidden(m_footerRow, false);
        m_footerRow = -1;
        updateGeometries();
        return;
    }
    if (!m_footer) {
        m_footer = new QTableView(this);
        m_footer->setObjectName(QStringLiteral("footerView"));
        m_footer->horizontalHeader()->hide();
        m_footer->verticalHeader()->hide();
        m_footer->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        m_footer->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        m_footer->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
        m_footer->setHorizontalScrollMode(horizontalScrollMode());
        m_footer->setEditTriggers(QAbstractItemView::NoEditTriggers);
        m_footer->setSelectionMode(QAbstractItemView::NoSelection);
        m_footer->setFocusPolicy(Qt::NoFocus);
        m_footer->setFrameShape(QFrame::NoFrame);
        m_footer->setStyleSheet(QStringLiteral("QTableView { border-top: 1px solid #9aa5b1; }"));
        m_footer->setModel(model());
        connect(horizontalScrollBar(), &QScrollBar::valueChanged, m_footer->horizontalScrollBar(),
                &QScrollBar::setValue);
        connect(horizontalHeader(), &QHeaderView::sectionResized, m_footer,
                [this](int column, int, int width) { m_footer->setColumnWidth(column, width); });
        connect(this, &zTableView::headerConfigChanged, this, &zTableView::syncFooter);
    }
    if (QAbstractItemModel* m = model()) {
        connect(m, &QAbstractItemModel::modelReset, this, &zTableView::syncFooter,
                Qt::UniqueConnection);
        connect(m, &QAbstractItemModel::layoutChanged, this, &zTableView::syncFooter,
                Qt::UniqueConnection);
        connect(m, &QAbstractItemModel::rowsInserted, this, &zTableView::syncFooter,
                Qt::UniqueConnection);
        connect(m, &QAbstractItemModel::rowsRemoved, this, &zTableView::syncFooter,
                Qt::UniqueConnection);
        connect(m, &QAbstractItemModel::rowsMoved, this, &zTableView::syncFooter,
                Qt::UniqueConnection);
    }
    syncFooter();
}

void zTableView::syncFooter()
{
    if (!m_footer)
        return;
    const auto* m = qobject_cast<const BaseDataItemModel*>(model());
    const int row = m ? m->footerRow() : -1;
    if (m_footerRow >= 0 && m_footerRow != row && m_footerRow < model()->rowCount())
        setRowHidden(m_footerRow, false);
    m_footerRow = row;
    if (row >= 0)
        setRowHidden(row, true);
    for (int c = 0; model() && c < model()->columnCount(); ++c) {
        m_footer->setColumnWidth(c, columnWidth(c));
        m_footer->setColumnHidden(c, isColumnHidden(c));
    }
    m_footer->verticalHeader()->setDefaultSectionSize(verticalHeader()->defaultSectionSize());
    m_footer->setVisible(row >= 0);
    updateGeometries();
}

void zTableView::updateGeometries()
{
    QTableView::updateGeometries();
    placeFooter();
}

void zTableView::placeFooter()
{
    const int height =
        m_footer && m_footerRow >= 0 ? m_footer->verticalHeader()->sectionSize(m_footerRow) + 1 : 0;
    const QMargins margins = viewportMargins();
    if (margins.bottom() != height)
        setViewportMargins(margins.left(), margins.top(), margins.right(), height);
    if (!height)
        return;
    const QRect area = viewport()->geometry();
    m_footer->setGeometry(area.left(), area.bottom() + 1, area.width(), height);
    // The footer row at the strip's top, the columns where the rows' columns are.
    m_footer->verticalScrollBar()->setValue(
        m_footer->verticalHeader()->sectionPosition(m_footerRow));
    m_footer->horizontalScrollBar()->setValue(horizontalScrollBar()->value());
}

namespace {

// The shown columns in the order the user sees them.
QVector<int> shownColumns(const QTableView* view)
{
    QVector<int> columns;
    const QHeaderView* header = view->horizontalHeader();
    for (int visual = 0; visual < header->count(); ++visual) {
        const int logical = header->logicalIndex(visual);
        if (!view->isColumnHidden(logical))
            columns << logical;
    }
    return columns;
}

} // namespace

QVector<QStringList> zTableView::parseCellBlock(const QString& text)
{
    QVector<QStringList> rows;
    QStringList row;
    QString cell;
    bool quoted = false;
    bool cellStarted = false;
    for (int i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (quoted) {
            if (c == QLatin1Char('"') && i + 1 < text.size() &&
                text.at(i + 1) == QLatin1Char('"')) {
                cell += c;
                ++i;
            } else if (c == QLatin1Char('"')) {
                quoted = false;
            } else {
                cell += c;
            }
            continue;
        }
        if (c == QLatin1Char('"') && !cellStarted) {
            quoted = true;
            cellStarted = true;
        } else if (c == QLatin1Char('\t')) {
            row << cell;
            cell.clear();
            cellStarted = false;
        } else if (c == QLatin1Char('\r') || c == QLatin1Char('\n')) {
            if (c == QLatin1Char('\r') && i + 1 < text.size() &&
                text.at(i + 1) == QLatin1Char('\n'))
                ++i;
            row << cell;
            rows << row;
            row.clear();
            cell.clear();
            cellStarted = false;
        } else {
            cell += c;
            cellStarted = true;
        }
    }
    if (cellStarted || !row.isEmpty())
        rows << (row << cell);
    return rows;
}

QString zTableView::selectionText() const
{
    const QModelIndexList selected =
        selectionModel() ? selectionModel()->selectedIndexes() : QModelIndexList();
    if (selected.isEmpty() || !model())
        return currentIndex().isValid() ? currentIndex().data().toString() : QString();
    int top = selected.first().row();
    int bottom = top;
    QSet<int> columns;
    for (const QModelIndex& index : selected) {
        top = qMin(top, index.row());
        bottom = qMax(bottom, index.row());
        columns.insert(index.column());
    }
    QVector<int> block;
    for (int column : shownColumns(this))
        if (columns.contains(column))
            block << column;
    QStringList lines;
    for (int row = top; row <= bottom; ++row) {
        QStringList cells;
        for (int column : block) {
            const QModelIndex index = model()->index(row, column);
            QString value =
                selectionModel()->isSelected(index) ? index.data().toString() : QString();
            // A value with a tab, a line break or a quote is quoted, as spreadsheets do.
            if (value.contains(QLatin1Char('\t')) || value.contains(QLatin1Char('\n')) ||
                value.contains(QLatin1Char('"')))
                value = QLatin1Char('"') + value.replace(QLatin1Char('"'), QStringLiteral("\"\"")) +
                        QLatin1Char('"');
            cells << value;
        }
        lines << cells.join(QLatin1Char('\t'));
    }
    return lines.join(QLatin1Char('\n'));
}

void zTableView::copySelection()
{
    QGuiApplication::clipboard()->setText(selectionText());
}

void zTableView::pasteText(const QString& text)
{
    auto* target = model();
    if (!target || text.isEmpty())
        return;
    const QVector<QStringList> block = parseCellBlock(text);
    if (block.isEmpty())
        return;
    QVector<QPair<QModelIndex, QString>> cells;
    auto take = [&](const QModelIndex& index, const QString& value) {
        if (index.isValid() && (target->flags(index) & Qt::ItemIsEditable))
            cells.append({index, value});
    };
    const QModelIndexList selected =
        selectionModel() ? selectionModel()->selectedIndexes() : QModelIndexList();
    if (block.size() == 1 && block.first().size() == 1) {
        // One value: into the selected cells, or the current one.
        if (selected.isEmpty())
            take(currentIndex(), block.first().first());
        for (const QModelIndex& index : selected)
            if (!isColumnHidden(index.column()))
                take(index, block.first().first());
    } else {
        QModelIndex start = currentIndex();
        for (const QModelIndex& index : selected)
            if (!start.isValid() || index.row() < start.row() ||
                (index.row() == start.row() && horizontalHeader()->visualIndex(index.column()) <
                                                   horizontalHeader()->visualIndex(start.column())))
                start = index;
        if (!start.isValid())
            return;
        const QVector<int> columns = shownColumns(this);
        const int first = columns.indexOf(start.column());
        if (first < 0)
            return;
        for (int r = 0; r < block.size() && start.row() + r < target->rowCount(); ++r)
            for (int c = 0; c < block.at(r).size() && first + c < columns.size(); ++c)
                take(target->index(start.row() + r, columns.at(first + c)), block.at(r).at(c));
    }
    if (cells.isEmpty())
        return;
    if (auto* m = qobject_cast<BaseDataItemModel*>(target)) {
        m->pasteCells(cells);
    } else {
        for (const auto& cell : std::as_const(cells))
            target->setData(cell.first, cell.second, Qt::EditRole);
    }
}

void zTableView::keyPressEvent(QKeyEvent* event)
{
    if (event == QKeySequence::Copy) {
        copySelection();
        event->accept();
        return;
    }
    if (event == QKeySequence::Paste) {
        // A locked grid takes no paste: its cells are not editable.
        if (editTriggers() != QAbstractItemView::NoEditTriggers)
            pasteText(QGuiApplication::clipboard()->text());
        event->accept();
        return;
    }
    QTableView::keyPressEvent(event);
}
