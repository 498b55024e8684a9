#include "controllersession.h"

#include "hostmessagelog.h"
#include "inprocesslink.h"
#include "simulatedcontroller.h"

#include <TcpControllerLink.h>

ControllerSession::ControllerSession(QObject* parent)
    : QObject(parent),
      m_controller(new SimulatedController(this)),
      m_link(new InProcessLink(m_controller)),
      m_connectionState(QStringLiteral("simulated in-process")),
      m_messages(new HostMessageLog(this)),
      m_versions(VersionInfo(), VersionInfo(), VersionInfo(), QString())
{
    m_timedLink.setLink(m_link.data());
    m_timedLink.setObserver([this](const QByteArray& request, const QByteArray& reply, bool ok, const QDateTime& sent,
                                   qint64 roundTripNs) { recordExchange(request, reply, ok, sent, roundTripNs); });
    // The simulated controller names the fault rule that hit; it answers inside the
    // exchange, so the name belongs to the exchange being recorded next.
    connect(m_controller, &SimulatedController::commandLogged, this,
            [this](const CommandLogEntry& entry) { m_pendingFault = entry.fault; });
    m_io.setLink(&m_timedLink);
    m_io.setMessageSink(m_messages);
    readBackendVersions();
}

ControllerSession::~ControllerSession()
{
    m_io.setLink(nullptr);
}

bool ControllerSession::connectToController(const QString& hostName, quint16 port, int replyTimeoutMs, QString* error)
{
    m_timedLink.setLink(nullptr);
    // The simulated controller read at construction is not the one in use from now on.
    clearTraffic();
    m_tcpLink.reset(new TcpControllerLink(hostName, port));
    m_tcpLink->setReplyTimeoutMs(replyTimeoutMs);
    m_timedLink.setLink(m_tcpLink.data());
    readBackendVersions();
    if (!m_tcpLink->isConnected()) {
        if (error)
            *error = m_tcpLink->lastError();
        return false;
    }
    // Something answers there, but only a controller answers a get with a set or an err
    // line; anything else (a web server, say) would give an empty dialog and protocol 0.0.0.
    const QByteArray first = m_traffic.isEmpty() ? QByteArray() : m_traffic.first().reply;
    const bool controller = first.startsWith("quarvo2 set system ") || first.startsWith("quarvo2 err ");
    if (!controller && error)
        *error = QStringLiteral("the peer at %1 does not speak the controller's wire format: it answered \"%2\"")
                     .arg(m_tcpLink->address(), QString::fromLatin1(first));
    return controller;
}

void ControllerSession::recordExchange(const QByteArray& request, const QByteArray& reply, bool ok,
                                       const QDateTime& sent, qint64 roundTripNs)
{
    ControllerExchange exchange;
    exchange.sent = sent;
    exchange.roundTripNs = roundTripNs;
    exchange.request = request;
    exchange.reply = ok ? reply : "(no reply: " + m_timedLink.lastError().toLatin1() + ')';
    exchange.ok = ok;
    exchange.fault = m_pendingFault;
    m_pendingFault.clear();
    if (m_traffic.size() >= MaximumTraffic)
        dropOldest(MaximumTraffic / 10);
    if (m_sectionStart < 0)
        m_sectionStart = m_traffic.size();
    m_traffic.append(exchange);
    emit exchanged(exchange);

    if (!isRemote())
        return;
    // The link's error names the controller's address already.
    const QString state = ok ? QStringLiteral("connected to %1").arg(m_tcpLink->address()) : m_tcpLink->lastError();
    if (state != m_connectionState) {
        m_connectionState = state;
        emit connectionStateChanged(state);
    }
}

void ControllerSession::dropOldest(int count)
{
    m_traffic.remove(0, count);
    for (Heading& heading : m_headings)
        heading.before -= count;
    while (!m_headings.isEmpty() && m_headings.first().before < 0)
        m_headings.removeFirst();
    if (m_sectionStart >= 0)
        m_sectionStart = qMax(0, m_sectionStart - count);
    emit logRewritten();
}

void ControllerSession::clearTraffic()
{
    m_traffic.clear();
    m_headings.clear();
    m_sectionStart = -1;
    emit logRewritten();
}

void ControllerSession::closeSection()
{
    m_sectionStart = -1;
}

void ControllerSession::headSection(const QString& heading)
{
    if (m_sectionStart < 0)
        m_sectionStart = m_traffic.size();
    m_headings.append(Heading{m_sectionStart, heading});
    emit logRewritten();
}

bool ControllerSession::loadScenario(const QString& nameOrFile, QString* error)
{
    if (isRemote()) {
        if (error)
            *error = QStringLiteral("The controller at %1 serves its own scenario.").arg(m_tcpLink->address());
        return false;
    }
    const bool ok = m_controller->loadScenario(nameOrFile, error);
    if (ok)
        readBackendVersions();
    return ok;
}

QString ControllerSession::scenarioName() const
{
    return m_controller->scenarioName();
}

VersionInfo ControllerSession::readVersion(const char* path)
{
    char text[IOManager::ValueBufferSize];
    VersionInfo version;
    if (m_io.getString(text, "%s", path) == 0)
        version.fromString(QString::fromLatin1(text));
    return version;
}

void ControllerSession::readBackendVersions()
{
    char model[IOManager::ValueBufferSize] = "";
    if (m_io.getString(model, "system model") != 0)
        model[0] = '\0';
    const VersionInfo system = readVersion("system version");
    // Assigned in place: modules keep the pointer they were given.
    m_versions = BackendVersions(system, readVersion("system protocol_version"), system, QString::fromLatin1(model));
}
