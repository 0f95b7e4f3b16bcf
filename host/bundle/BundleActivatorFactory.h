#pragma once

#include "IBundleActivator.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace osgi {

// Registry of the activators that module libraries add from their static initialisers.
class BundleActivatorFactory
{
public:
    static void AddActivator(const std::string& name, std::shared_ptr<IBundleActivator> activator);
    static std::shared_ptr<IBundleActivator> GetActivator(const std::string& name);
    static std::vector<std::string> ActivatorNames();
    static void RemoveActivator(const std::string& name);

private:
    static std::map<std::string, std::shared_ptr<IBundleActivator>>& registry();
};

} // namespace osgi
