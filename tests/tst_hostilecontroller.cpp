// The camera settings dialog against a controller that answers what no real one would:
// INT_MIN and INT_MAX, NaN, infinities, 1e308, counts of two billion, empty, over-long
// and quoted texts, format directives, refusals. Each formula's safe result and each
// capped count with the exact commands it leads to; random hostile replies to random
// commands are the dialog fuzz target's.
#include "dialogrig.h"
#include "widgetsuite.h"

#include <cameratablecolumns.h>
#include <controllervalues.h>

#include <QComboBox>
#include <QSlider>
#include <QSpinBox>
#include <QtTest>

namespace Col = CameraTable;

namespace {

// One camera with every feature whose values the tests below make hostile.
const QByteArray OneCamera = R"({
    "protocol_version": "1.27.0",
    "synccard": { "available": true, "number_of_channels": 4 },
    "display_settings": [ { "id": "camera_id", "description": "Camera number" }, { "id": "off", "description": "Off" } ],
    "cameras": [ { "serial": "101", "flash_intensity": 30, "max_flash_intensity": 100,
                   "has_sync_group": true, "sync_group": "d01 ch01",
                   "has_display_intensity": true, "display_intensity": 0.5, "display_settings": ["camera_id", "off"],
                   "marker_max_size": 30, "limit_marker_max_size": 60, "marker_min_size": 2,
                   "modes": [ { "description": "Standard 180 Hz" }, { "description": "Fast 300 Hz" } ] } ]
})";

// A controller's answer to "quarvo2 get <path>", after the first passFirst requests went through.
struct HostileAnswer
{
    QString path;
    QByteArray value;
    int passFirst = 0;
};
using HostileAnswers = QList<HostileAnswer>;

} // namespace

Q_DECLARE_METATYPE(HostileAnswers)

namespace {

// What an opening shows of a hostile value, by probe: the panel's flash range; the
// display intensity's cell and slider, the chip size and what a marker size of 40 pixels
// writes on OK; the numbers of the requests matching a pattern; the sync channels offered.
QString probe(DialogRig& rig, const QString& what)
{
    if (what == "panel flash range") {
        auto* slider = rig.widget<QSlider>("slider_lct_flash_intensity");
        auto* spinBox = rig.widget<QSpinBox>("spinBox_lct_flash_intensity");
        rig.dialog()->grab(); // drawn, as the operator sees it
        return QStringLiteral("%1..%2 %3..%4").arg(slider->minimum()).arg(slider->maximum())
            .arg(spinBox->minimum()).arg(spinBox->maximum());
    }
    if (what == "display intensity") {
        const double chipsize = rig.cell(0, Col::Chipsize).toDouble();
        const QString shown = QStringLiteral("%1 %2 %3").arg(rig.cell(0, Col::DisplayIntensity).toInt())
            .arg(rig.pageWidget<QSlider>(1, "horizontalSlider_displayIntensity")->value()).arg(chipsize, 0, 'f', 2);
        rig.edit(0, Col::MarkerMaxSize, 40 / chipsize);
        rig.mark();
        rig.click("btnOk");
        return shown + ", " + rig.requests().filter(QRegularExpression("marker_|set camera display_intensity")).join(", ");
    }
    if (what == "channels") {
        auto* syncGroups = rig.pageWidget<QComboBox>(1, "comboBox_syncGroup");
        return QStringLiteral("%1, last %2").arg(syncGroups->count()).arg(syncGroups->itemText(syncGroups->count() - 1));
    }
    // The numbers asked, as a range when they run 1, 2, ... n.
    QList<int> asked;
    const QRegularExpression step(QStringLiteral("^%1$").arg(what));
    for (const QString& request : rig.requests()) {
        const QRegularExpressionMatch match = step.match(request);
        if (match.hasMatch() && !asked.contains(match.captured(1).toInt()))
            asked << match.captured(1).toInt();
    }
    std::sort(asked.begin(), asked.end());
    return asked.isEmpty() ? QStringLiteral("none") : asked.last() == asked.size() && asked.first() == 1
        ? QStringLiteral("1..%1").arg(asked.size()) : QStringLiteral("%1 scattered").arg(asked.size());
}

} // namespace

class tst_HostileController : public WidgetSuite
{
    Q_OBJECT

private slots:
    void formulaSafeResults_data();
    void formulaSafeResults();
};

