#include "ContentTemplates.h"

#include "Communication.h"
#include "ConstructionWorks.h"
#include "HostConstants.h"
#include "HostIds.h"
#include "MsgExplain.h"
#include "SharedInterface.h"
#include "TemplateAccess.h"
#include "zFileDialog.h"
#include "zMessageBox.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

namespace ContentTemplates {

QString Dir()
{
    return SharedInterface::GetAppPath() + HostConstants::SubGCSZDir;
}

QString Path(const QString& name, const QString& suffix)
{
    return Dir() + name + suffix;
}

QStringList Names(const QString& suffix)
{
    QStringList names;
    const QFileInfoList files = QDir(Dir()).entryInfoList(
        {QLatin1Char('*') + suffix}, QDir::Files | QDir::Hidden | QDir::NoSymLinks, QDir::Name);
    for (const QFileInfo& file : files)
        names << file.fileName().chopped(suffix.size());
    return names;
}

bool Read(QWidget* parent, const QString& name, const QString& suffix, GeneralTableBase* into,
          int type)
{
    const QString path = Path(name, suffix);
    if (name.isEmpty() || !QFileInfo::exists(path))
        return false;
    QString error;
    if (!TemplateAccess::ReadTemplateFile(path, into, type, &error)) {
        showWarning(parent, QStringLiteral("提示"), error);
        return false;
    }
    return true;
}

QString AskAndSave(QWidget* parent, const GeneralTableBase* table, int type, const QString& suffix)
{
    bool ok = false;
    const QString name = zFileDialog::getText(parent, QStringLiteral("保存模板"),
                                              QStringLiteral("模板名称："), QString(), &ok)
                             .trimmed();
    if (!ok || name.isEmpty())
        return QString();
    static const QRegularExpression invalid(QStringLiteral("[\\\\/:*?\"<>|]"));
    if (name.contains(invalid) || name.startsWith(QLatin1Char('.'))) {
        showWarning(parent, QStringLiteral("提示"),
                    QStringLiteral("模板名称“%1”无效，请重新输入。").arg(name));
        return QString();
    }
    QDir().mkpath(Dir());
    QString error;
    if (!TemplateAccess::WriteTemplateFile(Path(name, suffix), table, type, &error)) {
        showWarning(parent, QStringLiteral("提示"), error);
        return QString();
    }
    showInformation(parent, QStringLiteral("信息"), QStringLiteral("保存成功！"));
    return name;
}

QString InUse(const ConstructionWorks* works, int xtblId, const QString& fallback,
              const QString& suffix)
{
    const QString recorded = works ? works->getXtBl(xtblId).toString() : QString();
    const QString name = recorded.isEmpty() ? fallback : recorded;
    return !name.isEmpty() && QFileInfo::exists(Path(name, suffix)) ? name : QString();
}

void Announce(const QString& suffix, const QString& current)
{
    MsgExplain::ToChangeMenuItemInfo list{QStringLiteral("模板选择"), 0, 4,
                                          QVariant(Names(suffix))};
    Communication::GetInstance()->SendMsg(HostMsg::HostTarget, HostMsg::RibbonItemState,
                                          QVariant::fromValue(list));
    MsgExplain::ToChangeMenuItemInfo choice{QStringLiteral("模板选择"), 0, 3, QVariant(current)};
    Communication::GetInstance()->SendMsg(HostMsg::HostTarget, HostMsg::RibbonItemState,
                                          QVariant::fromValue(choice));
}

} // namespace ContentTemplates
