#include "controllerfixture.h"

#include <QtTest>

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

QStringList cameraSets(const QStringList& requests)
{
    return requests.filter(QRegularExpression("^quarvo2 set camera (?!display_show_syncgroup|display_mark)"));
}

void applyChanges(ControllerFixture& fixture, const QByteArrayList& changes)
{
    VersionInfo protocol;
    for (const QByteArray& change : changes) {
        if (change.startsWith("fail ")) {
            fixture.fail(QString::fromLatin1(change.mid(5)));
        } else if (change.startsWith("answer ")) {
            const int equals = change.indexOf('=');
            fixture.answerGet(QString::fromLatin1(change.mid(7, equals - 7)), change.mid(equals + 1));
        } else if (change.startsWith("protocol ") && protocol.fromString(QString::fromLatin1(change.mid(9)))) {
            fixture.setProtocol(protocol);
        } else {
            fixture.poke(change);
        }
    }
}

ControllerFixture::ControllerFixture(const QString& builtInScenario)
    : m_link(&m_controller), m_channel(&m_link, this), m_versions(m_controller.backendVersions())
{
    if (builtInScenario != QLatin1String("default"))
        useScenario(builtInScenario);
}

bool ControllerFixture::useScenario(const QString& builtInName)
{
    QString error;
    return scenarioTaken(m_controller.loadBuiltInScenario(builtInName, &error), builtInName + ": " + error);
}

bool ControllerFixture::useScenarioJson(const QByteArray& json)
{
    QString error;
    return scenarioTaken(m_controller.loadScenarioJson(json, &error), error);
}

bool ControllerFixture::scenarioTaken(bool ok, const QString& refusal)
{
    if (!ok)
        QTest::qFail(qPrintable(QStringLiteral("scenario refused: ") + refusal), __FILE__, __LINE__);
    m_versions = m_controller.backendVersions();
    return ok;
}

void ControllerFixture::setProtocol(const VersionInfo& version)
{
    m_controller.setProtocolVersion(version);
    m_versions = m_controller.backendVersions();
}

bool ControllerFixture::poke(const QByteArray& setTail)
{
    const bool ok = m_controller.poke(setTail);
    if (!ok)
        QTest::qFail(("poke refused: " + setTail).constData(), __FILE__, __LINE__);
    return ok;
}

void ControllerFixture::addFault(FaultRule::Action action, const QString& glob, const QByteArray& text, int times,
                                 int delayMs)
{
    m_controller.addFault(FaultRule{glob, action, text, delayMs, times, QString()});
}

void ControllerFixture::fail(const QString& glob, int times)
{
    addFault(FaultRule::Fail, glob, QByteArray(), times);
}

void ControllerFixture::answer(const QString& glob, const QByteArray& line, int times)
{
    addFault(FaultRule::Reply, glob, line, times);
}

void ControllerFixture::answerGet(const QString& path, const QByteArray& value, int passFirst)
{
    // A late answer without delay is the controller's own answer: it lets the first ones through.
    if (passFirst > 0)
        addFault(FaultRule::Late, get(path), QByteArray(), passFirst);
    answer(get(path), "quarvo2 set " + path.toLatin1() + ' ' + value);
}

void ControllerFixture::clearFaults()
{
    m_controller.clearFaults();
}

void ControllerFixture::mark()
{
    m_requestMark = m_controller.requests().size();
    m_messageMark = m_messages.size();
}

QStringList ControllerFixture::allRequests() const
{
    QStringList lines;
    for (const QByteArray& line : m_controller.requests())
        lines << QString::fromLatin1(line);
    return lines;
}

QStringList ControllerFixture::requests() const
{
    return allRequests().mid(m_requestMark);
}

QStringList ControllerFixture::unknownToTheController() const
{
    QStringList refused;
    const QVector<CommandLogEntry> log = m_controller.log();
    for (int i = m_requestMark; i < log.size(); ++i) {
        const QByteArray& reply = log.at(i).reply;
        if (reply.startsWith("quarvo2 err 1 ") || reply.startsWith("quarvo2 err 2 "))
            refused << QString::fromLatin1(log.at(i).request + " -> " + reply);
    }
    return refused;
}

QStringList ControllerFixture::messages() const
{
    return m_messages.mid(m_messageMark);
}

void ControllerFixture::postMessage(const char* type, const char* source, int level, const char* text)
{
    m_messages << QStringLiteral("%1|%2|%3|%4").arg(QString::fromLatin1(type), QString::fromLatin1(source))
                      .arg(level).arg(QString::fromUtf8(text));
}
