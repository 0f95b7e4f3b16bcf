#pragma once

#include <QLineEdit>
#include <QPushButton>

// The host's line edit and button.
class zBaseLineEdit : public QLineEdit
{
    Q_OBJECT
public:
    explicit zBaseLineEdit(QWidget* parent = nullptr) : QLineEdit(parent) {}
};

class zBaseButton : public QPushButton
{
    Q_OBJECT
public:
    explicit zBaseButton(const QString& text, QWidget* parent = nullptr) : QPushButton(text, parent)
    {
    }
};
