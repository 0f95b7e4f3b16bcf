#include "SporadicTableModel.h"

#include "Communication.h"
#include "DB_Operation.h"
#include "HostConstants.h"
#include "LxrgSql.h"
#include "SharedInterface.h"
#include "TarvoGuard.h"
#include "zMessageBox.h"

#include <QDebug>

namespace {

const QString kTable = QStringLiteral("main.lxrg");

} // namespace

SporadicTableModel::SporadicTableModel(QObject* parent)
    : QAbstractTableModel(parent), m_db(new DB_Operation(QStringLiteral("sqlite")))
{
}

SporadicTableModel::~SporadicTableModel()
{
    delete m_db;
}

QString SporadicTableModel::DatabasePath(const QString& baseName)
{
    return SharedInterface::GetAppPath() + HostConstants::C_Database_Dir + baseName +
           HostConstants::C_Db_Sqlite_Suffix;
}

void SporadicTableModel::Load(const QString& dq, const QString& sj)
{
    beginResetModel();
    m_dq = dq;
    m_sj = sj;
    m_records.clear();
    m_changes.clear();
    if (m_db->openDB(DatabasePath(QStringLiteral("LXRG")))) {
        // A condition that would break the statement finds nothing.
        const QString head = LxrgSql::Fill(QStringLiteral("select * from %1 "), {kTable});
        const QString where =
            LxrgSql::Fill(QStringLiteral("where dq='%1' and sj = '%2';"), {dq, sj});
        const QList<QVariantMap> rows =
            where.isEmpty() ? QList<QVariantMap>() : m_db->getMappedObjs(head + where);
        for (const QVariantMap& row : rows) {
            Record record;
            record.FID = row.value(QStringLiteral("FID")).toInt();
            record.dq = row.value(QStringLiteral("dq")).toString();
            record.sj = row.value(QStringLiteral("sj")).toString();
            record.gz = row.value(QStringLiteral("gz")).toString();
            record.dj = row.value(QStringLiteral("dj")).toDouble();
            record.bz = row.value(QStringLiteral("bz")).toString();
            m_records << record;
        }
        m_db->closeDB();
    }
    endResetModel();
}

QStringList SporadicTableModel::StartTimes(const QString& dq)
{
    QStringList times;
    if (!m_db->openDB(DatabasePath(QStringLiteral("LXRG"))))
        return times;
    const QString sql =
        dq.isEmpty() ? LxrgSql::Fill(QStringLiteral("select distinct sj from %1 ;"), {kTable})
                     : LxrgSql::Fill(QStringLiteral("select distinct sj from %1 where dq='%2';"),
                                     {kTable, dq});
    const QList<QVariantMap> rows = sql.isEmpty() ? QList<QVariantMap>() : m_db->getMappedObjs(sql);
    for (const QVariantMap& row : rows)
        times << row.value(QStringLiteral("sj")).toString();
    m_db->closeDB();
    return times;
}

QStringList SporadicTableModel::Regions()
{
    QStringList regions;
    if (!m_db->openDB(DatabasePath(QStringLiteral("LXRG"))))
        return regions;
    for (const QVariantMap& row : m_db->getMappedObjs(
             QStringLiteral("select distinct dq from %1 order by dq asc;").arg(kTable)))
        regions << row.value(QStringLiteral("dq")).toString();
    m_db->closeDB();
    return regions;
}

int SporadicTableModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_records.size();
}

int SporadicTableModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : 5;
}

QVariant SporadicTableModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= m_records.size() ||
        (role != Qt::DisplayRole && role != Qt::EditRole))
        return QVariant();
    const Record& r = m_records.at(index.row());
    switch (index.column()) {
    case 0:
        return r.gz;
    case 1:
        return QString::number(r.dj, 'g', 15);
    case 2:
        return r.bz;
    case 3:
        return r.dq;
    case 4:
        return r.sj;
    default:
        return QVariant();
    }
}

QVariant SporadicTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    static const QStringList titles = {QStringLiteral("工种"), QStringLiteral("单价"),
                                       QStringLiteral("备注"), QStringLiteral("所在地区"),
                                       QStringLiteral("开始执行时间")};
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole)
        return titles.value(section);
    return QAbstractTableModel::headerData(section, orientation, role);
}

Qt::ItemFlags SporadicTableModel::flags(const QModelIndex& index) const
{
    return index.isValid() ? Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsEditable
                           : Qt::NoItemFlags;
}

