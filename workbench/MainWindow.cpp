#include "MainWindow.h"

#include "ModuleHost.h"
#include "ProjectPropertiesDialog.h"
#include "ProjectTreeModel.h"
#include "RibbonWidget.h"
#include "TenderExportAction.h"

#include "Communication.h"
#include "DataManagement.h"
#include "HostIds.h"
#include "MenuBarManager.h"
#include "MsgExplain.h"
#include "ProjectFile.h"
#include "RURecordControl.h"
#include "StaticFileHelper.h"
#include "UnitProjectCalc.h"
#include "zFileDialog.h"
#include "zMessageBox.h"
#include "zTitleModal.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMenuBar>
#include <QSettings>
#include <QSplitter>
#include <QStatusBar>
#include <QTreeView>
#include <QUndoStack>
#include <QVBoxLayout>

namespace {
const QString kFilter = QStringLiteral("Tarvo 工程文件 (*.tarvo)");
const QString kTitle = QStringLiteral("Tarvo 招投标清单工作台");
} // namespace

MainWindow::MainWindow(QWidget* parent)
    : QMainWindow(parent), m_host(new ModuleHost(this)), m_treeModel(new ProjectTreeModel(this)),
      m_tree(new QTreeView), m_ribbon(new RibbonWidget), m_centre(new QWidget)
{
    Communication::GetInstance()->SetMainWindow(this);
    resize(1440, 860);

    m_tree->setModel(m_treeModel);
    m_tree->setHeaderHidden(true);
    m_tree->setMinimumWidth(260);
    m_tree->setStyleSheet(QStringLiteral("QTreeView { background: #fbfcfe; border: none; }"));
    connect(m_tree, &QTreeView::clicked, this, [this](const QModelIndex& index) {
        if (ProTreeNode* node = m_treeModel->nodeAt(index)) {
            m_currentNode = node;
            m_host->send(MsgId::NodeClicked, QVariant::fromValue(node));
        }
    });

    auto* centreLayout = new QGridLayout(m_centre);
    centreLayout->setContentsMargins(0, 0, 0, 0);
    auto* placeholder = new QLabel(QStringLiteral("请打开工程文件"), m_centre);
    placeholder->setObjectName(QStringLiteral("placeholder"));
    placeholder->setAlignment(Qt::AlignCenter);
    centreLayout->addWidget(placeholder);

    auto* splitter = new QSplitter(Qt::Horizontal);
    splitter->addWidget(m_tree);
    splitter->addWidget(m_centre);
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({280, 1160});

    auto* body = new QWidget;
    auto* bodyLayout = new QVBoxLayout(body);
    bodyLayout->setContentsMargins(0, 0, 0, 0);
    bodyLayout->setSpacing(0);
    bodyLayout->addWidget(m_ribbon);
    bodyLayout->addWidget(splitter, 1);
    setCentralWidget(body);

    m_fileLabel = new QLabel;
    m_pageLabel = new QLabel;
    statusBar()->addWidget(m_fileLabel, 1);
    statusBar()->addPermanentWidget(m_pageLabel);

    connect(m_ribbon, &RibbonWidget::commandTriggered, this, [this](const QString& text) {
        // The tender-file exports are the host's data exchange, not a page's command.
        if (TenderExportAction::Handles(text))
            TenderExportAction::Run(this, project(), text);
        else
            m_host->send(MsgId::RibbonCommand, text);
    });
    connect(m_ribbon, &RibbonWidget::comboChanged, this,
            [this](const QString& item, const QString& text) {
                m_host->send(MsgId::RibbonCombo,
                             QVariant::fromValue(MsgExplain::MenuComboInfo{item, text}));
            });
    connect(m_host, &ModuleHost::ribbonRequested, this, &MainWindow::onRibbonRequested);
    // A page shown for the first time learns the selected node like any other.
    connect(m_host, &ModuleHost::pageChanged, this, [this] {
        if (m_currentNode)
            m_host->send(MsgId::NodeSelected, QVariant::fromValue(m_currentNode));
    });
    connect(RURecordControl::GetInstance(), &RURecordControl::signalRecordPushed, this,
            [this] { updateTitle(); });
    connect(RURecordControl::GetInstance(), &RURecordControl::signalReplayed, this,
            [this](const OperatingUIInfo& info) { m_replayed = info; });
    buildMenus();
    updateTitle();
}

MainWindow::~MainWindow()
{
    m_host->destroyContainer();
    closeProject();
}

QString MainWindow::samplePath()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/Samples/示例工程.tarvo");
}

