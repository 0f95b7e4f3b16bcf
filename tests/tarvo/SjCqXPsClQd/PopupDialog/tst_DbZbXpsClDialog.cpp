#include "ModulePages.h"
#include "Screenshots.h"
#include "ScriptedSession.h"
#include "TestProject.h"

#include "SjCqXPsClQd/PopupDialog/DbZbXPsClModel.h"
#include "SjCqXPsClQd/PopupDialog/DbZbXpsClDialog.h"
#include "SjCqXPsClQd/PopupDialog/ExhibitXpsClModel.h"
#include "SjCqXPsClQd/PopupDialog/TbZbXpsClDialog.h"
#include "SjCqXPsClQd/SjCqXPsClSjWidget.h"
#include "SjCqXPsClQd/SjCqXPsClWidget.h"

#include "BusinessFaultInjection.h"
#include "DbZbXpsClItem.h"
#include "InteractionSeam.h"
#include "ProcExceptionNew.h"
#include "SampleProject.h"
#include "SjCqXPsClBusiness.h"

#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QTableView>
#include <QTemporaryDir>
#include <QToolButton>
#include <QUndoStack>
#include <QtTest>

#include <stdexcept>

// The comparison of the bid's evaluated materials with the tender's list: what it shows,
// pairing and unpairing with their messages, the loads, applying with each option and undo in
// one step, and a failed apply that leaves the project as it was.
class tst_DbZbXpsClDialog : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestProject> p;
    ConstructionWorks* root = nullptr;

    static RURecordControl* undo() { return RURecordControl::GetInstance(); }
    SjCqXPsClTable* list() const { return root->getTenderInventory()->getSjCqXPsClHzTable(); }

    static BaseDataItem* line(ConstructionWorks* unit, const QString& name, const QString& model,
                              const QString& u, bool evaluated)
    {
        return TestProject::row(
            unit->getRcjHzTable(), 1,
            {{3, name}, {4, model}, {5, u}, {7, 100.0}, {9, 2.0}, {16, evaluated}});
    }
    static SjCqXPsClItem* tender(int serial, const QString& code, const QString& name,
                                 const QString& model, const QString& u)
    {
        auto* item = new SjCqXPsClItem;
        item->loadState(1, false, 0, QString());
        item->loadValue(1, QString::number(serial));
        item->loadValue(2, code);
        item->loadValue(3, name);
        item->loadValue(4, model);
        item->loadValue(5, u);
        return item;
    }
    // Evaluated in the bid: C30 (both units, flagged in one), 水泥 (no tender material) and
    // 电线 (the tender spells its model with a full-width dash). 钢筋 and 砂 are not
    // evaluated; the tender wants 钢筋 (spelt otherwise) and 玻璃, which the bid lacks.
    void typicalProject()
    {
        line(p->current, "C30商品混凝土", "", "m3", true);
        line(p->current, "钢筋", "HRB400 Φ8", "t", false);
        line(p->current, "水泥", "P.O42.5", "kg", true);
        line(p->current, "砂", "中砂", "m3", false);
        line(p->plain, "电线", "BV-2.5", "m", true);
        line(p->plain, "C30商品混凝土", "", "m3", false);
        SjCqXPsClBusiness::HzSjCqXPsCl(root, nullptr);
        QList<SjCqXPsClItem*> zb = {tender(1, "XP001", "C30商品混凝土", "", "m3"),
                                    tender(2, "XP002", "钢筋", "hrb400φ8", "吨"),
                                    tender(3, "XP003", "电线", "BV－2.5", "m"),
                                    tender(4, "XP004", "玻璃", "5mm", "m2")};
        QVERIFY(p->project->SetGcZbXPsCl(77, zb));
        undo()->ForgetHistory();
    }
    // Everything applying may touch: the unit projects' flags and codes, the list's rows.
    QList<QVariantList> snapshot() const
    {
        QList<QVariantList> all;
        for (ConstructionWorks* unit : {p->current, p->plain})
            for (const BaseDataItem* m : unit->getRcjHzTable()->items())
                all.append({m->getValue(3), m->getValue(16), m->getValue(19)});
        for (const BaseDataItem* m : list()->items())
            all.append({m->getKind(), m->getValue(1), m->getValue(2), m->getValue(3),
                        m->getValue(4), m->getValue(5), m->getValue(7), m->getValue(9),
                        m->getValue(10)});
        return all;
    }
    const BaseDataItem* listed(const QString& name) const
    {
        for (const BaseDataItem* m : list()->items())
            if (m->getKind() == 1 && m->getValue(3).toString() == name)
                return m;
        return nullptr;
    }
    static int rowWith(DbZbXpsClDialog& d, const QString& text)
    {
        for (int r = 0; r < d.model()->rowCount(); ++r)
            for (int c = 1; c < d.model()->columnCount(); ++c)
                if (d.model()->index(r, c).data().toString().trimmed() == text)
                    return r;
        return -1;
    }
    static void focus(DbZbXpsClDialog& d, const QString& text)
    {
        d.grid()->setCurrentIndex(d.model()->index(rowWith(d, text), 0));
    }
    static void pick(DbZbXpsClDialog& d, const QString& name)
    {
        for (int r = 0; r < d.allModel()->rowCount(); ++r)
            if (d.allModel()->index(r, 0).data().toString() == name)
                d.allView()->setCurrentIndex(d.allModel()->index(r, 0));
    }
    static const DbZbXpsClItem* recordOf(DbZbXpsClDialog& d, const QString& code)
    {
        for (const DbZbXpsClItem* r : d.records())
            if (r->GetZbBm() == code)
                return r;
        return nullptr;
    }
    static QString lastText() { return InteractionSeam::lastShown().text; }
    static bool optionsShown()
    {
        for (const auto& shown : InteractionSeam::shown())
            if (shown.kind == QLatin1String("modal") &&
                shown.text == QLatin1String("TbZbXpsClDialog"))
                return true;
        return false;
    }

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
        DbZbXpsClDialog d(root);
        attachModelTesters(&d);
        QVERIFY(d.Load());
        // The bid offers its three evaluated materials; C30 pairs exactly, 电线 only by the
        // normalised model; 水泥 is evaluated without a tender material.
        QCOMPARE(d.allModel()->rowCount(), 3);
        QCOMPARE(d.counter()->text(), QStringLiteral("招标材料共4条，已对应2条，还需对应2条"));
        QCOMPARE(d.model()->rowCount(), 5);
        QCOMPARE(recordOf(d, "XP001")->GetState(), int(DbZbZgClItem::Matched));
        QCOMPARE(recordOf(d, "XP003")->GetState(), int(DbZbZgClItem::MatchedByNorm));
        QCOMPARE(recordOf(d, "XP002")->GetState(), int(DbZbZgClItem::ZbOnly));
        const int c30 = rowWith(d, "XP001");
        QCOMPARE(d.model()->index(c30, 0).data().toString(), QString::number(c30 + 1));
        QCOMPARE(d.model()->index(c30, 5).data().toString(), QStringLiteral("C30商品混凝土"));
        QCOMPARE(d.model()->index(c30, 0).data(Qt::BackgroundRole).value<QColor>(),
                 QColor(215, 255, 215));
        QCOMPARE(d.model()->index(rowWith(d, "XP004"), 2).data(Qt::BackgroundRole).value<QColor>(),
                 QColor(255, 255, 215));
        const int cement = rowWith(d, "水泥");
        QVERIFY(d.model()->index(cement, 1).data().toString().isEmpty());
        QCOMPARE(d.model()->index(cement, 5).data(Qt::BackgroundRole).value<QColor>(),
                 QColor(255, 221, 221));
        QCOMPARE(d.model()->index(cement, 4).data(Qt::TextAlignmentRole).toInt(),
                 int(Qt::AlignHCenter | Qt::AlignVCenter));
        QVERIFY(!d.isModified());
    }

    void summariseOffersEveryMaterial()
    {
        typicalProject();
        DbZbXpsClDialog d(root);
        attachModelTesters(&d);
        QVERIFY(d.Load());
        d.slotHzClAndMatch();
        QVERIFY(RecentExceptionReports().isEmpty());
        QCOMPARE(d.allModel()->rowCount(), 5); // C30 once over both unit projects
        QCOMPARE(d.counter()->text(), QStringLiteral("招标材料共4条，已对应3条，还需对应1条"));
        // 钢筋 / HRB400 Φ8 / t is the tender's 钢筋 / hrb400φ8 / 吨.
        QCOMPARE(recordOf(d, "XP002")->GetState(), int(DbZbZgClItem::MatchedByNorm));
        QVERIFY(d.isModified());
        // 砂 is not evaluated: offered, but not a bid-only row.
        QCOMPARE(rowWith(d, "砂"), -1);
        QVERIFY(rowWith(d, "水泥") >= 0);
    }

    void pairingAndUnpairingByHand()
    {
        typicalProject();
        DbZbXpsClDialog d(root);
        attachModelTesters(&d);
        QVERIFY(d.Load());
        const QList<QVariantList> before = snapshot();

        d.slotBtnMakeApair(); // nothing selected
        QCOMPARE(lastText(), QStringLiteral("请选择有效的招标材料行!"));
        focus(d, "水泥"); // a bid-only row is no tender row
        d.slotBtnMakeApair();
        QCOMPARE(lastText(), QStringLiteral("请选择有效的招标材料行!"));
        d.slotBtnUnpair();
        QCOMPARE(lastText(), QStringLiteral("请选择有效的招标材料行!"));
        focus(d, "XP004");
        d.slotBtnMakeApair(); // no bid material chosen below
        QCOMPARE(lastText(), QStringLiteral("请在所有材料中选中投标材料行！"));
        d.slotBtnUnpair();
        QCOMPARE(lastText(), QStringLiteral("当前行已无对应投标材料!"));
        QVERIFY(!d.isModified());

        // An unmatched tender row takes the material without asking; the bid-only row goes.
        const int asked = InteractionSeam::shown().size();
        pick(d, "水泥");
        d.slotBtnMakeApair();
        QCOMPARE(InteractionSeam::shown().size(), asked);
        QCOMPARE(recordOf(d, "XP004")->GetState(), int(DbZbZgClItem::Matched));
        QCOMPARE(rowWith(d, "XP004"), rowWith(d, "水泥"));
        QCOMPARE(d.model()->rowCount(), 4);
        QCOMPARE(d.counter()->text(), QStringLiteral("招标材料共4条，已对应3条，还需对应1条"));
        QVERIFY(d.isModified());

        // A matched row asks first; "取消" leaves both rows as they were.
        focus(d, "XP001");
        pick(d, "电线");
        InteractionSeam::pushAnswer(int(QMessageBox::Cancel));
        d.slotBtnMakeApair();
        QCOMPARE(recordOf(d, "XP001")->GetTbCl()->getValue(3).toString(),
                 QStringLiteral("C30商品混凝土"));
        QVERIFY(recordOf(d, "XP003")->IsMatched());
        // "确定": 电线 moves to XP001; XP003 loses it; C30 becomes a bid-only row.
        InteractionSeam::pushAnswer(int(QMessageBox::Ok));
        d.slotBtnMakeApair();
        QCOMPARE(recordOf(d, "XP001")->GetTbCl()->getValue(3).toString(), QStringLiteral("电线"));
        QCOMPARE(recordOf(d, "XP003")->GetState(), int(DbZbZgClItem::ZbOnly));
        QVERIFY(rowWith(d, "C30商品混凝土") >= 0);
        QCOMPARE(d.counter()->text(), QStringLiteral("招标材料共4条，已对应2条，还需对应2条"));

        focus(d, "XP004");
        d.slotBtnUnpair();
        QCOMPARE(recordOf(d, "XP004")->GetState(), int(DbZbZgClItem::ZbOnly));
        QCOMPARE(d.counter()->text(), QStringLiteral("招标材料共4条，已对应1条，还需对应3条"));
        QVERIFY(RecentExceptionReports().isEmpty());
        QCOMPARE(snapshot(), before); // pairing touches nothing until applied
        saveShot(&d, "DbZbXpsClDialog");
    }

    void filterNarrowsBothLists()
    {
        typicalProject();
        DbZbXpsClDialog d(root);
        attachModelTesters(&d);
        QVERIFY(d.Load());
        d.nameEdit()->setText("电");
        d.slotBtnSearch();
        QCOMPARE(d.model()->rowCount(), 1);
        QCOMPARE(d.allModel()->rowCount(), 1);
        d.nameEdit()->clear();
        d.modelEdit()->setText("p.o");
        d.slotBtnSearch();
        QCOMPARE(d.model()->rowCount(), 1); // the bid-only 水泥, by its bid model
        d.modelEdit()->clear();
        d.slotBtnSearch();
        QCOMPARE(d.model()->rowCount(), 5);
    }

    void applyingWithBothOptionsThroughThePageIsOneUndoStep()
    {
        typicalProject();
        ModulePage<SjCqXPsClWidget, SjCqXPsClSjWidget> page(p->root);
        const QList<QVariantList> before = snapshot();
        const int steps = undo()->undoStack()->count();
        bool offered[2] = {false, false};
        InteractionSeam::setModalHook([&](QDialog* dialog) {
            if (auto* options = qobject_cast<TbZbXpsClDialog*>(dialog)) {
                offered[0] = options->box(0)->isEnabled();
                offered[1] = options->box(1)->isEnabled();
                saveShot(options, "TbZbXpsClDialog");
                return;
            }
            auto* d = qobject_cast<DbZbXpsClDialog*>(dialog);
            QVERIFY(d);
            attachModelTesters(d);
            d->slotHzClAndMatch();
            d->slotBtnAccept();
        });
        InteractionSeam::pushAnswer(int(QDialog::Accepted)); // options: "保存"
        InteractionSeam::pushAnswer(int(QDialog::Accepted)); // the dialog itself
        const QList<QAction*> actions = page.grid()->contextMenu()->actions();
        for (QAction* a : actions)
            if (a->text() == QStringLiteral("根据招标约定对比整理投标需评审材料"))
                a->trigger();
        QVERIFY(RecentExceptionReports().isEmpty());
        QVERIFY(offered[0] && offered[1]);
        QCOMPARE(undo()->undoStack()->count(), steps + 1);
        QCOMPARE(undo()->undoStack()->undoText(), QStringLiteral("对应整理投标需评审材料"));

        // The list: the tender's serials and codes; 钢筋 added, 水泥 gone.
        QCOMPARE(listed("C30商品混凝土")->getValue(2).toString(), QStringLiteral("XP001"));
        QCOMPARE(listed("C30商品混凝土")->getValue(1).toInt(), 1);
        QCOMPARE(listed("电线")->getValue(2).toString(), QStringLiteral("XP003"));
        QCOMPARE(listed("钢筋")->getValue(2).toString(), QStringLiteral("XP002"));
        QCOMPARE(listed("钢筋")->getValue(1).toInt(), 2);
        QCOMPARE(listed("钢筋")->getDouble(9), 2.0);
        QVERIFY(!listed("水泥"));
        QVERIFY(!listed("砂"));
        // Every unit project holding a material follows.
        const auto& unit3 = p->current->getRcjHzTable()->items();
        const auto& unit4 = p->plain->getRcjHzTable()->items();
        QVERIFY(unit4.at(1)->getValue(16).toBool()); // C30 in the second unit project
        QCOMPARE(unit4.at(1)->getValue(19).toString(), QStringLiteral("XP001"));
        QVERIFY(unit3.at(1)->getValue(16).toBool()); // 钢筋 set
        QCOMPARE(unit3.at(1)->getValue(19).toString(), QStringLiteral("XP002"));
        QVERIFY(!unit3.at(2)->getValue(16).toBool()); // 水泥 cancelled
        QVERIFY(!unit3.at(3)->getValue(16).toBool()); // 砂 untouched
        QVERIFY(!unit3.at(3)->getValue(19).isValid());
        QVERIFY(p->project->isProjectWorkChanged());

        QVERIFY(undo()->Undo());
        QCOMPARE(snapshot(), before);
    }

    void applyingWithNeitherOptionKeepsTheAttributes()
    {
        typicalProject();
        const QList<QVariantList> before = snapshot();
        DbZbXpsClDialog d(root);
        QVERIFY(d.Load());
        d.slotHzClAndMatch();
        InteractionSeam::setModalHook([](QDialog* dialog) {
            auto* options = qobject_cast<TbZbXpsClDialog*>(dialog);
            QVERIFY(options);
            options->box(0)->setChecked(false);
            options->box(1)->setChecked(false);
        });
        InteractionSeam::pushAnswer(int(QDialog::Accepted));
        {
            RURecordControl::Scope scope;
            d.slotBtnAccept();
            scope.commit(OperatingUIInfo(0, 0, 0, 0, 10, QStringLiteral("对应整理投标需评审材料")));
        }
        QCOMPARE(d.result(), int(QDialog::Accepted));
        QVERIFY(!d.isModified());
        QVERIFY(!listed("钢筋"));
        QVERIFY(!p->current->getRcjHzTable()->items().at(1)->getValue(16).toBool());
        QVERIFY(listed("水泥")); // kept, evaluated
        QVERIFY(p->current->getRcjHzTable()->items().at(2)->getValue(16).toBool());
        QCOMPARE(listed("C30商品混凝土")->getValue(2).toString(), QStringLiteral("XP001"));
        QVERIFY(undo()->Undo());
        QCOMPARE(snapshot(), before);
    }

    void withNothingToAskTheOptionsAreSkipped()
    {
        typicalProject();
        DbZbXpsClDialog d(root);
        QVERIFY(d.Load());
        focus(d, "XP004");
        pick(d, "水泥"); // every evaluated material now has a tender material
        d.slotBtnMakeApair();
        InteractionSeam::clear();
        d.slotBtnAccept();
        QVERIFY(!optionsShown());
        QCOMPARE(d.result(), int(QDialog::Accepted));
        QCOMPARE(listed("水泥")->getValue(2).toString(), QStringLiteral("XP004"));
        QCOMPARE(p->current->getRcjHzTable()->items().at(2)->getValue(19).toString(),
                 QStringLiteral("XP004"));
    }

    void cancellingTheOptionsKeepsTheDialogOpenAndModified()
    {
        typicalProject();
        const QList<QVariantList> before = snapshot();
        DbZbXpsClDialog d(root);
        QVERIFY(d.Load());
        d.slotHzClAndMatch();
        InteractionSeam::pushAnswer(int(QDialog::Rejected)); // "取消"
        d.slotBtnAccept();
        QVERIFY(optionsShown());
        QVERIFY(d.result() != QDialog::Accepted);
        QVERIFY(d.isModified());
        QCOMPARE(recordOf(d, "XP002")->GetState(), int(DbZbZgClItem::MatchedByNorm));
        QCOMPARE(snapshot(), before);

        // Closing asks; "否" closes without touching the project.
        InteractionSeam::pushAnswer(int(QMessageBox::No));
        d.slotBtnReject();
        QCOMPARE(InteractionSeam::lastShown().title, QStringLiteral("操作提示"));
        QCOMPARE(lastText(), QStringLiteral("需评审材料数据已经修改，是否保存？"));
        QCOMPARE(d.result(), int(QDialog::Rejected));
        QCOMPARE(snapshot(), before);
    }

    void aFailedApplyIsReportedAndTakenBackWhole()
    {
        typicalProject();
        DbZbXpsClDialog d(root);
        QVERIFY(d.Load());
        d.slotHzClAndMatch();
        const QList<QVariantList> before = snapshot();
        const int steps = undo()->undoStack()->count();
        InteractionSeam::pushAnswer(int(QDialog::Accepted));
        InteractionSeam::setModalHook([](QDialog*) {
            // The list is written, then the host fails before the unit projects.
            BusinessFaultInjection::setFault([] {
                BusinessFaultInjection::setFault([] { throw std::runtime_error("写入失败"); });
            });
        });
        d.slotBtnAccept();
        QCOMPARE(RecentExceptionReports().size(), 1);
        QCOMPARE(snapshot(), before);
        QCOMPARE(undo()->undoStack()->count(), steps);
        QVERIFY(d.result() != QDialog::Accepted);
        QVERIFY(d.isModified());
    }

    void withoutATenderListTheLoadsAreOffered()
    {
        line(p->current, "水泥", "P.O42.5", "kg", true);
        DbZbXpsClDialog d(root);
        attachModelTesters(&d);
        QVERIFY(!d.Load());
        QCOMPARE(InteractionSeam::lastShown().kind, QStringLiteral("information"));
        QVERIFY(lastText().contains(QStringLiteral("当前工程没有招标需评审材料清单")));
        QVERIFY(d.loadButton()->isEnabled());
        QCOMPARE(d.model()->rowCount(), 0);
        QCOMPARE(d.counter()->text(), QStringLiteral("招标材料共0条，已对应0条，还需对应0条"));

        // An Excel load cancelled in the import dialog changes nothing.
        InteractionSeam::pushAnswer(int(QDialog::Rejected));
        d.slotImportExcelClicked();
        QVERIFY(!p->project->HasGcZbXPsCl());
        QVERIFY(!d.isModified());
        QVERIFY(!p->project->isProjectWorkChanged());

        // The export refuses an empty list.
        d.slotExportZbCl();
        QCOMPARE(lastText(), QStringLiteral("当前表内无招标需评审数据"));
        QVERIFY(RecentExceptionReports().isEmpty());
    }

    void aLoadedListIsMatchedAgain()
    {
        typicalProject();
        DbZbXpsClDialog d(root);
        attachModelTesters(&d);
        QVERIFY(d.Load());
        // A YFJZ file that cannot be read is reported; the stored list stays.
        const QString path = QDir(QDir::tempPath()).filePath("tarvo-xps-missing.YFJZ");
        QFile::remove(path);
        InteractionSeam::pushAnswer(path);
        d.slotImportZbClFromCJZ_YN();
        QCOMPARE(InteractionSeam::lastShown().kind, QStringLiteral("information"));
        QCOMPARE(p->project->GetGcZbXPsCl().size(), 4);
        QCOMPARE(d.model()->rowCount(), 5);
        QVERIFY(!d.isModified());
    }

    void exportWritesTheTenderList()
    {
        typicalProject();
        DbZbXpsClDialog d(root);
        QVERIFY(d.Load());
        QTemporaryDir dir;
        const QString path = dir.filePath("需评审.xlsx");
        InteractionSeam::pushAnswer(path);
        d.slotExportZbCl();
        QVERIFY(RecentExceptionReports().isEmpty());
        QVERIFY(QFileInfo(path).size() > 0);
    }

    // The sample project with the sample tender file's evaluated list, through the page: load,
    // compare, apply; the page shows the list as written, and one undo takes it all back.
    void theSampleTenderFileThroughThePage()
    {
        const int index = DataManagement::getInstance()->AddProjectWorks(BuildSampleProject());
        ProjectWorks* sample = DataManagement::getInstance()->GetProjectWorksByIndex(index);
        ConstructionWorks* works = sample->GetConstructionWorksNode();
        SjCqXPsClBusiness::HzSjCqXPsCl(works, nullptr);
        undo()->ForgetHistory();
        SjCqXPsClTable* table = works->getTenderInventory()->getSjCqXPsClHzTable();
        auto listNow = [&] {
            QList<QVariantList> rows;
            for (const BaseDataItem* m : table->items())
                rows.append({m->getValue(1), m->getValue(2), m->getValue(3)});
            return rows;
        };
        {
            ModulePage<SjCqXPsClWidget, SjCqXPsClSjWidget> page(sample->root());
            page.widget.resize(1200, 700);
            const int rowsBefore = page.grid()->model()->rowCount();
            const QList<QVariantList> before = listNow();
            int matched = 0, unmatched = 0;
            InteractionSeam::setModalHook([&](QDialog* dialog) {
                auto* d = qobject_cast<DbZbXpsClDialog*>(dialog);
                if (!d)
                    return; // the options: as offered
                attachModelTesters(d);
                InteractionSeam::pushAnswer(
                    QStringLiteral(TEST_DATA_DIR "/../../appdir/Samples/示例工程-招标文件.cjz"));
                d->slotImportZbClFromCJZ();
                QVERIFY(sample->HasGcZbXPsCl() && !p->project->HasGcZbXPsCl());
                d->slotHzClAndMatch();
                SjCqXPsClBusiness::CountZbXpsCl(d->records(), matched, unmatched);
                saveShot(d, "DbZbXpsClDialog-sample");
                InteractionSeam::pushAnswer(int(QDialog::Accepted)); // options, when asked
                InteractionSeam::pushAnswer(int(QDialog::Accepted));
                d->slotBtnAccept();
                QCOMPARE(d->result(), int(QDialog::Accepted));
            });
            page.grid()->slotAcDyZlTbXPsCl();
            InteractionSeam::setModalHook(nullptr);
            QVERIFY(RecentExceptionReports().isEmpty());
            QVERIFY(matched > 0);
            QCOMPARE(undo()->undoStack()->undoText(), QStringLiteral("对应整理投标需评审材料"));
            QVERIFY(listNow() != before);
            QCOMPARE(page.grid()->model()->rowCount(), table->count()); // reloaded
            saveShot(&page.widget, "SjCqXPsClPage-after-apply");
            QVERIFY(undo()->Undo());
            QCOMPARE(listNow(), before);
            QCOMPARE(page.grid()->model()->rowCount(), rowsBefore);
        }
        undo()->ForgetHistory();
        DataManagement::getInstance()->CloseProjectWorks(index);
    }
};

QTEST_MAIN(tst_DbZbXpsClDialog)
#include "tst_DbZbXpsClDialog.moc"
