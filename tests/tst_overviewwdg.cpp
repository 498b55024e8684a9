// The "All Cameras" page against the simulated controller: loaded from a camera table
// filled from the controller's cameras as the dialog fills it, then driven through its
// widgets. Asserts the table cells, the global controls and the command log.

#include "CameraSettingsDlg.h"
#include "displaytimers.h"
#include "CameraWdg.h"
#include "ChangeTrackingStandardItemModel.h"
#include "OverviewWdg.h"
#include "camerasettingshelpers.h"
#include "cameratablecolumns.h"

#include <BackendVersions.h>
#include <IOManager.h>
#include <inprocesslink.h>
#include <simulatedcontroller.h>

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDoubleSpinBox>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QSignalSpy>
#include <QSlider>
#include <QSpinBox>
#include <QTableView>
#include <QVBoxLayout>
#include <QtTest>

#include <memory>

namespace Col = CameraTable;

namespace {


// The dialog as far as the page needs it: a parent dialog, the shared table with one row
// per present camera (from its camera page) and one for the scenario's missing camera.
class OverviewRig
{
public:
    explicit OverviewRig(const QStringList& pokes = {}, bool withMissingRow = true,
                         const QByteArray& scenario = QByteArray())
        : link(&controller), channel(&link), table(0, Col::ColumnCount)
    {
        QString error;
        if (scenario.isEmpty())
            controller.loadBuiltInScenario(QStringLiteral("default"));
        else if (!controller.loadScenarioJson(scenario, &error))
            qFatal("scenario refused: %s", qPrintable(error));
        for (const QString& poke : pokes) {
            if (!controller.poke(poke.toLatin1()))
                qFatal("poke refused: %s", qPrintable(poke));
        }
        versions = controller.backendVersions();
        new QVBoxLayout(&host);
        tester.reset(new QAbstractItemModelTester(&table, QAbstractItemModelTester::FailureReportingMode::QtTest));
        fill(withMissingRow);
    }

    void fill(bool withMissingRow)
    {
        table.setChangeRecordingActive(false);
        for (int column = 0; column < Col::ColumnCount; ++column)
            table.setHeaderData(column, Qt::Horizontal, Col::headerText(column), Qt::EditRole);
        int cameras = 0;
        channel.getInt(&cameras, "camera number_of_cameras");
        for (int i = 0; i < cameras; ++i) {
            auto* page = new CameraWdg(&channel, &host, &versions);
            page->hide();
            page->setModel(&table);
            page->update_from_module(i);
            pages << page;
            appendRow(page, i);
        }
        if (withMissingRow) {
            const int row = table.rowCount();
            table.insertRow(row);
            const QVariant values[] = {CameraSettings::cameraId(row + 1), QStringLiteral("LUMACAMKPE"),
                                       QStringLiteral("5120"), 0};
            for (int column = 0; column < 4; ++column)
                table.setData(table.index(row, column), values[column]);
            table.setData(table.index(row, Col::Missing), true);
        }
        table.setChangeRecordingActive(true);
        // Loading moves the pages' display sliders and so arms their timers; run them now.
        fireDisplayTimers(&host);
    }

    void appendRow(CameraWdg* page, int row) { table.insertRow(row); CameraSettingsDlg::addCameraRow(&table, page, row); }

    // Builds the page as the dialog does and shows it; the log starts empty afterwards.
    OverviewWdg* open(bool showDynReflexSuppr = false, BackendVersions* pageVersions = nullptr)
    {
        overview = new OverviewWdg(&channel, &host, pageVersions ? pageVersions : &versions);
        overview->setModel(&table);
        overview->setVisibleDynReflexSuppr(showDynReflexSuppr);
        overview->update_from_module(pages);
        overview->showDetails(true);
        host.layout()->addWidget(overview);
        host.show();
        if (!QTest::qWaitForWindowExposed(&host))
            qFatal("host dialog not shown");
        controller.clearLog();
        return overview;
    }

    // Writes a cell as the dialog's load does: not recorded as a change.
    void setCellQuietly(int row, int column, const QVariant& value)
    {
        table.setChangeRecordingActive(false);
        table.setData(table.index(row, column), value);
        table.setChangeRecordingActive(true);
    }

    QVariant cellOf(int row, int column) const { return table.data(table.index(row, column)); }

    QStringList sets() const
    {
        QStringList lines;
        for (const QByteArray& line : controller.requests()) {
            if (line.startsWith("quarvo2 set "))
                lines << QString::fromLatin1(line.mid(12));
        }
        return lines;
    }

