// What the camera settings dialog writes to the controller: live, on OK with its order and
// refusals, and after the two warnings OK may show first.
#include "dialogrig.h"
#include "widgetsuite.h"
#include "pagerig.h"

#include <camerasettingshelpers.h>
#include <cameratablecolumns.h>

#include <QMainWindow>
#include <QtTest>

namespace Col = CameraTable;

class tst_DialogApply : public WidgetSuite
{
    Q_OBJECT

private slots:
    void liveModulatedFlash();
    void writesOnOk_data();
    void writesOnOk();
    void warnings_data();
    void warnings();
};

// One opening: each step sets what the controller holds behind the dialog's back, maybe
// a fault, and writes the modulated-flash cell of c02; the live write asks first.
void tst_DialogApply::liveModulatedFlash()
{
    struct Step
    {
        const char* what;
        bool controllerOn;
        bool wanted;
        QString fault;
        QStringList sent;
        QString message;
    };
    const QString query = get("camera modulated_flash c02");
    const QString on = set("camera modulated_flash c02 yes");
    const QString off = set("camera modulated_flash c02 no");
    const QString refused = "quarvo2 set camera modulated_flash c02 *";
    const QList<Step> steps{
        {"failed query counts as off", true, true, query, {query, on}, ""},
        {"refused off", true, false, refused, {query, off}, "Error: Unable to deactivate modulated flash for camera c02"},
        {"refused on", false, true, refused, {query, on}, "Error: Unable to activate modulated flash for camera c02"},
        {"already off", false, false, "", {query}, ""},
    };
    DialogRig rig(DialogScenarios::ThreeAndTwoMissing, {"camera has_modulated_flash c02 yes", "camera modulated_flash c02 no"});
    QVERIFY(rig.start());
    rig.open([&] {
        for (const Step& step : steps) {
            rig.clearFaults();
            rig.poke(step.controllerOn ? "camera modulated_flash c02 yes" : "camera modulated_flash c02 no");
            if (!step.fault.isEmpty())
                rig.fail(step.fault);
            rig.mark();
            rig.edit(1, Col::ModFlash, step.wanted);
            QVERIFY2(rig.requests() == step.sent, step.what);
            QVERIFY2(rig.messages() == (step.message.isEmpty() ? QStringList() : QStringList{operatorError(step.message)}),
                     step.what);
        }
        // A missing camera's cell is no camera to write to.
        rig.mark();
        rig.edit(3, Col::ModFlash, true);
        QCOMPARE(rig.requests(), QStringList());
    });
}

