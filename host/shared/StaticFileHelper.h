#pragma once

#include <QString>

// Locates the host's static configuration files.
class StaticFileHelper
{
public:
    // The ribbon menu configuration of the given file name for the region in "AreaVer":
    // Config/Menu/<AreaVer>/<file>, falling back to Config/Menu/<file>.
    static QString AquireMenuConfig(const QString& fileName);
};