    bool anyCellChanged(int column) const
    {
        for (int row = 0; row < table.rowCount(); ++row) {
            if (table.isChanged(row, column))
                return true;
        }
        return false;
    }

    template <typename T>
    T* widget(const char* name) const
    {
        T* found = overview->findChild<T*>(QLatin1String(name));
        if (!found)
            qFatal("no widget %s", name);
        return found;
    }

    void pressCell(int row, int column)
    {
        QTableView* view = widget<QTableView>("tableView");
        const QRect rect = view->visualRect(table.index(row, column));
        QTest::mousePress(view->viewport(), Qt::LeftButton, Qt::NoModifier, rect.center());
        QTest::mouseRelease(view->viewport(), Qt::LeftButton, Qt::NoModifier, rect.center());
    }

    SimulatedController controller;
    InProcessLink link;
    IOManager channel;
    BackendVersions versions{VersionInfo(), VersionInfo(), VersionInfo(), QString()};
    QDialog host;
    ChangeTrackingStandardItemModel table;
    std::unique_ptr<QAbstractItemModelTester> tester;
    QVector<CameraWdg*> pages;
    OverviewWdg* overview = nullptr;
};

// The default system with every camera offering the same two modes, all in the first.
QByteArray alikeModesScenario()
{
    QFile file(QStringLiteral(":/scenarios/default.json"));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("no built-in default scenario");
    QJsonObject root = QJsonDocument::fromJson(file.readAll()).object();
    const QJsonArray modes = QJsonDocument::fromJson(R"([
        {"description": "Standard 180 Hz", "max_sensor_exposure": 1.0},
        {"description": "High speed 300 Hz", "max_sensor_exposure": 0.5}])").array();
    QJsonArray cameras = root.value(QStringLiteral("cameras")).toArray();
    for (int i = 0; i < cameras.size(); ++i) {
        QJsonObject camera = cameras.at(i).toObject();
        camera.insert(QStringLiteral("modes"), modes);
        camera.remove(QStringLiteral("mode"));
        camera.insert(QStringLiteral("sensor_exposure"), 0.4);
        cameras.replace(i, camera);
    }
    root.insert(QStringLiteral("cameras"), cameras);
    return QJsonDocument(root).toJson();
}

QStringList comboTexts(const QComboBox* combo)
{
    QStringList texts;
    for (int i = 0; i < combo->count(); ++i)
        texts << combo->itemText(i);
    return texts;
}

// The operator drags a slider: pressed, moved through the values, released.
void drag(QSlider* slider, const QVector<int>& values)
{
    slider->setSliderDown(true);
    for (int value : values)
        slider->setValue(value);
    slider->setSliderDown(false);
}

} // namespace

class tst_OverviewWdg : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void emptyTable_data();
    void emptyTable();
    void flashValuesMatchingNoSliderRow();
    void flashSliderRelease();
    void markerModeList_data();
    void markerModeList();
    void mixedMarkerMaxNumber();
    void lowerMaximumDiameterLowersMinimum();
    void zeroChipSizeWritesNoInfinity();
    void cameraModeListOnlyWhenAlike();
    void cameraModeForAllCameras();
    void displayModeFallsBackToCameraId();
    void displayIntensityDragIsDebounced();
    void hidingDropsPendingDisplayIntensity();
    void ringDisplayRow_data();
    void ringDisplayRow();
    void roomCalColumn_data();
    void roomCalColumn();
    void dynReflexColumn_data();
    void dynReflexColumn();
    void reflexCheckBoxesFromController();
    void pressToggles_data();
    void pressToggles();
    void escapeRejectsOtherKeysStay();
    void formDefaults();
};

void tst_OverviewWdg::cleanup()
{
    for (QWidget* widget : QApplication::topLevelWidgets())
        QVERIFY2(!widget->isVisible(), qPrintable(QStringLiteral("left open: ") + widget->objectName()));
}

void tst_OverviewWdg::emptyTable_data()
{
    QTest::addColumn<bool>("hostAsksDynReflex");
    QTest::newRow("plain") << false;
    QTest::newRow("host asks for dynamic reflex suppression") << true;
}

