#include "XmlPartScanner.h"

#include <QIODevice>

#include <cstring>

namespace {

constexpr int ChunkBytes = 1 << 20;

bool isSpace(char c)
{
    return c == ' ' || c == '\n' || c == '\r' || c == '\t';
}

bool isNameStart(char c)
{
    const uchar u = uchar(c);
    return (u >= 'a' && u <= 'z') || (u >= 'A' && u <= 'Z') || u == '_' || u == ':' || u >= 0x80;
}

bool isNameChar(char c)
{
    const uchar u = uchar(c);
    return isNameStart(c) || (u >= '0' && u <= '9') || u == '-' || u == '.';
}

XmlBytes localPart(XmlBytes name)
{
    for (int i = name.size - 1; i >= 0; --i)
        if (name.data[i] == ':')
            return {name.data + i + 1, name.size - i - 1};
    return name;
}

// Appends a code point as UTF-8; false for one XML does not allow.
bool appendCodePoint(uint code, QByteArray* out)
{
    if (code == 0 || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF))
        return false;
    if (code < 0x80) {
        out->append(char(code));
    } else if (code < 0x800) {
        out->append(char(0xC0 | (code >> 6)));
        out->append(char(0x80 | (code & 0x3F)));
    } else if (code < 0x10000) {
        out->append(char(0xE0 | (code >> 12)));
        out->append(char(0x80 | ((code >> 6) & 0x3F)));
        out->append(char(0x80 | (code & 0x3F)));
    } else {
        out->append(char(0xF0 | (code >> 18)));
        out->append(char(0x80 | ((code >> 12) & 0x3F)));
        out->append(char(0x80 | ((code >> 6) & 0x3F)));
        out->append(char(0x80 | (code & 0x3F)));
    }
    return true;
}

} // namespace

XmlPartScanner::XmlPartScanner(QIODevice* device) : m_device(device)
{
    // Reserved capacity survives resize(0): the text buffer is reused for every run.
    m_text.reserve(4096);
    m_stackNames.reserve(1024);
}

bool XmlPartScanner::fill(int need)
{
    if (m_end - m_pos >= need)
        return true;
    if (m_eof)
        return false;
    if (m_pos > 0) {
        for (int i = 0; i < m_pos; ++i)
            m_linesBefore += m_buffer.at(i) == '\n';
        std::memmove(m_buffer.data(), m_buffer.constData() + m_pos, size_t(m_end - m_pos));
        m_end -= m_pos;
        m_pos = 0;
    }
    while (m_end < need && !m_eof) {
        const int want = qMax(ChunkBytes, need - m_end);
        if (m_buffer.size() < m_end + want)
            m_buffer.resize(m_end + want);
        const qint64 n = m_device->read(m_buffer.data() + m_end, want);
        if (n <= 0)
            m_eof = true;
        else
            m_end += int(n);
    }
    return m_end - m_pos >= need;
}

qint64 XmlPartScanner::lineNumber() const
{
    qint64 lines = m_linesBefore;
    for (int i = 0; i < m_pos && i < m_end; ++i)
        lines += m_buffer.at(i) == '\n';
    return lines;
}

XmlPartScanner::Token XmlPartScanner::fail(const QString& what)
{
    if (m_token != Invalid)
        m_error = what;
    m_token = Invalid;
    return Invalid;
}

bool XmlPartScanner::attribute(const char* localName, XmlBytes* value) const
{
    for (const Attribute& attribute : m_attributes)
        if (localPart(attribute.name) == localName) {
            *value = attribute.value;
            return true;
        }
    return false;
}

bool XmlPartScanner::appendDecoded(const char* from, const char* to, QByteArray* out)
{
    while (from < to) {
        const char* amp = static_cast<const char*>(std::memchr(from, '&', size_t(to - from)));
        if (!amp) {
            out->append(from, int(to - from));
            return true;
        }
        out->append(from, int(amp - from));
        const char* semi = static_cast<const char*>(std::memchr(amp, ';', size_t(to - amp)));
        if (!semi || semi - amp > 12)
            return false;
        const QByteArray entity(amp + 1, int(semi - amp - 1));
        if (entity == "lt")
            out->append('<');
        else if (entity == "gt")
            out->append('>');
        else if (entity == "amp")
            out->append('&');
        else if (entity == "quot")
            out->append('"');
        else if (entity == "apos")
            out->append('\'');
        else if (entity.startsWith('#')) {
            bool ok = false;
            const uint code = entity.startsWith("#x") ? entity.mid(2).toUInt(&ok, 16)
                                                      : entity.mid(1).toUInt(&ok, 10);
            if (!ok || !appendCodePoint(code, out))
                return false;
        } else {
            return false;
        }
        from = semi + 1;
    }
    return true;
}

bool XmlPartScanner::decode(XmlBytes raw, QByteArray* out)
{
    out->resize(0);
    return appendDecoded(raw.data, raw.data + raw.size, out);
}

