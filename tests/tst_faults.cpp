// Fault rules as the frontend meets them: through the in-process link, and through
// the host's command channel on top of it, which must stay safe whatever comes back.
#include "IOManager.h"
#include "inprocesslink.h"
#include "simulatedcontroller.h"

#include <QElapsedTimer>
#include <QtTest>

#include <cstring>

namespace {

FaultRule rule(const QString& match, FaultRule::Action action, const QByteArray& text = QByteArray(),
               int delayMs = 0, int times = -1)
{
    FaultRule fault;
    fault.match = match;
    fault.action = action;
    fault.text = text;
    fault.delayMs = delayMs;
    fault.times = times;
    return fault;
}

} // namespace

class tst_Faults : public QObject
{
    Q_OBJECT

private:
    QScopedPointer<SimulatedController> m_controller;
    QScopedPointer<InProcessLink> m_link;
    QScopedPointer<IOManager> m_channel;

private slots:
    void init()
    {
        m_controller.reset(new SimulatedController);
        m_link.reset(new InProcessLink(m_controller.data()));
        m_channel.reset(new IOManager(m_link.data()));
    }

    void actionsThroughLink_data()
    {
        QTest::addColumn<int>("action");
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<int>("delayMs");
        QTest::addColumn<bool>("delivered");
        QTest::addColumn<QByteArray>("reply");
        QTest::addColumn<QString>("error");
        QTest::addColumn<int>("minMs");
        QTest::newRow("fail") << int(FaultRule::Fail) << QByteArray() << 0 << true
                              << QByteArray("quarvo2 err 7 \"controller failure\"") << QString() << 0;
        QTest::newRow("fail with text") << int(FaultRule::Fail) << QByteArray("camera c02 not responding") << 0 << true
                                        << QByteArray("quarvo2 err 7 \"camera c02 not responding\"") << QString() << 0;
        QTest::newRow("garbage") << int(FaultRule::Reply) << QByteArray("\x01\xff quarvo2 \"") << 0 << true
                                 << QByteArray("\x01\xff quarvo2 \"") << QString() << 0;
        QTest::newRow("late within time-out") << int(FaultRule::Late) << QByteArray() << 60 << true
                                              << QByteArray("quarvo2 set camera flash_intensity c02 40") << QString() << 60;
        QTest::newRow("late past time-out") << int(FaultRule::Late) << QByteArray() << 400 << false << QByteArray()
                                            << QStringLiteral("no reply within 150 ms") << 150;
        QTest::newRow("drop") << int(FaultRule::Drop) << QByteArray() << 0 << false << QByteArray()
                              << QStringLiteral("connection dropped by the controller") << 0;
    }

    void actionsThroughLink()
    {
        QFETCH(int, action);
        QFETCH(QByteArray, text);
        QFETCH(int, delayMs);
        QFETCH(bool, delivered);
        QFETCH(QByteArray, reply);
        QFETCH(QString, error);
        QFETCH(int, minMs);
        m_link->setReplyTimeoutMs(150);
        m_controller->addFault(rule(QStringLiteral("quarvo2 get camera flash_intensity c02"),
                                    FaultRule::Action(action), text, delayMs));
        QByteArray answer("untouched");
        QElapsedTimer clock;
        clock.start();
        QCOMPARE(m_link->transact("quarvo2 get camera flash_intensity c02", &answer), delivered);
        QVERIFY(clock.elapsed() >= minMs);
        // Waiting for a late answer never takes longer than the time-out.
        QVERIFY(clock.elapsed() < qMax(delayMs, 150) + 1000);
        QCOMPARE(answer, delivered ? reply : QByteArray("untouched"));
        QCOMPARE(m_link->lastError(), error);
        QCOMPARE(m_controller->log().size(), 1);
        QCOMPARE(m_controller->log().first().fault,
                 FaultRule::actionName(FaultRule::Action(action)) + QStringLiteral(" quarvo2 get camera flash_intensity c02"));
        // Requests the rule does not match are answered as usual.
        QVERIFY(m_link->transact("quarvo2 get camera flash_intensity c01", &answer));
        QCOMPARE(answer, QByteArray("quarvo2 set camera flash_intensity c01 60"));
        QVERIFY(m_link->lastError().isEmpty());
    }

    // A late answer still comes from a controller that did the work; a refused or
    // dropped request leaves the controller as it was.
    void whichFaultsChangeState_data()
    {
        QTest::addColumn<int>("action");
        QTest::addColumn<QByteArray>("flashAfter");
        QTest::newRow("fail") << int(FaultRule::Fail) << QByteArray("60");
        QTest::newRow("reply") << int(FaultRule::Reply) << QByteArray("60");
        QTest::newRow("drop") << int(FaultRule::Drop) << QByteArray("60");
        QTest::newRow("late") << int(FaultRule::Late) << QByteArray("20");
    }

    void whichFaultsChangeState()
    {
        QFETCH(int, action);
        QFETCH(QByteArray, flashAfter);
        m_link->setReplyTimeoutMs(10);
        m_controller->addFault(rule(QStringLiteral("*flash_intensity*"), FaultRule::Action(action), "ok", 50));
        QCOMPARE(m_channel->setParameter("camera flash_intensity c%02d %d", 1, 20), 1);
        QCOMPARE(m_controller->peek("camera flash_intensity c01"), flashAfter);
    }

