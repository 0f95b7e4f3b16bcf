#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <QVector>

class ConstructionWorks;
class ProTreeNode;

// Fee variables (费用变量) of a unit project: named amounts that formulas refer to. Every
// defined name has a value in every unit project: entered ones are kept as loaded (the
// 分部分项 and 措施项目 bills lie outside these lists), the others are derived from the
// unit project's tables by the recalculation (UnitProjectCalc).
class FyBlBusiness
{
public:
    static FyBlBusiness* GetInstance();

    // Where a variable's value comes from.
    enum Source {
        Entered,          // stored with the unit project; 0 until given
        Expression,       // argument: an expression over other variables
        OtherItemsTotal,  // the other items list's total
        OtherItemsLine,   // argument: a row name of the other items list
        FeesTotal,        // the fee rows of the fees and taxes list
        FeeLine,          // argument: a fee row's name
        FeeRate,          // argument: a fee row's name; its rate as a fraction
        TaxesTotal,       // the tax rows of the fees and taxes list
        TaxLine,          // argument: a tax row's name
        TaxBase,          // the base amount of the first tax row
        DayworkTotal,     // the labour rows of the daywork list
        PurchasedTotal,   // the tenderer-purchased materials list's total
        ProvisionalTotal, // the provisional materials list's total
    };
    struct Definition
    {
        QString name;
        Source source;
        QString argument;
        QString meaning;
    };
    // Every fee variable a formula may name.
    static const QVector<Definition>& Definitions();
    static const Definition* FindDefinition(const QString& name);
    static bool IsDefined(const QString& name) { return FindDefinition(name) != nullptr; }

    // Recalculates the whole unit project (UnitProjectCalc::Recalculate).
    void RecalculateFyBl(ConstructionWorks* works);
    double GetFyBlValueById(ConstructionWorks* works, int id) const;
    double GetFyBlValueByName(ConstructionWorks* works, const QString& name) const;
    // Name -> value, for evaluating formulas: every stored variable, and every defined one
    // (0 when the unit project holds none yet).
    QHash<QString, double> variables(ConstructionWorks* works) const;
    // Sets (or adds) a variable by name, journalled.
    void setValue(ConstructionWorks* works, const QString& name, double value);

    // Variables by number: 104 the quota measurement fee rate, 105 the tax rate (fractions).
    enum { QuotaFeeRateId = 104, TaxRateId = 105 };
    double GetSJFyBlValue(const ProTreeNode* node, int id) const;
    bool ChangeFyBl(int projectIndex, int auditVersion, int nodeId, int id, double value);
    // The host's list of fee-variable names, in the order the formula dialog's menus address
    // them (Config/FeeVariableNames.txt below the application path).
    static QStringList FeeVariableNames(const QString& appPath);
};
