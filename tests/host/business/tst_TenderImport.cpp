#include "SampleProject.h"
#include "SampleTender.h"
#include "TestFiles.h"
#include "TestProject.h"

#include "CJZZgclBusinessYN.h"
#include "TenderDocument.h"
#include "TenderExchange.h"
#include "TenderFileReader.h"
#include "TenderProjectFit.h"
#include "TenderXmlWriter.h"
#include "ZgClQdBusiness.h"

#include "ProjectFile.h"
#include "ZgClZsItem.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

// A tender file fitted to a project and stored in it: the fit rule, the import steps, the
// stored list in the project file, export and import again, and the shipped samples.
class tst_TenderImport : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;

    enum Outcome { Imported, Unreadable, DoesNotFit };

    // What the tender list view does on an import, step by step.
    static Outcome import(ProjectWorks* project, const QString& path, QString* error)
    {
        const QList<ProTreeNode*> nodes =
            DataManagement::getInstance()->GetProTreeNodeListInOrder(project->projectIndex());
        CJZZgclBusinessYN reader;
        CJZZgclBusinessYN::DwClMap materials;
        if (!reader.LoadDwgcZgclData(path, nodes, materials, true)) {
            *error = reader.LastError();
            return Unreadable;
        }
        QList<ZgClZsItem*> tree;
        reader.GetGcZbZgClTreeList(project->GetSjId(), 0, tree, materials);
        if (tree.isEmpty())
            return DoesNotFit;
        QMap<int, ProTreeNode*> dwMap;
        ProjectWorks::ZbZgClMap stored;
        const bool ok =
            ZgClQdBusiness::AquireZbZgClMap(tree, project->GetConstructionWorksNode(), dwMap) &&
            ZgClQdBusiness::AquireGcZbZgClFromCJZRes(tree, dwMap, stored);
        qDeleteAll(tree);
        if (!ok || !project->SetGcZbZgCl(project->GetSjId(), stored))
            return DoesNotFit;
        QList<SjCqXPsClItem*> evaluated = reader.TakeGcZbXPsClList();
        project->SetGcZbXPsCl(project->GetSjId(), evaluated);
        return Imported;
    }

    // "unit|code|name|model|unit|price|origin" of each material row.
    static QString materialLine(int unit, const BaseDataItem* m)
    {
        return QStringLiteral("%1|%2|%3|%4|%5|%6|%7")
            .arg(unit)
            .arg(m->getValue(2).toString(), m->getValue(3).toString(), m->getValue(4).toString(),
                 m->getValue(5).toString(), m->getValue(7).toString(), m->getValue(12).toString());
    }

    // The tender's provisional list stored for each unit project.
    static QStringList provisionalOf(ProjectWorks* project)
    {
        QStringList lines;
        for (ProTreeNode* unit : project->unitProjectNodes()) {
            QList<ZgjClHzItem*> list;
            project->GetDwZbZgCl({project->projectIndex(), ProTreeNode::Id(unit)}, list);
            for (const ZgjClHzItem* m : list)
                lines << materialLine(ProTreeNode::Id(unit), m);
        }
        return lines;
    }

    // The bid's own provisional list of each unit project.
    static QStringList bidProvisionalOf(ProjectWorks* project)
    {
        QStringList lines;
        for (ProTreeNode* unit : project->unitProjectNodes())
            for (const BaseDataItem* m : project->works(0, ProTreeNode::Id(unit))
                                             ->getTenderInventory()
                                             ->getZgjClHzTable()
                                             ->items())
                if (m->getKind() == 1)
                    lines << materialLine(ProTreeNode::Id(unit), m);
        return lines;
    }

    static QStringList evaluatedLines(const QList<BaseDataItem*>& rows)
    {
        QStringList lines;
        for (const BaseDataItem* m : rows)
            if (m->getKind() == 1 && !m->getValue(3).toString().isEmpty())
                lines << QStringLiteral("%1|%2|%3|%4|%5|%6")
                             .arg(m->getValue(1).toString(), m->getValue(2).toString(),
                                  m->getValue(3).toString(), m->getValue(4).toString(),
                                  m->getValue(5).toString(), m->getValue(7).toString());
        return lines;
    }

    static bool validates(const QString& path, QString* output)
    {
        QProcess p;
        p.start("xmllint", {"--noout", "--schema", TENDER_XSD, path});
        if (!p.waitForFinished(60000))
            return false;
        *output = QString::fromUtf8(p.readAllStandardError());
        return p.exitCode() == 0;
    }

    static TenderDocument treeOf(const QList<QPair<QString, QStringList>>& singles,
                                 const QString& projectId = QString())
    {
        TenderDocument d;
        d.projectId = projectId;
        int id = 100;
        for (const auto& s : singles) {
            TenderSingleProject single;
            single.id = s.first.isEmpty() ? QString() : QString::number(++id);
            single.name = s.first;
            for (const QString& name : s.second) {
                TenderUnitProject u;
                u.id = QString::number(++id);
                u.name = name;
                single.units << u;
            }
            d.singles << single;
        }
        return d;
    }

