#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

// Arithmetic expressions over named variables (fee-variable names, Chinese included).
class VXParseAlg
{
public:
    static VXParseAlg* getInstance();

    // The same as FormulaText::ReplaceFormulaItem.
    static QString ReplaceFormulaItem(const QString& text);

    // Evaluates expr with the given variables; false with an error text when it is not a
    // valid expression or names an unknown variable (unless unknownAsZero: then an unknown
    // name counts as 0, as a fee variable that has no amount yet).
    bool ExpCalc(const QString& expr, const QHash<QString, double>& vars, double& result,
                 QString& error, bool unknownAsZero = false) const;
    // Checks the expression against the known names without needing their values.
    bool CheckExpressionEx(const QString& expr, const QStringList& names, QString& error) const;
};
