#pragma once

#include <QByteArray>
#include <QString>

// Wraps one stream in an OLE2 compound file (version 3, 512-byte sectors), the container of
// .xls workbooks. Streams shorter than 4096 bytes are padded so that no mini stream is needed.
class CompoundFileWriter
{
public:
    static QByteArray build(const QString& streamName, QByteArray stream);
};
