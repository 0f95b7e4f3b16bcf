#include "FyBlBusiness.h"

#include "ConstructionWorks.h"
#include "DataManagement.h"
#include "UnitProjectCalc.h"

#include <QDir>
#include <QFile>

FyBlBusiness* FyBlBusiness::GetInstance()
{
    static FyBlBusiness instance;
    return &instance;
}

const QVector<FyBlBusiness::Definition>& FyBlBusiness::Definitions()
{
    // The names are those of Config/FeeVariableNames.txt that a unit project can give a value
    // to, plus three short names kept for formulas written before (暂列金额, 计日工,
    // 总承包服务费). docs/fee-variables.md explains each.
    static const QVector<Definition> definitions = {
        {QStringLiteral("分部分项工程费"), Entered, QStringLiteral(""),
         QStringLiteral("分部分项工程量清单合计（综合单价×工程量之和）")},
        {QStringLiteral("分部分项综合单价合价"), Expression, QStringLiteral("分部分项工程费"),
         QStringLiteral("同分部分项工程费")},
        {QStringLiteral("分部分项人工费"), Entered, QStringLiteral(""),
         QStringLiteral("分部分项清单中的人工费")},
        {QStringLiteral("分部分项材料费"), Entered, QStringLiteral(""),
         QStringLiteral("分部分项清单中的材料费（含主材、设备）")},
        {QStringLiteral("分部分项机械费"), Entered, QStringLiteral(""),
         QStringLiteral("分部分项清单中的施工机具使用费")},
        {QStringLiteral("分部分项管理费"), Entered, QStringLiteral(""),
         QStringLiteral("分部分项清单中的企业管理费")},
        {QStringLiteral("分部分项利润"), Entered, QStringLiteral(""),
         QStringLiteral("分部分项清单中的利润")},
        {QStringLiteral("分部分项主材费"), Entered, QStringLiteral(""),
         QStringLiteral("分部分项材料费中的主材费")},
        {QStringLiteral("分部分项设备费"), Entered, QStringLiteral(""),
         QStringLiteral("分部分项材料费中的设备费")},
        {QStringLiteral("分部分项暂估材料费"), Entered, QStringLiteral(""),
         QStringLiteral("分部分项材料费中按暂估价计入的材料费")},
        {QStringLiteral("分部分项甲供材料费"), Entered, QStringLiteral(""),
         QStringLiteral("分部分项材料费中的甲供（发包人供应）材料费")},
        {QStringLiteral("分部分项定额人工费"), Entered, QStringLiteral(""),
         QStringLiteral("按定额基价计的分部分项人工费")},
        {QStringLiteral("分部分项定额材料费"), Entered, QStringLiteral(""),
         QStringLiteral("按定额基价计的分部分项材料费")},
        {QStringLiteral("分部分项定额机械费"), Entered, QStringLiteral(""),
         QStringLiteral("按定额基价计的分部分项机械费")},
        {QStringLiteral("分部分项人工费价差"), Expression,
         QStringLiteral("分部分项人工费-分部分项定额人工费"),
         QStringLiteral("人工费与定额人工费之差")},
        {QStringLiteral("分部分项材料费价差"), Expression,
         QStringLiteral("分部分项材料费-分部分项定额材料费"),
         QStringLiteral("材料费与定额材料费之差")},
        {QStringLiteral("分部分项机械费价差"), Expression,
         QStringLiteral("分部分项机械费-分部分项定额机械费"),
         QStringLiteral("机械费与定额机械费之差")},
        {QStringLiteral("分部分项安全文明施工费"), Entered, QStringLiteral(""),
         QStringLiteral("分部分项清单中计取的安全文明施工费（无则为0）")},
        {QStringLiteral("措施项目费"), Entered, QStringLiteral(""),
         QStringLiteral("措施项目清单合计（单价措施与总价措施之和）")},
        {QStringLiteral("措施项目合计"), Expression, QStringLiteral("措施项目费"),
         QStringLiteral("同措施项目费")},
        {QStringLiteral("措施项目人工费"), Entered, QStringLiteral(""),
         QStringLiteral("措施项目清单中的人工费")},
        {QStringLiteral("措施项目材料费"), Entered, QStringLiteral(""),
         QStringLiteral("措施项目清单中的材料费")},
        {QStringLiteral("措施项目机械费"), Entered, QStringLiteral(""),
         QStringLiteral("措施项目清单中的机械费")},
        {QStringLiteral("措施项目管理费"), Entered, QStringLiteral(""),
         QStringLiteral("措施项目清单中的企业管理费")},
        {QStringLiteral("措施项目利润"), Entered, QStringLiteral(""),
         QStringLiteral("措施项目清单中的利润")},
        {QStringLiteral("措施项目单价措施项目费"), Entered, QStringLiteral(""),
         QStringLiteral("单价措施项目合计")},
        {QStringLiteral("措施项目总价措施项目费"), Entered, QStringLiteral(""),
         QStringLiteral("总价措施项目合计")},
        {QStringLiteral("措施项目安全文明施工费"), Entered, QStringLiteral(""),
         QStringLiteral("总价措施中的安全文明施工费")},
        {QStringLiteral("措施项目夜间施工增加费"), Entered, QStringLiteral(""),
         QStringLiteral("总价措施中的夜间施工增加费")},
        {QStringLiteral("措施项目二次搬运费"), Entered, QStringLiteral(""),
         QStringLiteral("总价措施中的二次搬运费")},
        {QStringLiteral("措施项目冬雨季施工增加费"), Entered, QStringLiteral(""),
         QStringLiteral("总价措施中的冬雨季施工增加费")},
        {QStringLiteral("措施项目已完工程及设备保护费"), Entered, QStringLiteral(""),
         QStringLiteral("总价措施中的已完工程及设备保护费")},
        {QStringLiteral("措施项目工程定位复测费"), Entered, QStringLiteral(""),
         QStringLiteral("总价措施中的工程定位复测费")},
        {QStringLiteral("单价措施人工费"), Entered, QStringLiteral(""),
         QStringLiteral("单价措施项目中的人工费")},
        {QStringLiteral("总价措施人工费"), Entered, QStringLiteral(""),
         QStringLiteral("总价措施项目中的人工费")},
        {QStringLiteral("脚手架工程费"), Entered, QStringLiteral(""),
         QStringLiteral("单价措施中的脚手架工程")},
        {QStringLiteral("混凝土模板及支架费"), Entered, QStringLiteral(""),
         QStringLiteral("单价措施中的混凝土模板及支架")},
        {QStringLiteral("垂直运输费"), Entered, QStringLiteral(""),
         QStringLiteral("单价措施中的垂直运输")},
        {QStringLiteral("超高施工增加费"), Entered, QStringLiteral(""),
         QStringLiteral("单价措施中的超高施工增加")},
        {QStringLiteral("大型机械进出场及安拆费"), Entered, QStringLiteral(""),
         QStringLiteral("单价措施中的大型机械设备进出场及安拆")},
        {QStringLiteral("施工排水降水费"), Entered, QStringLiteral(""),
         QStringLiteral("单价措施中的施工排水、降水")},
        {QStringLiteral("安全文明施工费"), Expression,
         QStringLiteral("措施项目安全文明施工费+分部分项安全文明施工费"),
         QStringLiteral("安全文明施工费合计")},
        {QStringLiteral("绿色施工安全防护措施费"), Expression, QStringLiteral("安全文明施工费"),
         QStringLiteral("同安全文明施工费（2020定额名称）")},
        {QStringLiteral("环境保护费"), Entered, QStringLiteral(""),
         QStringLiteral("安全文明施工费中的环境保护费")},
        {QStringLiteral("文明施工费"), Entered, QStringLiteral(""),
         QStringLiteral("安全文明施工费中的文明施工费")},
        {QStringLiteral("安全施工费"), Entered, QStringLiteral(""),
         QStringLiteral("安全文明施工费中的安全施工费")},
        {QStringLiteral("临时设施费"), Entered, QStringLiteral(""),
         QStringLiteral("安全文明施工费中的临时设施费")},
        {QStringLiteral("安全文明施工费费率"), Entered, QStringLiteral(""),
         QStringLiteral("安全文明施工费费率（小数）")},
        {QStringLiteral("夜间施工增加费费率"), Entered, QStringLiteral(""),
         QStringLiteral("夜间施工增加费费率（小数）")},
        {QStringLiteral("二次搬运费费率"), Entered, QStringLiteral(""),
         QStringLiteral("二次搬运费费率（小数）")},
        {QStringLiteral("冬雨季施工增加费费率"), Entered, QStringLiteral(""),
         QStringLiteral("冬雨季施工增加费费率（小数）")},
        {QStringLiteral("已完工程保护费费率"), Entered, QStringLiteral(""),
         QStringLiteral("已完工程及设备保护费费率（小数）")},
        {QStringLiteral("工程定位复测费费率"), Entered, QStringLiteral(""),
         QStringLiteral("工程定位复测费费率（小数）")},
        {QStringLiteral("管理费费率"), Entered, QStringLiteral(""),
         QStringLiteral("企业管理费费率（小数）")},
        {QStringLiteral("利润率"), Entered, QStringLiteral(""), QStringLiteral("利润率（小数）")},
        {QStringLiteral("材料检验试验费"), Entered, QStringLiteral(""),
         QStringLiteral("总价措施中的材料检验试验费")},
        {QStringLiteral("工程保险费"), Entered, QStringLiteral(""),
         QStringLiteral("总价措施中的工程保险费")},
        {QStringLiteral("优质工程增加费"), Entered, QStringLiteral(""),
         QStringLiteral("总价措施中的优质工程增加费")},
        {QStringLiteral("提前竣工增加费"), Entered, QStringLiteral(""),
         QStringLiteral("总价措施中的提前竣工增加费")},
        {QStringLiteral("赶工措施费"), Entered, QStringLiteral(""),
         QStringLiteral("总价措施中的赶工措施费")},
        {QStringLiteral("特殊地区施工增加费"), Entered, QStringLiteral(""),
         QStringLiteral("总价措施中的特殊地区施工增加费")},
        {QStringLiteral("建设工程竣工档案编制费"), Entered, QStringLiteral(""),
         QStringLiteral("总价措施中的建设工程竣工档案编制费")},
        {QStringLiteral("住宅工程质量分户验收费"), Entered, QStringLiteral(""),
         QStringLiteral("总价措施中的住宅工程质量分户验收费")},
        {QStringLiteral("扬尘污染防治费"), Entered, QStringLiteral(""),
         QStringLiteral("总价措施中的扬尘污染防治费")},
        {QStringLiteral("风险费用"), Entered, QStringLiteral(""),
         QStringLiteral("综合单价中计入的风险费用")},
        {QStringLiteral("建筑面积"), Entered, QStringLiteral(""),
         QStringLiteral("单位工程建筑面积（m2）")},
        {QStringLiteral("人工费合计"), Expression, QStringLiteral("分部分项人工费+措施项目人工费"),
         QStringLiteral("人工费合计")},
        {QStringLiteral("材料费合计"), Expression, QStringLiteral("分部分项材料费+措施项目材料费"),
         QStringLiteral("材料费合计")},
        {QStringLiteral("机械费合计"), Expression, QStringLiteral("分部分项机械费+措施项目机械费"),
         QStringLiteral("机械费合计")},
        {QStringLiteral("管理费合计"), Expression, QStringLiteral("分部分项管理费+措施项目管理费"),
         QStringLiteral("企业管理费合计")},
        {QStringLiteral("利润合计"), Expression, QStringLiteral("分部分项利润+措施项目利润"),
         QStringLiteral("利润合计")},
        {QStringLiteral("主材费合计"), Expression, QStringLiteral("分部分项主材费"),
         QStringLiteral("主材费合计")},
        {QStringLiteral("设备费合计"), Expression, QStringLiteral("分部分项设备费"),
         QStringLiteral("设备费合计")},
        {QStringLiteral("工程设备费"), Expression, QStringLiteral("分部分项设备费"),
         QStringLiteral("同设备费合计")},
        {QStringLiteral("甲供材料费合计"), Expression, QStringLiteral("分部分项甲供材料费"),
         QStringLiteral("甲供材料费合计")},
        {QStringLiteral("发包人供应材料费"), Expression, QStringLiteral("分部分项甲供材料费"),
         QStringLiteral("同甲供材料费合计")},
        {QStringLiteral("定额人工费合计"), Expression, QStringLiteral("分部分项定额人工费"),
         QStringLiteral("定额人工费合计")},
        {QStringLiteral("定额材料费合计"), Expression, QStringLiteral("分部分项定额材料费"),
         QStringLiteral("定额材料费合计")},
        {QStringLiteral("定额机械费合计"), Expression, QStringLiteral("分部分项定额机械费"),
         QStringLiteral("定额机械费合计")},
        {QStringLiteral("人工价差合计"), Expression, QStringLiteral("分部分项人工费价差"),
         QStringLiteral("人工价差合计")},
        {QStringLiteral("材料价差合计"), Expression, QStringLiteral("分部分项材料费价差"),
         QStringLiteral("材料价差合计")},
        {QStringLiteral("机械价差合计"), Expression, QStringLiteral("分部分项机械费价差"),
         QStringLiteral("机械价差合计")},
        {QStringLiteral("人工费调整"), Expression, QStringLiteral("分部分项人工费价差"),
         QStringLiteral("同人工价差合计")},
        {QStringLiteral("材料费调整"), Expression, QStringLiteral("分部分项材料费价差"),
         QStringLiteral("同材料价差合计")},
        {QStringLiteral("机械费调整"), Expression, QStringLiteral("分部分项机械费价差"),
         QStringLiteral("同机械价差合计")},
        {QStringLiteral("价差调整合计"), Expression,
         QStringLiteral("分部分项人工费价差+分部分项材料费价差+分部分项机械费价差"),
         QStringLiteral("人材机价差合计")},
        {QStringLiteral("其他项目合计"), OtherItemsTotal, QStringLiteral(""),
         QStringLiteral("其他项目清单合计行的金额")},
        {QStringLiteral("其他项目暂列金额"), OtherItemsLine, QStringLiteral("暂列金额"),
         QStringLiteral("其他项目清单中名称为“暂列金额”的行")},
        {QStringLiteral("其他项目专业工程暂估价"), OtherItemsLine, QStringLiteral("专业工程暂估价"),
         QStringLiteral("名称为“专业工程暂估价”的行")},
        {QStringLiteral("其他项目计日工"), OtherItemsLine, QStringLiteral("计日工"),
         QStringLiteral("名称为“计日工”的行")},
        {QStringLiteral("其他项目总承包服务费"), OtherItemsLine, QStringLiteral("总承包服务费"),
         QStringLiteral("名称为“总承包服务费”的行")},
        {QStringLiteral("其他项目材料暂估价"), OtherItemsLine, QStringLiteral("材料暂估价"),
         QStringLiteral("名称为“材料暂估价”或“材料(工程设备)暂估价”的行")},
        {QStringLiteral("暂估价合计"), OtherItemsLine, QStringLiteral("暂估价"),
         QStringLiteral("名称为“暂估价”的行（2.1、2.2之和）")},
        {QStringLiteral("暂列金额"), Expression, QStringLiteral("其他项目暂列金额"),
         QStringLiteral("同其他项目暂列金额")},
        {QStringLiteral("暂定金额"), Expression, QStringLiteral("其他项目暂列金额"),
         QStringLiteral("同其他项目暂列金额")},
        {QStringLiteral("预留金"), Expression, QStringLiteral("其他项目暂列金额"),
         QStringLiteral("同其他项目暂列金额（旧称）")},
        {QStringLiteral("计日工"), Expression, QStringLiteral("其他项目计日工"),
         QStringLiteral("同其他项目计日工")},
        {QStringLiteral("计日工合计"), Expression, QStringLiteral("其他项目计日工"),
         QStringLiteral("同其他项目计日工")},
        {QStringLiteral("总承包服务费"), Expression, QStringLiteral("其他项目总承包服务费"),
         QStringLiteral("同其他项目总承包服务费")},
        {QStringLiteral("总承包服务费合计"), Expression, QStringLiteral("其他项目总承包服务费"),
         QStringLiteral("同其他项目总承包服务费")},
        {QStringLiteral("专业工程暂估价合计"), Expression, QStringLiteral("其他项目专业工程暂估价"),
         QStringLiteral("同其他项目专业工程暂估价")},
        {QStringLiteral("专业分包工程费"), Expression, QStringLiteral("其他项目专业工程暂估价"),
         QStringLiteral("同其他项目专业工程暂估价")},
        {QStringLiteral("零星工作项目费"), DayworkTotal, QStringLiteral(""),
         QStringLiteral("零星工作项目人工单价清单中人工行金额之和")},
        {QStringLiteral("计日工人工费"), DayworkTotal, QStringLiteral(""),
         QStringLiteral("同零星工作项目费（计日工人工）")},
        {QStringLiteral("招标人材料购置费合计"), PurchasedTotal, QStringLiteral(""),
         QStringLiteral("招标人材料购置费清单合计行的金额")},
        {QStringLiteral("暂估材料费合计"), ProvisionalTotal, QStringLiteral(""),
         QStringLiteral("暂估材料(工程设备)清单合计行的金额")},
        {QStringLiteral("材料设备暂估价合计"), ProvisionalTotal, QStringLiteral(""),
         QStringLiteral("同暂估材料费合计")},
        {QStringLiteral("签证索赔项目签证费用"), Entered, QStringLiteral(""),
         QStringLiteral("签证及索赔计价表中的现场签证费用")},
        {QStringLiteral("签证索赔项目索赔费用"), Entered, QStringLiteral(""),
         QStringLiteral("签证及索赔计价表中的索赔费用")},
        {QStringLiteral("签证索赔项目合计"), Expression,
         QStringLiteral("签证索赔项目签证费用+签证索赔项目索赔费用"),
         QStringLiteral("签证与索赔合计")},
        {QStringLiteral("签证索赔合计"), Expression, QStringLiteral("签证索赔项目合计"),
         QStringLiteral("同签证索赔项目合计")},
        {QStringLiteral("现场签证费用"), Expression, QStringLiteral("签证索赔项目签证费用"),
         QStringLiteral("同签证索赔项目签证费用")},
        {QStringLiteral("索赔费用合计"), Expression, QStringLiteral("签证索赔项目索赔费用"),
         QStringLiteral("同签证索赔项目索赔费用")},
        {QStringLiteral("规费合计"), FeesTotal, QStringLiteral(""),
         QStringLiteral("规费税金清单中规费行（非税金行）金额之和")},
        {QStringLiteral("规费"), Expression, QStringLiteral("规费合计"),
         QStringLiteral("同规费合计")},
        {QStringLiteral("养老保险费"), FeeLine, QStringLiteral("养老保险费"),
         QStringLiteral("名称为“养老保险费”的规费行金额")},
        {QStringLiteral("失业保险费"), FeeLine, QStringLiteral("失业保险费"),
         QStringLiteral("名称为“失业保险费”的规费行金额")},
        {QStringLiteral("医疗保险费"), FeeLine, QStringLiteral("医疗保险费"),
         QStringLiteral("名称为“医疗保险费”的规费行金额")},
        {QStringLiteral("工伤保险费"), FeeLine, QStringLiteral("工伤保险费"),
         QStringLiteral("名称为“工伤保险费”的规费行金额")},
        {QStringLiteral("生育保险费"), FeeLine, QStringLiteral("生育保险费"),
         QStringLiteral("名称为“生育保险费”的规费行金额")},
        {QStringLiteral("住房公积金"), FeeLine, QStringLiteral("住房公积金"),
         QStringLiteral("名称为“住房公积金”的规费行金额")},
        {QStringLiteral("工程排污费"), FeeLine, QStringLiteral("工程排污费"),
         QStringLiteral("名称为“工程排污费”的规费行金额")},
        {QStringLiteral("工程定额测定费"), FeeLine, QStringLiteral("工程定额测定费"),
         QStringLiteral("名称为“工程定额测定费”的规费行金额")},
        {QStringLiteral("社会保险费"), Expression,
         QStringLiteral("养老保险费+失业保险费+医疗保险费+工伤保险费+生育保险费"),
         QStringLiteral("五项社会保险费之和")},
        {QStringLiteral("养老保险费率"), FeeRate, QStringLiteral("养老保险费"),
         QStringLiteral("养老保险费行的费率（小数：7.5%为0.075）")},
        {QStringLiteral("失业保险费率"), FeeRate, QStringLiteral("失业保险费"),
         QStringLiteral("失业保险费行的费率（小数）")},
        {QStringLiteral("医疗保险费率"), FeeRate, QStringLiteral("医疗保险费"),
         QStringLiteral("医疗保险费行的费率（小数）")},
        {QStringLiteral("工伤保险费率"), FeeRate, QStringLiteral("工伤保险费"),
         QStringLiteral("工伤保险费行的费率（小数）")},
        {QStringLiteral("生育保险费率"), FeeRate, QStringLiteral("生育保险费"),
         QStringLiteral("生育保险费行的费率（小数）")},
        {QStringLiteral("住房公积金费率"), FeeRate, QStringLiteral("住房公积金"),
         QStringLiteral("住房公积金行的费率（小数）")},
        {QStringLiteral("工程排污费费率"), FeeRate, QStringLiteral("工程排污费"),
         QStringLiteral("工程排污费行的费率（小数）")},
        {QStringLiteral("税金"), TaxesTotal, QStringLiteral(""),
         QStringLiteral("规费税金清单中税金行金额之和")},
        {QStringLiteral("增值税"), TaxLine, QStringLiteral("增值税"),
         QStringLiteral("名称为“增值税”的税金行金额")},
        {QStringLiteral("附加税费"), TaxLine, QStringLiteral("附加税费"),
         QStringLiteral("名称为“附加税费”的税金行金额")},
        {QStringLiteral("城市维护建设税"), TaxLine, QStringLiteral("城市维护建设税"),
         QStringLiteral("名称为“城市维护建设税”的税金行金额")},
        {QStringLiteral("教育费附加"), TaxLine, QStringLiteral("教育费附加"),
         QStringLiteral("名称为“教育费附加”的税金行金额")},
        {QStringLiteral("地方教育附加"), TaxLine, QStringLiteral("地方教育附加"),
         QStringLiteral("名称为“地方教育附加”的税金行金额")},
        {QStringLiteral("计税基数"), TaxBase, QStringLiteral(""),
         QStringLiteral("第一个税金行的计算基数金额")},
        {QStringLiteral("工程定额测定费费率"), Entered, QStringLiteral(""),
         QStringLiteral("“计算公式编辑”中录入的工程定额测定费费率（小数）")},
        {QStringLiteral("税金费率"), Entered, QStringLiteral(""),
         QStringLiteral("“计算公式编辑”中录入的税金规定费率（小数）")},
        {QStringLiteral("税前工程造价"), Expression,
         QStringLiteral("分部分项工程费+措施项目费+其他项目合计+规费合计"),
         QStringLiteral("税前造价")},
        {QStringLiteral("工程造价"), Expression,
         QStringLiteral("分部分项工程费+措施项目费+其他项目合计+规费合计+税金"),
         QStringLiteral("单位工程造价")},
        {QStringLiteral("单位工程造价"), Expression, QStringLiteral("工程造价"),
         QStringLiteral("同工程造价")},
        {QStringLiteral("含税工程造价"), Expression, QStringLiteral("工程造价"),
         QStringLiteral("同工程造价")},
        {QStringLiteral("税后工程造价"), Expression, QStringLiteral("工程造价"),
         QStringLiteral("同工程造价")},
        {QStringLiteral("含规费工程造价"), Expression, QStringLiteral("工程造价"),
         QStringLiteral("同工程造价")},
        {QStringLiteral("不含税工程造价"), Expression, QStringLiteral("工程造价-税金"),
         QStringLiteral("工程造价减税金")},
        {QStringLiteral("不含规费工程造价"), Expression, QStringLiteral("工程造价-规费合计"),
         QStringLiteral("工程造价减规费")},
        {QStringLiteral("单方造价"), Expression, QStringLiteral("建筑面积>0?工程造价/建筑面积:0"),
         QStringLiteral("工程造价÷建筑面积（无面积为0）")},
        {QStringLiteral("总计"), Expression, QStringLiteral("工程造价"),
         QStringLiteral("同工程造价")},
        {QStringLiteral("检验试验费"), Expression, QStringLiteral("材料检验试验费"),
         QStringLiteral("同材料检验试验费")},
    };
    return definitions;
}

