#include "ImportExcelDataDialog.h"
#include "HostScreen.h"

#include "ImportExcelDataModel.h"

#include "TarvoGuard.h"

#include "EvaluatedMaterialImport.h"
#include "LibXLExcel.h"
#include "LibXLExcelSheet.h"
#include "zFileDialog.h"
#include "zMessageBox.h"

#include <QAction>
#include <QCheckBox>
#include <QColor>
#include <QComboBox>
#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

using Import = EvaluatedMaterialImport;

QString ImportExcelDataDialog::s_lastDir;

namespace {

// Spans drawn for merged ranges; a sheet with more is shown unmerged past this many, which
// keeps opening a long list quick.
constexpr int MaxSpans = 20000;

double resolutionRatio()
{
    return HostScreen::ResolutionRatio();
}

} // namespace

ImportExcelDataDialog::ImportExcelDataDialog(QWidget* parent)
    : QDialog(parent), m_model(new ImportExcelDataModel(this)), m_path(new QLineEdit(this)),
      m_open(new QPushButton(QIcon(QStringLiteral(":/Image/svg/s_xzgzb.svg")),
                             QStringLiteral("打开文件"), this)),
      m_sheets(new QComboBox(this)), m_identify(new QPushButton(QStringLiteral("识别行"), this)),
      m_selectOnIdentify(new QCheckBox(QStringLiteral("识别后勾选材料行"), this)),
      m_count(new QLabel(this)), m_view(new QTableView(this))
{
    setObjectName(QStringLiteral("ImportExcelDataDialog"));
    setWindowTitle(QStringLiteral("从Excel文件中载入"));
    const double ratio = resolutionRatio();
    resize(qRound(1100 * ratio), qRound(640 * ratio));

    m_path->setObjectName(QStringLiteral("edtFilePath"));
    m_path->setReadOnly(true);
    m_open->setObjectName(QStringLiteral("btnOpenFile"));
    auto* sheetLabel = new QLabel(QStringLiteral("工作表选择:"), this);
    sheetLabel->setObjectName(QStringLiteral("lblGZBXZ"));
    m_sheets->setObjectName(QStringLiteral("cmbSheetSelect"));
    m_sheets->setMinimumWidth(qRound(160 * ratio));
    m_identify->setObjectName(QStringLiteral("btnIdentifyLine"));
    m_selectOnIdentify->setObjectName(QStringLiteral("chkSelectOnIdentify"));
    m_selectOnIdentify->setChecked(true);
    m_selectOnIdentify->setToolTip(
        QStringLiteral("勾选时，识别为材料行的行同时被勾选导入；不勾选时由您逐行勾选"));
    auto* hint =
        new QLabel(QStringLiteral("*识别前请按需选择识别对象并建立必\n要字段的对应关系。"), this);
    hint->setObjectName(QStringLiteral("lblHint"));
    hint->setStyleSheet(QStringLiteral("color: #c00000;"));
    m_count->setObjectName(QStringLiteral("lblCount"));

    m_view->setObjectName(QStringLiteral("tableView"));
    m_view->setModel(m_model);
    m_view->setFont(QFont(QStringLiteral("SimSun"), 9));
    m_view->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_view->setContextMenuPolicy(Qt::CustomContextMenu);
    m_view->setWordWrap(false);
    m_view->verticalHeader()->setDefaultSectionSize(qRound(22 * ratio));
    m_view->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_view->horizontalHeader()->setDefaultSectionSize(qRound(100 * ratio));
    m_view->horizontalHeader()->setSectionsClickable(true);
    m_view->horizontalHeader()->setHighlightSections(false);

    auto* ok = new QPushButton(QStringLiteral("确定"), this);
    ok->setObjectName(QStringLiteral("btnOk"));
    ok->setDefault(true);
    auto* cancel = new QPushButton(QStringLiteral("取消"), this);
    cancel->setObjectName(QStringLiteral("btnCancel"));

    auto* fileRow = new QHBoxLayout;
    fileRow->addWidget(m_path, 1);
    fileRow->addWidget(m_open);
    fileRow->addSpacing(qRound(12 * ratio));
    fileRow->addWidget(sheetLabel);
    fileRow->addWidget(m_sheets);
    auto* identifyRow = new QHBoxLayout;
    identifyRow->addWidget(m_identify);
    identifyRow->addWidget(m_selectOnIdentify);
    identifyRow->addSpacing(qRound(12 * ratio));
    identifyRow->addWidget(hint);
    identifyRow->addStretch(1);
    identifyRow->addWidget(m_count);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(fileRow);
    layout->addLayout(identifyRow);
    layout->addWidget(m_view, 1);
    layout->addLayout(buttons);

    connect(m_open, &QPushButton::clicked, this, &ImportExcelDataDialog::slotOpenFile);
    connect(m_sheets, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &ImportExcelDataDialog::slotSheetChanged);
    connect(m_identify, &QPushButton::clicked, this, &ImportExcelDataDialog::slotIdentifyLine);
    connect(ok, &QPushButton::clicked, this, &ImportExcelDataDialog::slotAccept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_view, &QWidget::customContextMenuRequested, this,
            &ImportExcelDataDialog::slotContextMenu);
    connect(m_view->horizontalHeader(), &QHeaderView::sectionClicked, this,
            &ImportExcelDataDialog::slotHeaderClicked);
    connect(m_model, &QAbstractItemModel::dataChanged, this,
            &ImportExcelDataDialog::slotUpdateCount);
    connect(m_model, &QAbstractItemModel::modelReset, this,
            &ImportExcelDataDialog::slotUpdateCount);
    slotUpdateCount();
}

