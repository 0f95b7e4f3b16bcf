#include <QtTest>
class tst_ExcelFuzz : public QObject
{
    Q_OBJECT
};
QTEST_GUILESS_MAIN(tst_ExcelFuzz)
#include "tst_ExcelFuzz.moc"
