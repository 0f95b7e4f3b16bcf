#include "RowFields.h"

#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>

namespace {

// Field numbers address the slots directly; beyond this nothing is stored.
constexpr int FieldLimit = 0xFFFF;

} // namespace

RowFields::~RowFields()
{
    clear();
}

RowFields::RowFields(const RowFields& other)
{
    *this = other;
}

RowFields& RowFields::operator=(const RowFields& other)
{
    if (this == &other)
        return *this;
    clear();
    if (!other.m_d || other.m_d->size == 0)
        return *this;
    const int n = other.m_d->size;
    grow(n);
    m_d->size = quint16(n);
    std::memcpy(types(), other.types(), size_t(n));
    Slot* to = cells();
    const Slot* from = other.cells();
    for (int f = 0; f < n; ++f) {
        switch (other.types()[f]) {
        case Text:
            new (to[f].raw) QString(*from[f].text());
            break;
        case Other:
            to[f].other = new QVariant(*from[f].other);
            break;
        default:
            to[f] = from[f];
            break;
        }
    }
    return *this;
}

RowFields& RowFields::operator=(RowFields&& other) noexcept
{
    if (this != &other) {
        clear();
        m_d = other.m_d;
        other.m_d = nullptr;
    }
    return *this;
}

void RowFields::clear()
{
    if (!m_d)
        return;
    for (int f = 0; f < m_d->size; ++f)
        release(f);
    std::free(m_d);
    m_d = nullptr;
}

void RowFields::grow(int capacity)
{
    const size_t bytes = size_t(slotOffset(capacity)) + size_t(capacity) * sizeof(Slot);
    Data* d = static_cast<Data*>(std::calloc(1, bytes));
    if (!d)
        throw std::bad_alloc();
    d->capacity = quint16(capacity);
    d->size = 0;
    if (m_d) {
        // Slots move by their bytes: a QString is a pointer to its shared data.
        d->size = m_d->size;
        std::memcpy(reinterpret_cast<char*>(d) + sizeof(Data), types(), m_d->size);
        std::memcpy(reinterpret_cast<char*>(d) + slotOffset(capacity), cells(),
                    size_t(m_d->size) * sizeof(Slot));
        std::free(m_d);
    }
    m_d = d;
}

void RowFields::reserve(int fields)
{
    fields = qMin(fields, FieldLimit);
    if (fields > (m_d ? m_d->capacity : 0))
        grow(fields);
}

RowFields::Type RowFields::type(int field) const
{
    return field >= 0 && field < size() ? Type(types()[field]) : Invalid;
}

void RowFields::release(int field)
{
    Slot& s = cells()[field];
    if (types()[field] == Text)
        s.text()->~QString();
    else if (types()[field] == Other)
        delete s.other;
    types()[field] = Invalid;
    s.i = 0;
}

RowFields::Slot& RowFields::prepare(int field, Type type)
{
    if (field >= (m_d ? m_d->capacity : 0))
        grow(field + 1);
    if (field < m_d->size)
        release(field);
    else
        m_d->size = quint16(field + 1);
    types()[field] = type;
    return cells()[field];
}

QVariant RowFields::value(int field) const
{
    switch (type(field)) {
    case Double:
        return slot(field).d;
    case Int:
        return int(slot(field).i);
    case LongLong:
        return qlonglong(slot(field).i);
    case Bool:
        return slot(field).b;
    case Text:
        return *slot(field).text();
    case Other:
        return *slot(field).other;
    case Invalid:
        break;
    }
    return QVariant();
}

void RowFields::set(int field, const QVariant& value)
{
    if (field < 0 || field >= FieldLimit)
        return;
    switch (value.userType()) {
    case QMetaType::UnknownType:
        if (field < size())
            release(field);
        return;
    case QMetaType::Double:
        setDouble(field, value.toDouble());
        return;
    case QMetaType::Int:
        prepare(field, Int).i = value.toInt();
        return;
    case QMetaType::LongLong:
        prepare(field, LongLong).i = value.toLongLong();
        return;
    case QMetaType::Bool:
        setBool(field, value.toBool());
        return;
    case QMetaType::QString:
        setText(field, value.toString());
        return;
    default: {
        // Made before the slot is released: `value` may be what the slot holds.
        auto copy = std::make_unique<QVariant>(value);
        prepare(field, Other).other = copy.release();
        return;
    }
    }
}

void RowFields::setDouble(int field, double value)
{
    if (field >= 0 && field < FieldLimit)
        prepare(field, Double).d = value;
}

void RowFields::setInteger(int field, qint64 value)
{
    if (field >= 0 && field < FieldLimit)
        prepare(field, value >= INT_MIN && value <= INT_MAX ? Int : LongLong).i = value;
}

void RowFields::setBool(int field, bool value)
{
    if (field >= 0 && field < FieldLimit)
        prepare(field, Bool).b = value;
}

void RowFields::setText(int field, const QString& value)
{
    if (field < 0 || field >= FieldLimit)
        return;
    QString copy = value; // `value` may be what the slot holds
    new (prepare(field, Text).raw) QString(std::move(copy));
}

QVector<QVariant> RowFields::toVector() const
{
    QVector<QVariant> values;
    values.reserve(size());
    for (int f = 0; f < size(); ++f)
        values.append(value(f));
    return values;
}

RowFields RowFields::fromVector(const QVector<QVariant>& values)
{
    RowFields fields;
    fields.reserve(values.size());
    for (int f = 0; f < values.size(); ++f)
        fields.set(f, values.at(f));
    return fields;
}

bool RowFields::operator==(const RowFields& other) const
{
    if (size() != other.size())
        return false;
    for (int f = 0; f < size(); ++f) {
        const Type t = type(f);
        if (t != other.type(f) || t == Other) {
            if (value(f) != other.value(f))
                return false;
            continue;
        }
        switch (t) {
        case Double:
            if (slot(f).d != other.slot(f).d)
                return false;
            break;
        case Int:
        case LongLong:
            if (slot(f).i != other.slot(f).i)
                return false;
            break;
        case Bool:
            if (slot(f).b != other.slot(f).b)
                return false;
            break;
        case Text:
            if (*slot(f).text() != *other.slot(f).text())
                return false;
            break;
        default:
            break;
        }
    }
    return true;
}
