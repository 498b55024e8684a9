// The camera page against the simulated controller: what it reads at loading (per
// protocol version, with its defaults and operator messages), what the operator's
// changes write into the camera table and send to the controller, and what showing
// and hiding the page does.

#include "CameraSettingsDlg.h"
#include "displaytimers.h"
#include "CameraWdg.h"
#include "ChangeTrackingStandardItemModel.h"
#include "camerasettingshelpers.h"
#include "cameratablecolumns.h"

#include <BackendVersions.h>
#include <HostMessageSink.h>
#include <IOManager.h>
#include <inprocesslink.h>
#include <simulatedcontroller.h>

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDoubleSpinBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QSlider>
#include <QSpinBox>
#include <QTabWidget>
#include <QVBoxLayout>
#include <QtTest>

#include <memory>

namespace Col = CameraTable;

namespace {

QTimer* timerOf(QObject* page, const char* name)
{
    QTimer* timer = page->findChild<QTimer*>(QLatin1String(name));
    if (!timer)
        qFatal("no timer %s", name);
    return timer;
}


class MessageLog : public HostMessageSink
{
public:
    void postMessage(const char* type, const char* source, int level, const char* text) override
    {
        messages << QStringLiteral("%1|%2|%3|%4").arg(QString::fromLatin1(type), QString::fromLatin1(source))
                        .arg(level).arg(QString::fromLatin1(text));
    }
    QStringList messages;
};

QString operatorError(const char* text)
{
    return QStringLiteral("standard|QUARVO3|1|") + QString::fromLatin1(text);
}

const QString ConfigurationEvent = QStringLiteral("GlobalEvent|ConfigurationModule|1|ActiveConfigurationChanged");

// A host dialog with its tab widget, the shared camera table and one page per present
// camera, filled the way the settings dialog fills them.
class PageRig
{
public:
    PageRig(const QString& scenario, const VersionInfo& protocol = VersionInfo(-1, 0, 0))
        : link(&controller), channel(&link, &messages), tabs(new QTabWidget(&host)),
          table(0, Col::ColumnCount)
    {
        controller.loadBuiltInScenario(scenario);
        if (protocol.major() >= 0)
            controller.setProtocolVersion(protocol);
        new QVBoxLayout(&host);
        host.layout()->addWidget(tabs);
    }

    void load()
    {
        versions = controller.backendVersions();
        table.setChangeRecordingActive(false);
        int cameras = 0;
        channel.getInt(&cameras, "camera number_of_cameras");
        for (int i = 0; i < cameras; ++i) {
            auto* page = new CameraWdg(&channel, &host, &versions);
            page->setModel(&table);
            page->update_from_module(i);
            pages << page;
            tabs->addTab(page, page->getSerial());
            appendRow(page, i);
        }
        table.setChangeRecordingActive(true);
        // Loading moves the display sliders and so arms their timers; run them now.
        fireDisplayTimers(&host);
        controller.clearLog();
        messages.messages.clear();
    }

    void appendRow(CameraWdg* page, int row) { table.insertRow(row); CameraSettingsDlg::addCameraRow(&table, page, row); }

    QVariant cellOf(int row, int column) const { return table.data(table.index(row, column)); }

    void setCell(int row, int column, const QVariant& value)
    {
        table.setChangeRecordingActive(false);
        table.setData(table.index(row, column), value);
        table.setChangeRecordingActive(true);
    }

    QStringList requests() const
    {
        QStringList lines;
        for (const QByteArray& line : controller.requests())
            lines << QString::fromLatin1(line);
        return lines;
    }

    void fail(const QString& glob)
    {
        FaultRule rule;
        rule.match = glob;
        rule.action = FaultRule::Fail;
        controller.addFault(rule);
    }

    // The controller answers every request matching the glob with this line.
    void answer(const QString& glob, const QByteArray& line)
    {
        FaultRule rule;
        rule.match = glob;
        rule.action = FaultRule::Reply;
        rule.text = line;
        controller.addFault(rule);
    }

    template <typename T>
    T* widget(int page, const char* name) const
    {
        T* found = pages.at(page)->findChild<T*>(QLatin1String(name));
        if (!found)
            qFatal("no widget %s", name);
        return found;
    }

    SimulatedController controller;
    InProcessLink link;
    MessageLog messages;
    IOManager channel;
    BackendVersions versions{VersionInfo(), VersionInfo(), VersionInfo(), QString()};
    QDialog host;
    QTabWidget* tabs;
    ChangeTrackingStandardItemModel table;
    QVector<CameraWdg*> pages;
};

QString get(const char* path)
{
    return QStringLiteral("quarvo2 get ") + QLatin1String(path);
}

QString set(const char* path)
{
    return QStringLiteral("quarvo2 set ") + QLatin1String(path);
}

QImage imageOf(const QLabel* label)
{
    return label->pixmap(Qt::ReturnByValue).toImage();
}


} // namespace

class tst_CameraWdg : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void oldProtocolReadsInOrder();
    void protocolGates_data();
    void protocolGates();
    void loadsIdentityMarkersAndUnits();
    void reducedFlashMaximum();
    void noFlashAllowed();
    void syncGroups_data();
    void syncGroups();
    void markerMaxNumberZero();
    void loadFailures_data();
    void loadFailures();
    void otherDisplaySettingWrittenBackOnce();

    void displayDragSendsOneWriteLater();
    void hidingDropsPendingWrite();
    void markerSizeClamping_data();
    void markerSizeClamping();
    void sliderUnits();
    void automaticExposure();
    void defaultButtons();
    void cameraModeChange_data();
    void cameraModeChange();
    void cameraModeOnCameraWithoutModes();
    void briskboxPartnerFollows();
    void setterFailures_data();
    void setterFailures();

    void modelPictures_data();
    void modelPictures();
    void briskboxSerialAndPicture_data();
    void briskboxSerialAndPicture();
    void showingMirrorsRow_data();
    void showingMirrorsRow();
    void displayMarkFollowsVisibility_data();
    void displayMarkFollowsVisibility();
    void escapeRejectsHost();
    void detailSwitch();
};

