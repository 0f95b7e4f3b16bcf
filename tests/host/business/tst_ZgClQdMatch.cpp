#include "TestProject.h"

#include "BusinessFaultInjection.h"
#include "DbZbZgClItem.h"
#include "MaterialMatcher.h"
#include "ProgressSink.h"
#include "ZgClQdBusiness.h"

#include <QUndoStack>
#include <QtTest>

#include <stdexcept>

namespace {

struct Progress : ProgressSink
{
    QList<int> values;
    void setValue(int value) override { values << value; }
};

BaseDataItem* line(ConstructionWorks* unit, const QString& name, const QString& model,
                   const QString& u, double price, bool provisional, double quantity = 10)
{
    return TestProject::row(unit->getRcjHzTable(), 1,
                            {{3, name},
                             {4, model},
                             {5, u},
                             {6, price},
                             {7, price},
                             {9, quantity},
                             {10, price * quantity},
                             {11, provisional}});
}

ZgjClHzItem* tender(const QString& code, const QString& name, const QString& model,
                    const QString& u, double price)
{
    auto* item = new ZgjClHzItem;
    item->loadValue(2, code);
    item->loadValue(3, name);
    item->loadValue(4, model);
    item->loadValue(5, u);
    item->loadValue(7, price);
    return item;
}

// The records' states in order, a heading as "H", as one text.
QString states(const QList<DbZbZgClItem*>& records)
{
    QString s;
    for (const DbZbZgClItem* r : records)
        s += r->IsDwRow() ? QStringLiteral("H") : QString::number(r->GetState());
    return s;
}

// A snapshot of every unit material's fields that applying writes.
QList<QVariantList> snapshot(const TestProject& p)
{
    QList<QVariantList> all;
    for (ConstructionWorks* unit : {p.current, p.plain})
        for (const BaseDataItem* m : unit->getRcjHzTable()->items())
            all.append({m->getValue(7), m->getValue(10), m->getValue(11), m->getValue(18)});
    return all;
}

} // namespace

// Deciding which materials are one (exact, then normalised, never across units) and the
// provisional-list matching built on it: first matching, carrying the project-wide result,
// analysing and applying with each option, undo and rollback.
class tst_ZgClQdMatch : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestProject> p;
    ConstructionWorks* root = nullptr;
    QList<DbZbZgClItem*> records;
    ZgClQdBusiness::TbClMap tbCl;
    ZgClQdBusiness::DwMap dwMap;
    std::unique_ptr<ProTreeNode> outside; // a part of the tree the host has cut off

    void storeTender(QList<ZgjClHzItem*> forUnit3, QList<ZgjClHzItem*> forUnit4 = {})
    {
        ProjectWorks::ZbZgClMap map;
        map.insert({p->index, 3}, forUnit3);
        map.insert({p->index, 4}, forUnit4);
        QVERIFY(p->project->SetGcZbZgCl(77, map));
    }
    // The usual case: unit 3 with an exact, a normalised and an unmatched tender material,
    // and a provisional bid line nobody asked for.
    void typicalProject()
    {
        line(p->current, "C30商品混凝土", "", "m3", 480, false);
        line(p->current, "钢筋", "hrb400φ8", "吨", 4300, true);
        line(p->current, "水泥", "P.O42.5", "kg", 0.5, true);
        line(p->current, "砂", "中砂", "m3", 120, false);
        storeTender({tender("ZG001", "C30商品混凝土", "", "m3", 500),
                     tender("ZG002", "钢筋", "HRB400 Φ8", "t", 4200),
                     tender("ZG003", "水泥", "P.O42.5", "t", 520)});
    }
    DbZbZgClItem* recordFor(const QString& code)
    {
        for (DbZbZgClItem* r : std::as_const(records))
            if (r->IsZbRow() && r->GetZbZgClZsItem()->GetOwnZbBm() == code)
                return r;
        return nullptr;
    }

