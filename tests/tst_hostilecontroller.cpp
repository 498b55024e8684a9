// The camera settings dialog against a controller that answers what no real one would:
// INT_MIN and INT_MAX, NaN, infinities, 1e308, counts of two billion, empty, over-long
// and quoted texts, format directives, refusals.
#include "dialogrig.h"
#include "widgetsuite.h"
#include "randomoperator.h"

#include <cameratablecolumns.h>
#include <controllervalues.h>

#include <QComboBox>
#include <QElapsedTimer>
#include <QSlider>
#include <QSpinBox>
#include <QtTest>

namespace Col = CameraTable;

// A controller's answer to "quarvo2 get <path>", after the first passFirst requests went through.
struct HostileAnswer
{
    QString path;
    QByteArray value;
    int passFirst = 0;
};
using HostileAnswers = QList<HostileAnswer>;
Q_DECLARE_METATYPE(HostileAnswers)

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

int environmentNumber(const char* name, int fallback)
{
    bool given = false;
    const int value = qEnvironmentVariableIntValue(name, &given);
    return given ? value : fallback;
}

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

// Any message but the module's own operator errors and its event would be a
// controller's text that leaked through.
bool isModuleMessage(const QString& message)
{
    static const QRegularExpression own(QStringLiteral("^standard\\|QUARVO3\\|1\\|Error: [A-Za-z ]+( c\\d{2,3})?$"));
    return message == ConfigurationEvent || own.match(message).hasMatch();
}

// Replaces the replies of a few random commands the dialog sends by hostile ones: a
// hostile value for a read, anything but the echo for a write, or a refusal.
void addHostileFaults(DialogRig& rig, const QStringList& pool, QRandomGenerator& random)
{
    static const QList<QByteArray> values = {"-2147483648", "2147483647", "0", "-1", "nan", "inf", "-inf", "1e308",
                                             "-1e308", "", QByteArray(99, 'x'), QByteArray(5000, 'y'), "\"unbalanced",
                                             "a\" \"b\"\"", "%n%s%s"};
    rig.clearFaults();
    const int count = 1 + random.bounded(6);
    for (int i = 0; i < count; ++i) {
        const QString request = pool.at(random.bounded(pool.size()));
        // A write is hit whatever value it carries.
        const QString glob = request.startsWith(QLatin1String("quarvo2 get ")) ? request
                                                                              : request.section(' ', 0, -2) + " *";
        const int pick = random.bounded(values.size() + 1);
        rig.answer(glob, pick == values.size() ? QByteArray("quarvo2 err 7 \"hostile\"")
                                               : "quarvo2 set " + request.mid(12).toLatin1() + ' ' + values.at(pick));
    }
}

} // namespace

