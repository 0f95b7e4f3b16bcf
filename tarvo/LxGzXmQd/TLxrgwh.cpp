#include "TLxrgwh.h"

#include "HostScreen.h"
#include "TarvoGuard.h"

#include "LxrgButtons.h"
#include "LxrgStore.h"
#include "TLxrgwh_Dqfy.h"
#include "TLxrgwh_Gzwh.h"

#include "zMessageBox.h"
#include "zTitleModal.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QStandardItemModel>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QVBoxLayout>

#include <functional>

namespace {

// The remark cell is edited in a combo box that offers the remarks the store already holds;
// a new one may be typed.
class RemarkDelegate : public QStyledItemDelegate
{
public:
    RemarkDelegate(std::function<QStringList()> choices, QObject* parent)
        : QStyledItemDelegate(parent), m_choices(std::move(choices))
    {
    }
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem&,
                          const QModelIndex&) const override
    {
        auto* combo = new QComboBox(parent);
        combo->setObjectName(QStringLiteral("remarkEditor"));
        combo->setEditable(true);
        QStringList remarks = m_choices();
        remarks.removeAll(QString());
        combo->addItems(remarks);
        return combo;
    }
    void setEditorData(QWidget* editor, const QModelIndex& index) const override
    {
        static_cast<QComboBox*>(editor)->setCurrentText(index.data(Qt::EditRole).toString());
    }
    void setModelData(QWidget* editor, QAbstractItemModel* model,
                      const QModelIndex& index) const override
    {
        const QString text = static_cast<QComboBox*>(editor)->currentText();
        if (text != index.data(Qt::EditRole).toString())
            model->setData(index, text, Qt::EditRole);
    }

private:
    std::function<QStringList()> m_choices;
};

} // namespace

TLxrgwh::TLxrgwh(const QString& dq, const QString& sj, QWidget* parent)
    : QDialog(parent), m_dq(new QComboBox(this)), m_sj(new QComboBox(this)),
      m_grid(new QTableView(this)), m_model(new QStandardItemModel(0, 3, this))
{
    setObjectName(QStringLiteral("TLxrgwh"));
    setWindowTitle(QStringLiteral("零星人工维护"));
    auto* layout = new QVBoxLayout(this);
    auto* condition = new QHBoxLayout;
    condition->addWidget(new QLabel(QStringLiteral("所在地区"), this));
    condition->addWidget(m_dq, 1);
    condition->addWidget(new QLabel(QStringLiteral("开始执行时间"), this));
    condition->addWidget(m_sj);
    layout->addLayout(condition);
    m_model->setHorizontalHeaderLabels(
        {QStringLiteral("工种"), QStringLiteral("单价"), QStringLiteral("备注")});
    m_grid->setModel(m_model);
    m_grid->setFont(QFont(QStringLiteral("SimSun"), 9));
    m_grid->horizontalHeader()->setStretchLastSection(true);
    m_grid->setItemDelegateForColumn(2,
                                     new RemarkDelegate([this] { return comboxBzData(); }, this));
    layout->addWidget(m_grid, 1);
    QHBoxLayout* buttons =
        LxrgButtons::row(this, {{QStringLiteral("地区复用"), &TLxrgwh::slotDqfy},
                                {QStringLiteral("新增"), &TLxrgwh::slotAddRow},
                                {QStringLiteral("删除"), &TLxrgwh::slotDeleteRow},
                                {QStringLiteral("工种维护"), &TLxrgwh::slotGzwh}});
    buttons->addLayout(
        LxrgButtons::row(this, {{QStringLiteral("关闭"), &TLxrgwh::closeLxrgwh}}, true), 1);
    layout->addLayout(buttons);
    resize(HostScreen::Scaled(QSize(620, 460)));

    // A new region or time may be typed in.
    m_dq->setEditable(true);
    m_sj->setEditable(true);
    loadComboxDq();
    loadComboxSj();
    m_dq->setCurrentText(dq);
    const int time = m_sj->findData(sj);
    if (time >= 0)
        m_sj->setCurrentIndex(time);
    else
        m_sj->setCurrentText(sj);
    slotFindDq(dq);
    connect(m_dq, &QComboBox::currentTextChanged, this, &TLxrgwh::slotFindDq);
    connect(m_sj, QOverload<int>::of(&QComboBox::currentIndexChanged), this, [this] {
        TARVO_GUARD("LxGzXmQd\\TLxrgwh", "TLxrgwh::findData")
        {
            findData(currentRegion(), currentTime());
        };
    });
    connect(m_model, &QStandardItemModel::itemChanged, this, [this](QStandardItem* item) {
        TARVO_GUARD("LxGzXmQd\\TLxrgwh", "TLxrgwh::onCellChanged")
        {
            if (!m_filling)
                onCellChanged(item->row(), item->column(), item->text());
        };
    });
}

