// The camera page against the simulated controller: what it shows after loading (per
// protocol version, with its defaults and operator messages), what the operator's
// changes write into the camera table and send to the controller, and what showing and
// hiding the page does.
#include "CameraWdg.h"
#include "cameratablecolumns.h"
#include "dialogscenarios.h"
#include "displaytimers.h"
#include "pagerig.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QSlider>
#include <QSpinBox>
#include <QTabWidget>
#include <QtTest>

namespace Col = CameraTable;

namespace {

QString textOf(QWidget* widget)
{
    if (auto* label = qobject_cast<QLabel*>(widget))
        return label->text();
    if (auto* combo = qobject_cast<QComboBox*>(widget))
        return combo->currentText();
    if (auto* slider = qobject_cast<QSlider*>(widget))
        return QStringLiteral("%1 of %2").arg(slider->value()).arg(slider->maximum());
    if (auto* spin = qobject_cast<QAbstractSpinBox*>(widget))
        return spin->text();
    if (auto* button = qobject_cast<QAbstractButton*>(widget))
        return button->isChecked() ? QStringLiteral("on") : QStringLiteral("off");
    return QString();
}

// "enabled", "disabled" or "hidden", as the operator finds a control of the shown page.
QString stateOf(QWidget* widget)
{
    if (widget->isHidden())
        return QStringLiteral("hidden");
    return widget->isEnabled() ? QStringLiteral("enabled") : QStringLiteral("disabled");
}

} // namespace

class tst_CameraWdg : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void controlsOfEachProtocol_data();
    void controlsOfEachProtocol();
    void loadedValues_data();
    void loadedValues();
    void reducedFlashMaximum();
    void syncGroups_data();
    void syncGroups();
    void loadFailures_data();
    void loadFailures();
    void otherDisplaySettingWrittenBackOnce();

    void displayDragSendsOneWriteLater_data();
    void displayDragSendsOneWriteLater();
    void hidingDropsPendingWrite();
    void markerSizeClamping_data();
    void markerSizeClamping();
    void controlsWriteTheirCells();
    void defaultButtons();
    void cameraModeChange_data();
    void cameraModeChange();
    void automaticExposure();
    void setterFailures_data();
    void setterFailures();

    void modelPictures_data();
    void modelPictures();
    void showingMirrorsRow_data();
    void showingMirrorsRow();
    void displayMarkFollowsVisibility_data();
    void displayMarkFollowsVisibility();
    void keysAndDetails();
};

void tst_CameraWdg::cleanup()
{
    QVERIFY2(QApplication::topLevelWidgets().isEmpty(), "a test left a window behind");
}

// ---------------------------------------------------------------------------------
// Loading

void tst_CameraWdg::controlsOfEachProtocol_data()
{
    QTest::addColumn<QString>("scenario");
    QTest::addColumn<VersionInfo>("protocol");
    QTest::addColumn<QStringList>("states"); // camera mode, display mode, display intensity, ring, threshold, gain, cascade

    QTest::newRow("legacy") << "legacy" << VersionInfo(-1, 0, 0)
                            << QStringList{"disabled", "disabled", "disabled", "hidden", "hidden", "hidden", "hidden"};
    QTest::newRow("1.14") << "default" << VersionInfo(1, 14, 0)
                          << QStringList{"disabled", "disabled", "disabled", "hidden", "hidden", "hidden", "enabled"};
    QTest::newRow("1.23") << "default" << VersionInfo(1, 23, 0)
                          << QStringList{"enabled", "enabled", "enabled", "hidden", "hidden", "hidden", "enabled"};
    QTest::newRow("1.26") << "default" << VersionInfo(1, 26, 3)
                          << QStringList{"enabled", "enabled", "enabled", "hidden", "enabled", "hidden", "enabled"};
    QTest::newRow("1.27") << "default" << VersionInfo(1, 27, 0)
                          << QStringList{"enabled", "enabled", "enabled", "enabled", "enabled", "enabled", "enabled"};
    QTest::newRow("no cascade slaves") << "briskbox" << VersionInfo(1, 27, 0)
                                       << QStringList{"enabled", "enabled", "enabled", "hidden", "enabled", "hidden", "hidden"};
}

