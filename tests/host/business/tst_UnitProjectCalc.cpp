#include "SampleProject.h"
#include "TestProject.h"

#include "FyBlBusiness.h"
#include "GfQdBusiness.h"
#include "LxGzXmQdJJjbBusiness.h"
#include "QtXmQdJJjbBusiness.h"
#include "TableOps.h"
#include "UnitProjectCalc.h"
#include "VXParseAlg.h"
#include "ZbrClGzfQdBusiness.h"

#include "OperatingUIInfo.h"
#include "ProjectFile.h"

#include <QRandomGenerator>
#include <QUndoStack>
#include <QtTest>

#include <cmath>
#include <functional>

namespace {

double round2(double v)
{
    return std::round(v * 100.0) / 100.0;
}

QString plainName(const BaseDataItem* item)
{
    return item->getValue(2).toString().remove(QRegularExpression("\\s+|[(（][^)）]*[)）]"));
}

// What each fee variable of a unit project should be, worked out here from the unit
// project's rows by what the variable means, not by the recalculation's graph.
class Expected
{
public:
    explicit Expected(ConstructionWorks* works) : m_works(works) {}

    double value(const QString& name)
    {
        if (m_memo.contains(name))
            return m_memo.value(name);
        const FyBlBusiness::Definition* d = FyBlBusiness::FindDefinition(name);
        double v = d ? compute(*d) : 0.0;
        m_memo.insert(name, v);
        return v;
    }

private:
    double expression(const QString& text)
    {
        QHash<QString, double> vars;
        for (const QString& name : UnitProjectCalc::ReferencedNames(text))
            vars.insert(name, value(name));
        double result = 0;
        QString error;
        if (!text.trimmed().isEmpty())
            VXParseAlg::getInstance()->ExpCalc(text, vars, result, error, true);
        return result;
    }
    double stored(const QString& name) const
    {
        for (const BaseDataItem* item : m_works->getFyBlTable()->items())
            if (item->getValue(2).toString() == name)
                return item->getDouble(3);
        return 0;
    }
    double otherRow(const BaseDataItem* item)
    {
        if (item->getKind() == QtXmQdJJjbBusiness::Calculation)
            return round2(expression(item->getValue(3).toString()));
        if (item->getKind() != QtXmQdJJjbBusiness::SubTotal)
            return item->getDouble(3);
        // The sample's subtotals sum their numbered children.
        const QString prefix = item->getValue(1).toString() + QLatin1Char('.');
        double sum = 0;
        for (const BaseDataItem* child : other()->items())
            if (child->getValue(1).toString().startsWith(prefix))
                sum += otherRow(child);
        return round2(sum);
    }
    double feeRow(const BaseDataItem* item)
    {
        return round2(round2(expression(item->getValue(3).toString())) * item->getDouble(4) / 100);
    }
    QtXmQdHzTable* other() const { return m_works->getTenderInventory()->getQtXmQdHzTable(); }
    GfSjQdTable* fees() const { return m_works->getTenderInventory()->getGfSjQdTable(); }

