#pragma once

#include "OperatingUIInfo.h"
#include "TableChange.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QVariant>
#include <QVector>

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

class BaseDataItem;
class GeneralTableBase;
class QUndoStack;

// One journalled change of the data model with its inverse.
class RUChange
{
public:
    virtual ~RUChange() = default;
    virtual void undo() = 0;
    virtual void redo() = 0;
    // The table it changes, or null (fee variables, settings).
    virtual GeneralTableBase* table() const { return nullptr; }
    // The row whose values it changes, or null when it changes rows themselves.
    virtual BaseDataItem* item() const { return nullptr; }
};

// The host's undo facility. A user action opens a record with BeginRecord, the data layer
// journals every change into it, and EndRecord pushes it, labelled, onto the undo stack.
// Nested Begin/End pairs fold into the outermost record.
class RURecordControl : public QObject
{
    Q_OBJECT
public:
    static RURecordControl* GetInstance();

    void BeginRecord();
    void EndRecord(const OperatingUIInfo& info);

    // A user action as a scope: opening it begins a record; commit() ends the record with its
    // label; leaving the scope without commit (the action threw) puts back everything journalled
    // since the scope opened, so the data are as they were and no undo step is left. Scopes
    // nest like Begin/End pairs: an inner scope that rolls back takes back only its own part.
    class Scope
    {
    public:
        Scope();
        ~Scope();
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;
        void commit(const OperatingUIInfo& info);

    private:
        std::size_t m_mark;
        bool m_done = false;
    };
    bool IsRecording() const { return m_depth > 0 && !m_replaying; }

    // Reordering done outside the data layer: the rows of the table were in oldOrder before.
    void RecordTableItemOrderChange(GeneralTableBase* table, const QList<BaseDataItem*>& oldOrder);

    void RecordValueChange(BaseDataItem* item, int field, const QVariant& oldValue,
                           const QVariant& newValue);
    void RecordInsert(GeneralTableBase* table, BaseDataItem* item, int row);
    void RecordRemove(GeneralTableBase* table, BaseDataItem* item, int row);
    void RecordOrder(GeneralTableBase* table, const QList<BaseDataItem*>& oldOrder,
                     const QList<BaseDataItem*>& newOrder);
    // Any other change of the data model, by its two directions.
    void RecordChange(std::function<void()> undo, std::function<void()> redo);

    QUndoStack* undoStack() const { return m_stack; }
    bool Undo();
    bool Redo();
    // Drops all history: the project was closed or a row vanished outside any record.
    void ForgetHistory();

signals:
    // After an undo or redo, with the info of the record that was replayed.
    void signalReplayed(const OperatingUIInfo& info, bool undone);
    void signalRecordPushed(const OperatingUIInfo& info);
    // A table changed: sent for each table when a record ends (pushed or rolled back) and
    // after each undo or redo, so that every view of the table follows its data; a few
    // changed rows far apart are sent as one signal per span of rows. Changes made outside
    // any record are not signalled: their callers redraw.
    void signalTableChanged(GeneralTableBase* table, const TableChange& change);

private:
    RURecordControl();
    void add(std::unique_ptr<RUChange> change);
    // Undoes and drops the changes journalled after the first mark ones, and closes one level.
    void rollBack(std::size_t mark);
    // Notes the table a change touches, to be signalled when the record ends.
    void touch(const RUChange& change);
    // Signals the tables touched since the last flush.
    void flushChanges();
    friend class RUUndoCommand;

    QUndoStack* m_stack;
    int m_depth = 0;
    bool m_replaying = false;
    std::vector<std::unique_ptr<RUChange>> m_open;
    struct Touched
    {
        bool rowsChanged = false;
        QVector<BaseDataItem*> items; // rows whose values changed, repeats allowed
    };
    QHash<GeneralTableBase*, Touched> m_touched;
};
