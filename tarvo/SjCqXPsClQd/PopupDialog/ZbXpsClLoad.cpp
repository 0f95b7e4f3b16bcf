#include "ZbXpsClLoad.h"

#include "ImportExcelDataDialog.h"

#include "CJZZgclBusinessYN.h"
#include "TenderExchange.h"

#include "DataManagement.h"
#include "ProjectWorks.h"
#include "SjCqXPsClTable.h"
#include "zFileDialog.h"
#include "zMessageBox.h"
#include "zTitleModal.h"

#include <QFileInfo>

namespace {

QString& lastDir()
{
    static QString dir;
    return dir;
}

} // namespace

QString ZbXpsClLoad::LastDir()
{
    return lastDir();
}

void ZbXpsClLoad::RememberDir(const QString& folder)
{
    lastDir() = folder;
}

QString ZbXpsClLoad::AskFile(QWidget* parent, const QString& caption, const QString& filter)
{
    const QString path = zFileDialog::getOpenFileName(parent, caption, lastDir(), filter);
    if (!path.isEmpty())
        lastDir() = QFileInfo(path).absolutePath();
    return path;
}

void ZbXpsClLoad::Store(ProjectWorks* project, const QVector<TenderEvaluatedMaterial>& materials,
                        const std::function<void()>& beforeStore)
{
    if (!project)
        return;
    QList<SjCqXPsClItem*> rows;
    for (const TenderEvaluatedMaterial& m : materials) {
        auto* row = new SjCqXPsClItem;
        TenderExchange::ToEvaluatedRow(m, row);
        rows << row;
    }
    if (beforeStore)
        beforeStore();
    project->SetZbXpsCl(project->GetSjId(), rows);
    project->setProjectWorkChanged(true);
}

bool ZbXpsClLoad::FromTenderFile(QWidget* parent, ProjectWorks* project, const QString& path,
                                 const std::function<void()>& beforeStore)
{
    if (!project || path.isEmpty())
        return false;
    const QList<ProTreeNode*> nodes =
        DataManagement::getInstance()->GetProTreeNodeListInOrder(project->projectIndex());
    CJZZgclBusinessYN reader;
    CJZZgclBusinessYN::DwClMap unused;
    if (!reader.LoadDwgcZgclData(path, nodes, unused, false)) {
        showInformation(parent, QStringLiteral("操作提示"), reader.LastError());
        return false;
    }
    if (reader.Document().evaluated.isEmpty()) {
        // The stored list stays as it was: an empty file says nothing about it.
        showInformation(parent, QStringLiteral("操作提示"),
                        QStringLiteral("所选招标文件中没有需评审材料清单"));
        return false;
    }
    Store(project, reader.Document().evaluated, beforeStore);
    project->SetZbFileName(QFileInfo(path).fileName());
    return true;
}

bool ZbXpsClLoad::FromExcel(QWidget* parent, ProjectWorks* project,
                            const std::function<void()>& beforeStore)
{
    if (!project)
        return false;
    ImportExcelDataDialog dialog(parent);
    if (zTitleModal::ShowModal(&dialog) != 0)
        return false;
    const QVector<TenderEvaluatedMaterial> records = dialog.records();
    if (records.isEmpty())
        return false;
    Store(project, records, beforeStore);
    return true;
}
