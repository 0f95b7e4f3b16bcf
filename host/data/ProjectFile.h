#pragma once

#include "RowFields.h"

#include <QString>

#include <memory>

class ProjectWorks;

// The project file: one SQLite database per construction project (schema in
// docs/project-file.md). Saving writes a complete new file beside the old one and renames it
// over the old one, so a crash never leaves a half-written project. Opening checks that the
// file is a project file of a version this program reads, and loads all of it or nothing.
class ProjectFile
{
public:
    // Version 2 added the tender lists; version 1 files still open.
    static constexpr int SchemaVersion = 2;
    static constexpr int OldestSchemaVersion = 1;
    static inline const QString ApplicationId = QStringLiteral("Tarvo project");
    static inline const QString Suffix = QStringLiteral("tarvo");

    static bool Save(ProjectWorks* works, const QString& path, QString* error);
    static std::unique_ptr<ProjectWorks> Open(const QString& path, QString* error);

    // Compact encoding of a row's fields (exposed for the benchmarks and tests).
    static QByteArray encodeFields(const RowFields& values);
    // Refuses (false, with the reason) anything it cannot decode whole.
    static bool decodeFields(const QByteArray& bytes, RowFields& values, QString* why = nullptr);
};
