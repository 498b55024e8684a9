// Camera settings snapshots as an operator takes them: quarvo2-snapshot's commands
// against the simulated controller in the process (what is saved, the exact diff and
// restore reports, the order of the writes, refusals and a lost connection, bad input,
// outliers, an old protocol). A restore is proven on the controller's whole state, not on
// what the tool reads of it. The executable over TCP: tst_network; the host's snapshot
// menu: tst_host.
#include "controllerdump.h"
#include "scratchfile.h"

#include <controllerfixture.h>
#include <snapshottool.h>

#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTextStream>
#include <QtTest>

#include <functional>

class tst_Snapshot : public QObject
{
    Q_OBJECT

private:
    QScopedPointer<ControllerFixture> m_f;
    QTemporaryDir m_dir;
    QString m_out;
    QString m_err;

    QString file(const QString& name) const { return m_dir.filePath(name); }

    int tool(const QStringList& arguments)
    {
        m_out.clear();
        m_err.clear();
        QTextStream out(&m_out);
        QTextStream err(&m_err);
        SnapshotTool tool(&out, &err);
        tool.setLink(m_f->link());
        return tool.run(arguments);
    }

    QStringList state() const { return controllerDump(*m_f->controller()); }

    // The set requests since the last mark.
    QStringList writes() const { return m_f->requests().filter(QRegularExpression(QStringLiteral("^quarvo2 set "))); }

    QJsonObject json(const QString& name) const
    {
        QFile in(file(name));
        return in.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(in.readAll()).object() : QJsonObject();
    }

    // A hand edit of a snapshot file: the value at a path such as "cameras/7002/camera"
    // (an undefined value removes it).
    void edit(const QString& name, const QString& path, const QJsonValue& value)
    {
        const std::function<QJsonObject(QJsonObject, QStringList)> change = [&](QJsonObject object, QStringList keys) {
            const QString key = keys.takeFirst();
            if (!keys.isEmpty())
                object[key] = change(object[key].toObject(), keys);
            else if (value.isUndefined())
                object.remove(key);
            else
                object[key] = value;
            return object;
        };
        QVERIFY(!scratchFile(m_dir, name, QJsonDocument(change(json(name), path.split('/'))).toJson()).isEmpty());
    }

private slots:
    void init() { m_f.reset(new ControllerFixture); }

