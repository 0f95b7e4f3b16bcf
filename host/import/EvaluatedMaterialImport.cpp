#include "EvaluatedMaterialImport.h"

#include "LibXLExcel.h"
#include "LibXLExcelSheet.h"

#include <QRegularExpression>

#include <array>

namespace {

// Merged ranges up to this many rows are filed under every row they cover.
constexpr int MergeBucketRows = 64;

const std::array<QString, EvaluatedMaterialImport::FieldCount>& names()
{
    static const std::array<QString, EvaluatedMaterialImport::FieldCount> list = {
        QStringLiteral("序号"),     QStringLiteral("招标编码"), QStringLiteral("材料名称"),
        QStringLiteral("规格型号"), QStringLiteral("单位"),     QStringLiteral("产地"),
        QStringLiteral("厂家"),     QStringLiteral("品种"),     QStringLiteral("质量档次"),
        QStringLiteral("备注")};
    return list;
}

const std::array<QRegularExpression, EvaluatedMaterialImport::FieldCount>& patterns()
{
    static const std::array<QRegularExpression, EvaluatedMaterialImport::FieldCount> list = {
        QRegularExpression(QStringLiteral("(序号)+")),
        QRegularExpression(QStringLiteral("(招标编码|材料编码)+")),
        QRegularExpression(QStringLiteral("(材料名称)+")),
        QRegularExpression(QStringLiteral("(规格型号)+")),
        QRegularExpression(QStringLiteral("(单位)+")),
        QRegularExpression(QStringLiteral("(产地)+")),
        QRegularExpression(QStringLiteral("(厂家)+")),
        QRegularExpression(QStringLiteral("(品种)+")),
        QRegularExpression(QStringLiteral("(质量档次)+")),
        QRegularExpression(QStringLiteral("(备注)+"))};
    return list;
}

QString quotedList(const QVector<int>& fields)
{
    QStringList quoted;
    for (int field : fields)
        quoted << QLatin1Char('"') + EvaluatedMaterialImport::fieldName(field) + QLatin1Char('"');
    return quoted.join(QStringLiteral("、"));
}

int columnOf(const QVector<int>& fields, int field)
{
    return fields.indexOf(field);
}

} // namespace

QString EvaluatedMaterialImport::fieldName(int field)
{
    if (field < 0 || field >= FieldCount)
        return QString();
    return names()[size_t(field)];
}

QStringList EvaluatedMaterialImport::fieldNames()
{
    QStringList list;
    for (const QString& name : names())
        list << name;
    return list;
}

QString EvaluatedMaterialImport::rowKindName(RowKind kind)
{
    return kind == MaterialRow ? QStringLiteral("材料行") : QStringLiteral("无效行");
}

int EvaluatedMaterialImport::matchHeader(const QString& text)
{
    static const QRegularExpression blank(QStringLiteral("\\s"));
    QString key = text.simplified();
    key.remove(blank);
    if (key.isEmpty())
        return NoField;
    for (int field = 0; field < FieldCount; ++field)
        if (patterns()[size_t(field)].match(key).hasMatch())
            return field;
    return NoField;
}

EvaluatedMaterialImport::EvaluatedMaterialImport(const LibXLExcelSheet& sheet)
    : m_sheet(sheet), m_merges(sheet.GetMerges())
{
    for (int i = 0; i < m_merges.size(); ++i) {
        const ExcelRange& range = m_merges.at(i);
        if (range.lastRow - range.firstRow >= MergeBucketRows) {
            m_tallMerges << i;
            continue;
        }
        for (int row = range.firstRow; row <= range.lastRow; ++row)
            m_mergesByRow[row] << i;
    }
}

bool EvaluatedMaterialImport::mergeAt(int row, int col, ExcelRange* range) const
{
    auto covers = [&](int index) {
        const ExcelRange& merge = m_merges.at(index);
        if (row < merge.firstRow || row > merge.lastRow || col < merge.firstCol ||
            col > merge.lastCol)
            return false;
        if (range)
            *range = merge;
        return true;
    };
    const auto bucket = m_mergesByRow.constFind(row);
    if (bucket != m_mergesByRow.cend())
        for (int index : *bucket)
            if (covers(index))
                return true;
    for (int index : m_tallMerges)
        if (covers(index))
            return true;
    return false;
}

QString EvaluatedMaterialImport::cellText(int row, int col) const
{
    QString text = m_sheet.GetCellText(row, col);
    if (text.isEmpty() || m_merges.isEmpty())
        return text;
    ExcelRange range;
    if (mergeAt(row, col, &range) && (range.firstRow != row || range.firstCol != col))
        return QString();
    return text;
}

QVector<int> EvaluatedMaterialImport::rowFields(int row) const
{
    QVector<int> fields(m_sheet.ColCount(), NoField);
    for (int col = 0; col < fields.size(); ++col)
        fields[col] = matchHeader(cellText(row, col));
    return fields;
}

bool EvaluatedMaterialImport::hasSecondHeaderRow(int headerRow) const
{
    const int below = headerRow + 1;
    if (below >= m_sheet.RowCount())
        return false;
    // Only a header drawn with merged cells has a second row: a cell spanning both rows, or a
    // caption spanning several columns with the column captions under it.
    bool merged = false;
    for (const ExcelRange& range : m_merges) {
        if (range.firstRow != headerRow)
            continue;
        if (range.lastRow >= below || range.lastCol > range.firstCol)
            merged = true;
    }
    if (!merged)
        return false;
    // A row with a serial number under the header is the first material, not a caption.
    const QVector<int> top = rowFields(headerRow);
    const int serialCol = columnOf(top, Serial);
    if (serialCol >= 0 && !cellText(below, serialCol).trimmed().isEmpty())
        return false;
    const QVector<int> second = rowFields(below);
    for (int field : second)
        if (field != NoField)
            return true;
    return false;
}

