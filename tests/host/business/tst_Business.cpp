#include "TestProject.h"

#include "BusinessFaultInjection.h"
#include "FormulaText.h"
#include "FyBlBusiness.h"
#include "GfQdBusiness.h"
#include "LxGzXmQdJJjbBusiness.h"
#include "MaterialSummary.h"
#include "QtXmQdJJjbBusiness.h"
#include "SharedInterface.h"
#include "VXParseAlg.h"
#include "XtBlBusiness.h"
#include "ZbrClGzfQdBusiness.h"

#include "OperatingUIInfo.h"

#include <QtTest>

#include <stdexcept>

// The calculation rules of the lists and the expressions users type.
class tst_Business : public QObject
{
    Q_OBJECT

private slots:
    // A material is its name, model (规格型号) and unit, each without surrounding blanks: the
    // same three in two unit projects are one material, another unit is another material.
    void summaryGroupsByNameModelAndUnit()
    {
        TestProject p;
        auto line = [](ConstructionWorks* unit, const char* name, const char* model,
                       const char* measure, double price, double quantity) {
            TestProject::row(unit->getRcjHzTable(), 0,
                             {{3, QString::fromUtf8(name)},
                              {4, QString::fromUtf8(model)},
                              {5, QString::fromUtf8(measure)},
                              {7, price},
                              {9, quantity}});
        };
        line(p.current, "钢筋", "HRB400", "t", 4000, 2);
        line(p.current, "水泥", "P.O 42.5", "t", 450, 10);
        line(p.plain, " 钢筋 ", "HRB400 ", "t", 4000, 3);
        line(p.plain, "钢筋", "HRB400", "kg", 4, 500);
        line(p.plain, "水泥", "P.O 42.5", "t", 460, 4);
        const QList<MaterialSummary::Entry> entries =
            MaterialSummary::Gather(p.current, false, nullptr);
        QCOMPARE(entries.size(), 3);
        QCOMPARE(entries.at(0).name + entries.at(0).model + entries.at(0).unit,
                 QString("钢筋HRB400t"));
        QCOMPARE(entries.at(0).quantity, 5.0);
        QCOMPARE(entries.at(0).flags & MaterialSummary::PriceDiffers, 0);
        QCOMPARE(entries.at(1).quantity, 14.0);
        QCOMPARE(entries.at(1).price, 450.0); // the price of the larger quantity
        QVERIFY(entries.at(1).flags & MaterialSummary::PriceDiffers);
        QCOMPARE(entries.at(2).unit, QString("kg"));
        QCOMPARE(entries.at(2).quantity, 500.0);
    }

    void expressionsWithChineseNamesAndFullWidthText()
    {
        const QHash<QString, double> vars = {{"分部分项工程费", 200000.0}, {"措施项目费", 30000.0}};
        double result = 0;
        QString error;
        QVERIFY(VXParseAlg::getInstance()->ExpCalc("（分部分项工程费＋措施项目费）×３％", vars,
                                                   result, error));
        QCOMPARE(result, 6900.0);
        QVERIFY(!VXParseAlg::getInstance()->ExpCalc("", {}, result, error));
        QVERIFY(VXParseAlg::getInstance()->CheckExpressionEx("分部分项工程费/措施项目费",
                                                             vars.keys(), error));
        QVERIFY(!VXParseAlg::getInstance()->CheckExpressionEx("分部分项工程费/其他", vars.keys(),
                                                              error));
        // A division by a variable that is zero is still a well-formed formula.
        QVERIFY(
            VXParseAlg::getInstance()->CheckExpressionEx("1/分部分项工程费", vars.keys(), error));
    }

