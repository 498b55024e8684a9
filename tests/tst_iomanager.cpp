// The command channel: what it sends for each operation, how it reads the replies,
// and that nothing the controller answers can overrun a caller's buffer.
#include "ControllerLink.h"
#include "HostMessageSink.h"
#include "IOManager.h"
#include "MessageReceiver.h"

#include <QtTest>

#include <cstring>

namespace {

// A controller stand-in that answers from a queue and records what it was asked.
class ScriptedLink : public ControllerLink
{
public:
    bool transact(const QByteArray& request, QByteArray* reply) override
    {
        requests << request;
        if (replies.isEmpty())
            return false;
        const QByteArray next = replies.takeFirst();
        if (next == "<drop>")
            return false;
        *reply = next;
        return true;
    }

    QList<QByteArray> requests;
    QList<QByteArray> replies;
};

class RecordingSink : public HostMessageSink
{
public:
    void postMessage(const char* type, const char* source, int level, const char* text) override
    {
        posted << QStringLiteral("%1|%2|%3|%4").arg(type, source).arg(level).arg(text);
    }
    QStringList posted;
};

class CountingReceiver : public MessageReceiver
{
public:
    int transmit_message(int, const char*, const char* text) override
    {
        texts << QString::fromLatin1(text);
        return 0;
    }
    QStringList texts;
};

// Fills a buffer with a marker so that writes past the documented size show.
struct GuardedBuffer
{
    GuardedBuffer() { memset(bytes, 'X', sizeof bytes); }
    bool untouchedFrom(int offset) const
    {
        for (int i = offset; i < int(sizeof bytes); ++i)
            if (bytes[i] != 'X')
                return false;
        return true;
    }
    char bytes[1200];
};

} // namespace

class tst_IOManager : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void requestsOnTheWire_data();
    void requestsOnTheWire();

    void getStringReadsTheValue_data();
    void getStringReadsTheValue();
    void failedGetsLeaveTheVariableAlone_data();
    void failedGetsLeaveTheVariableAlone();
    void numbersAndFlags();
    void doubleArray_data();
    void doubleArray();
    void onlyFiniteNumbersParse_data();
    void onlyFiniteNumbersParse();
    void setParameterNeedsTheEcho_data();
    void setParameterNeedsTheEcho();

    void overlongRepliesAreCut();
    void sendCommandOnFailureGivesAnEmptyLine();
    void overlongOrSplitCommandsAreNotSent();
    void noLinkFailsEverything();

    void messagesGoToTheSink();
    void receiversAreRegisteredPerModule();

private:
    ScriptedLink link;
    RecordingSink sink;
};

void tst_IOManager::init()
{
    link = ScriptedLink();
    sink.posted.clear();
}

void tst_IOManager::requestsOnTheWire_data()
{
    QTest::addColumn<int>("operation");
    QTest::addColumn<QByteArray>("expected");

    QTest::newRow("getString") << 0 << QByteArray("quarvo2 get camera sync_group c03");
    QTest::newRow("getInt") << 1 << QByteArray("quarvo2 get camera flash_intensity c12");
    QTest::newRow("getDouble") << 2 << QByteArray("quarvo2 get camera marker_min_size c01");
    QTest::newRow("getBool") << 3 << QByteArray("quarvo2 get camera has_sensor_gain c02");
    QTest::newRow("getDoubleArray") << 4 << QByteArray("quarvo2 get camera min_max_sensor_gain c04");
    QTest::newRow("setParameter %d") << 5 << QByteArray("quarvo2 set camera flash_intensity c01 50");
    QTest::newRow("setParameter %.3f") << 6 << QByteArray("quarvo2 set camera marker_max_size c01 40.000");
    QTest::newRow("setParameter %f") << 7 << QByteArray("quarvo2 set camera sensor_gain c02 1.500000");
    QTest::newRow("sendCommand") << 8 << QByteArray("quarvo2 get camera camera c07");
}

