#include "hostwindow.h"

#include "commandlogpanel.h"
#include "controllersession.h"
#include "hostmessagelog.h"
#include "modulehost.h"
#include "simulatedcontroller.h"
#include "snapshotmenu.h"

#include <TcpControllerLink.h>

#include <QAction>
#include <QActionGroup>
#include <QCloseEvent>
#include <QDir>
#include <QDockWidget>
#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QListWidget>
#include <QMenuBar>
#include <QMessageBox>
#include <QScreen>
#include <QStatusBar>
#include <QTime>

namespace {

const char* const kCameraSettingsModule = "CameraSettingsModule";

// While the system measures, a module's entry can be used only when the module allows it.
void enableForMeasuring(_GuiElement* element, bool measuring)
{
    element->menu_entry->setEnabled(!measuring || element->action_active_during_measurement != 0);
}

} // namespace

HostWindow::HostWindow(ControllerSession* session, const QString& pluginDir, QWidget* parent)
    : QMainWindow(parent),
      m_session(session),
      m_pluginDir(pluginDir),
      m_modules(new ModuleHost(this)),
      m_log(new CommandLogPanel),
      m_messages(new QListWidget),
      m_summary(new QLabel),
      m_connection(new QLabel)
{
    setObjectName(QStringLiteral("hostWindow"));
    // Room for the module dialogs over the central area (the camera settings dialog is
    // about 1300 x 760 once its pages are filled) with the command log beside it, so
    // that an opened dialog leaves the log in sight.
    resize(1900, 900);

    m_summary->setObjectName(QStringLiteral("hostSummary"));
    m_summary->setAlignment(Qt::AlignCenter);
    m_summary->setWordWrap(true);
    setCentralWidget(m_summary);

    auto* logDock = new QDockWidget(tr("Controller command log"), this);
    logDock->setObjectName(QStringLiteral("commandLogDock"));
    logDock->setWidget(m_log);
    addDockWidget(Qt::RightDockWidgetArea, logDock);
    m_log->watch(session);

    auto* messageDock = new QDockWidget(tr("Messages"), this);
    messageDock->setObjectName(QStringLiteral("messageDock"));
    m_messages->setObjectName(QStringLiteral("messageList"));
    messageDock->setWidget(m_messages);
    addDockWidget(Qt::RightDockWidgetArea, messageDock);
    resizeDocks({logDock}, {560}, Qt::Horizontal);
    resizeDocks({logDock, messageDock}, {560, 180}, Qt::Vertical);
    connect(session->messages(), &HostMessageLog::messagePosted, this, &HostWindow::showPostedMessage);

    m_connection->setObjectName(QStringLiteral("connectionState"));
    m_connection->setText(tr("Controller: %1").arg(session->connectionState()));
    statusBar()->addPermanentWidget(m_connection);
    connect(session, &ControllerSession::connectionStateChanged, this, [this](const QString& state) {
        m_connection->setText(tr("Controller: %1").arg(state));
    });
    statusBar()->showMessage(tr("Ready"));
    buildHostMenu();
    m_helpMenu = menuBar()->addMenu(tr("&Help"));
    m_helpMenu->setObjectName(QStringLiteral("helpMenu"));
    QAction* about = m_helpMenu->addAction(tr("&About quarvo2-host..."), this, &HostWindow::showAbout);
    about->setObjectName(QStringLiteral("actionAbout"));
    updateTitle();
}

HostWindow::~HostWindow()
{
    unloadModules();
}

QMenu* HostWindow::findMenu(const QString& title) const
{
    for (QAction* action : menuBar()->actions())
        if (action->menu() && action->text() == title)
            return action->menu();
    return nullptr;
}

int HostWindow::loadModules()
{
    ModuleHost::Context context;
    context.commandManager = m_session->io();
    context.moduleParent = this;
    context.backendVersions = m_session->backendVersions();
    const int count = m_modules->loadModules(m_pluginDir, context);
    for (const QString& error : m_modules->errors())
        showPostedMessage(QStringLiteral("host"), QStringLiteral("ModuleHost"), 1, error);
    buildModuleMenus();
    for (_GuiElement* element : m_modules->guiElements()) {
        if (element->content && !m_moduleContents.contains(element->content)) {
            element->content->installEventFilter(this);
            m_moduleContents << element->content;
        }
    }
    // What the modules asked while they were built is not part of a dialog's opening.
    m_session->closeSection();
    updateTitle();
    return count;
}

