#pragma once

#include <QString>
#include <QWidget>
#include <QtTest>

// With TARVO_SCREENSHOT_DIR set, the widget as shown is saved there as <name>.png, for a
// person to look at; without it nothing happens.
inline void saveShot(QWidget* widget, const QString& name)
{
    const QString dir = qEnvironmentVariable("TARVO_SCREENSHOT_DIR");
    if (dir.isEmpty())
        return;
    widget->show();
    QTest::qWait(150);
    QVERIFY(widget->grab().save(dir + QLatin1Char('/') + name + QStringLiteral(".png")));
}
