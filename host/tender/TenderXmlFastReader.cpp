#include "TenderXmlFastReader.h"

#include "TenderDocument.h"
#include "TenderXmlReader.h"

#include <QIODevice>
#include <QSet>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace {

using Bytes = std::string_view;

bool isSpace(char c)
{
    return c == ' ' || c == '\n' || c == '\t' || c == '\r';
}

// Printable ASCII that means nothing special inside an attribute value.
bool isPlain(char c)
{
    static const auto table = [] {
        std::array<bool, 256> t{};
        for (int c = 0x20; c < 0x7F; ++c)
            t[size_t(c)] = c != '"' && c != '\'' && c != '<' && c != '&';
        return t;
    }();
    return table[static_cast<unsigned char>(c)];
}

bool isNameStart(char c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
}

bool isNameChar(char c)
{
    return isNameStart(c) || (c >= '0' && c <= '9') || c == '-' || c == '.';
}

// The length of the UTF-8 sequence at p (p < end, *p not ASCII): 0 when it is not a character
// XML allows written plainly (a bad or overlong sequence, a surrogate, U+FFFE/U+FFFF, the C1
// controls), -1 when the sequence runs past end.
int utf8Length(const unsigned char* p, const unsigned char* end)
{
    const unsigned char c = p[0];
    int n = 0;
    unsigned char low = 0x80, high = 0xBF;
    if (c >= 0xC2 && c <= 0xDF) {
        n = 2;
        if (c == 0xC2)
            low = 0xA0; // U+0080..U+009F
    } else if (c >= 0xE0 && c <= 0xEF) {
        n = 3;
        if (c == 0xE0)
            low = 0xA0;
        else if (c == 0xED)
            high = 0x9F;
    } else if (c >= 0xF0 && c <= 0xF4) {
        n = 4;
        if (c == 0xF0)
            low = 0x90;
        else if (c == 0xF4)
            high = 0x8F;
    } else {
        return 0;
    }
    if (end - p < n)
        return -1;
    if (p[1] < low || p[1] > high)
        return 0;
    for (int i = 2; i < n; ++i)
        if (p[i] < 0x80 || p[i] > 0xBF)
            return 0;
    if (c == 0xEF && p[1] == 0xBF && (p[2] == 0xBE || p[2] == 0xBF))
        return 0;
    return n;
}

// Character references are rare: no need for an encoder of our own.
void appendUtf8(std::string* out, char32_t c)
{
    const uint code = c;
    const QByteArray utf8 = QString::fromUcs4(&code, 1).toUtf8();
    out->append(utf8.constData(), size_t(utf8.size()));
}

// The value of a character reference's digits, when it names a character XML allows.
bool characterReference(Bytes digits, char32_t* out)
{
    int base = 10;
    if (!digits.empty() && digits[0] == 'x') {
        base = 16;
        digits.remove_prefix(1);
    }
    if (digits.empty() || digits.size() > 8)
        return false;
    unsigned value = 0;
    const auto [end, ec] =
        std::from_chars(digits.data(), digits.data() + digits.size(), value, base);
    if (ec != std::errc() || end != digits.data() + digits.size())
        return false;
    const bool allowed = value == 0x9 || value == 0xA || value == 0xD ||
                         (value >= 0x20 && value < 0x7F) || (value >= 0xA0 && value <= 0xD7FF) ||
                         (value >= 0xE000 && value <= 0xFFFD) ||
                         (value >= 0x10000 && value <= 0x10FFFF);
    *out = char32_t(value);
    return allowed;
}

// An attribute as written: its value still raw bytes of the buffer.
struct Attribute
{
    Bytes name;
    Bytes value;
    bool escaped = false; // holds entity or character references, tabs or line feeds
};

// One shared copy per distinct text, found by the bytes it is written as: a tender repeats its
// names, models, units and origins from unit project to unit project. Open addressing over a
// power-of-two table; the key bytes live in blocks the table owns.
class TextTable
{
public:
    static constexpr int MaxTexts = 1 << 20;

