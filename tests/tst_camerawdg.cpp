// The camera page against the simulated controller: what it shows after loading (per
// protocol version, with its defaults and operator messages), what the operator's
// changes write into the camera table and send to the controller, and what showing and
// hiding the page does.
#include "CameraWdg.h"
#include "widgetsuite.h"
#include "cameratablecolumns.h"
#include "dialogscenarios.h"
#include "displaytimers.h"
#include "pagerig.h"
#include "widgetlook.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QHBoxLayout>
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
    void flashRow();
    void syncGroups_data();
    void syncGroups();
    void loadFailures_data();
    void loadFailures();

    void displayDragSendsOneWriteLater();
    void markerSizeClamping();
    void controlsWriteTheirCells();
    void automaticExposure();
    void cameraModeChange_data();
    void cameraModeChange();
    void setterFailures_data();
    void setterFailures();

    void modelPictures();
    void showingAndHiding_data();
    void showingAndHiding();
};

void tst_CameraWdg::loading_data()
{
    QTest::addColumn<QString>("scenario");
    QTest::addColumn<VersionInfo>("protocol");
    QTest::addColumn<int>("page");
    QTest::addColumn<QStringList>("looks"); // camera mode, display mode, display and ring intensity, threshold, gain, cascade

    const VersionInfo scenarios(-1, 0, 0);
    QTest::newRow("legacy") << "legacy" << scenarios << 0
        << QStringList{"disabled ", "disabled ", "disabled 0 of 100", "hidden", "hidden", "hidden", "hidden"};
    QTest::newRow("1.14") << "default" << VersionInfo(1, 14, 0) << 0
        << QStringList{"disabled ", "disabled ", "disabled 0 of 100", "hidden", "hidden", "hidden", "enabled connected at"};
    QTest::newRow("1.23") << "default" << VersionInfo(1, 23, 0) << 0
        << QStringList{"enabled Standard 180 Hz", "enabled Camera number", "enabled 50 of 100", "hidden", "hidden", "hidden",
                       "enabled connected at"};
    QTest::newRow("1.26") << "default" << VersionInfo(1, 26, 3) << 0
        << QStringList{"enabled Standard 180 Hz", "enabled Camera number", "enabled 50 of 100", "hidden", "enabled 10 of 100",
                       "hidden", "enabled connected at"};
    QTest::newRow("1.27") << "default" << scenarios << 0
        << QStringList{"enabled Standard 180 Hz", "enabled Camera number", "enabled 50 of 100", "enabled 30 of 100",
                       "enabled 10 of 100", "enabled 150 of 400", "enabled connected at"};
    QTest::newRow("no cascade slaves") << "briskbox" << scenarios << 0
        << QStringList{"enabled Standard 120 Hz", "enabled Camera number", "enabled 40 of 100", "hidden", "enabled 10 of 100",
                       "hidden", "hidden"};
}

void tst_CameraWdg::loading()
{
    QFETCH(QString, scenario);
    QFETCH(VersionInfo, protocol);
    QFETCH(int, page);
    QFETCH(QStringList, looks);

    PageRig rig(scenario);
    if (protocol.major() >= 0)
        rig.setProtocol(protocol);
    rig.load(true);
    CameraWdg* loaded = rig.pages.at(page);
    QCOMPARE(look(loaded, {"comboBox_cameraMode", "comboBox_displayMode", "horizontalSlider_displayIntensity",
                           "horizontalSlider_displayRingIntensity", "horizontalSlider_markerThreshold",
                           "horizontalSlider_sensorGain", "label_cascadedSystem"}), looks);
    QCOMPARE(look(loaded->findChild<QWidget*>("label_displayMode")).section(' ', 0, 0), looks.at(1).section(' ', 0, 0));
    // What the protocol lacks the page does not ask for.
    const QStringList unknown = rig.unknownToTheController();
    QVERIFY2(unknown.isEmpty(), qPrintable(unknown.join("\n")));
    QCOMPARE(rig.allMessages(), QStringList());
}

