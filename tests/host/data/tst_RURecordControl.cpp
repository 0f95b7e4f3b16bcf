#include "TestProject.h"

#include "OperatingUIInfo.h"

#include <QRandomGenerator>
#include <QUndoStack>
#include <QtTest>

#include <functional>
#include <stdexcept>

// The undo journal: every change inside a record comes back exactly, one record per action.
class tst_RURecordControl : public QObject
{
    Q_OBJECT

private:
    RURecordControl* control() { return RURecordControl::GetInstance(); }
    static OperatingUIInfo info(const QString& text)
    {
        return OperatingUIInfo(77, 0, 3, 101, 8, text);
    }
    static QStringList names(GeneralTableBase* table)
    {
        QStringList list;
        for (BaseDataItem* item : table->items())
            list << item->getValue(2).toString();
        return list;
    }

    // Undo and redo of the last record, twice, each giving the table's rows exactly.
    void undoAndRedoTwice(GeneralTableBase* t, const QList<BaseDataItem*>& before,
                          const QList<BaseDataItem*>& after)
    {
        for (int i = 0; i < 2; ++i) {
            QVERIFY(control()->Undo());
            QCOMPARE(t->items(), before);
            QVERIFY(control()->Redo());
            QCOMPARE(t->items(), after);
        }
    }

private slots:
    void init() { control()->ForgetHistory(); }

    void editsUndoAndRedoAsOneLabelledRecord()
    {
        TestProject p;
        QtXmQdHzTable* t = p.current->getTenderInventory()->getQtXmQdHzTable();
        BaseDataItem* a = TestProject::row(t, 0, {{2, QStringLiteral("暂列金额")}, {3, 100.0}});
        control()->BeginRecord();
        a->setValue(3, 250.0);
        a->setKind(3);
        a->SetBlock(true);
        a->setRowHeight(40);
        a->setNote(QStringLiteral("备注"));
        control()->EndRecord(info(QStringLiteral("修改其他项目清单行")));
        QCOMPARE(control()->undoStack()->count(), 1);
        QCOMPARE(control()->undoStack()->undoText(), QStringLiteral("修改其他项目清单行"));

        QVERIFY(control()->Undo());
        QCOMPARE(a->getValue(3), QVariant(100.0));
        QCOMPARE(a->getKind(), 0);
        QVERIFY(!a->IsBlock());
        QCOMPARE(a->getRowHeight(), 0);
        QVERIFY(a->getNote().isEmpty());

        QVERIFY(control()->Redo());
        QCOMPARE(a->getValue(3), QVariant(250.0));
        QCOMPARE(a->getKind(), 3);
        QVERIFY(a->IsBlock());
        QCOMPARE(a->getNote(), QStringLiteral("备注"));
    }

    void structuralChangesComeBackInOrder()
    {
        TestProject p;
        QtXmQdHzTable* t = p.current->getTenderInventory()->getQtXmQdHzTable();
        for (const char* name : {"A", "B", "C", "D"})
            TestProject::row(t, 0, {{2, QString::fromLatin1(name)}});
        BaseDataItem* b = t->at(1);
        control()->BeginRecord();
        t->BaseDataItemRemoveAt(1); // A C D
        BaseDataItem* e = t->CreateItem();
        e->loadValue(2, QStringLiteral("E"));
        t->BaseDataItemInsert(0, e);          // E A C D
        t->BaseDataItemMove(3, 1);            // E D A C
        b->setValue(2, QStringLiteral("B2")); // a removed row may still be edited by the command
        control()->EndRecord(info(QStringLiteral("整理")));
        QCOMPARE(names(t), QStringList({"E", "D", "A", "C"}));

        QVERIFY(control()->Undo());
        QCOMPARE(names(t), QStringList({"A", "B", "C", "D"}));
        QCOMPARE(t->at(1), b); // the very same row object is back
        QVERIFY(control()->Redo());
        QCOMPARE(names(t), QStringList({"E", "D", "A", "C"}));
        QVERIFY(control()->Undo());
        QCOMPARE(names(t), QStringList({"A", "B", "C", "D"}));
    }

