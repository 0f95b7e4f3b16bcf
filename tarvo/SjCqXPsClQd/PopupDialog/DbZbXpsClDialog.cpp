#include "DbZbXpsClDialog.h"

#include "CkZbXPsClDialog.h"
#include "CkZbXPsClModel.h"
#include "DbZbXPsClModel.h"
#include "ExhibitXpsClModel.h"
#include "TbZbXpsClDialog.h"
#include "ZbXpsClLoad.h"

#include "ListExport.h"
#include "TarvoGuard.h"

#include "ConstructionWorks.h"
#include "DbZbXpsClItem.h"
#include "ProjectWorks.h"
#include "SjCqXPsClBusiness.h"
#include "TableLayout.h"
#include "zMessageBox.h"
#include "zTitleModal.h"

#include <QDir>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTableView>
#include <QToolButton>

namespace {

const QString kNoTenderList =
    QStringLiteral("当前工程没有招标需评审材料清单，请从招标文件读取需评审材料清单。");

} // namespace

DbZbXpsClDialog::DbZbXpsClDialog(ConstructionWorks* works, QWidget* parent)
    : MatchDialogBase(QStringLiteral("筛选"), parent), m_works(works),
      m_model(new DbZbXPsClModel(this)), m_allModel(new ExhibitXpsClModel(this)),
      m_allView(nullptr), m_load(new QToolButton(this))
{
    setObjectName(QStringLiteral("DbZbXpsClDialog"));
    setWindowTitle(QStringLiteral("对比招标控制价需评审材料清单"));
    setCloseQuestion(QStringLiteral("需评审材料数据已经修改，是否保存？"));
    setGridModel(m_model);
    const int widths[] = {50, 120, 190, 150, 60, 190, 150, 60};
    for (int c = 0; c < m_model->columnCount(); ++c)
        grid()->setColumnWidth(c, qRound(widths[c] * resolutionRatio()));

    auto* hz = new QPushButton(QStringLiteral("汇总所有材料自动对应"), this);
    auto* exportButton = new QPushButton(QStringLiteral("导出招标文件需评审材料清单"), this);
    hz->setObjectName(QStringLiteral("btnHzClAndMatch"));
    exportButton->setObjectName(QStringLiteral("btnExportZbCl"));
    m_load->setObjectName(QStringLiteral("btnImportZbCl"));
    m_load->setText(QStringLiteral("从招标文件读取需评审材料清单"));
    m_load->setPopupMode(QToolButton::InstantPopup);
    auto* menu = new QMenu(m_load);
    connect(menu->addAction(QStringLiteral("从CJZ文件中载入")), &QAction::triggered, this,
            &DbZbXpsClDialog::slotImportZbClFromCJZ);
    connect(menu->addAction(QStringLiteral("从YFJZ文件中载入")), &QAction::triggered, this,
            &DbZbXpsClDialog::slotImportZbClFromCJZ_YN);
    connect(menu->addAction(QStringLiteral("从Excel文件中载入")), &QAction::triggered, this,
            &DbZbXpsClDialog::slotImportExcelClicked);
    m_load->setMenu(menu);
    const ProjectWorks* project = m_works ? m_works->getOwner() : nullptr;
    m_load->setEnabled(project && !project->IsReadOnly());
    connect(hz, &QPushButton::clicked, this, &DbZbXpsClDialog::slotHzClAndMatch);
    connect(exportButton, &QPushButton::clicked, this, &DbZbXpsClDialog::slotExportZbCl);
    topBar()->addWidget(hz);
    topBar()->addStretch(1);
    topBar()->addWidget(m_load);
    topBar()->addWidget(exportButton);

    m_allView = addMaterialTab(m_allModel, QStringLiteral("所有材料"));
    connect(grid(), &QTableView::clicked, this, [this](const QModelIndex& index) {
        slotDbZbClCellClicked(index.row(), index.column());
    });
}

DbZbXpsClDialog::~DbZbXpsClDialog()
{
    dropRecords();
    qDeleteAll(m_tbCl);
}

void DbZbXpsClDialog::dropRecords()
{
    m_model->setXpsRecords(nullptr);
    m_allModel->setXpsMaterials({});
    qDeleteAll(m_records);
    m_records.clear();
    m_tbOnly.clear();
}

bool DbZbXpsClDialog::Load()
{
    bool loaded = false;
    TARVO_GUARD("SjCqXPsClQd\\PopupDialog\\DbZbXpsClDialog", "DbZbXpsClDialog::Load")
    {
        rebuild(false);
        loaded = !m_records.isEmpty();
        const ProjectWorks* project = m_works ? m_works->getOwner() : nullptr;
        if (!project || !project->HasGcZbXPsCl())
            showInformation(this, QStringLiteral("操作提示"), kNoTenderList);
    };
    return loaded;
}

