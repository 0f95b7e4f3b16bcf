#pragma once

#include <QDialog>
#include <QVector>

class QCheckBox;

// The save options of the matching dialogs: three changes that may go with saving the
// correspondences, each offered only when there is something for it to change. "保存" goes
// on with the boxes as ticked; "继续" returns to editing.
class TbZbZgClDialog : public QDialog
{
    Q_OBJECT
public:
    TbZbZgClDialog(bool modifyPrice, bool setProvisional, bool cancelProvisional,
                   QWidget* parent = nullptr);

    bool modifyPrice() const;
    bool setProvisional() const;
    bool cancelProvisional() const;
    QCheckBox* box(int i) const { return m_boxes.value(i); }

protected:
    // The frame for any list of options: texts[i] is offered (and ticked) when enabled[i];
    // back is the text of the button that returns to editing.
    TbZbZgClDialog(const QStringList& texts, const QVector<bool>& enabled, const QString& back,
                   QWidget* parent);
    // The option is offered and ticked.
    bool chosen(int i) const;

private:
    QVector<QCheckBox*> m_boxes;
};
