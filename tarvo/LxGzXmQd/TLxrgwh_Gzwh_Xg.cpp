#include "TLxrgwh_Gzwh_Xg.h"

#include "TarvoGuard.h"

#include <QLabel>
#include <QPushButton>

TLxrgwh_Gzwh_Xg::TLxrgwh_Gzwh_Xg(const QStringList& existing, QWidget* parent)
    : TLxrgwh_Gzwh_Add(existing, parent)
{
    setObjectName(QStringLiteral("TLxrgwh_Gzwh_Xg"));
    setWindowTitle(QStringLiteral("修改工种"));
    if (auto* label = findChild<QLabel*>())
        label->setText(QStringLiteral("修改为:"));
    // "确定" reports the name through setXgDataGz.
    for (QPushButton* button : findChildren<QPushButton*>())
        if (button->text() == QStringLiteral("确定")) {
            button->disconnect();
            connect(button, &QPushButton::clicked, this, &TLxrgwh_Gzwh_Xg::onOkModify);
        }
}

void TLxrgwh_Gzwh_Xg::onOkModify()
{
    TARVO_GUARD("LxGzXmQd\\TLxrgwh_Gzwh_Xg", "TLxrgwh_Gzwh_Xg::onOkModify")
    {
        if (!takeName())
            return;
        emit setXgDataGz(m_name);
        accept();
    };
}
