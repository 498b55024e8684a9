// The camera page against the simulated controller: what it shows after loading (per
// protocol version, controller values and faults), and operator sessions that check
// the cells written, the commands sent and the texts shown after each step.
#include "CameraWdg.h"
#include "widgetsuite.h"
#include "cameratablecolumns.h"
#include "displaytimers.h"
#include "pagerig.h"
#include "widgetlook.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QSlider>
#include <QSpinBox>
#include <QTabWidget>
#include <QtTest>

namespace Col = CameraTable;

class tst_CameraWdg : public WidgetSuite
{
    Q_OBJECT

private slots:
    void loading_data();
    void loading();
    void operatorSession();
    void displayIntensityDebounce();
    void automaticExposure();
    void cameraModeChange_data();
    void cameraModeChange();
    void showingAndHiding_data();
    void showingAndHiding();
    void modelPictures();
};

void tst_CameraWdg::loading_data()
{
    QTest::addColumn<QString>("scenario");
    QTest::addColumn<VersionInfo>("protocol"); // major -1: the scenario's own
    QTest::addColumn<QByteArrayList>("changes"); // see applyChanges()
    QTest::addColumn<int>("page");
    QTest::addColumn<QStringList>("looks"); // "object: look" of the page's controls
    QTest::addColumn<QString>("message"); // the operator error each failing page reports

    const VersionInfo own(-1, 0, 0);
    const QStringList noCascade{"label_cascadedSystem: hidden", "label_cascadedSystem_desc: hidden"};
    const QString noGain = "horizontalSlider_sensorGain: hidden";
    QTest::newRow("legacy") << "legacy" << own << QByteArrayList() << 0
        << QStringList{"comboBox_cameraMode: disabled ", "comboBox_displayMode: disabled ", "label_displayMode: disabled dis&play mode",
                       "horizontalSlider_displayIntensity: disabled 0 of 100",
                       "horizontalSlider_displayRingIntensity: hidden", "horizontalSlider_markerThreshold: hidden", noGain}
               + noCascade << "";
    QTest::newRow("1.6") << "default" << VersionInfo(1, 6, 0) << QByteArrayList() << 0 << noCascade << "";
    QTest::newRow("1.14") << "default" << VersionInfo(1, 14, 0) << QByteArrayList() << 0
        << QStringList{"comboBox_cameraMode: disabled ", "comboBox_displayMode: disabled ",
                       "horizontalSlider_displayIntensity: disabled 0 of 100", "label_cascadedSystem: enabled connected at"}
        << "";
    QTest::newRow("1.23") << "default" << VersionInfo(1, 23, 0) << QByteArrayList() << 0
        << QStringList{"comboBox_cameraMode: enabled Standard 180 Hz", "comboBox_displayMode: enabled Camera number",
                       "label_displayMode: enabled dis&play mode", "horizontalSlider_displayIntensity: enabled 50 of 100",
                       "horizontalSlider_markerThreshold: hidden", noGain} << "";
    QTest::newRow("1.26") << "default" << VersionInfo(1, 26, 3) << QByteArrayList() << 0
        << QStringList{"horizontalSlider_displayRingIntensity: hidden", "horizontalSlider_markerThreshold: enabled 10 of 100",
                       noGain, "pushButton_defaultSensorGain: hidden"} << "";
    QTest::newRow("1.27") << "default" << own << QByteArrayList() << 0
        << QStringList{"label_model: enabled LUMACAM5", "label_serial: enabled 4711", "label_version: enabled 3.2.1",
                       "label_focal: enabled 12.50", "horizontalSlider: enabled 60 of 100", "label_lowPower: hidden",
                       "horizontalSlider_displayRingIntensity: enabled 30 of 100", "comboBox_markerMode: enabled accurate",
                       "horizontalSlider_sensorGain: enabled 150 of 400", "label_valSensorGain: enabled 1.5",
                       "horizontalSlider_exposureTime: enabled 600 of 900", "comboBox_syncGroup: enabled Channel 1",
                       "label_cascadedSystem_desc: enabled master of Cascaded System"} << "";
    // 1280 x 1024 pixels: a chip of 11.52, so 40 pixels are 3.47 percent.
    QTest::newRow("marker size") << "default" << own << QByteArrayList() << 0
        << QStringList{"doubleSpinBox_markerMaxSize: enabled 3.5", "spinBox_markerMaxNumber: enabled 200"} << "";
    QTest::newRow("no cascade slaves") << "briskbox" << own << QByteArrayList() << 0
        << QStringList{"comboBox_cameraMode: enabled Standard 120 Hz", "horizontalSlider_displayIntensity: enabled 40 of 100",
                       noGain} + noCascade << "";
    QTest::newRow("a camera without sensor gain") << "default" << own << QByteArrayList{"camera has_sensor_gain c01 no"} << 0
        << QStringList{noGain, "label_valSensorGain: hidden", "pushButton_defaultSensorGain: hidden"} << "";
    QTest::newRow("no flash allowed") << "default" << own
        << QByteArrayList{"camera flash_intensity c02 0", "camera max_flash_intensity c02 0"} << 1
        << QStringList{"horizontalSlider: disabled 0 of 0", "spinBox: disabled 0", "label_exposureTimeUs: disabled "} << "";
    QTest::newRow("limited power supply") << "default" << own << QByteArrayList() << 2
        << QStringList{"horizontalSlider: enabled 60 of 60", "label_lowPower: enabled <b><font color=red>Reduced flash "
                                                              "intensity because of limited power supply!</font></b>"}
        << "";
    QTest::newRow("cascade slave") << "default" << own << QByteArrayList() << 3
        << QStringList{"label_cascadedSystem_desc: enabled slave of Cascaded System (tracker-slave1 ATC2)"} << "";
    // A maximum number of 0 stands for the most the camera takes.
    QTest::newRow("no marker maximum") << "default" << own << QByteArrayList{"answer camera marker_max_number c01=0"} << 0
        << QStringList{"spinBox_markerMaxNumber: enabled 400"} << "";
    // Whatever the controller says that is no channel of its card, the page shows the first.
    for (const char* group : {"none", "d01 chXY", "unreadable"}) {
        const QByteArray change = qstrcmp(group, "unreadable") == 0 ? QByteArray("fail *get camera sync_group c01")
                                                                    : QByteArray("answer camera sync_group c01=") + group;
        QTest::newRow(qPrintable(QStringLiteral("sync group %1").arg(group))) << "default" << own
            << QByteArrayList{change} << 0 << QStringList{"comboBox_syncGroup: enabled Channel 1"} << "";
    }
    QTest::newRow("ten channels") << "default" << own
        << QByteArrayList{"synccard number_of_channels d01 10", "answer camera sync_group c01=d01 ch10"} << 0
        << QStringList{"comboBox_syncGroup: enabled Channel 10"} << "";

    const auto failure = [](const char* name, const char* glob, const char* message, const QStringList& looks) {
        QTest::newRow(name) << "default" << VersionInfo(-1, 0, 0) << QByteArrayList{QByteArray("fail ") + glob} << 0 << looks
                            << QString::fromLatin1(message);
    };
    failure("sync card", "*synccard number_of_channels*", "Error: Unable to get number of channels from synccard",
            {"comboBox_syncGroup: enabled "});
    failure("has display intensity", "*has_display_intensity c01", "Error: Unable to get info whether camera can display intensity",
            {"horizontalSlider_displayIntensity: disabled 0 of 100"});
    failure("display intensity", "*get camera display_intensity c01", "Error: Unable to get info display intensity",
            {"horizontalSlider_displayIntensity: disabled 0 of 100"});
    failure("has ring intensity", "*has_display_ring_intensity c01",
            "Error: Unable to get info if camera can display ring intensity", {"horizontalSlider_displayRingIntensity: hidden"});
    failure("ring intensity", "*get camera display_ring_intensity c01", "Error: Unable to get ring display intensity",
            {"horizontalSlider_displayRingIntensity: disabled 0 of 100"});
    failure("number of settings", "*number_of_display_settings", "Error: Unable to get info number of display settings",
            {"comboBox_displayMode: disabled "});
    failure("setting id", "*display_setting_id t02", "Error: Unable to get info display setting", {});
    failure("has setting", "*has_display_setting c01 off", "Error: Unable to get info display has setting", {});
    failure("setting description", "*display_setting_desc sync_group", "Error: Unable to get info display setting description", {});
}

