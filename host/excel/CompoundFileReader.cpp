#include "CompoundFileReader.h"

#include <QVector>
#include <QtEndian>

namespace {

constexpr quint32 EndOfChain = 0xFFFFFFFE;
constexpr quint32 MaxRegular = 0xFFFFFFFA;

quint32 read32(const QByteArray& data, qint64 at)
{
    return qFromLittleEndian<quint32>(data.constData() + at);
}

quint16 read16(const QByteArray& data, qint64 at)
{
    return qFromLittleEndian<quint16>(data.constData() + at);
}

} // namespace

bool CompoundFileReader::open(const QByteArray& file, QString* error)
{
    m_file = file;
    if (file.size() < 512) {
        *error = QStringLiteral("the compound file is truncated (shorter than its header)");
        return false;
    }
    const quint16 shift = read16(file, 30);
    if (shift != 9 && shift != 12) {
        *error =
            QStringLiteral("the compound file header is damaged (sector size 2^%1)").arg(shift);
        return false;
    }
    m_sectorSize = 1 << shift;
    m_miniCutoff = read32(file, 56);
    const qint64 sectors = (file.size() - m_sectorSize + m_sectorSize - 1) / m_sectorSize;
    const quint32 fatCount = read32(file, 44);
    if (fatCount > quint32(sectors)) {
        *error = QStringLiteral("the compound file is truncated or damaged (%1 allocation sectors "
                                "in a file of %2 sectors)")
                     .arg(fatCount)
                     .arg(sectors);
        return false;
    }
    auto sectorOffset = [&](quint32 sector) -> qint64 { return qint64(sector + 1) * m_sectorSize; };
    auto validSector = [&](quint32 sector) {
        return sector <= MaxRegular && sectorOffset(sector) + m_sectorSize <= file.size();
    };

    // The allocation table's own sectors: 109 in the header, the rest in a chain of sectors.
    QVector<quint32> fatSectors;
    for (int i = 0; i < 109 && quint32(fatSectors.size()) < fatCount; ++i)
        fatSectors.append(read32(file, 76 + 4 * i));
    quint32 difat = read32(file, 68);
    const int perSector = m_sectorSize / 4;
    int guard = 0;
    while (quint32(fatSectors.size()) < fatCount) {
        if (!validSector(difat) || ++guard > sectors) {
            *error = QStringLiteral("the compound file is truncated or damaged (allocation table "
                                    "index)");
            return false;
        }
        const qint64 at = sectorOffset(difat);
        for (int i = 0; i < perSector - 1 && quint32(fatSectors.size()) < fatCount; ++i)
            fatSectors.append(read32(file, at + 4 * i));
        difat = read32(file, at + 4 * (perSector - 1));
    }
    m_fat.clear();
    m_fat.reserve(int(fatCount) * perSector);
    for (quint32 sector : qAsConst(fatSectors)) {
        if (!validSector(sector)) {
            *error = QStringLiteral("the compound file is truncated (allocation sector %1 lies "
                                    "beyond the end of the file)")
                         .arg(sector);
            return false;
        }
        const qint64 at = sectorOffset(sector);
        for (int i = 0; i < perSector; ++i)
            m_fat.append(read32(file, at + 4 * i));
    }

    QString chainError;
    const QByteArray directory = readChain(read32(file, 48), quint64(-1), false, &chainError);
    if (directory.isEmpty()) {
        *error = QStringLiteral("the compound file's directory is damaged: %1").arg(chainError);
        return false;
    }
    m_entries.clear();
    for (int at = 0; at + 128 <= directory.size(); at += 128) {
        Entry entry;
        const int nameBytes = qMin<int>(read16(directory, at + 64), 64);
        const int units = qMax(0, nameBytes / 2 - 1);
        for (int i = 0; i < units; ++i)
            entry.name.append(QChar(read16(directory, at + 2 * i)));
        entry.type = quint8(directory.at(at + 66));
        entry.start = read32(directory, at + 116);
        entry.size = read32(directory, at + 120);
        m_entries.append(entry);
    }
    if (m_entries.isEmpty() || m_entries.constFirst().type != 5) {
        *error = QStringLiteral("the compound file has no root entry");
        return false;
    }

    // Small streams live in the mini stream, which is the root entry's own stream.
    m_miniFat.clear();
    m_miniStream.clear();
    const quint32 miniFatStart = read32(file, 60);
    if (miniFatStart != EndOfChain && read32(file, 64) > 0) {
        const QByteArray table = readChain(miniFatStart, quint64(-1), false, &chainError);
        for (int at = 0; at + 4 <= table.size(); at += 4)
            m_miniFat.append(read32(table, at));
        const Entry& root = m_entries.constFirst();
        if (root.size > 0)
            m_miniStream = readChain(root.start, root.size, false, &chainError);
    }
    return true;
}

