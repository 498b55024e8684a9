// The host's command channel on the simulated controller: how it reads each kind of value
// from a reply, that a failed get leaves the caller's variable as it was and a set needs
// its echo, that a text is cut to the caller's buffer, that no malformed command leaves
// it, and that messages reach the host's sink (host messages to modules: tst_host).
#include <controllerfixture.h>

#include <QtTest>

class tst_IOManager : public QObject
{
    Q_OBJECT

private:
    QScopedPointer<ControllerFixture> m_f;
    IOManager* io() { return m_f->channel(); }

private slots:
    void init() { m_f.reset(new ControllerFixture); }

    // A call on "camera focal_length c01" answered with a line: its result, or "(fails)"
    // with the caller's variable as it was (a sendCommand's line emptied).
    void calls_data()
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

    void calls()
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

QTEST_GUILESS_MAIN(tst_IOManager)
#include "tst_iomanager.moc"
