#pragma once

#include "EvaluatedMaterialImport.h"

#include <QAbstractTableModel>
#include <QVector>

#include <memory>

class LibXLExcelSheet;

// The import grid: one worksheet as it is, plus a first column with each row's kind and check
// box. Cells are read from the sheet when the view asks for them, so a sheet of any length
// costs two bytes per row here.
class ImportExcelDataModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Role { IsSelectedRole = Qt::UserRole + 1, ObjectRole };

    explicit ImportExcelDataModel(QObject* parent = nullptr);
    ~ImportExcelDataModel() override;

    // Shows the sheet (nullptr: nothing) with the layout found on it; every row invalid and
    // unchecked.
    void setSheet(const LibXLExcelSheet* sheet);
    const EvaluatedMaterialImport* import() const { return m_import.get(); }
    const EvaluatedMaterialImport::Layout& layout() const { return m_layout; }

    // Grid column of a sheet column and back: the sheet starts in grid column 1.
    static int gridColumn(int sheetColumn) { return sheetColumn + 1; }
    static int sheetColumn(int gridColumn) { return gridColumn - 1; }

    QVector<int> fields() const { return m_layout.fields; }
    void setField(int sheetColumn, int field);
    void clearFields();

    EvaluatedMaterialImport::RowKind rowKind(int row) const;
    bool isSelected(int row) const;
    // Marks the row; a material row is checked when select is true, an invalid row never is.
    void setRowKind(int row, EvaluatedMaterialImport::RowKind kind, bool select);
    // Every row's kind at once, as identify left them.
    void setRowKinds(const QVector<quint8>& kinds, bool select);
    QVector<int> checkedMaterialRows() const;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;
    QHash<int, QByteArray> roleNames() const override;

    // "A", "B", ... "AA" for a sheet column.
    static QString columnLetters(int sheetColumn);

private:
    const LibXLExcelSheet* m_sheet = nullptr;
    std::unique_ptr<EvaluatedMaterialImport> m_import;
    EvaluatedMaterialImport::Layout m_layout;
    QVector<quint8> m_kinds;
    QVector<quint8> m_selected;
};