void tst_CameraWdg::flashRow()
{
    PageRig rig;
    rig.poke("camera flash_intensity c02 0");
    rig.poke("camera max_flash_intensity c02 0");
    rig.load(true);
    // 1280 x 1024 pixels: a chip of 11.52, so 40 pixels are 3.47 percent.
    QCOMPARE(look(rig.pages.at(0), {"label_model", "label_serial", "label_version", "label_focal", "horizontalSlider",
                                    "label_lowPower", "doubleSpinBox_markerMaxSize", "comboBox_markerMode",
                                    "horizontalSlider_exposureTime", "label_valSensorGain", "label_cascadedSystem_desc"}),
             (QStringList{"enabled LUMACAM5", "enabled 4711", "enabled 3.2.1", "enabled 12.50", "enabled 60 of 100", "hidden",
                          "enabled 3.5", "enabled accurate", "enabled 600 of 900", "enabled 1.5",
                          "enabled master of Cascaded System"}));
    // No flash allowed: nothing to move. The third camera may use 60 of 100 because of its
    // power supply: the slider takes 60 % of its row, steps by 10 and a red note says why.
    QCOMPARE(look(rig.pages.at(1), {"horizontalSlider", "spinBox", "label_exposureTimeUs"}),
             (QStringList{"disabled 0 of 0", "disabled 0", "disabled "}));
    QSlider* slider = rig.widget<QSlider>(2, "horizontalSlider");
    QCOMPARE(QString("%1 %2 %3").arg(slider->maximum()).arg(slider->singleStep()).arg(slider->pageStep()), QString("60 10 10"));
    auto* row = rig.pages.at(2)->findChild<QHBoxLayout*>("hBoxLayout_11");
    QCOMPARE(QString("%1+%2").arg(row->stretch(2)).arg(row->stretch(3)), QString("60+40"));
    QCOMPARE(look(rig.widget<QWidget>(2, "label_lowPower")), QStringLiteral(
        "enabled <b><font color=red>Reduced flash intensity because of limited power supply!</font></b>"));
    QCOMPARE(rig.pages.at(0)->findChild<QHBoxLayout*>("hBoxLayout_11")->count(), 4);
    QCOMPARE(look(rig.widget<QWidget>(3, "label_cascadedSystem_desc")),
             QStringLiteral("enabled slave of Cascaded System (tracker-slave1 ATC2)"));
    // Cameras 2 and 4 show another setting than the first: loading writes each back once,
    // and nothing else.
    QCOMPARE(rig.allRequests().filter("quarvo2 set"),
             (QStringList{set("camera display_setting c02 sync_group"), set("camera display_setting c04 off")}));
    QCOMPARE(rig.pages.at(1)->getDisplayMode(), QStringLiteral("sync_group"));
}

void tst_CameraWdg::syncGroups_data()
{
    QTest::addColumn<QByteArray>("channels");
    QTest::addColumn<QByteArray>("group");
    QTest::addColumn<int>("channel");

    QTest::newRow("channel 10") << QByteArray("10") << QByteArray("d01 ch10") << 10;
    QTest::newRow("channel 3") << QByteArray("8") << QByteArray("d01 ch03") << 3;
    QTest::newRow("none") << QByteArray("8") << QByteArray("none") << 1;
}

void tst_CameraWdg::syncGroups()
{
    QFETCH(QByteArray, channels);
    QFETCH(QByteArray, group);
    QFETCH(int, channel);

    PageRig rig;
    rig.poke("synccard number_of_channels d01 " + channels);
    rig.answerGet("camera sync_group c01", group);
    rig.load();
    QComboBox* combo = rig.widget<QComboBox>(0, "comboBox_syncGroup");
    const int last = combo->count() - 1;
    QCOMPARE(QString("%1 %2 %3").arg(combo->count()).arg(combo->itemText(last), combo->itemData(last).toString()),
             QString("%1 Channel %1 ch0%1").arg(channels.toInt()));
    QCOMPARE(combo->currentText(), QStringLiteral("Channel %1").arg(channel));
    QCOMPARE(rig.cell(0, Col::SyncGroup).toString(), combo->currentText());
    QCOMPARE(rig.pages.at(0)->getOldSyncGroup(), combo->currentText());
}

