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
    m_io.setLink(m_link.data());
    m_io.setMessageSink(m_messages);
    readBackendVersions();
}

ControllerSession::~ControllerSession()
{
    m_io.setLink(nullptr);
}

bool ControllerSession::connectToController(const QString& hostName, quint16 port, int replyTimeoutMs, QString* error)
{
    m_io.setLink(nullptr);
    m_tcpLink.reset(new TcpControllerLink(hostName, port));
    m_tcpLink->setReplyTimeoutMs(replyTimeoutMs);
    m_tcpLink->setTrafficObserver([this](const QByteArray& request, const QByteArray& reply, bool ok) {
        recordExchange(request, reply, ok);
    });
    m_io.setLink(m_tcpLink.data());
    readBackendVersions();
    const bool connected = m_tcpLink->isConnected();
    if (!connected && error)
        *error = m_tcpLink->lastError();
    return connected;
}

void ControllerSession::recordExchange(const QByteArray& request, const QByteArray& reply, bool ok)
{
    CommandLogEntry entry;
    entry.request = request;
    entry.reply = ok ? reply : "(no reply: " + m_tcpLink->lastError().toLatin1() + ')';
    m_traffic.append(entry);
    emit exchanged(entry);

    const QString state = ok ? QStringLiteral("connected to %1").arg(m_tcpLink->address())
                             : QStringLiteral("%1: %2").arg(m_tcpLink->address(), m_tcpLink->lastError());
    if (state != m_connectionState) {
        m_connectionState = state;
        emit connectionStateChanged(state);
    }
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
