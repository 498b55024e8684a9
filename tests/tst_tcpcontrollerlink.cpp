// The host's network link as the frontend meets it: against quarvo2-sim running as a
// process of its own, against a peer that sends a line without end, and against one
// that never answers. Every failure must end the call within the time-out, say why, and
// leave the next call a clean start; a silent controller costs one time-out, not one
// per call.
#include "IOManager.h"
#include "TcpControllerLink.h"
#include "tst_tcpsimprocess.h"

#include <QElapsedTimer>
#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>
#include <QtTest>

#include <atomic>
#include <cstring>

class tst_TcpControllerLink : public QObject
{
    Q_OBJECT

private slots:
    void channelWorksOverTcp();
    void twoClientsSeeEachOthersValues();
    void failuresEndCleanly_data();
    void failuresEndCleanly();
    void endlessLineIsRefusedWithoutWaiting();
    void silentControllerCostsOneTimeOutASecond();
    void killedServerFailsAndRestartedOneServes();
    void parseAddress_data();
    void parseAddress();
};

void tst_TcpControllerLink::channelWorksOverTcp()
{
    SimProcess sim;
    QVERIFY2(sim.start(), qPrintable(sim.firstLine()));
    TcpControllerLink link(QStringLiteral("127.0.0.1"), sim.port());
    QVERIFY2(!link.isConnected(), "the link connects on its first call, not before");
    IOManager channel(&link);
    char line[IOManager::LineBufferSize];
    QCOMPARE(channel.sendCommand(line, "quarvo2 get camera flash_intensity c%02d", 1), 0);
    QCOMPARE(line, "quarvo2 set camera flash_intensity c01 60");
    QVERIFY(link.isConnected());
    QCOMPARE(channel.setParameter("camera flash_intensity c%02d %d", 1, 45), 0);
    int flash = 0;
    QCOMPARE(channel.getInt(&flash, "camera flash_intensity c%02d", 1), 0);
    QCOMPARE(flash, 45);
    QCOMPARE(channel.setParameter("camera flash_intensity c%02d %d", 1, 999), 1);
    QVERIFY2(link.lastError().isEmpty(), "a refusal is an answer, not a transport failure");

    QByteArray reply;
    QVERIFY(!link.transact("quarvo2 get system model\nquarvo2 get system model", &reply));
    QCOMPARE(link.lastError(), QStringLiteral("the request holds a line break"));
}

void tst_TcpControllerLink::twoClientsSeeEachOthersValues()
{
    SimProcess sim;
    QVERIFY(sim.start());
    TcpControllerLink first(QStringLiteral("127.0.0.1"), sim.port());
    TcpControllerLink second(QStringLiteral("127.0.0.1"), sim.port());
    IOManager a(&first), b(&second);
    char value[IOManager::ValueBufferSize];
    QCOMPARE(a.setParameter("camera sync_group c%02d d01 ch%02d", 2, 5), 0);
    QCOMPARE(b.getString(value, "camera sync_group c%02d", 2), 0);
    QCOMPARE(value, "d01 ch05");
    QCOMPARE(b.setParameter("camera sync_group c%02d none", 2), 0);
    QCOMPARE(a.getString(value, "camera sync_group c%02d", 2), 0);
    QCOMPARE(value, "none");
}

void tst_TcpControllerLink::failuresEndCleanly_data()
{
    QTest::addColumn<QByteArray>("fault");
    QTest::addColumn<QString>("error"); // %1: the server's port
    QTest::addColumn<bool>("silent");
    QTest::newRow("late past the time-out")
        << QByteArray("\"action\": \"late\", \"delay_ms\": 700")
        << "the controller at 127.0.0.1:%1 does not answer: no reply within 400 ms; calls fail at once until it answers again"
        << true;
    QTest::newRow("dropped") << QByteArray("\"action\": \"drop\"") << "the controller closed the connection" << false;
    QTest::newRow("control characters") << QByteArray("\"action\": \"reply\", \"text\": \"quarvo2 set \\u0000\\u0007\"")
                                        << "the reply holds control characters" << false;
    QTest::newRow("1 MiB line") << QByteArray("\"action\": \"reply\", \"text\": \"x\", \"repeat\": 1048576")
                                << "the reply is longer than 65536 bytes" << false;
}

