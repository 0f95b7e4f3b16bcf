#pragma once

#include <QDialog>
#include <QHBoxLayout>
#include <QPushButton>

#include <initializer_list>
#include <utility>

// The button rows of the labour-rate maintenance dialogs: each button runs one member of its
// dialog (its signal closeLxrgwh closes the dialog); a row of answers stands on the right.
namespace LxrgButtons {

template <typename Dialog>
QHBoxLayout* row(Dialog* dialog,
                 std::initializer_list<std::pair<QString, void (Dialog::*)()>> buttons,
                 bool onTheRight = false)
{
    auto* layout = new QHBoxLayout;
    if (onTheRight)
        layout->addStretch();
    for (const auto& [text, member] : buttons) {
        auto* button = new QPushButton(text, dialog);
        QObject::connect(button, &QPushButton::clicked, dialog, member);
        layout->addWidget(button);
    }
    QObject::connect(dialog, &Dialog::closeLxrgwh, dialog, &QDialog::reject, Qt::UniqueConnection);
    return layout;
}

} // namespace LxrgButtons
