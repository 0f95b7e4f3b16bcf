#include "zMessageBox.h"
#include "InteractionSeam.h"

#include <QDebug>
#include <QGuiApplication>
#include <QPushButton>
#include <QScreen>
#include <QTimer>

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
    const QScreen* screen = QGuiApplication::primaryScreen();
    const double ratio = screen ? qMax(1.0, screen->logicalDotsPerInch() / 96.0) : 1.0;
    QMessageBox box(QMessageBox::Information, title, text, QMessageBox::Ok, parent);
    box.button(QMessageBox::Ok)->setText(QStringLiteral("确定"));
    // A message box lays itself out when shown: the size is set once it is up.
    QTimer::singleShot(0, &box, [&box, fixedSize, ratio] {
        box.setFixedSize(qRound(fixedSize.width() * ratio), qRound(fixedSize.height() * ratio));
    });
    return QMessageBox::StandardButton(box.exec());
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