    // Save, change, restore: the controller's whole state comes back, every kind of setting;
    // where the order matters (the controller refuses a marker minimum above the maximum,
    // and an exposure its mode does not allow) the writes come in an order it takes, as the
    // dry run lists them. A fault hits the first matching request only: the report says
    // what did not take, and a second run completes the rest.
    void restoreBringsBackTheWholeState_data()
    {
        QTest::addColumn<QByteArrayList>("before");
        QTest::addColumn<QByteArrayList>("changes");
        QTest::addColumn<QStringList>("writes"); // in order, where it matters
        QTest::addColumn<QStringList>("fault");  // action, glob, text
        QTest::addColumn<QStringList>("report"); // the exit code first, where a fault hits
        const auto row = [](const char* name, const QByteArrayList& before, const QByteArrayList& changes,
                            const QStringList& writes, const QStringList& fault = {}, const QStringList& report = {}) {
            QTest::newRow(name) << before << changes << writes << fault << report;
        };
        row("default", {}, {
            "camera mode c03 m01", "camera marker_min_size c01 35", "camera sensor_gain c01 3", "camera sync_group c04 d01 ch05",
            "camera sensor_exposure c02 0.7", "camera flash_intensity c04 20", "camera modulated_flash c03 no",
            "camera display_setting c02 off", "camera display_upside_down c01 yes", "camera static_reflex_skip c01 no",
            "camera dynamic_reflex_skip c03 no", "camera marker_mode c01 fast", "camera display_ring_intensity c03 0.9",
            "camera display_intensity c02 0.25", "camera marker_threshold c01 0.5", "camera marker_max_number c04 12"}, {});
        row("maximum shrunk below the minimum", {"camera marker_max_size c02 10", "camera marker_min_size c02 5"},
            {"camera marker_max_size c02 30", "camera marker_min_size c02 25"},
            {"quarvo2 set camera marker_min_size c02 5", "quarvo2 set camera marker_max_size c02 10"});
        row("minimum grown above the maximum", {"camera marker_max_size c01 50", "camera marker_min_size c01 45"},
            {"camera marker_min_size c01 2", "camera marker_max_size c01 10"},
            {"quarvo2 set camera marker_max_size c01 50", "quarvo2 set camera marker_min_size c01 45"});
        const QString fail = QString::number(FaultRule::Fail);
        const QString reply = QString::number(FaultRule::Reply);
        row("refused", {}, {"camera flash_intensity c04 20", "camera sensor_gain c01 3"}, {},
            {fail, "quarvo2 set camera flash_intensity c04 *", "camera busy"},
            {"1", "c01 4711 sensor_gain: 3 -> 1.5", "c04 7002 flash_intensity: refused: quarvo2 err 7 \"camera busy\"",
             "restored 1 of 2 settings, 1 not restored"});
        // A controller that confirms a write it does not carry out.
        row("reads back differently", {}, {"camera sensor_gain c01 3"}, {},
            {reply, "quarvo2 set camera sensor_gain c01 1.5", "quarvo2 set camera sensor_gain c01 1.5"},
            {"1", "c01 4711 sensor_gain: 3 -> 1.5", "c01 4711 sensor_gain: reads back 3, not 1.5",
             "restored 0 of 1 settings, 1 not restored"});
        row("configuration locked", {}, {"camera sensor_gain c01 3"}, {},
            {reply, "quarvo2 get config is_changeable", "quarvo2 set config is_changeable no"},
            {"1", "the controller's configuration is locked; nothing was written"});
        row("connection lost", {}, {"camera sensor_gain c01 3", "camera sync_group c04 d01 ch05", "camera flash_intensity c04 20"},
            {}, {QString::number(FaultRule::Drop), "quarvo2 set camera sync_group c04 *"},
            {"3", "c01 4711 sensor_gain: 3 -> 1.5",
             "connection lost at c04 7002 sync_group: quarvo2 set camera sync_group c04 d01 ch03: connection dropped by the controller",
             "1 of 3 settings written before the connection was lost; restore again to complete the rest"});
    }

    void restoreBringsBackTheWholeState()
    {
        QFETCH(QByteArrayList, before);
        QFETCH(QByteArrayList, changes);
        QFETCH(QStringList, writes);
        QFETCH(QStringList, fault);
        QFETCH(QStringList, report);
        applyChanges(*m_f, before);
        QCOMPARE(tool({"save", "-o", file("s.json")}), 0);
        const QStringList saved = state();
        applyChanges(*m_f, changes);
        m_f->mark();
        QVERIFY(state() != saved);
        if (!writes.isEmpty()) {
            QCOMPARE(tool({"restore", "--dry-run", file("s.json")}), 0);
            QCOMPARE(m_out, writes.join('\n') + QStringLiteral("\n%1 commands would be sent\n").arg(writes.size()));
            QCOMPARE(this->writes(), QStringList());
        }
        if (!fault.isEmpty())
            m_f->addFault(FaultRule::Action(fault.at(0).toInt()), fault.at(1), fault.value(2).toLatin1(), 1);
        const int code = tool({"restore", file("s.json")});
        if (!report.isEmpty()) {
            QCOMPARE(QStringList(QString::number(code)) + m_out.split('\n', Qt::SkipEmptyParts) << m_err, report << QString());
            QCOMPARE(tool({"restore", file("s.json")}), 0);
        } else {
            QCOMPARE(code, 0);
            QVERIFY2(m_out.endsWith(QStringLiteral("restored %1 settings\n").arg(this->writes().size())), qPrintable(m_out));
            QVERIFY(writes.isEmpty() || this->writes() == writes);
        }
        QCOMPARE(state(), saved);
        QCOMPARE(tool({"diff", file("s.json")}), 0);
        QCOMPARE(m_out, QString());
    }

