#include "DbZbZgClModel.h"

#include "DbZbZgClItem.h"
#include "JfszTable.h"
#include "SkinManager.h"

#include <QColor>
#include <QFont>

namespace {

QString field(const BaseDataItem* item, int f)
{
    return item ? item->getValue(f).toString() : QString();
}

} // namespace

DbZbZgClModel::DbZbZgClModel(QObject* parent) : QAbstractTableModel(parent) {}

const QVector<DbZbZgClModel::Column>& DbZbZgClModel::columns() const
{
    static const QVector<Column> list = {
        {"序号", Code, Qt::AlignLeft},
        {"招标文件|材料名称", ZbName, Qt::AlignLeft},
        {"招标文件|规格型号", ZbModel, Qt::AlignLeft},
        {"招标文件|单位", ZbUnit, Qt::AlignHCenter},
        {"招标文件|暂估单价", ZbPrice, Qt::AlignRight},
        {"投标工程|材料名称", TbName, Qt::AlignLeft},
        {"投标工程|规格型号", TbModel, Qt::AlignLeft},
        {"投标工程|单位", TbUnit, Qt::AlignHCenter},
        {"投标工程|基价", TbBasePrice, Qt::AlignRight},
        {"投标工程|调价", TbPrice, Qt::AlignRight},
    };
    return list;
}

void DbZbZgClModel::setRecords(const QList<DbZbZgClItem*>* records, const JfszTable* format)
{
    beginResetModel();
    m_records = records;
    m_format = format;
    rebuild();
    endResetModel();
}

void DbZbZgClModel::refresh()
{
    beginResetModel();
    rebuild();
    endResetModel();
}

void DbZbZgClModel::setKeywords(const QString& name, const QString& model)
{
    m_name = name.trimmed();
    m_model = model.trimmed();
    refresh();
}

bool DbZbZgClModel::passes(const DbZbZgClItem* record) const
{
    auto hit = [](const QString& a, const QString& b, const QString& keyword) {
        return keyword.isEmpty() || a.contains(keyword, Qt::CaseInsensitive) ||
               b.contains(keyword, Qt::CaseInsensitive);
    };
    return hit(field(record->GetZbCl(), 3), field(record->GetTbCl(), 3), m_name) &&
           hit(field(record->GetZbCl(), 4), field(record->GetTbCl(), 4), m_model);
}

void DbZbZgClModel::rebuild()
{
    m_rows.clear();
    const bool filtering = !m_name.isEmpty() || !m_model.isEmpty();
    DbZbZgClItem* heading = nullptr;
    const int count = recordCount();
    for (int i = 0; i < count; ++i) {
        DbZbZgClItem* record = recordAt(i);
        if (record->IsDwRow()) {
            heading = record;
            if (!filtering)
                m_rows.append(record);
            continue;
        }
        if (filtering && !passes(record))
            continue;
        if (filtering && heading) {
            m_rows.append(heading);
            heading = nullptr;
        }
        m_rows.append(record);
    }
}

DbZbZgClItem* DbZbZgClModel::record(int row) const
{
    return row >= 0 && row < m_rows.size() ? m_rows.at(row) : nullptr;
}

int DbZbZgClModel::rowOf(const DbZbZgClItem* record) const
{
    for (int i = 0; i < m_rows.size(); ++i)
        if (m_rows.at(i) == record)
            return i;
    return -1;
}

bool DbZbZgClModel::isNameColumn(int column) const
{
    if (column < 0 || column >= columns().size())
        return false;
    const Content c = columns().at(column).content;
    return c == ZbName || c == TbName;
}

bool DbZbZgClModel::isModelColumn(int column) const
{
    if (column < 0 || column >= columns().size())
        return false;
    const Content c = columns().at(column).content;
    return c == ZbModel || c == TbModel;
}

int DbZbZgClModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int DbZbZgClModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(columns().size());
}

