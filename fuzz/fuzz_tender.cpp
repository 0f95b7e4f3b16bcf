// Tender data-exchange files, plain or gzip-compressed (told by content), read as users read
// them; and the quick reading against the thorough one, which must give the same document or
// the same message for any bytes.
#include "FuzzInput.h"
#include "TenderDocument.h"
#include "TenderFileReader.h"
#include "TenderXmlReader.h"

#include <QBuffer>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString path = FuzzInput::writeFile(QStringLiteral("in.cjz"), data, size);
    TenderDocument document;
    QString error;
    if (!TenderFileReader::ReadFile(path, &document, &error) && error.isEmpty())
        __builtin_trap();

    QByteArray bytes(reinterpret_cast<const char*>(data), int(size));
    TenderDocument quick, thorough;
    QString quickProblem, thoroughProblem;
    QBuffer a(&bytes), b(&bytes);
    a.open(QIODevice::ReadOnly);
    b.open(QIODevice::ReadOnly);
    const bool quickOk = TenderXmlReader().read(&a, &quick, &quickProblem);
    const bool thoroughOk = TenderXmlReader::ReadThorough(&b, &thorough, &thoroughProblem);
    if (quickOk != thoroughOk || quickProblem != thoroughProblem || !(quick == thorough))
        __builtin_trap();
    return 0;
}