void tst_CameraWdg::loading()
{
    QFETCH(QString, scenario);
    QFETCH(VersionInfo, protocol);
    QFETCH(QByteArrayList, changes);
    QFETCH(int, page);
    QFETCH(QStringList, looks);
    QFETCH(QString, message);

    PageRig rig(scenario);
    if (protocol.major() >= 0)
        rig.setProtocol(protocol);
    applyChanges(rig, changes);
    rig.load(true);
    QCOMPARE(looksOf(rig.pages.at(page), looks), looks);
    QStringList messages = rig.allMessages();
    messages.removeDuplicates();
    QCOMPARE(messages, message.isEmpty() ? QStringList() : QStringList{operatorError(message)});
    // What the protocol lacks the page does not ask for.
    const QStringList unknown = rig.unknownToTheController();
    QVERIFY2(unknown.isEmpty(), qPrintable(unknown.join("\n")));
}

void tst_CameraWdg::operatorSession()
{
    PageRig rig;
    rig.poke("camera limit marker_max_size c02 60");
    rig.load(true);
    // Cameras 2 and 4 show another setting than the first: loading writes each back once.
    QCOMPARE(rig.allRequests().filter("quarvo2 set"),
             (QStringList{set("camera display_setting c02 sync_group"), set("camera display_setting c04 off")}));
    rig.show();
    rig.mark();

    // Camera 3: each control writes its cell and its label; nothing goes out before OK.
    rig.widget<QSlider>(2, "horizontalSlider_exposureTime")->setValue(1234);
    rig.widget<QSlider>(2, "horizontalSlider_sensorGain")->setValue(150);
    rig.widget<QSlider>(2, "horizontalSlider_markerThreshold")->setValue(25);
    rig.widget<QComboBox>(2, "comboBox_markerMode")->setCurrentIndex(1);
    rig.widget<QSpinBox>(2, "spinBox_markerMaxNumber")->setValue(123);
    rig.widget<QSpinBox>(2, "spinBox")->setValue(7);
    QCOMPARE(look(rig.pages.at(2), {"label_exposureTimeUs", "label_valSensorGain", "label_markerThresholdPercent", "horizontalSlider"}),
             (QStringList{"enabled 1234 us", "enabled 1.5", "enabled 25 %", "enabled 7 of 60"}));
    const auto cells = [&rig](int row, std::initializer_list<int> columns) {
        QStringList texts;
        for (int column : columns)
            texts << rig.cell(row, column).toString();
        return texts;
    };
    QCOMPARE(cells(2, {Col::ExposureTime, Col::SensorGain, Col::MarkerThreshold, Col::MarkerMode, Col::MarkerMaxNumber,
                       Col::FlashIntensity, Col::ModFlash}),
             (QStringList{"1.234", "1.5", "0.25", "2", "123", "7", "true"}));
    // Modulated flash works on the first channel only: another channel clears it, the first keeps it.
    auto* sync = rig.widget<QComboBox>(2, "comboBox_syncGroup");
    sync->setCurrentIndex(1);
    QCOMPARE(cells(2, {Col::SyncGroup, Col::ModFlash}), (QStringList{"Channel 2", "false"}));
    rig.setCellQuietly(2, Col::ModFlash, true);
    sync->setCurrentIndex(0);
    QCOMPARE(cells(2, {Col::SyncGroup, Col::ModFlash}), (QStringList{"Channel 1", "true"}));
    QVERIFY2(rig.requests().isEmpty(), qPrintable(rig.requests().join("\n")));

    // The orientation goes out at once, and the cell holds it as the number 1.
    rig.widget<QAbstractButton>(2, "checkBox_camera_orientation")->click();
    QCOMPARE(rig.requests(), QStringList{set("camera display_upside_down c03 yes")});
    QCOMPARE(rig.cell(2, Col::CameraOrientation), QVariant(1));
    rig.mark();

    // Camera 2, chip 5.78: a lower maximum diameter pulls the minimum down with it, a
    // higher minimum pushes the maximum up; the other box rounds. Sizes go out on OK.
    auto* maxBox = rig.widget<QDoubleSpinBox>(1, "doubleSpinBox_markerMaxSize");
    auto* minBox = rig.widget<QDoubleSpinBox>(1, "doubleSpinBox_markerMinSize");
    minBox->setValue(40.0);
    maxBox->setValue(9.0);
    rig.table.resetChanges();
    maxBox->setValue(5.0);
    QCOMPARE(rig.cell(1, Col::MarkerMaxSize).toDouble(), 5.0);
    QCOMPARE(rig.cell(1, Col::MarkerMinSize).toDouble(), 28.9);
    QCOMPARE(minBox->value(), 28.9);
    QVERIFY(rig.table.isChanged(1, Col::MarkerMinSize));
    minBox->setValue(40.0);
    QVERIFY(qAbs(rig.cell(1, Col::MarkerMaxSize).toDouble() - 40 / 5.78) < 1e-9);
    QCOMPARE(maxBox->value(), 6.9);
    QVERIFY(rig.requests().isEmpty());

    // Camera 1's default buttons ask the controller for its defaults and read them back;
    // refused ones are reported and fall back to the page's own defaults.
    const auto pressDefaults = [&] {
        rig.widget<QSlider>(0, "horizontalSlider_markerThreshold")->setValue(40);
        rig.widget<QSlider>(0, "horizontalSlider_sensorGain")->setValue(250);
        rig.widget<QSlider>(0, "horizontalSlider_exposureTime")->setValue(800);
        for (const char* button : {"pushButton_markerThresholdDefault", "pushButton_defaultSensorGain", "pushButton_exposureTimeDefault"})
            rig.widget<QAbstractButton>(0, button)->click();
        return cells(0, {Col::MarkerThreshold, Col::SensorGain, Col::ExposureTime});
    };
    QCOMPARE(pressDefaults(), (QStringList{"0.1", "1", "0.4"}));
    QCOMPARE(rig.requests(), (QStringList{set("camera marker_threshold c01 default"), get("camera marker_threshold c01"),
                                          set("camera sensor_gain c01 default"), get("camera sensor_gain c01"),
                                          set("camera sensor_exposure c01 default"), get("camera sensor_exposure c01")}));
    for (const char* glob : {"*marker_threshold c01*", "*sensor_gain c01*", "*sensor_exposure c01*"})
        rig.fail(glob);
    QCOMPARE(pressDefaults(), (QStringList{"0.1", "1", "0"}));
    QCOMPARE(rig.allMessages(), (QStringList{operatorError("Error: Unable to set marker threshold to default"),
                                             operatorError("Error: Unable to set sensor gain to default"),
                                             operatorError("Error: Unable to set default exposure time")}));
    rig.clearFaults();

    // Live writes the controller refuses are reported once; the page keeps the
    // controller's value, so the same choice tries again. A disabled page sends nothing.
    CameraWdg* page = rig.pages.at(0);
    const auto setAll = [page](int orientation, int percent, const QString& setting) {
        return QVector<int>{page->setCameraOrientation(orientation), page->setDisplayIntensity(percent),
                            page->setDisplayRingIntensity(percent), page->setDisplayMode(setting)};
    };
    rig.fail("*set camera display_intensity*", 1);
    rig.fail("*set camera display_ring_intensity*", 1);
    rig.mark();
    QCOMPARE(setAll(1, 90, "off"), (QVector<int>{0, -1, -1, 0}));
    QCOMPARE(rig.messages(), (QStringList{operatorError("Error: Unable to set camera display intensity"),
                                          operatorError("Error: Unable to set camera ring display intensity")}));
    QCOMPARE(setAll(1, 90, "off"), (QVector<int>{0, 0, 0, 0}));
    page->setEnabled(false);
    QCOMPARE(setAll(0, 10, "camera_id"), (QVector<int>{0, 0, 0, 0}));
    QCOMPARE(rig.requests().size(), 6);
    page->setEnabled(true);

    // Enter on a page is swallowed; Escape cancels the dialog around the page.
    QTest::keyClick(page, Qt::Key_Return);
    QVERIFY(rig.host.isVisible());
    QTest::keyClick(page, Qt::Key_Escape);
    QCOMPARE(rig.host.result(), int(QDialog::Rejected));
    QVERIFY(!rig.host.isVisible());
}

