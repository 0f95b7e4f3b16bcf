// The bundled sample project reads as one real construction project: one tax method, each unit
// project with materials of its own discipline, and every note saying what its row computes.
#include "SampleProject.h"

#include "FyBlBusiness.h"
#include "ProjectWorks.h"
#include "QtXmQdJJjbBusiness.h"

#include <QRegularExpression>
#include <QtTest>

#include <cmath>

namespace {

struct Unit
{
    QString name;
    ConstructionWorks* works;
};

// Every works of every unit project, both versions.
QList<Unit> allUnitWorks(ProjectWorks* project)
{
    QList<Unit> units;
    for (ProTreeNode* node : project->unitProjectNodes())
        for (int audit = 0; audit < 2; ++audit)
            if (ConstructionWorks* works = project->works(audit, ProTreeNode::Id(node)))
                units << Unit{ProTreeNode::Name(node) + (audit ? "（送审）" : ""), works};
    return units;
}

BaseDataItem* rowNamed(GeneralTableBase* table, int field, const QString& name)
{
    for (BaseDataItem* item : table->items())
        if (item->getValue(field).toString() == name)
            return item;
    return nullptr;
}

double variable(ConstructionWorks* works, const QString& name)
{
    return FyBlBusiness::GetInstance()->GetFyBlValueByName(works, name);
}

// "按<base>的<rate>%…" as the notes word a rate over a base.
const QRegularExpression kRateNote(QStringLiteral("^按(.+)的([0-9.]+)%"));

} // namespace

class tst_SampleProject : public QObject
{
    Q_OBJECT

    std::unique_ptr<ProjectWorks> sample = BuildSampleProject();

private slots:
    void theWholeProjectHasOneTaxMethod()
    {
        const QString feesTemplate = sample->GetPriceModelConfig()->getItem(5).toString();
        QVERIFY(feesTemplate.endsWith("一般计税"));
        const QList<Unit> units = allUnitWorks(sample.get());
        QCOMPARE(units.size(), 7); // six unit projects, one with its submitted version
        for (const Unit& u : units) {
            const char* where = qPrintable(u.name);
            QCOMPARE(u.works->getXtBl(5).toString(), feesTemplate);
            // The rate text, the rate variable and the tax row all say 9%, general method.
            QCOMPARE(u.works->getXtBl(10).toString(), QString("9%"));
            QVERIFY2(std::abs(variable(u.works, "税金费率") - 0.09) < 1e-9, where);
            BaseDataItem* tax =
                rowNamed(u.works->getTenderInventory()->getGfSjQdTable(), 2, "税金");
            QVERIFY2(tax, where);
            QCOMPARE(tax->getDouble(4), 9.0);
            QCOMPARE(tax->getValue(7).toString(), QString("一般计税"));
            QVERIFY2(std::abs(tax->getDouble(5) - variable(u.works, "税金")) < 0.011, where);
        }
    }

    void eachUnitProjectHasItsOwnMaterialsForItsDiscipline()
    {
        QList<QSet<QString>> sets;
        for (ProTreeNode* node : sample->unitProjectNodes()) {
            const QString unit = ProTreeNode::Name(node);
            QSet<QString> materials;
            QString names;
            for (const BaseDataItem* m :
                 sample->works(0, ProTreeNode::Id(node))->getRcjHzTable()->items()) {
                materials << m->getValue(3).toString() + '|' + m->getValue(4).toString() + '|' +
                                 m->getValue(5).toString();
                names += m->getValue(3).toString() + ' ';
            }
            QVERIFY2(materials.size() >= 40, qPrintable(unit));
            for (GeneralTableBase* table :
                 sample->works(0, ProTreeNode::Id(node))->getTenderInventory()->tables())
                QVERIFY2(table->count() > 0, qPrintable(unit)); // every page has rows to show
            // Building works pour concrete and lay bricks; plumbing lays pipes and valves;
            // electrical works pull cables; none uses another's.
            const bool building = unit.contains("建筑");
            const bool plumbing = unit.contains("给排水");
            const bool electrical = unit.contains("电气");
            QCOMPARE(int(building) + int(plumbing) + int(electrical), 1);
            QCOMPARE(names.contains("商品混凝土") && names.contains("页岩多孔砖"), building);
            QCOMPARE(names.contains("阀") && names.contains("给水管"), plumbing);
            QCOMPARE(names.contains("电缆") && names.contains("配电箱"), electrical);
            for (const QSet<QString>& other : std::as_const(sets))
                QVERIFY2(other != materials, qPrintable(unit));
            sets << materials;
        }
        QCOMPARE(sets.size(), 6);
    }

    void notesSayWhatTheRowsCompute()
    {
        int checked = 0;
        QHash<QString, double> publishedPrice; // trade → price before any raise
        for (const Unit& u : allUnitWorks(sample.get())) {
            TenderInventory* lists = u.works->getTenderInventory();
            // Fees: the note names the base and the rate the row is computed with.
            for (const BaseDataItem* row : lists->getGfSjQdTable()->items()) {
                const QRegularExpressionMatch note = kRateNote.match(row->getValue(7).toString());
                if (!note.hasMatch())
                    continue;
                QCOMPARE(row->getValue(3).toString(), note.captured(1));
                QCOMPARE(row->getDouble(4), note.captured(2).toDouble());
                ++checked;
            }
            // Other items: a formula holds the named base times the rate; an amount is it.
            for (const BaseDataItem* row : lists->getQtXmQdHzTable()->items()) {
                const QRegularExpressionMatch note = kRateNote.match(row->getValue(4).toString());
                if (!note.hasMatch())
                    continue;
                const double rate = note.captured(2).toDouble() / 100;
                if (row->getKind() == QtXmQdJJjbBusiness::Calculation) {
                    const QStringList formula = row->getValue(3).toString().split('*');
                    QCOMPARE(formula.size(), 2);
                    QVERIFY2(formula.at(0).endsWith(note.captured(1)), qPrintable(formula.at(0)));
                    QCOMPARE(formula.at(1).toDouble(), rate);
                } else {
                    const double base = variable(u.works, note.captured(1));
                    QVERIFY2(base > 0, qPrintable(note.captured(1)));
                    QVERIFY2(std::abs(row->getDouble(3) - base * rate) <= 0.5,
                             qPrintable(u.name + row->getValue(2).toString()));
                }
                ++checked;
            }
            // Daywork: a remark that says the price was raised by N 元 has the published
            // price plus N, the same published price in every unit project.
            const QRegularExpression raised(QStringLiteral("单价上调([0-9]+)元$"));
            for (const BaseDataItem* row : lists->getLxGzXmRgDjQdTable()->items()) {
                const QString remark = row->getValue(5).toString();
                if (!remark.startsWith("成都市区 2021年5月"))
                    continue;
                const QRegularExpressionMatch m = raised.match(remark);
                const double published =
                    row->getDouble(4) - (m.hasMatch() ? m.captured(1).toInt() : 0);
                const QString trade = row->getValue(2).toString();
                if (publishedPrice.contains(trade))
                    QCOMPARE(published, publishedPrice.value(trade));
                publishedPrice.insert(trade, published);
                ++checked;
            }
        }
        QVERIFY(checked > 50);
        QCOMPARE(publishedPrice.value("普工"), 110.0);
    }
};

QTEST_GUILESS_MAIN(tst_SampleProject)
#include "tst_SampleProject.moc"
