#include "UnitProjectCalc.h"

#include "BusinessFaultInjection.h"
#include "FyBlBusiness.h"
#include "GfQdBusiness.h"
#include "NumberInput.h"
#include "QtXmQdJJjbBusiness.h"
#include "TableOps.h"
#include "VXParseAlg.h"

#include "ConstructionWorks.h"
#include "ProjectWorks.h"

#include <QHash>
#include <QRegularExpression>
#include <QSet>
#include <QVector>

#include <cmath>
#include <functional>
#include <vector>

namespace {

double round2(double v)
{
    return std::round(v * 100.0) / 100.0;
}

bool isNameStart(QChar c)
{
    return c.isLetter() || c == QLatin1Char('_') || c.unicode() >= 0x80;
}

// The names in a normalised formula, as the expression engine reads them: a name starts with
// a letter (Chinese included) or "_" and runs on over letters, digits and "_".
QStringList namesIn(const QString& text)
{
    QStringList names;
    for (int i = 0; i < text.size();) {
        const QChar c = text.at(i);
        if (isNameStart(c)) {
            int end = i + 1;
            while (end < text.size() && (isNameStart(text.at(end)) || text.at(end).isDigit()))
                ++end;
            const QString name = text.mid(i, end - i);
            if (!names.contains(name))
                names << name;
            i = end;
        } else if (c.isDigit() || c == QLatin1Char('.')) {
            // A number, with its exponent: "1e5" names nothing.
            while (i < text.size() && (text.at(i).isDigit() || text.at(i) == QLatin1Char('.')))
                ++i;
            if (i < text.size() &&
                (text.at(i) == QLatin1Char('e') || text.at(i) == QLatin1Char('E'))) {
                ++i;
                if (i < text.size() &&
                    (text.at(i) == QLatin1Char('+') || text.at(i) == QLatin1Char('-')))
                    ++i;
                while (i < text.size() && text.at(i).isDigit())
                    ++i;
            }
        } else {
            ++i;
        }
    }
    return names;
}

struct Formula
{
    bool ok = false;
    QString text;      // normalised for the engine
    QStringList names; // the variables it refers to
};

// Formulas repeat (every fee row of a list over the same base): read each text once.
Formula parsed(const QString& raw)
{
    static QHash<QString, Formula> cache;
    const auto it = cache.constFind(raw);
    if (it != cache.constEnd())
        return it.value();
    if (cache.size() > 20000)
        cache.clear();
    Formula f;
    QString error;
    f.ok = NumberInput::Normalise(raw, f.text, error);
    if (f.ok)
        f.names = namesIn(f.text);
    cache.insert(raw, f);
    return f;
}

// A row name as a variable's line is matched: blanks and bracketed parts dropped, so that
// "材料(工程设备)暂估价" is the line of 其他项目材料暂估价.
QString lineKey(const QString& name)
{
    static const QRegularExpression noise(QStringLiteral("\\s+|[(（][^)）]*[)）]"));
    return QString(name).remove(noise);
}

// A fee row's rate in percent; stored as a number, or as text from an older template
// ("3.41%").
double ratePercent(const BaseDataItem* item)
{
    const QVariant v = item->getValue(4);
    if (v.userType() != QMetaType::QString)
        return v.toDouble();
    QString text = v.toString().trimmed();
    if (text.endsWith(QLatin1Char('%')))
        text.chop(1);
    return text.toDouble();
}

// The amount of a materials list: its total row (the one the list's calculation writes),
// or the sum of its rows without one.
double materialListTotal(const GeneralTableBase* table)
{
    if (!table)
        return 0;
    if (const BaseDataItem* total = TableOps::materialTotalRow(table))
        return total->getDouble(10);
    double sum = 0;
    for (const BaseDataItem* item : table->items())
        sum += item->getDouble(10);
    return round2(sum);
}

class Engine
{
public:
    ConstructionWorks* works = nullptr;
    QtXmQdHzTable* other = nullptr;
    GfSjQdTable* fees = nullptr;
    LxGzXmRgDjQdTable* daywork = nullptr;
    GeneralTableBase* purchased = nullptr;
    GeneralTableBase* provisional = nullptr;
    GeneralTableBase* evaluated = nullptr;
    bool publish = false;       // write the derived fee variables into the works
    bool evaluate = true;       // false: build the graph and order it only
    bool calculateLists = true; // false: daywork and materials lists are up to date

