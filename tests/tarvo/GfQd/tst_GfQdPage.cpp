#include "AppCopy.h"
#include "ModelTesters.h"
#include "TestProject.h"

#include "GfQd/GfQdSjWidget.h"
#include "GfQd/GfQdWidget.h"
#include "common/BillModel.h"

#include "Communication.h"
#include "FyBlBusiness.h"
#include "HostConstants.h"
#include "InteractionSeam.h"
#include "MsgExplain.h"
#include "SharedInterface.h"
#include "TemplateAccess.h"
#include "zTableView.h"

#include <QMessageBox>
#include <QTemporaryDir>
#include <QUndoStack>
#include <QtTest>

namespace {
QStringList g_log;
void captureLog(QtMsgType, const QMessageLogContext&, const QString& text)
{
    g_log << text;
}
} // namespace

// The fees and taxes page with its content templates.
class tst_GfQdPage : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_app;
    RURecordControl* undo() { return RURecordControl::GetInstance(); }

    static GfQdSjWidget* grid(GfQdWidget& page)
    {
        return static_cast<GfQdSjWidget*>(page.sjWidget());
    }

    static void load(GfQdWidget& page, ProTreeNode* node)
    {
        QVariant payload = QVariant::fromValue(node);
        page.ProcMsg(74, &payload);
        attachModelTesters(&page);
    }

    static QStringList names(GeneralTableBase* table)
    {
        QStringList list;
        for (BaseDataItem* item : table->items())
            list << item->getValue(2).toString();
        return list;
    }

    static QList<MsgExplain::ToChangeMenuItemInfo> ribbonUpdates(const QSignalSpy& spy)
    {
        QList<MsgExplain::ToChangeMenuItemInfo> list;
        for (const QList<QVariant>& call : spy)
            if (call.at(1).toInt() == 47)
                list << call.at(2).value<MsgExplain::ToChangeMenuItemInfo>();
        return list;
    }