    double compute(const FyBlBusiness::Definition& d)
    {
        double sum = 0;
        switch (d.source) {
        case FyBlBusiness::Entered:
            return stored(d.name);
        case FyBlBusiness::Expression:
            return expression(d.argument);
        case FyBlBusiness::OtherItemsTotal:
            // Rows that are no subtotal and not numbered under another row.
            for (const BaseDataItem* item : other()->items())
                if (item->getKind() != QtXmQdJJjbBusiness::SubTotal &&
                    item->getKind() != QtXmQdJJjbBusiness::Total)
                    sum += otherRow(item);
            return round2(sum);
        case FyBlBusiness::OtherItemsLine:
            for (const BaseDataItem* item : other()->items())
                if (item->getKind() != QtXmQdJJjbBusiness::Total && plainName(item) == d.argument)
                    sum += otherRow(item);
            return round2(sum);
        case FyBlBusiness::FeesTotal:
        case FyBlBusiness::TaxesTotal:
        case FyBlBusiness::FeeLine:
        case FyBlBusiness::TaxLine: {
            const bool tax =
                d.source == FyBlBusiness::TaxesTotal || d.source == FyBlBusiness::TaxLine;
            const bool line =
                d.source == FyBlBusiness::FeeLine || d.source == FyBlBusiness::TaxLine;
            for (const BaseDataItem* item : fees()->items())
                if (item->getKind() == (tax ? GfQdBusiness::Tax : GfQdBusiness::Fee) &&
                    (!line || plainName(item) == d.argument))
                    sum += feeRow(item);
            return round2(sum);
        }
        case FyBlBusiness::FeeRate:
            for (const BaseDataItem* item : fees()->items())
                if (item->getKind() == GfQdBusiness::Fee && plainName(item) == d.argument)
                    return item->getDouble(4) / 100;
            return 0;
        case FyBlBusiness::TaxBase:
            for (const BaseDataItem* item : fees()->items())
                if (item->getKind() == GfQdBusiness::Tax)
                    return round2(expression(item->getValue(3).toString()));
            return 0;
        case FyBlBusiness::DayworkTotal:
            for (const BaseDataItem* item :
                 m_works->getTenderInventory()->getLxGzXmRgDjQdTable()->items())
                if (item->getKind() == 0)
                    sum += round2(item->getDouble(4) * item->getDouble(6));
            return round2(sum);
        case FyBlBusiness::PurchasedTotal:
        case FyBlBusiness::ProvisionalTotal: {
            const GeneralTableBase* list =
                d.source == FyBlBusiness::PurchasedTotal
                    ? static_cast<GeneralTableBase*>(
                          m_works->getTenderInventory()->getZbrClGzfQdTable())
                    : m_works->getTenderInventory()->getZgjClHzTable();
            for (const BaseDataItem* item : list->items())
                if (item->getKind() == 1)
                    sum += round2(item->getDouble(7) * item->getDouble(9));
            return round2(sum);
        }
        }
        return 0;
    }

    ConstructionWorks* m_works;
    QHash<QString, double> m_memo;
};

// Every amount a page shows, by table type, row and field.
QMap<QString, QVariant> amountsOf(ConstructionWorks* works)
{
    QMap<QString, QVariant> amounts;
    auto take = [&](GeneralTableBase* table, std::initializer_list<int> fields) {
        for (int r = 0; r < table->count(); ++r)
            for (int f : fields)
                amounts.insert(QStringLiteral("%1/%2/%3").arg(table->getTableType()).arg(r).arg(f),
                               table->at(r)->getValue(f));
    };
    TenderInventory* inv = works->getTenderInventory();
    take(inv->getQtXmQdHzTable(), {3, 6});
    take(inv->getGfSjQdTable(), {4, 5, 6});
    take(inv->getLxGzXmRgDjQdTable(), {4, 7});
    take(inv->getZbrClGzfQdTable(), {7, 9, 10});
    take(inv->getZgjClHzTable(), {7, 9, 10});
    take(inv->getSjCqXPsClHzTable(), {7, 9, 10});
    for (const BaseDataItem* item : works->getFyBlTable()->items())
        amounts.insert(item->getValue(2).toString(), item->getValue(3));
    return amounts;
}

// The same, each number written out in full, so that two amounts one fen or one bit apart
// differ (QVariant compares doubles fuzzily).
QStringList exactly(const QMap<QString, QVariant>& amounts)
{
    QStringList list;
    for (auto it = amounts.cbegin(); it != amounts.cend(); ++it)
        list << it.key() + QLatin1Char('=') + QString::number(it->userType()) + QLatin1Char(':') +
                    (it->userType() == QMetaType::Double ? QString::number(it->toDouble(), 'g', 17)
                                                         : it->toString());
    return list;
}

// The unit projects' works in both versions, in tree order.
QList<ConstructionWorks*> unitWorks(const ProjectWorks* project)
{
    QList<ConstructionWorks*> list;
    for (const ProTreeNode* node : project->unitProjectNodes())
        for (int audit = 0; audit < 2; ++audit)
            if (ConstructionWorks* works = project->works(audit, ProTreeNode::Id(node)))
                list << works;
    return list;
}

BaseDataItem* rowNamed(GeneralTableBase* table, const QString& name)
{
    for (BaseDataItem* item : table->items())
        if (item->getValue(2).toString() == name)
            return item;
    return nullptr;
}

OperatingUIInfo info(ConstructionWorks* works, const QString& text)
{
    return OperatingUIInfo(works->getProjectWorksId(), works->getAuditId(), works->getNodeId(), 101,
                           8, text);
}

} // namespace

