// The host's network link as the frontend meets it: against quarvo2-sim running as a
// process of its own, and against a peer that sends a line without end. Every failure
// must end the call within the time-out, say why, and leave the next call a clean start.
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
    QTest::addColumn<QString>("error");
    QTest::newRow("late past the time-out") << QByteArray("\"action\": \"late\", \"delay_ms\": 700")
                                            << "no reply from the controller within 400 ms";
    QTest::newRow("dropped") << QByteArray("\"action\": \"drop\"") << "the controller closed the connection";
    QTest::newRow("control characters") << QByteArray("\"action\": \"reply\", \"text\": \"quarvo2 set \\u0000\\u0007\"")
                                        << "the reply holds control characters";
    QTest::newRow("1 MiB line") << QByteArray("\"action\": \"reply\", \"text\": \"x\", \"repeat\": 1048576")
                                << "the reply is longer than 65536 bytes";
}

void tst_TcpControllerLink::failuresEndCleanly()
{
    QFETCH(QByteArray, fault);
    QFETCH(QString, error);
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
    QCOMPARE(link.lastError(), error);
    QCOMPARE(value[0], '#');

    // The next request gets its own answer, never what was left of the failed one,
    // even when that came in meanwhile.
    QTest::qWait(500);
    char line[IOManager::LineBufferSize];
    QCOMPARE(channel.sendCommand(line, "quarvo2 get camera camera c%02d", 1), 0);
    QCOMPARE(line, "quarvo2 set camera camera c01 0x0901 1");
    QVERIFY(link.lastError().isEmpty());
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
