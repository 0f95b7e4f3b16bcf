#include "TestFiles.h"
#include "TestProject.h"

#include "ProjectFile.h"
#include "VariantStream.h"

#include <QDataStream>
#include <QTemporaryDir>
#include <QtEndian>
#include <QtTest>

// Crafted and damaged project files: each is refused whole with a message that names the file
// and the reason, without crashing, hanging or allocating what the file merely claims.
class tst_ProjectFileHostile : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;
    QString path(const QString& name) const { return m_dir.filePath(name); }

    // A field entry of the row encoding holding raw QDataStream bytes ("other" type).
    static QByteArray otherField(int field, const QByteArray& stream)
    {
        QByteArray bytes;
        bytes.append(char(field)).append(char(5));
        const quint32 size = qToLittleEndian(quint32(stream.size()));
        bytes.append(reinterpret_cast<const char*>(&size), 4).append(stream);
        return bytes;
    }
    static QByteArray be32(quint32 v)
    {
        const quint32 raw = qToBigEndian(v);
        return QByteArray(reinterpret_cast<const char*>(&raw), 4);
    }
    // A variant header: type id and the null flag.
    static QByteArray variantHead(quint32 type) { return be32(type) + QByteArray(1, '\0'); }

    // The statement that gives the second row of the saved sample these encoded fields.
    static QString setFields(const QByteArray& fields)
    {
        return "UPDATE row SET fields = x'" + QString::fromLatin1(fields.toHex()) +
               "' WHERE rowid = 2";
    }

    // Copies the saved sample, changes the copy with plain SQL, and expects it refused with
    // a message naming the file and the reason.
    void expectRefusal(const QString& name, const QStringList& statements, const QString& reason)
    {
        const QString file = path(name);
        QCOMPARE(TestFiles::copyWithSql(path("base.tarvo"), file, statements), QString());
        expectRefusal(file, reason);
    }
    void expectRefusal(const QString& file, const QString& reason)
    {
        QString error;
        QVERIFY(!ProjectFile::Open(file, &error));
        QVERIFY2(error.startsWith(
                     QStringLiteral("无法打开工程文件“%1”：").arg(QFileInfo(file).fileName())),
                 qPrintable(error));
        QVERIFY2(error.contains(reason), qPrintable(error));
        QVERIFY2(!error.contains(QStringLiteral("（）")), qPrintable(error));
    }

