#include "TestProject.h"

#include "ProjectFile.h"
#include "RowFields.h"

#include <QDate>
#include <QTemporaryDir>
#include <QtTest>

#include <cmath>
#include <limits>

// A row's fields in their compact storage: every kind of value comes back as it went in, with
// its type; copies are independent; the file encoding keeps what it documents.
class tst_RowFields : public QObject
{
    Q_OBJECT

private:
    static QVector<QVariant> everyKind()
    {
        return {QVariant(),
                3.25,
                -0.0,
                std::numeric_limits<double>::quiet_NaN(),
                -std::numeric_limits<double>::infinity(),
                42,
                QVariant(qint64(1) << 40),
                QVariant(qint64(std::numeric_limits<int>::min())),
                true,
                false,
                QString(),
                QStringLiteral(""),
                QStringLiteral("商品混凝土 C30 Φ12"),
                QString(100000, QChar(0x94A2)), // 钢, a text far beyond any inline size
                QVariant(1.5f),
                QVariant(7u),
                QVariant(QDate(2024, 2, 29)),
                QVariant(QVariantList{1, QStringLiteral("a")})};
    }

    // Same type and same value; NaN equals NaN here, and -0 is told from +0.
    static void compareExactly(const QVariant& got, const QVariant& want, int field)
    {
        const QByteArray where = QByteArray("field ") + QByteArray::number(field);
        QVERIFY2(got.userType() == want.userType(), where.constData());
        if (want.userType() == QMetaType::Double) {
            const double g = got.toDouble(), w = want.toDouble();
            QVERIFY2((std::isnan(g) && std::isnan(w)) ||
                         (g == w && std::signbit(g) == std::signbit(w)),
                     where.constData());
        } else if (want.userType() == QMetaType::QString) {
            QVERIFY2(got.toString() == want.toString(), where.constData());
            QVERIFY2(got.toString().isNull() == want.toString().isNull(), where.constData());
        } else {
            QVERIFY2(got == want, where.constData());
        }
    }

private slots:
    void everyKindKeepsValueAndType()
    {
        const QVector<QVariant> values = everyKind();
        RowFields fields;
        for (int f = values.size() - 1; f >= 0; --f) // highest first: grows once
            fields.set(f, values.at(f));
        QCOMPARE(fields.size(), values.size());
        for (int f = 0; f < values.size(); ++f)
            compareExactly(fields.value(f), values.at(f), f);
        QCOMPARE(fields.type(0), RowFields::Invalid);
        QCOMPARE(fields.type(5), RowFields::Int);
        QCOMPARE(fields.type(6), RowFields::LongLong);
        QCOMPARE(fields.type(12), RowFields::Text);
        QCOMPARE(fields.type(14), RowFields::Other); // a float stays a float in memory
        QCOMPARE(fields.type(-1), RowFields::Invalid);
        QCOMPARE(fields.type(500), RowFields::Invalid);
        QVERIFY(!fields.value(500).isValid());
    }

    void overwritingAndClearingFields()
    {
        RowFields fields;
        fields.set(3, QStringLiteral("钢筋"));
        fields.set(3, 12.5); // a text slot taking a number releases the text
        QCOMPARE(fields.value(3), QVariant(12.5));
        fields.set(3, QVariant(QVariantList{1, 2}));
        fields.set(3, QStringLiteral("水泥"));
        QCOMPARE(fields.value(3), QVariant(QStringLiteral("水泥")));

        // A field set from its own slot survives its old value being released.
        fields.setText(3, fields.textAt(3));
        QCOMPARE(fields.textAt(3), QStringLiteral("水泥"));

        fields.set(3, QVariant()); // cleared in place: the size stays
        QCOMPARE(fields.size(), 4);
        QCOMPARE(fields.type(3), RowFields::Invalid);
        fields.set(9, QVariant()); // nothing stored past the end
        QCOMPARE(fields.size(), 4);
        fields.set(-1, 1.0);
        QCOMPARE(fields.size(), 4);

        fields.setInteger(1, qint64(INT_MAX));
        fields.setInteger(2, qint64(INT_MAX) + 1);
        QCOMPARE(fields.value(1).userType(), int(QMetaType::Int));
        QCOMPARE(fields.value(2), QVariant(qlonglong(INT_MAX) + 1));
    }

    void copiesAreIndependent()
    {
        RowFields a;
        a.set(1, QStringLiteral("螺纹钢"));
        a.set(2, QVariant(QVariantList{1, 2}));
        a.set(3, 4350.5);

        RowFields b(a);
        QVERIFY(b == a);
        b.set(1, QStringLiteral("圆钢"));
        b.set(2, QVariant(QVariantList{3}));
        QCOMPARE(a.value(1).toString(), QStringLiteral("螺纹钢"));
        QCOMPARE(a.value(2), QVariant(QVariantList{1, 2}));
        QVERIFY(b != a);

        RowFields c;
        c.set(7, true);
        c = a;
        QVERIFY(c == a);
        QCOMPARE(c.size(), 4);
        c = static_cast<const RowFields&>(c); // self-assignment keeps the values
        QVERIFY(c == a);

        RowFields moved(std::move(c));
        QVERIFY(moved == a);
        QCOMPARE(c.size(), 0); // NOLINT(bugprone-use-after-move): moved-from is empty
        moved = RowFields();
        QCOMPARE(moved.size(), 0);

        // Equality compares values the way QVariant does when the types differ.
        RowFields asInt, asDouble;
        asInt.set(1, 5);
        asDouble.set(1, 5.0);
        QVERIFY(asInt == asDouble);
        asDouble.set(1, 5.5);
        QVERIFY(asInt != asDouble);
    }

