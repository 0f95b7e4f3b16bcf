#include "ModulePages.h"
#include "Screenshots.h"
#include "ScriptedSession.h"
#include "TestProject.h"

#include "ZgClQd/PopupDialog/DbZbZgClDialog.h"
#include "ZgClQd/PopupDialog/DbZbZgClModel.h"
#include "ZgClQd/PopupDialog/DbZbZgSyClDialog.h"
#include "ZgClQd/PopupDialog/DbZbZgSyClModel.h"
#include "ZgClQd/PopupDialog/ExhibitFZgClModel.h"
#include "ZgClQd/PopupDialog/TbZbZgClDialog.h"
#include "ZgClQd/ZgClQdSjWidget.h"
#include "ZgClQd/ZgClQdWidget.h"
#include "common/KeywordDelegate.h"

#include "BusinessFaultInjection.h"
#include "DbZbZgClItem.h"
#include "InteractionSeam.h"
#include "ProcExceptionNew.h"
#include "ZgClZsItem.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <QToolButton>
#include <QUndoStack>
#include <QtTest>

#include <stdexcept>

// The matching dialog over the provisional page: what it shows, every selection check with its
// message, pairing by hand, filtering, applying with the options, undo in one step, and a
// failed apply that leaves the project as it was.
class tst_DbZbZgClDialog : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestProject> p;
    ConstructionWorks* root = nullptr;

    static RURecordControl* undo() { return RURecordControl::GetInstance(); }
    static BaseDataItem* line(ConstructionWorks* unit, const QString& name, const QString& model,
                              const QString& u, double price, bool provisional)
    {
        return TestProject::row(
            unit->getRcjHzTable(), 1,
            {{3, name}, {4, model}, {5, u}, {6, price}, {7, price}, {9, 10.0}, {11, provisional}});
    }
    static ZgjClHzItem* tender(const QString& code, const QString& name, const QString& model,
                               const QString& u, double price)
    {
        auto* item = new ZgjClHzItem;
        item->loadValue(2, code);
        item->loadValue(3, name);
        item->loadValue(4, model);
        item->loadValue(5, u);
        item->loadValue(7, price);
        return item;
    }
    void typicalProject()
    {
        line(p->current, "C30商品混凝土", "", "m3", 480, false);
        line(p->current, "钢筋", "hrb400φ8", "吨", 4300, true);
        line(p->current, "水泥", "P.O42.5", "kg", 0.5, true);
        line(p->plain, "电线", "BV-2.5", "m", 2, false);
        ProjectWorks::ZbZgClMap map;
        map.insert({p->index, 3}, {tender("ZG001", "C30商品混凝土", "", "m3", 500),
                                   tender("ZG002", "钢筋", "HRB400 Φ8", "t", 4200),
                                   tender("ZG003", "水泥", "P.O42.5", "t", 520)});
        map.insert({p->index, 4}, {tender("ZG004", "电线", "BV－2.5", "m", 2.5)});
        QVERIFY(p->project->SetGcZbZgCl(77, map));
    }
    QList<QVariantList> snapshot() const
    {
        QList<QVariantList> all;
        for (ConstructionWorks* unit : {p->current, p->plain})
            for (const BaseDataItem* m : unit->getRcjHzTable()->items())
                all.append({m->getValue(7), m->getValue(10), m->getValue(11), m->getValue(18)});
        for (const BaseDataItem* m : root->getTenderInventory()->getZgjClHzTable()->items())
            all.append({m->getValue(3), m->getValue(7), m->getValue(9)});
        return all;
    }
    static int rowWith(DbZbZgClDialog& d, const QString& code)
    {
        for (int r = 0; r < d.model()->rowCount(); ++r)
            if (d.model()->index(r, 0).data().toString().trimmed() == code)
                return r;
        return -1;
    }
    static void focus(DbZbZgClDialog& d, int row)
    {
        d.grid()->setCurrentIndex(d.model()->index(row, 0));
    }
    static void pickUnitMaterial(DbZbZgClDialog& d, const QString& name)
    {
        d.tabs()->setCurrentIndex(1);
        for (int r = 0; r < d.unitModel()->rowCount(); ++r)
            if (d.unitModel()->index(r, 0).data().toString() == name)
                d.unitView()->setCurrentIndex(d.unitModel()->index(r, 0));
    }
    static QString lastText() { return InteractionSeam::lastShown().text; }