class tst_HostileController : public WidgetSuite
{
    Q_OBJECT

private slots:
    void formulaSafeResults_data();
    void formulaSafeResults();
    void randomHostileOpenings_data();
    void randomHostileOpenings();
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

// A seeded random walk of openings through the plug-in, each with hostile replies to a
// few random commands of those the dialog sends, a few operator changes and OK or
// Cancel. QUARVO_HOSTILE_SEED replays a failure; QUARVO_HOSTILE_OPENINGS and
// QUARVO_HOSTILE_BUDGET_MS bound the openings per variant by count and by time.
void tst_HostileController::randomHostileOpenings_data()
{
    QTest::addColumn<QByteArray>("scenario");
    QTest::addColumn<VersionInfo>("protocol");

    const QByteArray table = DialogScenarios::EveryFeature;
    QTest::newRow("camera table, protocol 1.9") << table << VersionInfo(1, 9, 0);
    QTest::newRow("camera table, protocol 1.17") << table << VersionInfo(1, 17, 0);
    QTest::newRow("camera table, protocol 1.27") << table << VersionInfo(1, 27, 0);
    QTest::newRow("all-in-one panel") << DialogScenarios::briskbox(2) << VersionInfo(1, 27, 0);
}

void tst_HostileController::randomHostileOpenings()
{
    QFETCH(QByteArray, scenario);
    QFETCH(VersionInfo, protocol);

    const quint32 seed = quint32(environmentNumber("QUARVO_HOSTILE_SEED", 20240611));
    const quint32 rowSeed = seed ^ qHash(QLatin1String(QTest::currentDataTag()));
    const int openings = environmentNumber("QUARVO_HOSTILE_OPENINGS", 20);
    const qint64 budgetMs = environmentNumber("QUARVO_HOSTILE_BUDGET_MS", 2000);
    const bool briskbox = scenario.contains("BRISKBOX");
    const int cameras = briskbox ? 2 : 3;
    // The rig is built before the faults go in, so that building the dialog meets them.
    std::unique_ptr<DialogRig> rig;
    const auto newRig = [&] {
        rig.reset();
        rig.reset(new DialogRig(scenario));
        rig->setProtocol(protocol);
    };
    newRig();
    QVERIFY(rig->start());
    // What a quiet opening with OK and one with Cancel send: the commands to make hostile.
    rig->modals().answerEveryMessageBox([] { return QMessageBox::Yes; });
    rig->open([&] { rig->click("btnOk"); });
    rig->open();
    // The counts of cameras build a page per camera, up to 999: their caps have their own
    // case, and 999 pages per opening would take the whole time budget.
    QStringList pool;
    for (const QString& request : rig->allRequests()) {
        if (!request.contains(QRegularExpression("number_of_(missing_)?cameras$")) && !pool.contains(request))
            pool << request;
    }
    // Generous bounds of what one opening and one ending may send, from the module's caps:
    // a camera reads each of its modes and display settings, and the overview each again
    // for every camera.
    const int openingBound = cameras * (120 + 2 * CameraSettings::MaxCameraModes + 4 * CameraSettings::MaxDisplaySettings)
        + 2 * CameraSettings::MaxCameras + cameras * cameras + 200;
    const int endingBound = cameras * 60 + 20;
    RandomOperator person(rowSeed);
    QRandomGenerator& random = person.random();
    // Whatever OK asks is answered at random; a "No" leaves the dialog open, then Cancel.
    const auto answer = [&random] { return random.bounded(2) ? QMessageBox::Yes : QMessageBox::No; };
    QElapsedTimer clock;
    clock.start();
    int opened = 0;
    for (; opened < openings && clock.elapsed() < budgetMs; ++opened) {
        const QString replay = QString("QUARVO_HOSTILE_SEED=%1 (row seed %2), opening %3").arg(seed).arg(rowSeed).arg(opened);
        // The all-in-one panel checks its cameras when the dialog is built: build it anew now and then.
        const bool rebuild = briskbox && opened % 10 == 9;
        if (rebuild)
            newRig();
        addHostileFaults(*rig, pool, random);
        rig->mark();
        if (rebuild)
            QVERIFY2(rig->start(), qPrintable(replay));
        rig->modals().answerEveryMessageBox(answer);
        const int before = rig->allRequests().size();
        int atOpening = -1;
        int atEnding = -1;
        rig->open([&] {
            atOpening = rig->allRequests().size();
            for (int i = random.bounded(5); i > 0 && rig->dialog()->isVisible(); --i) {
                person.act(*rig);
                if (random.bounded(3) == 0)
                    fireDisplayTimers(rig->dialog());
            }
            atEnding = rig->allRequests().size();
            for (const char* button : {random.bounded(2) ? "btnOk" : "btnCancel", "btnCancel"}) {
                if (rig->dialog()->isVisible())
                    rig->click(button);
            }
        });
        QVERIFY2(atOpening >= 0 && !rig->dialog()->isVisible(), qPrintable(replay));
        QVERIFY2(atOpening - before <= openingBound, qPrintable(replay + ": too many commands to open"));
        QVERIFY2(rig->allRequests().size() - atEnding <= endingBound, qPrintable(replay + ": too many to end"));
        for (const QString& message : rig->messages())
            QVERIFY2(isModuleMessage(message), qPrintable(QString("%1: unknown message %2").arg(replay, message)));
    }
    qInfo("%d openings in %lld ms", opened, clock.elapsed());
    QVERIFY2(opened >= qMin(openings, 10), "the time budget let too few openings run");
}

QTEST_MAIN(tst_HostileController)
#include "tst_hostilecontroller.moc"