// Each formula and each capped count meeting a hostile value: its safe result, the
// exact commands it leads to and the operator's messages.
void tst_HostileController::formulaSafeResults_data()
{
    QTest::addColumn<QByteArray>("scenario");
    QTest::addColumn<HostileAnswers>("earlier"); // the answers of an opening before
    QTest::addColumn<HostileAnswers>("answers");
    QTest::addColumn<QString>("probe");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QStringList>("messages"); // each once

    const QByteArray panel = DialogScenarios::briskbox(2);
    const QString maxFlash = "camera max_flash_intensity c01";
    // Spans of 2^31 steps, which Qt's slider cannot draw.
    QTest::newRow("panel flash: INT_MIN, then 0") << panel << HostileAnswers{{maxFlash, "-2147483648"}}
        << HostileAnswers{{maxFlash, "0"}} << "panel flash range" << "0..0 0..0" << QStringList();
    QTest::newRow("panel flash: -1, then INT_MAX") << panel << HostileAnswers{{maxFlash, "-1"}}
        << HostileAnswers{{maxFlash, "2147483647"}} << "panel flash range" << "0..2147483647 0..2147483647" << QStringList();

    // The chip's sides of INT_MAX pixels each come along: 40 pixels are a tiny percentage.
    const HostileAnswers hugeChip{{"camera sensor_pixel_vertical c01", "2147483647"},
                                  {"camera sensor_pixel_horizontal c01", "2147483647"}};
    const QString sizes = get("camera marker_min_size c01") + ", " + set("camera marker_max_size c01 40.000");
    const QStringList unreadable{operatorError("Error: Unable to get info display intensity")};
    // The channel takes no infinity or NaN for a number, so -inf takes the same way.
    QTest::newRow("display intensity nan") << OneCamera << HostileAnswers()
        << HostileAnswers{{"camera display_intensity c01", "nan"}} + hugeChip << "display intensity"
        << "0 0 21474836.47, " + sizes << unreadable;
    QTest::newRow("display intensity 1e308 stops at INT_MAX") << OneCamera << HostileAnswers()
        << HostileAnswers{{"camera display_intensity c01", "1e308"}} + hugeChip << "display intensity"
        << "2147483647 100 21474836.47, " + sizes << QStringList();

    const QByteArray huge = "2147483647";
    const QString range = "1..%1";
    QTest::newRow("camera modes") << OneCamera << HostileAnswers() << HostileAnswers{{"camera number_of_modes c01", huge}}
        << "quarvo2 get camera mode_desc c01 m(\\d+)" << range.arg(CameraSettings::MaxCameraModes) << QStringList();
    const QString displaySetting = "quarvo2 get camera display_setting_id t(\\d+)";
    // The settings the controller lacks cannot be read.
    QTest::newRow("display settings") << OneCamera << HostileAnswers()
        << HostileAnswers{{"camera number_of_display_settings", huge}} << displaySetting
        << range.arg(CameraSettings::MaxDisplaySettings) << QStringList{operatorError("Error: Unable to get info display setting")};
    // The dialog reads the count first; the overview's own read when it is shown comes second.
    QTest::newRow("overview's camera count") << OneCamera << HostileAnswers()
        << HostileAnswers{{"camera number_of_cameras", huge, 1}} << "quarvo2 get camera has_dynamic_reflex_skip c(\\d+)"
        << range.arg(CameraSettings::MaxCameras) << QStringList();
    // A channel costs no command, only an item of the list.
    QTest::newRow("sync channels") << OneCamera << HostileAnswers() << HostileAnswers{{"synccard number_of_channels d01", huge}}
        << "channels" << QStringLiteral("%1, last Channel %1").arg(CameraSettings::MaxSyncChannels) << QStringList();
}

void tst_HostileController::formulaSafeResults()
{
    QFETCH(QByteArray, scenario);
    QFETCH(HostileAnswers, earlier);
    QFETCH(HostileAnswers, answers);
    QFETCH(QString, probe);
    QFETCH(QString, shown);
    QFETCH(QStringList, messages);

    DialogRig rig(scenario);
    const auto hostile = [&rig](const HostileAnswers& list) {
        rig.clearFaults();
        for (const HostileAnswer& answer : list)
            rig.answerGet(answer.path, answer.value, answer.passFirst);
    };
    // The host builds the dialog meeting the answers already; an earlier opening meets its own.
    hostile(earlier.isEmpty() ? answers : earlier);
    QVERIFY(rig.start());
    if (!earlier.isEmpty()) {
        rig.open();
        hostile(answers);
    }
    QString seen;
    QStringList messagesAtOpening;
    rig.open([&] {
        messagesAtOpening = rig.messages();
        messagesAtOpening.removeDuplicates();
        seen = ::probe(rig, probe);
    });
    QCOMPARE(seen, shown);
    QCOMPARE(messagesAtOpening, messages);
}

QTEST_MAIN(tst_HostileController)
#include "tst_hostilecontroller.moc"