ImportExcelDataDialog::~ImportExcelDataDialog()
{
    m_model->setSheet(nullptr);
}

QVector<TenderEvaluatedMaterial> ImportExcelDataDialog::records() const
{
    return m_records;
}

bool ImportExcelDataDialog::openFile(const QString& path)
{
    auto book = std::make_unique<LibXLExcel>();
    if (!book->Open(path)) {
        qWarning().noquote() << book->ErrorMessage();
        showInformation(
            this, QStringLiteral("提示"),
            QStringLiteral("文件打开失败！\r\n①请检查excel文件是否被占用\r\n②请检查是否为"
                           "正确的excel文件\r\n完成上述操作后重新打开。如果仍然提示该错"
                           "误，请联系开发商协助解决问题"));
        return false;
    }
    m_path->setText(QDir::toNativeSeparators(path));
    s_lastDir = QFileInfo(path).absolutePath();
    m_model->setSheet(nullptr);
    m_book = std::move(book);
    const QSignalBlocker blocker(m_sheets);
    m_sheets->clear();
    for (const LibXLExcelSheet* sheet : m_book->GetSheets()) {
        m_sheets->addItem(sheet->GetName());
        if (sheet->GetState() != LibXLExcelSheet::SheetVisible) {
            const int item = m_sheets->count() - 1;
            m_sheets->setItemData(item, QColor(140, 140, 140), Qt::ForegroundRole);
            m_sheets->setItemData(item, QStringLiteral("隐藏的工作表"), Qt::ToolTipRole);
        }
    }
    const int list = Import::findListSheet(*m_book);
    m_sheets->setCurrentIndex(list);
    showSheet(list);
    return true;
}

