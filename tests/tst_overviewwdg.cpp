// The "All Cameras" page against the simulated controller: loaded from a camera table
// filled from the controller's cameras as the dialog fills it, then driven through its
// widgets. Asserts the table cells, the global controls and the command log.
#include "OverviewWdg.h"
#include "widgetsuite.h"
#include "cameratablecolumns.h"
#include "displaytimers.h"
#include "overviewrig.h"
#include "widgetlook.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QSignalSpy>
#include <QSlider>
#include <QSpinBox>
#include <QTableView>
#include <QtTest>

namespace Col = CameraTable;

namespace {

// Four cameras offering the same two modes, all in the first.
const QByteArray AlikeModes = R"({
    "camera_defaults": { "has_sensor_exposure": true, "sensor_exposure": 0.4,
                         "modes": [ { "description": "Standard 180 Hz", "max_sensor_exposure": 1.0 },
                                    { "description": "High speed 300 Hz", "max_sensor_exposure": 0.5 } ] },
    "cameras": [ { "serial": "1" }, { "serial": "2" }, { "serial": "3" }, { "serial": "4" } ]
})";

QStringList comboTexts(const QComboBox* combo)
{
    QStringList texts;
    for (int i = 0; i < combo->count(); ++i)
        texts << combo->itemText(i);
    return texts;
}

QStringList column(const OverviewRig& rig, int column, int rows = 4)
{
    QStringList texts;
    for (int row = 0; row < rows; ++row)
        texts << rig.cell(row, column).toString();
    return texts;
}

QStringList fourTimes(const QString& text)
{
    return QStringList{text, text, text, text};
}

bool anyChanged(const OverviewRig& rig, int column)
{
    for (int row = 0; row < rig.table.rowCount(); ++row) {
        if (rig.table.isChanged(row, column))
            return true;
    }
    return false;
}

} // namespace

class tst_OverviewWdg : public WidgetSuite
{
    Q_OBJECT

private slots:

    void emptyTable();
    void globalControls();
    void displayIntensity();
    void markerModeList_data();
    void markerModeList();
    void markerSizes_data();
    void markerSizes();
    void cameraModeForAllCameras();
    void columnsShown_data();
    void columnsShown();
    void reflexCheckBoxesFromController_data();
    void reflexCheckBoxesFromController();
    void cellEditors_data();
    void cellEditors();
    void pressToggles();
};

void tst_OverviewWdg::emptyTable()
{
    ControllerFixture fixture;
    QWidget host;
    ChangeTrackingStandardItemModel table(0, Col::ColumnCount);
    QAbstractItemModelTester tester(&table, QAbstractItemModelTester::FailureReportingMode::QtTest);
    auto* overview = new OverviewWdg(fixture.channel(), &host, fixture.versions());
    overview->setModel(&table);
    QVector<CameraWdg*> none;
    overview->update_from_module(none);
    // With no camera every camera agrees: the flash slider stands at 0, the marker mode at "default".
    auto* view = overview->findChild<QTableView*>("tableView");
    QVERIFY(view->isColumnHidden(Col::SyncGroup) && view->isColumnHidden(Col::CameraMode));
    QVERIFY(view->isColumnHidden(Col::DynReflexSuppr));
    QCOMPARE(overview->findChild<QComboBox*>("comboBox_globalMarkerMode")->currentText(), QStringLiteral("default"));
    QCOMPARE(overview->findChild<QSlider*>("horizontalSlider_flash_intensity")->value(), 0);
}

