#include "QtXmQdJJjbBusiness.h"

#include "BusinessFaultInjection.h"
#include "FyBlBusiness.h"
#include "TableOps.h"
#include "UnitProjectCalc.h"
#include "VXParseAlg.h"

#include "ConstructionWorks.h"

#include <cmath>

static double round2(double v)
{
    return std::round(v * 100.0) / 100.0;
}

bool QtXmQdJJjbBusiness::ProcColunmValueChanged(ConstructionWorks* works, QtXmQdHzTable* table,
                                                int row, int field, const QVariant& value)
{
    BusinessFaultInjection::check();
    BaseDataItem* item = table ? table->at(row) : nullptr;
    if (!item || item->getKind() == Total)
        return false;
    // A calculation row keeps its formula as text; an ordinary row's amount is what the typed
    // number or expression comes to. Text that does not read is refused, never stored.
    QVariant stored = TableOps::normalise(value);
    if (field == 3 && item->getKind() == Calculation) {
        stored = value.toString();
    } else if (field == 3 && stored.userType() == QMetaType::QString) {
        double result = 0;
        QString error;
        const QString text = stored.toString();
        if (text.trimmed().isEmpty())
            stored = QVariant();
        else if (VXParseAlg::getInstance()->ExpCalc(
                     text, FyBlBusiness::GetInstance()->variables(works), result, error))
            stored = result;
        else
            return false;
    }
    const QVariant old = item->getValue(field);
    item->setValue(field, stored);
    if (!UnitProjectCalc::RecalculateOwner(table, works).ok) {
        item->setValue(field, old); // a formula that closes a cycle is refused
        return false;
    }
    return true;
}

QString QtXmQdJJjbBusiness::CheckFormulaCycle(ConstructionWorks* works, int row,
                                              const QString& formula)
{
    return works ? UnitProjectCalc::FindCycle(
                       works, works->getTenderInventory()->getQtXmQdHzTable(), row, formula)
                 : QString();
}

bool QtXmQdJJjbBusiness::InsertCustomItem(ConstructionWorks* works, QtXmQdHzTable* table, int row)
{
    if (!table)
        return false;
    BaseDataItem* total = nullptr;
    // Nothing goes below the total row.
    if (CheckExistedTotalRow(table, &total))
        row = qMin(row, table->GetItemIndexInOrder(total));
    TableOps::insertNew(table, row < 0 ? table->count() : row, NewEmpty);
    CalculateTable(works, table);
    return true;
}

bool QtXmQdJJjbBusiness::RemoveItem(ConstructionWorks* works, QtXmQdHzTable* table, int row)
{
    BaseDataItem* item = table ? table->at(row) : nullptr;
    if (!item || item->getKind() == Total)
        return false;
    table->BaseDataItemRemoveAt(row);
    CalculateTable(works, table);
    return true;
}

bool QtXmQdJJjbBusiness::isEmptyRow(BaseDataItem* item)
{
    return item && item->getKind() != Total && TableOps::isBlank(item);
}

bool QtXmQdJJjbBusiness::CheckExistedTotalRow(QtXmQdHzTable* table, BaseDataItem** total)
{
    BaseDataItem* found = TableOps::findKind(table, Total);
    if (total)
        *total = found;
    return found != nullptr;
}

void QtXmQdJJjbBusiness::AddTotalItem(QtXmQdHzTable* table)
{
    if (!table)
        return;
    BaseDataItem* item = TableOps::insertNew(table, table->count(), Total);
    item->setValue(2, QStringLiteral("合计"));
}

bool QtXmQdJJjbBusiness::GridRowCanMove(QtXmQdHzTable* table, int from, int to)
{
    return TableOps::canMove(table, from, to, Total);
}

bool QtXmQdJJjbBusiness::GridRowMove(ConstructionWorks* works, QtXmQdHzTable* table, int from,
                                     int to)
{
    if (!GridRowCanMove(table, from, to))
        return false;
    table->BaseDataItemMove(from, to);
    CalculateTable(works, table);
    return true;
}

static bool setRowKind(ConstructionWorks* works, int row, int kind, bool set)
{
    QtXmQdHzTable* table = works ? works->getTenderInventory()->getQtXmQdHzTable() : nullptr;
    BaseDataItem* item = table ? table->at(row) : nullptr;
    if (!item || item->getKind() == QtXmQdJJjbBusiness::Total)
        return false;
    const int was = item->getKind();
    const int now = set ? kind : int(QtXmQdJJjbBusiness::Ordinary);
    if (was == QtXmQdJJjbBusiness::Calculation && now != was) {
        // The row keeps what its formula came to as its amount.
        item->setValue(3, item->getValue(6).isValid() ? QVariant(item->getDouble(6)) : QVariant());
        item->setValue(6, QVariant());
    } else if (now == QtXmQdJJjbBusiness::Calculation && was != now) {
        // The amount becomes the formula: the row's value does not change.
        const QVariant amount = item->getValue(3);
        item->setValue(3, amount.isValid() ? item->getValueStr(3) : QString());
    }
    item->setKind(now);
    QtXmQdJJjbBusiness::CalculateTable(works, table);
    return true;
}

bool QtXmQdJJjbBusiness::SetAsCalculateRow(ConstructionWorks* works, int row, bool set)
{
    return setRowKind(works, row, Calculation, set);
}

bool QtXmQdJJjbBusiness::SetAsSubTotalRow(ConstructionWorks* works, int row, bool set)
{
    return setRowKind(works, row, SubTotal, set);
}

double QtXmQdJJjbBusiness::rowAmount(const BaseDataItem* item)
{
    return item->getKind() == Calculation ? item->getDouble(6) : item->getDouble(3);
}

void QtXmQdJJjbBusiness::CalculateTable(ConstructionWorks* works, QtXmQdHzTable* table)
{
    // The list's total feeds fee variables that fees and taxes use: the whole unit project
    // follows.
    UnitProjectCalc::RecalculateOwner(table, works);
}

void QtXmQdJJjbBusiness::AdjustQtXmQdRowType(QtXmQdHzTable* table)
{
    if (!table)
        return;
    BaseDataItem* total = nullptr;
    for (BaseDataItem* item : table->items()) {
        const int kind = item->getKind();
        if (kind < Ordinary || kind > Total)
            item->setKind(Ordinary);
        if (item->getKind() == Total) {
            if (total)
                item->setKind(Ordinary); // one total row only
            else
                total = item;
        }
    }
    if (!total) {
        AddTotalItem(table);
        return;
    }
    QList<BaseDataItem*> order = table->items();
    order.removeOne(total);
    order.append(total);
    table->SetItemOrder(order);
}

void QtXmQdJJjbBusiness::ReplaceTableContentFromOther(QtXmQdHzTable* target,
                                                      const QtXmQdHzTable* source)
{
    TableOps::replaceRows(target, source);
}

bool QtXmQdJJjbBusiness::ExtractSporadicWorkItemFees(ConstructionWorks* works)
{
    if (!works)
        return false;
    double total = 0;
    for (const BaseDataItem* item : works->getTenderInventory()->getLxGzXmRgDjQdTable()->items())
        if (item->getKind() == 0)
            total += item->getDouble(7);
    total = round2(total);
    QtXmQdHzTable* table = works->getTenderInventory()->getQtXmQdHzTable();
    for (BaseDataItem* item : table->items()) {
        if (item->getValue(2).toString() != QStringLiteral("计日工") ||
            item->getKind() == Calculation)
            continue;
        if (item->getValue(3) == QVariant(total))
            return false;
        item->setValue(3, total);
        CalculateTable(works, table);
        return true;
    }
    return false;
}
