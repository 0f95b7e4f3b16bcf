#pragma once

#include <QByteArray>
#include <QString>

class QIODevice;
struct TenderDocument;

// A reader of one kind of tender data-exchange file. ReadFile opens a file (plain or gzip,
// told by its content, never by its suffix), bounds its size, and hands it to the first
// reader that recognises the content. Another format (an official provincial schema, say)
// is added as another reader.
class TenderFileReader
{
public:
    virtual ~TenderFileReader() = default;

    // Files larger than this are refused before reading; decompressed content likewise.
    static constexpr qint64 MaxFileSize = qint64(256) << 20;
    static constexpr qint64 MaxContentSize = qint64(256) << 20;

    // Whether the content, of which these are the first bytes, is this reader's format.
    virtual bool canRead(const QByteArray& head) const = 0;
    // Reads the whole document; on failure a problem text (without the file name).
    virtual bool read(QIODevice* device, TenderDocument* document, QString* problem) = 0;

    // Reads a file into document. On failure document is left empty and error names the file
    // and the problem: "无法读取招标文件“name”：problem".
    static bool ReadFile(const QString& path, TenderDocument* document, QString* error);
    static QString FileError(const QString& path, const QString& problem);
};
