#include "InteractionSeam.h"
#include "VXProgressBar.h"
#include "zFileDialog.h"
#include "zMessageBox.h"
#include "zTitleModal.h"

#include <QDialog>
#include <QtTest>

// The host's boxes and dialogs under scripting: nothing modal appears, answers come from the
// queue and every box is recorded with its exact title, text and Chinese buttons.
class tst_InteractionSeam : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { InteractionSeam::setScripted(true); }
    void init() { InteractionSeam::clear(); }

    void boxesRecordKindTitleTextAndButtons()
    {
        QCOMPARE(showInformation(nullptr, "操作提示", "删除成功!"), QMessageBox::Ok);
        showWarning(nullptr, "提示", "请先选择单位工程!");
        showCritical(nullptr, "错误", "文件已损坏");
        showInformation(nullptr, "信息", "是否保存?",
                        QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);

        const QList<InteractionSeam::Shown> shown = InteractionSeam::shown();
        QCOMPARE(shown.size(), 4);
        QCOMPARE(shown.at(0).kind, QString("information"));
        QCOMPARE(shown.at(0).title, QString("操作提示"));
        QCOMPARE(shown.at(0).text, QString("删除成功!"));
        QCOMPARE(shown.at(0).buttons, QStringList{"确定"});
        QCOMPARE(shown.at(1).kind, QString("warning"));
        QCOMPARE(shown.at(1).text, QString("请先选择单位工程!"));
        QCOMPARE(shown.at(2).kind, QString("critical"));
        // Buttons in the order the user reads them, whatever the flag order.
        QCOMPARE(shown.at(3).kind, QString("question"));
        QCOMPARE(shown.at(3).buttons, QStringList({"是", "否", "取消"}));
        QCOMPARE(InteractionSeam::lastShown().title, QString("信息"));
    }

    void answersByButtonTextOrValueInQueueOrder()
    {
        InteractionSeam::pushAnswer(QString("否"));
        InteractionSeam::pushAnswer(QString("是"));
        InteractionSeam::pushAnswer(int(QMessageBox::Cancel));
        QVERIFY(!showQuestion(nullptr, "提示", "确定要删除吗?"));
        QVERIFY(showQuestion(nullptr, "提示", "确定要删除吗?"));
        QCOMPARE(showInformation(nullptr, "提示", "保存修改?",
                                 QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel),
                 QMessageBox::Cancel);
        // With the queue empty the first button is taken: a question answers yes.
        QVERIFY(showQuestion(nullptr, "提示", "继续?"));
        // A scripted text that names no button of the box falls back to the first one.
        InteractionSeam::pushAnswer(QString("取消"));
        QVERIFY(showQuestion(nullptr, "提示", "继续?"));
        QCOMPARE(InteractionSeam::shown().size(), 5);
        QCOMPARE(InteractionSeam::shown().first().buttons, QStringList({"是", "否"}));
    }

    void fileAndInputDialogs()
    {
        InteractionSeam::pushAnswer(QString("/tmp/清单.xlsx"));
        QCOMPARE(
            zFileDialog::getOpenFileName(nullptr, "导入Excel", QString(), "Excel (*.xls *.xlsx)"),
            QString("/tmp/清单.xlsx"));
        // No answer: cancelled.
        QCOMPARE(zFileDialog::getSaveFileName(nullptr, "导出Excel"), QString());
        bool ok = true;
        QCOMPARE(zFileDialog::getText(nullptr, "保存表头模板", "模板名称：", "默认", &ok),
                 QString());
        QVERIFY(!ok);
        InteractionSeam::pushAnswer(QString());
        zFileDialog::getText(nullptr, "保存表头模板", "模板名称：", QString(), &ok);
        QVERIFY(ok); // an empty text typed and accepted is not a cancel

        const QList<InteractionSeam::Shown> shown = InteractionSeam::shown();
        QCOMPARE(shown.size(), 4);
        QCOMPARE(shown.at(0).kind, QString("open"));
        QCOMPARE(shown.at(0).text, QString("Excel (*.xls *.xlsx)"));
        QCOMPARE(shown.at(1).kind, QString("save"));
        QCOMPARE(shown.at(1).title, QString("导出Excel"));
        QCOMPARE(shown.at(2).kind, QString("input"));
        QCOMPARE(shown.at(2).text, QString("模板名称："));
    }

    void modalDialogsRunTheHookThenTakeTheAnswer()
    {
        QDialog dialog;
        dialog.setWindowTitle("汇总材料");
        dialog.setObjectName("SummaryDialog");
        QString seen;
        InteractionSeam::setModalHook([&seen](QDialog* d) { seen = d->windowTitle(); });
        InteractionSeam::pushAnswer(int(QDialog::Accepted));
        QCOMPARE(zTitleModal::ShowModal(&dialog), 0);
        QCOMPARE(seen, QString("汇总材料"));
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        // Unscripted answer: the dialog is rejected.
        QCOMPARE(zTitleModal::ShowModal(&dialog), 1);
        QCOMPARE(zTitleModal::ShowModal(nullptr), 1);
        QCOMPARE(InteractionSeam::shown().size(), 2);
        QCOMPARE(InteractionSeam::lastShown().kind, QString("modal"));
        QCOMPARE(InteractionSeam::lastShown().text, QString("SummaryDialog"));
    }

    void progressIsRecordedAndSeenByTheHook()
    {
        QStringList seen;
        InteractionSeam::setShownHook([&seen](const InteractionSeam::Shown& s) { seen << s.text; });
        {
            VXProgressBar bar("汇总", "正在汇总材料...", 0, 10);
            bar.setValue(4);
            QCOMPARE(bar.value(), 4);
            bar.setText("正在刷新...");
            bar.finish();
        }
        QCOMPARE(seen, QStringList{"正在汇总材料..."});
        QCOMPARE(InteractionSeam::lastShown().kind, QString("progress"));
        QCOMPARE(InteractionSeam::lastShown().title, QString("汇总"));
        // Clearing drops the record, the queue and the hooks.
        InteractionSeam::pushAnswer(QString("否"));
        InteractionSeam::clear();
        QVERIFY(InteractionSeam::shown().isEmpty());
        QVERIFY(showQuestion(nullptr, "提示", "继续?"));
        QCOMPARE(seen.size(), 1);
    }
};

QTEST_MAIN(tst_InteractionSeam)
#include "tst_InteractionSeam.moc"
