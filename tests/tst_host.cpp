// The stand-in host as the frontend it stands in for: it loads the module through the
// plug-in loader, builds its menus, opens the module's dialog on every built-in system
// with every read answered, delivers host messages, shuts the module down in order, logs
// the controller's traffic, reads its options, and its executable does its job on a
// machine without a display.
#include "scratchfile.h"

#include <commandlogpanel.h>
#include <controllerfixture.h>
#include <controllersession.h>
#include <hostmessagelog.h>
#include <hostoptions.h>
#include <hostwindow.h>
#include <modaldriver.h>
#include <modulehost.h>
#include <simulatedcontroller.h>

#include <QtTest>
#include <QtWidgets>

namespace {

const QString kPluginDir = QStringLiteral(QUARVO_PLUGIN_DIR);
const QString kHostBinary = QStringLiteral(QUARVO_BIN_DIR "/quarvo2-host");
// A command log line: time sent, round trip in milliseconds, request, reply.
const QRegularExpression LogLine(QStringLiteral("^\\d\\d:\\d\\d:\\d\\d\\.\\d{3} +(\\d+\\.\\d{3}) ms  > (.*)  < (.*)$"));
const QString kOpened = QStringLiteral("==== Camera Settings opened ====");

QAction* camerasEntry(HostWindow& window)
{
    return window.findMenu(QStringLiteral("H&ardware"))->actions().first();
}

// The host executable as a user on a machine without a display runs it: exit code, output, errors.
QStringList runHost(const QStringList& arguments)
{
    QProcess host;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        env.remove(QLatin1String(name));
    host.setProcessEnvironment(env);
    host.start(kHostBinary, arguments);
    if (!host.waitForFinished(60000) || host.exitStatus() != QProcess::NormalExit)
        return {QStringLiteral("crashed or hung")};
    return {QString::number(host.exitCode()), QString::fromUtf8(host.readAllStandardOutput()),
            QString::fromLocal8Bit(host.readAllStandardError())};
}

} // namespace