void tst_OverviewWdg::emptyTable()
{
    QFETCH(bool, hostAsksDynReflex);
    SimulatedController controller;
    InProcessLink link(&controller);
    IOManager channel(&link);
    BackendVersions versions = controller.backendVersions();
    QDialog host;
    ChangeTrackingStandardItemModel table(0, Col::ColumnCount);
    QAbstractItemModelTester tester(&table, QAbstractItemModelTester::FailureReportingMode::QtTest);
    auto* overview = new OverviewWdg(&channel, &host, &versions);
    overview->setModel(&table);
    overview->setVisibleDynReflexSuppr(hostAsksDynReflex);
    QVector<CameraWdg*> none;
    overview->update_from_module(none);
    new QVBoxLayout(&host);
    host.layout()->addWidget(overview);
    host.show();
    QVERIFY(QTest::qWaitForWindowExposed(&host));

    auto* view = overview->findChild<QTableView*>(QStringLiteral("tableView"));
    QCOMPARE(view->model()->rowCount(), 0);
    QVERIFY(view->isColumnHidden(Col::SyncGroup));
    QVERIFY(view->isColumnHidden(Col::CameraMode));
    QCOMPARE(view->isColumnHidden(Col::DynReflexSuppr), !hostAsksDynReflex);
    QCOMPARE(overview->findChild<QCheckBox*>(QStringLiteral("checkBox_dynamic_reflex_skip"))->isHidden(),
             !hostAsksDynReflex);
    // With no camera every camera agrees: the flash slider stands at 0, the marker mode at "default".
    auto* markerMode = overview->findChild<QComboBox*>(QStringLiteral("comboBox_globalMarkerMode"));
    QCOMPARE(markerMode->currentText(), QStringLiteral("default"));
    QCOMPARE(overview->findChild<QSlider*>(QStringLiteral("horizontalSlider_flash_intensity"))->value(), 0);
}

void tst_OverviewWdg::flashValuesMatchingNoSliderRow()
{
    // Maxima 100, 80, 60, 100: 61 on the first camera belongs to no slider position.
    OverviewRig rig({QStringLiteral("camera flash_intensity c01 61")});
    rig.open();
    auto* box = rig.widget<QCheckBox>("checkBox_flash_intensity");
    auto* slider = rig.widget<QSlider>("horizontalSlider_flash_intensity");
    QVERIFY(!box->isChecked());
    QVERIFY(!slider->isEnabled());
    QCOMPARE(slider->value(), 0);
    QCOMPARE(slider->maximum(), 200);
    QVERIFY(!rig.widget<QLabel>("label_noFlash")->isEnabled());

    box->click();
    QVERIFY(slider->isEnabled());
    QVERIFY(rig.widget<QLabel>("label_maxFlash")->isEnabled());
    QVERIFY2(!rig.anyCellChanged(Col::FlashIntensity), "enabling the slider writes nothing");

    // Position 100 of 200: each camera's maximum x 100/201, rounded.
    slider->setValue(100);
    const int expected[] = {50, 40, 30, 50};
    for (int row = 0; row < 4; ++row) {
        QCOMPARE(rig.cellOf(row, Col::FlashIntensity).toInt(), expected[row]);
        QVERIFY(rig.table.isChanged(row, Col::FlashIntensity));
    }
    QVERIFY2(rig.sets().isEmpty(), "a move without release sends nothing");
}

void tst_OverviewWdg::flashSliderRelease()
{
    // The default system: 60/100, 40/80, 60/60 and 90/100 match no position, so the box is opened first.
    OverviewRig rig;
    rig.open();
    rig.widget<QCheckBox>("checkBox_flash_intensity")->click();
    drag(rig.widget<QSlider>("horizontalSlider_flash_intensity"), {150, 200});
    // One command per present camera, none for the missing fifth one.
    QCOMPARE(rig.sets(), QStringList({QStringLiteral("camera flash_intensity c01 100"),
                                      QStringLiteral("camera flash_intensity c02 80"),
                                      QStringLiteral("camera flash_intensity c03 60"),
                                      QStringLiteral("camera flash_intensity c04 100")}));
    QCOMPARE(rig.controller.peek("camera flash_intensity c02"), QByteArray("80"));
    // The slider's own writes do not move it back to the lowest matching position.
    QCOMPARE(rig.widget<QSlider>("horizontalSlider_flash_intensity")->value(), 200);
    QVERIFY(rig.widget<QCheckBox>("checkBox_flash_intensity")->isChecked());
}

