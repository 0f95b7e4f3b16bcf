#include "RURecordControl.h"
#include "BaseDataItem.h"
#include "GeneralTableBase.h"

#include <QSet>
#include <QUndoCommand>
#include <QUndoStack>

#include <algorithm>
#include <typeinfo>
#include <utility>

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
    GeneralTableBase* table() const override { return m_item->getOwner(); }
    BaseDataItem* item() const override { return m_item; }

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
    GeneralTableBase* table() const override { return m_table; }

    // For replaying many at once: whether replaying in that direction takes the row away, the
    // row, where it goes, and who holds it afterwards.
    bool takes(bool undoing) const { return undoing == m_inserted; }
    BaseDataItem* row() const { return m_item; }
    int position() const { return m_row; }
    void setHeld(bool held) { m_held = held; }

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
    GeneralTableBase* table() const override { return m_table; }

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

// Puts rows back where each went, in replay order, all in one pass: the i-th put row goes to
// its recorded position among the rows there at its turn. Walking the puts newest first, each
// takes the free place of that rank among the final places (a Fenwick tree counts the free
// places); the rows already in the table fill the places left, in their order.
void putAll(GeneralTableBase* table, const std::vector<PresenceChange*>& puts)
{
    const QList<BaseDataItem*>& old = table->items();
    const int n = old.size();
    const int total = n + int(puts.size());
    // Places that only rise (the undo of a removal of many rows, of a clear, a run of
    // appends): a later put lands after every earlier one, so each row's place is its
    // recorded one and the rows already there fill the gaps.
    bool rising = true;
    for (int j = 0, last = -1; j < int(puts.size()) && rising; ++j) {
        const int place = qBound(0, puts[std::size_t(j)]->position(), n + j);
        rising = place > last;
        last = place;
    }
    if (rising) {
        QList<BaseDataItem*> rows;
        rows.reserve(total);
        int next = 0;
        for (int j = 0; j < int(puts.size()); ++j) {
            PresenceChange* put = puts[std::size_t(j)];
            const int place = qBound(0, put->position(), n + j);
            while (rows.size() < place)
                rows.append(old.at(next++));
            rows.append(put->row());
            put->setHeld(false);
        }
        while (next < n)
            rows.append(old.at(next++));
        table->reorder(rows);
        return;
    }
    std::vector<int> tree(std::size_t(total) + 1);
    for (int i = 1; i <= total; ++i)
        tree[std::size_t(i)] = i & -i; // every place free
    int top = 1;
    while (top * 2 <= total)
        top *= 2;
    std::vector<BaseDataItem*> places(std::size_t(total), nullptr);
    for (int j = int(puts.size()) - 1; j >= 0; --j) {
        PresenceChange* put = puts[std::size_t(j)];
        int rank = qBound(0, put->position(), n + j) + 1; // as attach bounds it
        int place = 0;
        for (int step = top; step > 0; step /= 2) {
            if (place + step <= total && tree[std::size_t(place + step)] < rank) {
                place += step;
                rank -= tree[std::size_t(place)];
            }
        }
        for (int i = place + 1; i <= total; i += i & -i)
            --tree[std::size_t(i)];
        places[std::size_t(place)] = put->row();
        put->setHeld(false);
    }
    QList<BaseDataItem*> rows;
    rows.reserve(total);
    int next = 0;
    for (BaseDataItem* item : places)
        rows.append(item ? item : old.at(next++));
    table->reorder(rows); // the rows were the table's: their owner is still set
}