void tst_CameraWdg::loadFailures_data()
{
    QTest::addColumn<QString>("failing");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("disabled");

    QTest::newRow("sync card") << "*synccard number_of_channels*"
                               << "Error: Unable to get number of channels from synccard" << "";
    QTest::newRow("has display intensity") << "*has_display_intensity c01"
        << "Error: Unable to get info whether camera can display intensity" << "horizontalSlider_displayIntensity";
    QTest::newRow("display intensity") << "*get camera display_intensity c01"
        << "Error: Unable to get info display intensity" << "horizontalSlider_displayIntensity";
    QTest::newRow("has ring intensity") << "*has_display_ring_intensity c01"
        << "Error: Unable to get info if camera can display ring intensity" << "horizontalSlider_displayRingIntensity";
    QTest::newRow("ring intensity") << "*get camera display_ring_intensity c01"
        << "Error: Unable to get ring display intensity" << "horizontalSlider_displayRingIntensity";
    QTest::newRow("number of settings") << "*number_of_display_settings"
        << "Error: Unable to get info number of display settings" << "comboBox_displayMode";
    QTest::newRow("setting id") << "*display_setting_id t02" << "Error: Unable to get info display setting" << "";
    QTest::newRow("has setting") << "*has_display_setting c01 off" << "Error: Unable to get info display has setting" << "";
    QTest::newRow("setting description") << "*display_setting_desc sync_group"
        << "Error: Unable to get info display setting description" << "";
    // A maximum number of 0 stands for the most the camera takes.
    QTest::newRow("no marker maximum") << "" << "" << "";
}

void tst_CameraWdg::loadFailures()
{
    QFETCH(QString, failing);
    QFETCH(QString, message);
    QFETCH(QString, disabled);

    PageRig rig;
    if (failing.isEmpty())
        rig.answerGet("camera marker_max_number c01", "0");
    else
        rig.fail(failing);
    CameraWdg* page = rig.loadPage(0);
    QCOMPARE(rig.allMessages(), message.isEmpty() ? QStringList() : QStringList{operatorError(message)});
    if (!disabled.isEmpty())
        QVERIFY2(!page->findChild<QWidget*>(disabled)->isEnabled(), qPrintable(disabled));
    QCOMPARE(page->getDisplayIntensity(), failing.contains("display_intensity") ? 0 : 50);
    QCOMPARE(page->findChild<QSpinBox*>("spinBox_markerMaxNumber")->value(), failing.isEmpty() ? 400 : 200);
}

