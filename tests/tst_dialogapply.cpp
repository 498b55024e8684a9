// What the camera settings dialog writes to the controller: the live modulated-flash and
// sync-group writes, the recorded changes on OK with their gates and order, and the two
// warnings OK may show first.
#include "dialogrig.h"
#include "dialogscenarios.h"

#include <cameratablecolumns.h>
#include <simulatedcontroller.h>

#include <QApplication>
#include <QMainWindow>
#include <QPushButton>
#include <QStandardItemModel>
#include <QtTest>

namespace Col = CameraTable;

namespace {

QStringList setsOnly(const QStringList& requests)
{
    return requests.filter(QRegularExpression("^quarvo2 set camera (?!display_show_syncgroup|display_mark)"));
}

} // namespace

class tst_DialogApply : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void liveModulatedFlash_data();
    void liveModulatedFlash();
    void liveSyncGroupRereadsEveryCamera();
    void markerSizePairOrder_data();
    void markerSizePairOrder();
    void markerMaxSizeCappedByLimit();
    void exposureOnOk_data();
    void exposureOnOk();
    void protocolGatesOnOk_data();
    void protocolGatesOnOk();
    void oneConfigurationEventForManyModes();
    void failedWritesAreReported_data();
    void failedWritesAreReported();
    void flashWarning_data();
    void flashWarning();
    void syncGroupWarning_data();
    void syncGroupWarning();
    void enterOnAPageWritesNothing_data();
    void enterOnAPageWritesNothing();
};

void tst_DialogApply::cleanup()
{
    QVERIFY2(QApplication::topLevelWidgets().isEmpty(), "a window was left behind");
}

void tst_DialogApply::liveModulatedFlash_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<bool>("controllerOn");
    QTest::addColumn<bool>("wanted");
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QStringList>("sent");
    QTest::addColumn<QStringList>("messages");

    const QString query = get("camera modulated_flash c02");
    QTest::newRow("off to on") << 1 << false << true << "" << QStringList{query, set("camera modulated_flash c02 yes")}
                               << QStringList{};
    QTest::newRow("on to off") << 1 << true << false << "" << QStringList{query, set("camera modulated_flash c02 no")}
                               << QStringList{};
    QTest::newRow("already on") << 1 << true << true << "" << QStringList{query} << QStringList{};
    QTest::newRow("already off") << 1 << false << false << "" << QStringList{query} << QStringList{};
    QTest::newRow("failed query counts as off") << 1 << true << true << "quarvo2 get camera modulated_flash c02"
                                                << QStringList{query, set("camera modulated_flash c02 yes")} << QStringList{};
    QTest::newRow("refused on") << 1 << false << true << "quarvo2 set camera modulated_flash c02 *"
                                << QStringList{query, set("camera modulated_flash c02 yes")}
                                << QStringList{operatorError("Error: Unable to activate modulated flash for camera c02")};
    QTest::newRow("refused off") << 1 << true << false << "quarvo2 set camera modulated_flash c02 *"
                                 << QStringList{query, set("camera modulated_flash c02 no")}
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

    DialogRig rig;
    QVERIFY(rig.useScenarioJson(DialogScenarios::ThreeAndTwoMissing));
    rig.poke("camera has_modulated_flash c02 yes");
    rig.poke(wanted ? "camera modulated_flash c02 no" : "camera modulated_flash c02 yes");
    QVERIFY(rig.start());
    rig.open([&] {
        // The controller changed behind the dialog's back; the live write asks it first.
        rig.poke(controllerOn ? "camera modulated_flash c02 yes" : "camera modulated_flash c02 no");
        if (!fault.isEmpty()) {
            FaultRule rule;
            rule.match = fault;
            rig.controller()->addFault(rule);
        }
        rig.mark();
        rig.edit(row, Col::ModFlash, wanted);
        QCOMPARE(rig.requests(), sent);
        QCOMPARE(rig.messages(), messages);
    });
}

