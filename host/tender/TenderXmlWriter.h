#pragma once

#include <QByteArray>
#include <QString>

struct TenderDocument;

// Writes a tender document as the XML of docs/tender-file.md, plain or gzip-compressed.
// The file is written beside the target and renamed over it when complete.
class TenderXmlWriter
{
public:
    static QByteArray ToXml(const TenderDocument& document);
    static QByteArray Gzip(const QByteArray& data);
    static bool WriteFile(const QString& path, const TenderDocument& document, bool compressed,
                          QString* error);
    // Numbers as the file writes them: plain decimals, no exponent, no trailing zeros.
    static QString FormatNumber(double value);
};
