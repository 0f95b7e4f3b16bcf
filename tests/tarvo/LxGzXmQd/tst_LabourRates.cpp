#include "AppCopy.h"
#include "ModulePages.h"
#include "TestProject.h"

#include "LxGzXmQd/LxGzXmQdSjWidget.h"
#include "LxGzXmQd/LxGzXmQdWidget.h"
#include "LxGzXmQd/LxrgStore.h"
#include "LxGzXmQd/SporadicTableModel.h"
#include "LxGzXmQd/SporadicWorksWidget.h"
#include "LxGzXmQd/TLxrgwh.h"
#include "LxGzXmQd/TLxrgwh_Gzwh.h"
#include "LxGzXmQd/TLxrgwh_Gzwh_Add.h"
#include "LxGzXmQd/WorksTypeList.h"
#include "common/BillModel.h"

#include "BusinessFaultInjection.h"
#include "HostConstants.h"
#include "InteractionSeam.h"
#include "ProcExceptionNew.h"
#include "ProjectRegion.h"
#include "SharedInterface.h"
#include "zBatMessage.h"
#include "zTableView.h"

#include <QComboBox>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLineEdit>
#include <QMessageBox>
#include <QSettings>
#include <QTableView>
#include <QTemporaryDir>
#include <QTextCodec>
#include <QUndoStack>
#include <QtTest>

// The regional labour-rate store, its query panel and maintenance dialogs, the bus between
// instances, and picking prices into the daywork list.
class tst_LabourRates : public QObject
{
    Q_OBJECT

private:
    QString m_shipped;
    std::unique_ptr<QTemporaryDir> m_app;

    QString db(const QString& base) const { return SporadicTableModel::DatabasePath(base); }

    static int scalar(const QString& path, const QString& sql)
    {
        DBM::clsDACResult r = DBM::clsDAC(path).execSql(sql);
        return r.next() ? r.value("n").toInt() : -1;
    }

    static QString text(const QString& path, const QString& sql, const QString& column)
    {
        DBM::clsDACResult r = DBM::clsDAC(path).execSql(sql);
        return r.next() ? r.value(column).toString() : QString();
    }

private slots:
    void initTestCase() { m_shipped = SharedInterface::GetAppPath(); }

    void init()
    {
        // A fresh copy of the shipped databases and trade list for every case.
        m_app = std::make_unique<QTemporaryDir>();
        useAppCopy(m_shipped, *m_app,
                   {"Database/", HostConstants::GCSZDir, QStringLiteral("Config/TableHeader/")});
        WorksTypeList::Shared() = WorksTypeList::Read();
        InteractionSeam::setScripted(true);
        InteractionSeam::clear();
        RURecordControl::GetInstance()->ForgetHistory();
    }

    void idsCountUpFromTheLargestThenStartAgain()
    {
        SporadicTableModel model;
        QAbstractItemModelTester tester(&model,
                                        QAbstractItemModelTester::FailureReportingMode::QtTest);
        model.Load("成都市区", "2021年5月");
        QCOMPARE(model.rowCount(), 8);
        const int max = scalar(db("MASTER"), "select max(FID) as n from lxrg");
        model.insertRows(model.rowCount(), 1);
        model.insertRows(model.rowCount(), 1);
        QCOMPARE(model.records().at(8).FID, max + 1);
        QCOMPARE(model.records().at(9).FID, max + 2);
        QCOMPARE(model.records().at(9).dq, QString("成都市区"));
        QVERIFY(!model.slotSaveModifyRecord()); // the insert statement is refused
        QCOMPARE(InteractionSeam::lastShown().text, QString("数据保存失败！"));
        QCOMPARE(InteractionSeam::lastShown().title, QString("保存提示"));
        QCOMPARE(model.insertCounter(), 0);
        model.Load("成都市区", "2021年5月");
        model.insertRows(0, 1);
        QCOMPARE(model.records().at(0).FID, max + 1); // counted from the table as it stands
    }

    void updatesBeforeAnInsertAreSavedAndTheInsertIsNot()
    {
        SporadicTableModel model;
        model.Load("成都市区", "2021年5月");
        const int fid = model.records().at(0).FID;
        for (const char* price : {"111", "112", "113"})
            QVERIFY(model.setData(model.index(0, 1), QString::fromLatin1(price)));
        QCOMPARE(model.pendingChanges().size(), 3); // three edits, three updates
        QVERIFY(!model.setData(model.index(0, 1), "1", Qt::DisplayRole));
        model.insertRows(1, 1);
        QCOMPARE(SporadicTableModel::StatementOf(model.pendingChanges().last()).left(12),
                 QString("insert info "));
        QVERIFY(!model.slotSaveModifyRecord());
        QCOMPARE(text(db("MASTER"), QString("select dj from lxrg where FID=%1").arg(fid), "dj"),
                 QString("113"));
        QCOMPARE(scalar(db("MASTER"), "select count(*) as n from lxrg where gz is null or gz=''"),
                 0);
        QCOMPARE(
            SporadicTableModel::StatementOf(model.pendingChanges().at(0)),
            QString("update main.lxrg set gz='普工', dj=111, bz='川建价发〔2021〕号' where FID=%1;")
                .arg(fid));
    }

