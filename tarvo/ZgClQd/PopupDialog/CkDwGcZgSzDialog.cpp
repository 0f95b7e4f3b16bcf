#include "CkDwGcZgSzDialog.h"

#include "CkDwGcZgClSzModel.h"
#include "HostScreen.h"
#include "common/TarvoGuard.h"

#include "Communication.h"
#include "ConstructionWorks.h"
#include "VXProgressBar.h"
#include "ZgClQdBusiness.h"
#include "ZgClZsItem.h"

#include <QFont>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QScreen>
#include <QTreeView>
#include <QVBoxLayout>

namespace {

const QString kSource = QStringLiteral("ZgClQd\\PopupDialog\\CkDwGcZgSzDialog");

} // namespace

CkDwGcZgSzDialog::CkDwGcZgSzDialog(ConstructionWorks* works, QWidget* parent)
    : QDialog(parent), m_works(works), m_model(new CkDwGcZgClSzModel(this)),
      m_view(new QTreeView(this))
{
    setObjectName(QStringLiteral("CkDwGcZgSzDialog"));
    setWindowTitle(QStringLiteral("查看单位工程暂估设置"));
    const double ratio = HostScreen::ResolutionRatio();
    resize(qRound(1100 * ratio), qRound(600 * ratio));

    m_view->setObjectName(QStringLiteral("tree"));
    m_view->setModel(m_model);
    m_view->setFont(QFont(QStringLiteral("SimSun"), 9));
    m_view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_view->setAlternatingRowColors(false);
    m_view->setUniformRowHeights(true);
    m_view->header()->setDefaultSectionSize(qRound(80 * ratio));
    m_view->setColumnWidth(CkDwGcZgClSzModel::eZbBm, qRound(200 * ratio));
    m_view->setColumnWidth(CkDwGcZgClSzModel::eClMc, qRound(140 * ratio));
    m_view->setColumnWidth(CkDwGcZgClSzModel::eGgXh, qRound(130 * ratio));

    auto* legend = new QLabel(
        QStringLiteral("<span style='background:#d7ffd7'>绿色底色：该材料的暂估设置与其他单位工程中"
                       "的同一材料不一致</span>；<span style='color:red'>缺少招标编码</span>"
                       "：该材料在本单位工程中没有招标编码"),
        this);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_view, 1);
    layout->addWidget(legend);
}

CkDwGcZgSzDialog::~CkDwGcZgSzDialog()
{
    clearNodes();
}

void CkDwGcZgSzDialog::clearNodes()
{
    m_model->setNodes({}, nullptr);
    qDeleteAll(m_nodes);
    m_nodes.clear();
}

void CkDwGcZgSzDialog::Load()
{
    TarvoGuard::run(kSource, __LINE__, QStringLiteral("CkDwGcZgSzDialog::Load"), [&] {
        clearNodes();
        if (!m_works)
            return;
        QList<ZgClZsItem*> nodes;
        try {
            VXProgressBar progress(QStringLiteral("提示"),
                                   QStringLiteral("正在汇总所有工程暂估材料，请等待"), 0, 100,
                                   Communication::GetInstance()->GetMainWindow());
            progress.show();
            ZgClQdBusiness::GetGcZgSz(m_works, nodes, &progress);
            progress.finish();
        } catch (...) {
            qDeleteAll(nodes);
            throw;
        }
        m_nodes = nodes;
        m_model->setNodes(m_nodes, m_works->getJfszTable());
        m_view->expandAll();
    });
}
