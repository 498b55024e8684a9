// The stand-in host on a controller across the network (quarvo2-sim as a separate
// process): the module sends the same commands as in-process, a controller that goes
// away shows as an error instead of a frozen window, and the options that choose it.
#include "commandlogpanel.h"
#include "controllersession.h"
#include "hostoptions.h"
#include "hostwindow.h"
#include "simulatedcontroller.h"
#include "tst_tcpsimprocess.h"

#include <TcpControllerLink.h>

#include <QtTest>
#include <QtWidgets>

#include <csignal>

namespace {

// Opens "Hardware" > "Cameras" and closes whatever modal widgets come up with reject(),
// after whileOpen has looked at them.
void openAndCloseCameras(HostWindow* window, const std::function<void()>& whileOpen = {})
{
    QTimer closer;
    QObject::connect(&closer, &QTimer::timeout, [&] {
        if (auto* modal = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
            if (whileOpen)
                whileOpen();
            modal->reject();
        }
    });
    closer.start(0);
    window->findMenu(QStringLiteral("H&ardware"))->actions().first()->trigger();
}

QList<QByteArray> requestsSince(const ControllerSession& session, int first)
{
    QList<QByteArray> requests;
    for (int i = first; i < session.traffic().size(); ++i)
        requests << session.traffic().at(i).request;
    return requests;
}

} // namespace

class tst_TcpHost : public QObject
{
    Q_OBJECT

private slots:
    void dialogSendsTheSameCommandsOverTcp();
    void killedControllerShowsAsErrorUntilItIsBack();
    void controllerThatStopsAnsweringCostsOneTimeOut();
    void peerThatIsNoControllerIsRefused();
    void options_data();
    void options();
    void executableRunsOnANetworkController();

private:
    static QString pluginDir() { return QStringLiteral(QUARVO_PLUGIN_DIR); }
};

void tst_TcpHost::dialogSendsTheSameCommandsOverTcp()
{
    // The plug-in is one instance per process: the in-process host is gone before the other loads it.
    ControllerSession local;
    QList<QByteArray> expected;
    {
        HostWindow localWindow(&local, pluginDir());
        QCOMPARE(localWindow.loadModules(), 1);
        local.controller()->clearLog();
        openAndCloseCameras(&localWindow);
        expected = local.controller()->requests();
    }
    QVERIFY(expected.contains("quarvo2 get config is_changeable"));

    SimProcess sim;
    QVERIFY(sim.start(QStringList() << "--scenario" << "default"));
    ControllerSession remote;
    QString error;
    QVERIFY2(remote.connectToController(QStringLiteral("127.0.0.1"), sim.port(), 3000, &error), qPrintable(error));
    QCOMPARE(remote.backendVersions()->protocol().toString(), local.backendVersions()->protocol().toString());
    QCOMPARE(remote.backendVersions()->atcModel(), QStringLiteral("QUARVO"));
    HostWindow window(&remote, pluginDir());
    QCOMPARE(window.loadModules(), 1);
    const int opened = remote.traffic().size();
    openAndCloseCameras(&window);
    QCOMPARE(requestsSince(remote, opened), expected);

    // The log panel shows the link's traffic, as it shows the simulated controller's.
    auto* panel = window.findChild<CommandLogPanel*>(QStringLiteral("commandLogPanel"));
    QVERIFY(panel->text().contains(QStringLiteral("> quarvo2 get config is_changeable  < quarvo2 set config is_changeable yes")));
    QCOMPARE(window.windowTitle(), QStringLiteral("QUARVO stand-in host - controller 127.0.0.1:%1").arg(sim.port()));
}

