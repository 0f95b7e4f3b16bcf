#pragma once

#include "ProjectWorks.h"

#include <QString>
#include <QVariant>

// The construction project's region (地区): where it is built, in the words the regional cost
// authorities publish their prices under (for example "成都市区"). Kept with the project as
// its configuration item 30 and saved in the project file with the other items; a project
// without one (older files) has an empty region.
namespace ProjectRegion {

constexpr int ConfigItem = 30;
constexpr int MaxLength = 100;

// Why a stored value cannot be a region (Chinese, for the message), or empty when it can:
// nothing, or a text of at most MaxLength characters on one line.
inline QString Problem(const QVariant& value)
{
    if (!value.isValid())
        return QString();
    if (value.userType() != QMetaType::QString)
        return QStringLiteral("不是文字");
    const QString text = value.toString();
    if (text.size() > MaxLength)
        return QStringLiteral("超过%1个字").arg(MaxLength);
    for (const QChar c : text)
        if (c.category() == QChar::Other_Control)
            return QStringLiteral("含有控制字符");
    return QString();
}

inline QString Of(ProjectWorks* project)
{
    return project ? project->GetPriceModelConfig()->getItem(ConfigItem).toString() : QString();
}

// Sets the region (blanks around it dropped); false, leaving the project as it was, when the
// text cannot be a region.
inline bool Set(ProjectWorks* project, const QString& region)
{
    const QString text = region.trimmed();
    if (!project || !Problem(text).isEmpty())
        return false;
    project->GetPriceModelConfig()->setItem(ConfigItem, text);
    return true;
}

} // namespace ProjectRegion