void tst_OverviewWdg::globalControls()
{
    // Maxima 100, 80, 60, 100: 61 on the first camera belongs to no slider position.
    OverviewRig rig;
    rig.poke("camera flash_intensity c01 61");
    for (const char* poke : {"c01 100", "c02 200", "c04 200"})
        rig.poke(QByteArray("camera marker_max_number ") + poke);
    rig.open();
    const auto flash = [&] {
        return look(rig.overview, {"checkBox_flash_intensity", "horizontalSlider_flash_intensity", "label_maxFlash"});
    };
    QCOMPARE(flash(), (QStringList{"enabled off", "disabled 0 of 200", "disabled max. flash"}));
    rig.widget<QCheckBox>("checkBox_flash_intensity")->click();
    QCOMPARE(flash(), (QStringList{"enabled on", "enabled 0 of 200", "enabled max. flash"}));
    auto* slider = rig.widget<QSlider>("horizontalSlider_flash_intensity");
    QVERIFY2(!anyChanged(rig, Col::FlashIntensity), "enabling the slider writes nothing");
    // Position 100 of 200: each camera's maximum x 100/201, rounded; nothing sent before release.
    slider->setSliderDown(true);
    slider->setValue(100);
    QCOMPARE(column(rig, Col::FlashIntensity), (QStringList{"50", "40", "30", "50"}));
    QVERIFY(rig.table.isChanged(3, Col::FlashIntensity));
    QVERIFY(rig.sets().isEmpty());
    slider->setValue(200);
    slider->setSliderDown(false);
    // One command per present camera, none for the missing fifth one.
    QCOMPARE(rig.sets(), QStringList({"camera flash_intensity c01 100", "camera flash_intensity c02 80",
                                      "camera flash_intensity c03 60", "camera flash_intensity c04 100"}));
    // The slider's own writes do not move it back to the lowest matching position.
    QCOMPARE(flash(), (QStringList{"enabled on", "enabled 200 of 200", "enabled max. flash"}));

    // Mixed maximum numbers of markers: enabling the box applies the shown number to every camera.
    const auto markers = [&] {
        return look(rig.overview, {"checkBox_globalMaximumNumberOfMarkers", "spinBox_globalMaximumNumberOfMarkers"});
    };
    QCOMPARE(markers(), (QStringList{"enabled off", "disabled 200"}));
    rig.widget<QCheckBox>("checkBox_globalMaximumNumberOfMarkers")->click();
    QCOMPARE(markers(), (QStringList{"enabled on", "enabled 200"}));
    QCOMPARE(column(rig, Col::MarkerMaxNumber), fourTimes("200"));
    QVERIFY(rig.table.isChanged(0, Col::MarkerMaxNumber));

    // c01 and c03 show camera_id, c02 sync_group, c04 off: no common display mode.
    auto* combo = rig.widget<QComboBox>("comboBox_displayMode");
    QCOMPARE(comboTexts(combo), QStringList({"Camera number", "Sync group", "Number of markers", "Off"}));
    QCOMPARE(look(combo), QStringLiteral("disabled "));
    rig.widget<QCheckBox>("checkBox_displayMode")->click();
    rig.mark();
    combo->setCurrentIndex(2);
    emit combo->activated(2);
    // A camera without the chosen setting shows its number.
    QCOMPARE(rig.sets(), QStringList({"camera display_setting c01 marker_count", "camera display_setting c02 camera_id",
                                      "camera display_setting c03 marker_count", "camera display_setting c04 camera_id"}));
    QCOMPARE(column(rig, Col::DisplayMode), QStringList({"marker_count", "camera_id", "marker_count", "camera_id"}));

    // Return is swallowed; Escape cancels the dialog around the page.
    QSignalSpy rejected(&rig.host, &QDialog::rejected);
    QTest::keyClick(rig.overview, Qt::Key_Return);
    QCOMPARE(rejected.count(), 0);
    QTest::keyClick(rig.overview, Qt::Key_Escape);
    QCOMPARE(rejected.count(), 1);
    QVERIFY(!rig.host.isVisible());
}

