#include "ModulePages.h"
#include "TestProject.h"

#include "QtXmQd/FormulaEditingDialog.h"
#include "TarvoActivator.h"
#include "TarvoService.h"
#include "TarvoWidget.h"
#include "common/TarvoGuard.h"

#include "InteractionSeam.h"
#include "ProcExceptionNew.h"
#include "ProjectSettingSpace.h"
#include "ZgClZsItem.h"
#include "zProTabWidget.h"

#include <QAbstractItemModel>
#include <QDialog>
#include <QMetaMethod>
#include <QtTest>

#include <cstdlib>

#include <dlfcn.h>

// What the host sees when a call inside the module fails: every entry point the module offers
// (service operations, message handlers, slots of every page and dialog, models' setData)
// reports the failure under its tag and returns, and the program goes on. The fault is injected
// where the guarded body starts, as if its first host call had thrown; the slots are found by
// walking the meta-objects of everything the module has built, so a new slot without its
// guard shows up here without being listed.
class tst_GuardedEntryPoints : public QObject
{
    Q_OBJECT

private:
    struct Outcome
    {
        QString where;        // "Class::slot(signature)"
        QString function;     // the slot's name: the tag ends in "::" and it
        bool guarded = false; // the fault reached a guard
        QString tag;
        QString sourceFile;
    };

    // A meta-object the module's library defines (not Qt's, not the host's).
    static bool definedInModule(const QMetaObject* meta)
    {
        Dl_info info{};
        if (!dladdr(meta, &info) || !info.dli_fname)
            return false;
        return QByteArray(info.dli_fname).endsWith("libtarvo.so");
    }

    static bool isEntryPoint(const QByteArray& name)
    {
        return name.startsWith("slot") || name.startsWith("on_") || name.endsWith("SLot");
    }

    // Runs `call` with the fault armed and tells whether a guard took it, and under what tag.
    template <typename Call> static Outcome armed(const QString& where, Call&& call)
    {
        ClearExceptionReports();
        TarvoGuard::armInjectedFault();
        call();
        Outcome outcome;
        outcome.where = where;
        outcome.guarded = !TarvoGuard::disarmInjectedFault();
        const QList<ExceptionReport> reports = RecentExceptionReports();
        if (!reports.isEmpty()) {
            outcome.tag = reports.last().tag;
            outcome.sourceFile = reports.last().sourceFile;
        }
        return outcome;
    }

    // Invokes one slot with default-constructed arguments (the fault fires before they are
    // read). Returns false for a parameter type the meta-type system cannot make.
    static bool invokeWithDefaults(QObject* object, const QMetaMethod& method)
    {
        if (method.parameterCount() > 10)
            return false;
        QVector<void*> values;
        QVector<int> types;
        for (int i = 0; i < method.parameterCount(); ++i) {
            const int type = method.parameterType(i);
            if (type == QMetaType::UnknownType || type == QMetaType::Void)
                return false;
            types << type;
            // Zeroed first: Qt leaves a default-made bool or int uninitialised.
            void* storage = std::calloc(1, size_t(QMetaType::sizeOf(type)));
            values << QMetaType::construct(type, storage, nullptr);
        }
        QGenericArgument args[10];
        for (int i = 0; i < values.size(); ++i)
            args[i] = QGenericArgument(QMetaType::typeName(types.at(i)), values.at(i));
        method.invoke(object, Qt::DirectConnection, args[0], args[1], args[2], args[3], args[4],
                      args[5], args[6], args[7], args[8], args[9]);
        for (int i = 0; i < values.size(); ++i) {
            QMetaType::destruct(types.at(i), values.at(i));
            std::free(values.at(i));
        }
        return true;
    }