QString TLxrgwh::currentRegion() const
{
    return m_dq->currentText();
}

QString TLxrgwh::currentTime() const
{
    // The shown text carries the region's mark ("√" or two blanks) in front.
    QString text = m_sj->currentText();
    if (text.startsWith(QStringLiteral("√")))
        text.remove(0, 1);
    else if (text.startsWith(QStringLiteral("  ")))
        text.remove(0, 2);
    return text.trimmed();
}

int TLxrgwh::currentRow() const
{
    return m_grid->currentIndex().isValid() ? m_grid->currentIndex().row() : -1;
}

void TLxrgwh::setCurrentRow(int row)
{
    m_grid->setCurrentIndex(m_model->index(row, 0));
}

void TLxrgwh::loadComboxDq()
{
    m_dq->clear();
    DBM::clsDACResult result = LxrgStore::Query(
        QStringLiteral("select distinct dq from lxrg order by dq asc"), {}, "loadComboxDq");
    while (result.next())
        m_dq->addItem(result.value(QStringLiteral("dq")).toString());
}

void TLxrgwh::loadComboxSj()
{
    m_sj->clear();
    DBM::clsDACResult result = LxrgStore::Query(
        QStringLiteral("select distinct sj from lxrg order by sj desc"), {}, "loadComboxSj");
    while (result.next()) {
        const QString sj = result.value(QStringLiteral("sj")).toString();
        m_sj->addItem(sj, sj); // the shown text carries the region's mark
    }
}

void TLxrgwh::slotFindDq(const QString& dq)
{
    TARVO_GUARD("LxGzXmQd\\TLxrgwh", "TLxrgwh::slotFindDq")
    {
        // The times this region has are marked "√", the others two blanks.
        DBM::clsDACResult result = LxrgStore::Query(
            QStringLiteral("SELECT sj FROM lxrg WHERE dq = '%1' GROUP BY sj;"), {dq}, "slotFindDq");
        QStringList times;
        while (result.next())
            times << result.value(QStringLiteral("sj")).toString();
        const QString typed = currentTime();
        for (int i = 0; i < m_sj->count(); ++i) {
            const QString sj = m_sj->itemData(i).toString();
            m_sj->setItemText(i, (times.contains(sj) ? QStringLiteral("√") : QStringLiteral("  ")) +
                                     sj);
        }
        if (m_sj->findData(typed) < 0)
            m_sj->setCurrentText(typed);
        findData(dq, currentTime());
    };
}

void TLxrgwh::findData(const QString& dq, const QString& sj)
{
    m_filling = true;
    m_rows.clear();
    m_model->removeRows(0, m_model->rowCount());
    DBM::clsDACResult result = LxrgStore::Query(
        QStringLiteral("SELECT * FROM lxrg WHERE sj = '%1' AND dq = '%2';"), {sj, dq}, "findData");
    while (result.next()) {
        TLxrgwhBean bean;
        bean.SetDataGz(result.value(QStringLiteral("gz")).toString());
        bean.SetDataDj(result.value(QStringLiteral("dj")).toString());
        bean.SetRemarke(result.value(QStringLiteral("bz")).toString());
        bean.SetFID(result.value(QStringLiteral("FID")).toString());
        m_rows << bean;
        m_model->appendRow({new QStandardItem(bean.GetDataGz()),
                            new QStandardItem(bean.GetDataDj()),
                            new QStandardItem(bean.GetRemarke())});
    }
    m_filling = false;
}