void tst_IOManager::requestsOnTheWire()
{
    QFETCH(int, operation);
    QFETCH(QByteArray, expected);

    IOManager io(&link);
    char text[IOManager::LineBufferSize];
    int i = 0;
    double d = 0;
    double pair[2];
    bool b = false;
    switch (operation) {
    case 0: io.getString(text, "camera sync_group c%02d", 3); break;
    case 1: io.getInt(&i, "camera flash_intensity c%02d", 12); break;
    case 2: io.getDouble(&d, "camera marker_min_size c%02d", 1); break;
    case 3: io.getBool(&b, "camera has_sensor_gain c%02d", 2); break;
    case 4: io.getDoubleArray(pair, 2, "camera min_max_sensor_gain c%02d", 4); break;
    case 5: io.setParameter("camera flash_intensity c%02d %d", 1, 50); break;
    case 6: io.setParameter("camera marker_max_size c%02d %.3f", 1, 40.0); break;
    case 7: io.setParameter("camera sensor_gain c%02d %f", 2, 1.5); break;
    case 8: io.sendCommand(text, "quarvo2 get camera camera c%02d", 7); break;
    }
    QCOMPARE(link.requests, QList<QByteArray>() << expected);
}

void tst_IOManager::getStringReadsTheValue_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QByteArray>("value");

    QTest::newRow("value with a blank") << QByteArray("quarvo2 set camera sync_group c03 d01 ch02") << QByteArray("d01 ch02");
    QTest::newRow("quoted value kept as sent") << QByteArray("quarvo2 set camera sync_group c03 \"Group A\"") << QByteArray("\"Group A\"");
    QTest::newRow("line terminators dropped") << QByteArray("quarvo2 set camera sync_group c03 none\r\n") << QByteArray("none");
    QTest::newRow("empty value") << QByteArray("quarvo2 set camera sync_group c03") << QByteArray("");
}

void tst_IOManager::getStringReadsTheValue()
{
    QFETCH(QByteArray, reply);
    QFETCH(QByteArray, value);

    IOManager io(&link);
    link.replies << reply;
    char result[IOManager::ValueBufferSize];
    QCOMPARE(io.getString(result, "camera sync_group c%02d", 3), 0);
    QCOMPARE(QByteArray(result), value);
}

void tst_IOManager::failedGetsLeaveTheVariableAlone_data()
{
    QTest::addColumn<QByteArray>("reply");

    QTest::newRow("err reply") << QByteArray("quarvo2 err 3 \"no such camera\"");
    QTest::newRow("answer to another path") << QByteArray("quarvo2 set camera flash_intensity c04 12");
    QTest::newRow("path only as prefix") << QByteArray("quarvo2 set camera flash_intensity c0312");
    QTest::newRow("garbage") << QByteArray("\x01\x02 garbage \xff");
    QTest::newRow("empty line") << QByteArray("");
    QTest::newRow("transport failure") << QByteArray("<drop>");
}

void tst_IOManager::failedGetsLeaveTheVariableAlone()
{
    QFETCH(QByteArray, reply);

    IOManager io(&link);
    link.replies << reply << reply << reply << reply;
    int i = 77;
    double d = 7.5;
    bool b = true;
    char text[IOManager::ValueBufferSize] = "before";
    QVERIFY(io.getInt(&i, "camera flash_intensity c%02d", 3) != 0);
    QVERIFY(io.getDouble(&d, "camera flash_intensity c%02d", 3) != 0);
    QVERIFY(io.getBool(&b, "camera flash_intensity c%02d", 3) != 0);
    QVERIFY(io.getString(text, "camera flash_intensity c%02d", 3) != 0);
    QCOMPARE(i, 77);
    QCOMPARE(d, 7.5);
    QCOMPARE(b, true);
    QCOMPARE(QByteArray(text), QByteArray("before"));
}

