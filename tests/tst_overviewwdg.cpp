// The "All Cameras" page of the dialog the host opens, against the simulated controller:
// what it shows at opening, and an operator session through its widgets.
#include "dialogrig.h"
#include "widgetsuite.h"
#include "cameratablecolumns.h"
#include "displaytimers.h"
#include "pagerig.h"

#include <QComboBox>
#include <QSlider>
#include <QSpinBox>
#include <QTableView>
#include <QtTest>

namespace Col = CameraTable;

namespace {

// The operator's press and release on a cell of the overview's table.
void pressCell(DialogRig& rig, int row, int column)
{
    auto* view = rig.pageWidget<QTableView>(0, "tableView");
    const QPoint centre = view->visualRect(rig.model()->index(row, column)).center();
    QTest::mousePress(view->viewport(), Qt::LeftButton, Qt::NoModifier, centre);
    QTest::mouseRelease(view->viewport(), Qt::LeftButton, Qt::NoModifier, centre);
}

// The operator opens the cell's editor, takes its top value or last item and confirms;
// returns what it offered ("0..60", or the items joined by ", ", the one it opened on
// marked "*"), or nothing.
QString editCell(DialogRig& rig, int row, int column)
{
    auto* view = rig.pageWidget<QTableView>(0, "tableView");
    const QModelIndex index = rig.model()->index(row, column);
    // The table opens a cell's editor when the operator makes it the current one.
    view->setCurrentIndex(index);
    QWidget* editor = view->indexWidget(index);
    QStringList offer;
    if (auto* spin = qobject_cast<QSpinBox*>(editor)) {
        offer << QStringLiteral("%1..%2").arg(spin->minimum()).arg(spin->maximum());
        spin->setValue(spin->maximum());
    } else if (auto* combo = qobject_cast<QComboBox*>(editor)) {
        for (int i = 0; i < combo->count(); ++i)
            offer << (i == combo->currentIndex() ? QLatin1Char('*') : QLatin1Char(' ')) + combo->itemText(i);
        combo->setCurrentIndex(combo->count() - 1);
    }
    if (editor) {
        // What the delegate asks of the view when the operator confirms: keep and close.
        QAbstractItemDelegate* delegate = view->itemDelegate(index);
        emit delegate->commitData(editor);
        emit delegate->closeEditor(editor);
    }
    return offer.join(QLatin1String(", "));
}

// Four cameras offering the same two modes.
const QByteArray AlikeModes = R"({ "camera_defaults": { "modes": [ { "description": "Standard 180 Hz" }, { "description":
    "High speed 300 Hz" } ] }, "cameras": [ { "serial": "1" }, { "serial": "2" }, { "serial": "3" }, { "serial": "4" } ] })";

// One camera and no missing one.
const QByteArray OneCamera = R"({ "display_settings": [ { "id": "camera_id", "description": "Camera number" },
    { "id": "off", "description": "Off" } ], "camera_defaults": { "has_display_intensity": true,
    "display_settings": ["camera_id", "off"], "display_setting": "off" }, "cameras": [ { "serial": "1" } ] })";

// The headers of the table's columns that the page may hide and has hidden.
QString hiddenColumns(DialogRig& rig)
{
    QStringList hidden;
    for (const int column : {Col::SyncGroup, Col::CameraMode, Col::RoomCal, Col::DynReflexSuppr}) {
        if (rig.pageWidget<QTableView>(0, "tableView")->isColumnHidden(column))
            hidden << rig.model()->headerData(column, Qt::Horizontal).toString();
    }
    return hidden.join(", ");
}

} // namespace

class tst_OverviewWdg : public WidgetSuite
{
    Q_OBJECT

private slots:
    void shownAtOpening_data();
    void shownAtOpening();
    void operatorSession();
    void globalCameraMode();
};

