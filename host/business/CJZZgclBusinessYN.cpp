#include "CJZZgclBusinessYN.h"

#include "TenderExchange.h"
#include "TenderFileReader.h"
#include "TenderProjectFit.h"

#include "DataManagement.h"
#include "SjCqXPsClTable.h"
#include "ZgClZsItem.h"
#include "ZgjClHzTable.h"

CJZZgclBusinessYN::CJZZgclBusinessYN() = default;

CJZZgclBusinessYN::~CJZZgclBusinessYN()
{
    clear();
}

void CJZZgclBusinessYN::clear()
{
    qDeleteAll(m_rows);
    m_rows.clear();
    m_fit.clear();
    m_fitsEmpty = false;
    m_document = TenderDocument();
}

bool CJZZgclBusinessYN::LoadDwgcZgclData(const QString& path, const QList<ProTreeNode*>& nodes,
                                         DwClMap& materials, bool provisional)
{
    materials.clear();
    clear();
    m_error.clear();
    if (!TenderFileReader::ReadFile(path, &m_document, &m_error))
        return false;
    const ProTreeNode* root = nodes.isEmpty() ? nullptr : nodes.first();
    ProjectWorks* project =
        root
            ? DataManagement::getInstance()->GetProjectWorksByIndex(ProTreeNode::ProjectIndex(root))
            : nullptr;
    m_projectId = project ? project->GetSjId() : 0;
    TenderProjectFit::Fit(m_document, m_projectId, nodes, &m_fit);
    m_fitsEmpty = m_fit.isEmpty() && m_document.unitProjectCount() == 0 &&
                  std::none_of(nodes.begin(), nodes.end(),
                               [](ProTreeNode* n) { return n && n->isUnitProject(); });
    if (provisional) {
        if (!Fits())
            return true;
        int count = 0;
        for (const TenderSingleProject& single : m_document.singles)
            for (const TenderUnitProject& unit : single.units)
                count += unit.provisional.size();
        m_rows.reserve(count);
        for (const TenderSingleProject& single : m_document.singles)
            for (const TenderUnitProject& unit : single.units) {
                QList<ZgjClHzItem*>& list = materials[unit.id];
                list.reserve(unit.provisional.size());
                for (int i = 0; i < unit.provisional.size(); ++i) {
                    auto* row = new ZgjClHzItem;
                    TenderExchange::ToMaterialRow(unit.provisional.at(i), i + 1, row);
                    m_rows.append(row);
                    list.append(row);
                }
            }
    } else {
        QList<ZgjClHzItem*>& list = materials[QString()];
        list.reserve(m_document.evaluated.size());
        for (const TenderEvaluatedMaterial& m : m_document.evaluated) {
            auto* row = new ZgjClHzItem;
            TenderExchange::ToEvaluatedRow(m, row);
            m_rows.append(row);
            list.append(row);
        }
    }
    return true;
}

bool CJZZgclBusinessYN::GetGcZbZgClTreeList(qint64 projectId, int auditId,
                                            QList<ZgClZsItem*>& nodes, const DwClMap& materials)
{
    Q_UNUSED(auditId) // one tender list per project, whichever version is shown
    nodes.clear();
    if (!Fits() || projectId != m_projectId)
        return false;
    int id = 0;
    for (const TenderSingleProject& single : m_document.singles)
        for (const TenderUnitProject& unit : single.units) {
            auto* dw = new ZgClZsItem(++id, 0, ZgClZsItem::UnitProject);
            dw->SetZxGcName(unit.name);
            dw->SetDwGcKey(unit.id);
            dw->SetNodeId(m_fit.value(unit.id, -1));
            nodes.append(dw);
            for (const ZgjClHzItem* row : materials.value(unit.id)) {
                auto* cl = new ZgClZsItem(++id, dw->GetId(), ZgClZsItem::Material);
                cl->SetNodeId(dw->GetNodeId());
                auto* copy = new ZgjClHzItem;
                copy->copyFrom(*row);
                cl->SetZgjClHzItem(copy);
                nodes.append(cl);
            }
        }
    return true;
}

QList<SjCqXPsClItem*> CJZZgclBusinessYN::TakeGcZbXPsClList() const
{
    QList<SjCqXPsClItem*> list;
    for (const TenderEvaluatedMaterial& m : m_document.evaluated) {
        auto* row = new SjCqXPsClItem;
        TenderExchange::ToEvaluatedRow(m, row);
        list.append(row);
    }
    return list;
}
