#include "SampleProject.h"

#include "FyBlBusiness.h"
#include "GfQdBusiness.h"
#include "LxGzXmQdJJjbBusiness.h"
#include "ProjectWorks.h"
#include "QtXmQdJJjbBusiness.h"
#include "TableOps.h"
#include "ZgClQdBusiness.h"

#include <QRandomGenerator>

namespace {

struct Material
{
    const char* code;
    const char* name;
    const char* spec;
    const char* unit;
    double price;
    const char* origin;
};

// A catalogue to draw unit-project materials from (prices in 元, base prices of 2020).
const Material kMaterials[] = {
    {"01010100", "钢筋", "HPB300 Φ8", "t", 4350, "攀钢"},
    {"01010101", "钢筋", "HRB400 Φ12", "t", 4280, "攀钢"},
    {"01010102", "钢筋", "HRB400 Φ16", "t", 4210, "德胜钢铁"},
    {"01010103", "钢筋", "HRB400 Φ20", "t", 4190, "德胜钢铁"},
    {"01010104", "钢筋", "HRB400 Φ25", "t", 4180, "川威"},
    {"04010001", "水泥", "P.O 42.5", "t", 480, "峨胜水泥"},
    {"04010002", "水泥", "P.C 32.5", "t", 420, "拉法基"},
    {"04030001", "中砂", "", "m3", 135, "金堂"},
    {"04040001", "碎石", "5-31.5mm", "m3", 120, "都江堰"},
    {"80210001", "商品混凝土", "C15", "m3", 395, "成都建工预拌"},
    {"80210002", "商品混凝土", "C25", "m3", 425, "成都建工预拌"},
    {"80210003", "商品混凝土", "C30", "m3", 445, "成都建工预拌"},
    {"80210004", "商品混凝土", "C35", "m3", 470, "成都建工预拌"},
    {"04130001", "页岩多孔砖", "240×115×90", "千块", 620, "双流"},
    {"04130002", "加气混凝土砌块", "600×240×200", "m3", 280, "新津"},
    {"05030001", "板枋材", "", "m3", 2100, "四川"},
    {"13050001", "防水卷材", "SBS 3mm", "m2", 32, "东方雨虹"},
    {"13050002", "聚氨酯防水涂料", "", "kg", 18.5, "东方雨虹"},
    {"11010001", "成品木门", "M1021", "樘", 1150, "TATA"},
    {"11030001", "铝合金窗", "断桥隔热 1.4mm", "m2", 560, "坚美"},
    {"07010001", "釉面砖", "300×600", "m2", 68, "马可波罗"},
    {"07010002", "抛光砖", "800×800", "m2", 95, "东鹏"},
    {"07020001", "花岗岩板", "芝麻白 20mm", "m2", 185, "福建"},
    {"12010001", "乳胶漆", "内墙", "kg", 26, "立邦"},
    {"12010002", "外墙涂料", "弹性", "kg", 32, "三棵树"},
    {"17010001", "焊接钢管", "DN25", "m", 21.5, "友发"},
    {"17010002", "镀锌钢管", "DN100", "m", 98, "友发"},
    {"17030001", "PP-R给水管", "De25", "m", 9.8, "联塑"},
    {"17030002", "PP-R给水管", "De32", "m", 14.2, "联塑"},
    {"17030003", "UPVC排水管", "De110", "m", 24, "联塑"},
    {"17030004", "UPVC排水管", "De160", "m", 45, "联塑"},
    {"18010001", "截止阀", "DN25", "个", 68, "埃美柯"},
    {"18010002", "蝶阀", "DN100", "个", 420, "上海沪工"},
    {"18030001", "水表", "DN25", "个", 160, "宁波水表"},
    {"19010001", "卫生洁具 坐便器", "连体", "套", 1280, "TOTO"},
    {"19010002", "洗脸盆", "台下盆", "套", 560, "箭牌"},
    {"28010001", "电力电缆", "YJV-4×25+1×16", "m", 118, "特变电工"},
    {"28010002", "电力电缆", "YJV-5×10", "m", 62, "特变电工"},
    {"28020001", "电线", "BV-2.5", "m", 2.6, "远东"},
    {"28020002", "电线", "BV-4", "m", 4.1, "远东"},
    {"29010001", "焊接钢管 电线管", "SC20", "m", 12.5, "友发"},
    {"29010002", "PVC电线管", "PC20", "m", 2.8, "联塑"},
    {"30010001", "配电箱", "AL1 定制", "台", 3200, "正泰"},
    {"30010002", "照明配电箱", "AL 12回路", "台", 1650, "正泰"},
    {"31010001", "LED平板灯", "600×600 36W", "套", 168, "欧普"},
    {"31010002", "LED筒灯", "12W", "套", 58, "欧普"},
    {"31020001", "开关", "单联单控", "个", 16, "公牛"},
    {"31020002", "插座", "五孔 10A", "个", 19, "公牛"},
    {"33010001", "应急照明灯", "3W", "套", 120, "三雄极光"},
    {"34010001", "消火栓箱", "SG24A65", "套", 860, "天广"},
};

const char* const kLabourTrades[][2] = {
    {"普工", "110"}, {"技工", "142"},     {"混凝土工", "128"},   {"钢筋工", "136"},
    {"木工", "138"}, {"装饰技工", "156"}, {"装饰细木工", "168"}, {"安装技工", "150"},
};

BaseDataItem* addRow(GeneralTableBase* table, int kind,
                     std::initializer_list<std::pair<int, QVariant>> fields)
{
    BaseDataItem* item = table->CreateItem();
    item->loadState(kind, false, 0, QString());
    for (const auto& f : fields)
        item->loadValue(f.first, f.second);
    table->attach(table->count(), item);
    return item;
}

QString text(const char* s)
{
    return QString::fromUtf8(s);
}

// The 分部分项 and 措施项目 bills lie outside these lists: their totals and breakdowns are the
// entered fee variables the other lists start from. Shares as a building bill would have them.
void fillFeeVariables(ConstructionWorks* works, double divisional, double measures, double area,
                      bool general)
{
    FyBlBusiness* fyBl = FyBlBusiness::GetInstance();
    auto set = [&](const char* name, double value) {
        fyBl->setValue(works, QString::fromUtf8(name), std::round(value * 100) / 100);
    };
    // Rates are fractions and keep their digits.
    auto setRate = [&](const char* name, double value) {
        fyBl->setValue(works, QString::fromUtf8(name), value);
    };
    const double d = divisional;
    set("分部分项工程费", d);
    set("分部分项人工费", d * 0.22);
    set("分部分项材料费", d * 0.58);
    set("分部分项机械费", d * 0.06);
    set("分部分项管理费", d * 0.08);
    set("分部分项利润", d * 0.06);
    set("分部分项主材费", d * 0.30);
    set("分部分项设备费", d * 0.05);
    set("分部分项暂估材料费", d * 0.04);
    set("分部分项甲供材料费", d * 0.02);
    set("分部分项定额人工费", d * 0.22 * 0.87);
    set("分部分项定额材料费", d * 0.58 * 0.95);
    set("分部分项定额机械费", d * 0.06 * 0.97);
    set("分部分项安全文明施工费", 0);

    const double m = measures;
    set("措施项目费", m);
    set("措施项目人工费", m * 0.30);
    set("措施项目材料费", m * 0.40);
    set("措施项目机械费", m * 0.15);
    set("措施项目管理费", m * 0.09);
    set("措施项目利润", m * 0.06);
    // Lump-sum measures at their rates of the 分部分项 bill; unit-rate measures are the rest.
    const struct
    {
        const char* name;
        const char* rateName;
        double rate;
    } lumpSum[] = {{"措施项目安全文明施工费", "安全文明施工费费率", 0.0285},
                   {"措施项目夜间施工增加费", "夜间施工增加费费率", 0.002},
                   {"措施项目二次搬运费", "二次搬运费费率", 0.003},
                   {"措施项目冬雨季施工增加费", "冬雨季施工增加费费率", 0.0025},
                   {"措施项目已完工程及设备保护费", "已完工程保护费费率", 0.001},
                   {"措施项目工程定位复测费", "工程定位复测费费率", 0.001}};
    double lump = 0;
    for (const auto& item : lumpSum) {
        const double value = std::round(d * item.rate * 100) / 100;
        set(item.name, value);
        setRate(item.rateName, item.rate);
        lump += value;
    }
    const double safety = std::round(d * 0.0285 * 100) / 100;
    set("环境保护费", safety * 0.10);
    set("文明施工费", safety * 0.30);
    set("安全施工费", safety * 0.35);
    set("临时设施费", safety - std::round(safety * 0.75 * 100) / 100);
    set("措施项目总价措施项目费", lump);
    const double unitRate = m - std::round(lump * 100) / 100;
    set("措施项目单价措施项目费", unitRate);
    set("脚手架工程费", unitRate * 0.35);
    set("混凝土模板及支架费", unitRate * 0.40);
    set("垂直运输费", unitRate * 0.15);
    set("大型机械进出场及安拆费", unitRate * 0.07);
    set("施工排水降水费", unitRate * 0.03);
    set("单价措施人工费", unitRate * 0.30);
    set("总价措施人工费", m * 0.30 - unitRate * 0.30);
    setRate("管理费费率", 0.0825);
    setRate("利润率", 0.065);
    set("建筑面积", area);
    set("签证索赔项目签证费用", 0);
    set("签证索赔项目索赔费用", 0);
    setRate("工程定额测定费费率", 0.0014);
    setRate("税金费率", general ? 0.09 : 0.03);
    works->setXtBl(10, general ? QStringLiteral("9%") : QStringLiteral("3%"));
}

void fillOtherItems(ConstructionWorks* works, double divisional)
{
    QtXmQdHzTable* t = works->getTenderInventory()->getQtXmQdHzTable();
    addRow(t, 0,
           {{1, QStringLiteral("1")},
            {2, QStringLiteral("暂列金额")},
            {5, QStringLiteral("项")},
            {3, std::round(divisional * 0.05)},
            {4, QStringLiteral("按分部分项工程费的5%计列")}});
    addRow(t, 2, {{1, QStringLiteral("2")}, {2, QStringLiteral("暂估价")}});
    addRow(t, 0,
           {{1, QStringLiteral("2.1")},
            {2, QStringLiteral("材料(工程设备)暂估价")},
            {5, QStringLiteral("项")},
            {3, 0.0},
            {4, QStringLiteral("计入综合单价")}});
    addRow(t, 0,
           {{1, QStringLiteral("2.2")},
            {2, QStringLiteral("专业工程暂估价")},
            {5, QStringLiteral("项")},
            {3, std::round(divisional * 0.03)}});
    addRow(t, 0,
           {{1, QStringLiteral("3")},
            {2, QStringLiteral("计日工")},
            {5, QStringLiteral("项")},
            {3, 18600.0}});
    addRow(t, 3,
           {{1, QStringLiteral("4")},
            {2, QStringLiteral("总承包服务费")},
            {5, QStringLiteral("项")},
            {3, QStringLiteral("其他项目专业工程暂估价*0.015")},
            {4, QStringLiteral("按专业分包工程造价的1.5%")}});
    addRow(t, 1, {});
    addRow(t, 4, {{2, QStringLiteral("合计")}});
    QtXmQdJJjbBusiness::CalculateTable(works, t);
}

void fillDaywork(ConstructionWorks* works, int variant)
{
    LxGzXmRgDjQdTable* t = works->getTenderInventory()->getLxGzXmRgDjQdTable();
    addRow(t, 1, {{1, QStringLiteral("一")}, {2, QStringLiteral("人工")}});
    int n = 0;
    for (const auto& trade : kLabourTrades) {
        const int raised = (variant % 3) * 2;
        const double price = QString::fromLatin1(trade[1]).toDouble() + raised;
        // The remark says where the price comes from, and by how much it was raised.
        const QString source = raised == 0
                                   ? QStringLiteral("成都市区 2021年5月")
                                   : QStringLiteral("成都市区 2021年5月单价上调%1元").arg(raised);
        addRow(t, 0,
               {{1, QString::number(++n)},
                {2, text(trade[0])},
                {3, QStringLiteral("工日")},
                {4, price},
                {5, source},
                {6, 10.0 * (1 + n % 4)}});
    }
    LxGzXmQdJJjbBusiness::CalculateLxGzXmQdTable(works, t);
}

void fillFees(ConstructionWorks* works, bool general)
{
    GfSjQdTable* t = works->getTenderInventory()->getGfSjQdTable();
    const QString base = QStringLiteral("分部分项人工费");
    addRow(t, 1, {{1, QStringLiteral("1")}, {2, QStringLiteral("规费")}});
    const struct
    {
        const char* serial;
        const char* name;
        double rate;
    } fees[] = {{"1.1", "养老保险费", 7.5}, {"1.2", "失业保险费", 0.6}, {"1.3", "医疗保险费", 2.7},
                {"1.4", "工伤保险费", 0.7}, {"1.5", "生育保险费", 0.3}, {"1.6", "住房公积金", 3.3}};
    for (const auto& fee : fees)
        addRow(t, 0, {{1, text(fee.serial)}, {2, text(fee.name)}, {3, base}, {4, fee.rate}});
    addRow(t, 0,
           {{1, QStringLiteral("1.7")},
            {2, QStringLiteral("工程排污费")},
            {3, QStringLiteral("分部分项工程费")},
            {4, 0.1},
            {7, QStringLiteral("按分部分项工程费的0.1%计取")}});
    addRow(t, 2,
           {{1, QStringLiteral("2")},
            {2, QStringLiteral("税金")},
            {3, QStringLiteral("分部分项工程费+措施项目费+其他项目合计+规费合计")},
            {4, general ? 9.0 : 3.0},
            {7, general ? QStringLiteral("一般计税") : QStringLiteral("简易计税")}});
    GfQdBusiness::CalculateGfQdTable(works, t);
}

void fillMaterials(ConstructionWorks* works, QRandomGenerator& random, int unitIndex, int count)
{
    RcjHzTable* t = works->getRcjHzTable();
    const int catalogue = int(std::size(kMaterials));
    for (int i = 0; i < count; ++i) {
        const Material& m = kMaterials[i % catalogue];
        // Beyond the catalogue, variants of the same material in other models.
        const QString spec =
            i < catalogue ? text(m.spec)
                          : QString(text(m.spec) + QStringLiteral(" 型%1").arg(i / catalogue));
        const double quantity =
            std::round(random.bounded(20, 5000) * 1.0 + random.generateDouble() * 100) / 100.0;
        double adjusted = m.price * (1.0 + (random.bounded(0, 9) - 4) / 100.0);
        QString origin = text(m.origin);
        bool provisional = i % 7 == 0;
        // Deliberate disagreements between unit projects.
        if (i % 11 == 0 && unitIndex % 2 == 1)
            adjusted *= 1.06;
        if (i % 13 == 0 && unitIndex == 2)
            provisional = !provisional;
        if (i % 17 == 0 && unitIndex == 3)
            origin = QStringLiteral("重庆");
        // Provisional materials carry a tender code, except in the last two unit projects for
        // every fifth one; one remark is written in one unit project only.
        const QString tenderCode = provisional && !(i % 5 == 0 && unitIndex >= 4)
                                       ? QStringLiteral("ZG%1").arg(i + 1, 3, 10, QLatin1Char('0'))
                                       : QString();
        const QString manufacturer = i % 35 == 0 && unitIndex == 5
                                         ? text(m.origin) + QStringLiteral("第二分厂")
                                         : text(m.origin);
        const QString remark =
            i % 63 == 0 && unitIndex == 4 ? QStringLiteral("甲方认质认价") : QString();
        // Provisional prices are the tender's, the same in every unit project, but for the
        // deliberate disagreements above.
        if (i % 7 == 0 && !(i % 11 == 0 && unitIndex % 2 == 1))
            adjusted = m.price;
        adjusted = std::round(adjusted * 100) / 100;
        const QString code = QString::fromLatin1(m.code) +
                             QStringLiteral("%1").arg(i / catalogue, 2, 10, QLatin1Char('0'));
        addRow(t, 1,
               {{1, code},
                {2, QStringLiteral("材")},
                {3, text(m.name)},
                {4, spec},
                {5, text(m.unit)},
                {6, m.price},
                {7, adjusted},
                {9, quantity},
                {10, std::round(adjusted * quantity * 100) / 100},
                {11, provisional},
                {12, origin},
                {13, manufacturer},
                {14, QStringLiteral("合格")},
                {15, remark},
                {16, i % 19 == 0},
                {18, tenderCode}});
    }
}

// The materials lists of one works (a unit project, or the project root for the whole
// project), as the summaries would leave them: from the given works' materials.
void fillMaterialLists(ConstructionWorks* target, ConstructionWorks* source)
{
    ZgjClHzTable* provisional = target->getTenderInventory()->getZgjClHzTable();
    ZbrClGzfQdTable* purchased = target->getTenderInventory()->getZbrClGzfQdTable();
    SjCqXPsClTable* evaluated = target->getTenderInventory()->getSjCqXPsClHzTable();
    int serial = 0;
    for (const BaseDataItem* m : source->getRcjHzTable()->items()) {
        if (m->getValue(11).toBool()) {
            ++serial;
            addRow(provisional, 1,
                   {{1, serial},
                    {2, QStringLiteral("ZG%1").arg(serial, 3, 10, QLatin1Char('0'))},
                    {3, m->getValue(3)},
                    {4, m->getValue(4)},
                    {5, m->getValue(5)},
                    {6, m->getValue(6)},
                    {7, m->getValue(7)},
                    {9, m->getValue(9)},
                    {12, m->getValue(12)}});
        }
        if (m->getValue(16).toBool())
            addRow(
                evaluated, 1,
                {{1, evaluated->count() + 1},
                 {2, QStringLiteral("PS%1").arg(evaluated->count() + 1, 3, 10, QLatin1Char('0'))},
                 {3, m->getValue(3)},
                 {4, m->getValue(4)},
                 {5, m->getValue(5)},
                 {7, m->getValue(7)},
                 {9, m->getValue(9)},
                 {12, m->getValue(12)}});
    }
    const char* const purchasedNames[][4] = {{"电梯", "1000kg 1.75m/s", "台", "285000"},
                                             {"变压器", "SCB13-800kVA", "台", "168000"},
                                             {"柴油发电机组", "400kW", "台", "226000"}};
    for (const auto& p : purchasedNames)
        addRow(purchased, 1,
               {{1, purchased->count() + 1},
                {3, text(p[0])},
                {4, text(p[1])},
                {5, text(p[2])},
                {7, QString::fromLatin1(p[3]).toDouble()},
                {9, 2.0}});
    addRow(provisional, 2, {{3, QStringLiteral("合计")}});
    addRow(purchased, 2, {{3, QStringLiteral("合计")}});
    addRow(evaluated, 2, {{3, QStringLiteral("合计")}});
    for (GeneralTableBase* t : QList<GeneralTableBase*>{provisional, purchased, evaluated})
        TableOps::calculateMaterialList(t);
}

// The project's provisional-price list as a summary leaves it (with the unit projects'
// disagreements marked), plus two materials that no unit project holds any more, so that a
// refresh has something to report.
void fillProvisionalList(ConstructionWorks* root)
{
    ZgClQdBusiness::RegenerateZgjClHzb(root, nullptr, 100, 0);
    ZgjClHzTable* list = root->getTenderInventory()->getZgjClHzTable();
    const char* const gone[][4] = {{"石材幕墙", "干挂花岗岩 25mm", "m2", "420"},
                                   {"成品栏杆", "不锈钢 1.1m", "m", "380"}};
    for (const auto& g : gone) {
        BaseDataItem* item = ZgClQdBusiness::InsertItem(list, list->count());
        item->loadValue(3, text(g[0]));
        item->loadValue(4, text(g[1]));
        item->loadValue(5, text(g[2]));
        item->loadValue(7, QString::fromLatin1(g[3]).toDouble());
        item->loadValue(9, 120.0);
        item->loadValue(11, true);
    }
    ZgClQdBusiness::RegenerateZgjClHzbXH(root);
    TableOps::calculateMaterialList(list);
}

} // namespace

