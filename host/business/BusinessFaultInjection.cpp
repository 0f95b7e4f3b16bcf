#include "BusinessFaultInjection.h"

static std::function<void()>& pending()
{
    static std::function<void()> fault;
    return fault;
}

void BusinessFaultInjection::setFault(std::function<void()> fault)
{
    pending() = std::move(fault);
}

void BusinessFaultInjection::clear()
{
    pending() = nullptr;
}

void BusinessFaultInjection::check()
{
    if (!pending())
        return;
    std::function<void()> fault = std::move(pending());
    pending() = nullptr;
    fault();
}
