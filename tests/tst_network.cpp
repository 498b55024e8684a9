// The controller across the network, quarvo2-sim always a process of its own on a
// loopback port: the server and its clients, the host's link and the stand-in host on it,
// and the three tools' executables as users start them.
#include "simprocess.h"

#include <IOManager.h>
#include <TcpControllerLink.h>
#include <controllersession.h>
#include <hostwindow.h>
#include <modaldriver.h>

#include <QTcpServer>
#include <QTcpSocket>
#include <QtTest>
#include <QtWidgets>

#include <sys/socket.h>

namespace {

const QString kPluginDir = QStringLiteral(QUARVO_PLUGIN_DIR);
const QByteArray kModelReply = "quarvo2 set system model QUARVO";

bool connectTo(QTcpSocket* socket, quint16 port)
{
    socket->connectToHost(QStringLiteral("127.0.0.1"), port);
    return socket->waitForConnected(5000);
}

// A figure of the server's /proc/<pid>/status in KiB ("VmRSS", "VmHWM"), 0 when unreadable.
qint64 memoryKiB(SimProcess& sim, const char* field)
{
    QFile status(QStringLiteral("/proc/%1/status").arg(sim.process().processId()));
    const QRegularExpression figure(QStringLiteral("^%1:\\s+(\\d+) kB$").arg(QLatin1String(field)), QRegularExpression::MultilineOption);
    return status.open(QIODevice::ReadOnly) ? figure.match(QString::fromLatin1(status.readAll())).captured(1).toLongLong() : 0;
}

QByteArray readLine(QTcpSocket* socket)
{
    while (!socket->canReadLine() && socket->waitForReadyRead(5000)) {
    }
    return socket->readLine().trimmed();
}

// Sends one request line and reads the reply line.
QByteArray exchange(QTcpSocket* socket, const QByteArray& request)
{
    socket->write(request + '\n');
    return readLine(socket);
}

// One of the tools run as a user on a machine without a display runs it: its exit code,
// what it wrote to stdout and to stderr.
QStringList runTool(const QString& tool, const QStringList& arguments)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        environment.remove(QLatin1String(name));
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(QUARVO_BIN_DIR "/") + tool, arguments);
    if (!process.waitForFinished(60000) || process.exitStatus() != QProcess::NormalExit)
        return {QStringLiteral("crashed or hung")};
    return {QString::number(process.exitCode()), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromLocal8Bit(process.readAllStandardError())};
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

} // namespace