void ImportExcelDataDialog::showSheet(int index)
{
    m_view->clearSpans();
    const LibXLExcelSheet* sheet = m_book ? m_book->GetSheet(index) : nullptr;
    m_model->setSheet(sheet);
    if (!sheet)
        return;
    int spans = 0;
    for (const ExcelRange& range : sheet->GetMerges()) {
        if (++spans > MaxSpans)
            break;
        m_view->setSpan(range.firstRow, ImportExcelDataModel::gridColumn(range.firstCol),
                        range.lastRow - range.firstRow + 1, range.lastCol - range.firstCol + 1);
    }
    const double ratio = resolutionRatio();
    m_view->setColumnWidth(0, qRound(80 * ratio));
    for (int col = 0; col < sheet->ColCount(); ++col) {
        const double chars = sheet->GetColWidth(col);
        const int width = chars > 0 ? qBound(40, qRound(chars * 8 + 10), 400) : 100;
        m_view->setColumnWidth(ImportExcelDataModel::gridColumn(col), qRound(width * ratio));
    }
    const int header = m_model->layout().headerRow;
    if (header >= 0)
        m_view->scrollTo(m_model->index(header, 0), QAbstractItemView::PositionAtTop);
}

void ImportExcelDataDialog::slotOpenFile()
{
    TARVO_GUARD("SjCqXPsClQd\\PopupDialog\\ImportExcelDataDialog",
                "ImportExcelDataDialog::slotOpenFile")
    {
        const QString path =
            zFileDialog::getOpenFileName(this, QStringLiteral("从Excel文件中载入"), s_lastDir,
                                         QStringLiteral("Excel文件 (*.xls *.xlsx)"));
        if (!path.isEmpty())
            openFile(path);
    };
}

void ImportExcelDataDialog::slotSheetChanged(int index)
{
    TARVO_GUARD("SjCqXPsClQd\\PopupDialog\\ImportExcelDataDialog",
                "ImportExcelDataDialog::slotSheetChanged")
    {
        showSheet(index);
    };
}

void ImportExcelDataDialog::slotIdentifyLine()
{
    TARVO_GUARD("SjCqXPsClQd\\PopupDialog\\ImportExcelDataDialog",
                "ImportExcelDataDialog::slotIdentifyLine")
    {
        const Import* import = m_model->import();
        if (!import)
            return;
        const Import::Identification result =
            import->identify(m_model->fields(), m_model->layout().firstDataRow);
        if (!result.kinds.isEmpty())
            m_model->setRowKinds(result.kinds, m_selectOnIdentify->isChecked());
        if (!result.message.isEmpty())
            showInformation(this, QStringLiteral("提示"), result.message);
    };
}

void ImportExcelDataDialog::slotAccept()
{
    TARVO_GUARD("SjCqXPsClQd\\PopupDialog\\ImportExcelDataDialog",
                "ImportExcelDataDialog::slotAccept")
    {
        const QVector<int> rows = m_model->checkedMaterialRows();
        if (rows.isEmpty() || !m_model->import()) {
            showInformation(this, QStringLiteral("提示"), QStringLiteral("未选择导入行"));
            return;
        }
        m_records = m_model->import()->records(m_model->fields(), rows);
        accept();
    };
}

void ImportExcelDataDialog::slotContextMenu(const QPoint& pos)
{
    TARVO_GUARD("SjCqXPsClQd\\PopupDialog\\ImportExcelDataDialog",
                "ImportExcelDataDialog::slotContextMenu")
    {
        if (!m_model->import())
            return;
        QMenu menu(this);
        QMenu* kind = menu.addMenu(QStringLiteral("当前行置为"));
        const bool hasRow = !selectedRows().isEmpty() || m_view->indexAt(pos).isValid();
        kind->setEnabled(hasRow);
        connect(kind->addAction(QStringLiteral("材料行")), &QAction::triggered, this,
                &ImportExcelDataDialog::slotSetMaterialRow);
        connect(kind->addAction(QStringLiteral("无效行")), &QAction::triggered, this,
                &ImportExcelDataDialog::slotSetInvalidRow);
        connect(menu.addAction(QStringLiteral("清除已匹配的字段")), &QAction::triggered, this,
                &ImportExcelDataDialog::slotClearFields);
        if (const QModelIndex at = m_view->indexAt(pos);
            at.isValid() && !m_view->selectionModel()->isRowSelected(at.row(), QModelIndex()))
            m_view->selectRow(at.row());
        menu.exec(m_view->viewport()->mapToGlobal(pos));
    };
}

