#pragma once

#include <QString>
#include <QVariant>

// How read values are shown: the texts an estimator expects to see in a grid.
namespace ExcelText {

// 12 → "12", 2.5 → "2.5", 0.1 + 0.2 → "0.3": at most 15 significant digits, no exponent below
// 1e15, no trailing zeros.
QString number(double value);
// A date serial of the 1900 or 1904 system as yyyy-MM-dd, with hh:mm:ss when it has a time of
// day, or hh:mm:ss alone below one day. Empty when the serial is out of range.
QString dateText(double serial, bool date1904);
// The value behind a date text made by dateText (QDate, QDateTime or QTime).
QVariant dateValue(const QString& text);
// True for the workbook number formats that show dates or times.
bool isDateFormat(int formatId, const QString& formatCode);
// "A1" style reference to row and column (from 0); false when it is not one or out of bounds.
bool parseReference(const QStringView reference, int* row, int* col);

} // namespace ExcelText