const FyBlBusiness::Definition* FyBlBusiness::FindDefinition(const QString& name)
{
    static const QHash<QString, int> index = [] {
        QHash<QString, int> map;
        for (int i = 0; i < Definitions().size(); ++i)
            map.insert(Definitions().at(i).name, i);
        return map;
    }();
    const auto it = index.constFind(name);
    return it == index.constEnd() ? nullptr : &Definitions().at(it.value());
}

void FyBlBusiness::RecalculateFyBl(ConstructionWorks* works)
{
    UnitProjectCalc::Recalculate(works);
}

namespace {

// The numbered variables the formula dialog writes; they are found by their name too, so that
// a value entered under the name is the same variable.
QString numberedName(int id)
{
    switch (id) {
    case FyBlBusiness::QuotaFeeRateId:
        return QStringLiteral("工程定额测定费费率");
    case FyBlBusiness::TaxRateId:
        return QStringLiteral("税金费率");
    default:
        return QStringLiteral("费用变量%1").arg(id);
    }
}

BaseDataItem* numberedItem(ConstructionWorks* works, int id)
{
    BaseDataItem* byName = nullptr;
    const QString name = numberedName(id);
    for (BaseDataItem* item : works->getFyBlTable()->items()) {
        if (item->getValue(1).toInt() == id)
            return item;
        if (!byName && item->getValue(2).toString() == name)
            byName = item;
    }
    return byName;
}

} // namespace

