// Writes the bundled sample project file: tarvo_mksample <output path>
#include "SampleProject.h"

#include "ProjectFile.h"
#include "ProjectWorks.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <cstdio>

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() != 2) {
        std::fprintf(stderr, "usage: tarvo_mksample <output.tarvo>\n");
        return 2;
    }
    const QString path = args.at(1);
    QDir().mkpath(QFileInfo(path).absolutePath());
    std::unique_ptr<ProjectWorks> project = BuildSampleProject();
    QString error;
    if (!ProjectFile::Save(project.get(), path, &error)) {
        std::fprintf(stderr, "%s\n", qPrintable(error));
        return 1;
    }
    return 0;
}
