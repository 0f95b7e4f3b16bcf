#pragma once

#include <string>

class UISerInterface;

namespace osgi {

// Directory of published services. A service is borrowed: its bundle creates and destroys it.
class ObjectHelper
{
public:
    static void AddService(UISerInterface* service, const std::string& name);
    static void RemoveService(const std::string& name);
    static UISerInterface* GetService(const std::string& name);
};

} // namespace osgi
