#include "VXParseAlg.h"

#include "FormulaText.h"
#include "NumberInput.h"

#include <muParser.h>

#include <QMutex>

#include <cmath>
#include <deque>
#include <memory>
#include <string>
#include <unordered_map>
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

// An expression parsed once: its parser holds the byte code, and every name it reads is bound
// to a slot of its own, filled from the caller's variables before each evaluation.
struct Compiled
{
    mu::Parser parser;
    std::deque<double> slots;
    std::vector<std::pair<QString, double*>> names;
};

double* bindName(const char* name, void* store)
{
    auto* compiled = static_cast<Compiled*>(store);
    compiled->slots.push_back(0.0);
    compiled->names.emplace_back(QString::fromUtf8(name), &compiled->slots.back());
    return &compiled->slots.back();
}

struct QStringHasher
{
    std::size_t operator()(const QString& s) const { return qHash(s); }
};

// Expressions by their text as given. Recalculation evaluates the same few formulas over and
// over with new variable values; parsing each once leaves a lookup and the byte code to run.
class CompiledCache
{
public:
    // The parsed expression, or null when the text does not parse (the caller then takes the
    // slow path, which words the error).
    Compiled* get(const QString& expr)
    {
        const auto found = m_entries.find(expr);
        if (found != m_entries.end())
            return found->second.get();
        QString text;
        QString error;
        if (!NumberInput::Normalise(expr, text, error) || text.isEmpty())
            return nullptr;
        auto compiled = std::make_unique<Compiled>();
        try {
            prepare(compiled->parser);
            compiled->parser.SetVarFactory(&bindName, compiled.get());
            compiled->parser.SetExpr(text.toUtf8().toStdString());
            compiled->parser.Eval(); // parses: every name meets the factory
        } catch (const mu::Parser::exception_type&) {
            return nullptr;
        }
        if (m_entries.size() >= Capacity)
            m_entries.clear(); // bounded: a project has far fewer distinct formulas
        return m_entries.emplace(expr, std::move(compiled)).first->second.get();
    }
    QMutex mutex;

private:
    static constexpr std::size_t Capacity = 2048;
    std::unordered_map<QString, std::unique_ptr<Compiled>, QStringHasher> m_entries;
};

CompiledCache& compiledCache()
{
    static CompiledCache cache;
    return cache;
}

// Evaluates a parsed expression; false when a name it reads has no value (and unknown names
// are not zero), so that the slow path words the error as the parser does.
bool evaluate(Compiled& compiled, const QHash<QString, double>& vars, bool unknownAsZero,
              double& result)
{
    for (const auto& [name, slot] : compiled.names) {
        const auto value = vars.constFind(name);
        if (value != vars.constEnd())
            *slot = value.value();
        else if (unknownAsZero)
            *slot = 0.0;
        else
            return false;
    }
    result = compiled.parser.Eval();
    return true;
}

} // namespace

bool VXParseAlg::ExpCalc(const QString& expr, const QHash<QString, double>& vars, double& result,
                         QString& error, bool unknownAsZero) const
{
    {
        CompiledCache& cache = compiledCache();
        QMutexLocker lock(&cache.mutex);
        Compiled* compiled = cache.get(expr);
        try {
            if (compiled && evaluate(*compiled, vars, unknownAsZero, result)) {
                if (std::isfinite(result))
                    return true;
                error = QStringLiteral("计算结果无效");
                return false;
            }
        } catch (const mu::Parser::exception_type& e) {
            error = parserError(e);
            return false;
        }
    }
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
