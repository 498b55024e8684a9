// The simulated controller as a frontend meets it: requests in, reply lines out,
// state changed as a real controller changes it, every request in the command log.
#include "simulatedcontroller.h"

#include <QSignalSpy>
#include <QtTest>

class tst_SimulatedController : public QObject
{
    Q_OBJECT

private:
    QByteArray ask(const QByteArray& request) { return m_controller->handle(request).line; }

    QScopedPointer<SimulatedController> m_controller;

private slots:
    void init()
    {
        m_controller.reset(new SimulatedController);
        QCOMPARE(m_controller->scenarioName(), QStringLiteral("default"));
    }

    void systemQueries()
    {
        QCOMPARE(ask("quarvo2 get system protocol_version"), QByteArray("quarvo2 set system protocol_version 1.27.0"));
        QCOMPARE(ask("quarvo2 get system model"), QByteArray("quarvo2 set system model QUARVO"));
        QCOMPARE(ask("quarvo2 get system version"), QByteArray("quarvo2 set system version 2.9.3"));
        m_controller->setProtocolVersion(VersionInfo(1, 23, 4));
        m_controller->setSystemModel(QStringLiteral("BRISKBOX"));
        QCOMPARE(ask("quarvo2 get system protocol_version"), QByteArray("quarvo2 set system protocol_version 1.23.4"));
        QCOMPARE(ask("quarvo2 get system model"), QByteArray("quarvo2 set system model BRISKBOX"));
        const BackendVersions versions = m_controller->backendVersions();
        QCOMPARE(versions.protocol(), VersionInfo(1, 23, 4));
        QCOMPARE(versions.systemPt(), VersionInfo(2, 9, 3));
        QCOMPARE(versions.systemCt(), VersionInfo(2, 9, 1));
        QCOMPARE(versions.atcModel(), QStringLiteral("BRISKBOX"));
    }

    void identityReplies_data()
    {
        QTest::addColumn<QByteArray>("request");
        QTest::addColumn<QByteArray>("reply");
        QTest::newRow("identity") << QByteArray("quarvo2 get camera camera c01")
                                  << QByteArray("quarvo2 set camera camera c01 0x0901 4711");
        QTest::newRow("model word any case") << QByteArray("quarvo2 get camera model_desc 0x0a01")
                                             << QByteArray("quarvo2 set camera model_desc 0x0a01 LUMACAM5C");
        QTest::newRow("mode with blanks quoted") << QByteArray("quarvo2 get camera mode_desc c01 m02")
                                                 << QByteArray("quarvo2 set camera mode_desc c01 m02 \"High speed 300 Hz\"");
        QTest::newRow("display setting") << QByteArray("quarvo2 get camera display_setting_id t03")
                                         << QByteArray("quarvo2 set camera display_setting_id t03 marker_count");
        QTest::newRow("missing camera") << QByteArray("quarvo2 get tracking missing_camera c01")
                                        << QByteArray("quarvo2 set tracking missing_camera c01 0x0802 5120");
        QTest::newRow("gain range") << QByteArray("quarvo2 get camera min_max_sensor_gain c01")
                                    << QByteArray("quarvo2 set camera min_max_sensor_gain c01 1 4");
        QTest::newRow("sync group") << QByteArray("quarvo2 get camera sync_group c04")
                                    << QByteArray("quarvo2 set camera sync_group c04 d01 ch03");
        QTest::newRow("no sync group") << QByteArray("quarvo2 get camera sync_group c01")
                                       << QByteArray("quarvo2 set camera sync_group c01 d01 ch01");
        QTest::newRow("slave controller") << QByteArray("quarvo2 get cascade connected_slave_controller s01")
                                          << QByteArray("quarvo2 set cascade connected_slave_controller s01 s01 ATC2");
        QTest::newRow("auto exposure") << QByteArray("quarvo2 get camera sensor_exposure c02")
                                       << QByteArray("quarvo2 set camera sensor_exposure c02 auto");
        QTest::newRow("feature off when lacking") << QByteArray("quarvo2 get camera modulated_flash c02")
                                                  << QByteArray("quarvo2 set camera modulated_flash c02 no");
    }

    void identityReplies()
    {
        QFETCH(QByteArray, request);
        QFETCH(QByteArray, reply);
        QCOMPARE(ask(request), reply);
    }

