// quarvo2-sim as a frontend (or a tester with a terminal) meets it: started, stopped,
// refusing to start with a reason, and serving several clients at once, where one
// client's late answer, drop or over-long line touches no other client; and as a sloppy
// or hostile client meets it: one that closes its sending side right after its
// requests, one that never reads its replies, one that sends a gigabyte of long lines.
// Through all of it the server's memory stays bounded.
#include "tst_tcpsimprocess.h"

#include <QElapsedTimer>
#include <QTcpSocket>
#include <QtTest>

#include <cstring>
#include <sys/socket.h>

namespace {

// A raw client: the server is checked on the wire, not through the host's link.
bool connectTo(QTcpSocket* socket, quint16 port)
{
    socket->connectToHost(QStringLiteral("127.0.0.1"), port);
    return socket->waitForConnected(5000);
}

QByteArray readLine(QTcpSocket* socket, int timeoutMs = 5000)
{
    QElapsedTimer clock;
    clock.start();
    while (!socket->canReadLine() && clock.elapsed() < timeoutMs && socket->waitForReadyRead(timeoutMs)) {
    }
    return socket->canReadLine() ? socket->readLine().trimmed() : QByteArray();
}

// Requests and replies of a whole exchange, for the clients that send many at once.
const QByteArray kModelRequest = "quarvo2 get system model\n";
const QByteArray kModelReply = "quarvo2 set system model QUARVO";

// What the server may grow by in resident memory, whatever one client does: the
// command log's window (20 MiB of text), a line of input and a megabyte of replies per
// client, and the allocator's slack.
const qint64 kMemoryGrowthBoundKiB = 48 * 1024;

// A figure of the server's /proc/<pid>/status in KiB ("VmRSS", "VmHWM"), -1 when unreadable.
qint64 memoryKiB(SimProcess& sim, const char* field)
{
    QFile status(QStringLiteral("/proc/%1/status").arg(sim.process().processId()));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    const QByteArray prefix = QByteArray(field) + ':';
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith(prefix))
            return line.mid(prefix.size()).trimmed().split(' ').first().toLongLong();
    }
    return -1;
}

// Under AddressSanitizer freed memory waits in a quarantine of 256 MiB before it is
// reused, which would be counted as the server's; a small one measures the server.
void startMeasured(SimProcess* sim, const QByteArray& scenario = QByteArray())
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    const QString asan = environment.value(QStringLiteral("ASAN_OPTIONS"));
    environment.insert(QStringLiteral("ASAN_OPTIONS"),
                       (asan.isEmpty() ? QString() : asan + QLatin1Char(':')) + QStringLiteral("quarantine_size_mb=4"));
    sim->process().setProcessEnvironment(environment);
    QVERIFY2(scenario.isEmpty() ? sim->start() : sim->startScenario(scenario), qPrintable(sim->firstLine()));
}

// Another client's round trip, to see that the server still serves the others.
void otherClientIsAnswered(quint16 port)
{
    QTcpSocket other;
    QVERIFY(connectTo(&other, port));
    QElapsedTimer clock;
    clock.start();
    other.write(kModelRequest);
    QCOMPARE(readLine(&other), kModelReply);
    QVERIFY2(clock.elapsed() < 1000, qPrintable(QStringLiteral("answered after %1 ms").arg(clock.elapsed())));
}

void checkMemoryGrowth(SimProcess& sim, qint64 baseKiB)
{
    const qint64 peakKiB = memoryKiB(sim, "VmHWM");
    qInfo("server memory: peak %lld KiB from %lld KiB", peakKiB, baseKiB);
    QVERIFY2(baseKiB > 0 && peakKiB - baseKiB < kMemoryGrowthBoundKiB,
             qPrintable(QStringLiteral("peak %1 KiB from %2 KiB").arg(peakKiB).arg(baseKiB)));
}

const QByteArray kLateScenario = "{ \"cameras\": [ {}, {} ], \"faults\": ["
                                 " { \"match\": \"quarvo2 get camera version c01\", \"action\": \"late\", \"delay_ms\": 800 },"
                                 " { \"match\": \"quarvo2 get camera version c02\", \"action\": \"drop\" } ] }";

} // namespace

