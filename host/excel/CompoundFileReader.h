#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

// Reads the streams of an OLE2 compound file held in memory: the container of .xls workbooks
// and of password-protected .xlsx packages. Every sector number and chain is checked against
// the file's size, so a damaged or crafted file is an error, never a loop or a wild read.
class CompoundFileReader
{
public:
    bool open(const QByteArray& file, QString* error);
    QStringList streamNames() const;
    bool hasStream(const QString& name) const;
    QByteArray stream(const QString& name, QString* error) const;
    // The same stream, but when its sectors follow each other in the file (as a workbook
    // written in one go has them), without a copy: the bytes returned then point into the
    // file given to open(), which must outlive them.
    QByteArray streamInPlace(const QString& name, QString* error) const;

private:
    struct Entry
    {
        QString name;
        int type = 0;
        quint32 start = 0;
        quint64 size = 0;
    };
    bool chain(quint32 start, const QVector<quint32>& table, int limit, QVector<quint32>* out,
               QString* error) const;
    QByteArray readChain(quint32 start, quint64 size, bool inPlace, QString* error) const;
    QByteArray find(const QString& name, bool inPlace, QString* error) const;
    QByteArray readMiniChain(quint32 start, quint64 size, QString* error) const;

    QByteArray m_file;
    int m_sectorSize = 512;
    quint32 m_miniCutoff = 4096;
    QVector<quint32> m_fat;
    QVector<quint32> m_miniFat;
    QVector<Entry> m_entries;
    QByteArray m_miniStream;
};
