// The stand-in host: that it loads the module as the frontend does, builds its menus,
// delivers host messages, shuts the module down in order, and that the executable
// does its job on a machine without a display.
#include "commandlogpanel.h"
#include "controllersession.h"
#include "faultrule.h"
#include "hostmessagelog.h"
#include "hostoptions.h"
#include "hostwindow.h"
#include "modulehost.h"
#include "simulatedcontroller.h"

#include <QtTest>
#include <QtWidgets>

namespace {

struct ProcessResult
{
    int exitCode = -1;
    QString out;
    QString err;
};

// The host executable as a user on a machine without a display runs it.
ProcessResult runHost(const QStringList& arguments)
{
    QProcess host;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.remove(QStringLiteral("DISPLAY"));
    env.remove(QStringLiteral("WAYLAND_DISPLAY"));
    env.remove(QStringLiteral("QT_QPA_PLATFORM"));
    host.setProcessEnvironment(env);
    host.start(QStringLiteral(QUARVO_BIN_DIR "/quarvo2-host"), arguments);
    ProcessResult result;
    if (!host.waitForFinished(60000))
        return result;
    result.exitCode = host.exitCode();
    result.out = QString::fromUtf8(host.readAllStandardOutput());
    result.err = QString::fromLocal8Bit(host.readAllStandardError());
    return result;
}

// A command log line: time sent, round trip in milliseconds, request, reply.
const QRegularExpression LogLine(QStringLiteral("^\\d\\d:\\d\\d:\\d\\d\\.\\d{3} +(\\d+\\.\\d{3}) ms  > (.*)  < (.*)$"));

QStringList headingsOf(const QStringList& lines)
{
    return lines.filter(QRegularExpression(QStringLiteral("^====")));
}

} // namespace

class tst_Host : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void menusComeFromTheModules();
    void menuEntryOpensTheModalDialog();
    void hostMessagesReachTheModule();
    void measuringDisablesEntriesNotMeantForIt();
    void scenarioSwitchReloadsTheModule();
    void shutDownUnregistersAndDeletes();
    void operatorMessagesAreShown();

    void aboutNamesTheModulesAndVersions();
    void openingsAreHeadedAndLeaveTheLogInSight();
    void logLinesHaveTimeRoundTripAndFault();
    void logFilterClearAndSave();
    void options_data();
    void options();

    void headlessRunSavesPicturesAndPrintsTheLog();
    void versionAndUnwritablePictures();
    void badScenarioEndsWithAMessage();
    void helpIsPrinted_data();
    void helpIsPrinted();
    void missingPluginFolderIsReported();

private:
    static QString hostBinary() { return QStringLiteral(QUARVO_BIN_DIR "/quarvo2-host"); }
    static QString pluginDir() { return QStringLiteral(QUARVO_PLUGIN_DIR); }
    // Triggers the action and returns the modal widget it opened, closing it with reject().
    static QString openAndClose(QAction* action, QStringList* visibleTabs = nullptr);
};

void tst_Host::cleanup()
{
    QVERIFY2(QApplication::topLevelWidgets().isEmpty() || !QApplication::activeModalWidget(),
             "a modal dialog was left open");
}

QString tst_Host::openAndClose(QAction* action, QStringList* visibleTabs)
{
    QString title;
    QTimer::singleShot(0, [&] {
        QWidget* modal = QApplication::activeModalWidget();
        if (!modal)
            return;
        title = modal->windowTitle();
        if (visibleTabs) {
            auto* tabs = modal->findChild<QTabWidget*>(QStringLiteral("tabWidget"));
            *visibleTabs << (tabs && tabs->isVisibleTo(modal) ? "tabs" : "no tabs");
            auto* slider = modal->findChild<QSlider*>(QStringLiteral("slider_lct_flash_intensity"));
            *visibleTabs << (slider && slider->isVisibleTo(modal) ? "panel" : "no panel");
        }
        static_cast<QDialog*>(modal)->reject();
    });
    action->trigger();
    return title;
}

