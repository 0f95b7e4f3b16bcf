#include "HeaderColumn.h"

#include <QDir>
#include <QFile>
#include <QSet>
#include <QtTest>

// The table-header file format, and the configurations shipped for the six lists.
class tst_HeaderConfig : public QObject
{
    Q_OBJECT

private slots:
    void roundTripKeepsEverything()
    {
        HeaderConfig config;
        config.listName = "规费清单";
        config.fontFamily = "SimHei";
        config.fontPointSize = 11;
        config.rowHeight = 28;
        config.columns = {
            HeaderColumn{1, "序号", 50, Qt::AlignCenter, true},
            HeaderColumn{5, "金额(元)", 120, Qt::AlignRight | Qt::AlignVCenter, false},
            HeaderColumn{7, "备注", 90, Qt::AlignLeft | Qt::AlignVCenter, true}};
        QString error;
        const HeaderConfig back = HeaderConfig::fromJson(config.toJson(), &error);
        QVERIFY2(back.isValid(), qPrintable(error));
        QCOMPARE(back.listName, config.listName);
        QCOMPARE(back.fontFamily, QString("SimHei"));
        QCOMPARE(back.fontPointSize, 11);
        QCOMPARE(back.rowHeight, 28);
        QCOMPARE(back.columns.size(), 3);
        for (int i = 0; i < 3; ++i) {
            QCOMPARE(back.columns.at(i).field, config.columns.at(i).field);
            QCOMPARE(back.columns.at(i).title, config.columns.at(i).title);
            QCOMPARE(back.columns.at(i).width, config.columns.at(i).width);
            QCOMPARE(back.columns.at(i).align, config.columns.at(i).align);
            QCOMPARE(back.columns.at(i).visible, config.columns.at(i).visible);
        }
    }

    void defaultsForWhatIsLeftOut()
    {
        QString error;
        const HeaderConfig c =
            HeaderConfig::fromJson(R"({"columns":[{"field":0,"title":"名称"}]})", &error);
        QVERIFY(c.isValid());
        QCOMPARE(c.fontFamily, QString("SimSun"));
        QCOMPARE(c.fontPointSize, 9);
        QCOMPARE(c.rowHeight, 22);
        QCOMPARE(c.columns.first().field, 0);
        QCOMPARE(c.columns.first().width, 80);
        QCOMPARE(c.columns.first().align, Qt::AlignLeft | Qt::AlignVCenter);
        QVERIFY(c.columns.first().visible);
    }

