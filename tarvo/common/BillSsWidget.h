#pragma once

#include <QModelIndex>
#include <QVariant>
#include <QWidget>

class AuditBusiness;
class BillModel;
class ConstructionWorks;
class GeneralTableBase;
class ProTreeNode;
class zTableView;

// The read-only grid of a bill page over the submitted version of the page's table.
class BillSsWidget : public QWidget
{
    Q_OBJECT
public:
    BillSsWidget(AuditBusiness* audit, QWidget* parent);

    void ProcMsg(int msgId, QVariant* payload);
    // The submitted version of a node decoded by the page's container.
    void LoadNode(ProTreeNode* node);
    void Reload();
    void setTitle(const QString& title);
    zTableView* view() const { return m_view; }
    BillModel* model() const { return m_model; }
    GeneralTableBase* table() const { return m_table; }

public slots:
    void slotFocusedRowChanged(const QModelIndex& current);

protected:
    void init(BillModel* model, const QString& listName);
    virtual QString sourceFile() const = 0;
    virtual QString className() const = 0;
    virtual GeneralTableBase* pageTable(ConstructionWorks* works) const = 0;

private:
    // Lets go of the submitted rows when their project is closed.
    void forgetProject(int projectIndex);

    AuditBusiness* m_audit;
    zTableView* m_view = nullptr;
    BillModel* m_model = nullptr;
    GeneralTableBase* m_table = nullptr;
    class QLabel* m_title = nullptr;
};
