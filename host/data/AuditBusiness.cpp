#include "AuditBusiness.h"
#include "DataManagement.h"
#include "HostIds.h"

AuditBusiness::AuditBusiness(QObject* owner) : QObject(owner) {}

void AuditBusiness::SetWidget(QWidget* widget, int side)
{
    (side == 0 ? m_sj : m_ss) = widget;
}

void AuditBusiness::SetTableSource(GeneralTableBase* table)
{
    m_table = table;
    CreateRelationByTable();
}

GeneralTableBase* AuditBusiness::submittedTable() const
{
    if (!m_table || m_table->getAuditId() != 0 || !m_table->getOwner())
        return nullptr;
    ConstructionWorks* ss = m_table->getOwner()->works(1, m_table->getNodeId());
    return ss ? ss->tableByType(m_table->getTableType()) : nullptr;
}

void AuditBusiness::Open()
{
    m_open = true;
    CreateRelationByTable();
}

void AuditBusiness::ProcMsg(int msgId, QVariant* payload)
{
    Q_UNUSED(payload)
    // Anything that may have changed rows: refresh, undo/redo, project saved.
    if (msgId == MsgId::RefreshPages || msgId == MsgId::RecordReplayed ||
        msgId == MsgId::ProjectSaved)
        CreateRelationByTable();
}

void AuditBusiness::CreateRelationByTable(int flags)
{
    Q_UNUSED(flags)
    m_states.clear();
    const GeneralTableBase* ss = submittedTable();
    if (m_table && ss) {
        m_states.resize(m_table->count());
        for (int row = 0; row < m_table->count(); ++row) {
            const BaseDataItem* cur = m_table->at(row);
            const BaseDataItem* old = ss->at(row);
            if (!old)
                m_states[row] = Added;
            else
                m_states[row] =
                    (cur->rawValues() == old->rawValues() && cur->getKind() == old->getKind())
                        ? Same
                        : Changed;
        }
    }
    emit relationChanged();
}

AuditBusiness::DiffState AuditBusiness::rowState(int row) const
{
    return row >= 0 && row < m_states.size() ? m_states.at(row) : Same;
}
