#include "zTitleModal.h"
#include "InteractionSeam.h"

#include <QDialog>

int zTitleModal::ShowModal(QDialog* dialog)
{
    if (!dialog)
        return QDialog::Rejected;
    InteractionSeam::record({QStringLiteral("modal"), dialog->windowTitle(), dialog->objectName(), {}});
    if (InteractionSeam::isScripted()) {
        const int result = InteractionSeam::takeAnswer(int(QDialog::Rejected)).toInt();
        dialog->setResult(result);
        if (result == QDialog::Accepted)
            dialog->accept();
        return result;
    }
    return dialog->exec();
}