EvaluatedMaterialImport::Layout EvaluatedMaterialImport::findLayout() const
{
    Layout layout;
    layout.fields = QVector<int>(m_sheet.ColCount(), NoField);
    const int last = qMin(HeaderSearchRows, m_sheet.RowCount());
    for (int row = 0; row < last; ++row) {
        const QVector<int> fields = rowFields(row);
        if (!fields.contains(Serial) && !fields.contains(Name))
            continue;
        layout.headerRow = row;
        layout.headerRows = 1;
        layout.fields = fields;
        if (hasSecondHeaderRow(row)) {
            layout.headerRows = 2;
            const QVector<int> second = rowFields(row + 1);
            for (int col = 0; col < fields.size(); ++col)
                if (second.at(col) != NoField)
                    layout.fields[col] = second.at(col);
        }
        layout.firstDataRow = row + layout.headerRows;
        break;
    }
    return layout;
}

int EvaluatedMaterialImport::findListSheet(const LibXLExcel& book)
{
    const QVector<LibXLExcelSheet*> sheets = book.GetSheets();
    int firstHidden = -1;
    int firstVisible = -1;
    for (int i = 0; i < sheets.size(); ++i) {
        const bool visible = sheets.at(i)->GetState() == LibXLExcelSheet::SheetVisible;
        if (visible && firstVisible < 0)
            firstVisible = i;
        if (!visible && firstHidden >= 0)
            continue;
        if (EvaluatedMaterialImport(*sheets.at(i)).findLayout().headerRow < 0)
            continue;
        if (visible)
            return i;
        firstHidden = i;
    }
    if (firstHidden >= 0)
        return firstHidden;
    if (firstVisible >= 0)
        return firstVisible;
    return sheets.isEmpty() ? -1 : 0;
}

QString EvaluatedMaterialImport::duplicateFieldsMessage(const QVector<int>& fields)
{
    QVector<int> repeated;
    for (int field = 0; field < FieldCount; ++field)
        if (fields.count(field) > 1)
            repeated << field;
    if (repeated.isEmpty())
        return QString();
    return QStringLiteral("存在多个%1列，请取消多余的对应关系。").arg(quotedList(repeated));
}

QString EvaluatedMaterialImport::missingFieldsMessage(const QVector<int>& fields)
{
    const bool serial = fields.contains(Serial);
    const bool name = fields.contains(Name);
    if (!serial && !name)
        return QStringLiteral("请先设置 \"序号\" 和 \"材料名称\" 列！");
    if (!serial)
        return QStringLiteral("请先设置 \"序号\" 列！");
    if (!name)
        return QStringLiteral("请先设置 \"材料名称\" 列！");
    return QString();
}

EvaluatedMaterialImport::Identification
EvaluatedMaterialImport::identify(const QVector<int>& fields, int firstDataRow) const
{
    Identification result;
    result.message = duplicateFieldsMessage(fields);
    if (!result.message.isEmpty()) {
        result.stopped = true;
        return result;
    }
    result.kinds = QVector<quint8>(m_sheet.RowCount(), InvalidRow);
    result.message = missingFieldsMessage(fields);
    if (!result.message.isEmpty()) {
        result.stopped = true;
        return result;
    }
    const int serialCol = columnOf(fields, Serial);
    const int nameCol = columnOf(fields, Name);
    for (int row = qMax(0, firstDataRow); row < m_sheet.RowCount(); ++row) {
        if (cellText(row, serialCol).trimmed().isEmpty() ||
            cellText(row, nameCol).trimmed().isEmpty())
            continue;
        result.kinds[row] = MaterialRow;
        ++result.materialRows;
    }
    if (result.materialRows == 0)
        result.message = QStringLiteral("当前表内不存在有效招标需评审材料数据。");
    return result;
}

TenderEvaluatedMaterial EvaluatedMaterialImport::record(const QVector<int>& fields, int row) const
{
    QString value[FieldCount];
    for (int col = 0; col < fields.size(); ++col) {
        const int field = fields.at(col);
        if (field >= 0 && field < FieldCount)
            value[field] = cellText(row, col).trimmed();
    }
    TenderEvaluatedMaterial material;
    material.serial = value[Serial];
    material.code = value[Code];
    material.name = value[Name];
    material.spec = value[Spec];
    material.unit = value[Unit];
    material.origin = value[Origin];
    material.manufacturer = value[Manufacturer];
    material.variety = value[Variety];
    material.grade = value[Grade];
    material.remark = value[Remark];
    return material;
}

QVector<TenderEvaluatedMaterial> EvaluatedMaterialImport::records(const QVector<int>& fields,
                                                                  const QVector<int>& rows) const
{
    QVector<TenderEvaluatedMaterial> list;
    list.reserve(rows.size());
    for (int row : rows)
        list << record(fields, row);
    return list;
}

QStringList EvaluatedMaterialImport::values(const TenderEvaluatedMaterial& material)
{
    return {material.serial, material.code,   material.name,         material.spec,
            material.unit,   material.origin, material.manufacturer, material.variety,
            material.grade,  material.remark};
}