    void deletesAreSaved()
    {
        SporadicTableModel model;
        model.Load("绵阳市", "2021年5月");
        const int fid = model.records().at(0).FID;
        model.removeRows(0, 1);
        QVERIFY(model.slotSaveModifyRecord());
        QCOMPARE(InteractionSeam::lastShown().text, QString("数据保存成功！"));
        QCOMPARE(
            scalar(db("MASTER"), QString("select count(*) as n from lxrg where FID=%1").arg(fid)),
            0);
    }

    void missingDatabaseGivesEmptyListsAndAFailedSave()
    {
        QFile::remove(db("LXRG"));
        QFile::remove(db("MASTER"));
        SporadicWorksWidget panel;
        QCOMPARE(panel.locationBox()->count(), 0);
        QCOMPARE(panel.model()->rowCount(), 0);
        panel.model()->insertRows(0, 1);
        QCOMPARE(panel.model()->records().at(0).FID, 0);
        QVERIFY(!panel.model()->slotSaveModifyRecord());
        QCOMPARE(InteractionSeam::lastShown().text, QString("数据保存失败！"));
    }

    // The price lookup starts on the project's region until the user picks a region; the
    // region picked is remembered and wins while the store still has it.
    void theRegionFollowsTheProjectUntilTheUserChoosesOne()
    {
        QSettings().remove("LxGzXmQd/region");
        auto regionShown = [](TestProject& p) {
            LxGzXmQdWidget page;
            showNode(page, p.unit);
            SporadicWorksWidget* panel = page.sporadicWidget();
            const QString region = panel->locationBox()->currentText();
            // The times and the grid are those of the region shown.
            if (panel->startTimeBox()->count() == 0 || panel->model()->rowCount() == 0 ||
                panel->model()->records().first().dq != region)
                return QString("grid of another region");
            return region;
        };
        TestProject p;
        const QString first = regionShown(p);
        QVERIFY(ProjectRegion::Set(p.project, "绵阳市"));
        QCOMPARE(regionShown(p), QString("绵阳市"));
        QCOMPARE(SporadicWorksWidget::RememberedRegion(), QString()); // not chosen by the user
        QVERIFY(ProjectRegion::Set(p.project, "不在库中的地区"));
        QCOMPARE(regionShown(p), first);

        {
            QVERIFY(ProjectRegion::Set(p.project, "绵阳市"));
            LxGzXmQdWidget page;
            showNode(page, p.unit);
            QComboBox* box = page.sporadicWidget()->locationBox();
            box->setCurrentIndex(box->findText("乐山市"));
            emit box->textActivated("乐山市");
            QCOMPARE(page.sporadicWidget()->model()->records().first().dq, QString("乐山市"));
        }
        QCOMPARE(SporadicWorksWidget::RememberedRegion(), QString("乐山市"));
        QCOMPARE(regionShown(p), QString("乐山市"));
        // A remembered region the store no longer has gives way to the project's.
        QSettings().setValue("LxGzXmQd/region", "已删除的地区");
        QCOMPARE(regionShown(p), QString("绵阳市"));
        QSettings().remove("LxGzXmQd/region");
    }

    void timesAreListedNewestFirst()
    {
        QCOMPARE(
            SporadicWorksWidget::SortTimes({"2021年5月", "2020年12月", "2021年10月", "2021年"}),
            QStringList({"2021年10月", "2021年5月", "2021年", "2020年12月"}));
        QCOMPARE(SporadicWorksWidget::SortTimes({"待定", "2019年1月"}),
                 QStringList({"2019年1月", "待定"}));
    }

