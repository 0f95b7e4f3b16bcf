// The project file: an SQLite database whose pages, schema and row encodings all come from the
// file. It opens or is refused with a reason; it never crashes, hangs or runs out of memory.
#include "FuzzInput.h"
#include "ProjectFile.h"
#include "ProjectWorks.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString path = FuzzInput::writeFile(QStringLiteral("in.tarvo"), data, size);
    QString error;
    if (!path.isEmpty() && !ProjectFile::Open(path, &error) && error.isEmpty())
        __builtin_trap(); // a refusal always gives its reason
    return 0;
}