class tst_Network : public QObject
{
    Q_OBJECT

private slots:
    // Each tool's start as a user on a machine without a display makes it: the exit code,
    // pieces of what stdout holds (separated by '|') and of what stderr holds; a row per
    // exit code of each tool and per message naming what the user gave. %1 is a scratch
    // folder with a scenario file broken on line 3, %2 a port in use, %3 a port where
    // nothing listens.
    void toolsOnTheCommandLine_data()
    {
        QTest::addColumn<QString>("tool");
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("out");
        QTest::addColumn<QString>("err");
        const auto row = [](const char* name, const char* tool, const QStringList& arguments, int exitCode, const QString& out,
                            const QString& err) {
            QTest::newRow(name) << QString::fromLatin1(tool) << arguments << exitCode << out << err;
        };
        const char* sim = "quarvo2-sim";
        const char* host = "quarvo2-host";
        const char* snapshot = "quarvo2-snapshot";
        row("sim: bad scenario file", sim, {"--scenario", "%1/broken.json"}, 3, "",
            "quarvo2-sim: cannot load scenario %1/broken.json: %1/broken.json:3: ");
        row("sim: port in use", sim, {"--listen", "127.0.0.1:%2"}, 4, "",
            "quarvo2-sim: cannot listen on 127.0.0.1:%2: The bound address is already in use\n");
        row("sim: latency", sim, {"--latency", "10000001"}, 2, "", "quarvo2-sim: --latency needs microseconds, 0 to 10000000\n");
        row("host: help", host, {"-h"}, 0, "--controller <host:port>", "");
        row("host: version", host, {"--version"}, 0, "quarvo2-host " QUARVO_VERSION "\n", "");
        // No display: the pictures, and the log of the controller in use.
        row("host: headless", host, {"--output", "%1/pictures", "--details"}, 0,
            "No display found: running headless, pictures go to %1/pictures\n|saved 10 picture(s) with and without details, "
            "closed with Cancel\n\nPictures:\n  %1/pictures/host.png\n|\nCommand log (simulated, scenario \"default\"):\n", "");
        // A file where the output folder should be: no picture can be written.
        row("host: unwritable pictures", host, {"--headless", "--output", "%1/broken.json/pictures"}, 1,
            "opened \"Hardware\" > \"Cameras\": saved 0 picture(s)", "Could not write %1/broken.json/pictures/host.png\n");
        row("host: bad scenario file", host, {"--headless", "--scenario", "%1/broken.json"}, 2, "",
            "Cannot load scenario %1/broken.json: %1/broken.json:3: ");
        row("host: nobody there", host, {"--headless", "--controller", "127.0.0.1:%3"}, 2, "",
            "Cannot reach the controller: cannot connect to the controller at 127.0.0.1:%3: Connection refused\n");
        row("snapshot: usage", snapshot, {"restore"}, 2, "", "quarvo2-snapshot: bad use of \"restore\"; see --help\n");
        row("snapshot: nobody there", snapshot, {"save", "--controller", "127.0.0.1:%3"}, 3, "",
            "quarvo2-snapshot: cannot read the controller: cannot read the system model: connection lost: quarvo2 get system "
            "model: cannot connect to the controller at 127.0.0.1:%3: Connection refused\n");
    }

    void toolsOnTheCommandLine()
    {
        QFETCH(QString, tool);
        QFETCH(QStringList, arguments);
        QFETCH(int, exitCode);
        QFETCH(QString, out);
        QFETCH(QString, err);
        QTemporaryDir dir;
        QTcpServer inUse;
        QTcpServer gone;
        QVERIFY(inUse.listen(QHostAddress::LocalHost) && gone.listen(QHostAddress::LocalHost));
        QVERIFY(!scratchFile(dir, QStringLiteral("broken.json"), "{\n  \"name\": \"broken\",\n  \"cameras\": [ oops ]\n}\n").isEmpty());
        const QStringList values{dir.path(), QString::number(inUse.serverPort()), QString::number(gone.serverPort())};
        gone.close();
        for (int i = 0; i < values.size(); ++i) {
            const QString placeholder = '%' + QString::number(i + 1);
            arguments.replaceInStrings(placeholder, values.at(i));
            out.replace(placeholder, values.at(i));
            err.replace(placeholder, values.at(i));
        }
        const QStringList run = runTool(tool, arguments);
        QCOMPARE(run.value(0), QString::number(exitCode));
        for (const QString& piece : out.split('|'))
            QVERIFY2(run.value(1).contains(piece), qPrintable(run.value(1)));
        QVERIFY2(run.value(2).contains(err), qPrintable(run.value(2)));
    }

