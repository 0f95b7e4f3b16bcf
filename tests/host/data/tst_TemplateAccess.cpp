#include "SampleProject.h"
#include "TestProject.h"

#include "AuditBusiness.h"
#include "JsonSchemaCheck.h"
#include "TemplateAccess.h"

#include <QTemporaryDir>
#include <QtTest>

// Content-template files, the submitted-version relation, and the bundled sample's shape.
class tst_TemplateAccess : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;

    QString write(const QString& name, const QByteArray& text)
    {
        QFile file(m_dir.filePath(name));
        file.open(QIODevice::WriteOnly);
        file.write(text);
        return file.fileName();
    }

private slots:
    void roundTripKeepsRowsKindsAndNotes()
    {
        GfSjQdTable source;
        TestProject::row(&source, 1, {{1, "1"}, {2, "规费"}})->loadState(1, false, 0, "说明");
        TestProject::row(&source, 0,
                         {{1, "1.1"}, {2, "养老保险费"}, {3, "分部分项人工费"}, {4, 7.5}});
        TestProject::row(&source, 2, {{2, "税金"}, {4, 9}});
        const QString path = m_dir.filePath("我的.gfqd");
        QString error;
        QVERIFY(TemplateAccess::WriteTemplateFile(path, &source, GfSjQdTable::Type, &error));
        GfSjQdTable read;
        QVERIFY2(TemplateAccess::ReadTemplateFile(path, &read, GfSjQdTable::Type, &error),
                 qPrintable(error));
        QCOMPARE(read.count(), 3);
        QCOMPARE(read.at(0)->getNote(), QString("说明"));
        QCOMPARE(read.at(1)->getValue(2).toString(), QString("养老保险费"));
        QCOMPARE(read.at(1)->getDouble(4), 7.5);
        QCOMPARE(read.at(2)->getKind(), 2);
    }

    void refusalsLeaveTheTableAlone_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("reason");
        QTest::newRow("not json") << QByteArray("{ rows: [") << QString("文件格式错误");
        QTest::newRow("not a template")
            << QByteArray(R"({"rows": []})") << QString("不是内容模板文件");
        QTest::newRow("other list")
            << QByteArray(R"({"format": "Tarvo content template", "tableType": 101, "rows": []})")
            << QString("其他清单");
        QTest::newRow("bad field")
            << QByteArray(R"({"format": "Tarvo content template", "version": 1, "tableType": 104,
                  "rows": [{"kind": 0, "fields": {"2": "甲"}}, {"kind": 0, "fields": {"x": 1}}]})")
            << QString("字段号");
        QTest::newRow("bad row")
            << QByteArray(R"({"format": "Tarvo content template", "version": 1, "tableType": 104,
                  "rows": [{"kind": 0}, 5]})")
            << QString("模板“t”无法使用：/rows/1 的值 5 类型不符");
        QTest::newRow("no rows")
            << QByteArray(R"({"format": "Tarvo content template", "version": 1, "tableType": 104})")
            << QString("缺少必需的项");
        QTest::newRow("empty rows")
            << QByteArray(R"({"format": "Tarvo content template", "version": 1, "tableType": 104,
                  "rows": []})")
            << QString("模板“t”无法使用：/rows 的值 [] 项数少于要求");
        QTest::newRow("other version")
            << QByteArray(R"({"format": "Tarvo content template", "version": 2, "tableType": 104,
                  "rows": [{"kind": 0}]})")
            << QString("模板“t”无法使用：/version 的值 2 不是允许的值");
        QTest::newRow("kind as text")
            << QByteArray(R"({"format": "Tarvo content template", "version": 1, "tableType": 104,
                  "rows": [{"kind": "1"}]})")
            << QString("模板“t”无法使用：/rows/0/kind 的值 \"1\" 类型不符");
    }

    void refusalsLeaveTheTableAlone()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, reason);
        GfSjQdTable table;
        TestProject::row(&table, 0, {{2, "原有"}});
        QString error;
        QVERIFY(!TemplateAccess::ReadTemplateFile(write("t.gfqd", text), &table, GfSjQdTable::Type,
                                                  &error));
        QVERIFY2(error.contains(reason), qPrintable(error));
        QVERIFY(error.contains("“t”"));
        QCOMPARE(table.count(), 1);
    }

    // Every configuration file the program ships validates against the schema of its kind.
    void shippedFilesValidate()
    {
        const QDir app(qEnvironmentVariable("TARVO_APP_PATH"));
        const struct
        {
            QString folder;
            QStringList patterns;
            QString kind;
        } kinds[] = {{"Template/GCSZ", {"*.gfqd", "*.qtxm", "*.lxgz"}, "content-template"},
                     {"Config/TableHeader", {"*.json"}, "table-header"}};
        int checked = 0;
        for (const auto& kind : kinds) {
            for (const QFileInfo& info :
                 QDir(app.filePath(kind.folder)).entryInfoList(kind.patterns, QDir::Files)) {
                QFile file(info.filePath());
                QVERIFY(file.open(QIODevice::ReadOnly));
                QString problem;
                QVERIFY2(JsonSchemaCheck::validate(file.readAll(), kind.kind, &problem),
                         qPrintable(info.fileName() + ": " + problem));
                ++checked;
            }
        }
        QVERIFY(checked >= 15);
    }

    void submittedRelationMarksChangedAndAddedRows()
    {
        TestProject p;
        GfSjQdTable* current = p.current->getTenderInventory()->getGfSjQdTable();
        GfSjQdTable* submitted = p.submitted->getTenderInventory()->getGfSjQdTable();
        TestProject::row(current, 0, {{2, "养老保险费"}, {4, 7.5}});
        TestProject::row(current, 0, {{2, "失业保险费"}, {4, 0.6}});
        TestProject::row(current, 2, {{2, "税金"}});
        TestProject::row(submitted, 0, {{2, "养老保险费"}, {4, 7.5}});
        TestProject::row(submitted, 0, {{2, "失业保险费"}, {4, 0.5}});
        AuditBusiness audit(nullptr);
        audit.SetTableSource(current);
        QCOMPARE(audit.submittedTable(), submitted);
        QCOMPARE(audit.rowState(0), AuditBusiness::Same);
        QCOMPARE(audit.rowState(1), AuditBusiness::Changed);
        QCOMPARE(audit.rowState(2), AuditBusiness::Added);
        audit.SetTableSource(p.plain->getTenderInventory()->getGfSjQdTable());
        QVERIFY(!audit.submittedTable());
        QCOMPARE(audit.rowState(0), AuditBusiness::Same);
    }

    void sampleProjectHasWhatThePagesNeed()
    {
        std::unique_ptr<ProjectWorks> sample = BuildSampleProject();
        const QList<ProTreeNode*> units = sample->unitProjectNodes();
        QVERIFY(units.size() >= 5);
        int withSubmitted = 0;
        for (ProTreeNode* unit : units) {
            withSubmitted += ProTreeNode::CheckWithSSVersion(unit) ? 1 : 0;
            ConstructionWorks* works = sample->works(0, ProTreeNode::Id(unit));
            QVERIFY(works->getRcjHzTable()->count() >= 40);
            for (GeneralTableBase* table : works->getTenderInventory()->tables())
                QVERIFY2(table->count() > 0, qPrintable(ProTreeNode::Name(unit)));
        }
        QCOMPARE(withSubmitted, 1);
        // The same material (name, model, unit) with different adjusted prices across units.
        QHash<QString, QSet<double>> prices;
        for (ProTreeNode* unit : units)
            for (BaseDataItem* m :
                 sample->works(0, ProTreeNode::Id(unit))->getRcjHzTable()->items())
                prices[m->getValue(3).toString() + '|' + m->getValue(4).toString() + '|' +
                       m->getValue(5).toString()]
                    << m->getDouble(7);
        const int inconsistent = int(std::count_if(
            prices.begin(), prices.end(), [](const QSet<double>& s) { return s.size() > 1; }));
        QVERIFY(inconsistent > 10);
    }
};

QTEST_GUILESS_MAIN(tst_TemplateAccess)
#include "tst_TemplateAccess.moc"