void tst_TcpHost::killedControllerShowsAsErrorUntilItIsBack()
{
    SimProcess sim;
    QVERIFY(sim.start());
    const quint16 port = sim.port();
    const QString address = QStringLiteral("127.0.0.1:%1").arg(port);
    ControllerSession session;
    QString error;
    QVERIFY(session.connectToController(QStringLiteral("127.0.0.1"), port, 500, &error));
    HostWindow window(&session, pluginDir());
    window.loadModules();
    auto* state = window.findChild<QLabel*>(QStringLiteral("connectionState"));
    QVERIFY(state);
    QCOMPARE(state->text(), QStringLiteral("Controller: connected to %1").arg(address));
    QVERIFY2(!window.findMenu(QStringLiteral("&Host"))->actions().first()->isEnabled(),
             "a controller on the network serves its own scenario");

    sim.kill();
    QElapsedTimer clock;
    clock.start();
    QString statusWhileOpen;
    openAndCloseCameras(&window, [&] { statusWhileOpen = window.statusBar()->currentMessage(); });
    QVERIFY2(clock.elapsed() < 10000, "every call fails at once, none waits for the dead controller");
    const QString refused = QStringLiteral("cannot connect to the controller at %1: Connection refused").arg(address);
    QCOMPARE(state->text(), QStringLiteral("Controller: %1").arg(refused));
    // The dialog shows its fallbacks; the status bar and the messages say why.
    const QString why = QStringLiteral("Cannot connect to the controller at %1: Connection refused; "
                                       "the dialog shows no settings read from the controller.").arg(address);
    QCOMPARE(statusWhileOpen, why);
    auto* messages = window.findChild<QListWidget*>(QStringLiteral("messageList"));
    QVERIFY(messages->count() > 0);
    QVERIFY2(messages->item(messages->count() - 1)->text().endsWith(QStringLiteral("host / Controller (1): ") + why),
             qPrintable(messages->item(messages->count() - 1)->text()));
    QCOMPARE(session.traffic().last().reply, QByteArray("(no reply: " + refused.toLatin1() + ')'));

    SimProcess restarted;
    QVERIFY(restarted.start(QStringList(), port));
    char model[IOManager::ValueBufferSize];
    QCOMPARE(session.io()->getString(model, "system model"), 0);
    QCOMPARE(model, "QUARVO");
    QCOMPARE(state->text(), QStringLiteral("Controller: connected to %1").arg(address));
}

void tst_TcpHost::controllerThatStopsAnsweringCostsOneTimeOut()
{
    SimProcess sim;
    QVERIFY(sim.start());
    const quint16 port = sim.port();
    const int timeoutMs = 400;
    ControllerSession session;
    QString error;
    QVERIFY2(session.connectToController(QStringLiteral("127.0.0.1"), port, timeoutMs, &error), qPrintable(error));
    HostWindow window(&session, pluginDir());
    QCOMPARE(window.loadModules(), 1);

    // A stopped process: the system still takes its connections and requests, nothing answers.
    QCOMPARE(::kill(pid_t(sim.process().processId()), SIGSTOP), 0);
    const int before = session.traffic().size();
    QElapsedTimer clock;
    clock.start();
    QString statusWhileOpen;
    openAndCloseCameras(&window, [&] { statusWhileOpen = window.statusBar()->currentMessage(); });
    const qint64 opening = clock.elapsed();
    QVERIFY2(opening < 2 * timeoutMs, qPrintable(QStringLiteral("the opening took %1 ms").arg(opening)));
    QVERIFY2(session.traffic().size() - before > 1, "the dialog went on asking and was told at once");
    QCOMPARE(session.tcpLink()->lastError(),
             QStringLiteral("the controller at 127.0.0.1:%1 does not answer: no reply within %2 ms; "
                            "calls fail at once until it answers again").arg(port).arg(timeoutMs));
    QCOMPARE(statusWhileOpen, QStringLiteral("The controller at 127.0.0.1:%1 does not answer: no reply within %2 ms; "
                                             "calls fail at once until it answers again; "
                                             "the dialog shows no settings read from the controller.").arg(port).arg(timeoutMs));

    sim.kill();
    SimProcess restarted;
    QVERIFY(restarted.start(QStringList(), port));
    char model[IOManager::ValueBufferSize];
    QTRY_COMPARE_WITH_TIMEOUT(session.io()->getString(model, "system model"), 0, 5000);
    QCOMPARE(model, "QUARVO");
    QVERIFY(session.tcpLink()->lastError().isEmpty());
}

