#include "CkZbXPsClDialog.h"
#include "HostScreen.h"

#include "CkZbXPsClModel.h"
#include "ZbXpsClLoad.h"

#include "ListExport.h"
#include "TarvoGuard.h"

#include "TenderExchange.h"

#include "ConstructionWorks.h"
#include "ProjectWorks.h"
#include "SjCqXPsClTable.h"
#include "TableLayout.h"
#include "TableLayoutExport.h"

#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QMenu>
#include <QPushButton>
#include <QTableView>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

double resolutionRatio()
{
    return HostScreen::ResolutionRatio();
}

} // namespace

CkZbXPsClDialog::CkZbXPsClDialog(ConstructionWorks* works, QWidget* parent)
    : QDialog(parent), m_works(works), m_model(new CkZbXPsClModel(this)),
      m_view(new QTableView(this)), m_import(new QToolButton(this)),
      m_export(new QPushButton(QStringLiteral("导出需评审材料到Excel文件"), this))
{
    setObjectName(QStringLiteral("CkZbXPsClDialog"));
    setWindowTitle(QStringLiteral("招标文件约定的需评审材料清单"));
    const double ratio = resolutionRatio();
    resize(qRound(1000 * ratio), qRound(600 * ratio));

    m_view->setObjectName(QStringLiteral("tableView"));
    m_view->setModel(m_model);
    m_view->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    LayOut(m_view);

    m_import->setObjectName(QStringLiteral("btnImport"));
    m_import->setText(QStringLiteral("从招标文件中导入需评审的材料清单"));
    m_import->setPopupMode(QToolButton::InstantPopup);
    m_import->setToolButtonStyle(Qt::ToolButtonTextOnly);
    auto* menu = new QMenu(m_import);
    connect(menu->addAction(QStringLiteral("从CJZ文件中载入")), &QAction::triggered, this,
            &CkZbXPsClDialog::slotImportCJZClicked);
    connect(menu->addAction(QStringLiteral("从YFJZ文件中载入")), &QAction::triggered, this,
            &CkZbXPsClDialog::slotImportCJZClicked_YN);
    connect(menu->addAction(QStringLiteral("从Excel文件中载入")), &QAction::triggered, this,
            &CkZbXPsClDialog::slotImportExcelClicked);
    m_import->setMenu(menu);
    // Loading replaces the project's tender list: not in a read-only project.
    const ProjectWorks* project = m_works ? m_works->getOwner() : nullptr;
    m_import->setEnabled(project && !project->IsReadOnly());
    m_export->setObjectName(QStringLiteral("btnExport"));
    connect(m_export, &QPushButton::clicked, this, &CkZbXPsClDialog::slotExportBtnClicked);
    auto* close = new QPushButton(QStringLiteral("关闭"), this);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_import);
    buttons->addWidget(m_export);
    buttons->addStretch(1);
    buttons->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(buttons);
    layout->addWidget(m_view, 1);

    TARVO_GUARD("SjCqXPsClQd\\PopupDialog\\CkZbXPsClDialog", "CkZbXPsClDialog::CkZbXPsClDialog")
    {
        reload();
    };
}

void CkZbXPsClDialog::LayOut(QTableView* view)
{
    const double ratio = resolutionRatio();
    view->setFont(QFont(QStringLiteral("SimSun"), 9));
    view->verticalHeader()->setDefaultSectionSize(qRound(24 * ratio));
    const int widths[] = {50, 110, 160, 130, 60, 90, 100, 80, 80, 100};
    for (int c = 0; c < CkZbXPsClModel::eColumnCount; ++c)
        view->setColumnWidth(c, qRound(widths[c] * ratio));
}

QVector<TenderEvaluatedMaterial> CkZbXPsClDialog::StoredMaterials(const ConstructionWorks* works)
{
    QVector<TenderEvaluatedMaterial> materials;
    if (const ProjectWorks* project = works ? works->getOwner() : nullptr)
        for (const SjCqXPsClItem* row : project->GetGcZbXPsCl())
            materials << TenderExchange::FromEvaluatedRow(row);
    return materials;
}

void CkZbXPsClDialog::reload()
{
    m_model->setMaterials(StoredMaterials(m_works));
}

void CkZbXPsClDialog::storeMaterials(const QVector<TenderEvaluatedMaterial>& materials)
{
    ZbXpsClLoad::Store(m_works ? m_works->getOwner() : nullptr, materials);
    reload();
}

QString CkZbXPsClDialog::askFile(const QString& filter)
{
    return ZbXpsClLoad::AskFile(this, QStringLiteral("从招标文件中导入需评审的材料清单"), filter);
}

void CkZbXPsClDialog::importFile(const QString& path)
{
    if (ZbXpsClLoad::FromTenderFile(this, m_works ? m_works->getOwner() : nullptr, path))
        reload();
}

void CkZbXPsClDialog::slotImportCJZClicked()
{
    TARVO_GUARD("SjCqXPsClQd\\PopupDialog\\CkZbXPsClDialog",
                "CkZbXPsClDialog::slotImportCJZClicked")
    {
        const QString path =
            askFile(QStringLiteral("四川省建设工程造价电子数据标准 (*.cjz *.CJZ)"));
        if (!path.isEmpty())
            importFile(path);
    };
}

void CkZbXPsClDialog::slotImportCJZClicked_YN()
{
    TARVO_GUARD("SjCqXPsClQd\\PopupDialog\\CkZbXPsClDialog",
                "CkZbXPsClDialog::slotImportCJZClicked_YN")
    {
        const QString path = askFile(QStringLiteral("数据接口文件 (*.YFJZ)"));
        if (!path.isEmpty())
            importFile(path);
    };
}

void CkZbXPsClDialog::slotImportExcelClicked()
{
    TARVO_GUARD("SjCqXPsClQd\\PopupDialog\\CkZbXPsClDialog",
                "CkZbXPsClDialog::slotImportExcelClicked")
    {
        if (ZbXpsClLoad::FromExcel(this, m_works ? m_works->getOwner() : nullptr))
            reload();
    };
}

void CkZbXPsClDialog::slotExportBtnClicked()
{
    TARVO_GUARD("SjCqXPsClQd\\PopupDialog\\CkZbXPsClDialog",
                "CkZbXPsClDialog::slotExportBtnClicked")
    {
        const ListExportTexts texts{
            QStringLiteral("当前表内无招标需评审材料数据"), QStringLiteral("选择保存路径"),
            QDir(ZbXpsClLoad::LastDir().isEmpty() ? QDir::homePath() : ZbXpsClLoad::LastDir())
                .filePath(QStringLiteral("导出为招标需评审材料清单.xlsx")),
            QStringLiteral("excel(*.xls *.xlsx)"), QStringLiteral("导出完毕！")};
        const QString folder = exportShownList(this, m_works ? m_works->getOwner() : nullptr,
                                               m_model->rowCount() == 0, texts, resolutionRatio(),
                                               [this] { return TableLayout::Describe(m_view); });
        if (!folder.isEmpty())
            ZbXpsClLoad::RememberDir(folder);
    };
}