void DbZbXpsClDialog::rebuild(bool summarise)
{
    dropRecords();
    if (summarise)
        SjCqXPsClBusiness::HzSyClAsTbXpsCl(m_works, m_tbCl);
    else
        SjCqXPsClBusiness::AquireXmTbXpsCl(m_works, m_tbCl);
    SjCqXPsClBusiness::InitMatchZbXpsCl(m_works, m_tbCl, m_records, m_tbOnly);
    m_model->setXpsRecords(&m_records);
    m_allModel->setXpsMaterials(m_tbCl);
    recount();
}

void DbZbXpsClDialog::recount()
{
    int matched = 0, unmatched = 0;
    SjCqXPsClBusiness::CountZbXpsCl(m_records, matched, unmatched);
    showCount(matched, unmatched);
}

void DbZbXpsClDialog::pairsChanged()
{
    SjCqXPsClBusiness::RefreshXpsTbOnlyRows(m_records, m_tbCl, m_tbOnly);
    setModified(true);
    refreshGrid();
    recount();
}

void DbZbXpsClDialog::slotHzClAndMatch()
{
    TARVO_GUARD("SjCqXPsClQd\\PopupDialog\\DbZbXpsClDialog", "DbZbXpsClDialog::slotHzClAndMatch")
    {
        rebuild(true);
        setModified(true);
    };
}

void DbZbXpsClDialog::afterLoad(bool stored)
{
    if (!stored)
        return;
    rebuild(false);
    setModified(true);
}

void DbZbXpsClDialog::slotImportZbClFromCJZ()
{
    TARVO_GUARD("SjCqXPsClQd\\PopupDialog\\DbZbXpsClDialog",
                "DbZbXpsClDialog::slotImportZbClFromCJZ")
    {
        const QString path =
            ZbXpsClLoad::AskFile(this, QStringLiteral("从招标文件读取需评审材料清单"),
                                 QStringLiteral("四川省建设工程造价电子数据标准 (*.cjz *.CJZ)"));
        afterLoad(ZbXpsClLoad::FromTenderFile(this, m_works ? m_works->getOwner() : nullptr, path,
                                              [this] { dropRecords(); }));
    };
}

void DbZbXpsClDialog::slotImportZbClFromCJZ_YN()
{
    TARVO_GUARD("SjCqXPsClQd\\PopupDialog\\DbZbXpsClDialog",
                "DbZbXpsClDialog::slotImportZbClFromCJZ_YN")
    {
        const QString path =
            ZbXpsClLoad::AskFile(this, QStringLiteral("从招标文件读取需评审材料清单"),
                                 QStringLiteral("数据接口文件 (*.YFJZ)"));
        afterLoad(ZbXpsClLoad::FromTenderFile(this, m_works ? m_works->getOwner() : nullptr, path,
                                              [this] { dropRecords(); }));
    };
}

void DbZbXpsClDialog::slotImportExcelClicked()
{
    TARVO_GUARD("SjCqXPsClQd\\PopupDialog\\DbZbXpsClDialog",
                "DbZbXpsClDialog::slotImportExcelClicked")
    {
        afterLoad(ZbXpsClLoad::FromExcel(this, m_works ? m_works->getOwner() : nullptr,
                                         [this] { dropRecords(); }));
    };
}

void DbZbXpsClDialog::slotExportZbCl()
{
    TARVO_GUARD("SjCqXPsClQd\\PopupDialog\\DbZbXpsClDialog", "DbZbXpsClDialog::slotExportZbCl")
    {
        CkZbXPsClModel model;
        model.setMaterials(CkZbXPsClDialog::StoredMaterials(m_works));
        const QString dir = ZbXpsClLoad::LastDir();
        const ListExportTexts texts{
            QStringLiteral("当前表内无招标需评审数据"), QStringLiteral("导出为招标需评审材料清单"),
            QDir(dir.isEmpty() ? QDir::homePath() : dir)
                .filePath(QStringLiteral("导出为招标需评审材料清单.xlsx")),
            QStringLiteral("xlsx (*.xlsx);;xls (*.xls)"), QStringLiteral("保存完毕！")};
        const QString folder =
            exportShownList(this, m_works ? m_works->getOwner() : nullptr, model.rowCount() == 0,
                            texts, resolutionRatio(), [&] {
                                QTableView view;
                                view.setModel(&model);
                                CkZbXPsClDialog::LayOut(&view);
                                return TableLayout::Describe(&view);
                            });
        if (!folder.isEmpty())
            ZbXpsClLoad::RememberDir(folder);
    };
}