void tst_CameraWdg::cleanup()
{
    QVERIFY2(QApplication::topLevelWidgets().isEmpty(), "a test left a window behind");
}

// ---------------------------------------------------------------------------------
// Loading

void tst_CameraWdg::oldProtocolReadsInOrder()
{
    PageRig rig(QStringLiteral("legacy"));
    rig.versions = rig.controller.backendVersions();
    CameraWdg page(&rig.channel, &rig.host, &rig.versions);
    page.setModel(&rig.table);
    page.update_from_module(0);

    const QStringList expected = {
        get("camera max_flash_intensity c01"), get("camera flash_intensity c01"), get("camera camera c01"),
        get("camera version c01"), get("camera focal_length c01"), get("camera model_desc 0x0301"),
        get("camera modulated_flash c01"), get("camera has_static_reflex_skip c01"),
        get("camera static_reflex_skip c01"), get("camera has_dynamic_reflex_skip c01"),
        get("camera display_upside_down c01"), get("camera has_sync_group c01"), get("synccard available"),
        get("synccard number_of_channels d01"), get("camera sync_group c01"),
        get("camera has_modulated_flash c01"), get("camera has_marker_mode_accurate c01"),
        get("camera has_marker_mode_fast c01"), get("camera marker_max_number c01"),
        get("camera sensor_pixel_vertical c01"), get("camera sensor_pixel_horizontal c01"),
        get("camera limit marker_max_size c01"), get("camera marker_max_size c01"),
        get("camera marker_min_size c01"), get("cascade number_of_connected_slaves")};
    QCOMPARE(rig.requests(), expected);
    QCOMPARE(rig.messages.messages, QStringList());
    QCOMPARE(page.getModel(), QStringLiteral("LUMACAM3"));
    QCOMPARE(page.getSerial(), QStringLiteral("1022"));
    QCOMPARE(page.getMaxFlash(), 80);
    QCOMPARE(page.getFlash(), 45);
    QCOMPARE(page.getChipSize(), 5.78);
    QCOMPARE(page.getSyncGroup(), QStringLiteral("Channel 1"));
    QVERIFY(!page.findChild<QComboBox*>("comboBox_cameraMode")->isEnabled());
    QVERIFY(page.findChild<QComboBox*>("comboBox_markerMode")->isHidden());
}

void tst_CameraWdg::protocolGates_data()
{
    QTest::addColumn<VersionInfo>("protocol");
    QTest::addColumn<QStringList>("sent");
    QTest::addColumn<QStringList>("notSent");
    QTest::addColumn<bool>("modesAndDisplay");
    QTest::addColumn<bool>("ring");

    const QString modes = get("camera number_of_modes c01");
    const QString display = get("camera has_display_intensity c01");
    const QString settings = get("camera number_of_display_settings");
    const QString room = get("tracking has_room c01");
    const QString threshold = get("camera has_marker_threshold c01");
    const QString exposure = get("camera has_sensor_exposure c01");
    const QString maxMax = get("camera max_max_flash_intensity c01");
    const QString lowPower = get("camera is_flash_low_power c01");
    const QString gain = get("camera has_sensor_gain c01");
    const QString ring = get("camera has_display_ring_intensity c01");
    QTest::newRow("1.14") << VersionInfo(1, 14, 0) << QStringList{get("cascade number_of_connected_slaves")}
                          << QStringList{modes, display, settings, room, threshold, exposure, maxMax, gain, ring}
                          << false << false;
    QTest::newRow("1.23") << VersionInfo(1, 23, 0) << QStringList{modes, display, settings, room}
                          << QStringList{threshold, exposure, maxMax, lowPower, gain, ring} << true << false;
    QTest::newRow("1.26") << VersionInfo(1, 26, 3) << QStringList{threshold, exposure}
                          << QStringList{maxMax, lowPower, gain, ring} << true << false;
    QTest::newRow("1.27") << VersionInfo(1, 27, 0) << QStringList{maxMax, lowPower, gain, ring}
                          << QStringList() << true << true;
}

void tst_CameraWdg::protocolGates()
{
    QFETCH(VersionInfo, protocol);
    QFETCH(QStringList, sent);
    QFETCH(QStringList, notSent);
    QFETCH(bool, modesAndDisplay);
    QFETCH(bool, ring);

    PageRig rig(QStringLiteral("default"), protocol);
    rig.versions = rig.controller.backendVersions();
    CameraWdg page(&rig.channel, &rig.host, &rig.versions);
    page.setModel(&rig.table);
    page.update_from_module(0);

    const QStringList requests = rig.requests();
    for (const QString& line : sent)
        QVERIFY2(requests.contains(line), qPrintable(line + " was not sent"));
    for (const QString& line : notSent)
        QVERIFY2(!requests.contains(line), qPrintable(line + " was sent"));
    QCOMPARE(page.findChild<QComboBox*>("comboBox_cameraMode")->isEnabled(), modesAndDisplay);
    QCOMPARE(page.findChild<QComboBox*>("comboBox_displayMode")->isEnabled(), modesAndDisplay);
    QCOMPARE(page.findChild<QSlider*>("horizontalSlider_displayIntensity")->isEnabled(), modesAndDisplay);
    QCOMPARE(page.findChild<QSlider*>("horizontalSlider_displayRingIntensity")->isHidden(), !ring);
    QCOMPARE(rig.messages.messages, QStringList());
}

