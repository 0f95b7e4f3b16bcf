// Both workbook readers. The first byte of the input picks the suffix, so the sniffing by
// content is fuzzed too (an .xlsx named .xls must still be read as what it is).
#include "FuzzInput.h"
#include "LibXLExcel.h"
#include "LibXLExcelSheet.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString path = FuzzInput::writeFile(
        size && (data[0] & 1) ? QStringLiteral("in.xls") : QStringLiteral("in.xlsx"), data, size);
    LibXLExcel book;
    if (!path.isEmpty() && book.Open(path)) {
        for (const LibXLExcelSheet* sheet : book.GetSheets())
            for (int r = 0; r < qMin(sheet->RowCount(), 64); ++r)
                for (int c = 0; c < qMin(sheet->ColCount(), 16); ++c)
                    sheet->GetCellText(r, c);
    }
    return 0;
}
