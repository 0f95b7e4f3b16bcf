#pragma once

#include <QAbstractTableModel>
#include <QList>
#include <QVector>

class DbZbZgClItem;
class JfszTable;

// The comparison grid of "对比招标控制价暂估材料清单": one row per record (unit-project
// heading, tender material with its bid material, bid-only material), coloured by state. The
// records belong to the dialog; the model shows those the filter keywords let through.
class DbZbZgClModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum DbZbZgClColumn {
        eXh,
        eZbClMc,
        eZbGgXh,
        eZbDw,
        eZbZgDj,
        eTbClMc,
        eTbGgXh,
        eTbDw,
        eTbJj,
        eTbTj,
        eColumnCount
    };
    // What a column shows, so that the project-wide grid can lay out its own columns.
    enum Content {
        Seq,
        Code,
        ZbCode,
        ZbName,
        ZbModel,
        ZbUnit,
        ZbPrice,
        TbName,
        TbModel,
        TbUnit,
        TbBasePrice,
        TbPrice
    };

    explicit DbZbZgClModel(QObject* parent = nullptr);

    void setRecords(const QList<DbZbZgClItem*>* records, const JfszTable* format = nullptr);
    // Shows again what the records hold now, under the same keywords.
    void refresh();
    // Keeps only rows whose tender or bid name contains name and whose model contains model
    // (case-insensitive; an empty keyword lets everything through). Headings stay when a row
    // below them stays.
    void setKeywords(const QString& name, const QString& model);
    QString nameKeyword() const { return m_name; }
    QString modelKeyword() const { return m_model; }

    DbZbZgClItem* record(int row) const;
    int rowOf(const DbZbZgClItem* record) const;
    // Columns showing the material name and the model (for the keyword colour).
    bool isNameColumn(int column) const;
    bool isModelColumn(int column) const;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

protected:
    struct Column
    {
        const char* header;
        Content content;
        Qt::Alignment alignment;
    };
    virtual const QVector<Column>& columns() const;
    // The records shown: the list given to setRecords, or a subclass's own list.
    virtual int recordCount() const { return m_records ? int(m_records->size()) : 0; }
    virtual DbZbZgClItem* recordAt(int i) const { return m_records->at(i); }

private:
    QString text(const DbZbZgClItem* record, Content content) const;
    bool passes(const DbZbZgClItem* record) const;
    void rebuild();

    const QList<DbZbZgClItem*>* m_records = nullptr;
    const JfszTable* m_format = nullptr;
    QVector<DbZbZgClItem*> m_rows;
    QString m_name, m_model;
};