    // Each command exists from a protocol version on; an older controller does not know it.
    void protocolGates_data()
    {
        QTest::addColumn<QByteArray>("request");
        QTest::addColumn<int>("minor");
        QTest::newRow("flash, always") << QByteArray("quarvo2 get camera flash_intensity c01") << 0;
        QTest::newRow("orientation, always") << QByteArray("quarvo2 get camera display_upside_down c01") << 0;
        QTest::newRow("sync group") << QByteArray("quarvo2 get camera has_sync_group c01") << 6;
        QTest::newRow("sync card") << QByteArray("quarvo2 get synccard number_of_channels d01") << 6;
        QTest::newRow("cascade slave") << QByteArray("quarvo2 get camera cascade_slave c01") << 7;
        QTest::newRow("slave model") << QByteArray("quarvo2 get system model_slave s01") << 7;
        QTest::newRow("lock") << QByteArray("quarvo2 get config is_changeable") << 9;
        QTest::newRow("size limit") << QByteArray("quarvo2 get camera limit marker_max_size c01") << 10;
        QTest::newRow("chip size") << QByteArray("quarvo2 get camera sensor_pixel_vertical c01") << 11;
        QTest::newRow("modes") << QByteArray("quarvo2 get camera number_of_modes c01") << 15;
        QTest::newRow("display mark") << QByteArray("quarvo2 set camera display_mark c01 yes") << 15;
        QTest::newRow("display setting") << QByteArray("quarvo2 get camera display_setting c01") << 15;
        QTest::newRow("display intensity") << QByteArray("quarvo2 get camera has_display_intensity c01") << 15;
        QTest::newRow("missing cameras") << QByteArray("quarvo2 get tracking number_of_missing_cameras") << 18;
        QTest::newRow("room") << QByteArray("quarvo2 get tracking has_room c01") << 18;
        QTest::newRow("serial desc") << QByteArray("quarvo2 get camera serial_desc 0x0901 4711") << 23;
        QTest::newRow("threshold") << QByteArray("quarvo2 get camera marker_threshold c01") << 24;
        QTest::newRow("exposure") << QByteArray("quarvo2 get camera max_sensor_exposure c01") << 24;
        QTest::newRow("gain") << QByteArray("quarvo2 get camera sensor_gain c01") << 27;
        QTest::newRow("ring") << QByteArray("quarvo2 get camera display_ring_intensity c01") << 27;
        QTest::newRow("show sync group") << QByteArray("quarvo2 set camera display_show_syncgroup all no") << 27;
        QTest::newRow("power limit") << QByteArray("quarvo2 get camera max_max_flash_intensity c01") << 27;
        QTest::newRow("low power") << QByteArray("quarvo2 get camera is_flash_low_power c01") << 27;
    }

    void protocolGates()
    {
        QFETCH(QByteArray, request);
        QFETCH(int, minor);
        if (minor > 0) {
            m_controller->setProtocolVersion(VersionInfo(1, minor - 1, 99));
            QCOMPARE(ask(request), QByteArray("quarvo2 err 2 \"not available in protocol 1.%1.99\"").replace("%1", QByteArray::number(minor - 1)));
        }
        for (const VersionInfo& version : {VersionInfo(1, minor, -1), VersionInfo(1, minor, 0), VersionInfo(2, 0, 0)}) {
            m_controller->setProtocolVersion(version);
            const QByteArray reply = ask(request);
            QVERIFY2(!reply.startsWith("quarvo2 err"), qPrintable(version.toString() + ": " + reply));
        }
    }

