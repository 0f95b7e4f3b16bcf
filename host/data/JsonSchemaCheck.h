#pragma once

#include <QByteArray>
#include <QString>

// Checks a configuration file against the JSON Schema of its kind (the schemas are the files
// in appdir/Config/Schema, built into this library so that a program never runs without its
// contract). A value of the wrong type or out of range is named by its JSON pointer and shown
// as written; nothing is replaced by a default.
class JsonSchemaCheck
{
public:
    // kind: "table-header" or "content-template". False with the problem, such as
    // "/columns/0/width 的值 \"abc\" 类型不符".
    static bool validate(const QByteArray& json, const QString& kind, QString* problem);
};
