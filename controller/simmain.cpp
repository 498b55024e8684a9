// quarvo2-sim: the simulated tracking controller as a process of its own, serving a
// scenario over TCP to any number of frontends (or anything else that speaks the
// controller's line protocol).
#include "controllerserver.h"
#include "simulatedcontroller.h"

#include <TcpControllerLink.h>

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QSocketNotifier>

#include <csignal>
#include <cstdio>
#include <sys/socket.h>
#include <unistd.h>

namespace {

enum ExitCode { Stopped = 0, UsageError = 2, ScenarioError = 3, ListenError = 4 };

// A server left running for a test day keeps only the newest exchanges in its command
// log; of long lines it keeps no more than this much text per exchange of the window.
const int kDefaultLogWindow = 5000;
const qint64 kLogBytesPerExchange = 4096;
// Ten seconds is beyond any reply time-out a frontend keeps; a larger latency is a typo.
const qint64 kMaximumLatencyUs = 10 * 1000 * 1000;

// SIGINT and SIGTERM end the event loop through this pair: a signal handler may only
// write to a descriptor, the loop reads the other end.
int g_signalPipe[2] = {-1, -1};

void onStopSignal(int)
{
    const char byte = 1;
    const ssize_t written = ::write(g_signalPipe[0], &byte, 1);
    (void)written; // nothing more a signal handler can do about a full pipe
}

bool installStopSignals()
{
    if (::socketpair(AF_UNIX, SOCK_STREAM, 0, g_signalPipe) != 0)
        return false;
    struct sigaction action = {};
    action.sa_handler = onStopSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    return sigaction(SIGINT, &action, nullptr) == 0 && sigaction(SIGTERM, &action, nullptr) == 0;
}

int fail(ExitCode code, const QString& message)
{
    fprintf(stderr, "quarvo2-sim: %s\n", qPrintable(message));
    return code;
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("quarvo2-sim"));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Simulated QUARVO tracking controller: serves a scenario over TCP, one request line in, one reply line out."));
    parser.addHelpOption();
    const QCommandLineOption scenario(QStringList() << "s" << "scenario",
        QStringLiteral("A built-in scenario (default, briskbox, legacy) or a scenario JSON file."),
        QStringLiteral("name-or-file"), QStringLiteral("default"));
    // Loopback unless asked otherwise: a simulator should not be reachable from the network by accident.
    const QCommandLineOption listen(QStringList() << "l" << "listen",
        QStringLiteral("Address and port to listen on (port 0: any free port; address \"any\" for every interface)."),
        QStringLiteral("address:port"), QStringLiteral("127.0.0.1:4711"));
    const QCommandLineOption verbose(QStringList() << "v" << "verbose",
        QStringLiteral("Print every connection, request and reply."));
    const QCommandLineOption logWindow(QStringLiteral("log-window"),
        QStringLiteral("Exchanges the command log keeps (the newest ones; default %1).").arg(kDefaultLogWindow),
        QStringLiteral("exchanges"), QString::number(kDefaultLogWindow));
    const QCommandLineOption latency(QStringLiteral("latency"),
        QStringLiteral("Hold back every reply this many microseconds, as a slower controller or network would (default 0)."),
        QStringLiteral("microseconds"), QStringLiteral("0"));
    const QCommandLineOption list(QStringLiteral("list-scenarios"), QStringLiteral("List the built-in scenarios."));
    parser.addOptions({scenario, listen, verbose, logWindow, latency, list});
    if (!parser.parse(QCoreApplication::arguments()))
        return fail(UsageError, parser.errorText());
    if (parser.isSet(QStringLiteral("help"))) {
        printf("%s", qPrintable(parser.helpText()));
        return 0;
    }
    if (!parser.positionalArguments().isEmpty())
        return fail(UsageError, QStringLiteral("unexpected argument: %1").arg(parser.positionalArguments().first()));
    if (parser.isSet(list)) {
        for (const QString& name : SimulatedController::builtInScenarios())
            printf("%s\n", qPrintable(name));
        return 0;
    }

    bool numeric = false;
    const int window = parser.value(logWindow).toInt(&numeric);
    if (!numeric || window < 1)
        return fail(UsageError, QStringLiteral("--log-window needs a number of exchanges, 1 or more"));
    const qint64 latencyUs = parser.value(latency).toLongLong(&numeric);
    if (!numeric || latencyUs < 0 || latencyUs > kMaximumLatencyUs)
        return fail(UsageError, QStringLiteral("--latency needs microseconds, 0 to %1").arg(kMaximumLatencyUs));

    QString hostName;
    quint16 port = 0;
    QHostAddress address;
    QString error;
    const QString listenText = parser.value(listen);
    if (!TcpControllerLink::parseAddress(listenText, &hostName, &port, &error))
        return fail(UsageError, error);
    if (!ControllerServer::listenAddress(hostName, &address))
        return fail(UsageError, QStringLiteral("\"%1\" is no IP address (nor \"localhost\" or \"any\")").arg(hostName));

    SimulatedController controller;
    const QString name = parser.value(scenario);
    if (!controller.loadScenario(name, &error))
        return fail(ScenarioError, QStringLiteral("cannot load scenario %1: %2").arg(name, error));
    controller.setLogWindow(window, window * kLogBytesPerExchange);

    ControllerServer server(&controller);
    server.setLatencyUs(latencyUs);
    if (parser.isSet(verbose)) {
        QObject::connect(&server, &ControllerServer::traced, [](const QString& line) {
            printf("%s\n", qPrintable(line));
            fflush(stdout);
        });
    }
    if (!server.listen(address, port, &error))
        return fail(ListenError, QStringLiteral("cannot listen on %1: %2").arg(listenText, error));

    if (!installStopSignals())
        return fail(UsageError, QStringLiteral("cannot install the signal handlers"));
    QSocketNotifier stop(g_signalPipe[1], QSocketNotifier::Read);
    QObject::connect(&stop, &QSocketNotifier::activated, &app, &QCoreApplication::quit);

    // The first line tells a script (or a test) the port, which matters when it was 0.
    const QString shown = server.serverAddress().protocol() == QAbstractSocket::IPv6Protocol
                              ? QStringLiteral("[%1]").arg(server.serverAddress().toString())
                              : server.serverAddress().toString();
    const QString held = latencyUs > 0 ? QStringLiteral(", replies held back %1 us").arg(latencyUs) : QString();
    printf("listening on %s:%u, scenario \"%s\", protocol %s%s\n", qPrintable(shown), unsigned(server.serverPort()),
           qPrintable(controller.scenarioName()), qPrintable(controller.protocolVersion().toString()),
           qPrintable(held));
    fflush(stdout);

    app.exec();
    printf("stopped\n");
    fflush(stdout);
    return Stopped;
}
