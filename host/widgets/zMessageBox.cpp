#include "zMessageBox.h"
#include "HostScreen.h"
#include "InteractionSeam.h"

#include <QDebug>
#include <QDialog>
#include <QGridLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QStyle>

namespace {

struct ButtonText
{
    QMessageBox::StandardButton button;
    const char* text;
};

const ButtonText kButtons[] = {
    {QMessageBox::Ok, "确定"},     {QMessageBox::Yes, "是"},    {QMessageBox::No, "否"},
    {QMessageBox::Cancel, "取消"}, {QMessageBox::Save, "保存"}, {QMessageBox::Discard, "不保存"},
};

QString kindOf(QMessageBox::Icon icon, QMessageBox::StandardButtons buttons)
{
    if (buttons.testFlag(QMessageBox::Yes))
        return QStringLiteral("question");
    switch (icon) {
    case QMessageBox::Warning:
        return QStringLiteral("warning");
    case QMessageBox::Critical:
        return QStringLiteral("critical");
    case QMessageBox::Question:
        return QStringLiteral("question");
    default:
        return QStringLiteral("information");
    }
}

// A scripted answer may name a button by its text or by its StandardButton value.
QMessageBox::StandardButton scriptedAnswer(QMessageBox::StandardButtons buttons,
                                           QMessageBox::StandardButton first)
{
    const QVariant answer = InteractionSeam::takeAnswer(int(first));
    if (answer.userType() == QMetaType::QString) {
        for (const ButtonText& b : kButtons)
            if (buttons.testFlag(b.button) && answer.toString() == QString::fromUtf8(b.text))
                return b.button;
        qWarning().noquote() << QStringLiteral("脚本答案“%1”不是可选按钮").arg(answer.toString());
        return first;
    }
    return QMessageBox::StandardButton(answer.toInt());
}

} // namespace

QMessageBox::StandardButton showInformation(QWidget* parent, const QString& title,
                                            const QString& text,
                                            QMessageBox::StandardButtons buttons,
                                            QMessageBox::Icon icon)
{
    InteractionSeam::Shown shown{kindOf(icon, buttons), title, text, {}};
    QMessageBox::StandardButton first = QMessageBox::NoButton;
    for (const ButtonText& b : kButtons)
        if (buttons.testFlag(b.button)) {
            shown.buttons << QString::fromUtf8(b.text);
            if (first == QMessageBox::NoButton)
                first = b.button;
        }
    InteractionSeam::record(shown);
    if (InteractionSeam::isScripted())
        return scriptedAnswer(buttons, first);

    QMessageBox box(icon, title, text, buttons, parent);
    for (const ButtonText& b : kButtons)
        if (QAbstractButton* button = box.button(b.button))
            button->setText(QString::fromUtf8(b.text));
    return QMessageBox::StandardButton(box.exec());
}

QMessageBox::StandardButton showInformation(QWidget* parent, const QString& title,
                                            const QString& text, const QSize& fixedSize)
{
    InteractionSeam::Shown shown{
        QStringLiteral("information"), title, text, {QStringLiteral("确定")}};
    shown.size = fixedSize;
    InteractionSeam::record(shown);
    if (InteractionSeam::isScripted())
        return scriptedAnswer(QMessageBox::Ok, QMessageBox::Ok);
    const double ratio = HostScreen::ResolutionRatio();
    // A message box sizes itself to its text; a box of given size is a dialog of its own.
    QDialog box(parent);
    box.setWindowTitle(title);
    box.setFixedSize(qRound(fixedSize.width() * ratio), qRound(fixedSize.height() * ratio));
    auto* layout = new QGridLayout(&box);
    auto* icon = new QLabel(&box);
    icon->setPixmap(box.style()->standardIcon(QStyle::SP_MessageBoxInformation).pixmap(32, 32));
    layout->addWidget(icon, 0, 0, Qt::AlignTop);
    auto* label = new QLabel(text, &box);
    label->setWordWrap(true);
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    layout->addWidget(label, 0, 1);
    auto* ok = new QPushButton(QStringLiteral("确定"), &box);
    ok->setDefault(true);
    QObject::connect(ok, &QPushButton::clicked, &box, &QDialog::accept);
    layout->addWidget(ok, 1, 1, Qt::AlignRight);
    box.exec();
    return QMessageBox::Ok;
}

bool showQuestion(QWidget* parent, const QString& title, const QString& text)
{
    return showInformation(parent, title, text, QMessageBox::Yes | QMessageBox::No,
                           QMessageBox::Question) == QMessageBox::Yes;
}

QMessageBox::StandardButton showWarning(QWidget* parent, const QString& title, const QString& text)
{
    return showInformation(parent, title, text, QMessageBox::Ok, QMessageBox::Warning);
}

QMessageBox::StandardButton showCritical(QWidget* parent, const QString& title, const QString& text)
{
    return showInformation(parent, title, text, QMessageBox::Ok, QMessageBox::Critical);
}
