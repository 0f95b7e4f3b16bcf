#include "QtXmQdSjWidget.h"

#include "QtXmQdModel.h"
#include "TarvoGuard.h"

#include "ConstructionWorks.h"
#include "QtXmQdJJjbBusiness.h"
#include "zMessageBox.h"
#include "zTableView.h"

#include <QAction>
#include <QDebug>
#include <QMenu>

QtXmQdSjWidget::QtXmQdSjWidget(AuditBusiness* audit, QWidget* parent)
    : BillSjWidget(audit, parent), m_acInsert(new QAction(QStringLiteral("插入行"), this)),
      m_acDelete(new QAction(QStringLiteral("删除当前行"), this)),
      m_acClear(new QAction(QStringLiteral("清除所有行"), this)), m_acSubTotal(new QAction(this)),
      m_acCalculation(new QAction(this))
{
    init(new QtXmQdModel(this));
    connect(m_acInsert, &QAction::triggered, this, &QtXmQdSjWidget::InsertRow);
    connect(m_acDelete, &QAction::triggered, this, [this] { DeleteCurrentRow(m_acDelete->text()); });
    connect(m_acClear, &QAction::triggered, this, &QtXmQdSjWidget::ClearAllRows);
    connect(m_acSubTotal, &QAction::triggered, this, &QtXmQdSjWidget::slotAcSetToSubTotal);
    connect(m_acCalculation, &QAction::triggered, this, &QtXmQdSjWidget::slotAcSetToCalculation);
    view()->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(view(), &QWidget::customContextMenuRequested, this, [this](const QPoint& pos) {
        QMenu menu(this);
        menu.addActions(contextActions());
        menu.exec(view()->viewport()->mapToGlobal(pos));
    });
}

GeneralTableBase* QtXmQdSjWidget::pageTable(ConstructionWorks* works) const
{
    return works->getTenderInventory()->getQtXmQdHzTable();
}

QtXmQdHzTable* QtXmQdSjWidget::pageTable() const
{
    return static_cast<QtXmQdHzTable*>(table());
}

int QtXmQdSjWidget::currentRow() const
{
    return view()->currentIndex().isValid() ? view()->currentIndex().row() : -1;
}

bool QtXmQdSjWidget::canMoveRows(int from, int to) const
{
    return QtXmQdJJjbBusiness::GridRowCanMove(pageTable(), from, to);
}

bool QtXmQdSjWidget::moveRows(int from, int to)
{
    return QtXmQdJJjbBusiness::GridRowMove(works(), pageTable(), from, to);
}

QList<QAction*> QtXmQdSjWidget::contextActions()
{
    const BaseDataItem* item = pageTable() ? pageTable()->at(currentRow()) : nullptr;
    const int kind = item ? item->getKind() : -1;
    m_acSubTotal->setText(kind == QtXmQdJJjbBusiness::SubTotal ? QStringLiteral("取消当前行\"小计\"属性")
                                                               : QStringLiteral("置当前行\"小计\"属性"));
    m_acCalculation->setText(kind == QtXmQdJJjbBusiness::Calculation ? QStringLiteral("取消当前行\"计算\"属性")
                                                                     : QStringLiteral("置当前行\"计算\"属性"));
    const bool editable = item && !isLocked() && kind != QtXmQdJJjbBusiness::Total;
    m_acSubTotal->setEnabled(editable);
    m_acCalculation->setEnabled(editable);

    const bool writable = pageTable() && !isLocked();
    m_acInsert->setEnabled(writable);
    m_acDelete->setEnabled(editable);
    m_acClear->setEnabled(writable);
    return {m_acInsert, m_acDelete, m_acClear, m_acSubTotal, m_acCalculation};
}

void QtXmQdSjWidget::InsertRow()
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("InsertRow"), [&] {
        if (!pageTable() || isLocked())
            return;
        const int row = currentRow() < 0 ? pageTable()->count() : currentRow();
        model()->recorded(8, QStringLiteral("插入行"),
                          [&] { return QtXmQdJJjbBusiness::InsertCustomItem(works(), pageTable(), row); });
        ChangeDelAndInsAcState(currentRow());
    });
}

void QtXmQdSjWidget::DeleteCurrentRow(const QString& label)
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("DeleteCurrentRow"), [&] {
        view()->closeEditor();
        const int row = currentRow();
        BaseDataItem* item = pageTable() ? pageTable()->at(row) : nullptr;
        BaseDataItem* total = nullptr;
        if (!item || isLocked() || (QtXmQdJJjbBusiness::CheckExistedTotalRow(pageTable(), &total) && item == total))
            return; // the total row stays
        model()->recorded(8, label, [&] { return QtXmQdJJjbBusiness::RemoveItem(works(), pageTable(), row); });
        ChangeDelAndInsAcState(currentRow());
    });
}

void QtXmQdSjWidget::ClearAllRows()
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("ClearAllRows"), [&] {
        qDebug().noquote() << sourceFile() << __LINE__ << QStringLiteral("ClearAllRows");
        if (!showQuestion(this, QStringLiteral("操作提示"), QStringLiteral("你确定清除所有行内容吗?")))
            return;
        QtXmQdHzTable* list = pageTable();
        if (!list || isLocked())
            return;
        model()->recorded(8, QStringLiteral("清除所有行"), [&] {
            // n rows stay n rows: n - 1 empty rows and a fresh total row.
            const int n = list->count();
            for (int row = n - 1; row >= 0; --row)
                list->BaseDataItemRemoveAt(row);
            for (int i = 0; i < n - 1; ++i) {
                BaseDataItem* item = list->CreateItem();
                item->loadState(QtXmQdJJjbBusiness::NewEmpty, false, 0, QString());
                list->BaseDataItemAppend(item);
            }
            QtXmQdJJjbBusiness::AddTotalItem(list);
            QtXmQdJJjbBusiness::CalculateTable(works(), list);
            return true;
        });
    });
}

void QtXmQdSjWidget::slotAcSetToCalculation()
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("slotAcSetToCalculation"), [&] {
        static_cast<QtXmQdModel*>(model())->ToggleCalculateRow(currentRow());
    });
}

void QtXmQdSjWidget::slotAcSetToSubTotal()
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("slotAcSetToSubTotal"), [&] {
        static_cast<QtXmQdModel*>(model())->ToggleSubTotalRow(currentRow());
    });
}

void QtXmQdSjWidget::onRibbonCommand(const QVariant& payload)
{
    const QString command = payload.toString();
    if (command == QStringLiteral("插入行"))
        InsertRow();
    else if (command == QStringLiteral("招投标-删除行"))
        DeleteCurrentRow(command);
    else if (command == QStringLiteral("清除所有行"))
        ClearAllRows();
}
