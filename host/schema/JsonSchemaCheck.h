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
    // kind: "table-header", "content-template", "ribbon", "ribbon-item", "settings" or
    // "colours". False with the problem, such as "/columns/0/width 的值 \"abc\" 类型不符".
    static bool validate(const QByteArray& json, const QString& kind, QString* problem);
    // Whether the text is JSON a reader may take: well formed, nested at most 64 deep, no key
    // twice in one object. Checked before Qt's JSON reader sees a file.
    static bool wellFormed(const QByteArray& json, QString* problem);
    // Where a default is the documented answer to a faulty file (settings, colours, a ribbon
    // item): the warning goes to the log once per text, however often the file is read.
    static void warnOnce(const QString& text);
};
