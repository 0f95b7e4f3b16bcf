#include "ModulePages.h"
#include "Screenshots.h"
#include "TestProject.h"

#include "QtXmQd/AmountEditor.h"
#include "QtXmQd/FormulaEditingDialog.h"
#include "QtXmQd/QtXmQdModel.h"
#include "QtXmQd/QtXmQdSjWidget.h"
#include "QtXmQd/QtXmQdWidget.h"

#include "FyBlBusiness.h"
#include "InteractionSeam.h"
#include "LxGzXmQdJJjbBusiness.h"
#include "QtXmQdJJjbBusiness.h"
#include "SharedInterface.h"
#include "XtBlBusiness.h"
#include "zBaseMenu.h"
#include "zTableView.h"

#include <QComboBox>
#include <QIdentityProxyModel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QUndoStack>
#include <QtTest>
#include <functional>

// The formula dialog, the amount editor and the "编辑公式" write-back of the other items list.
class tst_FormulaEditing : public QObject
{
    Q_OBJECT

private:
    RURecordControl* undo() { return RURecordControl::GetInstance(); }

    static QtXmQdHzTable* fill(TestProject& p)
    {
        FyBlBusiness::GetInstance()->setValue(p.current, "分部分项工程费", 1000000.0);
        QtXmQdHzTable* t = p.current->getTenderInventory()->getQtXmQdHzTable();
        TestProject::row(t, 0, {{1, "1"}, {2, "暂列金额"}, {3, 50000.0}});
        TestProject::row(t, 3, {{1, "2"}, {2, "总承包服务费"}, {3, "分部分项工程费*0.015"}});
        TestProject::row(t, 0, {{1, "3"}, {2, "材料暂估价"}, {3, 0.0}});
        TestProject::row(t, 0, {{1, "4"}, {2, "计日工"}, {3, 100.0}});
        TestProject::row(t, 4, {{2, "合计"}});
        QtXmQdJJjbBusiness::CalculateTable(p.current, t);
        return t;
    }

    static QAction* findAction(QMenu* menu, const QString& text)
    {
        for (QAction* action : menu->actions()) {
            if (action->menu())
                if (QAction* inner = findAction(action->menu(), text))
                    return inner;
            if (action->text() == text)
                return action;
        }
        return nullptr;
    }

private slots:
    void init()
    {
        InteractionSeam::setScripted(true);
        InteractionSeam::clear();
        undo()->ForgetHistory();
    }

    void feeVariableListAndMenus()
    {
        const QStringList names = FyBlBusiness::FeeVariableNames(SharedInterface::GetAppPath());
        QVERIFY(names.size() >= 209);
        QVERIFY(names.contains("分部分项取费基数"));
        FormulaEditingDialog dialog(nullptr, true);
        // The project menu in the given position order, names without a value left out
        // (208 市政工程费, 204 工器具购置费, 205 安装工程费 ...).
        QList<QAction*> items = dialog.projectVariableMenu()->actions();
        QVERIFY(items.size() >= 30);
        QCOMPARE(items.at(0)->text(), names.at(161 - 1));
        QCOMPARE(items.at(3)->text(), names.at(29 - 1));
        QVERIFY(!findAction(dialog.projectVariableMenu(), "建设项目造价"));
        // Group submenus first, their items without the group prefix; fee bases left out.
        QList<QAction*> other = dialog.otherVariableMenu()->actions();
        QCOMPARE(other.at(0)->menu()->title(), QString("分部分项"));
        QCOMPARE(other.at(3)->menu()->title(), QString("签证索赔项目"));
        QVERIFY(other.at(4)->isSeparator());
        QCOMPARE(other.at(5)->text(), names.at(60 - 1)); // 187, 188: price indices, no value
        QVERIFY(!findAction(dialog.otherVariableMenu(), "预付款"));
        QVERIFY(findAction(other.at(1)->menu(), "人工费"));
        QVERIFY(!findAction(other.at(0)->menu(), "取费基数"));
        QVERIFY(!findAction(other.at(0)->menu(), "分部分项人工费"));

        // A group item goes in with its prefix; a top item as it stands.
        findAction(other.at(1)->menu(), "安全文明施工费")->trigger();
        dialog.formulaEdit()->textCursor().insertText("+");
        items.at(0)->trigger();
        QCOMPARE(dialog.GetFormula(), "措施项目安全文明施工费+" + names.at(160));
        saveShot(&dialog, "formula-dialog");
    }

