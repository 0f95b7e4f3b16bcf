#pragma once

#include "common/BillSjWidget.h"

#include <QStringList>

class GfSjQdTable;

// The editable grid of "规费税金清单": fee rows from content templates, which the user
// applies, saves and gets by default from the project's pricing model.
class GfQdSjWidget : public BillSjWidget
{
    Q_OBJECT
public:
    GfQdSjWidget(AuditBusiness* audit, QWidget* parent);

    // The directory of the fee templates and the names of the templates in it.
    static QString TemplateDir();
    static QStringList TemplateNames();

    // Shows the project's default template (pricing model, property 5) in "模板选择".
    void UpdateCurFeesItemTemp();
    // Replaces the list by the named template, as one undo step.
    void CurGfSjTamplateChanged(const QString& name);
    void SaveTemplate();
    void InsertRow();
    void DeleteCurrentRow(const QString& label);
    void ClearAllRows();

protected:
    QString sourceFile() const override { return QStringLiteral("GfQd\\GfQdSjWidget"); }
    QString className() const override { return QStringLiteral("GfQdSjWidget"); }
    QString listName() const override { return QStringLiteral("规费清单"); }
    QString ribbonFile() const override { return QStringLiteral("XiangMu-GuiFeiQingDan.json"); }
    GeneralTableBase* pageTable(ConstructionWorks* works) const override;
    bool canMoveRows(int from, int to) const override;
    bool moveRows(int from, int to) override;
    QString moveLabel() const override { return QStringLiteral("规费税金清单移动行"); }
    void onActivated() override;
    void onNodeLoaded() override;
    void onRibbonCommand(const QVariant& payload) override;

private:
    GfSjQdTable* pageTable() const;
    void showContextMenu(const QPoint& pos);
    void announceTemplates(const QString& current);
    // A read-only project offers none of the tender-file exports on this page's ribbon.
    void disableExportsWhenReadOnly();
};
