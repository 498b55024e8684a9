#ifndef CONTROLLERSESSION_H
#define CONTROLLERSESSION_H

#include "BackendVersions.h"
#include "IOManager.h"

#include "commandlogentry.h"

#include <QObject>
#include <QScopedPointer>
#include <QVector>

class HostMessageLog;
class InProcessLink;
class SimulatedController;
class TcpControllerLink;

// The host's side of the controller: the simulated controller with its scenario, or a
// controller on the network, the link to it, the IOManager the modules get, and the
// versions read from the controller.
class ControllerSession : public QObject
{
    Q_OBJECT

public:
    explicit ControllerSession(QObject* parent = nullptr);
    ~ControllerSession() override;

    // Talks to the controller at hostName:port from now on instead of the simulated one
    // in the process, and reads its versions; false with the link's error when that
    // first exchange fails (the link stays, so later calls try again).
    bool connectToController(const QString& hostName, quint16 port, int replyTimeoutMs, QString* error);
    bool isRemote() const { return !m_tcpLink.isNull(); }
    TcpControllerLink* tcpLink() const { return m_tcpLink.data(); }
    // "simulated in-process", "connected to HOST:PORT" or "HOST:PORT: <what went wrong>".
    QString connectionState() const { return m_connectionState; }
    // Every exchange with a controller on the network, as the command log shows it (a
    // failed one with the link's error as its reply).
    const QVector<CommandLogEntry>& traffic() const { return m_traffic; }

    // A built-in scenario name or a scenario file; on failure the old scenario stays.
    // A controller on the network serves its own scenario, so this fails then.
    bool loadScenario(const QString& nameOrFile, QString* error);
    QString scenarioName() const;

    IOManager* io() { return &m_io; }
    BackendVersions* backendVersions() { return &m_versions; }
    SimulatedController* controller() const { return m_controller; }
    HostMessageLog* messages() const { return m_messages; }

    // Asks the controller for its versions and model, as a frontend does when it connects.
    void readBackendVersions();

signals:
    // An exchange with a controller on the network, for the command log panel.
    void exchanged(const CommandLogEntry& entry);
    void connectionStateChanged(const QString& state);

private:
    VersionInfo readVersion(const char* path);
    void recordExchange(const QByteArray& request, const QByteArray& reply, bool ok);

    SimulatedController* m_controller;
    QScopedPointer<InProcessLink> m_link;
    QScopedPointer<TcpControllerLink> m_tcpLink;
    QString m_connectionState;
    QVector<CommandLogEntry> m_traffic;
    HostMessageLog* m_messages;
    IOManager m_io;
    BackendVersions m_versions;
};

#endif // CONTROLLERSESSION_H