void tst_OverviewWdg::displayIntensity()
{
    OverviewRig rig;
    for (const char* camera : {"c01", "c02", "c03"})
        rig.poke(QByteArray("camera display_intensity ") + camera + " 0.1");
    rig.open();
    auto* slider = rig.widget<QSlider>("horizontalSlider_displayIntensity");
    QCOMPARE(look(rig.overview, {"checkBox_displayIntensity", "horizontalSlider_displayIntensity"}),
             (QStringList{"enabled on", "enabled 10 of 100"}));
    // A drag fills the column at once and sends one write per camera when the debounce runs out.
    slider->setSliderDown(true);
    for (int value = 11; value <= 60; ++value)
        slider->setValue(value);
    slider->setSliderDown(false);
    QCOMPARE(rig.cell(2, Col::DisplayIntensity).toInt(), 60);
    QCOMPARE(rig.widget<QLabel>("label_displayIntensityPercent")->text(), QStringLiteral("60%"));
    QVERIFY2(rig.sets().isEmpty(), "nothing is sent before the timer runs out");
    QCOMPARE(fireDisplayTimers(rig.overview), 1);
    QCOMPARE(rig.sets(), QStringList({"camera display_intensity c01 0.600000", "camera display_intensity c02 0.600000",
                                      "camera display_intensity c03 0.600000"}));
    // Hidden, the page drops what it still had to send; the cells keep the change for OK.
    rig.mark();
    slider->setValue(70);
    rig.overview->hide();
    QCOMPARE(fireDisplayTimers(&rig.host), 0);
    QVERIFY(rig.sets().isEmpty());
    QCOMPARE(rig.cell(0, Col::DisplayIntensity).toInt(), 70);
    QVERIFY(rig.table.isChanged(0, Col::DisplayIntensity));
    // Opened again with cameras that have no display of their own.
    for (int row = 0; row < 4; ++row)
        rig.setCellQuietly(row, Col::HasDisplayIntensity, false);
    rig.overview->update_from_module(rig.pages);
    rig.overview->show();
    QCOMPARE(look(rig.overview, {"checkBox_displayIntensity", "horizontalSlider_displayIntensity"}),
             (QStringList{"disabled off", "disabled 0 of 100"}));
}

void tst_OverviewWdg::markerModeList_data()
{
    QTest::addColumn<QByteArrayList>("pokes");
    QTest::addColumn<QString>("failing");
    QTest::addColumn<QStringList>("items");
    QTest::addColumn<QStringList>("looks"); // of the box and the list

    const QByteArrayList allAccurate = {"camera has_marker_mode_accurate c03 yes", "camera has_marker_mode_accurate c04 yes",
                                        "camera marker_mode c02 accurate", "camera marker_mode c03 accurate",
                                        "camera marker_mode c04 accurate"};
    QTest::newRow("all accurate, some without fast") << allAccurate << QString() << QStringList({"default", "accurate"})
                                                     << QStringList({"enabled on", "enabled accurate"});
    QTest::newRow("a failed query leaves accurate out") << allAccurate << get("camera has_marker_mode_accurate c02")
                                                        << QStringList({"default"}) << QStringList({"enabled on", "enabled "});
    QTest::newRow("default system: mixed modes") << QByteArrayList() << QString() << QStringList({"default"})
                                                 << QStringList({"enabled off", "disabled default"});
}

void tst_OverviewWdg::markerModeList()
{
    QFETCH(QByteArrayList, pokes);
    QFETCH(QString, failing);
    QFETCH(QStringList, items);
    QFETCH(QStringList, looks);

    OverviewRig rig;
    for (const QByteArray& poke : pokes)
        rig.poke(poke);
    rig.load();
    // The overview asks again for itself.
    if (!failing.isEmpty())
        rig.fail(failing);
    rig.open();
    auto* combo = rig.widget<QComboBox>("comboBox_globalMarkerMode");
    QCOMPARE(comboTexts(combo), items);
    QCOMPARE(look(rig.overview, {"checkBox_globalMarkerMode", "comboBox_globalMarkerMode"}), looks);
    QVERIFY2(!anyChanged(rig, Col::MarkerMode), "showing the page writes no marker mode");
    // The choice goes to every camera, on OK.
    combo->setCurrentIndex(0);
    emit combo->activated(0);
    QCOMPARE(column(rig, Col::MarkerMode), fourTimes("0"));
    QVERIFY(rig.sets().isEmpty());
}

void tst_OverviewWdg::markerSizes_data()
{
    QTest::addColumn<double>("maxPercent"); // before, of a chip of 10 with a limit of 8 %
    QTest::addColumn<double>("minPixels");
    QTest::addColumn<QString>("touched");
    QTest::addColumn<double>("value");
    QTest::addColumn<double>("newMax");
    QTest::addColumn<double>("newMin");
    QTest::addColumn<int>("first"); // the column written for every camera before the other one

    // The controller refuses a minimum above the maximum: the one that makes room goes first.
    QTest::newRow("lower maximum lowers the minimum") << 4.0 << 30.0 << "doubleSpinBox_globalMaximumSizeOfMarkers"
                                                      << 2.0 << 2.0 << 20.0 << int(Col::MarkerMinSize);
    // The missing fifth camera has no chip size: it is skipped instead of divided by.
    QTest::newRow("higher minimum raises the maximum") << 1.0 << 5.0 << "doubleSpinBox_globalMinimumSizeOfMarkers"
                                                       << 30.0 << 3.0 << 30.0 << int(Col::MarkerMaxSize);
}

