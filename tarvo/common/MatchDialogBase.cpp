#include "MatchDialogBase.h"
#include "HostScreen.h"

#include "KeywordDelegate.h"
#include "ZgClQd/PopupDialog/DbZbZgClModel.h"
#include "ZgClQd/PopupDialog/ExhibitFZgClModel.h"
#include "ZgClQd/PopupDialog/TbZbZgClDialog.h"

#include "DbZbZgClItem.h"
#include "GroupedHeaderView.h"
#include "RURecordControl.h"
#include "TarvoGuard.h"
#include "VXProgressBar.h"
#include "zMessageBox.h"
#include "zTitleModal.h"

#include <QCoreApplication>
#include <QGroupBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSplitter>
#include <QTabWidget>
#include <QTableView>
#include <QToolButton>
#include <QVBoxLayout>

double MatchDialogBase::resolutionRatio()
{
    return HostScreen::ResolutionRatio();
}

MatchDialogBase::MatchDialogBase(const QString& searchText, QWidget* parent)
    : QDialog(parent), m_topBar(new QHBoxLayout), m_grid(new QTableView(this)),
      m_delegate(new KeywordDelegate(this)),
      m_group(new QGroupBox(QStringLiteral("(匹配设置操作)"), this)),
      m_makePair(new QToolButton(m_group)), m_previous(new QToolButton(m_group)),
      m_unpair(new QToolButton(m_group)), m_next(new QToolButton(m_group)),
      m_name(new QLineEdit(this)), m_model(new QLineEdit(this)),
      m_search(new QPushButton(searchText, this)),
      m_counter(new QLabel(QStringLiteral("招标材料共n条，已对应m条，还需对应p条"), this)),
      m_tabs(new QTabWidget(this)), m_accept(new QPushButton(QStringLiteral("确定"), this)),
      m_reject(new QPushButton(QStringLiteral("取消"), this))
{
    const double ratio = resolutionRatio();
    resize(qRound(1100 * ratio), qRound(720 * ratio));

    m_grid->setObjectName(QStringLiteral("gridDbZbZgCl"));
    m_grid->setHorizontalHeader(new GroupedHeaderView(m_grid));
    m_grid->setItemDelegate(m_delegate);
    m_grid->setFont(QFont(QStringLiteral("SimSun"), 9));
    m_grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_grid->setSelectionMode(QAbstractItemView::SingleSelection);
    m_grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_grid->verticalHeader()->setDefaultSectionSize(qRound(22 * ratio));

    struct Button
    {
        QToolButton* button;
        const char* name;
        const char* icon;
        const char* tip;
    };
    const Button buttons[] = {
        {m_makePair, "btnMakeApair", ":/Image/svg/s_XtSyy.svg",
         "对应：选中的投标材料与招标材料行建立对应"},
        {m_previous, "btnPrevious", ":/Image/svg/s_Syy.svg", "上一条未对应的招标材料"},
        {m_unpair, "btnUnpair", ":/Image/svg/s_XtXyy.svg", "取消对应"},
        {m_next, "btnNext", ":/Image/svg/s_Xyy.svg", "下一条未对应的招标材料"},
    };
    auto* groupLayout = new QHBoxLayout(m_group);
    for (const Button& b : buttons) {
        b.button->setObjectName(QString::fromLatin1(b.name));
        b.button->setIcon(QIcon(QString::fromLatin1(b.icon)));
        b.button->setIconSize(QSize(qRound(20 * ratio), qRound(20 * ratio)));
        b.button->setToolTip(QString::fromUtf8(b.tip));
        b.button->setAutoRaise(true);
        groupLayout->addWidget(b.button);
    }
    connect(m_makePair, &QToolButton::clicked, this, [this] { slotBtnMakeApair(); });
    connect(m_unpair, &QToolButton::clicked, this, [this] { slotBtnUnpair(); });
    connect(m_previous, &QToolButton::clicked, this, [this] {
        TARVO_GUARD("common\\MatchDialogBase", "MatchDialogBase::moveToUnmatched")
        {
            moveToUnmatched(-1);
        };
    });
    connect(m_next, &QToolButton::clicked, this, [this] {
        TARVO_GUARD("common\\MatchDialogBase", "MatchDialogBase::moveToUnmatched")
        {
            moveToUnmatched(1);
        };
    });

    m_name->setObjectName(QStringLiteral("editName"));
    m_model->setObjectName(QStringLiteral("editModel"));
    m_name->setPlaceholderText(QStringLiteral("请输入关键词"));
    m_model->setPlaceholderText(QStringLiteral("请输入关键词"));
    m_search->setObjectName(QStringLiteral("btnSearch"));
    connect(m_search, &QPushButton::clicked, this, [this] { slotBtnSearch(); });
    connect(m_name, &QLineEdit::returnPressed, this, [this] { slotBtnSearch(); });
    connect(m_model, &QLineEdit::returnPressed, this, [this] { slotBtnSearch(); });
    m_counter->setObjectName(QStringLiteral("labelCounter"));

    auto* middle = new QHBoxLayout;
    middle->addWidget(m_group);
    middle->addSpacing(12);
    middle->addWidget(new QLabel(QStringLiteral("材料名称"), this));
    middle->addWidget(m_name);
    middle->addWidget(new QLabel(QStringLiteral("规格型号"), this));
    middle->addWidget(m_model);
    middle->addWidget(m_search);
    middle->addStretch(1);
    middle->addWidget(m_counter);

    m_tabs->setObjectName(QStringLiteral("tabTbCl"));
    auto* lower = new QWidget(this);
    auto* lowerLayout = new QVBoxLayout(lower);
    lowerLayout->setContentsMargins(0, 0, 0, 0);
    lowerLayout->addLayout(middle);
    lowerLayout->addWidget(m_tabs, 1);
    auto* splitter = new QSplitter(Qt::Vertical, this);
    splitter->addWidget(m_grid);
    splitter->addWidget(lower);
    splitter->setStretchFactor(0, 3);
    splitter->setStretchFactor(1, 2);
    // The bid materials get room for a dozen rows from the start, not what is left over.
    splitter->setSizes({qRound(400 * ratio), qRound(270 * ratio)});

    m_accept->setObjectName(QStringLiteral("btnAccept"));
    m_reject->setObjectName(QStringLiteral("btnReject"));
    connect(m_accept, &QPushButton::clicked, this, [this] { slotBtnAccept(); });
    connect(m_reject, &QPushButton::clicked, this, [this] { slotBtnReject(); });
    auto* bottom = new QHBoxLayout;
    bottom->addStretch(1);
    bottom->addWidget(m_accept);
    bottom->addWidget(m_reject);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(m_topBar);
    layout->addWidget(splitter, 1);
    layout->addLayout(bottom);
}

