#include "DbZbZgClDialog.h"

#include "CkZbZgClQdDialog.h"
#include "CkZbZgClQdModel.h"
#include "DbZbZgClModel.h"
#include "DbZbZgSyClDialog.h"
#include "ExhibitFZgClModel.h"

#include "ListExport.h"
#include "TarvoGuard.h"

#include "DbZbZgClItem.h"
#include "TableLayout.h"
#include "TableLayoutExport.h"
#include "VXProgressBar.h"
#include "ZgClZsItem.h"
#include "zFileDialog.h"
#include "zMessageBox.h"
#include "zTitleModal.h"

#include <QDebug>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <QToolButton>

QString DbZbZgClDialog::s_lastDir;

namespace {

const int kAllTab = 0;
const int kUnitTab = 1;

// The export's layout: the nine columns of the tender list, the seventh headed "质量档次".
class ExportModel : public CkZbZgClQdModel
{
public:
    using CkZbZgClQdModel::CkZbZgClQdModel;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        if (orientation == Qt::Horizontal && role == Qt::DisplayRole && section == eZlDc)
            return QStringLiteral("质量档次");
        return CkZbZgClQdModel::headerData(section, orientation, role);
    }
};

} // namespace

DbZbZgClDialog::DbZbZgClDialog(ConstructionWorks* works, QWidget* parent)
    : MatchDialogBase(QStringLiteral("筛选"), parent), m_works(works),
      m_model(new DbZbZgClModel(this)), m_allModel(new ExhibitFZgClModel(this)),
      m_unitModel(new ExhibitFZgClModel(this)), m_allView(nullptr), m_unitView(nullptr),
      m_import(new QToolButton(this))
{
    setObjectName(QStringLiteral("DbZbZgClDialog"));
    setWindowTitle(QStringLiteral("对比招标控制价暂估材料清单"));
    setGridModel(m_model);
    const double ratio = resolutionRatio();
    const int widths[] = {170, 150, 120, 50, 80, 150, 120, 50, 70, 70};
    for (int c = 0; c < DbZbZgClModel::eColumnCount; ++c)
        grid()->setColumnWidth(c, qRound(widths[c] * ratio));

    auto* hz = new QPushButton(QStringLiteral("汇总所有材料自动对应"), this);
    auto* dq = new QPushButton(QStringLiteral("当前单位工程材料自动对应"), this);
    auto* exportButton = new QPushButton(QStringLiteral("导出招标文件暂估材料清单"), this);
    hz->setObjectName(QStringLiteral("btnHzClAndMatch"));
    dq->setObjectName(QStringLiteral("btnDqDwClAndMatch"));
    exportButton->setObjectName(QStringLiteral("btnExportZbCl"));
    m_import->setObjectName(QStringLiteral("btnImportZbCl"));
    m_import->setText(QStringLiteral("导入招标文件"));
    m_import->setPopupMode(QToolButton::InstantPopup);
    auto* menu = new QMenu(m_import);
    connect(menu->addAction(QStringLiteral("导入招标文件(CJZ)")), &QAction::triggered, this,
            &DbZbZgClDialog::slotImportZbClFromCJZ);
    connect(menu->addAction(QStringLiteral("导入招标文件")), &QAction::triggered, this,
            &DbZbZgClDialog::slotImportZbClFromCJZ_YN);
    m_import->setMenu(menu);
    connect(hz, &QPushButton::clicked, this, &DbZbZgClDialog::slotHzClAndMatch);
    connect(dq, &QPushButton::clicked, this, &DbZbZgClDialog::slotDqDwClAndMatch);
    connect(exportButton, &QPushButton::clicked, this, &DbZbZgClDialog::slotExportZbCl);
    topBar()->addWidget(hz);
    topBar()->addWidget(dq);
    topBar()->addStretch(1);
    topBar()->addWidget(m_import);
    topBar()->addWidget(exportButton);

    m_allView = addMaterialTab(m_allModel, QStringLiteral("所有材料"));
    m_unitView = addMaterialTab(m_unitModel, QStringLiteral("当前单位工程材料"));
    connect(tabs(), &QTabWidget::currentChanged, this, &DbZbZgClDialog::slotCurSearchTabChanged);
    connect(grid(), &QTableView::clicked, this, &DbZbZgClDialog::slotDbZbZgClItemClicked);
    connect(grid()->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& index) { slotDbZbZgClItemClicked(index); });
}