void tst_Host::menusComeFromTheModules()
{
    ControllerSession session;
    HostWindow window(&session, pluginDir());
    QCOMPARE(window.loadModules(), 1);
    QVERIFY2(window.moduleHost()->errors().isEmpty(), qPrintable(window.moduleHost()->errors().join('\n')));

    QMenu* hardware = window.findMenu(QStringLiteral("H&ardware"));
    QVERIFY2(hardware, "the module's menu is in the menu bar");
    QCOMPARE(hardware->actions().size(), 1);
    QAction* cameras = hardware->actions().first();
    QCOMPARE(cameras->text(), QStringLiteral("C&ameras"));
    QCOMPARE(cameras->shortcut(), QKeySequence(Qt::Key_F7));
    QCOMPARE(cameras->statusTip(), QStringLiteral("Change camera settings"));

    // The host's own menu comes first, the modules' menus after it by their order
    // numbers, Help last.
    const QList<QAction*> bar = window.menuBar()->actions();
    QCOMPARE(bar.size(), 3);
    QCOMPARE(bar.at(0)->text(), QStringLiteral("&Host"));
    QCOMPARE(bar.at(1)->menu(), hardware);
    QCOMPARE(bar.at(2)->text(), QStringLiteral("&Help"));
}

void tst_Host::menuEntryOpensTheModalDialog()
{
    ControllerSession session;
    HostWindow window(&session, pluginDir());
    window.loadModules();
    session.controller()->clearLog();

    QAction* cameras = window.findMenu(QStringLiteral("H&ardware"))->actions().first();
    QStringList shown;
    QCOMPARE(openAndClose(cameras, &shown), QStringLiteral("Camera Settings"));
    QCOMPARE(shown, QStringList() << "tabs" << "no panel");
    QVERIFY2(session.controller()->requests().contains("quarvo2 get config is_changeable"),
             "opening asks the controller for its configuration lock");
}

void tst_Host::hostMessagesReachTheModule()
{
    ControllerSession session;
    HostWindow window(&session, pluginDir());
    window.loadModules();
    QCOMPARE(session.io()->receivers("CameraSettingsModule").size(), 1);

    QWidget* dialog = window.findChild<QDialog*>(QStringLiteral("CameraSettingsDialog"));
    QVERIFY(dialog);
    window.sendHostMessage(QStringLiteral("ShowDynReflexSuppr"));
    QCOMPARE(window.statusBar()->currentMessage(),
             QStringLiteral("Host message \"ShowDynReflexSuppr\" delivered to 1 receiver(s)"));
}

void tst_Host::measuringDisablesEntriesNotMeantForIt()
{
    ControllerSession session;
    HostWindow window(&session, pluginDir());
    window.loadModules();
    QAction* cameras = window.findMenu(QStringLiteral("H&ardware"))->actions().first();
    QVERIFY(cameras->isEnabled());
    window.setMeasuring(true);
    QVERIFY2(!cameras->isEnabled(), "the camera settings are not to be changed while measuring");
    window.setMeasuring(false);
    QVERIFY(cameras->isEnabled());
}

void tst_Host::scenarioSwitchReloadsTheModule()
{
    ControllerSession session;
    HostWindow window(&session, pluginDir());
    window.loadModules();
    QVERIFY(window.switchScenario(QStringLiteral("briskbox")));
    QCOMPARE(session.backendVersions()->atcModel(), QStringLiteral("BRISKBOX"));

    QMenu* hardware = window.findMenu(QStringLiteral("H&ardware"));
    QVERIFY(hardware);
    QCOMPARE(hardware->actions().size(), 1);
    QStringList shown;
    openAndClose(hardware->actions().first(), &shown);
    QCOMPARE(shown, QStringList() << "no tabs" << "panel");
    QCOMPARE(window.findChildren<QDialog*>(QStringLiteral("CameraSettingsDialog")).size(), 1);
}

void tst_Host::shutDownUnregistersAndDeletes()
{
    ControllerSession session;
    HostWindow window(&session, pluginDir());
    window.loadModules();
    QPointer<QDialog> dialog = window.findChild<QDialog*>(QStringLiteral("CameraSettingsDialog"));
    QVERIFY(dialog);
    window.unloadModules();
    QVERIFY2(session.io()->receivers("CameraSettingsModule").isEmpty(), "the receiver is unregistered");
    QVERIFY2(dialog.isNull(), "exit_module deletes the dialog");
    QVERIFY(!window.findMenu(QStringLiteral("H&ardware")));
    QVERIFY(window.moduleHost()->modules().isEmpty());
}

void tst_Host::operatorMessagesAreShown()
{
    ControllerSession session;
    HostWindow window(&session, pluginDir());
    session.io()->showMessage("standard", "QUARVO3", 1, "Error: Unable to set camera mode");
    session.io()->showMessage("GlobalEvent", "ConfigurationModule", 1, "ActiveConfigurationChanged");
    auto* list = window.findChild<QListWidget*>(QStringLiteral("messageList"));
    QVERIFY(list);
    QCOMPARE(list->count(), 2);
    QVERIFY(list->item(0)->text().endsWith(QStringLiteral("standard / QUARVO3 (1): Error: Unable to set camera mode")));
    QVERIFY(list->item(1)->text().endsWith(QStringLiteral("ActiveConfigurationChanged")));
    QCOMPARE(window.statusBar()->currentMessage(), QStringLiteral("Error: Unable to set camera mode"));
    QCOMPARE(session.messages()->entries().size(), 2);
}

