#pragma once

#include "TenderDocument.h"

#include <QAbstractTableModel>
#include <QVector>

// The tender's list of materials subject to evaluation as a grid: ten text columns, one row
// per material, never editable.
class CkZbXPsClModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column { eXh, eZbBm, eClMc, eGgXh, eDw, eCd, eCj, ePz, eZlDc, eBz, eColumnCount };

    explicit CkZbXPsClModel(QObject* parent = nullptr);

    void setMaterials(const QVector<TenderEvaluatedMaterial>& materials);
    const QVector<TenderEvaluatedMaterial>& materials() const { return m_materials; }
    // The text of a material in a column.
    static QString Text(const TenderEvaluatedMaterial& m, int column);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QVector<TenderEvaluatedMaterial> m_materials;
};