void tst_TcpControllerLink::failuresEndCleanly()
{
    QFETCH(QByteArray, fault);
    QFETCH(QString, error);
    QFETCH(bool, silent);
    SimProcess sim;
    QVERIFY2(sim.startScenario("{ \"cameras\": [ {} ], \"faults\": [ { \"match\": \"quarvo2 get camera version c01\", "
                               + fault + ", \"times\": 1 } ] }"),
             qPrintable(sim.firstLine()));
    TcpControllerLink link(QStringLiteral("127.0.0.1"), sim.port());
    link.setReplyTimeoutMs(400);
    IOManager channel(&link);
    char value[IOManager::ValueBufferSize];
    memset(value, '#', sizeof value);
    QElapsedTimer clock;
    clock.start();
    QCOMPARE(channel.getString(value, "camera version c%02d", 1), 1);
    QVERIFY2(clock.elapsed() < 1000, "the call ends with the time-out at the latest");
    error = error.arg(sim.port());
    QCOMPARE(link.lastError(), error);
    QCOMPARE(value[0], '#');
    QCOMPARE(link.isSilent(), silent);

    char line[IOManager::LineBufferSize];
    if (silent) {
        clock.restart();
        QCOMPARE(channel.sendCommand(line, "quarvo2 get camera camera c%02d", 1), 1);
        QVERIFY2(clock.elapsed() < 100, "after a time-out the next call fails at once");
        QCOMPARE(link.lastError(), error);
    }
    // The next request that is sent gets its own answer, never what was left of the
    // failed one, even when that came in meanwhile (the late one has, by the time a
    // silent controller is tried again).
    QTRY_COMPARE_WITH_TIMEOUT(channel.sendCommand(line, "quarvo2 get camera camera c%02d", 1), 0, 5000);
    QCOMPARE(line, "quarvo2 set camera camera c01 0x0901 1");
    QVERIFY(link.lastError().isEmpty());
    QVERIFY(!link.isSilent());
}

void tst_TcpControllerLink::endlessLineIsRefusedWithoutWaiting()
{
    // A peer that answers every connection with 1 MiB and no line end, then waits.
    std::atomic<int> port(0);
    QScopedPointer<QThread> peer(QThread::create([&port] {
        QTcpServer server;
        server.listen(QHostAddress::LocalHost);
        port = server.serverPort();
        if (!server.waitForNewConnection(10000))
            return;
        QTcpSocket* client = server.nextPendingConnection();
        client->write(QByteArray(1024 * 1024, 'x'));
        while (client->state() == QAbstractSocket::ConnectedState && client->bytesToWrite() > 0)
            client->waitForBytesWritten(10000);
        client->waitForDisconnected(10000);
    }));
    peer->start();
    QTRY_VERIFY(port != 0);
    TcpControllerLink link(QStringLiteral("127.0.0.1"), quint16(int(port)));
    link.setReplyTimeoutMs(5000);
    QElapsedTimer clock;
    clock.start();
    QByteArray reply("untouched");
    QVERIFY(!link.transact("quarvo2 get system model", &reply));
    QVERIFY2(clock.elapsed() < 4000, "the cap ends the call, not the time-out");
    QCOMPARE(link.lastError(), QStringLiteral("the reply is longer than 65536 bytes"));
    QCOMPARE(reply, QByteArray("untouched"));
    QVERIFY2(!link.isConnected(), "the rest of the line is not waited for");
    QVERIFY(peer->wait(10000));
}

