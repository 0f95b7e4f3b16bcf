#pragma once

#include <QAbstractTableModel>
#include <QList>

class DB_Operation;

// The labour rates of one region and start time, edited in memory; "保存" writes the pending
// changes in the order they were made. Rows are read from the "LXRG" file; ids are allocated
// in and changes saved to the "MASTER" file.
class SporadicTableModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    struct Record
    {
        qint32 FID = 0;
        QString dq;
        QString sj;
        QString gz;
        double dj = 0;
        QString bz;
    };
    enum Operation { Insert = 0, Delete = 1, Update = 2 };
    struct Change
    {
        qint32 operation;
        Record record;
    };

    explicit SporadicTableModel(QObject* parent = nullptr);
    ~SporadicTableModel() override;

    static QString DatabasePath(const QString& baseName);

    // Loads the rows of a region and time; the pending changes of the former condition go.
    void Load(const QString& dq, const QString& sj);
    // The distinct start times, of one region when dq is not empty ("LXRG" file).
    QStringList StartTimes(const QString& dq);
    QStringList Regions();

    const QList<Record>& records() const { return m_records; }
    const QList<Change>& pendingChanges() const { return m_changes; }
    int insertCounter() const { return m_insertCount; }
    // The statement of a pending change; empty (with the reason) when a value would break it.
    static QString StatementOf(const Change& change, QString* why = nullptr);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    bool insertRows(int row, int count, const QModelIndex& parent = QModelIndex()) override;
    bool removeRows(int row, int count, const QModelIndex& parent = QModelIndex()) override;

public slots:
    // Writes the pending changes; true when all went through ("数据保存成功！").
    bool slotSaveModifyRecord();

private:
    int newId();

    DB_Operation* m_db;
    QList<Record> m_records;
    QList<Change> m_changes;
    QString m_dq;
    QString m_sj;
    int m_insertCount = 0;
};
