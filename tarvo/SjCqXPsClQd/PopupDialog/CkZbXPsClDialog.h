#pragma once

#include "TenderDocument.h"

#include <QDialog>
#include <QVector>

class CkZbXPsClModel;
class ConstructionWorks;
class QPushButton;
class QTableView;
class QToolButton;

// "招标文件约定的需评审材料清单": the tender's list of materials subject to evaluation, as
// stored in the project; loads it from a tender file (CJZ, YFJZ) or an Excel workbook and
// exports the shown list to a workbook.
class CkZbXPsClDialog : public QDialog
{
    Q_OBJECT
public:
    // works: the page's data object (any works of the project).
    CkZbXPsClDialog(ConstructionWorks* works, QWidget* parent = nullptr);

    QTableView* view() const { return m_view; }
    CkZbXPsClModel* model() const { return m_model; }
    QToolButton* importButton() const { return m_import; }
    QPushButton* exportButton() const { return m_export; }

    // The project's stored tender list, in the model's terms.
    static QVector<TenderEvaluatedMaterial> StoredMaterials(const ConstructionWorks* works);
    // Font, row height and column widths of a view over CkZbXPsClModel.
    static void LayOut(QTableView* view);

    // Stores the materials as the project's tender list and shows them.
    void storeMaterials(const QVector<TenderEvaluatedMaterial>& materials);

public slots:
    void slotImportCJZClicked();
    void slotImportCJZClicked_YN();
    void slotImportExcelClicked();
    void slotExportBtnClicked();

private:
    // Reads the stored tender list again.
    void reload();
    // Takes the evaluated list of a tender file into the project.
    void importFile(const QString& path);
    QString askFile(const QString& filter);

    ConstructionWorks* m_works;
    CkZbXPsClModel* m_model;
    QTableView* m_view;
    QToolButton* m_import;
    QPushButton* m_export;
};
