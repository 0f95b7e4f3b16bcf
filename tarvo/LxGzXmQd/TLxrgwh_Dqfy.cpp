#include "TLxrgwh_Dqfy.h"

#include "HostScreen.h"
#include "TarvoGuard.h"

#include "LxrgButtons.h"
#include "LxrgStore.h"

#include "SkinManager.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

TLxrgwh_Dqfy::TLxrgwh_Dqfy(const QString& sj, QWidget* parent)
    : QDialog(parent), m_list(new QListWidget(this))
{
    setObjectName(QStringLiteral("TLxrgwh_Dqfy"));
    setWindowTitle(QStringLiteral("地区复用"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(QStringLiteral("复用地区选择："), this));
    SkinManager* skin = SkinManager::getInstance();
    m_list->setStyleSheet(
        QStringLiteral(
            "QListWidget{background-color:%2; border:1px solid #C9C9C9;gridline-color:%4;"
            "font-size:%1px;selection-background-color:%4;selection-color: %3;}")
            .arg(12)
            .arg(skin->getVXColor(QStringLiteral("ListBackground"), QColor(255, 255, 255)).name(),
                 skin->getVXColor(QStringLiteral("SelectedRowTextColor"), QColor(0, 0, 0)).name(),
                 skin->getVXColor(QStringLiteral("SelectedRowBackground"), QColor(205, 232, 255))
                     .name()));
    DBM::clsDACResult result = LxrgStore::Query(
        QStringLiteral("SELECT dq FROM lxrg WHERE sj = '%1' GROUP BY dq"), {sj}, "TLxrgwh_Dqfy");
    while (result.next()) {
        auto* item = new QListWidgetItem(result.value(QStringLiteral("dq")).toString(), m_list);
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        item->setCheckState(Qt::Unchecked);
    }
    layout->addWidget(m_list, 1);
    layout->addLayout(LxrgButtons::row(this,
                                       {{QStringLiteral("确定"), &TLxrgwh_Dqfy::onBtnOkClicked},
                                        {QStringLiteral("取消"), &TLxrgwh_Dqfy::closeLxrgwh}},
                                       true));
    resize(HostScreen::Scaled(QSize(320, 360)));
}

void TLxrgwh_Dqfy::onBtnOkClicked()
{
    TARVO_GUARD("LxGzXmQd\\TLxrgwh_Dqfy", "TLxrgwh_Dqfy::onBtnOkClicked")
    {
        QStringList chosen;
        for (int i = 0; i < m_list->count(); ++i)
            if (m_list->item(i)->checkState() == Qt::Checked)
                chosen << m_list->item(i)->text();
        emit signalRegionsChosen(chosen);
        accept();
    };
}