// Moves past the next occurrence of terminator; found is set to its offset from the start.
bool XmlPartScanner::skipUntil(const char* terminator, int* found)
{
    const int length = int(std::strlen(terminator));
    int from = 0;
    for (;;) {
        const int available = m_end - m_pos;
        if (available - from >= length) {
            const QByteArray view =
                QByteArray::fromRawData(m_buffer.constData() + m_pos, available);
            const int at = view.indexOf(terminator, from);
            if (at >= 0) {
                *found = at;
                return true;
            }
            from = available - length + 1;
        }
        if (available >= MaxTokenBytes || !fill(available + 1))
            return false;
    }
}

XmlPartScanner::Token XmlPartScanner::next()
{
    if (m_token == Invalid)
        return Invalid;
    if (m_pendingEnd) {
        m_pendingEnd = false;
        return m_token = EndElement;
    }
    for (;;) {
        if (!fill(1)) {
            if (!m_openEnds.isEmpty())
                return fail(QStringLiteral("the part ends inside element <%1>")
                                .arg(QString::fromUtf8(openName(m_openEnds.size() - 1))));
            if (!m_sawRoot)
                return fail(QStringLiteral("the part has no root element"));
            return m_token = EndOfDocument;
        }
        if (m_atStart) {
            m_atStart = false;
            if (fill(3) && std::memcmp(m_buffer.constData() + m_pos, "\xEF\xBB\xBF", 3) == 0) {
                m_pos += 3; // the UTF-8 byte-order mark
                continue;
            }
            if (fill(2) && (std::memcmp(m_buffer.constData() + m_pos, "\xFF\xFE", 2) == 0 ||
                            std::memcmp(m_buffer.constData() + m_pos, "\xFE\xFF", 2) == 0))
                return fail(QStringLiteral("the part is UTF-16; workbook parts are read as "
                                           "UTF-8"));
        }
        if (m_buffer.at(m_pos) != '<') {
            const Token token = textRun();
            if (token == Text && m_openEnds.isEmpty())
                continue; // blanks between the prolog and the root
            return token;
        }
        if (!fill(2))
            return fail(QStringLiteral("the part ends inside a tag"));
        const char second = m_buffer.at(m_pos + 1);
        if (second == '/')
            return endTag();
        if (second == '?') {
            int at = 0;
            if (!skipUntil("?>", &at))
                return fail(QStringLiteral("a processing instruction is not closed"));
            m_pos += at + 2;
            continue;
        }
        if (second == '!') {
            fill(9);
            const QByteArray head(m_buffer.constData() + m_pos, qMin(9, m_end - m_pos));
            if (head.startsWith("<!--")) {
                int at = 0;
                if (!skipUntil("-->", &at))
                    return fail(QStringLiteral("a comment is not closed"));
                m_pos += at + 3;
                continue;
            }
            if (head == "<![CDATA[") {
                if (m_openEnds.isEmpty())
                    return fail(QStringLiteral("character data outside the root element"));
                int at = 0;
                if (!skipUntil("]]>", &at))
                    return fail(QStringLiteral("a CDATA section is not closed"));
                m_text.resize(0);
                m_text.append(m_buffer.constData() + m_pos + 9, at - 9);
                m_pos += at + 3;
                return m_token = Text;
            }
            if (head.startsWith("<!DOCTYPE"))
                return fail(QStringLiteral("a document type declaration, which a workbook part "
                                           "never has"));
            return fail(QStringLiteral("a markup declaration that is not allowed here"));
        }
        return startTag();
    }
}

XmlPartScanner::Token XmlPartScanner::textRun()
{
    const char* start = nullptr;
    int length = 0;
    for (;;) {
        start = m_buffer.constData() + m_pos;
        const void* lt = std::memchr(start, '<', size_t(m_end - m_pos));
        if (lt) {
            length = int(static_cast<const char*>(lt) - start);
            break;
        }
        if (m_end - m_pos >= MaxTokenBytes)
            return fail(QStringLiteral("a text run longer than %1 bytes").arg(MaxTokenBytes));
        if (!fill(m_end - m_pos + 1)) {
            start = m_buffer.constData() + m_pos;
            length = m_end - m_pos;
            break;
        }
    }
    if (m_openEnds.isEmpty()) {
        for (int i = 0; i < length; ++i)
            if (!isSpace(start[i]))
                return fail(QStringLiteral("text outside the root element"));
        m_pos += length;
        return m_token = Text;
    }
    m_text.resize(0);
    if (!appendDecoded(start, start + length, &m_text))
        return fail(QStringLiteral("a malformed or unknown entity reference"));
    m_pos += length;
    return m_token = Text;
}

