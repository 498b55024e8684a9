// quarvo2-sim as a frontend (or a tester with a terminal) meets it: started, stopped,
// refusing to start with a reason, and serving several clients at once, where one
// client's late answer, drop or over-long line touches no other client.
#include "tst_tcpsimprocess.h"

#include <QElapsedTimer>
#include <QTcpSocket>
#include <QtTest>

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

QTEST_GUILESS_MAIN(tst_TcpServer)
#include "tst_tcpserver.moc"