bool SporadicTableModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role != Qt::EditRole || !index.isValid() || index.row() >= m_records.size())
        return false;
    bool accepted = false;
    TARVO_GUARD("LxGzXmQd\\SporadicTableModel", "SporadicTableModel::setData")
    {
        Record& r = m_records[index.row()];
        switch (index.column()) {
        case 0:
            r.gz = value.toString();
            break;
        case 1:
            r.dj = value.toString().toDouble();
            break;
        case 2:
            r.bz = value.toString();
            break;
        case 3:
            r.dq = value.toString();
            break;
        case 4:
            r.sj = value.toString();
            break;
        default:
            return;
        }
        m_changes.append({Update, r}); // every edit is its own update
        accepted = true;
        emit dataChanged(index, index, {Qt::EditRole});
    };
    return accepted;
}

int SporadicTableModel::newId()
{
    int id = 0;
    if (m_db->openDB(DatabasePath(QStringLiteral("MASTER")))) {
        const QList<QVariantMap> rows = m_db->getMappedObjs(
            QStringLiteral("select max(FID)+%1 as newId  from %2;").arg(m_insertCount).arg(kTable));
        if (!rows.isEmpty())
            id = rows.first().value(QStringLiteral("newId")).toInt();
        m_db->closeDB();
    }
    return id;
}

bool SporadicTableModel::insertRows(int row, int count, const QModelIndex& parent)
{
    if (parent.isValid() || row < 0 || row > m_records.size() || count < 1)
        return false;
    for (int i = 0; i < count; ++i) {
        ++m_insertCount;
        Record record;
        record.FID = newId();
        record.dq = m_dq;
        record.sj = m_sj;
        beginInsertRows(QModelIndex(), row + i, row + i);
        m_records.insert(row + i, record);
        endInsertRows();
        m_changes.append({Insert, record});
    }
    return true;
}

bool SporadicTableModel::removeRows(int row, int count, const QModelIndex& parent)
{
    if (parent.isValid() || row < 0 || count < 1 || row + count > m_records.size())
        return false;
    beginRemoveRows(QModelIndex(), row, row + count - 1);
    for (int i = 0; i < count; ++i) {
        m_changes.append({Delete, m_records.at(row)});
        m_records.removeAt(row);
    }
    endRemoveRows();
    return true;
}

QString SporadicTableModel::StatementOf(const Change& change, QString* why)
{
    const Record& r = change.record;
    switch (change.operation) {
    case Insert:
        // The keyword is written "insert info", as the store's save has always done.
        return LxrgSql::Fill(
            QStringLiteral("insert info %1 (FID, dq, sj, gz, dj, bz) values( '%2', "
                           "'%3', '%4', '%5', '%6', '%7');"),
            {kTable, QString::number(r.FID), r.dq, r.sj, r.gz,
             QStringLiteral("%1").arg(r.dj, 0, 'g', -1), r.bz},
            why);
    case Delete:
        return LxrgSql::Fill(QStringLiteral("delete from %1 where FID=%2;"),
                             {kTable, QString::number(r.FID)}, why);
    default:
        return LxrgSql::Fill(QStringLiteral("update %1 set gz='%2', dj=%3, bz='%4' where FID=%5;"),
                             {kTable, r.gz, QStringLiteral("%1").arg(r.dj, 0, 'g', -1), r.bz,
                              QString::number(r.FID)},
                             why);
    }
}

bool SporadicTableModel::slotSaveModifyRecord()
{
    bool ok = false;
    TARVO_GUARD("LxGzXmQd\\SporadicTableModel", "SporadicTableModel::slotSaveModifyRecord")
    {
        ok = m_db->openDB(DatabasePath(QStringLiteral("MASTER")));
        for (int i = 0; ok && i < m_changes.size(); ++i) {
            QString why;
            const QString sql = StatementOf(m_changes.at(i), &why);
            if (sql.isEmpty()) {
                // A value would have broken the statement: it fails here, unsent.
                qDebug().noquote() << QStringLiteral("Modify Record sql:") << why;
                ok = false;
                break;
            }
            qDebug().noquote() << QStringLiteral("Modify Record sql:") << sql;
            ok = m_db->excuteSQL(sql); // no transaction: what ran before a failure stays
        }
        m_db->closeDB();
        m_insertCount = 0;
        QWidget* window = Communication::GetInstance()->GetMainWindow();
        showInformation(window ? window->window() : nullptr, QStringLiteral("保存提示"),
                        ok ? QStringLiteral("数据保存成功！") : QStringLiteral("数据保存失败！"));
    };
    m_insertCount = 0;
    return ok;
}