    // Refusals name the JSON pointer and the value as written: nothing is replaced by a default.
    void badFilesAreRefusedWithTheReason_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<QString>("error");
        QTest::newRow("not json") << QByteArray("{\"columns\": [")
                                  << QString("表头配置无效：不是有效的JSON（第13字节：");
        QTest::newRow("array root")
            << QByteArray("[]") << QString("表头配置无效：/ 的值 [] 类型不符");
        QTest::newRow("no columns")
            << QByteArray("{\"listName\":\"x\"}")
            << QString("表头配置无效：/ 的值 {\"listName\":\"x\"} 缺少必需的项");
        QTest::newRow("empty columns") << QByteArray("{\"columns\":[]}")
                                       << QString("表头配置无效：/columns 的值 [] 项数少于要求");
        QTest::newRow("columns object")
            << QByteArray("{\"columns\":{\"field\":1}}")
            << QString("表头配置无效：/columns 的值 {\"field\":1} 类型不符");
        QTest::newRow("no field")
            << QByteArray(R"({"columns":[{"title":"金额"}]})")
            << QString("表头配置无效：/columns/0 的值 {\"title\":\"金额\"} 缺少必需的项");
        QTest::newRow("field as text")
            << QByteArray(R"({"columns":[{"field":"3","title":"金额"}]})")
            << QString("表头配置无效：/columns/0/field 的值 \"3\" 类型不符");
        QTest::newRow("fractional field")
            << QByteArray(R"({"columns":[{"field":2.5,"title":"金额"}]})")
            << QString("表头配置无效：/columns/0/field 的值 2.5 类型不符");
        QTest::newRow("negative field")
            << QByteArray(R"({"columns":[{"field":-1,"title":"金额"}]})")
            << QString("表头配置无效：/columns/0/field 的值 -1 小于允许的最小值");
        QTest::newRow("huge field")
            << QByteArray(R"({"columns":[{"field":1e10}]})")
            << QString("表头配置无效：/columns/0/field 的值 10000000000.0 类型不符");
        QTest::newRow("zero width")
            << QByteArray(R"({"columns":[{"field":3,"title":"金额","width":0}]})")
            << QString("表头配置无效：/columns/0/width 的值 0 小于允许的最小值");
        QTest::newRow("width as text")
            << QByteArray(R"({"columns":[{"field":3,"width":"abc"}]})")
            << QString("表头配置无效：/columns/0/width 的值 \"abc\" 类型不符");
        QTest::newRow("visible as text")
            << QByteArray(R"({"columns":[{"field":3,"visible":"no"}]})")
            << QString("表头配置无效：/columns/0/visible 的值 \"no\" 类型不符");
        QTest::newRow("bad align")
            << QByteArray(R"({"columns":[{"field":3,"title":"金额","align":"middle"}]})")
            << QString("表头配置无效：/columns/0/align 的值 \"middle\" 不是允许的值");
        QTest::newRow("row height") << QByteArray(R"({"rowHeight":0,"columns":[{"field":3}]})")
                                    << QString("表头配置无效：/rowHeight 的值 0 小于允许的最小值");
        QTest::newRow("row height as text")
            << QByteArray(R"({"rowHeight":"24","columns":[{"field":3}]})")
            << QString("表头配置无效：/rowHeight 的值 \"24\" 类型不符");
        QTest::newRow("font size") << QByteArray(R"({"font":{"size":-4},"columns":[{"field":3}]})")
                                   << QString("表头配置无效：/font/size 的值 -4 小于允许的最小值");
        QByteArray deep;
        for (int i = 0; i < 50000; ++i)
            deep += "[";
        QTest::newRow("deep nesting")
            << QByteArray("{\"columns\":" + deep) << QString("表头配置无效：不是有效的JSON");
    }

    void badFilesAreRefusedWithTheReason()
    {
        QFETCH(QByteArray, json);
        QFETCH(QString, error);
        QString reported;
        const HeaderConfig c = HeaderConfig::fromJson(json, &reported);
        QVERIFY(!c.isValid());
        QVERIFY2(reported.startsWith(error), qPrintable(reported));
        QVERIFY(!HeaderConfig::fromJson(json, nullptr).isValid()); // no error pointer is fine
    }

    // Every shipped configuration loads, is named as its file, starts with the serial number
    // and only uses field numbers its table has.
    void shippedConfigurations_data()
    {
        QTest::addColumn<QString>("list");
        QTest::addColumn<QList<int>>("fields");
        QTest::newRow("other items") << "其他项目清单" << QList<int>{1, 2, 3, 4, 5};
        QTest::newRow("tenderer-purchased")
            << "招标人材料购置费清单" << QList<int>{1, 2, 3, 4, 5, 6, 7, 9, 10, 12, 13, 15};
        QTest::newRow("daywork") << "零星工作项目人工单价清单" << QList<int>{1, 2, 3, 4, 5, 6, 7};
        QTest::newRow("fees") << "规费清单" << QList<int>{1, 2, 3, 4, 5, 6, 7};
        QTest::newRow("provisional")
            << "暂估材料(工程设备)清单"
            << QList<int>{1, 2, 3, 4, 5, 6, 7, 11, 8, 9, 10, 12, 13, 14, 15};
        QTest::newRow("evaluated")
            << "需评审的材料清单" << QList<int>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 12, 13, 14, 15};
    }

    void shippedConfigurations()
    {
        QFETCH(QString, list);
        QFETCH(QList<int>, fields);
        // cleanPath: tests/data need not exist in a fresh clone.
        QFile file(
            QDir::cleanPath(QStringLiteral(TEST_DATA_DIR "/../../appdir/Config/TableHeader")) +
            QLatin1Char('/') + list + ".json");
        QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(file.fileName()));
        QString error;
        const HeaderConfig c = HeaderConfig::fromJson(file.readAll(), &error);
        QVERIFY2(c.isValid(), qPrintable(error));
        QCOMPARE(c.listName, list);
        QCOMPARE(c.columns.first().field, 1);
        QCOMPARE(c.columns.first().title, QString("序号"));
        QSet<int> seen;
        for (const HeaderColumn& column : c.columns) {
            QVERIFY2(fields.contains(column.field), qPrintable(column.title));
            QVERIFY2(!seen.contains(column.field), qPrintable(column.title));
            seen.insert(column.field);
            QVERIFY(!column.title.isEmpty());
            QVERIFY(column.width >= 40);
        }
    }
};

QTEST_GUILESS_MAIN(tst_HeaderConfig)
#include "tst_HeaderConfig.moc"