    void everyOfferedNameHasAValue()
    {
        TestProject p;
        FormulaEditingDialog dialog(nullptr, true);
        QStringList offered;
        std::function<void(QMenu*)> collect = [&](QMenu* menu) {
            auto* base = qobject_cast<zBaseMenu*>(menu);
            for (QAction* action : menu->actions()) {
                if (action->menu())
                    collect(action->menu());
                else if (!action->isSeparator())
                    offered << (base ? base->title() : QString()) + action->text();
            }
        };
        collect(dialog.projectVariableMenu());
        collect(dialog.otherVariableMenu());
        QVERIFY(offered.size() > 100);
        QtXmQdJJjbBusiness::CalculateTable(p.current, fill(p));
        const QHash<QString, double> vars = FyBlBusiness::GetInstance()->variables(p.current);
        for (const QString& name : offered) {
            QVERIFY2(FyBlBusiness::IsDefined(name), qPrintable(name));
            QVERIFY2(vars.contains(name), qPrintable(name));
        }
    }

    void testAndAcceptCheckTheFormula()
    {
        TestProject p;
        fill(p);
        FormulaEditingDialog dialog(nullptr, true);
        dialog.LoadRates(p.unit);
        dialog.SetFormula("其他项目暂列金额*2+1,000");
        dialog.slotTest();
        QCOMPARE(InteractionSeam::lastShown().text, QString("计算公式正确！"));
        QCOMPARE(dialog.resultText(), QString("计算结果：101000.00"));
        QCOMPARE(dialog.GetFormula(), QString("其他项目暂列金额*2+1,000"));
        // Full-width signs and digits are taken as the plain ones.
        dialog.SetFormula("（分部分项工程费＋措施项目费）×０.０１５");
        dialog.slotTest();
        QCOMPARE(dialog.GetFormula(), QString("(分部分项工程费+措施项目费)*0.015"));
        QCOMPARE(InteractionSeam::lastShown().text, QString("计算公式正确！"));
        // A stray comma is no list: the formula is refused, not cut short.
        dialog.SetFormula("其他项目暂列金额*1,5");
        dialog.slotTest();
        QCOMPARE(InteractionSeam::lastShown().text, QString("计算公式中存在非法变量。"));
        QVERIFY(dialog.resultText().isEmpty());
        // An unknown name is refused on accepting too, and the dialog stays open.
        dialog.SetFormula("分部分项工程费*费率X");
        dialog.slotAccept();
        QCOMPARE(InteractionSeam::lastShown().kind, QString("critical"));
        QCOMPARE(InteractionSeam::lastShown().title, QString("错误"));
        QCOMPARE(InteractionSeam::lastShown().text, QString("计算公式中存在非法变量。"));
        QCOMPARE(dialog.result(), 0);
    }

    void aFormulaClosingACycleIsRefused()
    {
        TestProject p;
        fill(p);
        GfSjQdTable* fees = p.current->getTenderInventory()->getGfSjQdTable();
        TestProject::row(fees, 2, {{2, "税金"}, {3, "分部分项工程费+其他项目合计"}, {4, 9.0}});
        FormulaEditingDialog dialog(nullptr, true);
        dialog.LoadRates(p.unit);
        dialog.SetRow(1);
        dialog.SetFormula("税金*0.01");
        dialog.slotAccept();
        QCOMPARE(InteractionSeam::lastShown().kind, QString("critical"));
        QCOMPARE(InteractionSeam::lastShown().text,
                 QString("计算公式存在循环引用：其他项目清单第2行 → 税金 → 规费税金清单第1行 → "
                         "其他项目合计 → 其他项目清单第2行"));
        QCOMPARE(dialog.result(), 0); // still open
    }

