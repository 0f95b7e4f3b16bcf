#include "BundleLoader.h"
#include "BundleActivatorFactory.h"

#include <QFileInfo>
#include <QLibrary>

#include <algorithm>

namespace osgi {

QStringList BundleLoader::Load(const QString& libraryPath, QString* error)
{
    if (!QFileInfo::exists(libraryPath)) {
        if (error)
            *error = QStringLiteral("模块文件不存在：%1").arg(libraryPath);
        return {};
    }
    const std::vector<std::string> before = BundleActivatorFactory::ActivatorNames();
    QLibrary library(libraryPath);
    // The module stays loaded for the life of the process, as with a host's bundle framework.
    library.setLoadHints(QLibrary::ExportExternalSymbolsHint);
    if (!library.load()) {
        if (error)
            *error = QStringLiteral("模块加载失败：%1\n%2").arg(libraryPath, library.errorString());
        return {};
    }
    QStringList added;
    for (const std::string& name : BundleActivatorFactory::ActivatorNames()) {
        if (std::find(before.begin(), before.end(), name) == before.end())
            added << QString::fromStdString(name);
    }
    if (added.isEmpty() && error)
        *error = QStringLiteral("模块未注册任何激活器：%1").arg(libraryPath);
    return added;
}

} // namespace osgi
