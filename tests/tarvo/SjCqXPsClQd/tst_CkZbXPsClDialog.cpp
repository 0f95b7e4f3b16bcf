#include "Screenshots.h"
#include "ScriptedSession.h"
#include "TestProject.h"

#include "SjCqXPsClQd/PopupDialog/CkZbXPsClDialog.h"
#include "SjCqXPsClQd/PopupDialog/CkZbXPsClModel.h"
#include "SjCqXPsClQd/PopupDialog/ImportExcelDataDialog.h"
#include "common/RowsCountInputDialog.h"

#include "EvaluatedMaterialImport.h"
#include "InteractionSeam.h"
#include "LibXLExcel.h"
#include "ProcExceptionNew.h"
#include "SjCqXPsClTable.h"
#include "TenderXmlWriter.h"

#include <QAbstractItemModelTester>
#include <QMenu>
#include <QSpinBox>
#include <QTableView>
#include <QTemporaryDir>
#include <QToolButton>
#include <QtTest>

// The tender's evaluated-materials list: its grid, loading it from a tender file, the export
// and its refusals, a list that survives the tender file, the page and the workbook whole;
// and the rows-count dialog.
class tst_CkZbXPsClDialog : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

    static QVector<TenderEvaluatedMaterial> sample()
    {
        QVector<TenderEvaluatedMaterial> list;
        for (int i = 1; i <= 3; ++i) {
            TenderEvaluatedMaterial m;
            m.serial = QString::number(i);
            m.code = QString("XPS-%1").arg(i, 3, 10, QChar('0'));
            m.name = QString("材料%1").arg(i);
            m.spec = QString("规格 %1×20").arg(i);
            m.unit = i == 2 ? "m³" : "t";
            m.origin = "四川成都";
            m.manufacturer = QString("厂家%1").arg(i);
            m.variety = "品种甲";
            m.grade = i == 3 ? QString() : "一级";
            m.remark = QString("备注 \"%1\"").arg(i);
            list << m;
        }
        return list;
    }

    QString tenderFile(const QVector<TenderEvaluatedMaterial>& evaluated)
    {
        TenderDocument d;
        d.evaluated = evaluated;
        const QString path = m_dir.filePath("招标文件.cjz");
        QString error;
        return TenderXmlWriter::WriteFile(path, d, true, &error) ? path : QString();
    }

    static QStringList fields(const TenderEvaluatedMaterial& m)
    {
        QStringList values;
        for (int c = 0; c < CkZbXPsClModel::eColumnCount; ++c)
            values << CkZbXPsClModel::Text(m, c);
        return values;
    }

    static QAction* entry(CkZbXPsClDialog& dialog, const QString& text)
    {
        for (QAction* a : dialog.importButton()->menu()->actions())
            if (a->text() == text)
                return a;
        return nullptr;
    }