    void ratesLoadAndConvert_data()
    {
        QTest::addColumn<QString>("taxStored");
        QTest::addColumn<QString>("taxShown");
        QTest::addColumn<int>("taxUnit");
        QTest::addColumn<double>("quota");
        QTest::addColumn<QString>("quotaShown");
        QTest::newRow("percent") << "3.41%"
                                 << "3.41" << 0 << 0.1 << "10";
        QTest::newRow("per mille") << "9‰"
                                   << "9" << 1 << 0.0015 << "0.15";
        QTest::newRow("no sign") << "3.41"
                                 << "3.41" << 0 << 0.0014 << "0.14";
        QTest::newRow("one") << ""
                             << "" << 0 << 0.01 << "1";
    }

    void ratesLoadAndConvert()
    {
        QFETCH(QString, taxStored);
        QFETCH(QString, taxShown);
        QFETCH(int, taxUnit);
        QFETCH(double, quota);
        QFETCH(QString, quotaShown);
        TestProject p;
        p.current->setXtBl(10, taxStored);
        FyBlBusiness::GetInstance()->ChangeFyBl(p.index, 0, 3, FyBlBusiness::QuotaFeeRateId, quota);
        FormulaEditingDialog dialog(nullptr, true);
        dialog.LoadRates(p.unit);
        QCOMPARE(dialog.sjFlEdit()->text(), taxShown);
        QCOMPARE(dialog.sjFlUnit()->currentIndex(), taxUnit);
        QCOMPARE(dialog.deCdFlEdit()->text(), quotaShown);
        QCOMPARE(dialog.GetDeCdFl(), quota);
        if (!taxStored.isEmpty() && taxStored.contains(QRegularExpression("[%‰]")))
            QCOMPARE(dialog.GetSjFlText(), taxStored);
        dialog.sjFlEdit()->clear();
        QCOMPARE(dialog.GetSjFl(), 0.0);
        QCOMPARE(dialog.GetSjFlText(), QString());
    }

    void extractRatesKeepsItsAsymmetry()
    {
        TestProject p;
        GfSjQdTable* fees = p.current->getTenderInventory()->getGfSjQdTable();
        TestProject::row(fees, 2, {{2, "税金"}, {4, 9.0}});
        FormulaEditingDialog dialog(nullptr, true);
        dialog.LoadRates(p.unit);
        dialog.deCdFlEdit()->setText("5");
        dialog.slotExtractRates(); // no quota rate defined: said so; the tax rate is taken
        QCOMPARE(InteractionSeam::lastShown().text, QString("没有找到工程定额测定费费率定义数据"));
        QCOMPARE(InteractionSeam::lastShown().title, QString("提示"));
        QCOMPARE(dialog.sjFlEdit()->text(), QString("9"));
        QCOMPARE(dialog.deCdFlEdit()->text(), QString("5"));
        p.current->getConfig()->setItem(30, "0.14");
        dialog.slotExtractRates(); // a quota rate without a sign changes nothing
        QCOMPARE(dialog.deCdFlEdit()->text(), QString("5"));
        p.current->getConfig()->setItem(30, "1.4‰");
        dialog.slotExtractRates();
        QCOMPARE(dialog.deCdFlEdit()->text(), QString("1.4"));
        QCOMPARE(dialog.deCdFlUnit()->currentIndex(), 1);
    }

