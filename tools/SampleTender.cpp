#include "SampleTender.h"

#include "ProjectWorks.h"
#include "TenderDocument.h"
#include "TenderExchange.h"

#include <cmath>

namespace {

// Materials the tenderer names that no unit project of the bid uses, by the unit project's
// discipline: building works, plumbing, electrical.
const char* const kTenderOnly[3][2][5] = {
    {{"铝单板", "2.5mm 氟碳喷涂", "m2", "285", "优等品"},
     {"不锈钢栏杆", "304 φ50", "m", "320", "一级品"}},
    {{"不锈钢给水管", "DN50 薄壁", "m", "86", "合格品"},
     {"倒流防止器", "DN100", "个", "2600", "合格品"}},
    {{"矿物绝缘电缆", "BTTZ-4×25", "m", "265", "合格品"},
     {"智能照明控制模块", "8路", "个", "1380", "合格品"}},
};

int disciplineOf(const QString& unitName)
{
    if (unitName.contains(QStringLiteral("建筑")))
        return 0;
    return unitName.contains(QStringLiteral("给排水")) ? 1 : 2;
}

QString otherSpelling(QString spec)
{
    // The way another estimator types the same model (规格型号).
    spec.replace(QChar(0x00D7), QLatin1Char('*'));    // ×
    spec.replace(QChar(0x03A6), QStringLiteral("Ф")); // Greek Phi as Cyrillic Ef
    spec.replace(QLatin1Char(' '), QString());
    return spec;
}

} // namespace

TenderDocument BuildSampleTender(ProjectWorks* sample, bool fitting)
{
    TenderDocument d = TenderExchange::FromProject(sample, TenderDocument::KindTender);
    d.standard = QStringLiteral("Tarvo招投标数据交换文件");
    d.tenderer = QStringLiteral("成都市某学校");
    d.date = QStringLiteral("2026-05-01");
    d.tool = QStringLiteral("Tarvo");
    d.toolVersion = QStringLiteral("0.1");
    // The tenderer's own project: its ids mean nothing in the bidder's project.
    d.projectId = QStringLiteral("ZB-2026-0315");
    int unitNo = 0;
    for (int s = 0; s < d.singles.size(); ++s) {
        TenderSingleProject& single = d.singles[s];
        single.id = QStringLiteral("DX-%1").arg(s + 1, 2, 10, QLatin1Char('0'));
        for (TenderUnitProject& unit : single.units) {
            ++unitNo;
            unit.id = QStringLiteral("DW-%1").arg(unitNo, 2, 10, QLatin1Char('0'));
            QVector<TenderMaterial> list;
            int n = 0;
            for (int i = 0; i < unit.provisional.size(); ++i) {
                TenderMaterial m = unit.provisional.at(i);
                if (i % 4 == 3)
                    continue; // a bid material the tender does not list
                if (i % 3 == 1)
                    m.spec = otherSpelling(m.spec);
                m.code = QStringLiteral("%1%2")
                             .arg(unitNo, 2, 10, QLatin1Char('0'))
                             .arg(++n, 3, 10, QLatin1Char('0'));
                m.code.prepend(QStringLiteral("ZG"));
                m.quantity.reset();
                m.amount.reset();
                m.price = std::round(m.price.value_or(0));
                m.grade = i % 2 ? QStringLiteral("合格品") : QStringLiteral("优等品");
                m.remark = QStringLiteral("暂估价含运至施工现场费用");
                list << m;
            }
            for (const auto& extra : kTenderOnly[disciplineOf(unit.name)]) {
                TenderMaterial m;
                m.code = QStringLiteral("ZG%1%2")
                             .arg(unitNo, 2, 10, QLatin1Char('0'))
                             .arg(++n, 3, 10, QLatin1Char('0'));
                m.name = QString::fromUtf8(extra[0]);
                m.spec = QString::fromUtf8(extra[1]);
                m.unit = QString::fromUtf8(extra[2]);
                m.price = QString::fromLatin1(extra[3]).toDouble();
                m.grade = QString::fromUtf8(extra[4]);
                list << m;
            }
            if (unitNo == 1 && list.size() > 2)
                list[2].code.clear(); // the tenderer forgot one code
            unit.provisional = list;
            unit.provisionalTotal.reset();
        }
    }
    d.provisionalTotal.reset();
    // The evaluated materials overlap the bid's the same way: most as the bid has them, some
    // with the model spelt otherwise, one the bid does not list, and one of the bid's left out.
    QVector<TenderEvaluatedMaterial> evaluated;
    for (int i = 0; i < d.evaluated.size(); ++i) {
        TenderEvaluatedMaterial m = d.evaluated.at(i);
        if (i == d.evaluated.size() - 1 && i > 0)
            continue;
        if (i % 3 == 1)
            m.spec = otherSpelling(m.spec);
        m.serial = QString::number(evaluated.size() + 1);
        m.grade = QStringLiteral("合格品");
        evaluated << m;
    }
    TenderEvaluatedMaterial coating;
    coating.serial = QString::number(evaluated.size() + 1);
    coating.code = QStringLiteral("PS%1").arg(evaluated.size() + 1, 3, 10, QLatin1Char('0'));
    coating.name = QStringLiteral("钢结构防火涂料");
    coating.spec = QStringLiteral("超薄型 耐火1.5h");
    coating.unit = QStringLiteral("kg");
    coating.price = 28;
    coating.quantity = 1200;
    coating.amount = 33600;
    coating.grade = QStringLiteral("合格品");
    evaluated << coating;
    d.evaluated = evaluated;
    d.evaluatedTotal.reset();
    if (!fitting) {
        // Another project's tree: a unit project renamed, and one more.
        TenderSingleProject& last = d.singles.last();
        last.units.last().name = QStringLiteral("智能化工程");
        TenderUnitProject outdoor;
        outdoor.id = QStringLiteral("DW-99");
        outdoor.name = QStringLiteral("室外配套工程");
        last.units << outdoor;
    }
    return d;
}