void tst_OverviewWdg::shownAtOpening_data()
{
    QTest::addColumn<QByteArray>("scenario"); // JSON, or none for the built-in default system
    QTest::addColumn<QByteArrayList>("changes"); // as applyChanges() takes them
    QTest::addColumn<QStringList>("looks"); // "hidden columns: ..." and then "object: look"

    const auto row = [](const char* name, const QByteArrayList& changes, const QStringList& looks,
                        const QByteArray& scenario = QByteArray()) { QTest::newRow(name) << scenario << changes << looks; };
    const QStringList noRing{"checkBox_displayRingIntensity: hidden", "horizontalSlider_displayRingIntensity: hidden"};
    row("default system", {}, {"hidden columns: ", "checkBox_globalMarkerMode: enabled off",
        "comboBox_globalMarkerMode: disabled default", "checkBox_displayRingIntensity: enabled off",
        "horizontalSlider_displayRingIntensity: disabled 0 of 100", "checkBox_static_reflex_skip: enabled off",
        "checkBox_dynamic_reflex_skip: enabled off", "checkBox_displayMode: enabled off",
        "checkBox_globalMaximumNumberOfMarkers: enabled off", "spinBox_globalMaximumNumberOfMarkers: disabled 300",
        "horizontalSlider_flash_intensity: disabled 0 of 200", "doubleSpinBox_globalMaximumSizeOfMarkers: disabled 3.5",
        "doubleSpinBox_globalMinimumSizeOfMarkers: disabled 1.5"});
    // Before 1.15 there is no display mode to choose; before 1.27 no ring display.
    row("1.14", {"protocol 1.14.0"}, QStringList{"hidden columns: Camera mode, Room cal",
        "checkBox_displayMode: disabled off", "comboBox_displayMode: disabled "} + noRing);
    // Where all cameras that have a feature agree, it is offered for all; camera 1 counts as much as the others.
    const QByteArrayList agreeing = {"camera marker_max_number c01 250", "camera marker_max_number c02 250",
        "camera marker_max_number c03 250", "camera marker_max_number c04 250", "camera display_ring_intensity c03 0.3",
        "camera has_static_reflex_skip c02 no", "camera has_static_reflex_skip c03 no", "camera has_static_reflex_skip c04 no",
        "camera has_marker_mode_accurate c03 yes", "camera has_marker_mode_accurate c04 yes", "camera marker_mode c02 accurate",
        "camera marker_mode c03 accurate", "camera marker_mode c04 accurate", "camera dynamic_reflex_skip c03 no",
        "camera modulated_flash c01 yes"};
    row("agreeing cameras", agreeing, {"hidden columns: Dyn. reflex suppr.", "checkBox_globalMaximumNumberOfMarkers: enabled on",
        "spinBox_globalMaximumNumberOfMarkers: enabled 250", "checkBox_displayRingIntensity: enabled on",
        "horizontalSlider_displayRingIntensity: enabled 30 of 100", "checkBox_static_reflex_skip: enabled on",
        "checkBox_globalMarkerMode: enabled on", "comboBox_globalMarkerMode: enabled accurate",
        "checkBox_dynamic_reflex_skip: hidden", "checkBox_modulated: enabled on"});
    QByteArrayList allFast;
    for (const char* camera : {"c01", "c02", "c03", "c04"})
        allFast << QByteArray("camera has_marker_mode_fast ") + camera + " yes" << QByteArray("camera marker_mode ") + camera + " fast";
    row("all cameras fast", allFast, {"hidden columns: ", "checkBox_globalMarkerMode: enabled on",
        "comboBox_globalMarkerMode: enabled fast"});
    // No camera with a ring: the row disappears instead of standing there disabled.
    row("no ring, no display", {"camera has_display_ring_intensity c01 no", "camera has_display_ring_intensity c03 no",
        "camera has_display_intensity c01 no", "camera has_display_intensity c02 no", "camera has_display_intensity c03 no",
        "fail *number_of_display_settings"}, QStringList{"hidden columns: ", "checkBox_displayIntensity: disabled off",
                    "checkBox_displayMode: disabled off", "horizontalSlider_displayIntensity: disabled 0 of 100"} + noRing);
    // All cameras in their first mode: it is offered for all; camera 4 or 1 naming a mode differently: no global choice.
    row("same modes, from 1.15 on", {"protocol 1.15.0"}, {"hidden columns: Sync group, Room cal, Dyn. reflex suppr.",
        "checkBox_cameraMode: enabled on", "comboBox_cameraMode: enabled Standard 180 Hz"}, AlikeModes);
    row("different modes", {}, {"hidden columns: Sync group, Dyn. reflex suppr.", "checkBox_cameraMode: disabled off",
        "comboBox_cameraMode: disabled "}, QByteArray(AlikeModes).replace(R"({ "serial": "4" })",
        R"({ "serial": "4", "modes": [ { "description": "Other" }, { "description": "High speed 300 Hz" } ] })"));
    // The others have a third mode that camera 1 lacks: the two first ones can be given to all.
    row("fewer modes on camera 1", {}, {"hidden columns: Sync group, Dyn. reflex suppr.", "checkBox_cameraMode: enabled on",
        "comboBox_cameraMode: enabled Standard 180 Hz"}, QByteArray(AlikeModes).replace(R"("High speed 300 Hz" } ] })",
        R"("High speed 300 Hz" }, { "description": "Full frame 60 Hz" } ] })").replace(R"({ "serial": "1" })",
        R"({ "serial": "1", "modes": [ { "description": "Standard 180 Hz" }, { "description": "High speed 300 Hz" } ] })"));
    row("camera 1 differs", {}, {"hidden columns: Sync group, Dyn. reflex suppr.", "checkBox_cameraMode: disabled off"},
        QByteArray(AlikeModes).replace(R"({ "serial": "1" })", R"({ "serial": "1", "modes": [ { "description": "Other" } ] })"));
    row("one camera", {}, {"hidden columns: Sync group, Camera mode, Dyn. reflex suppr.", "checkBox_displayMode: enabled on",
        "comboBox_displayMode: enabled Off", "checkBox_displayIntensity: enabled on"}, OneCamera);
}

