#pragma once

#include <QString>

// What a user types into a numeric cell or a formula, made into the text the expression engine
// reads. The one place where typed numbers are read: every editable numeric cell and every
// formula goes through it.
//
// - full-width digits, letters, operators and brackets, × and ÷ become ASCII; blanks (also
//   full-width and no-break ones) and tabs are dropped, so "1 500" is 1500;
// - a comma (also the full-width "，") is a grouping separator only inside a number written
//   in groups of three ("1,500", "2,345,678.50"); it is then dropped. Any other comma is
//   refused, never read as a list: muParser would otherwise keep only the last part;
// - a number followed by "%" is hundredths and one followed by "‰" thousandths.
class NumberInput
{
public:
    // True with the engine's text in out; false with the reason in error (out is then empty).
    // Empty input gives true with an empty out.
    static bool Normalise(const QString& typed, QString& out, QString& error);

    // A number or an arithmetic expression without variables ("1,500", "3%", "2*1.5"): true
    // with the value; empty input gives false with an empty error.
    static bool ToNumber(const QString& typed, double& value, QString& error);
};
