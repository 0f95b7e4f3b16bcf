#include "DbZbZgSyClDialog.h"

#include "DbZbZgSyClModel.h"
#include "ExhibitFZgClModel.h"

#include "TarvoGuard.h"

#include "DbZbZgClItem.h"
#include "VXProgressBar.h"
#include "zMessageBox.h"
#include "zTitleModal.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>

DbZbZgSyClDialog::DbZbZgSyClDialog(ConstructionWorks* works, QWidget* parent)
    : MatchDialogBase(QStringLiteral("查看"), parent), m_works(works),
      m_model(new DbZbZgSyClModel(this)), m_allModel(new ExhibitFZgClModel(this)),
      m_allView(nullptr)
{
    setObjectName(QStringLiteral("DbZbZgSyClDialog"));
    setWindowTitle(QStringLiteral("汇总所有材料自动对应"));
    setGridModel(m_model);
    const int widths[] = {50, 110, 150, 120, 50, 80, 150, 120, 50, 70};
    for (int c = 0; c < m_model->columnCount(); ++c)
        grid()->setColumnWidth(c, qRound(widths[c] * resolutionRatio()));
    auto* autoMatch = new QPushButton(QStringLiteral("自动对应"), this);
    autoMatch->setObjectName(QStringLiteral("btnAutoMatch"));
    connect(autoMatch, &QPushButton::clicked, this, &DbZbZgSyClDialog::slotAutoMatchBtnClicked);
    topBar()->addWidget(autoMatch);
    topBar()->addStretch(1);
    m_allView = addMaterialTab(m_allModel, QStringLiteral("所有材料"));
    connect(grid(), &QTableView::clicked, this, [this](const QModelIndex& index) {
        slotDbZbClCellClicked(index.row(), index.column());
    });
}

DbZbZgSyClDialog::~DbZbZgSyClDialog()
{
    m_model->setRecords(nullptr);
    m_allModel->setMaterials({});
    qDeleteAll(m_records);
}

bool DbZbZgSyClDialog::Load()
{
    bool loaded = false;
    TARVO_GUARD("ZgClQd\\PopupDialog\\DbZbZgClDialog", "DbZbZgSyClDialog::Load")
    {
        VXProgressBar progress(QStringLiteral("提示"),
                               QStringLiteral("正在汇总和匹配所有工程材料，请等待"), 0, 100, this);
        progress.show();
        m_model->setRecords(nullptr);
        qDeleteAll(m_records);
        m_records.clear();
        loaded = ZgClQdBusiness::GetGcZbAndTbCl(m_works, m_records, m_tbCl, m_dwMap, &progress);
        if (loaded)
            ZgClQdBusiness::AutoMatchZbSyCl(m_records, m_tbCl, m_dwMap);
        progress.finish();
        m_model->setRecords(&m_records, m_works ? m_works->getJfszTable() : nullptr);
        m_allModel->setMaterials(ZgClQdBusiness::GetAllTbCl(m_tbCl, m_dwMap));
        recount();
    };
    return loaded;
}

void DbZbZgSyClDialog::recount()
{
    int matched = 0, unmatched = 0;
    ZgClQdBusiness::CountZbZgCl(m_records, matched, unmatched);
    showCount(matched, unmatched);
}

void DbZbZgSyClDialog::pairsChanged()
{
    ZgClQdBusiness::RefreshTbOnlyRows(-1, m_records, m_tbCl);
    setModified(true);
    refreshGrid();
    recount();
}

void DbZbZgSyClDialog::slotAutoMatchBtnClicked()
{
    TARVO_GUARD("ZgClQd\\PopupDialog\\DbZbZgClDialog", "DbZbZgSyClDialog::slotAutoMatchBtnClicked")
    {
        ZgClQdBusiness::AutoMatchZbSyCl(m_records, m_tbCl, m_dwMap);
        setModified(true);
        refreshGrid();
        recount();
    };
}

void DbZbZgSyClDialog::slotDbZbClCellClicked(int nRow, const QVariant& varColumn)
{
    TARVO_GUARD("ZgClQd\\PopupDialog\\DbZbZgClDialog", "DbZbZgSyClDialog::slotDbZbClCellClicked")
    {
        Q_UNUSED(varColumn)
        // The bid material of the row is shown in the list below.
        const DbZbZgClItem* record = m_model->record(nRow);
        if (!record || !record->GetTbCl())
            return;
        showMaterial(m_allView, [&](BaseDataItem* m) {
            return ZgClQdBusiness::CheckFZgClExistInDw({m}, record->GetTbCl()) != nullptr;
        });
    };
}

void DbZbZgSyClDialog::slotBtnMakeApair()
{
    TARVO_GUARD("ZgClQd\\PopupDialog\\DbZbZgClDialog", "DbZbZgSyClDialog::slotBtnMakeApair")
    {
        DbZbZgClItem* record = currentTenderRow(QStringLiteral("请选择有效的招标材料行!"));
        if (!record)
            return;
        const QModelIndex index = m_allView->currentIndex();
        BaseDataItem* material = index.isValid() ? m_allModel->material(index.row()) : nullptr;
        if (!material) {
            showInformation(this, QStringLiteral("操作提示"),
                            QStringLiteral("请选中单位工程内材料行！"));
            return;
        }
        if (!confirmRepair(record))
            return;
        record->Pair(material, DbZbZgClItem::Matched);
        pairsChanged();
    };
}

void DbZbZgSyClDialog::slotBtnUnpair()
{
    TARVO_GUARD("ZgClQd\\PopupDialog\\DbZbZgClDialog", "DbZbZgSyClDialog::slotBtnUnpair")
    {
        DbZbZgClItem* record = currentTenderRow(QStringLiteral("请选择招标材料行!"));
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

void DbZbZgSyClDialog::slotBtnSearch()
{
    TARVO_GUARD("ZgClQd\\PopupDialog\\DbZbZgClDialog", "DbZbZgSyClDialog::slotBtnSearch")
    {
        m_model->setKeywords(nameEdit()->text(), modelEdit()->text());
        m_allModel->setKeywords(nameEdit()->text(), modelEdit()->text());
        applyKeywordColours();
    };
}

bool DbZbZgSyClDialog::apply()
{
    return applyChanges(
        [&](bool& b1, bool& b2, bool& b3) {
            ZgClQdBusiness::AnalyzeSyZbZgClModifyProperty(m_records, m_tbCl, m_dwMap, b1, b2, b3);
        },
        [&](bool modifyPrice, bool setProvisional, bool cancelProvisional,
            VXProgressBar& progress) {
            ZgClQdBusiness::ApplySyZbZgClModifyToProject(m_dwMap, m_records, m_tbCl, modifyPrice,
                                                         setProvisional, cancelProvisional,
                                                         &progress, 50);
            if (ProjectWorks* project = m_works ? m_works->getOwner() : nullptr)
                project->setProjectWorkChanged(true);
            ZgClQdBusiness::ClearBCzDyClBj(m_works);
            ZgClQdBusiness::RegenerateZgjClHzb(m_works, &progress, 50, 50);
        },
        QStringLiteral("对应整理投标暂估材料"));
}

void DbZbZgSyClDialog::slotBtnAccept()
{
    TARVO_GUARD("ZgClQd\\PopupDialog\\DbZbZgClDialog", "DbZbZgSyClDialog::slotBtnAccept")
    {
        if (apply())
            accept();
    };
}

void DbZbZgSyClDialog::slotBtnReject()
{
    TARVO_GUARD("ZgClQd\\PopupDialog\\DbZbZgClDialog", "DbZbZgSyClDialog::slotBtnReject")
    {
        closeAsking();
    };
}
