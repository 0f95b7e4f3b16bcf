#include "AppCopy.h"

#include "LxGzXmQd/LxrgSql.h"
#include "LxGzXmQd/LxrgStore.h"
#include "LxGzXmQd/SporadicTableModel.h"
#include "LxGzXmQd/TLxrgwh.h"
#include "LxGzXmQd/TLxrgwh_Dqfy.h"
#include "LxGzXmQd/TLxrgwh_Gzwh.h"
#include "LxGzXmQd/WorksTypeList.h"

#include "HostConstants.h"
#include "InteractionSeam.h"
#include "ProcExceptionNew.h"
#include "SharedInterface.h"
#include "clsDAC.h"

#include <QListWidget>
#include <QMessageBox>
#include <QStandardItemModel>
#include <QTableView>
#include <QTemporaryDir>
#include <QtTest>

// A value typed by the user never changes which rows a labour-rate statement touches: every
// statement path, given each of the quote cases, fails without reaching the database, and
// every row of both store files stays byte for byte as it was.
class tst_LabourRateQuotes : public QObject
{
    Q_OBJECT

private:
    QString m_shipped;
    std::unique_ptr<QTemporaryDir> m_app;

    static QString db(const QString& base) { return SporadicTableModel::DatabasePath(base); }

    // Every row of both files, each value quoted by SQLite with its type kept.
    static QString snapshot(int exceptFid = -1)
    {
        return snapshotWhere(QString("FID <> %1").arg(exceptFid));
    }
    static QString snapshotWhere(const QString& condition)
    {
        QString all;
        for (const QString base : {"LXRG", "MASTER"}) {
            DBM::clsDACResult r = DBM::clsDAC(db(base)).execSql(
                QString("select quote(FID)||'|'||quote(dq)||'|'||quote(sj)||'|'||quote(gz)||'|'||"
                        "quote(dj)||'|'||quote(bz) as r from lxrg where %1 order by FID")
                    .arg(condition));
            while (r.next())
                all += r.value("r").toString() + '\n';
        }
        return all;
    }

    static QStringList quotes()
    {
        return {"O'Brien", "x' --", "' OR '1'='1", "x', bz='injected", QString("a") + QChar(0)};
    }

private slots:
    void initTestCase() { m_shipped = SharedInterface::GetAppPath(); }

    void init()
    {
        m_app = std::make_unique<QTemporaryDir>();
        useAppCopy(m_shipped, *m_app, {"Database/", HostConstants::GCSZDir});
        WorksTypeList::Shared() = WorksTypeList::Read();
        InteractionSeam::setScripted(true);
        InteractionSeam::clear();
        ClearExceptionReports();
    }

    void fillingKeepsTheStatementsShape()
    {
        QCOMPARE(LxrgSql::Fill("UPDATE lxrg SET gz = '%1' WHERE fid = '%2'", {"普工", "12"}),
                 QString("UPDATE lxrg SET gz = '普工' WHERE fid = '12'"));
        QCOMPARE(LxrgSql::Fill("VALUES(null, '%1', '%2', '%3',' %4', '%5')",
                               {"a", "b", "c", "110", "d"}),
                 QString("VALUES(null, 'a', 'b', 'c',' 110', 'd')"));
        QCOMPARE(LxrgSql::Fill("update %1 set dj=%2 where FID=%3;", {"main.lxrg", "1.5e+10", "-3"}),
                 QString("update main.lxrg set dj=1.5e+10 where FID=-3;"));
        // One pass: a value that looks like a placeholder stays as typed.
        QCOMPARE(LxrgSql::Fill("'%1' '%2'", {"%2", "x"}), QString("'%2' 'x'"));
        QString why;
        for (const QString& value : quotes()) {
            QVERIFY(LxrgSql::Fill("gz = '%1'", {value}, &why).isEmpty());
            QVERIFY(why.contains("含有引号或空字符"));
        }
        // Unquoted places take numbers only: "fid" would make the WHERE true for every row.
        for (const QString value : {"fid", "", "1 or 1=1", "inf", "nan", "1;"})
            QVERIFY2(LxrgSql::Fill("delete from lxrg where fid = %1", {value}).isEmpty(),
                     qPrintable(value));
        QCOMPARE(LxrgSql::Fill("delete from lxrg where fid = %1", {"fid"}, &why), QString());
        QCOMPARE(why, QString("值“fid”不是数字，语句未执行"));
    }