XmlPartScanner::Token XmlPartScanner::startTag()
{
    // Find the closing '>' outside quoted values first, so that the views made below stay put.
    int end = 1;
    char quote = 0;
    for (;;) {
        const char* p = m_buffer.constData() + m_pos;
        const int available = m_end - m_pos;
        while (end < available) {
            const char c = p[end];
            if (quote) {
                if (c == quote)
                    quote = 0;
                else if (c == '<')
                    return fail(QStringLiteral("'<' inside an attribute value"));
            } else if (c == '"' || c == '\'') {
                quote = c;
            } else if (c == '>') {
                break;
            } else if (c == '<') {
                return fail(QStringLiteral("'<' inside a tag"));
            }
            ++end;
        }
        if (end < available)
            break;
        if (available >= MaxTokenBytes)
            return fail(QStringLiteral("a tag longer than %1 bytes").arg(MaxTokenBytes));
        if (!fill(available + 1))
            return fail(QStringLiteral("the part ends inside a tag"));
    }
    if (m_sawRoot && m_openEnds.isEmpty())
        return fail(QStringLiteral("a second root element"));
    const char* p = m_buffer.constData() + m_pos;
    int i = 1;
    if (!isNameStart(p[i]))
        return fail(QStringLiteral("a tag without a valid name"));
    while (i < end && isNameChar(p[i]))
        ++i;
    const XmlBytes qualified{p + 1, i - 1};
    m_attributes.clear();
    bool selfClosing = false;
    while (i < end) {
        const bool spaced = isSpace(p[i]);
        while (i < end && isSpace(p[i]))
            ++i;
        if (i == end)
            break;
        if (p[i] == '/') {
            if (i + 1 != end)
                return fail(QStringLiteral("'/' inside a tag"));
            selfClosing = true;
            break;
        }
        if (!spaced || !isNameStart(p[i]))
            return fail(QStringLiteral("a malformed attribute in <%1>")
                            .arg(QString::fromUtf8(qualified.data, qualified.size)));
        const int nameStart = i;
        while (i < end && isNameChar(p[i]))
            ++i;
        const XmlBytes attributeName{p + nameStart, i - nameStart};
        while (i < end && isSpace(p[i]))
            ++i;
        if (i >= end || p[i] != '=')
            return fail(QStringLiteral("attribute %1 has no value")
                            .arg(QString::fromUtf8(attributeName.data, attributeName.size)));
        ++i;
        while (i < end && isSpace(p[i]))
            ++i;
        if (i >= end || (p[i] != '"' && p[i] != '\''))
            return fail(QStringLiteral("the value of attribute %1 is not quoted")
                            .arg(QString::fromUtf8(attributeName.data, attributeName.size)));
        const char q = p[i++];
        const int valueStart = i;
        while (i < end && p[i] != q)
            ++i;
        if (i >= end)
            return fail(QStringLiteral("an attribute value is not closed"));
        if (m_attributes.size() >= 256)
            return fail(QStringLiteral("an element with more than 256 attributes"));
        m_attributes.append({attributeName, {p + valueStart, i - valueStart}});
        ++i;
    }
    m_name = localPart(qualified);
    m_sawRoot = true;
    m_pos += end + 1;
    if (selfClosing) {
        m_pendingEnd = true;
    } else {
        if (m_openEnds.size() >= MaxDepth)
            return fail(QStringLiteral("elements nested more than %1 deep").arg(MaxDepth));
        m_stackNames.append(qualified.data, qualified.size);
        m_openEnds.append(m_stackNames.size());
    }
    return m_token = StartElement;
}

QByteArray XmlPartScanner::openName(int index) const
{
    const int from = index > 0 ? m_openEnds.at(index - 1) : 0;
    return m_stackNames.mid(from, m_openEnds.at(index) - from);
}

XmlPartScanner::Token XmlPartScanner::endTag()
{
    int at = 0;
    if (!skipUntil(">", &at))
        return fail(QStringLiteral("the part ends inside a tag"));
    const char* p = m_buffer.constData() + m_pos;
    int length = at - 2;
    while (length > 0 && isSpace(p[2 + length - 1]))
        --length;
    const XmlBytes qualified{p + 2, length};
    if (m_openEnds.isEmpty())
        return fail(QStringLiteral("a closing tag </%1> without an opening one")
                        .arg(QString::fromUtf8(qualified.data, qualified.size)));
    const int top = m_openEnds.size() - 1;
    const int from = top > 0 ? m_openEnds.at(top - 1) : 0;
    if (m_openEnds.at(top) - from != length ||
        std::memcmp(m_stackNames.constData() + from, qualified.data, size_t(length)) != 0)
        return fail(QStringLiteral("closing tag </%1> does not match <%2>")
                        .arg(QString::fromUtf8(qualified.data, qualified.size),
                             QString::fromUtf8(openName(top))));
    m_stackNames.resize(from);
    m_openEnds.removeLast();
    m_name = localPart(qualified);
    m_pos += at + 1;
    return m_token = EndElement;
}

bool XmlPartScanner::skipElement()
{
    int depth = 1;
    while (depth > 0) {
        switch (next()) {
        case StartElement:
            ++depth;
            break;
        case EndElement:
            --depth;
            break;
        case Text:
            break;
        default:
            return false;
        }
    }
    return true;
}