void tst_CameraWdg::controlsOfEachProtocol()
{
    QFETCH(QString, scenario);
    QFETCH(VersionInfo, protocol);
    QFETCH(QStringList, states);

    PageRig rig(scenario);
    if (protocol.major() >= 0)
        rig.setProtocol(protocol);
    CameraWdg* page = rig.loadPage(0);
    page->showDetails(true);
    QStringList shown;
    for (const char* name : {"comboBox_cameraMode", "comboBox_displayMode", "horizontalSlider_displayIntensity",
                             "horizontalSlider_displayRingIntensity", "horizontalSlider_markerThreshold",
                             "horizontalSlider_sensorGain", "label_cascadedSystem"})
        shown << stateOf(page->findChild<QWidget*>(name));
    QCOMPARE(shown, states);
    QCOMPARE(stateOf(page->findChild<QWidget*>("label_displayMode")), states.at(1));
    const QStringList unknown = rig.unknownToTheController();
    QVERIFY2(unknown.isEmpty(), qPrintable(unknown.join("\n")));
    QCOMPARE(rig.allMessages(), QStringList());
}

void tst_CameraWdg::loadedValues_data()
{
    QTest::addColumn<QString>("scenario");
    QTest::addColumn<int>("page");
    QTest::addColumn<QStringList>("widgets");
    QTest::addColumn<QStringList>("texts");

    QTest::newRow("identity") << "default" << 0
        << QStringList{"label_model", "label_serial", "label_version", "label_focal", "horizontalSlider", "label_cascadedSystem_desc"}
        << QStringList{"LUMACAM5", "4711", "3.2.1", "12.50", "60 of 100", "master of Cascaded System"};
    // 1280 x 1024 pixels: a chip of 11.52, so 40 pixels are 3.47 percent.
    QTest::newRow("markers and sensor") << "default" << 0
        << QStringList{"doubleSpinBox_markerMaxSize", "comboBox_markerMode", "comboBox_cameraMode",
                       "horizontalSlider_exposureTime", "label_exposureTimeUs", "horizontalSlider_sensorGain",
                       "label_valSensorGain", "horizontalSlider_displayRingIntensity"}
        << QStringList{"3.5", "accurate", "Standard 180 Hz", "600 of 900", "600 us", "150 of 400", "1.5", "30 of 100"};
    QTest::newRow("automatic exposure") << "default" << 1 << QStringList{"label_exposureTimeUs", "horizontalSlider_exposureTime"}
                                        << QStringList{"", "0 of 1500"};
    QTest::newRow("cascade slave") << "default" << 3 << QStringList{"label_cascadedSystem_desc"}
                                   << QStringList{"slave of Cascaded System (tracker-slave1 ATC2)"};
    QTest::newRow("switches") << "three" << 2 << QStringList{"checkBox_static_reflex_skip", "checkBox_modulated"}
                              << QStringList{"on", "off"};
    QTest::newRow("old controller") << "legacy" << 0 << QStringList{"label_model", "label_serial", "horizontalSlider",
                                                                    "comboBox_syncGroup"}
                                    << QStringList{"LUMACAM3", "1022", "45 of 80", "Channel 1"};
}

void tst_CameraWdg::loadedValues()
{
    QFETCH(QString, scenario);
    QFETCH(int, page);
    QFETCH(QStringList, widgets);
    QFETCH(QStringList, texts);

    PageRig rig(scenario == "three" ? QStringLiteral("default") : scenario);
    if (scenario == "three")
        rig.useScenarioJson(DialogScenarios::ThreeAndTwoMissing);
    rig.load();
    QStringList shown;
    for (const QString& name : widgets)
        shown << textOf(rig.widget<QWidget>(page, name.toLatin1()));
    QCOMPARE(shown, texts);
    QCOMPARE(rig.allMessages(), QStringList());
}

