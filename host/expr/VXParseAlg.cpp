#include "VXParseAlg.h"

#include "FormulaText.h"
#include "NumberInput.h"

#include <muParser.h>

#include <cmath>
#include <deque>
#include <string>
#include <vector>

VXParseAlg* VXParseAlg::getInstance()
{
    static VXParseAlg instance;
    return &instance;
}

QString VXParseAlg::ReplaceFormulaItem(const QString& text)
{
    return FormulaText::ReplaceFormulaItem(text);
}

namespace {

void prepare(mu::Parser& parser)
{
    // Names may hold UTF-8 bytes of Chinese characters.
    std::string chars = "0123456789_abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
    for (int b = 0x80; b <= 0xFF; ++b)
        chars += char(b);
    parser.DefineNameChars(chars.c_str());
}

double* zeroVariable(const char* name, void* store)
{
    Q_UNUSED(name)
    auto* values = static_cast<std::deque<double>*>(store);
    values->push_back(0.0);
    return &values->back();
}

QString parserError(const mu::Parser::exception_type& e)
{
    return QString::fromStdString(e.GetMsg());
}

} // namespace

bool VXParseAlg::ExpCalc(const QString& expr, const QHash<QString, double>& vars, double& result,
                         QString& error, bool unknownAsZero) const
{
    QString text;
    if (!NumberInput::Normalise(expr, text, error))
        return false;
    if (text.isEmpty())
        return false;
    try {
        mu::Parser parser;
        prepare(parser);
        std::vector<double> values;
        values.reserve(size_t(vars.size()));
        for (auto it = vars.begin(); it != vars.end(); ++it) {
            values.push_back(it.value());
            const QByteArray name = it.key().toUtf8();
            if (text.contains(it.key()))
                parser.DefineVar(name.toStdString(), &values.back());
        }
        std::deque<double> unknown;
        if (unknownAsZero)
            parser.SetVarFactory(&zeroVariable, &unknown);
        parser.SetExpr(text.toUtf8().toStdString());
        result = parser.Eval();
        if (!std::isfinite(result)) {
            error = QStringLiteral("计算结果无效");
            return false;
        }
        return true;
    } catch (const mu::Parser::exception_type& e) {
        error = parserError(e);
        return false;
    }
}

bool VXParseAlg::CheckExpressionEx(const QString& expr, const QStringList& names,
                                   QString& error) const
{
    QHash<QString, double> vars;
    for (const QString& name : names)
        vars.insert(name, 1.0);
    double ignored = 0;
    QString message;
    if (ExpCalc(expr, vars, ignored, message))
        return true;
    // Division by a variable that happens to be zero is still a valid expression.
    error = message;
    return message == QStringLiteral("计算结果无效");
}