    // A formula to use instead of the stored one (a proposed edit).
    const GeneralTableBase* overrideTable = nullptr;
    int overrideRow = -1;
    QString overrideFormula;

    int changed = 0;
    QString error;

    bool run()
    {
        if (evaluate && calculateLists)
            calculatePlainTables();
        initialVariables();
        build();
        QVector<int> order;
        if (!sort(order))
            return false;
        if (!evaluate)
            return true;
        for (int n : order)
            nodes[n].eval();
        if (publish)
            publishVariables();
        return true;
    }

private:
    struct Node
    {
        QString var;   // the fee variable it defines, or empty for a cell
        QString label; // how a cell is named in a cycle message
        QStringList names;
        QVector<int> deps;
        std::function<void()> eval;
    };
    std::vector<Node> nodes;
    QHash<QString, int> varNode;
    QHash<QString, double> vars;
    QHash<QString, double> results; // per formula text, within this recalculation

    QVector<double> otherAmount;
    QVector<double> feeAmount;
    QVector<double> feeBase;
    double otherTotal = 0;
    int otherTotalNode = -1;
    QVector<int> otherNode;
    QVector<int> feeNode;

    int add(Node node)
    {
        nodes.push_back(std::move(node));
        return int(nodes.size()) - 1;
    }

    QString formulaOf(const GeneralTableBase* table, int row) const
    {
        if (table == overrideTable && row == overrideRow)
            return overrideFormula;
        return table->at(row)->getValue(3).toString();
    }

    void put(BaseDataItem* item, int field, double value)
    {
        const QVariant old = item->getValue(field);
        if (old.isValid() && std::abs(old.toDouble() - value) > 0.0005)
            ++changed;
        item->setValue(field, value);
    }

    double calc(const QString& raw)
    {
        if (raw.trimmed().isEmpty())
            return 0;
        const auto cached = results.constFind(raw);
        if (cached != results.constEnd())
            return cached.value();
        const Formula f = parsed(raw);
        double result = 0;
        if (f.ok) {
            QHash<QString, double> local;
            for (const QString& name : f.names)
                local.insert(name, vars.value(name, 0.0));
            QString message;
            // A stored formula that does not evaluate counts as 0; edits are checked before.
            if (!VXParseAlg::getInstance()->ExpCalc(f.text, local, result, message, true))
                result = 0;
        }
        results.insert(raw, result);
        return result;
    }

    void calculatePlainTables()
    {
        if (daywork)
            TableOps::calculateDaywork(daywork);
        for (GeneralTableBase* list : {purchased, provisional, evaluated})
            if (list)
                TableOps::calculateMaterialList(list);
    }

    void initialVariables()
    {
        if (!works)
            return;
        vars = FyBlBusiness::GetInstance()->variables(works);
    }

