#pragma once

#include <QAbstractItemModel>
#include <QHash>
#include <QList>

class JfszTable;
class ZgClZsItem;

// The unit projects and their provisional materials as a tree (unit projects at the top),
// one column per setting. The nodes belong to the dialog.
class CkDwGcZgClSzModel : public QAbstractItemModel
{
    Q_OBJECT
public:
    enum ZgClSzColumn { eZbBm, eClMc, eGgXh, eCd, eCj, ePz, eZlDc, eDw, eJj, eTj, eSl, eHj };
    static constexpr int ColumnCount = eHj + 1;

    explicit CkDwGcZgClSzModel(QObject* parent = nullptr);

    // Shows the nodes; prices are written as the fee settings say (null: two decimals).
    void setNodes(const QList<ZgClZsItem*>& nodes, const JfszTable* format);
    ZgClZsItem* node(const QModelIndex& index) const;

    QModelIndex index(int row, int column,
                      const QModelIndex& parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

private:
    QString number(const ZgClZsItem* node, int field, bool total) const;

    QList<ZgClZsItem*> m_top;
    QHash<const ZgClZsItem*, QList<ZgClZsItem*>> m_children;
    QHash<const ZgClZsItem*, ZgClZsItem*> m_parent;
    const JfszTable* m_format = nullptr;
};
