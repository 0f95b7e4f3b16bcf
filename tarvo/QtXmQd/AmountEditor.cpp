#include "AmountEditor.h"

#include "ConstructionWorks.h"
#include "FyBlBusiness.h"
#include "VXParseAlg.h"
#include "zBaseLineEdit.h"

#include <QAbstractItemModel>
#include <QMouseEvent>
#include <QTimer>

AmountEditor::AmountEditor(QObject* parent) : Qtitan::VXBaseEditor(parent) {}

QWidget* AmountEditor::createEditorWidget(QWidget* parent)
{
    auto* edit = new zBaseLineEdit(parent);
    edit->setReadOnly(true); // the formula is written in the dialog
    edit->installEventFilter(this);
    return edit;
}

QString AmountEditor::displayText(const QString& formula) const
{
    if (!m_works)
        return QString();
    double result = 0;
    QString error;
    if (!VXParseAlg::getInstance()->ExpCalc(
            formula, FyBlBusiness::GetInstance()->variables(m_works), result, error))
        return QString();
    return m_works->getJfszTable()->TotalFloatFormatToStr(result, -1);
}

void AmountEditor::setEditorData(QWidget* editor, const QModelIndex& index)
{
    auto* edit = qobject_cast<QLineEdit*>(editor);
    if (!edit)
        return;
    edit->setAlignment(Qt::Alignment(index.data(Qt::TextAlignmentRole).toInt()));
    m_formula = index.data(Qt::EditRole).toString();
    m_row = index.row();
    edit->setText(displayText(m_formula));
}

void AmountEditor::setModelData(QWidget* editor, QAbstractItemModel* model,
                                const QModelIndex& index)
{
    // The formula goes back as it is, changed or not: the line edit shows its value only.
    if (qobject_cast<QLineEdit*>(editor))
        model->setData(index, m_formula, Qt::EditRole);
}

bool AmountEditor::eventFilter(QObject* watched, QEvent* event)
{
    if (m_suppress || !watched->inherits("QLineEdit"))
        return Qtitan::VXBaseEditor::eventFilter(watched, event);
    bool act = event->type() == QEvent::FocusIn;
    if (event->type() == QEvent::MouseButtonPress) {
        auto* edit = static_cast<QWidget*>(watched);
        act = edit->rect().contains(static_cast<QMouseEvent*>(event)->pos());
    }
    if (!act)
        return Qtitan::VXBaseEditor::eventFilter(watched, event);
    emit signalToEditFormula(m_formula);
    // The cell's own editing ends once the event loop is back.
    QTimer::singleShot(0, this, &AmountEditor::signalEditFinished);
    return true;
}
