#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QVariant>

// Reads values that a project file stores in QDataStream format (Qt 5.15) without trusting
// them: every count and length is checked against the bytes actually present before anything
// is allocated, nesting is capped, and only plain data types are accepted (never a GUI type
// such as a pixmap, never a user type). Only a stream that passes the check is handed to
// QDataStream, and it must then decode to the last byte.
class VariantStream
{
public:
    // Deepest nesting of lists and maps a stored value may have.
    static constexpr int MaxDepth = 16;

    static bool readVariant(const QByteArray& bytes, QVariant* value, QString* why);
    static bool readIntMap(const QByteArray& bytes, QMap<int, QVariant>* map, QString* why);
};
