#pragma once

#include <QList>
#include <QSize>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>

class QDialog;

// Every message box, question, file dialog, input dialog, modal dialog and progress bar of
// the host goes through here. Normally each is shown to the user. Tests switch scripting on:
// nothing modal is shown, each call takes the next scripted answer (or a default: the first
// button, an empty file name, a rejected dialog) and what would have been shown is recorded.
class InteractionSeam
{
public:
    struct Shown
    {
        QString kind; // "information", "question", "warning", "critical", "open", "save",
                      // "input", "modal", "progress"
        QString title;
        QString text;
        QStringList buttons;
        QSize size = QSize(); // a box of fixed size; invalid for the default size
    };

    static void setScripted(bool scripted);
    static bool isScripted();
    // Queues answers: a button text or QMessageBox::StandardButton for boxes, a file name,
    // an input text, or a QDialog result code for modal dialogs.
    static void pushAnswer(const QVariant& answer);
    static QVariant takeAnswer(const QVariant& defaultAnswer);
    static void record(const Shown& shown);
    static QList<Shown> shown();
    static Shown lastShown();
    static void clear();
    // Under scripting, runs with each modal dialog before its scripted answer is taken, so a
    // test can fill the dialog in as the user would.
    static void setModalHook(std::function<void(QDialog*)> hook);
    // Under scripting, runs with everything as it is shown (a progress bar, say), so a test
    // can look at the screen's state at that moment.
    static void setShownHook(std::function<void(const Shown&)> hook);
    static void runModalHook(QDialog* dialog);
};
