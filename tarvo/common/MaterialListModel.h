#pragma once

#include "BillModel.h"

#include <QColor>

// The display and editing rules the materials lists share (tenderer-purchased, provisional,
// evaluated): numeric cells blank below 1e-6, unit price and quantity accept expressions,
// block rows in the block colours, host colours for inconsistent cells, a question mark in
// the row header of rows without matching material in the unit projects (field 22).
class MaterialListModel : public BillModel
{
    Q_OBJECT
public:
    // Row-header roles of the question mark: shown, image bytes, size, alignment.
    enum HeaderRole {
        IconShownRole = 5256,
        IconImageRole = 5257,
        IconSizeRole = 5258,
        IconAlignRole = 5259
    };
    static constexpr int QuestionMarkField = 22;

    explicit MaterialListModel(QObject* parent = nullptr);

    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;
    static QByteArray questionMarkImage();
    // The total row, the list's last, is the grid's footer.
    int footerRow() const override;

protected:
    virtual QColor cellTextColor(int row, int field) const = 0;
    virtual QColor cellBackgroundColor(int row, int field) const = 0;
    bool checkEdit(int row, int field, QVariant& value) override;
    bool isFixedRow(const BaseDataItem* item) const override;
    NumberKind numberKind(int field) const override;
    static bool isNumericField(int field);
};