void tst_OverviewWdg::markerModeList_data()
{
    QTest::addColumn<QStringList>("pokes");
    QTest::addColumn<QString>("failing");
    QTest::addColumn<QStringList>("items");
    QTest::addColumn<bool>("common");
    QTest::addColumn<QString>("shown");

    const QStringList allAccurate = {
        QStringLiteral("camera has_marker_mode_accurate c03 yes"), QStringLiteral("camera has_marker_mode_accurate c04 yes"),
        QStringLiteral("camera marker_mode c02 accurate"), QStringLiteral("camera marker_mode c03 accurate"),
        QStringLiteral("camera marker_mode c04 accurate")};
    QTest::newRow("all accurate, some without fast") << allAccurate << QString()
        << QStringList({"default", "accurate"}) << true << "accurate";
    QTest::newRow("a failed query leaves accurate out") << allAccurate
        << "quarvo2 get camera has_marker_mode_accurate c02"
        << QStringList({"default"}) << true << "";
    QTest::newRow("default system: mixed modes") << QStringList() << QString()
        << QStringList({"default"}) << false << "default";
}

void tst_OverviewWdg::markerModeList()
{
    QFETCH(QStringList, pokes);
    QFETCH(QString, failing);
    QFETCH(QStringList, items);
    QFETCH(bool, common);
    QFETCH(QString, shown);

    OverviewRig rig(pokes);
    if (!failing.isEmpty()) {
        FaultRule rule;
        rule.match = failing;
        rig.controller.addFault(rule);
    }
    rig.open();
    auto* combo = rig.widget<QComboBox>("comboBox_globalMarkerMode");
    QCOMPARE(comboTexts(combo), items);
    QCOMPARE(rig.widget<QCheckBox>("checkBox_globalMarkerMode")->isChecked(), common);
    QCOMPARE(combo->isEnabled(), common);
    QCOMPARE(combo->currentText(), shown);
    QVERIFY2(!rig.anyCellChanged(Col::MarkerMode), "showing the page writes no marker mode");
    QVERIFY(rig.sets().isEmpty());
}

void tst_OverviewWdg::mixedMarkerMaxNumber()
{
    OverviewRig rig({QStringLiteral("camera marker_max_number c01 100"), QStringLiteral("camera marker_max_number c02 200"),
                     QStringLiteral("camera marker_max_number c04 200")});
    rig.open();
    auto* spin = rig.widget<QSpinBox>("spinBox_globalMaximumNumberOfMarkers");
    QVERIFY(!rig.widget<QCheckBox>("checkBox_globalMaximumNumberOfMarkers")->isChecked());
    QVERIFY(!spin->isEnabled());
    QCOMPARE(spin->value(), 200);

    // Enabling the box applies the shown number to every camera.
    rig.widget<QCheckBox>("checkBox_globalMaximumNumberOfMarkers")->click();
    QVERIFY(spin->isEnabled());
    for (int row = 0; row < 4; ++row)
        QCOMPARE(rig.cellOf(row, Col::MarkerMaxNumber).toInt(), 200);
}

void tst_OverviewWdg::lowerMaximumDiameterLowersMinimum()
{
    OverviewRig rig;
    for (int row = 0; row < 4; ++row) {
        rig.setCellQuietly(row, Col::Chipsize, 10.0);
        rig.setCellQuietly(row, Col::MarkerSizeLimit, 8.0);
        rig.setCellQuietly(row, Col::MarkerMaxSize, 4.0);
        rig.setCellQuietly(row, Col::MarkerMinSize, 30.0);
    }
    rig.open();
    auto* maxSpin = rig.widget<QDoubleSpinBox>("doubleSpinBox_globalMaximumSizeOfMarkers");
    auto* minSpin = rig.widget<QDoubleSpinBox>("doubleSpinBox_globalMinimumSizeOfMarkers");
    QVERIFY(maxSpin->isEnabled());
    QCOMPARE(maxSpin->maximum(), 8.0);
    QCOMPARE(minSpin->maximum(), 80.0);
    QCOMPARE(minSpin->value(), 30.0);

    QVector<int> order;
    QObject::connect(&rig.table, &QStandardItemModel::itemChanged,
                     [&order](QStandardItem* item) { order << item->column(); });
    maxSpin->setValue(2.0);

    QCOMPARE(minSpin->value(), 20.0);
    for (int row = 0; row < 4; ++row) {
        QCOMPARE(rig.cellOf(row, Col::MarkerMinSize).toDouble(), 20.0);
        QCOMPARE(rig.cellOf(row, Col::MarkerMaxSize).toDouble(), 2.0);
    }
    // Every minimum is written before the first maximum: the controller refuses a minimum above it.
    QVERIFY(!order.isEmpty());
    QCOMPARE(order.last(), int(Col::MarkerMaxSize));
    QVERIFY(order.lastIndexOf(Col::MarkerMinSize) < order.indexOf(Col::MarkerMaxSize));
}

