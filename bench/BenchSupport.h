#pragma once

#include "PeakMemory.h"

#include "DataManagement.h"
#include "ProjectWorks.h"

#include <memory>

// A project with one unit project whose materials table holds `rows` rows, spread over the
// list tables like a real project's.
inline std::unique_ptr<ProjectWorks> makeProject(int rows)
{
    auto works = std::make_unique<ProjectWorks>(9, QStringLiteral("基准工程"));
    ProTreeNode* root =
        works->AddNode(nullptr, 1, ProTreeNode::WorksNode, QStringLiteral("基准工程"));
    works->AddNode(root, 2, ProTreeNode::WorksNode, QStringLiteral("建筑与装饰工程"));
    ConstructionWorks* unit = works->ensureWorks(0, 2);
    GeneralTableBase* table = unit->getRcjHzTable();
    for (int i = 0; i < rows; ++i) {
        BaseDataItem* item = table->CreateItem();
        item->loadState(1, false, 0, QString());
        item->loadValue(1, QStringLiteral("0101%1").arg(i, 6, 10, QLatin1Char('0')));
        item->loadValue(3, i % 3 ? QStringLiteral("商品混凝土") : QStringLiteral("钢筋"));
        item->loadValue(4, QStringLiteral("HRB400 Φ%1").arg(8 + i % 20));
        item->loadValue(5, QStringLiteral("t"));
        item->loadValue(6, 4200.0 + i % 100);
        item->loadValue(7, 4350.5 + i % 70);
        item->loadValue(9, 12.345 + i);
        item->loadValue(10, (4350.5 + i % 70) * (12.345 + i));
        item->loadValue(11, i % 7 == 0);
        item->loadValue(12, QStringLiteral("攀钢"));
        table->attach(table->count(), item);
    }
    return works;
}
