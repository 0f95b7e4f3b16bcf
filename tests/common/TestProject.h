#pragma once

#include "DataManagement.h"
#include "ProjectWorks.h"
#include "RURecordControl.h"

#include <memory>

// A small open project for tests: root (1), single project (2), unit projects 3 (with a
// submitted version) and 4. Closed again when the fixture goes.
class TestProject
{
public:
    TestProject()
    {
        auto works = std::make_unique<ProjectWorks>(77, QStringLiteral("测试工程"));
        root = works->AddNode(nullptr, 1, ProTreeNode::WorksNode, QStringLiteral("测试工程"));
        single = works->AddNode(root, 2, ProTreeNode::SingleProjectNode, QStringLiteral("教学楼"));
        unit = works->AddNode(single, 3, ProTreeNode::WorksNode, QStringLiteral("建筑与装饰工程"));
        plainUnit = works->AddNode(single, 4, ProTreeNode::WorksNode, QStringLiteral("电气工程"));
        works->ensureWorks(0, 1);
        current = works->ensureWorks(0, 3);
        submitted = works->ensureWorks(1, 3);
        plain = works->ensureWorks(0, 4);
        project = works.get();
        index = DataManagement::getInstance()->AddProjectWorks(std::move(works));
    }
    ~TestProject() { DataManagement::getInstance()->CloseProjectWorks(index); }

    // Appends a row to a table without journalling.
    static BaseDataItem* row(GeneralTableBase* table, int kind,
                             std::initializer_list<std::pair<int, QVariant>> fields)
    {
        BaseDataItem* item = table->CreateItem();
        item->loadState(kind, false, 0, QString());
        for (const auto& f : fields)
            item->loadValue(f.first, f.second);
        table->attach(table->count(), item);
        return item;
    }

    ProjectWorks* project = nullptr;
    int index = -1;
    ProTreeNode* root = nullptr;
    ProTreeNode* single = nullptr;
    ProTreeNode* unit = nullptr;
    ProTreeNode* plainUnit = nullptr;
    ConstructionWorks* current = nullptr;
    ConstructionWorks* submitted = nullptr;
    ConstructionWorks* plain = nullptr;
};
