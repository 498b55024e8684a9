#ifndef SNAPSHOTTOOL_H
#define SNAPSHOTTOOL_H

#include "systemsnapshot.h"

#include <QScopedPointer>
#include <QString>
#include <QStringList>

class ControllerLink;
class QCommandLineParser;
class QTextStream;
class SimulatedController;

// quarvo2-snapshot's commands (save, diff, restore, outliers) against a controller on
// the network (--controller HOST:PORT) or the simulated one in the process (--scenario).
// Results go to out, messages to err; run() returns the exit code.
class SnapshotTool
{
public:
    enum ExitCode {
        Success = 0,
        // diff: they differ; restore: not everything took; outliers: some found;
        // save: settings the controller would not answer were left out.
        Differs = 1,
        BadInput = 2,        // usage, a file that is no snapshot, another system model
        ControllerFailed = 3 // not reachable, or the connection was lost
    };

    SnapshotTool(QTextStream* out, QTextStream* err);
    ~SnapshotTool();

    // The controller to use instead of the one the options name (tests, the host).
    void setLink(ControllerLink* link) { m_givenLink = link; }

    // The arguments without the program name: COMMAND [ARGUMENTS] [OPTIONS].
    int run(const QStringList& arguments);
    static QString usage();

private:
    int save(const QCommandLineParser& parser);
    int diff(const QStringList& sides, bool json);
    int restore(const QString& file, bool dryRun);
    int outliers(const QStringList& sources);

    // A file, or the word "live" for the controller; false with the exit code set.
    bool readSide(const QString& side, SystemSnapshot* snapshot, int* code);
    bool readLive(SystemSnapshot* snapshot, int* code, bool warn = true);
    ControllerLink* link(QString* error);
    int fail(int code, const QString& message);

    QTextStream* m_out;
    QTextStream* m_err;
    ControllerLink* m_givenLink = nullptr;
    QString m_controllerAddress;
    QString m_scenario;
    int m_replyTimeoutMs;
    QScopedPointer<ControllerLink> m_ownLink;
    QScopedPointer<SimulatedController> m_simulated;
};

#endif // SNAPSHOTTOOL_H