class tst_TcpServer : public QObject
{
    Q_OBJECT

private slots:
    void tracesAndStopsCleanly();
    void refusesToStart_data();
    void refusesToStart();
    void lateAnswerHoldsOnlyItsClient();
    void dropAndOverlongLineEndOnlyThatClient();
    void halfClosingClientGetsEveryReply_data();
    void halfClosingClientGetsEveryReply();
    void untakenRepliesHoldOnlyTheirClient_data();
    void untakenRepliesHoldOnlyTheirClient();
    void longRequestsKeepMemoryBounded();
};

void tst_TcpServer::tracesAndStopsCleanly()
{
    SimProcess sim;
    QVERIFY2(sim.start(QStringList() << "--verbose"), qPrintable(sim.firstLine()));
    QVERIFY2(sim.firstLine().endsWith(QStringLiteral(", scenario \"default\", protocol 1.27.0")), qPrintable(sim.firstLine()));
    QTcpSocket client;
    QVERIFY(connectTo(&client, sim.port()));
    client.write("quarvo2 get system model\r\n");
    QCOMPARE(readLine(&client), QByteArray("quarvo2 set system model QUARVO"));

    sim.process().terminate();
    QVERIFY2(sim.process().waitForFinished(5000), "SIGTERM ends the server");
    QCOMPARE(sim.process().exitStatus(), QProcess::NormalExit);
    QCOMPARE(sim.process().exitCode(), 0);
    const QString trace = QString::fromLocal8Bit(sim.process().readAllStandardOutput());
    QVERIFY2(trace.contains(QStringLiteral("client 1 > quarvo2 get system model\n"
                                           "client 1 < quarvo2 set system model QUARVO\n")), qPrintable(trace));
    QVERIFY2(trace.endsWith(QStringLiteral("stopped\n")), qPrintable(trace));
}

void tst_TcpServer::refusesToStart_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("message"); // %1: the scenario file, %2: the port in use
    QTest::newRow("bad scenario file") << (QStringList() << "--scenario" << "%1") << 3
                                       << "quarvo2-sim: cannot load scenario %1: %1:3: ";
    QTest::newRow("port in use") << (QStringList() << "--listen" << "127.0.0.1:%2") << 4
                                 << "quarvo2-sim: cannot listen on 127.0.0.1:%2: The bound address is already in use\n";
    QTest::newRow("no IP address") << (QStringList() << "--listen" << "tracker:4711") << 2
                                   << "quarvo2-sim: \"tracker\" is no IP address (nor \"localhost\" or \"any\")\n";
    QTest::newRow("no port") << (QStringList() << "--listen" << "127.0.0.1") << 2
                             << "quarvo2-sim: \"127.0.0.1\" is no address: write HOST:PORT, such as 127.0.0.1:4711\n";
    QTest::newRow("no log window") << (QStringList() << "--log-window" << "0") << 2
                                   << "quarvo2-sim: --log-window needs a number of exchanges, 1 or more\n";
}

void tst_TcpServer::refusesToStart()
{
    QFETCH(QStringList, arguments);
    QFETCH(int, exitCode);
    QFETCH(QString, message);
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("broken.json"));
    QFile broken(file);
    QVERIFY(broken.open(QIODevice::WriteOnly));
    broken.write("{\n  \"name\": \"broken\",\n  \"cameras\": [ oops ]\n}\n");
    broken.close();
    SimProcess running;
    QVERIFY(running.start());
    const QString port = QString::number(running.port());
    arguments.replaceInStrings(QStringLiteral("%1"), file).replaceInStrings(QStringLiteral("%2"), port);

    QProcess sim;
    sim.start(SimProcess::binary(), arguments);
    QVERIFY(sim.waitForFinished(10000));
    QCOMPARE(sim.exitCode(), exitCode);
    const QString error = QString::fromLocal8Bit(sim.readAllStandardError());
    QVERIFY2(error.startsWith(message.replace(QStringLiteral("%1"), file).replace(QStringLiteral("%2"), port)),
             qPrintable(error));
}

