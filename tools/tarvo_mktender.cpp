// Writes the sample tender files from the sample project:
// tarvo_mktender <fitting.cjz> <unfitting.cjz>
#include "SampleProject.h"
#include "SampleTender.h"

#include "ProjectWorks.h"
#include "TenderDocument.h"
#include "TenderXmlWriter.h"

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() != 3) {
        std::fprintf(stderr, "usage: tarvo_mktender <fitting.cjz> <unfitting.cjz>\n");
        return 2;
    }
    std::unique_ptr<ProjectWorks> project = BuildSampleProject();
    for (int i = 0; i < 2; ++i) {
        QString error;
        if (!TenderXmlWriter::WriteFile(args.at(1 + i), BuildSampleTender(project.get(), i == 0),
                                        false, &error)) {
            std::fprintf(stderr, "%s\n", qPrintable(error));
            return 1;
        }
    }
    return 0;
}
