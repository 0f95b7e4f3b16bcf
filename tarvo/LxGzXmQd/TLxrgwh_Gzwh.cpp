#include "TLxrgwh_Gzwh.h"

#include "HostScreen.h"
#include "TarvoGuard.h"

#include "LxrgButtons.h"
#include "LxrgStore.h"
#include "TLxrgwh_Gzwh_Add.h"
#include "TLxrgwh_Gzwh_Xg.h"
#include "WorksTypeList.h"

#include "zMessageBox.h"
#include "zTitleModal.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QIcon>
#include <QPushButton>
#include <QTableWidget>
#include <QToolButton>
#include <QVBoxLayout>

TLxrgwh_Gzwh::TLxrgwh_Gzwh(QWidget* parent) : QDialog(parent), m_table(new QTableWidget(0, 2, this))
{
    setObjectName(QStringLiteral("TLxrgwh_Gzwh"));
    setWindowTitle(QStringLiteral("零星人工工种维护"));
    auto* layout = new QVBoxLayout(this);
    m_table->setHorizontalHeaderLabels({QStringLiteral("工种"), QStringLiteral("是否使用")});
    m_table->horizontalHeader()->setStretchLastSection(true);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    auto* middle = new QHBoxLayout;
    middle->addWidget(m_table, 1);
    auto* order = new QVBoxLayout;
    const char* const icons[] = {":/Image/svg/moveup.svg", ":/Image/svg/movedown.svg",
                                 ":/Image/svg/zd.svg", ":/Image/svg/zw.svg"};
    for (int how = 0; how < 4; ++how) {
        auto* button = new QToolButton(this);
        button->setIcon(QIcon(QString::fromLatin1(icons[how])));
        connect(button, &QToolButton::clicked, this, [this, how] { slotMove(how); });
        order->addWidget(button);
    }
    order->addStretch();
    middle->addLayout(order);
    layout->addLayout(middle, 1);
    layout->addLayout(
        LxrgButtons::row(this, {{QStringLiteral("查询"), &TLxrgwh_Gzwh::load},
                                {QStringLiteral("添加"), &TLxrgwh_Gzwh::slotShowTjgc},
                                {QStringLiteral("修改"), &TLxrgwh_Gzwh::slotShowXg},
                                {QStringLiteral("删除"), &TLxrgwh_Gzwh::slotDelete},
                                {QStringLiteral("选用"), &TLxrgwh_Gzwh::slotPick},
                                {QStringLiteral("取消"), &TLxrgwh_Gzwh::closeLxrgwh}}));
    resize(HostScreen::Scaled(QSize(420, 460)));
    load();
}

void TLxrgwh_Gzwh::load()
{
    // "查询" reads the file and the store again.
    m_trades.clear();
    int xh = 0;
    for (const QString& name : WorksTypeList::Read()) {
        TLxrgwhBean bean;
        bean.SetDat(name);
        bean.SetXh(QString::number(++xh));
        const DBM::clsDACResult used = LxrgStore::Query(
            QStringLiteral("SELECT * FROM lxrg WHERE gz = '%1';"), {name}, "TLxrgwh_Gzwh::load");
        bean.SetSfsy(used.size() > 0 ? QStringLiteral("√") : QStringLiteral("未使用"));
        m_trades << bean;
    }
    showTrades();
}

void TLxrgwh_Gzwh::showTrades()
{
    m_table->setRowCount(m_trades.size());
    for (int r = 0; r < m_trades.size(); ++r) {
        m_table->setItem(r, 0, new QTableWidgetItem(m_trades.at(r).GetDat()));
        m_table->setItem(r, 1, new QTableWidgetItem(m_trades.at(r).GetSfsy()));
    }
}

void TLxrgwh_Gzwh::save()
{
    WorksTypeList::Write(names());
    WorksTypeList::Shared() = names();
}

