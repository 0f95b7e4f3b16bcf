#pragma once

#include <QJsonObject>
#include <QString>

// Reads a JSON object from a configuration file; a missing or malformed file reads as empty
// and the reason goes to the debug log.
QJsonObject ReadJsonConfig(const QString& path);