void tst_OverviewWdg::markerSizes()
{
    QFETCH(double, maxPercent);
    QFETCH(double, minPixels);
    QFETCH(QString, touched);
    QFETCH(double, value);
    QFETCH(double, newMax);
    QFETCH(double, newMin);
    QFETCH(int, first);

    OverviewRig rig;
    rig.load();
    for (int row = 0; row < 4; ++row) {
        rig.setCellQuietly(row, Col::Chipsize, 10.0);
        rig.setCellQuietly(row, Col::MarkerSizeLimit, 8.0);
        rig.setCellQuietly(row, Col::MarkerMaxSize, maxPercent);
        rig.setCellQuietly(row, Col::MarkerMinSize, minPixels);
    }
    rig.open();
    auto* maxSpin = rig.widget<QDoubleSpinBox>("doubleSpinBox_globalMaximumSizeOfMarkers");
    auto* minSpin = rig.widget<QDoubleSpinBox>("doubleSpinBox_globalMinimumSizeOfMarkers");
    QCOMPARE(maxSpin->maximum(), 8.0);
    QCOMPARE(minSpin->maximum(), 80.0);
    QVector<int> order;
    QObject::connect(&rig.table, &QStandardItemModel::itemChanged, [&order](QStandardItem* item) { order << item->column(); });
    rig.widget<QDoubleSpinBox>(touched.toLatin1())->setValue(value);

    QCOMPARE(maxSpin->value(), newMax);
    QCOMPARE(minSpin->value(), newMin);
    QCOMPARE(column(rig, Col::MarkerMaxSize), fourTimes(QString::number(newMax)));
    QCOMPARE(column(rig, Col::MarkerMinSize), fourTimes(QString::number(newMin)));
    const int second = first == Col::MarkerMinSize ? Col::MarkerMaxSize : Col::MarkerMinSize;
    QVERIFY(order.lastIndexOf(first) < order.indexOf(second));
    const QVariant missing = rig.cell(4, Col::MarkerMaxSize);
    QVERIFY2(!missing.isValid() || qIsFinite(missing.toDouble()), "no infinity in the missing camera's row");
}

void tst_OverviewWdg::cameraModeForAllCameras()
{
    // Camera 4 describes its first mode differently: no global choice.
    OverviewRig different;
    different.useScenarioJson(QByteArray(AlikeModes).replace(R"({ "serial": "4" })",
        R"({ "serial": "4", "modes": [ { "description": "Other" }, { "description": "High speed 300 Hz" } ] })"));
    different.open();
    QCOMPARE(look(different.overview, {"checkBox_cameraMode", "comboBox_cameraMode"}),
             (QStringList{"disabled off", "disabled "}));
    QVERIFY(!different.widget<QTableView>("tableView")->isColumnHidden(Col::CameraMode));
    different.host.hide();

    OverviewRig rig;
    rig.useScenarioJson(AlikeModes);
    rig.open();
    auto* combo = rig.widget<QComboBox>("comboBox_cameraMode");
    QCOMPARE(comboTexts(combo), QStringList({"Standard 180 Hz", "High speed 300 Hz"}));
    // All cameras in m01: the common mode is shown and may be changed.
    QCOMPARE(look(rig.overview, {"checkBox_cameraMode", "comboBox_cameraMode"}),
             (QStringList{"enabled on", "enabled Standard 180 Hz"}));
    combo->setCurrentIndex(1);
    emit combo->activated(1);
    QCOMPARE(column(rig, Col::CameraModeData), fourTimes("m02"));
    QCOMPARE(column(rig, Col::CameraMode), fourTimes("High speed 300 Hz"));
    QVERIFY2(rig.sets().isEmpty(), "camera modes are written by the dialog on OK");

    // One camera back in m01 by its own page: the global choice turns neutral.
    rig.table.setData(rig.table.index(3, Col::CameraModeData), QStringLiteral("m01"));
    QCOMPARE(look(rig.overview, {"checkBox_cameraMode", "comboBox_cameraMode"}), (QStringList{"enabled off", "disabled "}));
}

