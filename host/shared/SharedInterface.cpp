#include "SharedInterface.h"

#include "FormulaText.h"

#include <QCoreApplication>
#include <QStandardPaths>

static QString& appPathOverride()
{
    static QString path;
    return path;
}

static QString& userPathOverride()
{
    static QString path;
    return path;
}

static QString withSlash(QString path)
{
    if (!path.isEmpty() && !path.endsWith(QLatin1Char('/')))
        path += QLatin1Char('/');
    return path;
}

QString SharedInterface::GetAppPath()
{
    if (!appPathOverride().isEmpty())
        return appPathOverride();
    const QString env = qEnvironmentVariable("TARVO_APP_PATH");
    if (!env.isEmpty())
        return withSlash(env);
    return withSlash(QCoreApplication::applicationDirPath());
}

void SharedInterface::SetAppPath(const QString& path)
{
    appPathOverride() = withSlash(path);
}

QString SharedInterface::GetUserDataPath()
{
    if (!userPathOverride().isEmpty())
        return userPathOverride();
    const QString env = qEnvironmentVariable("TARVO_USER_PATH");
    if (!env.isEmpty())
        return withSlash(env);
    return withSlash(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
}

void SharedInterface::SetUserDataPath(const QString& path)
{
    userPathOverride() = withSlash(path);
}

QString SharedInterface::ReplaceFormulaItem(const QString& text)
{
    return FormulaText::ReplaceFormulaItem(text);
}