    void formulaTextBecomesAscii_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("normalised");
        QTest::newRow("full-width")
            << QString::fromUtf8("（１２．５＋３）＊２") << QStringLiteral("(12.5+3)*2");
        QTest::newRow("times and divide") << QString::fromUtf8("6×2÷3") << QStringLiteral("6*2/3");
        QTest::newRow("spaces of both widths")
            << QString::fromUtf8(" 1 +\t2\u3000") << QStringLiteral("1+2");
        QTest::newRow("names kept")
            << QString::fromUtf8("规费合计－税金") << QString::fromUtf8("规费合计-税金");
        QTest::newRow("enumeration comma")
            << QString::fromUtf8("max(1、2)") << QStringLiteral("max(1,2)");
    }

    void formulaTextBecomesAscii()
    {
        QFETCH(QString, typed);
        QFETCH(QString, normalised);
        QCOMPARE(FormulaText::ReplaceFormulaItem(typed), normalised);
        QCOMPARE(SharedInterface::ReplaceFormulaItem(typed), normalised);
    }

    void otherItemsSubtotalsTotalsAndFormulas()
    {
        TestProject p;
        FyBlBusiness::GetInstance()->setValue(p.current, "分部分项工程费", 1000000.0);
        QtXmQdHzTable* t = p.current->getTenderInventory()->getQtXmQdHzTable();
        TestProject::row(t, 0, {{1, "1"}, {2, "暂列金额"}, {3, 50000.0}});
        BaseDataItem* provisional = TestProject::row(t, 2, {{1, "2"}, {2, "暂估价"}, {3, 999.0}});
        TestProject::row(t, 0, {{1, "2.1"}, {2, "材料暂估价"}, {3, 0.0}});
        TestProject::row(t, 0, {{1, "2.2"}, {2, "专业工程暂估价"}, {3, 30000.0}});
        BaseDataItem* service =
            TestProject::row(t, 3, {{1, "3"}, {2, "总承包服务费"}, {3, "分部分项工程费*0.015"}});
        BaseDataItem* total = TestProject::row(t, 4, {{2, "合计"}});
        QtXmQdJJjbBusiness::CalculateTable(p.current, t);
        QCOMPARE(provisional->getDouble(3), 30000.0);
        QCOMPARE(service->getDouble(6), 15000.0);
        QCOMPARE(total->getDouble(3), 95000.0); // top-level rows only, the subtotal once
        QCOMPARE(FyBlBusiness::GetInstance()->GetFyBlValueByName(p.current, "其他项目合计"),
                 95000.0);

        // Text typed as a number is a number; the total row is not editable.
        QVERIFY(QtXmQdJJjbBusiness::ProcColunmValueChanged(p.current, t, 0, 3, QString(" 60000 ")));
        QCOMPARE(total->getDouble(3), 105000.0);
        QVERIFY(!QtXmQdJJjbBusiness::ProcColunmValueChanged(p.current, t, 5, 3, 1.0));
        QVERIFY(!QtXmQdJJjbBusiness::GridRowCanMove(t, 0, 5));
        QVERIFY(QtXmQdJJjbBusiness::GridRowCanMove(t, 0, 4));
        // Inserting at or past the total keeps the total last.
        QVERIFY(QtXmQdJJjbBusiness::InsertCustomItem(p.current, t, 99));
        QCOMPARE(t->at(t->count() - 1), total);
        QCOMPARE(t->at(t->count() - 2)->getKind(), int(QtXmQdJJjbBusiness::NewEmpty));
        QVERIFY(QtXmQdJJjbBusiness::isEmptyRow(t->at(t->count() - 2)));
        QVERIFY(!QtXmQdJJjbBusiness::RemoveItem(p.current, t, t->count() - 1));
    }

    void otherItemsGroupsAreCountedOnce()
    {
        TestProject p;
        QtXmQdHzTable* t = p.current->getTenderInventory()->getQtXmQdHzTable();
        // A subtotal without a serial closes the rows above it; the next one starts afresh.
        TestProject::row(t, 0, {{2, "暂列金额"}, {3, 100.0}});
        TestProject::row(t, 0, {{2, "计日工"}, {3, 20.0}});
        BaseDataItem* first = TestProject::row(t, 2, {{2, "小计"}});
        TestProject::row(t, 0, {{2, "总承包服务费"}, {3, 5.0}});
        BaseDataItem* second = TestProject::row(t, 2, {{2, "小计"}});
        // Rows numbered under an ordinary row detail its amount.
        TestProject::row(t, 0, {{1, "4"}, {2, "专业工程暂估价"}, {3, 40.0}});
        TestProject::row(t, 0, {{1, "4.1"}, {2, "幕墙工程"}, {3, 25.0}});
        TestProject::row(t, 0, {{1, "4.2"}, {2, "消防工程"}, {3, 15.0}});
        BaseDataItem* total = TestProject::row(t, 4, {{2, "合计"}});
        QtXmQdJJjbBusiness::CalculateTable(p.current, t);
        QCOMPARE(first->getDouble(3), 120.0);
        QCOMPARE(second->getDouble(3), 5.0);
        QCOMPARE(total->getDouble(3), 165.0);

        // Turning a row into a subtotal and back changes what it counts for, one way each time.
        QVERIFY(QtXmQdJJjbBusiness::SetAsSubTotalRow(p.current, 3, true));
        QCOMPARE(t->at(3)->getDouble(3), 0.0); // nothing between it and the previous subtotal
        QCOMPARE(total->getDouble(3), 160.0);
        QVERIFY(QtXmQdJJjbBusiness::SetAsSubTotalRow(p.current, 3, false));
        t->at(3)->setValue(3, 5.0);
        QVERIFY(QtXmQdJJjbBusiness::SetAsCalculateRow(p.current, 1, true));
        t->at(1)->setValue(3, QString("2*3"));
        QtXmQdJJjbBusiness::CalculateTable(p.current, t);
        QCOMPARE(t->at(1)->getDouble(6), 6.0);
        QCOMPARE(first->getDouble(3), 106.0);
        QCOMPARE(total->getDouble(3), 151.0);
        QVERIFY(!QtXmQdJJjbBusiness::SetAsSubTotalRow(p.current, t->count() - 1, true));
    }

    void otherItemsMovesAndUndo()
    {
        TestProject p;
        RURecordControl::GetInstance()->ForgetHistory();
        QtXmQdHzTable* t = p.current->getTenderInventory()->getQtXmQdHzTable();
        BaseDataItem* a = TestProject::row(t, 0, {{2, "暂列金额"}, {3, 10.0}});
        BaseDataItem* b = TestProject::row(t, 0, {{2, "计日工"}, {3, 20.0}});
        BaseDataItem* sub = TestProject::row(t, 2, {{2, "小计"}});
        BaseDataItem* total = TestProject::row(t, 4, {{2, "合计"}});
        QtXmQdJJjbBusiness::CalculateTable(p.current, t);
        QCOMPARE(sub->getDouble(3), 30.0);

        RURecordControl::GetInstance()->BeginRecord();
        QVERIFY(QtXmQdJJjbBusiness::GridRowMove(p.current, t, 2, 0)); // the subtotal to the top
        RURecordControl::GetInstance()->EndRecord(
            OperatingUIInfo(77, 0, 3, 101, 22, "其他项目清单移动行"));
        QCOMPARE(t->items(), (QList<BaseDataItem*>{sub, a, b, total}));
        QCOMPARE(sub->getDouble(3), 0.0);
        QCOMPARE(total->getDouble(3), 30.0);
        QCOMPARE(FyBlBusiness::GetInstance()->GetFyBlValueByName(p.current, "其他项目合计"), 30.0);
        QVERIFY(!QtXmQdJJjbBusiness::GridRowMove(p.current, t, 3, 0)); // the total stays last

        QVERIFY(RURecordControl::GetInstance()->Undo());
        QCOMPARE(t->items(), (QList<BaseDataItem*>{a, b, sub, total}));
        QCOMPARE(sub->getDouble(3), 30.0);
        RURecordControl::GetInstance()->ForgetHistory();
    }

    void faultInjectionFiresOnce()
    {
        TestProject p;
        QtXmQdHzTable* t = p.current->getTenderInventory()->getQtXmQdHzTable();
        TestProject::row(t, 0, {{2, "暂列金额"}, {3, 10.0}});
        BusinessFaultInjection::setFault([] { throw std::runtime_error("business failure"); });
        QVERIFY_EXCEPTION_THROWN(
            QtXmQdJJjbBusiness::ProcColunmValueChanged(p.current, t, 0, 3, 20.0),
            std::runtime_error);
        QCOMPARE(t->at(0)->getDouble(3), 10.0); // nothing changed before the failure
        QVERIFY(QtXmQdJJjbBusiness::ProcColunmValueChanged(p.current, t, 0, 3, 20.0));
        QCOMPARE(t->at(0)->getDouble(3), 20.0);
    }

    void materialAmountsAndTotal()
    {
        TestProject p;
        ZbrClGzfQdTable* t = p.current->getTenderInventory()->getZbrClGzfQdTable();
        TestProject::row(t, 1, {{3, "电梯"}, {7, 285000.0}, {9, 2.0}});
        TestProject::row(t, 1, {{3, "变压器"}, {7, 168000.0}});
        BaseDataItem* total = TestProject::row(t, 2, {{3, "合计"}});
        QVERIFY(ZbrClGzfQdBusiness::ProcColunmValueChanged(p.current, t, 1, 9, QString("1.5")));
        QCOMPARE(t->at(0)->getDouble(10), 570000.0);
        QCOMPARE(t->at(1)->getDouble(10), 252000.0);
        QCOMPARE(total->getDouble(10), 822000.0);
        QVERIFY(ZbrClGzfQdBusiness::ProcColunmValueChanged(p.current, t, 1, 9, QString()));
        QVERIFY(!t->at(1)->getValue(9).isValid());
        QCOMPARE(total->getDouble(10), 570000.0);
        BaseDataItem* inserted = ZbrClGzfQdBusiness::InsertItem(p.current, t, -1);
        QCOMPARE(t->GetItemIndexInOrder(inserted), 2); // above the total
    }

    void feesAndTaxes()
    {
        TestProject p;
        FyBlBusiness* fyBl = FyBlBusiness::GetInstance();
        fyBl->setValue(p.current, "分部分项人工费", 100000.0);
        fyBl->setValue(p.current, "分部分项工程费", 500000.0);
        GfSjQdTable* t = p.current->getTenderInventory()->getGfSjQdTable();
        TestProject::row(t, 1, {{2, "规费"}});
        BaseDataItem* pension =
            TestProject::row(t, 0, {{2, "养老保险费"}, {3, "分部分项人工费"}, {4, 7.5}});
        BaseDataItem* tax =
            TestProject::row(t, 2, {{2, "税金"}, {3, "分部分项工程费+规费合计"}, {4, 9.0}});
        GfQdBusiness::CalculateGfQdTable(p.current, t);
        QCOMPARE(pension->getDouble(5), 7500.0);
        QCOMPARE(tax->getDouble(6), 507500.0);
        QCOMPARE(tax->getDouble(5), 45675.0);
        // A rate typed with its percent sign.
        QVERIFY(GfQdBusiness::ProcColunmValueChanged(p.current, t, 1, 4, QString("8%")));
        QCOMPARE(pension->getDouble(5), 8000.0);
        QCOMPARE(tax->getDouble(5), 45720.0);
    }

    void formulasOfNumericCells()
    {
        TestProject p;
        FyBlBusiness::GetInstance()->setValue(p.current, "计日工", 18600.0);
        double result = 0;
        QString error;
        QVERIFY(LxGzXmQdJJjbBusiness::CalculateFormula(p.current, "计日工/2", result, error));
        QCOMPARE(result, 9300.0);
        QVERIFY(!LxGzXmQdJJjbBusiness::CalculateFormula(p.current, "  ", result, error));
        QVERIFY(error.isEmpty());
        QVERIFY(!LxGzXmQdJJjbBusiness::CalculateFormula(p.current, "abc", result, error));
    }

    void systemVariables()
    {
        TestProject p;
        QVERIFY(XtBlBusiness::ChangeXtBl(p.index, 0, 3, 25, QString("规费税金清单")));
        QCOMPARE(XtBlBusiness::GetSJXtBlValue(p.unit, 25).toString(), QString("规费税金清单"));
        QVERIFY(p.project->isProjectWorkChanged());
        QVERIFY(!XtBlBusiness::ChangeXtBl(p.index, 0, 99, 25, QString("x")));
    }
};

QTEST_GUILESS_MAIN(tst_Business)
#include "tst_Business.moc"
