#include "MaterialGridRules.h"
#include "ZbrClGzfQdBusiness.h"

#include <QtTest>

// The materials grids' rules without any widget: the block, the sorts, keeping the first
// rows, clearing. Tables here belong to no project, so nothing is journalled.
class tst_MaterialGridRules : public QObject
{
    Q_OBJECT

private:
    static BaseDataItem* row(GeneralTableBase* t, int kind,
                             std::initializer_list<std::pair<int, QVariant>> fields)
    {
        BaseDataItem* item = t->CreateItem();
        item->loadState(kind, false, 0, QString());
        for (const auto& f : fields)
            item->loadValue(f.first, f.second);
        t->attach(t->count(), item);
        return item;
    }
    static void material(GeneralTableBase* t, int serial, const QString& name, QVariant price,
                         QVariant quantity, const QString& code = QString())
    {
        row(t, 1, {{1, serial}, {3, name}, {7, price}, {9, quantity}, {12, code}});
        t->at(t->count() - 1)->loadValue(10, price.toDouble() * quantity.toDouble());
    }
    static QStringList names(const QList<BaseDataItem*>& rows)
    {
        QStringList list;
        for (BaseDataItem* item : rows)
            list << item->getValue(3).toString();
        return list;
    }

private slots:
    void blockHeadTailAndInversion()
    {
        ZbrClGzfQdTable t;
        for (int i = 0; i < 6; ++i)
            material(&t, i + 1, QString("材料%1").arg(i), 10, 1);
        row(&t, 1, {}); // an empty row
        MaterialGridRules::defineBlockHead(&t, 2);
        QCOMPARE(MaterialGridRules::blockRows(&t), QList<int>({2}));
        MaterialGridRules::defineBlockTail(&t, 4);
        QCOMPARE(MaterialGridRules::blockRows(&t), QList<int>({2, 3, 4}));
        MaterialGridRules::defineBlockHead(&t, 1); // above the block: reaches down to it
        QCOMPARE(MaterialGridRules::blockRows(&t), QList<int>({1, 2, 3, 4}));
        MaterialGridRules::defineBlockTail(&t, 3); // rows below the tail leave
        QCOMPARE(MaterialGridRules::blockRows(&t), QList<int>({1, 2, 3}));
        MaterialGridRules::defineBlockTail(&t, 5); // below the block: reaches up to it
        QCOMPARE(MaterialGridRules::blockRows(&t), QList<int>({1, 2, 3, 4, 5}));
        MaterialGridRules::invertBlock(&t, &ZbrClGzfQdBusiness::CheckIsEmptyRow);
        QCOMPARE(MaterialGridRules::blockRows(&t), QList<int>({0})); // the empty row stays out
        MaterialGridRules::defineBlockHead(&t, -1);                  // no focused row: nothing
        MaterialGridRules::defineBlockTail(&t, 99);
        QCOMPARE(MaterialGridRules::blockRows(&t), QList<int>({0}));
        MaterialGridRules::setBlockAll(&t, true);
        QCOMPARE(MaterialGridRules::blockRows(&t).size(), 7);
        MaterialGridRules::setBlockAll(&t, false);
        QVERIFY(MaterialGridRules::blockRows(&t).isEmpty());
    }

    void sortsPutBlanksLastAndOtherRowsAfter()
    {
        ZbrClGzfQdTable t;
        material(&t, 3, "钢筋", 4200, 10, "B-002");
        material(&t, 1, "水泥", 480, 0, "A-010"); // zero quantity: last by quantity
        material(&t, 4, "电梯", 285000, 2, "B-001");
        material(&t, 2, "安全网", 12, QVariant(), "");
        row(&t, 2, {{3, "合计"}, {10, 1.0}});
        row(&t, 1, {{7, 5.0}}); // no name: not sorted by name or serial
        using namespace MaterialGridRules;
        QCOMPARE(names(sortedOrder(t.items(), ByQuantity)),
                 QStringList({"钢筋", "电梯", "水泥", "安全网", "", "合计"}));
        QCOMPARE(names(sortedOrder(t.items(), ByAmount)),
                 QStringList({"电梯", "钢筋", "水泥", "安全网", "", "合计"}));
        QCOMPARE(names(sortedOrder(t.items(), ByPrice)),
                 QStringList({"电梯", "钢筋", "水泥", "安全网", "", "合计"}));
        // Pinyin order; the nameless row and the total keep their order after the sorted rows.
        QCOMPARE(names(sortedOrder(t.items(), ByName)),
                 QStringList({"安全网", "电梯", "钢筋", "水泥", "合计", ""}));
        QCOMPARE(names(sortedOrder(t.items(), BySerial)),
                 QStringList({"水泥", "安全网", "钢筋", "电梯", "合计", ""}));
        QCOMPARE(names(sortedOrder(t.items(), ByTenderCode, 12)),
                 QStringList({"水泥", "电梯", "钢筋", "安全网", "合计", ""}));
        // A list without a tender code keeps its order.
        QCOMPARE(sortedOrder(t.items(), ByTenderCode), t.items());
        QCOMPARE(sortLabel(ByAmount), QString("排序.金额"));
        QCOMPARE(sortLabel(ByQuantity), QString("排序.数量"));
        QCOMPARE(sortLabel(ByPrice), QString("排序.单价"));
        QCOMPARE(sortLabel(ByName), QString("排序.材料名称"));
        QCOMPARE(sortLabel(BySerial), QString("排序.序号"));
        QCOMPARE(sortLabel(ByTenderCode), QString("排序.招标编码"));
    }

    void keepingClearingAndRowsToClear()
    {
        ZbrClGzfQdTable t;
        for (int i = 0; i < 5; ++i)
            material(&t, i + 1, QString("材料%1").arg(i), 10, i + 1);
        row(&t, 2, {{3, "合计"}});
        t.at(1)->SetBlock(true);
        t.at(5)->SetBlock(true); // the total row is never cleared
        QCOMPARE(MaterialGridRules::rowsToClear(&t, true), QList<BaseDataItem*>({t.at(1)}));
        QCOMPARE(MaterialGridRules::rowsToClear(&t, false).size(), 5);

        MaterialGridRules::keepFirstRows(&t, 30); // fewer rows than kept: nothing goes
        QCOMPARE(t.count(), 6);
        MaterialGridRules::keepFirstRows(&t, 2);
        QCOMPARE(names(t.items()), QStringList({"材料0", "材料1", "合计"}));
        MaterialGridRules::keepFirstRows(&t, -1);
        QCOMPARE(t.count(), 3);
        MaterialGridRules::keepFirstRows(&t, 0);
        QCOMPARE(names(t.items()), QStringList({"合计"}));

        ZbrClGzfQdTable five;
        for (int i = 0; i < 5; ++i)
            material(&five, i + 1, QString("材料%1").arg(i), 10, 1);
        MaterialGridRules::clearAllRows(&five);
        QCOMPARE(five.count(), 4);
        for (BaseDataItem* item : five.items()) {
            QCOMPARE(item->getKind(), 1);
            QVERIFY(ZbrClGzfQdBusiness::CheckIsEmptyRow(item));
        }
    }
};

QTEST_GUILESS_MAIN(tst_MaterialGridRules)
#include "tst_MaterialGridRules.moc"
