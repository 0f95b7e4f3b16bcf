#include "SkinManager.h"
#include "JsonConfig.h"
#include "SharedInterface.h"

SkinManager* SkinManager::getInstance()
{
    static SkinManager instance;
    return &instance;
}

SkinManager::SkinManager()
{
    reload();
}

void SkinManager::reload()
{
    m_colors.clear();
    const QJsonObject root =
        ReadJsonConfig(SharedInterface::GetAppPath() + QStringLiteral("Config/Skin.json"),
                       QStringLiteral("colours"));
    for (auto it = root.begin(); it != root.end(); ++it) {
        const QColor color(it.value().toString());
        if (color.isValid())
            m_colors.insert(it.key(), color);
    }
}

QColor SkinManager::getVXColor(const QString& key, const QColor& defaultColor)
{
    return m_colors.value(key, defaultColor);
}
