#include "Screenshots.h"

#include "SjCqXPsClQd/PopupDialog/ImportExcelDataDialog.h"
#include "SjCqXPsClQd/PopupDialog/ImportExcelDataModel.h"

#include "EvaluatedMaterialImport.h"
#include "InteractionSeam.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTableView>
#include <QtTest>

using Import = EvaluatedMaterialImport;

// The Excel import dialog as the user drives it: open a workbook, choose the sheet, map
// columns, identify, mark rows, accept; and what it refuses.
class tst_ImportExcelDataDialog : public QObject
{
    Q_OBJECT

private:
    static QString sample(const QString& name) { return QStringLiteral(SAMPLES_DIR "/") + name; }

    // Opens through "打开文件" as the user would, the file dialog answered with path.
    static void open(ImportExcelDataDialog& dialog, const QString& path)
    {
        InteractionSeam::pushAnswer(path);
        dialog.findChild<QPushButton*>("btnOpenFile")->click();
    }
    static void identify(ImportExcelDataDialog& dialog)
    {
        dialog.findChild<QPushButton*>("btnIdentifyLine")->click();
    }
    static void accept(ImportExcelDataDialog& dialog)
    {
        dialog.findChild<QPushButton*>("btnOk")->click();
    }
    static QVector<int> materialRows(const ImportExcelDataModel& model)
    {
        QVector<int> rows;
        for (int row = 0; row < model.rowCount(); ++row)
            if (model.index(row, 0).data(ImportExcelDataModel::ObjectRole) == "材料行")
                rows << row;
        return rows;
    }

private slots:
    void initTestCase() { InteractionSeam::setScripted(true); }
    void init() { InteractionSeam::clear(); }

    void nothingOpenNothingAccepted();
    void openMapIdentifyAccept();
    void twoRowHeaderMergedAndMapped();
    void sheetChoiceAndHiddenSheets();
    void selectOnIdentifyOffAndRowKinds();
    void mappingProblems();
    void openFailureKeepsWhatWasShown();
};

void tst_ImportExcelDataDialog::nothingOpenNothingAccepted()
{
    ImportExcelDataDialog dialog;
    // Nothing open: accepting asks for rows and stays.
    accept(dialog);
    QCOMPARE(InteractionSeam::lastShown().title, QString("提示"));
    QCOMPARE(InteractionSeam::lastShown().text, QString("未选择导入行"));
    QCOMPARE(dialog.result(), int(QDialog::Rejected));
    identify(dialog); // no sheet: nothing happens
    QCOMPARE(InteractionSeam::shown().size(), 1);
}

void tst_ImportExcelDataDialog::openMapIdentifyAccept()
{
    ImportExcelDataDialog dialog;
    QAbstractItemModelTester tester(dialog.model());
    open(dialog, sample("需评审材料-简单.xlsx"));
    QCOMPARE(InteractionSeam::shown().first().kind, QString("open"));
    QCOMPARE(InteractionSeam::shown().first().text, QString("Excel文件 (*.xls *.xlsx)"));
    QVERIFY(dialog.findChild<QLineEdit*>("edtFilePath")->text().endsWith("需评审材料-简单.xlsx"));
    ImportExcelDataModel& model = *dialog.model();
    QCOMPARE(model.rowCount(), 13);
    QCOMPARE(model.columnCount(), 11);
    QCOMPARE(model.headerData(1, Qt::Horizontal).toString(), QString("A\n序号"));
    QCOMPARE(model.headerData(10, Qt::Horizontal).toString(), QString("J\n备注"));
    QCOMPARE(model.index(1, 3).data().toString(), QString("钢筋"));
    // Before identifying every row is an unchecked invalid row.
    QCOMPARE(model.index(1, 0).data(ImportExcelDataModel::ObjectRole).toString(),
             QString("无效行"));
    QCOMPARE(model.index(1, 0).data(ImportExcelDataModel::IsSelectedRole).toInt(), 0);

    identify(dialog);
    QVERIFY(InteractionSeam::shown().size() == 1); // no message when rows were found
    QCOMPARE(materialRows(model).size(), 12);
    QCOMPARE(model.index(0, 0).data(ImportExcelDataModel::ObjectRole).toString(),
             QString("无效行"));
    QCOMPARE(model.index(0, 0).data(ImportExcelDataModel::IsSelectedRole).toInt(), 0);
    QCOMPARE(model.index(12, 0).data(ImportExcelDataModel::IsSelectedRole).toInt(), 2);
    QCOMPARE(model.index(12, 0).data(Qt::CheckStateRole).toInt(), int(Qt::Checked));
    QCOMPARE(dialog.findChild<QLabel*>("lblCount")->text(), QString("材料行 12 行，勾选 12 行"));

    // Untick one row, accept: the other eleven in sheet order, every field.
    QVERIFY(model.setData(model.index(2, 0), Qt::Unchecked, Qt::CheckStateRole));
    accept(dialog);
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    const QVector<TenderEvaluatedMaterial> records = dialog.records();
    QCOMPARE(records.size(), 11);
    QCOMPARE(Import::values(records.at(0)),
             (QStringList{"1", "01010100001", "钢筋", "HRB400 Φ12", "t", "四川成都", "攀钢集团",
                          "螺纹钢", "一级", ""}));
    QCOMPARE(records.at(1).serial, QString("3"));
    QCOMPARE(records.last().remark, QString("颜色另定"));
}

