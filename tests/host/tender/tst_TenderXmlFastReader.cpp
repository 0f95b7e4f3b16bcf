#include "GzipInputDevice.h"
#include "TenderDocument.h"
#include "TenderXmlFastReader.h"
#include "TenderXmlReader.h"
#include "TenderXmlWriter.h"

#include <QBuffer>
#include <QDir>
#include <QtTest>

// The quick reader against the thorough one: whatever a file holds, reading it the way users
// do (quick, else thorough) gives the same document or the same message as reading it
// thoroughly, and the files Tarvo writes and ships take the quick way.
class tst_TenderXmlFastReader : public QObject
{
    Q_OBJECT

private:
    // Hands out at most a few bytes a call, so that every token is cut somewhere.
    class Trickle : public QBuffer
    {
    public:
        explicit Trickle(QByteArray* bytes) : QBuffer(bytes) {}

    protected:
        qint64 readData(char* data, qint64 maxSize) override
        {
            return QBuffer::readData(data, qMin<qint64>(maxSize, 7));
        }
    };

    struct Result
    {
        bool ok = false;
        TenderDocument document;
        QString problem;
    };

    static Result thorough(QByteArray bytes)
    {
        Result r;
        QBuffer b(&bytes);
        b.open(QIODevice::ReadOnly);
        r.ok = TenderXmlReader::ReadThorough(&b, &r.document, &r.problem);
        return r;
    }

    static Result asUsersRead(QIODevice* device)
    {
        Result r;
        r.ok = TenderXmlReader().read(device, &r.document, &r.problem);
        return r;
    }

    static Result asUsersRead(QByteArray bytes)
    {
        QBuffer b(&bytes);
        b.open(QIODevice::ReadOnly);
        return asUsersRead(&b);
    }

    // Small files trickle in, large ones come in blocks (a token cut a byte at a time is
    // scanned again each time, which is fine for blocks and slow for bytes).
    static bool quick(QByteArray bytes, TenderDocument* document)
    {
        QBuffer whole(&bytes);
        Trickle trickle(&bytes);
        QBuffer* b = bytes.size() < 100000 ? &trickle : &whole;
        b->open(QIODevice::ReadOnly | QIODevice::Unbuffered);
        return TenderXmlFastReader::Read(b, document);
    }

    // Empty when the two readings agree, else what differs.
    static QString disagreement(const QByteArray& bytes)
    {
        const Result a = asUsersRead(bytes);
        const Result b = thorough(bytes);
        if (a.ok != b.ok || a.problem != b.problem)
            return QStringLiteral("%1 / %2").arg(a.ok ? QStringLiteral("read") : a.problem,
                                                 b.ok ? QStringLiteral("read") : b.problem);
        if (!(a.document == b.document))
            return QStringLiteral("documents differ");
        return QString();
    }

