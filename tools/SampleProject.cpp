#include "SampleProject.h"

#include "FyBlBusiness.h"
#include "GfQdBusiness.h"
#include "LxGzXmQdJJjbBusiness.h"
#include "ProjectRegion.h"
#include "ProjectWorks.h"
#include "QtXmQdJJjbBusiness.h"
#include "TableOps.h"
#include "ZgClQdBusiness.h"

#include <QHash>
#include <QRandomGenerator>

#include <cmath>
#include <iterator>

namespace {

// The whole construction project is taxed one way: the general method at 9%. Rates, rate
// texts, the tax row and the fees template all say so.
constexpr double kTaxRate = 9;
const QString kFeesTemplate = QStringLiteral("2020定额规费税金清单-一般计税");
// Where the school is built: the region its daywork labour prices are published for.
const QString kRegion = QStringLiteral("成都市区");

// The disciplines of the sample's unit projects; each draws its materials, daywork trades and
// tenderer-purchased equipment from its own catalogue.
enum Discipline {
    Building,   // 建筑与装饰工程
    Plumbing,   // 给排水工程
    Electrical, // 电气工程, 电气照明工程
    DisciplineCount
};

// One material in several models (规格型号, separated by '|'): the first model costs `price`,
// each further one `step` times the one before (prices in 元, base prices of 2020).
struct Material
{
    const char* code;
    const char* name;
    const char* unit;
    double price;
    double step;
    const char* origin;
    const char* models;
};

const Material kBuilding[] = {
    {"010101", "钢筋", "t", 4350, 0.995, "攀钢", "HPB300 Φ6|HPB300 Φ8|HPB300 Φ10"},
    {"010102", "钢筋", "t", 4300, 0.995, "德胜钢铁",
     "HRB400 Φ12|HRB400 Φ14|HRB400 Φ16|HRB400 Φ18|HRB400 Φ20|HRB400 Φ22|HRB400 Φ25"},
    {"010201", "冷轧带肋钢筋", "t", 4520, 1.0, "川威", "CRB550 Φ5|CRB550 Φ6"},
    {"040101", "水泥", "t", 420, 1.14, "峨胜水泥", "P.C 32.5|P.O 42.5|P.O 52.5"},
    {"040301", "中砂", "m3", 135, 1.0, "金堂", ""},
    {"040302", "细砂", "m3", 128, 1.0, "金堂", ""},
    {"040401", "碎石", "m3", 112, 1.05, "都江堰", "5-20mm|5-31.5mm|5-40mm"},
    {"802101", "商品混凝土", "m3", 380, 1.045, "成都建工预拌", "C15|C20|C25|C30|C35|C40"},
    {"802102", "商品混凝土 细石", "m3", 440, 1.0, "成都建工预拌", "C20"},
    {"802201", "抗渗商品混凝土", "m3", 470, 1.04, "成都建工预拌", "C30 P6|C35 P8"},
    {"803101", "预拌砂浆", "m3", 360, 1.04, "成都建工预拌", "M5.0|M7.5|M10|M15"},
    {"041301", "页岩多孔砖", "千块", 620, 1.0, "双流", "240×115×90"},
    {"041302", "页岩实心砖", "千块", 560, 1.0, "双流", "240×115×53"},
    {"041303", "加气混凝土砌块", "m3", 270, 1.03, "新津", "600×240×200|600×240×250"},
    {"050301", "板枋材", "m3", 2100, 1.0, "四川", ""},
    {"350201", "复合木模板", "m2", 42, 1.0, "四川", "18mm"},
    {"350301", "钢管脚手架", "t", 4650, 1.0, "友发", "Φ48.3×3.6"},
    {"350302", "扣件", "个", 6.5, 1.0, "友发", "直角|旋转|对接"},
    {"130501", "防水卷材", "m2", 32, 1.12, "东方雨虹", "SBS 3mm|SBS 4mm"},
    {"130502", "聚氨酯防水涂料", "kg", 18.5, 1.0, "东方雨虹", ""},
    {"130601", "挤塑聚苯板", "m3", 520, 1.0, "北新建材", "B1级"},
    {"110101", "成品木门", "樘", 1150, 1.08, "TATA", "M0921|M1021|M1521"},
    {"110201", "钢质防火门", "樘", 1680, 1.2, "王力", "FM乙1021|FM甲1221"},
    {"110301", "铝合金窗", "m2", 560, 1.0, "坚美", "断桥隔热 1.4mm"},
    {"070101", "釉面砖", "m2", 62, 1.1, "马可波罗", "300×300|300×600"},
    {"070102", "抛光砖", "m2", 85, 1.12, "东鹏", "600×600|800×800"},
    {"070103", "防滑地砖", "m2", 58, 1.0, "东鹏", "300×300"},
    {"070201", "花岗岩板", "m2", 185, 1.15, "福建", "芝麻白 20mm|芝麻灰 30mm"},
    {"090101", "轻钢龙骨", "m2", 28, 1.0, "龙牌", "U38 不上人"},
    {"090201", "纸面石膏板", "m2", 18, 1.0, "龙牌", "9.5mm"},
    {"090301", "铝扣板", "m2", 88, 1.0, "友邦", "300×300×0.6"},
    {"120101", "腻子粉", "kg", 1.6, 1.0, "美巢", "耐水型"},
    {"120102", "乳胶漆", "kg", 26, 1.0, "立邦", "内墙"},
    {"120103", "外墙涂料", "kg", 32, 1.0, "三棵树", "弹性"},
    {"120201", "调和漆", "kg", 21, 1.0, "嘉宝莉", ""},
};

const Material kPlumbing[] = {
    {"170101", "焊接钢管", "m", 21.5, 1.3, "友发", "DN25|DN32|DN40|DN50"},
    {"170102", "镀锌钢管", "m", 26, 1.28, "友发", "DN25|DN32|DN40|DN50|DN65|DN80|DN100|DN150"},
    {"170301", "PP-R给水管", "m", 6.5, 1.4, "联塑", "De20|De25|De32|De40|De50"},
    {"170302", "PP-R管件", "个", 2.1, 1.5, "联塑", "De20|De25|De32|De40|De50"},
    {"170401", "UPVC排水管", "m", 11, 1.55, "联塑", "De50|De75|De110|De160"},
    {"170402", "UPVC排水管件", "个", 4.5, 1.6, "联塑", "De50|De75|De110|De160"},
    {"170501", "柔性铸铁排水管", "m", 96, 1.35, "新兴铸管", "DN100|DN150"},
    {"180101", "截止阀", "个", 48, 1.3, "埃美柯", "DN20|DN25|DN32|DN40|DN50"},
    {"180102", "闸阀", "个", 260, 1.35, "上海沪工", "DN65|DN80|DN100|DN150"},
    {"180103", "蝶阀", "个", 320, 1.3, "上海沪工", "DN100|DN150"},
    {"180104", "止回阀", "个", 180, 1.3, "上海沪工", "DN50|DN65|DN100"},
    {"180105", "减压阀", "个", 680, 1.0, "上海沪工", "DN50"},
    {"180301", "水表", "个", 120, 1.33, "宁波水表", "DN20|DN25|DN50"},
    {"180401", "压力表", "块", 45, 1.0, "红旗仪表", "0-1.6MPa"},
    {"190101", "坐便器", "套", 1280, 1.0, "TOTO", "连体"},
    {"190102", "蹲便器", "套", 380, 1.0, "箭牌", "带冲洗阀"},
    {"190103", "洗脸盆", "套", 560, 1.0, "箭牌", "台下盆"},
    {"190104", "小便器", "套", 720, 1.0, "箭牌", "感应式"},
    {"190201", "水龙头", "个", 85, 1.0, "九牧", "DN15"},
    {"190202", "地漏", "个", 36, 1.3, "九牧", "DN50|DN75"},
    {"340101", "室内消火栓箱", "套", 860, 1.0, "天广", "SG24A65"},
    {"340201", "灭火器", "具", 95, 1.0, "淮海", "MF/ABC4"},
    {"340301", "喷头", "个", 22, 1.0, "天广", "ZSTX15-68℃"},
    {"350401", "型钢支架", "kg", 5.8, 1.0, "攀钢", "角钢 L50×5"},
    {"130701", "橡塑保温管壳", "m3", 1350, 1.0, "华美", "δ20"},
};

const Material kElectrical[] = {
    {"280101", "电力电缆", "m", 38, 1.55, "特变电工",
     "YJV-5×4|YJV-5×6|YJV-5×10|YJV-4×16+1×10|YJV-4×25+1×16|YJV-4×35+1×16"},
    {"280102", "阻燃电力电缆", "m", 46, 1.5, "远东", "ZR-YJV-5×6|ZR-YJV-5×10|ZR-YJV-5×16"},
    {"280201", "电线", "m", 1.7, 1.5, "远东", "BV-1.5|BV-2.5|BV-4|BV-6|BV-10"},
    {"280202", "阻燃电线", "m", 2.9, 1.5, "远东", "ZR-BV-2.5|ZR-BV-4"},
    {"280301", "控制电缆", "m", 9.5, 1.0, "远东", "KVV-4×1.5"},
    {"290101", "焊接钢管 电线管", "m", 9.8, 1.28, "友发", "SC15|SC20|SC25|SC32"},
    {"290102", "PVC电线管", "m", 2.2, 1.3, "联塑", "PC16|PC20|PC25|PC32"},
    {"290201", "镀锌线槽", "m", 38, 1.0, "正泰", "100×50"},
    {"290301", "镀锌电缆桥架", "m", 88, 1.5, "正泰", "200×100|300×150|400×200"},
    {"290401", "接线盒", "个", 2.6, 1.0, "联塑", "86型"},
    {"300101", "总配电柜", "台", 18600, 1.0, "正泰", "AA1 定制"},
    {"300102", "配电箱", "台", 3200, 1.0, "正泰", "AL1 定制"},
    {"300103", "照明配电箱", "台", 1250, 1.32, "正泰", "AL 8回路|AL 12回路"},
    {"310101", "LED平板灯", "套", 168, 1.0, "欧普", "600×600 36W"},
    {"310102", "LED筒灯", "套", 58, 1.0, "欧普", "12W"},
    {"310103", "LED灯管", "套", 42, 1.0, "欧普", "T5 14W"},
    {"310201", "开关", "个", 16, 1.25, "公牛", "单联单控|双联单控|三联单控"},
    {"310202", "插座", "个", 19, 1.0, "公牛", "五孔 10A"},
    {"310203", "空调插座", "个", 28, 1.0, "公牛", "三孔 16A"},
    {"330101", "应急照明灯", "套", 120, 1.0, "三雄极光", "3W"},
    {"330102", "安全出口指示灯", "套", 95, 1.0, "三雄极光", "单面"},
    {"320101", "镀锌扁钢", "kg", 6.2, 1.0, "攀钢", "-40×4"},
    {"320102", "镀锌圆钢", "kg", 5.9, 1.0, "攀钢", "Φ10"},
    {"320201", "接地端子箱", "个", 260, 1.0, "正泰", "MEB"},
};

struct Catalogue
{
    const Material* begin;
    const Material* end;
};

Catalogue catalogueOf(Discipline d)
{
    switch (d) {
    case Plumbing:
        return {std::begin(kPlumbing), std::end(kPlumbing)};
    case Electrical:
        return {std::begin(kElectrical), std::end(kElectrical)};
    default:
        return {std::begin(kBuilding), std::end(kBuilding)};
    }
}

// The labour trades a discipline's daywork asks for (prices of 成都市区, 2021年5月).
const char* const kBuildingTrades[][2] = {
    {"普工", "110"}, {"技工", "142"},     {"混凝土工", "128"},   {"钢筋工", "136"},
    {"木工", "138"}, {"装饰技工", "156"}, {"装饰细木工", "168"},
};
const char* const kInstallationTrades[][2] = {
    {"普工", "110"}, {"技工", "142"}, {"安装技工", "150"}};

// Equipment the tenderer buys for the discipline (name, model, unit, price).
const char* const kPurchased[DisciplineCount][2][4] = {
    {{"电梯", "1000kg 1.75m/s", "台", "285000"}, {"电动伸缩门", "铝合金 12m", "樘", "36000"}},
    {{"变频恒压供水设备", "Q=30m3/h H=60m", "套", "96000"},
     {"消防水泵", "XBD6/30-125", "台", "42000"}},
    {{"干式变压器", "SCB13-800kVA", "台", "168000"}, {"柴油发电机组", "400kW", "台", "226000"}},
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
void fillFeeVariables(ConstructionWorks* works, double divisional, double measures, double area)
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
    setRate("税金费率", kTaxRate / 100);
    works->setXtBl(10, QStringLiteral("%1%").arg(kTaxRate));
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
            {4, QStringLiteral("按专业工程暂估价的1.5%计取")}});
    addRow(t, 1, {});
    addRow(t, 4, {{2, QStringLiteral("合计")}});
    QtXmQdJJjbBusiness::CalculateTable(works, t);
}

