#include "TenderFileReader.h"

#include "GzipInputDevice.h"
#include "TenderDocument.h"
#include "TenderXmlReader.h"

#include <QFile>
#include <QFileInfo>

#include <memory>
#include <vector>

namespace {

// Every format this host reads; the first that recognises the content reads it.
const std::vector<std::unique_ptr<TenderFileReader>>& readers()
{
    static const std::vector<std::unique_ptr<TenderFileReader>> list = [] {
        std::vector<std::unique_ptr<TenderFileReader>> l;
        l.push_back(std::make_unique<TenderXmlReader>());
        return l;
    }();
    return list;
}

} // namespace

QString TenderFileReader::FileError(const QString& path, const QString& problem)
{
    return QStringLiteral("无法读取招标文件“%1”：%2。").arg(QFileInfo(path).fileName(), problem);
}

bool TenderFileReader::ReadFile(const QString& path, TenderDocument* document, QString* error)
{
    *document = TenderDocument();
    auto fail = [&](const QString& problem) {
        *document = TenderDocument();
        if (error)
            *error = FileError(path, problem);
        return false;
    };
    const QFileInfo info(path);
    if (!info.exists())
        return fail(QStringLiteral("文件不存在"));
    if (!info.isFile() || !info.isReadable())
        return fail(QStringLiteral("文件无法读取"));
    if (info.size() > MaxFileSize)
        return fail(QStringLiteral("文件过大（%1 MB），招标数据文件不能超过%2 MB")
                        .arg(info.size() >> 20)
                        .arg(MaxFileSize >> 20));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return fail(QStringLiteral("文件无法读取（%1）").arg(file.errorString()));
    if (file.size() == 0)
        return fail(QStringLiteral("文件是空的"));

    QIODevice* content = &file;
    std::unique_ptr<GzipInputDevice> gzip;
    if (GzipInputDevice::isGzip(file.peek(2))) {
        gzip = std::make_unique<GzipInputDevice>(&file, MaxContentSize);
        if (!gzip->open(QIODevice::ReadOnly))
            return fail(QStringLiteral("压缩数据无法解开"));
        content = gzip.get();
    }
    const QByteArray head = content->peek(256);
    if (gzip && !gzip->problem().isEmpty())
        return fail(gzip->problem());
    if (head.isEmpty())
        return fail(QStringLiteral("文件没有内容"));
    for (const auto& reader : readers()) {
        if (!reader->canRead(head))
            continue;
        QString problem;
        if (reader->read(content, document, &problem))
            return true;
        // A broken compressed stream explains a broken document better than the XML does.
        if (gzip && !gzip->problem().isEmpty())
            return fail(gzip->problem());
        return fail(problem);
    }
    return fail(gzip ? QStringLiteral("解压后的内容不是XML格式的招标数据")
                     : QStringLiteral("内容不是XML格式的招标数据，也不是gzip压缩文件"));
}
