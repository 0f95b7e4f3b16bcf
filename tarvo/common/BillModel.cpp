#include "BillModel.h"
#include "TarvoGuard.h"

#include "AuditBusiness.h"
#include "BaseDataItem.h"
#include "Communication.h"
#include "ConstructionWorks.h"
#include "HostIds.h"
#include "JfszTable.h"
#include "LxGzXmQdJJjbBusiness.h"
#include "ProjectWorks.h"
#include "RURecordControl.h"
#include "SkinManager.h"
#include "zMessageBox.h"

#include <QColor>

#include <cmath>

BillModel::BillModel(QObject* parent) : BaseDataItemModel(parent) {}

void BillModel::setFocusedRow(int row)
{
    const int former = m_focusedRow;
    m_focusedRow = row;
    for (int r : {former, row})
        if (r >= 0 && r < rowCount())
            emit dataChanged(index(r, 0), index(r, columnCount() - 1), {Qt::ForegroundRole});
}

QVariant BillModel::focusedRowText(int row) const
{
    if (!m_readOnlyView || row != m_focusedRow || row < 0)
        return QVariant();
    return SkinManager::getInstance()->getVXColor(QStringLiteral("SelectedRowTextColor"),
                                                  QColor(0, 0, 255));
}

QVariant BillModel::data(const QModelIndex& index, int role) const
{
    if (role == Qt::ForegroundRole)
        if (QVariant focused = focusedRowText(index.row()); focused.isValid())
            return focused;
    // Rows that differ from the submitted version are tinted while the comparison is open.
    if (role == Qt::BackgroundRole && m_audit && m_audit->isOpen() && !m_readOnlyView &&
        m_audit->rowState(index.row()) != AuditBusiness::Same)
        return SkinManager::getInstance()->getVXColor(QStringLiteral("Xxj_BgSsGjzYs"),
                                                      QColor(255, 242, 204));
    if (role == Qt::DisplayRole && index.isValid()) {
        const NumberKind kind = numberKind(fieldOfColumn(index.column()));
        if (const BaseDataItem* item = itemAt(index.row()); item && kind != NumberKind::None)
            return numberText(item->getValue(fieldOfColumn(index.column())), kind);
    }
    return BaseDataItemModel::data(index, role);
}

BillModel::NumberKind BillModel::numberKind(int field) const
{
    Q_UNUSED(field)
    return NumberKind::None;
}

QString BillModel::numberText(const QVariant& value, NumberKind kind) const
{
    if (!value.isValid() || value.toString().isEmpty())
        return QString();
    bool ok = false;
    const double number = value.toString().toDouble(&ok);
    if (!ok || !std::isfinite(number))
        return value.toString();
    ConstructionWorks* unit = works();
    const JfszTable* formats = unit ? unit->getJfszTable() : nullptr;
    switch (kind) {
    case NumberKind::Price:
        return formats ? formats->PriceFloatFormatToStr(number, -1)
                       : QString::number(number, 'f', 2);
    case NumberKind::Quantity:
        return formats ? formats->QuantityFloatFormatToStr(number, -1)
                       : QString::number(number, 'f', 2);
    case NumberKind::Amount:
        return formats ? formats->TotalFloatFormatToStr(number, -1)
                       : QString::number(number, 'f', 2);
    case NumberKind::None:
        break;
    }
    return value.toString();
}

Qt::ItemFlags BillModel::flags(const QModelIndex& index) const
{
    if (!index.isValid() || rowCount() == 0)
        return Qt::NoItemFlags;
    const BaseDataItem* item = itemAt(index.row());
    if (m_readOnlyView || isLocked())
        return Qt::ItemIsSelectable | Qt::ItemIsEnabled;
    if (!item)
        return Qt::NoItemFlags;
    if (isFixedRow(item))
        return Qt::ItemIsSelectable | Qt::ItemIsEnabled;
    return Qt::ItemIsSelectable | Qt::ItemIsEditable | Qt::ItemIsEnabled;
}

