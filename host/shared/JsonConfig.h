#pragma once

#include <QJsonObject>
#include <QString>

// Reads a JSON object from a configuration file; a missing or malformed file reads as empty
// and the reason goes to the debug log. With a schema kind (JsonSchemaCheck) every value is
// checked against it too: a faulty one is left out, so that it takes its documented default,
// and one warning names the file, the JSON pointer and the value.
QJsonObject ReadJsonConfig(const QString& path, const QString& schemaKind = QString());