void tst_CameraWdg::displayDragSendsOneWriteLater()
{
    PageRig rig;
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
        for (int value = 20; value <= 80; value += 5) {
            // The timer about to run out: each movement starts the 500 ms afresh.
            if (debounce->isActive())
                debounce->start(1);
            moved->setValue(value);
            QVERIFY(debounce->isActive() && debounce->isSingleShot());
            QCOMPARE(debounce->interval(), 500);
            QVERIFY(debounce->remainingTime() > 400);
        }
        QCOMPARE(rig.cell(0, display.column).toInt(), 80);
        QVERIFY(rig.requests().isEmpty());
        QCOMPARE(fireDisplayTimers(&rig.host), 1);
        // One camera's display intensity can change the others': every camera is read again.
        QStringList expected{set(display.path + " 0.800000")};
        for (int row = 0; display.rereadAll && row < rig.table.rowCount(); ++row)
            expected << get(QStringLiteral("camera display_intensity c%1").arg(row + 1, 2, 10, QLatin1Char('0')));
        QCOMPARE(rig.requests(), expected);
        QCOMPARE(rig.controller()->peek(display.path.toLatin1()), QByteArray("0.8"));
        rig.mark();
    }
    // Enter on a page is swallowed.
    QTest::keyClick(rig.pages.at(0), Qt::Key_Return);
    QVERIFY(rig.host.isVisible() && rig.pages.at(0)->isVisible());
    // Hidden, a page drops what it still had to send: the overview's tab is shown instead.
    rig.widget<QSlider>(0, "horizontalSlider_displayIntensity")->setValue(70);
    rig.tabs->setCurrentIndex(1);
    QCOMPARE(fireDisplayTimers(&rig.host), 0);
    // Escape cancels the dialog around the page, not the page alone.
    QTest::keyClick(rig.pages.at(1), Qt::Key_Escape);
    QCOMPARE(rig.host.result(), int(QDialog::Rejected));
    QVERIFY(!rig.host.isVisible());
}

void tst_CameraWdg::markerSizeClamping()
{
    // Chip size 5.78 (the legacy sensor): a lower maximum diameter pulls the minimum
    // down with it, a higher minimum pushes the maximum up; the other box rounds.
    PageRig rig;
    rig.poke("camera limit marker_max_size c02 60");
    rig.load();
    auto* maxBox = rig.widget<QDoubleSpinBox>(1, "doubleSpinBox_markerMaxSize");
    auto* minBox = rig.widget<QDoubleSpinBox>(1, "doubleSpinBox_markerMinSize");
    minBox->setValue(40.0);
    maxBox->setValue(9.0);
    rig.table.resetChanges();
    maxBox->setValue(5.0);
    QCOMPARE(QString("%1 %2").arg(rig.cell(1, Col::MarkerMaxSize).toDouble()).arg(rig.cell(1, Col::MarkerMinSize).toDouble()),
             QString("5 28.9"));
    QCOMPARE(minBox->value(), 28.9);
    QVERIFY(rig.table.isChanged(1, Col::MarkerMinSize));
    maxBox->setValue(5.0);
    minBox->setValue(40.0);
    QVERIFY(qAbs(rig.cell(1, Col::MarkerMaxSize).toDouble() - 40 / 5.78) < 1e-9);
    QCOMPARE(maxBox->value(), 6.9);
    QVERIFY2(rig.requests().isEmpty(), "sizes go out on OK");
}