void tst_ImportExcelDataDialog::twoRowHeaderMergedAndMapped()
{
    ImportExcelDataDialog dialog;
    QVERIFY(dialog.openFile(sample("需评审材料-标题与双行表头.xls")));
    ImportExcelDataModel& model = *dialog.model();
    QTableView* view = dialog.view();
    // The title spans the sheet's ten columns; 序号 spans both header rows; 品牌要求 three columns.
    QCOMPARE(view->columnSpan(0, 1), 10);
    QCOMPARE(view->rowSpan(2, 1), 2);
    QCOMPARE(view->columnSpan(2, 6), 3);
    QCOMPARE(model.index(2, 1).data().toString(), QString("序 号"));
    QCOMPARE(model.headerData(6, Qt::Horizontal).toString(), QString("F\n产地"));
    QCOMPARE(model.headerData(2, Qt::Horizontal).toString(), QString("B\n(未对应)"));

    // The user maps column B to 招标编码; identify; the records carry it (empty here).
    model.setField(1, Import::Code);
    QCOMPARE(model.headerData(2, Qt::Horizontal).toString(), QString("B\n招标编码"));
    identify(dialog);
    QCOMPARE(materialRows(model), (QVector<int>{5, 6, 7, 8, 12, 13, 14, 18, 19, 20}));
    dialog.resize(1100, 640);
    saveShot(&dialog, "ImportExcelDataDialog");
    accept(dialog);
    QCOMPARE(dialog.records().size(), 10);
    QCOMPARE(dialog.records().at(3).serial, QString("1.0"));
    QCOMPARE(dialog.records().at(3).spec, QString("Q235B 工字钢 I20a"));
    QCOMPARE(dialog.records().at(4).serial, QString("一"));
    QCOMPARE(dialog.records().at(4).grade, QString("合格"));
}

void tst_ImportExcelDataDialog::sheetChoiceAndHiddenSheets()
{
    ImportExcelDataDialog dialog;
    QVERIFY(dialog.openFile(sample("需评审材料-多工作表.xlsx")));
    auto* sheets = dialog.findChild<QComboBox*>("cmbSheetSelect");
    QCOMPARE(sheets->count(), 5);
    QCOMPARE(sheets->itemText(1), QString("旧版清单"));
    QCOMPARE(sheets->itemData(1, Qt::ToolTipRole).toString(), QString("隐藏的工作表"));
    QCOMPARE(sheets->currentIndex(), 3);
    QCOMPARE(dialog.model()->layout().headerRow, 2);
    identify(dialog);
    QCOMPARE(materialRows(*dialog.model()).size(), 8);

    // Choosing another sheet shows it with nothing identified; the cover has no header.
    sheets->setCurrentIndex(0);
    QCOMPARE(dialog.model()->layout().headerRow, -1);
    QVERIFY(materialRows(*dialog.model()).isEmpty());
    identify(dialog);
    QCOMPARE(InteractionSeam::lastShown().text, QString("请先设置 \"序号\" 和 \"材料名称\" 列！"));
    sheets->setCurrentIndex(1);
    identify(dialog);
    QCOMPARE(materialRows(*dialog.model()), (QVector<int>{1, 2}));

    // Sheets without a cell: nothing to show, identify asks for the columns.
    if (!QDir(QStringLiteral(EXCEL_SAMPLES_DIR)).exists())
        QSKIP("the shared workbook samples (../shared/excel-samples) are not beside this tree");
    QVERIFY(dialog.openFile(QStringLiteral(EXCEL_SAMPLES_DIR "/readxl__empty-sheets.xlsx")));
    QCOMPARE(dialog.model()->rowCount(), 0);
    identify(dialog);
    QCOMPARE(InteractionSeam::lastShown().text, QString("请先设置 \"序号\" 和 \"材料名称\" 列！"));
}