private slots:
    void init()
    {
        p = std::make_unique<TestProject>();
        root = p->project->works(0, 1);
    }
    void cleanup()
    {
        BusinessFaultInjection::clear();
        qDeleteAll(records);
        records.clear();
        RURecordControl::GetInstance()->ForgetHistory();
        p.reset();
        outside.reset();
    }

    void normalisationPairsAndNonPairs_data()
    {
        QTest::addColumn<QStringList>("a");
        QTest::addColumn<QStringList>("b");
        QTest::addColumn<int>("kind");
        using L = QStringList;
        QTest::newRow("identical")
            << L{"C30", "", "m3"} << L{" C30 ", "", "m3"} << int(MaterialMatcher::Exact);
        QTest::newRow("full width") << L{"Ｃ30商品混凝土", "", "m3"} << L{"C30商品混凝土", "", "m3"}
                                    << int(MaterialMatcher::Normalised);
        QTest::newRow("diameter") << L{"钢筋", "Φ8", "t"} << L{"钢筋", "φ8", "t"}
                                  << int(MaterialMatcher::Normalised);
        QTest::newRow("cyrillic ef")
            << L{"钢筋", "ф 8", "t"} << L{"钢筋", "Φ8", "T"} << int(MaterialMatcher::Normalised);
        QTest::newRow("cube") << L{"砂", "", "m3"} << L{"砂", "", "m³"}
                              << int(MaterialMatcher::Normalised);
        QTest::newRow("cube chinese")
            << L{"砂", "", "立方米"} << L{"砂", "", "M3"} << int(MaterialMatcher::Normalised);
        QTest::newRow("ton") << L{"钢筋", "", "吨"} << L{"钢筋", "", "t"}
                             << int(MaterialMatcher::Normalised);
        QTest::newRow("kilogram") << L{"铁丝", "", "千克"} << L{"铁丝", "", "KG"}
                                  << int(MaterialMatcher::Normalised);
        QTest::newRow("times") << L{"地砖", "600×600", "m2"} << L{"地砖", "600*600", "㎡"}
                               << int(MaterialMatcher::Normalised);
        QTest::newRow("case and blanks") << L{"钢筋", "HRB 400", "t"} << L{"钢筋", "hrb400", "t"}
                                         << int(MaterialMatcher::Normalised);
        QTest::newRow("same name other unit")
            << L{"水泥", "P.O42.5", "t"} << L{"水泥", "P.O42.5", "kg"}
            << int(MaterialMatcher::None);
        QTest::newRow("other piece unit")
            << L{"钢筋", "", "t"} << L{"钢筋", "", "根"} << int(MaterialMatcher::None);
        QTest::newRow("other model") << L{"电缆", "YJV-3×120", "m"} << L{"电缆", "YJV-3×95", "m"}
                                     << int(MaterialMatcher::None);
    }
    void normalisationPairsAndNonPairs()
    {
        QFETCH(QStringList, a);
        QFETCH(QStringList, b);
        QFETCH(int, kind);
        const MaterialMatcher::Key ka{a.at(0), a.at(1), a.at(2)}, kb{b.at(0), b.at(1), b.at(2)};
        QCOMPARE(int(MaterialMatcher::Compare(ka, kb)), kind);
        QCOMPARE(int(MaterialMatcher::Compare(kb, ka)), kind);
    }

    void pairingIsOneToOneAndExactFirst()
    {
        using K = MaterialMatcher::Key;
        const QVector<K> wanted = {{"钢筋", "Φ8", "t"}, {"钢筋", "Φ8", "t"}, {"砂", "", "m3"}};
        // The first offered line fits the first wanted one only by normalisation; the exact
        // one further down takes it, and the normalised line goes to the second.
        const QVector<K> offered = {{"钢筋", "φ8", "吨"}, {"砂", "", "m3"}, {"钢筋", "Φ8", "t"}};
        MaterialMatcher matcher;
        const auto pairs = matcher.pair(
            int(wanted.size()), [&](int i) { return wanted.at(i); }, int(offered.size()),
            [&](int j) { return offered.at(j); });
        QCOMPARE(pairs.size(), 3);
        QCOMPARE(pairs.at(0).wanted, 2); // 砂 exact at line 1
        QCOMPARE(pairs.at(0).offered, 1);
        QCOMPARE(pairs.at(1).wanted, 0);
        QCOMPARE(pairs.at(1).offered, 2);
        QCOMPARE(pairs.at(1).kind, MaterialMatcher::Exact);
        QCOMPARE(pairs.at(2).wanted, 1);
        QCOMPARE(pairs.at(2).offered, 0);
        QCOMPARE(pairs.at(2).kind, MaterialMatcher::Normalised);
        QVERIFY(matcher
                    .pair(
                        0, [&](int) { return K(); }, 3, [&](int) { return K(); })
                    .isEmpty());
    }

    void firstMatchingGivesStatesAndCounts()
    {
        QVERIFY(!ZgClQdBusiness::InitMatchZbZgCl(root, records, tbCl, dwMap, nullptr));
        QVERIFY(records.isEmpty());
        typicalProject();
        Progress progress;
        QVERIFY(ZgClQdBusiness::InitMatchZbZgCl(root, records, tbCl, dwMap, &progress));
        // Unit 3: heading, exact, normalised, unmatched (other unit), the unasked provisional
        // 水泥/kg; unit 4: heading only.
        QCOMPARE(states(records), QStringLiteral("H0312H"));
        QCOMPARE(progress.values.last(), 100);
        QCOMPARE(recordFor("ZG002")->GetTbCl()->getValue(4).toString(), QStringLiteral("hrb400φ8"));
        int matched = 0, unmatched = 0;
        ZgClQdBusiness::CountZbZgCl(records, matched, unmatched);
        QCOMPARE(matched, 2);
        QCOMPARE(unmatched, 1);
        QCOMPARE(tbCl.value(3).size(), 4);
        QCOMPARE(ZgClQdBusiness::GetAllTbCl(tbCl, dwMap).size(), 4);
    }

    void noBidMaterialsLeavesEveryTenderRowUnmatched()
    {
        storeTender({tender("A", "钢筋", "", "t", 1), tender("B", "砂", "", "m3", 2)},
                    {tender("C", "线", "", "m", 3)});
        QVERIFY(ZgClQdBusiness::InitMatchZbZgCl(root, records, tbCl, dwMap, nullptr));
        QCOMPARE(states(records), QStringLiteral("H11H1"));
        int matched = 0, unmatched = 0;
        ZgClQdBusiness::CountZbZgCl(records, matched, unmatched);
        QCOMPARE(matched, 0);
        QCOMPARE(unmatched, 3);
        bool b1, b2, b3;
        ZgClQdBusiness::AnalyzeZbZgClModifyProperty(records, tbCl, b1, b2, b3);
        QVERIFY(!b1 && !b2 && !b3);
    }

    void manualPairsAndTheBidOnlyRows()
    {
        typicalProject();
        QVERIFY(ZgClQdBusiness::InitMatchZbZgCl(root, records, tbCl, dwMap, nullptr));
        DbZbZgClItem* cement = recordFor("ZG003");
        BaseDataItem* kg =
            ZgClQdBusiness::CheckMaterialExists(tbCl.value(3), "水泥", "P.O42.5", "kg", 0.5);
        QVERIFY(kg);
        QVERIFY(!ZgClQdBusiness::CheckMaterialExists(tbCl.value(3), "水泥", "P.O42.5", "kg", 1));
        QCOMPARE(ZgClQdBusiness::CheckFZgClExistInDw(tbCl.value(3), kg), kg);
        QVERIFY(!ZgClQdBusiness::CheckFZgClExistInDw(tbCl.value(4), kg));
        cement->Pair(kg, DbZbZgClItem::Matched);
        ZgClQdBusiness::RefreshTbOnlyRows(3, records, tbCl);
        QCOMPARE(states(records), QStringLiteral("H030H")); // the bid-only row is gone
        cement->Unpair();
        ZgClQdBusiness::RefreshTbOnlyRows(3, records, tbCl);
        QCOMPARE(states(records), QStringLiteral("H0312H")); // and back
        // Matching one unit project again resets and re-matches it only.
        recordFor("ZG001")->Unpair();
        ZgClQdBusiness::MatchDqZxGcZbZgCl(3, p->unit, records, tbCl);
        QCOMPARE(states(records), QStringLiteral("H0312H"));
    }

    void projectWideResultIsCarriedIntoTheUnits()
    {
        line(p->current, "钢筋", "Φ8", "t", 4300, false);
        line(p->plain, "钢筋", "φ8", "吨", 4100, false);
        line(p->plain, "钢筋", "Φ8", "t", 4150, false);
        storeTender({tender("A", "钢筋", "Φ8", "t", 4200)}, {tender("A", "钢筋", "Φ8", "t", 4200)});
        QList<DbZbZgClItem*> all;
        ZgClQdBusiness::TbClMap allTb;
        ZgClQdBusiness::DwMap allDw;
        QVERIFY(ZgClQdBusiness::GetGcZbAndTbCl(root, all, allTb, allDw, nullptr));
        ZgClQdBusiness::AutoMatchZbSyCl(all, allTb, allDw);
        QCOMPARE(states(all), QStringLiteral("0")); // one tender material over the project
        QVERIFY(ZgClQdBusiness::InitMatchZbZgCl(root, records, tbCl, dwMap, nullptr));
        // By hand the project-wide pair is moved to the other spelling.
        all.first()->Pair(tbCl.value(4).first(), DbZbZgClItem::MatchedByNorm);
        Progress progress;
        ZgClQdBusiness::MatchZbZgClByDbRes(root, all, true, records, tbCl, dwMap, &progress, 100);
        QCOMPARE(progress.values.last(), 100);
        // Unit 3 has no line spelled φ8/吨: unmatched; unit 4 takes its own such line.
        QCOMPARE(states(records), QStringLiteral("H1H3"));
        QCOMPARE(records.at(3)->GetTbCl(), tbCl.value(4).first());
        qDeleteAll(all);
    }

    // A unit project deleted after the tender list was stored: its tender rows are shown under
    // their own heading, pair with nothing (not even an equal line of another unit project),
    // are not counted as still to match, and applying never writes them.
    void rowsOfADeletedUnitProjectAreShownButNeverApplied()
    {
        typicalProject();
        // Unit project 9 was in the tree when the list was stored; the host has since taken
        // it (and its single project) out of the tree.
        outside = std::make_unique<ProTreeNode>(p->index, 8, ProTreeNode::SingleProjectNode,
                                                QStringLiteral("已删除的单项工程"));
        p->project->AddNode(outside.get(), 9, ProTreeNode::WorksNode, QStringLiteral("安装工程"));
        ProjectWorks::ZbZgClMap map;
        map.insert({p->index, 3}, {tender("ZG001", "C30商品混凝土", "", "m3", 500)});
        map.insert({p->index, 9}, {tender("ZG101", "水泥", "P.O42.5", "kg", 0.6),
                                   tender("ZG102", "线", "", "m", 4)});
        QVERIFY(p->project->SetGcZbZgCl(77, map));

        QVERIFY(ZgClQdBusiness::InitMatchZbZgCl(root, records, tbCl, dwMap, nullptr));
        // Unit 3: its own match and the unasked provisional 钢筋 and 水泥; then the orphans.
        QCOMPARE(states(records), QStringLiteral("H022HH11"));
        QVERIFY(!dwMap.contains(9));
        const DbZbZgClItem* heading = records.at(5);
        QVERIFY(heading->IsDwRow() && heading->IsOrphan());
        QVERIFY(heading->GetZbZgClZsItem()->GetZxGcName().contains(QStringLiteral("已不在")));
        DbZbZgClItem* cement = recordFor("ZG101");
        QVERIFY(cement->IsOrphan() && !cement->GetTbCl());
        int matched = 0, unmatched = 0;
        ZgClQdBusiness::CountZbZgCl(records, matched, unmatched);
        QCOMPARE(matched, 1);
        QCOMPARE(unmatched, 0);

        // Carrying a project-wide result and matching again leave the orphans alone.
        ZgClQdBusiness::MatchZbZgClByDbRes(root, {}, true, records, tbCl, dwMap, nullptr, 100);
        QVERIFY(!cement->IsMatched());

        // Even paired by force, an orphan writes nothing into the unit project that has an
        // equal line, and does not keep that line provisional.
        BaseDataItem* kg = tbCl.value(3).at(2);
        cement->Pair(kg, DbZbZgClItem::Matched);
        bool b1, b2, b3;
        ZgClQdBusiness::AnalyzeZbZgClModifyProperty(records, tbCl, b1, b2, b3);
        QVERIFY(b3); // 钢筋 and 水泥 are provisional without a tender material
        RURecordControl::Scope scope;
        ZgClQdBusiness::ApplyZbZgClModifyToProject(dwMap, records, tbCl, true, true, true, nullptr,
                                                   50);
        scope.commit(OperatingUIInfo(77, 0, 1, 0, 10, "对应整理投标暂估材料"));
        QVERIFY(kg->getValue(18).toString().isEmpty());
        QCOMPARE(kg->getDouble(7), 0.5);
        QVERIFY(!kg->getValue(11).toBool());
    }

    void applyWithEachOptionAndUndoInOneStep()
    {
        typicalProject();
        line(p->plain, "线", "", "m", 3, true);
        QVERIFY(ZgClQdBusiness::InitMatchZbZgCl(root, records, tbCl, dwMap, nullptr));
        bool b1, b2, b3;
        ZgClQdBusiness::AnalyzeZbZgClModifyProperty(records, tbCl, b1, b2, b3);
        QVERIFY(b1 && b2 && b3);
        const QList<QVariantList> before = snapshot(*p);

        RURecordControl* undo = RURecordControl::GetInstance();
        const int steps = undo->undoStack()->count();
        {
            RURecordControl::Scope scope;
            Progress progress;
            ZgClQdBusiness::ApplyZbZgClModifyToProject(dwMap, records, tbCl, true, true, true,
                                                       &progress, 50);
            QCOMPARE(progress.values.last(), 50);
            ZgClQdBusiness::RegenerateZgjClHzb(root, &progress, 50, 50);
            scope.commit(OperatingUIInfo(77, 0, 1, 0, 10, "对应整理投标暂估材料"));
        }
        QCOMPARE(undo->undoStack()->count(), steps + 1);
        const auto& unit3 = p->current->getRcjHzTable()->items();
        QCOMPARE(unit3.at(0)->getDouble(7), 500.0); // price from the tender
        QCOMPARE(unit3.at(0)->getDouble(10), 5000.0);
        QVERIFY(unit3.at(0)->getValue(11).toBool()); // set provisional
        QCOMPARE(unit3.at(0)->getValue(18).toString(), QStringLiteral("ZG001"));
        QCOMPARE(unit3.at(1)->getDouble(7), 4200.0);
        QCOMPARE(unit3.at(1)->getValue(18).toString(), QStringLiteral("ZG002"));
        QVERIFY(!unit3.at(2)->getValue(11).toBool()); // unasked provisional cancelled
        QVERIFY(!unit3.at(3)->getValue(11).toBool());
        // Unit 4 has no tender material, so all its provisional lines are cancelled too.
        QVERIFY(!p->plain->getRcjHzTable()->items().at(0)->getValue(11).toBool());
        ZgClQdBusiness::AnalyzeZbZgClModifyProperty(records, tbCl, b1, b2, b3);
        QVERIFY(!b1 && !b2 && !b3);

        QVERIFY(undo->Undo());
        QCOMPARE(snapshot(*p), before);
    }

    void applyWithOptionsOffWritesOnlyCodes()
    {
        typicalProject();
        QVERIFY(ZgClQdBusiness::InitMatchZbZgCl(root, records, tbCl, dwMap, nullptr));
        RURecordControl::Scope scope;
        ZgClQdBusiness::ApplyZbZgClModifyToProject(dwMap, records, tbCl, false, false, false,
                                                   nullptr, 50);
        scope.commit(OperatingUIInfo(77, 0, 1, 0, 10, "对应整理投标暂估材料"));
        const auto& unit3 = p->current->getRcjHzTable()->items();
        QCOMPARE(unit3.at(0)->getDouble(7), 480.0);
        QVERIFY(!unit3.at(0)->getValue(11).toBool());
        QCOMPARE(unit3.at(0)->getValue(18).toString(), QStringLiteral("ZG001"));
        QVERIFY(unit3.at(2)->getValue(11).toBool());
    }

    void aThrownBusinessErrorLeavesTheProjectUntouched()
    {
        typicalProject();
        QVERIFY(ZgClQdBusiness::InitMatchZbZgCl(root, records, tbCl, dwMap, nullptr));
        const QList<QVariantList> before = snapshot(*p);
        RURecordControl* undo = RURecordControl::GetInstance();
        const int steps = undo->undoStack()->count();
        bool thrown = false;
        try {
            RURecordControl::Scope scope;
            ZgClQdBusiness::ApplyZbZgClModifyToProject(dwMap, records, tbCl, true, true, true,
                                                       nullptr, 50);
            BusinessFaultInjection::setFault([] { throw std::runtime_error("磁盘已满"); });
            ZgClQdBusiness::AnalyzeZbZgClModifyProperty(records, tbCl, thrown, thrown, thrown);
            scope.commit(OperatingUIInfo(77, 0, 1, 0, 10, "对应整理投标暂估材料"));
        } catch (const std::runtime_error&) {
            thrown = true;
        }
        QVERIFY(thrown);
        QCOMPARE(snapshot(*p), before);
        QCOMPARE(undo->undoStack()->count(), steps);
    }
};

QTEST_GUILESS_MAIN(tst_ZgClQdMatch)
#include "tst_ZgClQdMatch.moc"
