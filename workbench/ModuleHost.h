#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include <QVariant>
#include <QWidget>

class UISerInterface;

// Loads the module the way the host application does (bundle framework, activator, UI
// service), creates its container and carries messages both ways. Module-to-host messages
// arrive through Communication; the header-template ids are echoed back at once.
class ModuleHost : public QObject
{
    Q_OBJECT
public:
    static inline const QString ServiceName = QStringLiteral("TarvoService");

    explicit ModuleHost(QObject* parent = nullptr);
    ~ModuleHost() override;

    static QString defaultLibraryPath();
    // Loads and starts the module; false with a message when it cannot be.
    bool load(const QString& libraryPath, QString* error);
    bool isLoaded() const { return m_service != nullptr; }
    UISerInterface* service() const { return m_service; }

    // A new container with the six bill pages; the previous one is deleted.
    QWidget* createContainer();
    QWidget* container() const { return m_container; }
    void destroyContainer();

    // Sends a host message to the module when it asked for it (41 always goes).
    void send(int msgId, const QVariant& payload = QVariant());

signals:
    // A host message went to the module (after the module handled it).
    void sent(int msgId, const QVariant& payload);
    void ribbonRequested(const QString& menuFile);
    void pageChanged();

private:
    void onModuleMessage(int target, int msgId, const QVariant& payload);

    UISerInterface* m_service = nullptr;
    QList<int> m_msgIds;
    QPointer<QWidget> m_container;
};
