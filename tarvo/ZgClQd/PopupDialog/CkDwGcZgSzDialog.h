#pragma once

#include <QDialog>
#include <QList>

class CkDwGcZgClSzModel;
class ConstructionWorks;
class QTreeView;
class ZgClZsItem;

// "查看单位工程暂估设置": every unit project with the provisional materials it holds, side by
// side, read-only. The dialog owns the tree's nodes.
class CkDwGcZgSzDialog : public QDialog
{
    Q_OBJECT
public:
    CkDwGcZgSzDialog(ConstructionWorks* works, QWidget* parent = nullptr);
    ~CkDwGcZgSzDialog() override;

    // Gathers the unit projects' settings under the progress bar and fills the tree.
    void Load();
    CkDwGcZgClSzModel* model() const { return m_model; }
    QTreeView* view() const { return m_view; }

private:
    void clearNodes();

    ConstructionWorks* m_works;
    QList<ZgClZsItem*> m_nodes;
    CkDwGcZgClSzModel* m_model;
    QTreeView* m_view;
};
