// The simulated controller as a frontend meets it: request lines in, reply lines out,
// its state changed and validated as a real controller does, commands gated by the
// protocol version that brought them, every exchange in the command log, faults from
// rules and scenarios, and scenario documents that are refused with their place. Then the
// host's command channel on it: how it reads each kind of value from a reply, that a
// failed get leaves the caller's variable as it was and a set needs its echo, that a text
// is cut to the caller's buffer, that no malformed command leaves it, and that messages
// reach the host's sink (host messages to modules: tst_host).
#include "controllerdump.h"
#include "controllerfixture.h"
#include "scratchfile.h"

#include <QElapsedTimer>
#include <QtTest>

class tst_Controller : public QObject
{
    Q_OBJECT

private:
    QByteArray ask(const QByteArray& request) { return m_f->controller()->handle(request).line; }
    QByteArray peek(const QByteArray& path) const { return m_f->controller()->peek(path); }
    IOManager* io() { return m_f->channel(); }

    QScopedPointer<ControllerFixture> m_f;

private slots:
    void init() { m_f.reset(new ControllerFixture); }

    // What a request does to the controller beyond its reply: a value out of range or a
    // feature the camera lacks is refused and changes nothing; "default" keeps to a reduced
    // maximum; a shorter mode cuts the exposure, and automatic control survives a mode
    // change; the lock refuses configuration changes, not marking cameras, and set-up
    // passes it. (Plain gets and sets of the whole vocabulary: the dialog, hostile and
    // snapshot suites and the fuzz invariants.)
    void exchanges()
    {
        const QStringList before = controllerDump(*m_f->controller());
        QCOMPARE(ask("quarvo2 set camera flash_intensity c03 61"), QByteArray("quarvo2 err 3 \"flash intensity above maximum\""));
        QCOMPARE(ask("quarvo2 set camera modulated_flash c02 yes"), QByteArray("quarvo2 err 5 \"not supported by this camera\""));
        QCOMPARE(controllerDump(*m_f->controller()), before);
        QVERIFY(m_f->poke("camera max_flash_intensity c01 40") && m_f->poke("camera flash_intensity c01 10"));
        QCOMPARE(ask("quarvo2 set camera flash_intensity c01 default"), QByteArray("quarvo2 set camera flash_intensity c01 default"));
        QCOMPARE(peek("camera flash_intensity c01"), QByteArray("40"));
        QCOMPARE(ask("quarvo2 set camera mode c01 m02"), QByteArray("quarvo2 set camera mode c01 m02"));
        QCOMPARE(ask("quarvo2 get camera sensor_exposure c01"), QByteArray("quarvo2 set camera sensor_exposure c01 0.45"));
        QVERIFY(m_f->poke("camera sensor_exposure c01 auto") && m_f->poke("camera mode c01 m03"));
        QCOMPARE(peek("camera sensor_exposure c01"), QByteArray("auto"));
        QVERIFY(m_f->poke("config is_changeable no"));
        QCOMPARE(ask("quarvo2 set camera flash_intensity c01 30"), QByteArray("quarvo2 err 6 \"configuration is locked\""));
        QCOMPARE(ask("quarvo2 set camera display_mark c01 yes"), QByteArray("quarvo2 set camera display_mark c01 yes"));
        QVERIFY(m_f->poke("camera flash_intensity c01 30"));
    }

    // Every command of the vocabulary from the protocol version that brought it on, and not
    // below it; the gate comes before the arguments are looked at.
    void protocolGates()
    {
        const CommandVocabulary vocabulary;
        for (const CommandDefinition& command : vocabulary.definitions()) {
            const QByteArray request = command.get ? "quarvo2 get " + command.head : "quarvo2 set " + command.head + " x";
            const int minor = command.since.minor();
            if (minor > 0) {
                m_f->setProtocol(VersionInfo(1, minor - 1, 99));
                QCOMPARE(ask(request), "quarvo2 err 2 \"not available in protocol 1." + QByteArray::number(minor - 1) + ".99\"");
            }
            for (const VersionInfo& version : {VersionInfo(1, minor, 0), VersionInfo(2, 0, 0)}) {
                m_f->setProtocol(version);
                QVERIFY2(!ask(request).startsWith("quarvo2 err 2"), request + " at " + version.toString().toLatin1());
            }
        }
    }