QStringList TLxrgwh_Gzwh::names() const
{
    QStringList list;
    for (const TLxrgwhBean& bean : m_trades)
        list << bean.GetDat();
    return list;
}

int TLxrgwh_Gzwh::currentRow() const
{
    return m_table->currentRow();
}

void TLxrgwh_Gzwh::setCurrentRow(int row)
{
    m_table->setCurrentCell(row, 0);
}

void TLxrgwh_Gzwh::slotShowTjgc()
{
    TARVO_GUARD("LxGzXmQd\\TLxrgwh_Gzwh", "TLxrgwh_Gzwh::slotShowTjgc")
    {
        TLxrgwh_Gzwh_Add dialog(names(), this);
        if (zTitleModal::ShowModal(&dialog) == 0)
            addTrade(dialog.name());
    };
}

void TLxrgwh_Gzwh::addTrade(const QString& name)
{
    TLxrgwhBean bean;
    bean.SetDat(name);
    bean.SetXh(QString::number(m_trades.size() + 1));
    bean.SetSfsy(QStringLiteral("未使用"));
    m_trades << bean;
    save();
    showTrades();
}

bool TLxrgwh_Gzwh::unusedCurrentTrade(const QString& refusal)
{
    const int row = currentRow();
    if (row < 0)
        return false;
    if (m_trades.at(row).GetSfsy() != QStringLiteral("未使用")) {
        showInformation(this, QStringLiteral("提示"), refusal);
        return false;
    }
    return true;
}

void TLxrgwh_Gzwh::slotShowXg()
{
    TARVO_GUARD("LxGzXmQd\\TLxrgwh_Gzwh", "TLxrgwh_Gzwh::slotShowXg")
    {
        if (!unusedCurrentTrade(QStringLiteral("不能修改已使用的工种")))
            return;
        TLxrgwh_Gzwh_Xg dialog(names(), this);
        connect(&dialog, &TLxrgwh_Gzwh_Xg::setXgDataGz, this, &TLxrgwh_Gzwh::getDataGz);
        zTitleModal::ShowModal(&dialog);
    };
}

void TLxrgwh_Gzwh::getDataGz(const QString& name)
{
    TARVO_GUARD("LxGzXmQd\\TLxrgwh_Gzwh", "TLxrgwh_Gzwh::getDataGz")
    {
        modifyTrade(currentRow(), name);
    };
}

void TLxrgwh_Gzwh::modifyTrade(int row, const QString& name)
{
    if (row < 0 || row >= m_trades.size() || m_trades.at(row).GetSfsy() != QStringLiteral("未使用"))
        return;
    m_trades[row].SetDat(name);
    save();
    showTrades();
}

void TLxrgwh_Gzwh::slotDelete()
{
    TARVO_GUARD("LxGzXmQd\\TLxrgwh_Gzwh", "TLxrgwh_Gzwh::slotDelete")
    {
        if (!unusedCurrentTrade(QStringLiteral("不能删除已使用的工种")))
            return;
        m_trades.removeAt(currentRow());
        save();
        showTrades();
    };
}

void TLxrgwh_Gzwh::slotPick()
{
    TARVO_GUARD("LxGzXmQd\\TLxrgwh_Gzwh", "TLxrgwh_Gzwh::slotPick")
    {
        const int row = currentRow();
        if (row < 0)
            return;
        emit signalTradePicked(m_trades.at(row).GetDat());
        accept();
    };
}

void TLxrgwh_Gzwh::slotMove(int how)
{
    TARVO_GUARD("LxGzXmQd\\TLxrgwh_Gzwh", "TLxrgwh_Gzwh::slotMove")
    {
        const int row = currentRow();
        if (row < 0)
            return;
        const int last = m_trades.size() - 1;
        const int to = how == 0 ? row - 1 : how == 1 ? row + 1 : how == 2 ? 0 : last;
        if (to < 0 || to > last || to == row)
            return;
        m_trades.move(row, to);
        save();
        showTrades();
        setCurrentRow(to);
    };
}
