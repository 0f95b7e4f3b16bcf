#include "QtXmQdJJjbBusiness.h"

#include "BusinessFaultInjection.h"
#include "FyBlBusiness.h"
#include "TableOps.h"
#include "VXParseAlg.h"

#include "ConstructionWorks.h"

#include <QSet>

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
    // number or expression comes to.
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
    }
    item->setValue(field, stored);
    CalculateTable(works, table);
    return true;
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
    item->setKind(set ? kind : int(QtXmQdJJjbBusiness::Ordinary));
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
    if (!table)
        return;
    const QHash<QString, double> vars = FyBlBusiness::GetInstance()->variables(works);
    const QList<BaseDataItem*>& rows = table->items();
    for (BaseDataItem* item : rows) {
        if (item->getKind() != Calculation)
            continue;
        double result = 0;
        QString error;
        if (!VXParseAlg::getInstance()->ExpCalc(item->getValue(3).toString(), vars, result, error,
                                                true))
            result = 0;
        item->setValue(6, round2(result));
    }
    // A subtotal with a serial sums its children, the rows below it numbered "<serial>.n"
    // (2 暂估价 over 2.1 and 2.2). One without a serial closes a group: it sums the rows above
    // it up to the previous subtotal.
    for (int i = 0; i < rows.size(); ++i) {
        if (rows.at(i)->getKind() != SubTotal)
            continue;
        const QString serial = rows.at(i)->getValue(1).toString().trimmed();
        double sum = 0;
        if (serial.isEmpty()) {
            for (int j = i - 1; j >= 0 && rows.at(j)->getKind() != SubTotal; --j)
                sum += rows.at(j)->getKind() == Total ? 0.0 : rowAmount(rows.at(j));
        } else {
            const QString prefix = serial + QLatin1Char('.');
            for (int j = i + 1; j < rows.size(); ++j) {
                const BaseDataItem* child = rows.at(j);
                if (child->getKind() == Total ||
                    !child->getValue(1).toString().trimmed().startsWith(prefix))
                    break;
                if (child->getKind() != SubTotal)
                    sum += rowAmount(child);
            }
        }
        rows.at(i)->setValue(3, round2(sum));
    }
    // The total sums the rows that carry amounts of their own, never a subtotal (its rows are
    // counted themselves). A row numbered under a row that is not a subtotal ("1.1" under an
    // ordinary "1") details that row's amount and is not counted again.
    QSet<QString> amountSerials;
    for (const BaseDataItem* item : rows)
        if (item->getKind() != SubTotal && item->getKind() != Total)
            amountSerials.insert(item->getValue(1).toString().trimmed());
    double total = 0;
    for (const BaseDataItem* item : rows) {
        if (item->getKind() == SubTotal || item->getKind() == Total)
            continue;
        const QString serial = item->getValue(1).toString().trimmed();
        bool detail = false;
        for (int dot = serial.lastIndexOf(QLatin1Char('.')); dot > 0 && !detail;
             dot = serial.lastIndexOf(QLatin1Char('.'), dot - 1))
            detail = amountSerials.contains(serial.left(dot));
        if (!detail)
            total += rowAmount(item);
    }
    BaseDataItem* totalRow = nullptr;
    if (CheckExistedTotalRow(table, &totalRow))
        totalRow->setValue(3, round2(total));
    if (works && table->getOwner())
        FyBlBusiness::GetInstance()->RecalculateFyBl(works);
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