    // Every entry-point slot of the module's classes under `root`, each class and signature
    // once.
    void walk(QObject* root)
    {
        QList<QObject*> objects{root};
        objects += root->findChildren<QObject*>();
        for (QObject* object : objects) {
            for (const QMetaObject* meta = object->metaObject(); meta; meta = meta->superClass()) {
                if (!definedInModule(meta))
                    continue;
                for (int i = meta->methodOffset(); i < meta->methodCount(); ++i) {
                    const QMetaMethod method = meta->method(i);
                    if (method.methodType() != QMetaMethod::Slot || !isEntryPoint(method.name()))
                        continue;
                    const QString where = QString::fromLatin1(meta->className()) +
                                          QStringLiteral("::") +
                                          QString::fromLatin1(method.methodSignature());
                    if (m_seen.contains(where))
                        continue;
                    m_seen.insert(where);
                    bool invocable = true;
                    Outcome outcome =
                        armed(where, [&] { invocable = invokeWithDefaults(object, method); });
                    outcome.function = QString::fromLatin1(method.name());
                    m_outcomes << outcome;
                    if (!invocable)
                        m_notInvocable << where;
                }
            }
            if (auto* model = qobject_cast<QAbstractItemModel*>(object);
                model && definedInModule(model->metaObject()) && model->rowCount() > 0 &&
                model->columnCount() > 0) {
                const QString where =
                    QString::fromLatin1(model->metaObject()->className()) + "::setData";
                if (!m_seen.contains(where)) {
                    m_seen.insert(where);
                    bool accepted = true;
                    Outcome outcome = armed(where, [&] {
                        accepted = model->setData(model->index(0, model->columnCount() - 1),
                                                  QStringLiteral("1"));
                    });
                    // A model that refuses the edit outright reaches no host code; one that
                    // takes it must run it guarded and, when it fails, refuse it.
                    if (!outcome.guarded && !accepted)
                        continue;
                    if (outcome.guarded && accepted)
                        outcome.tag.clear();
                    outcome.function = QStringLiteral("setData");
                    m_outcomes << outcome;
                }
            }
        }
    }

    // Reported as the host expects it: the page-relative source ("Page\\Class"), and the tag
    // "Class::function" naming the function that failed.
    static bool reportedProperly(const Outcome& o)
    {
        return o.guarded && o.sourceFile.contains('\\') &&
               (o.function.isEmpty() || o.tag.endsWith(QStringLiteral("::") + o.function));
    }

    // Runs, unarmed, each command slot without parameters of the module's objects under `root`,
    // each class and slot once.
    void runCommandsOnce(QObject* root)
    {
        QList<QObject*> objects{root};
        objects += root->findChildren<QObject*>();
        for (QObject* object : objects) {
            const QMetaObject* meta = object->metaObject();
            if (!definedInModule(meta))
                continue;
            for (int i = meta->methodOffset(); i < meta->methodCount(); ++i) {
                const QMetaMethod method = meta->method(i);
                const QString key = QString::fromLatin1(meta->className()) +
                                    QString::fromLatin1(method.methodSignature());
                if (method.methodType() == QMetaMethod::Slot && isEntryPoint(method.name()) &&
                    method.parameterCount() == 0 && !m_ran.contains(key)) {
                    m_ran.insert(key);
                    method.invoke(object, Qt::DirectConnection);
                }
            }
        }
    }

    static QString describe(const QList<Outcome>& outcomes)
    {
        QStringList lines;
        for (const Outcome& o : outcomes)
            lines << QStringLiteral("%1 guarded=%2 tag=%3 file=%4")
                         .arg(o.where)
                         .arg(o.guarded)
                         .arg(o.tag, o.sourceFile);
        return lines.join('\n');
    }

    QSet<QString> m_seen;
    QSet<QString> m_ran;
    int m_depth = 0;
    QList<Outcome> m_outcomes;
    QStringList m_notInvocable;

private slots:
    void init()
    {
        InteractionSeam::setScripted(true);
        InteractionSeam::clear();
        ClearExceptionReports();
    }

