#include "ListExport.h"

#include "ProjectWorks.h"
#include "TableLayoutExport.h"
#include "zFileDialog.h"
#include "zMessageBox.h"

#include <QDebug>
#include <QFileInfo>

QString exportShownList(QWidget* parent, ProjectWorks* project, bool empty,
                        const ListExportTexts& texts, double screenFactor,
                        const std::function<QJsonObject()>& describe)
{
    if (project && project->LockExport()) {
        showInformation(parent, QStringLiteral("提示"),
                        QStringLiteral("当前工程只读保护设置中不允许报表及接口输出，不支持导出。"));
        return {};
    }
    if (empty) {
        showInformation(parent, QStringLiteral("提示"), texts.emptyList);
        return {};
    }
    QString path =
        zFileDialog::getSaveFileName(parent, texts.saveTitle, texts.suggestion, texts.filter);
    if (path.isEmpty())
        return {};
    if (QFileInfo(path).suffix().isEmpty())
        path += QStringLiteral(".xlsx");
    QString error;
    const bool saved = TableLayoutExport::Save(describe(), path, screenFactor, &error);
    if (!saved)
        qDebug() << "export failed:" << error;
    showInformation(parent, QStringLiteral("提示"),
                    saved ? texts.done : QStringLiteral("导出失败！"));
    return QFileInfo(path).absolutePath();
}
