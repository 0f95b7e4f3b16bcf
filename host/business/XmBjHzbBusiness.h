#pragma once

#include <QString>

// The unit project's summary-sheet services: the rates its rate tables define, and the pure
// text of a stored formula.
class XmBjHzbBusiness
{
public:
    // The quota measurement fee rate (pricing-model item 30, e.g. "0.14%"); false when the
    // unit project defines none.
    static bool GetDeCdFl(int projectIndex, int auditVersion, int nodeId, QString& text);
    // The tax rate of the fees and taxes list's tax row, with its percent sign.
    static bool GetSjFl(int projectIndex, int auditVersion, int nodeId, QString& text);
    // A stored formula may carry the marker "JSS:" in front; the user sees it without.
    static QString GetPureFormulaFromJss(const QString& stored);
};
