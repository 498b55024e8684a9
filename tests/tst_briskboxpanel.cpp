// The compact panel of the all-in-one BRISKBOX system: the two consistency checks when
// the dialog is built, the loading at each opening, what OK writes, its warning, and
// Cancel sending nothing.
#include "dialogrig.h"
#include "dialogscenarios.h"

#include <simulatedcontroller.h>

#include <QApplication>
#include <QCheckBox>
#include <QPushButton>
#include <QSlider>
#include <QSpinBox>
#include <QTabWidget>
#include <QtTest>

namespace {

QString camera(const char* path, int n)
{
    return QString("%1 c%2").arg(path).arg(n, 2, 10, QChar('0'));
}

QStringList setsOnly(const QStringList& requests)
{
    return requests.filter(QRegularExpression("^quarvo2 set camera (?!display_show_syncgroup)"));
}

} // namespace

class tst_BriskboxPanel : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void flashMadeUniformAtConstruction_data();
    void flashMadeUniformAtConstruction();
    void staticReflexMadeUniformAtConstruction_data();
    void staticReflexMadeUniformAtConstruction();
    void cameraCountUnreadable();
    void loadingShowsCameraOne_data();
    void loadingShowsCameraOne();
    void okWritesWhatDiffers();
    void refusedModulatedFlashReported();
    void warningForModulatedFlashWithoutFlash();
    void cancelSendsNothing();
};

void tst_BriskboxPanel::cleanup()
{
    QVERIFY2(QApplication::topLevelWidgets().isEmpty(), "a window was left behind");
}

void tst_BriskboxPanel::flashMadeUniformAtConstruction_data()
{
    QTest::addColumn<QList<int>>("flashes");
    QTest::addColumn<int>("read");
    QTest::addColumn<QStringList>("sent");

    // The reading stops at the first camera that differs from camera 1.
    QTest::newRow("5 5 7") << QList<int>{5, 5, 7} << 3
                           << QStringList{set("camera flash_intensity c01 50"), set("camera flash_intensity c02 60"),
                                          set("camera flash_intensity c03 70")};
    QTest::newRow("5 7 5") << QList<int>{5, 7, 5} << 2
                           << QStringList{set("camera flash_intensity c01 50"), set("camera flash_intensity c02 60"),
                                          set("camera flash_intensity c03 70")};
    QTest::newRow("5 5 5") << QList<int>{5, 5, 5} << 3 << QStringList{};
    QTest::newRow("one camera") << QList<int>{9} << 1 << QStringList{};
}

void tst_BriskboxPanel::flashMadeUniformAtConstruction()
{
    QFETCH(QList<int>, flashes);
    QFETCH(int, read);
    QFETCH(QStringList, sent);

    DialogRig rig;
    QVERIFY(rig.useScenarioJson(DialogScenarios::briskbox(flashes.size())));
    for (int i = 0; i < flashes.size(); ++i) {
        rig.poke(camera("camera max_max_flash_intensity", i + 1).toLatin1() + " 100");
        rig.poke(camera("camera max_flash_intensity", i + 1).toLatin1() + " " + QByteArray::number(50 + 10 * i));
        rig.poke(camera("camera flash_intensity", i + 1).toLatin1() + " " + QByteArray::number(flashes.at(i)));
    }
    QVERIFY(rig.start());
    QCOMPARE(setsOnly(rig.requests()), sent);
    QCOMPARE(rig.requests().filter(QRegularExpression("get camera flash_intensity")).size(), read);
    QVERIFY(rig.messages().isEmpty());
}

void tst_BriskboxPanel::staticReflexMadeUniformAtConstruction_data()
{
    QTest::addColumn<QByteArrayList>("pokes");
    QTest::addColumn<QStringList>("sent");

    QTest::newRow("on for camera 2 only") << QByteArrayList{"camera static_reflex_skip c02 yes"}
                                          << QStringList{set("camera static_reflex_skip c01 yes"),
                                                         set("camera static_reflex_skip c03 yes"),
                                                         set("camera static_reflex_skip c04 yes")};
    QTest::newRow("off everywhere") << QByteArrayList{} << QStringList{};
    QTest::newRow("camera 3 without the feature") << QByteArrayList{"camera static_reflex_skip c02 yes",
                                                                    "camera has_static_reflex_skip c03 no"}
                                                  << QStringList{set("camera static_reflex_skip c01 yes"),
                                                                 set("camera static_reflex_skip c04 yes")};
    QTest::newRow("on only where unsupported") << QByteArrayList{"camera static_reflex_skip c02 yes",
                                                                 "camera has_static_reflex_skip c02 no"}
                                               << QStringList{};
}

