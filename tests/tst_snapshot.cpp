// quarvo2-snapshot's commands as an operator runs them, against the simulated controller
// in the process: what is saved, the exact diff and restore reports, the order of the
// writes, refusals and a lost connection, bad input, outliers, an old protocol.
#include "snapshotstate.h"

#include <inprocesslink.h>
#include <simulatedcontroller.h>
#include <snapshottool.h>

#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTextStream>
#include <QtTest>

#include <functional>

Q_DECLARE_METATYPE(FaultRule)

namespace {

const QByteArray kOutlierScenario = R"({
    "name": "outliers", "protocol_version": "1.27.0",
    "camera_defaults": { "model": "0x0901", "has_sensor_exposure": true, "sensor_exposure": 0.6 },
    "cameras": [ { "serial": "101" }, { "serial": "102" }, { "serial": "103", "sensor_exposure": 0.9 },
                 { "serial": "104" }, { "serial": "201", "model": "0x0402", "flash_intensity": 70 },
                 { "serial": "202", "model": "0x0402", "flash_intensity": 80 } ]
})";

FaultRule fault(const QString& match, FaultRule::Action action, const QByteArray& text = QByteArray())
{
    FaultRule rule;
    rule.match = match;
    rule.action = action;
    rule.text = text;
    rule.times = 1; // a second run meets a controller that behaves
    return rule;
}

} // namespace

class tst_Snapshot : public QObject
{
    Q_OBJECT

private:
    SimulatedController m_controller;
    InProcessLink m_link{&m_controller};
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
        tool.setLink(&m_link);
        return tool.run(arguments);
    }

    void set(const QStringList& tails)
    {
        for (const QString& tail : tails) {
            const QByteArray request = "quarvo2 set " + tail.toLatin1();
            QCOMPARE(m_controller.handle(request).line, request);
        }
    }

    QStringList state() const
    {
        return controllerState([this](const QByteArray& path) { return m_controller.peek(path); });
    }

    // The set requests since the log was last cleared.
    QStringList writes() const
    {
        QStringList lines;
        for (const QByteArray& request : m_controller.requests()) {
            if (request.startsWith("quarvo2 set "))
                lines << QString::fromLatin1(request);
        }
        return lines;
    }

    void edit(const QString& name, const std::function<void(QJsonObject&)>& change)
    {
        QFile in(file(name));
        QVERIFY(in.open(QIODevice::ReadOnly));
        QJsonObject root = QJsonDocument::fromJson(in.readAll()).object();
        in.close();
        change(root);
        QFile out(file(name));
        QVERIFY(out.open(QIODevice::WriteOnly));
        out.write(QJsonDocument(root).toJson());
    }

    QJsonObject camera(const QString& name, const QString& serial)
    {
        QFile in(file(name));
        return in.open(QIODevice::ReadOnly)
                   ? QJsonDocument::fromJson(in.readAll()).object()[QStringLiteral("cameras")].toObject()[serial].toObject()
                   : QJsonObject();
    }