    void serviceOperationsReportUnderTheirTags()
    {
        TestProject p;
        TarvoActivator activator;
        QList<Outcome> outcomes;
        outcomes << armed("TarvoActivator::Start", [&] { activator.Start("TarvoService"); });
        QVERIFY(!activator.service()); // the failed start registered nothing
        activator.Start("TarvoService");
        TarvoService* service = activator.service();
        QVERIFY(service);

        // Making the container is the host's to guard (it catches around the call).
        QWidget* created = service->CreateWidget(QVariant::fromValue(sixModulePages()));
        QVERIFY(created);
        QVariant node = QVariant::fromValue(p.unit);
        outcomes << armed("TarvoService::ProcessMsg", [&] { service->ProcessMsg(74, &node); });
        outcomes << armed("TarvoService::DeleteWidget", [&] { service->DeleteWidget(created); });
        outcomes << armed("TarvoActivator::Stop", [&] { activator.Stop("TarvoService"); });
        activator.Stop("TarvoService");

        for (const Outcome& o : outcomes)
            QVERIFY2(reportedProperly(o) && o.tag == o.where, qPrintable(describe({o})));
    }

    void everySlotOfEveryPageReportsUnderItsTag()
    {
        TestProject p;
        // Materials and a stored tender list, so that the matching dialogs open.
        TestProject::row(p.current->getRcjHzTable(), 1,
                         {{3, QStringLiteral("钢筋")},
                          {4, QStringLiteral("HRB400 Φ8")},
                          {5, QStringLiteral("t")},
                          {6, 4300.0},
                          {7, 4300.0},
                          {9, 2.0},
                          {11, true}});
        auto* tender = new ZgjClHzItem;
        tender->loadValue(2, QStringLiteral("ZG001"));
        tender->loadValue(3, QStringLiteral("钢筋"));
        tender->loadValue(4, QStringLiteral("HRB400 Φ8"));
        tender->loadValue(5, QStringLiteral("t"));
        tender->loadValue(7, 4200.0);
        ProjectWorks::ZbZgClMap map;
        map.insert({p.index, 3}, {tender});
        QVERIFY(p.project->SetGcZbZgCl(77, map));
        m_seen.clear();
        m_ran.clear();
        m_outcomes.clear();
        m_notInvocable.clear();
        // Each dialog a page opens is walked too, while it is up, and so are the dialogs its
        // own commands open.
        InteractionSeam::setModalHook([this](QDialog* dialog) {
            walk(dialog);
            if (m_depth < 3) {
                ++m_depth;
                runCommandsOnce(dialog);
                --m_depth;
            }
        });

        TarvoService service;
        auto* container =
            qobject_cast<TarvoWidget*>(service.CreateWidget(QVariant::fromValue(sixModulePages())));
        QVERIFY(container);
        container->resize(1200, 700);
        container->show();
        QVariant node = QVariant::fromValue(p.unit);
        for (int i = 0; i < container->tabs()->count(); ++i) {
            container->tabs()->setCurrentIndex(i);
            container->ProcMsg(74, &node); // the page shown loads the unit project
        }
        walk(container);

        // The pages' commands once for real, unarmed, so that the dialogs they open are walked
        // (under scripting a dialog is rejected right after the hook).
        const QList<Outcome> pageSlots = m_outcomes;
        runCommandsOnce(container);
        FormulaEditingDialog formula(nullptr, false); // opened by a cell editor, not a command
        walk(&formula);
        InteractionSeam::setModalHook({});
        service.DeleteWidget(container);

        QVERIFY2(m_outcomes.size() > pageSlots.size(), "no dialog was walked");
        QList<Outcome> wrong;
        for (const Outcome& o : m_outcomes)
            if (!reportedProperly(o))
                wrong << o;
        QVERIFY2(wrong.isEmpty(), qPrintable(describe(wrong)));
        QVERIFY2(m_notInvocable.isEmpty(), qPrintable(m_notInvocable.join('\n')));
    }
};

QTEST_MAIN(tst_GuardedEntryPoints)
#include "tst_GuardedEntryPoints.moc"