    // Units and materials whose texts need every kind of escape the writer makes.
    static TenderDocument generated(int units, int materials)
    {
        TenderDocument d;
        d.standard = QStringLiteral("Tarvo招投标数据交换文件");
        d.projectName = QStringLiteral("成都市<某>学校 & \"新建\" '工程'");
        d.tenderer = QStringLiteral("甲\t乙\n丙");
        d.date = QStringLiteral("2026-05-01");
        d.projectId = QStringLiteral("P1");
        d.provisionalTotal = 12345678.125;
        d.singles.resize(2);
        d.singles[0].id = QStringLiteral("S1");
        d.singles[0].name = QStringLiteral("教学楼");
        for (int u = 0; u < units; ++u) {
            TenderUnitProject unit;
            unit.id = QStringLiteral("DW%1").arg(u);
            unit.name = QStringLiteral("单位工程%1 𠀀").arg(u);
            unit.provisionalTotal = u % 2 ? std::optional<double>(-0.5) : std::nullopt;
            for (int m = 0; m < materials; ++m) {
                TenderMaterial t;
                t.code = m % 5 ? QStringLiteral("ZG%1").arg(m) : QString();
                t.name = m % 3 ? QStringLiteral("商品混凝土") : QStringLiteral("钢筋>Φ&");
                t.spec = QStringLiteral("HRB400 Φ%1×%2").arg(m).arg(u);
                t.unit = QStringLiteral("m³");
                t.price = 4000.123456 + m;
                t.quantity = m % 4 ? std::optional<double>(m * 0.001) : std::nullopt;
                t.remark = m % 7 ? QString() : QStringLiteral("含\r\n运费");
                unit.provisional << t;
            }
            d.singles[u % 2].units << unit;
        }
        TenderEvaluatedMaterial e;
        e.serial = QStringLiteral("1");
        e.name = QStringLiteral("预拌砂浆");
        e.price = 320;
        d.evaluated << e;
        return d;
    }

private slots:
    void filesTarvoWritesAndShipsTakeTheQuickWay()
    {
        QList<QByteArray> files;
        const QDir samples(QStringLiteral(SAMPLES_DIR));
        for (const QString& name : samples.entryList({QStringLiteral("*.cjz")})) {
            QFile f(samples.filePath(name));
            QVERIFY(f.open(QIODevice::ReadOnly));
            files << f.readAll();
        }
        QCOMPARE(files.size(), 2);
        files << TenderXmlWriter::ToXml(generated(3, 40)) << TenderXmlWriter::ToXml(generated(0, 0))
              << TenderXmlWriter::ToXml(TenderDocument());
        for (const QByteArray& bytes : files) {
            TenderDocument quickly;
            QVERIFY(quick(bytes, &quickly));
            const Result slowly = thorough(bytes);
            QVERIFY2(slowly.ok, qPrintable(slowly.problem));
            QVERIFY(quickly == slowly.document);
        }
        // Blocks of a megabyte: a tender of several crosses their borders.
        const QByteArray big = TenderXmlWriter::ToXml(generated(12, 2000));
        QVERIFY(big.size() > 2 << 20);
        QBuffer b;
        b.setData(big);
        b.open(QIODevice::ReadOnly);
        TenderDocument quickly;
        QVERIFY(TenderXmlFastReader::Read(&b, &quickly));
        QVERIFY(quickly == thorough(big).document);
    }