std::unique_ptr<ProjectWorks> BuildSampleProject()
{
    QRandomGenerator random(20260501);
    auto project = std::make_unique<ProjectWorks>(1001, QStringLiteral("成都市某学校新建工程"));
    ProTreeNode* root = project->AddNode(nullptr, 1, ProTreeNode::WorksNode, project->name());
    ConstructionWorks* rootWorks = project->ensureWorks(0, 1);
    // The pricing model's fees-and-taxes template.
    project->GetPriceModelConfig()->setItem(5, QStringLiteral("2020定额规费税金清单-一般计税"));

    const struct
    {
        const char* single;
        const char* units[3];
        double divisional[3];
        double area;
    } structure[] = {
        {"教学楼", {"建筑与装饰工程", "给排水工程", "电气工程"}, {8650000, 612000, 985000}, 6800},
        {"食堂及宿舍",
         {"建筑与装饰工程", "给排水工程", "电气照明工程"},
         {5230000, 438000, 702000},
         5200},
    };
    int id = 1;
    int unitIndex = 0;
    QList<ConstructionWorks*> units;
    for (const auto& s : structure) {
        ProTreeNode* single =
            project->AddNode(root, ++id, ProTreeNode::SingleProjectNode, text(s.single));
        for (int u = 0; u < 3; ++u) {
            ProTreeNode* unit =
                project->AddNode(single, ++id, ProTreeNode::WorksNode, text(s.units[u]));
            const int versions = unitIndex == 0 ? 2 : 1; // the first has a submitted version
            for (int audit = 0; audit < versions; ++audit) {
                ConstructionWorks* works = project->ensureWorks(audit, ProTreeNode::Id(unit));
                const double divisional = s.divisional[u] * (audit == 1 ? 0.97 : 1.0);
                fillFeeVariables(works, divisional, std::round(divisional * 0.12), s.area,
                                 unitIndex % 2 == 0);
                fillMaterials(works, random, unitIndex, 240 + 20 * u);
                fillOtherItems(works, divisional);
                fillDaywork(works, unitIndex + audit);
                QtXmQdJJjbBusiness::ExtractSporadicWorkItemFees(works);
                fillFees(works, unitIndex % 2 == 0);
                // The content templates the lists were started from, as the ribbon shows them.
                works->setXtBl(2, QStringLiteral("2020定额其他项目清单"));
                works->setXtBl(4, QStringLiteral("2020定额零星工作项目人工单价清单模板"));
                works->setXtBl(5, unitIndex % 2 == 0
                                      ? QStringLiteral("2020定额规费税金清单-一般计税")
                                      : QStringLiteral("2020定额规费税金清单-简易计税"));
                fillMaterialLists(works, works);
                FyBlBusiness::GetInstance()->RecalculateFyBl(works);
                if (audit == 0)
                    units << works;
            }
            ++unitIndex;
        }
    }
    fillMaterialLists(rootWorks, units.first());
    fillProvisionalList(rootWorks);
    project->setProjectWorkChanged(false);
    return project;
}
