#pragma once

#include "SharedInterface.h"

#include <QDir>
#include <QFile>
#include <QStringList>
#include <QTemporaryDir>

// Copies the given folders of the shipped application (paths relative to it, each ending in
// '/') into dir and makes dir the application path, so that a test may change databases,
// templates and lists without touching what is shipped.
inline void useAppCopy(const QString& shipped, const QTemporaryDir& dir, const QStringList& folders)
{
    for (const QString& folder : folders) {
        QDir().mkpath(dir.filePath(folder));
        for (const QFileInfo& f : QDir(shipped + folder).entryInfoList(QDir::Files | QDir::Hidden))
            QFile::copy(f.filePath(), dir.filePath(folder + f.fileName()));
    }
    SharedInterface::SetAppPath(dir.path());
}
