#include "SporadicWorksWidget.h"

#include "TarvoGuard.h"

#include "SporadicTableModel.h"
#include "TLxrgwh.h"
#include "WorksTypeDelegate.h"
#include "common/TarvoGuard.h"

#include "zBatMessage.h"
#include "zTitleModal.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QFrame>
#include <QHeaderView>
#include <QIcon>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QPushButton>
#include <QRegularExpression>
#include <QSettings>
#include <QTableView>
#include <QTextBrowser>
#include <QVBoxLayout>

#include <algorithm>

namespace {

const QString kSource = QStringLiteral("LxGzXmQd\\SporadicWorksWidget");
const QString kClass = QStringLiteral("SporadicWorksWidget");

QString tagOf(const char* slot)
{
    return kClass + QStringLiteral("::") + QLatin1String(slot);
}

uint datePart(const QString& text, const QString& unit)
{
    const QRegularExpression pattern(QStringLiteral("\\d+") + unit);
    const QRegularExpressionMatch match = pattern.match(text);
    return match.hasMatch() ? match.captured(0).remove(unit).toUInt() : 0;
}

} // namespace

SporadicWorksWidget::SporadicWorksWidget(QWidget* parent)
    : QWidget(parent), m_model(new SporadicTableModel(this))
{
    setObjectName(QStringLiteral("sporadicWorksWidget"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);

    QWidget* head = section(QStringLiteral("widget_3"), QStringLiteral("verticalLayout_6"));
    auto* title = new QLabel(QStringLiteral("地区零星工作项目人工单价查询"), head);
    title->setStyleSheet(QStringLiteral("font-weight: bold; color: #1f2d3d;"));
    head->layout()->addWidget(title);
    auto* line = new QFrame(head);
    line->setObjectName(QStringLiteral("line"));
    line->setFrameShape(QFrame::HLine);
    head->layout()->addWidget(line);
    layout->addWidget(head);

    QWidget* condition = section(QStringLiteral("widget_4"), QStringLiteral("verticalLayout_4"));
    condition->layout()->addWidget(new QLabel(QStringLiteral("所在地区"), condition));
    m_location = new QComboBox(condition);
    m_location->setObjectName(QStringLiteral("locationCBox"));
    m_location->setEditable(false);
    condition->layout()->addWidget(m_location);
    condition->layout()->addWidget(new QLabel(QStringLiteral("开始执行时间"), condition));
    m_startTime = new QComboBox(condition);
    m_startTime->setObjectName(QStringLiteral("startTimeCBox"));
    condition->layout()->addWidget(m_startTime);
    layout->addWidget(condition);

    auto* describe = new QWidget(this);
    describe->setObjectName(QStringLiteral("describleWidget"));
    auto* describeLayout = new QVBoxLayout(describe);
    describeLayout->setContentsMargins(0, 0, 0, 0);
    m_text = new QTextBrowser(describe);
    m_text->setObjectName(QStringLiteral("textBrowser"));
    m_text->setMaximumHeight(64);
    m_text->setHtml(QStringLiteral(
        "<p style='color:#5a6b7d'>选择地区与开始执行时间后，选中清单中的行，双击单价或点“选用”"
        "即可把该工种的人工单价写入所选行。单价可在此直接维护并“保存”。</p>"));
    describeLayout->addWidget(m_text);
    layout->addWidget(describe);

    QWidget* grid = section(QStringLiteral("widget_5"), QStringLiteral("verticalLayout_7"));
    m_table = new QTableView(grid);
    // A double-click picks the price; a rate is edited by typing or F2.
    m_table->setEditTriggers(QAbstractItemView::EditKeyPressed | QAbstractItemView::AnyKeyPressed);
    m_table->setObjectName(QStringLiteral("tableView"));
    m_table->setModel(m_model);
    m_table->setItemDelegateForColumn(0, new WorksTypeDelegate(m_table));
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->verticalHeader()->setDefaultSectionSize(22);
    grid->layout()->addWidget(m_table);
    layout->addWidget(grid, 1);

    QWidget* buttons = section(QStringLiteral("widget_6"), QStringLiteral("verticalLayout_5"));
    auto* row = new QHBoxLayout;
    const struct
    {
        const char* name;
        QString text;
        const char* icon;
        void (SporadicWorksWidget::*slot)();
    } commands[] = {
        {"selectBtn", QStringLiteral("选用"), ":/Image/Home/XuanYong-1.svg",
         &SporadicWorksWidget::on_selectBtn_clicked},
        {"saveBtn", QStringLiteral("保存"), nullptr, &SporadicWorksWidget::on_saveBtn_clicked},
        {"GiveUpBtn", QStringLiteral("放弃"), nullptr, &SporadicWorksWidget::on_GiveUpBtn_clicked},
        {"addBtn", QStringLiteral("添加"), nullptr, &SporadicWorksWidget::on_addBtn_clicked},
        {"delBtn", QStringLiteral("删除"), nullptr, &SporadicWorksWidget::on_delBtn_clicked},
        {"editBtn", QStringLiteral("编辑"), ":/Image/Home/BianJi-1.svg",
         &SporadicWorksWidget::on_editBtn_clicked}};
    for (const auto& command : commands) {
        auto* button = new QPushButton(command.text, buttons);
        button->setObjectName(QString::fromLatin1(command.name));
        if (command.icon)
            button->setIcon(QIcon(QString::fromLatin1(command.icon)));
        connect(button, &QPushButton::clicked, this, command.slot);
        row->addWidget(button);
        if (QLatin1String(command.name) == QLatin1String("selectBtn"))
            m_select = button;
    }
    static_cast<QVBoxLayout*>(buttons->layout())->addLayout(row);
    layout->addWidget(buttons);

    connect(m_location, &QComboBox::currentTextChanged, this,
            &SporadicWorksWidget::slotLocationTextChanged);
    connectTimeBox(true);
    connect(m_table, &QTableView::doubleClicked, this, &SporadicWorksWidget::doubleClickedSLot);
    // Other instances tell of changes to the store through the application's message bus.
    if (QCoreApplication* app = QCoreApplication::instance()) {
        const qint64 bus = app->property("BatUtil").toLongLong();
        if (bus)
            connect(reinterpret_cast<zBatMessage*>(quintptr(bus)), &zBatMessage::doNotify, this,
                    &SporadicWorksWidget::slotServiceNotify);
    }
    // Only a region the user picks is remembered, not one the panel chose by itself.
    connect(m_location, &QComboBox::textActivated, this, &SporadicWorksWidget::slotLocationChosen);
    UpdateLocationCBox();
}

QWidget* SporadicWorksWidget::section(const QString& name, const QString& layoutName)
{
    auto* widget = new QWidget(this);
    widget->setObjectName(name);
    auto* layout = new QVBoxLayout(widget);
    layout->setObjectName(layoutName);
    layout->setContentsMargins(0, 0, 0, 0);
    return widget;
}

void SporadicWorksWidget::connectTimeBox(bool on)
{
    if (on)
        connect(m_startTime, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
                &SporadicWorksWidget::slotSelectConditonChanged, Qt::UniqueConnection);
    else
        disconnect(m_startTime, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
                   &SporadicWorksWidget::slotSelectConditonChanged);
}

QStringList SporadicWorksWidget::SortTimes(QStringList times)
{
    auto key = [](const QString& t) {
        return std::make_tuple(datePart(t, QStringLiteral("年")), datePart(t, QStringLiteral("月")),
                               datePart(t, QStringLiteral("日")));
    };
    std::sort(times.begin(), times.end(),
              [&](const QString& a, const QString& b) { return key(a) > key(b); });
    return times;
}

namespace {

const QString kRememberedRegion = QStringLiteral("LxGzXmQd/region");

} // namespace

QString SporadicWorksWidget::RememberedRegion()
{
    return QSettings().value(kRememberedRegion).toString();
}

void SporadicWorksWidget::UpdateLocationCBox()
{
    {
        const QSignalBlocker blocker(m_location);
        m_location->clear();
        m_location->addItems(m_model->Regions());
        // The region the user chose last time, when the store still has it; otherwise the
        // project's region.
        const QString remembered = RememberedRegion();
        if (m_location->findText(remembered) >= 0)
            m_location->setCurrentText(remembered);
        else if (m_location->findText(m_projectRegion) >= 0)
            m_location->setCurrentText(m_projectRegion);
    }
    slotLocationTextChanged(m_location->currentText());
}

void SporadicWorksWidget::SetProjectRegion(const QString& region)
{
    TarvoGuard::run(kSource, __LINE__, tagOf("SetProjectRegion"), [&] {
        m_projectRegion = region;
        // A region the user chose before wins while the store has it.
        if (m_location->findText(RememberedRegion()) >= 0 || m_location->findText(region) < 0 ||
            m_location->currentText() == region)
            return;
        {
            const QSignalBlocker blocker(m_location);
            m_location->setCurrentText(region);
        }
        slotLocationTextChanged(region);
    });
}

void SporadicWorksWidget::slotLocationChosen(const QString& text)
{
    TarvoGuard::run(kSource, __LINE__, tagOf("slotLocationChosen"), [&] {
        if (!text.isEmpty())
            QSettings().setValue(kRememberedRegion, text);
    });
}

void SporadicWorksWidget::slotLocationTextChanged(const QString& text)
{
    TarvoGuard::run(kSource, __LINE__, tagOf("slotLocationTextChanged"), [&] {
        Q_UNUSED(text)
        slotUpdateStartTimeCBox();
    });
}

void SporadicWorksWidget::slotUpdateStartTimeCBox()
{
    TarvoGuard::run(kSource, __LINE__, tagOf("slotUpdateStartTimeCBox"), [&] {
        connectTimeBox(false);
        m_startTime->clear();
        m_startTime->addItems(SortTimes(m_model->StartTimes(m_location->currentText())));
        connectTimeBox(true);
        // The newest time is current and the grid shows it.
        slotSelectConditonChanged();
    });
}

void SporadicWorksWidget::slotSelectConditonChanged()
{
    TarvoGuard::run(kSource, __LINE__, tagOf("slotSelectConditonChanged"), [&] {
        m_model->Load(m_location->currentText(), m_startTime->currentText());
        UpdatecolumWith();
    });
}

void SporadicWorksWidget::UpdatecolumWith()
{
    m_table->resizeColumnsToContents();
    m_table->horizontalHeader()->setStretchLastSection(true);
}

void SporadicWorksWidget::Reload()
{
    const QString region = m_location->currentText();
    {
        const QSignalBlocker blocker(m_location);
        m_location->clear();
        m_location->addItems(m_model->Regions());
        m_location->setCurrentText(region);
    }
    slotUpdateStartTimeCBox();
}

void SporadicWorksWidget::slotChangeReadOnly(bool readOnly)
{
    TARVO_GUARD("LxGzXmQd\\SporadicWorksWidget", "SporadicWorksWidget::slotChangeReadOnly")
    {
        m_readOnly = readOnly;
        m_select->setEnabled(!readOnly);
    };
}

void SporadicWorksWidget::slotServiceNotify(const QByteArray message)
{
    TarvoGuard::run(kSource, __LINE__, tagOf("slotServiceNotify"), [&] {
        const QJsonObject json = QJsonDocument::fromJson(message).object();
        if (json.value(QStringLiteral("cmd")).toString() != QStringLiteral("NotifyLxRgDbChange"))
            return;
        const QString from =
            json.value(QStringLiteral("data")).toObject().value(QStringLiteral("appId")).toString();
        const QString own = QCoreApplication::instance()->property("AppId").toString();
        if (from != own)
            Reload(); // another instance changed the store
    });
}

void SporadicWorksWidget::on_selectBtn_clicked()
{
    TarvoGuard::run(kSource, __LINE__, tagOf("on_selectBtn_clicked"), [&] {
        const QModelIndex current = m_table->currentIndex();
        if (!current.isValid())
            return;
        const double price = m_model->index(current.row(), 1).data().toString().toDouble();
        if (!m_readOnly)
            emit signalSelectSporadicItem(price);
    });
}

void SporadicWorksWidget::doubleClickedSLot(const QModelIndex& index)
{
    TARVO_GUARD("LxGzXmQd\\SporadicWorksWidget", "SporadicWorksWidget::doubleClickedSLot")
    {
        Q_UNUSED(index)
        on_selectBtn_clicked();
    };
}

void SporadicWorksWidget::on_saveBtn_clicked()
{
    TarvoGuard::run(kSource, __LINE__, tagOf("on_saveBtn_clicked"),
                    [&] { m_model->slotSaveModifyRecord(); });
}

void SporadicWorksWidget::on_GiveUpBtn_clicked()
{
    TARVO_GUARD("LxGzXmQd\\SporadicWorksWidget", "SporadicWorksWidget::on_GiveUpBtn_clicked"){
        // Wired but, by design, it discards nothing.
    };
}

void SporadicWorksWidget::on_addBtn_clicked()
{
    TarvoGuard::run(kSource, __LINE__, tagOf("on_addBtn_clicked"), [&] {
        const int row = m_model->rowCount();
        m_model->insertRows(row, 1);
        const QModelIndex index = m_model->index(row, 0);
        m_table->setCurrentIndex(index);
        m_table->edit(index);
    });
}

void SporadicWorksWidget::on_delBtn_clicked()
{
    TarvoGuard::run(kSource, __LINE__, tagOf("on_delBtn_clicked"), [&] {
        const QModelIndex current = m_table->currentIndex();
        if (current.isValid())
            m_model->removeRows(current.row(), 1);
    });
}

void SporadicWorksWidget::on_editBtn_clicked()
{
    TarvoGuard::run(kSource, __LINE__, tagOf("on_editBtn_clicked"), [&] {
        TLxrgwh dialog(m_location->currentText(), m_startTime->currentText(), this);
        // The maintenance dialog is closed, not accepted: the store may have changed.
        if (zTitleModal::ShowModal(&dialog) == 0)
            return;
        Reload();
        QJsonObject data{
            {QStringLiteral("appId"), QCoreApplication::instance()->property("AppId").toString()}};
        QJsonObject message{{QStringLiteral("cmd"), QStringLiteral("NotifyLxRgDbChange")},
                            {QStringLiteral("data"), data}};
        const qint64 bus = QCoreApplication::instance()->property("BatUtil").toLongLong();
        zBatMessage* messenger =
            bus ? reinterpret_cast<zBatMessage*>(quintptr(bus)) : zBatMessage::Instance();
        messenger->SendAsyn(message);
    });
}
