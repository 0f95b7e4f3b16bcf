#pragma once

#include <QString>
#include <QStringList>

class ConstructionWorks;
class GeneralTableBase;
class ProjectWorks;

// One recalculation of a unit project. Its tables depend on each other through fee variables
// (其他项目 -> 规费 -> 税金 ...): every formula cell, every total and every derived fee
// variable is a node of one dependency graph, evaluated in dependency order and written back
// (journalled in the open undo record, so that one undo restores all of it). A cycle through
// user formulas is refused with the names of the variables on it, and nothing is changed.
class UnitProjectCalc
{
public:
    struct Result
    {
        bool ok = true;
        QString error;          // the cycle, when not ok
        int changedAmounts = 0; // amounts and fee variables whose value changed
    };

    // What a recalculation may take as already calculated.
    enum Scope {
        Everything,
        // The daywork and materials lists are up to date (an edit updated its own row and
        // the list's total): only what reads their totals is recalculated.
        ListsCalculated
    };

    // Recalculates every table of the unit project and its fee variables.
    static Result Recalculate(ConstructionWorks* works, Scope scope = Everything);
    // Recalculates the unit project that owns the table; a table of no unit project
    // (a template being read, a copy) is calculated on its own over no variables of its own.
    static Result RecalculateOwner(GeneralTableBase* table, ConstructionWorks* works = nullptr,
                                   Scope scope = Everything);

    // Every unit project of the project, both versions (as opening a project does). The
    // changed amounts add up; the first cycle met is the error.
    static Result RecalculateProject(ProjectWorks* project);
    // What opening says in the status bar about the recalculation; empty when nothing differed.
    static QString OpeningMessage(const Result& result);

    // The cycle that storing formula as the formula text of row of the works' other items
    // list (field 3) or fees list (field 3, the base) would close, as the message to show;
    // empty when there is none.
    static QString FindCycle(ConstructionWorks* works, const GeneralTableBase* table, int row,
                             const QString& formula);

    // The names (variables) a formula refers to, after input normalisation.
    static QStringList ReferencedNames(const QString& formula);
    // "计算公式存在循环引用：税金 → 其他项目合计 → 税金"
    static QString CycleMessage(const QStringList& names);
};
