#include "CkZbZgClQdDialog.h"

#include "CkZbZgClQdModel.h"
#include "HostScreen.h"

#include "ListExport.h"
#include "TarvoGuard.h"

#include "CJZZgclBusinessYN.h"
#include "ZgClQdBusiness.h"

#include "DataManagement.h"
#include "ProjectWorks.h"
#include "TableLayout.h"
#include "TableLayoutExport.h"
#include "ZgClZsItem.h"
#include "zFileDialog.h"
#include "zMessageBox.h"

#include <QDebug>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QMenu>
#include <QPushButton>
#include <QScreen>
#include <QTableView>
#include <QToolButton>
#include <QVBoxLayout>

QString CkZbZgClQdDialog::s_lastDir;

namespace {

double resolutionRatio()
{
    return HostScreen::ResolutionRatio();
}

} // namespace

CkZbZgClQdDialog::CkZbZgClQdDialog(ConstructionWorks* works, QWidget* parent)
    : QDialog(parent), m_works(works), m_model(new CkZbZgClQdModel(this)),
      m_view(new QTableView(this)), m_import(new QToolButton(this)),
      m_export(new QPushButton(QStringLiteral("导出招标文件约定的暂估清单"), this))
{
    setObjectName(QStringLiteral("CkZbZgClQdDialog"));
    setWindowTitle(QStringLiteral("查看招标文件约定的暂估清单"));
    const double ratio = resolutionRatio();
    resize(qRound(1000 * ratio), qRound(600 * ratio));

    m_view->setObjectName(QStringLiteral("tableView"));
    m_view->setModel(m_model);
    m_view->setFont(QFont(QStringLiteral("SimSun"), 9));
    m_view->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_view->verticalHeader()->setDefaultSectionSize(qRound(24 * ratio));
    const int widths[] = {150, 160, 160, 90, 90, 80, 80, 60, 90};
    for (int c = 0; c < CkZbZgClQdModel::eColumnCount; ++c)
        m_view->setColumnWidth(c, qRound(widths[c] * ratio));

    m_import->setObjectName(QStringLiteral("btnImport"));
    m_import->setText(QStringLiteral("导入招标文件约定的暂估清单"));
    m_import->setPopupMode(QToolButton::InstantPopup);
    m_import->setToolButtonStyle(Qt::ToolButtonTextOnly);
    auto* menu = new QMenu(m_import);
    connect(menu->addAction(QStringLiteral("从CJZ文件中载入")), &QAction::triggered, this,
            &CkZbZgClQdDialog::slotImportCJZClicked);
    connect(menu->addAction(QStringLiteral("从YFJZ文件中载入")), &QAction::triggered, this,
            &CkZbZgClQdDialog::slotImportCJZClicked_YN);
    m_import->setMenu(menu);
    // Loading replaces the project's tender list: not in a read-only project.
    const ProjectWorks* project = m_works ? m_works->getOwner() : nullptr;
    m_import->setEnabled(project && !project->IsReadOnly());
    m_export->setObjectName(QStringLiteral("btnExport"));
    connect(m_export, &QPushButton::clicked, this, &CkZbZgClQdDialog::slotExportBtnClicked);
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

    TARVO_GUARD("ZgClQd\\PopupDialog\\CkZbZgClQdDialog", "CkZbZgClQdDialog::CkZbZgClQdDialog")
    {
        reload();
    };
}

CkZbZgClQdDialog::~CkZbZgClQdDialog()
{
    m_model->setNodes({});
    clearNodes();
}

void CkZbZgClQdDialog::clearNodes()
{
    qDeleteAll(m_nodes);
    m_nodes.clear();
}

void CkZbZgClQdDialog::reload()
{
    m_model->setNodes({});
    clearNodes();
    ProjectWorks* project = m_works ? m_works->getOwner() : nullptr;
    if (project)
        ZgClQdBusiness::GetGcZbZgClTreeList(project->GetSjId(), m_works->getAuditId(), m_nodes);
    m_model->setNodes(m_nodes, m_works ? m_works->getJfszTable() : nullptr);
}

