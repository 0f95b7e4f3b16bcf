#include "TbZbZgClDialog.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

TbZbZgClDialog::TbZbZgClDialog(bool modifyPrice, bool setProvisional, bool cancelProvisional,
                               QWidget* parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("TbZbZgClDialog"));
    setWindowTitle(QStringLiteral("操作提示"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(QStringLiteral("保存对应关系时，还可执行下面的操作:"), this));
    const QString texts[3] = {
        QStringLiteral("修改调价      (已对应调价与招标清单暂估价不同的材料)"),
        QStringLiteral("设置暂估属性  (已对应的非暂估材料)"),
        QStringLiteral("取消暂估属性（未对应的暂估材料)")};
    const bool enabled[3] = {modifyPrice, setProvisional, cancelProvisional};
    for (int i = 0; i < 3; ++i) {
        m_boxes[i] = new QCheckBox(texts[i], this);
        m_boxes[i]->setEnabled(enabled[i]);
        m_boxes[i]->setChecked(enabled[i]);
        layout->addWidget(m_boxes[i]);
    }
    auto* save = new QPushButton(QStringLiteral("保存"), this);
    auto* back = new QPushButton(QStringLiteral("继续"), this);
    save->setObjectName(QStringLiteral("btnSave"));
    back->setObjectName(QStringLiteral("btnContinue"));
    save->setDefault(true);
    connect(save, &QPushButton::clicked, this, &QDialog::accept);
    connect(back, &QPushButton::clicked, this, &QDialog::reject);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(save);
    buttons->addWidget(back);
    layout->addLayout(buttons);
}

bool TbZbZgClDialog::modifyPrice() const
{
    return m_boxes[0]->isEnabled() && m_boxes[0]->isChecked();
}

bool TbZbZgClDialog::setProvisional() const
{
    return m_boxes[1]->isEnabled() && m_boxes[1]->isChecked();
}

bool TbZbZgClDialog::cancelProvisional() const
{
    return m_boxes[2]->isEnabled() && m_boxes[2]->isChecked();
}