void tst_TcpServer::lateAnswerHoldsOnlyItsClient()
{
    SimProcess sim;
    QVERIFY(sim.startScenario(kLateScenario));
    QTcpSocket slow, other;
    QVERIFY(connectTo(&slow, sim.port()) && connectTo(&other, sim.port()));
    QElapsedTimer clock;
    clock.start();
    // Two requests at once: the second waits for the late first, answers keep their order.
    slow.write("quarvo2 get camera version c01\nquarvo2 get camera camera c02\n");
    other.write("quarvo2 get camera camera c01\n");
    QCOMPARE(readLine(&other), QByteArray("quarvo2 set camera camera c01 0x0901 1"));
    QVERIFY2(clock.elapsed() < 600, "the other client is answered while the late answer is pending");
    QCOMPARE(readLine(&slow), QByteArray("quarvo2 set camera version c01 1.0.0"));
    QVERIFY2(clock.elapsed() >= 750, "the late answer comes after its delay");
    QCOMPARE(readLine(&slow), QByteArray("quarvo2 set camera camera c02 0x0901 1"));
}

void tst_TcpServer::dropAndOverlongLineEndOnlyThatClient()
{
    SimProcess sim;
    QVERIFY(sim.startScenario(kLateScenario));
    QTcpSocket dropped, overlong, other;
    QVERIFY(connectTo(&dropped, sim.port()) && connectTo(&overlong, sim.port()) && connectTo(&other, sim.port()));

    dropped.write("quarvo2 get camera version c02\n");
    QVERIFY2(dropped.waitForDisconnected(5000), "a drop fault closes the connection");
    QVERIFY(dropped.readAll().isEmpty());

    overlong.write(QByteArray(100 * 1024, 'x'));
    QCOMPARE(readLine(&overlong), QByteArray("quarvo2 err 1 \"request line too long\""));
    QVERIFY2(overlong.state() == QAbstractSocket::UnconnectedState || overlong.waitForDisconnected(5000),
             "the rest of the line is not taken as requests");

    other.write("quarvo2 get camera camera c02\n");
    QCOMPARE(readLine(&other), QByteArray("quarvo2 set camera camera c02 0x0901 1"));
}

void tst_TcpServer::halfClosingClientGetsEveryReply_data()
{
    QTest::addColumn<int>("requests");
    QTest::addColumn<bool>("lastLineEnded");
    QTest::newRow("1") << 1 << true;
    QTest::newRow("100") << 100 << true;
    QTest::newRow("10000") << 10000 << true;
    QTest::newRow("last line without its end") << 3 << false;
}

void tst_TcpServer::halfClosingClientGetsEveryReply()
{
    QFETCH(int, requests);
    QFETCH(bool, lastLineEnded);
    // The first request is answered late: the end of the stream must wait for it too.
    SimProcess sim;
    QVERIFY(sim.startScenario("{ \"cameras\": [ { \"serial\": \"1\" }, { \"serial\": \"2\" } ],"
                              " \"faults\": [ { \"match\": \"quarvo2 get camera camera c01\","
                              " \"action\": \"late\", \"delay_ms\": 200, \"times\": 1 } ] }"));
    QByteArray sent;
    QByteArray expected;
    for (int i = 0; i < requests; ++i) {
        const char camera = i % 2 ? '2' : '1';
        sent += QByteArray("quarvo2 get camera camera c0") + camera + '\n';
        expected += QByteArray("quarvo2 set camera camera c0") + camera + " 0x0901 " + camera + '\n';
    }
    if (!lastLineEnded)
        sent.chop(1);
    QTcpSocket client;
    QVERIFY(connectTo(&client, sim.port()));
    client.write(sent);
    while (client.bytesToWrite() > 0)
        QVERIFY(client.waitForBytesWritten(5000));
    // What "printf ... | nc -N" does once its input ends.
    QCOMPARE(::shutdown(int(client.socketDescriptor()), SHUT_WR), 0);
    QByteArray received;
    while (client.state() == QAbstractSocket::ConnectedState && client.waitForReadyRead(10000))
        received += client.readAll();
    received += client.readAll();
    QCOMPARE(received.count('\n'), requests);
    QCOMPARE(received, expected);
    QCOMPARE(client.state(), QAbstractSocket::UnconnectedState);
}