void tst_IOManager::numbersAndFlags()
{
    IOManager io(&link);
    int i = 0;
    double d = 0;
    bool b = true;
    link.replies << "quarvo2 set camera flash_intensity c01 -12"
                 << "quarvo2 set camera flash_intensity c01 12.5"
                 << "quarvo2 set camera focal_length c01 12.5"
                 << "quarvo2 set camera focal_length c01 twelve"
                 << "quarvo2 set camera has_sensor_gain c01 no"
                 << "quarvo2 set camera has_sensor_gain c01 Yes"
                 << "quarvo2 set camera has_sensor_gain c01 yes";
    QCOMPARE(io.getInt(&i, "camera flash_intensity c%02d", 1), 0);
    QCOMPARE(i, -12);
    link.replies.prepend(QByteArray("quarvo2 set camera flash_intensity c01 2222\0garbage", 51));
    QVERIFY2(io.getInt(&i, "camera flash_intensity c%02d", 1) != 0, "a NUL byte ends no number");
    QCOMPARE(i, -12);
    QVERIFY2(io.getInt(&i, "camera flash_intensity c%02d", 1) != 0, "a fraction is no integer");
    QCOMPARE(i, -12);
    QCOMPARE(io.getDouble(&d, "camera focal_length c%02d", 1), 0);
    QCOMPARE(d, 12.5);
    QVERIFY(io.getDouble(&d, "camera focal_length c%02d", 1) != 0);
    QCOMPARE(io.getBool(&b, "camera has_sensor_gain c%02d", 1), 0);
    QCOMPARE(b, false);
    QVERIFY2(io.getBool(&b, "camera has_sensor_gain c%02d", 1) != 0, "flags are compared byte-exactly");
    QCOMPARE(b, false);
    QCOMPARE(io.getBool(&b, "camera has_sensor_gain c%02d", 1), 0);
    QCOMPARE(b, true);
}

void tst_IOManager::doubleArray_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<bool>("ok");

    QTest::newRow("two values") << QByteArray("0.5 4") << true;
    QTest::newRow("one value") << QByteArray("0.5") << false;
    QTest::newRow("three values") << QByteArray("0.5 4 8") << false;
    QTest::newRow("not a number") << QByteArray("0.5 max") << false;
    QTest::newRow("double blank") << QByteArray("0.5  4") << false;
}

void tst_IOManager::doubleArray()
{
    QFETCH(QByteArray, value);
    QFETCH(bool, ok);

    IOManager io(&link);
    link.replies << "quarvo2 set camera min_max_sensor_gain c01 " + value;
    double pair[3] = {-1, -1, -1};
    QCOMPARE(io.getDoubleArray(pair, 2, "camera min_max_sensor_gain c%02d", 1) == 0, ok);
    if (ok) {
        QCOMPARE(pair[0], 0.5);
        QCOMPARE(pair[1], 4.0);
    } else {
        QCOMPARE(pair[0], -1.0);
        QCOMPARE(pair[1], -1.0);
    }
    QCOMPARE(pair[2], -1.0);
}

void tst_IOManager::onlyFiniteNumbersParse_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<bool>("ok");

    QTest::newRow("nan") << QByteArray("nan") << false;
    QTest::newRow("inf") << QByteArray("inf") << false;
    QTest::newRow("-inf") << QByteArray("-inf") << false;
    QTest::newRow("beyond double") << QByteArray("1e999") << false;
    QTest::newRow("largest finite") << QByteArray("1e308") << true;
}

void tst_IOManager::onlyFiniteNumbersParse()
{
    QFETCH(QByteArray, value);
    QFETCH(bool, ok);

    IOManager io(&link);
    link.replies << "quarvo2 set camera focal_length c01 " + value
                 << "quarvo2 set camera min_max_sensor_gain c01 1 " + value;
    double d = 7.5;
    double pair[2] = {-1, -1};
    QCOMPARE(io.getDouble(&d, "camera focal_length c%02d", 1) == 0, ok);
    QCOMPARE(io.getDoubleArray(pair, 2, "camera min_max_sensor_gain c%02d", 1) == 0, ok);
    QCOMPARE(d, ok ? 1e308 : 7.5);
    QCOMPARE(pair[1], ok ? 1e308 : -1.0);
}

void tst_IOManager::setParameterNeedsTheEcho_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<int>("result");

    QTest::newRow("echo") << QByteArray("quarvo2 set camera mode c02 m02") << 0;
    QTest::newRow("echo with line end") << QByteArray("quarvo2 set camera mode c02 m02\n") << 0;
    QTest::newRow("refused") << QByteArray("quarvo2 err 3 \"unknown mode\"") << 1;
    QTest::newRow("other value") << QByteArray("quarvo2 set camera mode c02 m01") << 1;
    QTest::newRow("transport failure") << QByteArray("<drop>") << 1;
}

void tst_IOManager::setParameterNeedsTheEcho()
{
    QFETCH(QByteArray, reply);
    QFETCH(int, result);

    IOManager io(&link);
    link.replies << reply;
    QCOMPARE(io.setParameter("camera mode c%02d %s", 2, "m02") != 0 ? 1 : 0, result);
}