void tst_CameraWdg::loadsIdentityMarkersAndUnits()
{
    PageRig rig(QStringLiteral("default"));
    rig.load();
    CameraWdg* page = rig.pages.at(0);

    QCOMPARE(rig.widget<QLabel>(0, "label_model")->text(), QStringLiteral("LUMACAM5"));
    QCOMPARE(rig.widget<QLabel>(0, "label_serial")->text(), QStringLiteral("4711"));
    QCOMPARE(rig.widget<QLabel>(0, "label_version")->text(), QStringLiteral("3.2.1"));
    QCOMPARE(rig.widget<QLabel>(0, "label_focal")->text(), QStringLiteral("12.50"));
    // 1280 x 1024 pixels: a chip of 11.52, so 40 pixels are 3.47 percent.
    QCOMPARE(page->getChipSize(), 11.52);
    QCOMPARE(page->getMarkerMaxSize(), 40.0);
    QCOMPARE(rig.widget<QDoubleSpinBox>(0, "doubleSpinBox_markerMaxSize")->value(), 3.5);
    QCOMPARE(page->getMarkerMode(), CameraWdg::MARKER_MODE_ACCURATE);
    QCOMPARE(rig.widget<QComboBox>(0, "comboBox_markerMode")->currentText(), QStringLiteral("accurate"));
    QCOMPARE(rig.widget<QComboBox>(0, "comboBox_cameraMode")->count(), 3);
    QCOMPARE(rig.widget<QComboBox>(0, "comboBox_cameraMode")->currentText(), QStringLiteral("Standard 180 Hz"));
    QCOMPARE(page->getCameraModeOld(), QStringLiteral("m01"));
    QCOMPARE(rig.cellOf(0, Col::CameraMode).toString(), QStringLiteral("Standard 180 Hz"));
    QCOMPARE(rig.widget<QSlider>(0, "horizontalSlider_exposureTime")->maximum(), 900);
    QCOMPARE(rig.widget<QSlider>(0, "horizontalSlider_exposureTime")->value(), 600);
    QCOMPARE(page->getExposureTimeOld(), 0.6);
    QCOMPARE(rig.widget<QSlider>(0, "horizontalSlider_sensorGain")->maximum(), 400);
    QCOMPARE(rig.widget<QLabel>(0, "label_valSensorGain")->text(), QStringLiteral("1.5"));
    QCOMPARE(page->getMarkerThresholdOld(), 0.12);
    QCOMPARE(rig.widget<QSlider>(0, "horizontalSlider_displayRingIntensity")->value(), 30);
    QCOMPARE(page->getHasRoomcal(), QStringLiteral("yes"));
    // The second camera starts under automatic exposure.
    QVERIFY(rig.pages.at(1)->getIsAutoExposureTimeOld());
    QVERIFY(!rig.widget<QSlider>(1, "horizontalSlider_exposureTime")->isEnabled());
    QCOMPARE(rig.widget<QLabel>(1, "label_exposureTimeUs")->text(), QString());
    // The fourth camera sits on the cascade slave and has no room calibration.
    QCOMPARE(rig.pages.at(3)->getCascadeInfos(), QStringLiteral("slave s01 ATC2"));
    QCOMPARE(rig.widget<QLabel>(3, "label_cascadedSystem_desc")->text(),
             QStringLiteral("slave of Cascaded System (tracker-slave1 ATC2)"));
    QCOMPARE(rig.pages.at(3)->getHasRoomcal(), QStringLiteral("no"));
    QCOMPARE(rig.pages.at(0)->getCascadeInfos(), QStringLiteral("master"));
}

void tst_CameraWdg::reducedFlashMaximum()
{
    PageRig rig(QStringLiteral("default"));
    rig.load();
    // The third camera may use 60 of 100 because of its power supply.
    QSlider* slider = rig.widget<QSlider>(2, "horizontalSlider");
    QCOMPARE(slider->maximum(), 60);
    QCOMPARE(slider->singleStep(), 10);
    QCOMPARE(slider->pageStep(), 10);
    auto* row = rig.pages.at(2)->findChild<QHBoxLayout*>("hBoxLayout_11");
    QCOMPARE(row->stretch(2), 60);
    QVERIFY(row->itemAt(3)->spacerItem());
    QCOMPARE(row->stretch(3), 40);
    QLabel* lowPower = rig.widget<QLabel>(2, "label_lowPower");
    QVERIFY(!lowPower->isHidden());
    QCOMPARE(lowPower->text(), QStringLiteral(
        "<b><font color=red>Reduced flash intensity because of limited power supply!</font></b>"));
    // A full supply: no stretch, no label.
    QCOMPARE(rig.pages.at(0)->findChild<QHBoxLayout*>("hBoxLayout_11")->count(), 4);
    QVERIFY(rig.widget<QLabel>(0, "label_lowPower")->isHidden());
}

void tst_CameraWdg::noFlashAllowed()
{
    PageRig rig(QStringLiteral("default"));
    QVERIFY(rig.controller.poke("camera flash_intensity c01 0"));
    QVERIFY(rig.controller.poke("camera max_flash_intensity c01 0"));
    rig.load();
    QVERIFY(!rig.widget<QSlider>(0, "horizontalSlider")->isEnabled());
    QVERIFY(!rig.widget<QSpinBox>(0, "spinBox")->isEnabled());
    QVERIFY(rig.widget<QSlider>(1, "horizontalSlider")->isEnabled());
}

void tst_CameraWdg::syncGroups_data()
{
    QTest::addColumn<QByteArray>("channels");
    QTest::addColumn<QByteArray>("group");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("syncGroup");

    QTest::newRow("channel 10") << QByteArray("10") << QByteArray("10") << 9 << "Channel 10";
    QTest::newRow("channel 3") << QByteArray("8") << QByteArray("3") << 2 << "Channel 3";
    QTest::newRow("none") << QByteArray("8") << QByteArray() << 0 << "Channel 1";
}