void MainWindow::buildMenus()
{
    QMenu* file = menuBar()->addMenu(QStringLiteral("文件(&F)"));
    connect(file->addAction(QStringLiteral("新建(从示例)(&N)")), &QAction::triggered, this,
            [this] { newFromSample(); });
    QAction* open = file->addAction(QStringLiteral("打开(&O)..."));
    open->setShortcut(QKeySequence::Open);
    connect(open, &QAction::triggered, this, [this] {
        const QString path =
            zFileDialog::getOpenFileName(this, QStringLiteral("打开工程"), QString(), kFilter);
        if (!path.isEmpty())
            openProject(path);
    });
    QAction* saveAction = file->addAction(QStringLiteral("保存(&S)"));
    saveAction->setShortcut(QKeySequence::Save);
    connect(saveAction, &QAction::triggered, this, [this] { save(); });
    connect(file->addAction(QStringLiteral("另存为(&A)...")), &QAction::triggered, this, [this] {
        const QString path =
            zFileDialog::getSaveFileName(this, QStringLiteral("另存为"), QString(), kFilter);
        if (!path.isEmpty())
            saveAs(path.endsWith(QStringLiteral(".tarvo")) ? path
                                                           : path + QStringLiteral(".tarvo"));
    });
    m_recentMenu = file->addMenu(QStringLiteral("最近打开(&R)"));
    m_recentMenu->setObjectName(QStringLiteral("recentMenu"));
    rebuildRecentMenu();
    file->addSeparator();
    connect(file->addAction(QStringLiteral("退出(&X)")), &QAction::triggered, this,
            &QWidget::close);

    QMenu* projectMenu = menuBar()->addMenu(QStringLiteral("工程(&P)"));
    QAction* properties = projectMenu->addAction(QStringLiteral("工程属性(&P)..."));
    properties->setObjectName(QStringLiteral("projectPropertiesAction"));
    connect(properties, &QAction::triggered, this, [this] { editProjectProperties(); });

    QMenu* edit = menuBar()->addMenu(QStringLiteral("编辑(&E)"));
    QUndoStack* stack = RURecordControl::GetInstance()->undoStack();
    QAction* undo = stack->createUndoAction(this, QStringLiteral("撤销"));
    undo->setShortcut(QKeySequence(QStringLiteral("Ctrl+Z")));
    undo->setObjectName(QStringLiteral("undoAction"));
    QAction* redo = stack->createRedoAction(this, QStringLiteral("重做"));
    redo->setShortcut(QKeySequence(QStringLiteral("Ctrl+Y")));
    redo->setObjectName(QStringLiteral("redoAction"));
    // The host replays whole records and then has the pages redraw.
    disconnect(undo, &QAction::triggered, nullptr, nullptr);
    disconnect(redo, &QAction::triggered, nullptr, nullptr);
    connect(undo, &QAction::triggered, this, [this] {
        if (RURecordControl::GetInstance()->Undo())
            afterReplay();
    });
    connect(redo, &QAction::triggered, this, [this] {
        if (RURecordControl::GetInstance()->Redo())
            afterReplay();
    });
    edit->addAction(undo);
    edit->addAction(redo);
    addAction(undo);
    addAction(redo);
}

bool MainWindow::editProjectProperties()
{
    ProjectWorks* p = project();
    if (!p || p->IsReadOnly())
        return false;
    ProjectPropertiesDialog dialog(p, this);
    if (zTitleModal::ShowModal(&dialog) != 0 || !dialog.apply())
        return false;
    // Not an undo step: the file differs from the project until it is saved.
    p->setProjectWorkChanged(true);
    markSavedState(false);
    updateTitle();
    m_host->send(MsgId::RefreshPages);
    return true;
}

void MainWindow::markSavedState(bool saved)
{
    QUndoStack* stack = RURecordControl::GetInstance()->undoStack();
    if (saved)
        stack->setClean();
    else
        stack->resetClean(); // no undo step leads back to what the file holds
}

void MainWindow::afterReplay()
{
    if (ProjectWorks* p = project())
        p->setProjectWorkChanged(!RURecordControl::GetInstance()->undoStack()->isClean());
    // The pages redrew from their tables while the record was replayed; they learn which
    // record it was.
    m_host->send(MsgId::RecordReplayed, QVariant::fromValue(m_replayed));
    updateTitle();
}

ProjectWorks* MainWindow::project() const
{
    return DataManagement::getInstance()->GetProjectWorksByIndex(m_projectIndex);
}

bool MainWindow::loadModule(const QString& libraryPath)
{
    QString error;
    if (m_host->load(libraryPath, &error))
        return true;
    showInformation(this, QStringLiteral("加载模块"),
                    error + QStringLiteral("\n工作台将在没有招投标清单页面的情况下打开。"),
                    QMessageBox::Ok, QMessageBox::Warning);
    return false;
}

