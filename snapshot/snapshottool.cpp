#include "snapshottool.h"

#include "outlierfinder.h"
#include "snapshotdiff.h"
#include "snapshotlink.h"
#include "snapshotreader.h"
#include "snapshotrestore.h"

#include <inprocesslink.h>
#include <simulatedcontroller.h>

#include <TcpControllerLink.h>

#include <QCommandLineParser>
#include <QTextStream>

namespace {

const QString kLive = QStringLiteral("live");
const QString kLiveLabel = QStringLiteral("the controller");

QString sideLabel(const QString& side)
{
    return side == kLive ? kLiveLabel : side;
}

} // namespace

SnapshotTool::SnapshotTool(QTextStream* out, QTextStream* err)
    : m_out(out), m_err(err), m_replyTimeoutMs(TcpControllerLink::DefaultReplyTimeoutMs)
{
}

SnapshotTool::~SnapshotTool() = default;

QString SnapshotTool::usage()
{
    return QStringLiteral(
        "Usage: quarvo2-snapshot COMMAND [ARGUMENTS] [OPTIONS]\n"
        "Saves the camera settings of a whole tracking system, compares and restores them.\n"
        "\n"
        "Commands:\n"
        "  save [-o FILE]          read every camera's settings from the controller into a snapshot\n"
        "                          (to standard output without -o)\n"
        "  diff A [B]              what differs from A to B; a side is a snapshot file or \"live\",\n"
        "                          the controller; B is the controller when left out\n"
        "  restore FILE            write what differs from FILE to the controller, then read it back\n"
        "  outliers [FILE]         cameras whose setting differs from most cameras of their model,\n"
        "                          in FILE or on the controller\n"
        "\n"
        "Options:\n"
        "  --controller HOST:PORT  the controller on the network\n"
        "  --scenario NAME-OR-FILE the simulated controller in this process (default: default)\n"
        "  --reply-timeout MS      how long one call to the controller may take (default 3000)\n"
        "  -o, --output FILE       save: the snapshot file\n"
        "  --json                  diff: the differences as JSON\n"
        "  --dry-run               restore: print the commands instead of sending them\n"
        "  -h, --help              this text\n"
        "\n"
        "Exit codes: 0 done (no differences); 1 differences, not everything restored, outliers\n"
        "found, or settings left out of a save; 2 bad usage or input; 3 controller not reachable\n"
        "or connection lost.\n");
}

int SnapshotTool::fail(int code, const QString& message)
{
    *m_err << "quarvo2-snapshot: " << message << '\n';
    m_err->flush();
    return code;
}

int SnapshotTool::run(const QStringList& arguments)
{
    QCommandLineParser parser;
    const QCommandLineOption controller(QStringLiteral("controller"), QString(), QStringLiteral("host:port"));
    const QCommandLineOption scenario(QStringLiteral("scenario"), QString(), QStringLiteral("name-or-file"));
    const QCommandLineOption timeout(QStringLiteral("reply-timeout"), QString(), QStringLiteral("ms"));
    const QCommandLineOption output(QStringList() << QStringLiteral("o") << QStringLiteral("output"), QString(),
                                    QStringLiteral("file"));
    const QCommandLineOption json(QStringLiteral("json"));
    const QCommandLineOption dryRun(QStringLiteral("dry-run"));
    const QCommandLineOption help(QStringList() << QStringLiteral("h") << QStringLiteral("help"));
    parser.addOptions({controller, scenario, timeout, output, json, dryRun, help});
    if (!parser.parse(QStringList(QStringLiteral("quarvo2-snapshot")) + arguments))
        return fail(BadInput, parser.errorText() + QStringLiteral("; see --help"));
    if (parser.isSet(help)) {
        *m_out << usage();
        m_out->flush();
        return Success;
    }
    QStringList positional = parser.positionalArguments();
    const QString command = positional.isEmpty() ? QString() : positional.takeFirst();
    if (parser.isSet(controller) && parser.isSet(scenario))
        return fail(BadInput, QStringLiteral("--controller and --scenario exclude each other"));
    m_controllerAddress = parser.value(controller);
    m_scenario = parser.isSet(scenario) ? parser.value(scenario) : QStringLiteral("default");
    if (parser.isSet(timeout)) {
        bool ok = false;
        m_replyTimeoutMs = parser.value(timeout).toInt(&ok);
        if (!ok || m_replyTimeoutMs < 1)
            return fail(BadInput, QStringLiteral("--reply-timeout takes milliseconds above 0"));
    }
    const auto only = [&parser, &command](const QCommandLineOption& option, const QString& owner) {
        return !parser.isSet(option) || command == owner;
    };
    if (!only(output, QStringLiteral("save")) || !only(json, QStringLiteral("diff"))
        || !only(dryRun, QStringLiteral("restore")))
        return fail(BadInput, QStringLiteral("-o belongs to save, --json to diff, --dry-run to restore"));

    if (command == QLatin1String("save") && positional.isEmpty())
        return save(parser);
    if (command == QLatin1String("diff") && (positional.size() == 1 || positional.size() == 2))
        return diff(positional.size() == 1 ? positional << kLive : positional, parser.isSet(json));
    if (command == QLatin1String("restore") && positional.size() == 1)
        return restore(positional.first(), parser.isSet(dryRun));
    if (command == QLatin1String("outliers") && positional.size() <= 1)
        return outliers(positional);
    return fail(BadInput, command.isEmpty() ? QStringLiteral("no command; see --help")
                                            : QStringLiteral("bad use of \"%1\"; see --help").arg(command));
}