void tst_CameraWdg::syncGroups()
{
    QFETCH(QByteArray, channels);
    QFETCH(QByteArray, group);
    QFETCH(int, index);
    QFETCH(QString, syncGroup);

    PageRig rig(QStringLiteral("default"));
    QVERIFY(rig.controller.poke("synccard number_of_channels d01 " + channels));
    rig.answer(QStringLiteral("quarvo2 get camera sync_group c01"),
               "quarvo2 set camera sync_group c01 " + (group.isEmpty() ? QByteArray("none")
                                                        : "d01 ch" + group.rightJustified(2, '0')));
    rig.load();
    QComboBox* combo = rig.widget<QComboBox>(0, "comboBox_syncGroup");
    QCOMPARE(combo->count(), channels.toInt());
    QCOMPARE(combo->itemText(combo->count() - 1), QStringLiteral("Channel %1").arg(channels.toInt()));
    QCOMPARE(combo->itemData(combo->count() - 1).toString(), QStringLiteral("ch0%1").arg(channels.toInt()));
    QCOMPARE(combo->currentIndex(), index);
    QCOMPARE(rig.pages.at(0)->getSyncGroup(), syncGroup);
    QCOMPARE(rig.pages.at(0)->getOldSyncGroup(), syncGroup);
}

void tst_CameraWdg::markerMaxNumberZero()
{
    PageRig rig(QStringLiteral("default"));
    rig.answer(QStringLiteral("quarvo2 get camera marker_max_number c01"),
               "quarvo2 set camera marker_max_number c01 0");
    rig.load();
    QCOMPARE(rig.widget<QSpinBox>(0, "spinBox_markerMaxNumber")->value(), 400);
    QCOMPARE(rig.pages.at(0)->getMarkerMaxNumber(), 0);
}

void tst_CameraWdg::loadFailures_data()
{
    QTest::addColumn<QString>("failing");
    QTest::addColumn<QStringList>("messages");
    QTest::addColumn<QString>("disabled");

    QTest::newRow("sync card") << "*synccard number_of_channels*"
                               << QStringList{operatorError("Error: Unable to get number of channels from synccard")}
                               << QString();
    QTest::newRow("has display intensity") << "*has_display_intensity c01"
        << QStringList{operatorError("Error: Unable to get info whether camera can display intensity")}
        << "horizontalSlider_displayIntensity";
    QTest::newRow("display intensity") << "*get camera display_intensity c01"
        << QStringList{operatorError("Error: Unable to get info display intensity")}
        << "horizontalSlider_displayIntensity";
    QTest::newRow("has ring intensity") << "*has_display_ring_intensity c01"
        << QStringList{operatorError("Error: Unable to get info if camera can display ring intensity")}
        << "horizontalSlider_displayRingIntensity";
    QTest::newRow("ring intensity") << "*get camera display_ring_intensity c01"
        << QStringList{operatorError("Error: Unable to get ring display intensity")}
        << "horizontalSlider_displayRingIntensity";
    QTest::newRow("number of settings") << "*number_of_display_settings"
        << QStringList{operatorError("Error: Unable to get info number of display settings")}
        << "comboBox_displayMode";
    QTest::newRow("setting id") << "*display_setting_id t02"
        << QStringList{operatorError("Error: Unable to get info display setting")} << QString();
    QTest::newRow("has setting") << "*has_display_setting c01 off"
        << QStringList{operatorError("Error: Unable to get info display has setting")} << QString();
    QTest::newRow("setting description") << "*display_setting_desc sync_group"
        << QStringList{operatorError("Error: Unable to get info display setting description")} << QString();
}

void tst_CameraWdg::loadFailures()
{
    QFETCH(QString, failing);
    QFETCH(QStringList, messages);
    QFETCH(QString, disabled);

    PageRig rig(QStringLiteral("default"));
    rig.fail(failing);
    rig.versions = rig.controller.backendVersions();
    CameraWdg page(&rig.channel, &rig.host, &rig.versions);
    page.setModel(&rig.table);
    page.update_from_module(0);

    QCOMPARE(rig.messages.messages, messages);
    if (!disabled.isEmpty())
        QVERIFY(!page.findChild<QWidget*>(disabled)->isEnabled());
    QCOMPARE(page.getDisplayIntensity(), failing.contains("display_intensity") ? 0 : 50);
}

void tst_CameraWdg::otherDisplaySettingWrittenBackOnce()
{
    PageRig rig(QStringLiteral("default"));
    rig.load();
    rig.controller.clearLog();
    // Camera 2 shows "sync_group", not the first setting: loading writes it back once.
    PageRig fresh(QStringLiteral("default"));
    fresh.versions = fresh.controller.backendVersions();
    CameraWdg page(&fresh.channel, &fresh.host, &fresh.versions);
    page.setModel(&fresh.table);
    page.update_from_module(1);
    const QStringList writes = fresh.requests().filter(QStringLiteral("quarvo2 set"));
    QCOMPARE(writes, QStringList{set("camera display_setting c02 sync_group")});
    QCOMPARE(page.getDisplayMode(), QStringLiteral("sync_group"));
    QCOMPARE(rig.pages.at(0)->getDisplayMode(), QStringLiteral("camera_id"));
    QVERIFY(rig.requests().isEmpty());
}

// ---------------------------------------------------------------------------------
// Editing

