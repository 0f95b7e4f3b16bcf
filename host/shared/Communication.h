#pragma once

#include <QObject>
#include <QPointer>
#include <QVariant>
#include <QWidget>

// The host's message bus and its record of the main window and the active widgets.
// SendMsg(target, id, payload) from a module reaches the host through signalMsg.
class Communication : public QObject
{
    Q_OBJECT
public:
    static Communication* GetInstance();

    void SendMsg(int target, int msgId, const QVariant& payload = QVariant());

    QWidget* GetMainWindow() const { return m_mainWindow; }
    void SetMainWindow(QWidget* window) { m_mainWindow = window; }

    QWidget* GetActiveFirstLevelWidget() const { return m_first; }
    void SaveActiveFirstLevelWidget(QWidget* widget) { m_first = widget; }
    QWidget* GetActiveSecondLevelWidget() const { return m_second; }
    void SaveActiveSecondLevelWidget(QWidget* widget) { m_second = widget; }

signals:
    void signalMsg(int target, int msgId, const QVariant& payload);

private:
    Communication();
    QPointer<QWidget> m_mainWindow;
    QPointer<QWidget> m_first;
    QPointer<QWidget> m_second;
};