void tst_DialogApply::liveSyncGroupRereadsEveryCamera()
{
    DialogRig rig;
    QVERIFY(rig.useScenarioJson(DialogScenarios::Five));
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
        QCOMPARE(rig.requests(), expected);
        QCOMPARE(rig.cell(0, Col::SyncGroup), QVariant("Channel 10"));
        QCOMPARE(rig.cell(4, Col::SyncGroup), QVariant("Channel 7"));
        QCOMPARE(rig.cell(1, Col::SyncGroup), QVariant(""));
        // The re-read rewrote the cells without writing them live again.
        QCOMPARE(rig.requests().filter("set camera sync_group").size(), 1);

        // On OK the recorded cells are written once more.
        rig.mark();
        rig.widget<QPushButton>("btnOk")->click();
    });
    QCOMPARE(rig.lastResult(), 1);
    QCOMPARE(setsOnly(rig.requests()),
             (QStringList{set("camera sync_group c01 d01 ch10"), set("camera sync_group c03 d01 ch02"),
                          set("camera sync_group c04 d01 ch01"), set("camera sync_group c05 d01 ch07")}));
}

void tst_DialogApply::markerSizePairOrder_data()
{
    QTest::addColumn<QByteArray>("controllerMax");
    QTest::addColumn<QByteArray>("controllerMin");
    QTest::addColumn<QString>("failQuery");
    QTest::addColumn<QStringList>("sent");

    const QString min = set("camera marker_min_size c01 3.000");
    const QString max = set("camera marker_max_size c01 30.000");
    QTest::newRow("controller minimum above the new maximum: minimum first") << QByteArray("50") << QByteArray("35")
                                                                             << "" << QStringList{min, max};
    QTest::newRow("controller minimum below: only the minimum") << QByteArray("30") << QByteArray("2") << ""
                                                                << QStringList{min};
    // Without the controller's word the minimum read at opening (2) decides.
    QTest::newRow("failed query: the minimum read at opening") << QByteArray("50") << QByteArray("35")
                                                               << "quarvo2 get camera marker_min_size c01"
                                                               << QStringList{min};
}

void tst_DialogApply::markerSizePairOrder()
{
    QFETCH(QByteArray, controllerMax);
    QFETCH(QByteArray, controllerMin);
    QFETCH(QString, failQuery);
    QFETCH(QStringList, sent);

    DialogRig rig;
    QVERIFY(rig.useScenarioJson(DialogScenarios::Five));
    QVERIFY(rig.start());
    rig.open([&] {
        rig.poke("camera marker_max_size c01 " + controllerMax);
        rig.poke("camera marker_min_size c01 " + controllerMin);
        if (!failQuery.isEmpty()) {
            FaultRule rule;
            rule.match = failQuery;
            rig.controller()->addFault(rule);
        }
        rig.edit(0, Col::MarkerMinSize, 3.0);
        rig.mark();
        rig.widget<QPushButton>("btnOk")->click();
    });
    QCOMPARE(rig.requests().count(get("camera marker_min_size c01")), 1);
    QCOMPARE(setsOnly(rig.requests()), sent);
}

void tst_DialogApply::markerMaxSizeCappedByLimit()
{
    DialogRig rig;
    QVERIFY(rig.useScenarioJson(DialogScenarios::Five));
    QVERIFY(rig.start());
    rig.open([&] {
        rig.edit(0, Col::Chipsize, 1000.0);
        rig.edit(0, Col::MarkerSizeLimitAbsolute, 40.0);
        rig.edit(0, Col::MarkerMaxSize, 0.05);
        rig.mark();
        rig.widget<QPushButton>("btnOk")->click();
    });
    QCOMPARE(setsOnly(rig.requests()), QStringList{set("camera marker_max_size c01 40.000")});
    QCOMPARE(rig.controller()->peek("camera marker_max_size c01"), QByteArray("40"));
}