void tst_OverviewWdg::columnsShown_data()
{
    QTest::addColumn<VersionInfo>("protocol");
    QTest::addColumn<QByteArrayList>("pokes");
    QTest::addColumn<bool>("hostAsks");
    QTest::addColumn<bool>("roomCal");
    QTest::addColumn<bool>("dynamic");
    QTest::addColumn<QStringList>("ring"); // the looks of the ring display's box and slider

    const VersionInfo latest(1, 27, 0);
    const QByteArrayList allOff = {"camera dynamic_reflex_skip c03 no"};
    const QStringList differentRings{"enabled off", "disabled 0 of 100"};
    const QStringList noRing{"hidden", "hidden"};
    // Before 1.27 the controller tells of no ring display.
    QTest::newRow("1.17") << VersionInfo(1, 17, 0) << QByteArrayList() << false << false << true << noRing;
    QTest::newRow("1.18, any patch") << VersionInfo(1, 18, -1) << QByteArrayList() << false << true << true << noRing;
    QTest::newRow("no dynamic reflex suppression on") << latest << allOff << false << true << false << differentRings;
    QTest::newRow("none on, host asks") << latest << allOff << true << true << true << differentRings;
    QTest::newRow("two cameras with the same ring") << latest << QByteArrayList{"camera display_ring_intensity c03 0.3"}
                                                    << false << true << true << QStringList{"enabled on", "enabled 30 of 100"};
    // No camera with a ring: the row disappears instead of standing there disabled.
    QTest::newRow("no camera with a ring")
        << latest << QByteArrayList{"camera has_display_ring_intensity c01 no", "camera has_display_ring_intensity c03 no"}
        << false << true << true << noRing;
}

void tst_OverviewWdg::columnsShown()
{
    QFETCH(VersionInfo, protocol);
    QFETCH(QByteArrayList, pokes);
    QFETCH(bool, hostAsks);
    QFETCH(bool, roomCal);
    QFETCH(bool, dynamic);
    QFETCH(QStringList, ring);

    OverviewRig rig;
    rig.setProtocol(protocol);
    for (const QByteArray& poke : pokes)
        rig.poke(poke);
    rig.open(hostAsks);
    QCOMPARE(!rig.widget<QTableView>("tableView")->isColumnHidden(Col::RoomCal), roomCal);
    QCOMPARE(!rig.widget<QTableView>("tableView")->isColumnHidden(Col::DynReflexSuppr), dynamic);
    QCOMPARE(rig.widget<QCheckBox>("checkBox_dynamic_reflex_skip")->isVisible(), dynamic);
    QCOMPARE(look(rig.overview, {"checkBox_displayRingIntensity", "horizontalSlider_displayRingIntensity"}), ring);
}

void tst_OverviewWdg::reflexCheckBoxesFromController_data()
{
    QTest::addColumn<QString>("failing");
    QTest::addColumn<bool>("staticShown");
    // A camera that fails to answer does not count; camera 1 counts as much as the others.
    QTest::newRow("no camera answers yes") << get("camera has_static_reflex_skip c01") << false;
    QTest::newRow("only camera 1 has it") << "" << true;
}

void tst_OverviewWdg::reflexCheckBoxesFromController()
{
    QFETCH(QString, failing);
    QFETCH(bool, staticShown);
    OverviewRig rig;
    for (const char* camera : {"c02", "c03", "c04"})
        rig.poke(QByteArray("camera has_static_reflex_skip ") + camera + " no");
    if (!failing.isEmpty())
        rig.fail(failing);
    rig.open(true);
    QCOMPARE(!rig.widget<QCheckBox>("checkBox_static_reflex_skip")->isHidden(), staticShown);
    // Clicking the dynamic box sets the column on every camera that has the feature.
    rig.widget<QCheckBox>("checkBox_dynamic_reflex_skip")->click();
    QCOMPARE(column(rig, Col::DynReflexSuppr), QStringList({"true", "false", "true", "false"}));
    QVERIFY(!rig.table.isChanged(1, Col::DynReflexSuppr));
}

