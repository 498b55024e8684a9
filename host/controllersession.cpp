#include "controllersession.h"

#include "hostmessagelog.h"
#include "inprocesslink.h"
#include "simulatedcontroller.h"

#include <QFileInfo>

ControllerSession::ControllerSession(QObject* parent)
    : QObject(parent),
      m_controller(new SimulatedController(this)),
      m_link(new InProcessLink(m_controller)),
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

bool ControllerSession::loadScenario(const QString& nameOrFile, QString* error)
{
    const bool builtIn = SimulatedController::builtInScenarios().contains(nameOrFile)
                         && !QFileInfo::exists(nameOrFile);
    const bool ok = builtIn ? m_controller->loadBuiltInScenario(nameOrFile, error)
                            : m_controller->loadScenarioFile(nameOrFile, error);
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