void tst_CameraWdg::displayIntensityDebounce()
{
    PageRig rig;
    rig.poke("camera display_intensity c02 0.995");
    rig.load();
    rig.show();
    rig.mark();
    const struct
    {
        const char* slider;
        const char* timer;
        int column;
        QString path;
        bool rereadAll;
    } displays[] = {{"horizontalSlider_displayIntensity", "timerDisplayIntensity", Col::DisplayIntensity,
                     "camera display_intensity c01", true},
                    {"horizontalSlider_displayRingIntensity", "timerDisplayRingIntensity", Col::RingDisplayIntensity,
                     "camera display_ring_intensity c01", false}};
    for (const auto& display : displays) {
        auto* moved = rig.widget<QSlider>(0, display.slider);
        auto* debounce = rig.pages.at(0)->findChild<QTimer*>(display.timer);
        QVERIFY(debounce);
        for (int value = 20; value <= 100; value += 5) {
            // The timer about to run out: each movement starts the 500 ms afresh.
            if (debounce->isActive())
                debounce->start(1);
            moved->setValue(value);
            QVERIFY(debounce->isActive() && debounce->isSingleShot());
            QCOMPARE(debounce->interval(), 500);
            QVERIFY(debounce->remainingTime() > 400);
        }
        QCOMPARE(rig.cell(0, display.column).toInt(), 100);
        QVERIFY(rig.requests().isEmpty());
        QCOMPARE(fireDisplayTimers(&rig.host), 1);
        // One camera's display intensity can change the others': every camera is read
        // again, its cell in percent of the fraction the controller holds.
        QStringList expected{set(display.path + " 1.000000")};
        for (int row = 0; display.rereadAll && row < rig.table.rowCount(); ++row)
            expected << get(QStringLiteral("camera display_intensity c%1").arg(row + 1, 2, 10, QLatin1Char('0')));
        QCOMPARE(rig.requests(), expected);
        rig.mark();
    }
    QCOMPARE(rig.cell(0, Col::DisplayIntensity).toString() + ' ' + rig.cell(1, Col::DisplayIntensity).toString(),
             QString("100 99"));
    // Hidden, a page drops what it still had to send.
    rig.widget<QSlider>(0, "horizontalSlider_displayIntensity")->setValue(70);
    rig.tabs->setCurrentIndex(1);
    QCOMPARE(fireDisplayTimers(&rig.host), 0);
    rig.host.hide();
}