    void panelShowsTheNewestTimeAndPicks()
    {
        SporadicWorksWidget panel;
        panel.locationBox()->setCurrentText("阿坝、汶川、理县、茂县");
        QCOMPARE(panel.startTimeBox()->itemText(0), QString("2021年5月")); // its newest
        panel.locationBox()->setCurrentText("成都市区");
        QCOMPARE(panel.startTimeBox()->itemText(0), QString("2021年10月"));
        QCOMPARE(panel.model()->records().first().sj, QString("2021年10月"));
        QVERIFY(panel.model()->rowCount() > 0);
        QSignalSpy picked(&panel, &SporadicWorksWidget::signalSelectSporadicItem);
        panel.on_selectBtn_clicked(); // no current row
        QCOMPARE(picked.count(), 0);
        panel.tableView()->setCurrentIndex(panel.model()->index(1, 0));
        panel.on_selectBtn_clicked();
        QCOMPARE(picked.count(), 1);
        QCOMPARE(picked.first().first().toDouble(), panel.model()->records().at(1).dj);
        panel.slotChangeReadOnly(true);
        panel.doubleClickedSLot(panel.model()->index(1, 0));
        QCOMPARE(picked.count(), 1);
        // "放弃" leaves everything as it is.
        panel.model()->setData(panel.model()->index(0, 1), "1");
        panel.on_GiveUpBtn_clicked();
        QCOMPARE(panel.model()->pendingChanges().size(), 1);
    }

    void pickingWritesSelectedRowsOnceInOneStep()
    {
        TestProject p;
        LxGzXmRgDjQdTable* t = p.current->getTenderInventory()->getLxGzXmRgDjQdTable();
        TestProject::row(t, 1, {{2, "人工"}});
        TestProject::row(t, 0, {{2, "普工"}, {4, 100.0}, {6, 10.0}});
        TestProject::row(t, 0, {{2, "技工"}, {4, 130.0}, {6, 5.0}});
        TestProject::row(t, 0, {{2, "木工"}, {4, 120.0}});
        LxGzXmQdWidget page;
        showNode(page, p.unit);
        attachModelTesters(&page);
        auto* grid = static_cast<LxGzXmQdSjWidget*>(page.sjWidget());
        grid->slotSelectSporadicItem(150); // nothing selected
        QCOMPARE(RURecordControl::GetInstance()->undoStack()->count(), 0);
        QItemSelectionModel* selection = grid->view()->selectionModel();
        BillModel* model = grid->model();
        for (auto [row, column] :
             {std::pair{0, 1}, std::pair{1, 1}, std::pair{1, 2}, std::pair{2, 0}})
            selection->select(model->index(row, column), QItemSelectionModel::Select);
        QSignalSpy panelPick(page.sporadicWidget(), &SporadicWorksWidget::signalSelectSporadicItem);
        emit page.sporadicWidget()->signalSelectSporadicItem(150);
        QCOMPARE(t->at(0)->getValue(4), QVariant()); // the summary row keeps its price
        QCOMPARE(t->at(1)->getDouble(4), 150.0);
        QCOMPARE(t->at(2)->getDouble(4), 150.0);
        QCOMPARE(t->at(3)->getDouble(4), 120.0);
        QCOMPARE(t->at(1)->getDouble(7), 1500.0);
        QCOMPARE(RURecordControl::GetInstance()->undoStack()->count(), 1);
        QCOMPARE(RURecordControl::GetInstance()->undoStack()->undoText(),
                 QString("选择零星人工单价"));
        QVERIFY(RURecordControl::GetInstance()->Undo());
        QCOMPARE(t->at(1)->getDouble(4), 100.0);
        QCOMPARE(t->at(2)->getDouble(4), 130.0);

        // Templates: a missing one changes nothing; a delivered one is one step.
        grid->CurSporadicWorksTempChanged("不存在的模板");
        QCOMPARE(t->count(), 4);
        grid->CurSporadicWorksTempChanged("2020定额零星工作项目人工单价清单模板");
        QCOMPARE(t->count(), 9);
        QCOMPARE(p.current->getXtBl(4).toString(), QString("2020定额零星工作项目人工单价清单模板"));

        // A read-only page's panel cannot pick.
        p.project->SetDqdZdSd(true);
        QVariant unit = QVariant::fromValue(p.unit);
        page.ProcMsg(41, &unit);
        QVERIFY(page.sporadicWidget()->isReadOnly());
    }

