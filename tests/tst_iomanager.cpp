// The host's command channel on the simulated controller: how it reads each kind of value
// from a reply, that a failed get leaves the caller's variable as it was and a set needs
// its echo, that nothing a controller answers can overrun a caller's buffer, that no
// malformed command leaves it, and where messages for and from the modules go.
#include <MessageReceiver.h>
#include <controllerfixture.h>

#include <QtTest>


namespace {

class RecordingReceiver : public MessageReceiver
{
public:
    int transmit_message(int, const char*, const char* text) override
    {
        texts << QString::fromLatin1(text);
        return 0;
    }
    QStringList texts;
};

} // namespace

class tst_IOManager : public QObject
{
    Q_OBJECT

private:
    QScopedPointer<ControllerFixture> m_f;
    IOManager* io() { return m_f->channel(); }
    // The next request gets this whole line as its reply; "<drop>" loses the connection instead.
    void reply(const QByteArray& line)
    {
        if (line == "<drop>")
            m_f->addFault(FaultRule::Drop, QStringLiteral("*"), QByteArray(), 1);
        else
            m_f->answer(QStringLiteral("*"), line, 1);
    }

private slots:
    void init() { m_f.reset(new ControllerFixture); }

    // A get of "camera focal_length c01" answered with a line, read as each kind of value.
    void values_data()
    {
        QTest::addColumn<char>("kind"); // getInt, getDouble, getBool, getString, getDoubleArray of two
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<QString>("result");
        const auto row = [](const char* name, char kind, const QByteArray& tail, const char* result) {
            const QByteArray line = tail.startsWith('=') ? tail.mid(1) : "quarvo2 set camera focal_length c01" + tail;
            QTest::newRow(name) << kind << line << QString::fromLatin1(result);
        };
        const char* fails = "(fails)";
        row("int", 'i', " -12", "-12");
        row("int with a NUL", 'i', QByteArray(" 2222\0garbage", 13), fails);
        row("int of a fraction", 'i', " 12.5", fails);
        row("double", 'd', " 12.5", "12.5");
        row("nan", 'd', " nan", fails);
        row("beyond double", 'd', " 1e999", fails);
        row("answer to another path", 'd', "=quarvo2 set camera flash_intensity c04 12", fails);
        row("yes", 'b', " yes", "true");
        row("flags byte-exact", 'b', " Yes", fails);
        row("lost connection", 'b', "=<drop>", fails);
        row("text with a blank", 's', " d01 ch02", "d01 ch02");
        row("quoted text kept as sent", 's', " \"Group A\"", "\"Group A\"");
        row("line terminators dropped", 's', " none\r\n", "none");
        row("garbage", 's', "=\x01\x02 garbage \xff", fails);
        row("two values", 'p', " 0.5 4", "0.5 4");
        row("one value", 'p', " 0.5", fails);
        row("double blank", 'p', " 0.5  4", fails);
        row("not finite", 'p', " 1 1e999", fails);
    }

    void values()
    {
        QFETCH(char, kind);
        QFETCH(QByteArray, line);
        QFETCH(QString, result);
        reply(line);
        // Each variable starts where a successful read would change it.
        int i = 77;
        double d = 7.5;
        bool b = result != QLatin1String("true");
        char text[IOManager::ValueBufferSize] = "before";
        double pair[3] = {-1, -1, -1};
        const auto shown = [&] {
            switch (kind) {
            case 'i': return QString::number(i);
            case 'd': return QString::number(d);
            case 'b': return QString::fromLatin1(b ? "true" : "false");
            case 's': return QString::fromLatin1(text);
            default: return QStringLiteral("%1 %2").arg(pair[0]).arg(pair[1]);
            }
        };
        const QString before = shown();
        const char* path = "camera focal_length c%02d";
        const int failed = kind == 'i' ? io()->getInt(&i, path, 1) : kind == 'd' ? io()->getDouble(&d, path, 1)
                           : kind == 'b' ? io()->getBool(&b, path, 1) : kind == 's' ? io()->getString(text, path, 1)
                                         : io()->getDoubleArray(pair, 2, path, 1);
        QCOMPARE(failed != 0, result == QLatin1String("(fails)"));
        QCOMPARE(shown(), failed ? before : result);
        QCOMPARE(pair[2], -1.0);
    }

