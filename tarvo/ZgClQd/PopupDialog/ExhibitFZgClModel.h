#pragma once

#include <QAbstractTableModel>
#include <QList>

class BaseDataItem;

// The bid materials offered for pairing ("所有材料" or "当前单位工程材料"): material name,
// model and unit of borrowed material lines, narrowed by the filter keywords.
class ExhibitFZgClModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column { eClMc, eGgXh, eDw, eColumnCount };

    explicit ExhibitFZgClModel(QObject* parent = nullptr);

    void setMaterials(const QList<BaseDataItem*>& materials);
    void setKeywords(const QString& name, const QString& model);
    BaseDataItem* material(int row) const;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    void rebuild();

    QList<BaseDataItem*> m_all;
    QList<BaseDataItem*> m_rows;
    QString m_name, m_model;
};