    void bulkChangeIsOneStep()
    {
        TestProject p;
        RcjHzTable* t = p.current->getRcjHzTable();
        for (int i = 0; i < 2000; ++i)
            TestProject::row(t, 1, {{9, double(i)}});
        control()->BeginRecord();
        for (BaseDataItem* item : t->items())
            item->setValue(9, item->getDouble(9) * 2);
        control()->EndRecord(info(QStringLiteral("批量修改")));
        QCOMPARE(control()->undoStack()->count(), 1);
        QVERIFY(control()->Undo());
        for (int i = 0; i < t->count(); ++i)
            QCOMPARE(t->at(i)->getDouble(9), double(i));
    }

    // Long runs of inserts and removals at scattered places are replayed at once; the rows
    // must still come back exactly where each was, in both directions and when rolled back.
    void manyInsertsAndRemovalsComeBackInPlace()
    {
        TestProject p;
        QtXmQdHzTable* t = p.current->getTenderInventory()->getQtXmQdHzTable();
        for (int i = 0; i < 300; ++i)
            TestProject::row(t, 0, {{2, QStringLiteral("r%1").arg(i)}});
        const QList<BaseDataItem*> before = t->items();
        QRandomGenerator random(16);
        auto bulk = [&] {
            for (int round = 0; round < 3; ++round) {
                for (int i = 0; i < 200 && t->count() > 0; ++i)
                    t->BaseDataItemRemoveAt(int(random.bounded(t->count())));
                for (int i = 0; i < 150; ++i) {
                    BaseDataItem* item = t->CreateItem();
                    item->loadValue(2, QStringLiteral("n%1.%2").arg(round).arg(i));
                    t->BaseDataItemInsert(int(random.bounded(t->count() + 1)), item);
                }
                t->at(0)->setValue(3, double(round)); // a value change splits the runs
            }
        };
        control()->BeginRecord();
        bulk();
        control()->EndRecord(info(QStringLiteral("整理")));
        const QList<BaseDataItem*> after = t->items();
        undoAndRedoTwice(t, before, after);
        if (QTest::currentTestFailed())
            return;
        for (BaseDataItem* item : t->items())
            QCOMPARE(item->getOwner(), static_cast<GeneralTableBase*>(t));

        control()->ForgetHistory();
        const QList<BaseDataItem*> kept = t->items();
        {
            RURecordControl::Scope scope;
            bulk();
        } // left without commit: rolled back
        QCOMPARE(t->items(), kept);
        QCOMPARE(control()->undoStack()->count(), 0);
    }

    // Runs of inserts whose places rise (every other row, appends), and one whose places do
    // not (each at the front), come back in their order after undo and redo.
    void risingAndFallingRunsOfInserts()
    {
        TestProject p;
        QtXmQdHzTable* t = p.current->getTenderInventory()->getQtXmQdHzTable();
        for (int i = 0; i < 100; ++i)
            TestProject::row(t, 0, {{2, QStringLiteral("r%1").arg(i)}});
        const std::function<int(int)> places[] = {[](int i) { return 2 * i + 1; },
                                                  [t](int) { return t->count(); },
                                                  [](int) { return 0; }};
        for (const auto& place : places) {
            const QList<BaseDataItem*> before = t->items();
            control()->BeginRecord();
            for (int i = 0; i < 40; ++i) {
                BaseDataItem* item = t->CreateItem();
                item->loadValue(2, QStringLiteral("n%1").arg(i));
                t->BaseDataItemInsert(place(i), item);
            }
            control()->EndRecord(info(QStringLiteral("插入")));
            const QList<BaseDataItem*> after = t->items();
            QCOMPARE(after.size(), before.size() + 40);
            undoAndRedoTwice(t, before, after);
            if (QTest::currentTestFailed())
                return;
        }
        QCOMPARE(names(t).mid(0, 4), QStringList({QStringLiteral("n39"), QStringLiteral("n38"),
                                                  QStringLiteral("n37"), QStringLiteral("n36")}));
        QCOMPARE(names(t).mid(40, 4), QStringList({QStringLiteral("r0"), QStringLiteral("n0"),
                                                   QStringLiteral("r1"), QStringLiteral("n1")}));
    }