    void maintenanceStatementsFailUnsent_data()
    {
        QTest::addColumn<QString>("value");
        for (const QString& value : quotes())
            QTest::newRow(qPrintable(QString(value).replace(QChar(0), "\\0"))) << value;
    }
    void maintenanceStatementsFailUnsent()
    {
        QFETCH(QString, value);
        const QString before = snapshot();
        TLxrgwh dialog("成都市区", "2021年5月");
        const QList<TLxrgwhBean> rows = dialog.rows();
        QCOMPARE(rows.size(), 8);
        auto* model = qobject_cast<QStandardItemModel*>(dialog.findChild<QTableView*>()->model());
        QVERIFY(model);

        // Cell edits: trade, price, remark. The grid goes back to what the store holds.
        for (int column = 0; column < 3; ++column) {
            ClearExceptionReports();
            model->item(1, column)->setText(value);
            QCOMPARE(snapshot(), before);
            QCOMPARE(model->rowCount(), 8);
            QCOMPARE(model->item(1, 0)->text(), rows.at(1).GetDataGz());
            QCOMPARE(model->item(1, 1)->text(), rows.at(1).GetDataDj());
            QCOMPARE(model->item(1, 2)->text(), rows.at(1).GetRemarke());
            QCOMPARE(dialog.rows().at(1).GetDataDj(), rows.at(1).GetDataDj());
            QVERIFY(!RecentExceptionReports().isEmpty()); // reported, not shown
            QVERIFY(RecentExceptionReports().last().what.contains("语句未执行"));
        }
        QVERIFY(!dialog.slotSaveDate("dj", value, rows.at(1).GetFID()));
        dialog.slotGetGzData(1, value);
        dialog.slotGetBzData(1, value);
        QCOMPARE(RecentExceptionReports().last().tag, QString("TLxrgwh::slotGetBzData"));
        // Trade picked from the trade dialog, into the current row and into a new pair.
        dialog.setCurrentRow(1);
        dialog.slotAddGzwhData(value);
        QCOMPARE(snapshot(), before);

        // Inserts carrying the value as region, time, trade, remark or price.
        TLxrgwh other(value, "2021年5月");
        QCOMPARE(other.rows().size(), 0); // the read is refused, nothing listed
        other.slotAddRow();               // bare insert with the value as region
        other.slotAddGzwhData("普工");    // insert with the value as region
        TLxrgwh otherTime("成都市区", value);
        QCOMPARE(otherTime.rows().size(), 0);
        dialog.setCurrentRow(1);
        dialog.slotCopyData({value});
        QCOMPARE(snapshot(), before);

        // A row whose stored values carry the quote (a hand-edited store) is not copied; each
        // other row is its own statement and is copied.
        DBM::clsDAC(LxrgStore::Path())
            .execSql("update lxrg set bz = 'a''b' where FID = " + rows.at(2).GetFID());
        const QString edited = snapshot();
        TLxrgwh quoted("成都市区", "2021年5月");
        quoted.setCurrentRow(2);
        quoted.slotAddRow(); // priced insert copying the quoted remark
        QCOMPARE(snapshot(), edited);
        quoted.slotCopyData({"新区"});
        QCOMPARE(snapshotWhere("dq <> '新区'"), edited);
        DBM::clsDACResult copied =
            DBM::clsDAC(LxrgStore::Path())
                .execSql("select count(*) as n from lxrg where dq = '新区' and bz <> 'a''b'");
        QVERIFY(copied.next());
        QCOMPARE(copied.value("n").toInt(), 7);
        DBM::clsDAC(LxrgStore::Path()).execSql("delete from lxrg where dq = '新区'");
        QCOMPARE(snapshot(), edited);

        // Reads of the sub-dialogs.
        TLxrgwh_Dqfy reuse(value);
        QCOMPARE(reuse.findChild<QListWidget*>()->count(), 0);
        QCOMPARE(snapshot(), edited);
    }

    void deleteWithANonNumericIdFailsUnsent()
    {
        const QString before = snapshot();
        QVERIFY(!LxrgStore::Exec("delete from lxrg where fid = %1", {"fid"}, "slotDeleteRow"));
        QVERIFY(!LxrgStore::Exec("delete from lxrg where fid = %1", {"1 or 1=1"}, "slotDeleteRow"));
        QCOMPARE(snapshot(), before);
        QCOMPARE(RecentExceptionReports().last().tag, QString("TLxrgwh::slotDeleteRow"));
        QCOMPARE(RecentExceptionReports().last().sourceFile, QString("LxGzXmQd\\TLxrgwh"));
    }

    void queryWidgetStatementsFailUnsent_data() { maintenanceStatementsFailUnsent_data(); }
    void queryWidgetStatementsFailUnsent()
    {
        QFETCH(QString, value);
        const QString before = snapshot();
        SporadicTableModel model;
        QAbstractItemModelTester tester(&model,
                                        QAbstractItemModelTester::FailureReportingMode::QtTest);
        // A condition carrying the value lists nothing and finds no times.
        model.Load(value, "2021年5月");
        QCOMPARE(model.rowCount(), 0);
        QVERIFY(model.StartTimes(value).isEmpty());
        model.Load("成都市区", value);
        QCOMPARE(model.rowCount(), 0);

        // Updates of trade and remark: the save fails at that statement, unsent.
        for (int column : {0, 2}) {
            model.Load("成都市区", "2021年5月");
            QCOMPARE(model.rowCount(), 8);
            QVERIFY(model.setData(model.index(1, column), value));
            QVERIFY(!model.slotSaveModifyRecord());
            QCOMPARE(InteractionSeam::lastShown().text, QString("数据保存失败！"));
            QCOMPARE(snapshot(), before);
        }
        // An update queued before the broken one is applied, as without a quote; nothing else.
        model.Load("成都市区", "2021年5月");
        const int fid = model.records().at(0).FID;
        QVERIFY(model.setData(model.index(0, 1), "123"));
        QVERIFY(model.setData(model.index(1, 2), value));
        QVERIFY(model.setData(model.index(2, 1), "456"));
        const QString others = snapshot(fid);
        QVERIFY(!model.slotSaveModifyRecord());
        QCOMPARE(snapshot(fid), others);
        DBM::clsDACResult r =
            DBM::clsDAC(db("MASTER")).execSql(QString("select dj from lxrg where FID=%1").arg(fid));
        QVERIFY(r.next());
        QCOMPARE(r.value("dj").toDouble(), 123.0);
    }
};

QTEST_MAIN(tst_LabourRateQuotes)
#include "tst_LabourRateQuotes.moc"
