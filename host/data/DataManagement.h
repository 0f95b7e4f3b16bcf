#pragma once

#include "ProjectWorks.h"

#include <QObject>
#include <QVector>

#include <memory>

// The host's registry of open projects. A project keeps its index for as long as it is open.
class DataManagement : public QObject
{
    Q_OBJECT
public:
    static DataManagement* getInstance();

    QString AppName() const { return QStringLiteral("Tarvo"); }

    // Takes the project over and returns its index.
    int AddProjectWorks(std::unique_ptr<ProjectWorks> works);
    // Closes the project; the undo history goes with it.
    void CloseProjectWorks(int index);
    QList<ProjectWorks*> openProjects() const;

    ProjectWorks* GetProjectWorksByIndex(int index) const;
    ConstructionWorks* GetProObjectForDisplay(int projectIndex, int auditVersion, int nodeId) const;
    ConstructionWorks* GetContructWorks(const ProTreeNode* node) const;
    ProTreeNode* GetProTreeNodeByLocalId(int projectIndex, int nodeId) const;
    QList<ProTreeNode*> GetProTreeNodeListInOrder(int projectIndex) const;
    // The pricing-model configuration of the works behind a node.
    PriceModelConfig* GetSJPriceModelConfig(const ProTreeNode* node) const;
    PriceModelConfig* GetPriceModelConfig(int projectIndex) const;
    ProjectWorks* findByWorksId(qint64 projectWorksId) const;

signals:
    void projectOpened(int index);
    void projectClosed(int index);

private:
    DataManagement() = default;
    QVector<ProjectWorks*> m_projects;
};
