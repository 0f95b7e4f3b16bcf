#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QObject>
#include <QPointer>

class QLocalServer;

// The message bus between running instances of the application on one machine. Each
// instance listens on a local socket and announces itself in a shared folder; SendAsyn
// delivers a message to every other instance, which emits doNotify with its bytes.
// The application object carries "AppId" (this instance's id) and "BatUtil" (this object).
class zBatMessage : public QObject
{
    Q_OBJECT
public:
    static zBatMessage* Instance();
    // A bus endpoint of its own (tests run two in one process); Instance() is the
    // application's.
    explicit zBatMessage(const QString& appId, const QString& busDir = QString(),
                         QObject* parent = nullptr);
    ~zBatMessage() override;

    QString appId() const { return m_appId; }
    QString busDir() const { return m_busDir; }
    // Sets the application object's "AppId" and "BatUtil" properties to this endpoint.
    void installIntoApplication();
    // Sends to every other endpoint of the bus folder; returns how many got it.
    int SendAsyn(const QJsonObject& message);
    int SendAsyn(const QByteArray& message);

signals:
    void doNotify(const QByteArray message);

private:
    void onConnection();
    QString m_appId;
    QString m_busDir;
    QString m_serverName;
    QLocalServer* m_server;
};
