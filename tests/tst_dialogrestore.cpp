// How the dialog ends for the controller: after Cancel it holds again what it held before
// the dialog opened, after OK exactly what the camera table shows.
#include "dialogrig.h"
#include "widgetsuite.h"
#include "pagerig.h"
#include "randomoperator.h"
#include "controllerdump.h"

#include <camerasettingshelpers.h>
#include <cameratablecolumns.h>

#include <QComboBox>
#include <QStandardItemModel>
#include <QtTest>

namespace Col = CameraTable;

namespace {

// Everything the controller holds, path by path ("camera flash_intensity c01" to "40").
QMap<QString, QString> settingsOf(const SimulatedController* controller)
{
    QMap<QString, QString> values;
    for (const QString& line : controllerDump(*controller))
        values[line.section(QStringLiteral(" = "), 0, 0)] = line.section(QStringLiteral(" = "), 1);
    return values;
}

// The settings as the camera table shows them, in the controller's words, for the
// features each camera has by what the controller holds.
QMap<QString, QString> tableSettings(const QStandardItemModel* table, const QMap<QString, QString>& held)
{
    // A number as the channel's printf formats it with `decimals`, then read back.
    const auto written = [](double value, int decimals) { return QString::number(QString::number(value, 'f', decimals).toDouble()); };
    static const char* const markerModes[] = {"default", "accurate", "fast"};
    QMap<QString, QString> values;
    for (int row = 0; row < table->rowCount(); ++row) {
        const QString c = CameraSettings::cameraId(row + 1);
        const auto cell = [table, row](int column) { return table->data(table->index(row, column)); };
        const auto has = [&](const QString& feature) { return held.value("camera has_" + feature + ' ' + c) == "yes"; };
        // A setting the camera lacks is neither written nor compared.
        const auto put = [&](const QString& setting, const QVariant& value, bool given = true) {
            if (given)
                values["camera " + setting + ' ' + c] = value.toString();
        };
        put("flash_intensity", cell(Col::FlashIntensity).toInt());
        for (const auto& flag : {qMakePair(QString("modulated_flash"), Col::ModFlash),
                                 qMakePair(QString("static_reflex_skip"), Col::StaticReflexSuppr),
                                 qMakePair(QString("dynamic_reflex_skip"), Col::DynReflexSuppr)})
            put(flag.first, CameraSettings::yesNo(cell(flag.second).toBool()), has(flag.first));
        put("display_upside_down", CameraSettings::yesNo(cell(Col::CameraOrientation).toInt() != 0));
        put("display_intensity", written(cell(Col::DisplayIntensity).toInt() / 100.0, 6), has("display_intensity"));
        put("display_ring_intensity", written(cell(Col::RingDisplayIntensity).toInt() / 100.0, 6), has("display_ring_intensity"));
        put("display_setting", cell(Col::DisplayMode));
        put("marker_mode", markerModes[qBound(0, cell(Col::MarkerMode).toInt(), 2)],
            has("marker_mode_accurate") || has("marker_mode_fast"));
        put("marker_max_number", cell(Col::MarkerMaxNumber).toInt());
        const double maxSize = cell(Col::MarkerMaxSize).toDouble() * cell(Col::Chipsize).toDouble();
        put("marker_max_size", written(qMin(maxSize, double(qRound(cell(Col::MarkerSizeLimitAbsolute).toDouble()))), 3));
        put("marker_min_size", written(cell(Col::MarkerMinSize).toDouble(), 3));
        put("marker_threshold", written(cell(Col::MarkerThreshold).toDouble(), 6), has("marker_threshold"));
        put("sensor_gain", written(cell(Col::SensorGain).toDouble(), 6), has("sensor_gain"));
        put("sensor_exposure", cell(Col::AutoExposureTime).toBool() ? QString("auto") : written(cell(Col::ExposureTime).toDouble(), 6),
            has("sensor_exposure"));
        put("mode", cell(Col::CameraModeData));
        put("sync_group", "d01 " + CameraSettings::syncGroupWord(cell(Col::SyncGroup).toString()), has("sync_group"));
    }
    return values;
}

QStringList differences(const QMap<QString, QString>& expected, const QMap<QString, QString>& actual,
                        const std::function<bool(const QString&)>& counts)
{
    QStringList found;
    for (auto it = expected.cbegin(); it != expected.cend(); ++it) {
        if (counts(it.key()) && actual.value(it.key()) != it.value())
            found << QStringLiteral("%1: %2 instead of %3").arg(it.key(), actual.value(it.key()), it.value());
    }
    return found;
}

// What Cancel cannot bring back: a page's display intensity is overwritten by the other
// cameras' values when a page re-reads the column after its debounced write, so the
// restore compares with the wrong value and may skip the write.
bool restorable(const QString& name)
{
    return !name.startsWith(QLatin1String("camera display_intensity "));
}

} // namespace