bool MainWindow::maybeSave()
{
    ProjectWorks* p = project();
    if (!p || !p->isProjectWorkChanged())
        return true;
    const auto answer = showInformation(
        this, QStringLiteral("提示"), QStringLiteral("工程已修改，是否保存？"),
        QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, QMessageBox::Question);
    if (answer == QMessageBox::Cancel)
        return false;
    return answer == QMessageBox::No || save();
}

void MainWindow::closeProject()
{
    if (m_projectIndex < 0)
        return;
    m_host->send(MsgId::ProjectClosing, m_projectIndex);
    // Pages hold the project's rows: the container goes before the project does.
    m_host->destroyContainer();
    m_treeModel->setProject(nullptr);
    m_currentNode = nullptr;
    DataManagement::getInstance()->CloseProjectWorks(m_projectIndex);
    m_projectIndex = -1;
}

bool MainWindow::openProject(const QString& fileName)
{
    // The status bar and the recent list show where the file really is.
    const QString path = QFileInfo(fileName).absoluteFilePath();
    QString error;
    // The new file is read completely before the open project is touched: a refused file
    // leaves everything as it was.
    std::unique_ptr<ProjectWorks> opened = ProjectFile::Open(path, &error);
    if (!opened) {
        showCritical(this, QStringLiteral("打开工程"), error);
        return false;
    }
    if (!maybeSave())
        return false;
    closeProject();
    // Amounts follow from the rows: a stored amount that differs is updated in memory and
    // said once; the file changes only when the user saves.
    const UnitProjectCalc::Result recalculated = UnitProjectCalc::RecalculateProject(opened.get());
    if (recalculated.changedAmounts > 0)
        opened->setProjectWorkChanged(true);
    m_projectIndex = DataManagement::getInstance()->AddProjectWorks(std::move(opened));
    markSavedState(recalculated.changedAmounts == 0);
    addRecent(path);
    showProject(project());
    const QString message = UnitProjectCalc::OpeningMessage(recalculated);
    if (!message.isEmpty())
        statusBar()->showMessage(message, 20000);
    return true;
}

bool MainWindow::newFromSample()
{
    if (!openProject(samplePath()))
        return false;
    // A new project starts from the sample but is saved elsewhere.
    project()->setFilePath(QString());
    project()->setProjectWorkChanged(true);
    markSavedState(false);
    updateTitle();
    return true;
}

void MainWindow::showProject(ProjectWorks* p)
{
    m_treeModel->setProject(p);
    m_tree->expandAll();
    if (QWidget* container = m_host->createContainer()) {
        QLayout* layout = m_centre->layout();
        if (QWidget* placeholder = m_centre->findChild<QLabel*>(QStringLiteral("placeholder")))
            placeholder->hide();
        layout->addWidget(container);
        container->show();
        m_host->send(MsgId::Activated);
    }
    // Start on the first unit project.
    const QList<ProTreeNode*> units = p->unitProjectNodes();
    if (!units.isEmpty())
        selectNode(units.first());
    updateTitle();
}

void MainWindow::selectNode(ProTreeNode* node)
{
    const QModelIndex index = m_treeModel->indexOf(node);
    m_tree->setCurrentIndex(index);
    m_currentNode = node;
    m_host->send(MsgId::NodeClicked, QVariant::fromValue(node));
}

bool MainWindow::save()
{
    ProjectWorks* p = project();
    if (!p)
        return false;
    if (p->filePath().isEmpty()) {
        const QString path =
            zFileDialog::getSaveFileName(this, QStringLiteral("保存工程"), QString(), kFilter);
        return !path.isEmpty() &&
               saveAs(path.endsWith(QStringLiteral(".tarvo")) ? path
                                                              : path + QStringLiteral(".tarvo"));
    }
    return saveAs(p->filePath());
}

bool MainWindow::saveAs(const QString& path)
{
    ProjectWorks* p = project();
    if (!p)
        return false;
    QString error;
    if (!ProjectFile::Save(p, path, &error)) {
        showCritical(this, QStringLiteral("保存工程"), error);
        return false;
    }
    markSavedState(true);
    addRecent(QFileInfo(path).absoluteFilePath());
    m_host->send(MsgId::ProjectSaved, path);
    statusBar()->showMessage(QStringLiteral("已保存：%1").arg(path), 4000);
    updateTitle();
    return true;
}