bool BillModel::isFixedRow(const BaseDataItem* item) const
{
    Q_UNUSED(item)
    return false;
}

bool BillModel::checkEdit(int row, int field, QVariant& value)
{
    Q_UNUSED(row)
    Q_UNUSED(field)
    Q_UNUSED(value)
    return true;
}

bool BillModel::evaluateNumeric(QVariant& value) const
{
    const QString text = value.toString().trimmed();
    if (text.isEmpty()) {
        value = QString();
        return true;
    }
    double result = 0;
    QString error;
    if (!LxGzXmQdJJjbBusiness::CalculateFormula(works(), text, result, error)) {
        showInformation(Communication::GetInstance()->GetMainWindow(), QStringLiteral("提示"),
                        QStringLiteral("请正确输入实数或计算表达式!"), QMessageBox::Ok,
                        QMessageBox::Warning);
        return false;
    }
    value = result;
    return true;
}

OperatingUIInfo BillModel::undoInfo(int operType, const QString& text) const
{
    const ConstructionWorks* w = works();
    return OperatingUIInfo(w ? w->getProjectWorksId() : 0, w ? w->getAuditId() : 0,
                           w ? w->getNodeId() : 0, table() ? table()->getId() : 0,
                           m_operationKind >= 0 ? m_operationKind : operType, text);
}

bool BillModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    // A locked table takes no edit, whoever asks (a paste, a delegate, the host).
    if (role != Qt::EditRole || !index.isValid() || m_readOnlyView || !itemAt(index.row()) ||
        isLocked() || isFixedRow(itemAt(index.row())))
        return false;
    if (ProjectWorks* owner = table() ? table()->getOwner() : nullptr)
        if (!owner->isProjectWorkChanged())
            owner->setProjectWorkChanged(true);
    const int row = index.row();
    const int field = fieldOfColumn(index.column());
    const QString className = QString::fromLatin1(metaObject()->className());
    // A refused text was told to the user and counts as handled; a failure does not.
    bool handled = false;
    TarvoGuard::run(m_sourceFolder + QLatin1Char('\\') + className, __LINE__,
                    className + QStringLiteral("::setData"), [&] {
                        QVariant typed = value;
                        if (checkEdit(row, field, typed))
                            recorded(OperationKind::Edit, modifyLabel(),
                                     [&] { return applyEdit(row, field, typed); });
                        handled = true;
                    });
    return handled;
}

void BillModel::pasteCells(const QVector<QPair<QModelIndex, QString>>& cells)
{
    if (m_readOnlyView || isLocked() || cells.isEmpty())
        return;
    const QString className = QString::fromLatin1(metaObject()->className());
    TarvoGuard::run(m_sourceFolder + QLatin1Char('\\') + className, __LINE__,
                    className + QStringLiteral("::pasteCells"), [&] {
                        struct Edit
                        {
                            int row;
                            int field;
                            QVariant value;
                        };
                        QVector<Edit> edits;
                        for (const auto& cell : cells) {
                            const int row = cell.first.row();
                            const BaseDataItem* item = itemAt(row);
                            if (!item || isFixedRow(item) ||
                                !(flags(cell.first) & Qt::ItemIsEditable))
                                continue;
                            Edit edit{row, fieldOfColumn(cell.first.column()), cell.second};
                            if (!checkEdit(edit.row, edit.field, edit.value))
                                return; // told; nothing is pasted
                            edits << edit;
                        }
                        if (edits.isEmpty())
                            return;
                        if (ProjectWorks* owner = table() ? table()->getOwner() : nullptr)
                            owner->setProjectWorkChanged(true);
                        recorded(OperationKind::Edit, modifyLabel(), [&] {
                            bool changed = false;
                            for (const Edit& edit : std::as_const(edits))
                                changed = applyEdit(edit.row, edit.field, edit.value) || changed;
                            return changed;
                        });
                    });
}
