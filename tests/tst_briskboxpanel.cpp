// The compact panel of the all-in-one BRISKBOX system: the two consistency checks when
// the dialog is built, the loading at each opening, and what OK and Cancel write.
#include "dialogrig.h"
#include "pagerig.h"
#include "widgetsuite.h"

#include <QtTest>

namespace {

// The panel as the operator sees it: flash slider and spin box, static reflex suppression, modulated flash.
QString panelOf(DialogRig& rig)
{
    QStringList looks;
    for (const char* name : {"slider_lct_flash_intensity", "spinBox_lct_flash_intensity", "checkBox_staticReflexSuppression",
                             "checkBox_lct_modulated_flash"})
        looks << look(rig.widget(name));
    return looks.join(", ");
}

} // namespace

class tst_BriskboxPanel : public WidgetSuite
{
    Q_OBJECT

private slots:
    void madeUniformWhenBuilt_data();
    void madeUniformWhenBuilt();
    void operatorSession();
};

void tst_BriskboxPanel::madeUniformWhenBuilt_data()
{
    QTest::addColumn<QList<int>>("flashes"); // maxima 50, 60, 70 ...
    QTest::addColumn<QByteArrayList>("changes"); // as applyChanges() takes them
    QTest::addColumn<QStringList>("sent");
    QTest::addColumn<QString>("message");

    const auto row = [](const char* name, const QList<int>& flashes, const QByteArrayList& changes, const QStringList& sent,
                        const char* message = "") {
        QTest::newRow(name) << flashes << changes << sent << QString::fromLatin1(message);
    };
    const QStringList maxima{set("camera flash_intensity c01 50"), set("camera flash_intensity c02 60"),
                             set("camera flash_intensity c03 70")};
    const QString staticOn = set("camera static_reflex_skip c0%1 yes");
    const QByteArray staticC02 = "camera static_reflex_skip c02 yes";
    // An unreadable flash counts as 0, and the operator is told.
    row("flash of camera 2 unreadable", {5, 5, 5}, {"fail quarvo2 get camera flash_intensity c02"}, maxima,
        "Error: Unable to get flash intensity for BRISKBOX camera");
    row("one camera, unreadable", {5}, {"fail quarvo2 get camera flash_intensity c01"}, {},
        "Error: Unable to get flash intensity for BRISKBOX camera");
    row("camera count unreadable", {5, 5, 7}, {"fail quarvo2 get camera number_of_cameras"}, {},
        "Error: Unable to get the number of BRISKBOX cameras");
    row("static reflex on for camera 2 only", {5, 5, 5, 5}, {staticC02}, {staticOn.arg(1), staticOn.arg(3), staticOn.arg(4)});
    row("camera 3 without it", {5, 5, 5, 5}, {staticC02, "camera has_static_reflex_skip c03 no"}, {staticOn.arg(1), staticOn.arg(4)});
    row("on only where unsupported", {5, 5, 5, 5}, {staticC02, "camera has_static_reflex_skip c02 no"}, {});
}

void tst_BriskboxPanel::madeUniformWhenBuilt()
{
    QFETCH(QList<int>, flashes);
    QFETCH(QByteArrayList, changes);
    QFETCH(QStringList, sent);
    QFETCH(QString, message);

    DialogRig rig(DialogScenarios::briskbox(flashes.size()));
    for (int i = 0; i < flashes.size(); ++i) {
        const QByteArray camera = " c0" + QByteArray::number(i + 1) + ' ';
        rig.poke("camera max_max_flash_intensity" + camera + "100");
        rig.poke("camera max_flash_intensity" + camera + QByteArray::number(50 + 10 * i));
        rig.poke("camera flash_intensity" + camera + QByteArray::number(flashes.at(i)));
    }
    applyChanges(rig, changes);
    QVERIFY(rig.start());
    QCOMPARE(cameraSets(rig.requests()), sent);
    QCOMPARE(rig.messages(), message.isEmpty() ? QStringList() : QStringList{operatorError(message)});
}