void MainWindow::updateTitle()
{
    ProjectWorks* p = project();
    if (!p) {
        setWindowTitle(kTitle);
        m_fileLabel->setText(QStringLiteral("未打开工程"));
        return;
    }
    const QString file =
        p->filePath().isEmpty() ? QStringLiteral("未命名") : QFileInfo(p->filePath()).fileName();
    const QString mark = p->isProjectWorkChanged() ? QStringLiteral(" *") : QString();
    setWindowTitle(QStringLiteral("%1 - %2%3").arg(p->name(), kTitle, mark));
    m_fileLabel->setText(
        QStringLiteral("工程文件：%1%2").arg(p->filePath().isEmpty() ? file : p->filePath(), mark));
}

void MainWindow::addRecent(const QString& path)
{
    if (path.startsWith(QFileInfo(samplePath()).absolutePath()))
        return;
    QSettings settings(QStringLiteral("Tarvo"), QStringLiteral("workbench"));
    QStringList recent = settings.value(QStringLiteral("recent")).toStringList();
    recent.removeAll(path);
    recent.prepend(path);
    settings.setValue(QStringLiteral("recent"), QVariant(recent.mid(0, 8)));
    rebuildRecentMenu();
}

void MainWindow::rebuildRecentMenu()
{
    if (!m_recentMenu)
        return;
    m_recentMenu->clear();
    const QStringList recent = QSettings(QStringLiteral("Tarvo"), QStringLiteral("workbench"))
                                   .value(QStringLiteral("recent"))
                                   .toStringList();
    for (const QString& path : recent)
        connect(m_recentMenu->addAction(path), &QAction::triggered, this,
                [this, path] { openProject(path); });
    m_recentMenu->setEnabled(!recent.isEmpty());
}

void MainWindow::onRibbonRequested(const QString& menuFile)
{
    QString error;
    const RibbonConfig config = MenuBarManager::ReadMenuBarInfoFromFileEx(
        StaticFileHelper::AquireMenuConfig(menuFile), &error);
    // The page sends its item states after asking for its ribbon: start from the file.
    MenuBarManager::getInstance()->reset();
    m_ribbon->showConfig(config);
    // A read-only project cannot be exported, whichever page shows the entries.
    if (ProjectWorks* p = project(); p && p->IsReadOnly())
        MenuBarManager::getInstance()->ChangeMenuToDisable({QStringLiteral("导出招投标CJZ"),
                                                            QStringLiteral("导出竣工CJZ"),
                                                            QStringLiteral("导出备案CJZX")});
    if (!error.isEmpty()) {
        qWarning().noquote() << error;
        statusBar()->showMessage(error, 10000);
    }
    m_pageLabel->setText(config.page.isEmpty() ? QString()
                                               : QStringLiteral("当前页面：%1").arg(config.page));
}

QStringList MainWindow::takeScreenshots(const QString& dir, ProTreeNode* node)
{
    QDir().mkpath(dir);
    if (node)
        selectNode(node);
    QStringList files;
    const QStringList pages = {QStringLiteral("其他项目清单"),
                               QStringLiteral("招标人材料购置费清单"),
                               QStringLiteral("零星工作项目人工单价清单"),
                               QStringLiteral("规费税金清单"),
                               QStringLiteral("需评审的材料清单"),
                               QStringLiteral("暂估材料(工程设备)清单")};
    for (int i = 0; i < pages.size(); ++i) {
        m_host->send(MsgId::ActivatePage,
                     QVariant::fromValue(MsgExplain::ToChangeActivePageInfo{pages.at(i)}));
        for (int n = 0; n < 5; ++n)
            QApplication::processEvents();
        const QString file =
            QDir(dir).filePath(QStringLiteral("%1-%2.png").arg(i + 1).arg(pages.at(i)));
        if (grab().save(file))
            files << file;
    }
    return files;
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (!maybeSave()) {
        event->ignore();
        return;
    }
    saveWindowState();
    event->accept();
}

void MainWindow::restoreWindowState()
{
    QSettings settings(QStringLiteral("Tarvo"), QStringLiteral("workbench"));
    const QByteArray geometry = settings.value(QStringLiteral("window/geometry")).toByteArray();
    // What the settings file holds is checked by Qt; a value it refuses leaves the standard size.
    if (!geometry.isEmpty() && !restoreGeometry(geometry))
        qWarning().noquote() << QStringLiteral("窗口位置设置无效，已使用默认大小");
    const QByteArray state = settings.value(QStringLiteral("window/state")).toByteArray();
    if (!state.isEmpty())
        restoreState(state);
}

void MainWindow::saveWindowState() const
{
    QSettings settings(QStringLiteral("Tarvo"), QStringLiteral("workbench"));
    settings.setValue(QStringLiteral("window/geometry"), saveGeometry());
    settings.setValue(QStringLiteral("window/state"), saveState());
}
