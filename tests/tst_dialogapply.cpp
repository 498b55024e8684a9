// What the camera settings dialog writes to the controller: the live modulated-flash and
// sync-group writes, the recorded changes on OK with their order and refusals, and the
// two warnings OK may show first.
#include "dialogrig.h"
#include "widgetsuite.h"
#include "randomoperator.h"

#include <cameratablecolumns.h>

#include <QApplication>
#include <QMainWindow>
#include <QtTest>

namespace Col = CameraTable;

namespace {

// The camera settings the dialog writes, without the display marks and sync-group display.
QStringList cameraSets(const QStringList& requests)
{
    return requests.filter(QRegularExpression("^quarvo2 set camera (?!display_show_syncgroup|display_mark)"));
}

} // namespace

class tst_DialogApply : public WidgetSuite
{
    Q_OBJECT

private slots:
    void liveModulatedFlash_data();
    void liveModulatedFlash();
    void liveSyncGroupRereadsEveryCamera();
    void recordedWritesOnOk_data();
    void recordedWritesOnOk();
    void refusedLiveWriteGoesOutAgainOnOk_data();
    void refusedLiveWriteGoesOutAgainOnOk();
    void failedWritesAreReported_data();
    void failedWritesAreReported();
    void warnings_data();
    void warnings();
    void enterOnAPageWritesNothing();
};

void tst_DialogApply::liveModulatedFlash_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<bool>("controllerOn");
    QTest::addColumn<bool>("wanted");
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QStringList>("sent");
    QTest::addColumn<QStringList>("messages");

    const QString query = get("camera modulated_flash c02");
    const QString on = set("camera modulated_flash c02 yes");
    const QString off = set("camera modulated_flash c02 no");
    const QString refused = "quarvo2 set camera modulated_flash c02 *";
    QTest::newRow("off to on") << 1 << false << true << "" << QStringList{query, on} << QStringList{};
    QTest::newRow("on to off") << 1 << true << false << "" << QStringList{query, off} << QStringList{};
    QTest::newRow("already on") << 1 << true << true << "" << QStringList{query} << QStringList{};
    QTest::newRow("already off") << 1 << false << false << "" << QStringList{query} << QStringList{};
    QTest::newRow("failed query counts as off") << 1 << true << true << query << QStringList{query, on} << QStringList{};
    QTest::newRow("refused on") << 1 << false << true << refused << QStringList{query, on}
                                << QStringList{operatorError("Error: Unable to activate modulated flash for camera c02")};
    QTest::newRow("refused off") << 1 << true << false << refused << QStringList{query, off}
                                 << QStringList{operatorError("Error: Unable to deactivate modulated flash for camera c02")};
    QTest::newRow("missing camera") << 3 << false << true << "" << QStringList{} << QStringList{};
}

void tst_DialogApply::liveModulatedFlash()
{
    QFETCH(int, row);
    QFETCH(bool, controllerOn);
    QFETCH(bool, wanted);
    QFETCH(QString, fault);
    QFETCH(QStringList, sent);
    QFETCH(QStringList, messages);

    DialogRig rig(DialogScenarios::ThreeAndTwoMissing);
    rig.poke("camera has_modulated_flash c02 yes");
    rig.poke(wanted ? "camera modulated_flash c02 no" : "camera modulated_flash c02 yes");
    QVERIFY(rig.start());
    rig.open([&] {
        // The controller changed behind the dialog's back; the live write asks it first.
        rig.poke(controllerOn ? "camera modulated_flash c02 yes" : "camera modulated_flash c02 no");
        if (!fault.isEmpty())
            rig.fail(fault);
        rig.mark();
        rig.edit(row, Col::ModFlash, wanted);
        QCOMPARE(rig.requests(), sent);
        QCOMPARE(rig.messages(), messages);
    });
}