    void buildOtherItems()
    {
        if (!other)
            return;
        const QList<BaseDataItem*>& rows = other->items();
        const int n = rows.size();
        otherAmount = QVector<double>(n, 0.0);
        otherNode = QVector<int>(n, -1);
        for (int i = 0; i < n; ++i) {
            BaseDataItem* item = rows.at(i);
            switch (item->getKind()) {
            case QtXmQdJJjbBusiness::Calculation: {
                Node node;
                node.label = QStringLiteral("其他项目清单第%1行").arg(i + 1);
                node.names = parsed(formulaOf(other, i)).names;
                node.eval = [this, i, item] {
                    const double value = round2(calc(formulaOf(other, i)));
                    otherAmount[i] = value;
                    put(item, 6, value);
                };
                otherNode[i] = add(node);
                break;
            }
            case QtXmQdJJjbBusiness::SubTotal:
            case QtXmQdJJjbBusiness::Total:
                break;
            default:
                otherAmount[i] = item->getDouble(3);
            }
        }
        // A subtotal with a serial sums its children, the rows below it numbered
        // "<serial>.n" (2 暂估价 over 2.1 and 2.2). One without a serial closes a group: it
        // sums the rows above it up to the previous subtotal.
        for (int i = 0; i < n; ++i) {
            if (rows.at(i)->getKind() != QtXmQdJJjbBusiness::SubTotal)
                continue;
            QVector<int> parts;
            const QString serial = rows.at(i)->getValue(1).toString().trimmed();
            if (serial.isEmpty()) {
                for (int j = i - 1; j >= 0 && rows.at(j)->getKind() != QtXmQdJJjbBusiness::SubTotal;
                     --j)
                    if (rows.at(j)->getKind() != QtXmQdJJjbBusiness::Total)
                        parts << j;
            } else {
                const QString prefix = serial + QLatin1Char('.');
                for (int j = i + 1; j < n; ++j) {
                    const BaseDataItem* child = rows.at(j);
                    if (child->getKind() == QtXmQdJJjbBusiness::Total ||
                        !child->getValue(1).toString().trimmed().startsWith(prefix))
                        break;
                    if (child->getKind() != QtXmQdJJjbBusiness::SubTotal)
                        parts << j;
                }
            }
            Node node;
            for (int j : parts)
                if (otherNode[j] >= 0)
                    node.deps << otherNode[j];
            BaseDataItem* item = rows.at(i);
            node.eval = [this, i, item, parts] {
                double sum = 0;
                for (int j : parts)
                    sum += otherAmount[j];
                otherAmount[i] = round2(sum);
                put(item, 3, otherAmount[i]);
            };
            otherNode[i] = add(node);
        }
        // The total sums the rows that carry amounts of their own, never a subtotal (its
        // rows are counted themselves). A row numbered under a row that is not a subtotal
        // ("1.1" under an ordinary "1") details that row's amount and is not counted again.
        QSet<QString> amountSerials;
        for (const BaseDataItem* item : rows)
            if (item->getKind() != QtXmQdJJjbBusiness::SubTotal &&
                item->getKind() != QtXmQdJJjbBusiness::Total)
                amountSerials.insert(item->getValue(1).toString().trimmed());
        QVector<int> counted;
        BaseDataItem* totalRow = nullptr;
        for (int i = 0; i < n; ++i) {
            const BaseDataItem* item = rows.at(i);
            if (item->getKind() == QtXmQdJJjbBusiness::Total && !totalRow)
                totalRow = rows.at(i);
            if (item->getKind() == QtXmQdJJjbBusiness::SubTotal ||
                item->getKind() == QtXmQdJJjbBusiness::Total)
                continue;
            const QString serial = item->getValue(1).toString().trimmed();
            bool detail = false;
            for (int dot = serial.lastIndexOf(QLatin1Char('.')); dot > 0 && !detail;
                 dot = serial.lastIndexOf(QLatin1Char('.'), dot - 1))
                detail = amountSerials.contains(serial.left(dot));
            if (!detail)
                counted << i;
        }
        Node total;
        for (int j : counted)
            if (otherNode[j] >= 0)
                total.deps << otherNode[j];
        total.eval = [this, counted, totalRow] {
            double sum = 0;
            for (int j : counted)
                sum += otherAmount[j];
            otherTotal = round2(sum);
            if (totalRow)
                put(totalRow, 3, otherTotal);
        };
        otherTotalNode = add(total);
    }

