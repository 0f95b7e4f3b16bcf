#include "ProjectTreeModel.h"

#include "ProjectWorks.h"

#include <QApplication>
#include <QIcon>
#include <QStyle>

ProjectTreeModel::ProjectTreeModel(QObject* parent) : QAbstractItemModel(parent) {}

void ProjectTreeModel::setProject(ProjectWorks* project)
{
    beginResetModel();
    m_project = project;
    endResetModel();
}

ProTreeNode* ProjectTreeModel::nodeAt(const QModelIndex& index) const
{
    return index.isValid() ? static_cast<ProTreeNode*>(index.internalPointer()) : nullptr;
}

QModelIndex ProjectTreeModel::indexOf(ProTreeNode* node) const
{
    if (!node)
        return QModelIndex();
    const int row = node->parent() ? node->parent()->children().indexOf(node) : 0;
    return createIndex(row, 0, node);
}

QModelIndex ProjectTreeModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!m_project || !m_project->root() || column != 0 || row < 0)
        return QModelIndex();
    if (!parent.isValid())
        return row == 0 ? createIndex(0, 0, m_project->root()) : QModelIndex();
    const ProTreeNode* node = nodeAt(parent);
    return row < node->children().size() ? createIndex(row, 0, node->children().at(row))
                                         : QModelIndex();
}

QModelIndex ProjectTreeModel::parent(const QModelIndex& child) const
{
    const ProTreeNode* node = nodeAt(child);
    return node ? indexOf(node->parent()) : QModelIndex();
}

int ProjectTreeModel::rowCount(const QModelIndex& parent) const
{
    if (!m_project || !m_project->root())
        return 0;
    if (!parent.isValid())
        return 1;
    return nodeAt(parent)->children().size();
}

int ProjectTreeModel::columnCount(const QModelIndex& parent) const
{
    Q_UNUSED(parent)
    return 1;
}

QVariant ProjectTreeModel::data(const QModelIndex& index, int role) const
{
    const ProTreeNode* node = nodeAt(index);
    if (!node)
        return QVariant();
    if (role == Qt::DisplayRole) {
        QString name = ProTreeNode::Name(node);
        if (ProTreeNode::CheckWithSSVersion(node))
            name += QStringLiteral("（含送审）");
        return name;
    }
    if (role == Qt::DecorationRole) {
        QStyle* style = QApplication::style();
        if (!node->parent())
            return style->standardIcon(QStyle::SP_DirHomeIcon);
        return style->standardIcon(node->isUnitProject() ? QStyle::SP_FileIcon
                                                         : QStyle::SP_DirIcon);
    }
    if (role == Qt::ToolTipRole)
        return node->isUnitProject()
                   ? QStringLiteral("单位工程")
                   : (node->parent() ? QStringLiteral("单项工程") : QStringLiteral("建设项目"));
    return QVariant();
}
