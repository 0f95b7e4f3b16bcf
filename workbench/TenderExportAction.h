#pragma once

#include <QString>
#include <QStringList>

class ProjectWorks;
class QWidget;

// The ribbon's tender-file exports ("导出招投标CJZ", "导出竣工CJZ", "导出备案CJZX"): the host's
// data exchange writes the open project as a tender file of the entry's kind.
class TenderExportAction
{
public:
    static QStringList Commands();
    static bool Handles(const QString& command);
    // The document kind and the file suffix of an entry.
    static QString KindOf(const QString& command);
    static QString SuffixOf(const QString& command);
    // Asks where to write, writes, and tells the result. False when nothing was written.
    static bool Run(QWidget* parent, ProjectWorks* project, const QString& command);
};
