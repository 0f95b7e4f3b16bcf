#!/usr/bin/python3
"""Writes the three sample evaluated-materials lists in appdir/Samples, one per layout an
estimator receives. Run with the system Python (python3-openpyxl, python3-xlwt):

    /usr/bin/python3 scripts/make-import-samples.py appdir/Samples

The files are committed; running this again writes the same cells.
"""
import datetime
import os
import sys

import openpyxl
import xlwt
from openpyxl.styles import Alignment, Font

FIXED = datetime.datetime(2026, 11, 1, 8, 0, 0)

HEADER = ["序号", "招标编码", "材料名称", "规格型号", "单位", "产地", "厂家", "品种", "质量档次", "备注"]

# serial, code, name, model (规格型号), unit, origin, manufacturer, variety, grade, remark
SIMPLE = [
    (1, "01010100001", "钢筋", "HRB400 Φ12", "t", "四川成都", "攀钢集团", "螺纹钢", "一级", ""),
    (2, "01010100002", "钢筋", "HRB400 Φ16", "t", "四川成都", "攀钢集团", "螺纹钢", "一级", ""),
    (3, "01010100003", "钢筋", "HPB300 Φ8", "t", "四川达州", "达州钢铁", "圆钢", "一级", "盘圆"),
    (4, "80210100001", "商品混凝土", "C30", "m3", "本地", "", "泵送", "合格", "含泵送费"),
    (5, "80210100002", "商品混凝土", "C35 P6", "m3", "本地", "", "泵送", "合格", "抗渗"),
    (6, "04130100001", "蒸压加气混凝土砌块", "600×240×200 B06", "m3", "四川眉山", "", "A3.5", "合格", ""),
    (7, "13330100001", "SBS改性沥青防水卷材", "4mm Ⅱ型 PY", "m2", "四川德阳", "东方雨虹", "聚酯胎", "优等品", ""),
    (8, "29010100001", "镀锌钢管", "DN100", "m", "天津", "友发钢管", "热镀锌", "一级", ""),
    (9, "28030100001", "铜芯电力电缆", "YJV-4×35+1×16", "m", "四川成都", "", "交联", "合格", "国标"),
    (10, "11130100001", "乳胶漆", "内墙 环保型", "kg", "广东佛山", "立邦", "水性", "优等品", ""),
    (11, "07050100001", "陶瓷地砖", "800×800", "m2", "广东佛山", "", "抛光砖", "一级", ""),
    (12, "09010100001", "铝合金型材", "断桥 70系列", "t", "广东南海", "", "隔热", "合格", "颜色另定"),
]


def simple_xlsx(path):
    book = openpyxl.Workbook()
    sheet = book.active
    sheet.title = "需评审材料"
    sheet.append(HEADER)
    for row in SIMPLE:
        sheet.append(list(row))
    for col, width in zip("ABCDEFGHIJ", (6, 14, 22, 20, 6, 10, 12, 10, 10, 12)):
        sheet.column_dimensions[col].width = width
    for cell in sheet[1]:
        cell.font = Font(bold=True)
    book.properties.created = FIXED
    book.properties.modified = FIXED
    book.save(path)


# The second layout: title rows, a merged title, a two-row header, category headings, blank
# and subtotal rows between the materials, serial numbers as numbers, decimals and text.
TITLED = [
    ("heading", "一、钢材"),
    (1, "", "钢筋", "HRB400 Φ12", "t", "四川成都", "攀钢集团", "螺纹钢", "一级", ""),
    (2.0, "", "钢筋", "HRB400 Φ25", "t", "四川成都", "攀钢集团", "螺纹钢", "一级", ""),
    ("3", "", "钢筋", "HPB300 Φ10", "t", "四川达州", "达州钢铁", "圆钢", "一级", ""),
    ("1.0", "", "型钢", "Q235B 工字钢 I20a", "t", "河北唐山", "", "热轧", "合格", "按实调整"),
    ("subtotal", "小计"),
    ("blank",),
    ("heading", "二、混凝土及砂浆"),
    ("一", "", "商品混凝土", "C30", "m3", "本地", "", "泵送", "合格", ""),
    ("二", "", "商品混凝土", "C40", "m3", "本地", "", "泵送", "合格", ""),
    (7, "", "预拌砂浆", "DM M10", "t", "本地", "", "干混", "合格", "砌筑"),
    ("subtotal", "小计"),
    ("blank",),
    ("heading", "三、安装材料"),
    (8, "", "镀锌钢管", "DN50", "m", "天津", "友发钢管", "热镀锌", "一级", ""),
    (9, "", "PPR给水管", "dn25 S4", "m", "浙江", "伟星", "冷水管", "优等品", ""),
    (10, "", "铜芯电线", "BV-2.5", "m", "四川成都", "", "单芯", "合格", "国标"),
    ("subtotal", "小计"),
    ("total", "合计"),
]


