// Loading a tender file into the project's terms, and exporting a shown list to a workbook
// through the table-layout description against writing the same cells straight with
// libxlsxwriter.
#include "BenchSupport.h"

#include "CJZZgclBusinessYN.h"
#include "TableLayout.h"
#include "TableLayoutExport.h"
#include "TenderDocument.h"
#include "TenderXmlWriter.h"

#include <QApplication>
#include <QFileInfo>
#include <QFont>
#include <QHeaderView>
#include <QStandardItemModel>
#include <QTableView>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <xlsxwriter.h>

namespace {

QTemporaryDir& dir()
{
    static QTemporaryDir d;
    return d;
}

// A project of `units` unit projects in ten single projects, and a tender file for it with
// 2,000 provisional materials per unit project.
struct TenderFixture
{
    std::unique_ptr<ProjectWorks> owned;
    ProjectWorks* project = nullptr;
    int index = -1;
    QString path;

    explicit TenderFixture(int units)
    {
        owned = std::make_unique<ProjectWorks>(5, QStringLiteral("基准工程"));
        ProTreeNode* root =
            owned->AddNode(nullptr, 1, ProTreeNode::WorksNode, QStringLiteral("基准工程"));
        TenderDocument d;
        int id = 1;
        for (int s = 0; s < 10 && d.unitProjectCount() < units; ++s) {
            const QString singleName = QStringLiteral("单项工程%1").arg(s);
            ProTreeNode* single =
                owned->AddNode(root, ++id, ProTreeNode::SingleProjectNode, singleName);
            TenderSingleProject ts;
            ts.id = QString::number(id);
            ts.name = singleName;
            for (int u = 0; u < (units + 9) / 10 && d.unitProjectCount() + ts.units.size() < units;
                 ++u) {
                const QString unitName = QStringLiteral("单位工程%1").arg(u);
                owned->AddNode(single, ++id, ProTreeNode::WorksNode, unitName);
                TenderUnitProject tu;
                tu.id = QStringLiteral("DW%1").arg(id);
                tu.name = unitName;
                for (int m = 0; m < 2000; ++m) {
                    TenderMaterial t;
                    t.code = QStringLiteral("ZG%1").arg(m, 5, 10, QLatin1Char('0'));
                    t.name = m % 3 ? QStringLiteral("商品混凝土") : QStringLiteral("钢筋");
                    t.spec = QStringLiteral("HRB400 Φ%1").arg(m % 40);
                    t.unit = QStringLiteral("t");
                    t.price = 4000 + m % 500;
                    t.origin = QStringLiteral("攀钢");
                    t.grade = QStringLiteral("一级");
                    tu.provisional << t;
                }
                ts.units << tu;
            }
            d.singles << ts;
        }
        path = dir().filePath(QStringLiteral("tender-%1.cjz").arg(units));
        QString error;
        TenderXmlWriter::WriteFile(path, d, false, &error);
        project = owned.get();
        index = DataManagement::getInstance()->AddProjectWorks(std::move(owned));
    }
    ~TenderFixture() { DataManagement::getInstance()->CloseProjectWorks(index); }
};

void BM_LoadTender(benchmark::State& state)
{
    TenderFixture fixture(int(state.range(0)));
    const QList<ProTreeNode*> nodes =
        DataManagement::getInstance()->GetProTreeNodeListInOrder(fixture.index);
    for (auto _ : state) {
        CJZZgclBusinessYN reader;
        CJZZgclBusinessYN::DwClMap materials;
        if (!reader.LoadDwgcZgclData(fixture.path, nodes, materials, true) || materials.isEmpty())
            state.SkipWithError("tender not loaded");
        benchmark::DoNotOptimize(materials);
    }
    state.counters["materials"] = double(state.range(0) * 2000);
    state.counters["MB"] = double(QFileInfo(fixture.path).size()) / (1 << 20);
}
BENCHMARK(BM_LoadTender)->Arg(2)->Arg(20)->Arg(200)->Unit(benchmark::kMillisecond);

// The tender list view's grid: nine text columns.
struct GridFixture
{
    QStandardItemModel model;
    QTableView view;
    explicit GridFixture(int rows) : model(rows, 9)
    {
        for (int r = 0; r < rows; ++r)
            for (int c = 0; c < 9; ++c) {
                auto* item = new QStandardItem(c == 0 ? QStringLiteral("  ZG%1").arg(r)
                                                      : QStringLiteral("材料%1-%2").arg(r).arg(c));
                item->setTextAlignment(c == 8 ? Qt::AlignRight | Qt::AlignVCenter
                                              : Qt::AlignLeft | Qt::AlignVCenter);
                model.setItem(r, c, item);
            }
        view.setFont(QFont(QStringLiteral("SimSun"), 9));
        view.setModel(&model);
    }
};

void BM_ExportThroughLayout(benchmark::State& state)
{
    GridFixture grid(int(state.range(0)));
    const QString path = dir().filePath(QStringLiteral("layout.xlsx"));
    for (auto _ : state) {
        QString error;
        if (!TableLayoutExport::Save(TableLayout::Describe(&grid.view), path, 1.0, &error))
            state.SkipWithError("export failed");
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_ExportThroughLayout)->Arg(500)->Arg(5000)->Arg(50000)->Unit(benchmark::kMillisecond);

// The description alone, the part of the export that writing straight does not have.
void BM_DescribeLayout(benchmark::State& state)
{
    GridFixture grid(int(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(TableLayout::Describe(&grid.view));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_DescribeLayout)->Arg(500)->Arg(5000)->Arg(50000)->Unit(benchmark::kMillisecond);

// The same cells, fonts, alignments, widths and heights, straight into libxlsxwriter. It writes
// in place: the export's move from a private folder into place (about half a millisecond) is
// counted against the export. Compare the cases each in a process of its own: in one process a
// case's time depends on the heap the cases before it left (docs/table-layout.md).
void BM_ExportStraight(benchmark::State& state)
{
    GridFixture grid(int(state.range(0)));
    const QByteArray path = dir().filePath(QStringLiteral("straight.xlsx")).toUtf8();
    const int rows = int(state.range(0));
    for (auto _ : state) {
        lxw_workbook* book = workbook_new(path.constData());
        lxw_worksheet* sheet = workbook_add_worksheet(book, "Sheet1");
        lxw_format* left = workbook_add_format(book);
        format_set_font_name(left, "SimSun");
        format_set_font_size(left, 9);
        format_set_align(left, LXW_ALIGN_LEFT);
        format_set_align(left, LXW_ALIGN_VERTICAL_CENTER);
        lxw_format* right = workbook_add_format(book);
        format_set_font_name(right, "SimSun");
        format_set_font_size(right, 9);
        format_set_align(right, LXW_ALIGN_RIGHT);
        format_set_align(right, LXW_ALIGN_VERTICAL_CENTER);
        for (int c = 0; c < 9; ++c) {
            worksheet_set_column(sheet, lxw_col_t(c), lxw_col_t(c), 13.57, nullptr);
            worksheet_write_string(sheet, 1, lxw_col_t(c),
                                   grid.model.headerData(c, Qt::Horizontal).toString().toUtf8(),
                                   left);
        }
        worksheet_set_row(sheet, 1, 17.25, nullptr);
        for (int r = 0; r < rows; ++r) {
            for (int c = 0; c < 9; ++c)
                worksheet_write_string(sheet, lxw_row_t(r + 2), lxw_col_t(c),
                                       grid.model.item(r, c)->text().toUtf8().constData(),
                                       c == 8 ? right : left);
            worksheet_set_row(sheet, lxw_row_t(r + 2), 22.5, nullptr);
        }
        if (workbook_close(book) != LXW_NO_ERROR)
            state.SkipWithError("libxlsxwriter failed");
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_ExportStraight)->Arg(500)->Arg(5000)->Arg(50000)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
