#pragma once

#include <QString>

// What users type into formula cells, made readable for the expression parser.
class FormulaText
{
public:
    // Full-width digits, letters, operators and brackets, ×, ÷ and the Chinese comma become
    // ASCII; spaces (full-width ones too) and tabs are dropped. Chinese names stay as they are.
    static QString ReplaceFormulaItem(const QString& text);
};
