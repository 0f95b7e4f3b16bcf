#include "ProcExceptionNew.h"
#include "SharedInterface.h"

#include <QDateTime>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QTextStream>

static QList<ExceptionReport>& reports()
{
    static QList<ExceptionReport> list;
    return list;
}

void ProcExceptionNew(const std::exception& e, const QString& sourceFile, int line,
                      const QString& tag)
{
    ExceptionReport report{QString::fromUtf8(e.what()), sourceFile, line, tag};
    reports().append(report);
    if (reports().size() > 200)
        reports().removeFirst();
    qDebug().noquote()
        << QStringLiteral("异常: %1 [%2:%3] %4").arg(tag, sourceFile).arg(line).arg(report.what);

    const QString dir = SharedInterface::GetUserDataPath() + QStringLiteral("log");
    QDir().mkpath(dir);
    QFile file(dir + QStringLiteral("/exception.log"));
    if (file.open(QIODevice::Append | QIODevice::Text)) {
        QTextStream out(&file);
        out.setCodec("UTF-8");
        out << QDateTime::currentDateTime().toString(Qt::ISODate) << '\t' << tag << '\t'
            << sourceFile << ':' << line << '\t' << report.what << '\n';
    }
}

QList<ExceptionReport> RecentExceptionReports()
{
    return reports();
}

void ClearExceptionReports()
{
    reports().clear();
}
