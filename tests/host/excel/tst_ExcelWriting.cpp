#include <QtTest>
class tst_ExcelWriting : public QObject
{
    Q_OBJECT
};
QTEST_GUILESS_MAIN(tst_ExcelWriting)
#include "tst_ExcelWriting.moc"