void DbZbXpsClDialog::slotDbZbClCellClicked(int nRow, const QVariant& varColumn)
{
    TARVO_GUARD("SjCqXPsClQd\\PopupDialog\\DbZbXpsClDialog",
                "DbZbXpsClDialog::slotDbZbClCellClicked")
    {
        Q_UNUSED(varColumn)
        // The bid material of the row is shown in the list below.
        const DbZbZgClItem* record = m_model->record(nRow);
        if (!record || !record->GetTbCl())
            return;
        showMaterial(m_allView, [&](BaseDataItem* m) { return m == record->GetTbCl(); });
    };
}

void DbZbXpsClDialog::slotBtnMakeApair()
{
    TARVO_GUARD("SjCqXPsClQd\\PopupDialog\\DbZbXpsClDialog", "DbZbXpsClDialog::slotBtnMakeApair")
    {
        DbZbZgClItem* record = currentTenderRow(QStringLiteral("请选择有效的招标材料行!"));
        if (!record)
            return;
        const QModelIndex index = m_allView->currentIndex();
        SjCqXPsClItem* material = index.isValid() ? m_allModel->xpsMaterial(index.row()) : nullptr;
        if (!material) {
            showInformation(this, QStringLiteral("操作提示"),
                            QStringLiteral("请在所有材料中选中投标材料行！"));
            return;
        }
        if (!confirmRepair(record))
            return;
        // A bid material stands for one tender material: it leaves the one it had.
        for (DbZbXpsClItem* other : std::as_const(m_records))
            if (other != record && other->IsZbRow() && other->GetTbCl() == material)
                other->Unpair();
        record->Pair(material, DbZbZgClItem::Matched);
        pairsChanged();
    };
}

void DbZbXpsClDialog::slotBtnUnpair()
{
    TARVO_GUARD("SjCqXPsClQd\\PopupDialog\\DbZbXpsClDialog", "DbZbXpsClDialog::slotBtnUnpair")
    {
        DbZbZgClItem* record = currentTenderRow(QStringLiteral("请选择有效的招标材料行!"));
        if (!record)
            return;
        if (!record->GetTbCl()) {
            showInformation(this, QStringLiteral("操作提示"),
                            QStringLiteral("当前行已无对应投标材料!"));
            return;
        }
        record->Unpair();
        pairsChanged();
    };
}

void DbZbXpsClDialog::slotBtnSearch()
{
    TARVO_GUARD("SjCqXPsClQd\\PopupDialog\\DbZbXpsClDialog", "DbZbXpsClDialog::slotBtnSearch")
    {
        m_model->setKeywords(nameEdit()->text(), modelEdit()->text());
        m_allModel->setKeywords(nameEdit()->text(), modelEdit()->text());
        applyKeywordColours();
    };
}

bool DbZbXpsClDialog::apply()
{
    QList<DbZbXpsClItem*> a, b, c;
    SjCqXPsClBusiness::AnalysisXmXpsModify(m_works, m_records, a, b, c);
    bool setAttribute = false, cancelAttribute = false;
    if (!a.isEmpty() || !b.isEmpty()) {
        TbZbXpsClDialog options(!a.isEmpty(), !b.isEmpty(), this);
        if (zTitleModal::ShowModal(&options) != 0)
            return false; // back to editing, every pair kept
        setAttribute = options.setAttribute();
        cancelAttribute = options.cancelAttribute();
    }
    commitChanges(
        [&] {
            SjCqXPsClBusiness::ApplyZbXpsClModifyToProject(m_works, a, b, c, setAttribute,
                                                           cancelAttribute);
            if (ProjectWorks* project = m_works ? m_works->getOwner() : nullptr)
                project->setProjectWorkChanged(true);
        },
        QStringLiteral("对应整理投标需评审材料"));
    emit signalXpsClChanged();
    return true;
}

void DbZbXpsClDialog::slotBtnAccept()
{
    TARVO_GUARD("SjCqXPsClQd\\PopupDialog\\DbZbXpsClDialog", "DbZbXpsClDialog::slotBtnAccept")
    {
        if (apply())
            accept();
    };
}

void DbZbXpsClDialog::slotBtnReject()
{
    TARVO_GUARD("SjCqXPsClQd\\PopupDialog\\DbZbXpsClDialog", "DbZbXpsClDialog::slotBtnReject")
    {
        closeAsking();
    };
}
