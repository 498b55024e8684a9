// The controller across the network, quarvo2-sim always a process of its own on a
// loopback port. The server serves several clients at once, where one client's held-back
// answer, drop or over-long line touches no other, and keeps its memory bounded whatever a
// client does. The host's link keeps one connection, ends every failure within the
// time-out, says why and starts the next call clean; a silent controller costs one
// time-out, not one per call. The stand-in host sends the same commands as in-process and
// shows a controller that goes away as an error instead of a frozen window.
#include "simprocess.h"

#include <IOManager.h>
#include <TcpControllerLink.h>
#include <commandlogpanel.h>
#include <controllersession.h>
#include <hostwindow.h>
#include <modaldriver.h>
#include <simulatedcontroller.h>

#include <QTcpServer>
#include <QTcpSocket>
#include <QtTest>
#include <QtWidgets>

#include <atomic>
#include <future>
#include <sys/socket.h>
#include <thread>

namespace {

const QString kPluginDir = QStringLiteral(QUARVO_PLUGIN_DIR);
const QByteArray kModelReply = "quarvo2 set system model QUARVO";

bool connectTo(QTcpSocket* socket, quint16 port)
{
    socket->connectToHost(QStringLiteral("127.0.0.1"), port);
    return socket->waitForConnected(5000);
}

QByteArray readLine(QTcpSocket* socket)
{
    while (!socket->canReadLine() && socket->waitForReadyRead(5000)) {
    }
    return socket->readLine().trimmed();
}

// A figure of the server's /proc/<pid>/status in KiB ("VmRSS", "VmHWM"), -1 when unreadable.
qint64 memoryKiB(SimProcess& sim, const char* field)
{
    QFile status(QStringLiteral("/proc/%1/status").arg(sim.process().processId()));
    const QByteArray prefix = QByteArray(field) + ':';
    for (const QByteArray& line : status.open(QIODevice::ReadOnly) ? status.readAll().split('\n') : QList<QByteArray>()) {
        if (line.startsWith(prefix))
            return line.mid(prefix.size()).trimmed().split(' ').first().toLongLong();
    }
    return -1;
}

// Opens "Hardware" > "Cameras" and cancels the dialog; the host's status bar while it was open.
QString openAndCloseCameras(HostWindow* window)
{
    ModalDriver driver;
    QString status;
    driver.whenModal<QDialog>([&](QDialog* dialog) {
        status = window->statusBar()->currentMessage();
        dialog->reject();
    });
    window->findMenu(QStringLiteral("H&ardware"))->actions().first()->trigger();
    return status;
}

// A stand-in controller for what quarvo2-sim never does (a reply in pieces, bytes after a
// reply), in a thread of its own because the link blocks the test's thread while it waits:
// the n-th request line, on whatever connection, gets the n-th list of writes.
class FakeController
{
public:
    explicit FakeController(const QList<QList<QByteArray>>& replies) : m_thread([this, replies] { serve(replies); })
    {
        m_port = m_listening.get_future().get();
    }
    ~FakeController() { m_thread.join(); }
    quint16 port() const { return m_port; }
    int connections() const { return m_connections; }

private:
    void serve(QList<QList<QByteArray>> replies)
    {
        QTcpServer server;
        server.listen(QHostAddress::LocalHost);
        m_listening.set_value(server.serverPort());
        while (!replies.isEmpty() && server.waitForNewConnection(5000)) {
            QScopedPointer<QTcpSocket> peer(server.nextPendingConnection());
            ++m_connections;
            while (!replies.isEmpty() && (peer->canReadLine() || peer->waitForReadyRead(5000))) {
                for (const QByteArray& piece : peer->canReadLine() && !peer->readLine().isEmpty() ? replies.takeFirst()
                                                                                                  : QList<QByteArray>()) {
                    peer->write(piece);
                    peer->waitForBytesWritten(1000);
                }
            }
        }
    }

    std::promise<quint16> m_listening;
    std::atomic<int> m_connections{0};
    quint16 m_port = 0;
    std::thread m_thread;
};

} // namespace