QStringList TLxrgwh::comboxBzData()
{
    QStringList remarks;
    DBM::clsDACResult result = LxrgStore::Query(
        QStringLiteral("select distinct bz from lxrg order by bz"), {}, "comboxBzData");
    while (result.next())
        remarks << result.value(QStringLiteral("bz")).toString();
    return remarks;
}

void TLxrgwh::slotAddRow()
{
    TARVO_GUARD("LxGzXmQd\\TLxrgwh", "TLxrgwh::slotAddRow")
    {
        const QString dq = currentRegion();
        const QString sj = currentTime();
        if (!m_rows.isEmpty()) {
            // The new row is for a trade the user chooses from the trade list; the price and
            // the remark are typed afterwards.
            QString gz;
            TLxrgwh_Gzwh dialog(this);
            connect(&dialog, &TLxrgwh_Gzwh::signalTradePicked, this, [&gz](const QString& trade) {
                TARVO_GUARD("LxGzXmQd\\TLxrgwh", "TLxrgwh::slotAddRow")
                {
                    gz = trade.trimmed();
                };
            });
            zTitleModal::ShowModal(&dialog);
            if (gz.isEmpty()) {
                showInformation(this, QStringLiteral("提示"), QStringLiteral("请选择工种"));
                return;
            }
            for (const TLxrgwhBean& row : std::as_const(m_rows))
                if (row.GetDataGz() == gz) {
                    showInformation(this, QStringLiteral("提示"), QStringLiteral("不能重复添加"));
                    return;
                }
            LxrgStore::Exec(QStringLiteral("INSERT INTO lxrg(FID, dq, sj, gz, bz, dj) VALUES(null, "
                                           "'%1', '%2', '%3', '%4', '%5')"),
                            {dq, sj, gz, QString(), QString()}, "slotAddRow");
        } else {
            LxrgStore::Exec(
                QStringLiteral("INSERT INTO lxrg(FID, dq, sj) VALUES(null, '%1', '%2')"), {dq, sj},
                "slotAddRow");
        }
        findData(dq, sj);
    };
}

void TLxrgwh::slotDeleteRow()
{
    TARVO_GUARD("LxGzXmQd\\TLxrgwh", "TLxrgwh::slotDeleteRow")
    {
        const int row = currentRow();
        if (row < 0 ||
            !showQuestion(this, QStringLiteral("提示"), QStringLiteral("确定删除当前行吗？")))
            return;
        LxrgStore::Exec(QStringLiteral("delete from lxrg where fid = %1"),
                        {m_rows.at(row).GetFID()}, "slotDeleteRow");
        findData(currentRegion(), currentTime());
    };
}

void TLxrgwh::slotDqfy()
{
    TARVO_GUARD("LxGzXmQd\\TLxrgwh", "TLxrgwh::slotDqfy")
    {
        TLxrgwh_Dqfy dialog(currentTime(), this);
        connect(&dialog, &TLxrgwh_Dqfy::signalRegionsChosen, this, &TLxrgwh::slotCopyData);
        zTitleModal::ShowModal(&dialog);
    };
}

void TLxrgwh::slotCopyData(const QStringList& regions)
{
    TARVO_GUARD("LxGzXmQd\\TLxrgwh", "TLxrgwh::slotCopyData")
    {
        const QString sj = currentTime();
        for (const QString& dq : regions)
            for (const TLxrgwhBean& row : std::as_const(m_rows))
                // The price goes in with one leading blank, as the store has always kept copies.
                LxrgStore::Exec(
                    QStringLiteral("INSERT INTO lxrg(FID, dq, sj, gz, dj, bz) VALUES(null, "
                                   "'%1', '%2', '%3',' %4', '%5')"),
                    {dq, sj, row.GetDataGz(), row.GetDataDj(), row.GetRemarke()}, "slotCopyData");
        showInformation(this, QStringLiteral("提示"), QStringLiteral("复用成功"));
    };
}

