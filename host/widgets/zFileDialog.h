#pragma once

#include <QString>

class QWidget;

// File choosers of the host; an empty result means the user cancelled.
class zFileDialog
{
public:
    static QString getOpenFileName(QWidget* parent, const QString& caption,
                                   const QString& dir = QString(),
                                   const QString& filter = QString());
    static QString getSaveFileName(QWidget* parent, const QString& caption,
                                   const QString& dir = QString(),
                                   const QString& filter = QString());
    static QString getText(QWidget* parent, const QString& title, const QString& label,
                           const QString& text = QString(), bool* ok = nullptr);
};
