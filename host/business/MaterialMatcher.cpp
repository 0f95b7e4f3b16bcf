#include "MaterialMatcher.h"

namespace {

QChar foldChar(QChar c)
{
    const ushort u = c.unicode();
    if (u >= 0xFF01 && u <= 0xFF5E) // full-width ASCII
        return QChar(ushort(u - 0xFEE0));
    switch (u) {
    case 0x00D7: // ×
    case 0x2715: // ✕
    case 0x2716:
    case 0x2A2F: // ⨯
    case '*':
        return QLatin1Char('x');
    case 0x03A6:              // Φ
    case 0x03D5:              // ϕ
    case 0x0424:              // Ф
    case 0x0444:              // ф
    case 0x2205:              // ∅
    case 0x2300:              // ⌀
        return QChar(0x03C6); // φ
    case 0x00B2:
        return QLatin1Char('2');
    case 0x00B3:
        return QLatin1Char('3');
    case 0x3001: // 、
        return QLatin1Char(',');
    case 0x3002: // 。
        return QLatin1Char('.');
    default:
        return c;
    }
}

} // namespace

QString MaterialMatcher::NormaliseText(const QString& text)
{
    QString out;
    out.reserve(text.size());
    for (const QChar c : text) {
        if (c.isSpace() || c.unicode() == 0x3000)
            continue;
        out.append(foldChar(c).toLower());
    }
    return out;
}

QString MaterialMatcher::NormaliseUnit(const QString& unit)
{
    QString u = NormaliseText(unit);
    // Single-character unit symbols first.
    u.replace(QChar(0x33A5), QLatin1String("m3")); // ㎥
    u.replace(QChar(0x33A1), QLatin1String("m2")); // ㎡
    u.replace(QChar(0x338F), QLatin1String("kg")); // ㎏
    u.replace(QChar(0x339C), QLatin1String("mm")); // ㎜
    static const QHash<QString, QString> spellings = {
        {QStringLiteral("立方米"), QStringLiteral("m3")},
        {QStringLiteral("立方"), QStringLiteral("m3")},
        {QStringLiteral("方"), QStringLiteral("m3")},
        {QStringLiteral("平方米"), QStringLiteral("m2")},
        {QStringLiteral("平米"), QStringLiteral("m2")},
        {QStringLiteral("米"), QStringLiteral("m")},
        {QStringLiteral("延长米"), QStringLiteral("m")},
        {QStringLiteral("毫米"), QStringLiteral("mm")},
        {QStringLiteral("吨"), QStringLiteral("t")},
        {QStringLiteral("千克"), QStringLiteral("kg")},
        {QStringLiteral("公斤"), QStringLiteral("kg")},
        {QStringLiteral("克"), QStringLiteral("g")},
        {QStringLiteral("升"), QStringLiteral("l")},
        {QStringLiteral("千瓦时"), QStringLiteral("kwh")},
        {QStringLiteral("度"), QStringLiteral("kwh")},
    };
    return spellings.value(u, u);
}

MaterialMatcher::Key MaterialMatcher::Trimmed(const Key& key)
{
    return {key.name.trimmed(), key.model.trimmed(), key.unit.trimmed()};
}

MaterialMatcher::Key MaterialMatcher::Normalise(const Key& key)
{
    return {NormaliseText(key.name), NormaliseText(key.model), NormaliseUnit(key.unit)};
}

MaterialMatcher::Kind MaterialMatcher::Compare(const Key& a, const Key& b)
{
    if (Trimmed(a) == Trimmed(b))
        return Exact;
    return Normalise(a) == Normalise(b) ? Normalised : None;
}

int MaterialMatcher::cachedTextId(const QString& text)
{
    auto it = m_textIds.constFind(text);
    if (it != m_textIds.cend())
        return *it;
    const QString normal = NormaliseText(text);
    auto known = m_normalIds.constFind(normal);
    int id;
    if (known != m_normalIds.cend()) {
        id = *known;
    } else {
        id = int(m_normalised.size());
        m_normalised.append(normal);
        m_normalIds.insert(normal, id);
    }
    m_textIds.insert(text, id);
    return id;
}

QString MaterialMatcher::cachedText(const QString& text)
{
    return m_normalised.at(cachedTextId(text));
}

QString MaterialMatcher::cachedUnit(const QString& unit)
{
    auto it = m_units.constFind(unit);
    if (it != m_units.cend())
        return *it;
    return *m_units.insert(unit, NormaliseUnit(unit));
}

MaterialMatcher::Key MaterialMatcher::cachedKey(const Key& key)
{
    return {cachedText(key.name), cachedText(key.model), cachedUnit(key.unit)};
}