void TLxrgwh::slotGzwh()
{
    TARVO_GUARD("LxGzXmQd\\TLxrgwh", "TLxrgwh::slotGzwh")
    {
        TLxrgwh_Gzwh dialog(this);
        connect(&dialog, &TLxrgwh_Gzwh::signalTradePicked, this, &TLxrgwh::slotAddGzwhData);
        zTitleModal::ShowModal(&dialog);
    };
}

void TLxrgwh::slotAddGzwhData(const QString& gz)
{
    TARVO_GUARD("LxGzXmQd\\TLxrgwh", "TLxrgwh::slotAddGzwhData")
    {
        for (const TLxrgwhBean& row : std::as_const(m_rows))
            if (row.GetDataGz() == gz) {
                showInformation(this, QStringLiteral("提示"), QStringLiteral("不能重复添加"));
                return;
            }
        const int row = currentRow();
        if (row >= 0)
            LxrgStore::Exec(QStringLiteral("UPDATE lxrg SET gz = '%1' WHERE fid = '%2'"),
                            {gz, m_rows.at(row).GetFID()}, "slotAddGzwhData");
        else
            LxrgStore::Exec(
                QStringLiteral("INSERT INTO lxrg(FID, dq, sj, gz) VALUES(null, '%1', '%2', '%3')"),
                {currentRegion(), currentTime(), gz}, "slotAddGzwhData");
        findData(currentRegion(), currentTime());
    };
}

void TLxrgwh::slotGetGzData(int row, const QString& gz)
{
    TARVO_GUARD("LxGzXmQd\\TLxrgwh", "TLxrgwh::slotGetGzData")
    {
        for (int r = 0; r < m_rows.size(); ++r)
            if (r != row && m_rows.at(r).GetDataGz() == gz) {
                showInformation(this, QStringLiteral("提示"), QStringLiteral("不能重复添加"));
                findData(currentRegion(), currentTime());
                return;
            }
        if (LxrgStore::Exec(QStringLiteral("UPDATE lxrg SET gz = '%1' WHERE fid = '%2'"),
                            {gz, m_rows.at(row).GetFID()}, "slotGetGzData"))
            m_rows[row].SetDataGz(gz);
        else
            findData(currentRegion(), currentTime()); // the grid shows what the store holds
    };
}

void TLxrgwh::slotGetBzData(int row, const QString& bz)
{
    TARVO_GUARD("LxGzXmQd\\TLxrgwh", "TLxrgwh::slotGetBzData")
    {
        if (LxrgStore::Exec(QStringLiteral("UPDATE lxrg SET bz = '%1' WHERE fid = '%2'"),
                            {bz, m_rows.at(row).GetFID()}, "slotGetBzData"))
            m_rows[row].SetRemarke(bz);
        else
            findData(currentRegion(), currentTime());
    };
}

bool TLxrgwh::slotSaveDate(const QString& field, const QString& value, const QString& fid)
{
    bool saved = false;
    TARVO_GUARD("LxGzXmQd\\TLxrgwh", "TLxrgwh::slotSaveDate")
    {
        saved = LxrgStore::Exec(QStringLiteral("UPDATE lxrg SET ") + field +
                                    QStringLiteral(" = '%1' WHERE fid = '%2'"),
                                {value, fid}, "slotSaveDate");
    };
    return saved;
}

void TLxrgwh::onCellChanged(int row, int column, const QString& text)
{
    if (row < 0 || row >= m_rows.size())
        return;
    if (column == 0)
        slotGetGzData(row, text);
    else if (column == 2)
        slotGetBzData(row, text);
    else {
        if (slotSaveDate(QStringLiteral("dj"), text, m_rows.at(row).GetFID()))
            m_rows[row].SetDataDj(text);
        else
            findData(currentRegion(), currentTime());
    }
}