void tst_CameraWdg::controlsWriteTheirCells()
{
    PageRig rig;
    rig.load(true);
    rig.widget<QSlider>(2, "horizontalSlider_exposureTime")->setValue(1234);
    rig.widget<QSlider>(2, "horizontalSlider_sensorGain")->setValue(150);
    rig.widget<QSlider>(2, "horizontalSlider_markerThreshold")->setValue(25);
    rig.widget<QComboBox>(2, "comboBox_markerMode")->setCurrentIndex(1);
    rig.widget<QSpinBox>(2, "spinBox_markerMaxNumber")->setValue(123);
    rig.widget<QSpinBox>(2, "spinBox")->setValue(7);
    QCOMPARE(look(rig.pages.at(2), {"label_exposureTimeUs", "label_valSensorGain", "label_markerThresholdPercent",
                                    "horizontalSlider"}),
             (QStringList{"enabled 1234 us", "enabled 1.5", "enabled 25 %", "enabled 7 of 60"}));
    QStringList cells;
    for (int column : {Col::ExposureTime, Col::SensorGain, Col::MarkerThreshold, Col::MarkerMode, Col::MarkerMaxNumber,
                       Col::FlashIntensity, Col::ModFlash})
        cells << rig.cell(2, column).toString();
    QCOMPARE(cells, (QStringList{"1.234", "1.5", "0.25", "2", "123", "7", "true"}));
    // Only the first channel keeps modulated flash.
    rig.widget<QComboBox>(2, "comboBox_syncGroup")->setCurrentIndex(1);
    QCOMPARE(rig.cell(2, Col::SyncGroup).toString() + ' ' + rig.cell(2, Col::ModFlash).toString(), QString("Channel 2 false"));
    QVERIFY2(rig.requests().isEmpty(), "these go out on OK");

    // The default buttons ask the controller for its defaults and read them back.
    const auto pressAll = [&] {
        rig.widget<QSlider>(0, "horizontalSlider_markerThreshold")->setValue(40);
        rig.widget<QSlider>(0, "horizontalSlider_sensorGain")->setValue(250);
        rig.widget<QSlider>(0, "horizontalSlider_exposureTime")->setValue(800);
        for (const char* button : {"pushButton_markerThresholdDefault", "pushButton_defaultSensorGain",
                                   "pushButton_exposureTimeDefault"})
            rig.widget<QAbstractButton>(0, button)->click();
        return QStringList{rig.cell(0, Col::MarkerThreshold).toString(), rig.cell(0, Col::SensorGain).toString(),
                           rig.cell(0, Col::ExposureTime).toString()};
    };
    QCOMPARE(pressAll(), (QStringList{"0.1", "1", "0.4"}));
    QCOMPARE(rig.requests(), (QStringList{
        set("camera marker_threshold c01 default"), get("camera marker_threshold c01"),
        set("camera sensor_gain c01 default"), get("camera sensor_gain c01"),
        set("camera sensor_exposure c01 default"), get("camera sensor_exposure c01")}));
    // Refused defaults are reported and fall back to the page's own defaults.
    rig.fail("*marker_threshold c01*");
    rig.fail("*sensor_gain c01*");
    rig.fail("*sensor_exposure c01*");
    QCOMPARE(pressAll(), (QStringList{"0.1", "1", "0"}));
    QCOMPARE(rig.allMessages(), (QStringList{operatorError("Error: Unable to set marker threshold to default"),
                                             operatorError("Error: Unable to set sensor gain to default"),
                                             operatorError("Error: Unable to set default exposure time")}));
}

