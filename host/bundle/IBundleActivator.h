#pragma once

#include <string>

namespace osgi {

// What a bundle (a run-time loaded module library) registers with the host.
// The two reserved operations keep the slot order the host expects.
class IBundleActivator
{
public:
    virtual ~IBundleActivator() = default;
    virtual void Start(const std::string& serviceName) = 0;
    virtual void Reserved1() {}
    virtual void Stop(const std::string& serviceName) = 0;
    virtual void Reserved2() {}
};

} // namespace osgi