    const QString* find(Bytes key, size_t hash) const
    {
        if (m_entries.empty())
            return nullptr;
        const size_t mask = m_entries.size() - 1;
        for (size_t i = hash & mask;; i = (i + 1) & mask) {
            const Entry& e = m_entries[i];
            if (e.key.empty())
                return nullptr;
            if (e.hash == hash && e.key == key)
                return &e.text;
        }
    }

    // Keys are never empty; a full table keeps what it has.
    void insert(Bytes key, size_t hash, const QString& text)
    {
        if (m_count >= MaxTexts)
            return;
        if (2 * (m_count + 1) > int(m_entries.size()))
            rehash(m_entries.empty() ? 4096 : 2 * m_entries.size());
        place(Entry{hash, store(key), text});
        ++m_count;
    }

private:
    struct Entry
    {
        size_t hash = 0;
        Bytes key;
        QString text;
    };

    void place(Entry&& entry)
    {
        const size_t mask = m_entries.size() - 1;
        size_t i = entry.hash & mask;
        while (!m_entries[i].key.empty())
            i = (i + 1) & mask;
        m_entries[i] = std::move(entry);
    }

    void rehash(size_t size)
    {
        std::vector<Entry> old(size);
        old.swap(m_entries);
        for (Entry& e : old)
            if (!e.key.empty())
                place(std::move(e));
    }

    Bytes store(Bytes key)
    {
        constexpr size_t BlockSize = 64 * 1024;
        if (key.size() > m_left) {
            const size_t size = std::max(BlockSize, key.size());
            m_blocks.push_back(std::make_unique<char[]>(size));
            m_next = m_blocks.back().get();
            m_left = size;
        }
        std::memcpy(m_next, key.data(), key.size());
        const Bytes stored(m_next, key.size());
        m_next += key.size();
        m_left -= key.size();
        return stored;
    }

    std::vector<Entry> m_entries;
    int m_count = 0;
    std::vector<std::unique_ptr<char[]>> m_blocks;
    char* m_next = nullptr;
    size_t m_left = 0;
};

class FastParser
{
public:
    FastParser(QIODevice* device, TenderDocument* document) : m_device(device), m_doc(document) {}

    bool run()
    {
        if (!prolog() || next() != Start || m_name != "TenderFile")
            return false;
        const Attribute* version = attribute("version");
        const Attribute* kind = attribute("kind");
        if (!version || !text(*version, &m_doc->version) ||
            m_doc->version != TenderDocument::CurrentVersion || !kind || !text(*kind, &m_doc->kind))
            return false;
        if (m_doc->kind != TenderDocument::KindTender &&
            m_doc->kind != TenderDocument::KindCompletion &&
            m_doc->kind != TenderDocument::KindFiling)
            return false;
        bool header = false, project = false;
        while (child()) {
            if (m_name == "Header" && !header) {
                header = true;
                if (!readHeader())
                    return false;
            } else if (m_name == "Project" && !project) {
                project = true;
                if (!readProject())
                    return false;
            } else {
                return false;
            }
        }
        return m_sure && next() == Finished && header && project;
    }

private:
    enum Token { Start, End, Finished, Unsure };
    enum Step { StartTag, EndTag, Comment, NeedMore, Bad, Ok };

    static constexpr qsizetype Block = qsizetype(1) << 20;
    // A token longer than this is left to the thorough reader, which bounds tokens itself.
    static constexpr qsizetype MaxToken = qsizetype(1) << 20;
    static constexpr int MaxAttributes = 32;
    static constexpr int MaxDepth = 8;