// One recalculation of a unit project: every fee variable real, dependency order, one undo
// record, cycles refused.
class tst_UnitProjectCalc : public QObject
{
    Q_OBJECT

private slots:
    void everyOfferedNameHasTheValueItsRowsGive()
    {
        const QStringList offered = [] {
            QStringList names;
            for (const QString& name :
                 FyBlBusiness::FeeVariableNames(qEnvironmentVariable("TARVO_APP_PATH")))
                if (FyBlBusiness::IsDefined(name))
                    names << name;
            return names;
        }();
        QVERIFY(offered.size() > 120);
        std::unique_ptr<ProjectWorks> sample = BuildSampleProject();
        int checked = 0;
        for (ConstructionWorks* works : unitWorks(sample.get())) {
            Expected expected(works);
            const QHash<QString, double> vars = FyBlBusiness::GetInstance()->variables(works);
            for (const QString& name : offered) {
                QVERIFY2(vars.contains(name), qPrintable(name));
                double result = 0;
                QString error;
                QVERIFY2(VXParseAlg::getInstance()->ExpCalc(name + QStringLiteral("*2"), vars,
                                                            result, error),
                         qPrintable(name + error));
                const double want = expected.value(name) * 2;
                QVERIFY2(std::abs(result - want) < 0.011,
                         qPrintable(QStringLiteral("%1 %2 %3").arg(name).arg(result).arg(want)));
                ++checked;
            }
            // The chain has something to start from.
            QVERIFY(vars.value(QStringLiteral("分部分项工程费")) > 0);
            QVERIFY(vars.value(QStringLiteral("措施项目费")) > 0);
            QVERIFY(vars.value(QStringLiteral("其他项目专业工程暂估价")) > 0);
            QVERIFY(vars.value(QStringLiteral("工伤保险费率")) > 0);
            QVERIFY(vars.value(QStringLiteral("税金")) > 0);
        }
        QVERIFY(checked > 1000);
    }

    void otherItemsReachTheFeesPageInOneUndoStep()
    {
        std::unique_ptr<ProjectWorks> sample = BuildSampleProject();
        ConstructionWorks* works = sample->works(0, 3);
        QVERIFY(works);
        QtXmQdHzTable* other = works->getTenderInventory()->getQtXmQdHzTable();
        GfSjQdTable* fees = works->getTenderInventory()->getGfSjQdTable();
        BaseDataItem* tax = nullptr;
        for (BaseDataItem* item : fees->items())
            if (item->getKind() == GfQdBusiness::Tax)
                tax = item;
        QVERIFY(tax);
        const QMap<QString, QVariant> before = amountsOf(works);
        const int row = other->GetItemIndexInOrder(rowNamed(other, "暂列金额"));
        const double oldAmount = other->at(row)->getDouble(3);

        RURecordControl* undo = RURecordControl::GetInstance();
        const int steps = undo->undoStack()->count();
        undo->BeginRecord();
        QVERIFY(QtXmQdJJjbBusiness::ProcColunmValueChanged(works, other, row, 3,
                                                           QStringLiteral("1,000,000")));
        undo->EndRecord(info(works, "修改其他项目清单行"));
        QCOMPARE(undo->undoStack()->count(), steps + 1);
        QCOMPARE(other->at(row)->getDouble(3), 1000000.0);
        // The tax row's base and amount follow at once: 其他项目合计 is part of its base.
        const double rise = 1000000.0 - oldAmount;
        QCOMPARE(tax->getDouble(6), round2(before.value("104/8/6").toDouble() + rise));
        QCOMPARE(FyBlBusiness::GetInstance()->GetFyBlValueByName(works, "其他项目合计"),
                 before.value("其他项目合计").toDouble() + rise);
        QCOMPARE(FyBlBusiness::GetInstance()->GetFyBlValueByName(works, "税金"), tax->getDouble(5));

        QVERIFY(undo->Undo());
        QCOMPARE(amountsOf(works), before);
        QVERIFY(undo->Redo());
        QCOMPARE(other->at(row)->getDouble(3), 1000000.0);
        QVERIFY(undo->Undo());
    }

