#include "zTitleModal.h"
#include "InteractionSeam.h"

#include <QDialog>

int zTitleModal::ShowModal(QDialog* dialog)
{
    if (!dialog)
        return 1;
    InteractionSeam::record(
        {QStringLiteral("modal"), dialog->windowTitle(), dialog->objectName(), {}});
    if (InteractionSeam::isScripted()) {
        InteractionSeam::runModalHook(dialog);
        const int result = InteractionSeam::takeAnswer(int(QDialog::Rejected)).toInt();
        dialog->setResult(result);
        if (result == QDialog::Accepted)
            dialog->accept();
        return result == QDialog::Accepted ? 0 : 1;
    }
    return dialog->exec() == QDialog::Accepted ? 0 : 1;
}
