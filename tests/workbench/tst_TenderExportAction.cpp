#include "SampleProject.h"
#include "TenderExportAction.h"

#include "InteractionSeam.h"
#include "ProjectWorks.h"
#include "TenderDocument.h"
#include "TenderFileReader.h"

#include <QTemporaryDir>
#include <QtTest>

// The ribbon's tender-file exports as the workbench runs them.
class tst_TenderExportAction : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        InteractionSeam::setScripted(true);
        InteractionSeam::clear();
    }

    void exportsTheProjectInTheEntrysKind()
    {
        QTemporaryDir dir;
        auto project = BuildSampleProject();
        QVERIFY(!TenderExportAction::Handles("查看招标暂估材料"));
        const QList<QPair<QString, QString>> entries = {
            {"导出招投标CJZ", TenderDocument::KindTender},
            {"导出竣工CJZ", TenderDocument::KindCompletion},
            {"导出备案CJZX", TenderDocument::KindFiling}};
        for (const auto& entry : entries) {
            InteractionSeam::clear();
            const QString path = dir.filePath(entry.second); // the suffix is added
            InteractionSeam::pushAnswer(path);
            QVERIFY(TenderExportAction::Run(nullptr, project.get(), entry.first));
            const QString written = path + "." + TenderExportAction::SuffixOf(entry.first);
            QCOMPARE(InteractionSeam::shown().at(0).title, entry.first);
            QCOMPARE(InteractionSeam::lastShown().text, "导出完毕！文件：" + written);
            TenderDocument d;
            QString error;
            QVERIFY2(TenderFileReader::ReadFile(written, &d, &error), qPrintable(error));
            QCOMPARE(d.kind, entry.second);
            QCOMPARE(d.unitProjectCount(), 6);
        }

        // Cancelled: nothing written, nothing told.
        InteractionSeam::clear();
        InteractionSeam::pushAnswer(QString());
        QVERIFY(!TenderExportAction::Run(nullptr, project.get(), "导出招投标CJZ"));
        QCOMPARE(InteractionSeam::shown().size(), 1);

        // Into a folder that does not exist: the failure and why.
        InteractionSeam::clear();
        InteractionSeam::pushAnswer(dir.filePath("none/a.cjz"));
        QVERIFY(!TenderExportAction::Run(nullptr, project.get(), "导出招投标CJZ"));
        QVERIFY(
            InteractionSeam::lastShown().text.startsWith("导出失败！\n无法写入招标文件“a.cjz”"));

        // A protected project is not written.
        project->SetReadOnly(true);
        InteractionSeam::clear();
        QVERIFY(!TenderExportAction::Run(nullptr, project.get(), "导出竣工CJZ"));
        QCOMPARE(InteractionSeam::shown().size(), 1);
        QCOMPARE(InteractionSeam::lastShown().text,
                 QString("当前工程只读保护设置中不允许报表及接口输出，不支持导出。"));
    }
};

QTEST_MAIN(tst_TenderExportAction)
#include "tst_TenderExportAction.moc"
