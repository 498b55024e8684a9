// The camera page against the simulated controller: what it shows after loading, and an
// operator session that checks the cells, the commands and the texts after each step.
#include "CameraWdg.h"
#include "widgetsuite.h"
#include "cameratablecolumns.h"
#include "displaytimers.h"
#include "pagerig.h"

#include <QCheckBox>
#include <QSlider>
#include <QtTest>

namespace Col = CameraTable;

class tst_CameraWdg : public WidgetSuite
{
    Q_OBJECT

private slots:
    void loading_data();
    void loading();
    void operatorSession();
    void briskboxPairSharesExposure();
};

void tst_CameraWdg::loading_data()
{
    QTest::addColumn<QString>("system"); // a built-in scenario
    QTest::addColumn<QByteArrayList>("changes"); // as applyChanges() takes them
    QTest::addColumn<QStringList>("looks"); // as PageRig::looks() takes them
    QTest::addColumn<QStringList>("messages"); // the operator errors, each once

    const auto row = [](const char* name, const char* system, const QByteArrayList& changes, const QStringList& looks,
                        const QStringList& messages = {}) {
        QTest::newRow(name) << QString::fromLatin1(system) << changes << looks << messages;
    };
    const QStringList noCascade{"label_cascadedSystem: hidden", "label_cascadedSystem_desc: hidden"};
    const QString noGain = "horizontalSlider_sensorGain: hidden";
    row("legacy", "legacy", {}, QStringList{"comboBox_cameraMode: disabled ", "comboBox_displayMode: disabled ",
        "label_displayMode: disabled dis&play mode", "horizontalSlider_displayIntensity: disabled 0 of 100",
        "horizontalSlider_displayRingIntensity: hidden", "horizontalSlider_markerThreshold: hidden", noGain} + noCascade);
    // 1280 x 1024 pixels: a chip of 11.52, so 40 pixels are 3.47 percent. Camera 3 may use
    // 60 of 100 because of its power supply; camera 4 is a slave.
    row("1.27", "default", {}, {"label_model: enabled LUMACAM5", "label_serial: enabled 4711", "label_version: enabled 3.2.1",
        "label_focal: enabled 12.50", "horizontalSlider: enabled 60 of 100", "label_lowPower: hidden",
        "horizontalSlider_displayIntensity: enabled 50 of 100", "horizontalSlider_displayRingIntensity: enabled 30 of 100",
        "comboBox_markerMode: enabled accurate", "doubleSpinBox_markerMaxSize: enabled 3.5", "spinBox_markerMaxNumber: enabled 200",
        "horizontalSlider_sensorGain: enabled 150 of 400", "label_valSensorGain: enabled 1.5",
        "horizontalSlider_exposureTime: enabled 600 of 900", "comboBox_syncGroup: enabled Channel 1",
        "label_cascadedSystem_desc: enabled master of Cascaded System", "2/horizontalSlider: enabled 60 of 60",
        "2/label_lowPower: enabled <b><font color=red>Reduced flash intensity because of limited power supply!</font></b>",
        "3/label_cascadedSystem_desc: enabled slave of Cascaded System (tracker-slave1 ATC2)",
        "checkBox_modulated: enabled off", "1/checkBox_modulated: hidden", "checkBox_static_reflex_skip: enabled on"});
    // Camera modes come with protocol 1.15.
    row("1.15", "default", {"protocol 1.15.0"}, {"comboBox_cameraMode: enabled Standard 180 Hz"});
    row("no cascade slaves", "briskbox", {}, QStringList{"comboBox_cameraMode: enabled Standard 120 Hz",
        "horizontalSlider_displayIntensity: enabled 40 of 100", noGain} + noCascade);
    // A maximum number of 0 stands for the most the camera takes; a sync group that is no
    // channel of the card shows as the first channel.
    row("controller values", "default", {"camera has_sensor_gain c01 no", "answer camera marker_max_number c01=0",
        "answer camera sync_group c01=d01 chXY", "camera flash_intensity c02 0", "camera max_flash_intensity c02 0",
        "fail *get camera sync_group c02", "answer camera sync_group c03=none", "camera has_static_reflex_skip c01 no"},
        {noGain, "checkBox_static_reflex_skip: hidden", "label_valSensorGain: hidden", "pushButton_defaultSensorGain: hidden", "spinBox_markerMaxNumber: enabled 400",
         "comboBox_syncGroup: enabled Channel 1", "1/horizontalSlider: disabled 0 of 0", "1/spinBox: disabled 0",
         "1/comboBox_syncGroup: enabled Channel 1", "2/comboBox_syncGroup: enabled Channel 1"});
    // Faults that do not hide each other, in one loading.
    row("failed queries", "default", {"fail *synccard number_of_channels*", "fail *has_display_intensity c01",
        "fail *get camera display_intensity c02", "fail *has_display_ring_intensity c01", "fail *has_display_setting c01 off",
        "fail *get camera display_ring_intensity c03", "fail *display_setting_desc sync_group", "fail *display_setting c02"},
        {"comboBox_syncGroup: enabled ", "1/comboBox_displayMode: enabled ", "horizontalSlider_displayIntensity: disabled 0 of 100",
         "horizontalSlider_displayRingIntensity: hidden", "1/horizontalSlider_displayIntensity: disabled 0 of 100",
         "2/horizontalSlider_displayRingIntensity: disabled 0 of 100"},
        {"Error: Unable to get number of channels from synccard", "Error: Unable to get info whether camera can display intensity",
         "Error: Unable to get info display setting description", "Error: Unable to get info display has setting",
         "Error: Unable to get info if camera can display ring intensity", "Error: Unable to get info display intensity",
         "Error: Unable to get ring display intensity"});
    row("display settings uncounted", "default", {"fail *number_of_display_settings"}, {"comboBox_displayMode: disabled "},
        {"Error: Unable to get info number of display settings"});
}