    // A late answer through the in-process link is waited for, but never past the time-out;
    // the controller did the work all the same, the next request gets its own answer, and
    // the rule goes with its scenario (the fault named in the log: tst_host; rules from
    // scenario files: tst_network's quarvo2-sim).
    void lateAnswer()
    {
        const int timeoutMs = 30;
        m_f->link()->setReplyTimeoutMs(timeoutMs);
        const QString request = QStringLiteral("quarvo2 set camera flash_intensity c02 20");
        m_f->addFault(FaultRule::Late, request, QByteArray(), -1, 200);
        QByteArray answer;
        QElapsedTimer clock;
        clock.start();
        QVERIFY(!m_f->link()->transact(request.toLatin1(), &answer));
        QVERIFY(clock.elapsed() >= timeoutMs && clock.elapsed() < timeoutMs + 1000);
        QCOMPARE(m_f->link()->lastError(), QStringLiteral("no reply within 30 ms"));
        QCOMPARE(peek("camera flash_intensity c02"), QByteArray("20"));
        QVERIFY(m_f->link()->transact("quarvo2 get camera flash_intensity c01", &answer));
        QCOMPARE(answer, QByteArray("quarvo2 set camera flash_intensity c01 60"));
        QVERIFY(m_f->useScenario(QStringLiteral("default")));
        QVERIFY2(m_f->controller()->faults().isEmpty(), "rules go with their scenario");
    }

    // A broken document is refused with its place and why, and nothing of it is taken over;
    // a file's error names the file (a placeholder in its name stays as it is).
    void scenarioErrors_data()
    {
        QTest::addColumn<QByteArray>("json"); // empty: no such file
        QTest::addColumn<QString>("error");   // FILE: the file's path; JSON text otherwise
        const auto row = [](const char* name, const QByteArray& json, const QString& error) { QTest::newRow(name) << json << error; };
        row("not an object", "[1, 2]", "<json>:1: a scenario is a JSON object");
        row("syntax", "{\n  \"cameras\": [\n    { \"model\": \"0x0901\" \"serial\": \"1\" }\n  ]\n}", "<json>:3: unterminated object");
        row("unknown key", "{\n  \"cameras\": [\n    { \"model\": \"0x0901\",\n      \"colour\": \"red\" }\n  ]\n}",
            "<json>:4: cameras[0]: unknown key \"colour\"");
        row("flash above maximum", "{\n  \"cameras\": [\n    { \"max_flash_intensity\": 50,\n      \"flash_intensity\": 60 }\n  ]\n}",
            "<json>:4: cameras[0].flash_intensity: above max_flash_intensity");
        row("duplicate key, escaped", "{\n  \"name\": \"a\",\n  \"n\\u0061me\": \"b\"\n}", "<json>:3: key \"name\" given twice, first on line 2");
        row("key on another line than its value", "{\n  \"cameras\": [ {\n    \"serial\":\n      7 } ]\n}",
            "<json>:3: cameras[0].serial: expected a single word");
        row("unknown key of a megabyte", "{\n  \"" + QByteArray(1000000, 'k') + "\": 1\n}",
            "<json>:2: unknown key \"" + QString(40, QLatin1Char('k')) + "\"... (1000000 characters)");
        row("file", "{\n  \"name\": \"broken\",\n  \"is_changeable\": \"maybe\"\n}\n", "FILE:3: is_changeable: expected true or false");
        row("no file", "", "FILE:0: No such file or directory");
    }

