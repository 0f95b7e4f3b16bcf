#include <QtTest>
class tst_ExcelReading : public QObject
{
    Q_OBJECT
};
QTEST_GUILESS_MAIN(tst_ExcelReading)
#include "tst_ExcelReading.moc"
