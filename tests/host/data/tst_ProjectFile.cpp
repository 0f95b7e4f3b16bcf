#include "SampleProject.h"
#include "TestFiles.h"
#include "TestProject.h"

#include "DataManagement.h"
#include "ProjectFile.h"
#include "ProjectRegion.h"

#include <QTemporaryDir>
#include <QtTest>

// Saving and opening project files, and refusing files that are not ours or not whole.
class tst_ProjectFile : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;
    QString path(const QString& name) const { return m_dir.filePath(name); }

private slots:
    void roundTripKeepsEverything()
    {
        std::unique_ptr<ProjectWorks> sample = BuildSampleProject();
        ProTreeNode* unit = sample->unitProjectNodes().first();
        ConstructionWorks* works = sample->works(0, ProTreeNode::Id(unit));
        BaseDataItem* row = works->getTenderInventory()->getQtXmQdHzTable()->at(0);
        row->loadState(0, true, 36, QStringLiteral("含税"));
        row->loadValue(
            9, QVariant::fromValue(QStringList{QStringLiteral("甲"), QStringLiteral("乙")}));
        works->setXtBl(25, QStringLiteral("规费税金清单"));
        works->getConfig()->setItem(2, QStringLiteral("2020定额其他项目清单"));
        works->getTenderInventory()->getGfSjQdTable()->SetReadOnlyLocked(true);
        sample->SetDqdZdSd(true);
        sample->setProjectWorkChanged(true);

        QString error;
        QVERIFY2(ProjectFile::Save(sample.get(), path(QStringLiteral("a.tarvo")), &error),
                 qPrintable(error));
        QVERIFY(!sample->isProjectWorkChanged());
        QVERIFY(!QFile::exists(path(QStringLiteral("a.tarvo.tmp"))));

        std::unique_ptr<ProjectWorks> opened =
            ProjectFile::Open(path(QStringLiteral("a.tarvo")), &error);
        QVERIFY2(opened, qPrintable(error));
        QCOMPARE(opened->name(), sample->name());
        QCOMPARE(opened->GetSjId(), sample->GetSjId());
        QVERIFY(opened->GetDqdZdSd());
        QCOMPARE(opened->root()->subtree().size(), sample->root()->subtree().size());
        for (ProTreeNode* node : sample->root()->subtree()) {
            ProTreeNode* other = opened->nodeById(ProTreeNode::Id(node));
            QVERIFY(other);
            QCOMPARE(ProTreeNode::Name(other), ProTreeNode::Name(node));
            QCOMPARE(ProTreeNode::Types(other), ProTreeNode::Types(node));
            QCOMPARE(ProTreeNode::CheckWithSSVersion(other), ProTreeNode::CheckWithSSVersion(node));
            for (int audit = 0; audit < 2; ++audit) {
                ConstructionWorks* a = sample->works(audit, ProTreeNode::Id(node));
                ConstructionWorks* b = opened->works(audit, ProTreeNode::Id(node));
                QCOMPARE(a == nullptr, b == nullptr);
                if (!a)
                    continue;
                QCOMPARE(b->xtBl(), a->xtBl());
                QCOMPARE(b->getConfig()->items(), a->getConfig()->items());
                const QList<GeneralTableBase*> tables = a->allTables();
                for (GeneralTableBase* ta : tables) {
                    GeneralTableBase* tb = b->tableByType(ta->getTableType());
                    QCOMPARE(tb->count(), ta->count());
                    QCOMPARE(TableBaseObject::GetReadOnlyLocked(tb),
                             TableBaseObject::GetReadOnlyLocked(ta));
                    for (int r = 0; r < ta->count(); ++r) {
                        QCOMPARE(tb->at(r)->rawValues().toVector(),
                                 ta->at(r)->rawValues().toVector());
                        QCOMPARE(tb->at(r)->getKind(), ta->at(r)->getKind());
                        QCOMPARE(tb->at(r)->IsBlock(), ta->at(r)->IsBlock());
                        QCOMPARE(tb->at(r)->getRowHeight(), ta->at(r)->getRowHeight());
                        QCOMPARE(tb->at(r)->getNote(), ta->at(r)->getNote());
                    }
                }
            }
        }
    }

    // The project's region is kept with it; a file written without one (as before regions
    // existed) opens with none; a stored value that is no region refuses the file, naming
    // the table, row, item and value.
    void theRegionIsKeptAndCheckedOnOpening()
    {
        TestProject p;
        QString error;
        QVERIFY(ProjectFile::Save(p.project, path("no-region.tarvo"), &error));
        std::unique_ptr<ProjectWorks> opened = ProjectFile::Open(path("no-region.tarvo"), &error);
        QVERIFY2(opened, qPrintable(error));
        QCOMPARE(ProjectRegion::Of(opened.get()), QString());
        QVERIFY(!opened->GetPriceModelConfig()->items().contains(ProjectRegion::ConfigItem));

        QVERIFY(ProjectRegion::Set(p.project, "  阿坝、汶川、理县、茂县 "));
        QVERIFY(ProjectFile::Save(p.project, path("region.tarvo"), &error));
        opened = ProjectFile::Open(path("region.tarvo"), &error);
        QVERIFY2(opened, qPrintable(error));
        QCOMPARE(ProjectRegion::Of(opened.get()), QString("阿坝、汶川、理县、茂县"));
        // What cannot be a region is not taken.
        QVERIFY(!ProjectRegion::Set(p.project, QString(101, QChar(0x5DDD))));
        QVERIFY(!ProjectRegion::Set(p.project, "成都\n市区"));
        QCOMPARE(ProjectRegion::Of(p.project), QString("阿坝、汶川、理县、茂县"));

        const QList<QPair<QVariant, QString>> hostile = {
            {QVariant(5), "“5”无效：不是文字"},
            {QVariant(QStringList{"成都市区"}), "“成都市区”无效：不是文字"},
            {QVariant(QString(101, QChar(0x5DDD))), "无效：超过100个字"},
            {QVariant(QString("成都\t市区")), "无效：含有控制字符"}};
        for (const auto& [value, reason] : hostile) {
            p.project->GetPriceModelConfig()->setItem(ProjectRegion::ConfigItem, value);
            QVERIFY(ProjectFile::Save(p.project, path("hostile.tarvo"), &error));
            QVERIFY(!ProjectFile::Open(path("hostile.tarvo"), &error));
            QVERIFY2(error.contains("hostile.tarvo"), qPrintable(error));
            QVERIFY2(error.contains("数据表“project”第1行：列“config”第30项（工程所在地区）的值"),
                     qPrintable(error));
            QVERIFY2(error.contains(reason), qPrintable(error));
        }
    }

    void savingOverAnExistingFileReplacesIt()
    {
        TestProject p;
        QString error;
        const QString file = path(QStringLiteral("b.tarvo"));
        QVERIFY(ProjectFile::Save(p.project, file, &error));
        TestProject::row(p.current->getRcjHzTable(), 1, {{3, QStringLiteral("钢筋")}});
        QVERIFY(ProjectFile::Save(p.project, file, &error));
        std::unique_ptr<ProjectWorks> opened = ProjectFile::Open(file, &error);
        QVERIFY(opened);
        QCOMPARE(opened->works(0, 3)->getRcjHzTable()->count(), 1);
    }

    void refusesWhatIsNotAProject_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("reason");
        QTest::newRow("missing") << QStringLiteral("none.tarvo") << QStringLiteral("文件不存在");
        QTest::newRow("text") << QStringLiteral("text.tarvo") << QStringLiteral("文件格式无法识别");
        QTest::newRow("foreign sqlite")
            << QStringLiteral("foreign.tarvo") << QStringLiteral("不是本系统的工程文件");
        QTest::newRow("newer version")
            << QStringLiteral("newer.tarvo") << QStringLiteral("版本为3");
        QTest::newRow("truncated")
            << QStringLiteral("truncated.tarvo") << QStringLiteral("文件已损坏");
        QTest::newRow("submitted version missing")
            << QStringLiteral("nosubmitted.tarvo") << QStringLiteral("送审版本数据不完整");
        QTest::newRow("submitted version unannounced")
            << QStringLiteral("unannounced.tarvo") << QStringLiteral("送审版本数据不完整");
    }

    void refusesWhatIsNotAProject()
    {
        QFETCH(QString, file);
        QFETCH(QString, reason);
        QVERIFY(!TestFiles::write(path("text.tarvo"), "这不是工程文件\n").isEmpty());
        QCOMPARE(TestFiles::runSql(path("foreign.tarvo"),
                                   {"CREATE TABLE IF NOT EXISTS customers(id INTEGER, name TEXT)"}),
                 QString());
        TestProject p;
        for (int i = 0; i < 3000; ++i)
            TestProject::row(p.current->getRcjHzTable(), 1,
                             {{3, QStringLiteral("材料%1").arg(i)}, {9, i * 1.5}});
        QString error;
        QVERIFY(ProjectFile::Save(p.project, path("whole.tarvo"), &error));
        const QString whole = path("whole.tarvo");
        for (const auto& [name, sql] :
             {std::pair{"newer.tarvo", "UPDATE meta SET value='3' WHERE key='schema_version'"},
              std::pair{"nosubmitted.tarvo", "DELETE FROM works WHERE audit=1"},
              std::pair{"unannounced.tarvo", "UPDATE node SET submitted=0"}})
            QCOMPARE(TestFiles::copyWithSql(whole, path(name), {sql}), QString());
        QFile wholeFile(whole);
        QVERIFY(wholeFile.open(QIODevice::ReadOnly));
        TestFiles::write(path("truncated.tarvo"),
                         wholeFile.readAll().left(int(wholeFile.size() / 2)));

        // The project already open stays as it was.
        const int openCount = DataManagement::getInstance()->openProjects().size();
        p.project->setProjectWorkChanged(true);
        error.clear();
        QVERIFY(!ProjectFile::Open(path(file), &error));
        QVERIFY2(error.contains(reason), qPrintable(error));
        QVERIFY2(error.contains(file), qPrintable(error)); // the message names the file
        QCOMPARE(DataManagement::getInstance()->openProjects().size(), openCount);
        QCOMPARE(DataManagement::getInstance()->GetProjectWorksByIndex(p.index), p.project);
        QCOMPARE(p.current->getRcjHzTable()->count(), 3000);
        QVERIFY(p.project->isProjectWorkChanged());
        QCOMPARE(p.project->filePath(), path(QStringLiteral("whole.tarvo")));
    }

    void failedSaveLeavesTheOldFileAndTheProject()
    {
        TestProject p;
        TestProject::row(p.current->getRcjHzTable(), 1, {{3, QStringLiteral("水泥")}});
        const QString file = path(QStringLiteral("kept.tarvo"));
        QString error;
        QVERIFY(ProjectFile::Save(p.project, file, &error));
        TestProject::row(p.current->getRcjHzTable(), 1, {{3, QStringLiteral("砂")}});
        p.project->setProjectWorkChanged(true);
        // A directory where the new file would be written makes the save fail halfway.
        QVERIFY(QDir().mkpath(file + QStringLiteral(".tmp/x")));

        QVERIFY(!ProjectFile::Save(p.project, file, &error));
        QVERIFY2(error.startsWith(QStringLiteral("保存工程文件“kept.tarvo”失败")),
                 qPrintable(error));
        QVERIFY(p.project->isProjectWorkChanged());
        std::unique_ptr<ProjectWorks> old = ProjectFile::Open(file, &error);
        QVERIFY2(old, qPrintable(error));
        QCOMPARE(old->works(0, 3)->getRcjHzTable()->count(), 1);
        QCOMPARE(old->works(0, 3)->getRcjHzTable()->at(0)->getValue(3).toString(),
                 QStringLiteral("水泥"));
    }
};

QTEST_GUILESS_MAIN(tst_ProjectFile)
#include "tst_ProjectFile.moc"