    void timesAndGlob()
    {
        FaultRule twice = rule(QStringLiteral("quarvo2 get camera * c0[23]"), FaultRule::Fail, QByteArray(), 0, 2);
        twice.name = QStringLiteral("busy cameras");
        m_controller->addFault(twice);
        int value = -1;
        QCOMPARE(m_channel->getInt(&value, "camera flash_intensity c%02d", 1), 0);
        QCOMPARE(m_channel->getInt(&value, "camera flash_intensity c%02d", 2), 1);
        QCOMPARE(m_channel->getInt(&value, "camera marker_max_number c%02d", 3), 1);
        QCOMPARE(m_channel->getInt(&value, "camera flash_intensity c%02d", 2), 0);
        QCOMPARE(value, 40);
        QStringList faults;
        for (const CommandLogEntry& entry : m_controller->log())
            faults << entry.fault;
        QCOMPARE(faults, QStringList({QString(), QStringLiteral("busy cameras"), QStringLiteral("busy cameras"), QString()}));
        QCOMPARE(m_controller->faults().first().times, 0);
        m_controller->clearFaults();
        QVERIFY(m_controller->faults().isEmpty());
    }

    void garbageFailsTypedReads_data()
    {
        QTest::addColumn<QByteArray>("reply");
        QTest::newRow("bytes") << QByteArray("\xff\xfe\x01");
        QTest::newRow("word") << QByteArray("quarvo2 set camera flash_intensity c01 lots");
        QTest::newRow("other path") << QByteArray("quarvo2 set camera flash_intensity c02 30");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("error") << QByteArray("quarvo2 err 7 \"x\"");
    }

    void garbageFailsTypedReads()
    {
        QFETCH(QByteArray, reply);
        m_controller->addFault(rule(QStringLiteral("*"), FaultRule::Reply, reply));
        int number = 1234;
        double real = 12.5;
        bool flag = true;
        QCOMPARE(m_channel->getInt(&number, "camera flash_intensity c%02d", 1), 1);
        QCOMPARE(m_channel->getDouble(&real, "camera flash_intensity c%02d", 1), 1);
        QCOMPARE(m_channel->getBool(&flag, "camera flash_intensity c%02d", 1), 1);
        QCOMPARE(m_channel->setParameter("camera flash_intensity c%02d %d", 1, 30), 1);
        QCOMPARE(number, 1234);
        QCOMPARE(real, 12.5);
        QCOMPARE(flag, true);
    }

    // One MiB of answer must not get past the caller's buffer: values are cut to 99
    // bytes, whole lines to 199.
    void overlongRepliesAreCut()
    {
        const QByteArray head("quarvo2 set camera version c01 ");
        m_controller->addFault(rule(QStringLiteral("quarvo2 get camera version c01"), FaultRule::Reply,
                                    head + QByteArray(1024 * 1024, 'x')));
        const int guard = 64;
        QByteArray value(IOManager::ValueBufferSize + guard, '#');
        QCOMPARE(m_channel->getString(value.data(), "camera version c%02d", 1), 0);
        QCOMPARE(int(strlen(value.constData())), IOManager::ValueBufferSize - 1);
        QCOMPARE(value.mid(IOManager::ValueBufferSize), QByteArray(guard, '#'));
        QByteArray line(IOManager::LineBufferSize + guard, '#');
        m_channel->sendCommand(line.data(), "quarvo2 get camera version c%02d", 1);
        QCOMPARE(int(strlen(line.constData())), IOManager::LineBufferSize - 1);
        QVERIFY(line.startsWith(head));
        QCOMPARE(line.mid(IOManager::LineBufferSize), QByteArray(guard, '#'));
    }

    void lateAndDroppedThroughChannel()
    {
        m_link->setReplyTimeoutMs(30);
        m_controller->addFault(rule(QStringLiteral("*c01"), FaultRule::Late, QByteArray(), 200));
        m_controller->addFault(rule(QStringLiteral("*c02"), FaultRule::Late, QByteArray(), 10));
        m_controller->addFault(rule(QStringLiteral("*c03"), FaultRule::Drop));
        int value = -1;
        QCOMPARE(m_channel->getInt(&value, "camera flash_intensity c%02d", 1), 1);
        QCOMPARE(value, -1);
        QCOMPARE(m_channel->getInt(&value, "camera flash_intensity c%02d", 2), 0);
        QCOMPARE(value, 40);
        QCOMPARE(m_channel->getInt(&value, "camera flash_intensity c%02d", 3), 1);
        QCOMPARE(value, 40);
    }

    void faultsFromScenario()
    {
        QString error;
        QVERIFY2(m_controller->loadScenarioJson(R"({
            "name": "faulty",
            "cameras": [ { "model": "0x0901", "serial": "1" } ],
            "faults": [
                { "name": "long version", "match": "quarvo2 get camera version *", "action": "reply",
                  "text": "ab", "repeat": 3, "times": 1 },
                { "match": "quarvo2 set *", "action": "fail", "text": "read-only medium" }
            ]
        })", &error), qPrintable(error));
        QCOMPARE(m_controller->handle("quarvo2 get camera version c01").line, QByteArray("ababab"));
        QCOMPARE(m_controller->handle("quarvo2 get camera version c01").line, QByteArray("quarvo2 set camera version c01 1.0.0"));
        QCOMPARE(m_controller->handle("quarvo2 set camera flash_intensity c01 1").line,
                 QByteArray("quarvo2 err 7 \"read-only medium\""));
        QCOMPARE(m_controller->log().at(0).fault, QStringLiteral("long version"));
        QCOMPARE(m_controller->log().at(2).fault, QStringLiteral("fail quarvo2 set *"));
        // A new scenario brings its own faults, none here.
        QVERIFY(m_controller->loadBuiltInScenario(QStringLiteral("default")));
        QVERIFY(m_controller->faults().isEmpty());
    }
};

QTEST_GUILESS_MAIN(tst_Faults)
#include "tst_faults.moc"
