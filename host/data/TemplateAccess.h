#pragma once

#include <QString>

class GeneralTableBase;

// Content-template files: the rows of one list, kept as JSON (format in
// docs/content-templates.md). Reading fills an empty table; writing replaces the file whole.
class TemplateAccess
{
public:
    static inline const QString FormatId = QStringLiteral("Tarvo content template");

    // Reads the file into the table (appending, unjournalled: the table is a temporary one).
    // False with a reason when the file cannot be read, is malformed or is of another list.
    static bool ReadTemplateFile(const QString& path, GeneralTableBase* table, int type,
                                 QString* error = nullptr);
    static bool WriteTemplateFile(const QString& path, const GeneralTableBase* table, int type,
                                  QString* error = nullptr);
};