void tst_CameraWdg::displayDragSendsOneWriteLater()
{
    PageRig rig(QStringLiteral("default"));
    rig.load();
    QSlider* slider = rig.widget<QSlider>(0, "horizontalSlider_displayIntensity");
    QTimer* timer = timerOf(rig.pages.at(0), "timerDisplayIntensity");
    for (int value = 20; value <= 80; value += 5) {
        // The timer about to run out: each movement starts the 500 ms afresh.
        if (timer->isActive())
            timer->start(1);
        slider->setValue(value);
        QVERIFY(timer->isActive());
        QVERIFY(timer->isSingleShot());
        QCOMPARE(timer->interval(), 500);
        QVERIFY(timer->remainingTime() > 400);
    }
    QCOMPARE(rig.cellOf(0, Col::DisplayIntensity).toInt(), 80);
    QCOMPARE(rig.widget<QLabel>(0, "label_displayIntensityPercent")->text(), QStringLiteral("80%"));
    QVERIFY(rig.requests().isEmpty());
    QCOMPARE(fireDisplayTimers(&rig.host), 1);
    // One write, then the whole column read back; the missing camera's row is not there.
    QCOMPARE(rig.requests(), (QStringList{set("camera display_intensity c01 0.800000"),
                                          get("camera display_intensity c01"), get("camera display_intensity c02"),
                                          get("camera display_intensity c03"), get("camera display_intensity c04")}));
    QCOMPARE(rig.pages.at(0)->getDisplayIntensity(), 0);
    QCOMPARE(rig.cellOf(2, Col::DisplayIntensity).toInt(), 80);
}

void tst_CameraWdg::hidingDropsPendingWrite()
{
    PageRig rig(QStringLiteral("default"));
    rig.load();
    rig.tabs->setCurrentIndex(0);
    rig.host.show();
    QVERIFY(QTest::qWaitForWindowExposed(&rig.host));
    rig.controller.clearLog();
    rig.widget<QSlider>(0, "horizontalSlider_displayIntensity")->setValue(70);
    QVERIFY(timerOf(rig.pages.at(0), "timerDisplayIntensity")->isActive());
    rig.tabs->setCurrentIndex(1);
    QCOMPARE(fireDisplayTimers(rig.pages.at(0)), 0);
    QVERIFY(!rig.requests().contains(set("camera display_intensity c01 0.700000")));
    QCOMPARE(rig.requests().first(), set("camera display_mark c01 no"));
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

    PageRig rig(QStringLiteral("default"));
    QVERIFY(rig.controller.poke("camera limit marker_max_size c02 60"));
    rig.load();
    auto* maxBox = rig.widget<QDoubleSpinBox>(1, "doubleSpinBox_markerMaxSize");
    auto* minBox = rig.widget<QDoubleSpinBox>(1, "doubleSpinBox_markerMinSize");
    QCOMPARE(rig.pages.at(1)->getChipSize(), 5.78);
    if (touched == QLatin1String("doubleSpinBox_markerMaxSize")) {
        minBox->setValue(40.0);
        maxBox->setValue(9.0);
    } else {
        maxBox->setValue(5.0);
        minBox->setValue(2.0);
    }
    rig.table.resetChanges();

    rig.widget<QDoubleSpinBox>(1, qPrintable(touched))->setValue(value);

    QVERIFY(qAbs(rig.cellOf(1, Col::MarkerMaxSize).toDouble() - maxPercent) < 1e-9);
    QVERIFY(qAbs(rig.cellOf(1, Col::MarkerMinSize).toDouble() - minPixels) < 1e-9);
    QVERIFY(rig.table.isChanged(1, Col::MarkerMaxSize));
    QVERIFY(rig.table.isChanged(1, Col::MarkerMinSize));
    QCOMPARE(maxBox->value(), qRound(maxPercent * 10) / 10.0);
    QCOMPARE(minBox->value(), qRound(minPixels * 10) / 10.0);
    QVERIFY(rig.requests().filter(QStringLiteral("quarvo2 set")).isEmpty());
}

void tst_CameraWdg::sliderUnits()
{
    PageRig rig(QStringLiteral("default"));
    rig.load();
    rig.widget<QSlider>(2, "horizontalSlider_exposureTime")->setValue(1234);
    QCOMPARE(rig.cellOf(2, Col::ExposureTime).toDouble(), 1.234);
    QCOMPARE(rig.widget<QLabel>(2, "label_exposureTimeUs")->text(), QStringLiteral("1234 us"));
    rig.widget<QSlider>(2, "horizontalSlider_sensorGain")->setValue(150);
    QCOMPARE(rig.cellOf(2, Col::SensorGain).toDouble(), 1.5);
    QCOMPARE(rig.widget<QLabel>(2, "label_valSensorGain")->text(), QStringLiteral("1.5"));
    rig.widget<QSlider>(2, "horizontalSlider_markerThreshold")->setValue(25);
    QCOMPARE(rig.cellOf(2, Col::MarkerThreshold).toDouble(), 0.25);
    QCOMPARE(rig.widget<QLabel>(2, "label_markerThresholdPercent")->text(), QStringLiteral("25 %"));
    rig.widget<QComboBox>(2, "comboBox_markerMode")->setCurrentIndex(1);
    QCOMPARE(rig.cellOf(2, Col::MarkerMode).toInt(), 2);
    // Only the first channel keeps modulated flash.
    QVERIFY(rig.cellOf(2, Col::ModFlash).toBool());
    rig.widget<QComboBox>(2, "comboBox_syncGroup")->setCurrentIndex(1);
    QCOMPARE(rig.cellOf(2, Col::SyncGroup).toString(), QStringLiteral("Channel 2"));
    QVERIFY(!rig.cellOf(2, Col::ModFlash).toBool());
    QVERIFY(rig.requests().isEmpty());
}

void tst_CameraWdg::automaticExposure()
{
    PageRig rig(QStringLiteral("default"));
    rig.load();
    QCheckBox* box = rig.widget<QCheckBox>(0, "checkBox_autoExposureCtrl");
    QSlider* slider = rig.widget<QSlider>(0, "horizontalSlider_exposureTime");

    box->click();
    QCOMPARE(rig.requests(), QStringList{set("camera sensor_exposure c01 auto")});
    QVERIFY(!slider->isEnabled());
    QCOMPARE(slider->value(), 0);
    QCOMPARE(rig.widget<QLabel>(0, "label_exposureTimeUs")->text(), QString());
    QVERIFY(rig.cellOf(0, Col::AutoExposureTime).toBool());
    QCOMPARE(rig.cellOf(0, Col::ExposureTime).toDouble(), 0.0);

    rig.controller.clearLog();
    box->click();
    QCOMPARE(rig.requests(), (QStringList{set("camera sensor_exposure c01 default"),
                                          get("camera sensor_exposure c01")}));
    QVERIFY(slider->isEnabled());
    QCOMPARE(slider->value(), 400);
    QCOMPARE(rig.cellOf(0, Col::ExposureTime).toDouble(), 0.4);
    QCOMPARE(rig.widget<QLabel>(0, "label_exposureTimeUs")->text(), QStringLiteral("400 us"));
    QVERIFY(!rig.cellOf(0, Col::AutoExposureTime).toBool());
    QCOMPARE(rig.pages.at(0)->getExposureTimeOld(), 0.6);
    QCOMPARE(rig.messages.messages, QStringList());
}

