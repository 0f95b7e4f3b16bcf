#pragma once

#include "VXBaseEditor.h"

#include <QString>

class ConstructionWorks;

// The cell editor of the amount of a calculation row: the cell shows what the formula comes
// to; touching it (focus, or a click inside) asks for the formula editing dialog.
class AmountEditor : public Qtitan::VXBaseEditor
{
    Q_OBJECT
public:
    explicit AmountEditor(QObject* parent = nullptr);

    QWidget* createEditorWidget(QWidget* parent) override;
    void setEditorData(QWidget* editor, const QModelIndex& index) override;
    void setModelData(QWidget* editor, QAbstractItemModel* model,
                      const QModelIndex& index) override;

    QString formula() const { return m_formula; }
    void setSuppress(bool suppress) { m_suppress = suppress; }
    bool isSuppressed() const { return m_suppress; }
    void setWorks(ConstructionWorks* works) { m_works = works; }
    void setRow(int row) { m_row = row; }
    int row() const { return m_row; }
    // What the formula comes to, formatted as the unit project formats totals; empty
    // without a unit project or when it does not evaluate.
    QString displayText(const QString& formula) const;

signals:
    void signalToEditFormula(QString formula);
    void signalEditFinished();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QString m_formula;
    bool m_suppress = false;
    ConstructionWorks* m_works = nullptr;
    int m_row = -1;
};
