#include "TenderExchange.h"

#include "ProjectWorks.h"
#include "TenderDocument.h"
#include "TenderXmlWriter.h"

#include <QCoreApplication>
#include <QDate>

#include <cmath>

namespace {

void put(RowFields& row, int field, const QString& text)
{
    if (!text.isEmpty())
        row.setText(field, text);
}

void put(RowFields& row, int field, const std::optional<double>& value)
{
    if (value)
        row.setDouble(field, *value);
}

// Texts go as they are: the file gives back what the list holds.
QString text(const BaseDataItem* row, int field)
{
    return row->getValue(field).toString();
}

std::optional<double> number(const BaseDataItem* row, int field)
{
    const QVariant v = row->getValue(field);
    if (!v.isValid() || (v.userType() == QMetaType::QString && v.toString().trimmed().isEmpty()))
        return std::nullopt;
    bool ok = false;
    const double d = v.toDouble(&ok);
    return ok && std::isfinite(d) ? std::optional<double>(d) : std::nullopt;
}

bool isMaterial(const BaseDataItem* row)
{
    return row && row->getKind() == 1 && !text(row, 3).trimmed().isEmpty();
}

double cents(double value)
{
    return std::round(value * 100.0) / 100.0;
}

// The fields the provisional and the evaluated rows share (the price goes in the adjusted
// price, field 7).
// From the last field down, so that a row's fields grow once, not field by field; straight
// into the field storage, without a QVariant a field (a tender brings hundreds of thousands).
template <class Material> void putMaterialFields(const Material& m, RowFields& row)
{
    put(row, 15, m.remark);
    put(row, 14, m.grade);
    put(row, 13, m.manufacturer);
    put(row, 12, m.origin);
    put(row, 10, m.amount);
    put(row, 9, m.quantity);
    put(row, 8, m.variety);
    put(row, 7, m.price);
    put(row, 5, m.unit);
    put(row, 4, m.spec);
    put(row, 3, m.name);
    put(row, 2, m.code);
}

template <class Material> void readMaterialFields(const BaseDataItem* row, Material& m)
{
    m.code = text(row, 2);
    m.name = text(row, 3);
    m.spec = text(row, 4);
    m.unit = text(row, 5);
    m.price = number(row, 7);
    m.variety = text(row, 8);
    m.quantity = number(row, 9);
    m.amount = number(row, 10);
    m.origin = text(row, 12);
    m.manufacturer = text(row, 13);
    m.grade = text(row, 14);
    m.remark = text(row, 15);
}

} // namespace

void TenderExchange::ToMaterialRow(const TenderMaterial& m, int serial, BaseDataItem* row)
{
    row->loadState(1, false, 0, QString());
    RowFields fields = row->rawValues();
    putMaterialFields(m, fields);
    put(fields, 6, m.price);
    fields.setInteger(1, serial);
    row->loadValues(std::move(fields));
}

TenderMaterial TenderExchange::FromMaterialRow(const BaseDataItem* row)
{
    TenderMaterial m;
    readMaterialFields(row, m);
    return m;
}

void TenderExchange::ToEvaluatedRow(const TenderEvaluatedMaterial& m, BaseDataItem* row)
{
    row->loadState(1, false, 0, QString());
    RowFields fields = row->rawValues();
    putMaterialFields(m, fields);
    put(fields, 1, m.serial);
    row->loadValues(std::move(fields));
}

TenderEvaluatedMaterial TenderExchange::FromEvaluatedRow(const BaseDataItem* row)
{
    TenderEvaluatedMaterial m;
    m.serial = text(row, 1);
    readMaterialFields(row, m);
    return m;
}

TenderDocument TenderExchange::FromProject(ProjectWorks* project, const QString& kind)
{
    TenderDocument d;
    d.kind = kind;
    d.standard = QStringLiteral("Tarvo招投标数据交换文件");
    d.projectName = project->name();
    d.date = QDate::currentDate().toString(Qt::ISODate);
    d.tool = QStringLiteral("Tarvo");
    d.toolVersion = QCoreApplication::applicationVersion();
    d.projectId = QString::number(project->GetSjId());
    d.projectTitle = project->name();
    ProTreeNode* root = project->root();
    if (!root)
        return d;
    double projectTotal = 0;
    auto addUnit = [&](TenderSingleProject& single, ProTreeNode* node) {
        TenderUnitProject unit;
        unit.id = QString::number(ProTreeNode::Id(node));
        unit.name = ProTreeNode::Name(node);
        double total = 0;
        if (ConstructionWorks* works = project->works(0, ProTreeNode::Id(node))) {
            for (const BaseDataItem* row :
                 works->getTenderInventory()->getZgjClHzTable()->items()) {
                if (!isMaterial(row))
                    continue;
                const TenderMaterial m = FromMaterialRow(row);
                total += m.amount.value_or(0);
                unit.provisional.append(m);
            }
        }
        unit.provisionalTotal = cents(total);
        projectTotal += total;
        single.units.append(std::move(unit));
    };
    for (ProTreeNode* child : root->children()) {
        if (ProTreeNode::Types(child) == ProTreeNode::SingleProjectNode) {
            TenderSingleProject single;
            single.id = QString::number(ProTreeNode::Id(child));
            single.name = ProTreeNode::Name(child);
            for (ProTreeNode* unit : child->children())
                if (unit->isUnitProject())
                    addUnit(single, unit);
            d.singles.append(std::move(single));
        } else if (child->isUnitProject()) {
            if (d.singles.isEmpty() || !d.singles.last().id.isEmpty())
                d.singles.append(TenderSingleProject());
            addUnit(d.singles.last(), child);
        }
    }
    d.provisionalTotal = cents(projectTotal);
    if (ConstructionWorks* works = project->GetConstructionWorksNode()) {
        double total = 0;
        for (const BaseDataItem* row :
             works->getTenderInventory()->getSjCqXPsClHzTable()->items()) {
            if (!isMaterial(row))
                continue;
            const TenderEvaluatedMaterial m = FromEvaluatedRow(row);
            total += m.amount.value_or(0);
            d.evaluated.append(m);
        }
        d.evaluatedTotal = cents(total);
    }
    return d;
}

bool TenderExchange::ExportProject(ProjectWorks* project, const QString& path, const QString& kind,
                                   QString* error)
{
    const TenderDocument d = FromProject(project, kind);
    return TenderXmlWriter::WriteFile(path, d, kind == TenderDocument::KindFiling, error);
}
