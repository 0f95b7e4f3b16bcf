#include "TenderXmlWriter.h"

#include "TenderDocument.h"

#include <QFileInfo>
#include <QSaveFile>
#include <QXmlStreamWriter>

#include <zlib.h>

namespace {

void attribute(QXmlStreamWriter& w, const char* name, const QString& value)
{
    if (!value.isEmpty())
        w.writeAttribute(QLatin1String(name), value);
}

void attribute(QXmlStreamWriter& w, const char* name, const std::optional<double>& value)
{
    if (value)
        w.writeAttribute(QLatin1String(name), TenderXmlWriter::FormatNumber(*value));
}

void writeUnit(QXmlStreamWriter& w, const TenderUnitProject& unit)
{
    w.writeStartElement(QStringLiteral("UnitProject"));
    w.writeAttribute(QStringLiteral("id"), unit.id);
    w.writeAttribute(QStringLiteral("name"), unit.name);
    w.writeStartElement(QStringLiteral("ProvisionalMaterials"));
    attribute(w, "total", unit.provisionalTotal);
    for (const TenderMaterial& m : unit.provisional) {
        w.writeEmptyElement(QStringLiteral("Material"));
        attribute(w, "code", m.code);
        w.writeAttribute(QStringLiteral("name"), m.name);
        attribute(w, "spec", m.spec);
        attribute(w, "unit", m.unit);
        attribute(w, "price", m.price);
        attribute(w, "origin", m.origin);
        attribute(w, "manufacturer", m.manufacturer);
        attribute(w, "variety", m.variety);
        attribute(w, "grade", m.grade);
        attribute(w, "remark", m.remark);
        attribute(w, "quantity", m.quantity);
        attribute(w, "amount", m.amount);
    }
    w.writeEndElement();
    w.writeEndElement();
}

} // namespace

QString TenderXmlWriter::FormatNumber(double value)
{
    QString text = QString::number(value, 'f', 6);
    while (text.endsWith(QLatin1Char('0')))
        text.chop(1);
    if (text.endsWith(QLatin1Char('.')))
        text.chop(1);
    if (text == QLatin1String("-0"))
        text = QStringLiteral("0");
    return text;
}

QByteArray TenderXmlWriter::ToXml(const TenderDocument& d)
{
    QByteArray bytes;
    QXmlStreamWriter w(&bytes);
    w.setAutoFormatting(true);
    w.setAutoFormattingIndent(1);
    w.writeStartDocument();
    w.writeStartElement(QStringLiteral("TenderFile"));
    w.writeAttribute(QStringLiteral("version"), d.version);
    w.writeAttribute(QStringLiteral("kind"), d.kind);

    w.writeEmptyElement(QStringLiteral("Header"));
    attribute(w, "standard", d.standard);
    attribute(w, "projectName", d.projectName);
    attribute(w, "tenderer", d.tenderer);
    attribute(w, "date", d.date);
    attribute(w, "tool", d.tool);
    attribute(w, "toolVersion", d.toolVersion);

    w.writeStartElement(QStringLiteral("Project"));
    attribute(w, "id", d.projectId);
    attribute(w, "name", d.projectTitle);
    attribute(w, "provisionalTotal", d.provisionalTotal);
    for (const TenderSingleProject& single : d.singles) {
        const bool direct = single.id.isEmpty();
        if (!direct) {
            w.writeStartElement(QStringLiteral("SingleProject"));
            w.writeAttribute(QStringLiteral("id"), single.id);
            w.writeAttribute(QStringLiteral("name"), single.name);
        }
        for (const TenderUnitProject& unit : single.units)
            writeUnit(w, unit);
        if (!direct)
            w.writeEndElement();
    }
    if (!d.evaluated.isEmpty() || d.evaluatedTotal) {
        w.writeStartElement(QStringLiteral("EvaluatedMaterials"));
        attribute(w, "total", d.evaluatedTotal);
        for (const TenderEvaluatedMaterial& m : d.evaluated) {
            w.writeEmptyElement(QStringLiteral("Material"));
            attribute(w, "serial", m.serial);
            attribute(w, "code", m.code);
            w.writeAttribute(QStringLiteral("name"), m.name);
            attribute(w, "spec", m.spec);
            attribute(w, "unit", m.unit);
            attribute(w, "origin", m.origin);
            attribute(w, "manufacturer", m.manufacturer);
            attribute(w, "variety", m.variety);
            attribute(w, "grade", m.grade);
            attribute(w, "remark", m.remark);
            attribute(w, "price", m.price);
            attribute(w, "quantity", m.quantity);
            attribute(w, "amount", m.amount);
        }
        w.writeEndElement();
    }
    w.writeEndElement(); // Project
    w.writeEndElement(); // TenderFile
    w.writeEndDocument();
    return bytes;
}

QByteArray TenderXmlWriter::Gzip(const QByteArray& data)
{
    z_stream s{};
    if (deflateInit2(&s, Z_DEFAULT_COMPRESSION, Z_DEFLATED, 16 + MAX_WBITS, 8,
                     Z_DEFAULT_STRATEGY) != Z_OK)
        return QByteArray();
    QByteArray out;
    out.resize(int(deflateBound(&s, uLong(data.size()))));
    s.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(data.constData()));
    s.avail_in = uInt(data.size());
    s.next_out = reinterpret_cast<Bytef*>(out.data());
    s.avail_out = uInt(out.size());
    const int rc = deflate(&s, Z_FINISH);
    out.resize(int(s.total_out));
    deflateEnd(&s);
    return rc == Z_STREAM_END ? out : QByteArray();
}

bool TenderXmlWriter::WriteFile(const QString& path, const TenderDocument& document,
                                bool compressed, QString* error)
{
    const QString name = QFileInfo(path).fileName();
    QByteArray bytes = ToXml(document);
    if (compressed)
        bytes = Gzip(bytes);
    QSaveFile file(path);
    if (bytes.isEmpty() || !file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() ||
        !file.commit()) {
        if (error)
            *error =
                QStringLiteral("无法写入招标文件“%1”：%2。")
                    .arg(name, bytes.isEmpty() ? QStringLiteral("压缩失败") : file.errorString());
        return false;
    }
    return true;
}