    // Keeps the unread bytes and appends the next block; false at the end of the content or
    // when one token would need more than MaxToken bytes.
    bool more()
    {
        if (m_atEnd)
            return false;
        const qsizetype keep = m_end - m_pos;
        if (keep > MaxToken)
            return false;
        if (m_pos > 0) {
            std::memmove(m_buffer.data(), m_buffer.data() + m_pos, size_t(keep));
            m_pos = 0;
            m_end = keep;
        }
        if (qsizetype(m_buffer.size()) < keep + Block)
            m_buffer.resize(size_t(keep + Block));
        const qint64 got = m_device->read(m_buffer.data() + m_end, Block);
        if (got <= 0) {
            m_atEnd = true;
            return false;
        }
        m_end += got;
        return true;
    }

    const char* data() const { return m_buffer.data(); }

    // The BOM and the XML declaration, when there are.
    bool prolog()
    {
        while (m_end < 64 && more()) {
        }
        Bytes head(data(), size_t(m_end));
        if (head.substr(0, 3) == "\xEF\xBB\xBF")
            m_pos = 3;
        head = Bytes(data() + m_pos, size_t(m_end - m_pos));
        if (head.substr(0, 2) != "<?")
            return true;
        if (head.substr(0, 6) != "<?xml " && head.substr(0, 6) != "<?xml\t" &&
            head.substr(0, 6) != "<?xml\n" && head.substr(0, 6) != "<?xml\r")
            return false;
        for (;;) {
            const Bytes rest(data() + m_pos, size_t(m_end - m_pos));
            const size_t close = rest.find("?>");
            if (close != Bytes::npos)
                return declaration(rest.substr(5, close - 5), close + 2);
            if (rest.size() > 1024 || !more())
                return false;
        }
    }

    // version="1.0", then optionally encoding="UTF-8" and standalone="yes" or "no", in that
    // order.
    bool declaration(Bytes body, size_t length)
    {
        static const char* const names[] = {"version", "encoding", "standalone"};
        int named = 0;
        bool versioned = false;
        for (;;) {
            size_t i = 0;
            while (i < body.size() && isSpace(body[i]))
                ++i;
            body.remove_prefix(i);
            if (body.empty())
                break;
            if (i == 0)
                return false;
            const size_t eq = body.find('=');
            if (eq == Bytes::npos || eq + 1 >= body.size())
                return false;
            const Bytes name = body.substr(0, eq);
            const char quote = body[eq + 1];
            if (quote != '"' && quote != '\'')
                return false;
            const size_t stop = body.find(quote, eq + 2);
            if (stop == Bytes::npos)
                return false;
            const QByteArray value =
                QByteArray::fromStdString(std::string(body.substr(eq + 2, stop - eq - 2)));
            body.remove_prefix(stop + 1);
            while (named < 3 && name != names[named])
                ++named;
            if (named == 3 || (named > 0 && !versioned))
                return false;
            if ((named == 0 && value != "1.0") || (named == 1 && value.toLower() != "utf-8") ||
                (named == 2 && value != "yes" && value != "no"))
                return false;
            if (named == 0)
                versioned = true;
            ++named;
        }
        if (!versioned)
            return false;
        m_pos += qsizetype(length);
        return true;
    }

    // The next start or end of an element, past blanks and comments.
    Token next()
    {
        if (m_closePending) {
            m_closePending = false;
            return End;
        }
        for (;;) {
            while (m_pos < m_end && isSpace(data()[m_pos]))
                ++m_pos;
            if (m_pos == m_end) {
                if (more())
                    continue;
                return m_rootDone && m_depth == 0 ? Finished : Unsure;
            }
            if (data()[m_pos] != '<')
                return Unsure;
            const Step step = token();
            if (step == NeedMore) {
                if (more())
                    continue;
                return Unsure;
            }
            if (step == Comment)
                continue;
            if (step == Bad)
                return Unsure;
            return step == StartTag ? Start : End;
        }
    }

    // The token at m_pos, which is '<'. Nothing moves unless the token is whole.
    Step token()
    {
        const char* p = data() + m_pos;
        const char* const end = data() + m_end;
        if (end - p < 4)
            return NeedMore;
        if (p[1] == '!')
            return p[2] == '-' && p[3] == '-' ? comment() : Bad;
        if (p[1] == '/')
            return endTag(p + 2, end);
        return startTag(p + 1, end);
    }