void HostWindow::unloadModules()
{
    // The menus hold the modules' actions; take them out before the modules go.
    for (QMenu* menu : qAsConst(m_moduleMenus))
        delete menu;
    m_moduleMenus.clear();
    m_moduleContents.clear();
    m_modules->shutDown();
}

void HostWindow::buildHostMenu()
{
    QMenu* host = menuBar()->addMenu(tr("&Host"));
    host->setObjectName(QStringLiteral("hostMenu"));

    m_scenarioMenu = host->addMenu(tr("&Scenario"));
    m_scenarioGroup = new QActionGroup(this);
    for (const QString& name : SimulatedController::builtInScenarios()) {
        QAction* action = m_scenarioMenu->addAction(name);
        action->setCheckable(true);
        action->setChecked(name == m_session->scenarioName());
        m_scenarioGroup->addAction(action);
        connect(action, &QAction::triggered, this, [this, name] { switchScenario(name); });
    }
    m_scenarioMenu->addSeparator();
    m_scenarioMenu->addAction(tr("&Open scenario file..."), this, &HostWindow::openScenarioFile);
    // A controller on the network serves its own scenario.
    m_scenarioMenu->setEnabled(!m_session->isRemote());

    QAction* dyn = host->addAction(tr("Send \"ShowDynReflexSuppr\""));
    dyn->setObjectName(QStringLiteral("actionShowDynReflexSuppr"));
    dyn->setStatusTip(tr("Tell the camera settings module to always show dynamic reflex suppression"));
    connect(dyn, &QAction::triggered, this, [this] { sendHostMessage(QStringLiteral("ShowDynReflexSuppr")); });
    host->addAction(tr("Send other host &message..."), this, &HostWindow::askForHostMessage);

    QAction* measuring = host->addAction(tr("&Measuring"));
    measuring->setObjectName(QStringLiteral("actionMeasuring"));
    measuring->setCheckable(true);
    measuring->setStatusTip(tr("Pretend the system is measuring: entries not meant for measurement are disabled"));
    connect(measuring, &QAction::toggled, this, &HostWindow::setMeasuring);
    host->addMenu(new SnapshotMenu(m_session, this));

    host->addSeparator();
    QAction* quit = host->addAction(tr("&Quit"), this, &QWidget::close);
    quit->setShortcut(QKeySequence::Quit);
}

void HostWindow::buildModuleMenus()
{
    for (_GuiElement* element : m_modules->guiElements()) {
        if (!element->menu_entry)
            continue;
        QMenu* menu = findMenu(element->menu_name);
        if (!menu) {
            // The modules' menus come between the host's own menu and Help.
            menu = new QMenu(element->menu_name, menuBar());
            menuBar()->insertMenu(m_helpMenu->menuAction(), menu);
            m_moduleMenus << menu;
        }
        menu->addAction(element->menu_entry);
        enableForMeasuring(element, m_measuring);
    }
}

void HostWindow::updateTitle()
{
    const BackendVersions* versions = m_session->backendVersions();
    const QString controller = m_session->isRemote()
                                   ? tr("%1 on the network").arg(m_session->tcpLink()->address())
                                   : tr("simulated, scenario \"%1\"").arg(m_session->scenarioName());
    setWindowTitle(m_session->isRemote() ? tr("QUARVO stand-in host - controller %1").arg(m_session->tcpLink()->address())
                                         : tr("QUARVO stand-in host - scenario %1").arg(m_session->scenarioName()));
    const QStringList names = m_modules->descriptions();
    m_summary->setText(tr("Controller: %1, system model %2, protocol %3\n\nModules: %4")
                           .arg(controller, versions->atcModel(), versions->protocol().toString(),
                                names.isEmpty() ? tr("none") : names.join(QStringLiteral(", "))));
}

void HostWindow::sendHostMessage(const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    const int delivered = m_session->io()->deliverMessage(kCameraSettingsModule, 0, "host", bytes.constData());
    statusBar()->showMessage(tr("Host message \"%1\" delivered to %2 receiver(s)").arg(text).arg(delivered), 5000);
}

bool HostWindow::switchScenario(const QString& nameOrFile)
{
    unloadModules();
    QString error;
    const bool ok = m_session->loadScenario(nameOrFile, &error);
    if (!ok)
        QMessageBox::warning(this, tr("Scenario"), error);
    loadModules();
    for (QAction* action : m_scenarioGroup->actions())
        action->setChecked(action->text() == m_session->scenarioName());
    return ok;
}