QString DbZbZgClModel::text(const DbZbZgClItem* record, Content content) const
{
    const BaseDataItem* zb = record->GetZbCl();
    const BaseDataItem* tb = record->GetTbCl();
    auto price = [&](const BaseDataItem* item, int f) {
        if (!item || !item->getValue(f).isValid())
            return QString();
        const double value = item->getDouble(f);
        return m_format ? m_format->PriceFloatFormatToStr(value, -1)
                        : QString::number(value, 'f', 2);
    };
    switch (content) {
    case Seq:
        return QString(); // the row number, given by data()
    case Code:
        if (record->IsDwRow())
            return record->GetZbZgClZsItem()->GetZxGcName();
        if (record->IsZbRow())
            return QStringLiteral("  ") + record->GetZbBm();
        if (tb) {
            const QString code = field(tb, 18).trimmed();
            return QStringLiteral("  ") +
                   (code.isEmpty() ? QStringLiteral("缺少招标编码！") : code);
        }
        return QString();
    case ZbCode:
        return record->IsZbRow() ? record->GetZbBm() : QString();
    case ZbName:
        return field(zb, 3);
    case ZbModel:
        return field(zb, 4);
    case ZbUnit:
        return field(zb, 5);
    case ZbPrice:
        return price(zb, 7);
    case TbName:
        return field(tb, 3);
    case TbModel:
        return field(tb, 4);
    case TbUnit:
        return field(tb, 5);
    case TbBasePrice:
        return price(tb, 6);
    case TbPrice:
        return price(tb, 7);
    }
    return QString();
}

QVariant DbZbZgClModel::data(const QModelIndex& index, int role) const
{
    const DbZbZgClItem* r = record(index.row());
    if (!r || index.column() < 0 || index.column() >= columns().size())
        return QVariant();
    const Column& column = columns().at(index.column());
    switch (role) {
    case Qt::DisplayRole:
        if (column.content == Seq)
            return QString::number(index.row() + 1);
        return text(r, column.content);
    case Qt::TextAlignmentRole:
        return int(column.alignment | Qt::AlignVCenter);
    case Qt::ToolTipRole:
        if (r->GetState() == DbZbZgClItem::MatchedByNorm)
            return QStringLiteral("名称、规格型号或单位的写法不同，按规范化后相同对应，请核对");
        if (r->IsOrphan())
            return QStringLiteral("该单位工程已不在当前工程中，不会应用");
        return QVariant();
    case Qt::FontRole:
        if (r->IsDwRow() || r->GetState() == DbZbZgClItem::MatchedByNorm) {
            QFont font;
            font.setBold(r->IsDwRow());
            font.setItalic(r->GetState() == DbZbZgClItem::MatchedByNorm && r->IsZbRow());
            return font;
        }
        return QVariant();
    case Qt::BackgroundRole: {
        if (r->IsDwRow())
            return QVariant();
        SkinManager* skin = SkinManager::getInstance();
        if (r->IsMatched())
            return skin->getVXColor(QStringLiteral("DbZbZgClAHModel_ZgWithZbAndTbCl"),
                                    QColor(215, 255, 215));
        if (r->IsZbRow())
            return skin->getVXColor(QStringLiteral("DbZbZgClAHModel_ZgOnlyZbCl"),
                                    QColor(255, 255, 215));
        return skin->getVXColor(QStringLiteral("DbZbZgClAHModel_ZgOnlyTbCl"),
                                QColor(255, 221, 221));
    }
    case Qt::ForegroundRole:
        // Pairs found only by the normalised spelling are drawn blue, to be looked at.
        if (r->GetState() == DbZbZgClItem::MatchedByNorm && r->IsZbRow())
            return QColor(0, 70, 200);
        if (!r->IsZbRow() && !r->IsDwRow() && column.content == Code &&
            field(r->GetTbCl(), 18).trimmed().isEmpty())
            return SkinManager::getInstance()->getVXColor(QStringLiteral("Jjb_TextColor_Bjjcl"),
                                                          QColor(255, 0, 0));
        return QVariant();
    default:
        return QVariant();
    }
}

QVariant DbZbZgClModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= columns().size())
        return QAbstractTableModel::headerData(section, orientation, role);
    if (role == Qt::DisplayRole)
        return QString::fromUtf8(columns().at(section).header);
    if (role == Qt::TextAlignmentRole)
        return int(Qt::AlignCenter);
    return QVariant();
}