void tst_Host::aboutNamesTheModulesAndVersions()
{
    ControllerSession session;
    HostWindow window(&session, pluginDir());
    window.loadModules();
    QString text;
    QTimer::singleShot(0, [&] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            text = box->text();
            box->accept();
        }
    });
    window.findChild<QAction*>(QStringLiteral("actionAbout"))->trigger();
    const QStringList lines = text.split(QLatin1Char('\n'));
    QCOMPARE(lines.first(), QStringLiteral("quarvo2-host " QUARVO_VERSION));
    QVERIFY2(lines.contains(QStringLiteral("Qt %1").arg(QString::fromLatin1(qVersion()))), qPrintable(text));
    QCOMPARE(lines.mid(lines.size() - 2),
             QStringList() << QStringLiteral("Modules loaded from %1:").arg(QDir(pluginDir()).absolutePath())
                           << QStringLiteral("GUI Camera Settings v1.13.0 (libCameraSettingsModule.so)"));
}

void tst_Host::openingsAreHeadedAndLeaveTheLogInSight()
{
    ControllerSession session;
    HostWindow window(&session, pluginDir());
    window.loadModules();
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    auto* logDock = window.findChild<QDockWidget*>(QStringLiteral("commandLogDock"));
    const QWidget* stage = window.centralWidget();
    QAction* cameras = window.findMenu(QStringLiteral("H&ardware"))->actions().first();

    QStringList firstRequests;
    for (int opening = 0; opening < 2; ++opening) {
        session.controller()->clearLog();
        QRect dialog;
        QTimer::singleShot(0, [&] {
            if (QWidget* modal = QApplication::activeModalWidget()) {
                dialog = modal->frameGeometry();
                modal->close();
            }
        });
        cameras->trigger();
        const QRect log(logDock->mapToGlobal(QPoint(0, 0)), logDock->size());
        QVERIFY2(log.width() > 300 && !dialog.isEmpty() && !dialog.intersects(log),
                 qPrintable(QStringLiteral("the dialog at %1,%2 %3x%4 covers the log at %5,%6 %7x%8")
                                .arg(dialog.x()).arg(dialog.y()).arg(dialog.width()).arg(dialog.height())
                                .arg(log.x()).arg(log.y()).arg(log.width()).arg(log.height())));
        // Over the central area, not over the middle of the whole window.
        QVERIFY(qAbs(dialog.center().x() - stage->mapToGlobal(stage->rect().center()).x()) <= 1);
        firstRequests << QString::fromLatin1(session.controller()->requests().first());
    }

    // Each opening's heading stands before the first request of its loading.
    const QStringList lines = window.findChild<CommandLogPanel*>(QStringLiteral("commandLogPanel"))->text().split('\n');
    const QString heading = QStringLiteral("==== Camera Settings opened ====");
    QCOMPARE(headingsOf(lines), QStringList() << heading << heading);
    int at = -1;
    for (const QString& request : qAsConst(firstRequests)) {
        at = lines.indexOf(heading, at + 1);
        QCOMPARE(LogLine.match(lines.value(at + 1)).captured(2), request);
    }
}