void fillDaywork(ConstructionWorks* works, Discipline discipline, int variant)
{
    LxGzXmRgDjQdTable* t = works->getTenderInventory()->getLxGzXmRgDjQdTable();
    addRow(t, 1, {{1, QStringLiteral("一")}, {2, QStringLiteral("人工")}});
    int n = 0;
    auto add = [&](const char* const trade[2]) {
        const int raised = (variant % 3) * 2;
        const double price = QString::fromLatin1(trade[1]).toDouble() + raised;
        // The remark says where the price comes from, and by how much it was raised.
        const QString source =
            raised == 0 ? QStringLiteral("%1 2021年5月").arg(kRegion)
                        : QStringLiteral("%1 2021年5月单价上调%2元").arg(kRegion).arg(raised);
        addRow(t, 0,
               {{1, QString::number(++n)},
                {2, text(trade[0])},
                {3, QStringLiteral("工日")},
                {4, price},
                {5, source},
                {6, 10.0 * (1 + n % 4)}});
    };
    if (discipline == Building)
        for (const auto& trade : kBuildingTrades)
            add(trade);
    else
        for (const auto& trade : kInstallationTrades)
            add(trade);
    LxGzXmQdJJjbBusiness::CalculateLxGzXmQdTable(works, t);
}

void fillFees(ConstructionWorks* works)
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
            {4, kTaxRate},
            {7, QStringLiteral("一般计税")}});
    GfQdBusiness::CalculateGfQdTable(works, t);
}