// What c01's cells (or a control of its page) write live and then on OK, with the
// controller changed meanwhile and a fault rule: the exact commands and messages.
void tst_DialogApply::writesOnOk_data()
{
    QTest::addColumn<QList<int>>("columns"); // the cells of c01 written, in this order
    QTest::addColumn<QVariantList>("values");
    QTest::addColumn<QString>("control"); // or a control of c01's page touched
    QTest::addColumn<QByteArrayList>("pokes"); // what the controller holds meanwhile
    QTest::addColumn<QString>("fault");
    QTest::addColumn<int>("faultTimes");
    QTest::addColumn<QStringList>("sent");
    QTest::addColumn<QStringList>("messages");

    const auto row = [](const char* name, const QList<int>& columns, const QVariantList& values, const QStringList& sent,
                        const QStringList& messages = {}, const QString& fault = {}, const QByteArrayList& pokes = {},
                        const QString& control = {}, int faultTimes = -1) {
        QTest::newRow(name) << columns << values << control << pokes << fault << faultTimes << sent << messages;
    };
    const QString min = set("camera marker_min_size c01 3.000");
    const QString max = set("camera marker_max_size c01 30.000");
    const QByteArrayList minAbove{"camera marker_max_size c01 50", "camera marker_min_size c01 35"};
    const auto error = [](const char* text) { return QStringList{operatorError(text)}; };
    row("controller minimum above the new maximum: minimum first", {Col::MarkerMinSize}, {3.0}, {min, max}, {}, "", minAbove);
    // Without the controller's word the minimum read at opening (2) decides: below, only the minimum.
    row("failed minimum query: the minimum read at opening", {Col::MarkerMinSize}, {3.0}, {min}, {},
        get("camera marker_min_size c01"), minAbove);
    row("maximum capped by the size limit", {Col::Chipsize, Col::MarkerSizeLimitAbsolute, Col::MarkerMaxSize},
        {1000.0, 40.0, 0.05}, {set("camera marker_max_size c01 40.000")});
    // The camera is asked first; without its yes nothing is written.
    row("threshold, capability query refused", {Col::MarkerThreshold}, {0.2}, {}, {}, get("camera has_marker_threshold c01"));
    row("manual exposure equal to the controller's", {Col::ExposureTime}, {0.5}, {});
    row("controller on automatic exposure", {Col::ExposureTime}, {0.5}, {set("camera sensor_exposure c01 0.500000")}, {}, "",
        {"camera sensor_exposure c01 auto"});
    // A mode change is announced to the other modules once.
    row("every column of c01 in the order of writing",
        {Col::SensorGain, Col::MarkerThreshold, Col::FlashIntensity, Col::SyncGroup, Col::MarkerMaxNumber, Col::MarkerMode,
         Col::DynReflexSuppr, Col::StaticReflexSuppr, Col::ModFlash, Col::CameraModeData},
        {2.0, 0.2, 20, "Channel 3", 99, 2, true, true, false, "m02"},
        {set("camera sync_group c01 d01 ch03"), set("camera static_reflex_skip c01 yes"), set("camera dynamic_reflex_skip c01 yes"),
         set("camera mode c01 m02"), set("camera marker_mode c01 fast"), set("camera marker_max_number c01 99"),
         set("camera sync_group c01 d01 ch03"), set("camera flash_intensity c01 20"), set("camera modulated_flash c01 no"),
         set("camera marker_threshold c01 0.200000"), set("camera sensor_gain c01 2.000000")},
        {ConfigurationEvent});
    // Each refused write on OK is reported, in the order of writing; the mode change is
    // announced to the other modules when all is written.
    row("mode, flash, threshold, gain and exposure refused",
        {Col::CameraModeData, Col::FlashIntensity, Col::MarkerThreshold, Col::SensorGain, Col::ExposureTime},
        {"m02", 20, 0.2, 2.0, 0.7},
        {set("camera mode c01 m02"), set("camera flash_intensity c01 20"), set("camera marker_threshold c01 0.200000"),
         set("camera sensor_gain c01 2.000000"), set("camera sensor_exposure c01 0.700000")},
        {operatorError("Error: Unable to set camera mode"), operatorError("Error: Unable to set flash intensity to Controller"),
         operatorError("Error: Unable to set marker threshold for camera"),
         operatorError("Error: Unable to set sensor gain for camera"), operatorError("Error: Unable to set exposure for camera"),
         ConfigurationEvent},
        "quarvo2 set camera *");
    row("automatic exposure refused", {Col::ExposureTime, Col::AutoExposureTime}, {0.7, true},
        {set("camera sensor_exposure c01 auto")}, error("Error: Unable to set exposure for camera to auto"),
        "quarvo2 set camera sensor_exposure *");
    // Refused live and on OK, with every cell the live write's re-read rewrote.
    const QString syncRefused = "Error: Unable to set syncgroup of camera c0%1";
    row("sync group refused", {Col::SyncGroup}, {"Channel 4"},
        {set("camera sync_group c01 d01 ch04"), set("camera sync_group c01 d01 ch01")},
        {operatorError(syncRefused.arg(1)), operatorError(syncRefused.arg(1)), operatorError(syncRefused.arg(3)),
         operatorError(syncRefused.arg(4)), operatorError(syncRefused.arg(5))},
        "quarvo2 set camera sync_group *");
    // A page's live write refused once goes out again on OK.
    row("display mode refused live", {}, {}, {set("camera display_setting c01 off"), set("camera display_setting c01 off")},
        error("Error: Unable to set camera display mode"), set("camera display_setting c01 off"), {}, "comboBox_displayMode", 1);
    row("orientation refused live", {}, {},
        {set("camera display_upside_down c01 yes"), set("camera display_upside_down c01 yes")},
        error("Error: Unable to set camera display orientation"), set("camera display_upside_down c01 yes"), {},
        "checkBox_camera_orientation", 1);
}

