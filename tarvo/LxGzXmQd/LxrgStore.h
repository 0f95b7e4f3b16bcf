#pragma once

#include "clsDAC.h"

#include <QString>

// The maintenance dialogs' access to the "LXRG" file: every statement through DBM::clsDAC,
// every failure logged (source "TLxrgwh" and the function) and swallowed, as the dialogs
// stay open and the failed statement has no effect.
namespace LxrgStore {

QString Path();
// Runs a statement; false when it failed (and was logged).
bool Exec(const QString& sql, const char* function);
DBM::clsDACResult Query(const QString& sql, const char* function);

} // namespace LxrgStore