    void refusals_data()
    {
        QTest::addColumn<QByteArray>("request");
        QTest::addColumn<QByteArray>("reply");
        const auto row = [](const char* name, const char* request, const char* reply) {
            QTest::newRow(name) << QByteArray(request) << QByteArray(reply);
        };
        row("flash above maximum", "quarvo2 set camera flash_intensity c01 101", "quarvo2 err 3 \"flash intensity above maximum\"");
        row("flash above reduced maximum", "quarvo2 set camera flash_intensity c03 61", "quarvo2 err 3 \"flash intensity above maximum\"");
        row("negative flash", "quarvo2 set camera flash_intensity c01 -1", "quarvo2 err 3 \"flash intensity out of range\"");
        row("not a number", "quarvo2 set camera flash_intensity c01 5x", "quarvo2 err 3 \"invalid value\"");
        row("minimum above maximum", "quarvo2 set camera marker_min_size c01 40.500", "quarvo2 err 3 \"marker minimum size above maximum\"");
        row("maximum below minimum", "quarvo2 set camera marker_max_size c01 1.000", "quarvo2 err 3 \"marker maximum size below minimum\"");
        row("maximum above limit", "quarvo2 set camera marker_max_size c01 60.001", "quarvo2 err 3 \"marker size above limit\"");
        row("no markers", "quarvo2 set camera marker_max_number c01 0", "quarvo2 err 3 \"maximum number of markers out of range\"");
        row("unknown mode", "quarvo2 set camera mode c01 m04", "quarvo2 err 3 \"unknown camera mode m04\"");
        row("unknown display setting", "quarvo2 set camera display_setting c01 blink", "quarvo2 err 3 \"unknown display setting blink\"");
        row("display setting lacking", "quarvo2 set camera display_setting c02 marker_count", "quarvo2 err 5 \"display setting not supported by this camera\"");
        row("channel the card lacks", "quarvo2 set camera sync_group c01 d01 ch09", "quarvo2 err 3 \"sync card has no channel 9\"");
        row("other sync card", "quarvo2 set camera sync_group c01 d02 ch01", "quarvo2 err 3 \"invalid sync group\"");
        row("marker mode not offered", "quarvo2 set camera marker_mode c02 fast", "quarvo2 err 5 \"marker mode not offered by this camera\"");
        row("unknown marker mode", "quarvo2 set camera marker_mode c01 slow", "quarvo2 err 3 \"unknown marker mode slow\"");
        row("feature lacking", "quarvo2 set camera modulated_flash c02 yes", "quarvo2 err 5 \"not supported by this camera\"");
        row("value lacking", "quarvo2 get camera marker_threshold c04", "quarvo2 err 5 \"not supported by this camera\"");
        row("gain out of range", "quarvo2 set camera sensor_gain c01 4.500000", "quarvo2 err 3 \"sensor gain out of range\"");
        row("exposure beyond mode", "quarvo2 set camera sensor_exposure c01 0.950000", "quarvo2 err 3 \"exposure time out of range\"");
        row("display intensity", "quarvo2 set camera display_intensity c01 1.500000", "quarvo2 err 3 \"display intensity out of range\"");
        row("flag word", "quarvo2 set camera display_upside_down c01 Yes", "quarvo2 err 3 \"invalid value\"");
        row("camera beyond", "quarvo2 get camera flash_intensity c05", "quarvo2 err 4 \"no such camera c05\"");
        row("camera zero", "quarvo2 get camera flash_intensity c00", "quarvo2 err 4 \"no such camera c00\"");
        row("missing camera beyond", "quarvo2 get tracking missing_camera c02", "quarvo2 err 4 \"no such missing camera\"");
        row("no camera word", "quarvo2 get camera flash_intensity", "quarvo2 err 3 \"wrong number of arguments\"");
        row("no value", "quarvo2 set camera flash_intensity c01", "quarvo2 err 3 \"missing value\"");
        row("read-only", "quarvo2 set camera max_flash_intensity c01 50", "quarvo2 err 3 \"read-only\"");
        row("all cameras only", "quarvo2 set camera display_show_syncgroup c01 yes", "quarvo2 err 3 \"expected all\"");
        row("unknown slave", "quarvo2 get system hostname_slave s02", "quarvo2 err 3 \"unknown slave controller s02\"");
        row("unknown command", "quarvo2 get camera teleport c01", "quarvo2 err 1 \"unknown command\"");
        row("double blank", "quarvo2 get  camera camera c01", "quarvo2 err 1 \"malformed request\"");
        row("no prefix", "quarvo3 get camera camera c01", "quarvo2 err 1 \"malformed request\"");
        row("empty", "", "quarvo2 err 1 \"malformed request\"");
        row("control character", "quarvo2 set camera flash_intensity c01 50\t", "quarvo2 err 1 \"malformed request\"");
    }

    void refusals()
    {
        QFETCH(QByteArray, request);
        QFETCH(QByteArray, reply);
        const QByteArray before = m_controller->peek("camera flash_intensity c01");
        QCOMPARE(ask(request), reply);
        QCOMPARE(m_controller->peek("camera flash_intensity c01"), before);
    }