void tst_BriskboxPanel::staticReflexMadeUniformAtConstruction()
{
    QFETCH(QByteArrayList, pokes);
    QFETCH(QStringList, sent);

    DialogRig rig;
    QVERIFY(rig.useScenarioJson(DialogScenarios::briskbox(4)));
    for (const QByteArray& poke : pokes)
        rig.poke(poke);
    QVERIFY(rig.start());
    QCOMPARE(setsOnly(rig.requests()), sent);
}

void tst_BriskboxPanel::cameraCountUnreadable()
{
    DialogRig rig;
    QVERIFY(rig.useScenarioJson(DialogScenarios::briskbox(3)));
    rig.poke("camera flash_intensity c03 7");
    FaultRule rule;
    rule.match = "quarvo2 get camera number_of_cameras";
    rig.controller()->addFault(rule);
    QVERIFY(rig.start());
    QCOMPARE(rig.messages(), QStringList{operatorError("Error: Unable to get the number of BRISKBOX cameras")});
    QCOMPARE(setsOnly(rig.requests()), QStringList{});
    // With no camera counted OK writes the flash to nobody, the modulated flash still to camera 1.
    rig.open([&] {
        rig.widget<QSlider>("slider_lct_flash_intensity")->setValue(20);
        rig.widget<QCheckBox>("checkBox_lct_modulated_flash")->click();
        rig.mark();
        rig.widget<QPushButton>("btnOk")->click();
    });
    QCOMPARE(setsOnly(rig.requests()), QStringList{set("camera modulated_flash c01 yes")});
}

void tst_BriskboxPanel::loadingShowsCameraOne_data()
{
    QTest::addColumn<QByteArray>("modulatedAnswer");
    QTest::addColumn<bool>("checked");

    QTest::newRow("yes") << QByteArray("quarvo2 set camera modulated_flash c01 yes") << true;
    QTest::newRow("no") << QByteArray("quarvo2 set camera modulated_flash c01 no") << false;
    QTest::newRow("Yes") << QByteArray("quarvo2 set camera modulated_flash c01 Yes") << false;
    QTest::newRow("empty") << QByteArray("quarvo2 set camera modulated_flash c01") << false;
}

void tst_BriskboxPanel::loadingShowsCameraOne()
{
    QFETCH(QByteArray, modulatedAnswer);
    QFETCH(bool, checked);

    DialogRig rig;
    QVERIFY(rig.useScenarioJson(DialogScenarios::briskbox(2)));
    rig.poke("camera static_reflex_skip c01 yes");
    rig.poke("camera static_reflex_skip c02 yes");
    QVERIFY(rig.start());
    FaultRule rule;
    rule.match = "quarvo2 get camera modulated_flash c01";
    rule.action = FaultRule::Reply;
    rule.text = modulatedAnswer;
    rig.controller()->addFault(rule);
    int maximum = 0, value = 0, spinValue = 0;
    bool staticOn = false, modulatedOn = false;
    rig.open([&] {
        maximum = rig.widget<QSlider>("slider_lct_flash_intensity")->maximum();
        value = rig.widget<QSlider>("slider_lct_flash_intensity")->value();
        spinValue = rig.widget<QSpinBox>("spinBox_lct_flash_intensity")->value();
        staticOn = rig.widget<QCheckBox>("checkBox_staticReflexSuppression")->isChecked();
        modulatedOn = rig.widget<QCheckBox>("checkBox_lct_modulated_flash")->isChecked();
    });
    QCOMPARE(maximum, 50);
    QCOMPARE(value, 5);
    QCOMPARE(spinValue, 5);
    QVERIFY(staticOn);
    QCOMPARE(modulatedOn, checked);
    QVERIFY(rig.messages().isEmpty());
}

