// The stand-in host as the frontend it stands in for: it loads the module through the
// plug-in loader, opens its dialog on every built-in system, logs the controller's
// traffic, delivers host messages, shuts the module down in order, and restores snapshots
// from its menu (its executable and options: tst_network; the snapshot tool: tst_snapshot).
#include <commandlogpanel.h>
#include <controllersession.h>
#include <hostmessagelog.h>
#include <hostwindow.h>
#include <modaldriver.h>
#include <modulehost.h>
#include <simulatedcontroller.h>

#include <QtTest>
#include <QtWidgets>

namespace {

const QString kPluginDir = QStringLiteral(QUARVO_PLUGIN_DIR);
// A command log line: time sent, round trip in milliseconds, request, reply.
const QRegularExpression LogLine(QStringLiteral("^\\d\\d:\\d\\d:\\d\\d\\.\\d{3} +(\\d+\\.\\d{3}) ms  > (.*)  < (.*)$"));
const QString kOpened = QStringLiteral("==== Camera Settings opened ====");

QAction* camerasEntry(HostWindow& window)
{
    return window.findMenu(QStringLiteral("H&ardware"))->actions().first();
}

// Answers the next file dialog with this file, as the operator picks it.
void pickFile(ModalDriver& driver, const QString& path)
{
    driver.whenModal<QFileDialog>([path](QFileDialog* dialog) {
        dialog->selectFile(path);
        QMetaObject::invokeMethod(dialog, "accept");
    });
}

} // namespace

