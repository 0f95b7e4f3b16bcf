#pragma once

#include "RowFields.h"

#include <QString>
#include <QVariant>

class GeneralTableBase;

// One row of a host table. Fields are addressed by number; every change made while an
// undo record is open is journalled with its inverse.
class BaseDataItem
{
public:
    BaseDataItem() = default;
    virtual ~BaseDataItem() = default;
    BaseDataItem(const BaseDataItem&) = delete;
    BaseDataItem& operator=(const BaseDataItem&) = delete;

    QVariant getValue(int field) const { return m_values.value(field); }
    void setValue(int field, const QVariant& value);
    // The text a grid shows for the field: numbers without float noise, booleans as 0/1.
    virtual QString getValueStr(int field) const;
    double getDouble(int field) const;

    int getKind() const { return m_kind; }
    void setKind(int kind);
    bool IsBlock() const { return m_block; }
    void SetBlock(bool block);
    int getRowHeight() const { return m_height; }
    void setRowHeight(int height);
    QString getNote() const { return m_note; }
    void setNote(const QString& note);

    GeneralTableBase* getOwner() const { return m_owner; }
    int fieldCount() const { return m_values.size(); }
    // Copies fields and row state from another row, journalled.
    void copyFrom(const BaseDataItem& other);

    // Raw access for loading and undo: never journalled.
    void loadValue(int field, const QVariant& value);
    void loadState(int kind, bool block, int height, const QString& note);
    const RowFields& rawValues() const { return m_values; }
    // Loading: a whole row's fields at once (the row is new, nothing is journalled).
    void loadValues(RowFields&& values) { m_values = std::move(values); }

    // Pseudo field numbers under which row state is journalled.
    enum StateField { KindField = -1, BlockField = -2, HeightField = -3, NoteField = -4 };
    QVariant stateValue(int pseudoField) const;
    void restore(int field, const QVariant& value);

private:
    friend class GeneralTableBase;
    void record(int field, const QVariant& oldValue, const QVariant& newValue);

    GeneralTableBase* m_owner = nullptr;
    RowFields m_values;
    QString m_note;
    qint32 m_kind = 0;
    qint16 m_height = 0;
    bool m_block = false;
};
