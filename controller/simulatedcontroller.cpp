#include "simulatedcontroller.h"

#include "scenarioloader.h"
#include "wireformat.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>

// Resources of a static library are registered by hand, outside any namespace.
static void initScenarioResources()
{
    Q_INIT_RESOURCE(controller_scenarios);
}

namespace {

const QString kBuiltInPath = QStringLiteral(":/scenarios/%1.json");

bool readFile(const QString& path, QByteArray* contents, QString* error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        if (error)
            *error = QStringLiteral("%1:0: %2").arg(path, file.errorString());
        return false;
    }
    *contents = file.readAll();
    return true;
}

qint64 textBytes(const CommandLogEntry& entry)
{
    return entry.request.size() + entry.reply.size() + 2 * entry.fault.size();
}

} // namespace

SimulatedController::SimulatedController(QObject* parent)
    : QObject(parent)
{
    initScenarioResources();
    qRegisterMetaType<CommandLogEntry>();
    QString error;
    if (!loadBuiltInScenario(QStringLiteral("default"), &error))
        qWarning("SimulatedController: %s", qPrintable(error));
}

QStringList SimulatedController::builtInScenarios()
{
    return {QStringLiteral("default"), QStringLiteral("briskbox"), QStringLiteral("legacy")};
}

bool SimulatedController::loadBuiltInScenario(const QString& name, QString* error)
{
    if (!builtInScenarios().contains(name)) {
        if (error)
            *error = QStringLiteral("no built-in scenario %1").arg(name);
        return false;
    }
    initScenarioResources();
    QByteArray json;
    const QString path = kBuiltInPath.arg(name);
    return readFile(path, &json, error) && loadScenario(json, path, error);
}

bool SimulatedController::loadScenarioFile(const QString& path, QString* error)
{
    QByteArray json;
    return readFile(path, &json, error) && loadScenario(json, path, error);
}

bool SimulatedController::loadScenarioJson(const QByteArray& json, QString* error)
{
    return loadScenario(json, QStringLiteral("<json>"), error);
}

bool SimulatedController::loadScenario(const QByteArray& json, const QString& source, QString* error)
{
    Scenario scenario;
    if (!ScenarioLoader::load(json, source, &scenario, error))
        return false;
    m_scenarioName = scenario.name;
    m_state = scenario.state;
    clearFaults();
    for (const FaultRule& rule : qAsConst(scenario.faults))
        addFault(rule);
    return true;
}

QString SimulatedController::scenarioName() const
{
    return m_scenarioName;
}

VersionInfo SimulatedController::protocolVersion() const
{
    return m_state.protocolVersion;
}

void SimulatedController::setProtocolVersion(const VersionInfo& version)
{
    m_state.protocolVersion = version;
}

QString SimulatedController::systemModel() const
{
    return m_state.systemModel;
}

void SimulatedController::setSystemModel(const QString& model)
{
    m_state.systemModel = model;
}

BackendVersions SimulatedController::backendVersions() const
{
    VersionInfo system;
    VersionInfo controller;
    system.fromString(m_state.systemVersion);
    controller.fromString(m_state.controllerVersion);
    return BackendVersions(system, m_state.protocolVersion, controller, m_state.systemModel);
}

ControllerReply SimulatedController::handle(const QByteArray& request)
{
    QElapsedTimer timer;
    timer.start();
    CommandLogEntry entry;
    entry.request = request;
    ControllerReply reply;
    const int fault = takeFault(request);
    if (fault >= 0) {
        entry.fault = m_faults.at(fault).displayName();
        reply = applyFault(m_faults.at(fault), request);
    } else {
        reply.line = m_interpreter.execute(m_state, request);
    }
    entry.reply = reply.line;
    entry.nanoseconds = timer.nsecsElapsed();
    m_handlingNanoseconds += entry.nanoseconds;
    record(entry);
    emit commandLogged(entry);
    return reply;
}

