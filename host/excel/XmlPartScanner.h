#pragma once

#include <QByteArray>
#include <QString>
#include <QVarLengthArray>

class QIODevice;

// A byte view into the scanner's buffer, valid until the next call of next().
struct XmlBytes
{
    const char* data = nullptr;
    int size = 0;

    bool operator==(const char* text) const
    {
        return qstrlen(text) == uint(size) && memcmp(data, text, size_t(size)) == 0;
    }
    bool isEmpty() const { return size == 0; }
};

// A small pull scanner for the XML of a package's sheet and shared-strings parts: elements,
// attributes, text, character and the five predefined entity references, CDATA, comments and
// processing instructions. It reads UTF-8 straight from the device in large chunks and hands
// out views into its buffer, so a cell costs no allocation; QXmlStreamReader, general as it is,
// spends most of a large sheet's reading time in building strings and attribute vectors.
//
// It refuses what is not well-formed in the ways that matter to a reader: unclosed, crossed or
// stray tags, bad attribute syntax, unknown entities, text outside the root element, input that
// ends inside an element. A DOCTYPE is refused outright (no workbook part has one; it is how
// entity expansion bombs arrive). Names are matched by their local part: prefixes are free.
class XmlPartScanner
{
public:
    enum Token { StartElement, EndElement, Text, EndOfDocument, Invalid };

    static constexpr int MaxDepth = 256;
    static constexpr int MaxTokenBytes = 8 << 20; // one tag or one text run

    explicit XmlPartScanner(QIODevice* device);

    Token next();

    // StartElement / EndElement: the element's local name (prefix removed).
    XmlBytes name() const { return m_name; }
    // StartElement: an attribute's raw value by local name (entities not yet decoded), or null.
    bool attribute(const char* localName, XmlBytes* value) const;
    // Text: the decoded bytes of the text run (entities resolved, CDATA included).
    const QByteArray& text() const { return m_text; }
    // Decodes entity references in an attribute value; false when one is malformed.
    bool decode(XmlBytes raw, QByteArray* out);

    // Skips the element whose start tag was just returned, children included.
    bool skipElement();

    bool hasError() const { return m_token == Invalid; }
    QString errorString() const { return m_error; }
    qint64 lineNumber() const;

private:
    struct Attribute
    {
        XmlBytes name;
        XmlBytes value;
    };

    bool fill(int need);
    Token fail(const QString& what);
    Token startTag();
    Token endTag();
    Token textRun();
    bool skipUntil(const char* terminator, int* found);
    bool appendDecoded(const char* from, const char* to, QByteArray* out);
    QByteArray openName(int index) const;

    QIODevice* m_device;
    QByteArray m_buffer;
    int m_pos = 0;
    int m_end = 0;
    bool m_eof = false;
    qint64 m_linesBefore = 1; // lines in the bytes already dropped from the buffer
    Token m_token = Text;
    QString m_error;
    XmlBytes m_name;
    QByteArray m_text;
    QVarLengthArray<Attribute, 8> m_attributes;
    // The qualified names of the open elements, end to end, and where each one ends.
    QByteArray m_stackNames;
    QVarLengthArray<int, 16> m_openEnds;
    bool m_pendingEnd = false; // a self-closing tag still owes its end
    bool m_sawRoot = false;
    bool m_atStart = true;
};
