#include "GeneralTableBase.h"
#include "RURecordControl.h"

#include <QVector>

GeneralTableBase::GeneralTableBase(int tableType, WorkBaseObject* works)
    : TableBaseObject(tableType, works)
{
}

GeneralTableBase::~GeneralTableBase()
{
    qDeleteAll(m_items);
}

int GeneralTableBase::GetItemIndexInOrder(const BaseDataItem* item) const
{
    return m_items.indexOf(const_cast<BaseDataItem*>(item));
}

void GeneralTableBase::BaseDataItemAppend(BaseDataItem* item)
{
    BaseDataItemInsert(m_items.size(), item);
}

void GeneralTableBase::BaseDataItemInsert(int row, BaseDataItem* item)
{
    if (!item)
        return;
    row = qBound(0, row, m_items.size());
    attach(row, item);
    if (isJournalled())
        RURecordControl::GetInstance()->RecordInsert(this, item, row);
}

void GeneralTableBase::BaseDataItemRemoveAt(int row)
{
    BaseDataItem* item = detach(row);
    if (!item)
        return;
    RURecordControl* control = RURecordControl::GetInstance();
    if (isJournalled() && control->IsRecording()) {
        control->RecordRemove(this, item, row);
        return;
    }
    if (isJournalled())
        control->ForgetHistory(); // earlier records may refer to the row we now delete
    delete item;
}

void GeneralTableBase::BaseDataItemRemoveRows(const QList<int>& rows)
{
    // The rows that go, checked: in range and strictly ascending.
    QVector<int> gone;
    gone.reserve(rows.size());
    for (int row : rows)
        if (row >= 0 && row < m_items.size() && (gone.isEmpty() || row > gone.last()))
            gone.append(row);
    if (gone.isEmpty())
        return;
    QList<BaseDataItem*> kept;
    kept.reserve(m_items.size() - gone.size());
    QVector<BaseDataItem*> taken;
    taken.reserve(gone.size());
    int next = 0;
    for (int row = 0; row < m_items.size(); ++row) {
        if (next < gone.size() && gone.at(next) == row) {
            taken.append(m_items.at(row));
            ++next;
        } else {
            kept.append(m_items.at(row));
        }
    }
    m_items = kept;
    RURecordControl* control = RURecordControl::GetInstance();
    if (isJournalled() && control->IsRecording()) {
        // Last first: each row's recorded place is then its place when it went.
        for (int i = gone.size() - 1; i >= 0; --i)
            control->RecordRemove(this, taken.at(i), gone.at(i));
        return;
    }
    if (isJournalled())
        control->ForgetHistory(); // earlier records may refer to the rows we delete
    qDeleteAll(taken);
}

bool GeneralTableBase::BaseDataItemMove(int from, int to)
{
    if (from < 0 || from >= m_items.size() || to < 0 || to >= m_items.size() || from == to)
        return false;
    QList<BaseDataItem*> order = m_items;
    order.move(from, to);
    SetItemOrder(order);
    return true;
}

void GeneralTableBase::SetItemOrder(const QList<BaseDataItem*>& order)
{
    if (order.size() != m_items.size() || order == m_items)
        return;
    const QList<BaseDataItem*> old = m_items;
    reorder(order);
    if (isJournalled())
        RURecordControl::GetInstance()->RecordOrder(this, old, order);
}

void GeneralTableBase::Clear()
{
    for (int row = m_items.size() - 1; row >= 0; --row)
        BaseDataItemRemoveAt(row);
}

void GeneralTableBase::attach(int row, BaseDataItem* item)
{
    item->m_owner = this;
    m_items.insert(qBound(0, row, m_items.size()), item);
}

BaseDataItem* GeneralTableBase::detach(int row)
{
    if (row < 0 || row >= m_items.size())
        return nullptr;
    BaseDataItem* item = m_items.takeAt(row);
    return item;
}

void GeneralTableBase::reorder(const QList<BaseDataItem*>& order)
{
    m_items = order;
}
