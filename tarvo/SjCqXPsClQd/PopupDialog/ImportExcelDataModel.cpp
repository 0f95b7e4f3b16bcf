#include "ImportExcelDataModel.h"

#include "TarvoGuard.h"

#include "LibXLExcelSheet.h"

#include <QBrush>
#include <QColor>
#include <QFont>

using Import = EvaluatedMaterialImport;

ImportExcelDataModel::ImportExcelDataModel(QObject* parent) : QAbstractTableModel(parent) {}

ImportExcelDataModel::~ImportExcelDataModel() = default;

void ImportExcelDataModel::setSheet(const LibXLExcelSheet* sheet)
{
    beginResetModel();
    m_sheet = sheet;
    m_import.reset(sheet ? new Import(*sheet) : nullptr);
    m_layout = m_import ? m_import->findLayout() : Import::Layout();
    const int rows = sheet ? sheet->RowCount() : 0;
    m_kinds = QVector<quint8>(rows, Import::InvalidRow);
    m_selected = QVector<quint8>(rows, 0);
    endResetModel();
}

void ImportExcelDataModel::setField(int sheetColumn, int field)
{
    if (sheetColumn < 0 || sheetColumn >= m_layout.fields.size())
        return;
    if (field < Import::NoField || field >= Import::FieldCount)
        field = Import::NoField;
    m_layout.fields[sheetColumn] = field;
    emit headerDataChanged(Qt::Horizontal, gridColumn(sheetColumn), gridColumn(sheetColumn));
}

void ImportExcelDataModel::clearFields()
{
    m_layout.fields.fill(Import::NoField);
    if (!m_layout.fields.isEmpty())
        emit headerDataChanged(Qt::Horizontal, 1, m_layout.fields.size());
}

Import::RowKind ImportExcelDataModel::rowKind(int row) const
{
    return Import::RowKind(m_kinds.value(row, Import::InvalidRow));
}

bool ImportExcelDataModel::isSelected(int row) const
{
    return m_selected.value(row, 0) != 0;
}

void ImportExcelDataModel::setRowKind(int row, Import::RowKind kind, bool select)
{
    if (row < 0 || row >= m_kinds.size())
        return;
    m_kinds[row] = kind;
    m_selected[row] = kind == Import::MaterialRow && select;
    emit dataChanged(index(row, 0), index(row, columnCount() - 1));
}

void ImportExcelDataModel::setRowKinds(const QVector<quint8>& kinds, bool select)
{
    if (kinds.size() != m_kinds.size())
        return;
    m_kinds = kinds;
    for (int row = 0; row < kinds.size(); ++row)
        m_selected[row] = kinds.at(row) == Import::MaterialRow && select;
    if (!m_kinds.isEmpty())
        emit dataChanged(index(0, 0), index(m_kinds.size() - 1, columnCount() - 1));
}

QVector<int> ImportExcelDataModel::checkedMaterialRows() const
{
    QVector<int> rows;
    for (int row = 0; row < m_kinds.size(); ++row)
        if (m_kinds.at(row) == Import::MaterialRow && m_selected.at(row))
            rows << row;
    return rows;
}

int ImportExcelDataModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_kinds.size();
}

int ImportExcelDataModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() || !m_sheet ? 0 : m_sheet->ColCount() + 1;
}

QVariant ImportExcelDataModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || !m_import)
        return QVariant();
    const int row = index.row();
    const bool material = m_kinds.at(row) == Import::MaterialRow;
    if (index.column() == 0) {
        switch (role) {
        case Qt::DisplayRole:
        case ObjectRole:
            return Import::rowKindName(Import::RowKind(m_kinds.at(row)));
        case Qt::CheckStateRole:
        case IsSelectedRole:
            return m_selected.at(row) ? int(Qt::Checked) : int(Qt::Unchecked);
        case Qt::ForegroundRole:
            return material ? QVariant() : QBrush(QColor(128, 128, 128));
        default:
            break;
        }
    }
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
        if (index.column() == 0)
            return QVariant();
        return m_import->cellText(row, sheetColumn(index.column()));
    case Qt::BackgroundRole:
        if (material)
            return QBrush(QColor(226, 243, 231));
        if (m_layout.headerRow >= 0 && row >= m_layout.headerRow && row < m_layout.firstDataRow)
            return QBrush(QColor(236, 240, 247));
        return QVariant();
    case Qt::TextAlignmentRole:
        return int(Qt::AlignLeft | Qt::AlignVCenter);
    default:
        return QVariant();
    }
}

bool ImportExcelDataModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    bool changed = false;
    TARVO_GUARD("SjCqXPsClQd\\PopupDialog\\ImportExcelDataModel", "ImportExcelDataModel::setData")
    {
        if (!index.isValid() || index.column() != 0 ||
            (role != Qt::CheckStateRole && role != IsSelectedRole))
            return;
        const int row = index.row();
        if (m_kinds.at(row) != Import::MaterialRow)
            return;
        m_selected[row] = value.toInt() == Qt::Checked;
        emit dataChanged(index, index);
        changed = true;
    };
    return changed;
}

Qt::ItemFlags ImportExcelDataModel::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (index.column() == 0 && m_kinds.at(index.row()) == Import::MaterialRow)
        flags |= Qt::ItemIsUserCheckable;
    return flags;
}

QVariant ImportExcelDataModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Vertical) {
        if (role == Qt::DisplayRole)
            return section + 1;
        return QVariant();
    }
    if (section == 0) {
        if (role == Qt::DisplayRole)
            return QStringLiteral("行类型\n(勾选导入)");
        return QVariant();
    }
    const int field = m_layout.fields.value(sheetColumn(section), Import::NoField);
    switch (role) {
    case Qt::DisplayRole:
        return QString(
            columnLetters(sheetColumn(section)) + QLatin1Char('\n') +
            (field == Import::NoField ? QStringLiteral("(未对应)") : Import::fieldName(field)));
    case Qt::ToolTipRole:
        return QStringLiteral("单击列头选择此列对应的字段");
    case Qt::ForegroundRole:
        return field == Import::NoField ? QBrush(QColor(128, 128, 128))
                                        : QBrush(QColor(0, 70, 160));
    case Qt::FontRole:
        if (field != Import::NoField) {
            QFont font;
            font.setBold(true);
            return font;
        }
        return QVariant();
    default:
        return QVariant();
    }
}

QHash<int, QByteArray> ImportExcelDataModel::roleNames() const
{
    QHash<int, QByteArray> names = QAbstractTableModel::roleNames();
    names.insert(IsSelectedRole, "IsSelected");
    names.insert(ObjectRole, "Object");
    return names;
}

QString ImportExcelDataModel::columnLetters(int sheetColumn)
{
    QString name;
    for (int c = sheetColumn + 1; c > 0; c = (c - 1) / 26)
        name.prepend(QChar('A' + (c - 1) % 26));
    return name;
}