private slots:
    void initTestCase() { QVERIFY(m_dir.isValid()); }

    void fitRule()
    {
        TestProject p; // 测试工程: 教学楼 / 建筑与装饰工程 (3), 电气工程 (4)
        const QList<ProTreeNode*> nodes = p.root->subtree();
        QHash<QString, int> fit;
        // Reordered, other blanks, full-width letters, other case: still the same names.
        TenderDocument d = treeOf({{"教 学楼", {"电气工程", "建筑与装饰工程"}}});
        QCOMPARE(TenderProjectFit::Fit(d, 77, nodes, &fit), TenderProjectFit::ByName);
        QCOMPARE(fit.value("102"), 4);
        QCOMPARE(fit.value("103"), 3);
        d = treeOf({{"教学楼", {"建筑与装饰工程", "ｅｌｅｃ"}}});
        p.plainUnit->setName("ELEC");
        QCOMPARE(TenderProjectFit::Fit(d, 77, nodes, &fit), TenderProjectFit::ByName);
        p.plainUnit->setName("电气工程");
        // Renamed, missing, one too many, in another single project: no fit.
        QCOMPARE(TenderProjectFit::Fit(treeOf({{"教学楼", {"建筑与装饰工程", "电气照明工程"}}}), 77,
                                       nodes, &fit),
                 TenderProjectFit::None);
        QVERIFY(fit.isEmpty());
        QCOMPARE(TenderProjectFit::Fit(treeOf({{"教学楼", {"建筑与装饰工程"}}}), 77, nodes, &fit),
                 TenderProjectFit::None);
        QCOMPARE(TenderProjectFit::Fit(
                     treeOf({{"教学楼", {"建筑与装饰工程", "电气工程", "给排水工程"}}}), 77, nodes,
                     &fit),
                 TenderProjectFit::None);
        QCOMPARE(TenderProjectFit::Fit(treeOf({{"宿舍楼", {"建筑与装饰工程", "电气工程"}}}), 77,
                                       nodes, &fit),
                 TenderProjectFit::None);
        // The same name twice cannot be told apart.
        QCOMPARE(
            TenderProjectFit::Fit(treeOf({{"教学楼", {"电气工程", "电气工程"}}}), 77, nodes, &fit),
            TenderProjectFit::None);

        // Written from this very project: ids hold even after a unit project was renamed.
        TenderDocument own = treeOf({{"教学楼", {"土建", "电气工程"}}}, "77");
        own.singles[0].units[0].id = "4";
        own.singles[0].units[1].id = "3";
        QCOMPARE(TenderProjectFit::Fit(own, 77, nodes, &fit), TenderProjectFit::ById);
        QCOMPARE(fit.value("4"), 4);
        // Another project's ids mean nothing: names decide, and here they do not fit.
        QCOMPARE(TenderProjectFit::Fit(own, 78, nodes, &fit), TenderProjectFit::None);
        // An id that is not a unit project of ours sends it back to the names.
        own.singles[0].units[0].id = "2";
        own.singles[0].units[0].name = "电气工程";
        own.singles[0].units[1].name = "建筑与装饰工程";
        QCOMPARE(TenderProjectFit::Fit(own, 77, nodes, &fit), TenderProjectFit::ByName);
    }

    void sampleTenderImportsAndShowsTheOverlap()
    {
        auto owned = BuildSampleProject();
        ProjectWorks* sample = owned.get();
        const int index = DataManagement::getInstance()->AddProjectWorks(std::move(owned));
        const QString fitting =
            QCoreApplication::applicationDirPath() + "/Samples/示例工程-招标文件.cjz";
        const QString unfitting =
            QCoreApplication::applicationDirPath() + "/Samples/其他工程-招标文件.cjz";

        QList<ZgClZsItem*> nodes;
        QVERIFY(!ZgClQdBusiness::GetGcZbZgClTreeList(sample->GetSjId(), 0, nodes));
        QVERIFY(nodes.isEmpty());

        QString error;
        QCOMPARE(import(sample, unfitting, &error), DoesNotFit);
        QVERIFY(!sample->HasGcZbZgCl());

        QCOMPARE(import(sample, fitting, &error), Imported);
        QVERIFY(sample->HasGcZbZgCl());
        QVERIFY(sample->HasGcZbXPsCl());
        QVERIFY(sample->isProjectWorkChanged());
        const QStringList stored = provisionalOf(sample);
        QVERIFY(ZgClQdBusiness::GetGcZbZgClTreeList(sample->GetSjId(), 0, nodes));
        int units = 0, matched = 0, unmatched = 0, noCode = 0;
        int lastUnit = 0;
        for (const ZgClZsItem* n : nodes) {
            if (n->GetZgClZsItemType() == ZgClZsItem::UnitProject) {
                ++units;
                lastUnit = n->GetId();
                continue;
            }
            QCOMPARE(n->GetParentId(), lastUnit);
            QVERIFY(n->GetZgjClHzItem());
            (n->GetFlag() == 1 ? matched : unmatched)++;
            noCode += n->GetOwnZbBm().isEmpty();
        }
        QCOMPARE(units, 6);
        QCOMPARE(ProTreeNode::Name(sample->nodeById(nodes.first()->GetNodeId())),
                 nodes.first()->GetZxGcName());
        // Partly the bid's materials, partly spelt otherwise or not in the bid at all.
        const QString counts = QString("matched %1 unmatched %2").arg(matched).arg(unmatched);
        QVERIFY2(matched > 20, qPrintable(counts));
        QVERIFY2(unmatched > 10, qPrintable(counts));
        QCOMPARE(noCode, 1);
        qDeleteAll(nodes);

        // A file that does not fit, and one that cannot be read, leave the stored list be.
        QCOMPARE(import(sample, unfitting, &error), DoesNotFit);
        QCOMPARE(provisionalOf(sample), stored);
        const QString broken = TestFiles::write(
            m_dir.filePath("broken.cjz"),
            "<TenderFile version=\"1.0\" kind=\"tender\"><Header/><Project><UnitProject");
        QCOMPARE(import(sample, broken, &error), Unreadable);
        QVERIFY2(error.startsWith("无法读取招标文件“broken.cjz”：文件不完整"), qPrintable(error));
        QCOMPARE(provisionalOf(sample), stored);

        // The stored lists go into the project file and come back.
        const QString file = m_dir.filePath("with-tender.tarvo");
        QVERIFY2(ProjectFile::Save(sample, file, &error), qPrintable(error));
        std::unique_ptr<ProjectWorks> reopened = ProjectFile::Open(file, &error);
        QVERIFY2(reopened, qPrintable(error));
        ProjectWorks* r = reopened.get();
        const int rIndex = DataManagement::getInstance()->AddProjectWorks(std::move(reopened));
        QCOMPARE(provisionalOf(r), stored);
        QCOMPARE(evaluatedLines({r->GetGcZbXPsCl().begin(), r->GetGcZbXPsCl().end()}),
                 evaluatedLines({sample->GetGcZbXPsCl().begin(), sample->GetGcZbXPsCl().end()}));
        DataManagement::getInstance()->CloseProjectWorks(rIndex);

        // A file of the previous version (no tender lists) still opens, without a tender list.
        const QString old = m_dir.filePath("old.tarvo");
        QCOMPARE(TestFiles::copyWithSql(file, old,
                                        {"DROP TABLE tender_list", "DROP TABLE tender_row",
                                         "UPDATE meta SET value='1' WHERE key='schema_version'"}),
                 QString());
        std::unique_ptr<ProjectWorks> v1 = ProjectFile::Open(old, &error);
        QVERIFY2(v1, qPrintable(error));
        QVERIFY(!v1->HasGcZbZgCl());

        // Tender rows of a unit project the file does not have are damage.
        QCOMPARE(TestFiles::copyWithSql(file, m_dir.filePath("bad.tarvo"),
                                        {"UPDATE tender_row SET node_id = 2 WHERE rowid = 1"}),
                 QString());
        QVERIFY(!ProjectFile::Open(m_dir.filePath("bad.tarvo"), &error));
        QCOMPARE(error,
                 QString("无法打开工程文件“bad.tarvo”：文件已损坏（招标清单与工程结构不符）。"));
        DataManagement::getInstance()->CloseProjectWorks(index);
    }

    void exportedProjectImportsAsTheSameLists_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("suffix");
        QTest::newRow("招投标") << TenderDocument::KindTender << "cjz";
        QTest::newRow("竣工") << TenderDocument::KindCompletion << "cjz";
        QTest::newRow("备案") << TenderDocument::KindFiling << "cjzx";
    }
    void exportedProjectImportsAsTheSameLists()
    {
        QFETCH(QString, kind);
        QFETCH(QString, suffix);
        auto owned = BuildSampleProject();
        ProjectWorks* sample = owned.get();
        const int index = DataManagement::getInstance()->AddProjectWorks(std::move(owned));
        const QString path = m_dir.filePath("export." + suffix);
        QString error;
        QVERIFY2(TenderExchange::ExportProject(sample, path, kind, &error), qPrintable(error));
        TenderDocument d;
        QVERIFY(TenderFileReader::ReadFile(path, &d, &error));
        QCOMPARE(d.kind, kind);
        QCOMPARE(d.projectId, QString::number(sample->GetSjId()));
        if (kind != TenderDocument::KindFiling) {
            QString output;
            QVERIFY2(validates(path, &output), qPrintable(output));
        }
        // Each unit project's total is the sum of its materials' amounts.
        const TenderUnitProject& first = d.singles.first().units.first();
        double sum = 0;
        for (const TenderMaterial& m : first.provisional)
            sum += m.amount.value_or(0);
        QCOMPARE(*first.provisionalTotal, std::round(sum * 100) / 100);

        QCOMPARE(import(sample, path, &error), Imported);
        QCOMPARE(provisionalOf(sample), bidProvisionalOf(sample));
        QCOMPARE(evaluatedLines({sample->GetGcZbXPsCl().begin(), sample->GetGcZbXPsCl().end()}),
                 evaluatedLines(sample->GetConstructionWorksNode()
                                    ->getTenderInventory()
                                    ->getSjCqXPsClHzTable()
                                    ->items()));
        DataManagement::getInstance()->CloseProjectWorks(index);
    }

    void shippedSamplesAreTheGeneratedOnesAndValidate()
    {
        auto sample = BuildSampleProject();
        const QString dir = QCoreApplication::applicationDirPath() + "/Samples/";
        const QStringList names = {"示例工程-招标文件.cjz", "其他工程-招标文件.cjz"};
        for (int i = 0; i < 2; ++i) {
            QFile f(dir + names.at(i));
            QVERIFY2(f.open(QIODevice::ReadOnly), qPrintable(names.at(i)));
            QVERIFY2(f.readAll() == TenderXmlWriter::ToXml(BuildSampleTender(sample.get(), i == 0)),
                     "the sample project changed: run tarvo_mktender again");
            QString output;
            QVERIFY2(validates(f.fileName(), &output), qPrintable(output));
        }
    }
};

QTEST_GUILESS_MAIN(tst_TenderImport)
#include "tst_TenderImport.moc"