class tst_Host : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QVERIFY2(!QApplication::activeModalWidget(), "a modal dialog was left open"); }

    // The module's life in the host: loaded from the plug-in folder (a missing one is
    // reported). Each built-in system opens the dialog it calls for, with the opening's
    // heading before its first request and no message to the operator. Each log line has
    // the round trip the host waited (a late answer included) and the fault that hit the
    // request; the filter, Save and Clear work on it. Host messages are delivered to the
    // module they are for, its entry is off while measuring, its messages are shown, the
    // snapshot menu restores, and it is shut down in order.
    void moduleLifeInTheHost()
    {
        ControllerSession session;
        HostWindow nowhere(&session, QStringLiteral("/nonexistent/plugins"));
        QVERIFY(nowhere.loadModules() == 0 && nowhere.moduleHost()->errors().value(0).contains(QStringLiteral("does not exist")));
        HostWindow window(&session, kPluginDir);
        QCOMPARE(window.loadModules(), 1);
        auto* logPanel = window.findChild<CommandLogPanel*>(QStringLiteral("commandLogPanel"));
        for (const QString& opening : QStringList{"legacy tabs", "briskbox panel", "default tabs"}) {
            QVERIFY(window.switchScenario(opening.section(' ', 0, 0)));
            session.controller()->clearLog();
            session.clearTraffic();
            ModalDriver driver;
            QString seen;
            driver.whenModal<QDialog>([&](QDialog* modal) {
                const bool tabs = modal->findChild<QTabWidget*>(QStringLiteral("tabWidget"))->isVisibleTo(modal);
                seen = modal->windowTitle() + (tabs ? " tabs" : " panel");
                modal->reject();
            });
            camerasEntry(window)->trigger(); // a switch of system loads the module again
            QCOMPARE(seen, QStringLiteral("Camera Settings ") + opening.section(' ', 1));
            const QStringList lines = logPanel->text().split('\n');
            QCOMPARE(lines.value(0), kOpened);
            QCOMPARE(LogLine.match(lines.value(1)).captured(2), QString::fromLatin1(session.controller()->requests().first()));
            QCOMPARE(session.messages()->entries(), QStringList());
        }

        session.controller()->addFault(
            FaultRule{QStringLiteral("quarvo2 get camera flash_intensity c02"), FaultRule::Late, {}, 40, 1, QStringLiteral("slow c02")});
        session.clearTraffic();
        int value = 0;
        for (int camera = 1; camera <= 3; ++camera)
            session.io()->getInt(&value, "camera flash_intensity c%02d", camera);
        const QStringList lines = CommandLogPanel::lines(session);
        QStringList exchanges;
        for (const QString& line : lines)
            exchanges << LogLine.match(line).captured(2) + " | " + LogLine.match(line).captured(3);
        QCOMPARE(exchanges, QStringList({"quarvo2 get camera flash_intensity c01 | quarvo2 set camera flash_intensity c01 60",
                                         "quarvo2 get camera flash_intensity c02 | quarvo2 set camera flash_intensity c02 40   "
                                         "[fault: slow c02]",
                                         "quarvo2 get camera flash_intensity c03 | quarvo2 set camera flash_intensity c03 60"}));
        QVERIFY2(LogLine.match(lines.at(1)).captured(1).toDouble() >= 40.0, qPrintable(lines.at(1)));

        QTest::keyClicks(window.findChild<QLineEdit*>(QStringLiteral("commandLogFilter")), QStringLiteral("C02"));
        const QString shown = logPanel->text();
        QCOMPARE(LogLine.match(shown).captured(2), QStringLiteral("quarvo2 get camera flash_intensity c02"));
        QTemporaryDir dir;
        const QString file = dir.filePath(QStringLiteral("log.txt"));
        ModalDriver driver;
        pickFile(driver, file);
        window.findChild<QPushButton*>(QStringLiteral("commandLogSave"))->click();
        QFile saved(file);
        QVERIFY2(saved.open(QIODevice::ReadOnly) && saved.readAll() == shown.toUtf8() + '\n', "Save wrote what is shown");
        window.findChild<QPushButton*>(QStringLiteral("commandLogClear"))->click();
        QVERIFY(logPanel->text().isEmpty() && session.traffic().isEmpty());

        QAction* cameras = camerasEntry(window);
        window.sendHostMessage(QStringLiteral("ShowDynReflexSuppr"));
        QCOMPARE(window.statusBar()->currentMessage(), QStringLiteral("Host message \"ShowDynReflexSuppr\" delivered to 1 receiver(s)"));
        QCOMPARE(session.io()->deliverMessage("OtherModule", 0, "host", "ShowDynReflexSuppr"), 0);
        window.setMeasuring(true);
        QVERIFY2(!cameras->isEnabled(), "the camera settings are not to be changed while measuring");
        window.setMeasuring(false);
        QVERIFY(cameras->isEnabled());
        session.io()->showMessage("standard", "QUARVO3", 1, "Error: Unable to set camera mode");
        auto* list = window.findChild<QListWidget*>(QStringLiteral("messageList"));
        QVERIFY(list->count() == 1 && list->item(0)->text().endsWith(QStringLiteral("standard / QUARVO3 (1): Error: Unable to set camera mode")));
        QCOMPARE(window.statusBar()->currentMessage(), QStringLiteral("Error: Unable to set camera mode"));

        // The snapshot entries: Save writes the file; Restore shows the differences and writes
        // only after its Restore button.
        const QString snapshot = dir.filePath(QStringLiteral("s.json"));
        pickFile(driver, snapshot);
        driver.answerMessageBox(QMessageBox::Ok);
        window.findChild<QAction*>(QStringLiteral("actionSaveSnapshot"))->trigger();
        QVERIFY(session.controller()->poke("camera flash_intensity c01 70"));
        for (const bool restore : {false, true}) {
            session.controller()->clearLog();
            pickFile(driver, snapshot);
            driver.whenModalWidget([](QWidget* modal) { return modal->objectName() == "snapshotDiffDialog"; }, [restore](QWidget* table) {
                restore ? table->findChild<QPushButton*>(QStringLiteral("restoreButton"))->click() : static_cast<QDialog*>(table)->reject();
            });
            if (restore)
                driver.answerMessageBox(QMessageBox::Ok);
            window.findChild<QAction*>(QStringLiteral("actionRestoreSnapshot"))->trigger();
            QCOMPARE(session.controller()->requests().join('\n').count("quarvo2 set"), int(restore));
        }
        QCOMPARE(session.controller()->peek("camera flash_intensity c01"), QByteArray("60"));

        QPointer<QDialog> dialog = window.findChild<QDialog*>(QStringLiteral("CameraSettingsDialog"));
        QVERIFY(dialog);
        window.unloadModules();
        QVERIFY2(session.io()->receivers("CameraSettingsModule").isEmpty(), "the receiver is unregistered");
        QVERIFY2(dialog.isNull(), "exit_module deletes the dialog");
        QVERIFY(!window.findMenu(QStringLiteral("H&ardware")));
    }
};

QTEST_MAIN(tst_Host)
#include "tst_host.moc"