DbZbZgClDialog::~DbZbZgClDialog()
{
    m_model->setRecords(nullptr);
    m_allModel->setMaterials({});
    m_unitModel->setMaterials({});
    clearRecords();
}

void DbZbZgClDialog::clearRecords()
{
    qDeleteAll(m_records);
    m_records.clear();
}

bool DbZbZgClDialog::Load()
{
    bool loaded = false;
    TARVO_GUARD("ZgClQd\\PopupDialog\\DbZbZgClDialog", "DbZbZgClDialog::Load")
    {
        VXProgressBar progress(QStringLiteral("提示"),
                               QStringLiteral("正在汇总和匹配所有工程材料，请等待"), 0, 100, this);
        progress.show();
        m_model->setRecords(nullptr);
        clearRecords();
        loaded = ZgClQdBusiness::InitMatchZbZgCl(m_works, m_records, m_tbCl, m_dwMap, &progress);
        progress.finish();
        m_model->setRecords(&m_records, m_works ? m_works->getJfszTable() : nullptr);
        m_allModel->setMaterials(ZgClQdBusiness::GetAllTbCl(m_tbCl, m_dwMap));
        showUnitMaterials(m_dwMap.isEmpty() ? -1 : m_dwMap.firstKey());
        recount();
    };
    return loaded;
}

void DbZbZgClDialog::rematch(const QString& text)
{
    VXProgressBar progress(QStringLiteral("提示"), text, 0, 100, this);
    progress.show();
    m_model->setRecords(nullptr);
    m_allModel->setMaterials({});
    m_unitModel->setMaterials({});
    clearRecords();
    ZgClQdBusiness::InitMatchZbZgCl(m_works, m_records, m_tbCl, m_dwMap, &progress);
    progress.finish();
    m_model->setRecords(&m_records, m_works ? m_works->getJfszTable() : nullptr);
    m_allModel->setMaterials(ZgClQdBusiness::GetAllTbCl(m_tbCl, m_dwMap));
    m_shownDwId = -2;
    showUnitMaterials(m_dwMap.isEmpty() ? -1 : m_dwMap.firstKey());
    setModified(true);
    recount();
}

void DbZbZgClDialog::recount()
{
    int matched = 0, unmatched = 0;
    ZgClQdBusiness::CountZbZgCl(m_records, matched, unmatched);
    showCount(matched, unmatched);
}

void DbZbZgClDialog::refreshAll()
{
    refreshGrid();
    recount();
}

BaseDataItem* DbZbZgClDialog::currentMaterial() const
{
    const bool all = tabs()->currentIndex() == kAllTab;
    const QModelIndex index = (all ? m_allView : m_unitView)->currentIndex();
    if (!index.isValid())
        return nullptr;
    return (all ? m_allModel : m_unitModel)->material(index.row());
}

void DbZbZgClDialog::showUnitMaterials(int dwId)
{
    if (dwId == m_shownDwId)
        return;
    m_shownDwId = dwId;
    m_unitModel->setMaterials(m_tbCl.value(dwId));
}

void DbZbZgClDialog::slotDbZbZgClItemClicked(const QModelIndex& index)
{
    TARVO_GUARD("ZgClQd\\PopupDialog\\DbZbZgClDialog", "DbZbZgClDialog::slotDbZbZgClItemClicked")
    {
        const DbZbZgClItem* record = index.isValid() ? m_model->record(index.row()) : nullptr;
        if (record)
            showUnitMaterials(record->GetDwId());
    };
}

void DbZbZgClDialog::slotCurSearchTabChanged(int nCurIndex)
{
    TARVO_GUARD("ZgClQd\\PopupDialog\\DbZbZgClDialog", "DbZbZgClDialog::slotCurSearchTabChanged")
    {
        if (nCurIndex == kUnitTab)
            if (const DbZbZgClItem* record = currentRecord())
                showUnitMaterials(record->GetDwId());
    };
}

void DbZbZgClDialog::slotHzClAndMatch()
{
    TARVO_GUARD("ZgClQd\\PopupDialog\\DbZbZgClDialog", "DbZbZgClDialog::slotHzClAndMatch")
    {
        DbZbZgSyClDialog all(m_works, this);
        if (!all.Load() || zTitleModal::ShowModal(&all) != 0)
            return;
        VXProgressBar progress(QStringLiteral("提示"),
                               QStringLiteral("正在重新匹配招标暂估材料，请等待"), 0, 100, this);
        progress.show();
        ZgClQdBusiness::MatchZbZgClByDbRes(m_works, all.records(), true, m_records, m_tbCl, m_dwMap,
                                           &progress, 100);
        progress.finish();
        setModified(true);
        refreshAll();
    };
}