private slots:
    void initTestCase()
    {
        TestProject p;
        for (int i = 0; i < 5; ++i)
            TestProject::row(p.current->getRcjHzTable(), 1,
                             {{3, QStringLiteral("材料%1").arg(i)}, {9, i * 1.5}});
        QString error;
        QVERIFY2(ProjectFile::Save(p.project, path(QStringLiteral("base.tarvo")), &error),
                 qPrintable(error));
        QVERIFY(ProjectFile::Open(path(QStringLiteral("base.tarvo")), &error));
    }

    void malformedFieldsRefuseTheFileNamingTheRow_data()
    {
        QTest::addColumn<QByteArray>("fields");
        QTest::addColumn<QString>("reason");
        QTest::newRow("cut double") << QByteArray("\x03\x01\x00\x00", 4)
                                    << QStringLiteral("第2行：字段无法解读：数据不完整");
        QTest::newRow("unknown type")
            << QByteArray("\x03\x09", 2) << QStringLiteral("字段3的类型9无效");
        QTest::newRow("text longer than the row")
            << QByteArray("\x03\x03\xff\xff\xff\x7f", 6) << QStringLiteral("字段3的长度");
        QTest::newRow("string with trailing bytes")
            << otherField(3, variantHead(QMetaType::QString) + be32(2) + "ab" + "zz")
            << QStringLiteral("数据末尾有多余内容");
        QTest::newRow("odd string length")
            << otherField(3, variantHead(QMetaType::QString) + be32(3) + "abc")
            << QStringLiteral("文字长度3无效");
        // Claimed sizes are not allocated, nesting is not followed down, widget types are
        // never decoded.
        QTest::newRow("huge list count")
            << otherField(3, variantHead(QMetaType::QVariantList) + be32(0x7fffffff))
            << QStringLiteral(
                   "数据表“row”第2行：字段无法解读：字段3：元素个数2147483647超出数据长度");
        QByteArray nested;
        for (int i = 0; i < 50000; ++i)
            nested += variantHead(QMetaType::QVariantList) + be32(1);
        QTest::newRow("deep nesting") << otherField(3, nested + variantHead(QMetaType::UnknownType))
                                      << QStringLiteral("嵌套超过16层");
        QTest::newRow("bitmap") << otherField(3, variantHead(QMetaType::QBitmap) +
                                                     QByteArray(64, '\x01'))
                                << QStringLiteral("不允许的数据类型73");
    }
    void malformedFieldsRefuseTheFileNamingTheRow()
    {
        QFETCH(QByteArray, fields);
        QFETCH(QString, reason);
        expectRefusal("fields.tarvo", {setFields(fields)}, reason);
    }

    void craftedStructureIsRefused_data()
    {
        QTest::addColumn<QStringList>("statements");
        QTest::addColumn<QString>("reason");
        QTest::newRow("recursive view named row")
            << QStringList{QStringLiteral("DROP TABLE row"),
                           QStringLiteral(
                               "CREATE VIEW row(node_id, audit, table_type, ord, kind, block, "
                               "height, note, fields) AS WITH RECURSIVE r(n) AS (SELECT 1 UNION "
                               "ALL SELECT n+1 FROM r) SELECT 3,0,201,n,1,0,0,NULL,NULL FROM r")}
            << QStringLiteral("“row”不是普通数据表");
        QTest::newRow("missing table")
            << QStringList{QStringLiteral("DROP TABLE list")} << QStringLiteral("缺少数据表“list”");
        QTest::newRow("other columns")
            << QStringList{QStringLiteral("DROP TABLE list"),
                           QStringLiteral("CREATE TABLE list(node_id, audit, locked)")}
            << QStringLiteral("数据表“list”的列（node_id、audit、locked）与本程序不符");
        QTest::newRow("node type 2")
            << QStringList{QStringLiteral("UPDATE node SET type = 2 WHERE id = 4")}
            << QStringLiteral("数据表“node”第4行：列“type”的值“2”无效");
        QTest::newRow("node type -1")
            << QStringList{QStringLiteral("UPDATE node SET type = -1 WHERE id = 4")}
            << QStringLiteral("列“type”的值“-1”无效");
        QTest::newRow("unit under unit")
            << QStringList{QStringLiteral("UPDATE node SET parent_id = 3 WHERE id = 4")}
            << QStringLiteral("节点“电气工程”不能位于单位工程之下");
        QTest::newRow("single project under a single project")
            << QStringList{QStringLiteral("INSERT INTO node VALUES(9, 2, 1, '附楼', 9, 0)")}
            << QStringLiteral("单项工程“附楼”只能位于建设项目之下");
        QTest::newRow("works on a single project")
            << QStringList{QStringLiteral("INSERT INTO works VALUES(2, 0, '教学楼', NULL, NULL)")}
            << QStringLiteral("单项工程“教学楼”不能有工程数据");
        QTest::newRow("duplicate node ids")
            << QStringList{QStringLiteral("ALTER TABLE node RENAME TO old"),
                           QStringLiteral("CREATE TABLE node(id INTEGER, parent_id INTEGER, type "
                                          "INTEGER, name TEXT, ord INTEGER, submitted INTEGER)"),
                           QStringLiteral("INSERT INTO node SELECT * FROM old"),
                           QStringLiteral("INSERT INTO node VALUES(4, 2, 0, '重复', 5, 0)"),
                           QStringLiteral("DROP TABLE old")}
            << QStringLiteral("工程节点编号4重复");
        QTest::newRow("duplicate works")
            << QStringList{QStringLiteral("ALTER TABLE works RENAME TO old"),
                           QStringLiteral("CREATE TABLE works(node_id INTEGER, audit INTEGER, "
                                          "name TEXT, xtbl BLOB, config BLOB)"),
                           QStringLiteral("INSERT INTO works SELECT * FROM old"),
                           QStringLiteral("INSERT INTO works SELECT * FROM old WHERE node_id=4"),
                           QStringLiteral("DROP TABLE old")}
            << QStringLiteral("工程节点4的工程数据重复");
        QTest::newRow("parent missing")
            << QStringList{QStringLiteral("UPDATE node SET parent_id = 99 WHERE id = 4")}
            << QStringLiteral("上级节点99不存在");
        QTest::newRow("rows of an unknown table")
            << QStringList{QStringLiteral("UPDATE row SET table_type = 999 WHERE rowid = 1")}
            << QStringLiteral("数据表“row”第1行：表格数据与结构不符");
        QTest::newRow("lock of an unknown table")
            << QStringList{QStringLiteral("INSERT INTO list VALUES(3, 0, 999, 1)")}
            << QStringLiteral("表格999不存在");
        QTest::newRow("row height beyond 16 bits")
            << QStringList{QStringLiteral("UPDATE row SET height = 70000 WHERE rowid = 3")}
            << QStringLiteral("数据表“row”第3行：列“height”的值“70000”无效");
        QTest::newRow("text where a number belongs")
            << QStringList{QStringLiteral("UPDATE row SET kind = 'abc' WHERE rowid = 3")}
            << QStringLiteral("列“kind”的值“abc”无效");
        QTest::newRow("empty project table") << QStringList{QStringLiteral("DELETE FROM project")}
                                             << QStringLiteral("数据表“project”没有工程记录");
        QTest::newRow("two projects")
            << QStringList{QStringLiteral("INSERT INTO project SELECT * FROM project")}
            << QStringLiteral("数据表“project”有多条工程记录");
        QTest::newRow("missing version")
            << QStringList{QStringLiteral("DELETE FROM meta WHERE key = 'schema_version'")}
            << QStringLiteral("文件已损坏（没有记录工程文件的版本）。");
        QTest::newRow("unreadable version")
            << QStringList{QStringLiteral(
                   "UPDATE meta SET value = 'v1' WHERE key = 'schema_version'")}
            << QStringLiteral("工程文件的版本“v1”无法识别");
        QTest::newRow("configuration that does not decode")
            << QStringList{QStringLiteral("UPDATE works SET xtbl = x'0000FFFF' WHERE node_id = 3")}
            << QStringLiteral("列“xtbl”无法解读：元素个数65535超出数据长度");
    }
    void craftedStructureIsRefused()
    {
        QFETCH(QStringList, statements);
        QFETCH(QString, reason);
        expectRefusal("structure.tarvo", statements, reason);
    }

    void damagedPagesFailTheIntegrityCheck()
    {
        // Overwrite the middle of every page after the schema page: SQLite still opens the
        // file, and its own check finds the damage before any content is read.
        const QString file = path(QStringLiteral("damaged.tarvo"));
        QFile::remove(file);
        QVERIFY(QFile::copy(path(QStringLiteral("base.tarvo")), file));
        QFile f(file);
        QVERIFY(f.open(QIODevice::ReadWrite));
        const qint64 pageSize = 4096;
        for (qint64 page = 1; page * pageSize < f.size(); ++page) {
            f.seek(page * pageSize + 8);
            f.write(QByteArray(200, '\x7f'));
        }
        f.close();
        expectRefusal(file, QStringLiteral("文件已损坏（数据库完整性检查"));
        // The user reads what happened and what to do before the database's own words.
        QString error;
        QVERIFY(!ProjectFile::Open(file, &error));
        const int advice = error.indexOf(QStringLiteral("请改用该工程的备份文件"));
        const int technical = error.indexOf(QStringLiteral("\n技术信息："));
        QVERIFY2(advice > 0 && technical > advice, qPrintable(error));
        QVERIFY2(!error.left(technical)
                      .remove(QStringLiteral("damaged.tarvo"))
                      .contains(QRegularExpression(QStringLiteral("[A-Za-z]"))),
                 qPrintable(error));
    }

    void readerAcceptsWhatSavingWrites()
    {
        const QVariantMap map{{QStringLiteral("a"), QVariantList{1, 2.5, QStringLiteral("x")}},
                              {QStringLiteral("b"), QDate(2024, 5, 1)},
                              {QStringLiteral("c"), QStringList{QStringLiteral("甲")}},
                              {QStringLiteral("d"), QByteArray("\x00\x01", 2)},
                              {QStringLiteral("e"), QDateTime(QDate(2024, 1, 2), QTime(3, 4))}};
        QByteArray bytes;
        {
            QDataStream out(&bytes, QIODevice::WriteOnly);
            out.setVersion(QDataStream::Qt_5_15);
            out << QVariant(map);
        }
        QVariant back;
        QString why;
        QVERIFY2(VariantStream::readVariant(bytes, &back, &why), qPrintable(why));
        QCOMPARE(back.toMap(), map);
        // Widget types are refused however they are written.
        QVERIFY(
            !VariantStream::readVariant(variantHead(QMetaType::QPixmap) + be32(0), &back, &why));
        QVERIFY(!VariantStream::readVariant(variantHead(QMetaType::User) + be32(4) + "QPen", &back,
                                            &why));
    }
};

QTEST_GUILESS_MAIN(tst_ProjectFileHostile)
#include "tst_ProjectFileHostile.moc"