    Step comment()
    {
        const char* const begin = data() + m_pos + 4;
        const char* const end = data() + m_end;
        for (const char* p = begin; p < end;) {
            const unsigned char c = static_cast<unsigned char>(*p);
            if (c == '-') {
                if (end - p < 3)
                    return NeedMore;
                if (p[1] == '-') {
                    if (p[2] != '>')
                        return Bad;
                    m_pos = p + 3 - data();
                    return Comment;
                }
                ++p;
            } else if (c < 0x20) {
                if (!isSpace(char(c)))
                    return Bad;
                ++p;
            } else if (c < 0x80) {
                ++p;
            } else {
                const int n = utf8Length(reinterpret_cast<const unsigned char*>(p),
                                         reinterpret_cast<const unsigned char*>(end));
                if (n < 0)
                    return NeedMore;
                if (n == 0)
                    return Bad;
                p += n;
            }
        }
        return NeedMore;
    }

    // A name of ASCII letters, digits and _-. from p; its end in *stop.
    static Step name(const char* p, const char* end, Bytes* out, const char** stop)
    {
        if (p == end)
            return NeedMore;
        if (!isNameStart(*p))
            return Bad;
        const char* q = p + 1;
        while (q < end && isNameChar(*q))
            ++q;
        if (q == end)
            return NeedMore;
        *out = Bytes(p, size_t(q - p));
        *stop = q;
        return Ok;
    }

    Step endTag(const char* p, const char* end)
    {
        Bytes tag;
        const Step s = name(p, end, &tag, &p);
        if (s != Ok)
            return s;
        while (p < end && isSpace(*p))
            ++p;
        if (p == end)
            return NeedMore;
        if (*p != '>' || m_depth == 0 || m_open[m_depth - 1] != tag)
            return Bad;
        --m_depth;
        if (m_depth == 0)
            m_rootDone = true;
        m_pos = p + 1 - data();
        return EndTag;
    }

    Step startTag(const char* p, const char* end)
    {
        Step s = name(p, end, &m_name, &p);
        if (s != Ok)
            return s;
        m_attributeCount = 0;
        for (;;) {
            const char* const blank = p;
            while (p < end && isSpace(*p))
                ++p;
            if (p == end)
                return NeedMore;
            if (*p == '>' || *p == '/')
                break;
            if (p == blank || m_attributeCount == MaxAttributes)
                return Bad;
            Attribute& a = m_attributes[m_attributeCount];
            s = name(p, end, &a.name, &p);
            if (s != Ok)
                return s;
            for (int i = 0; i < m_attributeCount; ++i) {
                const Bytes other = m_attributes[i].name;
                if (other.size() == a.name.size() && other[0] == a.name[0] && other == a.name)
                    return Bad;
            }
            while (p < end && isSpace(*p))
                ++p;
            if (p == end)
                return NeedMore;
            if (*p++ != '=')
                return Bad;
            while (p < end && isSpace(*p))
                ++p;
            if (p == end)
                return NeedMore;
            const char quote = *p++;
            if (quote != '"' && quote != '\'')
                return Bad;
            s = value(p, end, quote, &a, &p);
            if (s != Ok)
                return s;
            ++m_attributeCount;
        }
        const bool empty = *p == '/';
        if (empty) {
            if (end - p < 2)
                return NeedMore;
            if (p[1] != '>')
                return Bad;
            ++p;
        }
        if (m_rootDone || m_depth == MaxDepth)
            return Bad;
        if (empty)
            m_closePending = true;
        else
            m_open[m_depth++].assign(m_name);
        if (empty && m_depth == 0)
            m_rootDone = true;
        m_pos = p + 1 - data();
        return StartTag;
    }