void tst_DialogApply::exposureOnOk_data()
{
    QTest::addColumn<double>("exposure");
    QTest::addColumn<bool>("automatic");
    QTest::addColumn<QString>("answer");
    QTest::addColumn<QStringList>("sent");

    QTest::newRow("manual, equal to the controller's") << 0.5 << false << "" << QStringList{};
    QTest::newRow("manual, new value") << 0.7 << false << "" << QStringList{set("camera sensor_exposure c01 0.700000")};
    QTest::newRow("automatic") << 0.5 << true << "" << QStringList{set("camera sensor_exposure c01 auto")};
    QTest::newRow("controller answers auto") << 0.5 << false << "quarvo2 set camera sensor_exposure c01 auto"
                                             << QStringList{set("camera sensor_exposure c01 0.500000")};
}

void tst_DialogApply::exposureOnOk()
{
    QFETCH(double, exposure);
    QFETCH(bool, automatic);
    QFETCH(QString, answer);
    QFETCH(QStringList, sent);

    DialogRig rig;
    QVERIFY(rig.useScenarioJson(DialogScenarios::Five));
    QVERIFY(rig.start());
    rig.open([&] {
        if (!answer.isEmpty()) {
            FaultRule rule;
            rule.match = "quarvo2 get camera sensor_exposure c01";
            rule.action = FaultRule::Reply;
            rule.text = answer.toLatin1();
            rig.controller()->addFault(rule);
        }
        rig.edit(0, Col::AutoExposureTime, automatic);
        rig.edit(0, Col::ExposureTime, exposure);
        rig.mark();
        rig.widget<QPushButton>("btnOk")->click();
    });
    QCOMPARE(setsOnly(rig.requests()), sent);
    QCOMPARE(rig.requests().contains(get("camera sensor_exposure c01")), !automatic);
}

void tst_DialogApply::protocolGatesOnOk_data()
{
    QTest::addColumn<VersionInfo>("protocol");
    QTest::addColumn<QStringList>("sent");

    const QString threshold = set("camera marker_threshold c01 0.200000");
    const QString gain = set("camera sensor_gain c01 2.000000");
    const QString exposure = set("camera sensor_exposure c01 0.700000");
    const QString group = set("camera sync_group c01 d01 ch03");
    QTest::newRow("1.5") << VersionInfo(1, 5, 0) << QStringList{};
    QTest::newRow("1.6") << VersionInfo(1, 6, 0) << QStringList{group, group};
    QTest::newRow("1.23") << VersionInfo(1, 23, 0) << QStringList{group, group};
    QTest::newRow("1.24") << VersionInfo(1, 24, 0) << QStringList{group, group, threshold, exposure};
    QTest::newRow("1.26") << VersionInfo(1, 26, 0) << QStringList{group, group, threshold, exposure};
    QTest::newRow("1.27") << VersionInfo(1, 27, 0) << QStringList{group, group, threshold, gain, exposure};
}

void tst_DialogApply::protocolGatesOnOk()
{
    QFETCH(VersionInfo, protocol);
    QFETCH(QStringList, sent);

    DialogRig rig;
    QVERIFY(rig.useScenarioJson(DialogScenarios::Five));
    rig.setProtocol(protocol);
    QVERIFY(rig.start());
    rig.open([&] {
        rig.mark();
        rig.edit(0, Col::SyncGroup, "Channel 3");
        rig.edit(0, Col::MarkerThreshold, 0.2);
        rig.edit(0, Col::SensorGain, 2.0);
        rig.edit(0, Col::ExposureTime, 0.7);
        rig.widget<QPushButton>("btnOk")->click();
    });
    // The sync group goes out live and once more on OK.
    QCOMPARE(setsOnly(rig.requests()).filter(QRegularExpression(" c01 ")), sent);
}

