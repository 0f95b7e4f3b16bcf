#pragma once

#include "zBaseWidget.h"

#include <QVariant>

class AuditBusiness;
class BillSjWidget;
class BillSsWidget;
class ProTreeNode;

// A bill page: the current-version grid and, for nodes that have a submitted version, the
// submitted-version grid beside it, linked by the page's audit companion.
class BillPageWidget : public zBaseWidget
{
    Q_OBJECT
public:
    explicit BillPageWidget(QWidget* parent);

    void ProcMsg(int msgId, QVariant* payload);
    // A node message (74, 79) whose payload was decoded once by the receiver: the node, or
    // null when the payload held none. The payload still goes to the audit companion.
    void ProcNodeMsg(int msgId, ProTreeNode* node, QVariant* payload);
    void SwitchIntoSsState(bool on);

    AuditBusiness* audit() const { return m_audit; }
    bool hasSsVersion() const { return m_hasSs; }
    BillSjWidget* sjWidget() const { return m_sj; }
    BillSsWidget* ssWidget() const { return m_ss; }
    zBaseWidget* ssHolder() const { return m_ssHolder; }

protected:
    // Builds the page; called by the page's constructor once its virtuals are in place.
    void init();
    virtual BillSjWidget* createSjWidget() = 0;
    virtual BillSsWidget* createSsWidget() = 0;
    virtual QString sourceFile() const = 0;
    virtual QString className() const = 0;
    // Lays the Ss holder and the Sj grid out on the page.
    virtual void InitWidget();
    void InitAudit();
    // After a message reached the grids (the page's own companions follow it here).
    virtual void afterMsg(int msgId) { Q_UNUSED(msgId) }
    QString tag(const char* function) const;

private:
    // Side by side with the submitted version: both grids titled, half the width each, their
    // columns as wide as their contents, scrolled together; the current grid's title carries
    // the legend of the difference colour. Without one: the empty 200-pixel holder.
    void arrangeComparison();
    class QLabel* m_sjTitle = nullptr;
    AuditBusiness* m_audit;
    bool m_hasSs = false;
    BillSjWidget* m_sj = nullptr;
    BillSsWidget* m_ss = nullptr;
    zBaseWidget* m_ssHolder = nullptr;
};
