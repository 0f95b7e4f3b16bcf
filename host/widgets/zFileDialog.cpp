#include "zFileDialog.h"
#include "InteractionSeam.h"

#include <QFileDialog>
#include <QInputDialog>

QString zFileDialog::getOpenFileName(QWidget* parent, const QString& caption, const QString& dir,
                                     const QString& filter)
{
    InteractionSeam::record({QStringLiteral("open"), caption, filter, {}});
    if (InteractionSeam::isScripted())
        return InteractionSeam::takeAnswer(QString()).toString();
    return QFileDialog::getOpenFileName(parent, caption, dir, filter);
}

QString zFileDialog::getSaveFileName(QWidget* parent, const QString& caption, const QString& dir,
                                     const QString& filter)
{
    InteractionSeam::record({QStringLiteral("save"), caption, filter, {}});
    if (InteractionSeam::isScripted())
        return InteractionSeam::takeAnswer(QString()).toString();
    return QFileDialog::getSaveFileName(parent, caption, dir, filter);
}

QString zFileDialog::getText(QWidget* parent, const QString& title, const QString& label,
                             const QString& text, bool* ok)
{
    InteractionSeam::record({QStringLiteral("input"), title, label, {}});
    if (InteractionSeam::isScripted()) {
        const QVariant answer = InteractionSeam::takeAnswer(QVariant());
        if (ok)
            *ok = answer.isValid();
        return answer.toString();
    }
    return QInputDialog::getText(parent, title, label, QLineEdit::Normal, text, ok);
}
