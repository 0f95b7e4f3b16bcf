#include "BaseDataItem.h"
#include "GeneralTableBase.h"
#include "RURecordControl.h"

#include <cmath>

void BaseDataItem::record(int field, const QVariant& oldValue, const QVariant& newValue)
{
    if (m_owner && m_owner->isJournalled())
        RURecordControl::GetInstance()->RecordValueChange(this, field, oldValue, newValue);
}

void BaseDataItem::setValue(int field, const QVariant& value)
{
    if (field < 0)
        return;
    const QVariant old = getValue(field);
    if (old == value && old.userType() == value.userType())
        return;
    record(field, old, value);
    loadValue(field, value);
}

double BaseDataItem::getDouble(int field) const
{
    switch (m_values.type(field)) {
    case RowFields::Double:
        return m_values.doubleAt(field);
    case RowFields::Int:
    case RowFields::LongLong:
        return double(m_values.integerAt(field));
    case RowFields::Invalid:
        return 0;
    default:
        return getValue(field).toDouble();
    }
}

QString BaseDataItem::getValueStr(int field) const
{
    if (m_values.type(field) == RowFields::Text)
        return m_values.textAt(field);
    const QVariant v = getValue(field);
    switch (v.userType()) {
    case QMetaType::Double:
    case QMetaType::Float: {
        const double d = v.toDouble();
        if (!std::isfinite(d))
            return QString();
        // 15 significant digits hide binary noise such as 0.30000000000000004.
        return QString::number(d, 'g', 15);
    }
    case QMetaType::Bool:
        return v.toBool() ? QStringLiteral("1") : QStringLiteral("0");
    default:
        return v.toString();
    }
}

void BaseDataItem::setKind(int kind)
{
    if (kind == m_kind)
        return;
    record(KindField, m_kind, kind);
    m_kind = kind;
}

void BaseDataItem::SetBlock(bool block)
{
    if (block == m_block)
        return;
    record(BlockField, m_block, block);
    m_block = block;
}

void BaseDataItem::setRowHeight(int height)
{
    if (height == m_height)
        return;
    record(HeightField, int(m_height), height);
    m_height = qint16(height);
}

void BaseDataItem::setNote(const QString& note)
{
    if (note == m_note)
        return;
    record(NoteField, m_note, note);
    m_note = note;
}

void BaseDataItem::copyFrom(const BaseDataItem& other)
{
    const int n = qMax(fieldCount(), other.fieldCount());
    for (int f = 0; f < n; ++f)
        setValue(f, other.getValue(f));
    setKind(other.m_kind);
    SetBlock(other.m_block);
    setRowHeight(other.m_height);
    setNote(other.m_note);
}

void BaseDataItem::loadValue(int field, const QVariant& value)
{
    m_values.set(field, value);
}

void BaseDataItem::loadState(int kind, bool block, int height, const QString& note)
{
    m_kind = kind;
    m_block = block;
    m_height = qint16(height);
    m_note = note;
}

QVariant BaseDataItem::stateValue(int pseudoField) const
{
    switch (pseudoField) {
    case KindField:
        return m_kind;
    case BlockField:
        return m_block;
    case HeightField:
        return int(m_height);
    case NoteField:
        return m_note;
    default:
        return getValue(pseudoField);
    }
}

void BaseDataItem::restore(int field, const QVariant& value)
{
    switch (field) {
    case KindField:
        m_kind = value.toInt();
        break;
    case BlockField:
        m_block = value.toBool();
        break;
    case HeightField:
        m_height = qint16(value.toInt());
        break;
    case NoteField:
        m_note = value.toString();
        break;
    default:
        loadValue(field, value);
        break;
    }
}
