#pragma once

class QDialog;

// Shows a dialog modally inside the host's title frame; returns the dialog's result code.
class zTitleModal
{
public:
    static int ShowModal(QDialog* dialog);
};
