// libFuzzer entry over both workbook readers (clang only):
//   CXX=clang++ cmake -B build-fuzz -DTARVO_FUZZ=ON -DTARVO_BUILD_BENCH=OFF
//   cmake --build build-fuzz --target fuzz_workbook
//   build-fuzz/bin/fuzz_workbook -max_total_time=60 ../shared/excel-samples
// The first byte of the input picks the suffix, so the sniffing by content is fuzzed too.
#include "LibXLExcel.h"
#include "LibXLExcelSheet.h"

#include <QFile>
#include <QTemporaryDir>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static QTemporaryDir dir;
    const QString path =
        dir.filePath(size && (data[0] & 1) ? QStringLiteral("in.xls") : QStringLiteral("in.xlsx"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return 0;
    file.write(reinterpret_cast<const char*>(data), qint64(size));
    file.close();
    LibXLExcel book;
    if (book.Open(path)) {
        for (const LibXLExcelSheet* sheet : book.GetSheets())
            for (int r = 0; r < qMin(sheet->RowCount(), 64); ++r)
                for (int c = 0; c < qMin(sheet->ColCount(), 16); ++c)
                    sheet->GetCellText(r, c);
    }
    return 0;
}