def titled_xls(path):
    book = xlwt.Workbook(encoding="utf-8")
    sheet = book.add_sheet("材料表")
    centre = xlwt.easyxf("align: horiz center, vert center, wrap on; font: bold on")
    title = xlwt.easyxf("align: horiz center, vert center; font: bold on, height 320")
    plain = xlwt.easyxf("align: vert center")
    sheet.write_merge(0, 0, 0, 9, "××小区3#住宅楼工程\n招标人要求投标人报价的需评审材料表", title)
    sheet.write_merge(1, 1, 0, 5, "工程名称：××小区3#住宅楼（土建及安装）", plain)
    sheet.write_merge(1, 1, 6, 9, "第 1 页 共 1 页", plain)
    # The header: captions spanning both rows, and 品牌要求 over three columns.
    for col, caption in enumerate(["序 号", "编  码", "材料名称", "规格型号", "单位"]):
        sheet.write_merge(2, 3, col, col, caption, centre)
    sheet.write_merge(2, 2, 5, 7, "品牌要求", centre)
    for col, caption in zip((5, 6, 7), ("产地", "厂家", "品种")):
        sheet.write(3, col, caption, centre)
    sheet.write_merge(2, 3, 8, 8, "质量\n档次", centre)
    sheet.write_merge(2, 3, 9, 9, "备注", centre)
    row = 4
    for item in TITLED:
        if item[0] == "heading":
            sheet.write_merge(row, row, 0, 9, item[1], plain)
        elif item[0] in ("subtotal", "total"):
            sheet.write(row, 2, item[1], centre)
        elif item[0] == "blank":
            pass
        else:
            for col, value in enumerate(item):
                if value != "":
                    sheet.write(row, col, value, plain)
        row += 1
    sheet.write_merge(row + 1, row + 1, 0, 9,
                      "说明：投标人应按本表所列材料逐项填报单价，并在报价中不得调整材料名称及规格型号。", plain)
    for col, width in enumerate((6, 10, 20, 20, 6, 10, 12, 10, 8, 12)):
        sheet.col(col).width = width * 256
    sheet.row(0).height_mismatch = True
    sheet.row(0).height = 800
    book.save(path)


# The third layout: several sheets, one hidden, the list on the third with a spaced header,
# captions that only contain the field words, serial numbers as text and notes at the end.
MULTI = [
    ("1", "ZB-001", "钢筋", "HRB400E Φ20", "t", "四川", "川威集团", "螺纹钢", "一级", ""),
    ("2", "ZB-002", "钢绞线", "1×7-15.2-1860", "t", "天津", "", "低松弛", "一级", "预应力"),
    ("3", "ZB-003", "商品混凝土", "C50", "m3", "本地", "", "泵送", "合格", ""),
    ("", "", "", "", "", "", "", "", "", ""),
    ("4", "ZB-004", "水泥", "P.O 42.5", "t", "四川江油", "", "散装", "合格", ""),
    ("5", "ZB-005", "中砂", "", "m3", "本地", "", "机制砂", "合格", "含泥量≤3%"),
    ("6", "ZB-006", "碎石", "5-31.5mm", "m3", "本地", "", "连续级配", "合格", ""),
    ("7", "ZB-007", "", "", "", "", "", "", "", "名称待定"),
    ("8", "ZB-008", "防水涂料", "JS 聚合物水泥基 Ⅱ型", "kg", "四川成都", "", "双组分", "优等品", ""),
    ("9", "ZB-009", "岩棉板", "100mm 140kg/m3", "m2", "河北", "", "憎水", "A级", "燃烧性能A级"),
]


def multi_xlsx(path):
    book = openpyxl.Workbook()
    cover = book.active
    cover.title = "封面"
    cover["B3"] = "××市轨道交通配套工程"
    cover["B5"] = "招标人需评审材料清单"
    cover["B8"] = "招标人：××城市建设投资有限公司"
    cover["B9"] = "编制时间：2026年11月"

    old = book.create_sheet("旧版清单")
    old.sheet_state = "hidden"
    old.append(["序号", "材料名称", "规格型号", "单位"])
    old.append([1, "钢筋", "HRB335 Φ20", "t"])
    old.append([2, "商品混凝土", "C45", "m3"])

    notes = book.create_sheet("编制说明")
    notes["A1"] = "编制说明"
    notes["A2"] = "1. 本清单依据施工图及招标文件编制。"
    notes["A3"] = "2. 材料单价应包含运杂费、采购保管费。"

    sheet = book.create_sheet("需评审材料清单")
    sheet.merge_cells("A1:J1")
    sheet["A1"] = "需评审材料清单"
    sheet["A1"].font = Font(bold=True, size=16)
    sheet["A1"].alignment = Alignment(horizontal="center")
    sheet.merge_cells("A2:E2")
    sheet["A2"] = "标段：一标段"
    sheet.append(["序  号", "招标编码", "材料名称", "规格型号", "计量单位", "产 地", "生产厂家",
                  "品种", "质量档次", "备注"])
    for row in MULTI:
        sheet.append([value if value != "" else None for value in row])
    last = sheet.max_row
    sheet.merge_cells(start_row=last + 2, start_column=1, end_row=last + 2, end_column=10)
    sheet.cell(row=last + 2, column=1, value="注：1. 本表所列材料由投标人自主报价，作为评标依据。")
    sheet.cell(row=last + 3, column=1, value="2. 未列入本表的材料不作评审。")
    for col, width in zip("ABCDEFGHIJ", (6, 10, 16, 22, 8, 10, 12, 10, 10, 14)):
        sheet.column_dimensions[col].width = width

    summary = book.create_sheet("汇总")
    summary.append(["项目", "数量"])
    summary.append(["需评审材料", 9])
    book.active = 3
    book.properties.created = FIXED
    book.properties.modified = FIXED
    book.save(path)


def main():
    folder = sys.argv[1] if len(sys.argv) > 1 else "appdir/Samples"
    simple_xlsx(os.path.join(folder, "需评审材料-简单.xlsx"))
    titled_xls(os.path.join(folder, "需评审材料-标题与双行表头.xls"))
    multi_xlsx(os.path.join(folder, "需评审材料-多工作表.xlsx"))


if __name__ == "__main__":
    main()