    // A set is confirmed by its echo, and a get afterwards answers the new value.
    void acceptedSets_data()
    {
        QTest::addColumn<QByteArray>("request");
        QTest::addColumn<QByteArray>("path");
        QTest::addColumn<QByteArray>("value");
        QTest::newRow("flash") << QByteArray("quarvo2 set camera flash_intensity c01 70") << QByteArray("camera flash_intensity c01") << QByteArray("70");
        QTest::newRow("flash at maximum") << QByteArray("quarvo2 set camera flash_intensity c03 60") << QByteArray("camera flash_intensity c03") << QByteArray("60");
        QTest::newRow("display fraction") << QByteArray("quarvo2 set camera display_intensity c01 0.570000") << QByteArray("camera display_intensity c01") << QByteArray("0.57");
        QTest::newRow("marker size") << QByteArray("quarvo2 set camera marker_max_size c01 23.040") << QByteArray("camera marker_max_size c01") << QByteArray("23.04");
        QTest::newRow("minimum up to maximum") << QByteArray("quarvo2 set camera marker_min_size c01 40.000") << QByteArray("camera marker_min_size c01") << QByteArray("40");
        QTest::newRow("sync channel") << QByteArray("quarvo2 set camera sync_group c01 d01 ch08") << QByteArray("camera sync_group c01") << QByteArray("d01 ch08");
        QTest::newRow("channel with three digits") << QByteArray("quarvo2 set camera sync_group c01 d01 ch004") << QByteArray("camera sync_group c01") << QByteArray("d01 ch04");
        QTest::newRow("out of sync") << QByteArray("quarvo2 set camera sync_group c01 none") << QByteArray("camera sync_group c01") << QByteArray("none");
        QTest::newRow("automatic exposure") << QByteArray("quarvo2 set camera sensor_exposure c01 auto") << QByteArray("camera sensor_exposure c01") << QByteArray("auto");
        QTest::newRow("manual exposure") << QByteArray("quarvo2 set camera sensor_exposure c02 0.750000") << QByteArray("camera sensor_exposure c02") << QByteArray("0.75");
        QTest::newRow("marker mode") << QByteArray("quarvo2 set camera marker_mode c01 fast") << QByteArray("camera marker_mode c01") << QByteArray("fast");
        QTest::newRow("display setting") << QByteArray("quarvo2 set camera display_setting c01 marker_count") << QByteArray("camera display_setting c01") << QByteArray("marker_count");
        QTest::newRow("orientation") << QByteArray("quarvo2 set camera display_upside_down c02 yes") << QByteArray("camera display_upside_down c02") << QByteArray("yes");
        QTest::newRow("reflex") << QByteArray("quarvo2 set camera dynamic_reflex_skip c01 yes") << QByteArray("camera dynamic_reflex_skip c01") << QByteArray("yes");
        QTest::newRow("all displays") << QByteArray("quarvo2 set camera display_show_syncgroup all yes") << QByteArray("camera display_show_syncgroup all") << QByteArray("yes");
    }

    void acceptedSets()
    {
        QFETCH(QByteArray, request);
        QFETCH(QByteArray, path);
        QFETCH(QByteArray, value);
        QCOMPARE(ask(request), request);
        QCOMPARE(ask("quarvo2 get " + path), "quarvo2 set " + path + ' ' + value);
    }

    void defaultsRestore_data()
    {
        QTest::addColumn<QByteArray>("change");
        QTest::addColumn<QByteArray>("path");
        QTest::addColumn<QByteArray>("defaultValue");
        QTest::newRow("flash") << QByteArray("camera flash_intensity c01 70") << QByteArray("camera flash_intensity c01") << QByteArray("50");
        QTest::newRow("threshold") << QByteArray("camera marker_threshold c01 0.300000") << QByteArray("camera marker_threshold c01") << QByteArray("0.1");
        QTest::newRow("gain") << QByteArray("camera sensor_gain c01 2.500000") << QByteArray("camera sensor_gain c01") << QByteArray("1");
        QTest::newRow("exposure leaves auto") << QByteArray("camera sensor_exposure c01 auto") << QByteArray("camera sensor_exposure c01") << QByteArray("0.4");
        QTest::newRow("exposure of the mode") << QByteArray("camera sensor_exposure c03 2.900000") << QByteArray("camera sensor_exposure c03") << QByteArray("2");
        QTest::newRow("display setting") << QByteArray("camera display_setting c02 off") << QByteArray("camera display_setting c02") << QByteArray("camera_id");
        QTest::newRow("camera mode") << QByteArray("camera mode c03 m02") << QByteArray("camera mode c03") << QByteArray("m01");
        QTest::newRow("sync group") << QByteArray("camera sync_group c04 d01 ch05") << QByteArray("camera sync_group c04") << QByteArray("d01 ch03");
        QTest::newRow("marker size") << QByteArray("camera marker_max_size c01 55.000") << QByteArray("camera marker_max_size c01") << QByteArray("40");
    }