    // Rows removed in one pass leave the table as removing them one by one, last first,
    // would, and come back to their places; a list with unordered, repeated or missing rows
    // takes only the ascending rows that exist.
    void removingManyRowsAtOnce()
    {
        TestProject p;
        QtXmQdHzTable* t = p.current->getTenderInventory()->getQtXmQdHzTable();
        QtXmQdHzTable* u = p.plain->getTenderInventory()->getQtXmQdHzTable();
        for (int i = 0; i < 400; ++i) {
            TestProject::row(t, 0, {{2, QStringLiteral("r%1").arg(i)}});
            TestProject::row(u, 0, {{2, QStringLiteral("r%1").arg(i)}});
        }
        const QList<BaseDataItem*> before = t->items();
        QRandomGenerator random(23);
        QList<int> rows;
        for (int row = 0; row < 400; ++row)
            if (random.bounded(3) != 0)
                rows << row;
        control()->BeginRecord();
        t->BaseDataItemRemoveRows(rows);
        for (auto it = rows.crbegin(); it != rows.crend(); ++it)
            u->BaseDataItemRemoveAt(*it);
        control()->EndRecord(info(QStringLiteral("删除块")));
        QCOMPARE(names(t), names(u));
        QCOMPARE(t->count(), 400 - rows.size());
        const QList<BaseDataItem*> after = t->items();
        undoAndRedoTwice(t, before, after);
        if (QTest::currentTestFailed())
            return;

        // Only 1, 3 and 5 of these are taken: the rest repeat, go back or lie outside.
        const QStringList left = names(t);
        control()->BeginRecord();
        t->BaseDataItemRemoveRows({-1, 1, 1, 0, 3, 5, 4, t->count(), t->count() + 7});
        control()->EndRecord(info(QStringLiteral("删除")));
        QStringList expected = left;
        for (int row : {5, 3, 1})
            expected.removeAt(row);
        QCOMPARE(names(t), expected);
        QVERIFY(control()->Undo());
        QCOMPARE(names(t), left);

        // Outside a record the rows are deleted and older records, which may hold them, go.
        t->BaseDataItemRemoveRows({0, 1});
        QCOMPARE(names(t), left.mid(2));
        QCOMPARE(control()->undoStack()->count(), 0);
        t->BaseDataItemRemoveRows({});
        QCOMPARE(t->count(), left.size() - 2);
    }

    void nestedRecordsFoldAndEmptyRecordsVanish()
    {
        TestProject p;
        QtXmQdHzTable* t = p.current->getTenderInventory()->getQtXmQdHzTable();
        BaseDataItem* a = TestProject::row(t, 0, {{3, 1.0}});
        control()->BeginRecord();
        a->setValue(3, 2.0);
        control()->BeginRecord();
        a->setValue(3, 3.0);
        control()->EndRecord(info(QStringLiteral("内层")));
        QCOMPARE(control()->undoStack()->count(), 0); // still inside the outer record
        control()->EndRecord(info(QStringLiteral("外层")));
        QCOMPARE(control()->undoStack()->count(), 1);
        QCOMPARE(control()->undoStack()->undoText(), QStringLiteral("外层"));
        QVERIFY(control()->Undo());
        QCOMPARE(a->getValue(3), QVariant(1.0));

        control()->BeginRecord();
        a->setValue(3, 1.0); // no change
        control()->EndRecord(info(QStringLiteral("无变化")));
        QCOMPARE(control()->undoStack()->count(), 1);
        QVERIFY(control()->undoStack()->canRedo()); // pushing a record would have dropped the redo
    }