void tst_OverviewWdg::shownAtOpening()
{
    QFETCH(QByteArray, scenario);
    QFETCH(QByteArrayList, changes);
    QFETCH(QStringList, looks);

    DialogRig rig(scenario, changes);
    QVERIFY(rig.start());
    QStringList seen;
    rig.open([&] {
        rig.click("pushButton_showDetails");
        seen = QStringList{"hidden columns: " + hiddenColumns(rig)} + looksOf(rig.tabs()->widget(0), looks.mid(1));
    });
    QCOMPARE(seen, looks);
}

void tst_OverviewWdg::operatorSession()
{
    // Flash maxima 100, 80, 60, 100: 61 on the first camera belongs to no slider position.
    // The first camera limits the marker size more than the last one.
    DialogRig rig({}, {"camera flash_intensity c01 61", "camera flash_intensity c03 30", "camera display_intensity c01 0.1",
                       "camera display_intensity c02 0.1", "camera display_intensity c03 0.1", "camera mode c01 m02",
                       "camera limit marker_max_size c01 50"});
    QVERIFY(rig.start());
    rig.open([&] {
        rig.click("pushButton_showDetails");
        // The table's editors offer what the camera has and write the operator's choice.
        QCOMPARE(editCell(rig, 0, Col::ModFlash), QString()); // a switch: a press toggles it
        QCOMPARE(editCell(rig, 0, Col::SyncGroup), QString("*Channel 1,  Channel 2,  Channel 3"));
        // The mode editor opens on the camera's own mode (asking the camera for its modes).
        QCOMPARE(editCell(rig, 0, Col::CameraMode), QString(" Standard 180 Hz, *High speed 300 Hz,  Full frame 60 Hz"));
        rig.mark();
        QCOMPARE(cellText(rig.model(), 0, Col::SyncGroup), QString("Channel 3"));
        struct Step
        {
            const char* control; // or "press" on the cell of row value
            QVariant value;
            QStringList looks;
            int column;
            QString cells; // of the present cameras' rows
            QStringList sent = {};
        };
        const auto run = [&rig](std::initializer_list<Step> steps) {
            for (const Step& step : steps) {
                if (qstrcmp(step.control, "press") == 0)
                    pressCell(rig, step.value.toInt(), step.column);
                else
                    operate(rig.pageWidget<QWidget>(0, step.control), step.value);
                QCOMPARE(looksOf(rig.tabs()->widget(0), step.looks), step.looks);
                QCOMPARE(cellTexts(rig.model(), step.column, 4).join(' '), step.cells);
                QCOMPARE(rig.requests(), step.sent);
                rig.mark();
            }
        };
        // Enabling the flash slider writes nothing. Position 100 of 200: each camera's maximum
        // x 100/201, rounded; on release one command per present camera.
        run({{"checkBox_flash_intensity", true, {"horizontalSlider_flash_intensity: enabled 0 of 200",
              "label_maxFlash: enabled max. flash"}, Col::FlashIntensity, "61 40 30 90"}});
        auto* slider = rig.pageWidget<QSlider>(0, "horizontalSlider_flash_intensity");
        slider->setSliderDown(true);
        slider->setValue(100);
        QCOMPARE(cellTexts(rig.model(), Col::FlashIntensity, 4), (QStringList{"50", "40", "30", "50"}));
        // The lowest position turns every flash off.
        slider->setValue(0);
        QCOMPARE(cellTexts(rig.model(), Col::FlashIntensity, 4), (QStringList{"0", "0", "0", "0"}));
        QVERIFY(rig.requests().isEmpty());
        slider->setSliderDown(false);
        QCOMPARE(rig.requests(), QStringList({set("camera flash_intensity c01 0"), set("camera flash_intensity c02 0"),
                                              set("camera flash_intensity c03 0"), set("camera flash_intensity c04 0")}));
        // A flash edited in the table that no slider position gives unticks the slider.
        QCOMPARE(editCell(rig, 2, Col::FlashIntensity), QString("0..60"));
        const QStringList unticked{"checkBox_flash_intensity: enabled off", "horizontalSlider_flash_intensity: disabled 0 of 200"};
        QCOMPARE(looksOf(rig.tabs()->widget(0), unticked), unticked);
        rig.mark();

        run({// Mixed maximum numbers of markers and marker modes: the box applies the shown one to every camera.
             {"checkBox_globalMaximumNumberOfMarkers", true, {"spinBox_globalMaximumNumberOfMarkers: enabled 300"},
              Col::MarkerMaxNumber, "300 300 300 300"},
             {"checkBox_globalMarkerMode", true, {"comboBox_globalMarkerMode: enabled default"}, Col::MarkerMode, "0 0 0 0"},
             // c01 and c03 show camera_id, c02 sync_group, c04 off: no common display mode. A
             // camera without the chosen setting shows its number.
             {"checkBox_displayMode", true, {"comboBox_displayMode: enabled "}, Col::DisplayMode, "camera_id sync_group camera_id off"},
             {"comboBox_displayMode", 2, {}, Col::DisplayMode, "marker_count camera_id marker_count camera_id",
              {set("camera display_setting c01 marker_count"), set("camera display_setting c02 camera_id"),
               set("camera display_setting c03 marker_count"), set("camera display_setting c04 camera_id")}},
             // Reflex boxes and presses set cells where the camera has the feature (dynamic
             // reflex suppression only for all); the static box shows whether all are on.
             {"checkBox_static_reflex_skip", true, {}, Col::StaticReflexSuppr, "true true true true"},
             {"press", 1, {"checkBox_static_reflex_skip: enabled off"}, Col::StaticReflexSuppr, "true false true true"},
             {"press", 1, {"checkBox_static_reflex_skip: enabled on"}, Col::StaticReflexSuppr, "true true true true"},
             {"checkBox_dynamic_reflex_skip", true, {}, Col::DynReflexSuppr, "true false true false"},
             {"press", 0, {"checkBox_modulated: enabled on"}, Col::ModFlash, "true false true false",
              {get("camera modulated_flash c01"), set("camera modulated_flash c01 yes")}},
             {"press", 1, {}, Col::ModFlash, "true false true false"},
             // Ticking a size box applies the size it shows to every camera at once; the maximum
             // size reaches as far as the most limited camera's.
             {"checkBox_globalMaximumSizeOfMarker", true, {}, Col::MarkerMaxSize, "3.5 3.5 3.5 3.5"},
             {"checkBox_globalMinimumSizeOfMarker", true, {}, Col::MarkerMinSize, "1.5 1.5 1.5 1.5"},
             {"doubleSpinBox_globalMaximumSizeOfMarkers", 99.0, {}, Col::MarkerMaxSize, "4.3 4.3 4.3 4.3"},
             // A size box moves the other one out of its way for every present camera.
             {"doubleSpinBox_globalMaximumSizeOfMarkers", 0.1, {}, Col::MarkerMinSize, "1.152 1.152 1.152 1.152"},
             {"doubleSpinBox_globalMinimumSizeOfMarkers", 20.0, {}, Col::MarkerMaxSize, "1.73611 3.46021 1.73611 1.11607"},
             // The display intensity fills the column at once and goes out when the debounce runs out.
             {"horizontalSlider_displayIntensity", 60, {"label_displayIntensityPercent: enabled 60%"}, Col::DisplayIntensity,
              "60 60 60 60"}});
        // The missing camera's row takes no display mode, and no size divided by its unknown chip size.
        QCOMPARE(QStringList({cellText(rig.model(), 4, Col::DisplayMode), cellText(rig.model(), 4, Col::MarkerMaxSize)}),
                 (QStringList{"", "1.7"}));
        QCOMPARE(fireDisplayTimers(rig.tabs()->widget(0)), 1);
        QCOMPARE(rig.requests(), QStringList({set("camera display_intensity c01 0.600000"),
            set("camera display_intensity c02 0.600000"), set("camera display_intensity c03 0.600000")}));
        rig.mark();
        // The ring display intensity likewise, for the cameras with a ring.
        operate(rig.pageWidget<QWidget>(0, "checkBox_displayRingIntensity"), true);
        operate(rig.pageWidget<QWidget>(0, "horizontalSlider_displayRingIntensity"), 40);
        QCOMPARE(fireDisplayTimers(rig.tabs()->widget(0)), 1);
        QCOMPARE(rig.requests(), QStringList({set("camera display_ring_intensity c01 0.400000"),
                                              set("camera display_ring_intensity c03 0.400000")}));
        // A page shown after the overview's changes takes its row as they left it.
        rig.tabs()->setCurrentIndex(1);
        QCOMPARE(rig.pageWidget<QDoubleSpinBox>(1, "doubleSpinBox_markerMaxSize")->value(), 1.7);
        QCOMPARE(rig.pageWidget<QSpinBox>(1, "spinBox_markerMaxNumber")->value(), 300);
        rig.tabs()->setCurrentIndex(0);
        // Cancelled before the display intensity's debounce ran out: its write never follows.
        operate(rig.pageWidget<QWidget>(0, "horizontalSlider_displayIntensity"), 70);
    });
    rig.mark();
    fireDisplayTimers(rig.dialog());
    QCOMPARE(rig.requests(), QStringList());
}

// The mode chosen for all cameras reaches each row with its own description.
void tst_OverviewWdg::globalCameraMode()
{
    DialogRig rig(AlikeModes);
    QVERIFY(rig.start());
    QStringList cells;
    rig.open([&] {
        operate(rig.pageWidget<QWidget>(0, "comboBox_cameraMode"), 1);
        cells = cellTexts(rig.model(), Col::CameraModeData, 4) + cellTexts(rig.model(), Col::CameraMode, 1);
    });
    QCOMPARE(cells, (QStringList{"m02", "m02", "m02", "m02", "High speed 300 Hz"}));
}

QTEST_MAIN(tst_OverviewWdg)
#include "tst_overviewwdg.moc"
