#include "ImportExcelDataDialog.h"

ImportExcelDataDialog::ImportExcelDataDialog(QWidget* parent) : QDialog(parent)
{
    setWindowTitle(QStringLiteral("从Excel文件中载入"));
}

ImportExcelDataDialog::~ImportExcelDataDialog() = default;

QVector<TenderEvaluatedMaterial> ImportExcelDataDialog::records() const
{
    return m_records;
}