void tst_CameraWdg::defaultButtons()
{
    PageRig rig(QStringLiteral("default"));
    rig.load();
    rig.widget<QSlider>(0, "horizontalSlider_markerThreshold")->setValue(40);
    rig.widget<QSlider>(0, "horizontalSlider_sensorGain")->setValue(250);
    rig.widget<QSlider>(0, "horizontalSlider_exposureTime")->setValue(800);
    rig.widget<QAbstractButton>(0, "pushButton_markerThresholdDefault")->click();
    rig.widget<QAbstractButton>(0, "pushButton_defaultSensorGain")->click();
    rig.widget<QAbstractButton>(0, "pushButton_exposureTimeDefault")->click();
    QCOMPARE(rig.requests(), (QStringList{
        set("camera marker_threshold c01 default"), get("camera marker_threshold c01"),
        set("camera sensor_gain c01 default"), get("camera sensor_gain c01"),
        set("camera sensor_exposure c01 default"), get("camera sensor_exposure c01")}));
    QCOMPARE(rig.widget<QSlider>(0, "horizontalSlider_markerThreshold")->value(), 10);
    QCOMPARE(rig.cellOf(0, Col::MarkerThreshold).toDouble(), 0.1);
    QCOMPARE(rig.widget<QSlider>(0, "horizontalSlider_sensorGain")->value(), 100);
    QCOMPARE(rig.cellOf(0, Col::SensorGain).toDouble(), 1.0);
    QCOMPARE(rig.widget<QSlider>(0, "horizontalSlider_exposureTime")->value(), 400);
    QCOMPARE(rig.cellOf(0, Col::ExposureTime).toDouble(), 0.4);

    // Failed defaults are reported and fall back to the page's own defaults.
    rig.controller.clearLog();
    rig.fail(QStringLiteral("*marker_threshold c01*"));
    rig.fail(QStringLiteral("*sensor_gain c01*"));
    rig.fail(QStringLiteral("*sensor_exposure c01*"));
    rig.widget<QSlider>(0, "horizontalSlider_markerThreshold")->setValue(40);
    rig.widget<QAbstractButton>(0, "pushButton_markerThresholdDefault")->click();
    rig.widget<QAbstractButton>(0, "pushButton_defaultSensorGain")->click();
    rig.widget<QAbstractButton>(0, "pushButton_exposureTimeDefault")->click();
    QCOMPARE(rig.messages.messages, (QStringList{operatorError("Error: Unable to set marker threshold to default"),
                                                 operatorError("Error: Unable to set sensor gain to default"),
                                                 operatorError("Error: Unable to set default exposure time")}));
    QCOMPARE(rig.widget<QSlider>(0, "horizontalSlider_markerThreshold")->value(), 10);
    QCOMPARE(rig.widget<QSlider>(0, "horizontalSlider_exposureTime")->value(), 0);
}

void tst_CameraWdg::cameraModeChange_data()
{
    QTest::addColumn<int>("exposureUs");
    QTest::addColumn<QStringList>("expected");

    const QStringList modeAndReadBack = {set("camera mode c01 m03"), get("camera max_sensor_exposure c01"),
                                         get("camera sensor_exposure c01")};
    QTest::newRow("no pending exposure") << 600 << (QStringList{get("camera mode_desc c01 m03")} + modeAndReadBack);
    QTest::newRow("pending exposure")
        << 700 << (QStringList{get("camera mode_desc c01 m03"), set("camera sensor_exposure c01 0.700000")}
                   + modeAndReadBack);
}

void tst_CameraWdg::cameraModeChange()
{
    QFETCH(int, exposureUs);
    QFETCH(QStringList, expected);

    PageRig rig(QStringLiteral("default"));
    rig.load();
    rig.widget<QSlider>(0, "horizontalSlider_exposureTime")->setValue(exposureUs);
    rig.widget<QComboBox>(0, "comboBox_cameraMode")->setCurrentIndex(2);

    QCOMPARE(rig.requests(), expected);
    QCOMPARE(rig.messages.messages, QStringList{ConfigurationEvent});
    QCOMPARE(rig.cellOf(0, Col::CameraModeData).toString(), QStringLiteral("m03"));
    QCOMPARE(rig.cellOf(0, Col::CameraMode).toString(), QStringLiteral("Full frame 60 Hz"));
    // The new mode allows 2 ms; the exposure comes back as the controller holds it.
    QSlider* slider = rig.widget<QSlider>(0, "horizontalSlider_exposureTime");
    QCOMPARE(slider->maximum(), 2000);
    QCOMPARE(slider->value(), exposureUs);
    QCOMPARE(rig.pages.at(0)->getExposureTimeOld(), 0.6);
    QCOMPARE(rig.pages.at(0)->getCameraModeOld(), QStringLiteral("m01"));
}

