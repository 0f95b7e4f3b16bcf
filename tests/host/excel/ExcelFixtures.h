#pragma once

#include <QByteArray>
#include <QFile>
#include <QMap>
#include <QProcess>
#include <QString>
#include <QtEndian>

#include <zip.h>

// Test workbooks made on the spot: a zip package from its parts, raw BIFF records, and the
// independent readers (openpyxl, xlrd) run through the system's Python.
namespace ExcelFixtures {

inline bool writeZip(const QString& path, const QMap<QString, QByteArray>& parts)
{
    QFile::remove(path);
    int code = 0;
    zip_t* zip = zip_open(QFile::encodeName(path).constData(), ZIP_CREATE | ZIP_TRUNCATE, &code);
    if (!zip)
        return false;
    for (auto it = parts.constBegin(); it != parts.constEnd(); ++it) {
        void* copy = malloc(size_t(qMax(1, int(it.value().size()))));
        memcpy(copy, it.value().constData(), size_t(it.value().size()));
        zip_source_t* source = zip_source_buffer(zip, copy, zip_uint64_t(it.value().size()), 1);
        if (zip_file_add(zip, it.key().toUtf8().constData(), source, ZIP_FL_OVERWRITE) < 0) {
            zip_source_free(source);
            zip_discard(zip);
            return false;
        }
    }
    return zip_close(zip) == 0;
}

inline QByteArray contentTypes()
{
    return "<?xml version='1.0' encoding='UTF-8'?><Types "
           "xmlns='http://schemas.openxmlformats.org/package/2006/content-types'><Default "
           "Extension='rels' "
           "ContentType='application/vnd.openxmlformats-package.relationships+xml'/><Default "
           "Extension='xml' ContentType='application/xml'/><Override PartName='/xl/workbook.xml' "
           "ContentType='application/"
           "vnd.openxmlformats-officedocument.spreadsheetml.sheet.main+xml'/></Types>";
}

inline QByteArray rootRels(
    const QByteArray& ns = "http://schemas.openxmlformats.org/officeDocument/2006/relationships")
{
    return "<?xml version='1.0' encoding='UTF-8'?><Relationships "
           "xmlns='http://schemas.openxmlformats.org/package/2006/relationships'><Relationship "
           "Id='rId1' Type='" +
           ns + "/officeDocument' Target='xl/workbook.xml'/></Relationships>";
}

// A package with the given sheets (name, state, sheet XML); shared strings and styles optional.
struct Sheet
{
    QByteArray name;
    QByteArray state;
    QByteArray xml;
};

inline QMap<QString, QByteArray> package(const QVector<Sheet>& sheets,
                                         const QByteArray& sharedStrings = QByteArray(),
                                         const QByteArray& styles = QByteArray(),
                                         const QByteArray& workbookPr = QByteArray())
{
    const QByteArray rel = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
    QMap<QString, QByteArray> parts;
    parts.insert(QStringLiteral("[Content_Types].xml"), contentTypes());
    parts.insert(QStringLiteral("_rels/.rels"), rootRels());
    QByteArray book =
        "<?xml version='1.0' encoding='UTF-8'?><workbook "
        "xmlns='http://schemas.openxmlformats.org/spreadsheetml/2006/main' xmlns:r='" +
        rel + "'>" + workbookPr + "<sheets>";
    QByteArray rels = "<?xml version='1.0' encoding='UTF-8'?><Relationships "
                      "xmlns='http://schemas.openxmlformats.org/package/2006/relationships'>";
    for (int i = 0; i < sheets.size(); ++i) {
        const QByteArray n = QByteArray::number(i + 1);
        book += "<sheet name=\"" + sheets[i].name + "\" sheetId=\"" + n + "\"" +
                (sheets[i].state.isEmpty() ? QByteArray() : " state=\"" + sheets[i].state + "\"") +
                " r:id=\"rId" + n + "\"/>";
        rels += "<Relationship Id=\"rId" + n + "\" Type=\"" + rel +
                "/worksheet\" Target=\"worksheets/sheet" + n + ".xml\"/>";
        parts.insert(QStringLiteral("xl/worksheets/sheet%1.xml").arg(i + 1), sheets[i].xml);
    }
    if (!sharedStrings.isEmpty()) {
        rels += "<Relationship Id=\"rIdS\" Type=\"" + rel +
                "/sharedStrings\" Target=\"sharedStrings.xml\"/>";
        parts.insert(QStringLiteral("xl/sharedStrings.xml"), sharedStrings);
    }
    if (!styles.isEmpty()) {
        rels += "<Relationship Id=\"rIdT\" Type=\"" + rel + "/styles\" Target=\"styles.xml\"/>";
        parts.insert(QStringLiteral("xl/styles.xml"), styles);
    }
    parts.insert(QStringLiteral("xl/workbook.xml"), book + "</sheets></workbook>");
    parts.insert(QStringLiteral("xl/_rels/workbook.xml.rels"), rels + "</Relationships>");
    return parts;
}

inline QByteArray sheetXml(const QByteArray& data, const QByteArray& extra = QByteArray())
{
    return "<?xml version='1.0' encoding='UTF-8'?><worksheet "
           "xmlns='http://schemas.openxmlformats.org/spreadsheetml/2006/main'><sheetData>" +
           data + "</sheetData>" + extra + "</worksheet>";
}

inline void record(QByteArray& out, quint16 type, const QByteArray& body)
{
    char header[4];
    qToLittleEndian(type, header);
    qToLittleEndian(quint16(body.size()), header + 2);
    out.append(header, 4).append(body);
}

inline QByteArray le16(quint16 v)
{
    char b[2];
    qToLittleEndian(v, b);
    return QByteArray(b, 2);
}

inline QByteArray le32(quint32 v)
{
    char b[4];
    qToLittleEndian(v, b);
    return QByteArray(b, 4);
}

// Runs a Python snippet with the system interpreter (where Debian's openpyxl and xlrd live);
// returns its standard output, or the error text prefixed by "ERROR".
inline QString python(const QString& code)
{
    QProcess process;
    process.start(QStringLiteral("/usr/bin/python3"), {QStringLiteral("-c"), code});
    if (!process.waitForFinished(120000))
        return QStringLiteral("ERROR timeout");
    if (process.exitCode() != 0)
        return QStringLiteral("ERROR ") + QString::fromUtf8(process.readAllStandardError());
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

} // namespace ExcelFixtures