ControllerLink* SnapshotTool::link(QString* error)
{
    if (m_givenLink)
        return m_givenLink;
    if (m_ownLink)
        return m_ownLink.data();
    if (!m_controllerAddress.isEmpty()) {
        QString host;
        quint16 port = 0;
        if (!TcpControllerLink::parseAddress(m_controllerAddress, &host, &port, error))
            return nullptr;
        auto* tcp = new TcpControllerLink(host, port);
        tcp->setReplyTimeoutMs(m_replyTimeoutMs);
        m_ownLink.reset(tcp);
        return tcp;
    }
    m_simulated.reset(new SimulatedController);
    if (!m_simulated->loadScenario(m_scenario, error))
        return nullptr;
    auto* inProcess = new InProcessLink(m_simulated.data());
    inProcess->setReplyTimeoutMs(m_replyTimeoutMs);
    m_ownLink.reset(inProcess);
    return inProcess;
}

bool SnapshotTool::readLive(SystemSnapshot* snapshot, int* code, bool warn)
{
    QString error;
    ControllerLink* controller = link(&error);
    if (!controller) {
        *code = fail(BadInput, error);
        return false;
    }
    SnapshotLink channel(controller);
    SnapshotReader reader(&channel);
    if (!reader.read(snapshot)) {
        *code = fail(ControllerFailed, QStringLiteral("cannot read the controller: %1").arg(reader.error()));
        return false;
    }
    for (const QString& problem : reader.problems()) {
        if (warn)
            *m_err << "warning: " << problem << '\n';
    }
    m_err->flush();
    *code = reader.problems().isEmpty() ? Success : Differs;
    return true;
}

bool SnapshotTool::readSide(const QString& side, SystemSnapshot* snapshot, int* code)
{
    if (side == kLive)
        return readLive(snapshot, code);
    QString error;
    if (!SystemSnapshot::load(side, snapshot, &error)) {
        *code = fail(BadInput, error);
        return false;
    }
    *code = Success;
    return true;
}

int SnapshotTool::save(const QCommandLineParser& parser)
{
    SystemSnapshot snapshot;
    int code = Success;
    if (!readLive(&snapshot, &code))
        return code;
    const QString file = parser.value(QStringLiteral("output"));
    if (file.isEmpty()) {
        *m_out << QString::fromUtf8(snapshot.toJson());
    } else {
        QString error;
        if (!snapshot.save(file, &error))
            return fail(BadInput, QStringLiteral("cannot write %1").arg(error));
        *m_out << QStringLiteral("saved %1 of %2 (protocol %3) to %4\n")
                      .arg(SnapshotRestore::count(snapshot.cameras.size(), QStringLiteral("camera")),
                           snapshot.systemModel, snapshot.protocolVersion, file);
    }
    m_out->flush();
    return code;
}

int SnapshotTool::diff(const QStringList& sides, bool json)
{
    SystemSnapshot before;
    SystemSnapshot after;
    int code = Success;
    if (!readSide(sides.at(0), &before, &code) || !readSide(sides.at(1), &after, &code))
        return code;
    const SnapshotDiff differences(before, after);
    const QString beforeLabel = sideLabel(sides.at(0));
    const QString afterLabel = sideLabel(sides.at(1));
    *m_out << (json ? QString::fromUtf8(differences.json(beforeLabel, afterLabel))
                    : differences.text(beforeLabel, afterLabel));
    m_out->flush();
    return differences.differ() ? Differs : Success;
}

int SnapshotTool::restore(const QString& file, bool dryRun)
{
    SystemSnapshot saved;
    SystemSnapshot live;
    int code = Success;
    // The live reading's gaps come back as settings that cannot be restored.
    if (!readSide(file, &saved, &code) || !readLive(&live, &code, false))
        return code;
    if (saved.systemModel != live.systemModel)
        return fail(BadInput, QStringLiteral("%1 is a snapshot of a %2 system, the controller is a %3 system; "
                                             "nothing was written")
                                  .arg(file, saved.systemModel, live.systemModel));
    SnapshotRestore restore(saved, live);
    if (dryRun) {
        for (const QString& problem : restore.problems())
            *m_out << problem << '\n';
        for (const SnapshotRestore::Write& write : restore.writes())
            *m_out << "quarvo2 set " << QString::fromLatin1(SnapshotRestore::command(write)) << '\n';
        *m_out << SnapshotRestore::count(restore.writes().size(), QStringLiteral("command")) << " would be sent\n";
        m_out->flush();
        return restore.problems().isEmpty() ? Success : Differs;
    }
    QString error;
    SnapshotLink channel(link(&error));
    const SnapshotRestore::Outcome outcome = restore.apply(&channel);
    for (const QString& line : restore.report())
        *m_out << line << '\n';
    m_out->flush();
    switch (outcome) {
    case SnapshotRestore::Outcome::Restored: return Success;
    case SnapshotRestore::Outcome::NotAllTaken: return Differs;
    case SnapshotRestore::Outcome::ConnectionLost: return ControllerFailed;
    }
    return ControllerFailed;
}

int SnapshotTool::outliers(const QStringList& sources)
{
    SystemSnapshot snapshot;
    int code = Success;
    if (!readSide(sources.isEmpty() ? kLive : sources.first(), &snapshot, &code))
        return code;
    const OutlierFinder finder(snapshot);
    *m_out << finder.table();
    m_out->flush();
    return finder.outliers().isEmpty() ? Success : Differs;
}