    // Deleting keeps the summary row and the last empty labour row; clearing keeps the list's
    // length as the other lists do: a fresh summary row over empty labour rows.
    void dayworkRowCommandsKeepSummaryAndLength()
    {
        TestProject p;
        LxGzXmRgDjQdTable* t = p.current->getTenderInventory()->getLxGzXmRgDjQdTable();
        TestProject::row(t, 1, {{2, "人工"}});
        TestProject::row(t, 0, {{2, "普工"}, {4, 100.0}, {6, 10.0}});
        TestProject::row(t, 0, {{2, "技工"}, {4, 130.0}, {6, 5.0}});
        LxGzXmQdWidget page;
        showNode(page, p.unit);
        attachModelTesters(&page);
        auto* grid = static_cast<LxGzXmQdSjWidget*>(page.sjWidget());
        QUndoStack* stack = RURecordControl::GetInstance()->undoStack();
        grid->view()->setCurrentIndex(grid->model()->index(0, 1));
        grid->DeleteCurrentRow("删除当前行");
        QCOMPARE(t->count(), 3);
        QCOMPARE(stack->count(), 0);
        grid->view()->setCurrentIndex(grid->model()->index(2, 1));
        grid->DeleteCurrentRow("删除当前行");
        QCOMPARE(t->count(), 2);
        QCOMPARE(stack->undoText(), QString("删除当前行"));
        QCOMPARE(t->at(0)->getDouble(7), 1000.0); // the summary follows

        // The one labour row left, once empty, stays: there would be nowhere to type.
        InteractionSeam::pushAnswer(int(QMessageBox::Yes));
        grid->ClearAllRows();
        QCOMPARE(t->count(), 2);
        QCOMPARE(t->at(0)->getKind(), 1);
        QCOMPARE(t->at(1)->getKind(), 0);
        QVERIFY(t->at(1)->getValue(2).toString().isEmpty());
        QCOMPARE(stack->undoText(), QString("清除所有行"));
        const int steps = stack->count();
        grid->view()->setCurrentIndex(grid->model()->index(1, 1));
        grid->DeleteCurrentRow("删除当前行");
        QCOMPARE(t->count(), 2);
        QCOMPARE(stack->count(), steps);
        QVERIFY(RURecordControl::GetInstance()->Undo());
        QCOMPARE(t->count(), 2);
        QCOMPARE(t->at(1)->getValue(2).toString(), QString("普工"));
    }

    void regionReuseStoresALeadingBlank()
    {
        TLxrgwh dialog("成都市区", "2021年5月");
        QCOMPARE(dialog.rows().size(), 8);
        dialog.slotCopyData({"新区一", "新区二"});
        QCOMPARE(InteractionSeam::lastShown().text, QString("复用成功"));
        QCOMPARE(scalar(LxrgStore::Path(), "select count(*) as n from lxrg where dq in "
                                           "('新区一','新区二') and sj='2021年5月'"),
                 16);
        QCOMPARE(
            text(LxrgStore::Path(), "select dj from lxrg where dq='新区一' and gz='普工'", "dj"),
            QString(" 110"));
    }

    void maintenanceRowsAndRefusals()
    {
        TLxrgwh dialog("空地区", "2030年1月");
        QCOMPARE(dialog.rows().size(), 0);
        dialog.slotAddRow(); // no row yet: a bare row for the pair
        QCOMPARE(scalar(LxrgStore::Path(),
                        "select count(*) as n from lxrg where dq='空地区' and gz is null"),
                 1);
        QCOMPARE(dialog.rows().size(), 1);
        dialog.setCurrentRow(0);
        dialog.slotAddRow(); // the row has no trade yet
        QCOMPARE(InteractionSeam::lastShown().text, QString("请选择工种"));
        dialog.slotAddGzwhData("普工");
        QCOMPARE(dialog.rows().at(0).GetDataGz(), QString("普工"));
        dialog.setCurrentRow(0);
        dialog.slotAddGzwhData("普工");
        QCOMPARE(InteractionSeam::lastShown().text, QString("不能重复添加"));
        InteractionSeam::pushAnswer(int(QMessageBox::Yes));
        dialog.setCurrentRow(0);
        dialog.slotDeleteRow();
        QCOMPARE(InteractionSeam::lastShown().text, QString("确定删除当前行吗？"));
        QCOMPARE(dialog.rows().size(), 0);
    }

