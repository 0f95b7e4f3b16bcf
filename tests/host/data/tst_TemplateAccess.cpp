#include "TestFiles.h"
#include "TestProject.h"

#include "AuditBusiness.h"
#include "TemplateAccess.h"

#include <QTemporaryDir>
#include <QtTest>

// Content-template files and the submitted-version relation.
class tst_TemplateAccess : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;

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
        QVERIFY(!TemplateAccess::ReadTemplateFile(TestFiles::write(m_dir.filePath("t.gfqd"), text),
                                                  &table, GfSjQdTable::Type, &error));
        QVERIFY2(error.contains(reason), qPrintable(error));
        QVERIFY(error.contains("“t”"));
        QCOMPARE(table.count(), 1);
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
};

QTEST_GUILESS_MAIN(tst_TemplateAccess)
#include "tst_TemplateAccess.moc"
