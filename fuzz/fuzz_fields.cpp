// The encodings inside a project file's rows: the compact field list and the stored values
// (a variant, a map of ints to variants). The first byte picks the decoder.
#include "FuzzInput.h"
#include "ProjectFile.h"
#include "VariantStream.h"

#include <QMap>
#include <QVariant>
#include <QVector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size == 0)
        return 0;
    const QByteArray bytes = FuzzInput::bytes(data + 1, size - 1);
    QString why;
    bool ok = false;
    switch (data[0] % 3) {
    case 0: {
        RowFields values;
        ok = ProjectFile::decodeFields(bytes, values, &why);
        break;
    }
    case 1: {
        QVariant value;
        ok = VariantStream::readVariant(bytes, &value, &why);
        break;
    }
    default: {
        QMap<int, QVariant> map;
        ok = VariantStream::readIntMap(bytes, &map, &why);
        break;
    }
    }
    if (!ok && why.isEmpty())
        __builtin_trap(); // a refusal always gives its reason
    return 0;
}