void tst_BriskboxPanel::okWritesWhatDiffers()
{
    DialogRig rig;
    QVERIFY(rig.useScenarioJson(DialogScenarios::briskbox(2)));
    QVERIFY(rig.start());
    rig.open([&] {
        rig.widget<QSpinBox>("spinBox_lct_flash_intensity")->setValue(33);
        rig.widget<QCheckBox>("checkBox_staticReflexSuppression")->click();
        rig.widget<QCheckBox>("checkBox_lct_modulated_flash")->click();
        rig.mark();
        rig.widget<QPushButton>("btnOk")->click();
    });
    QCOMPARE(rig.lastResult(), 1);
    QCOMPARE(rig.requests(), (QStringList{set("camera display_show_syncgroup all no"),
                                          set("camera flash_intensity c01 33"), set("camera flash_intensity c02 33"),
                                          set("camera static_reflex_skip c01 yes"), set("camera static_reflex_skip c02 yes"),
                                          set("camera modulated_flash c01 yes")}));

    // Reopened, the panel shows the new values, and OK without changes writes nothing.
    bool shown = false;
    rig.open([&] {
        shown = rig.widget<QSlider>("slider_lct_flash_intensity")->value() == 33
            && rig.widget<QCheckBox>("checkBox_staticReflexSuppression")->isChecked()
            && rig.widget<QCheckBox>("checkBox_lct_modulated_flash")->isChecked();
        rig.mark();
        rig.widget<QPushButton>("btnOk")->click();
    });
    QVERIFY(shown);
    QCOMPARE(rig.requests(), QStringList{set("camera display_show_syncgroup all no")});
}

void tst_BriskboxPanel::refusedModulatedFlashReported()
{
    DialogRig rig;
    QVERIFY(rig.useScenarioJson(DialogScenarios::briskbox(2)));
    rig.poke("camera modulated_flash c01 yes");
    QVERIFY(rig.start());
    rig.open([&] {
        FaultRule rule;
        rule.match = "quarvo2 set camera modulated_flash *";
        rig.controller()->addFault(rule);
        rig.widget<QCheckBox>("checkBox_lct_modulated_flash")->click();
        rig.mark();
        rig.widget<QPushButton>("btnOk")->click();
    });
    QCOMPARE(rig.messages(), QStringList{operatorError("Error: Unable to deactivate modulated flash for BRISKBOX camera")});
}

void tst_BriskboxPanel::warningForModulatedFlashWithoutFlash()
{
    for (const QMessageBox::StandardButton answer : {QMessageBox::No, QMessageBox::Yes}) {
        DialogRig rig;
        QVERIFY(rig.useScenarioJson(DialogScenarios::briskbox(2)));
        rig.poke("camera modulated_flash c01 yes");
        QVERIFY(rig.start());
        bool stayedOpen = false;
        rig.open([&] {
            rig.widget<QSlider>("slider_lct_flash_intensity")->setValue(0);
            // F7 has no tabs to step through here.
            QTest::keyClick(rig.widget("slider_lct_flash_intensity"), Qt::Key_F7);
            rig.mark();
            rig.modals().answerMessageBox(answer);
            rig.widget<QPushButton>("btnOk")->click();
            stayedOpen = rig.dialog()->isVisible();
        });
        QCOMPARE(rig.modals().messageBoxes().size(), 1);
        QCOMPARE(rig.modals().messageBoxes().first().text,
                 QStringLiteral("Cameras have the modulated flash activated but no flash intensity.\n"
                                "Active targets will not work properly."));
        QCOMPARE(rig.modals().messageBoxes().first().parent, static_cast<QWidget*>(nullptr));
        QCOMPARE(stayedOpen, answer == QMessageBox::No);
        const QStringList written{set("camera flash_intensity c01 0"), set("camera flash_intensity c02 0")};
        QCOMPARE(setsOnly(rig.requests()), answer == QMessageBox::Yes ? written : QStringList());
    }
}

void tst_BriskboxPanel::cancelSendsNothing()
{
    DialogRig rig;
    QVERIFY(rig.useScenarioJson(DialogScenarios::briskbox(2)));
    QVERIFY(rig.start());
    rig.open([&] {
        rig.widget<QSlider>("slider_lct_flash_intensity")->setValue(44);
        rig.widget<QCheckBox>("checkBox_lct_modulated_flash")->click();
        rig.mark();
        rig.widget<QPushButton>("btnCancel")->click();
    });
    QCOMPARE(rig.lastResult(), 0);
    QCOMPARE(rig.requests(), QStringList{});
    int value = 0;
    rig.open([&] { value = rig.widget<QSlider>("slider_lct_flash_intensity")->value(); });
    QCOMPARE(value, 5);
}

QTEST_MAIN(tst_BriskboxPanel)
#include "tst_briskboxpanel.moc"
