#include "SharedInterface.h"

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
    QString out;
    out.reserve(text.size());
    for (const QChar c : text) {
        const ushort u = c.unicode();
        if (u >= 0xFF01 && u <= 0xFF5E)
            out += QChar(u - 0xFEE0); // full-width ASCII block
        else if (u == 0x00D7)
            out += QLatin1Char('*');
        else if (u == 0x00F7)
            out += QLatin1Char('/');
        else if (u == 0x3001)
            out += QLatin1Char(',');
        else if (u == 0x3000 || c == QLatin1Char(' ') || c == QLatin1Char('\t'))
            continue;
        else
            out += c;
    }
    return out;
}