    void defaultsRestore()
    {
        QFETCH(QByteArray, change);
        QFETCH(QByteArray, path);
        QFETCH(QByteArray, defaultValue);
        QCOMPARE(ask("quarvo2 set " + change), "quarvo2 set " + change);
        QCOMPARE(ask("quarvo2 set " + path + " default"), "quarvo2 set " + path + " default");
        QCOMPARE(m_controller->peek(path), defaultValue);
    }

    // "default" is a marker mode of its own, not the restoring of the scenario's mode.
    void markerModeDefaultIsAMode()
    {
        QCOMPARE(m_controller->peek("camera marker_mode c01"), QByteArray("accurate"));
        QCOMPARE(ask("quarvo2 set camera marker_mode c01 default"), QByteArray("quarvo2 set camera marker_mode c01 default"));
        QCOMPARE(m_controller->peek("camera marker_mode c01"), QByteArray("default"));
    }

    void defaultFlashKeepsToReducedMaximum()
    {
        QVERIFY(m_controller->poke("camera max_flash_intensity c01 40"));
        QCOMPARE(m_controller->peek("camera flash_intensity c01"), QByteArray("40"));
        QVERIFY(m_controller->poke("camera flash_intensity c01 10"));
        QCOMPARE(ask("quarvo2 set camera flash_intensity c01 default"), QByteArray("quarvo2 set camera flash_intensity c01 default"));
        QCOMPARE(m_controller->peek("camera flash_intensity c01"), QByteArray("40"));
    }

    // Each mode brings its own longest exposure; a shorter one cuts the exposure time.
    void cameraModeChangesExposureRange()
    {
        QCOMPARE(m_controller->peek("camera max_sensor_exposure c01"), QByteArray("0.9"));
        QCOMPARE(m_controller->peek("camera sensor_exposure c01"), QByteArray("0.6"));
        QCOMPARE(ask("quarvo2 set camera mode c01 m02"), QByteArray("quarvo2 set camera mode c01 m02"));
        QCOMPARE(ask("quarvo2 get camera max_sensor_exposure c01"), QByteArray("quarvo2 set camera max_sensor_exposure c01 0.45"));
        QCOMPARE(ask("quarvo2 get camera sensor_exposure c01"), QByteArray("quarvo2 set camera sensor_exposure c01 0.45"));
        QCOMPARE(ask("quarvo2 set camera sensor_exposure c01 1.500000"), QByteArray("quarvo2 err 3 \"exposure time out of range\""));
        QCOMPARE(ask("quarvo2 set camera mode c01 m03"), QByteArray("quarvo2 set camera mode c01 m03"));
        QCOMPARE(m_controller->peek("camera max_sensor_exposure c01"), QByteArray("2"));
        QCOMPARE(m_controller->peek("camera sensor_exposure c01"), QByteArray("0.45"));
        QCOMPARE(ask("quarvo2 set camera sensor_exposure c01 1.500000"), QByteArray("quarvo2 set camera sensor_exposure c01 1.500000"));
        // Automatic control survives a mode change.
        QVERIFY(m_controller->poke("camera sensor_exposure c01 auto"));
        QVERIFY(m_controller->poke("camera mode c01 m02"));
        QCOMPARE(m_controller->peek("camera sensor_exposure c01"), QByteArray("auto"));
    }

    void lockRefusesConfigurationChanges()
    {
        QVERIFY(m_controller->poke("config is_changeable no"));
        QCOMPARE(ask("quarvo2 get config is_changeable"), QByteArray("quarvo2 set config is_changeable no"));
        QCOMPARE(ask("quarvo2 set camera flash_intensity c01 70"), QByteArray("quarvo2 err 6 \"configuration is locked\""));
        QCOMPARE(m_controller->peek("camera flash_intensity c01"), QByteArray("60"));
        // Marking a camera is no configuration change.
        QCOMPARE(ask("quarvo2 set camera display_mark c01 yes"), QByteArray("quarvo2 set camera display_mark c01 yes"));
        QCOMPARE(ask("quarvo2 set camera display_show_syncgroup all yes"), QByteArray("quarvo2 set camera display_show_syncgroup all yes"));
        // Test set-up is not held up by the lock.
        QVERIFY(m_controller->poke("camera flash_intensity c01 70"));
        QCOMPARE(m_controller->peek("camera flash_intensity c01"), QByteArray("70"));
    }

