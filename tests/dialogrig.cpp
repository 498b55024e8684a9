#include "dialogrig.h"

#include <controllersession.h>
#include <hostmessagelog.h>
#include <modulehost.h>
#include <simulatedcontroller.h>

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QMainWindow>
#include <QPointer>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTabWidget>
#include <QTimer>
#include <QtTest>

namespace {

// Polls until a modal widget of type T shows up (other than `not`), then runs fn on it;
// gives up after about three seconds. A short interval: the look that finds the dialog
// comes as soon as its modal event loop runs, so that an opening waits for nothing.
template <typename T>
void whenModal(std::function<void(T*)> fn, QWidget* notThis = nullptr, int triesLeft = 3000)
{
    auto* modal = qobject_cast<T*>(QApplication::activeModalWidget());
    if (!modal || modal == notThis) {
        if (triesLeft > 0)
            QTimer::singleShot(1, [=] { whenModal<T>(fn, notThis, triesLeft - 1); });
        else
            qWarning("no modal widget showed up");
        return;
    }
    fn(modal);
}

MessageBoxSeen seenOf(const QMessageBox* box)
{
    MessageBoxSeen seen;
    seen.title = box->windowTitle();
    seen.text = box->text();
    seen.informativeText = box->informativeText();
    seen.icon = box->icon();
    seen.buttons = box->standardButtons();
    seen.defaultButton = box->standardButton(box->defaultButton());
    seen.parent = box->parentWidget();
    return seen;
}

} // namespace

const QString ConfigurationEvent = QStringLiteral("GlobalEvent|ConfigurationModule|1|ActiveConfigurationChanged");

QString get(const QString& path)
{
    return QStringLiteral("quarvo2 get ") + path;
}

QString set(const QString& path)
{
    return QStringLiteral("quarvo2 set ") + path;
}

QString operatorError(const QString& text)
{
    return QStringLiteral("standard|QUARVO3|1|") + text;
}

int fireDisplayTimers(QObject* root)
{
    static const QStringList names{QStringLiteral("timerDisplayIntensity"), QStringLiteral("timerDisplayRingIntensity")};
    int fired = 0;
    for (QTimer* timer : root->findChildren<QTimer*>()) {
        if (!names.contains(timer->objectName()) || !timer->isActive())
            continue;
        // What the timer would do when its time is up, now: the pages' debounce is no
        // subject of the suites that drive the dialog.
        timer->stop();
        QMetaObject::invokeMethod(timer, "timeout");
        ++fired;
    }
    return fired;
}

QWidget* findPageWidget(QTabWidget* tabs, int tab, const char* name)
{
    QWidget* page = tabs ? tabs->widget(tab) : nullptr;
    return page ? page->findChild<QWidget*>(QLatin1String(name)) : nullptr;
}

DialogRig::DialogRig() : m_session(new ControllerSession)
{
}

DialogRig::~DialogRig()
{
    if (m_host)
        m_host->shutDown();
    m_host.reset();
    m_window.reset();
    m_session.reset();
}

SimulatedController* DialogRig::controller() const
{
    return m_session->controller();
}

bool DialogRig::useScenario(const QString& builtInName)
{
    QString error;
    const bool ok = m_session->loadScenario(builtInName, &error);
    if (!ok)
        qWarning("%s", qPrintable(error));
    return ok;
}

bool DialogRig::useScenarioJson(const QByteArray& json)
{
    QString error;
    const bool ok = controller()->loadScenarioJson(json, &error);
    if (!ok)
        qWarning("%s", qPrintable(error));
    m_session->readBackendVersions();
    return ok;
}

void DialogRig::setProtocol(const VersionInfo& version)
{
    controller()->setProtocolVersion(version);
    m_session->readBackendVersions();
}

void DialogRig::poke(const QByteArray& setTail)
{
    if (!controller()->poke(setTail))
        qWarning("poke refused: %s", setTail.constData());
}

bool DialogRig::start()
{
    // What building the dialog asks counts: the all-in-one panel checks its cameras then.
    mark();
    m_window.reset(new QMainWindow);
    m_host.reset(new ModuleHost);
    ModuleHost::Context context;
    context.commandManager = m_session->io();
    context.moduleParent = m_window.get();
    context.backendVersions = m_session->backendVersions();
    if (m_host->loadModules(QStringLiteral(QUARVO_PLUGIN_DIR), context) != 1)
        return false;
    const QList<_GuiElement*> elements = m_host->guiElements();
    if (elements.size() != 1)
        return false;
    m_dialog = qobject_cast<QDialog*>(elements.first()->content);
    m_action = elements.first()->menu_entry;
    if (!m_dialog || !m_action)
        return false;
    QObject::connect(m_dialog, &QDialog::finished, [this](int result) { m_result = result; });
    return true;
}

void DialogRig::open(const std::function<void()>& fn)
{
    m_result = -1;
    QPointer<QDialog> dialog = m_dialog;
    // A message box nobody answers would hold the test forever: note it and close it.
    QTimer watchdog;
    QObject::connect(&watchdog, &QTimer::timeout, [this] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            qWarning("unexpected message box: %s", qPrintable(box->text()));
            m_boxes << seenOf(box);
            box->reject();
        }
    });
    watchdog.start(3000);
    whenModal<QDialog>([this, fn, dialog](QDialog* modal) {
        if (modal != dialog)
            return;
        // Loading moved the pages' display sliders and so armed their debounce timers.
        fireDisplayTimers(modal);
        if (fn)
            fn();
        if (dialog && dialog->isVisible())
            dialog->reject();
    });
    m_action->trigger();
}

void DialogRig::answerNextMessageBox(QMessageBox::StandardButton button)
{
    whenModal<QMessageBox>([this, button](QMessageBox* box) {
        m_boxes << seenOf(box);
        box->button(button)->click();
    });
}

QStandardItemModel* DialogRig::model() const
{
    // The camera table is the dialog's own; the pages keep small models of their own.
    return m_dialog ? m_dialog->findChild<QStandardItemModel*>(QString(), Qt::FindDirectChildrenOnly) : nullptr;
}

QTabWidget* DialogRig::tabs() const
{
    return qobject_cast<QTabWidget*>(widget("tabWidget"));
}

QWidget* DialogRig::widget(const char* name) const
{
    return m_dialog ? m_dialog->findChild<QWidget*>(QLatin1String(name)) : nullptr;
}

void DialogRig::edit(int row, int column, const QVariant& value)
{
    QStandardItemModel* table = model();
    table->setData(table->index(row, column), value, Qt::EditRole);
}

QVariant DialogRig::cell(int row, int column) const
{
    QStandardItemModel* table = model();
    return table->data(table->index(row, column));
}

QStringList DialogRig::requests() const
{
    return allRequests().mid(m_mark);
}

QStringList DialogRig::allRequests() const
{
    QStringList lines;
    for (const QByteArray& line : controller()->requests())
        lines << QString::fromLatin1(line);
    return lines;
}

void DialogRig::mark()
{
    m_mark = controller()->requests().size();
    m_messageMark = m_session->messages()->entries().size();
}

QStringList DialogRig::messages() const
{
    return m_session->messages()->entries().mid(m_messageMark);
}