void tst_TcpHost::peerThatIsNoControllerIsRefused()
{
    SimProcess peer;
    QVERIFY(peer.startScenario(R"({ "faults": [ { "match": "*", "action": "reply", "text": "HTTP/1.1 400 Bad Request" } ] })"));
    ControllerSession session;
    QString error;
    QVERIFY(!session.connectToController(QStringLiteral("127.0.0.1"), peer.port(), 3000, &error));
    QCOMPARE(error, QStringLiteral("the peer at 127.0.0.1:%1 does not speak the controller's wire format: "
                                   "it answered \"HTTP/1.1 400 Bad Request\"").arg(peer.port()));
}

void tst_TcpHost::options_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("result"); // host|port|time-out, or the error
    QTest::newRow("in-process") << QStringList() << "|0|3000";
    QTest::newRow("controller") << (QStringList() << "--controller" << "10.0.0.7:4711") << "10.0.0.7|4711|3000";
    QTest::newRow("time-out") << (QStringList() << "--controller" << "[::1]:9" << "--reply-timeout" << "250")
                              << "::1|9|250";
    QTest::newRow("with a scenario") << (QStringList() << "--controller" << "h:1" << "--scenario" << "legacy")
                                     << "--scenario and --controller exclude each other: the controller serves its own scenario";
    QTest::newRow("port 0") << (QStringList() << "--controller" << "h:0") << "--controller needs a port other than 0";
    QTest::newRow("no port") << (QStringList() << "--controller" << "h")
                             << "\"h\" is no address: write HOST:PORT, such as 127.0.0.1:4711";
    QTest::newRow("bad time-out") << (QStringList() << "--reply-timeout" << "0")
                                  << "--reply-timeout needs a number of milliseconds, 1 or more";
}

void tst_TcpHost::options()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, result);
    HostOptions options;
    QString error;
    const bool ok = HostOptions::parse(QStringList(QStringLiteral("quarvo2-host")) << arguments, &options, &error);
    QCOMPARE(ok ? QStringLiteral("%1|%2|%3").arg(options.controllerHost).arg(options.controllerPort).arg(options.replyTimeoutMs)
                : error,
             result);
}

void tst_TcpHost::executableRunsOnANetworkController()
{
    SimProcess sim;
    QVERIFY(sim.start());
    QTemporaryDir out;
    QProcess host;
    host.start(QStringLiteral(QUARVO_BIN_DIR "/quarvo2-host"),
               QStringList() << "--headless" << "--output" << out.path() << "--controller"
                             << QStringLiteral("127.0.0.1:%1").arg(sim.port()));
    QVERIFY(host.waitForFinished(60000));
    const QString output = QString::fromLocal8Bit(host.readAllStandardOutput());
    QCOMPARE(host.exitCode(), 0);
    // Only the log of the controller in use: the simulated one in the process, which the
    // host reads before it connects, is not part of it.
    const QString log = output.section(QStringLiteral("\nCommand log (connected to 127.0.0.1:%1):\n").arg(sim.port()), 1);
    QVERIFY2(log.section('\n', 0, 0).endsWith(QStringLiteral("> quarvo2 get system model  < quarvo2 set system model QUARVO")),
             qPrintable(output));
    QCOMPARE(output.count(QStringLiteral("Command log (")), 1);
    QCOMPARE(output.count(QStringLiteral("> quarvo2 get system model ")), 1);

    sim.kill();
    host.start(QStringLiteral(QUARVO_BIN_DIR "/quarvo2-host"),
               QStringList() << "--headless" << "--controller" << QStringLiteral("127.0.0.1:%1").arg(sim.port()));
    QVERIFY(host.waitForFinished(30000));
    QCOMPARE(host.exitCode(), 2);
    const QString error = QString::fromLocal8Bit(host.readAllStandardError());
    QVERIFY2(error.contains(QStringLiteral("Cannot reach the controller: cannot connect to the controller at 127.0.0.1:%1: "
                                           "Connection refused\n").arg(sim.port())),
             qPrintable(error));
}

QTEST_MAIN(tst_TcpHost)
#include "tst_tcphost.moc"
