#pragma once

#include <QByteArray>
#include <QRandomGenerator>

// One round of mutation fuzzing: up to maxEdits random edits of the bytes, each a flipped bit,
// a random or an awkward byte, a cut, a removed or a repeated run, or an extreme 32-bit value
// where sizes and counts live. The generator is seeded by the caller, so a failure replays.
inline QByteArray mutate(QByteArray bytes, QRandomGenerator& random, int maxEdits)
{
    static const char awkward[] = {'\0', '\x01', '\x7f', '\x80', '\xff', '"', '[', '{'};
    static const quint32 extremes[] = {0x7fffffffu, 0xffffffffu, 0x80000000u, 0u, 65536u};
    const int edits = 1 + int(random.bounded(maxEdits));
    for (int e = 0; e < edits && !bytes.isEmpty(); ++e) {
        const int at = int(random.bounded(bytes.size()));
        switch (random.bounded(7)) {
        case 0:
            bytes[at] = char(bytes.at(at) ^ (1 << random.bounded(8)));
            break;
        case 1:
            bytes[at] = awkward[random.bounded(int(sizeof awkward))];
            break;
        case 2:
            bytes[at] = char(random.bounded(256));
            break;
        case 3:
            bytes.remove(at, 1 + int(random.bounded(16)));
            break;
        case 4:
            bytes.insert(at, bytes.mid(int(random.bounded(bytes.size())), 1 + random.bounded(64)));
            break;
        case 5: {
            const quint32 v = extremes[random.bounded(int(sizeof extremes / sizeof *extremes))];
            bytes.replace(at, qMin(4, int(bytes.size()) - at),
                          QByteArray(reinterpret_cast<const char*>(&v), 4));
            break;
        }
        default:
            bytes.truncate(at);
            break;
        }
    }
    return bytes;
}