void tst_OverviewWdg::zeroChipSizeWritesNoInfinity()
{
    // The missing fifth camera has no chip size: raising the minimum above the maximum
    // converts the new maximum per camera and must skip it instead of dividing by zero.
    OverviewRig rig;
    for (int row = 0; row < 4; ++row) {
        rig.setCellQuietly(row, Col::Chipsize, 10.0);
        rig.setCellQuietly(row, Col::MarkerSizeLimit, 8.0);
        rig.setCellQuietly(row, Col::MarkerMaxSize, 1.0);
        rig.setCellQuietly(row, Col::MarkerMinSize, 5.0);
    }
    rig.open();
    auto* minSpin = rig.widget<QDoubleSpinBox>("doubleSpinBox_globalMinimumSizeOfMarkers");
    QCOMPARE(minSpin->maximum(), 80.0);
    minSpin->setValue(30.0);

    QCOMPARE(rig.widget<QDoubleSpinBox>("doubleSpinBox_globalMaximumSizeOfMarkers")->value(), 3.0);
    for (int row = 0; row < 4; ++row) {
        QCOMPARE(rig.cellOf(row, Col::MarkerMaxSize).toDouble(), 3.0);
        QCOMPARE(rig.cellOf(row, Col::MarkerMinSize).toDouble(), 30.0);
    }
    const QVariant missing = rig.cellOf(4, Col::MarkerMaxSize);
    QVERIFY2(!missing.isValid() || qIsFinite(missing.toDouble()), "no infinity in the missing camera's row");
}

void tst_OverviewWdg::cameraModeListOnlyWhenAlike()
{
    // The default system's cameras describe their modes differently: no global choice.
    OverviewRig rig;
    rig.open();
    auto* combo = rig.widget<QComboBox>("comboBox_cameraMode");
    QCOMPARE(combo->count(), 0);
    QVERIFY(!combo->isEnabled());
    QVERIFY(!rig.widget<QCheckBox>("checkBox_cameraMode")->isEnabled());
    QVERIFY(!rig.widget<QTableView>("tableView")->isColumnHidden(Col::CameraMode));
}

void tst_OverviewWdg::cameraModeForAllCameras()
{
    OverviewRig rig({}, true, alikeModesScenario());
    rig.open();
    auto* combo = rig.widget<QComboBox>("comboBox_cameraMode");
    QCOMPARE(comboTexts(combo), QStringList({"Standard 180 Hz", "High speed 300 Hz"}));
    QCOMPARE(combo->itemData(1).toString(), QStringLiteral("m02"));
    // All cameras in m01: the common mode is shown and may be changed.
    QVERIFY(rig.widget<QCheckBox>("checkBox_cameraMode")->isChecked());
    QCOMPARE(combo->currentIndex(), 0);

    combo->setCurrentIndex(1);
    emit combo->activated(1);
    for (int row = 0; row < 4; ++row) {
        QCOMPARE(rig.cellOf(row, Col::CameraModeData).toString(), QStringLiteral("m02"));
        QCOMPARE(rig.cellOf(row, Col::CameraMode).toString(), QStringLiteral("High speed 300 Hz"));
    }
    QVERIFY2(rig.sets().isEmpty(), "camera modes are written by the dialog on OK");

    // One camera back in m01 by its own page: the global choice turns neutral.
    rig.table.setData(rig.table.index(3, Col::CameraModeData), QStringLiteral("m01"));
    QCOMPARE(combo->currentIndex(), -1);
    QVERIFY(!combo->isEnabled());
    QVERIFY(!rig.widget<QCheckBox>("checkBox_cameraMode")->isChecked());
    QVERIFY(rig.widget<QCheckBox>("checkBox_cameraMode")->isEnabled());
}

