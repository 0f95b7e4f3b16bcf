#include "ObjectHelper.h"

#include <map>

namespace osgi {

static std::map<std::string, UISerInterface*>& services()
{
    static std::map<std::string, UISerInterface*> map;
    return map;
}

void ObjectHelper::AddService(UISerInterface* service, const std::string& name)
{
    services()[name] = service;
}

void ObjectHelper::RemoveService(const std::string& name)
{
    services().erase(name);
}

UISerInterface* ObjectHelper::GetService(const std::string& name)
{
    auto it = services().find(name);
    return it == services().end() ? nullptr : it->second;
}

} // namespace osgi