void DbZbZgClDialog::slotDqDwClAndMatch()
{
    TARVO_GUARD("ZgClQd\\PopupDialog\\DbZbZgClDialog", "DbZbZgClDialog::slotDqDwClAndMatch")
    {
        const DbZbZgClItem* record = currentRecord();
        if (!record || (!record->IsDwRow() && !record->IsZbRow()) || record->IsOrphan()) {
            showInformation(this, QStringLiteral("操作提示"), QStringLiteral("请选择招标材料行!"));
            return;
        }
        const int dwId = record->GetDwId();
        ZgClQdBusiness::MatchDqZxGcZbZgCl(dwId, m_dwMap.value(dwId), m_records, m_tbCl);
        setModified(true);
        refreshAll();
    };
}

void DbZbZgClDialog::slotBtnMakeApair()
{
    TARVO_GUARD("ZgClQd\\PopupDialog\\DbZbZgClDialog", "DbZbZgClDialog::slotBtnMakeApair")
    {
        DbZbZgClItem* record = currentRecord();
        if (!record) {
            showInformation(this, QStringLiteral("操作提示"),
                            QStringLiteral("请在招标暂估材料表中定位到单位工程或单位下的材料行!"));
            return;
        }
        if (!record->IsZbRow() || record->IsOrphan()) {
            showInformation(this, QStringLiteral("操作提示"),
                            QStringLiteral("请选择有效的招标材料行!"));
            return;
        }
        BaseDataItem* material = currentMaterial();
        if (!material) {
            showInformation(this, QStringLiteral("操作提示"),
                            QStringLiteral("请选中单位工程内材料行！"));
            return;
        }
        const QList<BaseDataItem*> lines = m_tbCl.value(record->GetDwId());
        BaseDataItem* line = ZgClQdBusiness::CheckFZgClExistInDw(lines, material);
        if (!line && tabs()->currentIndex() == kUnitTab) {
            showInformation(this, QStringLiteral("操作提示"),
                            QStringLiteral("当前单位工程不包含该材料!"));
            return;
        }
        if (!confirmRepair(record))
            return;
        record->Pair(line ? line : material, DbZbZgClItem::Matched);
        ZgClQdBusiness::RefreshTbOnlyRows(record->GetDwId(), m_records, m_tbCl);
        setModified(true);
        refreshAll();
    };
}

void DbZbZgClDialog::slotBtnUnpair()
{
    TARVO_GUARD("ZgClQd\\PopupDialog\\DbZbZgClDialog", "DbZbZgClDialog::slotBtnUnpair")
    {
        DbZbZgClItem* record = currentRecord();
        if (!record || !record->GetTbCl()) {
            showInformation(this, QStringLiteral("操作提示"),
                            QStringLiteral("请选择包含投标材料的行!"));
            return;
        }
        if (!record->IsZbRow()) {
            showInformation(this, QStringLiteral("操作提示"), QStringLiteral("请选择招标材料行!"));
            return;
        }
        record->Unpair();
        ZgClQdBusiness::RefreshTbOnlyRows(record->GetDwId(), m_records, m_tbCl);
        setModified(true);
        refreshAll();
    };
}

void DbZbZgClDialog::slotBtnSearch()
{
    TARVO_GUARD("ZgClQd\\PopupDialog\\DbZbZgClDialog", "DbZbZgClDialog::slotBtnSearch")
    {
        m_model->setKeywords(nameEdit()->text(), modelEdit()->text());
        m_allModel->setKeywords(nameEdit()->text(), modelEdit()->text());
        m_unitModel->setKeywords(nameEdit()->text(), modelEdit()->text());
        applyKeywordColours();
    };
}

