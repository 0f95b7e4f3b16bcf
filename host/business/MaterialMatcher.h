#pragma once

#include <QHash>
#include <QSet>
#include <QString>
#include <QVector>

// Decides which materials of two lists are the same material. A material is its name, model
// (规格型号) and unit. Lists typed by different people spell one material differently, so a
// pair is found by exact identity first and then by a normalised key (widths, blanks, case,
// multiplication and diameter signs, unit spellings); materials whose units differ after
// normalisation never pair. docs/matching.md gives the rules with examples. Used by every
// comparison of a tender list with the bid's materials.
class MaterialMatcher
{
public:
    struct Key
    {
        QString name, model, unit;
        bool operator==(const Key& other) const
        {
            return name == other.name && model == other.model && unit == other.unit;
        }
    };
    enum Kind { None = 0, Exact = 1, Normalised = 2 };
    struct Pair
    {
        int wanted;
        int offered;
        Kind kind;
    };

    // The text as an estimator reads it: full-width forms folded to half width, blanks
    // removed, lower case, ×/x/X/* as x, Φ/φ/ф as φ, superscript digits as digits.
    static QString NormaliseText(const QString& text);
    // A unit in its one spelling: m3 for m3/m³/立方米/方, t for 吨, kg for 千克/公斤 ...
    static QString NormaliseUnit(const QString& unit);
    // The key of a material with surrounding blanks dropped, the exact-identity key.
    static Key Trimmed(const Key& key);
    static Key Normalise(const Key& key);
    // How two materials correspond: Exact, Normalised or None.
    static Kind Compare(const Key& a, const Key& b);

    // Pairs the wanted materials (the tender's) with offered ones (the bid's). Each offered
    // material takes at most one wanted one, and each wanted one at most one offered: first
    // every exact identity, in the order of the offered list, then the normalised keys of
    // what is left. wantedKey(i) and offeredKey(j) give the keys; skipWanted(i) excludes a
    // wanted material already paired elsewhere. Normalised texts are kept in the matcher, so
    // one matcher over many lists normalises each distinct text once.
    template <typename WantedKey, typename OfferedKey>
    QVector<Pair> pair(int wantedCount, WantedKey wantedKey, int offeredCount,
                       OfferedKey offeredKey)
    {
        return pair(
            wantedCount, wantedKey, offeredCount, [&](int j) { return offeredKey(j).name; },
            offeredKey);
    }
    // The same, for offered lists whose keys cost something to read: offeredName(j) gives
    // the name alone, and the whole key is read only for lines whose name can pair.
    template <typename WantedKey, typename OfferedName, typename OfferedKey>
    QVector<Pair> pair(int wantedCount, WantedKey wantedKey, int offeredCount,
                       OfferedName offeredName, OfferedKey offeredKey);

private:
    QString cachedText(const QString& text);
    // A number standing for the normalised text: equal numbers, equal normalised texts.
    int cachedTextId(const QString& text);
    QString cachedUnit(const QString& unit);
    Key cachedKey(const Key& key);

    QHash<QString, int> m_textIds;   // text as written -> number of its normalised form
    QHash<QString, int> m_normalIds; // normalised form -> its number
    QVector<QString> m_normalised;   // by number
    QHash<QString, QString> m_units;
};

inline uint qHash(const MaterialMatcher::Key& key, uint seed = 0)
{
    return qHash(key.name, seed) ^ (qHash(key.model, seed) * 31u) ^ (qHash(key.unit, seed) * 131u);
}

template <typename WantedKey, typename OfferedName, typename OfferedKey>
QVector<MaterialMatcher::Pair> MaterialMatcher::pair(int wantedCount, WantedKey wantedKey,
                                                     int offeredCount, OfferedName offeredName,
                                                     OfferedKey offeredKey)
{
    QVector<Pair> pairs;
    if (wantedCount <= 0 || offeredCount <= 0)
        return pairs;
    // The wanted list is the short one: index it, run the offered list past it. Most offered
    // lines differ from every wanted material already by name, so the name is read first and
    // the rest of the key only when the name is one of the wanted ones.
    QHash<Key, QVector<int>> exact;
    QSet<QString> exactNames;
    exact.reserve(wantedCount);
    for (int i = 0; i < wantedCount; ++i) {
        Key key = Trimmed(wantedKey(i));
        exactNames.insert(key.name);
        exact[std::move(key)].append(i);
    }
    QVector<char> offeredTaken(offeredCount, 0);
    QVector<char> wantedTaken(wantedCount, 0);
    int left = wantedCount;
    // Names as read, kept for the second pass.
    QVector<QString> names(offeredCount);
    int read = 0;
    for (int j = 0; j < offeredCount && left > 0; ++j, read = j) {
        names[j] = offeredName(j);
        if (!exactNames.contains(names.at(j).trimmed()))
            continue;
        auto it = exact.find(Trimmed(offeredKey(j)));
        if (it == exact.end() || it->isEmpty())
            continue;
        const int i = it->takeFirst();
        pairs.append({i, j, Exact});
        wantedTaken[i] = offeredTaken[j] = 1;
        --left;
    }
    if (left == 0)
        return pairs;
    // The normalised names wanted, as numbers: few, so a plain scan finds one.
    QHash<Key, QVector<int>> normalised;
    QVector<int> nameIds;
    for (int i = 0; i < wantedCount; ++i)
        if (!wantedTaken[i]) {
            const Key raw = wantedKey(i);
            const int id = cachedTextId(raw.name);
            if (!nameIds.contains(id))
                nameIds.append(id);
            normalised[cachedKey(raw)].append(i);
        }
    for (int j = 0; j < offeredCount && left > 0; ++j) {
        if (offeredTaken[j])
            continue;
        if (!nameIds.contains(cachedTextId(j < read ? names.at(j) : offeredName(j))))
            continue;
        auto it = normalised.find(cachedKey(offeredKey(j)));
        if (it == normalised.end() || it->isEmpty())
            continue;
        pairs.append({it->takeFirst(), j, Normalised});
        --left;
    }
    return pairs;
}