void tst_TcpServer::untakenRepliesHoldOnlyTheirClient_data()
{
    QTest::addColumn<QByteArray>("scenario");
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<int>("requests");
    QTest::newRow("600 replies of 1 MiB")
        << QByteArray("{ \"faults\": [ { \"match\": \"quarvo2 get camera version c01\", \"action\": \"reply\","
                      " \"text\": \"x\", \"repeat\": 1048576 } ] }")
        << QByteArray("quarvo2 get camera version c01\n") << QByteArray(1024 * 1024, 'x') << 600;
    QTest::newRow("a million ordinary replies") << QByteArray() << kModelRequest << kModelReply << 1000000;
}

void tst_TcpServer::untakenRepliesHoldOnlyTheirClient()
{
    QFETCH(QByteArray, scenario);
    QFETCH(QByteArray, request);
    QFETCH(QByteArray, reply);
    QFETCH(int, requests);
    SimProcess sim;
    startMeasured(&sim, scenario);
    const qint64 baseKiB = memoryKiB(sim, "VmRSS");

    // Every request is sent and none of the replies read, until the server stops reading.
    QTcpSocket greedy;
    QVERIFY(connectTo(&greedy, sim.port()));
    greedy.setReadBufferSize(1); // taking nothing, the socket leaves the replies to TCP
    greedy.write(request.repeated(requests));
    while (greedy.bytesToWrite() > 0 && greedy.waitForBytesWritten(500)) {
    }
    otherClientIsAnswered(sim.port());
    checkMemoryGrowth(sim, baseKiB);
    if (QTest::currentTestFailed())
        return;

    // Once the client reads, it gets every reply, in order: the stream is the reply line
    // over and over, compared as it comes.
    greedy.setReadBufferSize(0);
    const QByteArray line = reply + '\n';
    const qint64 expectedBytes = qint64(line.size()) * requests;
    qint64 receivedBytes = 0;
    QElapsedTimer clock;
    clock.start();
    while (receivedBytes < expectedBytes && clock.elapsed() < 60000
           && (greedy.bytesAvailable() > 0 || greedy.waitForReadyRead(5000))) {
        const QByteArray chunk = greedy.readAll();
        for (int at = 0; at < chunk.size();) {
            const int offset = int(receivedBytes % line.size());
            const int length = qMin(chunk.size() - at, line.size() - offset);
            QVERIFY2(memcmp(chunk.constData() + at, line.constData() + offset, size_t(length)) == 0,
                     qPrintable(QStringLiteral("reply %1 differs").arg(receivedBytes / line.size())));
            at += length;
            receivedBytes += length;
        }
    }
    const qint64 received = receivedBytes / line.size();
    QCOMPARE(receivedBytes, expectedBytes);
    QCOMPARE(received, qint64(requests));
    otherClientIsAnswered(sim.port());
    checkMemoryGrowth(sim, baseKiB);
}

void tst_TcpServer::longRequestsKeepMemoryBounded()
{
    SimProcess sim;
    startMeasured(&sim);
    const qint64 baseKiB = memoryKiB(sim, "VmRSS");
    const QByteArray request = "quarvo2 get " + QByteArray(65000 - 13, 'x') + '\n';
    const int requests = 16000;
    QTcpSocket client;
    QVERIFY(connectTo(&client, sim.port()));
    int answered = 0;
    const auto takeReplies = [&client, &answered] {
        while (client.canReadLine()) {
            QCOMPARE(client.readLine(), QByteArray("quarvo2 err 1 \"unknown command\"\n"));
            ++answered;
        }
    };
    for (int i = 0; i < requests; ++i) {
        client.write(request);
        // A few megabytes at a time: the test itself holds no gigabyte either.
        while (client.bytesToWrite() > 4 * 1024 * 1024)
            QVERIFY(client.waitForBytesWritten(5000));
        takeReplies();
        if (i == requests / 2)
            otherClientIsAnswered(sim.port());
    }
    QElapsedTimer clock;
    clock.start();
    while (answered < requests && clock.elapsed() < 30000 && client.waitForReadyRead(5000))
        takeReplies();
    QCOMPARE(answered, requests);
    checkMemoryGrowth(sim, baseKiB);
}

QTEST_GUILESS_MAIN(tst_TcpServer)
#include "tst_tcpserver.moc"