private slots:
    void init()
    {
        beginScriptedSession();
        p = std::make_unique<TestProject>();
        root = p->project->works(0, 1);
    }
    void cleanup()
    {
        endScriptedSession();
        p.reset();
    }

    void rowsStatesAndColours()
    {
        typicalProject();
        DbZbZgClDialog d(root);
        attachModelTesters(&d);
        QVERIFY(d.Load());
        QCOMPARE(d.counter()->text(), QStringLiteral("招标材料共4条，已对应3条，还需对应1条"));

        // Rows: heading, ZG001 exact, ZG002 normalised, ZG003 alone, 水泥/kg bid-only;
        // heading, ZG004 normalised (full-width minus).
        QCOMPARE(d.model()->rowCount(), 7);
        QCOMPARE(d.model()->index(0, 0).data().toString(), QStringLiteral("建筑与装饰工程"));
        auto background = [&](int row) {
            return d.model()->index(row, 1).data(Qt::BackgroundRole).value<QColor>();
        };
        QCOMPARE(background(1), QColor(215, 255, 215));
        QCOMPARE(background(2), QColor(215, 255, 215));
        QCOMPARE(background(3), QColor(255, 255, 215));
        QCOMPARE(background(4), QColor(255, 221, 221));
        QCOMPARE(d.model()->index(4, 0).data().toString().trimmed(),
                 QStringLiteral("缺少招标编码！"));
        QVERIFY(d.model()->index(2, 1).data(Qt::ToolTipRole).toString().contains("规范化"));
        QVERIFY(!d.model()->index(1, 1).data(Qt::ToolTipRole).isValid());
        QCOMPARE(d.model()->index(1, DbZbZgClModel::eZbZgDj).data().toString(),
                 QStringLiteral("500.00"));

        // Clicking a row of another unit project shows its materials in the second tab.
        d.slotDbZbZgClItemClicked(d.model()->index(6, 0));
        QCOMPARE(d.unitModel()->rowCount(), 1);
        QCOMPARE(d.allModel()->rowCount(), 4);
    }

    void filterNarrowsRowsAndColoursHits()
    {
        typicalProject();
        DbZbZgClDialog d(root);
        attachModelTesters(&d);
        QVERIFY(d.Load());
        d.nameEdit()->setText("钢");
        d.slotBtnSearch();
        QCOMPARE(d.model()->rowCount(), 2); // the heading and 钢筋
        QCOMPARE(d.allModel()->rowCount(), 1);
        saveShot(&d, "DbZbZgClDialog");
        d.nameEdit()->setText("");
        d.modelEdit()->setText("hrb");
        d.slotBtnSearch(); // case-insensitive
        QCOMPARE(d.model()->rowCount(), 2);
        d.modelEdit()->clear();
        d.slotBtnSearch();
        QCOMPARE(d.model()->rowCount(), 7);
        QCOMPARE(KeywordDelegate::Hits("HRB400φ8 hrb", "hrb"),
                 (QVector<QPair<int, int>>{{0, 3}, {9, 3}}));
        QVERIFY(KeywordDelegate::Hits("钢筋", "").isEmpty());
    }

    void selectionChecksAndTheirMessages()
    {
        typicalProject();
        DbZbZgClDialog d(root);
        QVERIFY(d.Load());
        const QString counter = d.counter()->text();
        d.slotBtnMakeApair();
        QCOMPARE(lastText(), QStringLiteral("请在招标暂估材料表中定位到单位工程或单位下的材料行!"));
        focus(d, 0);
        d.slotBtnMakeApair();
        QCOMPARE(lastText(), QStringLiteral("请选择有效的招标材料行!"));
        focus(d, 3);
        d.tabs()->setCurrentIndex(1);
        d.unitView()->setCurrentIndex(QModelIndex());
        d.slotBtnMakeApair();
        QCOMPARE(lastText(), QStringLiteral("请选中单位工程内材料行！"));
        // A material of another unit project in the second tab is refused.
        focus(d, 6);
        d.tabs()->setCurrentIndex(1);
        d.unitModel()->setMaterials({p->current->getRcjHzTable()->items().at(2)});
        d.unitView()->setCurrentIndex(d.unitModel()->index(0, 0));
        d.slotBtnMakeApair();
        QCOMPARE(lastText(), QStringLiteral("当前单位工程不包含该材料!"));
        focus(d, 0);
        d.slotBtnUnpair();
        QCOMPARE(lastText(), QStringLiteral("请选择包含投标材料的行!"));
        focus(d, 4); // bid-only
        d.slotBtnUnpair();
        QCOMPARE(lastText(), QStringLiteral("请选择招标材料行!"));
        d.grid()->setCurrentIndex(QModelIndex());
        d.slotDqDwClAndMatch();
        QCOMPARE(lastText(), QStringLiteral("请选择招标材料行!"));
        QCOMPARE(d.counter()->text(), counter);
        QVERIFY(!d.isModified());
        for (const auto& shown : InteractionSeam::shown())
            if (shown.kind == QLatin1String("information"))
                QCOMPARE(shown.title, QStringLiteral("操作提示"));
    }

    void pairByHandUnpairAndRepairWithCancel()
    {
        typicalProject();
        DbZbZgClDialog d(root);
        attachModelTesters(&d);
        QVERIFY(d.Load());
        focus(d, rowWith(d, "ZG003"));
        pickUnitMaterial(d, "水泥");
        d.slotBtnMakeApair();
        QCOMPARE(d.counter()->text(), QStringLiteral("招标材料共4条，已对应4条，还需对应0条"));
        QVERIFY(d.isModified());
        QCOMPARE(d.model()->rowCount(), 6); // the bid-only row went with the pair

        // Re-pairing a matched row asks; "取消" leaves both rows as they were.
        focus(d, rowWith(d, "ZG001"));
        pickUnitMaterial(d, "钢筋");
        InteractionSeam::pushAnswer(int(QMessageBox::Cancel));
        d.slotBtnMakeApair();
        QCOMPARE(lastText(), QStringLiteral("当前操作会取消当前招标材料与其投标材料原有的对应关系，"
                                            "与当前选中材料重新建立对应关系，确定执行吗?"));
        QCOMPARE(InteractionSeam::lastShown().buttons, QStringList({"确定", "取消"}));
        const int zg001 = rowWith(d, "ZG001");
        QCOMPARE(d.model()->index(zg001, DbZbZgClModel::eTbClMc).data().toString(),
                 QStringLiteral("C30商品混凝土"));
        InteractionSeam::pushAnswer(int(QMessageBox::Ok));
        focus(d, zg001);
        d.slotBtnMakeApair();
        QCOMPARE(d.model()->index(zg001, DbZbZgClModel::eTbClMc).data().toString(),
                 QStringLiteral("钢筋"));

        focus(d, rowWith(d, "ZG003"));
        d.slotBtnUnpair();
        QCOMPARE(d.counter()->text(), QStringLiteral("招标材料共4条，已对应3条，还需对应1条"));
        // Matching the unit project again puts every automatic pair back.
        focus(d, 0);
        d.slotDqDwClAndMatch();
        QCOMPARE(d.model()->index(rowWith(d, "ZG001"), DbZbZgClModel::eTbClMc).data().toString(),
                 QStringLiteral("C30商品混凝土"));
        // Next/previous unmatched row.
        focus(d, 0);
        d.nextButton()->click();
        QCOMPARE(d.grid()->currentIndex().row(), rowWith(d, "ZG003"));
    }

    void continueKeepsPairsAndNothingToChangeSkipsTheOptions()
    {
        typicalProject();
        {
            DbZbZgClDialog d(root);
            QVERIFY(d.Load());
            const QList<QVariantList> before = snapshot();
            InteractionSeam::setModalHook([](QDialog* dialog) {
                auto* options = qobject_cast<TbZbZgClDialog*>(dialog);
                QVERIFY(options);
                QVERIFY(options->box(0)->isEnabled() && options->box(1)->isEnabled() &&
                        options->box(2)->isEnabled());
            });
            InteractionSeam::pushAnswer(int(QDialog::Rejected)); // "继续"
            d.slotBtnAccept();
            QCOMPARE(d.result(), int(QDialog::Rejected));
            QCOMPARE(d.counter()->text(), QStringLiteral("招标材料共4条，已对应3条，还需对应1条"));
            QCOMPARE(snapshot(), before);
        }
        // Nothing differs: no options dialog, applied at once.
        InteractionSeam::clear();
        InteractionSeam::setModalHook(nullptr);
        ProjectWorks::ZbZgClMap map;
        map.insert({p->index, 4}, {tender("ZG004", "电线", "BV-2.5", "m", 2)});
        QVERIFY(p->project->SetGcZbZgCl(77, map));
        p->current->getRcjHzTable()->items().at(1)->loadValue(11, false);
        p->current->getRcjHzTable()->items().at(2)->loadValue(11, false);
        p->plain->getRcjHzTable()->items().at(0)->loadValue(11, true);
        DbZbZgClDialog d(root);
        QVERIFY(d.Load());
        d.slotBtnAccept();
        QCOMPARE(d.result(), int(QDialog::Accepted));
        for (const auto& shown : InteractionSeam::shown())
            QVERIFY(shown.text != QStringLiteral("TbZbZgClDialog"));
        QCOMPARE(p->plain->getRcjHzTable()->items().at(0)->getValue(18).toString(),
                 QStringLiteral("ZG004"));
    }

    void thePageRunsTheDialogAsOneUndoStep()
    {
        typicalProject();
        ModulePage<ZgClQdWidget, ZgClQdSjWidget> page(p->root);
        const QList<QVariantList> before = snapshot();
        const int steps = undo()->undoStack()->count();
        QStringList progress;
        InteractionSeam::setShownHook([&](const InteractionSeam::Shown& shown) {
            if (shown.kind == QLatin1String("progress"))
                progress << shown.text;
        });
        InteractionSeam::setModalHook([&](QDialog* dialog) {
            if (auto* options = qobject_cast<TbZbZgClDialog*>(dialog)) {
                options->box(2)->setChecked(false); // keep the unasked provisional ones
                saveShot(options, "TbZbZgClDialog");
                return;
            }
            auto* d = qobject_cast<DbZbZgClDialog*>(dialog);
            QVERIFY(d);
            attachModelTesters(d);
            QCOMPARE(d->counter()->text(), QStringLiteral("招标材料共4条，已对应3条，还需对应1条"));
            d->slotBtnAccept();
        });
        InteractionSeam::pushAnswer(int(QDialog::Accepted)); // options: "保存"
        InteractionSeam::pushAnswer(int(QDialog::Accepted)); // the dialog itself
        page.grid()->slotAcDyZlTbZgCl();
        InteractionSeam::setShownHook(nullptr);
        QVERIFY(RecentExceptionReports().isEmpty());
        QVERIFY(progress.contains(QStringLiteral("正在汇总和匹配所有工程材料，请等待")));
        QVERIFY(progress.contains(QStringLiteral("正在应用招标暂估材料修改，请等待")));
        QCOMPARE(undo()->undoStack()->count(), steps + 1);
        QCOMPARE(undo()->undoStack()->undoText(), QStringLiteral("对应整理投标暂估材料"));
        const auto& unit3 = p->current->getRcjHzTable()->items();
        QCOMPARE(unit3.at(0)->getDouble(7), 500.0);
        QVERIFY(unit3.at(0)->getValue(11).toBool());
        QCOMPARE(unit3.at(1)->getValue(18).toString(), QStringLiteral("ZG002"));
        QVERIFY(unit3.at(2)->getValue(11).toBool()); // not cancelled: the box was cleared
        // The provisional list is rebuilt from the unit projects.
        QStringList names;
        for (const BaseDataItem* m : root->getTenderInventory()->getZgjClHzTable()->items())
            if (m->getKind() == 1 && !m->getValue(3).toString().isEmpty())
                names << m->getValue(3).toString();
        QVERIFY(names.contains(QStringLiteral("C30商品混凝土")));
        QVERIFY(names.contains(QStringLiteral("电线")));

        QVERIFY(undo()->Undo());
        QCOMPARE(snapshot(), before);
    }

    void noTenderListOpensNothing()
    {
        ModulePage<ZgClQdWidget, ZgClQdSjWidget> page(p->root);
        const int steps = undo()->undoStack()->count();
        page.grid()->slotAcDyZlTbZgCl();
        QCOMPARE(InteractionSeam::lastShown().kind, QStringLiteral("information"));
        QVERIFY(lastText().contains(QStringLiteral("没有招标文件约定的暂估清单")));
        for (const auto& shown : InteractionSeam::shown())
            QVERIFY(shown.kind != QLatin1String("modal"));
        QCOMPARE(undo()->undoStack()->count(), steps);
    }

    void aFailedApplyIsReportedAndTakenBackWhole()
    {
        typicalProject();
        DbZbZgClDialog d(root);
        QVERIFY(d.Load());
        const QList<QVariantList> before = snapshot();
        InteractionSeam::pushAnswer(int(QDialog::Accepted));
        InteractionSeam::setModalHook([](QDialog*) {
            // The first business call of applying writes, the second throws.
            BusinessFaultInjection::setFault([] {
                BusinessFaultInjection::setFault([] { throw std::runtime_error("写入失败"); });
            });
        });
        d.slotBtnAccept();
        QCOMPARE(RecentExceptionReports().size(), 1);
        QCOMPARE(snapshot(), before);
        QVERIFY(d.result() != QDialog::Accepted);
    }

    void closingModifiedAsks()
    {
        typicalProject();
        DbZbZgClDialog d(root);
        QVERIFY(d.Load());
        focus(d, rowWith(d, "ZG002"));
        d.slotBtnUnpair();
        const QList<QVariantList> before = snapshot();
        InteractionSeam::pushAnswer(int(QMessageBox::No));
        d.slotBtnReject();
        QCOMPARE(InteractionSeam::lastShown().text,
                 QStringLiteral("暂估材料数据已经修改，是否保存？"));
        QCOMPARE(InteractionSeam::lastShown().title, QStringLiteral("操作提示"));
        QCOMPARE(d.result(), int(QDialog::Rejected));
        QCOMPARE(snapshot(), before);
    }

    void theProjectWideDialog()
    {
        typicalProject();
        DbZbZgSyClDialog all(root);
        attachModelTesters(&all);
        QVERIFY(all.Load());
        QCOMPARE(all.counter()->text(), QStringLiteral("招标材料共4条，已对应3条，还需对应1条"));
        all.grid()->setCurrentIndex(all.model()->index(2, 0)); // ZG003, unmatched
        all.slotBtnUnpair();
        QCOMPARE(lastText(), QStringLiteral("当前行已无对应投标材料!"));

        // Accepted inside the per-unit dialog, its pairs come over.
        DbZbZgClDialog d(root);
        QVERIFY(d.Load());
        focus(d, rowWith(d, "ZG002"));
        d.slotBtnUnpair();
        InteractionSeam::setModalHook([](QDialog* dialog) {
            if (auto* sy = qobject_cast<DbZbZgSyClDialog*>(dialog))
                sy->slotAutoMatchBtnClicked();
        });
        InteractionSeam::pushAnswer(int(QDialog::Accepted));
        d.slotHzClAndMatch();
        QCOMPARE(d.counter()->text(), QStringLiteral("招标材料共4条，已对应3条，还需对应1条"));
        QVERIFY(d.isModified());
    }
};

QTEST_MAIN(tst_DbZbZgClDialog)
#include "tst_DbZbZgClDialog.moc"