    void scenarioErrors()
    {
        QFETCH(QByteArray, json);
        QFETCH(QString, error);
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("broken%2.json"));
        QString reported;
        if (error.startsWith(QStringLiteral("FILE"))) {
            QVERIFY(json.isEmpty() || scratchFile(dir, QStringLiteral("broken%2.json"), json) == path);
            QVERIFY(!m_f->controller()->loadScenarioFile(path, &reported));
        } else {
            QVERIFY(!m_f->controller()->loadScenarioJson(json, &reported));
        }
        QCOMPARE(reported, error.replace(QStringLiteral("FILE"), path));
        QVERIFY(!m_f->controller()->loadBuiltInScenario(QStringLiteral("nonsense"), &reported));
        QCOMPARE(reported, QStringLiteral("no built-in scenario nonsense"));
        QCOMPARE(m_f->controller()->scenarioName(), QStringLiteral("default"));
        QCOMPARE(peek("camera number_of_cameras"), QByteArray("4"));
    }

    // A call on "camera focal_length c01" answered with a line: its result, or "(fails)"
    // with the caller's variable as it was (a sendCommand's line emptied).
    void channelCalls_data()
    {
        QTest::addColumn<char>("kind"); // getInt, getDouble, getBool, getString, getDoubleArray of two, setParameter, sendCommand
        QTest::addColumn<QByteArray>("line"); // "<drop>": the connection is lost instead
        QTest::addColumn<QString>("result");
        const auto row = [](const char* name, char kind, const QByteArray& tail, const QByteArray& result) {
            const QByteArray line = tail.startsWith('=') ? tail.mid(1) : "quarvo2 set camera focal_length c01" + tail;
            QTest::newRow(name) << kind << line << QString::fromLatin1(result);
        };
        const char* fails = "(fails)";
        row("int with a NUL", 'i', QByteArray(" 2222\0garbage", 13), fails);
        row("int of a fraction", 'i', " 12.5", fails);
        row("answer to another path", 'd', "=quarvo2 set camera flash_intensity c04 12", fails);
        row("lost connection", 'b', "=<drop>", fails);
        row("line terminators dropped", 's', " none\r\n", "none");
        const QByteArray huge = " " + QByteArray(1 << 20, 'a');
        row("text cut to the buffer", 's', huge, huge.mid(1, IOManager::ValueBufferSize - 1));
        row("one value", 'p', " 0.5", fails);
        row("echo", 'e', " 12", "echoed");
        row("refused", 'e', "=quarvo2 err 3 \"focal length out of range\"", fails);
        row("line on a lost connection", 'l', "=<drop>", fails);
    }

    void channelCalls()
    {
        QFETCH(char, kind);
        QFETCH(QByteArray, line);
        QFETCH(QString, result);
        if (line == "<drop>")
            m_f->addFault(FaultRule::Drop, QStringLiteral("*"), QByteArray(), 1);
        else
            m_f->answer(QStringLiteral("*"), line, 1);
        // Each variable starts where a successful read would change it.
        int i = 77;
        double d = 7.5;
        bool b = true;
        char text[IOManager::LineBufferSize] = "before";
        double pair[2] = {-1, -1};
        const auto shown = [&] {
            switch (kind) {
            case 'i': return QString::number(i);
            case 'd': return QString::number(d);
            case 'b': return QString::fromLatin1(b ? "true" : "false");
            case 'p': return QStringLiteral("%1 %2").arg(pair[0]).arg(pair[1]);
            case 'e': return QStringLiteral("echoed");
            default: return QString::fromLatin1(text);
            }
        };
        const QString before = kind == 'l' ? QString() : shown();
        const char* path = "camera focal_length c%02d";
        const int failed = kind == 'i' ? io()->getInt(&i, path, 1) : kind == 'd' ? io()->getDouble(&d, path, 1)
                           : kind == 'b' ? io()->getBool(&b, path, 1) : kind == 's' ? io()->getString(text, path, 1)
                           : kind == 'p' ? io()->getDoubleArray(pair, 2, path, 1)
                           : kind == 'e' ? io()->setParameter("camera focal_length c%02d %d", 1, 12)
                                         : io()->sendCommand(text, "quarvo2 get camera focal_length c%02d", 1);
        QCOMPARE(failed != 0, result == QLatin1String("(fails)"));
        QCOMPARE(shown(), failed ? before : result);
        QCOMPARE(m_f->allRequests(), QStringList(kind == 'e' ? "quarvo2 set camera focal_length c01 12"
                                                              : "quarvo2 get camera focal_length c01"));
    }

    // A command too long for the channel's buffer, or one that would be two lines, never
    // leaves; a channel without a link fails every call. Messages go to the host's sink,
    // empty texts included.
    void malformedCommandsAndMessages()
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

        io()->showMessage(nullptr, nullptr, 2, nullptr);
        QCOMPARE(m_f->messages(), QStringList(QStringLiteral("||2|")));
    }
};

QTEST_GUILESS_MAIN(tst_Controller)
#include "tst_controller.moc"