// Takes the rows away in one pass over the table.
void takeAll(GeneralTableBase* table, const std::vector<PresenceChange*>& takes)
{
    // Each row of a run is taken once, and only a row that is in the table: as many rows as
    // the table holds are all of them (the undo of a clear, of a summary).
    if (int(takes.size()) == table->count()) {
        for (PresenceChange* take : takes)
            take->setHeld(true);
        table->reorder({});
        return;
    }
    // Places that only fall (a block removed last first, a run of inserts undone), each row
    // still at its place: the rows go by their places, without looking them up.
    const QList<BaseDataItem*>& items = table->items();
    bool falling = true;
    for (std::size_t j = 0, last = std::size_t(items.size()); j < takes.size() && falling; ++j) {
        const std::size_t place = std::size_t(takes[j]->position());
        falling = place < last && items.at(int(place)) == takes[j]->row();
        last = place;
    }
    if (falling) {
        QList<BaseDataItem*> rows;
        rows.reserve(items.size() - int(takes.size()));
        int next = 0;
        for (auto it = takes.crbegin(); it != takes.crend(); ++it) {
            while (next < (*it)->position())
                rows.append(items.at(next++));
            ++next;
            (*it)->setHeld(true);
        }
        while (next < items.size())
            rows.append(items.at(next++));
        table->reorder(rows);
        return;
    }
    QSet<const BaseDataItem*> gone;
    gone.reserve(int(takes.size()));
    for (PresenceChange* take : takes) {
        gone.insert(take->row());
        take->setHeld(true);
    }
    QList<BaseDataItem*> rows;
    rows.reserve(items.size());
    for (BaseDataItem* item : items)
        if (!gone.contains(item))
            rows.append(item);
    table->reorder(rows);
}

// Replays changes in the order given. A run of row inserts or removals in one table is
// replayed at once, so that undoing a bulk command costs time linear in what it changed
// (up to a log factor) rather than a search or a shift of the table per row.
void replayInOrder(const std::vector<RUChange*>& changes, bool undoing)
{
    constexpr std::size_t smallRun = 16; // below this, row by row is cheaper
    // The exact type is compared rather than cast: a replay meets every change of a record.
    auto presence = [](RUChange* change) {
        return typeid(*change) == typeid(PresenceChange) ? static_cast<PresenceChange*>(change)
                                                         : nullptr;
    };
    for (std::size_t i = 0; i < changes.size();) {
        auto* first = presence(changes[i]);
        if (!first) {
            undoing ? changes[i]->undo() : changes[i]->redo();
            ++i;
            continue;
        }
        const bool taking = first->takes(undoing);
        std::vector<PresenceChange*> run{first};
        for (std::size_t j = i + 1; j < changes.size(); ++j) {
            auto* next = presence(changes[j]);
            if (!next || next->table() != first->table() || next->takes(undoing) != taking)
                break;
            run.push_back(next);
        }
        i += run.size();
        if (run.size() < smallRun) {
            for (PresenceChange* change : run)
                undoing ? change->undo() : change->redo();
        } else if (taking) {
            takeAll(first->table(), run);
        } else {
            putAll(first->table(), run);
        }
    }
}

// The changes of [first, end) in the order a replay in that direction runs them.
std::vector<RUChange*> inReplayOrder(const std::vector<std::unique_ptr<RUChange>>& changes,
                                     std::size_t first, bool undoing)
{
    std::vector<RUChange*> order;
    order.reserve(changes.size() - first);
    for (std::size_t i = first; i < changes.size(); ++i)
        order.push_back(changes[i].get());
    if (undoing)
        std::reverse(order.begin(), order.end());
    return order;
}

// The rows of the table that hold the changed items, as spans in table order; rows less
// than a screen apart share a span. A handful of items is looked up by address (a plain scan
// of the row pointers); more are found in one pass through a hash set.
std::vector<std::pair<int, int>> changedSpans(const QList<BaseDataItem*>& rows,
                                              const QVector<BaseDataItem*>& items)
{
    constexpr int gap = 64;
    std::vector<int> found;
    QVector<BaseDataItem*> distinct = items;
    std::sort(distinct.begin(), distinct.end());
    distinct.erase(std::unique(distinct.begin(), distinct.end()), distinct.end());
    if (distinct.size() <= 8) {
        for (BaseDataItem* item : distinct)
            if (const int row = rows.indexOf(item); row >= 0)
                found.push_back(row);
        std::sort(found.begin(), found.end());
    } else {
        const QSet<BaseDataItem*> changed(distinct.cbegin(), distinct.cend());
        for (int row = 0; row < rows.size(); ++row)
            if (changed.contains(rows.at(row)))
                found.push_back(row);
    }
    std::vector<std::pair<int, int>> spans;
    for (int row : found) {
        if (!spans.empty() && row - spans.back().second <= gap)
            spans.back().second = row;
        else
            spans.emplace_back(row, row);
    }
    return spans;
}

} // namespace

