#include "zBatMessage.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QLocalServer>
#include <QLocalSocket>
#include <QStandardPaths>
#include <QUuid>

namespace {

QString defaultBusDir()
{
    return QDir(QStandardPaths::writableLocation(QStandardPaths::TempLocation))
        .filePath(QStringLiteral("tarvo-bus"));
}

} // namespace

zBatMessage* zBatMessage::Instance()
{
    static zBatMessage* instance =
        new zBatMessage(QUuid::createUuid().toString(QUuid::WithoutBraces), QString(),
                        QCoreApplication::instance());
    return instance;
}

zBatMessage::zBatMessage(const QString& appId, const QString& busDir, QObject* parent)
    : QObject(parent), m_appId(appId), m_busDir(busDir.isEmpty() ? defaultBusDir() : busDir),
      m_server(new QLocalServer(this))
{
    QDir().mkpath(m_busDir);
    m_serverName = QStringLiteral("tarvo-") + QUuid::createUuid().toString(QUuid::Id128);
    if (m_server->listen(m_serverName)) {
        // The endpoint file names the server; other instances find it there.
        QFile entry(QDir(m_busDir).filePath(m_serverName));
        if (entry.open(QIODevice::WriteOnly))
            entry.write(m_appId.toUtf8());
    }
    connect(m_server, &QLocalServer::newConnection, this, &zBatMessage::onConnection);
}

zBatMessage::~zBatMessage()
{
    QFile::remove(QDir(m_busDir).filePath(m_serverName));
}

void zBatMessage::installIntoApplication()
{
    if (QCoreApplication* app = QCoreApplication::instance()) {
        app->setProperty("AppId", m_appId);
        app->setProperty("BatUtil", QVariant::fromValue(qint64(reinterpret_cast<quintptr>(this))));
    }
}

int zBatMessage::SendAsyn(const QJsonObject& message)
{
    return SendAsyn(QJsonDocument(message).toJson(QJsonDocument::Compact));
}

int zBatMessage::SendAsyn(const QByteArray& message)
{
    int delivered = 0;
    const QStringList endpoints = QDir(m_busDir).entryList(QDir::Files);
    for (const QString& name : endpoints) {
        if (name == m_serverName)
            continue;
        QLocalSocket socket;
        socket.connectToServer(name);
        if (!socket.waitForConnected(200)) {
            QFile::remove(QDir(m_busDir).filePath(name)); // an instance that is gone
            continue;
        }
        QByteArray frame = message;
        frame.append('\n');
        socket.write(frame);
        socket.waitForBytesWritten(200);
        socket.disconnectFromServer();
        ++delivered;
    }
    return delivered;
}

void zBatMessage::onConnection()
{
    while (QLocalSocket* socket = m_server->nextPendingConnection()) {
        connect(socket, &QLocalSocket::readyRead, this, [this, socket] {
            while (socket->canReadLine()) {
                const QByteArray line = socket->readLine().trimmed();
                if (!line.isEmpty())
                    emit doNotify(line);
            }
        });
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
    }
}