void tst_DialogApply::writesOnOk()
{
    QFETCH(QList<int>, columns);
    QFETCH(QVariantList, values);
    QFETCH(QString, control);
    QFETCH(QByteArrayList, pokes);
    QFETCH(QString, fault);
    QFETCH(int, faultTimes);
    QFETCH(QStringList, sent);
    QFETCH(QStringList, messages);

    DialogRig rig(DialogScenarios::Five);
    QVERIFY(rig.start());
    QStringList live;
    rig.open([&] {
        for (const QByteArray& poke : pokes)
            rig.poke(poke);
        if (!fault.isEmpty())
            rig.fail(fault, faultTimes);
        rig.mark();
        for (int i = 0; i < columns.size(); ++i)
            rig.edit(0, columns.at(i), values.at(i));
        if (!control.isEmpty()) {
            rig.tabs()->setCurrentIndex(1);
            operate(rig.pageWidget<QWidget>(1, control.toLatin1()));
        }
        live = cameraSets(rig.requests()).filter(" c01 ");
        rig.mark();
        rig.click("btnOk");
    });
    QCOMPARE(rig.lastResult(), 1);
    QCOMPARE(live + cameraSets(rig.requests()).filter(" c01 "), sent);
    QCOMPARE(rig.allMessages(), messages);
}

void tst_DialogApply::warnings_data()
{
    QTest::addColumn<QByteArrayList>("pokes");
    QTest::addColumn<int>("row"); // whose flash the operator changes to 20
    QTest::addColumn<QString>("warning");
    QTest::addColumn<QString>("question");
    QTest::addColumn<bool>("overTheWindow");

    const QString noFlash = "Camera c04 has the modulated flash activated but no flash intensity.\n"
                            "Active targets will not work properly.";
    const QString group = "Modulated flash configured for sync group #2 or #3.\n"
                          "For compatibility with active markers by Ostrel.\n"
                          "activate modulated flash for cameras in syncgroup #1 only!";
    QTest::newRow("c04 without flash") << QByteArrayList{"camera modulated_flash c04 yes", "camera flash_intensity c04 0"}
                                       << 2 << noFlash << "Continue?" << false;
    QTest::newRow("first with modulated flash decides")
        << QByteArrayList{"camera modulated_flash c03 yes", "camera sync_group c03 d01 ch01", "camera modulated_flash c04 yes",
                          "camera flash_intensity c04 0"} << 2 << "" << "" << false;
    QTest::newRow("LUMACAM5 drives active targets without flash")
        << QByteArrayList{"camera modulated_flash c01 yes", "camera flash_intensity c01 0"} << 2 << "" << "" << false;
    QTest::newRow("channel 2 and channel 3") << QByteArrayList{"camera modulated_flash c03 yes", "camera modulated_flash c05 yes"}
                                             << 0 << group << "Are you sure you want to continue?" << true;
    QTest::newRow("channel 1 only") << QByteArrayList{"camera modulated_flash c01 yes", "camera modulated_flash c04 yes"}
                                    << 0 << "" << "" << false;
}

void tst_DialogApply::warnings()
{
    QFETCH(QByteArrayList, pokes);
    QFETCH(int, row);
    QFETCH(QString, warning);
    QFETCH(QString, question);
    QFETCH(bool, overTheWindow);

    const QString flash = set(QString("camera flash_intensity %1 20").arg(CameraSettings::cameraId(row + 1)));
    DialogRig rig(DialogScenarios::Five, pokes);
    QVERIFY(rig.start());
    bool stayedOpen = false;
    rig.open([&] {
        rig.edit(row, Col::FlashIntensity, 20);
        rig.mark();
        // No goes back to the open dialog with nothing written; Yes (or no question) writes and closes.
        if (!warning.isEmpty()) {
            rig.modals().answerMessageBox(QMessageBox::No);
            rig.click("btnOk");
            stayedOpen = rig.dialog()->isVisible() && !rig.requests().contains(flash);
            rig.modals().answerMessageBox(QMessageBox::Yes);
        }
        rig.click("btnOk");
    });
    QCOMPARE(stayedOpen, !warning.isEmpty());
    QVERIFY(rig.requests().contains(flash) && rig.lastResult() == 1);
    QCOMPARE(rig.modals().messageBoxes().size(), warning.isEmpty() ? 0 : 2);
    if (warning.isEmpty())
        return;
    const MessageBoxSeen box = rig.modals().messageBoxes().first();
    QCOMPARE(QStringList({box.title, box.text, box.informativeText}), QStringList({"Warning", warning, question}));
    QVERIFY(box.icon == QMessageBox::Warning && box.buttons == (QMessageBox::Yes | QMessageBox::No)
            && box.defaultButton == QMessageBox::No);
    QCOMPARE(box.parent, overTheWindow ? static_cast<QWidget*>(rig.window()) : nullptr);
}

QTEST_MAIN(tst_DialogApply)
#include "tst_dialogapply.moc"