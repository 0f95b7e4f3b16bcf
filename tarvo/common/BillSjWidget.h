#pragma once

#include "BillModel.h"
#include "TarvoGuard.h"
#include "zBaseWidget.h"

#include <QPair>
#include <QVariant>

#include <source_location>

class AuditBusiness;
class BillModel;
class ConstructionWorks;
class GeneralTableBase;
class ProTreeNode;
class zTableView;

// The editable grid of a bill page over the current version of the page's table. It
// receives all page messages: node selection loads the unit project's table, refresh
// redraws, header-template commands act on its grid.
class BillSjWidget : public zBaseWidget
{
    Q_OBJECT
public:
    BillSjWidget(AuditBusiness* audit, QWidget* parent);

    void ProcMsg(int msgId, QVariant* payload);
    // Loads a node of a node message (74, 79) decoded by the page's container; null loads
    // nothing.
    void LoadNode(ProTreeNode* node, int msgId);
    void RefreshGrid();
    void ChangeDelAndInsAcState(int row);

    zTableView* view() const { return m_view; }
    BillModel* model() const { return m_model; }
    ConstructionWorks* works() const { return m_works; }
    GeneralTableBase* table() const { return m_table; }
    ProTreeNode* node() const { return m_node; }
    AuditBusiness* audit() const { return m_audit; }
    bool isLocked() const;
    // A unit project's table is shown and open for editing.
    bool isWritable() const;

public slots:
    void slotMouseMoveRows(int from, int to, bool finished);

protected:
    // Builds the grid over the page's model; called by the page's constructor.
    void init(BillModel* model);

    virtual QString sourceFile() const = 0; // "QtXmQd\\QtXmQdSjWidget"
    virtual QString className() const = 0;  // "QtXmQdSjWidget"
    virtual QString listName() const = 0;   // table-header configuration
    virtual QString ribbonFile() const = 0; // menu configuration of the page's ribbon group
    virtual GeneralTableBase* pageTable(ConstructionWorks* works) const = 0;
    // The kind of the page's total row, or -1 when the list has none.
    virtual int totalKind() const { return -1; }
    virtual bool canMoveRows(int from, int to) const = 0;
    virtual bool moveRows(int from, int to) = 0;
    virtual QString moveLabel() const = 0;

    // Page-specific messages: 31 saved, 78 settings changed, 6 ribbon command, 12 activated.
    virtual void onProjectSaved(const QVariant& payload) { Q_UNUSED(payload) }
    virtual void onSettingsChanged(const QVariant& payload) { Q_UNUSED(payload) }
    virtual void onRibbonCommand(const QVariant& payload) { Q_UNUSED(payload) }
    virtual void onActivated();
    // After a node was loaded into the grid.
    virtual void onNodeLoaded() {}
    // Fits every row to its content, or sets every row to the minimum height; one undo step.
    void FitRowHeights(bool minimal);

    bool eventFilter(QObject* watched, QEvent* event) override;
    // A page going out of sight takes no half-typed cell with it.
    void hideEvent(QHideEvent* event) override;
    QString tag(const char* function) const;

    // Runs a page command as one user action: under the module's guard (failures reported with
    // the tag "<Class>::<function>" and the caller's line), with the cell editor closed, not at
    // all while the table is locked, inside one undo record labelled `label` with the given
    // operation kind, and with the grid redrawn afterwards. When the body throws, everything it
    // changed is put back and no undo step is left. A body that changes nothing (a question
    // answered "no") leaves no undo step either. The label is read when the body has run, so a
    // body may settle it (after the user chose).
    template <typename Body>
    void runCommand(const char* function, const QString& label, int operation, Body&& body,
                    std::source_location where = std::source_location::current())
    {
        TarvoGuard::run(sourceFile(), int(where.line()), tag(function), [&] {
            closeEditor();
            if (!isWritable())
                return;
            m_model->recorded(operation, label, std::forward<Body>(body));
        });
    }
    void closeEditor();

private:
    // The host closes a project while the page may still show one of its unit projects: the
    // grid lets go of the rows before they are freed.
    void forgetProject(int projectIndex);
    void applyReadOnly();
    void answerTemplateList();

    AuditBusiness* m_audit;
    zTableView* m_view = nullptr;
    BillModel* m_model = nullptr;
    ConstructionWorks* m_works = nullptr;
    GeneralTableBase* m_table = nullptr;
    ProTreeNode* m_node = nullptr;
    QPair<int, int> m_keptCell{-1, -1};
};
