// The quarvo2-snapshot executable against quarvo2-sim, a controller in a process of its
// own on a loopback port: save, change, restore proven on the server's whole state; a
// connection that drops halfway; a controller that is not there.
#include "snapshotstate.h"
#include "tst_tcpsimprocess.h"

#include <TcpControllerLink.h>

#include <QtTest>

namespace {

const QByteArray kDroppingScenario = R"({
    "name": "dropping", "protocol_version": "1.27.0",
    "cameras": [ { "serial": "11", "flash_intensity": 50 }, { "serial": "12", "flash_intensity": 50 } ],
    "faults": [ { "match": "quarvo2 set camera flash_intensity c02 50", "action": "drop", "times": 1 } ]
})";

} // namespace

class tst_SnapshotTcp : public QObject
{
    Q_OBJECT

private:
    SimProcess m_sim;
    QScopedPointer<TcpControllerLink> m_link;
    QTemporaryDir m_dir;
    QString m_out;
    QString m_err;

    QString address() const { return QStringLiteral("127.0.0.1:%1").arg(m_sim.port()); }

    int tool(const QStringList& arguments)
    {
        QProcess process;
        process.start(QStringLiteral(QUARVO_BIN_DIR "/quarvo2-snapshot"),
                      QStringList(arguments) << "--controller" << address());
        if (!process.waitForFinished(60000))
            return -1;
        m_out = QString::fromUtf8(process.readAllStandardOutput());
        m_err = QString::fromUtf8(process.readAllStandardError());
        return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }

    QByteArray exchange(const QByteArray& request)
    {
        QByteArray reply;
        return m_link->transact(request, &reply) ? reply : QByteArray("(no reply)");
    }

    void set(const QStringList& tails)
    {
        for (const QString& tail : tails) {
            const QByteArray request = "quarvo2 set " + tail.toLatin1();
            QCOMPARE(exchange(request), request);
        }
    }

    QStringList state()
    {
        return controllerState([this](const QByteArray& path) { return exchange("quarvo2 get " + path); });
    }

    bool start(const QByteArray& scenario = QByteArray())
    {
        m_sim.kill();
        if (!(scenario.isEmpty() ? m_sim.start() : m_sim.startScenario(scenario)))
            return false;
        m_link.reset(new TcpControllerLink(QStringLiteral("127.0.0.1"), m_sim.port()));
        return true;
    }

private slots:
    void restoreProvenOnTheServersState()
    {
        QVERIFY(start());
        const QString file = m_dir.filePath(QStringLiteral("saved.json"));
        QCOMPARE(tool({"save", "-o", file}), 0);
        const QStringList saved = state();
        set({"camera mode c03 m01", "camera flash_intensity c02 10", "camera sensor_gain c01 3"});
        QCOMPARE(tool({"restore", file}), 0);
        QCOMPARE(m_out, QStringLiteral("c01 4711 sensor_gain: 3 -> 1.5\n"
                                       "c02 2318 flash_intensity: 10 -> 40\n"
                                       "c03 5933 mode: m01 -> m02\n"
                                       "c03 5933 sensor_exposure: 1 -> 2.5\n"
                                       "restored 4 settings\n"));
        QCOMPARE(state(), saved);
        QCOMPARE(tool({"diff", file}), 0);
        QCOMPARE(m_out + m_err, QString());
    }

    void connectionLostHalfway()
    {
        QVERIFY(start(kDroppingScenario));
        const QString file = m_dir.filePath(QStringLiteral("two.json"));
        QCOMPARE(tool({"save", "-o", file}), 0);
        const QStringList saved = state();
        set({"camera flash_intensity c01 10", "camera flash_intensity c02 20"});
        QCOMPARE(tool({"restore", file}), 3);
        const QStringList lines = m_out.split(QLatin1Char('\n'));
        QCOMPARE(lines.size(), 4);
        QCOMPARE(lines.at(0), QStringLiteral("c01 11 flash_intensity: 10 -> 50"));
        QVERIFY2(lines.at(1).startsWith(QStringLiteral("connection lost at c02 12 flash_intensity: "
                                                       "quarvo2 set camera flash_intensity c02 50: ")),
                 qPrintable(lines.at(1)));
        QCOMPARE(lines.at(2), QStringLiteral("1 of 2 settings written before the connection was lost; "
                                             "restore again to complete the rest"));
        QCOMPARE(tool({"restore", file}), 0);
        QCOMPARE(m_out, QStringLiteral("c02 12 flash_intensity: 20 -> 50\nrestored 1 setting\n"));
        QCOMPARE(state(), saved);
    }

    void controllerNotThere()
    {
        QVERIFY(start());
        m_sim.kill();
        QCOMPARE(tool({"save"}), 3);
        QVERIFY2(m_err.startsWith(QStringLiteral("quarvo2-snapshot: cannot read the controller: cannot read the "
                                                 "system model: connection lost: quarvo2 get system model: ")),
                 qPrintable(m_err));
        QCOMPARE(m_out, QString());
    }
};

QTEST_GUILESS_MAIN(tst_SnapshotTcp)
#include "tst_snapshottcp.moc"