void tst_CameraWdg::reducedFlashMaximum()
{
    PageRig rig;
    rig.poke("camera flash_intensity c02 0");
    rig.poke("camera max_flash_intensity c02 0");
    rig.load();
    // The third camera may use 60 of 100 because of its power supply: the slider takes
    // 60 % of its row, steps by 10 and a red note says why.
    QSlider* slider = rig.widget<QSlider>(2, "horizontalSlider");
    QCOMPARE(slider->maximum(), 60);
    QCOMPARE(slider->singleStep(), 10);
    QCOMPARE(slider->pageStep(), 10);
    auto* row = rig.pages.at(2)->findChild<QHBoxLayout*>("hBoxLayout_11");
    QCOMPARE(row->stretch(2), 60);
    QCOMPARE(row->stretch(3), 40);
    QCOMPARE(stateOf(rig.widget<QLabel>(2, "label_lowPower")), QStringLiteral("enabled"));
    QCOMPARE(rig.widget<QLabel>(2, "label_lowPower")->text(), QStringLiteral(
        "<b><font color=red>Reduced flash intensity because of limited power supply!</font></b>"));
    // A full supply: no stretch, no note; no flash allowed: nothing to move.
    QCOMPARE(rig.pages.at(0)->findChild<QHBoxLayout*>("hBoxLayout_11")->count(), 4);
    QCOMPARE(stateOf(rig.widget<QLabel>(0, "label_lowPower")), QStringLiteral("hidden"));
    QCOMPARE(stateOf(rig.widget<QSlider>(1, "horizontalSlider")), QStringLiteral("disabled"));
    QCOMPARE(stateOf(rig.widget<QSpinBox>(1, "spinBox")), QStringLiteral("disabled"));
}

void tst_CameraWdg::syncGroups_data()
{
    QTest::addColumn<QByteArray>("channels");
    QTest::addColumn<QByteArray>("group");
    QTest::addColumn<int>("index");

    QTest::newRow("channel 10") << QByteArray("10") << QByteArray("d01 ch10") << 9;
    QTest::newRow("channel 3") << QByteArray("8") << QByteArray("d01 ch03") << 2;
    QTest::newRow("none") << QByteArray("8") << QByteArray("none") << 0;
}

