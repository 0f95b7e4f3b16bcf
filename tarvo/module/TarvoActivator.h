#pragma once

#include "IBundleActivator.h"

class TarvoService;

// The module's bundle activator: creates and publishes the one "TarvoService".
class TarvoActivator : public osgi::IBundleActivator
{
public:
    ~TarvoActivator() override;
    void Start(const std::string& name) override;
    void Reserved1() override {}
    void Stop(const std::string& name) override;
    void Reserved2() override {}

    TarvoService* service() const { return m_service; }

private:
    TarvoService* m_service = nullptr;
};
