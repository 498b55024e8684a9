#ifndef CONTROLLERSESSION_H
#define CONTROLLERSESSION_H

#include "BackendVersions.h"
#include "IOManager.h"

#include <QObject>
#include <QScopedPointer>

class HostMessageLog;
class InProcessLink;
class SimulatedController;

// The host's side of the controller: the simulated controller with its scenario, the
// link to it, the IOManager the modules get, and the versions read from the controller.
class ControllerSession : public QObject
{
    Q_OBJECT

public:
    explicit ControllerSession(QObject* parent = nullptr);
    ~ControllerSession() override;

    // A built-in scenario name or a scenario file; on failure the old scenario stays.
    bool loadScenario(const QString& nameOrFile, QString* error);
    QString scenarioName() const;

    IOManager* io() { return &m_io; }
    BackendVersions* backendVersions() { return &m_versions; }
    SimulatedController* controller() const { return m_controller; }
    HostMessageLog* messages() const { return m_messages; }

    // Asks the controller for its versions and model, as a frontend does when it connects.
    void readBackendVersions();

private:
    VersionInfo readVersion(const char* path);

    SimulatedController* m_controller;
    QScopedPointer<InProcessLink> m_link;
    HostMessageLog* m_messages;
    IOManager m_io;
    BackendVersions m_versions;
};

#endif // CONTROLLERSESSION_H