    void setParameterNeedsTheEcho_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<int>("result");
        QTest::newRow("echo") << QByteArray("quarvo2 set camera mode c02 m02") << 0;
        QTest::newRow("echo with line end") << QByteArray("quarvo2 set camera mode c02 m02\n") << 0;
        QTest::newRow("refused") << QByteArray("quarvo2 err 3 \"unknown mode\"") << 1;
        QTest::newRow("other value") << QByteArray("quarvo2 set camera mode c02 m01") << 1;
        QTest::newRow("lost connection") << QByteArray("<drop>") << 1;
    }

    void setParameterNeedsTheEcho()
    {
        QFETCH(QByteArray, line);
        QFETCH(int, result);
        reply(line);
        QCOMPARE(io()->setParameter("camera mode c%02d %s", 2, "m02") != 0 ? 1 : 0, result);
        QCOMPARE(m_f->allRequests(), QStringList(QStringLiteral("quarvo2 set camera mode c02 m02")));
    }

    // A reply longer than the caller's buffer is cut to it (the channel fuzzer guards the
    // bytes around it); a failed sendCommand leaves an empty line.
    void overlongRepliesAreCut()
    {
        const QByteArray huge = "quarvo2 set camera camera c01 0x0901 " + QByteArray(1 << 20, 'a');
        reply(huge);
        char value[IOManager::ValueBufferSize];
        QCOMPARE(io()->getString(value, "camera camera c%02d", 1), 0);
        QCOMPARE(QByteArray(value), huge.mid(30, IOManager::ValueBufferSize - 1));
        reply(huge);
        char line[IOManager::LineBufferSize];
        QCOMPARE(io()->sendCommand(line, "quarvo2 get camera camera c%02d", 1), 0);
        QCOMPARE(QByteArray(line), huge.left(IOManager::LineBufferSize - 1));
        reply("<drop>");
        QVERIFY(io()->sendCommand(line, "quarvo2 get camera camera c%02d", 1) != 0 && line[0] == '\0');
    }

    // A command too long for the channel's buffer, or one that would be two lines, never
    // leaves; a channel without a link fails every call.
    void malformedCommandsNeverLeave()
    {
        const QByteArray word(IOManager::CommandBufferSize, 'm');
        QVERIFY(io()->setParameter("camera mode c%02d %s", 1, word.constData()) != 0);
        char text[IOManager::ValueBufferSize];
        QVERIFY(io()->getString(text, "camera mode_desc c%02d %s", 1, "m01\nquarvo2 set camera flash_intensity c01 0") != 0);
        QCOMPARE(m_f->allRequests(), QStringList());
        IOManager unlinked;
        int i = 5;
        QVERIFY(unlinked.getInt(&i, "camera number_of_cameras") != 0 && i == 5);
        QVERIFY(unlinked.setParameter("camera display_show_syncgroup all yes") != 0);
    }

    // Messages go to the host's sink, empty texts included; a host message reaches only the
    // module it is for, and an unregistered receiver no more.
    void messagesAndReceivers()
    {
        io()->showMessage(nullptr, nullptr, 2, nullptr);
        QCOMPARE(m_f->messages(), QStringList(QStringLiteral("||2|")));
        RecordingReceiver a;
        RecordingReceiver b;
        QVERIFY(io()->registerMessageReceiver("CameraSettingsModule", &a) == 0 && io()->registerMessageReceiver("OtherModule", &b) == 0);
        QCOMPARE(io()->deliverMessage("CameraSettingsModule", 0, "host", "ShowDynReflexSuppr"), 1);
        QVERIFY(io()->unregisterMessageReceiver("CameraSettingsModule", &a) == 0 && io()->unregisterMessageReceiver("CameraSettingsModule", &a) != 0);
        QCOMPARE(io()->deliverMessage("CameraSettingsModule", 0, "host", "again"), 0);
        QCOMPARE(a.texts + b.texts, QStringList(QStringLiteral("ShowDynReflexSuppr")));
    }
};

QTEST_GUILESS_MAIN(tst_IOManager)
#include "tst_iomanager.moc"