void tst_Host::logLinesHaveTimeRoundTripAndFault()
{
    ControllerSession session;
    FaultRule late;
    late.match = QStringLiteral("quarvo2 get camera number_of_cameras");
    late.action = FaultRule::Late;
    late.delayMs = 40;
    late.times = 1;
    session.controller()->addFault(late);
    FaultRule busy;
    busy.match = QStringLiteral("quarvo2 get camera flash_intensity c02");
    busy.text = "camera busy";
    busy.name = QStringLiteral("busy c02");
    session.controller()->addFault(busy);
    FaultRule drop;
    drop.match = QStringLiteral("quarvo2 get camera flash_intensity c03");
    drop.action = FaultRule::Drop;
    session.controller()->addFault(drop);
    session.clearTraffic();
    int value = 0;
    session.io()->getInt(&value, "camera number_of_cameras");
    session.io()->getInt(&value, "camera flash_intensity c%02d", 2);
    session.io()->getInt(&value, "camera flash_intensity c%02d", 3);

    const QStringList lines = CommandLogPanel::lines(session);
    QCOMPARE(lines.size(), 3);
    QStringList exchanges;
    for (const QString& line : lines) {
        const QRegularExpressionMatch match = LogLine.match(line);
        QVERIFY2(match.hasMatch(), qPrintable(line));
        exchanges << match.captured(2) + " | " + match.captured(3);
    }
    QCOMPARE(exchanges, QStringList()
                            << "quarvo2 get camera number_of_cameras | quarvo2 set camera number_of_cameras 4   "
                               "[fault: late quarvo2 get camera number_of_cameras]"
                            << "quarvo2 get camera flash_intensity c02 | quarvo2 err 7 \"camera busy\"   [fault: busy c02]"
                            << "quarvo2 get camera flash_intensity c03 | (no reply: connection dropped by the "
                               "controller)   [fault: drop quarvo2 get camera flash_intensity c03]");
    // The round trip is what the host waited, the controller's late answer included.
    QVERIFY2(LogLine.match(lines.first()).captured(1).toDouble() >= 40.0, qPrintable(lines.first()));
    const QDateTime sent = session.traffic().first().sent;
    QCOMPARE(lines.first().left(12), sent.toString(QStringLiteral("HH:mm:ss.zzz")));
}

void tst_Host::logFilterClearAndSave()
{
    ControllerSession session;
    HostWindow window(&session, pluginDir());
    auto* panel = window.findChild<CommandLogPanel*>(QStringLiteral("commandLogPanel"));
    char text[IOManager::ValueBufferSize];
    session.io()->getString(text, "camera serial c%02d", 1);
    QCOMPARE(panel->text().split('\n').size(), 4); // the host's three start-up reads and this one

    auto* filter = window.findChild<QLineEdit*>(QStringLiteral("commandLogFilter"));
    QTest::keyClicks(filter, QStringLiteral("SERIAL"));
    QVERIFY2(LogLine.match(panel->text()).captured(2) == QStringLiteral("quarvo2 get camera serial c01"),
             qPrintable(panel->text()));
    session.io()->getString(text, "system model");
    session.io()->getString(text, "camera serial c%02d", 2);
    QCOMPARE(panel->text().count(QLatin1Char('\n')), 1); // the new serial line, not the model
    const QString shown = panel->text();

    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("log.txt"));
    QTimer::singleShot(0, [&] {
        if (auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget())) {
            dialog->selectFile(file);
            static_cast<QDialog*>(dialog)->accept();
        }
    });
    window.findChild<QPushButton*>(QStringLiteral("commandLogSave"))->click();
    QFile saved(file);
    QVERIFY2(saved.open(QIODevice::ReadOnly), "Save wrote the file");
    QCOMPARE(QString::fromUtf8(saved.readAll()), shown + '\n');

    window.findChild<QPushButton*>(QStringLiteral("commandLogClear"))->click();
    QCOMPARE(panel->text(), QString());
    QVERIFY(session.traffic().isEmpty());
    filter->clear();
    session.io()->getString(text, "system model");
    QCOMPARE(panel->text().count(QLatin1Char('\n')), 0);
}

void tst_Host::options_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("result"); // version|language|details, or the error
    QTest::newRow("none") << QStringList() << "0||0";
    QTest::newRow("version") << (QStringList() << "--version") << "1||0";
    QTest::newRow("German") << (QStringList() << "--language" << "de") << "0|de|0";
    QTest::newRow("Austrian German") << (QStringList() << "--language" << "de_AT") << "0|de_AT|0";
    QTest::newRow("no language") << (QStringList() << "--language" << "xx")
                                 << "--language needs a language code, such as de or en";
    QTest::newRow("details") << (QStringList() << "--headless" << "--details") << "0||1";
}

void tst_Host::options()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, result);
    HostOptions options;
    QString error;
    const bool ok = HostOptions::parse(QStringList(QStringLiteral("quarvo2-host")) << arguments, &options, &error);
    QCOMPARE(ok ? QStringLiteral("%1|%2|%3").arg(int(options.showVersion)).arg(options.language).arg(int(options.details))
                : error,
             result);
}