void tst_CameraWdg::loading()
{
    QFETCH(QString, system);
    QFETCH(QByteArrayList, changes);
    QFETCH(QStringList, looks);
    QFETCH(QStringList, messages);

    PageRig rig(system);
    applyChanges(rig, changes);
    rig.load(true);
    QCOMPARE(rig.looks(looks), looks);
    QStringList reported = rig.allMessages();
    reported.removeDuplicates();
    for (QString& message : messages)
        message = operatorError(message);
    QCOMPARE(reported, messages);
}

void tst_CameraWdg::operatorSession()
{
    PageRig rig;
    applyChanges(rig, {"camera limit marker_max_size c02 60", "camera sync_group c03 d01 ch02",
                       "camera display_intensity c02 0.995", "answer camera sensor_pixel_vertical c04=0",
                       "answer camera sensor_pixel_horizontal c04=0"});
    rig.load(true);
    // Cameras 2 and 4 show another setting than the first: loading writes each back once.
    QCOMPARE(rig.allRequests().filter("quarvo2 set"),
             (QStringList{set("camera display_setting c02 sync_group"), set("camera display_setting c04 off")}));
    rig.show();
    rig.mark();
    const auto defaults = [](const QString& path) {
        return QStringList{set("camera " + path + " c01 default"), get("camera " + path + " c01")};
    };
    const struct
    {
        int page;
        const char* control;
        QVariant value;
        int column;
        const char* cell;
        QStringList sent = {};
        QString seen = QString(); // as PageRig::looks() takes it
    } steps[] = {
        // Camera 3: each control writes its cell and its label; nothing goes out before OK.
        {2, "horizontalSlider_exposureTime", 1234, Col::ExposureTime, "1.234", {}, "2/label_exposureTimeUs: enabled 1234 us"},
        {2, "horizontalSlider_sensorGain", 150, Col::SensorGain, "1.5", {}, "2/label_valSensorGain: enabled 1.5"},
        {2, "horizontalSlider_markerThreshold", 25, Col::MarkerThreshold, "0.25", {}, "2/label_markerThresholdPercent: enabled 25 %"},
        {2, "comboBox_markerMode", 1, Col::MarkerMode, "2"},
        {2, "spinBox_markerMaxNumber", 123, Col::MarkerMaxNumber, "123"},
        {2, "spinBox", 7, Col::FlashIntensity, "7", {}, "2/horizontalSlider: enabled 7 of 60"},
        // Modulated flash works on the first channel only: the first keeps it, another clears it.
        {2, "comboBox_syncGroup", 0, Col::ModFlash, "true"},
        {2, "comboBox_syncGroup", 1, Col::ModFlash, "false"},
        // The orientation goes out at once; the cell holds it as the number 1.
        {2, "checkBox_camera_orientation", true, Col::CameraOrientation, "1", {set("camera display_upside_down c03 yes")}},
        // Camera 2, chip 5.78: a lower maximum diameter pulls the minimum down with it, a
        // higher minimum pushes the maximum up; the other box rounds.
        {1, "doubleSpinBox_markerMinSize", 40.0, Col::MarkerMinSize, "40"},
        {1, "doubleSpinBox_markerMaxSize", 5.0, Col::MarkerMinSize, "28.9", {}, "1/doubleSpinBox_markerMinSize: enabled 28.9"},
        {1, "doubleSpinBox_markerMinSize", 40.0, Col::MarkerMaxSize, "6.92042", {}, "1/doubleSpinBox_markerMaxSize: enabled 6.9"},
        {1, "doubleSpinBox_markerMaxSize", 8.0, Col::MarkerMaxSize, "8"},
        // Camera 4 without a chip size: the maximum is left as it was instead of divided by 0.
        {3, "doubleSpinBox_markerMinSize", 20.0, Col::MarkerMaxSize, "0.1"},
        // Camera 1's default buttons ask the controller for its defaults and read them back.
        {0, "pushButton_markerThresholdDefault", {}, Col::MarkerThreshold, "0.1", defaults("marker_threshold")},
        {0, "pushButton_defaultSensorGain", {}, Col::SensorGain, "1", defaults("sensor_gain")},
        {0, "pushButton_exposureTimeDefault", {}, Col::ExposureTime, "0.4", defaults("sensor_exposure")},
        // A mode change writes a pending exposure first and reads the new range (2 ms) back.
        {0, "horizontalSlider_exposureTime", 700, Col::ExposureTime, "0.7"},
        {0, "comboBox_cameraMode", 2, Col::CameraModeData, "m03",
         {get("camera mode_desc c01 m03"), set("camera sensor_exposure c01 0.700000"), set("camera mode c01 m03"),
          get("camera max_sensor_exposure c01"), get("camera sensor_exposure c01")},
         "horizontalSlider_exposureTime: enabled 700 of 2000"}};
    for (const auto& step : steps) {
        operate(rig.widget<QWidget>(step.page, step.control), step.value);
        QCOMPARE(rig.cellText(step.page, step.column), QString::fromLatin1(step.cell));
        QCOMPARE(rig.requests(), step.sent);
        const QStringList seen = step.seen.isEmpty() ? QStringList() : QStringList{step.seen};
        QCOMPARE(rig.looks(seen), seen);
        rig.mark();
    }

    // Refused defaults are reported and fall back to the page's own defaults; a refused mode is reported.
    for (const char* glob : {"*marker_threshold c01*", "*sensor_gain c01*", "*sensor_exposure c01*", "*set camera mode c01*"})
        rig.fail(glob);
    for (const char* button : {"pushButton_markerThresholdDefault", "pushButton_defaultSensorGain", "pushButton_exposureTimeDefault"})
        operate(rig.widget<QWidget>(0, button));
    operate(rig.widget<QWidget>(0, "comboBox_cameraMode"), 0);
    QCOMPARE(rig.cells(0, {Col::MarkerThreshold, Col::SensorGain, Col::ExposureTime}), (QStringList{"0.1", "1", "0"}));
    rig.clearFaults();
    rig.mark();

    // A display slider's write waits until the operator stops for 500 ms: each movement
    // starts the timer afresh. A refused write is reported.
    rig.fail("*set camera display_ring_intensity*", 1);
    for (const char* display : {"DisplayIntensity", "DisplayRingIntensity"}) {
        auto* moved = rig.widget<QSlider>(0, qPrintable(QStringLiteral("horizontalSlider_d%1").arg(display + 1)));
        auto* debounce = rig.pages.at(0)->findChild<QTimer*>(QStringLiteral("timer%1").arg(display));
        QVERIFY(debounce);
        for (int value = 20; value <= 100; value += 5) {
            if (debounce->isActive())
                debounce->start(1); // about to run out
            moved->setValue(value);
            QVERIFY(debounce->isActive() && debounce->isSingleShot() && debounce->remainingTime() > 400);
            QCOMPARE(debounce->interval(), 500);
        }
        QVERIFY(rig.requests().isEmpty());
        QCOMPARE(fireDisplayTimers(&rig.host), 1);
        rig.mark();
    }
    // One camera's display intensity can change the others': every camera is read again,
    // its cell in percent of the fraction the controller holds.
    QCOMPARE(rig.allRequests().mid(rig.allRequests().size() - 6), (QStringList{set("camera display_intensity c01 1.000000"),
        get("camera display_intensity c01"), get("camera display_intensity c02"), get("camera display_intensity c03"),
        get("camera display_intensity c04"), set("camera display_ring_intensity c01 1.000000")}));
    QCOMPARE(rig.cells(0, {Col::DisplayIntensity, Col::RingDisplayIntensity}) + rig.cells(1, {Col::DisplayIntensity}),
             (QStringList{"100", "100", "99"}));
    QCOMPARE(rig.allMessages(), (QStringList{ConfigurationEvent, operatorError("Error: Unable to set marker threshold to default"),
        operatorError("Error: Unable to set sensor gain to default"), operatorError("Error: Unable to set default exposure time"),
        operatorError("Error: Unable to set camera mode"), ConfigurationEvent,
        operatorError("Error: Unable to set camera ring display intensity")}));
    // Hidden, a page drops what it still had to send.
    operate(rig.widget<QWidget>(0, "horizontalSlider_displayIntensity"), 70);
    rig.tabs->setCurrentIndex(1);
    QCOMPARE(fireDisplayTimers(&rig.host), 0);

}