void tst_CameraWdg::automaticExposure()
{
    // The all-in-one box's two cameras switch together.
    PageRig rig(QStringLiteral("briskbox"));
    rig.load(true);
    auto* automatic = rig.widget<QAbstractButton>(0, "checkBox_autoExposureCtrl");
    automatic->click();
    QCOMPARE(rig.requests(), (QStringList{set("camera sensor_exposure c01 auto"), set("camera sensor_exposure c02 auto")}));
    QCOMPARE(look(rig.pages.at(0), {"horizontalSlider_exposureTime", "label_exposureTimeUs"}),
             (QStringList{"disabled 0 of 1000", "disabled "}));
    QCOMPARE(rig.cell(1, Col::AutoExposureTime).toString() + ' ' + rig.cell(0, Col::ExposureTime).toString(), QString("true 0"));
    rig.mark();
    automatic->click();
    QCOMPARE(rig.requests(), (QStringList{set("camera sensor_exposure c01 default"), get("camera sensor_exposure c01"),
                                          set("camera sensor_exposure c02 default"), get("camera sensor_exposure c02")}));
    QCOMPARE(rig.cell(1, Col::AutoExposureTime).toString() + ' ' + rig.cell(1, Col::ExposureTime).toString(), QString("false 0.5"));
    QCOMPARE(look(rig.widget<QWidget>(0, "horizontalSlider_exposureTime")), QStringLiteral("enabled 500 of 1000"));
    rig.widget<QSlider>(1, "horizontalSlider_exposureTime")->setValue(321);
    QCOMPARE(rig.cell(0, Col::ExposureTime).toDouble(), 0.321);
}