QString CkZbZgClQdDialog::askFile(const QString& filter)
{
    const QString path = zFileDialog::getOpenFileName(
        this, QStringLiteral("导入招标文件约定的暂估清单"), s_lastDir, filter);
    if (!path.isEmpty())
        s_lastDir = QFileInfo(path).absolutePath();
    return path;
}

bool CkZbZgClQdDialog::ImportTenderFile(QWidget* parent, ConstructionWorks* works,
                                        const QString& path)
{
    ProjectWorks* project = works ? works->getOwner() : nullptr;
    if (!project || project->IsReadOnly())
        return false;
    DataManagement* data = DataManagement::getInstance();
    const QList<ProTreeNode*> nodes = data->GetProTreeNodeListInOrder(project->projectIndex());
    ConstructionWorks* construction = project->GetConstructionWorksNode();

    CJZZgclBusinessYN reader;
    CJZZgclBusinessYN::DwClMap materials;
    if (!reader.LoadDwgcZgclData(path, nodes, materials, true)) {
        showInformation(parent, QStringLiteral("操作提示"), reader.LastError());
        return false;
    }
    QList<ZgClZsItem*> read;
    reader.GetGcZbZgClTreeList(project->GetSjId(), works->getAuditId(), read, materials);
    if (read.isEmpty()) {
        showInformation(parent, QStringLiteral("操作提示"),
                        QStringLiteral("导入的招标文件工程树结构与当前工程不一致，请重新选择"));
        return false;
    }
    QMap<int, ProTreeNode*> dwMap;
    ProjectWorks::ZbZgClMap stored;
    const bool mapped = ZgClQdBusiness::AquireZbZgClMap(read, construction, dwMap) &&
                        ZgClQdBusiness::AquireGcZbZgClFromCJZRes(read, dwMap, stored);
    qDeleteAll(read);
    if (!mapped || !project->SetGcZbZgCl(project->GetSjId(), stored)) {
        showInformation(parent, QStringLiteral("操作提示"),
                        QStringLiteral("导入的招标文件工程树结构与当前工程不一致，请重新选择"));
        return false;
    }
    project->SetZbFileName(QFileInfo(path).fileName());
    // A file with an evaluated-materials list brings it along.
    if (!reader.Document().evaluated.isEmpty()) {
        QList<SjCqXPsClItem*> evaluated = reader.TakeGcZbXPsClList();
        project->SetGcZbXPsCl(project->GetSjId(), evaluated);
    }
    return true;
}

void CkZbZgClQdDialog::slotImportCJZClicked()
{
    TARVO_GUARD("ZgClQd\\PopupDialog\\CkZbZgClQdDialog", "CkZbZgClQdDialog::slotImportCJZClicked")
    {
        const QString path =
            askFile(QStringLiteral("四川省建设工程造价电子数据标准 (*.cjz *.CJZ)"));
        if (path.isEmpty())
            return;
        ImportTenderFile(this, m_works, path);
        reload();
    };
}

void CkZbZgClQdDialog::slotImportCJZClicked_YN()
{
    TARVO_GUARD("ZgClQd\\PopupDialog\\CkZbZgClQdDialog",
                "CkZbZgClQdDialog::slotImportCJZClicked_YN")
    {
        const QString path = askFile(QStringLiteral("数据接口文件 (*.YFJZ)"));
        if (path.isEmpty())
            return;
        ImportTenderFile(this, m_works, path);
        reload();
    };
}

void CkZbZgClQdDialog::slotExportBtnClicked()
{
    TARVO_GUARD("ZgClQd\\PopupDialog\\CkZbZgClQdDialog", "CkZbZgClQdDialog::slotExportBtnClicked")
    {
        const ListExportTexts texts{
            QStringLiteral("当前表内无招标暂估材料数据"), QStringLiteral("导出为招标暂估材料清单"),
            s_lastDir, QStringLiteral("xlsx (*.xlsx);;xls (*.xls)"), QStringLiteral("保存完毕！")};
        const QString folder = exportShownList(
            this, m_works ? m_works->getOwner() : nullptr, m_model->materialCount() == 0, texts,
            resolutionRatio(), [this] { return TableLayout::Describe(m_view); });
        if (!folder.isEmpty())
            s_lastDir = folder;
    };
}
