#pragma once

#include <QStyledItemDelegate>

// The grid's delegate: a cell whose model offers an editor (Qtitan::EditorRole) is edited
// with it; every other cell with the standard line edit.
class VXEditorDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model,
                      const QModelIndex& index) const override;
};
