#pragma once

#include "TenderDocument.h"

#include <QString>
#include <QVector>

#include <functional>

class ProjectWorks;
class QWidget;

// Loading the tender's list of materials subject to evaluation into the project, from a tender
// file (CJZ, YFJZ) or an Excel workbook. Shared by the view of the tender's list and the
// comparison with it. beforeStore runs just before the stored list is replaced (the rows of
// the old list are deleted then); nothing runs when nothing is stored.
namespace ZbXpsClLoad {

// The folder the last load or export used.
QString LastDir();
void RememberDir(const QString& folder);

// Asks for a file with the host's open dialog; empty when cancelled.
QString AskFile(QWidget* parent, const QString& caption, const QString& filter);

// Stores the materials as the project's tender list and marks the project changed.
void Store(ProjectWorks* project, const QVector<TenderEvaluatedMaterial>& materials,
           const std::function<void()>& beforeStore = {});

// Reads the evaluated list of a tender file and stores it; a file that cannot be read or has
// no such list is reported and changes nothing. True when stored.
bool FromTenderFile(QWidget* parent, ProjectWorks* project, const QString& path,
                    const std::function<void()>& beforeStore = {});

// Through ImportExcelDataDialog; cancelled or empty, nothing changes. True when stored.
bool FromExcel(QWidget* parent, ProjectWorks* project,
               const std::function<void()>& beforeStore = {});

} // namespace ZbXpsClLoad