    // A peer whose first answer is no controller's is refused. A refusal is an answer; a
    // failure says why, leaves the caller's buffer alone, and the next call gets its own
    // answer on a new connection, never the rest of the failed one nor stray bytes after a
    // reply. quarvo2-snapshot restores over such a link.
    void linkStaysInStepThroughEveryFailure()
    {
        SimProcess sim;
        QVERIFY(sim.start(QStringList(), 0, R"({ "cameras": [ { "serial": "11" }, { "serial": "12" }, { "serial": "13" }, { "serial": "14" } ], "faults": [
            { "match": "*", "action": "reply", "text": "HTTP/1.1 400 Bad Request", "times": 1 },
            { "match": "quarvo2 get camera version c01", "action": "drop", "times": 1 },
            { "match": "quarvo2 get camera version c02", "action": "reply", "text": "quarvo2 set \u0000\u0007", "times": 1 },
            { "match": "quarvo2 get camera version c03", "action": "reply", "text": "x", "repeat": 65537, "times": 1 },
            { "match": "quarvo2 get camera version c04", "action": "reply", "text": "x", "repeat": 65536, "times": 1 },
            { "match": "quarvo2 get camera camera c04", "action": "reply", "text": "quarvo2 set camera camera c04 x\nstray", "times": 1 } ] })"));
        {
            ControllerSession session;
            QString refusal;
            QVERIFY(!session.connectToController(QStringLiteral("127.0.0.1"), sim.port(), 3000, &refusal));
            QCOMPARE(refusal, QStringLiteral("the peer at %1 does not speak the controller's wire format: "
                                             "it answered \"HTTP/1.1 400 Bad Request\"").arg(sim.address()));
        }
        TcpControllerLink link(QStringLiteral("127.0.0.1"), sim.port());
        IOManager channel(&link);
        QByteArray reply;
        QCOMPARE(channel.setParameter("camera flash_intensity c%02d %d", 1, 999), 1);
        QVERIFY(link.isConnected() && link.lastError().isEmpty());
        QVERIFY(!link.transact("quarvo2 get system model\nquarvo2 get system model", &reply));
        QCOMPARE(link.lastError(), QStringLiteral("the request holds a line break"));
        const QStringList errors{"the controller closed the connection", "the reply holds control characters",
                                 "the reply is longer than 65536 bytes"};
        for (int camera = 1; camera <= errors.size(); ++camera) {
            char value[IOManager::ValueBufferSize] = "#";
            QCOMPARE(channel.getString(value, "camera version c%02d", camera), 1);
            QCOMPARE(link.lastError(), errors.at(camera - 1));
            QVERIFY(value[0] == '#' && !link.isSilent());
            char line[IOManager::LineBufferSize];
            QCOMPARE(channel.sendCommand(line, "quarvo2 get camera camera c%02d", camera), 0);
            QCOMPARE(line, "quarvo2 set camera camera c0" + QByteArray::number(camera) + " 0x0901 1" + QByteArray::number(camera));
        }
        QVERIFY(link.transact("quarvo2 get camera version c04", &reply));
        QCOMPARE(reply, QByteArray(65536, 'x'));
        QVERIFY(link.transact("quarvo2 get camera camera c04", &reply));
        QCOMPARE(reply, QByteArray("quarvo2 set camera camera c04 x"));
        // quarvo2-snapshot over TCP: a restore undoes a change made since the save.
        QTemporaryDir dir;
        const QStringList controller{"--controller", sim.address()};
        QCOMPARE(runTool("quarvo2-snapshot", QStringList{"save", "-o", dir.filePath("s.json")} + controller).value(0), "0");
        QVERIFY(link.transact("quarvo2 set camera flash_intensity c02 10", &reply));
        QCOMPARE(reply, QByteArray("quarvo2 set camera flash_intensity c02 10"));
        QCOMPARE(runTool("quarvo2-snapshot", QStringList{"restore", dir.filePath("s.json")} + controller),
                 QStringList({"0", "c02 12 flash_intensity: 10 -> 50\nrestored 1 setting\n", ""}));
        sim.process().terminate();
        QVERIFY2(sim.process().waitForFinished(5000), "SIGTERM ends the server");
        QCOMPARE(sim.process().exitCode(), 0);
    }

    // On a server with latency, a late answer holds back its client by the latency and the
    // delay together, and its next request waits behind it; the others are answered
    // meanwhile (sharing one controller), an over-long line ends only its own client.
    // Margins of hundreds of milliseconds: a busy sanitizer build is slow.
    void clientsTouchNoOtherClient()
    {
        SimProcess sim;
        QVERIFY(sim.start({"--latency", "100000"}, 0, "{ \"cameras\": [ {}, {} ], \"faults\": ["
                          " { \"match\": \"quarvo2 get camera version c01\", \"action\": \"late\", \"delay_ms\": 500 } ] }"));
        QTcpSocket slow, overlong, other;
        for (QTcpSocket* client : {&slow, &overlong, &other})
            QVERIFY(connectTo(client, sim.port()));
        QElapsedTimer clock;
        clock.start();
        slow.write("quarvo2 get camera version c01\n");
        slow.flush(); // now, not when the test next waits on this socket
        QCOMPARE(exchange(&other, "quarvo2 set camera flash_intensity c01 20"), QByteArray("quarvo2 set camera flash_intensity c01 20"));
        QVERIFY2(clock.elapsed() >= 99, "every reply is held back by the latency");
        slow.write("quarvo2 get camera flash_intensity c01\n");
        slow.flush();
        QCOMPARE(exchange(&overlong, QByteArray(100 * 1024, 'x')), QByteArray("quarvo2 err 1 \"request line too long\""));
        QVERIFY2(overlong.state() == QAbstractSocket::UnconnectedState || overlong.waitForDisconnected(5000),
                 "the rest of the line is not taken as requests");
        QCOMPARE(exchange(&other, "quarvo2 get camera camera c02"), QByteArray("quarvo2 set camera camera c02 0x0901 1"));
        QVERIFY2(clock.elapsed() < 500, qPrintable(QStringLiteral("the others waited %1 ms").arg(clock.elapsed())));
        QCOMPARE(readLine(&slow), QByteArray("quarvo2 set camera version c01 1.0.0"));
        QVERIFY2(clock.elapsed() >= 599, qPrintable(QStringLiteral("latency and delay add up: %1 ms").arg(clock.elapsed())));
        QCOMPARE(readLine(&slow), QByteArray("quarvo2 set camera flash_intensity c01 20"));
    }

    // Two clients that make the server wait on them. One does what "printf ... | nc -N"
    // does: every request, the first answered late, then the end of its sending side, the
    // last line without a line end. The other sends 6000 requests for replies of 4000 bytes
    // and 300 refused lines of 64 KB and reads nothing: the server stops reading it past a
    // megabyte of untaken replies, serves others meanwhile, and gives it every reply in
    // order once it reads. The server's peak memory stays within a line of input, a
    // megabyte of replies, the command log's window and the allocator's slack.
    void clientsThatMakeTheServerWait()
    {
        SimProcess sim;
        // AddressSanitizer's quarantine of freed memory would be counted as the server's.
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        const QString asan = environment.value(QStringLiteral("ASAN_OPTIONS"));
        environment.insert(QStringLiteral("ASAN_OPTIONS"), (asan.isEmpty() ? "" : asan + ':') + "quarantine_size_mb=0");
        sim.process().setProcessEnvironment(environment);
        QVERIFY(sim.start({"--log-window", "300"}, 0, R"({ "cameras": [ { "serial": "1" }, { "serial": "2" } ], "faults": [
            { "match": "quarvo2 get camera camera c01", "action": "late", "delay_ms": 50, "times": 1 },
            { "match": "quarvo2 get camera version c01", "action": "reply", "text": "x", "repeat": 4000 } ] })"));
        const qint64 baseKiB = memoryKiB(sim, "VmRSS");
        QTcpSocket halfClosing, greedy, other;
        for (QTcpSocket* client : {&halfClosing, &greedy, &other})
            QVERIFY(connectTo(client, sim.port()));
        QByteArray sent;
        QByteArray expected;
        for (char camera = '1'; expected.size() < 400000; camera = camera == '1' ? '2' : '1') {
            sent += QByteArray("quarvo2 get camera camera c0") + camera + "\r\n";
            expected += QByteArray("quarvo2 set camera camera c0") + camera + " 0x0901 " + camera + '\n';
        }
        sent.chop(2);
        halfClosing.write(sent);
        while (halfClosing.bytesToWrite() > 0)
            QVERIFY(halfClosing.waitForBytesWritten(5000));
        QCOMPARE(::shutdown(int(halfClosing.socketDescriptor()), SHUT_WR), 0);
        QByteArray received;
        while (halfClosing.state() == QAbstractSocket::ConnectedState && halfClosing.waitForReadyRead(10000))
            received += halfClosing.readAll();
        QCOMPARE(received + halfClosing.readAll(), expected);

        greedy.setReadBufferSize(1); // taking nothing, the socket leaves the replies to TCP
        greedy.write(QByteArray("quarvo2 get camera version c01\n").repeated(6000)
                     + ("quarvo2 get " + QByteArray(64000, 'x') + '\n').repeated(300) + "quarvo2 get system model\n");
        while (greedy.bytesToWrite() > 0 && greedy.waitForBytesWritten(100)) {
        }
        QVERIFY2(greedy.bytesToWrite() > 0, "the server took every request of a client that reads no reply");
        QCOMPARE(exchange(&other, "quarvo2 get system model"), kModelReply);
        greedy.setReadBufferSize(0);
        expected = (QByteArray(4000, 'x') + '\n').repeated(6000) + QByteArray("quarvo2 err 1 \"unknown command\"\n").repeated(300)
                   + kModelReply + '\n';
        received.clear();
        while (received.size() < expected.size() && (greedy.bytesAvailable() > 0 || greedy.waitForReadyRead(5000)))
            received += greedy.readAll();
        QVERIFY2(received == expected, qPrintable(QStringLiteral("%1 of %2 bytes").arg(received.size()).arg(expected.size())));
        const qint64 peakKiB = memoryKiB(sim, "VmHWM");
        QVERIFY2(baseKiB > 0 && peakKiB - baseKiB < 16 * 1024,
                 qPrintable(QStringLiteral("the server grew from %1 to %2 KiB").arg(baseKiB).arg(peakKiB)));
    }

    // A controller that stops answering (its camera count comes 100 s late), answers again,
    // then goes away and comes back on the same port. Silent, the opening costs one
    // time-out; then calls fail at once until one tries again on a new connection a second
    // later. Gone, every call fails at once. The host says why while the dialog is open;
    // back, the dialog opens without a word of failure.
    void controllerThatStopsOrGoesAway()
    {
        SimProcess sim;
        QVERIFY(sim.start(QStringList(), 0, R"({ "faults": [ { "match": "quarvo2 get camera number_of_cameras", "action": "late",
                                       "delay_ms": 100000 } ] })"));
        const int timeoutMs = 250;
        ControllerSession session;
        QString error;
        QVERIFY2(session.connectToController(QStringLiteral("127.0.0.1"), sim.port(), timeoutMs, &error), qPrintable(error));
        HostWindow window(&session, kPluginDir);
        QCOMPARE(window.loadModules(), 1);
        auto* state = window.findChild<QLabel*>(QStringLiteral("connectionState"));
        QCOMPARE(state->text(), QStringLiteral("Controller: connected to ") + sim.address());
        const QString dialogNote = QStringLiteral("; the dialog shows no settings read from the controller.");

        QElapsedTimer clock;
        clock.start();
        QString status = openAndCloseCameras(&window);
        QVERIFY2(clock.elapsed() >= timeoutMs && clock.elapsed() < 2 * timeoutMs,
                 qPrintable(QStringLiteral("the opening took %1 ms").arg(clock.elapsed())));
        const QString silence = QStringLiteral("he controller at %1 does not answer: no reply within %2 ms; calls fail at once "
                                               "until it answers again").arg(sim.address()).arg(timeoutMs);
        QCOMPARE(session.tcpLink()->lastError(), 't' + silence);
        QCOMPARE(status, 'T' + silence + dialogNote);

        char model[IOManager::ValueBufferSize];
        QElapsedTimer call;
        call.start();
        QVERIFY2(session.io()->getString(model, "system model") != 0 && call.elapsed() < 50, "a call fails at once");
        QTRY_VERIFY_WITH_TIMEOUT(session.io()->getString(model, "system model") == 0, 2000);
        QVERIFY2(clock.elapsed() >= timeoutMs + TcpControllerLink::RetryIntervalMs,
                 qPrintable(QStringLiteral("tried again after %1 ms").arg(clock.elapsed())));
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
        const int shown = messages->count();
        openAndCloseCameras(&window);
        QCOMPARE(messages->count(), shown);
    }
};

QTEST_MAIN(tst_Network)
#include "tst_network.moc"
