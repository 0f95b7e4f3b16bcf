#pragma once

#include <QColor>
#include <QHash>
#include <QString>

// Colours of the current skin by key; a key the skin does not set gives the caller's default.
class SkinManager
{
public:
    static SkinManager* getInstance();
    QColor getVXColor(const QString& key, const QColor& defaultColor);
    void setVXColor(const QString& key, const QColor& color) { m_colors.insert(key, color); }
    // Re-reads Config/Skin.json below the application path.
    void reload();

private:
    SkinManager();
    QHash<QString, QColor> m_colors;
};
