#pragma once

#include <QStyledItemDelegate>

// The trade column's editor: an editable combo over the shared trade list; a trade typed
// that the list lacks joins the list and the trade list file at once.
class WorksTypeDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;

public slots:
    void slotEditFinished(QWidget* editor);
};
