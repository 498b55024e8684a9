// The stand-in host: that it loads the module as the frontend does, builds its menus,
// delivers host messages, shuts the module down in order, and that the executable
// does its job on a machine without a display.
#include "controllersession.h"
#include "hostmessagelog.h"
#include "hostwindow.h"
#include "modulehost.h"
#include "simulatedcontroller.h"

#include <QtTest>
#include <QtWidgets>

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

    void headlessRunSavesPicturesAndPrintsTheLog();
    void badScenarioEndsWithAMessage();
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

    // The host's own menu comes first, the modules' menus after it by their order numbers.
    const QList<QAction*> bar = window.menuBar()->actions();
    QCOMPARE(bar.size(), 2);
    QCOMPARE(bar.at(0)->text(), QStringLiteral("&Host"));
    QCOMPARE(bar.at(1)->menu(), hardware);
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

void tst_Host::headlessRunSavesPicturesAndPrintsTheLog()
{
    QTemporaryDir out;
    QProcess host;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.remove(QStringLiteral("DISPLAY"));
    env.remove(QStringLiteral("WAYLAND_DISPLAY"));
    env.remove(QStringLiteral("QT_QPA_PLATFORM"));
    host.setProcessEnvironment(env);
    host.start(hostBinary(), QStringList() << "--output" << out.path());
    QVERIFY2(host.waitForFinished(60000), "the headless run ends by itself");
    const QString output = QString::fromLocal8Bit(host.readAllStandardOutput());
    QCOMPARE(host.exitCode(), 0);
    QVERIFY2(output.contains(QStringLiteral("No display found")), qPrintable(output));
    QVERIFY(output.contains(QStringLiteral("opened \"H&ardware\" > \"C&ameras\"")));
    QVERIFY(output.contains(QStringLiteral("> quarvo2 get config is_changeable\n< quarvo2 set config is_changeable")));
    QVERIFY(QFileInfo(out.filePath(QStringLiteral("host.png"))).size() > 0);
    const QStringList pictures = QDir(out.path()).entryList(QStringList() << "entry1*.png");
    QVERIFY2(!pictures.isEmpty(), "a picture of the dialog");
    QImage picture(out.filePath(pictures.first()));
    QVERIFY(picture.width() >= 300 && picture.height() >= 150);
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
