#include "TarvoActivator.h"

#include "TarvoGuard.h"
#include "TarvoService.h"

#include "BundleActivatorFactory.h"
#include "ObjectHelper.h"

#include <memory>

namespace {

bool sameName(const std::string& a, const std::string& b)
{
    return a.size() == b.size() && a.compare(b) == 0;
}

// Registered when the library is loaded; nothing else happens at load.
const bool registered = [] {
    std::shared_ptr<osgi::IBundleActivator> activator = std::make_shared<TarvoActivator>();
    osgi::BundleActivatorFactory::AddActivator("TarvoActivator", activator);
    return true;
}();

} // namespace

TarvoActivator::~TarvoActivator()
{
    delete m_service;
}

void TarvoActivator::Start(const std::string& name)
{
    TARVO_GUARD("module\\TarvoActivator", "TarvoActivator::Start")
    {
        const std::string serviceName = QStringLiteral("TarvoService").toStdString();
        if (!sameName(serviceName, name) || m_service)
            return;
        m_service = new TarvoService;
        osgi::ObjectHelper::AddService(m_service, name);
    };
}

void TarvoActivator::Stop(const std::string& name)
{
    TARVO_GUARD("module\\TarvoActivator", "TarvoActivator::Stop")
    {
        if (!m_service)
            return;
        if (!sameName(m_service->GetServiceName().toStdString(), name))
            return;
        osgi::ObjectHelper::RemoveService(name);
        delete m_service;
        m_service = nullptr;
    };
}
