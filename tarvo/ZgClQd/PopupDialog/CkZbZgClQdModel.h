#pragma once

#include <QAbstractTableModel>
#include <QHash>
#include <QList>

class JfszTable;
class ZgClZsItem;

// The tender's provisional list as a grid: unit-project rows with their tender materials
// below them, the tree shown by indenting the first column two spaces per ancestor. The
// nodes belong to the dialog.
class CkZbZgClQdModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum ZgClZsColumn { eZbBm, eClMc, eGgXh, eCd, eCj, ePz, eZlDc, eDw, eZgDj, eColumnCount };

    explicit CkZbZgClQdModel(QObject* parent = nullptr);

    // Shows the nodes in tree order (a parent before its children, siblings as listed).
    void setNodes(const QList<ZgClZsItem*>& nodes, const JfszTable* format = nullptr);
    // Text found in the name and model (规格型号) columns is drawn in the keyword colour.
    void setKeywords(const QString& name, const QString& spec);
    ZgClZsItem* nodeAt(int row) const;
    int materialCount() const { return m_materials; }

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QString text(const ZgClZsItem* node, int depth, int column) const;
    bool hitsKeyword(const ZgClZsItem* node, int column) const;

    struct Row
    {
        ZgClZsItem* node;
        int depth;
    };
    QList<Row> m_rows;
    const JfszTable* m_format = nullptr;
    int m_materials = 0;
    QString m_nameKeyword;
    QString m_specKeyword;
};
