#include "BundleActivatorFactory.h"

namespace osgi {

std::map<std::string, std::shared_ptr<IBundleActivator>>& BundleActivatorFactory::registry()
{
    static std::map<std::string, std::shared_ptr<IBundleActivator>> activators;
    return activators;
}

void BundleActivatorFactory::AddActivator(const std::string& name,
                                          std::shared_ptr<IBundleActivator> activator)
{
    registry()[name] = std::move(activator);
}

std::shared_ptr<IBundleActivator> BundleActivatorFactory::GetActivator(const std::string& name)
{
    auto it = registry().find(name);
    return it == registry().end() ? nullptr : it->second;
}

std::vector<std::string> BundleActivatorFactory::ActivatorNames()
{
    std::vector<std::string> names;
    for (const auto& entry : registry())
        names.push_back(entry.first);
    return names;
}

void BundleActivatorFactory::RemoveActivator(const std::string& name)
{
    registry().erase(name);
}

} // namespace osgi