void tst_DialogApply::liveSyncGroupRereadsEveryCamera()
{
    DialogRig rig(DialogScenarios::Five);
    QVERIFY(rig.start());
    rig.open([&] {
        rig.poke("camera sync_group c01 d01 ch10");
        rig.mark();
        rig.edit(4, Col::SyncGroup, "Channel 7");
        QStringList expected{get("camera has_sync_group c05"), set("camera sync_group c05 d01 ch07")};
        for (int n = 1; n <= 5; ++n) {
            const QString camera = QString("c%1").arg(n, 2, 10, QChar('0'));
            expected << get("camera has_sync_group " + camera);
            if (n != 2)
                expected << get("camera sync_group " + camera);
        }
        // The re-read rewrote the cells without writing them live again.
        QCOMPARE(rig.requests(), expected);
        QCOMPARE(rig.cell(0, Col::SyncGroup), QVariant("Channel 10"));
        QCOMPARE(rig.cell(1, Col::SyncGroup), QVariant(""));
        rig.mark();
        rig.click("btnOk");
    });
    // On OK the recorded cells are written once more.
    QCOMPARE(rig.lastResult(), 1);
    QCOMPARE(cameraSets(rig.requests()),
             (QStringList{set("camera sync_group c01 d01 ch10"), set("camera sync_group c03 d01 ch02"),
                          set("camera sync_group c04 d01 ch01"), set("camera sync_group c05 d01 ch07")}));
}

void tst_DialogApply::recordedWritesOnOk_data()
{
    QTest::addColumn<QList<int>>("columns"); // the cells of c01 written, in this order
    QTest::addColumn<QVariantList>("values");
    QTest::addColumn<QByteArrayList>("pokes"); // what the controller holds meanwhile
    QTest::addColumn<QString>("failing");
    QTest::addColumn<QStringList>("sent");

    const QString min = set("camera marker_min_size c01 3.000");
    const QString max = set("camera marker_max_size c01 30.000");
    const QByteArrayList minAbove{"camera marker_max_size c01 50", "camera marker_min_size c01 35"};
    QTest::newRow("controller minimum above the new maximum: minimum first")
        << QList<int>{Col::MarkerMinSize} << QVariantList{3.0} << minAbove << "" << QStringList{min, max};
    QTest::newRow("controller minimum below: only the minimum")
        << QList<int>{Col::MarkerMinSize} << QVariantList{3.0}
        << QByteArrayList{"camera marker_max_size c01 30", "camera marker_min_size c01 2"} << "" << QStringList{min};
    // Without the controller's word the minimum read at opening (2) decides.
    QTest::newRow("failed minimum query: the minimum read at opening")
        << QList<int>{Col::MarkerMinSize} << QVariantList{3.0} << minAbove << get("camera marker_min_size c01")
        << QStringList{min};
    QTest::newRow("maximum capped by the size limit")
        << QList<int>{Col::Chipsize, Col::MarkerSizeLimitAbsolute, Col::MarkerMaxSize} << QVariantList{1000.0, 40.0, 0.05}
        << QByteArrayList{} << "" << QStringList{set("camera marker_max_size c01 40.000")};
    // The camera is asked first; without its yes nothing is written.
    QTest::newRow("threshold, capability query refused") << QList<int>{Col::MarkerThreshold} << QVariantList{0.2}
                                                         << QByteArrayList{} << get("camera has_marker_threshold c01")
                                                         << QStringList{};
    QTest::newRow("manual exposure equal to the controller's") << QList<int>{Col::ExposureTime} << QVariantList{0.5}
                                                               << QByteArrayList{} << "" << QStringList{};
    QTest::newRow("manual exposure") << QList<int>{Col::ExposureTime} << QVariantList{0.7} << QByteArrayList{} << ""
                                     << QStringList{set("camera sensor_exposure c01 0.700000")};
    QTest::newRow("automatic exposure") << QList<int>{Col::AutoExposureTime, Col::ExposureTime} << QVariantList{true, 0.5}
                                        << QByteArrayList{} << "" << QStringList{set("camera sensor_exposure c01 auto")};
    QTest::newRow("controller on automatic exposure") << QList<int>{Col::ExposureTime} << QVariantList{0.5}
                                                      << QByteArrayList{"camera sensor_exposure c01 auto"} << ""
                                                      << QStringList{set("camera sensor_exposure c01 0.500000")};
    QTest::newRow("every column of c01 in the order of writing")
        << QList<int>{Col::SensorGain, Col::MarkerThreshold, Col::FlashIntensity, Col::SyncGroup, Col::MarkerMaxNumber,
                      Col::MarkerMode, Col::DynReflexSuppr, Col::StaticReflexSuppr, Col::ModFlash, Col::CameraModeData}
        << QVariantList{2.0, 0.2, 20, "Channel 3", 99, 2, true, true, false, "m02"} << QByteArrayList{} << ""
        << QStringList{set("camera static_reflex_skip c01 yes"), set("camera dynamic_reflex_skip c01 yes"),
                       set("camera mode c01 m02"), set("camera marker_mode c01 fast"),
                       set("camera marker_max_number c01 99"), set("camera sync_group c01 d01 ch03"),
                       set("camera flash_intensity c01 20"), set("camera modulated_flash c01 no"),
                       set("camera marker_threshold c01 0.200000"), set("camera sensor_gain c01 2.000000")};
}

