#pragma once

#include "ProgressSink.h"

#include <QObject>
#include <QString>

class QProgressDialog;
class QWidget;

// The host's progress bar for long operations on the GUI thread. Without a display or
// under the test seam it only records its title, text and values.
class VXProgressBar : public QObject, public ProgressSink
{
    Q_OBJECT
public:
    VXProgressBar(const QString& title, const QString& text, int minimum, int maximum,
                  QObject* parent = nullptr);
    ~VXProgressBar() override;

    // The bar up now, if any (the innermost when bars nest).
    static VXProgressBar* Current();

    void setText(const QString& text);
    // The bar's window keeps this height (already scaled by the caller).
    void setFixedHeight(int height);
    int fixedHeight() const { return m_height; }
    // The window the bar stands over: the parent given at construction when it is a widget.
    QWidget* ownerWindow() const { return m_owner; }
    // Shows the bar at once and lets it paint before the caller's long work starts.
    void show();
    void setValue(int value) override;
    int value() const { return m_value; }
    void finish();

private:
    QProgressDialog* m_dialog = nullptr;
    QWidget* m_owner = nullptr;
    int m_value = 0;
    int m_height = -1;
    VXProgressBar* m_outer = nullptr;
};