    void buildFees()
    {
        if (!fees)
            return;
        const QList<BaseDataItem*>& rows = fees->items();
        const int n = rows.size();
        feeAmount = QVector<double>(n, 0.0);
        feeBase = QVector<double>(n, 0.0);
        feeNode = QVector<int>(n, -1);
        for (int i = 0; i < n; ++i) {
            BaseDataItem* item = rows.at(i);
            if (item->getKind() != GfQdBusiness::Fee && item->getKind() != GfQdBusiness::Tax)
                continue;
            Node node;
            node.label = QStringLiteral("规费税金清单第%1行").arg(i + 1);
            node.names = parsed(formulaOf(fees, i)).names;
            node.eval = [this, i, item] {
                feeBase[i] = round2(calc(formulaOf(fees, i)));
                put(item, 6, feeBase[i]);
                feeAmount[i] = round2(feeBase[i] * ratePercent(item) / 100.0);
                put(item, 5, feeAmount[i]);
            };
            feeNode[i] = add(node);
        }
    }

    // The rows of a list whose names match a variable's line (kind -1: any row but a total).
    QVector<int> linesOf(const GeneralTableBase* table, const QString& name, int kind)
    {
        QVector<int> rows;
        if (!table)
            return rows;
        QHash<QString, QVector<int>>& keys = table == other ? otherKeys : feeKeys;
        if (keys.isEmpty())
            for (int i = 0; i < table->count(); ++i)
                keys[lineKey(table->at(i)->getValue(2).toString())] << i;
        for (int i : keys.value(lineKey(name))) {
            const int rowKind = table->at(i)->getKind();
            if (kind >= 0 ? rowKind == kind : rowKind != QtXmQdJJjbBusiness::Total)
                rows << i;
        }
        return rows;
    }
    QHash<QString, QVector<int>> otherKeys;
    QHash<QString, QVector<int>> feeKeys;

    void addVariable(const FyBlBusiness::Definition& d)
    {
        Node node;
        node.var = d.name;
        const QString name = d.name;
        auto sumOf = [this, name](const QVector<double>* amounts, QVector<int> rows) {
            return [this, name, amounts, rows] {
                double sum = 0;
                for (int r : rows)
                    sum += amounts->at(r);
                vars[name] = round2(sum);
            };
        };
        auto depend = [&node](const QVector<int>& cells, const QVector<int>& rows) {
            for (int r : rows)
                if (cells.value(r, -1) >= 0)
                    node.deps << cells.at(r);
        };
        switch (d.source) {
        case FyBlBusiness::Entered:
            return; // kept as stored
        case FyBlBusiness::Expression: {
            node.names = parsed(d.argument).names;
            const QString expr = d.argument;
            node.eval = [this, name, expr] { vars[name] = calc(expr); };
            break;
        }
        case FyBlBusiness::OtherItemsTotal:
            if (otherTotalNode >= 0)
                node.deps << otherTotalNode;
            node.eval = [this, name] { vars[name] = otherTotal; };
            break;
        case FyBlBusiness::OtherItemsLine: {
            const QVector<int> rows = linesOf(other, d.argument, -1);
            depend(otherNode, rows);
            node.eval = sumOf(&otherAmount, rows);
            break;
        }
        case FyBlBusiness::FeesTotal:
        case FyBlBusiness::TaxesTotal:
        case FyBlBusiness::FeeLine:
        case FyBlBusiness::TaxLine: {
            const int kind =
                d.source == FyBlBusiness::FeesTotal || d.source == FyBlBusiness::FeeLine
                    ? GfQdBusiness::Fee
                    : GfQdBusiness::Tax;
            QVector<int> rows;
            if (d.source == FyBlBusiness::FeeLine || d.source == FyBlBusiness::TaxLine) {
                rows = linesOf(fees, d.argument, kind);
            } else if (fees) {
                for (int i = 0; i < fees->count(); ++i)
                    if (fees->at(i)->getKind() == kind)
                        rows << i;
            }
            depend(feeNode, rows);
            node.eval = sumOf(&feeAmount, rows);
            break;
        }
        case FyBlBusiness::FeeRate: {
            const QVector<int> rows = linesOf(fees, d.argument, GfQdBusiness::Fee);
            const BaseDataItem* item = rows.isEmpty() ? nullptr : fees->at(rows.first());
            node.eval = [this, name, item] { vars[name] = item ? ratePercent(item) / 100.0 : 0.0; };
            break;
        }
        case FyBlBusiness::TaxBase: {
            int first = -1;
            for (int i = 0; fees && i < fees->count() && first < 0; ++i)
                if (fees->at(i)->getKind() == GfQdBusiness::Tax)
                    first = i;
            if (first >= 0)
                node.deps << feeNode.at(first);
            node.eval = [this, name, first] { vars[name] = first >= 0 ? feeBase.at(first) : 0.0; };
            break;
        }
        case FyBlBusiness::DayworkTotal:
            node.eval = [this, name] {
                double sum = 0;
                if (daywork)
                    for (const BaseDataItem* item : daywork->items())
                        if (item->getKind() == 0)
                            sum += item->getDouble(7);
                vars[name] = round2(sum);
            };
            break;
        case FyBlBusiness::PurchasedTotal:
            node.eval = [this, name] { vars[name] = materialListTotal(purchased); };
            break;
        case FyBlBusiness::ProvisionalTotal:
            node.eval = [this, name] { vars[name] = materialListTotal(provisional); };
            break;
        }
        varNode.insert(name, add(node));
    }