private slots:
    void initTestCase()
    {
        useAppCopy(SharedInterface::GetAppPath(), m_app,
                   {HostConstants::SubGCSZDir, QStringLiteral("Config/TableHeader/")});
        InteractionSeam::setScripted(true);
    }

    void init()
    {
        InteractionSeam::clear();
        undo()->ForgetHistory();
    }

    void templateListHoldsTheDeliveredNines()
    {
        const QStringList names = GfQdSjWidget::TemplateNames();
        QCOMPARE(names.size(), 9);
        QVERIFY(names.contains("2020定额规费税金清单-一般计税"));
        // Hidden files count, symbolic links do not.
        QFile hidden(m_app.filePath(HostConstants::SubGCSZDir + ".我的" +
                                    HostConstants::GfQdTemplateFileProfix));
        QVERIFY(hidden.open(QIODevice::WriteOnly));
        hidden.close();
        QFile::link(m_app.filePath(HostConstants::SubGCSZDir + "规费清单.gfqd"),
                    m_app.filePath(HostConstants::SubGCSZDir + "链接" +
                                   HostConstants::GfQdTemplateFileProfix));
        QCOMPARE(GfQdSjWidget::TemplateNames().size(), 10);
        QVERIFY(GfQdSjWidget::TemplateNames().contains(".我的"));
        hidden.remove();
    }

    void defaultTemplateFromThePricingModel()
    {
        TestProject p;
        GfQdWidget page;
        QSignalSpy sent(Communication::GetInstance(), &Communication::signalMsg);
        p.project->GetPriceModelConfig()->setItem(5, "2015定额规费税金清单-简易计税");
        g_log.clear();
        QtMessageHandler previous = qInstallMessageHandler(captureLog);
        load(page, p.plainUnit);
        qInstallMessageHandler(previous);
        QVERIFY(g_log.contains("Default Template: 2015定额规费税金清单-简易计税"));
        QList<MsgExplain::ToChangeMenuItemInfo> updates = ribbonUpdates(sent);
        QCOMPARE(updates.last().strText, QString("模板选择"));
        QCOMPARE(updates.last().nType, 3);
        QCOMPARE(updates.last().value.toString(), QString("2015定额规费税金清单-简易计税"));

        // A pricing model naming a template that is not there: an empty choice, the list kept.
        TestProject::row(p.plain->getTenderInventory()->getGfSjQdTable(), 0, {{2, "养老保险费"}});
        p.project->GetPriceModelConfig()->setItem(5, "已删除的模板");
        sent.clear();
        load(page, p.plainUnit);
        updates = ribbonUpdates(sent);
        QCOMPARE(updates.last().value.toString(), QString());
        QCOMPARE(names(p.plain->getTenderInventory()->getGfSjQdTable()), QStringList{"养老保险费"});
    }

    void readOnlyProjectOffersNoExports()
    {
        TestProject p;
        GfQdWidget page;
        QSignalSpy sent(Communication::GetInstance(), &Communication::signalMsg);
        load(page, p.plainUnit);
        for (const MsgExplain::ToChangeMenuItemInfo& update : ribbonUpdates(sent))
            QVERIFY(!update.strText.startsWith("导出"));
        p.project->SetReadOnly(true);
        sent.clear();
        load(page, p.plainUnit);
        QStringList disabled;
        for (const MsgExplain::ToChangeMenuItemInfo& update : ribbonUpdates(sent))
            if (update.nState == 3)
                disabled << update.strText;
        QCOMPARE(disabled, QStringList({"导出招投标CJZ", "导出竣工CJZ", "导出备案CJZX"}));
        p.project->SetReadOnly(false);
    }

    void applyingIsOneUndoStepAndAmountsFollow()
    {
        TestProject p;
        FyBlBusiness::GetInstance()->setValue(p.plain, "分部分项人工费", 200000.0);
        FyBlBusiness::GetInstance()->setValue(p.plain, "分部分项工程费", 1000000.0);
        FyBlBusiness::GetInstance()->setValue(p.plain, "措施项目费", 120000.0);
        GfSjQdTable* list = p.plain->getTenderInventory()->getGfSjQdTable();
        TestProject::row(list, 0, {{2, "旧费用"}, {4, 1.0}});
        GfQdWidget page;
        load(page, p.plainUnit);
        grid(page)->CurGfSjTamplateChanged("2020定额规费税金清单-一般计税");
        QCOMPARE(list->count(), 9);
        QCOMPARE(list->at(1)->getValue(2).toString(), QString("养老保险费"));
        QCOMPARE(list->at(1)->getDouble(5), 15000.0); // 200000 x 7.5%
        const double fees = FyBlBusiness::GetInstance()->GetFyBlValueByName(p.plain, "规费合计");
        QCOMPARE(fees, 31200.0); // 200000 x 15.1% + 1000000 x 0.1%
        QCOMPARE(list->at(8)->getDouble(5),
                 std::round((1000000.0 + 120000.0 + fees) * 9.0) / 100.0);
        QCOMPARE(undo()->undoStack()->count(), 1);
        QCOMPARE(undo()->undoStack()->undoText(), QString("调用内容模板"));

        // Editing a rate: the amount follows base x rate.
        BillModel* model = page.sjWidget()->model();
        QVERIFY(model->setData(model->index(1, model->columnOfField(4)), "8"));
        QCOMPARE(list->at(1)->getDouble(5), 16000.0);
        QCOMPARE(model->index(1, model->columnOfField(4)).data().toString(), QString("8%"));

        // Both steps come back.
        QVERIFY(undo()->Undo());
        QVERIFY(undo()->Undo());
        QCOMPARE(names(list), QStringList{"旧费用"});

        // The simplified tax method differs only in its tax rate.
        grid(page)->CurGfSjTamplateChanged("2020定额规费税金清单-简易计税");
        QCOMPARE(list->at(8)->getDouble(4), 3.0);
    }

    void missingOrMalformedTemplatesChangeNothing()
    {
        TestProject p;
        GfSjQdTable* list = p.plain->getTenderInventory()->getGfSjQdTable();
        TestProject::row(list, 0, {{2, "养老保险费"}});
        GfQdWidget page;
        load(page, p.plainUnit);
        grid(page)->CurGfSjTamplateChanged("不存在的模板");
        QVERIFY(InteractionSeam::shown().isEmpty());
        QFile bad(m_app.filePath(HostConstants::SubGCSZDir + "坏模板" +
                                 HostConstants::GfQdTemplateFileProfix));
        QVERIFY(bad.open(QIODevice::WriteOnly));
        bad.write("{\"format\": \"Tarvo content template\", \"tableType\": 104, \"rows\": [1, 2");
        bad.close();
        grid(page)->CurGfSjTamplateChanged("坏模板");
        QCOMPARE(InteractionSeam::lastShown().kind, QString("warning"));
        QVERIFY(InteractionSeam::lastShown().text.contains("坏模板"));
        QCOMPARE(names(list), QStringList{"养老保险费"});
        QCOMPARE(undo()->undoStack()->count(), 0);
        bad.remove();
    }

    void saveThenApplyRoundTrip()
    {
        TestProject p;
        GfSjQdTable* list = p.plain->getTenderInventory()->getGfSjQdTable();
        TestProject::row(list, 1, {{1, "1"}, {2, "规费"}});
        TestProject::row(list, 0,
                         {{1, "1.1"}, {2, "安全生产责任险"}, {3, "分部分项工程费"}, {4, 0.2}});
        GfQdWidget page;
        load(page, p.plainUnit);
        InteractionSeam::pushAnswer(QString("我的规费"));
        grid(page)->SaveTemplate();
        QCOMPARE(InteractionSeam::lastShown().text, QString("保存成功！"));
        QVERIFY(GfQdSjWidget::TemplateNames().contains("我的规费"));

        // Applied to another unit project.
        GfQdWidget other;
        load(other, p.unit);
        grid(other)->CurGfSjTamplateChanged("我的规费");
        GfSjQdTable* target = p.current->getTenderInventory()->getGfSjQdTable();
        QCOMPARE(names(target), QStringList({"规费", "安全生产责任险"}));
        QCOMPARE(target->at(1)->getValue(3).toString(), QString("分部分项工程费"));
        QCOMPARE(target->at(0)->getKind(), 1);

        InteractionSeam::clear();
        InteractionSeam::pushAnswer(QString("a/b"));
        grid(page)->SaveTemplate();
        QVERIFY(InteractionSeam::lastShown().text.contains("无效"));
    }

    void rowCommandsAreOneStepEach()
    {
        TestProject p;
        GfSjQdTable* list = p.plain->getTenderInventory()->getGfSjQdTable();
        for (const char* name : {"养老保险费", "失业保险费", "医疗保险费"})
            TestProject::row(list, 0, {{2, QString::fromUtf8(name)}});
        GfQdWidget page;
        load(page, p.plainUnit);
        BillModel* model = page.sjWidget()->model();
        page.sjWidget()->view()->setCurrentIndex(model->index(1, 0));
        grid(page)->InsertRow();
        QCOMPARE(names(list), QStringList({"养老保险费", "", "失业保险费", "医疗保险费"}));
        QCOMPARE(undo()->undoStack()->undoText(), QString("插入行"));
        grid(page)->DeleteCurrentRow("招投标-删除行");
        QCOMPARE(names(list), QStringList({"养老保险费", "失业保险费", "医疗保险费"}));
        QCOMPARE(undo()->undoStack()->undoText(), QString("招投标-删除行"));

        // Clearing asks first, without a question mark; cancelling changes nothing.
        InteractionSeam::pushAnswer(int(QMessageBox::Cancel));
        grid(page)->ClearAllRows();
        QCOMPARE(InteractionSeam::lastShown().title, QString("操作提示"));
        QCOMPARE(InteractionSeam::lastShown().text, QString("你确定清除所有行内容吗"));
        QCOMPARE(InteractionSeam::lastShown().buttons, QStringList({"确定", "取消"}));
        QCOMPARE(list->count(), 3);
        InteractionSeam::pushAnswer(int(QMessageBox::Ok));
        grid(page)->ClearAllRows();
        QCOMPARE(list->count(), 0);
        QCOMPARE(undo()->undoStack()->count(), 3);
        QVERIFY(undo()->Undo());
        QCOMPARE(names(list), QStringList({"养老保险费", "失业保险费", "医疗保险费"}));

        // A locked list takes no command.
        list->SetReadOnlyLocked(true);
        grid(page)->InsertRow();
        QCOMPARE(list->count(), 3);
    }
};

QTEST_MAIN(tst_GfQdPage)
#include "tst_GfQdPage.moc"