void tst_OverviewWdg::cellEditors_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("column");
    QTest::addColumn<QByteArray>("change"); // "fail <request>" or a poke, before the pages load
    QTest::addColumn<QString>("editor"); // the range of a spin box, the items of a combo box
    QTest::addColumn<QString>("written"); // the cell after the top or the last item was chosen

    const int mode = Col::CameraMode;
    QTest::newRow("flash of c03, reduced to 60") << 2 << int(Col::FlashIntensity) << QByteArray() << "0..60" << "60";
    QTest::newRow("no flash allowed: no editor") << 1 << int(Col::FlashIntensity)
                                                 << QByteArray("camera max_flash_intensity c02 0") << "" << "0";
    QTest::newRow("sync group of c01") << 0 << int(Col::SyncGroup) << QByteArray()
                                       << "Channel 1, Channel 2, Channel 3" << "Channel 3";
    QTest::newRow("camera mode of c01") << 0 << mode << QByteArray()
                                        << "m01 Standard 180 Hz, m02 High speed 300 Hz, m03 Full frame 60 Hz"
                                        << "m03 Full frame 60 Hz";
    QTest::newRow("a mode description refused") << 0 << mode << QByteArray("fail quarvo2 get camera mode_desc c01 m02")
                                                << "m01 Standard 180 Hz, m03 Full frame 60 Hz" << "m03 Full frame 60 Hz";
    // An editor without a choice writes nothing.
    QTest::newRow("the mode count refused") << 0 << mode << QByteArray("fail quarvo2 get camera number_of_modes c01")
                                            << "" << "m01 Standard 180 Hz";
}

void tst_OverviewWdg::cellEditors()
{
    QFETCH(int, row);
    QFETCH(int, column);
    QFETCH(QByteArray, change);
    QFETCH(QString, editor);
    QFETCH(QString, written);
    OverviewRig rig;
    if (change.startsWith("fail ")) {
        rig.load();
        rig.fail(QString::fromLatin1(change.mid(5)));
    } else if (!change.isEmpty()) {
        rig.poke(change);
    }
    rig.open();
    auto* view = rig.widget<QTableView>("tableView");
    view->edit(rig.table.index(row, column));
    QString shown;
    QWidget* opened = view->viewport()->focusWidget();
    if (auto* spin = qobject_cast<QSpinBox*>(opened)) {
        shown = QString("%1..%2").arg(spin->minimum()).arg(spin->maximum());
        spin->setValue(spin->maximum() + 10);
    } else if (auto* combo = qobject_cast<QComboBox*>(opened)) {
        QStringList items;
        for (int i = 0; i < combo->count(); ++i)
            items << (column == Col::CameraMode ? combo->itemData(i).toString() + ' ' : QString()) + combo->itemText(i);
        shown = items.join(", ");
        combo->setCurrentIndex(combo->count() - 1);
    }
    QCOMPARE(shown, editor);
    if (opened) {
        // The view commits on Return through a queued call.
        QTest::keyClick(opened, Qt::Key_Return);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);
    }
    const int changed = column == Col::CameraMode ? Col::CameraModeData : column;
    QCOMPARE(rig.cell(row, column).toString(), written.section(' ', column == Col::CameraMode ? 1 : 0));
    if (column == Col::CameraMode)
        QCOMPARE(rig.cell(row, Col::CameraModeData).toString(), written.section(' ', 0, 0));
    QCOMPARE(rig.table.isChanged(row, changed), !editor.isEmpty());
}

void tst_OverviewWdg::pressToggles()
{
    // A press toggles a check box cell where the camera has the feature; dynamic reflex
    // suppression is switched only for all cameras together.
    OverviewRig rig;
    rig.open();
    const struct
    {
        int row;
        int column;
        bool toggles;
    } presses[] = {{0, Col::ModFlash, true}, {1, Col::ModFlash, false}, {0, Col::StaticReflexSuppr, true},
                   {2, Col::DynReflexSuppr, false}};
    for (const auto& press : presses) {
        const bool before = rig.cell(press.row, press.column).toBool();
        rig.pressCell(press.row, press.column);
        QCOMPARE(rig.cell(press.row, press.column).toBool(), press.toggles ? !before : before);
        QCOMPARE(rig.table.isChanged(press.row, press.column), press.toggles);
    }
    QVERIFY(rig.widget<QCheckBox>("checkBox_modulated")->isChecked());
}

QTEST_MAIN(tst_OverviewWdg)
#include "tst_overviewwdg.moc"
