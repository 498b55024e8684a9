// The camera settings dialog against a controller that answers what no real one would:
// INT_MIN and INT_MAX, NaN, infinities, 1e308, counts of two billion, empty, over-long
// and quoted texts, format directives, refusals. Each formula's safe result and each
// capped count with the exact commands it leads to, then a seeded random walk of
// openings through the plug-in with hostile replies to random commands.
#include "dialogrig.h"
#include "widgetsuite.h"
#include "randomoperator.h"

#include <cameratablecolumns.h>
#include <controllervalues.h>

#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>
#include <QSet>
#include <QSlider>
#include <QSpinBox>
#include <QStandardItemModel>
#include <QTabWidget>
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

int environmentNumber(const char* name, int fallback)
{
    bool given = false;
    const int value = qEnvironmentVariableIntValue(name, &given);
    return given ? value : fallback;
}

} // namespace

class tst_HostileController : public WidgetSuite
{
    Q_OBJECT

private slots:
    void panelFlashRangeOfEachOpening_data();
    void panelFlashRangeOfEachOpening();
    void displayIntensityBeyondNumbers_data();
    void displayIntensityBeyondNumbers();
    void cappedCounts_data();
    void cappedCounts();
    void randomHostileOpenings_data();
    void randomHostileOpenings();
};

void tst_HostileController::panelFlashRangeOfEachOpening_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("maximum");
    QTest::addColumn<QString>("range");

    QTest::newRow("negative, then 50") << QByteArray("-5") << QByteArray("50") << "0..50 0..50";
    // Spans of 2^31 steps, which Qt's slider cannot draw.
    QTest::newRow("INT_MIN, then 0") << QByteArray("-2147483648") << QByteArray("0") << "0..0 0..0";
    QTest::newRow("-1, then INT_MAX") << QByteArray("-1") << QByteArray("2147483647") << "0..2147483647 0..2147483647";
}

void tst_HostileController::panelFlashRangeOfEachOpening()
{
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, maximum);
    QFETCH(QString, range);

    DialogRig rig(DialogScenarios::briskbox(2));
    QVERIFY(rig.start());
    rig.answerGet("camera max_flash_intensity c01", before);
    rig.open();
    rig.clearFaults();
    rig.answerGet("camera max_flash_intensity c01", maximum);
    QString shown;
    rig.open([&] {
        auto* slider = rig.widget<QSlider>("slider_lct_flash_intensity");
        auto* spinBox = rig.widget<QSpinBox>("spinBox_lct_flash_intensity");
        rig.dialog()->grab(); // drawn, as the operator sees it
        shown = QStringLiteral("%1..%2 %3..%4").arg(slider->minimum()).arg(slider->maximum())
                    .arg(spinBox->minimum()).arg(spinBox->maximum());
    });
    QCOMPARE(shown, range);
}

void tst_HostileController::displayIntensityBeyondNumbers_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<int>("percent");
    QTest::addColumn<QStringList>("messages");

    const QString unreadable = operatorError("Error: Unable to get info display intensity");
    QTest::newRow("nan") << QByteArray("nan") << 0 << QStringList{unreadable};
    QTest::newRow("-inf") << QByteArray("-inf") << 0 << QStringList{unreadable};
    QTest::newRow("1e308 stops at INT_MAX") << QByteArray("1e308") << 2147483647 << QStringList();
}

void tst_HostileController::displayIntensityBeyondNumbers()
{
    QFETCH(QByteArray, value);
    QFETCH(int, percent);
    QFETCH(QStringList, messages);

    // The chip's sides of INT_MAX pixels each come along.
    DialogRig rig(OneCamera);
    rig.answerGet("camera display_intensity c01", value);
    rig.answerGet("camera sensor_pixel_vertical c01", "2147483647");
    rig.answerGet("camera sensor_pixel_horizontal c01", "2147483647");
    QVERIFY(rig.start());
    QVariant cell;
    int slider = -1;
    double chipsize = 0.0;
    QStringList shown;
    rig.open([&] {
        cell = rig.cell(0, Col::DisplayIntensity);
        slider = rig.pageWidget<QSlider>(1, "horizontalSlider_displayIntensity")->value();
        chipsize = rig.cell(0, Col::Chipsize).toDouble();
        shown = rig.messages();
        // 40 pixels as a percentage of that chip.
        rig.edit(0, Col::MarkerMaxSize, 40 / chipsize);
        rig.mark();
        rig.click("btnOk");
    });
    QCOMPARE(cell, QVariant(percent));
    QCOMPARE(slider, qMin(percent, 100));
    QCOMPARE(shown, messages);
    QCOMPARE(chipsize, 21474836.47);
    QCOMPARE(rig.requests().filter(QRegularExpression("marker_|set camera display_intensity")),
             (QStringList{get("camera marker_min_size c01"), set("camera marker_max_size c01 40.000")}));
}

