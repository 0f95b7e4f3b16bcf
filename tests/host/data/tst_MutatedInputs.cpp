#include "Mutator.h"
#include "TestProject.h"

#include "GfSjQdTable.h"
#include "HeaderColumn.h"
#include "ProjectFile.h"
#include "TemplateAccess.h"
#include "VariantStream.h"

#include <QDataStream>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

// Bounded mutation fuzzing of everything read from a file: the project file, the row field
// encoding, stored values, table headers and content templates. Each round mutates a seed
// (tests/data/fuzz, or a file saved here) and feeds it to the reader, which must accept or
// refuse it without crashing; run under the asan preset this also finds memory errors. The
// number of rounds is TARVO_FUZZ_ROUNDS (default 300 per reader, fixed seed, so a failure
// replays); every crash found becomes a case of its own in the regression tests.
class tst_MutatedInputs : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;
    QRandomGenerator m_random{20241122};

    static int rounds()
    {
        bool ok = false;
        const int n = qEnvironmentVariableIntValue("TARVO_FUZZ_ROUNDS", &ok);
        return ok && n > 0 ? n : 300;
    }
    static QByteArray seed(const QString& name)
    {
        QFile file(QStringLiteral(TEST_DATA_DIR "/fuzz/") + name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    QByteArray mutate(const QByteArray& bytes) { return ::mutate(bytes, m_random, 4); }

private slots:
    void projectFile()
    {
        TestProject p;
        for (int i = 0; i < 20; ++i)
            TestProject::row(p.current->getRcjHzTable(), 1,
                             {{3, QStringLiteral("材料%1").arg(i)},
                              {9, i * 1.5},
                              {10, QVariantList{i, QStringLiteral("甲")}}});
        const QString base = m_dir.filePath(QStringLiteral("seed.tarvo"));
        QString error;
        QVERIFY(ProjectFile::Save(p.project, base, &error));
        QFile file(base);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray seedBytes = file.readAll();
        const QString target = m_dir.filePath(QStringLiteral("mutant.tarvo"));
        int opened = 0, refused = 0;
        for (int round = 0; round < rounds(); ++round) {
            QFile out(target);
            QVERIFY(out.open(QIODevice::WriteOnly | QIODevice::Truncate));
            // Past the 100-byte header most of the file is pages: mutate there mostly.
            QByteArray bytes = seedBytes;
            const int page = 1 + int(m_random.bounded(qMax(1, bytes.size() / 4096 - 1)));
            bytes.replace(page * 4096, 4096, mutate(bytes.mid(page * 4096, 4096)));
            out.write(round % 10 == 0 ? mutate(seedBytes) : bytes);
            out.close();
            error.clear();
            if (ProjectFile::Open(target, &error)) {
                ++opened;
            } else {
                ++refused;
                QVERIFY2(error.startsWith(QStringLiteral("无法打开工程文件“mutant.tarvo”：")),
                         qPrintable(error));
                QVERIFY2(!error.contains(QStringLiteral("（）")), qPrintable(error));
            }
        }
        qInfo("project file: %d rounds, %d opened, %d refused", rounds(), opened, refused);
    }

    void fieldsAndStoredValues()
    {
        QVector<QVariant> values = {QVariant(), 3.25, QStringLiteral("混凝土"), true, 42};
        values << QVariant(QVariantList{1, QStringList{QStringLiteral("a")}, QVariantMap{}});
        const QByteArray fields = ProjectFile::encodeFields(RowFields::fromVector(values));
        QByteArray map;
        {
            QDataStream out(&map, QIODevice::WriteOnly);
            out.setVersion(QDataStream::Qt_5_15);
            out << QMap<int, QVariant>{{1, QStringLiteral("x")}, {2, QVariantList{1.5}}};
        }
        int accepted = 0;
        for (int round = 0; round < rounds() * 20; ++round) {
            RowFields decoded;
            QString why;
            if (ProjectFile::decodeFields(mutate(fields), decoded, &why))
                ++accepted;
            else
                QVERIFY(!why.isEmpty());
            QMap<int, QVariant> back;
            VariantStream::readIntMap(mutate(map), &back, &why);
        }
        qInfo("field decoder: %d rounds, %d accepted", rounds() * 20, accepted);
    }

    void headersAndTemplates()
    {
        const QByteArray header = seed(QStringLiteral("header/table-header.json"));
        const QByteArray templ = seed(QStringLiteral("template/fees.gfqd"));
        QVERIFY(!header.isEmpty() && !templ.isEmpty());
        QString error;
        QVERIFY2(HeaderConfig::fromJson(header, &error).isValid(), qPrintable(error));
        const QString path = m_dir.filePath(QStringLiteral("t.gfqd"));
        int headers = 0, templates = 0;
        for (int round = 0; round < rounds() * 5; ++round) {
            error.clear();
            if (HeaderConfig::fromJson(mutate(header), &error).isValid())
                ++headers;
            else
                QVERIFY(!error.isEmpty());
            QFile out(path);
            QVERIFY(out.open(QIODevice::WriteOnly | QIODevice::Truncate));
            out.write(mutate(templ));
            out.close();
            GfSjQdTable table;
            TestProject::row(&table, 0, {{2, QStringLiteral("原有")}});
            if (TemplateAccess::ReadTemplateFile(path, &table, GfSjQdTable::Type, &error))
                ++templates;
            else
                QCOMPARE(table.count(), 1); // a refused template leaves the list alone
        }
        qInfo("json: %d rounds, %d headers and %d templates accepted", rounds() * 5, headers,
              templates);
    }
};

QTEST_MAIN(tst_MutatedInputs)
#include "tst_MutatedInputs.moc"