    void aCycleIsRefusedNamingItsVariables()
    {
        std::unique_ptr<ProjectWorks> sample = BuildSampleProject();
        ConstructionWorks* works = sample->works(0, 3);
        QtXmQdHzTable* other = works->getTenderInventory()->getQtXmQdHzTable();
        const int row = other->GetItemIndexInOrder(rowNamed(other, "总承包服务费"));
        QCOMPARE(other->at(row)->getKind(), int(QtXmQdJJjbBusiness::Calculation));
        const QMap<QString, QVariant> before = amountsOf(works);

        // 税金 is taken over a base that holds 其他项目合计, which holds this row.
        const QString message = QtXmQdJJjbBusiness::CheckFormulaCycle(works, row, "税金*0.01");
        QCOMPARE(message, QStringLiteral("计算公式存在循环引用：其他项目清单第6行 → 税金 → "
                                         "规费税金清单第9行 → 其他项目合计 → 其他项目清单第6行"));
        QVERIFY(!QtXmQdJJjbBusiness::ProcColunmValueChanged(works, other, row, 3, "税金*0.01"));
        QCOMPARE(amountsOf(works), before);
        // A formula over the rows before it is no cycle.
        QVERIFY(
            QtXmQdJJjbBusiness::CheckFormulaCycle(works, row, "其他项目暂列金额*0.01").isEmpty());

        // On the fees page: a fee row over the tax closes a cycle too.
        GfSjQdTable* fees = works->getTenderInventory()->getGfSjQdTable();
        QCOMPARE(UnitProjectCalc::FindCycle(works, fees, 1, "税金"),
                 QStringLiteral("计算公式存在循环引用：规费税金清单第2行 → 税金 → "
                                "规费税金清单第9行 → 规费合计 → 规费税金清单第2行"));
        QVERIFY(!GfQdBusiness::ProcColunmValueChanged(works, fees, 1, 3, "税金"));
        QCOMPARE(amountsOf(works), before);
    }

    // A quantity or price typed into a materials list recalculates by difference (the row,
    // the list's total, what reads the total). After every one of many random edits a full
    // recalculation finds nothing to change, to the bit; undoing them all gives back the
    // amounts the project started with.
    void editsByDifferenceEqualAFullRecalculation()
    {
        std::unique_ptr<ProjectWorks> sample = BuildSampleProject();
        ConstructionWorks* works = sample->works(0, 3);
        TenderInventory* inv = works->getTenderInventory();
        // The materials totals reach the tax through an other-items row.
        QtXmQdHzTable* other = inv->getQtXmQdHzTable();
        QVERIFY(QtXmQdJJjbBusiness::ProcColunmValueChanged(
            works, other, other->GetItemIndexInOrder(rowNamed(other, "总承包服务费")), 3,
            "招标人材料购置费合计*0.015+暂估材料费合计*0.01+分部分项工程费*0.001"));
        const QList<GeneralTableBase*> lists = {inv->getZbrClGzfQdTable(), inv->getZgjClHzTable(),
                                                inv->getSjCqXPsClHzTable()};
        for (GeneralTableBase* list : lists)
            QVERIFY(list->count() > 2 && TableOps::findKind(list, 2));
        UnitProjectCalc::Recalculate(works);
        const QStringList start = exactly(amountsOf(works));
        const double tax = FyBlBusiness::GetInstance()->GetFyBlValueByName(works, "税金");

        RURecordControl* undo = RURecordControl::GetInstance();
        undo->ForgetHistory();
        // Odd fen, half fen, negatives, cleared cells, expressions, large amounts.
        const QStringList typed = {"0.005", "0.015", "-3.2", "",          "1,500",       "7/3",
                                   "2.675", "0",     "3%",   "999999.99", "0.000000001", "1e6"};
        QRandomGenerator random(20261123);
        int edits = 0;
        for (int i = 0; i < 400; ++i) {
            GeneralTableBase* list = lists.at(int(random.bounded(3)));
            const int row = int(random.bounded(list->count()));
            const int field = random.bounded(2) ? 7 : 9;
            const QString text = random.bounded(4) == 0
                                     ? typed.at(int(random.bounded(typed.size())))
                                     : QString::number(random.bounded(2000000) / 1000.0, 'f', 3);
            undo->BeginRecord();
            const bool taken = TableOps::materialValueChanged(list, row, field, text);
            undo->EndRecord(info(works, "修改材料"));
            QCOMPARE(taken, list->at(row)->getKind() != 2);
            edits += taken ? 1 : 0;
            const QStringList byDifference = exactly(amountsOf(works));
            const UnitProjectCalc::Result full = UnitProjectCalc::Recalculate(works);
            QVERIFY(full.ok);
            const QString edit = QStringLiteral("edit %1: table %2 row %3 field %4 \"%5\"")
                                     .arg(i)
                                     .arg(list->getTableType())
                                     .arg(row)
                                     .arg(field)
                                     .arg(text);
            const QStringList after = exactly(amountsOf(works));
            for (int k = 0; k < after.size(); ++k)
                QVERIFY2(after.at(k) == byDifference.value(k),
                         qPrintable(edit + QLatin1Char(' ') + byDifference.value(k) +
                                    QStringLiteral(" -> ") + after.at(k)));
            QCOMPARE(after.size(), byDifference.size());
            QVERIFY2(full.changedAmounts == 0, qPrintable(edit));
        }
        QVERIFY2(edits > 250, qPrintable(QString::number(edits))); // the rest hit total rows
        // An amount beyond the exact range of fen: the list is added up as doubles, and the
        // edit takes the full recalculation, which then has nothing left to change.
        GeneralTableBase* purchased = lists.first();
        undo->BeginRecord();
        QVERIFY(TableOps::materialValueChanged(purchased, 0, 7, "100000000000000"));
        undo->EndRecord(info(works, "修改材料"));
        const QStringList huge = exactly(amountsOf(works));
        UnitProjectCalc::Recalculate(works);
        QCOMPARE(exactly(amountsOf(works)), huge);
        double sum = 0;
        for (const BaseDataItem* item : purchased->items())
            if (item->getKind() == 1)
                sum += item->getDouble(10);
        QCOMPARE(TableOps::materialTotalRow(purchased)->getDouble(10), round2(sum));
        QVERIFY(FyBlBusiness::GetInstance()->GetFyBlValueByName(works, "税金") != tax);
        while (undo->Undo()) {
        }
        QCOMPARE(exactly(amountsOf(works)), start);
    }

