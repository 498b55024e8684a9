#ifndef HOSTWINDOW_H
#define HOSTWINDOW_H

#include <QMainWindow>

class CommandLogPanel;
class ControllerSession;
class ModuleHost;
class QAction;
class QActionGroup;
class QLabel;
class QListWidget;
class QMenu;

// The stand-in frontend's main window: the modules' menus, the controller's command
// log, the messages the modules post, and host controls for testing modules.
class HostWindow : public QMainWindow
{
    Q_OBJECT

public:
    HostWindow(ControllerSession* session, const QString& pluginDir, QWidget* parent = nullptr);
    ~HostWindow() override;

    ModuleHost* moduleHost() const { return m_modules; }
    // The menu bar menu with this text (mnemonics included), or null.
    QMenu* findMenu(const QString& title) const;

    // Loads the modules and builds their menus; returns how many modules were loaded.
    int loadModules();
    // Shuts the modules down in order and removes their menus.
    void unloadModules();

public slots:
    // Sends a host message to the camera settings module's receivers.
    void sendHostMessage(const QString& text);
    // Switches the controller scenario; modules are reloaded since they read the
    // system model when they are built.
    bool switchScenario(const QString& nameOrFile);
    void setMeasuring(bool measuring);

protected:
    void closeEvent(QCloseEvent* event) override;
    // Module dialogs open over the window's central area, each opening heads its section
    // of the command log, and one that opens while the controller is gone says so.
    bool eventFilter(QObject* watched, QEvent* event) override;

private slots:
    void showPostedMessage(const QString& type, const QString& source, int level, const QString& text);
    void openScenarioFile();
    void askForHostMessage();
    void showAbout();

private:
    void buildHostMenu();
    void buildModuleMenus();
    void updateTitle();
    void placeOverStage(QWidget* dialog) const;
    void reportSilentController();

    ControllerSession* m_session;
    QString m_pluginDir;
    ModuleHost* m_modules;
    CommandLogPanel* m_log;
    QListWidget* m_messages;
    QLabel* m_summary;
    QLabel* m_connection; // where the controller is and whether the last call reached it
    QList<QMenu*> m_moduleMenus;
    QList<QWidget*> m_moduleContents; // the modules' dialogs, watched for their openings
    QMenu* m_helpMenu = nullptr;
    QMenu* m_scenarioMenu = nullptr;
    QActionGroup* m_scenarioGroup = nullptr;
    bool m_measuring = false;
};

#endif // HOSTWINDOW_H
