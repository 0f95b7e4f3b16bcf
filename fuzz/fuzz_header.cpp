// Table-header configuration (JSON checked against its schema).
#include "FuzzInput.h"
#include "HeaderColumn.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    QString error;
    if (!HeaderConfig::fromJson(FuzzInput::bytes(data, size), &error).isValid() && error.isEmpty())
        __builtin_trap();
    return 0;
}
