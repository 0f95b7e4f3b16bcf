// Tender data-exchange files, plain or gzip-compressed (told by content).
#include "FuzzInput.h"
#include "TenderDocument.h"
#include "TenderFileReader.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString path = FuzzInput::writeFile(QStringLiteral("in.cjz"), data, size);
    TenderDocument document;
    QString error;
    if (!TenderFileReader::ReadFile(path, &document, &error) && error.isEmpty())
        __builtin_trap();
    return 0;
}