void tst_CameraWdg::cameraModeOnCameraWithoutModes()
{
    PageRig rig(QStringLiteral("default"));
    rig.load();
    rig.setCell(0, Col::HasCameraMode, false);
    rig.widget<QComboBox>(0, "comboBox_cameraMode")->setCurrentIndex(1);
    QVERIFY(rig.requests().filter(QStringLiteral("camera mode c01")).isEmpty());
    QCOMPARE(rig.messages.messages, QStringList());
    QCOMPARE(rig.cellOf(0, Col::CameraModeData).toString(), QStringLiteral("m02"));
    // A camera with a single mode gives no description and asks nothing for it.
    rig.controller.clearLog();
    QCOMPARE(rig.pages.at(1)->getCameraModeDesc(1, QStringLiteral("m01")), QString());
    QVERIFY(rig.requests().isEmpty());
}

void tst_CameraWdg::briskboxPartnerFollows()
{
    PageRig rig(QStringLiteral("briskbox"));
    rig.load();
    rig.widget<QCheckBox>(0, "checkBox_autoExposureCtrl")->click();
    QCOMPARE(rig.requests(), (QStringList{set("camera sensor_exposure c01 auto"),
                                          set("camera sensor_exposure c02 auto")}));
    QVERIFY(rig.cellOf(1, Col::AutoExposureTime).toBool());

    rig.controller.clearLog();
    rig.widget<QCheckBox>(0, "checkBox_autoExposureCtrl")->click();
    QCOMPARE(rig.requests(), (QStringList{set("camera sensor_exposure c01 default"),
                                          get("camera sensor_exposure c01"),
                                          set("camera sensor_exposure c02 default"),
                                          get("camera sensor_exposure c02")}));
    QVERIFY(!rig.cellOf(1, Col::AutoExposureTime).toBool());
    QCOMPARE(rig.cellOf(1, Col::ExposureTime).toDouble(), 0.5);

    rig.widget<QSlider>(1, "horizontalSlider_exposureTime")->setValue(321);
    QCOMPARE(rig.cellOf(0, Col::ExposureTime).toDouble(), 0.321);
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

    PageRig rig(QStringLiteral("default"));
    rig.load();
    rig.fail(failing);
    CameraWdg* page = rig.pages.at(0);
    const int results[] = {page->setCameraOrientation(1), page->setDisplayIntensity(90),
                           page->setDisplayRingIntensity(90), page->setDisplayMode(QStringLiteral("off"))};
    QCOMPARE(std::count(std::begin(results), std::end(results), -1), 1);
    QCOMPARE(rig.messages.messages, QStringList{operatorError(qPrintable(message))});
    // The member keeps the value of the controller, so the same call tries again.
    rig.controller.clearFaults();
    rig.controller.clearLog();
    QCOMPARE(page->setCameraOrientation(1) + page->setDisplayIntensity(90) + page->setDisplayRingIntensity(90)
                 + page->setDisplayMode(QStringLiteral("off")), 0);
    QCOMPARE(rig.requests().size(), 1);

    // A disabled page sends nothing.
    rig.controller.clearLog();
    page->setEnabled(false);
    QCOMPARE(page->setCameraOrientation(0) + page->setDisplayIntensity(10) + page->setDisplayRingIntensity(10)
                 + page->setDisplayMode(QStringLiteral("camera_id")), 0);
    QVERIFY(rig.requests().isEmpty());
}

// ---------------------------------------------------------------------------------
// Presentation

void tst_CameraWdg::modelPictures_data()
{
    QTest::addColumn<int>("modelId");
    QTest::addColumn<QString>("serial");
    QTest::addColumn<QString>("picture");

    QTest::newRow("0x0402") << 0x0402 << "1" << ":/images/lumacam_kp_s1_transparent.png";
    QTest::newRow("0x0405") << 0x0405 << "1" << ":/images/lumacam_kp_s1_transparent.png";
    QTest::newRow("0x0401") << 0x0401 << "1" << ":/images/lumacam_kp_s0_transparent.png";
    QTest::newRow("0x0403") << 0x0403 << "1" << ":/images/lumacam_kpc_transparent.png";
    QTest::newRow("0x0B01 L") << 0x0B01 << "20311L" << ":/images/briskbox3_left_transparent.png";
    QTest::newRow("0x0B01 l") << 0x0B01 << "20311l" << ":/images/briskbox3_right_transparent.png";
    QTest::newRow("0x0B01 R") << 0x0B01 << "20311R" << ":/images/briskbox3_right_transparent.png";
    QTest::newRow("0x0D02 L") << 0x0D02 << "4711L" << ":/images/briskbox3m_left_transparent.png";
    QTest::newRow("0x0600") << 0x0600 << "1" << ":/images/lumacam_vx1_transparent.png";
    QTest::newRow("0x0E01") << 0x0E01 << "1" << ":/images/LC9-30_transparent.png";
    QTest::newRow("0x0700") << 0x0700 << "1" << ":/images/unknown_transparent.png";
    QTest::newRow("0x1000") << 0x1000 << "1" << ":/images/unknown_transparent.png";
    QTest::newRow("0x0000") << 0x0000 << "" << ":/images/unknown_transparent.png";
}

void tst_CameraWdg::modelPictures()
{
    QFETCH(int, modelId);
    QFETCH(QString, serial);
    QFETCH(QString, picture);

    QCOMPARE(CameraWdg::modelPicture(modelId, serial), picture);
    QVERIFY2(!QPixmap(picture).isNull(), qPrintable(picture + " is not in the resources"));
}

void tst_CameraWdg::briskboxSerialAndPicture_data()
{
    QTest::addColumn<VersionInfo>("protocol");
    QTest::addColumn<QString>("serial");
    QTest::addColumn<QString>("picture");

    QTest::newRow("serial description") << VersionInfo(1, 27, 0) << "20311L"
                                        << ":/images/briskbox3_left_transparent.png";
    QTest::newRow("before serial descriptions") << VersionInfo(1, 22, 0) << ""
                                                << ":/images/briskbox3_right_transparent.png";
}

