#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

class ConstructionWorks;
class ProTreeNode;

// Fee variables (费用变量) of a unit project: named amounts that formulas refer to. Some are
// kept as loaded (分部分项工程费, 措施项目费 come from parts of the project outside these
// lists); the ones below are derived from the lists after every change.
class FyBlBusiness
{
public:
    static FyBlBusiness* GetInstance();

    void RecalculateFyBl(ConstructionWorks* works);
    double GetFyBlValueById(ConstructionWorks* works, int id) const;
    double GetFyBlValueByName(ConstructionWorks* works, const QString& name) const;
    // Name -> value, for evaluating formulas.
    QHash<QString, double> variables(ConstructionWorks* works) const;
    // Sets (or adds) a variable by name, journalled.
    void setValue(ConstructionWorks* works, const QString& name, double value);

    // Variables by number: 104 the quota measurement fee rate, 105 the tax rate (fractions).
    enum { QuotaFeeRateId = 104, TaxRateId = 105 };
    double GetSJFyBlValue(const ProTreeNode* node, int id) const;
    bool ChangeFyBl(int projectIndex, int auditVersion, int nodeId, int id, double value);
    // The host's list of fee-variable names, in the order the formula dialog's menus address
    // them (Config/FeeVariableNames.txt below the application path).
    static QStringList FeeVariableNames();
};