    void build()
    {
        buildOtherItems();
        buildFees();
        for (const FyBlBusiness::Definition& d : FyBlBusiness::Definitions())
            addVariable(d);
        // Formulas depend on the derived variables they name; entered ones and unknown
        // names are fixed for this recalculation.
        for (Node& node : nodes)
            for (const QString& name : node.names) {
                const auto it = varNode.constFind(name);
                if (it != varNode.constEnd())
                    node.deps << it.value();
            }
    }

    // Dependency order (depth first); false on a cycle, with the message in error.
    bool sort(QVector<int>& order)
    {
        const int n = int(nodes.size());
        QVector<char> state(n, 0); // 0 unseen, 1 on the path, 2 done
        order.reserve(n);
        struct Frame
        {
            int node;
            int next;
        };
        std::vector<Frame> path;
        for (int start = 0; start < n; ++start) {
            if (state[start])
                continue;
            path.push_back({start, 0});
            state[start] = 1;
            while (!path.empty()) {
                Frame& top = path.back();
                const Node& node = nodes[size_t(top.node)];
                if (top.next < node.deps.size()) {
                    const int dep = node.deps.at(top.next++);
                    if (state[dep] == 0) {
                        state[dep] = 1;
                        path.push_back({dep, 0});
                    } else if (state[dep] == 1) {
                        reportCycle(path, dep);
                        return false;
                    }
                    continue;
                }
                state[top.node] = 2;
                order << top.node;
                path.pop_back();
            }
        }
        return true;
    }

    template <typename Path> void reportCycle(const Path& path, int from)
    {
        QStringList names;
        bool on = false;
        for (const auto& frame : path) {
            on = on || frame.node == from;
            if (!on)
                continue;
            const Node& node = nodes[size_t(frame.node)];
            const QString name = node.var.isEmpty() ? node.label : node.var;
            if (!name.isEmpty())
                names << name;
        }
        // The path runs from a formula to what it depends on; the message reads the other
        // way: each name is calculated from the next.
        if (!names.isEmpty())
            names << names.first();
        error = UnitProjectCalc::CycleMessage(names);
    }

    void publishVariables()
    {
        FyBlTable* table = works->getFyBlTable();
        QHash<QString, BaseDataItem*> stored;
        int maxId = 0;
        for (BaseDataItem* item : table->items()) {
            stored.insert(item->getValue(2).toString(), item);
            maxId = qMax(maxId, item->getValue(1).toInt());
        }
        for (const Node& node : nodes) {
            if (node.var.isEmpty())
                continue;
            const double value = vars.value(node.var);
            if (BaseDataItem* item = stored.value(node.var)) {
                put(item, 3, value);
                continue;
            }
            BaseDataItem* item = table->CreateItem();
            maxId = qMax(maxId, 1000) + 1; // low numbers are the host's fixed variables
            item->loadValue(1, maxId);
            item->loadValue(2, node.var);
            item->loadValue(3, value);
            table->BaseDataItemAppend(item);
        }
    }
};

void attach(Engine& engine, ConstructionWorks* works)
{
    TenderInventory* inv = works->getTenderInventory();
    engine.works = works;
    engine.other = inv->getQtXmQdHzTable();
    engine.fees = inv->getGfSjQdTable();
    engine.daywork = inv->getLxGzXmRgDjQdTable();
    engine.purchased = inv->getZbrClGzfQdTable();
    engine.provisional = inv->getZgjClHzTable();
    engine.evaluated = inv->getSjCqXPsClHzTable();
}

ConstructionWorks* ownerOf(const GeneralTableBase* table)
{
    auto* works = table ? dynamic_cast<ConstructionWorks*>(table->parentObject()) : nullptr;
    if (!works)
        return nullptr;
    for (GeneralTableBase* t : works->allTables())
        if (t == table)
            return works;
    return nullptr;
}

} // namespace

