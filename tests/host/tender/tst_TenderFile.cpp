#include "GzipInputDevice.h"
#include "TenderDocument.h"
#include "TenderFileReader.h"
#include "TenderXmlWriter.h"

#include <QBuffer>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <unistd.h>

// The tender data-exchange file: what is written reads back the same, every written file
// validates against the schema, and every bad file is refused with its name and problem.
class tst_TenderFile : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;

    QString write(const QString& name, const QByteArray& bytes)
    {
        const QString path = m_dir.filePath(name);
        QFile f(path);
        if (!f.open(QIODevice::WriteOnly))
            return QString();
        f.write(bytes);
        return path;
    }

    static TenderDocument sample()
    {
        TenderDocument d;
        d.kind = TenderDocument::KindCompletion;
        d.standard = "Tarvo招投标数据交换文件";
        d.projectName = "成都市某学校新建工程";
        d.tenderer = "成都市某学校";
        d.date = "2026-05-01";
        d.tool = "Tarvo";
        d.toolVersion = "0.1";
        d.projectId = "1001";
        d.projectTitle = "成都市某学校新建工程";
        d.provisionalTotal = 1234.56;
        TenderSingleProject s;
        s.id = "2";
        s.name = "教学楼";
        TenderUnitProject u;
        u.id = "3";
        u.name = "建筑与装饰工程";
        u.provisionalTotal = 1234.56;
        TenderMaterial m;
        m.code = "ZG001";
        m.name = "钢筋 <HRB400> & \"甲\"";
        m.spec = "HRB400 Φ12";
        m.unit = "t";
        m.price = 4280.5;
        m.origin = "攀钢";
        m.manufacturer = "攀钢集团";
        m.variety = "螺纹钢";
        m.grade = "一级";
        m.remark = "含运费";
        m.quantity = 0.125;
        m.amount = 535.06;
        u.provisional << m;
        TenderMaterial bare;
        bare.name = "中砂";
        u.provisional << bare;
        s.units << u;
        d.singles << s;
        TenderSingleProject direct; // a unit project right below the construction project
        TenderUnitProject u2;
        u2.id = "9";
        u2.name = "室外工程";
        direct.units << u2;
        d.singles << direct;
        TenderEvaluatedMaterial e;
        e.serial = "1";
        e.code = "PS001";
        e.name = "商品混凝土";
        e.spec = "C30";
        e.unit = "m3";
        e.origin = "成都";
        e.manufacturer = "建工预拌";
        e.variety = "泵送";
        e.grade = "合格";
        e.remark = "备注";
        e.price = 445;
        d.evaluated << e;
        d.evaluatedTotal = 0;
        return d;
    }

    static QString xmlWith(const QString& project, const QString& root = "TenderFile",
                           const QString& version = "1.0")
    {
        return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<" + root + " version=\"" + version +
               "\" kind=\"tender\">\n <Header standard=\"s\"/>\n <Project id=\"1\">\n" + project +
               "\n </Project>\n</" + root + ">\n";
    }

    QString refusal(const QString& name, const QByteArray& bytes)
    {
        const QString path = write(name, bytes);
        TenderDocument d;
        d.projectName = "不应保留";
        QString error;
        if (TenderFileReader::ReadFile(path, &d, &error))
            return "read";
        if (!d.projectName.isEmpty() || d.unitProjectCount() != 0)
            return "document not emptied";
        return error;
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

private slots:
    void initTestCase() { QVERIFY(m_dir.isValid()); }

    void writtenFilesReadBackAndValidate_data()
    {
        QTest::addColumn<bool>("compressed");
        QTest::newRow("plain") << false;
        QTest::newRow("gzip") << true;
    }
    void writtenFilesReadBackAndValidate()
    {
        QFETCH(bool, compressed);
        const TenderDocument d = sample();
        // The suffix says nothing: content decides.
        const QString path = m_dir.filePath(compressed ? "a.cjz" : "a.cjzx");
        QString error;
        QVERIFY2(TenderXmlWriter::WriteFile(path, d, compressed, &error), qPrintable(error));
        QFile f(path);
        QVERIFY(f.open(QIODevice::ReadOnly));
        QCOMPARE(GzipInputDevice::isGzip(f.read(2)), compressed);

        TenderDocument r;
        QVERIFY2(TenderFileReader::ReadFile(path, &r, &error), qPrintable(error));
        QCOMPARE(r.kind, TenderDocument::KindCompletion);
        QCOMPARE(r.standard, d.standard);
        QCOMPARE(r.tenderer, d.tenderer);
        QCOMPARE(r.date, d.date);
        QCOMPARE(r.toolVersion, d.toolVersion);
        QCOMPARE(r.projectId, d.projectId);
        QCOMPARE(r.provisionalTotal, d.provisionalTotal);
        QCOMPARE(r.singles.size(), 2);
        QCOMPARE(r.singles.at(1).id, QString());
        QCOMPARE(r.singles.at(1).units.at(0).name, QString("室外工程"));
        const TenderUnitProject& u = r.singles.at(0).units.at(0);
        QCOMPARE(u.id, QString("3"));
        QCOMPARE(u.provisionalTotal, std::optional<double>(1234.56));
        QCOMPARE(u.provisional.size(), 2);
        const TenderMaterial& m = u.provisional.at(0);
        const TenderMaterial& o = d.singles.at(0).units.at(0).provisional.at(0);
        QCOMPARE(m.name, o.name);
        QCOMPARE(m.spec, o.spec);
        QCOMPARE(m.code, o.code);
        QCOMPARE(m.unit, o.unit);
        QCOMPARE(m.price, o.price);
        QCOMPARE(m.origin, o.origin);
        QCOMPARE(m.manufacturer, o.manufacturer);
        QCOMPARE(m.variety, o.variety);
        QCOMPARE(m.grade, o.grade);
        QCOMPARE(m.remark, o.remark);
        QCOMPARE(m.quantity, o.quantity);
        QCOMPARE(m.amount, o.amount);
        QVERIFY(!u.provisional.at(1).price);
        QCOMPARE(r.evaluated.size(), 1);
        QCOMPARE(r.evaluated.at(0).grade, QString("合格"));
        QCOMPARE(r.evaluated.at(0).price, std::optional<double>(445));
        QCOMPARE(r.evaluatedTotal, std::optional<double>(0));

        if (!compressed) {
            QString output;
            QVERIFY2(validates(path, &output), qPrintable(output));
        }
    }

    void numbersAreWrittenAsPlainDecimals()
    {
        QCOMPARE(TenderXmlWriter::FormatNumber(4280.5), QString("4280.5"));
        QCOMPARE(TenderXmlWriter::FormatNumber(1e15), QString("1000000000000000"));
        QCOMPARE(TenderXmlWriter::FormatNumber(0.1 + 0.2), QString("0.3"));
        QCOMPARE(TenderXmlWriter::FormatNumber(-0.0000001), QString("0"));
        QCOMPARE(TenderXmlWriter::FormatNumber(12), QString("12"));
    }

    void badFilesAreRefusedByNameAndProblem_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("error");
        const QString unit = "<UnitProject id=\"3\" name=\"土建\"><ProvisionalMaterials>%1"
                             "</ProvisionalMaterials></UnitProject>";
        QTest::newRow("not xml") << "a.cjz" << QByteArray("PK\x03\x04 some zip")
                                 << "无法读取招标文件“a.cjz”：内容不是XML格式的招标数据，也不是"
                                    "gzip压缩文件。";
        QTest::newRow("empty") << "b.cjz" << QByteArray()
                               << "无法读取招标文件“b.cjz”：文件是空的。";
        QTest::newRow("gzip of text")
            << "c.cjz" << TenderXmlWriter::Gzip("just text")
            << "无法读取招标文件“c.cjz”：解压后的内容不是XML格式的招标数据。";
        QTest::newRow("broken gzip")
            << "d.cjz" << QByteArray("\x1f\x8b\x08\x00garbagegarbagegarbage", 25)
            << "无法读取招标文件“d.cjz”：压缩数据已损坏。";
        const QByteArray whole = xmlWith(unit.arg("<Material name=\"钢筋\"/>")).toUtf8();
        QTest::newRow("truncated") << "e.cjz" << whole.left(whole.size() - 30)
                                   << "无法读取招标文件“e.cjz”：文件不完整（内容在第5行处中断）。";
        QTest::newRow("truncated gzip") << "f.cjz" << TenderXmlWriter::Gzip(whole).left(40)
                                        << "无法读取招标文件“f.cjz”：压缩数据不完整。";
        QTest::newRow("wrong root")
            << "g.cjz" << xmlWith("", "Workbook").toUtf8()
            << "无法读取招标文件“g.cjz”：第2行：根元素为“Workbook”，不是招标数据文件的"
               "TenderFile。";
        QTest::newRow("unknown version")
            << "h.cjz" << xmlWith("", "TenderFile", "2.0").toUtf8()
            << "无法读取招标文件“h.cjz”：第2行：标准版本“2.0”无法识别，本程序读取版本1.0。";
        QTest::newRow("duplicate unit id")
            << "i.cjz" << xmlWith(unit.arg("") + "\n" + unit.arg("")).toUtf8()
            << "无法读取招标文件“i.cjz”：第6行：单位工程编号“3”重复。";
        QTest::newRow("material without name")
            << "j.cjz" << xmlWith(unit.arg("\n<Material code=\"ZG1\" name=\" \"/>")).toUtf8()
            << "无法读取招标文件“j.cjz”：第6行：单位工程“土建”的材料缺少名称。";
        QTest::newRow("price not a number")
            << "k.cjz" << xmlWith(unit.arg("\n<Material name=\"钢筋\" price=\"四千\"/>")).toUtf8()
            << "无法读取招标文件“k.cjz”：第6行：暂估单价“四千”不是数字。";
        QTest::newRow("price infinite")
            << "l.cjz" << xmlWith(unit.arg("\n<Material name=\"钢筋\" price=\"inf\"/>")).toUtf8()
            << "无法读取招标文件“l.cjz”：第6行：暂估单价“inf”不是数字。";
        QTest::newRow("unknown element")
            << "m.cjz" << xmlWith("<Script/>").toUtf8()
            << "无法读取招标文件“m.cjz”：第5行：不应出现元素“Script”。";
        QTest::newRow("entity bomb")
            << "n.cjz"
            << QByteArray("<?xml version=\"1.0\"?>\n<!DOCTYPE TenderFile [\n"
                          "<!ENTITY a \"aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa\">\n"
                          "<!ENTITY b \"&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;\">\n"
                          "<!ENTITY c \"&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;\">\n"
                          "]>\n<TenderFile version=\"1.0\" kind=\"tender\">&c;</TenderFile>\n")
            << "无法读取招标文件“n.cjz”：第6行：文件含有文档类型声明（DTD），本系统的招标数据文件"
               "不允许使用。";
        QTest::newRow("external entity")
            << "o.cjz"
            << QByteArray("<?xml version=\"1.0\"?>\n<!DOCTYPE TenderFile SYSTEM "
                          "\"file:///etc/passwd\">\n<TenderFile/>\n")
            << "无法读取招标文件“o.cjz”：第2行：文件含有文档类型声明（DTD），本系统的招标数据文件"
               "不允许使用。";
        QTest::newRow("not well formed")
            << "p.cjz"
            << QByteArray("<TenderFile version=\"1.0\" kind=\"tender\"><Header>")
                   .append("</Project></TenderFile>")
            << "";
        QTest::newRow("unknown kind")
            << "q.cjz" << xmlWith("").replace("kind=\"tender\"", "kind=\"bill\"").toUtf8()
            << "无法读取招标文件“q.cjz”：第2行：文件类别“bill”无法识别。";
        QTest::newRow("text too long")
            << "r.cjz"
            << xmlWith(unit.arg("<Material name=\"" + QString(2001, 'x') + "\"/>")).toUtf8()
            << "无法读取招标文件“r.cjz”：第5行：属性name的内容超过2000个字符。";
        // A material's attributes are checked in one order, whatever order the file has.
        QTest::newRow("two bad numbers, later written first")
            << "t.cjz"
            << xmlWith(unit.arg("\n<Material amount=\"x\" price=\"y\" name=\"钢筋\"/>")).toUtf8()
            << "无法读取招标文件“t.cjz”：第6行：暂估单价“y”不是数字。";
        QTest::newRow("long text after a bad number")
            << "u.cjz"
            << xmlWith(unit.arg("\n<Material quantity=\"x\" name=\"钢筋\" spec=\"" +
                                QString(2001, 'x') + "\"/>"))
                   .toUtf8()
            << "无法读取招标文件“u.cjz”：第6行：属性spec的内容超过2000个字符。";
        QTest::newRow("no project")
            << "s.cjz"
            << QByteArray("<TenderFile version=\"1.0\" kind=\"tender\"><Header/></TenderFile>")
            << "无法读取招标文件“s.cjz”：缺少工程（Project）。";
    }
    void badFilesAreRefusedByNameAndProblem()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, bytes);
        QFETCH(QString, error);
        const QString got = refusal(name, bytes);
        if (error.isEmpty())
            QVERIFY2(got.startsWith("无法读取招标文件“" + name + "”：XML格式错误（第1行"),
                     qPrintable(got));
        else
            QCOMPARE(got, error);
    }

    void missingAndOversizedFiles()
    {
        TenderDocument d;
        QString error;
        QVERIFY(!TenderFileReader::ReadFile(m_dir.filePath("none.cjz"), &d, &error));
        QCOMPARE(error, QString("无法读取招标文件“none.cjz”：文件不存在。"));
        // A sparse 2 GiB file: refused by its size before a byte is read.
        const QString big = m_dir.filePath("big.cjz");
        QFile f(big);
        QVERIFY(f.open(QIODevice::WriteOnly));
        QVERIFY(f.resize(qint64(2) << 30));
        f.close();
        QVERIFY(!TenderFileReader::ReadFile(big, &d, &error));
        QCOMPARE(error, QString("无法读取招标文件“big.cjz”：文件过大（2048 MB），招标数据文件不能"
                                "超过256 MB。"));
    }

    void bombsStopEarly()
    {
        // 64 MiB of one attribute compresses to some 64 KB; the reader gives up after a few
        // megabytes of a single token instead of holding it.
        QByteArray head = "<TenderFile version=\"1.0\" kind=\"tender\"><Header standard=\"";
        z_stream s{};
        QVERIFY(deflateInit2(&s, 9, Z_DEFLATED, 31, 9, Z_DEFAULT_STRATEGY) == Z_OK);
        QByteArray out;
        QByteArray chunk(1 << 20, 'a');
        QByteArray buffer(1 << 20, 0);
        auto pump = [&](const QByteArray& in, int flush) {
            s.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(in.constData()));
            s.avail_in = uInt(in.size());
            do {
                s.next_out = reinterpret_cast<Bytef*>(buffer.data());
                s.avail_out = uInt(buffer.size());
                deflate(&s, flush);
                out.append(buffer.constData(), buffer.size() - int(s.avail_out));
            } while (s.avail_out == 0);
        };
        pump(head, Z_NO_FLUSH);
        for (int i = 0; i < 64; ++i)
            pump(chunk, Z_NO_FLUSH);
        pump(QByteArray("\"/></TenderFile>"), Z_FINISH);
        deflateEnd(&s);
        QVERIFY(out.size() < 1 << 20);
        QCOMPARE(refusal("bomb.cjz", out),
                 QString("无法读取招标文件“bomb.cjz”：第1行：单个元素或文字超过4 MB。"));

        // However small the tokens, decompression stops at the content limit.
        QBuffer compressed(&out);
        QVERIFY(compressed.open(QIODevice::ReadOnly));
        GzipInputDevice gzip(&compressed, 1 << 20);
        QVERIFY(gzip.open(QIODevice::ReadOnly));
        qint64 total = 0;
        QByteArray piece(100000, 0);
        qint64 got = 0;
        while ((got = gzip.read(piece.data(), piece.size())) > 0)
            total += got;
        QVERIFY(total <= (1 << 20) + piece.size());
        QVERIFY(gzip.limitExceeded());
        QCOMPARE(gzip.problem(), QString("解压后的内容超过1 MB的上限"));
    }
};

QTEST_GUILESS_MAIN(tst_TenderFile)
#include "tst_TenderFile.moc"
