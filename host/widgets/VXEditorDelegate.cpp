#include "VXEditorDelegate.h"
#include "VXBaseEditor.h"

namespace {

Qtitan::VXBaseEditor* editorOf(const QModelIndex& index)
{
    return qobject_cast<Qtitan::VXBaseEditor*>(index.data(Qtitan::EditorRole).value<QObject*>());
}

} // namespace

QWidget* VXEditorDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                        const QModelIndex& index) const
{
    if (Qtitan::VXBaseEditor* editor = editorOf(index))
        return editor->createEditorWidget(parent);
    return QStyledItemDelegate::createEditor(parent, option, index);
}

void VXEditorDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    if (Qtitan::VXBaseEditor* own = editorOf(index))
        own->setEditorData(editor, index);
    else
        QStyledItemDelegate::setEditorData(editor, index);
}

void VXEditorDelegate::setModelData(QWidget* editor, QAbstractItemModel* model,
                                    const QModelIndex& index) const
{
    if (Qtitan::VXBaseEditor* own = editorOf(index))
        own->setModelData(editor, model, index);
    else
        QStyledItemDelegate::setModelData(editor, model, index);
}
