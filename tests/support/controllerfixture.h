#ifndef CONTROLLERFIXTURE_H
#define CONTROLLERFIXTURE_H

// The controller side of every suite, as a host sets it up: the simulated controller, the
// link, the host's channel and message sink, and the versions the host read when it connected.
// Marks cut the command log and the messages into what one step sent.

#include <BackendVersions.h>
#include <HostMessageSink.h>
#include <IOManager.h>
#include <faultrule.h>
#include <inprocesslink.h>
#include <simulatedcontroller.h>

#include <QByteArrayList>
#include <QString>
#include <QStringList>

class ControllerFixture : public HostMessageSink
{
public:
    // Starts on a built-in scenario ("default", "briskbox", "legacy").
    explicit ControllerFixture(const QString& builtInScenario = QStringLiteral("default"));
    ControllerFixture(const ControllerFixture&) = delete;
    ControllerFixture& operator=(const ControllerFixture&) = delete;

    // The system; each switch reads the versions again, as a host does when it connects.
    // A refused scenario or poke fails the running test.
    bool useScenario(const QString& builtInName);
    bool useScenarioJson(const QByteArray& json);
    void setProtocol(const VersionInfo& version);
    // Sets a value as a scenario would ("camera flash_intensity c01 50"), unlogged.
    bool poke(const QByteArray& setTail);

    // Fault rules in one call; `glob` matches whole request lines.
    void addFault(FaultRule::Action action, const QString& glob, const QByteArray& text = QByteArray(),
                  int times = -1, int delayMs = 0);
    void fail(const QString& glob, int times = -1);
    // Requests matching glob are answered with this line.
    void answer(const QString& glob, const QByteArray& line, int times = -1);
    // "quarvo2 get <path>" is answered "quarvo2 set <path> <value>" after the first
    // passFirst requests went through untouched.
    void answerGet(const QString& path, const QByteArray& value, int passFirst = 0);
    void clearFaults();

    // The command log's request lines and the host messages ("type|source|level|text")
    // since the last mark(), or all of them.
    void mark();
    QStringList requests() const;
    QStringList allRequests() const;
    QStringList messages() const;
    const QStringList& allMessages() const { return m_messages; }
    // Requests since the last mark() that the controller refused as unknown or as not yet
    // in its protocol: a module that checks the protocol sends none of them.
    QStringList unknownToTheController() const;

    SimulatedController* controller() { return &m_controller; }
    InProcessLink* link() { return &m_link; }
    IOManager* channel() { return &m_channel; }
    BackendVersions* versions() { return &m_versions; }

    void postMessage(const char* type, const char* source, int level, const char* text) override;

private:
    // Fails the running test when a scenario was refused; the versions are read again.
    bool scenarioTaken(bool ok, const QString& refusal);

    SimulatedController m_controller;
    InProcessLink m_link;
    IOManager m_channel;
    BackendVersions m_versions;
    QStringList m_messages;
    int m_requestMark = 0;
    int m_messageMark = 0;
};

// The request line a get or a set of path sends, and the host message of an operator
// error and of the configuration event.
QString get(const QString& path);
QString set(const QString& path);
QString operatorError(const QString& text);
extern const QString ConfigurationEvent;
// The camera settings among requests, without the display marks and the sync-group display.
QStringList cameraSets(const QStringList& requests);

// Scenario changes: "fail <glob>" makes matching requests fail, "answer <path>=<value>" answers the
// get of path with value, "protocol <version>" sets the protocol, anything else is a poke
// ("camera flash_intensity c01 50").
void applyChanges(ControllerFixture& fixture, const QByteArrayList& changes);

#endif // CONTROLLERFIXTURE_H