void tst_CameraWdg::syncGroups()
{
    QFETCH(QByteArray, channels);
    QFETCH(QByteArray, group);
    QFETCH(int, index);

    PageRig rig;
    rig.poke("synccard number_of_channels d01 " + channels);
    rig.answerGet("camera sync_group c01", group);
    rig.load();
    QComboBox* combo = rig.widget<QComboBox>(0, "comboBox_syncGroup");
    QCOMPARE(combo->count(), channels.toInt());
    QCOMPARE(combo->itemText(combo->count() - 1), QStringLiteral("Channel %1").arg(channels.toInt()));
    QCOMPARE(combo->itemData(combo->count() - 1).toString(), QStringLiteral("ch0%1").arg(channels.toInt()));
    QCOMPARE(combo->currentIndex(), index);
    QCOMPARE(rig.cell(0, Col::SyncGroup).toString(), QStringLiteral("Channel %1").arg(index + 1));
    QCOMPARE(rig.pages.at(0)->getOldSyncGroup(), QStringLiteral("Channel %1").arg(index + 1));
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

void tst_CameraWdg::otherDisplaySettingWrittenBackOnce()
{
    // Camera 2 shows "sync_group", not the first setting: loading writes it back once.
    PageRig rig;
    CameraWdg* page = rig.loadPage(1);
    QCOMPARE(rig.requests().filter("quarvo2 set"), QStringList{set("camera display_setting c02 sync_group")});
    QCOMPARE(page->getDisplayMode(), QStringLiteral("sync_group"));
    rig.mark();
    rig.loadPage(0);
    QCOMPARE(rig.requests().filter("quarvo2 set"), QStringList());
}

// ---------------------------------------------------------------------------------
// Editing

void tst_CameraWdg::displayDragSendsOneWriteLater_data()
{
    QTest::addColumn<QString>("slider");
    QTest::addColumn<QString>("timer");
    QTest::addColumn<QString>("label");
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("path");

    QTest::newRow("display") << "horizontalSlider_displayIntensity" << "timerDisplayIntensity"
                             << "label_displayIntensityPercent" << int(Col::DisplayIntensity) << "display_intensity";
    QTest::newRow("ring") << "horizontalSlider_displayRingIntensity" << "timerDisplayRingIntensity"
                          << "label_displayRingIntensityPercent" << int(Col::RingDisplayIntensity) << "display_ring_intensity";
}

void tst_CameraWdg::displayDragSendsOneWriteLater()
{
    QFETCH(QString, slider);
    QFETCH(QString, timer);
    QFETCH(QString, label);
    QFETCH(int, column);
    QFETCH(QString, path);

    PageRig rig;
    rig.load();
    auto* moved = rig.widget<QSlider>(0, slider.toLatin1());
    auto* debounce = rig.pages.at(0)->findChild<QTimer*>(timer);
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
    QCOMPARE(rig.cell(0, column).toInt(), 80);
    QCOMPARE(rig.widget<QLabel>(0, label.toLatin1())->text(), QStringLiteral("80%"));
    QVERIFY(rig.requests().isEmpty());
    QCOMPARE(fireDisplayTimers(&rig.host), 1);
    QCOMPARE(rig.requests().first(), set("camera " + path + " c01 0.800000"));
    QCOMPARE(rig.controller()->peek("camera " + path.toLatin1() + " c01"), QByteArray("0.8"));
}

void tst_CameraWdg::hidingDropsPendingWrite()
{
    PageRig rig;
    rig.load();
    rig.show();
    rig.mark();
    rig.widget<QSlider>(0, "horizontalSlider_displayIntensity")->setValue(70);
    rig.tabs->setCurrentIndex(1);
    QCOMPARE(fireDisplayTimers(rig.pages.at(0)), 0);
    QCOMPARE(rig.requests().filter("c01"), QStringList{set("camera display_mark c01 no")});
    rig.host.hide();
}

void tst_CameraWdg::markerSizeClamping_data()
{
    QTest::addColumn<QString>("touched");
    QTest::addColumn<double>("value");
    QTest::addColumn<double>("maxPercent");
    QTest::addColumn<double>("minPixels");

    // Chip size 5.78; the minimum starts at 40 pixels or the maximum at 5.0 percent.
    QTest::newRow("maximum lowered") << "doubleSpinBox_markerMaxSize" << 5.0 << 5.0 << 28.9;
    QTest::newRow("minimum raised") << "doubleSpinBox_markerMinSize" << 40.0 << 40 / 5.78 << 40.0;
}

void tst_CameraWdg::markerSizeClamping()
{
    QFETCH(QString, touched);
    QFETCH(double, value);
    QFETCH(double, maxPercent);
    QFETCH(double, minPixels);

    PageRig rig;
    rig.poke("camera limit marker_max_size c02 60");
    rig.load();
    auto* maxBox = rig.widget<QDoubleSpinBox>(1, "doubleSpinBox_markerMaxSize");
    auto* minBox = rig.widget<QDoubleSpinBox>(1, "doubleSpinBox_markerMinSize");
    if (touched == QLatin1String("doubleSpinBox_markerMaxSize")) {
        minBox->setValue(40.0);
        maxBox->setValue(9.0);
    } else {
        maxBox->setValue(5.0);
        minBox->setValue(2.0);
    }
    rig.table.resetChanges();
    rig.widget<QDoubleSpinBox>(1, qPrintable(touched))->setValue(value);

    QVERIFY(qAbs(rig.cell(1, Col::MarkerMaxSize).toDouble() - maxPercent) < 1e-9);
    QVERIFY(qAbs(rig.cell(1, Col::MarkerMinSize).toDouble() - minPixels) < 1e-9);
    QVERIFY(rig.table.isChanged(1, Col::MarkerMaxSize) && rig.table.isChanged(1, Col::MarkerMinSize));
    QCOMPARE(maxBox->value(), qRound(maxPercent * 10) / 10.0);
    QCOMPARE(minBox->value(), qRound(minPixels * 10) / 10.0);
    QVERIFY(rig.requests().isEmpty());
}

void tst_CameraWdg::controlsWriteTheirCells()
{
    PageRig rig;
    rig.load();
    rig.widget<QSlider>(2, "horizontalSlider_exposureTime")->setValue(1234);
    rig.widget<QSlider>(2, "horizontalSlider_sensorGain")->setValue(150);
    rig.widget<QSlider>(2, "horizontalSlider_markerThreshold")->setValue(25);
    rig.widget<QComboBox>(2, "comboBox_markerMode")->setCurrentIndex(1);
    rig.widget<QSpinBox>(2, "spinBox_markerMaxNumber")->setValue(123);
    rig.widget<QSpinBox>(2, "spinBox")->setValue(7);
    QStringList labels;
    for (const char* name : {"label_exposureTimeUs", "label_valSensorGain", "label_markerThresholdPercent"})
        labels << rig.widget<QLabel>(2, name)->text();
    QCOMPARE(labels, (QStringList{"1234 us", "1.5", "25 %"}));
    QCOMPARE(rig.cell(2, Col::ExposureTime).toDouble(), 1.234);
    QCOMPARE(rig.cell(2, Col::SensorGain).toDouble(), 1.5);
    QCOMPARE(rig.cell(2, Col::MarkerThreshold).toDouble(), 0.25);
    QCOMPARE(rig.cell(2, Col::MarkerMode).toInt(), 2);
    QCOMPARE(rig.cell(2, Col::MarkerMaxNumber).toInt(), 123);
    QCOMPARE(rig.cell(2, Col::FlashIntensity).toInt(), 7);
    QCOMPARE(rig.widget<QSlider>(2, "horizontalSlider")->value(), 7);
    // Only the first channel keeps modulated flash.
    QVERIFY(rig.cell(2, Col::ModFlash).toBool());
    rig.widget<QComboBox>(2, "comboBox_syncGroup")->setCurrentIndex(1);
    QCOMPARE(rig.cell(2, Col::SyncGroup).toString(), QStringLiteral("Channel 2"));
    QVERIFY(!rig.cell(2, Col::ModFlash).toBool());
    QVERIFY2(rig.requests().isEmpty(), "these go out on OK");
}

void tst_CameraWdg::defaultButtons()
{
    PageRig rig;
    rig.load();
    const char* buttons[] = {"pushButton_markerThresholdDefault", "pushButton_defaultSensorGain",
                             "pushButton_exposureTimeDefault"};
    rig.widget<QSlider>(0, "horizontalSlider_markerThreshold")->setValue(40);
    rig.widget<QSlider>(0, "horizontalSlider_sensorGain")->setValue(250);
    rig.widget<QSlider>(0, "horizontalSlider_exposureTime")->setValue(800);
    for (const char* button : buttons)
        rig.widget<QAbstractButton>(0, button)->click();
    QCOMPARE(rig.requests(), (QStringList{
        set("camera marker_threshold c01 default"), get("camera marker_threshold c01"),
        set("camera sensor_gain c01 default"), get("camera sensor_gain c01"),
        set("camera sensor_exposure c01 default"), get("camera sensor_exposure c01")}));
    QCOMPARE(rig.cell(0, Col::MarkerThreshold).toDouble(), 0.1);
    QCOMPARE(rig.cell(0, Col::SensorGain).toDouble(), 1.0);
    QCOMPARE(rig.cell(0, Col::ExposureTime).toDouble(), 0.4);
    QCOMPARE(textOf(rig.widget<QSlider>(0, "horizontalSlider_markerThreshold")), QStringLiteral("10 of 100"));

    // Refused defaults are reported and fall back to the page's own defaults.
    rig.fail("*marker_threshold c01*");
    rig.fail("*sensor_gain c01*");
    rig.fail("*sensor_exposure c01*");
    rig.widget<QSlider>(0, "horizontalSlider_markerThreshold")->setValue(40);
    for (const char* button : buttons)
        rig.widget<QAbstractButton>(0, button)->click();
    QCOMPARE(rig.allMessages(), (QStringList{operatorError("Error: Unable to set marker threshold to default"),
                                             operatorError("Error: Unable to set sensor gain to default"),
                                             operatorError("Error: Unable to set default exposure time")}));
    QCOMPARE(rig.widget<QSlider>(0, "horizontalSlider_markerThreshold")->value(), 10);
    QCOMPARE(rig.widget<QSlider>(0, "horizontalSlider_exposureTime")->value(), 0);
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
    rig.load();
    if (!withModes)
        rig.setCellQuietly(0, Col::HasCameraMode, false);
    rig.widget<QSlider>(0, "horizontalSlider_exposureTime")->setValue(exposureUs);
    rig.widget<QComboBox>(0, "comboBox_cameraMode")->setCurrentIndex(2);

    QCOMPARE(rig.requests(), expected);
    QCOMPARE(rig.allMessages(), withModes ? QStringList{ConfigurationEvent} : QStringList());
    QCOMPARE(rig.cell(0, Col::CameraModeData).toString(), QStringLiteral("m03"));
    QCOMPARE(rig.cell(0, Col::CameraMode).toString(), QStringLiteral("Full frame 60 Hz"));
    // The new mode allows 2 ms; the exposure comes back as the controller holds it.
    if (withModes)
        QCOMPARE(textOf(rig.widget<QSlider>(0, "horizontalSlider_exposureTime")), QStringLiteral("%1 of 2000").arg(exposureUs));
}

void tst_CameraWdg::automaticExposure()
{
    // The all-in-one box's two cameras switch together.
    PageRig rig(QStringLiteral("briskbox"));
    rig.load();
    rig.widget<QCheckBox>(0, "checkBox_autoExposureCtrl")->click();
    QCOMPARE(rig.requests(), (QStringList{set("camera sensor_exposure c01 auto"), set("camera sensor_exposure c02 auto")}));
    QVERIFY(rig.cell(1, Col::AutoExposureTime).toBool());
    QCOMPARE(rig.cell(0, Col::ExposureTime).toDouble(), 0.0);
    QVERIFY(!rig.widget<QSlider>(0, "horizontalSlider_exposureTime")->isEnabled());
    QCOMPARE(rig.widget<QLabel>(0, "label_exposureTimeUs")->text(), QString());

    rig.mark();
    rig.widget<QCheckBox>(0, "checkBox_autoExposureCtrl")->click();
    QCOMPARE(rig.requests(), (QStringList{set("camera sensor_exposure c01 default"), get("camera sensor_exposure c01"),
                                          set("camera sensor_exposure c02 default"), get("camera sensor_exposure c02")}));
    QVERIFY(!rig.cell(1, Col::AutoExposureTime).toBool());
    QCOMPARE(rig.cell(1, Col::ExposureTime).toDouble(), 0.5);
    QCOMPARE(textOf(rig.widget<QSlider>(0, "horizontalSlider_exposureTime")), QStringLiteral("500 of 1000"));
    rig.widget<QSlider>(1, "horizontalSlider_exposureTime")->setValue(321);
    QCOMPARE(rig.cell(0, Col::ExposureTime).toDouble(), 0.321);
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
    rig.fail(failing);
    CameraWdg* page = rig.pages.at(0);
    const auto setAll = [page](int orientation, int percent, const QString& setting) {
        return QVector<int>{page->setCameraOrientation(orientation), page->setDisplayIntensity(percent),
                            page->setDisplayRingIntensity(percent), page->setDisplayMode(setting)};
    };
    QCOMPARE(setAll(1, 90, "off").count(-1), 1);
    QCOMPARE(rig.allMessages(), QStringList{operatorError(message)});
    // The member keeps the value of the controller, so the same call tries again.
    rig.clearFaults();
    rig.mark();
    QCOMPARE(setAll(1, 90, "off").count(0), 4);
    QCOMPARE(rig.requests().size(), 1);
    // A disabled page sends nothing.
    rig.mark();
    page->setEnabled(false);
    QCOMPARE(setAll(0, 10, "camera_id").count(0), 4);
    QVERIFY(rig.requests().isEmpty());
}

// ---------------------------------------------------------------------------------
// Presentation

void tst_CameraWdg::modelPictures_data()
{
    QTest::addColumn<int>("modelId");
    QTest::addColumn<QString>("serial");
    QTest::addColumn<QString>("picture");

    QTest::newRow("0x0402") << 0x0402 << "1" << "lumacam_kp_s1";
    QTest::newRow("0x0401") << 0x0401 << "1" << "lumacam_kp_s0";
    QTest::newRow("0x0403") << 0x0403 << "1" << "lumacam_kpc";
    QTest::newRow("0x0B01 L") << 0x0B01 << "20311L" << "briskbox3_left";
    QTest::newRow("0x0B01 l") << 0x0B01 << "20311l" << "briskbox3_right";
    QTest::newRow("0x0D02 L") << 0x0D02 << "4711L" << "briskbox3m_left";
    QTest::newRow("0x0E01") << 0x0E01 << "1" << "LC9-30";
    QTest::newRow("0x0700") << 0x0700 << "1" << "unknown";
    QTest::newRow("0x0000") << 0x0000 << "" << "unknown";
}

void tst_CameraWdg::modelPictures()
{
    QFETCH(int, modelId);
    QFETCH(QString, serial);
    QFETCH(QString, picture);

    const QString path = QStringLiteral(":/images/%1_transparent.png").arg(picture);
    QCOMPARE(CameraWdg::modelPicture(modelId, serial), path);
    QVERIFY2(!QPixmap(path).isNull(), qPrintable(path + " is not in the resources"));
}

void tst_CameraWdg::showingMirrorsRow_data()
{
    QTest::addColumn<bool>("automatic");
    QTest::addColumn<QString>("exposure");

    QTest::newRow("manual 0.75 ms") << false << "750 of 900";
    QTest::newRow("automatic") << true << "0 of 900";
}

void tst_CameraWdg::showingMirrorsRow()
{
    QFETCH(bool, automatic);
    QFETCH(QString, exposure);

    PageRig rig;
    rig.load();
    rig.tabs->setCurrentIndex(1);
    rig.setCellQuietly(0, Col::ExposureTime, 0.75);
    rig.setCellQuietly(0, Col::AutoExposureTime, automatic);
    rig.setCellQuietly(0, Col::FlashIntensity, 33);
    rig.setCellQuietly(0, Col::SyncGroup, QStringLiteral("Channel 4"));
    rig.setCellQuietly(0, Col::MarkerMode, 2);
    rig.show();
    rig.tabs->setCurrentIndex(0);

    QStringList shown;
    for (const char* name : {"horizontalSlider_exposureTime", "spinBox", "comboBox_syncGroup", "comboBox_markerMode"})
        shown << textOf(rig.widget<QWidget>(0, name));
    QCOMPARE(shown, (QStringList{exposure, "33", "Channel 4", "fast"}));
    QCOMPARE(rig.widget<QCheckBox>(0, "checkBox_autoExposureCtrl")->isChecked(), automatic);
    // Mirroring the row is no change of the operator's; under automatic exposure the
    // slider drops to 0 afterwards and that does reach the row.
    QVERIFY(!rig.table.isChanged(0, Col::FlashIntensity));
    QCOMPARE(rig.table.isChanged(0, Col::ExposureTime), automatic);
    QCOMPARE(rig.requests().filter("display_mark c01"), QStringList{set("camera display_mark c01 yes")});
    rig.host.hide();
}

void tst_CameraWdg::displayMarkFollowsVisibility_data()
{
    QTest::addColumn<VersionInfo>("protocol");
    QTest::addColumn<QStringList>("marks");

    QTest::newRow("1.15") << VersionInfo(1, 15, 0)
                          << QStringList{set("camera display_mark c01 yes"), set("camera display_mark c01 no"),
                                         set("camera display_mark c02 yes"), set("camera display_mark c02 no")};
    QTest::newRow("1.14") << VersionInfo(1, 14, 0) << QStringList();
}

void tst_CameraWdg::displayMarkFollowsVisibility()
{
    QFETCH(VersionInfo, protocol);
    QFETCH(QStringList, marks);

    PageRig rig;
    rig.setProtocol(protocol);
    rig.load();
    // A page that was never loaded marks nothing.
    auto* unloaded = new CameraWdg(rig.channel(), &rig.host, rig.versions());
    rig.tabs->addTab(unloaded, QStringLiteral("missing"));
    rig.show();
    rig.tabs->setCurrentIndex(1);
    rig.tabs->setCurrentWidget(unloaded);
    rig.host.hide();
    QCOMPARE(rig.requests().filter(QStringLiteral("display_mark")), marks);
}

void tst_CameraWdg::keysAndDetails()
{
    PageRig rig;
    rig.load();
    rig.show();
    QTest::keyClick(rig.pages.at(0), Qt::Key_Return);
    QVERIFY2(rig.host.isVisible(), "Enter on a page is swallowed");
    // Camera 4 has no marker threshold and no dynamic reflex suppression.
    CameraWdg* page = rig.pages.at(3);
    QStringList states;
    const auto look = [&] {
        for (const char* name : {"doubleSpinBox_markerMaxSize", "horizontalSlider_markerThreshold",
                                 "comboBox_markerMode", "checkBox_dynamic_reflex_skip"})
            states << stateOf(rig.widget<QWidget>(3, name));
    };
    look();
    page->showDetails(true);
    look();
    page->setVisibleDynReflexSuppr(true);
    look();
    QCOMPARE(states, (QStringList{"hidden", "hidden", "hidden", "hidden", "enabled", "hidden", "enabled", "hidden",
                                  "enabled", "hidden", "enabled", "enabled"}));
    QTest::keyClick(rig.pages.at(0), Qt::Key_Escape);
    QVERIFY(!rig.host.isVisible());
    QCOMPARE(rig.host.result(), int(QDialog::Rejected));
}

QTEST_MAIN(tst_CameraWdg)
#include "tst_camerawdg.moc"
