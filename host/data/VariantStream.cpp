#include "VariantStream.h"

#include <QDataStream>
#include <QtEndian>

namespace {

// Walks a stream without decoding it. Sizes are big-endian, as QDataStream writes them.
class Scanner
{
public:
    explicit Scanner(const QByteArray& bytes)
        : m_p(reinterpret_cast<const uchar*>(bytes.constData())), m_end(m_p + bytes.size())
    {
    }

    QString why;

    bool atEnd() const { return m_p == m_end; }
    qint64 left() const { return m_end - m_p; }

    bool skip(qint64 n)
    {
        if (n < 0 || left() < n)
            return fail(QStringLiteral("数据不完整"));
        m_p += n;
        return true;
    }
    bool u32(quint32* value)
    {
        if (left() < 4)
            return fail(QStringLiteral("数据不完整"));
        *value = qFromBigEndian<quint32>(m_p);
        m_p += 4;
        return true;
    }
    bool u8(quint8* value)
    {
        if (left() < 1)
            return fail(QStringLiteral("数据不完整"));
        *value = *m_p++;
        return true;
    }
    // A count of elements each at least `minimum` bytes long must fit in what is left.
    bool count(quint32* n, qint64 minimum)
    {
        if (!u32(n))
            return false;
        if (qint64(*n) * minimum > left())
            return fail(QStringLiteral("元素个数%1超出数据长度").arg(*n));
        return true;
    }
    bool string()
    {
        quint32 size;
        if (!u32(&size))
            return false;
        if (size == 0xffffffffu)
            return true; // null string
        if (size % 2 != 0)
            return fail(QStringLiteral("文字长度%1无效").arg(size));
        return skip(size);
    }
    bool byteArray()
    {
        quint32 size;
        if (!u32(&size))
            return false;
        return size == 0xffffffffu || skip(size);
    }

    bool variant(int depth)
    {
        if (depth > VariantStream::MaxDepth)
            return fail(QStringLiteral("嵌套超过%1层").arg(VariantStream::MaxDepth));
        quint32 type;
        quint8 isNull;
        if (!u32(&type) || !u8(&isNull))
            return false;
        switch (type) {
        case QMetaType::UnknownType:
            return true;
        case QMetaType::Bool:
        case QMetaType::Char:
        case QMetaType::SChar:
        case QMetaType::UChar:
            return skip(1);
        case QMetaType::QChar:
        case QMetaType::Short:
        case QMetaType::UShort:
            return skip(2);
        case QMetaType::Int:
        case QMetaType::UInt:
        case QMetaType::QTime:
            return skip(4);
        case QMetaType::LongLong:
        case QMetaType::ULongLong:
        case QMetaType::Double:
        case QMetaType::Float: // written as a double at the stream's default precision
        case QMetaType::QDate:
            return skip(8);
        case QMetaType::QDateTime: {
            quint8 spec;
            if (!skip(12) || !u8(&spec))
                return false;
            if (spec == Qt::OffsetFromUTC)
                return skip(4);
            if (spec > Qt::OffsetFromUTC)
                return fail(QStringLiteral("时间的时区类型%1无效").arg(spec));
            return true;
        }
        case QMetaType::QString:
            return string();
        case QMetaType::QByteArray:
            return byteArray();
        case QMetaType::QStringList: {
            quint32 n;
            if (!count(&n, 4))
                return false;
            for (quint32 i = 0; i < n; ++i)
                if (!string())
                    return false;
            return true;
        }
        case QMetaType::QVariantList: {
            quint32 n;
            if (!count(&n, 5))
                return false;
            for (quint32 i = 0; i < n; ++i)
                if (!variant(depth + 1))
                    return false;
            return true;
        }
        case QMetaType::QVariantMap:
        case QMetaType::QVariantHash: {
            quint32 n;
            if (!count(&n, 9))
                return false;
            for (quint32 i = 0; i < n; ++i)
                if (!string() || !variant(depth + 1))
                    return false;
            return true;
        }
        default:
            return fail(QStringLiteral("不允许的数据类型%1").arg(type));
        }
    }

    bool fail(const QString& text)
    {
        if (why.isEmpty())
            why = text;
        return false;
    }

private:
    const uchar* m_p;
    const uchar* m_end;
};

template <typename T> bool decode(const QByteArray& bytes, T* value, QString* why)
{
    QDataStream in(bytes);
    in.setVersion(QDataStream::Qt_5_15);
    in >> *value;
    if (in.status() != QDataStream::Ok || !in.atEnd()) {
        if (why)
            *why = QStringLiteral("数据无法解读");
        return false;
    }
    return true;
}

} // namespace

bool VariantStream::readVariant(const QByteArray& bytes, QVariant* value, QString* why)
{
    Scanner scan(bytes);
    if (!scan.variant(0) || !scan.atEnd()) {
        if (why)
            *why = scan.why.isEmpty() ? QStringLiteral("数据末尾有多余内容") : scan.why;
        return false;
    }
    return decode(bytes, value, why);
}

bool VariantStream::readIntMap(const QByteArray& bytes, QMap<int, QVariant>* map, QString* why)
{
    // An empty value stands for an empty map.
    if (bytes.isEmpty()) {
        map->clear();
        return true;
    }
    Scanner scan(bytes);
    quint32 n = 0;
    bool ok = scan.count(&n, 9);
    for (quint32 i = 0; ok && i < n; ++i)
        ok = scan.skip(4) && scan.variant(1);
    if (!ok || !scan.atEnd()) {
        if (why)
            *why = scan.why.isEmpty() ? QStringLiteral("数据末尾有多余内容") : scan.why;
        return false;
    }
    return decode(bytes, map, why);
}
