#pragma once

#include "TenderDocument.h"

#include "SheetContent.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <QVector>

class LibXLExcel;
class LibXLExcelSheet;

// Reads the tender's list of materials subject to evaluation out of a worksheet: which column
// holds which field, where the header is, which rows are material rows, and the records of the
// rows the user keeps. Shared by the import dialog and tarvo-xl; knows no widgets.
class EvaluatedMaterialImport
{
public:
    // The fields in the list's column order; a column not mapped has NoField.
    enum Field {
        NoField = -1,
        Serial,
        Code,
        Name,
        Spec,
        Unit,
        Origin,
        Manufacturer,
        Variety,
        Grade,
        Remark,
        FieldCount
    };
    enum RowKind : quint8 { InvalidRow = 0, MaterialRow = 1 };

    // Rows searched for the header, from the top.
    static constexpr int HeaderSearchRows = 20;

    // "序号", "招标编码", ... in column order; empty for NoField.
    static QString fieldName(int field);
    static QStringList fieldNames();
    // "材料行" / "无效行".
    static QString rowKindName(RowKind kind);

    // The field a header text names: blanks removed, the ten patterns tried in order, the first
    // that matches anywhere wins; NoField when none does.
    static int matchHeader(const QString& text);

    explicit EvaluatedMaterialImport(const LibXLExcelSheet& sheet);
    const LibXLExcelSheet& sheet() const { return m_sheet; }

    // The text a grid shows in the cell: a cell covered by a merged range, other than the
    // range's top-left one, shows nothing.
    QString cellText(int row, int col) const;
    // The merged range the cell is the top-left of, or inside of.
    bool mergeAt(int row, int col, ExcelRange* range) const;

    // Where the list's header is and what each column holds.
    struct Layout
    {
        int headerRow = -1;   // -1: no header found in the rows searched
        int headerRows = 0;   // 1, or 2 for a header with a second row under merged cells
        int firstDataRow = 0; // the first row below the header (0 without a header)
        QVector<int> fields;  // per sheet column: a Field
    };
    // The first row within HeaderSearchRows whose columns map 序号 or 材料名称 is the header;
    // see docs/excel-import.md for the second header row.
    Layout findLayout() const;
    // The sheet the list is in: the first visible sheet with a header, else the first hidden
    // one, else the first visible sheet; -1 for a book without sheets.
    static int findListSheet(const LibXLExcel& book);

    // The message for fields mapped to more than one column, empty when each field is mapped
    // at most once.
    static QString duplicateFieldsMessage(const QVector<int>& fields);
    // The message when 序号 or 材料名称 is not mapped, empty when both are.
    static QString missingFieldsMessage(const QVector<int>& fields);

    struct Identification
    {
        QString message;       // to show the user; empty when material rows were found
        bool stopped = false;  // true: a mapping problem, the rows were not looked at
        QVector<quint8> kinds; // per sheet row, from row 0: a RowKind (all InvalidRow if stopped
                               // for missing fields; empty if stopped for duplicates)
        int materialRows = 0;
    };
    // "识别行" over the rows from firstDataRow on: a row with both a 序号 and a 材料名称 text
    // (trimmed) is a material row, every other row an invalid one.
    Identification identify(const QVector<int>& fields, int firstDataRow) const;

    // One record from one row: each field from the cell of its column, trimmed.
    TenderEvaluatedMaterial record(const QVector<int>& fields, int row) const;
    // Every given row's record, in the given order.
    QVector<TenderEvaluatedMaterial> records(const QVector<int>& fields,
                                             const QVector<int>& rows) const;
    // A record's fields in column order.
    static QStringList values(const TenderEvaluatedMaterial& material);

private:
    // The fields of one header row, each column matched on its own text.
    QVector<int> rowFields(int row) const;
    bool hasSecondHeaderRow(int headerRow) const;

    const LibXLExcelSheet& m_sheet;
    // Merged ranges by the rows they cover; ranges taller than a bucket's worth are kept apart
    // and scanned, so a lookup costs a few ranges whatever the sheet holds.
    QHash<int, QVector<int>> m_mergesByRow;
    QVector<int> m_tallMerges;
    QVector<ExcelRange> m_merges;
};
