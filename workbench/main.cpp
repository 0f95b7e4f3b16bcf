// The Tarvo workbench: a host application for the tender bill module.
//   tarvo-workbench [project.tarvo]
//   tarvo-workbench --screenshots DIR [project.tarvo]
#include "MainWindow.h"
#include "ModuleHost.h"

#include "HostScreen.h"
#include "InteractionSeam.h"
#include "ProjectWorks.h"
#include "zBatMessage.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QFont>

#include <cstdio>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Tarvo"));
    QApplication::setOrganizationName(QStringLiteral("Tarvo"));
    QApplication::setFont(QFont(QStringLiteral("Noto Sans CJK SC"), 9));
    // Qt's own dialogs (open, save, standard buttons) speak the user's language.
    if (!HostScreen::InstallQtTranslations(&app))
        qWarning("Qt zh_CN translations not found: Qt's own dialogs stay in English");

    QCommandLineParser parser;
    parser.addHelpOption();
    QCommandLineOption shots(QStringLiteral("screenshots"),
                             QStringLiteral("保存六个页面的截图后退出"), QStringLiteral("dir"));
    QCommandLineOption module(QStringLiteral("module"), QStringLiteral("模块库路径"),
                              QStringLiteral("path"));
    QCommandLineOption unit(QStringLiteral("unit"), QStringLiteral("截图用的单位工程序号（从1起）"),
                            QStringLiteral("n"));
    parser.addOption(shots);
    parser.addOption(unit);
    parser.addOption(module);
    parser.addPositionalArgument(QStringLiteral("project"), QStringLiteral("工程文件"));
    parser.process(app);

    // This instance on the message bus between running workbenches ("AppId", "BatUtil").
    zBatMessage::Instance()->installIntoApplication();

    // Without a user nothing may wait on a modal box: every box is written to standard error
    // instead, and a warning or an error ends the run with a failure status.
    const bool unattended = parser.isSet(shots);
    bool failed = false;
    if (unattended) {
        InteractionSeam::setScripted(true);
        InteractionSeam::setShownHook([&failed](const InteractionSeam::Shown& shown) {
            if (shown.kind == QLatin1String("progress"))
                return;
            std::fprintf(stderr, "%s: %s: %s\n", qPrintable(shown.kind), qPrintable(shown.title),
                         qPrintable(shown.text));
            if (shown.kind == QLatin1String("warning") || shown.kind == QLatin1String("critical"))
                failed = true;
        });
    }

    MainWindow window;
    const bool loaded = window.loadModule(parser.isSet(module) ? parser.value(module)
                                                               : ModuleHost::defaultLibraryPath());
    const QString project = parser.positionalArguments().value(0, MainWindow::samplePath());
    const bool opened = window.openProject(project);
    if (unattended && (!loaded || !opened || failed))
        return 2;
    // A screenshot run shows the window at its standard size, not the user's.
    if (!unattended)
        window.restoreWindowState();
    window.show();

    if (parser.isSet(shots)) {
        ProTreeNode* node = nullptr;
        if (ProjectWorks* p = window.project()) {
            const QList<ProTreeNode*> units = p->unitProjectNodes();
            for (ProTreeNode* candidate : units)
                if (ProTreeNode::CheckWithSSVersion(candidate) && !node)
                    node = candidate;
            if (parser.isSet(unit))
                node = units.value(parser.value(unit).toInt() - 1, node);
        }
        const QStringList files = window.takeScreenshots(parser.value(shots), node);
        for (const QString& file : files)
            std::printf("%s\n", qPrintable(file));
        return files.size() == 6 && !failed ? 0 : 1;
    }
    return app.exec();
}