class tst_Network : public QObject
{
    Q_OBJECT

private slots:
    // The host's link makes one connection for all its calls; the trace shows each exchange.
    void serverTracesAndStops()
    {
        SimProcess sim;
        QVERIFY2(sim.start({"--verbose"}), qPrintable(sim.firstLine()));
        QVERIFY2(sim.firstLine().endsWith(QStringLiteral(", scenario \"default\", protocol 1.27.0")), qPrintable(sim.firstLine()));
        TcpControllerLink link(QStringLiteral("127.0.0.1"), sim.port());
        QByteArray reply;
        for (int call = 0; call < 3; ++call)
            QVERIFY(link.transact("quarvo2 get system model", &reply) && reply == kModelReply);
        sim.process().terminate();
        QVERIFY2(sim.process().waitForFinished(5000), "SIGTERM ends the server");
        QCOMPARE(sim.process().exitCode(), 0);
        const QString trace = QString::fromLocal8Bit(sim.process().readAllStandardOutput());
        QCOMPARE(trace.count(QStringLiteral(" connected from 127.0.0.1:")), 1);
        QVERIFY2(trace.contains("client 1 > quarvo2 get system model\nclient 1 < " + kModelReply + '\n')
                     && trace.endsWith(QStringLiteral("stopped\n")), qPrintable(trace));
    }

    void serverRefusesToStart_data()
    {
        QTest::addColumn<QStringList>("arguments"); // %1: a broken scenario file, %2: a port in use
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("message");
        QTest::newRow("bad scenario file") << QStringList{"--scenario", "%1"} << 3 << "cannot load scenario %1: %1:3: ";
        QTest::newRow("port in use") << QStringList{"--listen", "127.0.0.1:%2"} << 4
                                     << "cannot listen on 127.0.0.1:%2: The bound address is already in use\n";
        QTest::newRow("no IP address") << QStringList{"--listen", "tracker:4711"} << 2
                                       << "\"tracker\" is no IP address (nor \"localhost\" or \"any\")\n";
        QTest::newRow("no log window") << QStringList{"--log-window", "0"} << 2
                                       << "--log-window needs a number of exchanges, 1 or more\n";
        for (const char* latency : {"fast", "-1", "10000001"})
            QTest::newRow(latency) << QStringList{"--latency", latency} << 2 << "--latency needs microseconds, 0 to 10000000\n";
    }