void tst_CameraWdg::cameraModeChange_data()
{
    QTest::addColumn<bool>("withModes");
    QTest::addColumn<int>("exposureUs");
    QTest::addColumn<QStringList>("expected");

    const QString description = get("camera mode_desc c01 m03");
    const QStringList readBack = {get("camera max_sensor_exposure c01"), get("camera sensor_exposure c01")};
    const QString mode = set("camera mode c01 m03");
    QTest::newRow("no pending exposure") << true << 600 << QStringList{description, mode} + readBack;
    QTest::newRow("pending exposure") << true << 700
                                      << QStringList{description, set("camera sensor_exposure c01 0.700000"), mode} + readBack;
    // The table says the camera has a single mode: nothing is set, the exposure is read again.
    QTest::newRow("camera without modes") << false << 600 << QStringList{description} + readBack;
}

void tst_CameraWdg::cameraModeChange()
{
    QFETCH(bool, withModes);
    QFETCH(int, exposureUs);
    QFETCH(QStringList, expected);

    PageRig rig;
    rig.load(true);
    if (!withModes)
        rig.setCellQuietly(0, Col::HasCameraMode, false);
    rig.widget<QSlider>(0, "horizontalSlider_exposureTime")->setValue(exposureUs);
    rig.widget<QComboBox>(0, "comboBox_cameraMode")->setCurrentIndex(2);
    QCOMPARE(rig.requests(), expected);
    QCOMPARE(rig.allMessages(), withModes ? QStringList{ConfigurationEvent} : QStringList());
    QCOMPARE(rig.cell(0, Col::CameraModeData).toString() + ' ' + rig.cell(0, Col::CameraMode).toString(),
             QString("m03 Full frame 60 Hz"));
    // The new mode allows 2 ms; the exposure comes back as the controller holds it.
    if (withModes)
        QCOMPARE(look(rig.widget<QWidget>(0, "horizontalSlider_exposureTime")), QString("enabled %1 of 2000").arg(exposureUs));
}

