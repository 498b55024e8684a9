#ifndef SIMULATEDCONTROLLER_H
#define SIMULATEDCONTROLLER_H

#include "commandinterpreter.h"
#include "commandlogentry.h"
#include "controllerreply.h"
#include "controllerstate.h"
#include "faultrule.h"

#include <BackendVersions.h>
#include <VersionInfo.h>

#include <QList>
#include <QObject>
#include <QRegularExpression>
#include <QStringList>
#include <QVector>

// A tracking controller in software: it holds the state of a whole system (cameras,
// sync card, cascade, display settings), answers the controller's text protocol as
// the real one does, logs every request for tests, and misbehaves on purpose where
// the scenario's fault rules say so.
class SimulatedController : public QObject
{
    Q_OBJECT
public:
    explicit SimulatedController(QObject* parent = nullptr); // starts on the built-in "default" scenario

    static QStringList builtInScenarios(); // "default", "briskbox", "legacy"
    bool loadBuiltInScenario(const QString& name, QString* error = nullptr);
    bool loadScenarioFile(const QString& path, QString* error = nullptr); // error text "<file>:<line>: <reason>"
    // A built-in scenario name or a scenario file; a file of the same name as a built-in
    // scenario wins, since whoever gave its path meant the file.
    bool loadScenario(const QString& nameOrFile, QString* error = nullptr);
    bool loadScenarioJson(const QByteArray& json, QString* error = nullptr);
    QString scenarioName() const;

    VersionInfo protocolVersion() const;
    void setProtocolVersion(const VersionInfo& version);
    QString systemModel() const;
    void setSystemModel(const QString& model);
    BackendVersions backendVersions() const;

    // One request line without terminator; logs it.
    ControllerReply handle(const QByteArray& request);
    // Applies "camera flash_intensity c01 50" like a set, without log and faults, for
    // test set-up. It also reaches values the protocol only reports (maxima, support
    // flags, the configuration lock) and ignores the protocol version and the lock.
    bool poke(const QByteArray& setTail);
    // The value a get of path would answer, without log and faults; empty on error.
    QByteArray peek(const QByteArray& path) const;

    QVector<CommandLogEntry> log() const; // oldest first
    QList<QByteArray> requests() const;   // request lines of the log, in order
    void clearLog();
    // Keeps only the newest exchanges in the log: at most `exchanges` of them, holding at
    // most `bytes` of text (the newest one always stays). 0 keeps every exchange, as
    // tests need; a server that runs for days bounds it.
    void setLogWindow(int exchanges, qint64 bytes);

    void addFault(const FaultRule& rule);
    void clearFaults();
    QVector<FaultRule> faults() const;

    qint64 handlingNanoseconds() const; // time spent inside handle() since the last clearLog()

    // The whole system as it stands, for tests that check the model itself.
    const ControllerState& state() const { return m_state; }

signals:
    void commandLogged(const CommandLogEntry& entry);

private:
    bool loadScenario(const QByteArray& json, const QString& source, QString* error);
    // The first rule that matches the request and has hits left, or -1.
    int takeFault(const QByteArray& request);
    ControllerReply applyFault(const FaultRule& rule, const QByteArray& request);
    void record(const CommandLogEntry& entry);
    void trimLog();

    QString m_scenarioName;
    ControllerState m_state;
    CommandInterpreter m_interpreter;
    QVector<FaultRule> m_faults;
    QVector<QRegularExpression> m_faultPatterns; // compiled once per rule, parallel to m_faults
    QVector<CommandLogEntry> m_log; // entries before m_logFirst have left the window
    int m_logFirst = 0;
    qint64 m_logBytes = 0;          // text held by the entries in the window
    int m_logExchanges = 0;         // window size; 0: unbounded
    qint64 m_logByteLimit = 0;
    qint64 m_handlingNanoseconds = 0;
};

#endif // SIMULATEDCONTROLLER_H
