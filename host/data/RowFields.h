#pragma once

#include <QString>
#include <QVariant>
#include <QVector>

// The fields of one row in one allocation: a type byte and an 8-byte slot per field. Numbers and
// booleans sit in their slot; a text is a QString in its slot (implicitly shared, so a name or
// unit repeated down a list is held once); anything rarer is a QVariant of its own on the heap.
// A million rows of a dozen fields must fit in a few hundred bytes each.
class RowFields
{
public:
    enum Type : quint8 { Invalid = 0, Double, Int, LongLong, Bool, Text, Other };

    RowFields() = default;
    ~RowFields();
    RowFields(const RowFields& other);
    RowFields& operator=(const RowFields& other);
    RowFields(RowFields&& other) noexcept : m_d(other.m_d) { other.m_d = nullptr; }
    RowFields& operator=(RowFields&& other) noexcept;

    int size() const { return m_d ? m_d->size : 0; }
    // Makes room for `fields` fields in one step, so that loading a row allocates once.
    void reserve(int fields);
    void clear();

    Type type(int field) const;
    QVariant value(int field) const;
    // Setting an invalid value past the last field stores nothing.
    void set(int field, const QVariant& value);
    void setDouble(int field, double value);
    void setInteger(int field, qint64 value); // Int when it fits, else LongLong
    void setBool(int field, bool value);
    void setText(int field, const QString& value);

    // Slot reads without building a QVariant; only for the field's own type.
    double doubleAt(int field) const { return slot(field).d; }
    qint64 integerAt(int field) const { return slot(field).i; }
    bool boolAt(int field) const { return slot(field).b; }
    const QString& textAt(int field) const { return *slot(field).text(); }

    QVector<QVariant> toVector() const;
    static RowFields fromVector(const QVector<QVariant>& values);
    // Equal when every field holds the same value of the same type.
    bool operator==(const RowFields& other) const;
    bool operator!=(const RowFields& other) const { return !(*this == other); }

    static constexpr int MaxFields = 256;

private:
    union Slot {
        double d;
        qint64 i;
        bool b;
        QVariant* other;
        alignas(QString) unsigned char raw[sizeof(QString)];
        QString* text() { return reinterpret_cast<QString*>(raw); }
        const QString* text() const { return reinterpret_cast<const QString*>(raw); }
    };
    static_assert(sizeof(QString) == 8, "a text must fit its slot");
    struct Data
    {
        quint16 size;
        quint16 capacity;
        // followed by `capacity` type bytes, padding to 8, `capacity` slots
    };
    static int slotOffset(int capacity) { return (int(sizeof(Data)) + capacity + 7) & ~7; }
    quint8* types() const { return reinterpret_cast<quint8*>(m_d) + sizeof(Data); }
    Slot* cells() const
    {
        return reinterpret_cast<Slot*>(reinterpret_cast<char*>(m_d) + slotOffset(m_d->capacity));
    }
    const Slot& slot(int field) const { return cells()[field]; }
    // Frees what a slot owns and marks it empty.
    void release(int field);
    // The slot for `field`, grown to hold it, with what it held released.
    Slot& prepare(int field, Type type);
    void grow(int capacity);

    Data* m_d = nullptr;
};