void tst_CameraWdg::automaticExposure()
{
    // The all-in-one box's two cameras switch together.
    PageRig rig(QStringLiteral("briskbox"));
    rig.load(true);
    rig.widget<QAbstractButton>(0, "checkBox_autoExposureCtrl")->click();
    QCOMPARE(rig.requests(), (QStringList{set("camera sensor_exposure c01 auto"), set("camera sensor_exposure c02 auto")}));
    QCOMPARE(look(rig.pages.at(0), {"horizontalSlider_exposureTime", "label_exposureTimeUs"}),
             (QStringList{"disabled 0 of 1000", "disabled "}));
    QCOMPARE(rig.cell(1, Col::AutoExposureTime).toString() + ' ' + rig.cell(0, Col::ExposureTime).toString(), QString("true 0"));
    rig.mark();
    rig.widget<QAbstractButton>(0, "checkBox_autoExposureCtrl")->click();
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

    const QStringList modeAndReadBack = {set("camera mode c01 m03"), get("camera max_sensor_exposure c01"),
                                         get("camera sensor_exposure c01")};
    QTest::newRow("no pending exposure") << true << 600 << QStringList{get("camera mode_desc c01 m03")} + modeAndReadBack;
    QTest::newRow("pending exposure")
        << true << 700 << QStringList{get("camera mode_desc c01 m03"), set("camera sensor_exposure c01 0.700000")}
                          + modeAndReadBack;
    // The table says the camera has a single mode: nothing is set, the exposure is read again.
    QTest::newRow("camera without modes") << false << 600
                                          << QStringList{get("camera mode_desc c01 m03")} + modeAndReadBack.mid(1);
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

void tst_CameraWdg::setterFailures_data()
{
    QTest::addColumn<QString>("failing");
    QTest::addColumn<QString>("message");

    QTest::newRow("orientation") << "*display_upside_down c01 yes" << "Error: Unable to set camera display orientation";
    QTest::newRow("intensity") << "*set camera display_intensity*" << "Error: Unable to set camera display intensity";
    QTest::newRow("ring") << "*set camera display_ring_intensity*" << "Error: Unable to set camera ring display intensity";
    QTest::newRow("mode") << "*set camera display_setting*" << "Error: Unable to set camera display mode";
}

void tst_CameraWdg::setterFailures()
{
    QFETCH(QString, failing);
    QFETCH(QString, message);

    PageRig rig;
    rig.load();
    rig.fail(failing, 1);
    CameraWdg* page = rig.pages.at(0);
    const auto setAll = [page](int orientation, int percent, const QString& setting) {
        return QVector<int>{page->setCameraOrientation(orientation), page->setDisplayIntensity(percent),
                            page->setDisplayRingIntensity(percent), page->setDisplayMode(setting)};
    };
    QCOMPARE(setAll(1, 90, "off").count(-1), 1);
    QCOMPARE(rig.allMessages(), QStringList{operatorError(message)});
    // The member keeps the value of the controller, so the same call tries again; a
    // disabled page sends nothing.
    rig.mark();
    QCOMPARE(setAll(1, 90, "off").count(0), 4);
    page->setEnabled(false);
    QCOMPARE(setAll(0, 10, "camera_id").count(0), 4);
    QCOMPARE(rig.requests().size(), 1);
}

void tst_CameraWdg::modelPictures()
{
    // Each model's picture: 120 x 90, and told apart from the others at a glance, so a
    // few stray pixels are not enough. The dialog's icons are there too.
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
    for (const char* icon : {":/lock.png", ":/images/lock.png", ":/green_hook.png", ":/red_cross.png"})
        QCOMPARE(QImage(QLatin1String(icon)).size(), QSize(32, 32));
}

void tst_CameraWdg::showingAndHiding_data()
{
    QTest::addColumn<VersionInfo>("protocol");
    QTest::addColumn<bool>("automatic");
    QTest::addColumn<QStringList>("looks"); // exposure, flash, sync group, marker mode, automatic exposure

    QTest::newRow("manual") << VersionInfo(1, 27, 0) << false
                            << QStringList{"enabled 750 of 900", "enabled 33", "enabled Channel 4", "enabled fast", "enabled off"};
    QTest::newRow("automatic") << VersionInfo(1, 27, 0) << true
                               << QStringList{"disabled 0 of 900", "enabled 33", "enabled Channel 4", "enabled fast", "enabled on"};
    QTest::newRow("1.14, without display marks") << VersionInfo(1, 14, 0) << false
                                                 << QStringList{"hidden", "enabled 33", "enabled Channel 4", "enabled fast", "hidden"};
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
    QCOMPARE(look(rig.pages.at(0), {"horizontalSlider_exposureTime", "spinBox", "comboBox_syncGroup",
                                    "comboBox_markerMode", "checkBox_autoExposureCtrl"}), looks);
    QVERIFY(!rig.table.isChanged(0, Col::FlashIntensity));
    QCOMPARE(rig.table.isChanged(0, Col::ExposureTime), automatic);
    rig.tabs->setCurrentIndex(1);
    rig.tabs->setCurrentIndex(4);
    rig.host.hide();
    // From 1.15 on, the shown camera marks itself on its display.
    const QStringList marks{set("camera display_mark c02 yes"), set("camera display_mark c02 no"),
                            set("camera display_mark c01 yes"), set("camera display_mark c01 no"),
                            set("camera display_mark c02 yes"), set("camera display_mark c02 no")};
    QCOMPARE(rig.requests().filter(QStringLiteral("display_mark")), protocol >= VersionInfo(1, 15, -1) ? marks : QStringList());
}

QTEST_MAIN(tst_CameraWdg)
#include "tst_camerawdg.moc"