void tst_CameraWdg::briskboxPairSharesExposure()
{
    // The all-in-one system's two cameras share exposure control: the second camera's
    // exposure reaches the first camera's row, and so does switching automatic control;
    // shown again, the first camera's page takes its row as the pair left it.
    PageRig rig(QStringLiteral("briskbox"));
    rig.load(true);
    rig.show();
    rig.mark();
    operate(rig.widget<QWidget>(1, "horizontalSlider_exposureTime"), 800);
    QCOMPARE(rig.cells(0, {Col::ExposureTime}) + rig.cells(1, {Col::ExposureTime}), (QStringList{"0.8", "0.8"}));
    QVERIFY(rig.requests().isEmpty());
    operate(rig.widget<QWidget>(1, "checkBox_autoExposureCtrl"), true);
    QCOMPARE(rig.cells(0, {Col::AutoExposureTime}) + rig.cells(1, {Col::AutoExposureTime}), (QStringList{"true", "true"}));
    QCOMPARE(rig.requests(), (QStringList{set("camera sensor_exposure c02 auto"), set("camera sensor_exposure c01 auto")}));
    QVERIFY(!rig.widget<QWidget>(1, "horizontalSlider_exposureTime")->isEnabled());
    rig.tabs->setCurrentIndex(1);
    rig.tabs->setCurrentIndex(0);
    QVERIFY(rig.widget<QCheckBox>(0, "checkBox_autoExposureCtrl")->isChecked());
    // Back on manual control, both go back to their default exposure, which the row shows.
    rig.tabs->setCurrentIndex(1);
    rig.mark();
    operate(rig.widget<QWidget>(1, "checkBox_autoExposureCtrl"), false);
    QCOMPARE(rig.requests(), (QStringList{set("camera sensor_exposure c02 default"), get("camera sensor_exposure c02"),
                                          set("camera sensor_exposure c01 default"), get("camera sensor_exposure c01")}));
    QCOMPARE(rig.cells(1, {Col::ExposureTime, Col::AutoExposureTime}), (QStringList{"0.5", "false"}));

    // Cameras 3 and 4 on a cascade's slave of model 20 or 21 are such a pair too; on another model they are not.
    for (const char* model : {"20", "21", "10"}) {
        PageRig cascade;
        applyChanges(cascade, {"camera cascade_slave c03 s01", QByteArray("answer system model_slave s01=") + model});
        cascade.load(true);
        operate(cascade.widget<QWidget>(3, "horizontalSlider_exposureTime"), 800);
        QCOMPARE(cascade.cellText(2, Col::ExposureTime), QString(qstrcmp(model, "10") ? "0.8" : "2.5"));
    }
}

QTEST_MAIN(tst_CameraWdg)
#include "tst_camerawdg.moc"
