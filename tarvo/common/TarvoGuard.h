#pragma once

#include <QString>

#include <exception>
#include <stdexcept>
#include <utility>

// The module's failure convention for every entry point: whatever the body throws (a C
// string, a QString, a standard exception, anything else) is reported to the host with the
// page-relative source file, the line and the tag "Class::function", and goes no further.
class TarvoGuard
{
public:
    template <typename Body>
    static void run(const QString& sourceFile, int line, const QString& tag, Body&& body) noexcept
    {
        try {
            throwInjectedFault();
            std::forward<Body>(body)();
        } catch (const char* text) {
            report(std::runtime_error(text ? text : ""), sourceFile, line, tag);
        } catch (const QString& text) {
            report(std::runtime_error(text.toStdString()), sourceFile, line, tag);
        } catch (const std::exception& e) {
            report(e, sourceFile, line, tag);
        } catch (...) {
            report(std::runtime_error("未知异常"), sourceFile, line, tag);
        }
    }

    // Tests make the next guarded body fail as if its first host call had thrown, to see that
    // every entry point reports under its tag and goes on. Never armed in production.
    static void armInjectedFault();
    // Whether an armed fault is still waiting for a guarded body (and disarms it).
    static bool disarmInjectedFault();

private:
    static void throwInjectedFault();
    static void report(const std::exception& e, const QString& sourceFile, int line,
                       const QString& tag) noexcept;
};

// TARVO_GUARD("QtXmQd\\QtXmQdSjWidget", "QtXmQdSjWidget::ProcMsg") { ... };
#define TARVO_GUARD(file, tag)                                                                     \
    TarvoGuardScope(QStringLiteral(file), __LINE__, QStringLiteral(tag)) + [&]()

struct TarvoGuardScope
{
    QString file;
    int line;
    QString tag;
    TarvoGuardScope(QString f, int l, QString t) : file(std::move(f)), line(l), tag(std::move(t)) {}
    template <typename Body> void operator+(Body&& body) const noexcept
    {
        TarvoGuard::run(file, line, tag, std::forward<Body>(body));
    }
};