void HostWindow::setMeasuring(bool measuring)
{
    m_measuring = measuring;
    for (_GuiElement* element : m_modules->guiElements())
        if (element->menu_entry)
            enableForMeasuring(element, measuring);
}

void HostWindow::reportSilentController()
{
    QString why = m_session->tcpLink()->lastError();
    if (!why.isEmpty())
        why[0] = why.at(0).toUpper();
    const QString text = tr("%1; the dialog shows no settings read from the controller.").arg(why);
    showPostedMessage(QStringLiteral("host"), QStringLiteral("Controller"), 1, text);
    statusBar()->showMessage(text);
}

void HostWindow::closeEvent(QCloseEvent* event)
{
    unloadModules();
    event->accept();
}

bool HostWindow::eventFilter(QObject* watched, QEvent* event)
{
    // Spontaneous shows and hides come from minimising and restoring, not from openings.
    const bool showOrHide = event->type() == QEvent::Show || event->type() == QEvent::Hide;
    auto* widget = qobject_cast<QWidget*>(watched);
    if (!showOrHide || event->spontaneous() || !widget || !widget->isWindow() || !m_moduleContents.contains(widget))
        return QMainWindow::eventFilter(watched, event);
    if (event->type() == QEvent::Show) {
        placeOverStage(widget);
        m_session->headSection(tr("%1 opened").arg(widget->windowTitle()));
        // A dialog opened while the controller is unreachable or does not answer shows
        // its fallbacks; the operator learns why where the messages are.
        if (m_session->isRemote() && !m_session->controllerAnswers())
            reportSilentController();
    } else if (event->type() == QEvent::Hide) {
        m_session->closeSection();
    }
    return QMainWindow::eventFilter(watched, event);
}

void HostWindow::placeOverStage(QWidget* dialog) const
{
    if (!isVisible())
        return;
    // Centred over the central area instead of the whole window, so that the docks on
    // its right stay in sight; a dialog wider than that area reaches out to the left,
    // as far as the screen goes, and keeps its title bar below the window's top.
    const QWidget* stage = centralWidget();
    const QRect area(stage->mapToGlobal(QPoint(0, 0)), stage->size());
    const QSize size = dialog->frameGeometry().size();
    QPoint topLeft = area.center() - QPoint(size.width() / 2, size.height() / 2);
    topLeft.setX(qMin(topLeft.x(), area.right() + 1 - size.width()));
    topLeft.setX(qMax(topLeft.x(), screen()->availableGeometry().left()));
    topLeft.setY(qMax(topLeft.y(), frameGeometry().top()));
    dialog->move(topLeft);
}

void HostWindow::showAbout()
{
    const QStringList modules = m_modules->descriptions();
    QMessageBox::about(this, tr("About quarvo2-host"),
                       tr("quarvo2-host %1\n\nA stand-in for the QUARVO frontend: it loads the frontend modules as the "
                          "frontend does and runs them against a simulated tracking controller or one on the network.\n\n"
                          "Qt %2\n\nModules loaded from %3:\n%4")
                           .arg(QStringLiteral(QUARVO_VERSION), QString::fromLatin1(qVersion()),
                                QDir::toNativeSeparators(QDir(m_pluginDir).absolutePath()),
                                modules.isEmpty() ? tr("none") : modules.join(QLatin1Char('\n'))));
}

void HostWindow::showPostedMessage(const QString& type, const QString& source, int level, const QString& text)
{
    const QString line = QStringLiteral("%1  %2 / %3 (%4): %5")
                             .arg(QTime::currentTime().toString(QStringLiteral("HH:mm:ss")), type, source)
                             .arg(level)
                             .arg(text);
    m_messages->addItem(line);
    m_messages->scrollToBottom();
    if (type == QLatin1String("standard"))
        statusBar()->showMessage(text, 10000);
}

void HostWindow::openScenarioFile()
{
    const QString file = QFileDialog::getOpenFileName(this, tr("Open scenario"), QString(),
                                                      tr("Scenarios (*.json);;All files (*)"));
    if (!file.isEmpty())
        switchScenario(file);
}

void HostWindow::askForHostMessage()
{
    bool ok = false;
    const QString text = QInputDialog::getText(this, tr("Host message"),
                                               tr("Text delivered to \"%1\":").arg(kCameraSettingsModule),
                                               QLineEdit::Normal, QString(), &ok);
    if (ok)
        sendHostMessage(text);
}
