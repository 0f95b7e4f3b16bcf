#include "RowsCountInputDialog.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

RowsCountInputDialog::RowsCountInputDialog(QWidget* parent)
    : QDialog(parent), m_count(new QSpinBox(this))
{
    setObjectName(QStringLiteral("RowsCountInputDialog"));
    setWindowTitle(QStringLiteral("批量删除"));
    auto* layout = new QVBoxLayout(this);
    auto* notice = new QHBoxLayout;
    auto* icon = new QLabel(this);
    icon->setPixmap(QIcon(QStringLiteral(":/Image/ShowInfo/Information.svg")).pixmap(16, 16));
    notice->addWidget(icon);
    notice->addWidget(new QLabel(QStringLiteral("注意：保留前n行，其余删除"), this));
    notice->addStretch();
    layout->addLayout(notice);
    auto* input = new QHBoxLayout;
    input->addWidget(new QLabel(QStringLiteral("n = "), this));
    m_count->setRange(0, 1000000);
    m_count->setValue(30);
    input->addWidget(m_count, 1);
    layout->addLayout(input);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setText(QStringLiteral("确定"));
    buttons->button(QDialogButtonBox::Cancel)->setText(QStringLiteral("取消"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
}

int RowsCountInputDialog::rowsCount() const
{
    return m_count->value();
}

void RowsCountInputDialog::setRowsCount(int n)
{
    m_count->setValue(n);
}