    void rowNumbersAndTexts()
    {
        TestProject p;
        BaseDataItem* item = TestProject::row(p.current->getRcjHzTable(), 1,
                                              {{1, 7},
                                               {2, QStringLiteral("12.5")},
                                               {3, true},
                                               {4, 0.1 + 0.2},
                                               {5, QStringLiteral("t")}});
        QCOMPARE(item->getDouble(1), 7.0);
        QCOMPARE(item->getDouble(2), 12.5);
        QCOMPARE(item->getDouble(3), 1.0);
        QCOMPARE(item->getDouble(9), 0.0);
        QCOMPARE(item->getValueStr(4), QStringLiteral("0.3"));
        QCOMPARE(item->getValueStr(3), QStringLiteral("1"));
        QCOMPARE(item->getValueStr(5), QStringLiteral("t"));
        QCOMPARE(item->fieldCount(), 6);
    }

    void fileEncodingKeepsWhatItDocuments()
    {
        const QVector<QVariant> values = everyKind();
        RowFields decoded;
        QString why;
        QVERIFY2(ProjectFile::decodeFields(ProjectFile::encodeFields(RowFields::fromVector(values)),
                                           decoded, &why),
                 qPrintable(why));
        QCOMPARE(decoded.size(), values.size());
        for (int f = 0; f < values.size(); ++f) {
            const QVariant& want = values.at(f);
            const QVariant got = decoded.value(f);
            if (want.userType() == QMetaType::QString) {
                // The file does not tell a null text from an empty one: both come back empty.
                QCOMPARE(got.userType(), int(QMetaType::QString));
                QCOMPARE(got.toString(), want.toString());
            } else if (want.userType() == QMetaType::Float) {
                compareExactly(got, QVariant(double(want.toFloat())), f);
            } else if (want.userType() == QMetaType::UInt ||
                       (want.userType() == QMetaType::LongLong &&
                        want.toLongLong() == want.toInt())) {
                compareExactly(got, QVariant(want.toInt()), f); // an integer that fits an int
            } else {
                compareExactly(got, want, f); // NaN, infinities and -0 are kept
            }
        }

        // Fields in any order decode into one row; the highest sets its size.
        QByteArray reversed;
        for (int f : {9, 4, 1}) {
            RowFields one;
            one.setDouble(f, f * 1.5);
            reversed += ProjectFile::encodeFields(one);
        }
        QVERIFY(ProjectFile::decodeFields(reversed, decoded));
        QCOMPARE(decoded.size(), 10);
        QCOMPARE(decoded.value(4), QVariant(6.0));
        QCOMPARE(decoded.type(5), RowFields::Invalid);

        // A cut encoding is refused, not read as far as it goes.
        QByteArray cut = ProjectFile::encodeFields(RowFields::fromVector(values));
        cut.chop(3);
        QVERIFY(!ProjectFile::decodeFields(cut, decoded));

        // A field number past what the file can hold is not written.
        RowFields wide;
        wide.setBool(300, true);
        QVERIFY(ProjectFile::encodeFields(wide).isEmpty());
    }

    void openedRowsShareRepeatedTexts()
    {
        QTemporaryDir dir;
        const QString file = dir.filePath(QStringLiteral("shared.tarvo"));
        const QString longName = QString(200, QChar(0x6DF7)); // beyond what is shared
        {
            TestProject p;
            for (int i = 0; i < 3; ++i)
                TestProject::row(p.current->getRcjHzTable(), 1,
                                 {{1, QStringLiteral("0101%1").arg(i)},
                                  {3, QStringLiteral("商品混凝土")},
                                  {5, QStringLiteral("m³")},
                                  {6, longName}});
            QString error;
            QVERIFY2(ProjectFile::Save(p.project, file, &error), qPrintable(error));
        }
        QString error;
        std::unique_ptr<ProjectWorks> opened = ProjectFile::Open(file, &error);
        QVERIFY2(opened, qPrintable(error));
        const GeneralTableBase* table = opened->works(0, 3)->getRcjHzTable();
        QCOMPARE(table->count(), 3);
        const RowFields& first = table->at(0)->rawValues();
        const RowFields& last = table->at(2)->rawValues();
        QCOMPARE(last.textAt(3), QStringLiteral("商品混凝土"));
        QCOMPARE(last.textAt(5), QStringLiteral("m³"));
        QCOMPARE(last.textAt(6), longName);
        QCOMPARE(last.textAt(1), QStringLiteral("01012"));
        QVERIFY(first.textAt(3).constData() == last.textAt(3).constData());
        QVERIFY(first.textAt(5).constData() == last.textAt(5).constData());
        QVERIFY(first.textAt(1).constData() != last.textAt(1).constData());
    }
};

QTEST_GUILESS_MAIN(tst_RowFields)
#include "tst_RowFields.moc"