    void changesOutsideRecordsAndTemporaryTables()
    {
        TestProject p;
        QtXmQdHzTable* t = p.current->getTenderInventory()->getQtXmQdHzTable();
        BaseDataItem* a = TestProject::row(t, 0, {{3, 1.0}});
        control()->BeginRecord();
        a->setValue(3, 5.0);
        control()->EndRecord(info(QStringLiteral("修改")));
        // A row that vanishes outside any record cannot be kept for older records.
        TestProject::row(t, 0, {});
        t->BaseDataItemRemoveAt(1);
        QCOMPARE(control()->undoStack()->count(), 0);

        QtXmQdHzTable temporary; // a template table belongs to no unit project
        control()->BeginRecord();
        TestProject::row(&temporary, 0, {})->setValue(3, 9.0);
        temporary.BaseDataItemRemoveAt(0);
        control()->EndRecord(info(QStringLiteral("模板")));
        QCOMPARE(control()->undoStack()->count(), 0);
    }

    void closingTheProjectDropsHistory()
    {
        auto p = std::make_unique<TestProject>();
        BaseDataItem* a =
            TestProject::row(p->current->getTenderInventory()->getQtXmQdHzTable(), 0, {});
        control()->BeginRecord();
        a->setValue(3, 5.0);
        control()->EndRecord(info(QStringLiteral("修改")));
        p.reset();
        QCOMPARE(control()->undoStack()->count(), 0);
        QVERIFY(!control()->Undo());
    }
    // A scope whose body throws puts back every kind of change and leaves no undo step; the
    // rows it removed come back as the very same objects.
    void failedScopeRollsEverythingBack()
    {
        TestProject p;
        QtXmQdHzTable* t = p.current->getTenderInventory()->getQtXmQdHzTable();
        BaseDataItem* a = TestProject::row(t, 0, {{2, QStringLiteral("a")}, {3, 1.0}});
        BaseDataItem* b = TestProject::row(t, 0, {{2, QStringLiteral("b")}, {3, 2.0}});
        BaseDataItem* c = TestProject::row(t, 0, {{2, QStringLiteral("c")}, {3, 3.0}});
        {
            RURecordControl::Scope scope;
            b->setValue(3, 20.0);
            scope.commit(info(QStringLiteral("修改其他项目清单行")));
        }
        QCOMPARE(control()->undoStack()->count(), 1);

        int external = 5;
        try {
            RURecordControl::Scope scope;
            a->setValue(3, 10.0);
            a->SetBlock(true);
            a->setRowHeight(30);
            BaseDataItem* added = t->CreateItem();
            t->BaseDataItemInsert(1, added);
            added->setValue(2, QStringLiteral("new"));
            t->BaseDataItemRemoveAt(t->GetItemIndexInOrder(c));
            t->BaseDataItemMove(0, 2);
            const QList<BaseDataItem*> before = t->items();
            t->reorder({t->at(2), t->at(1), t->at(0)});
            control()->RecordTableItemOrderChange(t, before);
            control()->RecordChange([&] { external = 5; }, [&] { external = 6; });
            external = 6;
            throw std::runtime_error("failure in the middle");
        } catch (const std::runtime_error&) {
        }
        QCOMPARE(t->items(), (QList<BaseDataItem*>{a, b, c}));
        QCOMPARE(names(t), QStringList({"a", "b", "c"}));
        QCOMPARE(a->getValue(3), QVariant(1.0));
        QVERIFY(!a->IsBlock());
        QCOMPARE(a->getRowHeight(), 0);
        QCOMPARE(b->getValue(3), QVariant(20.0));
        QCOMPARE(external, 5);
        QCOMPARE(control()->undoStack()->count(), 1);
        QCOMPARE(control()->undoStack()->undoText(), QStringLiteral("修改其他项目清单行"));
        QVERIFY(!control()->IsRecording());
        // The history before the failure still works.
        QVERIFY(control()->Undo());
        QCOMPARE(b->getValue(3), QVariant(2.0));
    }

