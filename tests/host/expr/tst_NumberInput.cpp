#include "NumberInput.h"
#include "VXParseAlg.h"

#include <QtTest>

// What typed numbers and expressions come to; the same table is in docs/number-input.md.
class tst_NumberInput : public QObject
{
    Q_OBJECT

private slots:
    void typedNumbers_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<bool>("accepted");
        QTest::addColumn<double>("value");
        auto accept = [](const char* name, const char* typed, double value) {
            QTest::newRow(name) << QString::fromUtf8(typed) << true << value;
        };
        auto refuse = [](const char* name, const char* typed) {
            QTest::newRow(name) << QString::fromUtf8(typed) << false << 0.0;
        };
        // Grouping separators are read as the number; no digit is lost.
        accept("grouped thousands", "1,500", 1500);
        accept("grouped millions", "2,345,678", 2345678);
        accept("grouped with decimals", "2,345,678.50", 2345678.5);
        accept("full-width grouped", "１，５００", 1500);
        accept("full-width comma in ASCII digits", "12，000", 12000);
        accept("grouped in an expression", "(1,500+2,000)*2", 7000);
        accept("full-width expression", "１，５００＋２，０００", 3500);
        accept("blank as grouping", "1 500", 1500);
        accept("no-break blank as grouping", "1\u00a0500", 1500);
        accept("ideographic blank", "\u3000２５\u3000", 25);
        // Plain numbers and arithmetic as before.
        accept("plain", "1500", 1500);
        accept("decimal", "12.5", 12.5);
        accept("full-width decimal", "１２３．５", 123.5);
        accept("times and divide", "6×2÷3", 4);
        accept("exponent", "1e3", 1000);
        accept("typographic minus", "\u22125+8", 3);
        // Percent and per-mille are hundredths and thousandths.
        accept("percent", "3%", 0.03);
        accept("full-width percent", "３％", 0.03);
        accept("per-mille", "5‰", 0.005);
        accept("grouped percent", "1,000.5%", 10.005);
        accept("percent in an expression", "200*10%", 20);
        // A comma that is not a grouping separator is refused, never read as a list.
        refuse("two decimals after comma", "1,50");
        refuse("four digits after comma", "12,3456");
        refuse("short middle group", "1,50,000");
        refuse("leading comma", ",500");
        refuse("trailing comma", "1,");
        refuse("list of numbers", "1,2,3");
        refuse("comma after a name", "a,500");
        refuse("decimal comma", "3,5");
        // Other text that is not a number.
        refuse("dots as grouping", "1.500.000");
        refuse("percent of nothing", "%");
        refuse("name", "abc");
        refuse("dangling operator", "1+");
    }

    void typedNumbers()
    {
        QFETCH(QString, typed);
        QFETCH(bool, accepted);
        QFETCH(double, value);
        double result = -1;
        QString error;
        QCOMPARE(NumberInput::ToNumber(typed, result, error), accepted);
        if (accepted) {
            QCOMPARE(result, value);
            QVERIFY(error.isEmpty());
        } else {
            QVERIFY2(!error.isEmpty(), qPrintable(typed));
        }
    }

    void refusalsSayWhy()
    {
        QString out;
        QString error;
        QVERIFY(!NumberInput::Normalise(QStringLiteral("1,50"), out, error));
        QCOMPARE(error, QStringLiteral("逗号只能用作千位分隔符：1,50"));
        QVERIFY(out.isEmpty());
        QVERIFY(!NumberInput::Normalise(QStringLiteral("费率%"), out, error));
        QCOMPARE(error, QStringLiteral("百分号或千分号只能跟在数字后面：费率%"));
    }

    void formulasKeepTheirNames()
    {
        QString out;
        QString error;
        QVERIFY(NumberInput::Normalise(QStringLiteral("其他项目专业工程暂估价 × 1.5％ + 1,000"),
                                       out, error));
        QCOMPARE(out, QStringLiteral("其他项目专业工程暂估价*(1.5/100)+1000"));
        // Digits inside a name stay part of the name, and a comma there is no grouping.
        QVERIFY(NumberInput::Normalise(QStringLiteral("a12*2"), out, error));
        QCOMPARE(out, QStringLiteral("a12*2"));
        QVERIFY(!NumberInput::Normalise(QStringLiteral("a1,500"), out, error));
        QVERIFY(NumberInput::Normalise(QStringLiteral("  "), out, error));
        QVERIFY(out.isEmpty());
        double result = 0;
        QVERIFY(VXParseAlg::getInstance()->ExpCalc(QStringLiteral("工伤保险费率*2,000"),
                                                   {{QStringLiteral("工伤保险费率"), 0.007}},
                                                   result, error));
        QCOMPARE(result, 14.0);
    }

    // A formula is parsed once and then evaluated with whatever values come: the second and
    // later evaluations must read the new values, and a name without a value must fail as
    // on the first evaluation, with the parser's words.
    void parsedFormulasReadNewValues()
    {
        VXParseAlg* alg = VXParseAlg::getInstance();
        const QString formula = QStringLiteral("分部分项工程费*费率/100+a1");
        double result = 0;
        QString error;
        for (double fee : {1000.0, 2000.0, 0.0}) {
            QVERIFY(alg->ExpCalc(formula,
                                 {{QStringLiteral("分部分项工程费"), fee},
                                  {QStringLiteral("费率"), 5.0},
                                  {QStringLiteral("a1"), 1.0},
                                  {QStringLiteral("a"), 100.0}},
                                 result, error));
            QCOMPARE(result, fee * 5 / 100 + 1);
        }
        QString firstError;
        QVERIFY(!alg->ExpCalc(QStringLiteral("未知费用*2"), {}, result, firstError));
        QVERIFY(!alg->ExpCalc(formula, {{QStringLiteral("费率"), 5.0}}, result, error));
        QVERIFY(error.contains(QStringLiteral("分部分项工程费")) || error.contains("Unexpected"));
        QVERIFY(alg->ExpCalc(formula, {{QStringLiteral("费率"), 5.0}}, result, error, true));
        QCOMPARE(result, 0.0);
        QVERIFY(!alg->ExpCalc(QStringLiteral("费率/0"), {{QStringLiteral("费率"), 5.0}}, result,
                              error));
        QCOMPARE(error, QStringLiteral("计算结果无效"));
        QVERIFY(!alg->ExpCalc(QStringLiteral("(1+"), {}, result, error));
        QVERIFY(!error.isEmpty());
    }
};

QTEST_GUILESS_MAIN(tst_NumberInput)
#include "tst_NumberInput.moc"