    // Set-up reaches what the wire only reports, passes the gates, and still validates.
    void pokeAndPeek()
    {
        m_controller->setProtocolVersion(VersionInfo(1, 14, 0));
        QVERIFY(m_controller->poke("camera sensor_gain c01 3.0"));
        QCOMPARE(m_controller->peek("camera sensor_gain c01"), QByteArray());
        m_controller->setProtocolVersion(VersionInfo(1, 27, 0));
        QCOMPARE(m_controller->peek("camera sensor_gain c01"), QByteArray("3"));
        QVERIFY(m_controller->poke("synccard number_of_channels d01 10"));
        QVERIFY(m_controller->poke("camera sync_group c01 d01 ch010"));
        QCOMPARE(m_controller->peek("camera sync_group c01"), QByteArray("d01 ch10"));
        QVERIFY(m_controller->poke("synccard number_of_channels d01 4"));
        QCOMPARE(m_controller->peek("camera sync_group c01"), QByteArray("none"));
        QVERIFY(m_controller->poke("camera has_display_intensity c01 no"));
        QCOMPARE(m_controller->peek("camera has_display_intensity c01"), QByteArray("no"));
        QVERIFY(m_controller->poke("synccard available no"));
        QCOMPARE(m_controller->peek("camera has_sync_group c01"), QByteArray("no"));
        QVERIFY(!m_controller->poke("camera flash_intensity c01 500"));
        QVERIFY(!m_controller->poke("camera max_flash_intensity c01 101"));
        QVERIFY(m_controller->log().isEmpty());
    }

    void commandLog()
    {
        QSignalSpy logged(m_controller.data(), &SimulatedController::commandLogged);
        const QList<QByteArray> sent = {"quarvo2 get camera flash_intensity c02",
                                        "quarvo2 set camera flash_intensity c02 85",
                                        "quarvo2 get camera flash_intensity c02"};
        for (const QByteArray& request : sent)
            m_controller->handle(request);
        QCOMPARE(m_controller->requests(), sent);
        const QVector<CommandLogEntry>& log = m_controller->log();
        QCOMPARE(log.size(), 3);
        QCOMPARE(log.at(0).reply, QByteArray("quarvo2 set camera flash_intensity c02 40"));
        QCOMPARE(log.at(1).reply, QByteArray("quarvo2 err 3 \"flash intensity above maximum\""));
        QCOMPARE(log.at(2).reply, QByteArray("quarvo2 set camera flash_intensity c02 40"));
        qint64 total = 0;
        for (const CommandLogEntry& entry : log) {
            QVERIFY(entry.fault.isEmpty());
            QVERIFY(entry.nanoseconds > 0);
            total += entry.nanoseconds;
        }
        QCOMPARE(m_controller->handlingNanoseconds(), total);
        QCOMPARE(logged.size(), 3);
        QCOMPARE(logged.at(1).at(0).value<CommandLogEntry>().request, sent.at(1));
        m_controller->clearLog();
        QVERIFY(m_controller->log().isEmpty());
        QCOMPARE(m_controller->handlingNanoseconds(), qint64(0));
    }

    // A server running for days keeps the newest exchanges only, by count and by size.
    void commandLogWindow()
    {
        const QByteArray get = "quarvo2 get camera flash_intensity c0";
        for (char camera = '1'; camera <= '4'; ++camera)
            ask(get + camera);
        m_controller->setLogWindow(3, 300);
        QCOMPARE(m_controller->requests(), (QList<QByteArray>{get + '2', get + '3', get + '4'}));
        const QByteArray longRequest = "quarvo2 get " + QByteArray(150, 'x');
        ask(longRequest);
        QCOMPARE(m_controller->requests(), (QList<QByteArray>{get + '4', longRequest}));
        const QByteArray longer = "quarvo2 get " + QByteArray(400, 'y');
        ask(longer);
        QCOMPARE(m_controller->requests(), QList<QByteArray>{longer});
        QCOMPARE(m_controller->log().first().reply, QByteArray("quarvo2 err 1 \"unknown command\""));
        for (int i = 0; i < 1000; ++i)
            ask(get + '1');
        QCOMPARE(m_controller->log().size(), 3);
        QCOMPARE(m_controller->log().last().request, get + '1');
    }
};

QTEST_GUILESS_MAIN(tst_SimulatedController)
#include "tst_simulatedcontroller.moc"
