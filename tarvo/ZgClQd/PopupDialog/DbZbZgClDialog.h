#pragma once

#include "common/MatchDialogBase.h"

#include "ZgClQdBusiness.h"

#include <QList>

class ConstructionWorks;
class DbZbZgClItem;
class DbZbZgClModel;
class ExhibitFZgClModel;
class QTableView;
class QToolButton;

// "对比招标控制价暂估材料清单": the tender's provisional materials of every unit project put in
// correspondence with the bid's materials, automatically and by hand, and written back into
// the unit projects on "确定". The dialog owns its records; the page's undo record holds
// everything it changes.
class DbZbZgClDialog : public MatchDialogBase
{
    Q_OBJECT
public:
    // works: the page's data object (the construction project's works).
    DbZbZgClDialog(ConstructionWorks* works, QWidget* parent = nullptr);
    ~DbZbZgClDialog() override;

    // The first matching, under its progress bar. False when the project holds no tender
    // list: the dialog is then not to be shown.
    bool Load();

    DbZbZgClModel* model() const { return m_model; }
    ExhibitFZgClModel* allModel() const { return m_allModel; }
    ExhibitFZgClModel* unitModel() const { return m_unitModel; }
    QTableView* allView() const { return m_allView; }
    QTableView* unitView() const { return m_unitView; }
    const QList<DbZbZgClItem*>& records() const { return m_records; }

public slots:
    void slotHzClAndMatch();
    void slotDqDwClAndMatch();
    void slotExportZbCl();
    void slotImportZbClFromCJZ();
    void slotImportZbClFromCJZ_JL();
    void slotImportZbClFromCJZ_YN();
    void slotBtnUnpair() override;
    void slotBtnMakeApair() override;
    void slotBtnSearch() override;
    void slotBtnAccept() override;
    void slotBtnReject() override;
    void slotDbZbZgClItemClicked(const QModelIndex& index);
    void slotCurSearchTabChanged(int nCurIndex);

private:
    void clearRecords();
    // Runs the first matching again (after an import).
    void rematch(const QString& text);
    // Redraws the grid and the lists and recounts, keeping the cursor on its record.
    void refreshAll();
    void recount();
    BaseDataItem* currentMaterial() const;
    void showUnitMaterials(int dwId);
    void importFrom(const QString& filter);
    // Steps 1-6 of applying; false when the user went back to editing.
    bool apply();

    ConstructionWorks* m_works;
    QList<DbZbZgClItem*> m_records;
    ZgClQdBusiness::TbClMap m_tbCl;
    ZgClQdBusiness::DwMap m_dwMap;
    DbZbZgClModel* m_model;
    ExhibitFZgClModel* m_allModel;
    ExhibitFZgClModel* m_unitModel;
    QTableView* m_allView;
    QTableView* m_unitView;
    QToolButton* m_import;
    int m_shownDwId = -1;
    static QString s_lastDir;
};