void tst_CameraWdg::showingAndHiding_data()
{
    QTest::addColumn<VersionInfo>("protocol");
    QTest::addColumn<bool>("automatic");
    QTest::addColumn<QStringList>("looks"); // exposure, flash, sync group, marker mode, automatic exposure

    const QStringList common{"enabled 33", "enabled Channel 4", "enabled fast"};
    QTest::newRow("manual") << VersionInfo(1, 27, 0) << false << QStringList{"enabled 750 of 900"} + common + QStringList{"enabled off"};
    QTest::newRow("automatic") << VersionInfo(1, 27, 0) << true << QStringList{"disabled 0 of 900"} + common + QStringList{"enabled on"};
    QTest::newRow("1.14, without display marks") << VersionInfo(1, 14, 0) << false
                                                 << QStringList{"hidden"} + common + QStringList{"hidden"};
}

void tst_CameraWdg::showingAndHiding()
{
    QFETCH(VersionInfo, protocol);
    QFETCH(bool, automatic);
    QFETCH(QStringList, looks);

    PageRig rig;
    rig.setProtocol(protocol);
    rig.load(true);
    rig.tabs->setCurrentIndex(1);
    // A page that was never loaded marks nothing.
    rig.tabs->addTab(new CameraWdg(rig.channel(), &rig.host, rig.versions()), QStringLiteral("missing"));
    rig.setCellQuietly(0, Col::ExposureTime, 0.75);
    rig.setCellQuietly(0, Col::AutoExposureTime, automatic);
    rig.setCellQuietly(0, Col::FlashIntensity, 33);
    rig.setCellQuietly(0, Col::SyncGroup, QStringLiteral("Channel 4"));
    rig.setCellQuietly(0, Col::MarkerMode, 2);
    rig.show();
    rig.tabs->setCurrentIndex(0);
    // Shown, the page mirrors its row; that is no change of the operator's, but under
    // automatic exposure the slider drops to 0 afterwards and that does reach the row.
    QCOMPARE(look(rig.pages.at(0), {"horizontalSlider_exposureTime", "spinBox", "comboBox_syncGroup", "comboBox_markerMode",
                                    "checkBox_autoExposureCtrl"}), looks);
    QVERIFY(!rig.table.isChanged(0, Col::FlashIntensity));
    QCOMPARE(rig.table.isChanged(0, Col::ExposureTime), automatic);
    rig.tabs->setCurrentIndex(1);
    rig.tabs->setCurrentIndex(4);
    rig.host.hide();
    // From 1.15 on, the shown camera marks itself on its display.
    QStringList marks;
    for (const char* camera : {"c02", "c01", "c02"})
        marks << set(QStringLiteral("camera display_mark %1 yes").arg(camera)) << set(QStringLiteral("camera display_mark %1 no").arg(camera));
    QCOMPARE(rig.requests().filter(QStringLiteral("display_mark")), protocol >= VersionInfo(1, 15, -1) ? marks : QStringList());
}