class RUUndoCommand : public QUndoCommand
{
public:
    RUUndoCommand(std::vector<std::unique_ptr<RUChange>> changes, const OperatingUIInfo& info,
                  QHash<GeneralTableBase*, RURecordControl::Touched> touched)
        : QUndoCommand(info.text), m_changes(std::move(changes)), m_info(info),
          m_touched(std::move(touched))
    {
    }
    void undo() override
    {
        replay([this] { replayInOrder(inReplayOrder(m_changes, 0, true), true); });
        emit RURecordControl::GetInstance()->signalReplayed(m_info, true);
    }
    void redo() override
    {
        // The changes were already made when the record was pushed.
        if (m_first) {
            m_first = false;
            return;
        }
        replay([this] { replayInOrder(inReplayOrder(m_changes, 0, false), false); });
        emit RURecordControl::GetInstance()->signalReplayed(m_info, false);
    }

private:
    template <typename F> void replay(F f)
    {
        RURecordControl* control = RURecordControl::GetInstance();
        control->m_replaying = true;
        f();
        control->m_replaying = false;
        // A replay touches what the record touched, known since the record ended.
        control->m_touched = m_touched;
        control->flushChanges();
    }
    std::vector<std::unique_ptr<RUChange>> m_changes;
    OperatingUIInfo m_info;
    QHash<GeneralTableBase*, RURecordControl::Touched> m_touched;
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
    qRegisterMetaType<TableChange>();
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
    const bool changed = !m_open.empty(); // a command that changed nothing leaves no undo step
    if (changed) {
        m_stack->push(new RUUndoCommand(std::move(m_open), info, m_touched));
        m_open.clear();
    }
    flushChanges();
    if (changed)
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
    if (m_open.size() > mark) {
        replayInOrder(inReplayOrder(m_open, mark, true), true);
        m_open.resize(mark); // a row a change still holds (an insert taken back) dies with it
    }
    m_replaying = false;
    if (--m_depth == 0)
        flushChanges(); // the views follow the data put back
}

void RURecordControl::touch(const RUChange& change)
{
    GeneralTableBase* table = change.table();
    if (!table)
        return;
    Touched& touched = m_touched[table];
    if (BaseDataItem* item = change.item())
        touched.items.append(item);
    else
        touched.rowsChanged = true;
}

void RURecordControl::flushChanges()
{
    // Taken first: a view that redraws may start another record.
    const QHash<GeneralTableBase*, Touched> touched = std::exchange(m_touched, {});
    for (auto it = touched.cbegin(); it != touched.cend(); ++it) {
        TableChange change;
        change.rowsChanged = it->rowsChanged;
        const QList<BaseDataItem*>& rows = it.key()->items();
        if (!change.rowsChanged && it->items.size() >= 1024 &&
            it->items.size() * 4 >= rows.size()) {
            // A bulk change: the whole list is redrawn, without looking for the rows.
            if (rows.isEmpty())
                continue;
            change.firstRow = 0;
            change.lastRow = rows.size() - 1;
        } else if (!change.rowsChanged) {
            // A few rows, told as spans: rows far apart (an edited row and the total row
            // at the end) are told apart, so that a view redraws those rows and not all the
            // rows between them.
            for (const auto& [first, last] : changedSpans(rows, it->items)) {
                change.firstRow = first;
                change.lastRow = last;
                emit signalTableChanged(it.key(), change);
            }
            continue;
        }
        emit signalTableChanged(it.key(), change);
    }
}

void RURecordControl::add(std::unique_ptr<RUChange> change)
{
    if (!IsRecording())
        return;
    touch(*change);
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
    m_touched.clear();
    m_open.clear();
    m_stack->clear();
}