void MatchDialogBase::setGridModel(DbZbZgClModel* model)
{
    m_grid->setModel(model);
}

QTableView* MatchDialogBase::addMaterialTab(QAbstractItemModel* model, const QString& title)
{
    auto* view = new QTableView(m_tabs);
    view->setModel(model);
    view->setItemDelegate(new KeywordDelegate(view));
    view->setSelectionBehavior(QAbstractItemView::SelectRows);
    view->setSelectionMode(QAbstractItemView::SingleSelection);
    view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view->setFont(m_grid->font());
    view->verticalHeader()->setDefaultSectionSize(qRound(22 * resolutionRatio()));
    // The material name takes whatever width the model and the unit leave, as the other
    // grids fill theirs.
    view->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    view->setColumnWidth(1, qRound(200 * resolutionRatio()));
    view->setColumnWidth(2, qRound(70 * resolutionRatio()));
    m_tabs->addTab(view, title);
    return view;
}

void MatchDialogBase::showCount(int matched, int unmatched)
{
    m_counter->setText(QStringLiteral("招标材料共%1条，已对应%2条，还需对应%3条")
                           .arg(matched + unmatched)
                           .arg(matched)
                           .arg(unmatched));
}

void MatchDialogBase::applyKeywordColours()
{
    DbZbZgClModel* model = gridModel();
    for (int c = 0; model && c < model->columnCount(); ++c)
        m_delegate->setKeyword(c, model->isNameColumn(c)    ? m_name->text()
                                  : model->isModelColumn(c) ? m_model->text()
                                                            : QString());
    for (int t = 0; t < m_tabs->count(); ++t)
        if (auto* view = qobject_cast<QTableView*>(m_tabs->widget(t)))
            if (auto* delegate = qobject_cast<KeywordDelegate*>(view->itemDelegate())) {
                delegate->setKeyword(0, m_name->text());
                delegate->setKeyword(1, m_model->text());
                view->viewport()->update();
            }
    m_grid->viewport()->update();
}

void MatchDialogBase::showMaterial(QTableView* view, const std::function<bool(BaseDataItem*)>& same)
{
    auto* model = qobject_cast<ExhibitFZgClModel*>(view->model());
    for (int row = 0; model && row < model->rowCount(); ++row)
        if (same(model->material(row))) {
            view->setCurrentIndex(model->index(row, 0));
            view->scrollTo(model->index(row, 0));
            return;
        }
}