void tst_OverviewWdg::displayModeFallsBackToCameraId()
{
    OverviewRig rig;
    rig.open();
    auto* combo = rig.widget<QComboBox>("comboBox_displayMode");
    QCOMPARE(comboTexts(combo), QStringList({"Camera number", "Sync group", "Number of markers", "Off"}));
    // c01 and c03 show camera_id, c02 sync_group, c04 off: no common mode.
    QVERIFY(!combo->isEnabled());
    QCOMPARE(combo->currentIndex(), -1);

    rig.widget<QCheckBox>("checkBox_displayMode")->click();
    QVERIFY(combo->isEnabled());
    combo->setCurrentIndex(2);
    emit combo->activated(2);

    QCOMPARE(rig.sets(), QStringList({QStringLiteral("camera display_setting c01 marker_count"),
                                      QStringLiteral("camera display_setting c02 camera_id"),
                                      QStringLiteral("camera display_setting c03 marker_count"),
                                      QStringLiteral("camera display_setting c04 camera_id")}));
    const char* expected[] = {"marker_count", "camera_id", "marker_count", "camera_id"};
    for (int row = 0; row < 4; ++row)
        QCOMPARE(rig.cellOf(row, Col::DisplayMode).toString(), QString::fromLatin1(expected[row]));
}

void tst_OverviewWdg::displayIntensityDragIsDebounced()
{
    OverviewRig rig({QStringLiteral("camera display_intensity c01 0.1"), QStringLiteral("camera display_intensity c02 0.1"),
                     QStringLiteral("camera display_intensity c03 0.1")});
    rig.open();
    auto* slider = rig.widget<QSlider>("horizontalSlider_displayIntensity");
    QVERIFY(rig.widget<QCheckBox>("checkBox_displayIntensity")->isChecked());
    QVERIFY(slider->isEnabled());
    QCOMPARE(slider->value(), 10);
    QCOMPARE(rig.widget<QLabel>("label_displayIntensityPercent")->text(), QStringLiteral("10%"));

    QVector<int> steps;
    for (int value = 11; value <= 60; ++value)
        steps << value;
    QTimer* timer = rig.overview->findChild<QTimer*>(QStringLiteral("timerDisplayIntensity"));
    QVERIFY(timer);
    slider->setSliderDown(true);
    for (int value : steps) {
        // The timer about to run out: each movement starts the 500 ms afresh.
        if (timer->isActive())
            timer->start(1);
        slider->setValue(value);
        QCOMPARE(rig.cellOf(2, Col::DisplayIntensity).toInt(), value);
        QVERIFY(timer->isActive());
        QVERIFY(timer->isSingleShot());
        QCOMPARE(timer->interval(), 500);
        QVERIFY(timer->remainingTime() > 400);
    }
    slider->setSliderDown(false);
    QCOMPARE(rig.widget<QLabel>("label_displayIntensityPercent")->text(), QStringLiteral("60%"));
    QVERIFY2(rig.sets().isEmpty(), "nothing is sent before the timer runs out");
    QCOMPARE(fireDisplayTimers(rig.overview), 1);
    QCOMPARE(rig.sets(), QStringList({QStringLiteral("camera display_intensity c01 0.600000"),
                                      QStringLiteral("camera display_intensity c02 0.600000"),
                                      QStringLiteral("camera display_intensity c03 0.600000")}));
    QCOMPARE(fireDisplayTimers(&rig.host), 0);
}

void tst_OverviewWdg::hidingDropsPendingDisplayIntensity()
{
    OverviewRig rig({QStringLiteral("camera display_intensity c03 0.5")});
    rig.open();
    auto* slider = rig.widget<QSlider>("horizontalSlider_displayIntensity");
    QVERIFY(slider->isEnabled());
    slider->setValue(70);
    rig.overview->hide();
    QCOMPARE(fireDisplayTimers(&rig.host), 0);
    QVERIFY(rig.sets().isEmpty());
    QCOMPARE(rig.cellOf(0, Col::DisplayIntensity).toInt(), 70);
    QVERIFY(rig.table.isChanged(0, Col::DisplayIntensity));
}

void tst_OverviewWdg::ringDisplayRow_data()
{
    QTest::addColumn<QStringList>("pokes");
    QTest::addColumn<bool>("shown");
    QTest::addColumn<bool>("common");
    QTest::newRow("two cameras with different rings") << QStringList() << true << false;
    QTest::newRow("two cameras with the same ring")
        << QStringList({QStringLiteral("camera display_ring_intensity c03 0.3")}) << true << true;
    QTest::newRow("no camera with a ring")
        << QStringList({QStringLiteral("camera has_display_ring_intensity c01 no"),
                        QStringLiteral("camera has_display_ring_intensity c03 no")}) << false << false;
}

