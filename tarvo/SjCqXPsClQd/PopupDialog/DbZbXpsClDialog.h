#pragma once

#include "common/MatchDialogBase.h"

#include <QList>

class ConstructionWorks;
class DbZbXPsClModel;
class DbZbXpsClItem;
class ExhibitXpsClModel;
class SjCqXPsClItem;

// "对比招标控制价需评审材料清单": puts each material of the tender's evaluated list in
// correspondence with one of the bid's materials, automatically and by hand, and writes the
// pairs, the tender's serials and codes and the chosen evaluated attributes into the project.
// The tender's list may be loaded here from a tender file or a workbook.
class DbZbXpsClDialog : public MatchDialogBase
{
    Q_OBJECT
public:
    DbZbXpsClDialog(ConstructionWorks* works, QWidget* parent = nullptr);
    ~DbZbXpsClDialog() override;

    // The bid's evaluated materials matched with the tender's list; false (and the user is
    // told, the loads being offered) when the project holds no tender list.
    bool Load();

    const QList<DbZbXpsClItem*>& records() const { return m_records; }
    const QList<SjCqXPsClItem*>& bidMaterials() const { return m_tbCl; }
    DbZbXPsClModel* model() const { return m_model; }
    ExhibitXpsClModel* allModel() const { return m_allModel; }
    QTableView* allView() const { return m_allView; }
    QToolButton* loadButton() const { return m_load; }

signals:
    // The project's evaluated materials were changed: the page reloads.
    void signalXpsClChanged();

public slots:
    void slotHzClAndMatch();
    void slotExportZbCl();
    void slotImportZbClFromCJZ();
    void slotImportZbClFromCJZ_YN();
    void slotImportExcelClicked();
    void slotBtnUnpair() override;
    void slotBtnMakeApair() override;
    void slotBtnSearch() override;
    void slotBtnAccept() override;
    void slotBtnReject() override;
    void slotDbZbClCellClicked(int nRow, const QVariant& varColumn);

private:
    // Takes the bid materials (the evaluated ones, or all when summarising), matches them and
    // shows the result.
    void rebuild(bool summarise);
    // Before the stored tender list is replaced: the records borrow its rows.
    void dropRecords();
    void afterLoad(bool stored);
    void recount();
    // A pair made or undone: the bid-only rows follow, the grid and the counter show it.
    void pairsChanged();
    bool apply();

    ConstructionWorks* m_works;
    QList<DbZbXpsClItem*> m_records;
    QList<SjCqXPsClItem*> m_tbCl;
    QList<SjCqXPsClItem*> m_tbOnly;
    DbZbXPsClModel* m_model;
    ExhibitXpsClModel* m_allModel;
    QTableView* m_allView;
    QToolButton* m_load;
};