    void savedAndReopenedAmountsAreIdentical()
    {
        std::unique_ptr<ProjectWorks> sample = BuildSampleProject();
        QTemporaryDir dir;
        const QString path = dir.filePath("sample.tarvo");
        QString error;
        QVERIFY2(ProjectFile::Save(sample.get(), path, &error), qPrintable(error));
        std::unique_ptr<ProjectWorks> reopened = ProjectFile::Open(path, &error);
        QVERIFY2(reopened, qPrintable(error));
        const QList<ConstructionWorks*> saved = unitWorks(sample.get());
        const QList<ConstructionWorks*> read = unitWorks(reopened.get());
        QCOMPARE(read.size(), saved.size());
        for (int i = 0; i < saved.size(); ++i) {
            QCOMPARE(amountsOf(read.at(i)), amountsOf(saved.at(i)));
            // Opening recalculates: nothing differs from what was saved.
            const UnitProjectCalc::Result result = UnitProjectCalc::Recalculate(read.at(i));
            QVERIFY(result.ok);
            QCOMPARE(result.changedAmounts, 0);
            QCOMPARE(amountsOf(read.at(i)), amountsOf(saved.at(i)));
        }
        // A stored amount that differs is counted, so that opening can say so.
        ConstructionWorks* works = read.at(1);
        rowNamed(works->getTenderInventory()->getQtXmQdHzTable(), "合计")->loadValue(3, 1.0);
        QVERIFY(UnitProjectCalc::Recalculate(works).changedAmounts > 0);
    }

    void attributeTogglesKeepTheAmount()
    {
        TestProject p;
        FyBlBusiness::GetInstance()->setValue(p.current, "分部分项工程费", 1000000.0);
        QtXmQdHzTable* t = p.current->getTenderInventory()->getQtXmQdHzTable();
        TestProject::row(t, 0, {{1, "1"}, {2, "暂列金额"}, {3, 50000.0}});
        BaseDataItem* service =
            TestProject::row(t, 3, {{1, "2"}, {2, "总承包服务费"}, {3, "分部分项工程费*0.015"}});
        BaseDataItem* total = TestProject::row(t, 4, {{2, "合计"}});
        QtXmQdJJjbBusiness::CalculateTable(p.current, t);
        QCOMPARE(total->getDouble(3), 65000.0);

        // Cancelling "计算" keeps what the formula came to.
        QVERIFY(QtXmQdJJjbBusiness::SetAsCalculateRow(p.current, 1, false));
        QCOMPARE(service->getKind(), int(QtXmQdJJjbBusiness::Ordinary));
        QCOMPARE(service->getValue(3), QVariant(15000.0));
        QCOMPARE(total->getDouble(3), 65000.0);
        // Setting it makes the amount the formula: the total does not move.
        QVERIFY(QtXmQdJJjbBusiness::SetAsCalculateRow(p.current, 1, true));
        QCOMPARE(service->getValue(3).toString(), QStringLiteral("15000"));
        QCOMPARE(service->getDouble(6), 15000.0);
        QCOMPARE(total->getDouble(3), 65000.0);
    }