bool CompoundFileReader::chain(quint32 start, const QVector<quint32>& table, int limit,
                               QVector<quint32>* out, QString* error) const
{
    quint32 sector = start;
    while (sector != EndOfChain) {
        if (sector >= quint32(table.size()) || out->size() >= limit) {
            *error = QStringLiteral("a sector chain runs outside the file or in a circle");
            return false;
        }
        out->append(sector);
        sector = table.at(int(sector));
    }
    return true;
}

QByteArray CompoundFileReader::readChain(quint32 start, quint64 size, bool inPlace,
                                         QString* error) const
{
    QVector<quint32> sectors;
    const int limit = int(m_file.size() / m_sectorSize) + 1;
    if (!chain(start, m_fat, limit, &sectors, error))
        return QByteArray();
    if (inPlace && !sectors.isEmpty() && size != quint64(-1)) {
        bool runs = true;
        for (int i = 1; runs && i < sectors.size(); ++i)
            runs = sectors.at(i) == sectors.at(0) + quint32(i);
        const qint64 at = qint64(sectors.at(0) + 1) * m_sectorSize;
        if (runs && quint64(sectors.size()) * quint64(m_sectorSize) >= size &&
            quint64(at) + size <= quint64(m_file.size()))
            return QByteArray::fromRawData(m_file.constData() + at, int(size));
    }
    QByteArray out;
    out.reserve(int(qMin<qint64>(qint64(sectors.size()) * m_sectorSize, m_file.size())));
    for (quint32 sector : qAsConst(sectors)) {
        const qint64 at = qint64(sector + 1) * m_sectorSize;
        if (at + m_sectorSize > m_file.size()) {
            // The last sector of a file may be short; anything else is a truncated file.
            if (at < m_file.size() && sector == sectors.constLast()) {
                out.append(m_file.constData() + at, int(m_file.size() - at));
                break;
            }
            *error =
                QStringLiteral("the file is truncated (sector %1 lies beyond its end)").arg(sector);
            return QByteArray();
        }
        out.append(m_file.constData() + at, m_sectorSize);
    }
    if (size != quint64(-1)) {
        if (quint64(out.size()) < size) {
            *error = QStringLiteral("the file is truncated (a stream of %1 bytes has only %2)")
                         .arg(size)
                         .arg(out.size());
            return QByteArray();
        }
        out.truncate(int(size));
    }
    return out;
}

QByteArray CompoundFileReader::readMiniChain(quint32 start, quint64 size, QString* error) const
{
    QVector<quint32> sectors;
    if (!chain(start, m_miniFat, m_miniFat.size() + 1, &sectors, error))
        return QByteArray();
    QByteArray out;
    for (quint32 sector : qAsConst(sectors)) {
        const qint64 at = qint64(sector) * 64;
        if (at + 64 > m_miniStream.size()) {
            *error = QStringLiteral("the file is truncated (a small stream lies beyond its end)");
            return QByteArray();
        }
        out.append(m_miniStream.constData() + at, 64);
    }
    if (quint64(out.size()) < size) {
        *error = QStringLiteral("the file is truncated (a stream of %1 bytes has only %2)")
                     .arg(size)
                     .arg(out.size());
        return QByteArray();
    }
    out.truncate(int(size));
    return out;
}

QStringList CompoundFileReader::streamNames() const
{
    QStringList names;
    for (const Entry& entry : m_entries)
        if (entry.type == 2)
            names.append(entry.name);
    return names;
}

bool CompoundFileReader::hasStream(const QString& name) const
{
    return streamNames().contains(name, Qt::CaseInsensitive);
}

QByteArray CompoundFileReader::stream(const QString& name, QString* error) const
{
    return find(name, false, error);
}

QByteArray CompoundFileReader::streamInPlace(const QString& name, QString* error) const
{
    return find(name, true, error);
}

QByteArray CompoundFileReader::find(const QString& name, bool inPlace, QString* error) const
{
    for (const Entry& entry : m_entries) {
        if (entry.type != 2 || entry.name.compare(name, Qt::CaseInsensitive) != 0)
            continue;
        if (entry.size > quint64(m_file.size())) {
            *error = QStringLiteral("the file is truncated (stream %1 claims %2 bytes)")
                         .arg(name)
                         .arg(entry.size);
            return QByteArray();
        }
        if (entry.size < m_miniCutoff)
            return readMiniChain(entry.start, entry.size, error);
        return readChain(entry.start, entry.size, inPlace, error);
    }
    *error = QStringLiteral("there is no stream %1").arg(name);
    return QByteArray();
}