class tst_Host : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QVERIFY2(!QApplication::activeModalWidget(), "a modal dialog was left open"); }

    // The module's life in the host: loaded from the plug-in folder (a missing one is
    // reported), its menu between the host's own and Help, named in the About box, host
    // messages delivered to it, its entry off while measuring, its messages shown, and
    // shut down in order.
    void moduleLifeInTheHost()
    {
        ControllerSession session;
        HostWindow nowhere(&session, QStringLiteral("/nonexistent/plugins"));
        QVERIFY(nowhere.loadModules() == 0 && nowhere.moduleHost()->errors().value(0).contains(QStringLiteral("does not exist")));
        HostWindow window(&session, kPluginDir);
        QCOMPARE(window.loadModules(), 1);
        QStringList bar;
        for (const QAction* menu : window.menuBar()->actions())
            bar << menu->text() + ' ' + QString::number(menu->menu()->actions().size());
        QCOMPARE(bar.mid(1), QStringList({"H&ardware 1", "&Help 1"}));
        QAction* cameras = camerasEntry(window);
        QCOMPARE(cameras->text() + ' ' + cameras->shortcut().toString() + ' ' + cameras->statusTip(),
                 QStringLiteral("C&ameras F7 Change camera settings"));
        ModalDriver driver;
        driver.answerMessageBox(QMessageBox::Ok);
        window.findChild<QAction*>(QStringLiteral("actionAbout"))->trigger();
        const QStringList about = driver.messageBoxes().value(0).text.split(QLatin1Char('\n'));
        QCOMPARE(about.first(), QStringLiteral("quarvo2-host " QUARVO_VERSION));
        QCOMPARE(about.mid(about.size() - 2), QStringList({QStringLiteral("Modules loaded from %1:").arg(QDir(kPluginDir).absolutePath()),
                                                          "GUI Camera Settings v1.13.0 (libCameraSettingsModule.so)"}));

        window.sendHostMessage(QStringLiteral("ShowDynReflexSuppr"));
        QCOMPARE(window.statusBar()->currentMessage(), QStringLiteral("Host message \"ShowDynReflexSuppr\" delivered to 1 receiver(s)"));
        window.setMeasuring(true);
        QVERIFY2(!cameras->isEnabled(), "the camera settings are not to be changed while measuring");
        window.setMeasuring(false);
        QVERIFY(cameras->isEnabled());
        session.io()->showMessage("standard", "QUARVO3", 1, "Error: Unable to set camera mode");
        auto* list = window.findChild<QListWidget*>(QStringLiteral("messageList"));
        QVERIFY(list->count() == 1 && list->item(0)->text().endsWith(QStringLiteral("standard / QUARVO3 (1): Error: Unable to set camera mode")));
        QCOMPARE(window.statusBar()->currentMessage(), QStringLiteral("Error: Unable to set camera mode"));

        QPointer<QDialog> dialog = window.findChild<QDialog*>(QStringLiteral("CameraSettingsDialog"));
        QVERIFY(dialog);
        window.unloadModules();
        QVERIFY2(session.io()->receivers("CameraSettingsModule").isEmpty(), "the receiver is unregistered");
        QVERIFY2(dialog.isNull(), "exit_module deletes the dialog");
        QVERIFY(!window.findMenu(QStringLiteral("H&ardware")));
    }

    // Each built-in system opens the dialog it calls for, and the module's every read is
    // answered or refused only as a feature the camera lacks (never as a command that its
    // protocol does not know, or as a wrong request); no message to the operator.
    void openingOnEveryBuiltInSystem_data()
    {
        QTest::addColumn<QString>("scenario");
        QTest::addColumn<QString>("shown");
        QTest::newRow("default") << "default" << "tabs";
        QTest::newRow("briskbox") << "briskbox" << "panel";
        QTest::newRow("legacy") << "legacy" << "tabs";
    }

    void openingOnEveryBuiltInSystem()
    {
        QFETCH(QString, scenario);
        QFETCH(QString, shown);
        ControllerSession session;
        HostWindow window(&session, kPluginDir);
        window.loadModules();
        QVERIFY(window.switchScenario(scenario));
        QCOMPARE(window.findChildren<QDialog*>(QStringLiteral("CameraSettingsDialog")).size(), 1);
        session.controller()->clearLog();
        ModalDriver driver;
        QString seen;
        driver.whenModal<QDialog>([&seen](QDialog* dialog) {
            auto* tabs = dialog->findChild<QTabWidget*>(QStringLiteral("tabWidget"));
            auto* panel = dialog->findChild<QSlider*>(QStringLiteral("slider_lct_flash_intensity"));
            seen = dialog->windowTitle() + (tabs && tabs->isVisibleTo(dialog) ? " tabs" : "")
                   + (panel && panel->isVisibleTo(dialog) ? " panel" : "");
            dialog->reject();
        });
        camerasEntry(window)->trigger();
        QCOMPARE(seen, QStringLiteral("Camera Settings ") + shown);
        QVERIFY(session.controller()->requests().contains("quarvo2 get config is_changeable"));
        for (const CommandLogEntry& entry : session.controller()->log()) {
            const QList<QByteArray> words = entry.request.split(' ');
            const QByteArray has = session.controller()->peek("camera has_" + words.value(3) + ' ' + words.value(4));
            QVERIFY2(!entry.reply.startsWith("quarvo2 err")
                         || (entry.reply == "quarvo2 err 5 \"not supported by this camera\"" && has != "yes"),
                     entry.request + " -> " + entry.reply + ", has " + has);
        }
        QCOMPARE(session.messages()->entries(), QStringList());
    }

    // The dialog opens over the central area, clear of the command log, and the opening's
    // heading stands in the log before the first request of its loading.
    void openingsAreHeadedAndLeaveTheLogInSight()
    {
        ControllerSession session;
        HostWindow window(&session, kPluginDir);
        window.loadModules();
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        auto* logDock = window.findChild<QDockWidget*>(QStringLiteral("commandLogDock"));
        const QWidget* stage = window.centralWidget();
        session.controller()->clearLog();
        ModalDriver driver;
        QRect dialog;
        driver.whenModal<QDialog>([&dialog](QDialog* modal) {
            dialog = modal->frameGeometry();
            modal->close();
        });
        camerasEntry(window)->trigger();
        const QRect log(logDock->mapToGlobal(QPoint(0, 0)), logDock->size());
        QVERIFY(log.width() > 300 && !dialog.isEmpty() && !dialog.intersects(log));
        QVERIFY(qAbs(dialog.center().x() - stage->mapToGlobal(stage->rect().center()).x()) <= 1);
        const QStringList lines = window.findChild<CommandLogPanel*>(QStringLiteral("commandLogPanel"))->text().split('\n');
        QCOMPARE(lines.filter(QRegularExpression(QStringLiteral("^===="))), QStringList(kOpened));
        const int at = lines.indexOf(kOpened);
        QCOMPARE(LogLine.match(lines.value(at + 1)).captured(2), QString::fromLatin1(session.controller()->requests().first()));
    }

    // Each log line has the time sent, the round trip the host waited (a late answer
    // included) and the fault that hit the request; the filter, Save and Clear work on it.
    void commandLog()
    {
        ControllerSession session;
        HostWindow window(&session, kPluginDir);
        SimulatedController* controller = session.controller();
        controller->addFault(ControllerFixture::rule(FaultRule::Late, QStringLiteral("quarvo2 get camera number_of_cameras"),
                                                     QByteArray(), 1, 40));
        FaultRule busy = ControllerFixture::rule(FaultRule::Fail, QStringLiteral("quarvo2 get camera flash_intensity c02"), "camera busy");
        busy.name = QStringLiteral("busy c02");
        controller->addFault(busy);
        controller->addFault(ControllerFixture::rule(FaultRule::Drop, QStringLiteral("quarvo2 get camera flash_intensity c03")));
        session.clearTraffic();
        int value = 0;
        session.io()->getInt(&value, "camera number_of_cameras");
        session.io()->getInt(&value, "camera flash_intensity c%02d", 2);
        session.io()->getInt(&value, "camera flash_intensity c%02d", 3);
        const QStringList lines = CommandLogPanel::lines(session);
        QStringList exchanges;
        for (const QString& line : lines)
            exchanges << LogLine.match(line).captured(2) + " | " + LogLine.match(line).captured(3);
        QCOMPARE(exchanges, QStringList() << "quarvo2 get camera number_of_cameras | quarvo2 set camera number_of_cameras 4   "
                                   "[fault: late quarvo2 get camera number_of_cameras]"
                                << "quarvo2 get camera flash_intensity c02 | quarvo2 err 7 \"camera busy\"   [fault: busy c02]"
                                << "quarvo2 get camera flash_intensity c03 | (no reply: connection dropped by the "
                                   "controller)   [fault: drop quarvo2 get camera flash_intensity c03]");
        QVERIFY2(LogLine.match(lines.first()).captured(1).toDouble() >= 40.0, qPrintable(lines.first()));
        QCOMPARE(lines.first().left(12), session.traffic().first().sent.toString(QStringLiteral("HH:mm:ss.zzz")));

        auto* panel = window.findChild<CommandLogPanel*>(QStringLiteral("commandLogPanel"));
        auto* filter = window.findChild<QLineEdit*>(QStringLiteral("commandLogFilter"));
        QTest::keyClicks(filter, QStringLiteral("C02"));
        const QString shown = panel->text();
        QCOMPARE(LogLine.match(shown).captured(2), QStringLiteral("quarvo2 get camera flash_intensity c02"));
        QTemporaryDir dir;
        const QString file = dir.filePath(QStringLiteral("log.txt"));
        ModalDriver driver;
        driver.whenModal<QFileDialog>([&file](QFileDialog* dialog) {
            dialog->selectFile(file);
            QMetaObject::invokeMethod(dialog, "accept");
        });
        window.findChild<QPushButton*>(QStringLiteral("commandLogSave"))->click();
        QFile saved(file);
        QVERIFY2(saved.open(QIODevice::ReadOnly) && saved.readAll() == shown.toUtf8() + '\n', "Save wrote what is shown");
        window.findChild<QPushButton*>(QStringLiteral("commandLogClear"))->click();
        QVERIFY(panel->text().isEmpty() && session.traffic().isEmpty());
    }

    void options_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("result"); // version|language|details|controller|port|time-out, or the error
        QTest::newRow("none") << QStringList() << "0||0||0|3000";
        QTest::newRow("Austrian German") << QStringList{"--language", "de_AT"} << "0|de_AT|0||0|3000";
        QTest::newRow("no language") << QStringList{"--language", "xx"} << "--language needs a language code, such as de or en";
        QTest::newRow("controller") << QStringList{"--controller", "tracker:4711", "--details"} << "0||1|tracker|4711|3000";
        QTest::newRow("time-out") << QStringList{"--controller", "[::1]:9", "--reply-timeout", "250"} << "0||0|::1|9|250";
        QTest::newRow("with a scenario") << QStringList{"--controller", "h:1", "--scenario", "legacy"}
                                         << "--scenario and --controller exclude each other: the controller serves its own scenario";
        QTest::newRow("port 0") << QStringList{"--controller", "h:0"} << "--controller needs a port other than 0";
        QTest::newRow("port beyond") << QStringList{"--controller", "h:65536"}
                                     << "\"h:65536\" is no address: write HOST:PORT, such as 127.0.0.1:4711";
        QTest::newRow("bad time-out") << QStringList{"--reply-timeout", "0"} << "--reply-timeout needs a number of milliseconds, 1 or more";
    }

    void options()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, result);
        HostOptions o;
        QString error;
        const bool ok = HostOptions::parse(QStringList(QStringLiteral("quarvo2-host")) << arguments, &o, &error);
        QCOMPARE(ok ? QStringLiteral("%1|%2|%3|%4|%5|%6").arg(int(o.showVersion)).arg(o.language).arg(int(o.details))
                          .arg(o.controllerHost).arg(o.controllerPort).arg(o.replyTimeoutMs) : error, result);
    }

    // What the executable prints and how it ends; %1 is a scratch folder.
    void commandLine_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("exitCode");
        QTest::addColumn<QString>("out"); // what stdout holds, pieces separated by '|'
        QTest::addColumn<QString>("err"); // what stderr holds
        QTest::newRow("version") << QStringList{"--version"} << "0" << "quarvo2-host " QUARVO_VERSION "\n" << "";
        // No display: the pictures, and the log of the controller in use.
        QTest::newRow("headless") << QStringList{"--output", "%1/pictures", "--details"} << "0"
                                  << "No display found: running headless, pictures go to %1/pictures\n|saved 10 picture(s) with and "
                                     "without details, closed with Cancel\n\nPictures:\n  %1/pictures/host.png\n|\nCommand log "
                                     "(simulated, scenario \"default\"):\n" << "";
        QTest::newRow("bad scenario") << QStringList{"--headless", "--scenario", "%1/broken.json"} << "2" << ""
                                      << "Cannot load scenario %1/broken.json: %1/broken.json:3: ";
        // A file where the output folder should be: no picture can be written.
        QTest::newRow("unwritable pictures") << QStringList{"--headless", "--output", "%1/broken.json/pictures"} << "1"
                                             << "opened \"Hardware\" > \"Cameras\": saved 0 picture(s)"
                                             << "Could not write %1/broken.json/pictures/host.png\n";
    }

    void commandLine()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, exitCode);
        QFETCH(QString, out);
        QFETCH(QString, err);
        QTemporaryDir dir;
        QVERIFY(!scratchFile(dir, QStringLiteral("broken.json"), "{\n  \"protocol\": \"1.27.0\",\n  \"cameras\": [ oops ]\n}\n").isEmpty());
        const QStringList run = runHost(arguments.replaceInStrings(QStringLiteral("%1"), dir.path()));
        QCOMPARE(run.value(0), exitCode);
        for (const QString& piece : out.replace(QStringLiteral("%1"), dir.path()).split('|'))
            QVERIFY2(run.value(1).contains(piece), qPrintable(run.value(1)));
        QVERIFY2(run.value(2).contains(err.replace(QStringLiteral("%1"), dir.path())), qPrintable(run.value(2)));
    }
};

QTEST_MAIN(tst_Host)
#include "tst_host.moc"