void tst_HostileController::cappedCounts_data()
{
    QTest::addColumn<QString>("countPath");
    QTest::addColumn<QByteArray>("count");
    QTest::addColumn<int>("passFirst");
    QTest::addColumn<QString>("stepRequest"); // the request each step of the count sends, step as (\d+)
    QTest::addColumn<int>("steps");

    QTest::newRow("camera modes") << "camera number_of_modes c01" << QByteArray("2147483647") << 0
                                  << "quarvo2 get camera mode_desc c01 m(\\d+)" << CameraSettings::MaxCameraModes;
    QTest::newRow("display settings") << "camera number_of_display_settings" << QByteArray("2147483647") << 0
                                      << "quarvo2 get camera display_setting_id t(\\d+)"
                                      << CameraSettings::MaxDisplaySettings;
    QTest::newRow("negative display settings") << "camera number_of_display_settings" << QByteArray("-2147483648")
                                               << 0 << "quarvo2 get camera display_setting_id t(\\d+)" << 0;
    // The dialog reads the count first; the overview's own read when it is shown comes second.
    QTest::newRow("overview's camera count") << "camera number_of_cameras" << QByteArray("2147483647") << 1
                                             << "quarvo2 get camera has_dynamic_reflex_skip c(\\d+)"
                                             << CameraSettings::MaxCameras;
    QTest::newRow("sync channels") << "synccard number_of_channels d01" << QByteArray("2147483647") << 0 << ""
                                   << CameraSettings::MaxSyncChannels;
}

void tst_HostileController::cappedCounts()
{
    QFETCH(QString, countPath);
    QFETCH(QByteArray, count);
    QFETCH(int, passFirst);
    QFETCH(QString, stepRequest);
    QFETCH(int, steps);

    DialogRig rig(OneCamera);
    rig.answerGet(countPath, count, passFirst);
    QVERIFY(rig.start());
    QStringList channels;
    rig.open([&] {
        auto* syncGroups = rig.pageWidget<QComboBox>(1, "comboBox_syncGroup");
        for (int i = 0; i < syncGroups->count(); ++i)
            channels << syncGroups->itemText(i);
    });
    if (stepRequest.isEmpty()) {
        // A channel costs no command, only an item of the list.
        QCOMPARE(channels.size(), steps);
        QCOMPARE(channels.last(), QStringLiteral("Channel %1").arg(steps));
        return;
    }
    QSet<int> asked;
    const QRegularExpression step(QStringLiteral("^%1$").arg(stepRequest));
    for (const QString& request : rig.requests()) {
        const QRegularExpressionMatch match = step.match(request);
        if (match.hasMatch())
            asked << match.captured(1).toInt();
    }
    QSet<int> expected;
    for (int i = 1; i <= steps; ++i)
        expected << i;
    QCOMPARE(asked, expected);
}

// ---------------------------------------------------------------------------------
// A seeded random walk of openings through the plug-in, each with hostile replies to a
// few random commands of those the dialog sends, a few operator changes and OK or
// Cancel. QUARVO_HOSTILE_SEED replays a failure; QUARVO_HOSTILE_OPENINGS and
// QUARVO_HOSTILE_BUDGET_MS bound the openings per variant by count and by time.

namespace {

// Any message but the module's own operator errors and its event would be a
// controller's text that leaked through.
bool isModuleMessage(const QString& message)
{
    static const QRegularExpression own(QStringLiteral("^standard\\|QUARVO3\\|1\\|Error: [A-Za-z ]+( c\\d{2,3})?$"));
    return message == ConfigurationEvent || own.match(message).hasMatch();
}

// The counts of cameras build a page per camera, up to 999; those caps have their own
// cases, and 999 pages per opening would take the whole time budget.
bool hostileCandidate(const QString& request)
{
    return !request.endsWith(QLatin1String(" number_of_cameras"))
        && !request.endsWith(QLatin1String(" number_of_missing_cameras"));
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

// Generous bounds of what one opening and one ending may send, from the module's caps:
// a camera reads each of its modes and display settings, and the overview each again
// for every camera.
int openingBound(int cameras)
{
    return cameras * (120 + 2 * CameraSettings::MaxCameraModes + 4 * CameraSettings::MaxDisplaySettings)
        + 2 * CameraSettings::MaxCameras + cameras * cameras + 200;
}

int endingBound(int cameras)
{
    return cameras * 60 + 20;
}

} // namespace

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
    QStringList pool;
    for (const QString& request : rig->allRequests()) {
        if (hostileCandidate(request) && !pool.contains(request))
            pool << request;
    }
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
        QVERIFY2(atOpening - before <= openingBound(cameras), qPrintable(replay + ": too many commands to open"));
        QVERIFY2(rig->allRequests().size() - atEnding <= endingBound(cameras), qPrintable(replay + ": too many to end"));
        for (const QString& message : rig->messages())
            QVERIFY2(isModuleMessage(message), qPrintable(QString("%1: unknown message %2").arg(replay, message)));
    }
    qInfo("%d openings in %lld ms", opened, clock.elapsed());
    QVERIFY2(opened >= qMin(openings, 10), "the time budget let too few openings run");
}

QTEST_MAIN(tst_HostileController)
#include "tst_hostilecontroller.moc"