// A unit project's materials: its discipline's catalogue, every model of it, but for a few
// models each single project does without, so that no two unit projects hold the same set.
// Units of one discipline share the rest, with deliberate disagreements for the summaries.
void fillMaterials(ConstructionWorks* works, QRandomGenerator& random, int unitIndex,
                   Discipline discipline, int single)
{
    RcjHzTable* t = works->getRcjHzTable();
    const Catalogue catalogue = catalogueOf(discipline);
    int i = -1;
    for (const Material* m = catalogue.begin; m != catalogue.end; ++m) {
        const QStringList models = text(m->models).split(QLatin1Char('|'));
        for (int k = 0; k < models.size(); ++k) {
            ++i;
            if (i % 9 == (single == 0 ? 7 : 4))
                continue;
            const double price = std::round(m->price * std::pow(m->step, k) * 100) / 100;
            const double quantity =
                std::round(random.bounded(20, 5000) * 1.0 + random.generateDouble() * 100) / 100.0;
            double adjusted = price * (1.0 + (random.bounded(0, 9) - 4) / 100.0);
            QString origin = text(m->origin);
            bool provisional = i % 7 == 0;
            // Deliberate disagreements between unit projects.
            if (i % 11 == 0 && unitIndex % 2 == 1)
                adjusted *= 1.06;
            if (i % 13 == 0 && unitIndex == 2)
                provisional = !provisional;
            if (i % 17 == 0 && unitIndex == 3)
                origin = QStringLiteral("重庆");
            // Provisional materials carry a tender code, except in the last two unit projects
            // for every fifth one; one remark is written in one unit project only.
            const QString tenderCode = provisional && !(i % 5 == 0 && unitIndex >= 4)
                                           ? QStringLiteral("ZG%1%2")
                                                 .arg(int(discipline) + 1)
                                                 .arg(i + 1, 3, 10, QLatin1Char('0'))
                                           : QString();
            const QString manufacturer = i % 35 == 0 && unitIndex == 5
                                             ? text(m->origin) + QStringLiteral("第二分厂")
                                             : text(m->origin);
            const QString remark =
                i % 63 == 0 && unitIndex == 4 ? QStringLiteral("甲方认质认价") : QString();
            // Provisional prices are the tender's, the same in every unit project, but for the
            // deliberate disagreements above.
            if (i % 7 == 0 && !(i % 11 == 0 && unitIndex % 2 == 1))
                adjusted = price;
            adjusted = std::round(adjusted * 100) / 100;
            const QString code = QString::fromLatin1(m->code) +
                                 QStringLiteral("%1").arg(k + 1, 2, 10, QLatin1Char('0'));
            addRow(t, 1,
                   {{1, code},
                    {2, QStringLiteral("材")},
                    {3, text(m->name)},
                    {4, models.at(k)},
                    {5, text(m->unit)},
                    {6, price},
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
}

// The materials lists of one works (a unit project, or the project root for the whole
// project), as the summaries would leave them: from the given works' materials (one row per
// material, quantities added up) and the equipment the tenderer buys for the disciplines.
void fillMaterialLists(ConstructionWorks* target, const QList<ConstructionWorks*>& sources,
                       const QList<Discipline>& disciplines)
{
    ZgjClHzTable* provisional = target->getTenderInventory()->getZgjClHzTable();
    ZbrClGzfQdTable* purchased = target->getTenderInventory()->getZbrClGzfQdTable();
    SjCqXPsClTable* evaluated = target->getTenderInventory()->getSjCqXPsClHzTable();
    QHash<QString, BaseDataItem*> seen;
    auto add = [&](GeneralTableBase* list, const QString& prefix, const BaseDataItem* m) {
        const QString key = prefix + m->getValue(3).toString() + QLatin1Char('\n') +
                            m->getValue(4).toString() + QLatin1Char('\n') +
                            m->getValue(5).toString();
        if (BaseDataItem* row = seen.value(key)) {
            row->loadValue(9, row->getDouble(9) + m->getDouble(9));
            return;
        }
        const int serial = list->count() + 1;
        seen.insert(
            key,
            addRow(list, 1,
                   {{1, serial},
                    {2, QStringLiteral("%1%2").arg(prefix).arg(serial, 3, 10, QLatin1Char('0'))},
                    {3, m->getValue(3)},
                    {4, m->getValue(4)},
                    {5, m->getValue(5)},
                    {6, m->getValue(6)},
                    {7, m->getValue(7)},
                    {9, m->getValue(9)},
                    {12, m->getValue(12)}}));
    };
    for (ConstructionWorks* source : sources)
        for (const BaseDataItem* m : source->getRcjHzTable()->items()) {
            if (m->getValue(11).toBool())
                add(provisional, QStringLiteral("ZG"), m);
            if (m->getValue(16).toBool())
                add(evaluated, QStringLiteral("PS"), m);
        }
    for (Discipline d : disciplines)
        for (const auto& p : kPurchased[d])
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
    // The pricing model's fees-and-taxes template, of the project's tax method.
    project->GetPriceModelConfig()->setItem(5, kFeesTemplate);
    ProjectRegion::Set(project.get(), kRegion);

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
    const Discipline disciplines[3] = {Building, Plumbing, Electrical};
    int id = 1;
    int unitIndex = 0;
    QList<ConstructionWorks*> units;
    for (int s = 0; s < int(std::size(structure)); ++s) {
        ProTreeNode* single =
            project->AddNode(root, ++id, ProTreeNode::SingleProjectNode, text(structure[s].single));
        for (int u = 0; u < 3; ++u) {
            ProTreeNode* unit =
                project->AddNode(single, ++id, ProTreeNode::WorksNode, text(structure[s].units[u]));
            const int versions = unitIndex == 0 ? 2 : 1; // the first has a submitted version
            for (int audit = 0; audit < versions; ++audit) {
                ConstructionWorks* works = project->ensureWorks(audit, ProTreeNode::Id(unit));
                const double divisional = structure[s].divisional[u] * (audit == 1 ? 0.97 : 1.0);
                fillFeeVariables(works, divisional, std::round(divisional * 0.12),
                                 structure[s].area);
                fillMaterials(works, random, unitIndex, disciplines[u], s);
                fillOtherItems(works, divisional);
                fillDaywork(works, disciplines[u], unitIndex + audit);
                QtXmQdJJjbBusiness::ExtractSporadicWorkItemFees(works);
                fillFees(works);
                // The content templates the lists were started from, as the ribbon shows them.
                works->setXtBl(2, QStringLiteral("2020定额其他项目清单"));
                works->setXtBl(4, QStringLiteral("2020定额零星工作项目人工单价清单模板"));
                works->setXtBl(5, kFeesTemplate);
                fillMaterialLists(works, {works}, {disciplines[u]});
                FyBlBusiness::GetInstance()->RecalculateFyBl(works);
                if (audit == 0)
                    units << works;
            }
            ++unitIndex;
        }
    }
    fillMaterialLists(rootWorks, units, {Building, Plumbing, Electrical});
    fillProvisionalList(rootWorks);
    project->setProjectWorkChanged(false);
    return project;
}
