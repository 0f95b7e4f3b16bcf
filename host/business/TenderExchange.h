#pragma once

#include <QString>

class BaseDataItem;
class ProjectWorks;
struct TenderDocument;
struct TenderEvaluatedMaterial;
struct TenderMaterial;

// Between tender documents and project data: material rows (fields of the provisional and
// evaluated lists) and the project as a whole, written out as a tender file.
class TenderExchange
{
public:
    // Fields: 1 serial, 2 tender code, 3 name, 4 model (规格型号), 5 unit, 6 and 7 the price,
    // 8 variety, 9 quantity, 10 amount, 12 origin, 13 manufacturer, 14 quality grade, 15
    // remark. Loaded raw (never journalled): the rows are not in a table yet.
    static void ToMaterialRow(const TenderMaterial& material, int serial, BaseDataItem* row);
    static TenderMaterial FromMaterialRow(const BaseDataItem* row);
    static void ToEvaluatedRow(const TenderEvaluatedMaterial& material, BaseDataItem* row);
    static TenderEvaluatedMaterial FromEvaluatedRow(const BaseDataItem* row);

    // The project as a tender document of a kind (TenderDocument::KindTender, ...): the
    // provisional list of every unit project and the project's evaluated-materials list,
    // with their totals.
    static TenderDocument FromProject(ProjectWorks* project, const QString& kind);
    // Writes the project; filing documents are written gzip-compressed.
    static bool ExportProject(ProjectWorks* project, const QString& path, const QString& kind,
                              QString* error);
};
