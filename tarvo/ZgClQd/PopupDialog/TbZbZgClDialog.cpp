#include "TbZbZgClDialog.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

TbZbZgClDialog::TbZbZgClDialog(bool modifyPrice, bool setProvisional, bool cancelProvisional,
                               QWidget* parent)
    : TbZbZgClDialog({QStringLiteral("修改调价      (已对应调价与招标清单暂估价不同的材料)"),
                      QStringLiteral("设置暂估属性  (已对应的非暂估材料)"),
                      QStringLiteral("取消暂估属性（未对应的暂估材料)")},
                     {modifyPrice, setProvisional, cancelProvisional}, QStringLiteral("继续"),
                     parent)
{
}

TbZbZgClDialog::TbZbZgClDialog(const QStringList& texts, const QVector<bool>& enabled,
                               const QString& back, QWidget* parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("TbZbZgClDialog"));
    setWindowTitle(QStringLiteral("操作提示"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(QStringLiteral("保存对应关系时，还可执行下面的操作:"), this));
    for (int i = 0; i < texts.size(); ++i) {
        auto* box = new QCheckBox(texts.at(i), this);
        box->setEnabled(enabled.value(i));
        box->setChecked(enabled.value(i));
        layout->addWidget(box);
        m_boxes.append(box);
    }
    auto* save = new QPushButton(QStringLiteral("保存"), this);
    auto* backButton = new QPushButton(back, this);
    save->setObjectName(QStringLiteral("btnSave"));
    backButton->setObjectName(QStringLiteral("btnContinue"));
    save->setDefault(true);
    connect(save, &QPushButton::clicked, this, &QDialog::accept);
    connect(backButton, &QPushButton::clicked, this, &QDialog::reject);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(save);
    buttons->addWidget(backButton);
    layout->addLayout(buttons);
}

bool TbZbZgClDialog::chosen(int i) const
{
    const QCheckBox* box = m_boxes.value(i);
    return box && box->isEnabled() && box->isChecked();
}

bool TbZbZgClDialog::modifyPrice() const
{
    return chosen(0);
}

bool TbZbZgClDialog::setProvisional() const
{
    return chosen(1);
}

bool TbZbZgClDialog::cancelProvisional() const
{
    return chosen(2);
}
