#pragma once

#include <QDialog>
#include <QList>

class CkZbZgClQdModel;
class ConstructionWorks;
class QTableView;
class QToolButton;
class QPushButton;
class ZgClZsItem;

// "查看招标文件约定的暂估清单": the provisional-price materials the tender agrees for every unit
// project, as stored in the project; imports them from a tender file and exports the shown
// list to a workbook. The dialog owns the nodes it shows.
class CkZbZgClQdDialog : public QDialog
{
    Q_OBJECT
public:
    // works: the page's data object (any works of the project).
    CkZbZgClQdDialog(ConstructionWorks* works, QWidget* parent = nullptr);
    ~CkZbZgClQdDialog() override;

    QTableView* view() const { return m_view; }
    CkZbZgClQdModel* model() const { return m_model; }
    QToolButton* importButton() const { return m_import; }
    QPushButton* exportButton() const { return m_export; }

    // Reads a tender file's provisional list (and evaluated list, when it has one) into the
    // project of works when its tree fits; tells the user otherwise. True when stored; a
    // read-only project stores nothing.
    static bool ImportTenderFile(QWidget* parent, ConstructionWorks* works, const QString& path);

public slots:
    void slotImportCJZClicked();
    void slotImportCJZClicked_YN();
    void slotExportBtnClicked();

private:
    // Reads the stored tender list again.
    void reload();
    void clearNodes();
    QString askFile(const QString& filter);

    ConstructionWorks* m_works;
    QList<ZgClZsItem*> m_nodes;
    CkZbZgClQdModel* m_model;
    QTableView* m_view;
    QToolButton* m_import;
    QPushButton* m_export;
    static QString s_lastDir;
};