    // XML written by hand or by other tools: what the quick reader takes it must take right,
    // the rest goes to the thorough reader.
    void handWrittenXmlReadsAsTheThoroughReaderReadsIt_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<bool>("quickly");
        const QByteArray head = "<TenderFile version=\"1.0\" kind=\"tender\"><Header/>"
                                "<Project id=\"1\"><UnitProject id=\"3\" name=\"土建\">"
                                "<ProvisionalMaterials>";
        const QByteArray tail = "</ProvisionalMaterials></UnitProject></Project></TenderFile>";
        auto with = [&](const QByteArray& material) { return QByteArray(head + material + tail); };
        QTest::newRow("declaration, BOM, comments, CRLF")
            << QByteArray(
                   "\xEF\xBB\xBF<?xml version='1.0' encoding='utf-8' standalone=\"yes\" ?>\r\n"
                   "<!-- 招标 - 文件 -->\r\n" +
                   with("<!---->\r\n<Material\r\n name = '钢筋' price=\"12\"\t/>") +
                   "\r\n<!-- end -->\r\n")
            << true;
        QTest::newRow("references and blanks in values")
            << with("<Material name=\"&lt;&#38;&#x4E2D;&#x10000;&apos;&quot;&gt;\" "
                    "spec=\"a\tb\nc\" remark=\"&#9;&#10;&#13;\"/>")
            << true;
        QTest::newRow("open and close tags, unknown attributes")
            << with("<Material name=\"钢筋\" colour=\"红\"></Material><Material name=\"砂\" >"
                    "<!-- x --></Material >")
            << true;
        QTest::newRow("numbers written otherwise")
            << with("<Material name=\"a\" price=\" 12 \" quantity=\"1e3\" amount=\"+.5\"/>")
            << true;
        QTest::newRow("numbers plain") << with("<Material name=\"a\" price=\"-0012.50\"/>") << true;
        QTest::newRow("a long unknown attribute")
            << with(QByteArray("<Material name=\"a\" note=\"" + QByteArray(3 << 20, 'x') + "\"/>"))
            << false;
        QTest::newRow("carriage return in a value") << with("<Material name=\"a\r\nb\"/>") << false;
        QTest::newRow("CDATA") << with("<![CDATA[ ]]>") << false;
        QTest::newRow("processing instruction") << with("<?pi x?>") << false;
        QTest::newRow("other encoding")
            << QByteArray("<?xml version=\"1.0\" encoding=\"GBK\"?>" + with("")) << false;
        QTest::newRow("version 1.1 declaration")
            << QByteArray("<?xml version=\"1.1\"?>" + with("")) << false;
        QTest::newRow("C1 control") << with("<Material name=\"a\xC2\x85\"/>") << false;
        QTest::newRow("unknown entity") << with("<Material name=\"a\" x=\"&nbsp;\"/>") << false;
        QTest::newRow("duplicate attribute") << with("<Material name=\"a\" name=\"b\"/>") << false;
        QTest::newRow("namespace prefix") << with("<Material name=\"a\" x:y=\"b\"/>") << false;
        QTest::newRow("double hyphen in comment") << with("<!-- a -- b -->") << false;
        QTest::newRow("text") << with("x") << false;
        QTest::newRow("surrogate") << with("<Material name=\"\xED\xA0\x80\"/>") << false;
        QTest::newRow("two roots") << QByteArray(with("") + "<TenderFile/>") << false;
    }
    void handWrittenXmlReadsAsTheThoroughReaderReadsIt()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(bool, quickly);
        TenderDocument d;
        QCOMPARE(quick(bytes, &d), quickly);
        QCOMPARE(disagreement(bytes), QString());
    }

    void damagedFilesGiveTheThoroughReadersMessage()
    {
        const QByteArray whole = TenderXmlWriter::ToXml(generated(3, 6));
        QVERIFY(whole.size() > 2000);
        int checked = 0;
        for (int n = 0; n < whole.size(); n += 3, ++checked)
            QVERIFY2(disagreement(whole.left(n)).isEmpty(),
                     qPrintable(
                         QStringLiteral("cut at %1: %2").arg(n).arg(disagreement(whole.left(n)))));
        for (const char flip : {'\x01', '\x20', '\x80', '\xff'})
            for (int i = 0; i < whole.size(); i += 5, ++checked) {
                QByteArray bytes = whole;
                bytes[i] = char(bytes[i] ^ flip);
                const QString d = disagreement(bytes);
                QVERIFY2(
                    d.isEmpty(),
                    qPrintable(
                        QStringLiteral("byte %1 ^ %2: %3").arg(i).arg(int(quint8(flip))).arg(d)));
            }
        QVERIFY(checked > 2000);

        // Compressed files are read again from the start of the compressed data.
        const QByteArray packed = TenderXmlWriter::Gzip(whole);
        for (int n = 10; n <= packed.size(); n += 50) {
            QByteArray cut = packed.left(n);
            Result r[2];
            for (int thoroughly = 0; thoroughly < 2; ++thoroughly) {
                QBuffer source(&cut);
                source.open(QIODevice::ReadOnly);
                GzipInputDevice gzip(&source, 1 << 20);
                QVERIFY(gzip.open(QIODevice::ReadOnly));
                r[thoroughly] = thoroughly ? Result() : asUsersRead(&gzip);
                if (thoroughly)
                    r[1].ok = TenderXmlReader::ReadThorough(&gzip, &r[1].document, &r[1].problem);
            }
            QCOMPARE(r[0].ok, r[1].ok);
            QVERIFY(r[0].ok || n < packed.size());
            QCOMPARE(r[0].problem, r[1].problem);
            QVERIFY(r[0].document == r[1].document);
        }
    }
};

QTEST_GUILESS_MAIN(tst_TenderXmlFastReader)
#include "tst_TenderXmlFastReader.moc"
