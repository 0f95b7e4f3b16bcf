#include "TarvoGuard.h"

#include "ProcExceptionNew.h"

#include <atomic>

namespace {
std::atomic<bool> injectedFault{false};
}

void TarvoGuard::armInjectedFault()
{
    injectedFault = true;
}

bool TarvoGuard::disarmInjectedFault()
{
    return injectedFault.exchange(false);
}

void TarvoGuard::throwInjectedFault()
{
    if (injectedFault.load(std::memory_order_relaxed) && injectedFault.exchange(false))
        throw std::runtime_error("注入的故障");
}

void TarvoGuard::report(const std::exception& e, const QString& sourceFile, int line,
                        const QString& tag) noexcept
{
    try {
        ProcExceptionNew(e, sourceFile, line, tag);
    } catch (...) {
        // Reporting must never take the host down with it.
    }
}
