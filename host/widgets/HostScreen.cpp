#include "HostScreen.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QLibraryInfo>
#include <QScreen>
#include <QTranslator>

#include <cmath>

namespace {
double g_ratio = 0;
} // namespace

double HostScreen::ResolutionRatio()
{
    if (g_ratio > 0)
        return g_ratio;
    const QScreen* screen = QGuiApplication::primaryScreen();
    const double ratio = screen ? screen->logicalDotsPerInch() / 96.0 : 1.0;
    return std::isfinite(ratio) ? qMax(1.0, ratio) : 1.0;
}

void HostScreen::SetResolutionRatio(double ratio)
{
    g_ratio = ratio > 0 && std::isfinite(ratio) ? ratio : 0;
}

int HostScreen::Scaled(int pixels)
{
    return qRound(pixels * ResolutionRatio());
}

QSize HostScreen::Scaled(const QSize& size)
{
    return {Scaled(size.width()), Scaled(size.height())};
}

bool HostScreen::InstallQtTranslations(QCoreApplication* app)
{
    if (!app)
        return false;
    const QString dir = QLibraryInfo::location(QLibraryInfo::TranslationsPath);
    // qt_zh_CN brings qtbase's texts (file dialogs, message box buttons) with it.
    for (const QString& name : {QStringLiteral("qt_zh_CN"), QStringLiteral("qtbase_zh_CN")}) {
        auto* translator = new QTranslator(app);
        if (translator->load(name, dir) && app->installTranslator(translator))
            return true;
        delete translator;
    }
    return false;
}
