#include "WorksTypeList.h"

#include "HostConstants.h"
#include "SharedInterface.h"

#include <QFile>
#include <QRegularExpression>
#include <QTextCodec>

QString WorksTypeList::FilePath()
{
    return SharedInterface::GetAppPath() + HostConstants::GCSZDir +
           HostConstants::WorksTypeFilePath;
}

QStringList WorksTypeList::Read()
{
    QStringList trades;
    QFile file(FilePath());
    if (!file.open(QIODevice::ReadOnly))
        return trades; // no file yet: an empty list, created on the first add
    const QString text = QTextCodec::codecForName("GBK")->toUnicode(file.readAll());
    static const QRegularExpression blanks(QStringLiteral("\\s"));
    for (QString line : text.split(QLatin1Char('\n'))) {
        line.remove(QStringLiteral("\r\n")).remove(blanks);
        if (!line.isEmpty())
            trades << line;
    }
    return trades;
}

bool WorksTypeList::Write(const QStringList& trades)
{
    QFile file(FilePath());
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    QTextCodec* gbk = QTextCodec::codecForName("GBK");
    for (const QString& trade : trades)
        file.write(gbk->fromUnicode(trade + QStringLiteral("\r\n")));
    return true;
}

bool WorksTypeList::Append(const QString& trade)
{
    QFile file(FilePath());
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append))
        return false;
    file.write(QTextCodec::codecForName("GBK")->fromUnicode(trade + QStringLiteral("\r\n")));
    return true;
}

QStringList& WorksTypeList::Shared()
{
    static QStringList list = Read();
    return list;
}
