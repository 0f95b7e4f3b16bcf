#pragma once

#include <QString>
#include <QStringList>

// Fills the labour-rate statements' placeholders (%1, %2, ... in one pass, as QString::arg
// does). Values go into the text as they are, which is how the store's statements have always
// been written, so a value must never be able to change the statement's shape: a value holding
// a single quote or a NUL, or an unquoted placeholder given anything but a number (or the
// store's own table name), breaks the statement. A broken statement comes back empty, with the
// reason, and is never sent to the database: it fails where a failed statement fails.
class LxrgSql
{
public:
    static QString Fill(const QString& pattern, const QStringList& values, QString* why = nullptr);
};
