#pragma once

#include <QHash>
#include <QObject>
#include <QVariant>
#include <QVector>

class GeneralTableBase;
class QWidget;

// Links a page's current-version grid with its submitted-version grid. The relation pairs
// each current row with the submitted row at the same position; a row differs when it has
// no counterpart or any field or the row kind differs.
class AuditBusiness : public QObject
{
    Q_OBJECT
public:
    enum DiffState { Same = 0, Changed = 1, Added = 2 };

    explicit AuditBusiness(QObject* owner);

    void SetWidget(QWidget* widget, int side);
    QWidget* widget(int side) const { return side == 0 ? m_sj : m_ss; }

    void SetTableSource(GeneralTableBase* table);
    GeneralTableBase* tableSource() const { return m_table; }
    // The same table of the submitted version of the same node, or null.
    GeneralTableBase* submittedTable() const;

    void Open();
    bool isOpen() const { return m_open; }
    void ProcMsg(int msgId, QVariant* payload);
    // Rebuilds the row relation after the table was rebuilt or replaced.
    void CreateRelationByTable(int flags = 0);
    DiffState rowState(int row) const;

signals:
    void relationChanged();

private:
    QWidget* m_sj = nullptr;
    QWidget* m_ss = nullptr;
    GeneralTableBase* m_table = nullptr;
    bool m_open = false;
    QVector<DiffState> m_states;
};
