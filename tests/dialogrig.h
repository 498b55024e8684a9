#ifndef DIALOGRIG_H
#define DIALOGRIG_H

// The camera settings dialog as the stand-in host runs it, for the dialog's suites: the
// host's controller session on the simulated controller, the module loaded from the
// plug-in folder by the host's module loader, the menu entry triggered, the modal dialog
// driven from a timer, and the controller's command log and the host's message log read
// back.

#include <VersionInfo.h>
#include <faultrule.h>

#include <QByteArray>
#include <QMessageBox>
#include <QMetaType>
#include <QStringList>

#include <functional>
#include <memory>

class ControllerSession;
class ModuleHost;
class QAction;
class QDialog;
class QMainWindow;
class QStandardItemModel;
class QTabWidget;
class QWidget;
class SimulatedController;

// What a message box showed before the rig answered it.
struct MessageBoxSeen
{
    QString title;
    QString text;
    QString informativeText;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QMessageBox::StandardButtons buttons;
    QMessageBox::StandardButton defaultButton = QMessageBox::NoButton;
    QWidget* parent = nullptr;
};

Q_DECLARE_METATYPE(VersionInfo)

class DialogRig
{
public:
    DialogRig();
    ~DialogRig();

    // Before start(): the system the host connects to.
    bool useScenario(const QString& builtInName);
    bool useScenarioJson(const QByteArray& json);
    void setProtocol(const VersionInfo& version);
    void poke(const QByteArray& setTail);

    // The host loads the module, hands it its context and takes its menu entry.
    bool start();
    // Triggers the menu entry; fn runs inside the open dialog once the writes that the
    // camera pages' loading armed have run. A dialog that fn left open is cancelled.
    void open(const std::function<void()>& fn = {});
    int lastResult() const { return m_result; }

    // Answers the next message box with button, after noting what it showed.
    void answerNextMessageBox(QMessageBox::StandardButton button);
    const QList<MessageBoxSeen>& messageBoxes() const { return m_boxes; }

    QDialog* dialog() const { return m_dialog; }
    QMainWindow* window() const { return m_window.get(); }
    QStandardItemModel* model() const;
    QTabWidget* tabs() const;
    QWidget* widget(const char* name) const;
    template <typename T> T* widget(const char* name) const { return qobject_cast<T*>(widget(name)); }
    // A widget of the page in tab `tab`.
    template <typename T> T* pageWidget(int tab, const char* name) const;
    // Writes a cell as the overview's editors do: through the model, recorded.
    void edit(int row, int column, const QVariant& value);
    QVariant cell(int row, int column) const;

    SimulatedController* controller() const;
    // Request lines since the last mark() (or since start() began).
    QStringList requests() const;
    void mark();
    QStringList allRequests() const;
    // "type|source|level|text" of the host's messages since the last mark().
    QStringList messages() const;

private:
    std::unique_ptr<ControllerSession> m_session;
    std::unique_ptr<QMainWindow> m_window;
    std::unique_ptr<ModuleHost> m_host;
    QDialog* m_dialog = nullptr;
    QAction* m_action = nullptr;
    int m_mark = 0;
    int m_messageMark = 0;
    int m_result = -1;
    QList<MessageBoxSeen> m_boxes;
};

QWidget* findPageWidget(QTabWidget* tabs, int tab, const char* name);
// Runs every pending display intensity write of the pages under root at once, as their
// debounce timers would when their time is up; returns how many there were.
int fireDisplayTimers(QObject* root);

template <typename T>
T* DialogRig::pageWidget(int tab, const char* name) const
{
    return qobject_cast<T*>(findPageWidget(tabs(), tab, name));
}

// The request line a get or a set of path sends.
QString get(const QString& path);
QString set(const QString& path);
QString operatorError(const QString& text);
extern const QString ConfigurationEvent;

#endif // DIALOGRIG_H