void tst_ImportExcelDataDialog::selectOnIdentifyOffAndRowKinds()
{
    ImportExcelDataDialog dialog;
    QVERIFY(dialog.openFile(sample("需评审材料-多工作表.xlsx")));
    ImportExcelDataModel& model = *dialog.model();
    dialog.findChild<QCheckBox*>("chkSelectOnIdentify")->setChecked(false);
    identify(dialog);
    QCOMPARE(materialRows(model).size(), 8);
    QVERIFY(model.checkedMaterialRows().isEmpty());
    accept(dialog);
    QCOMPARE(InteractionSeam::lastShown().text, QString("未选择导入行"));
    QCOMPARE(dialog.result(), int(QDialog::Rejected));

    // An invalid row cannot be ticked; a material row can.
    QVERIFY(!(model.flags(model.index(6, 0)) & Qt::ItemIsUserCheckable));
    QVERIFY(!model.setData(model.index(6, 0), Qt::Checked, Qt::CheckStateRole));
    QVERIFY(model.flags(model.index(3, 0)) & Qt::ItemIsUserCheckable);

    // "当前行置为": the row without a name becomes a material row; a material row invalid.
    dialog.findChild<QCheckBox*>("chkSelectOnIdentify")->setChecked(true);
    dialog.view()->selectRow(10);
    dialog.slotSetMaterialRow();
    QCOMPARE(model.rowKind(10), Import::MaterialRow);
    QVERIFY(model.isSelected(10));
    dialog.view()->selectRow(3);
    dialog.slotSetInvalidRow();
    QCOMPARE(model.rowKind(3), Import::InvalidRow);
    QVERIFY(!model.isSelected(3));
    accept(dialog);
    QCOMPARE(dialog.records().size(), 1);
    QCOMPARE(dialog.records().at(0).serial, QString("7"));
    QCOMPARE(dialog.records().at(0).remark, QString("名称待定"));
}

void tst_ImportExcelDataDialog::mappingProblems()
{
    ImportExcelDataDialog dialog;
    QVERIFY(dialog.openFile(sample("需评审材料-简单.xlsx")));
    ImportExcelDataModel& model = *dialog.model();
    identify(dialog);
    const QVector<int> before = materialRows(model);

    // Two 单位 columns: the message names it and the rows stay as they were.
    model.setField(5, Import::Unit);
    identify(dialog);
    QCOMPARE(InteractionSeam::lastShown().title, QString("提示"));
    QCOMPARE(InteractionSeam::lastShown().text,
             QString("存在多个\"单位\"列，请取消多余的对应关系。"));
    QCOMPARE(InteractionSeam::lastShown().buttons, QStringList{"确定"});
    QCOMPARE(materialRows(model), before);

    // 材料名称 unmapped: every row invalid.
    model.setField(5, Import::Origin);
    model.setField(2, Import::NoField);
    identify(dialog);
    QCOMPARE(InteractionSeam::lastShown().text, QString("请先设置 \"材料名称\" 列！"));
    QVERIFY(materialRows(model).isEmpty());
    QVERIFY(model.checkedMaterialRows().isEmpty());

    // "清除已匹配的字段" unmaps every column.
    dialog.slotClearFields();
    for (int col = 1; col < model.columnCount(); ++col)
        QVERIFY(model.headerData(col, Qt::Horizontal).toString().endsWith("(未对应)"));
    identify(dialog);
    QCOMPARE(InteractionSeam::lastShown().text, QString("请先设置 \"序号\" 和 \"材料名称\" 列！"));

    // Mapped again by hand, through the header's menu as the user does it.
    auto chooseField = [&](int gridColumn, int field) {
        QTimer::singleShot(0, [&dialog, field] {
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            QVERIFY(menu);
            for (QAction* action : menu->actions())
                if (!action->isSeparator() && action->data().toInt() == field)
                    action->trigger();
            menu->close();
        });
        dialog.slotHeaderClicked(gridColumn);
    };
    dialog.show();
    chooseField(1, Import::Serial);
    chooseField(3, Import::Name);
    QCOMPARE(model.fields().mid(0, 3),
             (QVector<int>{Import::Serial, Import::NoField, Import::Name}));
    identify(dialog);
    QCOMPARE(materialRows(model), before);
}

void tst_ImportExcelDataDialog::openFailureKeepsWhatWasShown()
{
    ImportExcelDataDialog dialog;
    QVERIFY(dialog.openFile(sample("需评审材料-简单.xlsx")));
    const QString path = dialog.findChild<QLineEdit*>("edtFilePath")->text();
    for (const char* name : {"sheetjs__password_2002_40_xor.xls",
                             "derived__truncated_datasets.xlsx", "calamine__too_small.xls"}) {
        InteractionSeam::clear();
        open(dialog, QStringLiteral(EXCEL_SAMPLES_DIR "/") + QLatin1String(name));
        QCOMPARE(
            InteractionSeam::lastShown().text,
            QString(
                "文件打开失败！\r\n①请检查excel文件是否被占用\r\n②请检查是否为正确的excel"
                "文件\r\n完成上述操作后重新打开。如果仍然提示该错误，请联系开发商协助解决问题"));
        QCOMPARE(InteractionSeam::lastShown().buttons, QStringList{"确定"});
        QCOMPARE(dialog.model()->rowCount(), 13);
        QCOMPARE(dialog.findChild<QLineEdit*>("edtFilePath")->text(), path);
    }
    // A cancelled file dialog changes nothing.
    InteractionSeam::clear();
    open(dialog, QString());
    QCOMPARE(InteractionSeam::shown().size(), 1);
    QCOMPARE(dialog.model()->rowCount(), 13);
}

QTEST_MAIN(tst_ImportExcelDataDialog)
#include "tst_ImportExcelDataDialog.moc"
