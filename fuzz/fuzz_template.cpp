// Content-template files: read into a list that already holds a row. A refused template
// leaves that row alone.
#include "FuzzInput.h"
#include "GfSjQdTable.h"
#include "TemplateAccess.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString path = FuzzInput::writeFile(QStringLiteral("in.gfqd"), data, size);
    GfSjQdTable table;
    table.attach(0, table.CreateItem());
    QString error;
    if (!TemplateAccess::ReadTemplateFile(path, &table, GfSjQdTable::Type, &error) &&
        (error.isEmpty() || table.count() != 1))
        __builtin_trap();
    return 0;
}
