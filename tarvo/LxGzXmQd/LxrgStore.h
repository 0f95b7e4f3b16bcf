#pragma once

#include "clsDAC.h"

#include <QString>
#include <QStringList>

// The maintenance dialogs' access to the "LXRG" file: every statement through DBM::clsDAC,
// every failure logged (source "TLxrgwh" and the function), reported to the host's exception
// report and swallowed, as the dialogs stay open and the failed statement has no effect. The
// statements are filled by LxrgSql: one that a value would break is not run and fails here.
namespace LxrgStore {

QString Path();
// Runs a statement; false when it failed (and was logged).
bool Exec(const QString& pattern, const QStringList& values, const char* function);
DBM::clsDACResult Query(const QString& pattern, const QStringList& values, const char* function);

} // namespace LxrgStore
