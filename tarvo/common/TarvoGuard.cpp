#include "TarvoGuard.h"

#include "ProcExceptionNew.h"

void TarvoGuard::report(const std::exception& e, const QString& sourceFile, int line,
                        const QString& tag) noexcept
{
    try {
        ProcExceptionNew(e, sourceFile, line, tag);
    } catch (...) {
        // Reporting must never take the host down with it.
    }
}
