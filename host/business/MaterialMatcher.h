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
                       OfferedKey offeredKey);

private:
    QString cachedText(const QString& text);
    QString cachedUnit(const QString& unit);
    Key cachedKey(const Key& key);

    QHash<QString, QString> m_texts;
    QHash<QString, QString> m_units;
};

inline uint qHash(const MaterialMatcher::Key& key, uint seed = 0)
{
    return qHash(key.name, seed) ^ (qHash(key.model, seed) * 31u) ^ (qHash(key.unit, seed) * 131u);
}

template <typename WantedKey, typename OfferedKey>
QVector<MaterialMatcher::Pair> MaterialMatcher::pair(int wantedCount, WantedKey wantedKey,
                                                     int offeredCount, OfferedKey offeredKey)
{
    QVector<Pair> pairs;
    if (wantedCount <= 0 || offeredCount <= 0)
        return pairs;
    // The wanted list is the short one: index it, run the offered list past it.
    QHash<Key, QVector<int>> exact;
    exact.reserve(wantedCount);
    for (int i = 0; i < wantedCount; ++i)
        exact[Trimmed(wantedKey(i))].append(i);
    QVector<char> offeredTaken(offeredCount, 0);
    QVector<char> wantedTaken(wantedCount, 0);
    int left = wantedCount;
    // Reading a line's key is the costly part: each is read once and kept for the second
    // pass.
    QVector<Key> offeredKeys(offeredCount);
    int read = 0;
    for (int j = 0; j < offeredCount && left > 0; ++j, read = j) {
        offeredKeys[j] = Trimmed(offeredKey(j));
        auto it = exact.find(offeredKeys.at(j));
        if (it == exact.end() || it->isEmpty())
            continue;
        const int i = it->takeFirst();
        pairs.append({i, j, Exact});
        wantedTaken[i] = offeredTaken[j] = 1;
        --left;
    }
    if (left == 0)
        return pairs;
    // Most offered lines differ from every wanted material already by name: their model and
    // unit are not normalised at all.
    QHash<Key, QVector<int>> normalised;
    QSet<QString> names;
    for (int i = 0; i < wantedCount; ++i)
        if (!wantedTaken[i]) {
            Key key = cachedKey(wantedKey(i));
            names.insert(key.name);
            normalised[std::move(key)].append(i);
        }
    for (int j = 0; j < offeredCount && left > 0; ++j) {
        if (offeredTaken[j])
            continue;
        const Key offered = j < read ? offeredKeys.at(j) : offeredKey(j);
        if (!names.contains(cachedText(offered.name)))
            continue;
        auto it = normalised.find(cachedKey(offered));
        if (it == normalised.end() || it->isEmpty())
            continue;
        pairs.append({it->takeFirst(), j, Normalised});
        --left;
    }
    return pairs;
}
