#include "TLxrgwh_Gzwh_Add.h"

#include "TarvoGuard.h"

#include "LxrgButtons.h"

#include "zMessageBox.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QVBoxLayout>

TLxrgwh_Gzwh_Add::TLxrgwh_Gzwh_Add(const QStringList& existing, QWidget* parent)
    : QDialog(parent), m_existing(existing), m_edit(new QLineEdit(this))
{
    setObjectName(QStringLiteral("TLxrgwh_Gzwh_Add"));
    setWindowTitle(QStringLiteral("添加工种"));
    auto* layout = new QVBoxLayout(this);
    auto* row = new QHBoxLayout;
    row->addWidget(new QLabel(QStringLiteral("工种:"), this));
    row->addWidget(m_edit, 1);
    layout->addLayout(row);
    layout->addLayout(LxrgButtons::row(this,
                                       {{QStringLiteral("确定"), &TLxrgwh_Gzwh_Add::onOk},
                                        {QStringLiteral("取消"), &TLxrgwh_Gzwh_Add::closeLxrgwh}},
                                       true));
}

bool TLxrgwh_Gzwh_Add::takeName()
{
    static const QRegularExpression blanks(QStringLiteral("\\s"));
    const QString name = m_edit->text().remove(blanks);
    if (name.isEmpty())
        return false;
    if (m_existing.contains(name)) {
        showInformation(this, QStringLiteral("提示"), QStringLiteral("工种已经存在，请重新输入"));
        return false; // the dialog stays open
    }
    m_name = name;
    return true;
}

void TLxrgwh_Gzwh_Add::onOk()
{
    TARVO_GUARD("LxGzXmQd\\TLxrgwh_Gzwh_Add", "TLxrgwh_Gzwh_Add::onOk")
    {
        if (takeName())
            accept();
    };
}
