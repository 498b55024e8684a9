// Scenarios: what the built-in systems hold, that every camera in them answers
// every read a camera page makes at the scenario's protocol, and that a broken
// scenario file is reported with its line and leaves the controller as it was.
#include "IOManager.h"
#include "inprocesslink.h"
#include "simulatedcontroller.h"

#include <QTemporaryDir>
#include <QtTest>

namespace {

// Reads the system as the camera settings dialog and its camera pages do at
// loading, following the same gates and capability answers, and notes every read
// that the controller refuses.
class ModuleReads
{
public:
    ModuleReads(IOManager* channel, const VersionInfo& protocol) : m_channel(channel), m_protocol(protocol) {}

    QStringList refused;

    bool gate(int minor) const { return m_protocol >= VersionInfo(1, minor, -1); }

    QByteArray text(const QByteArray& path)
    {
        char value[IOManager::ValueBufferSize];
        if (m_channel->getString(value, "%s", path.constData()) != 0) {
            refused << QString::fromLatin1(path);
            return QByteArray();
        }
        return QByteArray(value);
    }
    bool yes(const QByteArray& path) { return text(path) == "yes"; }
    int number(const QByteArray& path) { return text(path).toInt(); }
    QByteArray word5(const QByteArray& path)
    {
        char line[IOManager::LineBufferSize];
        m_channel->sendCommand(line, "quarvo2 get %s", path.constData());
        if (QByteArray(line).startsWith("quarvo2 err"))
            refused << QString::fromLatin1(path);
        return QByteArray(line).split(' ').value(5);
    }

    void readSystem()
    {
        const int cameras = number("camera number_of_cameras");
        if (gate(9))
            text("config is_changeable");
        for (int c = 1; c <= cameras; ++c)
            readCamera("c" + QByteArray::number(c).rightJustified(2, '0'));
        if (!gate(18))
            return;
        const int missing = number("tracking number_of_missing_cameras");
        for (int i = 1; i <= missing; ++i) {
            const QByteArray modelSerial = text("tracking missing_camera c" + QByteArray::number(i).rightJustified(2, '0'));
            text("camera model_desc " + modelSerial.split(' ').value(0));
            if (gate(23))
                text("camera serial_desc " + modelSerial);
        }
    }

    void readCamera(const QByteArray& c)
    {
        text("camera max_flash_intensity " + c);
        if (gate(27)) {
            text("camera max_max_flash_intensity " + c);
            text("camera is_flash_low_power " + c);
        }
        text("camera flash_intensity " + c);
        char line[IOManager::LineBufferSize];
        m_channel->sendCommand(line, "quarvo2 get camera camera %s", c.constData());
        const QList<QByteArray> identity = QByteArray(line).split(' ').mid(5);
        text("camera version " + c);
        text("camera focal_length " + c);
        const QByteArray model = identity.value(0).toLower();
        if ((model.startsWith("0x0b") || model.startsWith("0x0d")) && gate(23))
            text("camera serial_desc " + identity.join(' '));
        word5("camera model_desc " + identity.value(0));
        word5("camera modulated_flash " + c);
        if (word5("camera has_static_reflex_skip " + c) == "yes")
            word5("camera static_reflex_skip " + c);
        if (word5("camera has_dynamic_reflex_skip " + c) == "yes")
            word5("camera dynamic_reflex_skip " + c);
        word5("camera display_upside_down " + c);
        if (gate(6) && yes("camera has_sync_group " + c)) {
            if (yes("synccard available"))
                text("synccard number_of_channels d01");
            text("camera sync_group " + c);
        }
        word5("camera has_modulated_flash " + c);
        const bool accurate = yes("camera has_marker_mode_accurate " + c);
        if (yes("camera has_marker_mode_fast " + c) || accurate)
            text("camera marker_mode " + c);
        text("camera marker_max_number " + c);
        if (gate(11)) {
            text("camera sensor_pixel_vertical " + c);
            text("camera sensor_pixel_horizontal " + c);
        }
        if (gate(10))
            text("camera limit marker_max_size " + c);
        text("camera marker_max_size " + c);
        text("camera marker_min_size " + c);
        if (gate(7) && number("cascade number_of_connected_slaves") > 0) {
            const QByteArray slave = text("camera cascade_slave " + c);
            if (slave != "none") {
                text("cascade connected_slave_controller " + slave);
                text("system hostname_slave " + slave);
                text("system model_slave " + slave);
            }
        }
        if (gate(15))
            readDisplayAndModes(c);
        if (gate(27) && yes("camera has_display_ring_intensity " + c))
            text("camera display_ring_intensity " + c);
        if (gate(18))
            text("tracking has_room " + c);
        if (gate(24)) {
            if (yes("camera has_marker_threshold " + c))
                text("camera marker_threshold " + c);
            if (yes("camera has_sensor_exposure " + c)) {
                text("camera max_sensor_exposure " + c);
                text("camera sensor_exposure " + c);
            }
        }
        if (gate(27) && yes("camera has_sensor_gain " + c)) {
            text("camera min_max_sensor_gain " + c);
            text("camera sensor_gain " + c);
        }
    }

