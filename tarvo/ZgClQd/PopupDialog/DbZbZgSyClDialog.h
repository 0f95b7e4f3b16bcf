#pragma once

#include "common/MatchDialogBase.h"

#include "ZgClQdBusiness.h"

class ConstructionWorks;
class DbZbZgSyClModel;
class ExhibitFZgClModel;

// The comparison over all materials of the project at once: every tender material once,
// matched with the bid materials summarised over the unit projects. Opened from
// DbZbZgClDialog, which carries its pairs into the per-unit-project matching when accepted.
class DbZbZgSyClDialog : public MatchDialogBase
{
    Q_OBJECT
public:
    DbZbZgSyClDialog(ConstructionWorks* works, QWidget* parent = nullptr);
    ~DbZbZgSyClDialog() override;

    // Gathers and matches; false when the project holds no tender list.
    bool Load();
    const QList<DbZbZgClItem*>& records() const { return m_records; }
    DbZbZgSyClModel* model() const { return m_model; }
    ExhibitFZgClModel* allModel() const { return m_allModel; }
    QTableView* allView() const { return m_allView; }

public slots:
    void slotAutoMatchBtnClicked();
    void slotBtnUnpair() override;
    void slotBtnMakeApair() override;
    void slotBtnSearch() override;
    void slotBtnAccept() override;
    void slotBtnReject() override;
    void slotDbZbClCellClicked(int nRow, const QVariant& varColumn);

private:
    void recount();
    // A pair made or undone: the bid-only rows follow, the grid and the counter show it.
    void pairsChanged();
    bool apply();

    ConstructionWorks* m_works;
    QList<DbZbZgClItem*> m_records;
    ZgClQdBusiness::TbClMap m_tbCl;
    ZgClQdBusiness::DwMap m_dwMap;
    DbZbZgSyClModel* m_model;
    ExhibitFZgClModel* m_allModel;
    QTableView* m_allView;
};
