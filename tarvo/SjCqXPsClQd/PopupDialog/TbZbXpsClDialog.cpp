#include "TbZbXpsClDialog.h"

TbZbXpsClDialog::TbZbXpsClDialog(bool setAttribute, bool cancelAttribute, QWidget* parent)
    : TbZbZgClDialog({QStringLiteral("设置需评审属性 （已对应的非需评审材料）"),
                      QStringLiteral("取消需评审属性   （未对应的需评审材料）")},
                     {setAttribute, cancelAttribute}, QStringLiteral("取消"), parent)
{
    setObjectName(QStringLiteral("TbZbXpsClDialog"));
}