void tst_CameraWdg::modelPictures()
{
    // Each model's picture: 120 x 90, and told apart from the others at a glance, so a
    // few stray pixels are not enough.
    const QList<QPair<int, QString>> models = {{0x0402, "1"}, {0x0401, "1"}, {0x0403, "1"}, {0x0B01, "20311L"},
                                               {0x0B01, "20311l"}, {0x0D02, "4711L"}, {0x0E01, "1"}, {0x0700, "1"}};
    QStringList pictures;
    QList<QImage> seen;
    for (const auto& model : models) {
        const QString path = CameraWdg::modelPicture(model.first, model.second);
        const QImage image = QImage(path).convertToFormat(QImage::Format_ARGB32);
        QVERIFY2(image.size() == QSize(120, 90) && qAlpha(image.pixel(0, 0)) == 0, qPrintable(path));
        for (const QImage& other : seen) {
            int differing = 0;
            for (int y = 0; y < image.height(); ++y)
                for (int x = 0; x < image.width(); ++x)
                    differing += image.pixel(x, y) != other.pixel(x, y);
            QVERIFY2(differing >= image.width() * image.height() / 20, qPrintable(path + " looks like another"));
        }
        seen << image;
        pictures << path.section('/', -1).section("_transparent", 0, 0);
    }
    QCOMPARE(pictures, (QStringList{"lumacam_kp_s1", "lumacam_kp_s0", "lumacam_kpc", "briskbox3_left", "briskbox3_right",
                                    "briskbox3m_left", "LC9-30", "unknown"}));
}

QTEST_MAIN(tst_CameraWdg)
#include "tst_camerawdg.moc"