    void editFormulaThroughTheModelSignal()
    {
        TestProject p;
        QtXmQdHzTable* t = fill(p);
        QtXmQdWidget page;
        showNode(page, p.unit);
        auto* model = static_cast<QtXmQdModel*>(page.sjWidget()->model());
        const QModelIndex amount = model->index(1, model->columnOfField(3));
        auto* editor =
            qobject_cast<AmountEditor*>(amount.data(Qtitan::EditorRole).value<QObject*>());
        QVERIFY(editor);
        QVERIFY(!model->index(0, model->columnOfField(3)).data(Qtitan::EditorRole).isValid());
        QCOMPARE(amount.data().toString(), QString("15000.00"));

        // Focus on the cell asks for the dialog with the row's formula at once.
        std::unique_ptr<QWidget> edit(editor->createEditorWidget(nullptr));
        editor->setEditorData(edit.get(), amount);
        QCOMPARE(static_cast<QLineEdit*>(edit.get())->text(), QString("15000.00"));
        QSignalSpy asked(editor, &AmountEditor::signalToEditFormula);
        QFocusEvent focus(QEvent::FocusIn);
        QCoreApplication::sendEvent(edit.get(), &focus);
        QCOMPARE(asked.count(), 1);
        QCOMPARE(asked.first().first().toString(), QString("分部分项工程费*0.015"));
        // A press just outside the line edit is ignored; suppressed, nothing happens.
        edit->resize(100, 20);
        QMouseEvent outside(QEvent::MouseButtonPress, QPointF(100, 5), Qt::LeftButton,
                            Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(edit.get(), &outside);
        QCOMPARE(asked.count(), 1);
        QMouseEvent inside(QEvent::MouseButtonPress, QPointF(50, 5), Qt::LeftButton, Qt::LeftButton,
                           Qt::NoModifier);
        QCoreApplication::sendEvent(edit.get(), &inside);
        QCOMPARE(asked.count(), 2);
        editor->setSuppress(true);
        QCoreApplication::sendEvent(edit.get(), &focus);
        QCOMPARE(asked.count(), 2);

        // Closing the editor writes the formula back, also when it is unchanged.
        struct Recorder : QIdentityProxyModel
        {
            QVariantList written;
            bool setData(const QModelIndex& index, const QVariant& value, int role) override
            {
                written << value;
                return QIdentityProxyModel::setData(index, value, role);
            }
        } recorder;
        recorder.setSourceModel(model);
        editor->setModelData(edit.get(), &recorder, recorder.mapFromSource(amount));
        QCOMPARE(recorder.written, QVariantList({QString("分部分项工程费*0.015")}));
        QCOMPARE(t->at(1)->getValue(3).toString().contains("分部分项工程费*0.015"), true);
    }

    void newFormulaAndRatesAreWrittenAsOneStep()
    {
        TestProject p;
        QtXmQdHzTable* t = fill(p);
        p.current->setXtBl(10, "9%");
        FyBlBusiness::GetInstance()->ChangeFyBl(p.index, 0, 3, FyBlBusiness::QuotaFeeRateId,
                                                0.0014);
        QtXmQdWidget page;
        showNode(page, p.unit);
        auto* grid = static_cast<QtXmQdSjWidget*>(page.sjWidget());
        FyBlBusiness* fyBl = FyBlBusiness::GetInstance();

        // Accepted as it was, or rejected: nothing is written and no step recorded.
        for (const int answer : {int(QDialog::Accepted), int(QDialog::Rejected)}) {
            InteractionSeam::pushAnswer(answer);
            grid->EditFormula(1);
            QCOMPARE(undo()->undoStack()->count(), 0);
        }

        // Only the formula changes: neither rate is written.
        InteractionSeam::setModalHook([](QDialog* d) {
            auto* dialog = static_cast<FormulaEditingDialog*>(d);
            QCOMPARE(dialog->GetFormula(), QString("分部分项工程费*0.015"));
            QCOMPARE(dialog->sjFlEdit()->text(), QString("9"));
            dialog->SetFormula("分部分项工程费*0.02");
            dialog->deCdFlEdit()->setText("0.1400001"); // below the 1e-6 threshold
        });
        InteractionSeam::pushAnswer(int(QDialog::Accepted));
        grid->EditFormula(1);
        QCOMPARE(t->at(1)->getValue(3).toString(), QString("分部分项工程费*0.02"));
        QCOMPARE(t->at(1)->getDouble(6), 20000.0);
        QCOMPARE(undo()->undoStack()->count(), 1);
        QCOMPARE(undo()->undoStack()->undoText(), QString("编辑公式"));
        QCOMPARE(p.current->getXtBl(10).toString(), QString("9%"));
        QCOMPARE(fyBl->GetFyBlValueById(p.current, FyBlBusiness::TaxRateId), 0.0);
        QCOMPARE(fyBl->GetFyBlValueById(p.current, FyBlBusiness::QuotaFeeRateId), 0.0014);

        // New rates go with the formula, in the same step.
        InteractionSeam::setModalHook([](QDialog* d) {
            auto* dialog = static_cast<FormulaEditingDialog*>(d);
            dialog->sjFlEdit()->setText("3");
            dialog->deCdFlEdit()->setText("1.5");
            dialog->deCdFlUnit()->setCurrentIndex(1); // per mille
        });
        InteractionSeam::pushAnswer(int(QDialog::Accepted));
        grid->EditFormula(1);
        QCOMPARE(p.current->getXtBl(10).toString(), QString("3%"));
        QCOMPARE(fyBl->GetFyBlValueById(p.current, FyBlBusiness::TaxRateId), 0.03);
        QCOMPARE(fyBl->GetFyBlValueById(p.current, FyBlBusiness::QuotaFeeRateId), 0.0015);
        QCOMPARE(undo()->undoStack()->count(), 2);
        QVERIFY(undo()->Undo());
        QCOMPARE(fyBl->GetFyBlValueById(p.current, FyBlBusiness::QuotaFeeRateId), 0.0014);
        QCOMPARE(p.current->getXtBl(10).toString(), QString("9%"));
    }

    void changedAmountOfMaterialProvisionalPricesIsRemindedOf()
    {
        TestProject p;
        QtXmQdHzTable* t = fill(p);
        QtXmQdWidget page;
        showNode(page, p.unit);
        InteractionSeam::setModalHook(
            [](QDialog* d) { static_cast<FormulaEditingDialog*>(d)->SetFormula("1200*3"); });
        InteractionSeam::pushAnswer(int(QDialog::Accepted));
        static_cast<QtXmQdSjWidget*>(page.sjWidget())->EditFormula(2);
        QCOMPARE(t->at(2)->getDouble(3), 3600.0); // an ordinary row keeps what it comes to
        QVERIFY(InteractionSeam::lastShown().text.startsWith(
            "注意：如果此处录入或计算产生的金额不包含在单位工程造价中"));
    }

    void extractingDayworkFeesIsOneStep()
    {
        TestProject p;
        QtXmQdHzTable* t = fill(p);
        LxGzXmRgDjQdTable* daywork = p.current->getTenderInventory()->getLxGzXmRgDjQdTable();
        TestProject::row(daywork, 1, {{2, "人工"}});
        TestProject::row(daywork, 0, {{2, "普工"}, {4, 110.0}, {6, 20.0}});
        TestProject::row(daywork, 0, {{2, "技工"}, {4, 142.0}, {6, 10.0}});
        LxGzXmQdJJjbBusiness::CalculateLxGzXmQdTable(p.current, daywork);
        QCOMPARE(daywork->at(0)->getDouble(7), 3620.0);
        QtXmQdWidget page;
        showNode(page, p.unit);
        static_cast<QtXmQdSjWidget*>(page.sjWidget())->slotAcExtractSporadicWorkItemFees();
        QCOMPARE(t->at(3)->getDouble(3), 3620.0);
        QCOMPARE(undo()->undoStack()->undoText(), QString("提取零星工作项目费"));
        static_cast<QtXmQdSjWidget*>(page.sjWidget())->slotAcExtractSporadicWorkItemFees();
        QCOMPARE(undo()->undoStack()->count(), 1); // nothing new to pull
        QVERIFY(undo()->Undo());
        QCOMPARE(t->at(3)->getDouble(3), 100.0);
    }

    void templateSwitchIsOneStep()
    {
        TestProject p;
        QtXmQdHzTable* t = fill(p);
        QtXmQdWidget page;
        showNode(page, p.unit);
        auto* grid = static_cast<QtXmQdSjWidget*>(page.sjWidget());
        grid->CurQtXmQdTemplateChanged("不存在的模板");
        QCOMPARE(t->count(), 5);
        grid->CurQtXmQdTemplateChanged("2020定额其他项目清单");
        QCOMPARE(t->at(t->count() - 1)->getKind(), 4);
        QCOMPARE(t->at(0)->getValue(2).toString(), QString("暂列金额"));
        QCOMPARE(p.current->getXtBl(2).toString(), QString("2020定额其他项目清单"));
        QCOMPARE(undo()->undoStack()->undoText(), QString("模板选择"));
        QVERIFY(undo()->Undo());
        QCOMPARE(t->count(), 5);
        QCOMPARE(t->at(3)->getValue(2).toString(), QString("计日工"));
    }
};

QTEST_MAIN(tst_FormulaEditing)
#include "tst_FormulaEditing.moc"