int SimulatedController::takeFault(const QByteArray& request)
{
    const QString line = QString::fromLatin1(request);
    for (int i = 0; i < m_faults.size(); ++i) {
        FaultRule& rule = m_faults[i];
        if (rule.times == 0 || !m_faultPatterns.at(i).match(line).hasMatch())
            continue;
        if (rule.times > 0)
            --rule.times;
        return i;
    }
    return -1;
}

ControllerReply SimulatedController::applyFault(const FaultRule& rule, const QByteArray& request)
{
    ControllerReply reply;
    switch (rule.action) {
    case FaultRule::Fail:
        reply.line = WireFormat::errorLine(ControllerError::Failure, rule.text.isEmpty() ? "controller failure" : rule.text);
        break;
    case FaultRule::Reply:
        reply.line = rule.text;
        break;
    case FaultRule::Late:
        // The controller does the work; only its answer comes late.
        reply.line = m_interpreter.execute(m_state, request);
        reply.delayMs = rule.delayMs;
        break;
    case FaultRule::Drop:
        reply.drop = true;
        break;
    }
    return reply;
}

bool SimulatedController::poke(const QByteArray& setTail)
{
    const QByteArray request = "quarvo2 set " + setTail;
    return m_interpreter.execute(m_state, request, CommandInterpreter::Access::Setup) == request;
}

QByteArray SimulatedController::peek(const QByteArray& path) const
{
    const QByteArray reply = m_interpreter.query(m_state, "quarvo2 get " + path);
    const QByteArray head = "quarvo2 set " + path + ' ';
    return reply.startsWith(head) ? reply.mid(head.size()) : QByteArray();
}

void SimulatedController::record(const CommandLogEntry& entry)
{
    m_log.append(entry);
    m_logBytes += textBytes(entry);
    trimLog();
}

void SimulatedController::trimLog()
{
    if (m_logExchanges <= 0)
        return;
    // An entry that leaves the window is emptied at once, so that its text is freed now;
    // the vector moves its entries only once half of it has left, which keeps a request
    // as cheap as without the window.
    while (m_log.size() - m_logFirst > 1
           && (m_log.size() - m_logFirst > m_logExchanges || m_logBytes > m_logByteLimit)) {
        m_logBytes -= textBytes(m_log.at(m_logFirst));
        m_log[m_logFirst++] = CommandLogEntry();
    }
    if (m_logFirst > m_log.size() / 2) {
        m_log.remove(0, m_logFirst);
        m_logFirst = 0;
    }
}

void SimulatedController::setLogWindow(int exchanges, qint64 bytes)
{
    m_logExchanges = qMax(0, exchanges);
    m_logByteLimit = qMax<qint64>(0, bytes);
    trimLog();
}

QVector<CommandLogEntry> SimulatedController::log() const
{
    return m_logFirst == 0 ? m_log : m_log.mid(m_logFirst);
}

QList<QByteArray> SimulatedController::requests() const
{
    QList<QByteArray> lines;
    lines.reserve(m_log.size() - m_logFirst);
    for (int i = m_logFirst; i < m_log.size(); ++i)
        lines.append(m_log.at(i).request);
    return lines;
}

void SimulatedController::clearLog()
{
    m_log.clear();
    m_logFirst = 0;
    m_logBytes = 0;
    m_handlingNanoseconds = 0;
}

void SimulatedController::addFault(const FaultRule& rule)
{
    m_faults.append(rule);
    m_faultPatterns.append(QRegularExpression(QRegularExpression::wildcardToRegularExpression(rule.match)));
}

void SimulatedController::clearFaults()
{
    m_faults.clear();
    m_faultPatterns.clear();
}

QVector<FaultRule> SimulatedController::faults() const
{
    return m_faults;
}

qint64 SimulatedController::handlingNanoseconds() const
{
    return m_handlingNanoseconds;
}

bool SimulatedController::loadScenario(const QString& nameOrFile, QString* error)
{
    if (builtInScenarios().contains(nameOrFile) && !QFileInfo::exists(nameOrFile))
        return loadBuiltInScenario(nameOrFile, error);
    return loadScenarioFile(nameOrFile, error);
}