void tst_IOManager::overlongRepliesAreCut()
{
    IOManager io(&link);
    const QByteArray huge(1 << 20, 'a');

    link.replies << "quarvo2 set camera version c01 " + huge;
    GuardedBuffer value;
    QCOMPARE(io.getString(value.bytes, "camera version c%02d", 1), 0);
    QCOMPARE(int(strlen(value.bytes)), IOManager::ValueBufferSize - 1);
    QVERIFY2(value.untouchedFrom(IOManager::ValueBufferSize), "getString wrote past 100 bytes");

    link.replies << "quarvo2 set camera camera c01 0x0901 " + huge;
    GuardedBuffer line;
    QCOMPARE(io.sendCommand(line.bytes, "quarvo2 get camera camera c%02d", 1), 0);
    QCOMPARE(int(strlen(line.bytes)), IOManager::LineBufferSize - 1);
    QVERIFY(QByteArray(line.bytes).startsWith("quarvo2 set camera camera c01 0x0901 aaa"));
    QVERIFY2(line.untouchedFrom(IOManager::LineBufferSize), "sendCommand wrote past 200 bytes");
}

void tst_IOManager::sendCommandOnFailureGivesAnEmptyLine()
{
    IOManager io(&link);
    link.replies << "<drop>";
    char line[IOManager::LineBufferSize] = "stale reply";
    QVERIFY(io.sendCommand(line, "quarvo2 get camera camera c%02d", 1) != 0);
    QCOMPARE(line[0], '\0');
}

void tst_IOManager::overlongOrSplitCommandsAreNotSent()
{
    IOManager io(&link);
    const QByteArray word(IOManager::CommandBufferSize, 'm');
    QVERIFY(io.setParameter("camera mode c%02d %s", 1, word.constData()) != 0);
    char text[IOManager::ValueBufferSize];
    QVERIFY(io.getString(text, "camera mode_desc c%02d %s", 1, "m01\nquarvo2 set camera flash_intensity c01 0") != 0);
    QVERIFY2(link.requests.isEmpty(), "nothing may reach the controller");
}

void tst_IOManager::noLinkFailsEverything()
{
    IOManager io;
    int i = 5;
    char line[IOManager::LineBufferSize] = "x";
    QVERIFY(io.getInt(&i, "camera number_of_cameras") != 0);
    QCOMPARE(i, 5);
    QVERIFY(io.setParameter("camera display_show_syncgroup all yes") != 0);
    QVERIFY(io.sendCommand(line, "quarvo2 get camera camera c%02d", 1) != 0);
    QCOMPARE(line[0], '\0');
}

void tst_IOManager::messagesGoToTheSink()
{
    IOManager io(&link, &sink);
    io.showMessage("standard", "QUARVO3", 1, "Error: Unable to set camera mode");
    io.showMessage("GlobalEvent", "ConfigurationModule", 1, "ActiveConfigurationChanged");
    io.showMessage(nullptr, nullptr, 2, nullptr);
    QCOMPARE(sink.posted, QStringList() << "standard|QUARVO3|1|Error: Unable to set camera mode"
                                        << "GlobalEvent|ConfigurationModule|1|ActiveConfigurationChanged"
                                        << "||2|");
    QVERIFY(link.requests.isEmpty());
}

void tst_IOManager::receiversAreRegisteredPerModule()
{
    IOManager io(&link);
    CountingReceiver a;
    CountingReceiver b;
    QCOMPARE(io.registerMessageReceiver("CameraSettingsModule", &a), 0);
    QCOMPARE(io.registerMessageReceiver("OtherModule", &b), 0);
    QCOMPARE(io.deliverMessage("CameraSettingsModule", 0, "host", "ShowDynReflexSuppr"), 1);
    QCOMPARE(a.texts, QStringList() << "ShowDynReflexSuppr");
    QVERIFY(b.texts.isEmpty());

    QCOMPARE(io.unregisterMessageReceiver("CameraSettingsModule", &a), 0);
    QVERIFY2(io.unregisterMessageReceiver("CameraSettingsModule", &a) != 0, "already gone");
    QCOMPARE(io.deliverMessage("CameraSettingsModule", 0, "host", "again"), 0);
    QCOMPARE(a.texts.size(), 1);
    QCOMPARE(io.receivers("OtherModule"), QList<MessageReceiver*>() << &b);
}

QTEST_APPLESS_MAIN(tst_IOManager)
#include "tst_iomanager.moc"