void tst_OverviewWdg::ringDisplayRow()
{
    QFETCH(QStringList, pokes);
    QFETCH(bool, shown);
    QFETCH(bool, common);
    OverviewRig rig(pokes);
    rig.open();
    auto* slider = rig.widget<QSlider>("horizontalSlider_displayRingIntensity");
    QCOMPARE(slider->isVisible(), shown);
    QCOMPARE(rig.widget<QCheckBox>("checkBox_displayRingIntensity")->isVisible(), shown);
    QCOMPARE(rig.widget<QLabel>("label_displayRingIntensityPercent")->isVisible(), shown);
    if (shown) {
        QCOMPARE(slider->isEnabled(), common);
        QCOMPARE(slider->value(), common ? 30 : 0);
    }
}

void tst_OverviewWdg::roomCalColumn_data()
{
    QTest::addColumn<VersionInfo>("protocol");
    QTest::addColumn<bool>("shown");
    QTest::newRow("1.17") << VersionInfo(1, 17, 0) << false;
    QTest::newRow("1.18 unknown patch") << VersionInfo(1, 18, -1) << true;
    QTest::newRow("1.18.0") << VersionInfo(1, 18, 0) << true;
    QTest::newRow("2.0") << VersionInfo(2, 0, 0) << true;
    QTest::newRow("0.99") << VersionInfo(0, 99, 0) << false;
}

void tst_OverviewWdg::roomCalColumn()
{
    QFETCH(VersionInfo, protocol);
    QFETCH(bool, shown);
    OverviewRig rig;
    BackendVersions versions(VersionInfo(), protocol, VersionInfo(), QStringLiteral("QUARVO"));
    rig.open(false, &versions);
    QCOMPARE(!rig.widget<QTableView>("tableView")->isColumnHidden(Col::RoomCal), shown);
}

void tst_OverviewWdg::dynReflexColumn_data()
{
    QTest::addColumn<QStringList>("pokes");
    QTest::addColumn<bool>("hostAsks");
    QTest::addColumn<bool>("shown");
    const QStringList allOff = {QStringLiteral("camera dynamic_reflex_skip c03 no")};
    QTest::newRow("none on") << allOff << false << false;
    QTest::newRow("none on, host asks") << allOff << true << true;
    QTest::newRow("one camera on") << QStringList() << false << true;
}

void tst_OverviewWdg::dynReflexColumn()
{
    QFETCH(QStringList, pokes);
    QFETCH(bool, hostAsks);
    QFETCH(bool, shown);
    OverviewRig rig(pokes);
    rig.open(hostAsks);
    QCOMPARE(!rig.widget<QTableView>("tableView")->isColumnHidden(Col::DynReflexSuppr), shown);
    QCOMPARE(rig.widget<QCheckBox>("checkBox_dynamic_reflex_skip")->isVisible(), shown);
}

void tst_OverviewWdg::reflexCheckBoxesFromController()
{
    // No camera answers "yes" (one fails, the others say "no"): the static box disappears.
    OverviewRig rig;
    for (int camera = 1; camera <= 4; ++camera)
        rig.controller.poke(QStringLiteral("camera has_static_reflex_skip c%1 no")
                                .arg(camera, 2, 10, QLatin1Char('0')).toLatin1());
    FaultRule rule;
    rule.match = QStringLiteral("quarvo2 get camera has_static_reflex_skip c01");
    rig.controller.addFault(rule);
    rig.open(true);
    QVERIFY(rig.widget<QCheckBox>("checkBox_static_reflex_skip")->isHidden());
    QVERIFY(!rig.widget<QCheckBox>("checkBox_dynamic_reflex_skip")->isHidden());

    // Clicking the dynamic box sets the column on every camera that has the feature.
    rig.widget<QCheckBox>("checkBox_dynamic_reflex_skip")->click();
    QVERIFY(rig.cellOf(0, Col::DynReflexSuppr).toBool());
    QVERIFY(rig.cellOf(2, Col::DynReflexSuppr).toBool());
    QVERIFY(!rig.table.isChanged(1, Col::DynReflexSuppr));
}

void tst_OverviewWdg::pressToggles_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("column");
    QTest::addColumn<bool>("toggles");
    QTest::newRow("mod. flash with the feature") << 0 << int(Col::ModFlash) << true;
    QTest::newRow("mod. flash without the feature") << 1 << int(Col::ModFlash) << false;
    QTest::newRow("static reflex") << 0 << int(Col::StaticReflexSuppr) << true;
    QTest::newRow("dynamic reflex") << 2 << int(Col::DynReflexSuppr) << false;
}

