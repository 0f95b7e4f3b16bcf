#pragma once

#include "BaseDataItemModel.h"
#include "GeneralTableBase.h"
#include "OperatingUIInfo.h"
#include "RURecordControl.h"

#include <type_traits>

class AuditBusiness;
class BaseDataItem;

// Base of the bill grids' models. Editing a cell is one undo step: the model opens the
// record, hands the value to the page's business service, closes the record with the page's
// label and redraws. A model may be a read-only view (the submitted-version grid).
class BillModel : public BaseDataItemModel
{
    Q_OBJECT
public:
    // Alignment values the grids use.
    static constexpr int AlignLeftCentre = Qt::AlignLeft | Qt::AlignVCenter;   // 129
    static constexpr int AlignRightCentre = Qt::AlignRight | Qt::AlignVCenter; // 130
    static constexpr int AlignCentre = Qt::AlignCenter;                        // 132

    explicit BillModel(QObject* parent = nullptr);

    void setAudit(AuditBusiness* audit) { m_audit = audit; }
    // The page folder, for failure reports ("QtXmQd" gives "QtXmQd\\QtXmQdModel").
    void setSourceFolder(const QString& folder) { m_sourceFolder = folder; }
    void setReadOnlyView(bool readOnly) { m_readOnlyView = readOnly; }
    bool isReadOnlyView() const { return m_readOnlyView; }
    // The audit grid's focused row: its text takes the skin colour "SelectedRowTextColor".
    void setFocusedRow(int row);
    int focusedRow() const { return m_focusedRow; }
    // A list whose every record carries one operation kind (the provisional list's 10);
    // -1 keeps the kind each command gives.
    void setOperationKind(int kind) { m_operationKind = kind; }

    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    // A pasted block is one undo step with the page's edit label. Every value is checked
    // first: the first one refused is told and nothing is pasted.
    void pasteCells(const QVector<QPair<QModelIndex, QString>>& cells) override;

    // What a numeric column holds: its display takes the unit project's number formats.
    enum class NumberKind { None, Price, Quantity, Amount };
    virtual NumberKind numberKind(int field) const;
    // A number with the decimals the unit project's number formats give its kind (two without
    // a unit project); empty stays empty, text stays text.
    QString numberText(const QVariant& value, NumberKind kind) const;
    QString amountText(const QVariant& value) const
    {
        return numberText(value, NumberKind::Amount);
    }

    // The record info of this model's table with the given operation and label.
    OperatingUIInfo undoInfo(int operType, const QString& text) const;
    // Runs a change of the table as one undo step with the given operation and label: the
    // step is kept when the change returns, rolled back when it throws. The label is read
    // when the change has run.
    template <typename Change> bool recorded(int operType, const QString& text, Change&& change);

protected:
    virtual QString modifyLabel() const = 0;
    // Checks and converts the typed value; false rejects the edit (after telling the user).
    virtual bool checkEdit(int row, int field, QVariant& value);
    // Hands the value to the business service.
    virtual bool applyEdit(int row, int field, const QVariant& value) = 0;
    // Rows that can never be edited (total rows).
    virtual bool isFixedRow(const BaseDataItem* item) const;
    // The focused row's text colour in a read-only view; invalid elsewhere.
    QVariant focusedRowText(int row) const;
    // Evaluates the text of a numeric cell; an empty text clears it. Tells the user and
    // returns false when it is neither a number nor an expression.
    bool evaluateNumeric(QVariant& value) const;

private:
    AuditBusiness* m_audit = nullptr;
    bool m_readOnlyView = false;
    int m_operationKind = -1;
    int m_focusedRow = -1;
    QString m_sourceFolder;
};

template <typename Change>
bool BillModel::recorded(int operType, const QString& text, Change&& change)
{
    // The journal tells the views of every table the record changed, when it ends or is
    // rolled back (a change that throws leaves no undo step). A table outside the journal
    // is redrawn here.
    struct Redraw
    {
        BillModel* model;
        ~Redraw()
        {
            if (!model->table() || !model->table()->isJournalled())
                model->resetModel();
        }
    } redraw{this};
    RURecordControl::Scope scope;
    bool changed = true;
    if constexpr (std::is_void_v<decltype(change())>)
        change();
    else
        changed = change();
    scope.commit(undoInfo(operType, text)); // the label is read now: the change may settle it
    return changed;
}
