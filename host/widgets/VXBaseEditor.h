#pragma once

#include <QObject>

class QAbstractItemModel;
class QModelIndex;
class QWidget;

namespace Qtitan {

// The item-data role under which a model hands out its own cell editor for a cell.
constexpr int EditorRole = 356;

// A cell editor a model provides for some of its cells (through EditorRole); the grid's
// delegate asks it for the editor widget and for moving data in and out.
class VXBaseEditor : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;
    virtual QWidget* createEditorWidget(QWidget* parent) = 0;
    virtual void setEditorData(QWidget* editor, const QModelIndex& index) = 0;
    virtual void setModelData(QWidget* editor, QAbstractItemModel* model,
                              const QModelIndex& index) = 0;
};

} // namespace Qtitan