class tst_DialogRestore : public WidgetSuite
{
    Q_OBJECT

private slots:
    void cancelAfterBrowsing();
    void randomOperator_data();
    void randomOperator();
};

// Opening and browsing the pages send only the marks of the camera shown, and Cancel
// writes back nothing; then each pass of Cancel meets a refusal, and each reports its
// own failure.
void tst_DialogRestore::cancelAfterBrowsing()
{
    // Away from the defaults, so that a default button changes something.
    DialogRig rig(DialogScenarios::Five, {"camera marker_threshold c01 0.3", "camera sensor_gain c01 2.5",
                                          "camera sensor_exposure c01 0.7"});
    QVERIFY(rig.start());
    QStringList browsing;
    rig.open([&] {
        rig.mark();
        fireDisplayTimers(rig.dialog());
        for (int tab = 1; tab <= 5; ++tab)
            rig.tabs()->setCurrentIndex(tab);
        rig.tabs()->setCurrentIndex(3);
        fireDisplayTimers(rig.dialog());
        browsing = rig.requests();
        rig.mark();
        rig.click("btnCancel");
    });
    // Opening armed no display write, and browsing only marks each camera shown.
    QStringList marks;
    for (int n = 1; n <= 5; ++n) {
        for (const char* mark : {"yes", "no"})
            marks << set(QString("camera display_mark %1 %2").arg(CameraSettings::cameraId(n), mark));
    }
    QCOMPARE(browsing, marks << set("camera display_mark c03 yes"));
    QStringList expected{set("camera display_show_syncgroup all no")};
    for (const char* query : {"camera flash_intensity", "camera modulated_flash"}) {
        for (int n = 1; n <= 5; ++n)
            expected << get(QString("%1 c%2").arg(query).arg(n, 2, 10, QChar('0')));
    }
    expected << set("camera display_mark c03 no");
    QCOMPARE(rig.requests(), expected);
    QVERIFY(rig.messages().isEmpty());
    rig.open([&] {
        // Changed behind the dialog's back, and the controller refuses to change back.
        rig.poke("camera flash_intensity c01 77");
        rig.poke("camera modulated_flash c02 yes");
        rig.tabs()->setCurrentIndex(3);
        rig.pageWidget<QComboBox>(3, "comboBox_syncGroup")->setCurrentIndex(5);
        rig.tabs()->setCurrentIndex(2);
        operate(rig.pageWidget<QWidget>(2, "comboBox_cameraMode"));
        rig.tabs()->setCurrentIndex(1);
        for (const char* name : {"pushButton_markerThresholdDefault", "pushButton_defaultSensorGain",
                                 "pushButton_exposureTimeDefault"})
            operate(rig.pageWidget<QWidget>(1, name));
        for (const char* write : {"flash_intensity", "modulated_flash", "sync_group", "marker_threshold", "sensor_gain",
                                  "sensor_exposure"})
            rig.fail(QStringLiteral("quarvo2 set camera %1 *").arg(write));
        rig.mark();
        rig.click("btnCancel");
    });
    // The camera mode goes back first, and is announced to the other modules.
    QCOMPARE(rig.messages(), (QStringList{ConfigurationEvent, operatorError("Error: Unable to reset flash intensity"),
                                          operatorError("Error: Unable to reset modulated flash"),
                                          operatorError("Error: Unable to reset camera syncgroup"),
                                          operatorError("Error: Unable to reset marker threshold for camera"),
                                          operatorError("Error: Unable to reset sensor gain for camera"),
                                          operatorError("Error: Unable to reset exposure time for camera")}));
    // Automatic exposure switched on for c01 and off for c05 goes back, each on its own
    // camera. The exposure pass comes first: it writes c05's exposure of 0 read under
    // automatic exposure, which the controller refuses, before "auto" restores it.
    rig.clearFaults();
    rig.poke("camera sensor_exposure c01 0.7"); // as no other camera's
    const QMap<QString, QString> before = settingsOf(rig.controller());
    rig.open([&] {
        for (const int tab : {1, 5}) {
            rig.tabs()->setCurrentIndex(tab);
            operate(rig.pageWidget<QWidget>(tab, "checkBox_autoExposureCtrl"));
        }
        // F7 from a button on the last tab wraps around to the first.
        QTest::keyClick(rig.widget("btnOk"), Qt::Key_F7);
        QCOMPARE(rig.tabs()->currentIndex(), 0);
        QCOMPARE(differences(before, settingsOf(rig.controller()), restorable).filter("sensor_exposure").size(), 2);
        rig.mark();
        rig.click("btnCancel");
    });
    QCOMPARE(differences(before, settingsOf(rig.controller()), restorable), QStringList());
    QCOMPARE(rig.messages(), QStringList{operatorError("Error: Unable to reset exposure time for camera")});
}