void tst_DialogApply::recordedWritesOnOk()
{
    QFETCH(QList<int>, columns);
    QFETCH(QVariantList, values);
    QFETCH(QByteArrayList, pokes);
    QFETCH(QString, failing);
    QFETCH(QStringList, sent);

    DialogRig rig(DialogScenarios::Five);
    QVERIFY(rig.start());
    rig.open([&] {
        for (const QByteArray& poke : pokes)
            rig.poke(poke);
        if (!failing.isEmpty())
            rig.fail(failing);
        for (int i = 0; i < columns.size(); ++i)
            rig.edit(0, columns.at(i), values.at(i));
        rig.mark();
        rig.click("btnOk");
    });
    QCOMPARE(rig.lastResult(), 1);
    // The sync group's re-read records every camera's group, written once more as well.
    QCOMPARE(cameraSets(rig.requests()).filter(" c01 "), sent);
    // A mode change is announced to the other modules once.
    QCOMPARE(rig.messages(), sent.filter(" mode c01").isEmpty() ? QStringList() : QStringList{ConfigurationEvent});
}

void tst_DialogApply::refusedLiveWriteGoesOutAgainOnOk_data()
{
    QTest::addColumn<QString>("control");
    QTest::addColumn<QString>("write");
    QTest::addColumn<QString>("message");
    QTest::newRow("display mode") << "comboBox_displayMode" << set("camera display_setting c01 off")
                                  << "Error: Unable to set camera display mode";
    QTest::newRow("orientation") << "checkBox_camera_orientation" << set("camera display_upside_down c01 yes")
                                 << "Error: Unable to set camera display orientation";
}

void tst_DialogApply::refusedLiveWriteGoesOutAgainOnOk()
{
    QFETCH(QString, control);
    QFETCH(QString, write);
    QFETCH(QString, message);

    DialogRig rig(DialogScenarios::Five);
    QVERIFY(rig.start());
    rig.open([&] {
        rig.tabs()->setCurrentIndex(1);
        rig.fail(write, 1);
        RandomOperator::touch(rig.pageWidget<QWidget>(1, control.toLatin1()));
        rig.click("btnOk");
    });
    QCOMPARE(rig.requests().count(write), 2);
    QCOMPARE(rig.messages(), QStringList{operatorError(message)});
}

void tst_DialogApply::failedWritesAreReported_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QString>("message");

    QTest::newRow("flash") << int(Col::FlashIntensity) << QVariant(20) << "quarvo2 set camera flash_intensity *"
                           << "Error: Unable to set flash intensity to Controller";
    QTest::newRow("camera mode") << int(Col::CameraModeData) << QVariant("m02") << "quarvo2 set camera mode *"
                                 << "Error: Unable to set camera mode";
    QTest::newRow("threshold") << int(Col::MarkerThreshold) << QVariant(0.2) << "quarvo2 set camera marker_threshold *"
                               << "Error: Unable to set marker threshold for camera";
    QTest::newRow("gain") << int(Col::SensorGain) << QVariant(2.0) << "quarvo2 set camera sensor_gain *"
                          << "Error: Unable to set sensor gain for camera";
    QTest::newRow("exposure") << int(Col::ExposureTime) << QVariant(0.7) << "quarvo2 set camera sensor_exposure *"
                              << "Error: Unable to set exposure for camera";
    QTest::newRow("automatic exposure") << int(Col::AutoExposureTime) << QVariant(true)
                                        << "quarvo2 set camera sensor_exposure *"
                                        << "Error: Unable to set exposure for camera to auto";
    QTest::newRow("sync group") << int(Col::SyncGroup) << QVariant("Channel 4") << "quarvo2 set camera sync_group *"
                                << "Error: Unable to set syncgroup of camera c01";
}