private slots:
    void init() { beginScriptedSession(); }
    void cleanup() { endScriptedSession(); }

    void storedListIsShownReadOnly()
    {
        TestProject p;
        CkZbXPsClDialog dialog(p.current);
        QAbstractItemModelTester tester(dialog.model(),
                                        QAbstractItemModelTester::FailureReportingMode::QtTest);
        dialog.storeMaterials(sample());
        QCOMPARE(dialog.model()->rowCount(), 3);
        for (int i = 0; i < 3; ++i)
            QCOMPARE(fields(dialog.model()->materials().at(i)), fields(sample().at(i)));
        QVERIFY(!(dialog.model()->flags(dialog.model()->index(0, 2)) & Qt::ItemIsEditable));
        saveShot(&dialog, "CkZbXPsClDialog");
    }

    void exportRefusals()
    {
        TestProject p;
        CkZbXPsClDialog dialog(p.current);
        dialog.slotExportBtnClicked();
        QCOMPARE(InteractionSeam::lastShown().text, QString("当前表内无招标需评审材料数据"));
        QCOMPARE(InteractionSeam::lastShown().title, QString("提示"));
        dialog.storeMaterials(sample());
        p.project->SetLockExport(true);
        InteractionSeam::clear();
        dialog.slotExportBtnClicked();
        QCOMPARE(InteractionSeam::shown().size(), 1);
        QCOMPARE(InteractionSeam::lastShown().text,
                 QString("当前工程只读保护设置中不允许报表及接口输出，不支持导出。"));
        // A read-only project takes no new list.
        p.project->SetReadOnly(true);
        CkZbXPsClDialog readOnly(p.current);
        QVERIFY(!readOnly.importButton()->isEnabled());
        // A cancelled save changes nothing and says nothing more.
        p.project->SetLockExport(false);
        InteractionSeam::clear();
        dialog.slotExportBtnClicked();
        QCOMPARE(InteractionSeam::shown().size(), 1);
        QCOMPARE(InteractionSeam::lastShown().kind, QString("save"));
    }

    void loadingATenderFile()
    {
        TestProject p;
        CkZbXPsClDialog dialog(p.current);
        // A file without an evaluated list leaves the stored one alone.
        dialog.storeMaterials(sample().mid(0, 1));
        InteractionSeam::pushAnswer(tenderFile({}));
        entry(dialog, "从CJZ文件中载入")->trigger();
        QCOMPARE(InteractionSeam::lastShown().text, QString("所选招标文件中没有需评审材料清单"));
        QCOMPARE(dialog.model()->rowCount(), 1);
        // Not a tender file: the reader's reason, nothing changes.
        QFile junk(m_dir.filePath("junk.YFJZ"));
        QVERIFY(junk.open(QIODevice::WriteOnly));
        junk.write("not a tender file");
        junk.close();
        InteractionSeam::pushAnswer(junk.fileName());
        entry(dialog, "从YFJZ文件中载入")->trigger();
        QCOMPARE(InteractionSeam::lastShown().title, QString("操作提示"));
        QCOMPARE(dialog.model()->rowCount(), 1);

        InteractionSeam::clear();
        InteractionSeam::pushAnswer(tenderFile(sample()));
        entry(dialog, "从YFJZ文件中载入")->trigger();
        QCOMPARE(InteractionSeam::shown().first().kind, QString("open"));
        QCOMPARE(dialog.model()->rowCount(), 3);
        QCOMPARE(p.project->GetGcZbXPsCl().size(), 3);
        QVERIFY(RecentExceptionReports().isEmpty());
    }

    void everyFieldSurvivesFileDialogWorkbookAndBack_data()
    {
        QTest::addColumn<QString>("suffix");
        QTest::newRow("xlsx") << "xlsx";
        QTest::newRow("xls") << "xls";
    }
    void everyFieldSurvivesFileDialogWorkbookAndBack()
    {
        QFETCH(QString, suffix);
        TestProject p;
        CkZbXPsClDialog dialog(p.current);
        InteractionSeam::pushAnswer(tenderFile(sample()));
        dialog.slotImportCJZClicked();
        const QString path = m_dir.filePath("导出为招标需评审材料清单." + suffix);
        InteractionSeam::pushAnswer(path);
        dialog.slotExportBtnClicked();
        QCOMPARE(InteractionSeam::lastShown().text, QString("导出完毕！"));

        // Read back as the workbook import reads it: each record as it went in.
        LibXLExcel book;
        QVERIFY2(book.Open(path), qPrintable(book.ErrorMessage()));
        const EvaluatedMaterialImport import(*book.GetSheet(0));
        const EvaluatedMaterialImport::Layout layout = import.findLayout();
        QCOMPARE(layout.headerRow, 1);
        QCOMPARE(layout.fields.mid(0, 10), QVector<int>({0, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
        const EvaluatedMaterialImport::Identification found =
            import.identify(layout.fields, layout.firstDataRow);
        QVector<int> rows;
        for (int r = 0; r < found.kinds.size(); ++r)
            if (found.kinds.at(r) == EvaluatedMaterialImport::MaterialRow)
                rows << r;
        const QVector<TenderEvaluatedMaterial> back = import.records(layout.fields, rows);
        QCOMPARE(back.size(), 3);
        for (int i = 0; i < back.size(); ++i)
            QCOMPARE(fields(back.at(i)), fields(sample().at(i)));

        // And into the project again through "从Excel文件中载入": the stored list is the same.
        dialog.storeMaterials({});
        InteractionSeam::setModalHook([&](QDialog* d) {
            auto* import = qobject_cast<ImportExcelDataDialog*>(d);
            QVERIFY(import);
            QVERIFY(import->openFile(path));
            import->slotIdentifyLine();
            import->slotAccept();
        });
        InteractionSeam::pushAnswer(int(QDialog::Accepted));
        entry(dialog, "从Excel文件中载入")->trigger();
        InteractionSeam::setModalHook(nullptr);
        QCOMPARE(dialog.model()->rowCount(), 3);
        for (int i = 0; i < 3; ++i)
            QCOMPARE(fields(dialog.model()->materials().at(i)), fields(sample().at(i)));
        QCOMPARE(p.project->GetGcZbXPsCl().size(), 3);
    }

    void rowsCountDialogGivesItsCount()
    {
        RowsCountInputDialog dialog;
        dialog.findChild<QSpinBox*>()->setValue(45);
        QCOMPARE(dialog.rowsCount(), 45);
        saveShot(&dialog, "RowsCountInputDialog");
    }
};

QTEST_MAIN(tst_CkZbXPsClDialog)
#include "tst_CkZbXPsClDialog.moc"