    void diffShowsEveryChange()
    {
        QCOMPARE(tool({"save", "-o", file("a.json")}), 0);
        applyChanges(*m_f, {"camera flash_intensity c01 70", "camera sensor_exposure c02 0.7", "camera mode c03 m01"});
        const QString changes = QStringLiteral("camera 4711 (0x0901, c01):\n  flash_intensity: 60 -> 70\n"
                                               "camera 2318 (0x0402, c02):\n  sensor_exposure: auto -> 0.7\n"
                                               "camera 5933 (0x0A01, c03):\n  mode: m02 -> m01\n  sensor_exposure: 2.5 -> 1\n");
        QCOMPARE(tool({"diff", file("a.json")}), 1);
        QCOMPARE(m_out, changes);
        QCOMPARE(tool({"save", "-o", file("b.json")}), 0);
        QCOMPARE(tool({"diff", file("a.json"), file("b.json")}), 1);
        QCOMPARE(m_out, changes);

        // Another protocol, a camera gone, one moved to another port with a change.
        edit("b.json", "protocol_version", "1.28.0");
        edit("b.json", "cameras/4711", QJsonValue::Undefined);
        edit("b.json", "cameras/7002/settings/mode", QJsonValue::Undefined);
        edit("b.json", "cameras/7002/camera", 5);
        QCOMPARE(tool({"diff", file("a.json"), file("b.json")}), 1);
        QCOMPARE(m_out, QStringLiteral("protocol_version: 1.27.0 -> 1.28.0\ncamera 4711 (0x0901, c01): only in %1\n").arg(file("a.json"))
                            + changes.mid(changes.indexOf(QStringLiteral("camera 2318")))
                            + QStringLiteral("camera 7002 (0x0C01, c04 -> c05):\n  mode: m03 -> (absent)\n"));
        QCOMPARE(tool({"diff", file("b.json"), "--json"}), 1);
        QCOMPARE(QJsonDocument::fromJson(m_out.toUtf8()).object(), QJsonDocument::fromJson(R"({
            "differ": true, "old": ")" + file("b.json").toUtf8() + R"(", "new": "the controller",
            "system": [ { "field": "protocol_version", "old": "1.28.0", "new": "1.27.0" } ],
            "cameras": [ { "serial": "7002", "model": "0x0C01", "old_camera": 5, "new_camera": 4,
                           "settings": [ { "setting": "mode", "old": null, "new": "m03" } ] },
                         { "serial": "4711", "model": "0x0901", "old_camera": null, "new_camera": 1, "settings": [] } ] })").object());
    }

    // A save keeps what each camera has and warns of what it could not read; on an old
    // protocol it neither saves nor writes what the protocol lacks.
    void saveAndRestoreKeepToWhatIsThere()
    {
        m_f->addFault(FaultRule::Fail, QStringLiteral("quarvo2 get camera sensor_gain c01"), "camera busy");
        QCOMPARE(tool({"save", "-o", file("s.json")}), 1);
        QCOMPARE(m_err, QStringLiteral("warning: c01 4711 sensor_gain: not read (the controller answered: "
                                       "quarvo2 err 7 \"camera busy\"); left out\n"));
        QCOMPARE(m_out, QStringLiteral("saved 4 cameras of QUARVO (protocol 1.27.0) to %1\n").arg(file("s.json")));
        // What the camera lacks is not saved: no modulated flash, gain or threshold on 7002.
        const QJsonObject saved = json("s.json").value(QStringLiteral("cameras"))[QStringLiteral("7002")][QStringLiteral("settings")].toObject();
        QCOMPARE(saved.keys().filter(QRegularExpression(QStringLiteral("modulated|gain|threshold"))), QStringList());

        QVERIFY(m_f->useScenario(QStringLiteral("legacy")));
        m_f->mark();
        QCOMPARE(tool({"save", "-o", file("old.json")}), 0);
        // A hand-edited file asks for what protocol 1.14 does not have, on a camera that is not there too.
        edit("old.json", "cameras/1022/settings/sensor_gain", 2);
        edit("old.json", "cameras/1022/settings/mode", "m02");
        edit("old.json", "cameras/9999", QJsonObject{{"camera", 4}, {"model", "0x0301"}, {"settings", QJsonObject()}});
        QCOMPARE(tool({"restore", file("old.json")}), 1);
        QCOMPARE(m_out, QStringLiteral("c01 1022 mode: the controller does not offer it; not restored\n"
                                       "c01 1022 sensor_gain: the controller does not offer it; not restored\n"
                                       "9999 (0x0301, c04 in the snapshot): not on the controller; not restored\n"
                                       "nothing to write, 3 not restored\n"));
        // Nothing the old protocol lacks is even asked for.
        QCOMPARE(m_f->unknownToTheController(), QStringList());
    }

