#pragma once

#include <QJsonObject>
#include <QString>

#include <functional>

class ProjectWorks;
class QWidget;

// What one list dialog's export to Excel says and suggests.
struct ListExportTexts
{
    QString emptyList;  // shown when there is nothing to export
    QString saveTitle;  // the save dialog's title
    QString suggestion; // the suggested path (or folder) for the save dialog
    QString filter;     // the save dialog's filter
    QString done;       // shown when the workbook was written
};

// The export every tender-list dialog shares: refused while the project's read-only protection
// forbids output or the list is empty; otherwise the user picks the target (".xlsx" added when
// the name has no suffix), the shown grid's layout is written and the result reported. The
// layout is described only once a target is chosen. Returns the chosen file's folder, or an
// empty string when the export was refused or no target chosen.
QString exportShownList(QWidget* parent, ProjectWorks* project, bool empty,
                        const ListExportTexts& texts, double screenFactor,
                        const std::function<QJsonObject()>& describe);
