#pragma once

#include <QList>
#include <QString>

#include <exception>

// One reported failure of a module entry point.
struct ExceptionReport
{
    QString what;
    QString sourceFile;
    int line = 0;
    QString tag;
};

// Reports a failure that a module caught: to the debug log and to the log file
// <application data>/log/exception.log.
void ProcExceptionNew(const std::exception& e, const QString& sourceFile, int line,
                      const QString& tag);

// The reports of this process, newest last (kept for the log viewer and for tests).
QList<ExceptionReport> RecentExceptionReports();
void ClearExceptionReports();