double FyBlBusiness::GetFyBlValueById(ConstructionWorks* works, int id) const
{
    if (!works)
        return 0;
    const BaseDataItem* item = numberedItem(works, id);
    return item ? item->getDouble(3) : 0;
}

double FyBlBusiness::GetFyBlValueByName(ConstructionWorks* works, const QString& name) const
{
    return variables(works).value(name, 0.0);
}

QHash<QString, double> FyBlBusiness::variables(ConstructionWorks* works) const
{
    QHash<QString, double> vars;
    if (!works)
        return vars;
    vars.reserve(Definitions().size() + works->getFyBlTable()->count());
    for (const Definition& d : Definitions())
        vars.insert(d.name, 0.0);
    for (BaseDataItem* item : works->getFyBlTable()->items())
        vars.insert(item->getValue(2).toString(), item->getDouble(3));
    return vars;
}

void FyBlBusiness::setValue(ConstructionWorks* works, const QString& name, double value)
{
    FyBlTable* table = works->getFyBlTable();
    int maxId = 0;
    for (BaseDataItem* item : table->items()) {
        if (item->getValue(2).toString() == name) {
            item->setValue(3, value);
            return;
        }
        maxId = qMax(maxId, item->getValue(1).toInt());
    }
    BaseDataItem* item = table->CreateItem();
    item->loadValue(1, qMax(maxId, 1000) + 1); // low numbers are the host's fixed variables
    item->loadValue(2, name);
    item->loadValue(3, value);
    table->BaseDataItemAppend(item);
}

double FyBlBusiness::GetSJFyBlValue(const ProTreeNode* node, int id) const
{
    return GetFyBlValueById(DataManagement::getInstance()->GetContructWorks(node), id);
}

bool FyBlBusiness::ChangeFyBl(int projectIndex, int auditVersion, int nodeId, int id, double value)
{
    ConstructionWorks* works =
        DataManagement::getInstance()->GetProObjectForDisplay(projectIndex, auditVersion, nodeId);
    if (!works)
        return false;
    if (BaseDataItem* item = numberedItem(works, id)) {
        item->setValue(3, value);
        return true;
    }
    FyBlTable* table = works->getFyBlTable();
    BaseDataItem* item = table->CreateItem();
    item->loadValue(1, id);
    item->loadValue(2, numberedName(id));
    item->loadValue(3, value);
    table->BaseDataItemAppend(item);
    return true;
}

QStringList FyBlBusiness::FeeVariableNames(const QString& appPath)
{
    QFile file(QDir(appPath).filePath(QStringLiteral("Config/FeeVariableNames.txt")));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return {};
    QStringList names;
    for (const QByteArray& line : file.readAll().split('\n'))
        if (!line.trimmed().isEmpty())
            names << QString::fromUtf8(line.trimmed());
    return names;
}
