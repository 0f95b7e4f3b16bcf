#include "CompoundFileWriter.h"

#include <QtEndian>

namespace {

constexpr quint32 FreeSector = 0xFFFFFFFF;
constexpr quint32 EndOfChain = 0xFFFFFFFE;
constexpr quint32 FatSector = 0xFFFFFFFD;
constexpr quint32 DifatSector = 0xFFFFFFFC;
constexpr int SectorSize = 512;
constexpr int IdsPerSector = SectorSize / 4;

void put16(QByteArray& data, int at, quint16 value)
{
    qToLittleEndian(value, data.data() + at);
}

void put32(QByteArray& data, int at, quint32 value)
{
    qToLittleEndian(value, data.data() + at);
}

void writeEntry(QByteArray& dir, int index, const QString& name, quint8 type, quint32 child,
                quint32 start, quint32 size)
{
    const int at = index * 128;
    const int units = qMin(int(name.size()), 31);
    for (int i = 0; i < units; ++i)
        put16(dir, at + 2 * i, name.at(i).unicode());
    put16(dir, at + 64, quint16((units + 1) * 2));
    dir[at + 66] = char(type);
    dir[at + 67] = 1; // black
    put32(dir, at + 68, FreeSector);
    put32(dir, at + 72, FreeSector);
    put32(dir, at + 76, child);
    put32(dir, at + 116, start);
    put32(dir, at + 120, size);
}

} // namespace

QByteArray CompoundFileWriter::build(const QString& streamName, QByteArray stream)
{
    if (stream.size() < 4096)
        stream.append(QByteArray(4096 - stream.size(), '\0'));
    const quint32 streamSize = quint32(stream.size());
    const int streamSectors = (stream.size() + SectorSize - 1) / SectorSize;
    stream.append(QByteArray(streamSectors * SectorSize - stream.size(), '\0'));
    const int dirSectors = 1;

    // FAT and DIFAT sectors hold entries for themselves too: grow until everything fits.
    int fatSectors = 1;
    int difatSectors = 0;
    for (;;) {
        const int total = streamSectors + dirSectors + fatSectors + difatSectors;
        const int neededFat = (total + IdsPerSector - 1) / IdsPerSector;
        const int neededDifat =
            neededFat > 109 ? (neededFat - 109 + IdsPerSector - 2) / (IdsPerSector - 1) : 0;
        if (neededFat == fatSectors && neededDifat == difatSectors)
            break;
        fatSectors = neededFat;
        difatSectors = neededDifat;
    }
    const int dirStart = streamSectors;
    const int fatStart = dirStart + dirSectors;
    const int difatStart = fatStart + fatSectors;
    const int totalSectors = difatStart + difatSectors;

    QByteArray fat(fatSectors * SectorSize, '\xFF');
    for (int i = 0; i < streamSectors; ++i)
        put32(fat, 4 * i, i + 1 < streamSectors ? quint32(i + 1) : EndOfChain);
    put32(fat, 4 * dirStart, EndOfChain);
    for (int i = 0; i < fatSectors; ++i)
        put32(fat, 4 * (fatStart + i), FatSector);
    for (int i = 0; i < difatSectors; ++i)
        put32(fat, 4 * (difatStart + i), DifatSector);
    Q_UNUSED(totalSectors);

    QByteArray difat(difatSectors * SectorSize, '\xFF');
    for (int i = 109; i < fatSectors; ++i) {
        const int slot = i - 109;
        const int sector = slot / (IdsPerSector - 1);
        put32(difat, sector * SectorSize + 4 * (slot % (IdsPerSector - 1)), quint32(fatStart + i));
    }
    for (int s = 0; s < difatSectors; ++s)
        put32(difat, s * SectorSize + SectorSize - 4,
              s + 1 < difatSectors ? quint32(difatStart + s + 1) : EndOfChain);

    QByteArray dir(dirSectors * SectorSize, '\0');
    for (int i = 0; i < 4; ++i) {
        put32(dir, i * 128 + 68, FreeSector);
        put32(dir, i * 128 + 72, FreeSector);
        put32(dir, i * 128 + 76, FreeSector);
    }
    writeEntry(dir, 0, QStringLiteral("Root Entry"), 5, 1, EndOfChain, 0);
    writeEntry(dir, 1, streamName, 2, FreeSector, 0, streamSize);

    QByteArray header(SectorSize, '\0');
    static const unsigned char magic[8] = {0xD0, 0xCF, 0x11, 0xE0, 0xA1, 0xB1, 0x1A, 0xE1};
    for (int i = 0; i < 8; ++i)
        header[i] = char(magic[i]);
    put16(header, 24, 0x003E);
    put16(header, 26, 0x0003);
    put16(header, 28, 0xFFFE);
    put16(header, 30, 9);
    put16(header, 32, 6);
    put32(header, 44, quint32(fatSectors));
    put32(header, 48, quint32(dirStart));
    put32(header, 56, 4096);
    put32(header, 60, EndOfChain);
    put32(header, 64, 0);
    put32(header, 68, difatSectors ? quint32(difatStart) : EndOfChain);
    put32(header, 72, quint32(difatSectors));
    for (int i = 0; i < 109; ++i)
        put32(header, 76 + 4 * i, i < fatSectors ? quint32(fatStart + i) : FreeSector);

    QByteArray file;
    file.reserve(header.size() + stream.size() + dir.size() + fat.size() + difat.size());
    file.append(header).append(stream).append(dir).append(fat).append(difat);
    return file;
}
