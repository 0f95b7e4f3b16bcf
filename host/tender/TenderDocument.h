#pragma once

#include <QString>
#include <QVector>

#include <optional>

// The contents of a tender data-exchange file (docs/tender-file.md), independent of how the
// file is written. Plain values: readers fill them, writers write them, the business layer
// turns them into project data.

// One provisional-price material (暂估材料) of a unit project.
struct TenderMaterial
{
    QString code; // tender code (招标编码)
    QString name;
    QString spec; // model (规格型号)
    QString unit;
    std::optional<double> price; // provisional unit price (暂估单价)
    QString origin;
    QString manufacturer;
    QString variety;
    QString grade; // quality grade (质量档次)
    QString remark;
    std::optional<double> quantity; // bid files carry quantities and amounts
    std::optional<double> amount;

    bool operator==(const TenderMaterial&) const = default;
};

// One material subject to evaluation (需评审材料) of the project.
struct TenderEvaluatedMaterial
{
    QString serial;
    QString code;
    QString name;
    QString spec;
    QString unit;
    QString origin;
    QString manufacturer;
    QString variety;
    QString grade;
    QString remark;
    std::optional<double> price;
    std::optional<double> quantity;
    std::optional<double> amount;

    bool operator==(const TenderEvaluatedMaterial&) const = default;
};

// Lists of materials grow by moving their bytes, not by copying each string.
Q_DECLARE_TYPEINFO(TenderMaterial, Q_MOVABLE_TYPE);
Q_DECLARE_TYPEINFO(TenderEvaluatedMaterial, Q_MOVABLE_TYPE);

struct TenderUnitProject
{
    QString id; // stable within the file, unique
    QString name;
    std::optional<double> provisionalTotal;
    QVector<TenderMaterial> provisional;

    bool operator==(const TenderUnitProject&) const = default;
};

Q_DECLARE_TYPEINFO(TenderUnitProject, Q_MOVABLE_TYPE);

// A single project (单项工程). Unit projects directly below the construction project sit in
// one with an empty id and name.
struct TenderSingleProject
{
    QString id;
    QString name;
    QVector<TenderUnitProject> units;

    bool operator==(const TenderSingleProject&) const = default;
};

Q_DECLARE_TYPEINFO(TenderSingleProject, Q_MOVABLE_TYPE);

struct TenderDocument
{
    // Document kinds: what the file was written for.
    static inline const QString KindTender = QStringLiteral("tender");         // 招投标
    static inline const QString KindCompletion = QStringLiteral("completion"); // 竣工
    static inline const QString KindFiling = QStringLiteral("filing");         // 备案
    static inline const QString CurrentVersion = QStringLiteral("1.0");

    QString version = CurrentVersion;
    QString kind = KindTender;
    // Header
    QString standard;
    QString projectName;
    QString tenderer;
    QString date; // yyyy-MM-dd
    QString tool;
    QString toolVersion;
    // Project tree
    QString projectId;
    QString projectTitle;
    std::optional<double> provisionalTotal;
    QVector<TenderSingleProject> singles;
    std::optional<double> evaluatedTotal;
    QVector<TenderEvaluatedMaterial> evaluated;

    bool operator==(const TenderDocument&) const = default;

    int unitProjectCount() const
    {
        int n = 0;
        for (const TenderSingleProject& s : singles)
            n += s.units.size();
        return n;
    }
};
