#pragma once

#include <QMessageBox>
#include <QString>

class QWidget;

// The host's message boxes, always with Chinese buttons ("确定", "是", "否", "取消").
// They return the button chosen.
QMessageBox::StandardButton showInformation(QWidget* parent, const QString& title,
                                            const QString& text,
                                            QMessageBox::StandardButtons buttons = QMessageBox::Ok,
                                            QMessageBox::Icon icon = QMessageBox::Information);
// The same box at a fixed size (scaled by the screen's resolution ratio).
QMessageBox::StandardButton showInformation(QWidget* parent, const QString& title,
                                            const QString& text, const QSize& fixedSize);
// Yes/No question; true for yes.
bool showQuestion(QWidget* parent, const QString& title, const QString& text);
QMessageBox::StandardButton showWarning(QWidget* parent, const QString& title, const QString& text);
QMessageBox::StandardButton showCritical(QWidget* parent, const QString& title,
                                         const QString& text);