    void serverRefusesToStart()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, exitCode);
        QFETCH(QString, message);
        QTemporaryDir dir;
        const QString broken = scratchFile(dir, QStringLiteral("broken.json"), "{\n  \"name\": \"broken\",\n  \"cameras\": [ oops ]\n}\n");
        SimProcess running;
        QVERIFY(running.start());
        const QString port = QString::number(running.port());
        arguments.replaceInStrings(QStringLiteral("%1"), broken).replaceInStrings(QStringLiteral("%2"), port);
        QProcess sim;
        sim.start(SimProcess::binary(), arguments);
        QVERIFY(sim.waitForFinished(10000));
        QCOMPARE(sim.exitCode(), exitCode);
        const QString error = QString::fromLocal8Bit(sim.readAllStandardError());
        message.replace(QStringLiteral("%1"), broken).replace(QStringLiteral("%2"), port);
        QVERIFY2(error.startsWith(QStringLiteral("quarvo2-sim: ") + message), qPrintable(error));
    }

    // On a server with latency, a late answer holds back its client by the latency and the
    // delay together, and that client's next request waits behind it; the others are
    // answered meanwhile (and change the one controller they share), a drop and an
    // over-long line end only their own client.
    void clientsTouchNoOtherClient()
    {
        // Margins of hundreds of milliseconds: the sanitizer build on a busy machine is slow.
        SimProcess sim;
        QVERIFY(sim.start({"--latency", "100000"}, 0, "{ \"cameras\": [ {}, {} ], \"faults\": ["
                          " { \"match\": \"quarvo2 get camera version c01\", \"action\": \"late\", \"delay_ms\": 500 },"
                          " { \"match\": \"quarvo2 get camera version c02\", \"action\": \"drop\" } ] }"));
        QVERIFY2(sim.firstLine().endsWith(QStringLiteral(", replies held back 100000 us")), qPrintable(sim.firstLine()));
        QTcpSocket slow, dropped, overlong, other;
        for (QTcpSocket* client : {&slow, &dropped, &overlong, &other})
            QVERIFY(connectTo(client, sim.port()));
        QElapsedTimer clock;
        clock.start();
        slow.write("quarvo2 get camera version c01\n");
        slow.flush(); // now, not when the test next waits on this socket
        other.write("quarvo2 set camera flash_intensity c01 20\n");
        QCOMPARE(readLine(&other), QByteArray("quarvo2 set camera flash_intensity c01 20"));
        QVERIFY2(clock.elapsed() >= 99, "every reply is held back by the latency");
        slow.write("quarvo2 get camera flash_intensity c01\n");
        slow.flush();
        dropped.write("quarvo2 get camera version c02\n");
        QVERIFY2(dropped.waitForDisconnected(5000) && dropped.readAll().isEmpty(), "a drop fault closes the connection");
        overlong.write(QByteArray(100 * 1024, 'x'));
        QCOMPARE(readLine(&overlong), QByteArray("quarvo2 err 1 \"request line too long\""));
        QVERIFY2(overlong.state() == QAbstractSocket::UnconnectedState || overlong.waitForDisconnected(5000),
                 "the rest of the line is not taken as requests");
        other.write("quarvo2 get camera camera c02\n");
        QCOMPARE(readLine(&other), QByteArray("quarvo2 set camera camera c02 0x0901 1"));
        QVERIFY2(clock.elapsed() < 500, qPrintable(QStringLiteral("the others waited %1 ms").arg(clock.elapsed())));
        QCOMPARE(readLine(&slow), QByteArray("quarvo2 set camera version c01 1.0.0"));
        QVERIFY2(clock.elapsed() >= 599, qPrintable(QStringLiteral("latency and delay add up: %1 ms").arg(clock.elapsed())));
        QCOMPARE(readLine(&slow), QByteArray("quarvo2 set camera flash_intensity c01 20"));
    }

    // What "printf ... | nc -N" does: every request at once, then the end of its sending
    // side. The first answer is late, so the end of the stream must wait for it; the last
    // line has no line end, so the end of the stream ends it.
    void halfClosingClientGetsEveryReply()
    {
        SimProcess sim;
        QVERIFY(sim.startScenario("{ \"cameras\": [ { \"serial\": \"1\" }, { \"serial\": \"2\" } ], \"faults\": [ { \"match\":"
                                  " \"quarvo2 get camera camera c01\", \"action\": \"late\", \"delay_ms\": 50, \"times\": 1 } ] }"));
        QByteArray sent;
        QByteArray expected;
        for (char camera = '1'; expected.size() < 400000; camera = camera == '1' ? '2' : '1') {
            sent += QByteArray("quarvo2 get camera camera c0") + camera + "\r\n";
            expected += QByteArray("quarvo2 set camera camera c0") + camera + " 0x0901 " + camera + '\n';
        }
        sent.chop(2);
        QTcpSocket client;
        QVERIFY(connectTo(&client, sim.port()));
        client.write(sent);
        while (client.bytesToWrite() > 0)
            QVERIFY(client.waitForBytesWritten(5000));
        QCOMPARE(::shutdown(int(client.socketDescriptor()), SHUT_WR), 0);
        QByteArray received;
        while (client.state() == QAbstractSocket::ConnectedState && client.waitForReadyRead(10000))
            received += client.readAll();
        QCOMPARE(received + client.readAll(), expected);
    }

    // A client that sends its requests and reads none of the replies: 6000 replies of 4000
    // bytes, then 300 refused lines of 64 KB. The server stops
    // reading it once its untaken replies pass a megabyte, serves the others meanwhile, and
    // gives it every reply in order once it reads. Its peak memory stays within a line of
    // input, a megabyte of replies, the command log's window and the allocator's slack.
    void serverMemoryStaysBounded()
    {
        SimProcess sim;
        // AddressSanitizer's quarantine of freed memory would be counted as the server's.
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        const QString asan = environment.value(QStringLiteral("ASAN_OPTIONS"));
        environment.insert(QStringLiteral("ASAN_OPTIONS"), (asan.isEmpty() ? "" : asan + ':') + "quarantine_size_mb=0");
        sim.process().setProcessEnvironment(environment);
        QVERIFY2(sim.start({"--log-window", "300"}, 0, "{ \"faults\": [ { \"match\": \"quarvo2 get camera version c01\","
                                                       " \"action\": \"reply\", \"text\": \"x\", \"repeat\": 4000 } ] }"),
                 qPrintable(sim.firstLine()));
        const qint64 baseKiB = memoryKiB(sim, "VmRSS");
        const QByteArray longLine = "quarvo2 get " + QByteArray(64000, 'x') + '\n';
        const QByteArray refused = "quarvo2 err 1 \"unknown command\"\n";
        QTcpSocket greedy;
        QVERIFY(connectTo(&greedy, sim.port()));
        greedy.setReadBufferSize(1); // taking nothing, the socket leaves the replies to TCP
        greedy.write(QByteArray("quarvo2 get camera version c01\n").repeated(6000) + longLine.repeated(300)
                     + "quarvo2 get system model\n");
        while (greedy.bytesToWrite() > 0 && greedy.waitForBytesWritten(100)) {
        }
        QVERIFY2(greedy.bytesToWrite() > 0, "the server took every request of a client that reads no reply");
        QTcpSocket other;
        QVERIFY(connectTo(&other, sim.port()));
        other.write("quarvo2 get system model\n");
        QCOMPARE(readLine(&other), kModelReply);

        greedy.setReadBufferSize(0);
        const QByteArray expected = (QByteArray(4000, 'x') + '\n').repeated(6000) + refused.repeated(300) + kModelReply + '\n';
        QByteArray received;
        while (received.size() < expected.size() && (greedy.bytesAvailable() > 0 || greedy.waitForReadyRead(5000)))
            received += greedy.readAll();
        QVERIFY2(received == expected, qPrintable(QStringLiteral("%1 of %2 bytes").arg(received.size()).arg(expected.size())));
        const qint64 peakKiB = memoryKiB(sim, "VmHWM");
        QVERIFY2(baseKiB > 0 && peakKiB - baseKiB < 16 * 1024,
                 qPrintable(QStringLiteral("the server grew from %1 to %2 KiB").arg(baseKiB).arg(peakKiB)));
    }

    void linkFailuresEndCleanly_data()
    {
        QTest::addColumn<QByteArray>("fault");
        QTest::addColumn<QString>("error");
        QTest::newRow("dropped") << QByteArray("\"action\": \"drop\"") << "the controller closed the connection";
        QTest::newRow("control characters") << QByteArray("\"action\": \"reply\", \"text\": \"quarvo2 set \\u0000\\u0007\"")
                                            << "the reply holds control characters";
        QTest::newRow("1 MiB line") << QByteArray("\"action\": \"reply\", \"text\": \"x\", \"repeat\": 1048576")
                                    << "the reply is longer than 65536 bytes";
    }

    // A refusal is an answer, not a transport failure; a failure says why, leaves the
    // caller's buffer alone, and the next request gets its own answer, never what was left
    // of the failed one.
    void linkFailuresEndCleanly()
    {
        QFETCH(QByteArray, fault);
        QFETCH(QString, error);
        SimProcess sim;
        QVERIFY(sim.startScenario("{ \"cameras\": [ {} ], \"faults\": [ { \"match\": \"quarvo2 get camera version c01\", "
                                  + fault + ", \"times\": 1 } ] }"));
        TcpControllerLink link(QStringLiteral("127.0.0.1"), sim.port());
        IOManager channel(&link);
        QCOMPARE(channel.setParameter("camera flash_intensity c%02d %d", 1, 999), 1);
        QVERIFY(link.isConnected() && link.lastError().isEmpty());
        QByteArray reply;
        QVERIFY(!link.transact("quarvo2 get system model\nquarvo2 get system model", &reply));
        QCOMPARE(link.lastError(), QStringLiteral("the request holds a line break"));
        char value[IOManager::ValueBufferSize] = "#";
        QCOMPARE(channel.getString(value, "camera version c%02d", 1), 1);
        QCOMPARE(link.lastError(), error);
        QVERIFY(value[0] == '#' && !link.isSilent());
        char line[IOManager::LineBufferSize];
        QCOMPARE(channel.sendCommand(line, "quarvo2 get camera camera c%02d", 1), 0);
        QCOMPARE(line, "quarvo2 set camera camera c01 0x0901 1");
    }

    // A reply that comes in pieces is one reply; bytes after a reply that nobody asked for
    // put the connection out of step, so it goes, and the next call gets its own answer on
    // a new one.
    void linkReadsWholeLinesInStep()
    {
        const QByteArray version = "quarvo2 set camera version c01 " + QByteArray(5000, '1'); // more than one read
        FakeController fake({{kModelReply + "\nquarvo2 set camera version c01 stray\n"}, {version, "\n"},
                             {"quarvo2 set camera flash_intensity c01 7\n"}});
        TcpControllerLink link(QStringLiteral("127.0.0.1"), fake.port());
        QByteArray reply;
        QVERIFY(link.transact("quarvo2 get system model", &reply) && reply == kModelReply);
        QVERIFY(link.transact("quarvo2 get camera version c01", &reply));
        QCOMPARE(reply, version);
        QVERIFY(link.transact("quarvo2 get camera flash_intensity c01", &reply));
        QCOMPARE(reply, QByteArray("quarvo2 set camera flash_intensity c01 7"));
        QCOMPARE(fake.connections(), 2);
    }

    // A controller that stops answering (its answer to the camera count comes 100 s late),
    // then answers again, then goes away and comes back on the same port. Silent, the
    // opening costs one time-out; then calls fail at once, without a new connection, until
    // one tries again a second after the time-out, on a new connection, where the answer
    // still held back on the old one cannot hold it up. Gone, every call fails at once. The host
    // says why while the dialog is open. Back, it is sent what the controller in the process
    // is sent, and the log panel shows its traffic.
    void controllerThatStopsOrGoesAway()
    {
        QList<QByteArray> inProcess;
        {
            // The plug-in is one instance per process: this host is gone before the other loads it.
            ControllerSession local;
            HostWindow localWindow(&local, kPluginDir);
            QCOMPARE(localWindow.loadModules(), 1);
            local.controller()->clearLog();
            openAndCloseCameras(&localWindow);
            inProcess = local.controller()->requests();
        }
        SimProcess sim;
        QVERIFY(sim.startScenario(R"({ "faults": [ { "match": "quarvo2 get camera number_of_cameras", "action": "late",
                                       "delay_ms": 100000 } ] })"));
        const int timeoutMs = 250;
        ControllerSession session;
        QString error;
        QVERIFY2(session.connectToController(QStringLiteral("127.0.0.1"), sim.port(), timeoutMs, &error), qPrintable(error));
        HostWindow window(&session, kPluginDir);
        QCOMPARE(window.loadModules(), 1);
        auto* state = window.findChild<QLabel*>(QStringLiteral("connectionState"));
        QCOMPARE(state->text(), QStringLiteral("Controller: connected to ") + sim.address());
        QVERIFY2(!window.findMenu(QStringLiteral("&Host"))->actions().first()->isEnabled(),
                 "a controller on the network serves its own scenario");
        const QString dialogNote = QStringLiteral("; the dialog shows no settings read from the controller.");

        const int before = session.traffic().size();
        QElapsedTimer clock;
        clock.start();
        QString status = openAndCloseCameras(&window);
        QVERIFY2(clock.elapsed() >= timeoutMs && clock.elapsed() < 2 * timeoutMs,
                 qPrintable(QStringLiteral("the opening took %1 ms").arg(clock.elapsed())));
        QVERIFY2(session.traffic().size() - before > 1, "the dialog went on asking and was told at once");
        const QString silence = QStringLiteral("he controller at %1 does not answer: no reply within %2 ms; calls fail at once "
                                               "until it answers again").arg(sim.address()).arg(timeoutMs);
        QCOMPARE(session.tcpLink()->lastError(), 't' + silence);
        QCOMPARE(status, 'T' + silence + dialogNote);

        int failedAtOnce = 0;
        qint64 longestFailure = 0;
        char model[IOManager::ValueBufferSize];
        const auto answered = [&] {
            QElapsedTimer call;
            call.start();
            if (session.io()->getString(model, "system model") == 0)
                return true;
            ++failedAtOnce;
            longestFailure = qMax(longestFailure, call.elapsed());
            return false;
        };
        QTRY_VERIFY_WITH_TIMEOUT(answered(), 2000);
        QVERIFY2(clock.elapsed() >= timeoutMs + TcpControllerLink::RetryIntervalMs && failedAtOnce > 5 && longestFailure < 50,
                 qPrintable(QStringLiteral("tried again after %1 ms; %2 calls in between, the longest %3 ms")
                                .arg(clock.elapsed()).arg(failedAtOnce).arg(longestFailure)));
        QCOMPARE(model, "QUARVO");

        sim.kill();
        clock.restart();
        status = openAndCloseCameras(&window);
        QVERIFY2(clock.elapsed() < timeoutMs, "every call fails at once, none waits for the dead controller");
        const QString refused = QStringLiteral("annot connect to the controller at %1: Connection refused").arg(sim.address());
        QCOMPARE(state->text(), QStringLiteral("Controller: c") + refused);
        QCOMPARE(status, 'C' + refused + dialogNote);
        auto* messages = window.findChild<QListWidget*>(QStringLiteral("messageList"));
        QVERIFY2(messages->item(messages->count() - 1)->text().endsWith("host / Controller (1): C" + refused + dialogNote),
                 qPrintable(messages->item(messages->count() - 1)->text()));
        QCOMPARE(session.traffic().last().reply, "(no reply: c" + refused.toLatin1() + ')');
        SimProcess restarted;
        QVERIFY(restarted.start(QStringList(), sim.port()));
        QCOMPARE(session.io()->getString(model, "system model"), 0);
        QCOMPARE(state->text(), QStringLiteral("Controller: connected to ") + sim.address());
        const int opened = session.traffic().size();
        openAndCloseCameras(&window);
        QList<QByteArray> sent;
        for (int i = opened; i < session.traffic().size(); ++i)
            sent << session.traffic().at(i).request;
        QCOMPARE(sent, inProcess);
        QVERIFY(window.findChild<CommandLogPanel*>(QStringLiteral("commandLogPanel"))->text().contains(
            QStringLiteral("> quarvo2 get config is_changeable  < quarvo2 set config is_changeable yes")));
        QCOMPARE(window.windowTitle(), QStringLiteral("QUARVO stand-in host - controller ") + sim.address());
    }

    // The executable on a controller that is not there, and the host on a peer that answers
    // but is no controller, end the start with a message.
    void hostOnNoController()
    {
        QTcpServer gone; // a port where nothing listens
        QVERIFY(gone.listen(QHostAddress::LocalHost));
        const QString address = QStringLiteral("127.0.0.1:%1").arg(gone.serverPort());
        gone.close();
        QProcess host;
        host.start(QStringLiteral(QUARVO_BIN_DIR "/quarvo2-host"), {"--headless", "--controller", address});
        QVERIFY(host.waitForFinished(30000));
        QCOMPARE(host.exitCode(), 2);
        const QString error = QString::fromLocal8Bit(host.readAllStandardError());
        QVERIFY2(error.contains(QStringLiteral("Cannot reach the controller: cannot connect to the controller at %1: "
                                               "Connection refused\n").arg(address)), qPrintable(error));
        SimProcess peer;
        QVERIFY(peer.startScenario(R"({ "faults": [ { "match": "*", "action": "reply", "text": "HTTP/1.1 400 Bad Request" } ] })"));
        ControllerSession session;
        QString refusal;
        QVERIFY(!session.connectToController(QStringLiteral("127.0.0.1"), peer.port(), 3000, &refusal));
        QCOMPARE(refusal, QStringLiteral("the peer at %1 does not speak the controller's wire format: "
                                         "it answered \"HTTP/1.1 400 Bad Request\"").arg(peer.address()));
    }
};

QTEST_MAIN(tst_Network)
#include "tst_network.moc"
