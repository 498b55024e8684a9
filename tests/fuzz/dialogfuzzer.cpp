// The whole camera settings dialog behind a hostile link: the simulated controller
// answers the real vocabulary, and the input mutates those answers one request after
// the other. The dialog is built, opened, touched by the operator (every pending
// display write runs) and ended with OK or Cancel, with every question answered; the
// sanitizers judge what happens on the way.
//   byte 0: the system: the camera table at protocol 1.9, 1.17 or 1.27, or the all-in-one
//           panel; bit 2 chooses OK or Cancel;
//   then, per request but the camera counts, one byte: below 0x80 the real reply goes
//   back; otherwise its low bits choose a mutation (a hostile value, the next input bytes up to '\n' as the value,
//   a refusal, no reply, the reply cut short, or one byte of it changed).
#include <dialogscenarios.h>
#include <displaytimers.h>
#include <modaldriver.h>

#include <CameraSettingsDlg.h>
#include <BackendVersions.h>
#include <ControllerLink.h>
#include <IOManager.h>
#include <inprocesslink.h>
#include <simulatedcontroller.h>

#include <QApplication>
#include <QPushButton>
#include <QTimer>

#include <cstdint>

namespace {

// Forwards to the simulated controller and mutates its replies as the input says.
class MutatingLink : public ControllerLink
{
public:
    MutatingLink(SimulatedController* controller, const QByteArray& input) : m_real(controller), m_input(input) {}

    bool transact(const QByteArray& request, QByteArray* reply) override
    {
        static const QList<QByteArray> hostile = {
            "-2147483648", "2147483647", "0", "-1", "nan", "inf", "-inf", "1e308", "-1e308", "",
            QByteArray(99, 'x'), QByteArray(5000, 'y'), "\"unbalanced", "%n%s%s", "yes", "no", "auto", "none"};
        const bool answered = m_real.transact(request, reply);
        QByteArray& line = *reply;
        // The camera counts build a page per camera up to their cap of 999, which takes
        // longer than a fuzz run allows per input (the hostile controller suite checks
        // the cap on the overview's own count).
        const bool count = request.endsWith(" number_of_cameras") || request.endsWith(" number_of_missing_cameras");
        const unsigned char choice = count ? 0 : nextByte();
        if (choice < 0x80)
            return answered;
        // The path of a get, or the path and value of a set.
        const QByteArray head = "quarvo2 set " + request.mid(12) + ' ';
        switch (choice % 6) {
        case 0: line = head + hostile.at(nextByte() % hostile.size()); break;
        case 1: {
            const int end = m_input.indexOf('\n', m_next);
            const int stop = end < 0 ? m_input.size() : end;
            line = head + m_input.mid(m_next, stop - m_next);
            m_next = stop + 1;
            break;
        }
        case 2: line = "quarvo2 err 7 \"hostile\""; break;
        case 3: return false;
        case 4: line.truncate(nextByte() % (line.size() + 1)); break;
        default:
            if (!line.isEmpty())
                line[nextByte() % line.size()] = char(nextByte());
            break;
        }
        return true;
    }

private:
    unsigned char nextByte() { return m_next < m_input.size() ? static_cast<unsigned char>(m_input.at(m_next++)) : 0; }

    InProcessLink m_real;
    QByteArray m_input;
    int m_next = 0;
};

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    // The operator messages of millions of openings are of no interest; a fatal one
    // still ends the run.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    // Lives until the process ends: libFuzzer never returns to a main that could end it.
    new QApplication(*argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < 1)
        return 0;
    const unsigned char system = data[0];
    SimulatedController controller;
    if (!controller.loadScenarioJson(system % 4 == 3 ? DialogScenarios::briskbox(2) : DialogScenarios::EveryFeature))
        abort();
    static const int minors[] = {9, 17, 27, 27};
    controller.setProtocolVersion(VersionInfo(1, minors[system % 4], 0));
    controller.clearLog();
    MutatingLink link(&controller, QByteArray(reinterpret_cast<const char*>(data) + 1, int(size) - 1));
    IOManager channel(&link);
    BackendVersions versions = controller.backendVersions();

    auto* dialog = new CameraSettingsDlg(&channel, nullptr, &versions);
    // Shown as the operator sees it (show events, the pages' reads), but never painted:
    // drawing the widgets would take most of each run.
    dialog->setAttribute(Qt::WA_DontShowOnScreen);
    const char* ending = system & 4 ? "btnOk" : "btnCancel";
    // Questions are answered by the modal driver's timer of its own: the operator's slot
    // below is still running when OK asks.
    ModalDriver questions;
    questions.answerEveryMessageBox([] { return QMessageBox::Yes; });
    QTimer::singleShot(0, dialog, [dialog, ending] {
        // What the pages' display debounce would send later goes out now.
        fireDisplayTimers(dialog);
        if (QWidget* tabs = dialog->findChild<QWidget*>(QStringLiteral("tabWidget")))
            QMetaObject::invokeMethod(tabs, "setCurrentIndex", Q_ARG(int, 1));
        dialog->findChild<QPushButton*>(QLatin1String(ending))->click();
        if (dialog->isVisible())
            dialog->findChild<QPushButton*>(QStringLiteral("btnCancel"))->click();
    });
    dialog->update_and_exec();
    questions.stopAnswering();
    dialog->about_to_exit();
    delete dialog;
    return 0;
}