    void addingARowTakesAChosenTradeNotInTheGrid()
    {
        TLxrgwh dialog("加行地区", "2030年2月");
        dialog.slotAddRow(); // no row yet: a bare row for the pair
        dialog.setCurrentRow(0);
        dialog.slotAddGzwhData("普工");
        QCOMPARE(dialog.rows().size(), 1);
        auto pick = [](const QString& trade) {
            InteractionSeam::setModalHook([trade](QDialog* d) {
                auto* trades = qobject_cast<TLxrgwh_Gzwh*>(d);
                for (int r = 0; trades && r < trades->trades().size(); ++r)
                    if (trades->trades().at(r).GetDat() == trade) {
                        trades->setCurrentRow(r);
                        trades->slotPick();
                    }
            });
        };
        // The selected row's trade is not copied: the trade comes from the list, once.
        dialog.setCurrentRow(0);
        pick("普工");
        dialog.slotAddRow();
        QCOMPARE(InteractionSeam::lastShown().text, QString("不能重复添加"));
        QCOMPARE(dialog.rows().size(), 1);
        pick("木工");
        dialog.slotAddRow();
        InteractionSeam::setModalHook(nullptr);
        QCOMPARE(dialog.rows().size(), 2);
        QCOMPARE(scalar(LxrgStore::Path(), "select count(*) as n from lxrg where dq='加行地区' "
                                           "and gz='木工'"),
                 1);

        // The remark cell offers the remarks the store holds.
        auto* grid = dialog.findChild<QTableView*>();
        const QModelIndex remark = grid->model()->index(0, 2);
        std::unique_ptr<QWidget> editor(grid->itemDelegateForColumn(2)->createEditor(
            grid->viewport(), QStyleOptionViewItem(), remark));
        auto* combo = qobject_cast<QComboBox*>(editor.get());
        QVERIFY(combo && combo->isEditable());
        QVERIFY(combo->findText("川建价发〔2021〕号") >= 0);
        DBM::clsDAC(LxrgStore::Path()).execSql("delete from lxrg where dq = '加行地区'");
    }

    void tradesInUseAreProtected()
    {
        TLxrgwh_Gzwh trades;
        const QList<TLxrgwhBean>& list = trades.trades();
        QCOMPARE(list.first().GetDat(), QString("普工"));
        QCOMPARE(list.first().GetSfsy(), QString("√"));
        QCOMPARE(list.last().GetSfsy(), QString("未使用")); // 油漆工 is used nowhere
        trades.setCurrentRow(0);
        trades.slotDelete();
        QCOMPARE(InteractionSeam::lastShown().text, QString("不能删除已使用的工种"));
        trades.slotShowXg();
        QCOMPARE(InteractionSeam::lastShown().text, QString("不能修改已使用的工种"));
        const int count = list.size();
        trades.setCurrentRow(count - 1);
        trades.slotDelete();
        QCOMPARE(trades.trades().size(), count - 1);
        QVERIFY(!WorksTypeList::Read().contains("油漆工"));

        // Blanks do not make a new trade.
        TLxrgwh_Gzwh_Add add(WorksTypeList::Read());
        add.edit()->setText(" 普 工 ");
        add.onOk();
        QCOMPARE(InteractionSeam::lastShown().text, QString("工种已经存在，请重新输入"));
        QCOMPARE(add.result(), 0);
        trades.addTrade("测量工");
        QFile file(WorksTypeList::FilePath());
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        QVERIFY(bytes.endsWith(QTextCodec::codecForName("GBK")->fromUnicode("测量工\r\n")));

        // A missing trade list reads empty and is created by the first addition.
        QFile::remove(WorksTypeList::FilePath());
        QVERIFY(WorksTypeList::Read().isEmpty());
        QVERIFY(WorksTypeList::Append("普工"));
        QCOMPARE(WorksTypeList::Read(), QStringList{"普工"});
    }

    void instancesTellEachOtherAndIgnoreThemselves()
    {
        QTemporaryDir busDir;
        zBatMessage first("instance-a", busDir.path());
        zBatMessage second("instance-b", busDir.path());
        QSignalSpy received(&second, &zBatMessage::doNotify);
        QSignalSpy echoed(&first, &zBatMessage::doNotify);
        const QJsonObject message{{"cmd", "NotifyLxRgDbChange"},
                                  {"data", QJsonObject{{"appId", "instance-a"}}}};
        QCOMPARE(first.SendAsyn(message), 1);
        QTRY_COMPARE(received.count(), 1);
        QCOMPARE(QJsonDocument::fromJson(received.first().first().toByteArray()).object(), message);
        QCOMPARE(echoed.count(), 0);

        // A panel reloads for another instance's message, not for its own.
        qApp->setProperty("AppId", "instance-b");
        SporadicWorksWidget panel;
        QSignalSpy reloads(panel.model(), &QAbstractItemModel::modelReset);
        panel.slotServiceNotify(QJsonDocument(message).toJson());
        QCOMPARE(reloads.count(), 1);
        const QJsonObject own{{"cmd", "NotifyLxRgDbChange"},
                              {"data", QJsonObject{{"appId", "instance-b"}}}};
        panel.slotServiceNotify(QJsonDocument(own).toJson());
        panel.slotServiceNotify("not json");
        QCOMPARE(reloads.count(), 1);
    }
};

QTEST_MAIN(tst_LabourRates)
#include "tst_LabourRates.moc"
