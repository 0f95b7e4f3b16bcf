#pragma once

#include "OperatingUIInfo.h"

#include <QMainWindow>

class ModuleHost;
class ProTreeNode;
class ProjectTreeModel;
class ProjectWorks;
class QLabel;
class QMenu;
class QTreeView;
class RibbonWidget;

// The workbench's main window: project tree, ribbon, the module's pages, file and edit
// menus and a status bar. It plays the host application for the module.
class MainWindow : public QMainWindow
{
    Q_OBJECT
public:
    explicit MainWindow(QWidget* parent = nullptr);
    ~MainWindow() override;

    // Loads the module library; says so and goes on without it when it cannot.
    bool loadModule(const QString& libraryPath);
    // Opens a project file; on failure says why and keeps the open project as it was.
    bool openProject(const QString& path);
    bool newFromSample();
    bool save();
    bool saveAs(const QString& path);
    // Asks to save a changed project; false when the user cancels.
    bool maybeSave();
    // "工程属性": shows the project's properties and takes the region typed there.
    bool editProjectProperties();

    ProjectWorks* project() const;
    ModuleHost* moduleHost() const { return m_host; }
    RibbonWidget* ribbon() const { return m_ribbon; }
    QTreeView* tree() const { return m_tree; }
    void selectNode(ProTreeNode* node);
    // Shows each bill page of the given node in turn and saves a picture of the window.
    QStringList takeScreenshots(const QString& dir, ProTreeNode* node);
    static QString samplePath();
    // The window's size, place and state as the user left them last time.
    void restoreWindowState();
    void saveWindowState() const;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void buildMenus();
    void closeProject();
    void showProject(ProjectWorks* project);
    void updateTitle();
    void addRecent(const QString& path);
    void rebuildRecentMenu();
    void onRibbonRequested(const QString& menuFile);
    void afterReplay();
    // The undo history's saved state is the file's: undoing back to it leaves nothing to save.
    void markSavedState(bool saved);

    ModuleHost* m_host;
    ProjectTreeModel* m_treeModel;
    QTreeView* m_tree;
    RibbonWidget* m_ribbon;
    QWidget* m_centre;
    QLabel* m_fileLabel;
    QLabel* m_pageLabel;
    QMenu* m_recentMenu = nullptr;
    int m_projectIndex = -1;
    ProTreeNode* m_currentNode = nullptr;
    // The record the last undo or redo replayed, the payload of message 606.
    OperatingUIInfo m_replayed;
};
