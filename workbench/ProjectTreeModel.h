#pragma once

#include <QAbstractItemModel>

class ProTreeNode;
class ProjectWorks;

// The project tree of the open project: construction project, single projects, unit projects.
class ProjectTreeModel : public QAbstractItemModel
{
    Q_OBJECT
public:
    explicit ProjectTreeModel(QObject* parent = nullptr);

    void setProject(ProjectWorks* project);
    ProTreeNode* nodeAt(const QModelIndex& index) const;
    QModelIndex indexOf(ProTreeNode* node) const;

    QModelIndex index(int row, int column,
                      const QModelIndex& parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

private:
    ProjectWorks* m_project = nullptr;
};
