#pragma once

#include <QAbstractItemModel>
#include <QAbstractItemModelTester>
#include <QObject>

// Attaches a model tester to every model below root that has none yet: the grids of both
// versions, the audit companion's models, the combos' models. Each tester lives as long as
// its model and fails the running test on any inconsistent signal or answer.
inline void attachModelTesters(QObject* root)
{
    const char* const key = "tarvoModelTester";
    for (QAbstractItemModel* model : root->findChildren<QAbstractItemModel*>()) {
        if (model->property(key).toBool())
            continue;
        model->setProperty(key, true);
        new QAbstractItemModelTester(model, QAbstractItemModelTester::FailureReportingMode::QtTest,
                                     model);
    }
}
