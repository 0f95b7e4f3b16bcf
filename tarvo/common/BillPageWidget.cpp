#include "BillPageWidget.h"

#include "BillSjWidget.h"
#include "BillSsWidget.h"
#include "TarvoGuard.h"

#include "AuditBusiness.h"
#include "HostIds.h"
#include "ProTreeNode.h"
#include "SkinManager.h"
#include "zTableView.h"

#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QScrollBar>
#include <QSplitter>
#include <memory>

namespace {

// What stands under the current grid (the materials legend, the explanation) is left free
// under the submitted grid too, so that both grids show as many rows and their footers stand
// level. Follows the current grid as the page is laid out again.
class BottomAligner : public QObject
{
public:
    BottomAligner(QWidget* currentGrid, QWidget* submittedPane)
        : QObject(submittedPane), m_grid(currentGrid), m_pane(submittedPane)
    {
        m_grid->installEventFilter(this);
        align();
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (watched == m_grid && (event->type() == QEvent::Resize ||
                                  event->type() == QEvent::Move || event->type() == QEvent::Show))
            align();
        return false;
    }

private:
    void align()
    {
        QWidget* holder = m_grid->parentWidget();
        QLayout* layout = m_pane->layout();
        if (!holder || !layout)
            return;
        const int below = qMax(0, holder->height() - m_grid->geometry().bottom() - 1);
        if (layout->contentsMargins().bottom() != below)
            layout->setContentsMargins(0, 0, 0, below);
    }

    QWidget* m_grid;
    QWidget* m_pane;
};

// One grid's scroll bar follows the other's; a bar that cannot go as far stops where it ends
// without holding the other back (the shared flag breaks the echo).
class ScrollFollower : public QObject
{
public:
    ScrollFollower(QScrollBar* from, QScrollBar* to, std::shared_ptr<bool> following)
        : QObject(to), m_to(to), m_following(std::move(following))
    {
        connect(from, &QScrollBar::valueChanged, this, &ScrollFollower::follow);
    }

    void follow(int value)
    {
        TarvoGuard::run(QStringLiteral("common\\BillPageWidget"), __LINE__,
                        QStringLiteral("BillPageWidget::followScroll"), [&] {
                            if (*m_following)
                                return;
                            *m_following = true;
                            m_to->setValue(value);
                            *m_following = false;
                        });
    }

private:
    QScrollBar* m_to;
    std::shared_ptr<bool> m_following;
};

} // namespace

BillPageWidget::BillPageWidget(QWidget* parent)
    : zBaseWidget(parent), m_audit(new AuditBusiness(this))
{
}

QString BillPageWidget::tag(const char* function) const
{
    return className() + QStringLiteral("::") + QLatin1String(function);
}

void BillPageWidget::init()
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("InitWidget"), [&] {
        m_sj = createSjWidget();
        m_ssHolder = new zBaseWidget(this);
        InitWidget();
        SwitchIntoSsState(false);
    });
    InitAudit();
}

void BillPageWidget::InitWidget()
{
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* frame = new zBaseFrame(this);
    frame->setObjectName(QStringLiteral("frame"));
    layout->addWidget(frame);
    auto* frameLayout = new QHBoxLayout(frame);
    frameLayout->setContentsMargins(0, 0, 0, 0);
    auto* splitter = new zCommonSplitter(1, 1, frame);
    frameLayout->addWidget(splitter);
    splitter->addWidget(m_ssHolder);
    splitter->addWidget(m_sj);
    splitter->setSizes({200, 200});
    splitter->setHandleWidth(6);
    // The current version takes the room the window gains; the holder keeps its 200 pixels.
    splitter->setStretchFactor(0, 0);
    splitter->setStretchFactor(1, 1);
}

void BillPageWidget::InitAudit()
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("InitAudit"), [&] {
        m_audit->SetWidget(m_sj, 0);
        m_audit->SetWidget(m_ssHolder, 1);
    });
}

void BillPageWidget::SwitchIntoSsState(bool on)
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("SwitchIntoSsState"), [&] {
        if (on && !m_ss) {
            m_ss = createSsWidget();
            auto* layout = new QGridLayout;
            layout->setContentsMargins(0, 0, 0, 0);
            layout->addWidget(m_ss);
            m_ssHolder->setLayout(layout);
        } else if (m_ss) {
            m_ss->Reload();
        }
        // The holder keeps its place in the splitter; without a submitted version it is empty.
        if (m_ss)
            m_ss->setVisible(m_hasSs);
    });
}