void MatchDialogBase::moveToUnmatched(int step)
{
    DbZbZgClModel* model = gridModel();
    if (!model || model->rowCount() == 0)
        return;
    const int rows = model->rowCount();
    int row =
        m_grid->currentIndex().isValid() ? m_grid->currentIndex().row() : (step > 0 ? -1 : rows);
    for (int i = 0; i < rows; ++i) {
        row += step;
        if (row < 0 || row >= rows)
            return;
        const DbZbZgClItem* r = model->record(row);
        if (r && r->IsZbRow() && r->GetState() == DbZbZgClItem::ZbOnly) {
            m_grid->setCurrentIndex(model->index(row, 0));
            m_grid->scrollTo(model->index(row, 0));
            return;
        }
    }
}

void MatchDialogBase::reject()
{
    slotBtnReject();
}

void MatchDialogBase::closeAsking()
{
    if (m_modified) {
        const QMessageBox::StandardButton answer = showInformation(
            this, QStringLiteral("操作提示"),
            m_closeQuestion.isEmpty() ? QStringLiteral("暂估材料数据已经修改，是否保存？")
                                      : m_closeQuestion,
            QMessageBox::Yes | QMessageBox::No, QMessageBox::Question);
        if (answer == QMessageBox::Yes) {
            slotBtnAccept();
            return;
        }
    }
    QDialog::reject();
}

DbZbZgClModel* MatchDialogBase::gridModel() const
{
    return qobject_cast<DbZbZgClModel*>(m_grid->model());
}

DbZbZgClItem* MatchDialogBase::currentRecord() const
{
    const QModelIndex index = m_grid->currentIndex();
    DbZbZgClModel* model = gridModel();
    return index.isValid() && model ? model->record(index.row()) : nullptr;
}

DbZbZgClItem* MatchDialogBase::currentTenderRow(const QString& text)
{
    DbZbZgClItem* record = currentRecord();
    if (record && record->IsZbRow())
        return record;
    showInformation(this, QStringLiteral("操作提示"), text);
    return nullptr;
}

void MatchDialogBase::selectRecord(const DbZbZgClItem* record)
{
    DbZbZgClModel* model = gridModel();
    const int row = model ? model->rowOf(record) : -1;
    if (row < 0)
        return;
    m_grid->setCurrentIndex(model->index(row, 0));
    m_grid->scrollTo(model->index(row, 0));
}

void MatchDialogBase::refreshGrid()
{
    const DbZbZgClItem* current = currentRecord();
    if (DbZbZgClModel* model = gridModel())
        model->refresh();
    if (current)
        selectRecord(current);
}

bool MatchDialogBase::confirmRepair(const DbZbZgClItem* record)
{
    if (!record->IsMatched())
        return true;
    const QMessageBox::StandardButton answer = showInformation(
        this, QStringLiteral("操作提示"),
        QStringLiteral("当前操作会取消当前招标材料与其投标材料原有的对应关系，与当前选中材料重新建"
                       "立对应关系，确定执行吗?"),
        QMessageBox::Ok | QMessageBox::Cancel, QMessageBox::Question);
    return answer == QMessageBox::Ok;
}

bool MatchDialogBase::applyChanges(const Analyze& analyze, const Write& write, const QString& label)
{
    bool b1 = false, b2 = false, b3 = false;
    analyze(b1, b2, b3);
    bool modifyPrice = false, setProvisional = false, cancelProvisional = false;
    if (b1 || b2 || b3) {
        TbZbZgClDialog options(b1, b2, b3, this);
        if (zTitleModal::ShowModal(&options) != 0)
            return false; // "继续": back to editing, every pair kept
        modifyPrice = options.modifyPrice();
        setProvisional = options.setProvisional();
        cancelProvisional = options.cancelProvisional();
    }
    VXProgressBar progress(QStringLiteral("提示"),
                           QStringLiteral("正在应用招标暂估材料修改，请等待"), 0, 100, this);
    progress.show();
    QCoreApplication::processEvents();
    commitChanges([&] { write(modifyPrice, setProvisional, cancelProvisional, progress); }, label);
    progress.finish();
    return true;
}

void MatchDialogBase::commitChanges(const std::function<void()>& write, const QString& label)
{
    {
        // The page's record holds the whole dialog; this scope takes a failed apply back
        // wholly, so a thrown business error leaves the project as it was.
        RURecordControl::Scope scope;
        write();
        scope.commit(OperatingUIInfo(0, 0, 0, 0, 10, label));
    }
    m_modified = false;
}