    // An attribute value from p up to its closing quote.
    static Step value(const char* p, const char* end, char quote, Attribute* a, const char** stop)
    {
        const char* const begin = p;
        a->escaped = false;
        while (p < end) {
            while (p < end && isPlain(*p))
                ++p;
            if (p == end)
                break;
            const unsigned char c = static_cast<unsigned char>(*p);
            if (c >= 0x80) {
                const int n = utf8Length(reinterpret_cast<const unsigned char*>(p),
                                         reinterpret_cast<const unsigned char*>(end));
                if (n < 0)
                    return NeedMore;
                if (n == 0)
                    return Bad;
                p += n;
                continue;
            }
            if (c == static_cast<unsigned char>(quote)) {
                a->value = Bytes(begin, size_t(p - begin));
                *stop = p + 1;
                return a->escaped && !decode(a->value, nullptr) ? Bad : Ok;
            }
            if (c == '<')
                return Bad;
            if (c == '&' || c == '\t' || c == '\n')
                a->escaped = true;
            else if (c < 0x20)
                return Bad; // a carriage return is normalised in ways left to the thorough reader
            ++p;
        }
        return NeedMore;
    }

    // Moves to the next child of the current element; false at its end or when unsure.
    bool child()
    {
        switch (next()) {
        case Start:
            return true;
        case End:
            return false;
        default:
            m_sure = false;
            return false;
        }
    }

    // An element that must have no children.
    bool leaf()
    {
        if (child())
            m_sure = false;
        return m_sure;
    }

    const Attribute* attribute(Bytes name) const
    {
        for (int i = 0; i < m_attributeCount; ++i)
            if (m_attributes[i].name == name)
                return &m_attributes[i];
        return nullptr;
    }

    // The text of a value: references replaced, tabs and line feeds made blanks; false for a
    // reference this reader does not know. Without out, only checks.
    static bool decode(Bytes value, std::string* out)
    {
        for (size_t i = 0; i < value.size(); ++i) {
            const char c = value[i];
            if (c != '&') {
                if (out)
                    out->push_back(c == '\t' || c == '\n' ? ' ' : c);
                continue;
            }
            const size_t semicolon = value.find(';', i);
            if (semicolon == Bytes::npos || semicolon - i > 12)
                return false;
            const Bytes entity = value.substr(i + 1, semicolon - i - 1);
            char32_t code = 0;
            if (entity == "lt")
                code = '<';
            else if (entity == "gt")
                code = '>';
            else if (entity == "amp")
                code = '&';
            else if (entity == "quot")
                code = '"';
            else if (entity == "apos")
                code = '\'';
            else if (entity.empty() || entity[0] != '#' ||
                     !characterReference(entity.substr(1), &code))
                return false;
            if (out)
                appendUtf8(out, code);
            i = semicolon;
        }
        return true;
    }

    static bool decode(const Attribute& a, QString* out)
    {
        if (!a.escaped) {
            *out = QString::fromUtf8(a.value.data(), int(a.value.size()));
            return true;
        }
        std::string plain;
        plain.reserve(a.value.size());
        if (!decode(a.value, &plain))
            return false;
        *out = QString::fromStdString(plain);
        return true;
    }

    // One shared copy per distinct text, as the thorough reader keeps them.
    bool text(const Attribute& a, QString* out)
    {
        if (a.value.empty()) {
            *out = QString();
            return true;
        }
        const size_t hash = std::hash<Bytes>()(a.value);
        if (const QString* known = m_texts.find(a.value, hash)) {
            *out = *known;
            return true;
        }
        if (!decode(a, out) || out->size() > TenderXmlReader::MaxTextLength)
            return false;
        m_texts.insert(a.value, hash, *out);
        return true;
    }

    bool text(const Attribute* a, QString* out)
    {
        if (a)
            return text(*a, out);
        *out = QString();
        return true;
    }

    bool text(const char* name, QString* out) { return text(attribute(name), out); }

    bool number(const char* name, std::optional<double>* out)
    {
        return number(attribute(name), out);
    }

