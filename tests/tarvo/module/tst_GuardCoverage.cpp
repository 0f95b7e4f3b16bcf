#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QtTest>

// Keeps every entry point of the module under its exception guard: a scan of the module's
// sources, run with the tests, lists each slot, message handler, service operation and Qt
// override that reaches host code without the guard, and each lambda connected to a signal
// that neither runs under the guard nor only calls a guarded function.
class tst_GuardCoverage : public QObject
{
    Q_OBJECT

private:
    struct Function
    {
        QString file;
        QString cls;
        QString name;
        QStringList body;
    };

    static bool isEntryPoint(const QString& name)
    {
        // CreateWidget is left to the host: it catches around the making of a container.
        static const QStringList names = {"ProcMsg",    "ProcessMsg",    "DeleteWidget", "Start",
                                          "Stop",       "setData",       "getDataGz",    "onOk",
                                          "onOkModify", "onBtnOkClicked"};
        return name.startsWith("slot") || name.startsWith("on_") || name.endsWith("SLot") ||
               names.contains(name);
    }
    static bool opensWithGuard(const QStringList& lines, int from, int count)
    {
        for (int i = from; i < lines.size() && i < from + count; ++i)
            if (lines.at(i).contains("TARVO_GUARD") || lines.at(i).contains("TarvoGuard::run") ||
                lines.at(i).contains("runCommand("))
                return true;
        return false;
    }

    // Folders whose entry points this scan keeps: all of the module.
    static QStringList scannedFolders()
    {
        return {"module",   "common", "QtXmQd", "ZbrClGzfQd",
                "LxGzXmQd", "GfQd",   "ZgClQd", "SjCqXPsClQd"};
    }

    QList<Function> m_functions;
    QMap<QString, QStringList> m_sources; // relative path -> lines

private slots:
    void initTestCase()
    {
        const QString root = QStringLiteral(TARVO_SOURCE_DIR "/tarvo/");
        QDirIterator it(root, {"*.cpp"}, QDir::Files, QDirIterator::Subdirectories);
        static const QRegularExpression definition(R"(^[A-Za-z].*?\b(\w+)::(~?\w+)\()");
        while (it.hasNext()) {
            const QString path = it.next();
            QFile file(path);
            QVERIFY(file.open(QIODevice::ReadOnly));
            const QStringList lines = QString::fromUtf8(file.readAll()).split('\n');
            const QString rel = path.mid(root.size());
            m_sources.insert(rel, lines);
            for (int i = 0; i < lines.size(); ++i) {
                const QRegularExpressionMatch m = definition.match(lines.at(i));
                if (!m.hasMatch() || lines.at(i).trimmed().endsWith(';'))
                    continue;
                int open = i;
                while (open < lines.size() && lines.at(open) != "{")
                    ++open;
                int close = open + 1;
                while (close < lines.size() && lines.at(close) != "}")
                    ++close;
                m_functions.append(
                    {rel, m.captured(1), m.captured(2), lines.mid(open + 1, close - open - 1)});
                i = close;
            }
        }
        QVERIFY(m_functions.size() > 100);
    }

    void entryPointsRunUnderTheGuard()
    {
        QStringList missing;
        for (const Function& f : std::as_const(m_functions)) {
            const QString folder = f.file.section('/', 0, 0);
            if (!scannedFolders().contains(folder) || !isEntryPoint(f.name))
                continue;
            if (!opensWithGuard(f.body, 0, 4))
                missing << f.file + ": " + f.cls + "::" + f.name;
        }
        QVERIFY2(missing.isEmpty(), qPrintable("unguarded: " + missing.join(", ")));
    }

    // A function named slot... is a Qt slot: declared in a slots section, so the host and the
    // ribbon can reach it by name.
    void slotsAreDeclaredAsSlots()
    {
        const QString root = QStringLiteral(TARVO_SOURCE_DIR "/tarvo/");
        QDirIterator it(root, {"*.h"}, QDir::Files, QDirIterator::Subdirectories);
        static const QRegularExpression section(
            R"(^\s*(public|protected|private)( slots|Q_SLOTS)?:)");
        static const QRegularExpression slot(R"(^\s*(virtual )?void (slot\w+)\()");
        QStringList misplaced;
        while (it.hasNext()) {
            QFile file(it.next());
            QVERIFY(file.open(QIODevice::ReadOnly));
            bool inSlots = false;
            for (const QString& line : QString::fromUtf8(file.readAll()).split('\n')) {
                if (const QRegularExpressionMatch m = section.match(line); m.hasMatch())
                    inSlots = m.capturedLength(2) > 0;
                else if (const QRegularExpressionMatch s = slot.match(line);
                         s.hasMatch() && !inSlots)
                    misplaced << file.fileName().mid(root.size()) + ": " + s.captured(2);
            }
        }
        QVERIFY2(misplaced.isEmpty(), qPrintable("not slots: " + misplaced.join(", ")));
    }

    void connectedLambdasRunUnderTheGuard()
    {
        QSet<QString> guarded;
        for (const Function& f : std::as_const(m_functions))
            if (opensWithGuard(f.body, 0, 4))
                guarded.insert(f.name);
        static const QRegularExpression lambdaStart(R"(\[[^\]]*\]\s*(\([^)]*\))?\s*\{\s*$)");
        static const QRegularExpression singleCall(
            R"(^\s*(if \(.*\)\s*)?((self|this)->)?(\w+)\([^;]*\);\s*\}?\)?;?\s*$)");
        static const QRegularExpression oneLine(R"(\[[^\]]*\]\s*(\([^)]*\))?\s*\{(.*)\}\);\s*$)");
        QStringList missing;
        for (auto it = m_sources.cbegin(); it != m_sources.cend(); ++it) {
            if (!scannedFolders().contains(it.key().section('/', 0, 0)))
                continue;
            const QStringList& lines = it.value();
            for (int i = 0; i < lines.size(); ++i) {
                // A lambda handed to connect(): on the connect line or the next two.
                bool inConnect = false;
                for (int back = 0; back <= 2 && i - back >= 0; ++back)
                    inConnect = inConnect || lines.at(i - back).contains("connect(");
                if (!inConnect)
                    continue;
                QString body;
                QStringList statements;
                const QRegularExpressionMatch single = oneLine.match(lines.at(i));
                if (single.hasMatch()) {
                    statements << single.captured(2) + ";";
                } else if (lambdaStart.match(lines.at(i)).hasMatch()) {
                    int depth = 1;
                    for (int j = i + 1; j < lines.size() && depth > 0; ++j) {
                        depth += lines.at(j).count('{') - lines.at(j).count('}');
                        if (depth > 0 && !lines.at(j).trimmed().startsWith("//"))
                            statements << lines.at(j);
                    }
                } else {
                    continue;
                }
                if (opensWithGuard(statements, 0, 2))
                    continue;
                QStringList code;
                for (const QString& s : statements)
                    if (!s.trimmed().isEmpty())
                        code << s.trimmed();
                const QRegularExpressionMatch call = singleCall.match(code.join(' '));
                if (call.hasMatch() && guarded.contains(call.captured(4)))
                    continue;
                missing << QStringLiteral("%1:%2").arg(it.key()).arg(i + 1);
            }
        }
        QVERIFY2(missing.isEmpty(), qPrintable("unguarded lambdas: " + missing.join(", ")));
    }
};

QTEST_GUILESS_MAIN(tst_GuardCoverage)
#include "tst_GuardCoverage.moc"
