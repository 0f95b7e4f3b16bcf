#pragma once

#include "TenderDocument.h"

#include <QDialog>
#include <QVector>

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

private:
    QVector<TenderEvaluatedMaterial> m_records;
};