private slots:
    void init()
    {
        QVERIFY(m_controller.loadBuiltInScenario(QStringLiteral("default")));
        m_controller.clearFaults();
        m_controller.clearLog();
    }

    void restoreBringsBackTheWholeState_data()
    {
        QTest::addColumn<QString>("scenario");
        QTest::addColumn<QStringList>("changes");
        QTest::newRow("default") << "default"
            << QStringList{"camera mode c03 m01", "camera marker_min_size c01 35", "camera sensor_gain c01 3",
                           "camera sync_group c04 d01 ch05", "camera sensor_exposure c02 0.7",
                           "camera flash_intensity c04 20", "camera modulated_flash c03 no",
                           "camera display_setting c02 off", "camera display_upside_down c01 yes",
                           "camera static_reflex_skip c01 no", "camera dynamic_reflex_skip c03 no",
                           "camera marker_mode c01 fast", "camera display_ring_intensity c03 0.9",
                           "camera display_intensity c02 0.25", "camera marker_threshold c01 0.5",
                           "camera marker_max_number c04 12"};
        QTest::newRow("old protocol") << "legacy"
            << QStringList{"camera flash_intensity c01 70", "camera static_reflex_skip c02 no",
                           "camera sync_group c03 d01 ch04", "camera marker_max_number c01 50",
                           "camera marker_mode c03 accurate", "camera marker_max_size c02 5"};
        QTest::newRow("all-in-one") << "briskbox"
            << QStringList{"camera flash_intensity c01 20", "camera flash_intensity c02 20",
                           "camera modulated_flash c01 yes", "camera mode c02 m02", "camera static_reflex_skip c02 no"};
    }

    void restoreBringsBackTheWholeState()
    {
        QFETCH(QString, scenario);
        QFETCH(QStringList, changes);
        QVERIFY(m_controller.loadBuiltInScenario(scenario));
        QCOMPARE(tool({"save", "-o", file("saved.json")}), 0);
        const QStringList saved = state();
        set(changes);
        QVERIFY(state() != saved);

        QCOMPARE(tool({"restore", file("saved.json")}), 0);
        QVERIFY2(m_out.endsWith(QStringLiteral("restored %1 settings\n").arg(writes().size() - changes.size())),
                 qPrintable(m_out));
        QCOMPARE(state(), saved);
        QCOMPARE(tool({"diff", file("saved.json")}), 0);
        QCOMPARE(m_out, QString());
    }

    void saveKeepsWhatEachCameraHas()
    {
        m_controller.addFault(fault("quarvo2 get camera sensor_gain c01", FaultRule::Fail, "camera busy"));
        QCOMPARE(tool({"save", "-o", file("s.json")}), 1);
        QCOMPARE(m_err, QStringLiteral("warning: c01 4711 sensor_gain: not read (the controller answered: "
                                       "quarvo2 err 7 \"camera busy\"); left out\n"));
        QCOMPARE(m_out, QStringLiteral("saved 4 cameras of QUARVO (protocol 1.27.0) to %1\n").arg(file("s.json")));
        QCOMPARE(camera("s.json", "4711")[QStringLiteral("settings")].toObject().keys(),
                 QStringList({"display_intensity", "display_ring_intensity", "display_setting",
                              "display_upside_down", "dynamic_reflex_skip", "flash_intensity", "marker_max_number",
                              "marker_max_size", "marker_min_size", "marker_mode", "marker_threshold", "mode",
                              "modulated_flash", "sensor_exposure", "static_reflex_skip", "sync_group"}));
        // No modulated flash, dynamic reflex suppression, ring, gain or threshold, one mode only.
        const QJsonObject c04 = camera("s.json", "7002");
        QCOMPARE(c04[QStringLiteral("model")].toString(), QStringLiteral("0x0C01"));
        QCOMPARE(c04[QStringLiteral("camera")].toInt(), 4);
        QCOMPARE(c04[QStringLiteral("settings")].toObject(),
                 QJsonDocument::fromJson(R"({"display_setting": "off", "display_upside_down": "no",
                     "flash_intensity": 90, "marker_max_number": 300, "marker_max_size": 50, "marker_min_size": 2,
                     "mode": "m03", "sensor_exposure": 1.8, "static_reflex_skip": "no", "sync_group": "d01 ch03"})")
                     .object());
    }

    void diffShowsEveryChange()
    {
        QCOMPARE(tool({"save", "-o", file("a.json")}), 0);
        set({"camera flash_intensity c01 70", "camera sensor_exposure c02 0.7", "camera mode c03 m01"});
        const QString changes = QStringLiteral("camera 4711 (0x0901, c01):\n"
                                               "  flash_intensity: 60 -> 70\n"
                                               "camera 2318 (0x0402, c02):\n"
                                               "  sensor_exposure: auto -> 0.7\n"
                                               "camera 5933 (0x0A01, c03):\n"
                                               "  mode: m02 -> m01\n"
                                               "  sensor_exposure: 2.5 -> 1\n");
        QCOMPARE(tool({"diff", file("a.json")}), 1);
        QCOMPARE(m_out, changes);
        QCOMPARE(tool({"save", "-o", file("b.json")}), 0);
        QCOMPARE(tool({"diff", file("a.json"), file("b.json")}), 1);
        QCOMPARE(m_out, changes);
        QCOMPARE(tool({"diff", file("b.json"), "live"}), 0);
        QCOMPARE(m_out, QString());

        // Another protocol, a camera gone, one moved to another port with a change.
        edit("b.json", [](QJsonObject& root) {
            root[QStringLiteral("protocol_version")] = QStringLiteral("1.28.0");
            QJsonObject cameras = root[QStringLiteral("cameras")].toObject();
            cameras.remove(QStringLiteral("4711"));
            QJsonObject moved = cameras[QStringLiteral("7002")].toObject();
            moved[QStringLiteral("camera")] = 5;
            QJsonObject settings = moved[QStringLiteral("settings")].toObject();
            settings.remove(QStringLiteral("mode"));
            moved[QStringLiteral("settings")] = settings;
            cameras[QStringLiteral("7002")] = moved;
            root[QStringLiteral("cameras")] = cameras;
        });
        QCOMPARE(tool({"diff", file("a.json"), file("b.json")}), 1);
        QCOMPARE(m_out, QStringLiteral("protocol_version: 1.27.0 -> 1.28.0\n"
                                       "camera 4711 (0x0901, c01): only in %1\n"
                                       "camera 2318 (0x0402, c02):\n"
                                       "  sensor_exposure: auto -> 0.7\n"
                                       "camera 5933 (0x0A01, c03):\n"
                                       "  mode: m02 -> m01\n"
                                       "  sensor_exposure: 2.5 -> 1\n"
                                       "camera 7002 (0x0C01, c04 -> c05):\n"
                                       "  mode: m03 -> (absent)\n").arg(file("a.json")));
        QCOMPARE(tool({"diff", file("b.json"), "--json"}), 1);
        QCOMPARE(QJsonDocument::fromJson(m_out.toUtf8()).object(), QJsonDocument::fromJson(R"({
            "differ": true, "old": ")" + file("b.json").toUtf8() + R"(", "new": "the controller",
            "system": [ { "field": "protocol_version", "old": "1.28.0", "new": "1.27.0" } ],
            "cameras": [
                { "serial": "7002", "model": "0x0C01", "old_camera": 5, "new_camera": 4,
                  "settings": [ { "setting": "mode", "old": null, "new": "m03" } ] },
                { "serial": "4711", "model": "0x0901", "old_camera": null, "new_camera": 1, "settings": [] } ]
        })").object());
    }

    void restoreWritesInTheDialogsOrder_data()
    {
        QTest::addColumn<QStringList>("before");
        QTest::addColumn<QStringList>("after");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("maximum shrunk below the minimum")
            << QStringList{"camera marker_max_size c02 10", "camera marker_min_size c02 5"}
            << QStringList{"camera marker_max_size c02 30", "camera marker_min_size c02 25"}
            << QStringList{"quarvo2 set camera marker_min_size c02 5", "quarvo2 set camera marker_max_size c02 10"};
        QTest::newRow("minimum grown above the maximum")
            << QStringList{"camera marker_max_size c01 50", "camera marker_min_size c01 45"}
            << QStringList{"camera marker_min_size c01 2", "camera marker_max_size c01 10"}
            << QStringList{"quarvo2 set camera marker_max_size c01 50", "quarvo2 set camera marker_min_size c01 45"};
        QTest::newRow("exposure only the saved mode allows")
            << QStringList() << QStringList{"camera mode c03 m01"}
            << QStringList{"quarvo2 set camera mode c03 m02", "quarvo2 set camera sensor_exposure c03 2.5"};
        QTest::newRow("exposure follows a mode")
            << QStringList() << QStringList{"camera mode c01 m03"}
            << QStringList{"quarvo2 set camera mode c01 m01", "quarvo2 set camera sensor_exposure c01 0.6"};
    }

    void restoreWritesInTheDialogsOrder()
    {
        QFETCH(QStringList, before);
        QFETCH(QStringList, after);
        QFETCH(QStringList, expected);
        set(before);
        QCOMPARE(tool({"save", "-o", file("s.json")}), 0);
        const QStringList saved = state();
        set(after);
        m_controller.clearLog();
        QCOMPARE(tool({"restore", "--dry-run", file("s.json")}), 0);
        QCOMPARE(m_out, expected.join(QLatin1Char('\n')) + QStringLiteral("\n2 commands would be sent\n"));
        QCOMPARE(writes(), QStringList());
        QCOMPARE(tool({"restore", file("s.json")}), 0);
        QCOMPARE(writes(), expected);
        QCOMPARE(state(), saved);
    }

    void restoreReportsWhatDidNotTake_data()
    {
        QTest::addColumn<FaultRule>("rule");
        QTest::addColumn<QStringList>("changes");
        QTest::addColumn<QStringList>("report");
        QTest::addColumn<int>("code");
        QTest::newRow("refused")
            << fault("quarvo2 set camera flash_intensity c04 *", FaultRule::Fail, "camera busy")
            << QStringList{"camera flash_intensity c04 20", "camera sensor_gain c01 3"}
            << QStringList{"c01 4711 sensor_gain: 3 -> 1.5",
                           "c04 7002 flash_intensity: refused: quarvo2 err 7 \"camera busy\"",
                           "restored 1 of 2 settings, 1 not restored"}
            << 1;
        // A controller that confirms a write it does not carry out.
        QTest::newRow("reads back differently")
            << fault("quarvo2 set camera sensor_gain c01 1.5", FaultRule::Reply, "quarvo2 set camera sensor_gain c01 1.5")
            << QStringList{"camera sensor_gain c01 3"}
            << QStringList{"c01 4711 sensor_gain: 3 -> 1.5", "c01 4711 sensor_gain: reads back 3, not 1.5",
                           "restored 0 of 1 settings, 1 not restored"}
            << 1;
        QTest::newRow("configuration locked")
            << fault("quarvo2 get config is_changeable", FaultRule::Reply, "quarvo2 set config is_changeable no")
            << QStringList{"camera sensor_gain c01 3"}
            << QStringList{"the controller's configuration is locked; nothing was written"}
            << 1;
        QTest::newRow("connection lost")
            << fault("quarvo2 set camera sync_group c04 *", FaultRule::Drop)
            << QStringList{"camera sensor_gain c01 3", "camera sync_group c04 d01 ch05", "camera flash_intensity c04 20"}
            << QStringList{"c01 4711 sensor_gain: 3 -> 1.5",
                           "connection lost at c04 7002 sync_group: quarvo2 set camera sync_group c04 d01 ch03: "
                           "connection dropped by the controller",
                           "1 of 3 settings written before the connection was lost; restore again to complete the rest"}
            << 3;
    }

    void restoreReportsWhatDidNotTake()
    {
        QFETCH(FaultRule, rule);
        QFETCH(QStringList, changes);
        QFETCH(QStringList, report);
        QFETCH(int, code);
        QCOMPARE(tool({"save", "-o", file("s.json")}), 0);
        const QStringList saved = state();
        set(changes);
        m_controller.addFault(rule);
        QCOMPARE(tool({"restore", file("s.json")}), code);
        QCOMPARE(m_out, report.join(QLatin1Char('\n')) + QLatin1Char('\n'));
        QCOMPARE(m_err, QString());
        // The fault is spent: a second run completes the rest.
        QCOMPARE(tool({"restore", file("s.json")}), 0);
        QCOMPARE(state(), saved);
    }

    void oldProtocolNeitherSavesNorWritesWhatItLacks()
    {
        QVERIFY(m_controller.loadBuiltInScenario(QStringLiteral("legacy")));
        QCOMPARE(tool({"save", "-o", file("old.json")}), 0);
        QCOMPARE(camera("old.json", "2107")[QStringLiteral("settings")].toObject().keys(),
                 QStringList({"display_upside_down", "flash_intensity", "marker_max_number", "marker_max_size",
                              "marker_min_size", "marker_mode", "static_reflex_skip", "sync_group"}));
        // A hand-edited file asks for what protocol 1.14 does not have, on a camera that is not there too.
        edit("old.json", [](QJsonObject& root) {
            QJsonObject cameras = root[QStringLiteral("cameras")].toObject();
            QJsonObject first = cameras[QStringLiteral("1022")].toObject();
            QJsonObject settings = first[QStringLiteral("settings")].toObject();
            settings[QStringLiteral("sensor_gain")] = 2;
            settings[QStringLiteral("mode")] = QStringLiteral("m02");
            first[QStringLiteral("settings")] = settings;
            cameras[QStringLiteral("1022")] = first;
            cameras[QStringLiteral("9999")] = QJsonObject{{"camera", 4}, {"model", "0x0301"}, {"settings", settings}};
            root[QStringLiteral("cameras")] = cameras;
        });
        QCOMPARE(tool({"restore", file("old.json")}), 1);
        QCOMPARE(m_out, QStringLiteral("c01 1022 mode: the controller does not offer it; not restored\n"
                                       "c01 1022 sensor_gain: the controller does not offer it; not restored\n"
                                       "9999 (0x0301, c04 in the snapshot): not on the controller; not restored\n"
                                       "nothing to write, 3 not restored\n"));
        for (const QByteArray& request : m_controller.requests()) {
            for (const char* newer : {"camera mode ", "number_of_modes", "display_intensity", "display_setting",
                                      "ring_intensity", "threshold", "gain", "exposure"})
                QVERIFY2(!request.contains(newer), request.constData());
        }
    }

    void refusesBadInput_data()
    {
        QTest::addColumn<QString>("scenario");
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("message");
        const QByteArray head = "{\n  \"format\": \"quarvo2-snapshot\", \"version\": 1,\n"
                                "  \"system_model\": \"QUARVO\", \"protocol_version\": \"1.27.0\",\n"
                                "  \"cameras\": { \"4711\": { \"camera\": 1, \"model\": \"0x0901\", \"settings\": {\n";
        QTest::newRow("not JSON") << "default" << head + "    flash_intensity: 60 } } }\n}\n"
                                  << QStringList{"restore", "FILE"} << "FILE:5: not a camera settings snapshot: unterminated object";
        QTest::newRow("no snapshot") << "default" << QByteArray("{\n  \"name\": \"default\"\n}\n")
                                     << QStringList{"diff", "FILE"}
                                     << "FILE:1: format: not a camera settings snapshot (\"format\" is not \"quarvo2-snapshot\")";
        QTest::newRow("unknown setting") << "default" << head + "    \"flash\": 60 } } }\n}\n"
                                         << QStringList{"restore", "FILE"}
                                         << "FILE:5: cameras/4711/settings/flash: unknown setting";
        QTest::newRow("bad value") << "default" << head + "    \"mode\": \"m01\",\n    \"flash_intensity\": 60.5 } } }\n}\n"
                                   << QStringList{"outliers", "FILE"}
                                   << "FILE:6: cameras/4711/settings/flash_intensity: expected a whole number";
        QTest::newRow("setting twice") << "default" << head + "    \"flash_intensity\": 60,\n    \"flash_intensity\": 50 } } }\n}\n"
                                       << QStringList{"restore", "FILE"}
                                       << "FILE:6: cameras/4711/settings/flash_intensity: given twice, first on line 5";
        QTest::newRow("another system model") << "briskbox" << head + "    \"flash_intensity\": 60 } } }\n}\n"
                                              << QStringList{"restore", "FILE"}
                                              << "FILE is a snapshot of a QUARVO system, the controller is a BRISKBOX "
                                                 "system; nothing was written";
        QTest::newRow("usage") << "default" << QByteArray() << QStringList{"restore"}
                               << "bad use of \"restore\"; see --help";
        QTest::newRow("options") << "default" << QByteArray() << QStringList{"save", "--dry-run"}
                                 << "-o belongs to save, --json to diff, --dry-run to restore";
    }

    void refusesBadInput()
    {
        QFETCH(QString, scenario);
        QFETCH(QByteArray, content);
        QFETCH(QStringList, arguments);
        QFETCH(QString, message);
        QVERIFY(m_controller.loadBuiltInScenario(scenario));
        QFile input(file("input.json"));
        QVERIFY(input.open(QIODevice::WriteOnly));
        input.write(content);
        input.close();
        arguments.replaceInStrings(QStringLiteral("FILE"), input.fileName());
        QCOMPARE(tool(arguments), 2);
        QCOMPARE(m_err, QStringLiteral("quarvo2-snapshot: %1\n").arg(message.replace(QStringLiteral("FILE"), input.fileName())));
        QCOMPARE(m_out, QString());
        QCOMPARE(writes(), QStringList());
    }

    void outliersNameTheOddCameraOut()
    {
        QCOMPARE(tool({"outliers"}), 0);
        QCOMPARE(m_out, QString());
        QString error;
        QVERIFY2(m_controller.loadScenarioJson(kOutlierScenario, &error), qPrintable(error));
        // Cameras 201 and 202 are two of a model that disagree: no value most of them have.
        const QString table = QStringLiteral("model   setting          camera   value  most cameras\n"
                                             "0x0901  sensor_exposure  c03 103  0.9    0.6 (3 of 4)\n");
        QCOMPARE(tool({"outliers"}), 1);
        QCOMPARE(m_out, table);
        QCOMPARE(tool({"save", "-o", file("rig.json")}), 0);
        QCOMPARE(tool({"outliers", file("rig.json")}), 1);
        QCOMPARE(m_out, table);
    }
};

QTEST_GUILESS_MAIN(tst_Snapshot)
#include "tst_snapshot.moc"