    // An inner scope that fails takes back only its own part; the outer one goes on and
    // commits what it did before and after.
    void innerScopeRollsBackItsOwnPart()
    {
        TestProject p;
        QtXmQdHzTable* t = p.current->getTenderInventory()->getQtXmQdHzTable();
        BaseDataItem* a = TestProject::row(t, 0, {{2, QStringLiteral("a")}, {3, 1.0}});
        {
            RURecordControl::Scope outer;
            a->setValue(3, 2.0);
            try {
                RURecordControl::Scope inner;
                a->setValue(3, 3.0);
                t->BaseDataItemAppend(t->CreateItem());
                throw 42;
            } catch (int) {
            }
            QCOMPARE(a->getValue(3), QVariant(2.0));
            QCOMPARE(t->count(), 1);
            QVERIFY(control()->IsRecording());
            a->SetBlock(true);
            outer.commit(info(QStringLiteral("外层")));
        }
        QCOMPARE(control()->undoStack()->count(), 1);
        QVERIFY(control()->Undo());
        QCOMPARE(a->getValue(3), QVariant(1.0));
        QVERIFY(!a->IsBlock());
        // A scope that changed nothing and commits leaves no step either.
        {
            RURecordControl::Scope scope;
            scope.commit(info(QStringLiteral("空")));
        }
        QCOMPARE(control()->undoStack()->count(), 1);
        QCOMPARE(control()->undoStack()->index(), 0);
    }

    // The journal tells which tables a record changed, once per table when the record ends,
    // after each undo and redo, and after a rollback; changes outside records are not told.
    void tablesSignalTheirChangesPerRecord()
    {
        TestProject p;
        QtXmQdHzTable* t = p.current->getTenderInventory()->getQtXmQdHzTable();
        GeneralTableBase* other = p.plain->getTenderInventory()->getQtXmQdHzTable();
        for (int i = 0; i < 5; ++i)
            TestProject::row(t, 0, {{2, QString::number(i)}, {3, 1.0}});
        TestProject::row(other, 0, {{2, QStringLiteral("x")}});
        QList<QPair<GeneralTableBase*, TableChange>> told;
        auto connection = connect(control(), &RURecordControl::signalTableChanged, this,
                                  [&](GeneralTableBase* table, const TableChange& change) {
                                      told.append({table, change});
                                  });
        t->at(0)->setValue(3, 9.0); // outside any record
        QVERIFY(told.isEmpty());

        control()->BeginRecord();
        t->at(3)->setValue(3, 2.0);
        t->at(1)->setValue(3, 2.0);
        t->at(3)->SetBlock(true);
        other->at(0)->setValue(3, 5.0);
        QVERIFY(told.isEmpty()); // nothing until the record ends
        control()->EndRecord(info(QStringLiteral("改")));
        QCOMPARE(told.size(), 2);
        for (const auto& entry : told) {
            QVERIFY(!entry.second.rowsChanged);
            if (entry.first == t) {
                QCOMPARE(entry.second.firstRow, 1);
                QCOMPARE(entry.second.lastRow, 3);
            } else {
                QCOMPARE(entry.first, other);
                QCOMPARE(entry.second.firstRow, 0);
            }
        }

        told.clear();
        QVERIFY(control()->Undo());
        QCOMPARE(told.size(), 2);
        told.clear();
        QVERIFY(control()->Redo());
        QCOMPARE(told.size(), 2);

        told.clear();
        {
            RURecordControl::Scope scope;
            t->BaseDataItemRemoveAt(4);
            scope.commit(info(QStringLiteral("删除")));
        }
        QCOMPARE(told.size(), 1);
        QVERIFY(told.first().second.rowsChanged);

        told.clear();
        try {
            RURecordControl::Scope scope;
            t->BaseDataItemAppend(t->CreateItem());
            throw 1;
        } catch (int) {
        }
        QCOMPARE(told.size(), 1); // the views follow the rows put back
        QCOMPARE(told.first().first, t);
        QVERIFY(told.first().second.rowsChanged);
        QCOMPARE(t->count(), 4);
        disconnect(connection);
    }
};

QTEST_GUILESS_MAIN(tst_RURecordControl)
#include "tst_RURecordControl.moc"