void tst_DialogApply::oneConfigurationEventForManyModes()
{
    DialogRig rig;
    QVERIFY(rig.useScenarioJson(DialogScenarios::Five));
    QVERIFY(rig.start());
    rig.open([&] {
        rig.mark();
        rig.edit(0, Col::CameraModeData, "m02");
        rig.edit(2, Col::CameraModeData, "m02");
        rig.edit(3, Col::CameraModeData, "m02");
        rig.widget<QPushButton>("btnOk")->click();
    });
    QCOMPARE(setsOnly(rig.requests()), (QStringList{set("camera mode c01 m02"), set("camera mode c03 m02"),
                                                    set("camera mode c04 m02")}));
    QCOMPARE(rig.messages(), QStringList{ConfigurationEvent});
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

    DialogRig rig;
    QVERIFY(rig.useScenarioJson(DialogScenarios::Five));
    QVERIFY(rig.start());
    rig.open([&] {
        FaultRule rule;
        rule.match = fault;
        rig.controller()->addFault(rule);
        rig.mark();
        if (column == Col::AutoExposureTime)
            rig.edit(0, Col::ExposureTime, 0.7);
        rig.edit(0, column, value);
        rig.widget<QPushButton>("btnOk")->click();
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

void tst_DialogApply::flashWarning_data()
{
    QTest::addColumn<QByteArrayList>("pokes");
    QTest::addColumn<QString>("warning");

    const QString c04 = "Camera c04 has the modulated flash activated but no flash intensity.\n"
                        "Active targets will not work properly.";
    QTest::newRow("c04 without flash") << QByteArrayList{"camera modulated_flash c04 yes", "camera flash_intensity c04 0"}
                                       << c04;
    QTest::newRow("first with flash decides") << QByteArrayList{"camera modulated_flash c03 yes",
                                                                "camera sync_group c03 d01 ch01",
                                                                "camera modulated_flash c04 yes",
                                                                "camera flash_intensity c04 0"} << "";
    QTest::newRow("LUMACAM5 never warned") << QByteArrayList{"camera modulated_flash c01 yes", "camera flash_intensity c01 0"}
                                           << "";
    QTest::newRow("no modulated flash support") << QByteArrayList{"camera has_modulated_flash c04 no",
                                                                  "camera flash_intensity c04 0"} << "";
}

void tst_DialogApply::flashWarning()
{
    QFETCH(QByteArrayList, pokes);
    QFETCH(QString, warning);

    for (const QMessageBox::StandardButton answer : {QMessageBox::No, QMessageBox::Yes}) {
        DialogRig rig;
        QVERIFY(rig.useScenarioJson(DialogScenarios::Five));
        for (const QByteArray& poke : pokes)
            rig.poke(poke);
        QVERIFY(rig.start());
        bool stayedOpen = false;
        rig.open([&] {
            rig.edit(2, Col::FlashIntensity, 20);
            rig.mark();
            if (!warning.isEmpty())
                rig.modals().answerMessageBox(answer);
            rig.widget<QPushButton>("btnOk")->click();
            stayedOpen = rig.dialog()->isVisible();
            if (stayedOpen)
                QCOMPARE(rig.requests(), QStringList{});
        });
        if (warning.isEmpty()) {
            QCOMPARE(rig.modals().messageBoxes().size(), 0);
            QCOMPARE(rig.lastResult(), 1);
            return;
        }
        QCOMPARE(rig.modals().messageBoxes().size(), 1);
        const MessageBoxSeen box = rig.modals().messageBoxes().first();
        QCOMPARE(box.title, QStringLiteral("Warning"));
        QCOMPARE(box.text, warning);
        QCOMPARE(box.informativeText, QStringLiteral("Continue?"));
        QCOMPARE(box.icon, QMessageBox::Warning);
        QCOMPARE(box.buttons, QMessageBox::Yes | QMessageBox::No);
        QCOMPARE(box.defaultButton, QMessageBox::No);
        QCOMPARE(box.parent, static_cast<QWidget*>(nullptr));
        QCOMPARE(stayedOpen, answer == QMessageBox::No);
        QCOMPARE(rig.requests().contains(set("camera flash_intensity c03 20")), answer == QMessageBox::Yes);
    }
}

void tst_DialogApply::syncGroupWarning_data()
{
    QTest::addColumn<QByteArrayList>("pokes");
    QTest::addColumn<bool>("warned");

    QTest::newRow("channel 2 and channel 3") << QByteArrayList{"camera modulated_flash c03 yes",
                                                               "camera modulated_flash c05 yes"} << true;
    QTest::newRow("channel 1 only") << QByteArrayList{"camera modulated_flash c01 yes", "camera modulated_flash c04 yes"}
                                    << false;
    QTest::newRow("no sync group") << QByteArrayList{"camera modulated_flash c02 yes"} << false;
}

void tst_DialogApply::syncGroupWarning()
{
    QFETCH(QByteArrayList, pokes);
    QFETCH(bool, warned);

    for (const QMessageBox::StandardButton answer : {QMessageBox::No, QMessageBox::Yes}) {
        DialogRig rig;
        QVERIFY(rig.useScenarioJson(DialogScenarios::Five));
        for (const QByteArray& poke : pokes)
            rig.poke(poke);
        QVERIFY(rig.start());
        rig.open([&] {
            rig.edit(0, Col::FlashIntensity, 20);
            rig.mark();
            if (warned)
                rig.modals().answerMessageBox(answer);
            rig.widget<QPushButton>("btnOk")->click();
        });
        if (!warned) {
            QCOMPARE(rig.modals().messageBoxes().size(), 0);
            QCOMPARE(rig.lastResult(), 1);
            return;
        }
        QCOMPARE(rig.modals().messageBoxes().size(), 1);
        const MessageBoxSeen box = rig.modals().messageBoxes().first();
        QCOMPARE(box.text, QStringLiteral("Modulated flash configured for sync group #2 or #3.\n"
                                          "For compatibility with active markers by Ostrel.\n"
                                          "activate modulated flash for cameras in syncgroup #1 only!"));
        QCOMPARE(box.informativeText, QStringLiteral("Are you sure you want to continue?"));
        QCOMPARE(box.title, QStringLiteral("Warning"));
        QCOMPARE(box.defaultButton, QMessageBox::No);
        QCOMPARE(box.parent, static_cast<QWidget*>(rig.window()));
        // No keeps the dialog open (cancelled afterwards by the rig); Yes writes and closes.
        QCOMPARE(rig.lastResult(), answer == QMessageBox::Yes ? 1 : 0);
        QCOMPARE(rig.requests().contains(set("camera flash_intensity c01 20")), answer == QMessageBox::Yes);
    }
}

void tst_DialogApply::enterOnAPageWritesNothing_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("target");

    QTest::newRow("Return on the page") << int(Qt::Key_Return) << "";
    QTest::newRow("Enter on the page") << int(Qt::Key_Enter) << "";
    QTest::newRow("Return on its flash slider") << int(Qt::Key_Return) << "horizontalSlider";
    QTest::newRow("Enter on its marker number") << int(Qt::Key_Enter) << "spinBox_markerMaxNumber";
}

void tst_DialogApply::enterOnAPageWritesNothing()
{
    QFETCH(int, key);
    QFETCH(QString, target);

    DialogRig rig;
    QVERIFY(rig.useScenarioJson(DialogScenarios::Three));
    QVERIFY(rig.start());
    bool stayedOpen = false;
    QStringList sent;
    rig.open([&] {
        rig.tabs()->setCurrentIndex(1);
        rig.edit(0, Col::FlashIntensity, 20); // OK would write this one
        rig.mark();
        QWidget* page = rig.tabs()->currentWidget();
        QTest::keyClick(target.isEmpty() ? page : rig.pageWidget<QWidget>(1, target.toLatin1()), Qt::Key(key));
        stayedOpen = rig.dialog()->isVisible();
        sent = rig.requests();
    });
    QVERIFY2(stayedOpen, "the dialog's default button OK was not clicked");
    QCOMPARE(sent, QStringList());
}

QTEST_MAIN(tst_DialogApply)
#include "tst_dialogapply.moc"