    // A plain decimal is read straight from the bytes; anything else as the thorough reader
    // reads it.
    bool number(const Attribute* a, std::optional<double>* out)
    {
        if (!a || a->value.empty()) {
            out->reset();
            return true;
        }
        const Bytes v = a->value;
        if (!a->escaped && v.size() <= 40) {
            size_t i = v[0] == '-' ? 1 : 0;
            const size_t digits = i;
            while (i < v.size() && v[i] >= '0' && v[i] <= '9')
                ++i;
            bool plain = i > digits;
            if (plain && i < v.size() && v[i] == '.') {
                const size_t fraction = ++i;
                while (i < v.size() && v[i] >= '0' && v[i] <= '9')
                    ++i;
                plain = i > fraction;
            }
            if (plain && i == v.size()) {
                double d = 0;
                const auto [end, ec] = std::from_chars(v.data(), v.data() + v.size(), d);
                if (ec != std::errc() || end != v.data() + v.size() || !std::isfinite(d))
                    return false;
                *out = d;
                return true;
            }
        }
        QString s;
        if (!decode(*a, &s) || s.isEmpty() || s.size() > 40)
            return false;
        bool isNumber = false;
        const double d = s.trimmed().toDouble(&isNumber);
        if (!isNumber || !std::isfinite(d))
            return false;
        *out = d;
        return true;
    }

    enum MaterialAttribute {
        Code,
        Name,
        Spec,
        Unit,
        Price,
        Origin,
        Manufacturer,
        Variety,
        Grade,
        Remark,
        Quantity,
        Amount,
        Serial,
        MaterialAttributeCount
    };
    using MaterialAttributes = std::array<const Attribute*, MaterialAttributeCount>;

    // A material's attributes in one pass over them: there are hundreds of thousands.
    MaterialAttributes materialAttributes() const
    {
        static const Bytes names[MaterialAttributeCount] = {
            "code",    "name",  "spec",   "unit",     "price",  "origin", "manufacturer",
            "variety", "grade", "remark", "quantity", "amount", "serial"};
        MaterialAttributes found{};
        for (int i = 0; i < m_attributeCount; ++i) {
            const Bytes name = m_attributes[i].name;
            for (int f = 0; f < MaterialAttributeCount; ++f)
                if (names[f].size() == name.size() && names[f][0] == name[0] && names[f] == name) {
                    found[size_t(f)] = &m_attributes[i];
                    break;
                }
        }
        return found;
    }

    bool readHeader()
    {
        return text("standard", &m_doc->standard) && text("projectName", &m_doc->projectName) &&
               text("tenderer", &m_doc->tenderer) && text("date", &m_doc->date) &&
               text("tool", &m_doc->tool) && text("toolVersion", &m_doc->toolVersion) && leaf();
    }

    bool readProject()
    {
        if (!text("id", &m_doc->projectId) || !text("name", &m_doc->projectTitle) ||
            !number("provisionalTotal", &m_doc->provisionalTotal))
            return false;
        bool evaluated = false;
        while (child()) {
            if (m_name == "SingleProject") {
                TenderSingleProject single;
                if (!text("id", &single.id) || !text("name", &single.name) || single.id.isEmpty())
                    return false;
                while (child())
                    if (m_name != "UnitProject" || !readUnit(&single))
                        return false;
                if (!m_sure)
                    return false;
                m_doc->singles.append(std::move(single));
            } else if (m_name == "UnitProject") {
                if (m_doc->singles.isEmpty() || !m_doc->singles.last().id.isEmpty())
                    m_doc->singles.append(TenderSingleProject());
                if (!readUnit(&m_doc->singles.last()))
                    return false;
            } else if (m_name == "EvaluatedMaterials" && !evaluated) {
                evaluated = true;
                if (!readEvaluated())
                    return false;
            } else {
                return false;
            }
        }
        return m_sure;
    }