void tst_DialogRestore::randomOperator_data()
{
    QTest::addColumn<quint32>("seed");
    QTest::addColumn<bool>("ok");
    for (quint32 seed = 1; seed <= 8; ++seed) {
        QTest::newRow(qPrintable(QString("Cancel, seed %1").arg(seed))) << seed << false;
        QTest::newRow(qPrintable(QString("OK, seed %1").arg(seed))) << seed << true;
    }
}

void tst_DialogRestore::randomOperator()
{
    QFETCH(quint32, seed);
    QFETCH(bool, ok);

    DialogRig rig(DialogScenarios::Five);
    QVERIFY(rig.start());
    const QMap<QString, QString> before = settingsOf(rig.controller());
    QStringList actions;
    QMap<QString, QString> shown;
    int changedWhileOpen = 0;
    rig.open([&] {
        RandomOperator person(seed);
        for (int i = 0; i < 25; ++i) {
            actions << person.act(rig);
            if (i % 8 == 7)
                fireDisplayTimers(rig.dialog()); // the debounced display intensities go out
        }
        changedWhileOpen = differences(before, settingsOf(rig.controller()), restorable).size();
        // Whatever OK warns of, the operator goes on.
        rig.modals().answerEveryMessageBox([] { return QMessageBox::Yes; });
        rig.click(ok ? "btnOk" : "btnCancel");
        rig.modals().stopAnswering();
        shown = tableSettings(rig.model(), settingsOf(rig.controller()));
    });
    const QMap<QString, QString> after = settingsOf(rig.controller());
    const QStringList wrong = ok ? differences(shown, after, [](const QString&) { return true; })
                                 : differences(before, after, restorable);
    QVERIFY2(ok || changedWhileOpen > 0, "the operator's actions reached the controller");
    QVERIFY2(wrong.isEmpty(), qPrintable(QStringLiteral("seed %1: %2\nafter %3").arg(seed).arg(wrong.join("; "),
                                                                                             actions.join(", "))));
}

QTEST_MAIN(tst_DialogRestore)
#include "tst_dialogrestore.moc"