void tst_OverviewWdg::pressToggles()
{
    QFETCH(int, row);
    QFETCH(int, column);
    QFETCH(bool, toggles);
    OverviewRig rig;
    rig.open();
    const bool before = rig.cellOf(row, column).toBool();
    rig.pressCell(row, column);
    QCOMPARE(rig.cellOf(row, column).toBool(), toggles ? !before : before);
    QCOMPARE(rig.table.isChanged(row, column), toggles);
    if (column == Col::ModFlash && toggles)
        QCOMPARE(rig.widget<QCheckBox>("checkBox_modulated")->isChecked(), true);
}

void tst_OverviewWdg::escapeRejectsOtherKeysStay()
{
    OverviewRig rig;
    rig.open();
    QSignalSpy rejected(&rig.host, &QDialog::rejected);
    QTest::keyClick(rig.overview, Qt::Key_Return);
    QVERIFY(rig.host.isVisible());
    QCOMPARE(rejected.count(), 0);
    QTest::keyClick(rig.overview, Qt::Key_Escape);
    QCOMPARE(rejected.count(), 1);
    QVERIFY(!rig.host.isVisible());
    QCOMPARE(rig.host.result(), int(QDialog::Rejected));
}

void tst_OverviewWdg::formDefaults()
{
    QWidget parent;
    OverviewWdg page(nullptr, &parent, nullptr);
    const char* disabled[] = {"comboBox_cameraMode", "comboBox_displayMode", "horizontalSlider_displayIntensity",
                              "horizontalSlider_displayRingIntensity", "label_noFlash", "label_maxFlash",
                              "label_displayIntensityPercent", "label_displayRingIntensityPercent"};
    for (const char* name : disabled)
        QVERIFY2(!page.findChild<QWidget*>(QLatin1String(name))->isEnabled(), name);
    QCOMPARE(page.findChild<QCheckBox*>(QStringLiteral("checkBox_flash_intensity"))->text(),
             QStringLiteral("&global flash intensity "));
    QVERIFY(page.findChild<QSlider*>(QStringLiteral("horizontalSlider_flash_intensity"))->whatsThis()
                .contains(QStringLiteral("will be calculated automatically.")));
    QCOMPARE(page.findChild<QSlider*>(QStringLiteral("horizontalSlider_flash_intensity"))->maximum(), 200);
    QCOMPARE(page.findChild<QLabel*>(QStringLiteral("label_percent"))->text(),
             QStringLiteral("[%] according to chip size"));
    // The marker section starts hidden: the dialog shows it with its details.
    QVERIFY(page.findChild<QSpinBox*>(QStringLiteral("spinBox_globalMaximumNumberOfMarkers"))->isHidden());

    // The tab chain from the table to the last marker control.
    const char* chain[] = {"tableView", "checkBox_flash_intensity", "horizontalSlider_flash_intensity",
                           "checkBox_static_reflex_skip", "checkBox_dynamic_reflex_skip", "checkBox_cameraMode",
                           "comboBox_cameraMode", "checkBox_displayIntensity", "horizontalSlider_displayIntensity",
                           "checkBox_displayMode", "comboBox_displayMode", "checkBox_modulated",
                           "checkBox_globalMarkerMode", "comboBox_globalMarkerMode",
                           "checkBox_globalMaximumNumberOfMarkers", "spinBox_globalMaximumNumberOfMarkers",
                           "checkBox_globalMaximumSizeOfMarker", "doubleSpinBox_globalMaximumSizeOfMarkers",
                           "checkBox_globalMinimumSizeOfMarker", "doubleSpinBox_globalMinimumSizeOfMarkers"};
    QWidget* current = page.findChild<QWidget*>(QLatin1String(chain[0]));
    for (size_t i = 1; i < sizeof(chain) / sizeof(chain[0]); ++i) {
        current = current->nextInFocusChain();
        while (current->focusPolicy() == Qt::NoFocus || current->objectName().isEmpty()
               || current->objectName().startsWith(QLatin1String("qt_")))
            current = current->nextInFocusChain();
        QCOMPARE(current->objectName(), QString::fromLatin1(chain[i]));
    }
}

QTEST_MAIN(tst_OverviewWdg)
#include "tst_overviewwdg.moc"