void tst_TcpControllerLink::silentControllerCostsOneTimeOutASecond()
{
    // A port that nobody serves: the system takes the connections, nothing answers.
    QTcpServer silent;
    QVERIFY(silent.listen(QHostAddress::LocalHost));
    const quint16 port = silent.serverPort();
    int connections = 0;
    const auto connectionsMade = [&silent, &connections] {
        while (silent.hasPendingConnections() || silent.waitForNewConnection(0)) {
            silent.nextPendingConnection(); // kept open (a child of the server), so the link only sees silence
            ++connections;
        }
        return connections;
    };
    TcpControllerLink link(QStringLiteral("127.0.0.1"), port);
    link.setReplyTimeoutMs(200);
    const QString silence = QStringLiteral("the controller at 127.0.0.1:%1 does not answer: no reply within 200 ms; "
                                           "calls fail at once until it answers again").arg(port);
    QByteArray reply;
    QElapsedTimer clock;
    clock.start();
    QVERIFY(!link.transact("quarvo2 get system model", &reply));
    QVERIFY2(clock.elapsed() >= 200, "the first call waits out the time-out");
    QCOMPARE(link.lastError(), silence);
    QVERIFY(link.isSilent());
    QCOMPARE(connectionsMade(), 1);

    // Calls fail at once, without a new connection, until one tries again a second later.
    clock.restart();
    int callsInBetween = 0;
    qint64 longestInBetween = 0;
    const auto callUntilRetried = [&] {
        QElapsedTimer call;
        call.start();
        const bool answered = link.transact("quarvo2 get system model", &reply);
        if (answered || connectionsMade() > 1)
            return true;
        ++callsInBetween;
        longestInBetween = qMax(longestInBetween, call.elapsed());
        return false;
    };
    QTRY_VERIFY_WITH_TIMEOUT(callUntilRetried(), 5000);
    QVERIFY2(clock.elapsed() >= TcpControllerLink::RetryIntervalMs + 200,
             qPrintable(QStringLiteral("tried again after %1 ms").arg(clock.elapsed())));
    QVERIFY2(callsInBetween > 5 && longestInBetween < 50,
             qPrintable(QStringLiteral("%1 calls in between, the longest %2 ms").arg(callsInBetween).arg(longestInBetween)));
    QCOMPARE(link.lastError(), silence);

    // A real controller on the same port: the next attempt answers, and all is as before.
    silent.close();
    qDeleteAll(silent.findChildren<QTcpSocket*>());
    SimProcess sim;
    QVERIFY2(sim.start(QStringList(), port), qPrintable(sim.firstLine()));
    QTRY_VERIFY_WITH_TIMEOUT(link.transact("quarvo2 get system model", &reply), 5000);
    QCOMPARE(reply, QByteArray("quarvo2 set system model QUARVO"));
    QVERIFY(!link.isSilent());
    QVERIFY(link.lastError().isEmpty());
    clock.restart();
    QVERIFY(link.transact("quarvo2 get system model", &reply));
    QVERIFY(clock.elapsed() < 1000);
}

void tst_TcpControllerLink::killedServerFailsAndRestartedOneServes()
{
    SimProcess sim;
    QVERIFY(sim.start());
    const quint16 port = sim.port();
    TcpControllerLink link(QStringLiteral("127.0.0.1"), port);
    link.setReplyTimeoutMs(500);
    IOManager channel(&link);
    int flash = 0;
    QCOMPARE(channel.getInt(&flash, "camera flash_intensity c%02d", 2), 0);

    sim.kill();
    QElapsedTimer clock;
    clock.start();
    for (int call = 0; call < 3; ++call)
        QCOMPARE(channel.getInt(&flash, "camera flash_intensity c%02d", 2), 1);
    QVERIFY2(clock.elapsed() < 3 * 500 + 500, "no call waits longer than the time-out");
    QCOMPARE(link.lastError(),
             QStringLiteral("cannot connect to the controller at 127.0.0.1:%1: Connection refused").arg(port));

    SimProcess restarted;
    QVERIFY2(restarted.start(QStringList(), port), qPrintable(restarted.firstLine()));
    QCOMPARE(channel.getInt(&flash, "camera flash_intensity c%02d", 2), 0);
    QVERIFY(link.lastError().isEmpty());
}

void tst_TcpControllerLink::parseAddress_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("host");
    QTest::addColumn<int>("port");
    QTest::newRow("IPv4") << "127.0.0.1:4711" << "127.0.0.1" << 4711;
    QTest::newRow("name") << "tracker:80" << "tracker" << 80;
    QTest::newRow("IPv6 in brackets") << "[::1]:4711" << "::1" << 4711;
    QTest::newRow("any port") << "localhost:0" << "localhost" << 0;
    QTest::newRow("IPv6 without brackets") << "::1:4711" << QString() << -1;
    QTest::newRow("no port") << "tracker" << QString() << -1;
    QTest::newRow("empty port") << "tracker:" << QString() << -1;
    QTest::newRow("no host") << ":4711" << QString() << -1;
    QTest::newRow("port too big") << "tracker:65536" << QString() << -1;
    QTest::newRow("port not a number") << "tracker:47a" << QString() << -1;
}

void tst_TcpControllerLink::parseAddress()
{
    QFETCH(QString, text);
    QFETCH(QString, host);
    QFETCH(int, port);
    QString parsedHost, error;
    quint16 parsedPort = 1;
    QCOMPARE(TcpControllerLink::parseAddress(text, &parsedHost, &parsedPort, &error), port >= 0);
    if (port >= 0) {
        QCOMPARE(parsedHost, host);
        QCOMPARE(int(parsedPort), port);
    } else {
        QCOMPARE(error, QStringLiteral("\"%1\" is no address: write HOST:PORT, such as 127.0.0.1:4711").arg(text));
    }
}

QTEST_GUILESS_MAIN(tst_TcpControllerLink)
#include "tst_tcpcontrollerlink.moc"
