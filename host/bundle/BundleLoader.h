#pragma once

#include <QString>
#include <QStringList>

namespace osgi {

// Loads a module library so that its static initialiser registers its activator.
class BundleLoader
{
public:
    // Returns the names of the activators the library added, or an empty list and an error text.
    static QStringList Load(const QString& libraryPath, QString* error);
};

} // namespace osgi
