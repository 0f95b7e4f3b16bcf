#pragma once

#include <QString>

// Host paths and text helpers.
class SharedInterface
{
public:
    // The application directory with a trailing slash: templates, configurations and
    // databases live below it. TARVO_APP_PATH overrides it (tests, portable installs).
    static QString GetAppPath();
    static void SetAppPath(const QString& path);
    // Where the user's own files go (header templates, logs), with a trailing slash.
    // TARVO_USER_PATH overrides it.
    static QString GetUserDataPath();
    static void SetUserDataPath(const QString& path);
    // What users type into formulas, made ready for the expression engine (the work is
    // done by FormulaText in the expression library).
    static QString ReplaceFormulaItem(const QString& text);
};
