#pragma once

#include <QSize>

class QCoreApplication;

// What the host knows of the user's screen and language: the resolution ratio by which
// dialogs scale their sizes, and Qt's own texts (file choosers, standard buttons) in Chinese.
class HostScreen
{
public:
    // The primary screen's logical resolution over 96 dots per inch, never below 1. A ratio
    // set with SetResolutionRatio (tests, hosts that know better) takes its place.
    static double ResolutionRatio();
    static void SetResolutionRatio(double ratio); // 0 goes back to the screen's
    static int Scaled(int pixels);
    static QSize Scaled(const QSize& size);

    // Installs Qt's zh_CN translations into the application; false when they are missing
    // (the package of Qt's translations is not installed).
    static bool InstallQtTranslations(QCoreApplication* app);
};