void BillPageWidget::ProcMsg(int msgId, QVariant* payload)
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("ProcMsg"), [&] {
        if (msgId == MsgId::NodeClicked || msgId == MsgId::NodeSelected) {
            ProcNodeMsg(msgId, ProTreeNode::FromVariant(payload), payload);
            return;
        }
        m_sj->ProcMsg(msgId, payload);
        if (m_hasSs && m_ss) {
            m_ss->ProcMsg(msgId, payload);
            m_audit->Open();
        }
        m_audit->ProcMsg(msgId, payload);
        afterMsg(msgId);
    });
}

void BillPageWidget::ProcNodeMsg(int msgId, ProTreeNode* node, QVariant* payload)
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("ProcMsg"), [&] {
        if (node) {
            m_hasSs = ProTreeNode::CheckWithSSVersion(node);
            SwitchIntoSsState(m_hasSs);
        }
        m_sj->LoadNode(node, msgId);
        if (m_hasSs && m_ss) {
            m_ss->LoadNode(node);
            m_audit->Open();
        }
        m_audit->ProcMsg(msgId, payload);
        arrangeComparison();
        afterMsg(msgId);
    });
}

void BillPageWidget::arrangeComparison()
{
    auto* splitter = qobject_cast<QSplitter*>(m_ssHolder->parentWidget());
    auto* grid = qobject_cast<QGridLayout*>(m_sj->layout());
    if (!m_sjTitle && grid) {
        const QColor colour = SkinManager::getInstance()->getVXColor(
            QStringLiteral("Xxj_BgSsGjzYs"), QColor(255, 242, 204));
        m_sjTitle = new QLabel(m_sj);
        m_sjTitle->setObjectName(QStringLiteral("sjTitle"));
        m_sjTitle->setTextFormat(Qt::RichText);
        m_sjTitle->setText(
            // Non-breaking spaces: rich text keeps them, where other blanks collapse to nothing.
            QStringLiteral("当前版本&nbsp;&nbsp;<span style=\"background-color:%1\">"
                           "&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;</span>&nbsp;与送审版本不同的行")
                .arg(colour.name()));
        m_sjTitle->setStyleSheet(
            QStringLiteral("QLabel { background: #e8f1fb; padding: 3px 6px; color: #1d4f80; }"));
        grid->removeWidget(m_sj->view());
        grid->setSpacing(0);
        grid->addWidget(m_sjTitle, 0, 0);
        grid->addWidget(m_sj->view(), 1, 0);
    }
    const bool comparing = m_hasSs && m_ss;
    if (m_sjTitle)
        m_sjTitle->setVisible(comparing);
    if (splitter) {
        // Side by side the two grids share what the window gains; alone the holder keeps 200.
        splitter->setStretchFactor(0, comparing ? 1 : 0);
        splitter->setStretchFactor(1, 1);
        const int width = qMax(splitter->width(), 400);
        splitter->setSizes(comparing ? QList<int>{width / 2, width - width / 2}
                                     : QList<int>{200, width - 200});
    }
    // Side by side, both grids keep their horizontal scroll bars, so that the rows (and the
    // footers under them) stand level whichever pane is the narrower.
    m_sj->view()->setHorizontalScrollBarPolicy(comparing ? Qt::ScrollBarAlwaysOn
                                                         : Qt::ScrollBarAsNeeded);
    if (!comparing)
        return;
    // The same columns on both sides, each as wide as the wider of its two contents.
    zTableView* sj = m_sj->view();
    zTableView* ss = m_ss->view();
    ss->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    sj->resizeColumnsToContents();
    ss->resizeColumnsToContents();
    const int columns = qMin(sj->model()->columnCount(), ss->model()->columnCount());
    for (int c = 0; c < columns; ++c) {
        const int width = qMax(sj->columnWidth(c), ss->columnWidth(c));
        sj->setColumnWidth(c, width);
        ss->setColumnWidth(c, width);
    }
    ss->verticalHeader()->setDefaultSectionSize(sj->verticalHeader()->defaultSectionSize());
    if (!property("scrollLinked").toBool()) {
        setProperty("scrollLinked", true);
        new BottomAligner(sj, m_ss);
        // One grid follows the other (see ScrollFollower).
        auto following = std::make_shared<bool>(false);
        for (auto [from, to] : {std::pair{sj, ss}, std::pair{ss, sj}}) {
            for (auto [fromBar, toBar] :
                 {std::pair{from->verticalScrollBar(), to->verticalScrollBar()},
                  std::pair{from->horizontalScrollBar(), to->horizontalScrollBar()}}) {
                new ScrollFollower(fromBar, toBar, following);
            }
        }
    }
}
