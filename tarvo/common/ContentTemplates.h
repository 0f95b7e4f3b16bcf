#pragma once

#include <QString>
#include <QStringList>

class ConstructionWorks;
class GeneralTableBase;
class QWidget;

// The content templates of a list: files <app>/Template/GCSZ/<name><suffix>. The pages apply
// and save them through here, so every list follows the same rules and messages.
namespace ContentTemplates {

QString Dir();
QString Path(const QString& name, const QString& suffix);
// Every regular file with the suffix, hidden ones included, symbolic links not.
QStringList Names(const QString& suffix);
// Reads a template into an empty temporary table. A missing file gives false quietly (the
// list stays as it is); a file that cannot be used gives false after telling the user.
bool Read(QWidget* parent, const QString& name, const QString& suffix, GeneralTableBase* into,
          int type);
// Asks for a name ("保存模板") and writes the table under it; returns the name saved, or an
// empty text when the user cancelled or the name or the writing was refused (and said so).
QString AskAndSave(QWidget* parent, const GeneralTableBase* table, int type, const QString& suffix);
// The template the unit project's list comes from: the name recorded in the unit project's
// system variable `xtblId` when it applied or saved one, else `fallback` (the pricing model's
// default); empty when that template's file is not there.
QString InUse(const ConstructionWorks* works, int xtblId, const QString& fallback,
              const QString& suffix);
// Tells the ribbon's "模板选择" which templates there are and which one the list uses.
void Announce(const QString& suffix, const QString& current);

} // namespace ContentTemplates