bool DbZbZgClDialog::apply()
{
    const bool applied = applyChanges(
        [&](bool& b1, bool& b2, bool& b3) {
            ZgClQdBusiness::AnalyzeZbZgClModifyProperty(m_records, m_tbCl, b1, b2, b3);
        },
        [&](bool modifyPrice, bool setProvisional, bool cancelProvisional,
            VXProgressBar& progress) {
            ZgClQdBusiness::ApplyZbZgClModifyToProject(m_dwMap, m_records, m_tbCl, modifyPrice,
                                                       setProvisional, cancelProvisional, &progress,
                                                       50);
            if (ProjectWorks* project = m_works ? m_works->getOwner() : nullptr)
                project->setProjectWorkChanged(true);
            ZgClQdBusiness::ClearBCzDyClBj(m_works);
            ZgClQdBusiness::RegenerateZgjClHzb(m_works, &progress, 50, 50);
        },
        QStringLiteral("对应整理投标暂估材料"));
    if (!applied)
        return false;
    int orphans = 0;
    for (const DbZbZgClItem* record : std::as_const(m_records))
        orphans += record->IsZbRow() && record->IsOrphan() ? 1 : 0;
    if (orphans > 0)
        showInformation(
            this, QStringLiteral("提示"),
            QStringLiteral("有%1条招标材料所在的单位工程已不在当前工程中，未应用。").arg(orphans));
    return true;
}

void DbZbZgClDialog::slotBtnAccept()
{
    TARVO_GUARD("ZgClQd\\PopupDialog\\DbZbZgClDialog", "DbZbZgClDialog::slotBtnAccept")
    {
        if (apply())
            accept();
    };
}

void DbZbZgClDialog::slotBtnReject()
{
    TARVO_GUARD("ZgClQd\\PopupDialog\\DbZbZgClDialog", "DbZbZgClDialog::slotBtnReject")
    {
        closeAsking();
    };
}

void DbZbZgClDialog::importFrom(const QString& filter)
{
    const QString path =
        zFileDialog::getOpenFileName(this, QStringLiteral("导入招标文件"), s_lastDir, filter);
    if (path.isEmpty())
        return;
    s_lastDir = QFileInfo(path).absolutePath();
    if (!CkZbZgClQdDialog::ImportTenderFile(this, m_works, path))
        return;
    rematch(QStringLiteral("正在汇总和匹配所有工程材料，请等待"));
}

void DbZbZgClDialog::slotImportZbClFromCJZ()
{
    TARVO_GUARD("ZgClQd\\PopupDialog\\DbZbZgClDialog", "DbZbZgClDialog::slotImportZbClFromCJZ")
    {
        importFrom(QStringLiteral("四川省建设工程造价电子数据标准 (*.cjz *.CJZ)"));
    };
}

void DbZbZgClDialog::slotImportZbClFromCJZ_JL()
{
    // The JL variant reads the same tender file format as the CJZ import.
    TARVO_GUARD("ZgClQd\\PopupDialog\\DbZbZgClDialog", "DbZbZgClDialog::slotImportZbClFromCJZ_JL")
    {
        importFrom(QStringLiteral("四川省建设工程造价电子数据标准 (*.cjz *.CJZ)"));
    };
}

void DbZbZgClDialog::slotImportZbClFromCJZ_YN()
{
    TARVO_GUARD("ZgClQd\\PopupDialog\\DbZbZgClDialog", "DbZbZgClDialog::slotImportZbClFromCJZ_YN")
    {
        importFrom(QStringLiteral("数据接口文件 (*.YFJZ)"));
    };
}

void DbZbZgClDialog::slotExportZbCl()
{
    TARVO_GUARD("ZgClQd\\PopupDialog\\DbZbZgClDialog", "DbZbZgClDialog::slotExportZbCl")
    {
        QList<ZgClZsItem*> nodes;
        for (const DbZbZgClItem* record : std::as_const(m_records))
            if (record->IsDwRow() || record->IsZbRow())
                nodes.append(record->GetZbZgClZsItem());
        ExportModel model;
        model.setNodes(nodes, m_works ? m_works->getJfszTable() : nullptr);
        const ListExportTexts texts{
            QStringLiteral("当前表内无招标暂估材料数据"), QStringLiteral("导出为招标暂估材料清单"),
            s_lastDir, QStringLiteral("xlsx (*.xlsx);;xls (*.xls)"), QStringLiteral("保存完毕！")};
        const QString folder =
            exportShownList(this, m_works ? m_works->getOwner() : nullptr,
                            model.materialCount() == 0, texts, resolutionRatio(), [&] {
                                QTableView view;
                                view.setFont(grid()->font());
                                view.setModel(&model);
                                const int widths[] = {150, 160, 160, 90, 90, 80, 80, 60, 90};
                                for (int c = 0; c < CkZbZgClQdModel::eColumnCount; ++c)
                                    view.setColumnWidth(c, qRound(widths[c] * resolutionRatio()));
                                return TableLayout::Describe(&view);
                            });
        if (!folder.isEmpty())
            s_lastDir = folder;
    };
}
