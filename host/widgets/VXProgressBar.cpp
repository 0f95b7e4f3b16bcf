#include "VXProgressBar.h"
#include "InteractionSeam.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QProgressDialog>
#include <QWidget>

namespace {
VXProgressBar* g_current = nullptr;
} // namespace

VXProgressBar* VXProgressBar::Current()
{
    return g_current;
}

VXProgressBar::VXProgressBar(const QString& title, const QString& text, int minimum, int maximum,
                             QObject* parent)
    : QObject(parent), m_owner(qobject_cast<QWidget*>(parent)), m_value(minimum), m_outer(g_current)
{
    g_current = this;
    InteractionSeam::record({QStringLiteral("progress"), title, text, {}});
    if (InteractionSeam::isScripted() ||
        QGuiApplication::platformName() == QLatin1String("offscreen"))
        return;
    // Over the owner's window, centred on it, not a free-standing window of its own.
    m_dialog = new QProgressDialog(text, QString(), minimum, maximum, m_owner);
    m_dialog->setWindowTitle(title);
    m_dialog->setWindowModality(Qt::ApplicationModal);
    m_dialog->setMinimumDuration(300);
    m_dialog->setAutoClose(false);
}

VXProgressBar::~VXProgressBar()
{
    if (g_current == this)
        g_current = m_outer;
    delete m_dialog;
}

void VXProgressBar::setText(const QString& text)
{
    if (m_dialog)
        m_dialog->setLabelText(text);
}

void VXProgressBar::setFixedHeight(int height)
{
    m_height = height;
    if (m_dialog)
        m_dialog->setFixedHeight(height);
}

void VXProgressBar::show()
{
    if (!m_dialog)
        return;
    m_dialog->show();
    m_dialog->raise();
    m_dialog->repaint();
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void VXProgressBar::setValue(int value)
{
    m_value = value;
    if (m_dialog) {
        m_dialog->setValue(value);
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    }
}

void VXProgressBar::finish()
{
    if (m_dialog)
        m_dialog->hide();
}
