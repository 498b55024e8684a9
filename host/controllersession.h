#ifndef CONTROLLERSESSION_H
#define CONTROLLERSESSION_H

#include "BackendVersions.h"
#include "IOManager.h"

#include "controllerexchange.h"
#include "timedlink.h"

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
    // first exchange fails (the link stays, so later calls try again), and false when
    // the peer answers but not in the controller's wire format.
    bool connectToController(const QString& hostName, quint16 port, int replyTimeoutMs, QString* error);
    bool isRemote() const { return !m_tcpLink.isNull(); }
    TcpControllerLink* tcpLink() const { return m_tcpLink.data(); }
    // "simulated in-process", "connected to HOST:PORT" or "HOST:PORT: <what went wrong>".
    QString connectionState() const { return m_connectionState; }
    // Whether the last call reached the controller (a refusal counts: it answered).
    bool controllerAnswers() const { return m_traffic.isEmpty() || m_traffic.constLast().ok; }
    // Every exchange with the controller in use, oldest first, as the command log shows
    // it (a failed one with the link's error as its reply); the oldest go beyond
    // MaximumTraffic.
    static const int MaximumTraffic = 20000;
    const QVector<ControllerExchange>& traffic() const { return m_traffic; }
    void clearTraffic();

    // The log is cut into sections, one per opening of a module dialog. closeSection()
    // ends the current one: the next exchange starts a new one. headSection() gives the
    // current section its heading, placed before its first exchange, so that a dialog
    // that is headed when it shows gets its loading under its heading.
    void closeSection();
    void headSection(const QString& heading);
    // Headings with the index in traffic() of the exchange they stand before, in order.
    struct Heading
    {
        int before;
        QString text;
    };
    const QVector<Heading>& headings() const { return m_headings; }

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
    // A new exchange at the end of traffic(), for the command log panel.
    void exchanged(const ControllerExchange& exchange);
    // The log changed other than at its end: cleared, cut or headed.
    void logRewritten();
    void connectionStateChanged(const QString& state);

private:
    VersionInfo readVersion(const char* path);
    void dropOldest(int count);
    void recordExchange(const QByteArray& request, const QByteArray& reply, bool ok, const QDateTime& sent,
                        qint64 roundTripNs);

    SimulatedController* m_controller;
    QScopedPointer<InProcessLink> m_link;
    QScopedPointer<TcpControllerLink> m_tcpLink;
    TimedLink m_timedLink;
    QString m_connectionState;
    QVector<ControllerExchange> m_traffic;
    QVector<Heading> m_headings;
    int m_sectionStart = -1; // first exchange of the current section; -1: none yet
    QString m_pendingFault;  // the fault rule that hit the request in the simulated controller
    HostMessageLog* m_messages;
    IOManager m_io;
    BackendVersions m_versions;
};

#endif // CONTROLLERSESSION_H