QVector<int> ImportExcelDataDialog::selectedRows() const
{
    QVector<int> rows;
    for (const QModelIndex& index : m_view->selectionModel()->selectedRows())
        rows << index.row();
    if (rows.isEmpty() && m_view->currentIndex().isValid())
        rows << m_view->currentIndex().row();
    std::sort(rows.begin(), rows.end());
    return rows;
}

void ImportExcelDataDialog::setSelectedRowsKind(int kind)
{
    for (int row : selectedRows())
        m_model->setRowKind(row, Import::RowKind(kind), m_selectOnIdentify->isChecked());
}

void ImportExcelDataDialog::slotSetMaterialRow()
{
    TARVO_GUARD("SjCqXPsClQd\\PopupDialog\\ImportExcelDataDialog",
                "ImportExcelDataDialog::slotSetMaterialRow")
    {
        setSelectedRowsKind(Import::MaterialRow);
    };
}

void ImportExcelDataDialog::slotSetInvalidRow()
{
    TARVO_GUARD("SjCqXPsClQd\\PopupDialog\\ImportExcelDataDialog",
                "ImportExcelDataDialog::slotSetInvalidRow")
    {
        setSelectedRowsKind(Import::InvalidRow);
    };
}

void ImportExcelDataDialog::slotClearFields()
{
    TARVO_GUARD("SjCqXPsClQd\\PopupDialog\\ImportExcelDataDialog",
                "ImportExcelDataDialog::slotClearFields")
    {
        m_model->clearFields();
    };
}

void ImportExcelDataDialog::slotHeaderClicked(int section)
{
    TARVO_GUARD("SjCqXPsClQd\\PopupDialog\\ImportExcelDataDialog",
                "ImportExcelDataDialog::slotHeaderClicked")
    {
        if (section < 1 || !m_model->import())
            return;
        m_headerSection = section;
        const int current = m_model->fields().value(ImportExcelDataModel::sheetColumn(section));
        QMenu menu(this);
        const QStringList names = Import::fieldNames();
        for (int field = Import::NoField; field < Import::FieldCount; ++field) {
            if (field == 0)
                menu.addSeparator();
            QAction* action = menu.addAction(
                field == Import::NoField ? QStringLiteral("不对应任何字段") : names.at(field));
            action->setData(field);
            action->setCheckable(true);
            action->setChecked(field == current);
            connect(action, &QAction::triggered, this, &ImportExcelDataDialog::slotFieldChosen);
        }
        QHeaderView* header = m_view->horizontalHeader();
        const QPoint at(header->sectionViewportPosition(section), header->height());
        menu.exec(header->mapToGlobal(at));
    };
}

void ImportExcelDataDialog::slotFieldChosen()
{
    TARVO_GUARD("SjCqXPsClQd\\PopupDialog\\ImportExcelDataDialog",
                "ImportExcelDataDialog::slotFieldChosen")
    {
        const auto* action = qobject_cast<const QAction*>(sender());
        if (!action || m_headerSection < 1)
            return;
        m_model->setField(ImportExcelDataModel::sheetColumn(m_headerSection),
                          action->data().toInt());
    };
}

void ImportExcelDataDialog::slotUpdateCount()
{
    TARVO_GUARD("SjCqXPsClQd\\PopupDialog\\ImportExcelDataDialog",
                "ImportExcelDataDialog::slotUpdateCount")
    {
        int material = 0;
        for (int row = 0; row < m_model->rowCount(); ++row)
            material += m_model->rowKind(row) == Import::MaterialRow;
        m_count->setText(QStringLiteral("材料行 %1 行，勾选 %2 行")
                             .arg(material)
                             .arg(m_model->checkedMaterialRows().size()));
    };
}
