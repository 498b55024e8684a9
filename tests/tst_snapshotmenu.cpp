// The stand-in host's snapshot menu as an operator uses it: the file dialogs, the table
// of differences, Cancel that writes nothing, Restore after confirming, and the
// messages for a file that is no snapshot and a snapshot of another system.
#include "snapshotstate.h"

#include <controllersession.h>
#include <hostwindow.h>
#include <simulatedcontroller.h>

#include <QAction>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QTableWidget>
#include <QtTest>

#include <functional>

// Answers the modal windows the menu opens, in order, from a timer that looks for the
// next one; each answer closes its window.
class ModalAnswers : public QObject
{
public:
    ModalAnswers()
    {
        m_timer.setInterval(0);
        connect(&m_timer, &QTimer::timeout, this, [this] {
            QWidget* modal = QApplication::activeModalWidget();
            if (!modal || m_answers.isEmpty())
                return;
            m_answers.takeFirst()(modal);
            if (m_answers.isEmpty())
                m_timer.stop();
        });
    }
    void add(const std::function<void(QWidget*)>& answer)
    {
        m_answers << answer;
        m_timer.start();
    }
    bool done() const { return m_answers.isEmpty(); }

private:
    QTimer m_timer;
    QList<std::function<void(QWidget*)>> m_answers;
};

class tst_SnapshotMenu : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;
    ModalAnswers m_answers;
    QStringList m_seen; // message box texts and table rows, in the order shown

    void chooseFile(const QString& path)
    {
        m_answers.add([path](QWidget* modal) {
            auto* dialog = qobject_cast<QFileDialog*>(modal);
            QVERIFY2(dialog, qPrintable(modal->metaObject()->className()));
            dialog->selectFile(path);
            QMetaObject::invokeMethod(dialog, "accept");
        });
    }
    void answerBox()
    {
        m_answers.add([this](QWidget* modal) {
            auto* box = qobject_cast<QMessageBox*>(modal);
            QVERIFY2(box, qPrintable(modal->metaObject()->className()));
            m_seen << box->text();
            box->button(QMessageBox::Ok)->click();
        });
    }
    // Notes the table's rows, then presses the button with that object name or text.
    void answerDifferences(const QString& button)
    {
        m_answers.add([this, button](QWidget* modal) {
            auto* table = modal->findChild<QTableWidget*>(QStringLiteral("differencesTable"));
            QVERIFY(table);
            for (int row = 0; row < table->rowCount(); ++row) {
                QStringList cells;
                for (int column = 0; column < table->columnCount(); ++column)
                    cells << table->item(row, column)->text();
                m_seen << cells.join(QStringLiteral(" | "));
            }
            for (QPushButton* candidate : modal->findChildren<QPushButton*>()) {
                if (candidate->objectName() == button || candidate->text() == button)
                    return candidate->click();
            }
            QFAIL(qPrintable(button));
        });
    }
    void trigger(HostWindow& window, const char* action)
    {
        m_seen.clear();
        window.findChild<QAction*>(QLatin1String(action))->trigger();
        QVERIFY(m_answers.done());
    }
    static QStringList state(const ControllerSession& session)
    {
        return controllerState([&session](const QByteArray& path) { return session.controller()->peek(path); });
    }

private slots:
    void saveCompareRestore()
    {
        ControllerSession session;
        HostWindow window(&session, QString());
        const QString file = m_dir.filePath(QStringLiteral("session.json"));
        chooseFile(file);
        answerBox();
        trigger(window, "actionSaveSnapshot");
        QCOMPARE(m_seen, QStringList(QStringLiteral("Saved 4 cameras of QUARVO to %1.").arg(file)));
        const QStringList saved = state(session);

        session.controller()->handle("quarvo2 set camera flash_intensity c01 70");
        session.controller()->handle("quarvo2 set camera mode c03 m01");
        const QStringList rows{"4711 (0x0901, c01) | flash_intensity | 60 | 70", "5933 (0x0A01, c03) | mode | m02 | m01",
                               "5933 (0x0A01, c03) | sensor_exposure | 2.5 | 1"};
        chooseFile(file);
        answerDifferences(QStringLiteral("Close"));
        trigger(window, "actionCompareSnapshot");
        QCOMPARE(m_seen, rows);

        session.controller()->clearLog();
        chooseFile(file);
        answerDifferences(QStringLiteral("Cancel"));
        trigger(window, "actionRestoreSnapshot");
        QCOMPARE(m_seen, rows);
        for (const QByteArray& request : session.controller()->requests())
            QVERIFY2(!request.startsWith("quarvo2 set"), request.constData());

        chooseFile(file);
        answerDifferences(QStringLiteral("restoreButton"));
        answerBox();
        trigger(window, "actionRestoreSnapshot");
        QCOMPARE(m_seen, rows + QStringList(QStringLiteral("c01 4711 flash_intensity: 70 -> 60\n"
                                                           "c03 5933 mode: m01 -> m02\n"
                                                           "c03 5933 sensor_exposure: 1 -> 2.5\n"
                                                           "restored 3 settings")));
        QCOMPARE(state(session), saved);
    }

    void refusesWhatItCannotRestore()
    {
        ControllerSession session;
        HostWindow window(&session, QString());
        const QString other = m_dir.filePath(QStringLiteral("other.json"));
        QFile scenario(other);
        QVERIFY(scenario.open(QIODevice::WriteOnly));
        scenario.write("{\n  \"name\": \"default\"\n}\n");
        scenario.close();
        chooseFile(other);
        answerBox();
        trigger(window, "actionCompareSnapshot");
        QCOMPARE(m_seen, QStringList(QStringLiteral("%1:1: format: not a camera settings snapshot (\"format\" is not "
                                                    "\"quarvo2-snapshot\")").arg(other)));

        const QString file = m_dir.filePath(QStringLiteral("quarvo.json"));
        chooseFile(file);
        answerBox();
        trigger(window, "actionSaveSnapshot");
        QVERIFY(session.loadScenario(QStringLiteral("briskbox"), nullptr));
        session.controller()->clearLog();
        chooseFile(file);
        answerBox();
        trigger(window, "actionRestoreSnapshot");
        QCOMPARE(m_seen, QStringList(QStringLiteral("%1 is a snapshot of a QUARVO system, the controller is a BRISKBOX "
                                                    "system; nothing was written.").arg(file)));
        for (const QByteArray& request : session.controller()->requests())
            QVERIFY2(!request.startsWith("quarvo2 set"), request.constData());
    }
};

QTEST_MAIN(tst_SnapshotMenu)
#include "tst_snapshotmenu.moc"
