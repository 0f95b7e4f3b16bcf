#pragma once

#include "TenderDocument.h"

#include <QDialog>
#include <QVector>

#include <memory>

class ImportExcelDataModel;
class LibXLExcel;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPoint;
class QPushButton;
class QTableView;

// "从Excel文件中载入": opens a workbook, shows one sheet, lets the user map columns to the
// fields of the tender's evaluated-materials list and mark the material rows. After
// exec() == QDialog::Accepted, records() holds the checked material rows.
class ImportExcelDataDialog : public QDialog
{
    Q_OBJECT
public:
    explicit ImportExcelDataDialog(QWidget* parent = nullptr);
    ~ImportExcelDataDialog() override;

    // The checked material rows, one record each, in sheet order; empty before acceptance.
    QVector<TenderEvaluatedMaterial> records() const;

    // Opens the workbook as "打开文件" does after its file dialog; false (and the fixed
    // message shown) when it cannot be read, the dialog then keeps what it showed.
    bool openFile(const QString& path);

    ImportExcelDataModel* model() const { return m_model; }
    QTableView* view() const { return m_view; }

public slots:
    void slotOpenFile();
    void slotSheetChanged(int index);
    void slotIdentifyLine();
    void slotAccept();
    void slotContextMenu(const QPoint& pos);
    void slotHeaderClicked(int section);
    void slotFieldChosen();
    void slotSetMaterialRow();
    void slotSetInvalidRow();
    void slotClearFields();
    void slotUpdateCount();

private:
    void showSheet(int index);
    void setSelectedRowsKind(int kind);
    QVector<int> selectedRows() const;

    std::unique_ptr<LibXLExcel> m_book;
    ImportExcelDataModel* m_model;
    QLineEdit* m_path;
    QPushButton* m_open;
    QComboBox* m_sheets;
    QPushButton* m_identify;
    QCheckBox* m_selectOnIdentify;
    QLabel* m_count;
    QTableView* m_view;
    int m_headerSection = -1;
    QVector<TenderEvaluatedMaterial> m_records;
    static QString s_lastDir;
};
