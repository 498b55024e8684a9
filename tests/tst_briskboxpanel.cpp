// The compact panel of the all-in-one BRISKBOX system: the two consistency checks when
// the dialog is built, the loading at each opening, what OK and Cancel write, and OK's warning.
#include "dialogrig.h"
#include "pagerig.h"
#include "widgetsuite.h"

#include <QCheckBox>
#include <QSlider>
#include <QSpinBox>
#include <QtTest>

namespace {

QStringList cameraSets(const QStringList& requests)
{
    return requests.filter(QRegularExpression("^quarvo2 set camera (?!display_show_syncgroup)"));
}

// The panel as the operator sees it.
QString panelOf(DialogRig& rig)
{
    auto* slider = rig.widget<QSlider>("slider_lct_flash_intensity");
    return QStringLiteral("flash %1 of %2, spin box %3, static %4, modulated %5")
        .arg(slider->value()).arg(slider->maximum()).arg(rig.widget<QSpinBox>("spinBox_lct_flash_intensity")->value())
        .arg(rig.widget<QCheckBox>("checkBox_staticReflexSuppression")->isChecked())
        .arg(rig.widget<QCheckBox>("checkBox_lct_modulated_flash")->isChecked());
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
    QTest::addColumn<int>("flashReads");
    QTest::addColumn<QStringList>("sent");
    QTest::addColumn<QString>("message");

    const auto row = [](const char* name, const QList<int>& flashes, const QByteArrayList& changes, int flashReads,
                        const QStringList& sent, const char* message = "") {
        QTest::newRow(name) << flashes << changes << flashReads << sent << QString::fromLatin1(message);
    };
    const QStringList maxima{set("camera flash_intensity c01 50"), set("camera flash_intensity c02 60"),
                             set("camera flash_intensity c03 70")};
    const QString staticOn = set("camera static_reflex_skip c0%1 yes");
    const QByteArray staticC02 = "camera static_reflex_skip c02 yes";
    // The reading stops at the first camera that differs from camera 1.
    row("flash 5 5 7", {5, 5, 7}, {}, 3, maxima);
    row("flash 5 7 5", {5, 7, 5}, {}, 2, maxima);
    row("flash 5 5 5", {5, 5, 5}, {}, 3, {});
    // An unreadable flash counts as 0, and the operator is told.
    row("flash of camera 2 unreadable", {5, 5, 5}, {"fail quarvo2 get camera flash_intensity c02"}, 2, maxima,
        "Error: Unable to get flash intensity for BRISKBOX camera");
    row("camera count unreadable", {5, 5, 7}, {"fail quarvo2 get camera number_of_cameras"}, 0, {},
        "Error: Unable to get the number of BRISKBOX cameras");
    row("static reflex on for camera 2 only", {5, 5, 5, 5}, {staticC02}, 4,
        {staticOn.arg(1), staticOn.arg(3), staticOn.arg(4)});
    row("camera 3 without static reflex suppression", {5, 5, 5, 5}, {staticC02, "camera has_static_reflex_skip c03 no"}, 4,
        {staticOn.arg(1), staticOn.arg(4)});
    row("on only where unsupported", {5, 5, 5, 5}, {staticC02, "camera has_static_reflex_skip c02 no"}, 4, {});
}

void tst_BriskboxPanel::madeUniformWhenBuilt()
{
    QFETCH(QList<int>, flashes);
    QFETCH(QByteArrayList, changes);
    QFETCH(int, flashReads);
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
    QCOMPARE(rig.requests().filter("get camera flash_intensity").size(), flashReads);
    QCOMPARE(rig.messages(), message.isEmpty() ? QStringList() : QStringList{operatorError(message)});
}

void tst_BriskboxPanel::operatorSession()
{
    DialogRig rig(DialogScenarios::briskbox(2));
    rig.poke("camera static_reflex_skip c01 yes");
    rig.poke("camera static_reflex_skip c02 yes");
    QVERIFY(rig.start());
    // Each opening shows camera 1 as the controller holds it; only an exact "yes" is on.
    const QList<QPair<QByteArray, bool>> modulated{{"yes", true}, {"no", false}, {"Yes", false}, {"", false}};
    for (const auto& reply : modulated) {
        rig.answer(get("camera modulated_flash c01"), "quarvo2 set camera modulated_flash c01 " + reply.first, 1);
        QString shown;
        rig.open([&] { shown = panelOf(rig); });
        QCOMPARE(shown, QStringLiteral("flash 5 of 50, spin box 5, static 1, modulated %1").arg(reply.second));
    }
    QVERIFY(rig.messages().isEmpty());
    // Cancel sends nothing and the next opening shows the controller's values again.
    rig.open([&] {
        rig.widget<QSlider>("slider_lct_flash_intensity")->setValue(44);
        operate(rig.widget("checkBox_lct_modulated_flash"), true);
        rig.mark();
        rig.click("btnCancel");
    });
    QCOMPARE(rig.lastResult(), 0);
    QCOMPARE(rig.requests(), QStringList{});
    // Spin box and slider move together; OK writes what differs.
    QStringList seen;
    rig.open([&] {
        seen << panelOf(rig);
        rig.widget<QSpinBox>("spinBox_lct_flash_intensity")->setValue(33);
        operate(rig.widget("checkBox_staticReflexSuppression"), false);
        operate(rig.widget("checkBox_lct_modulated_flash"), true);
        seen << panelOf(rig);
        rig.mark();
        rig.click("btnOk");
    });
    QCOMPARE(seen, (QStringList{"flash 5 of 50, spin box 5, static 1, modulated 0", "flash 33 of 50, spin box 33, static 0, modulated 1"}));
    QCOMPARE(rig.lastResult(), 1);
    QCOMPARE(rig.requests(), (QStringList{set("camera display_show_syncgroup all no"), set("camera flash_intensity c01 33"),
                                          set("camera flash_intensity c02 33"), set("camera static_reflex_skip c01 no"),
                                          set("camera static_reflex_skip c02 no"), set("camera modulated_flash c01 yes")}));
    // Reopened, the panel shows the new values; a move and back writes nothing; a refused
    // modulated flash is reported.
    rig.open([&] {
        rig.widget<QSlider>("slider_lct_flash_intensity")->setValue(40);
        seen << panelOf(rig);
        rig.widget<QSlider>("slider_lct_flash_intensity")->setValue(33);
        rig.fail("quarvo2 set camera modulated_flash *", 1);
        operate(rig.widget("checkBox_lct_modulated_flash"), false);
        rig.mark();
        rig.click("btnOk");
    });
    QCOMPARE(seen.last(), QStringLiteral("flash 40 of 50, spin box 40, static 0, modulated 1"));
    QCOMPARE(rig.requests(), (QStringList{set("camera display_show_syncgroup all no"), set("camera modulated_flash c01 no")}));
    QCOMPARE(rig.messages(), QStringList{operatorError("Error: Unable to deactivate modulated flash for BRISKBOX camera")});

    // Modulated flash without flash: OK warns; No keeps the dialog open, Yes writes.
    bool stayedOpen = false;
    rig.open([&] {
        rig.widget<QSlider>("slider_lct_flash_intensity")->setValue(0);
        // F7 has no tabs to step through here.
        QTest::keyClick(rig.widget("slider_lct_flash_intensity"), Qt::Key_F7);
        rig.mark();
        rig.modals().answerMessageBox(QMessageBox::No);
        rig.click("btnOk");
        stayedOpen = rig.dialog()->isVisible();
        QVERIFY(cameraSets(rig.requests()).isEmpty());
        rig.modals().answerMessageBox(QMessageBox::Yes);
        rig.click("btnOk");
    });
    QVERIFY(stayedOpen);
    QCOMPARE(rig.modals().messageBoxes().size(), 2);
    QCOMPARE(rig.modals().messageBoxes().first().text, QStringLiteral("Cameras have the modulated flash activated but no flash "
                                                                       "intensity.\nActive targets will not work properly."));
    QCOMPARE(rig.modals().messageBoxes().first().parent, static_cast<QWidget*>(nullptr));
    QCOMPARE(cameraSets(rig.requests()), (QStringList{set("camera flash_intensity c01 0"), set("camera flash_intensity c02 0")}));
}

QTEST_MAIN(tst_BriskboxPanel)
#include "tst_briskboxpanel.moc"
