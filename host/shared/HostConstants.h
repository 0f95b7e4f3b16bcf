#pragma once

#include <QString>

// Host path constants: where content templates live below the application path and the file
// endings of each list's templates.
namespace HostConstants {

inline const QString SubGCSZDir = QStringLiteral("Template/GCSZ/");
inline const QString QtXmQdTemplateFileProfix = QStringLiteral(".qtxm");
inline const QString LxGcXmQdTemplateFileProfix = QStringLiteral(".lxgz");
inline const QString GfQdTemplateFileProfix = QStringLiteral(".gfqd");

} // namespace HostConstants
