#pragma once

#include <QString>

class ProjectWorks;
class QSqlDatabase;

// The tender lists a project holds (ProjectWorks::SetGcZbZgCl, SetGcZbXPsCl), in two tables
// of the project file beside the bill tables (docs/project-file.md).
class TenderListStore
{
public:
    static bool CreateTables(QSqlDatabase& db, QString* failure);
    static bool Save(QSqlDatabase& db, ProjectWorks* works, QString* failure);
    // Reads the lists back; a row that does not belong to a unit project of the file, or does
    // not decode, is damage.
    static bool Load(QSqlDatabase& db, ProjectWorks* works, QString* failure);
};