void tst_CameraWdg::briskboxSerialAndPicture()
{
    QFETCH(VersionInfo, protocol);
    QFETCH(QString, serial);
    QFETCH(QString, picture);

    PageRig rig(QStringLiteral("briskbox"), protocol);
    rig.versions = rig.controller.backendVersions();
    CameraWdg page(&rig.channel, &rig.host, &rig.versions);
    page.setModel(&rig.table);
    page.update_from_module(0);
    QCOMPARE(page.getSerial(), serial);
    QCOMPARE(page.findChild<QLabel*>("label_serial")->text(), serial);
    QCOMPARE(page.getModel(), QStringLiteral("BRISKBOX3"));
    QCOMPARE(imageOf(page.findChild<QLabel*>("label_image")), QPixmap(picture).toImage());
    QCOMPARE(rig.requests().contains(get("camera serial_desc 0x0B01 203111")), !serial.isEmpty());
}

void tst_CameraWdg::showingMirrorsRow_data()
{
    QTest::addColumn<bool>("automatic");
    QTest::addColumn<int>("slider");
    QTest::addColumn<bool>("enabled");

    QTest::newRow("manual 0.75 ms") << false << 750 << true;
    QTest::newRow("automatic") << true << 0 << false;
}

void tst_CameraWdg::showingMirrorsRow()
{
    QFETCH(bool, automatic);
    QFETCH(int, slider);
    QFETCH(bool, enabled);

    PageRig rig(QStringLiteral("default"));
    rig.load();
    rig.tabs->setCurrentIndex(1);
    rig.setCell(0, Col::ExposureTime, 0.75);
    rig.setCell(0, Col::AutoExposureTime, automatic);
    rig.setCell(0, Col::FlashIntensity, 33);
    rig.setCell(0, Col::SyncGroup, QStringLiteral("Channel 4"));
    rig.setCell(0, Col::MarkerMode, 2);
    rig.host.show();
    QVERIFY(QTest::qWaitForWindowExposed(&rig.host));
    rig.tabs->setCurrentIndex(0);

    QCOMPARE(rig.widget<QSlider>(0, "horizontalSlider_exposureTime")->value(), slider);
    QCOMPARE(rig.widget<QSlider>(0, "horizontalSlider_exposureTime")->isEnabled(), enabled);
    QCOMPARE(rig.widget<QCheckBox>(0, "checkBox_autoExposureCtrl")->isChecked(), automatic);
    QCOMPARE(rig.widget<QSpinBox>(0, "spinBox")->value(), 33);
    QCOMPARE(rig.widget<QComboBox>(0, "comboBox_syncGroup")->currentText(), QStringLiteral("Channel 4"));
    QCOMPARE(rig.widget<QComboBox>(0, "comboBox_markerMode")->currentText(), QStringLiteral("fast"));
    // Mirroring the row is no change of the operator's; under automatic exposure the
    // slider drops to 0 afterwards and that does reach the row.
    QVERIFY(!rig.table.isChanged(0, Col::FlashIntensity));
    QCOMPARE(rig.table.isChanged(0, Col::ExposureTime), automatic);
    QCOMPARE(rig.cellOf(0, Col::ExposureTime).toDouble(), automatic ? 0.0 : 0.75);
    QCOMPARE(rig.requests().filter(QStringLiteral("display_mark c01")), QStringList{set("camera display_mark c01 yes")});
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

    PageRig rig(QStringLiteral("default"), protocol);
    rig.load();
    // A page that was never loaded marks nothing.
    auto* unloaded = new CameraWdg(&rig.channel, &rig.host, &rig.versions);
    rig.tabs->addTab(unloaded, QStringLiteral("missing"));
    rig.host.show();
    QVERIFY(QTest::qWaitForWindowExposed(&rig.host));
    rig.tabs->setCurrentIndex(1);
    rig.tabs->setCurrentWidget(unloaded);
    rig.host.hide();
    QCOMPARE(rig.requests().filter(QStringLiteral("display_mark")), marks);
}

void tst_CameraWdg::escapeRejectsHost()
{
    PageRig rig(QStringLiteral("default"));
    rig.load();
    rig.host.show();
    QVERIFY(QTest::qWaitForWindowExposed(&rig.host));
    QTest::keyClick(rig.pages.at(0), Qt::Key_Return);
    QVERIFY(rig.host.isVisible());
    QTest::keyClick(rig.pages.at(0), Qt::Key_Escape);
    QVERIFY(!rig.host.isVisible());
    QCOMPARE(rig.host.result(), int(QDialog::Rejected));
}

void tst_CameraWdg::detailSwitch()
{
    PageRig rig(QStringLiteral("default"));
    rig.load();
    CameraWdg* page = rig.pages.at(3);
    QVERIFY(rig.widget<QDoubleSpinBox>(3, "doubleSpinBox_markerMaxSize")->isHidden());
    page->showDetails(true);
    QVERIFY(!rig.widget<QDoubleSpinBox>(3, "doubleSpinBox_markerMaxSize")->isHidden());
    // Camera 4 has no marker threshold; its marker mode pair comes back regardless.
    QVERIFY(rig.widget<QSlider>(3, "horizontalSlider_markerThreshold")->isHidden());
    QVERIFY(!rig.widget<QSlider>(3, "horizontalSlider_exposureTime")->isHidden());
    QVERIFY(!rig.widget<QComboBox>(3, "comboBox_markerMode")->isHidden());
    QVERIFY(rig.widget<QCheckBox>(3, "checkBox_dynamic_reflex_skip")->isHidden());
    page->setVisibleDynReflexSuppr(false);
    QVERIFY(rig.widget<QCheckBox>(3, "checkBox_dynamic_reflex_skip")->isHidden());
    page->setVisibleDynReflexSuppr(true);
    QVERIFY(!rig.widget<QCheckBox>(3, "checkBox_dynamic_reflex_skip")->isHidden());
}

QTEST_MAIN(tst_CameraWdg)
#include "tst_camerawdg.moc"