    void refusesBadInput_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("message");
        const QByteArray head = "{\n  \"format\": \"quarvo2-snapshot\", \"version\": 1,\n  \"system_model\": \"QUARVO\", "
                                "\"protocol_version\": \"1.27.0\",\n  \"cameras\": { \"4711\": { \"camera\": 1, \"model\": "
                                "\"0x0901\", \"settings\": {\n";
        const QByteArray tail = " } } }\n}\n";
        const QStringList restore{"restore", "FILE"};
        QTest::newRow("not JSON") << head + "    flash_intensity: 60" + tail << restore
                                  << "FILE:5: not a camera settings snapshot: unterminated object";
        QTest::newRow("unknown setting") << head + "    \"flash\": 60" + tail << restore
                                         << "FILE:5: cameras/4711/settings/flash: unknown setting";
        QTest::newRow("bad value") << head + "    \"mode\": \"m01\",\n    \"flash_intensity\": 60.5" + tail
                                   << QStringList{"outliers", "FILE"} << "FILE:6: cameras/4711/settings/flash_intensity: expected a whole number";
        QTest::newRow("another system") << QByteArray(head).replace("QUARVO", "BRISKBOX") + tail << restore
                                        << "FILE is a snapshot of a BRISKBOX system, the controller is a QUARVO system; nothing was written";
    }

    void refusesBadInput()
    {
        QFETCH(QByteArray, content);
        QFETCH(QStringList, arguments);
        QFETCH(QString, message);
        const QString input = scratchFile(m_dir, QStringLiteral("input.json"), content);
        m_f->mark();
        QCOMPARE(tool(arguments.replaceInStrings(QStringLiteral("FILE"), input)), 2);
        QCOMPARE(m_err, "quarvo2-snapshot: " + message.replace(QStringLiteral("FILE"), input) + '\n');
        QCOMPARE(m_out + writes().join('\n'), QString());
    }

    // Cameras 201 and 202 are two of a model that disagree: no value most of them have.
    void outliersNameTheOddCameraOut()
    {
        QCOMPARE(tool({"outliers"}), 0);
        QCOMPARE(m_out, QString());
        QVERIFY(m_f->useScenarioJson(R"({ "protocol_version": "1.27.0",
            "camera_defaults": { "model": "0x0901", "has_sensor_exposure": true, "sensor_exposure": 0.6 },
            "cameras": [ { "serial": "101" }, { "serial": "102" }, { "serial": "103", "sensor_exposure": 0.9 }, { "serial": "104" },
                         { "serial": "201", "model": "0x0402", "flash_intensity": 70 },
                         { "serial": "202", "model": "0x0402", "flash_intensity": 80 } ] })"));
        const QString table = QStringLiteral("model   setting          camera   value  most cameras\n"
                                             "0x0901  sensor_exposure  c03 103  0.9    0.6 (3 of 4)\n");
        QCOMPARE(tool({"outliers"}), 1);
        QCOMPARE(m_out, table);
    }
};

QTEST_MAIN(tst_Snapshot)
#include "tst_snapshot.moc"
