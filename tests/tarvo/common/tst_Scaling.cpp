#include "TestProject.h"

#include "HostIds.h"
#include "MaterialGridRules.h"
#include "ProjectFile.h"
#include "UnitProjectCalc.h"
#include "VXParseAlg.h"
#include "ZbrClGzfQd/ZbrClGzfQdWidget.h"
#include "ZbrClGzfQdBusiness.h"
#include "common/BillModel.h"
#include "common/BillSjWidget.h"
#include "common/MaterialSjWidget.h"
#include "zTableView.h"

#include <QPixmap>
#include <QTemporaryDir>
#include <QtTest>

#include <cmath>
#include <ctime>
#include <functional>

// Growth, not time: each main operation runs at n and 10n rows, and fails when it grows faster
// than n log n (with three times the room, for noise). Times are CPU time of this thread, the
// least of five runs, so that other work on the machine hardly moves them.
class tst_Scaling : public QObject
{
    Q_OBJECT

private:
    static constexpr int Small = 2000;

    // CPU seconds of this thread.
    static double cpuNow()
    {
        timespec t{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
        return double(t.tv_sec) + double(t.tv_nsec) / 1e9;
    }

    // One run: prepares what the operation needs (untimed) and returns the timed part.
    using Run = std::function<std::function<void()>(int rows)>;

    static double least(const Run& prepare, int rows)
    {
        double best = 1e9;
        for (int i = 0; i < 5; ++i) {
            std::function<void()> op = prepare(rows);
            const double start = cpuNow();
            op();
            best = qMin(best, cpuNow() - start);
        }
        return best;
    }

    // `limit`, when given, is the ratio allowed instead (an operation that must not grow
    // with the rows at all).
    static void checkGrowth(const char* what, const Run& prepare, double limit = 0)
    {
        const double small = qMax(least(prepare, Small), 50e-6); // below that, only noise
        const double large = least(prepare, Small * 10);
        const double nLogN = 10.0 * std::log(10.0 * Small) / std::log(double(Small));
        const double ratio = large / small;
        const QByteArray message = QByteArray(what) + ": " + QByteArray::number(small * 1e3) +
                                   " ms at " + QByteArray::number(Small) + " rows, " +
                                   QByteArray::number(large * 1e3) + " ms at ten times as many";
        qInfo("%s", message.constData());
        QVERIFY2(ratio <= (limit > 0 ? limit : 3 * nLogN), message.constData());
    }

    // A materials list of `rows` rows and its total row, every third row with its own height,
    // the middle half in the block.
    static ZbrClGzfQdTable* fillList(TestProject& p, int rows)
    {
        ZbrClGzfQdTable* list = p.current->getTenderInventory()->getZbrClGzfQdTable();
        for (int i = 0; i <= rows; ++i) {
            BaseDataItem* item = TestProject::row(list, i < rows ? 1 : 2,
                                                  {{1, i + 1},
                                                   {3, QStringLiteral("材料%1").arg(i)},
                                                   {7, double((i * 7919) % 10007)},
                                                   {9, 2.0}});
            item->loadState(item->getKind(), i >= rows / 4 && i < rows * 3 / 4, i % 3 ? 0 : 30,
                            QString());
        }
        return list;
    }

    static QVariant node(TestProject& p, int id)
    {
        return QVariant::fromValue(
            DataManagement::getInstance()->GetProTreeNodeByLocalId(p.index, id));
    }

    // Undo and redo of one bulk command over the list.
    static void checkUndo(const char* what, const std::function<void(GeneralTableBase*)>& command)
    {
        std::unique_ptr<TestProject> p;
        checkGrowth(what, [&](int rows) {
            p.reset(); // the last run's project goes before the next is made
            RURecordControl::GetInstance()->ForgetHistory();
            p = std::make_unique<TestProject>();
            GeneralTableBase* list = fillList(*p, rows);
            RURecordControl::GetInstance()->BeginRecord();
            command(list);
            RURecordControl::GetInstance()->EndRecord(
                OperatingUIInfo(77, 0, 3, ZbrClGzfQdTable::Type, 8, QStringLiteral("批量")));
            return std::function<void()>([] {
                RURecordControl::GetInstance()->Undo();
                RURecordControl::GetInstance()->Redo();
            });
        });
        RURecordControl::GetInstance()->ForgetHistory();
    }

private slots:
    void undoOfBulkCommands()
    {
        checkUndo("undo clear",
                  [](GeneralTableBase* list) { MaterialGridRules::clearAllRows(list); });
        checkUndo("undo delete block", [](GeneralTableBase* list) {
            const QList<int> rows = MaterialGridRules::blockRows(list);
            for (auto it = rows.crbegin(); it != rows.crend(); ++it)
                list->BaseDataItemRemoveAt(*it);
        });
        checkUndo("undo keep N", [](GeneralTableBase* list) {
            MaterialGridRules::keepFirstRows(list, list->count() / 10);
        });
        checkUndo("undo sort", [](GeneralTableBase* list) {
            list->SetItemOrder(
                MaterialGridRules::sortedOrder(list->items(), MaterialGridRules::ByAmount));
        });
    }

    void pageWithRowHeights()
    {
        std::unique_ptr<TestProject> p;
        std::unique_ptr<ZbrClGzfQdWidget> page;
        checkGrowth("page open and refresh", [&](int rows) {
            page.reset();
            p.reset();
            p = std::make_unique<TestProject>();
            // Calculated, as opening a project leaves it: an edit then moves its row and
            // the total by the difference, whatever the length of the list.
            UnitProjectCalc::RecalculateOwner(fillList(*p, rows));
            page = std::make_unique<ZbrClGzfQdWidget>();
            page->resize(1000, 600);
            return std::function<void()>([&] {
                QVariant unit = node(*p, 3);
                page->ProcMsg(MsgId::NodeClicked, &unit);
                page->ProcMsg(MsgId::RefreshPages, nullptr);
                QCOMPARE(page->grab().isNull(), false);
            });
        });
    }

    // "删除定义块内所有行" on a page: the middle half of the list goes in one command.
    void blockDelete()
    {
        std::unique_ptr<TestProject> p;
        std::unique_ptr<ZbrClGzfQdWidget> page;
        checkGrowth("block delete", [&](int rows) {
            page.reset();
            p.reset();
            RURecordControl::GetInstance()->ForgetHistory();
            p = std::make_unique<TestProject>();
            GeneralTableBase* list = fillList(*p, rows);
            page = std::make_unique<ZbrClGzfQdWidget>();
            QVariant unit = node(*p, 3);
            page->ProcMsg(MsgId::NodeClicked, &unit);
            return std::function<void()>([&, list, rows] {
                static_cast<MaterialSjWidget*>(page->sjWidget())->DeleteBlockRows();
                QCOMPARE(list->count(), rows + 1 - rows / 2);
            });
        });
        page.reset();
        p.reset();
        RURecordControl::GetInstance()->ForgetHistory();
    }

    void sortEditAndSummary()
    {
        std::unique_ptr<TestProject> p;
        checkGrowth("sort by amount", [&](int rows) {
            p.reset();
            p = std::make_unique<TestProject>();
            GeneralTableBase* list = fillList(*p, rows);
            return std::function<void()>([list] {
                QVERIFY(!MaterialGridRules::sortedOrder(list->items(), MaterialGridRules::ByAmount)
                             .isEmpty());
            });
        });
        std::unique_ptr<ZbrClGzfQdWidget> page;
        checkGrowth(
            "cell edit",
            [&](int rows) {
                page.reset();
                p.reset();
                RURecordControl::GetInstance()->ForgetHistory();
                p = std::make_unique<TestProject>();
                // Calculated, as opening a project leaves it: an edit then moves its row and
                // the total by the difference, whatever the length of the list.
                UnitProjectCalc::RecalculateOwner(fillList(*p, rows));
                page = std::make_unique<ZbrClGzfQdWidget>();
                QVariant unit = node(*p, 3);
                page->ProcMsg(MsgId::NodeClicked, &unit);
                return std::function<void()>([&, rows] {
                    auto* grid = static_cast<BillSjWidget*>(page->sjWidget());
                    const QModelIndex cell =
                        grid->model()->index(rows / 2, grid->view()->columnOfField(7));
                    QVERIFY(grid->model()->setData(cell, QStringLiteral("123"), Qt::EditRole));
                });
            },
            4); // linear would be 10
        page.reset();
        checkGrowth("summary", [&](int rows) {
            p.reset();
            RURecordControl::GetInstance()->ForgetHistory();
            p = std::make_unique<TestProject>();
            for (ConstructionWorks* unit : {p->current, p->plain})
                for (int i = 0; i < rows / 2; ++i)
                    TestProject::row(unit->getRcjHzTable(), 0,
                                     {{3, QStringLiteral("材料%1").arg(i * 3 % rows)},
                                      {5, QStringLiteral("t")},
                                      {7, 100.0},
                                      {9, 1.5},
                                      {11, true}});
            ConstructionWorks* root = p->project->works(0, 1);
            return std::function<void()>(
                [root] { ZbrClGzfQdBusiness::HzSyClToZbrCl(root, nullptr); });
        });
        p.reset();
        RURecordControl::GetInstance()->ForgetHistory();
    }

    void formulasAndProjectFile()
    {
        QStringList names;
        QHash<QString, double> vars;
        for (int v = 0; v < 200; ++v) {
            names << QStringLiteral("费用变量%1").arg(v);
            vars.insert(names.last(), v);
        }
        checkGrowth("formulas", [&](int count) {
            QStringList formulas;
            for (int i = 0; i < count; ++i)
                formulas << QStringLiteral("%1*%2/100+%3")
                                .arg(names.at(i % 200))
                                .arg(i % 1000)
                                .arg(names.at(i * 7 % 200));
            return std::function<void()>([formulas, &vars] {
                for (const QString& text : formulas) {
                    double result = 0;
                    QString error;
                    QVERIFY(VXParseAlg::getInstance()->ExpCalc(text, vars, result, error));
                }
            });
        });
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("scale.tarvo"));
        std::unique_ptr<TestProject> p;
        checkGrowth("project save and open", [&](int rows) {
            p.reset();
            p = std::make_unique<TestProject>();
            fillList(*p, rows);
            return std::function<void()>([&] {
                QString error;
                QVERIFY2(ProjectFile::Save(p->project, path, &error), qPrintable(error));
                QVERIFY2(ProjectFile::Open(path, &error), qPrintable(error));
            });
        });
    }
};

QTEST_MAIN(tst_Scaling)
#include "tst_Scaling.moc"