void tst_DialogApply::failedWritesAreReported()
{
    QFETCH(int, column);
    QFETCH(QVariant, value);
    QFETCH(QString, fault);
    QFETCH(QString, message);

    DialogRig rig(DialogScenarios::Five);
    QVERIFY(rig.start());
    rig.open([&] {
        rig.fail(fault);
        rig.mark();
        rig.edit(0, Col::ExposureTime, 0.7); // so that automatic exposure is a change
        rig.edit(0, column, value);
        rig.click("btnOk");
    });
    QCOMPARE(rig.lastResult(), 1);
    // A sync group is written live, and on OK again with every cell its re-read rewrote;
    // each refusal is reported.
    QStringList expected{operatorError(message)};
    if (column == Col::SyncGroup) {
        for (const char* camera : {"c01", "c03", "c04", "c05"})
            expected << operatorError(QString("Error: Unable to set syncgroup of camera ") + camera);
    }
    QCOMPARE(rig.messages().filter("standard|"), expected);
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
    QTest::newRow("channel 2 and channel 3") << QByteArrayList{"camera modulated_flash c03 yes",
                                                               "camera modulated_flash c05 yes"}
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

    for (const QMessageBox::StandardButton answer : {QMessageBox::No, QMessageBox::Yes}) {
        DialogRig rig(DialogScenarios::Five);
        for (const QByteArray& poke : pokes)
            rig.poke(poke);
        QVERIFY(rig.start());
        bool stayedOpen = false;
        QStringList sentWhileAsking;
        rig.open([&] {
            rig.edit(row, Col::FlashIntensity, 20);
            rig.mark();
            if (!warning.isEmpty())
                rig.modals().answerMessageBox(answer);
            rig.click("btnOk");
            stayedOpen = rig.dialog()->isVisible();
            sentWhileAsking = rig.requests();
        });
        const QString flash = set(QString("camera flash_intensity c0%1 20").arg(row + 1));
        if (warning.isEmpty()) {
            QCOMPARE(rig.modals().messageBoxes().size(), 0);
            QVERIFY(rig.requests().contains(flash));
            return;
        }
        QCOMPARE(rig.modals().messageBoxes().size(), 1);
        const MessageBoxSeen box = rig.modals().messageBoxes().first();
        QCOMPARE(QStringList({box.title, box.text, box.informativeText}), QStringList({"Warning", warning, question}));
        QVERIFY(box.icon == QMessageBox::Warning && box.buttons == (QMessageBox::Yes | QMessageBox::No)
                && box.defaultButton == QMessageBox::No);
        QCOMPARE(box.parent, overTheWindow ? static_cast<QWidget*>(rig.window()) : nullptr);
        // No goes back to the open dialog with nothing written; Yes writes and closes.
        QCOMPARE(stayedOpen, answer == QMessageBox::No);
        QCOMPARE(sentWhileAsking.contains(flash), answer == QMessageBox::Yes);
    }
}

void tst_DialogApply::enterOnAPageWritesNothing()
{
    DialogRig rig(DialogScenarios::Three);
    QVERIFY(rig.start());
    const QList<QPair<Qt::Key, const char*>> presses{{Qt::Key_Return, nullptr}, {Qt::Key_Enter, nullptr},
                                                     {Qt::Key_Return, "horizontalSlider"},
                                                     {Qt::Key_Enter, "spinBox_markerMaxNumber"}};
    rig.open([&] {
        rig.tabs()->setCurrentIndex(1);
        rig.edit(0, Col::FlashIntensity, 20); // OK would write this one
        rig.mark();
        for (const auto& press : presses) {
            QTest::keyClick(press.second ? rig.pageWidget<QWidget>(1, press.second) : rig.tabs()->currentWidget(),
                            press.first);
            QVERIFY2(rig.dialog()->isVisible(), "the dialog's default button OK was not clicked");
        }
        QCOMPARE(rig.requests(), QStringList());
    });
}

QTEST_MAIN(tst_DialogApply)
#include "tst_dialogapply.moc"
