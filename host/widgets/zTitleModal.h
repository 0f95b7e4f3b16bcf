#pragma once

class QDialog;

// Shows a dialog modally inside the host's title frame. Returns 0 when the dialog was
// accepted, 1 otherwise (the host's convention). Scripted answers are QDialog result codes.
class zTitleModal
{
public:
    static int ShowModal(QDialog* dialog);
};