    void numericCellsReadGroupedNumbersAndRefuseStrayCommas()
    {
        TestProject p;
        QtXmQdHzTable* t = p.current->getTenderInventory()->getQtXmQdHzTable();
        BaseDataItem* amount = TestProject::row(t, 0, {{2, "暂列金额"}, {3, 1.0}});
        TestProject::row(t, 4, {{2, "合计"}});
        QVERIFY(QtXmQdJJjbBusiness::ProcColunmValueChanged(p.current, t, 0, 3, "1,500"));
        QCOMPARE(amount->getValue(3), QVariant(1500.0));
        QVERIFY(
            QtXmQdJJjbBusiness::ProcColunmValueChanged(p.current, t, 0, 3, "２，３４５，６７８"));
        QCOMPARE(amount->getValue(3), QVariant(2345678.0));
        QVERIFY(!QtXmQdJJjbBusiness::ProcColunmValueChanged(p.current, t, 0, 3, "1,50"));
        QCOMPARE(amount->getValue(3), QVariant(2345678.0));

        GfSjQdTable* fees = p.current->getTenderInventory()->getGfSjQdTable();
        BaseDataItem* fee = TestProject::row(fees, 0, {{2, "养老保险费"}, {3, "1000"}, {4, 1.0}});
        QVERIFY(GfQdBusiness::ProcColunmValueChanged(p.current, fees, 0, 4, "7.5%"));
        QCOMPARE(fee->getValue(4), QVariant(7.5));
        QVERIFY(GfQdBusiness::ProcColunmValueChanged(p.current, fees, 0, 4, "9‰"));
        QCOMPARE(fee->getValue(4), QVariant(0.9));
        QVERIFY(!GfQdBusiness::ProcColunmValueChanged(p.current, fees, 0, 4, "7,5"));
        QCOMPARE(fee->getValue(4), QVariant(0.9));

        LxGzXmRgDjQdTable* daywork = p.current->getTenderInventory()->getLxGzXmRgDjQdTable();
        BaseDataItem* labour = TestProject::row(daywork, 0, {{2, "普工"}, {6, 10.0}});
        QVERIFY(LxGzXmQdJJjbBusiness::ProcColunmValueChanged(p.current, daywork, 0, 4, "1,100"));
        QCOMPARE(labour->getDouble(7), 11000.0);
        QVERIFY(!LxGzXmQdJJjbBusiness::ProcColunmValueChanged(p.current, daywork, 0, 4, "1,10"));
        QCOMPARE(labour->getDouble(4), 1100.0);
        QCOMPARE(FyBlBusiness::GetInstance()->GetFyBlValueByName(p.current, "零星工作项目费"),
                 11000.0);

        ZbrClGzfQdTable* purchased = p.current->getTenderInventory()->getZbrClGzfQdTable();
        BaseDataItem* lift = TestProject::row(purchased, 1, {{3, "电梯"}, {9, 2.0}});
        TestProject::row(purchased, 2, {{3, "合计"}});
        QVERIFY(
            ZbrClGzfQdBusiness::ProcColunmValueChanged(p.current, purchased, 0, 7, "2,345,678.50"));
        QCOMPARE(lift->getDouble(10), 4691357.0);
        QVERIFY(!ZbrClGzfQdBusiness::ProcColunmValueChanged(p.current, purchased, 0, 7, "12,3456"));
        QCOMPARE(FyBlBusiness::GetInstance()->GetFyBlValueByName(p.current, "招标人材料购置费合计"),
                 4691357.0);
    }
};

QTEST_GUILESS_MAIN(tst_UnitProjectCalc)
#include "tst_UnitProjectCalc.moc"
