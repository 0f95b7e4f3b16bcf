#pragma once

#include "ProgressSink.h"

#include <QObject>
#include <QString>

class QProgressDialog;

// The host's progress bar for long operations on the GUI thread. Without a display or
// under the test seam it only records its title, text and values.
class VXProgressBar : public QObject, public ProgressSink
{
    Q_OBJECT
public:
    VXProgressBar(const QString& title, const QString& text, int minimum, int maximum,
                  QObject* parent = nullptr);
    ~VXProgressBar() override;

    void setText(const QString& text);
    // Shows the bar at once and lets it paint before the caller's long work starts.
    void show();
    void setValue(int value) override;
    int value() const { return m_value; }
    void finish();

private:
    QProgressDialog* m_dialog = nullptr;
    int m_value = 0;
};
