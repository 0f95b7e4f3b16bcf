#include "RURecordControl.h"
#include "BaseDataItem.h"
#include "GeneralTableBase.h"

#include <QUndoCommand>
#include <QUndoStack>

namespace {

class ValueChange : public RUChange
{
public:
    ValueChange(BaseDataItem* item, int field, QVariant oldValue, QVariant newValue)
        : m_item(item), m_field(field), m_old(std::move(oldValue)), m_new(std::move(newValue))
    {
    }
    void undo() override { m_item->restore(m_field, m_old); }
    void redo() override { m_item->restore(m_field, m_new); }

private:
    BaseDataItem* m_item;
    int m_field;
    QVariant m_old;
    QVariant m_new;
};

// Insert and remove share one shape: a row that is in the table in one state and held
// here in the other. Whoever holds it owns it.
class PresenceChange : public RUChange
{
public:
    PresenceChange(GeneralTableBase* table, BaseDataItem* item, int row, bool inserted)
        : m_table(table), m_item(item), m_row(row), m_inserted(inserted), m_held(!inserted)
    {
    }
    ~PresenceChange() override
    {
        if (m_held)
            delete m_item;
    }
    void undo() override { m_inserted ? take() : put(); }
    void redo() override { m_inserted ? put() : take(); }

private:
    void put()
    {
        m_table->attach(m_row, m_item);
        m_held = false;
    }
    void take()
    {
        m_table->detach(m_table->GetItemIndexInOrder(m_item));
        m_held = true;
    }
    GeneralTableBase* m_table;
    BaseDataItem* m_item;
    int m_row;
    bool m_inserted;
    bool m_held;
};

class OrderChange : public RUChange
{
public:
    OrderChange(GeneralTableBase* table, QList<BaseDataItem*> oldOrder,
                QList<BaseDataItem*> newOrder)
        : m_table(table), m_old(std::move(oldOrder)), m_new(std::move(newOrder))
    {
    }
    void undo() override { m_table->reorder(m_old); }
    void redo() override { m_table->reorder(m_new); }

private:
    GeneralTableBase* m_table;
    QList<BaseDataItem*> m_old;
    QList<BaseDataItem*> m_new;
};

class FunctionChange : public RUChange
{
public:
    FunctionChange(std::function<void()> undo, std::function<void()> redo)
        : m_undo(std::move(undo)), m_redo(std::move(redo))
    {
    }
    void undo() override { m_undo(); }
    void redo() override { m_redo(); }

private:
    std::function<void()> m_undo;
    std::function<void()> m_redo;
};

} // namespace

class RUUndoCommand : public QUndoCommand
{
public:
    RUUndoCommand(std::vector<std::unique_ptr<RUChange>> changes, const OperatingUIInfo& info)
        : QUndoCommand(info.text), m_changes(std::move(changes)), m_info(info)
    {
    }
    void undo() override
    {
        replay([this] {
            for (auto it = m_changes.rbegin(); it != m_changes.rend(); ++it)
                (*it)->undo();
        });
        emit RURecordControl::GetInstance()->signalReplayed(m_info, true);
    }
    void redo() override
    {
        // The changes were already made when the record was pushed.
        if (m_first) {
            m_first = false;
            return;
        }
        replay([this] {
            for (auto& change : m_changes)
                change->redo();
        });
        emit RURecordControl::GetInstance()->signalReplayed(m_info, false);
    }

private:
    template <typename F> void replay(F f)
    {
        RURecordControl* control = RURecordControl::GetInstance();
        control->m_replaying = true;
        f();
        control->m_replaying = false;
    }
    std::vector<std::unique_ptr<RUChange>> m_changes;
    OperatingUIInfo m_info;
    bool m_first = true;
};

RURecordControl* RURecordControl::GetInstance()
{
    static RURecordControl* instance = new RURecordControl;
    return instance;
}

RURecordControl::RURecordControl() : m_stack(new QUndoStack(this))
{
    qRegisterMetaType<OperatingUIInfo>();
}

void RURecordControl::BeginRecord()
{
    ++m_depth;
}

void RURecordControl::EndRecord(const OperatingUIInfo& info)
{
    if (m_depth == 0)
        return;
    if (--m_depth > 0)
        return;
    if (m_open.empty())
        return; // a command that changed nothing leaves no undo step
    m_stack->push(new RUUndoCommand(std::move(m_open), info));
    m_open.clear();
    emit signalRecordPushed(info);
}

RURecordControl::Scope::Scope()
{
    RURecordControl* control = GetInstance();
    control->BeginRecord();
    m_mark = control->m_open.size();
}

RURecordControl::Scope::~Scope()
{
    if (!m_done)
        GetInstance()->rollBack(m_mark);
}

void RURecordControl::Scope::commit(const OperatingUIInfo& info)
{
    if (m_done)
        return;
    m_done = true;
    GetInstance()->EndRecord(info);
}

void RURecordControl::rollBack(std::size_t mark)
{
    if (m_depth == 0)
        return;
    m_replaying = true;
    while (m_open.size() > mark) {
        m_open.back()->undo();
        m_open.pop_back(); // a row the change still holds (an insert taken back) dies with it
    }
    m_replaying = false;
    --m_depth;
}

void RURecordControl::add(std::unique_ptr<RUChange> change)
{
    if (IsRecording())
        m_open.push_back(std::move(change));
}

void RURecordControl::RecordValueChange(BaseDataItem* item, int field, const QVariant& oldValue,
                                        const QVariant& newValue)
{
    if (IsRecording())
        add(std::make_unique<ValueChange>(item, field, oldValue, newValue));
}

void RURecordControl::RecordInsert(GeneralTableBase* table, BaseDataItem* item, int row)
{
    if (IsRecording())
        add(std::make_unique<PresenceChange>(table, item, row, true));
}

void RURecordControl::RecordRemove(GeneralTableBase* table, BaseDataItem* item, int row)
{
    if (IsRecording())
        add(std::make_unique<PresenceChange>(table, item, row, false));
    else
        delete item;
}

void RURecordControl::RecordOrder(GeneralTableBase* table, const QList<BaseDataItem*>& oldOrder,
                                  const QList<BaseDataItem*>& newOrder)
{
    if (IsRecording())
        add(std::make_unique<OrderChange>(table, oldOrder, newOrder));
}

void RURecordControl::RecordChange(std::function<void()> undo, std::function<void()> redo)
{
    if (IsRecording())
        add(std::make_unique<FunctionChange>(std::move(undo), std::move(redo)));
}

void RURecordControl::RecordTableItemOrderChange(GeneralTableBase* table,
                                                 const QList<BaseDataItem*>& oldOrder)
{
    if (table && oldOrder != table->items())
        RecordOrder(table, oldOrder, table->items());
}

bool RURecordControl::Undo()
{
    if (m_depth > 0 || !m_stack->canUndo())
        return false;
    m_stack->undo();
    return true;
}

bool RURecordControl::Redo()
{
    if (m_depth > 0 || !m_stack->canRedo())
        return false;
    m_stack->redo();
    return true;
}

void RURecordControl::ForgetHistory()
{
    m_open.clear();
    m_stack->clear();
}