UnitProjectCalc::Result UnitProjectCalc::Recalculate(ConstructionWorks* works, Scope scope)
{
    Result result;
    if (!works)
        return result;
    Engine engine;
    attach(engine, works);
    engine.publish = true;
    engine.calculateLists = scope == Everything;
    result.ok = engine.run();
    result.error = engine.error;
    result.changedAmounts = engine.changed;
    return result;
}

UnitProjectCalc::Result UnitProjectCalc::RecalculateOwner(GeneralTableBase* table,
                                                          ConstructionWorks* works, Scope scope)
{
    // A failure injected by a test strikes after the caller changed rows, as a host failure
    // half-way through a command would.
    BusinessFaultInjection::check();
    if (ConstructionWorks* owner = ownerOf(table))
        return Recalculate(owner, scope);
    Result result;
    if (!table)
        return result;
    // A table of no unit project: its own rows, over the given works' variables.
    Engine engine;
    engine.works = works;
    switch (table->getTableType()) {
    case QtXmQdHzTable::Type:
        engine.other = static_cast<QtXmQdHzTable*>(table);
        break;
    case GfSjQdTable::Type:
        engine.fees = static_cast<GfSjQdTable*>(table);
        break;
    case LxGzXmRgDjQdTable::Type:
        engine.daywork = static_cast<LxGzXmRgDjQdTable*>(table);
        break;
    default:
        engine.purchased = table;
    }
    result.ok = engine.run();
    result.error = engine.error;
    return result;
}

UnitProjectCalc::Result UnitProjectCalc::RecalculateProject(ProjectWorks* project)
{
    Result total;
    if (!project)
        return total;
    for (const ProTreeNode* node : project->unitProjectNodes())
        for (int audit = 0; audit < 2; ++audit) {
            const Result one = Recalculate(project->works(audit, ProTreeNode::Id(node)));
            total.changedAmounts += one.changedAmounts;
            if (!one.ok && total.ok) {
                total.ok = false;
                total.error = one.error;
            }
        }
    return total;
}

QString UnitProjectCalc::OpeningMessage(const Result& result)
{
    if (!result.ok)
        return QStringLiteral("重新计算未完成：%1").arg(result.error);
    if (result.changedAmounts == 0)
        return QString();
    return QStringLiteral(
               "重新计算后有 %1 个金额与文件中保存的不同，已按当前数据更新（保存后写入文件）")
        .arg(result.changedAmounts);
}

QString UnitProjectCalc::FindCycle(ConstructionWorks* works, const GeneralTableBase* table, int row,
                                   const QString& formula)
{
    if (!works || !table)
        return QString();
    Engine engine;
    attach(engine, works);
    engine.evaluate = false;
    engine.overrideTable = table;
    engine.overrideRow = row;
    engine.overrideFormula = formula;
    return engine.run() ? QString() : engine.error;
}

QStringList UnitProjectCalc::ReferencedNames(const QString& formula)
{
    return parsed(formula).names;
}

QString UnitProjectCalc::CycleMessage(const QStringList& names)
{
    return QStringLiteral("计算公式存在循环引用：%1").arg(names.join(QStringLiteral(" → ")));
}
