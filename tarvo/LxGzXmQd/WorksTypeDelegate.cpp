#include "WorksTypeDelegate.h"

#include "TarvoGuard.h"
#include "WorksTypeList.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QDebug>
#include <QFontMetrics>

QWidget* WorksTypeDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&,
                                         const QModelIndex&) const
{
    auto* combo = new QComboBox(parent);
    combo->setEditable(true);
    combo->setInsertPolicy(QComboBox::InsertAtBottom);
    combo->addItems(WorksTypeList::Shared());
    int width = 0;
    for (const QString& trade : WorksTypeList::Shared())
        width = qMax(width, combo->fontMetrics().horizontalAdvance(trade));
    combo->view()->setStyleSheet(QStringLiteral("QAbstractItemView{min-width:") +
                                 QString::number(width + 24) + QStringLiteral("px;}"));
    auto* self = const_cast<WorksTypeDelegate*>(this);
    connect(self, &QAbstractItemDelegate::closeEditor, combo, [self, combo](QWidget* editor) {
        if (editor == combo)
            self->slotEditFinished(editor);
    });
    return combo;
}

void WorksTypeDelegate::slotEditFinished(QWidget* editor)
{
    TARVO_GUARD("LxGzXmQd\\WorksTypeDelegate", "WorksTypeDelegate::slotEditFinished")
    {
        auto* combo = qobject_cast<QComboBox*>(editor);
        const QString text = combo ? combo->currentText().trimmed() : QString();
        if (text.isEmpty() || WorksTypeList::Shared().contains(text))
            return;
        qDebug() << "Add Item" << text;
        WorksTypeList::Shared().append(text);
        WorksTypeList::Append(text);
    };
}