    void readDisplayAndModes(const QByteArray& c)
    {
        const int modes = number("camera number_of_modes " + c);
        for (int m = 1; m <= modes; ++m)
            text("camera mode_desc " + c + " m" + QByteArray::number(m).rightJustified(2, '0'));
        text("camera mode " + c);
        if (yes("camera has_display_intensity " + c))
            text("camera display_intensity " + c);
        const int settings = number("camera number_of_display_settings");
        int supported = 0;
        for (int t = 1; t <= settings; ++t) {
            const QByteArray id = text("camera display_setting_id t" + QByteArray::number(t).rightJustified(2, '0'));
            if (yes("camera has_display_setting " + c + ' ' + id)) {
                text("camera display_setting_desc " + id);
                ++supported;
            }
        }
        if (supported > 1)
            text("camera display_setting " + c);
    }

private:
    IOManager* m_channel;
    VersionInfo m_protocol;
};

} // namespace

class tst_Scenarios : public QObject
{
    Q_OBJECT

private slots:
    void everyModuleReadIsAnswered_data()
    {
        QTest::addColumn<QString>("scenario");
        QTest::addColumn<int>("minimumReads");
        QTest::newRow("default") << QStringLiteral("default") << 200;
        QTest::newRow("briskbox") << QStringLiteral("briskbox") << 80;
        QTest::newRow("legacy") << QStringLiteral("legacy") << 50;
    }

    void everyModuleReadIsAnswered()
    {
        QFETCH(QString, scenario);
        QFETCH(int, minimumReads);
        SimulatedController controller;
        QVERIFY(controller.loadBuiltInScenario(scenario));
        QCOMPARE(controller.scenarioName(), scenario);
        InProcessLink link(&controller);
        IOManager channel(&link);
        ModuleReads reads(&channel, controller.protocolVersion());
        reads.readSystem();
        QVERIFY2(reads.refused.isEmpty(), qPrintable(reads.refused.join(QLatin1Char('\n'))));
        QVERIFY2(controller.log().size() >= minimumReads, qPrintable(QString::number(controller.log().size())));
    }

    void defaultSystem()
    {
        SimulatedController controller;
        QCOMPARE(controller.protocolVersion(), VersionInfo(1, 27, 0));
        QCOMPARE(controller.peek("camera number_of_cameras"), QByteArray("4"));
        QSet<QByteArray> models;
        QList<int> modeCounts;
        for (int c = 1; c <= 4; ++c) {
            const QByteArray camera = "c0" + QByteArray::number(c);
            models << controller.peek("camera camera " + camera).split(' ').at(0);
            modeCounts << controller.peek("camera number_of_modes " + camera).toInt();
        }
        QCOMPARE(models.size(), 4);
        QVERIFY(modeCounts.contains(1));
        QCOMPARE(int(std::count_if(modeCounts.begin(), modeCounts.end(), [](int n) { return n > 1; })), 3);
        QCOMPARE(controller.peek("tracking number_of_missing_cameras"), QByteArray("1"));
        QCOMPARE(controller.peek("synccard number_of_channels d01"), QByteArray("8"));
        QStringList ids;
        for (int t = 1; t <= controller.peek("camera number_of_display_settings").toInt(); ++t)
            ids << QString::fromLatin1(controller.peek("camera display_setting_id t0" + QByteArray::number(t)));
        for (const char* id : {"camera_id", "sync_group", "off"})
            QVERIFY2(ids.contains(QLatin1String(id)), id);
    }

    void briskboxSystem()
    {
        SimulatedController controller;
        QVERIFY(controller.loadBuiltInScenario(QStringLiteral("briskbox")));
        QCOMPARE(controller.systemModel(), QStringLiteral("BRISKBOX"));
        QCOMPARE(controller.backendVersions().atcModel(), QStringLiteral("BRISKBOX"));
        QCOMPARE(controller.peek("camera number_of_cameras"), QByteArray("2"));
        QByteArray sides;
        for (const QByteArray camera : {"c01", "c02"}) {
            const QByteArray identity = controller.peek("camera camera " + camera);
            QVERIFY(identity.startsWith("0x0B01 "));
            sides += controller.peek("camera serial_desc " + identity).right(1);
        }
        QCOMPARE(sides, QByteArray("LR"));
    }

