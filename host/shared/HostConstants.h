#pragma once

#include <QString>

// Host path constants: where content templates live below the application path and the file
// endings of each list's templates.
namespace HostConstants {

inline const QString SubGCSZDir = QStringLiteral("Template/GCSZ/");
inline const QString QtXmQdTemplateFileProfix = QStringLiteral(".qtxm");
inline const QString LxGcXmQdTemplateFileProfix = QStringLiteral(".lxgz");
inline const QString GfQdTemplateFileProfix = QStringLiteral(".gfqd");

// The regional labour-rate databases: <app>/Database/<base name>.db.
inline const QString C_Database_Dir = QStringLiteral("Database/");
inline const QString C_Db_Sqlite_Suffix = QStringLiteral(".db");
// The trade list (one trade a line, GBK): <app>/Template/GCSZ/LxrgWorksType.txt.
inline const QString GCSZDir = QStringLiteral("Template/GCSZ/");
inline const QString WorksTypeFilePath = QStringLiteral("LxrgWorksType.txt");

} // namespace HostConstants