    bool readUnit(TenderSingleProject* single)
    {
        if (m_unitIds.size() >= TenderXmlReader::MaxUnitProjects)
            return false;
        TenderUnitProject unit;
        if (!text("id", &unit.id) || !text("name", &unit.name) || unit.id.isEmpty() ||
            unit.name.trimmed().isEmpty() || m_unitIds.contains(unit.id))
            return false;
        m_unitIds.insert(unit.id);
        bool list = false;
        while (child()) {
            if (m_name != "ProvisionalMaterials" || list)
                return false;
            list = true;
            if (!number("total", &unit.provisionalTotal))
                return false;
            // Unit projects of one tender tend to have lists of like length.
            unit.provisional.reserve(m_lastListSize);
            while (child()) {
                if (m_name != "Material" ||
                    unit.provisional.size() >= TenderXmlReader::MaxMaterialsPerUnit ||
                    ++m_materials > TenderXmlReader::MaxMaterials)
                    return false;
                unit.provisional.append(TenderMaterial());
                TenderMaterial& m = unit.provisional.last();
                if (!text("code", &m.code) || !text("name", &m.name) || !text("spec", &m.spec) ||
                    !text("unit", &m.unit) || !number("price", &m.price) ||
                    !text("origin", &m.origin) || !text("manufacturer", &m.manufacturer) ||
                    !text("variety", &m.variety) || !text("grade", &m.grade) ||
                    !text("remark", &m.remark) || !number("quantity", &m.quantity) ||
                    !number("amount", &m.amount) || m.name.trimmed().isEmpty() || !leaf())
                    return false;
            }
            if (!m_sure)
                return false;
            m_lastListSize = unit.provisional.size();
            unit.provisional.squeeze();
        }
        if (!m_sure)
            return false;
        single->units.append(std::move(unit));
        return true;
    }

    bool readEvaluated()
    {
        if (!number("total", &m_doc->evaluatedTotal))
            return false;
        while (child()) {
            if (m_name != "Material" ||
                m_doc->evaluated.size() >= TenderXmlReader::MaxMaterialsPerUnit ||
                ++m_materials > TenderXmlReader::MaxMaterials)
                return false;
            TenderEvaluatedMaterial m;
            const MaterialAttributes a = materialAttributes();
            if (!text(a[Serial], &m.serial) || !text(a[Code], &m.code) || !text(a[Name], &m.name) ||
                !text(a[Spec], &m.spec) || !text(a[Unit], &m.unit) || !text(a[Origin], &m.origin) ||
                !text(a[Manufacturer], &m.manufacturer) || !text(a[Variety], &m.variety) ||
                !text(a[Grade], &m.grade) || !text(a[Remark], &m.remark) ||
                !number(a[Price], &m.price) || !number(a[Quantity], &m.quantity) ||
                !number(a[Amount], &m.amount) || m.name.trimmed().isEmpty() || !leaf())
                return false;
            m_doc->evaluated.append(std::move(m));
        }
        return m_sure;
    }

    QIODevice* m_device;
    TenderDocument* m_doc;
    std::vector<char> m_buffer;
    qsizetype m_pos = 0;
    qsizetype m_end = 0;
    bool m_atEnd = false;
    bool m_sure = true;
    // The element just started and its attributes; they point into the buffer and hold until
    // the next token is read.
    Bytes m_name;
    Attribute m_attributes[MaxAttributes];
    int m_attributeCount = 0;
    bool m_closePending = false;
    std::string m_open[MaxDepth];
    int m_depth = 0;
    bool m_rootDone = false;
    TextTable m_texts;
    QSet<QString> m_unitIds;
    qint64 m_materials = 0;
    int m_lastListSize = 0;
};

} // namespace

bool TenderXmlFastReader::Read(QIODevice* device, TenderDocument* document)
{
    *document = TenderDocument();
    FastParser parser(device, document);
    if (parser.run())
        return true;
    *document = TenderDocument();
    return false;
}