    void legacySystem()
    {
        SimulatedController controller;
        QVERIFY(controller.loadBuiltInScenario(QStringLiteral("legacy")));
        QCOMPARE(controller.protocolVersion(), VersionInfo(1, 14, 0));
        QCOMPARE(controller.handle("quarvo2 get camera number_of_modes c01").line,
                 QByteArray("quarvo2 err 2 \"not available in protocol 1.14.0\""));
        QCOMPARE(controller.handle("quarvo2 get camera sync_group c03").line,
                 QByteArray("quarvo2 set camera sync_group c03 d01 ch02"));
    }

    void errorsWithLines_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<QString>("error");
        QTest::newRow("not an object") << QByteArray("[1, 2]") << QStringLiteral("<json>:1: a scenario is a JSON object");
        QTest::newRow("unknown key") << QByteArray("{\n  \"name\": \"x\",\n  \"cameras\": [\n    { \"model\": \"0x0901\",\n      \"colour\": \"red\" }\n  ]\n}")
                                     << QStringLiteral("<json>:5: cameras[0]: unknown key \"colour\"");
        QTest::newRow("flash above maximum") << QByteArray("{\n  \"cameras\": [\n    { \"serial\": \"1\" },\n    { \"serial\": \"2\",\n      \"max_flash_intensity\": 50,\n      \"flash_intensity\": 60 }\n  ]\n}")
                                             << QStringLiteral("<json>:6: cameras[1].flash_intensity: above max_flash_intensity");
        QTest::newRow("version") << QByteArray("{\n  \"protocol_version\": \"one\"\n}")
                                 << QStringLiteral("<json>:2: protocol_version: expected a version such as 1.27.0");
        QTest::newRow("channel the card lacks") << QByteArray("{\n  \"synccard\": { \"number_of_channels\": 2 },\n  \"cameras\": [ { \"has_sync_group\": true, \"sync_group\": \"d01 ch03\" } ]\n}")
                                                << QStringLiteral("<json>:3: cameras[0].sync_group: the sync card has no such channel");
        QTest::newRow("fault action") << QByteArray("{\n  \"faults\": [\n    { \"match\": \"*\", \"action\": \"explode\" }\n  ]\n}")
                                      << QStringLiteral("<json>:3: faults[0].action: expected fail, reply, late or drop");
        QTest::newRow("type") << QByteArray("{\n  \"cameras\": [\n    { \"flash_intensity\": \"high\" }\n  ]\n}")
                              << QStringLiteral("<json>:3: cameras[0].flash_intensity: expected a whole number");
        QTest::newRow("unknown mode") << QByteArray("{\n  \"cameras\": [\n    {\n      \"mode\": \"m05\"\n    }\n  ]\n}")
                                      << QStringLiteral("<json>:4: cameras[0].mode: unknown mode \"m05\"");
        QTest::newRow("unknown display setting") << QByteArray("{\n  \"display_settings\": [ { \"id\": \"camera_id\", \"description\": \"Camera\" } ],\n  \"cameras\": [ {\n    \"display_settings\": [\"camera_id\", \"blink\"] } ]\n}")
                                                 << QStringLiteral("<json>:4: cameras[0].display_settings: unknown display setting \"blink\"");
        QTest::newRow("setting pair") << QByteArray("{\n  \"cameras\": [ {\n    \"sensor_gain\": { \"value\": 2,\n      \"deafult\": 1 } } ]\n}")
                                      << QStringLiteral("<json>:4: cameras[0].sensor_gain: unknown key \"deafult\"");
        // Texts go into reply lines: a line break would answer one request with two lines.
        QTest::newRow("line break in a word") << QByteArray("{\n  \"cameras\": [ {\n    \"version\": \"1.0\\nquarvo2\" } ]\n}")
                                              << QStringLiteral("<json>:3: cameras[0].version: holds a control character (U+000A)");
        QTest::newRow("control character in a text") << QByteArray("{\n  \"name\": \"bell\\u0007\"\n}")
                                                     << QStringLiteral("<json>:2: name: holds a control character (U+0007)");
        QTest::newRow("control character in a model id") << QByteArray("{\n  \"models\": {\n    \"0x\\u00010901\": \"LUMACAM5\" }\n}")
                                                         << QStringLiteral("<json>:3: models.\"0x\\u00010901\": holds a control character (U+0001)");
        QTest::newRow("line break in a fault's error text")
            << QByteArray("{\n  \"faults\": [ { \"match\": \"*\", \"action\": \"fail\",\n    \"text\": \"busy\\r\\n\" } ]\n}")
            << QStringLiteral("<json>:3: faults[0].text: holds a control character (U+000D)");
        QTest::newRow("duplicate key") << QByteArray("{\n  \"cameras\": [ {\n    \"model\": \"0x0901\",\n    \"model\": \"0x0301\" } ]\n}")
                                       << QStringLiteral("<json>:4: cameras[0]: key \"model\" given twice, first on line 3");
        QTest::newRow("duplicate key, escaped") << QByteArray("{\n  \"name\": \"a\",\n  \"n\\u0061me\": \"b\"\n}")
                                                << QStringLiteral("<json>:3: key \"name\" given twice, first on line 2");
        QTest::newRow("escaped key on its own line") << QByteArray("{\n  \"cameras\": [ {\n    \"fl\\u0061sh_intensity\": \"high\" } ]\n}")
                                                     << QStringLiteral("<json>:3: cameras[0].flash_intensity: expected a whole number");
        QTest::newRow("key on another line than its value") << QByteArray("{\n  \"cameras\": [ {\n    \"serial\":\n      7 } ]\n}")
                                                            << QStringLiteral("<json>:3: cameras[0].serial: expected a single word");
        QTest::newRow("unknown key with a line break and a NUL") << QByteArray("{\n  \"cameras\": [ {\n    \"co\\nlo\\u0000ur\": 1 } ]\n}")
                                                                 << QStringLiteral("<json>:3: cameras[0]: unknown key \"co\\nlo\\u0000ur\"");
        QTest::newRow("unknown key of a megabyte") << "{\n  \"" + QByteArray(1000000, 'k') + "\": 1\n}"
                                                   << "<json>:2: unknown key \"" + QString(40, QLatin1Char('k')) + "\"... (1000000 characters)";
    }

    void errorsWithLines()
    {
        QFETCH(QByteArray, json);
        QFETCH(QString, error);
        SimulatedController controller;
        QString reported;
        QVERIFY(!controller.loadScenarioJson(json, &reported));
        QCOMPARE(reported, error);
        // Nothing of a broken scenario is taken over.
        QCOMPARE(controller.scenarioName(), QStringLiteral("default"));
        QCOMPARE(controller.peek("camera number_of_cameras"), QByteArray("4"));
    }

    void syntaxErrorLine()
    {
        SimulatedController controller;
        QString reported;
        QVERIFY(!controller.loadScenarioJson("{\n  \"name\": \"x\",\n  \"cameras\": [\n    { \"model\": \"0x0901\" \"serial\": \"1\" }\n  ]\n}", &reported));
        QVERIFY2(reported.startsWith(QStringLiteral("<json>:4: ")), qPrintable(reported));
        QVERIFY(reported.size() > 10);
    }

    void scenarioFiles()
    {
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        // A placeholder in the file name stays as it is in the message.
        const QString path = dir.filePath(QStringLiteral("broken%2.json"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("{\n  \"name\": \"broken\",\n  \"is_changeable\": \"maybe\"\n}\n");
        file.close();
        SimulatedController controller;
        QString reported;
        QVERIFY(!controller.loadScenarioFile(path, &reported));
        QCOMPARE(reported, path + QStringLiteral(":3: is_changeable: expected true or false"));
        QVERIFY(!controller.loadScenarioFile(dir.filePath(QStringLiteral("absent.json")), &reported));
        QVERIFY2(reported.startsWith(dir.filePath(QStringLiteral("absent.json:0: "))), qPrintable(reported));

        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(R"({ "name": "locked", "protocol_version": "1.9.2", "is_changeable": false,
                        "cameras": [ { "model": "0x0301", "serial": "77" } ] })");
        file.close();
        QVERIFY2(controller.loadScenarioFile(path, &reported), qPrintable(reported));
        QCOMPARE(controller.scenarioName(), QStringLiteral("locked"));
        QCOMPARE(controller.handle("quarvo2 get config is_changeable").line, QByteArray("quarvo2 set config is_changeable no"));
        QCOMPARE(controller.handle("quarvo2 get camera camera c01").line, QByteArray("quarvo2 set camera camera c01 0x0301 77"));
        QVERIFY(!controller.loadBuiltInScenario(QStringLiteral("nonsense"), &reported));
        QCOMPARE(reported, QStringLiteral("no built-in scenario nonsense"));
    }
};

QTEST_GUILESS_MAIN(tst_Scenarios)
#include "tst_scenarios.moc"