void tst_Host::headlessRunSavesPicturesAndPrintsTheLog()
{
    QTemporaryDir out;
    const ProcessResult run = runHost(QStringList() << "--output" << out.path() << "--details");
    QCOMPARE(run.exitCode, 0);
    QVERIFY2(run.out.startsWith(QStringLiteral("No display found")), qPrintable(run.out));
    QVERIFY2(run.out.contains(QStringLiteral(
                 "\nopened \"Hardware\" > \"Cameras\": saved 10 picture(s) with and without details, closed with Cancel\n")),
             qPrintable(run.out));
    QVERIFY2(!run.err.contains(QStringLiteral("propagateSizeHints")), qPrintable(run.err));

    // The log of the simulated controller in use, its lines as the panel shows them.
    const QStringList log = run.out.section(QStringLiteral("\nCommand log (simulated, scenario \"default\"):\n"), 1)
                                .section(QStringLiteral("\n\n"), 0, 0)
                                .split('\n');
    QCOMPARE(headingsOf(log), QStringList(QStringLiteral("==== Camera Settings opened ====")));
    QVERIFY(log.size() > 100);
    for (const QString& line : log)
        QVERIFY2(line.startsWith(QStringLiteral("====")) || LogLine.match(line).hasMatch(), qPrintable(line));
    QVERIFY(log.filter(QRegularExpression(QStringLiteral("> quarvo2 get config is_changeable  < quarvo2 set config "
                                                         "is_changeable yes$")))
                .size() == 1);

    QVERIFY(QFileInfo(out.filePath(QStringLiteral("host.png"))).size() > 0);
    for (const QString& name : {QStringLiteral("entry1-tab0.png"), QStringLiteral("entry1-details-tab0.png")}) {
        QImage picture(out.filePath(name));
        QVERIFY2(picture.width() >= 300 && picture.height() >= 150, qPrintable(name));
    }
}

void tst_Host::versionAndUnwritablePictures()
{
    const ProcessResult version = runHost(QStringList() << "--version");
    QCOMPARE(version.exitCode, 0);
    QCOMPARE(version.out, QStringLiteral("quarvo2-host " QUARVO_VERSION "\n"));

    // A file where the output folder should be: no picture can be written.
    QTemporaryDir dir;
    QFile blocker(dir.filePath(QStringLiteral("blocker")));
    QVERIFY(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    const ProcessResult run = runHost(QStringList() << "--headless" << "--output" << blocker.fileName() + "/pictures");
    QCOMPARE(run.exitCode, 1);
    QVERIFY2(run.err.contains(QStringLiteral("Could not write %1/pictures/host.png\n").arg(blocker.fileName())),
             qPrintable(run.err));
    QVERIFY2(run.out.contains(QStringLiteral("opened \"Hardware\" > \"Cameras\": saved 0 picture(s)")), qPrintable(run.out));
}

void tst_Host::badScenarioEndsWithAMessage()
{
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("broken.json"));
    QFile f(file);
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write("{\n  \"protocol\": \"1.27.0\",\n  \"cameras\": [ oops ]\n}\n");
    f.close();

    QProcess host;
    host.start(hostBinary(), QStringList() << "--headless" << "--scenario" << file);
    QVERIFY(host.waitForFinished(30000));
    QCOMPARE(host.exitCode(), 2);
    const QString error = QString::fromLocal8Bit(host.readAllStandardError());
    QVERIFY2(error.contains(QStringLiteral("Cannot load scenario")) && error.contains(QStringLiteral("broken.json:3")),
             qPrintable(error));
}

void tst_Host::helpIsPrinted_data()
{
    QTest::addColumn<QString>("option");
    QTest::newRow("--help") << "--help";
    QTest::newRow("-h") << "-h";
    QTest::newRow("--help-all") << "--help-all";
}

void tst_Host::helpIsPrinted()
{
    QFETCH(QString, option);
    QProcess host;
    host.start(hostBinary(), QStringList() << option);
    QVERIFY(host.waitForFinished(30000));
    QCOMPARE(host.exitStatus(), QProcess::NormalExit);
    QCOMPARE(host.exitCode(), 0);
    const QString help = QString::fromLocal8Bit(host.readAllStandardOutput());
    QVERIFY2(help.startsWith(QStringLiteral("Usage: %1 [options]\n").arg(hostBinary())), qPrintable(help));
    QVERIFY2(help.contains(QStringLiteral("  --controller <host:port>")), qPrintable(help));
}

void tst_Host::missingPluginFolderIsReported()
{
    ControllerSession session;
    HostWindow window(&session, QStringLiteral("/nonexistent/plugins"));
    QCOMPARE(window.loadModules(), 0);
    QCOMPARE(window.moduleHost()->errors().size(), 1);
    QVERIFY(window.moduleHost()->errors().first().contains(QStringLiteral("does not exist")));
}

QTEST_MAIN(tst_Host)
#include "tst_host.moc"
