#pragma once

#include <QDialog>

class QSpinBox;

// "批量删除": asks how many leading rows to keep.
class RowsCountInputDialog : public QDialog
{
    Q_OBJECT
public:
    explicit RowsCountInputDialog(QWidget* parent = nullptr);
    int rowsCount() const;
    void setRowsCount(int n);

private:
    QSpinBox* m_count;
};
