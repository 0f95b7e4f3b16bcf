#include "TenderExportAction.h"

#include "ProjectWorks.h"
#include "TenderDocument.h"
#include "TenderExchange.h"
#include "zFileDialog.h"
#include "zMessageBox.h"

#include <QDir>
#include <QFileInfo>

QStringList TenderExportAction::Commands()
{
    return {QStringLiteral("导出招投标CJZ"), QStringLiteral("导出竣工CJZ"),
            QStringLiteral("导出备案CJZX")};
}

bool TenderExportAction::Handles(const QString& command)
{
    return Commands().contains(command);
}

QString TenderExportAction::KindOf(const QString& command)
{
    if (command == QStringLiteral("导出竣工CJZ"))
        return TenderDocument::KindCompletion;
    if (command == QStringLiteral("导出备案CJZX"))
        return TenderDocument::KindFiling;
    return TenderDocument::KindTender;
}

QString TenderExportAction::SuffixOf(const QString& command)
{
    return command == QStringLiteral("导出备案CJZX") ? QStringLiteral("cjzx")
                                                     : QStringLiteral("cjz");
}

bool TenderExportAction::Run(QWidget* parent, ProjectWorks* project, const QString& command)
{
    if (!project || !Handles(command))
        return false;
    const QString title = QStringLiteral("提示");
    if (project->IsReadOnly() || project->LockExport()) {
        showInformation(parent, title,
                        QStringLiteral("当前工程只读保护设置中不允许报表及接口输出，不支持导出。"));
        return false;
    }
    const QString suffix = SuffixOf(command);
    const QString folder =
        project->filePath().isEmpty() ? QDir::homePath() : QFileInfo(project->filePath()).path();
    const QString suggested =
        folder + QLatin1Char('/') + project->name() + QLatin1Char('.') + suffix;
    QString path = zFileDialog::getSaveFileName(
        parent, command, suggested, QStringLiteral("招投标数据交换文件 (*.%1)").arg(suffix));
    if (path.isEmpty())
        return false;
    if (QFileInfo(path).suffix().compare(suffix, Qt::CaseInsensitive) != 0)
        path += QLatin1Char('.') + suffix;
    QString error;
    if (!TenderExchange::ExportProject(project, path, KindOf(command), &error)) {
        showInformation(parent, title, QStringLiteral("导出失败！\n") + error);
        return false;
    }
    showInformation(parent, title,
                    QStringLiteral("导出完毕！文件：%1").arg(QDir::toNativeSeparators(path)));
    return true;
}