void tst_BriskboxPanel::operatorSession()
{
    DialogRig rig(DialogScenarios::briskbox(2), {"camera static_reflex_skip c01 yes", "camera static_reflex_skip c02 yes"});
    QVERIFY(rig.start());
    // One opening: the operator's moves, then what the panel shows and the button.
    const auto session = [&rig](const char* button, const std::function<void()>& moves) {
        QString shown;
        rig.open([&] {
            moves();
            shown = panelOf(rig);
            rig.mark();
            rig.click(button);
        });
        return shown;
    };
    // Each opening shows camera 1's values for the box, modulated flash on for an exact "yes" only; Cancel sends nothing.
    rig.poke("camera flash_intensity c02 7");
    rig.answer(get("camera modulated_flash c01"), "quarvo2 set camera modulated_flash c01 Yes", 1);
    session("btnCancel", [&] {
        QCOMPARE(panelOf(rig), QString("enabled 5 of 50, enabled 5, enabled on, enabled off"));
        operate(rig.widget("slider_lct_flash_intensity"), 44);
        operate(rig.widget("checkBox_lct_modulated_flash"), true);
    });
    QCOMPARE(rig.lastResult(), 0);
    QCOMPARE(rig.requests(), QStringList{});
    QVERIFY(rig.messages().isEmpty());
    // Spin box and slider move together; OK writes what differs. An unreadable and a refused
    // modulated flash are reported.
    rig.fail(get("camera modulated_flash c01"), 1);
    QCOMPARE(session("btnOk", [&] {
                 QCOMPARE(panelOf(rig), QString("enabled 5 of 50, enabled 5, enabled on, enabled off"));
                 operate(rig.widget("spinBox_lct_flash_intensity"), 33);
                 operate(rig.widget("checkBox_staticReflexSuppression"), false);
                 operate(rig.widget("checkBox_lct_modulated_flash"), true);
                 rig.fail("quarvo2 set camera modulated_flash *", 1);
             }),
             QString("enabled 33 of 50, enabled 33, enabled off, enabled on"));
    QCOMPARE(rig.lastResult(), 1);
    QCOMPARE(rig.requests(), (QStringList{set("camera display_show_syncgroup all no"), set("camera flash_intensity c01 33"),
                                          set("camera flash_intensity c02 33"), set("camera static_reflex_skip c01 no"),
                                          set("camera static_reflex_skip c02 no"), set("camera modulated_flash c01 yes")}));
    QCOMPARE(rig.allMessages(), (QStringList{operatorError("Error: Unable to check modulated flash for BRISKBOX camera"),
                                             operatorError("Error: Unable to activate modulated flash for BRISKBOX camera")}));

    // Modulated flash without flash: OK warns; No keeps the dialog open, Yes writes.
    bool stayedOpen = false;
    session("btnOk", [&] {
        operate(rig.widget("slider_lct_flash_intensity"), 0);
        operate(rig.widget("checkBox_lct_modulated_flash"), true);
        rig.mark();
        rig.modals().answerMessageBox(QMessageBox::No);
        rig.click("btnOk");
        stayedOpen = rig.dialog()->isVisible() && cameraSets(rig.requests()).isEmpty();
        rig.modals().answerMessageBox(QMessageBox::Yes);
    });
    QVERIFY(stayedOpen);
    QCOMPARE(rig.modals().messageBoxes().first().text, QStringLiteral("Cameras have the modulated flash activated but no flash "
                                                                       "intensity.\nActive targets will not work properly."));
    QCOMPARE(rig.modals().messageBoxes().first().parent, static_cast<QWidget*>(nullptr));
    QCOMPARE(cameraSets(rig.requests()), (QStringList{set("camera flash_intensity c01 0"), set("camera flash_intensity c02 0"),
                                                      set("camera modulated_flash c01 yes")}));
}

QTEST_MAIN(tst_BriskboxPanel)
#include "tst_briskboxpanel.moc"
