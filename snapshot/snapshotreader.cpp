#include "snapshotreader.h"

#include "settingvalue.h"
#include "snapshotlink.h"
#include "snapshotsettings.h"

#include <IOManager.h>

#include <QSet>

SnapshotReader::SnapshotReader(SnapshotLink* link)
    : m_link(link)
{
}

QString SnapshotReader::failure() const
{
    if (m_link->lost())
        return QStringLiteral("connection lost: %1").arg(m_link->lostReason());
    const QByteArray reply = m_link->lastReply();
    return reply.isEmpty() ? QStringLiteral("no answer") : QStringLiteral("the controller answered: %1").arg(QString::fromLatin1(reply));
}

bool SnapshotReader::fail(const QString& error)
{
    m_error = error;
    return false;
}

bool SnapshotReader::readSystem(SystemSnapshot* snapshot, int* count)
{
    char text[IOManager::ValueBufferSize];
    if (m_link->io()->getString(text, "system model") != 0)
        return fail(QStringLiteral("cannot read the system model: %1").arg(failure()));
    snapshot->systemModel = QString::fromLatin1(text);
    if (!SettingValue::check(SettingDefinition::Kind::Word, snapshot->systemModel, nullptr))
        return fail(QStringLiteral("the controller names its system model \"%1\", which is no single word").arg(snapshot->systemModel));

    bool ok = false;
    if (m_link->io()->getString(text, "system protocol_version") == 0)
        m_protocol.fromString(QString::fromLatin1(text), &ok);
    if (!ok)
        return fail(QStringLiteral("cannot read the protocol version: %1").arg(failure()));
    snapshot->protocolVersion = m_protocol.toString();

    *count = 0;
    if (m_link->io()->getInt(count, "camera number_of_cameras") != 0)
        return fail(QStringLiteral("cannot read the number of cameras: %1").arg(failure()));
    if (*count < 0 || *count > SystemSnapshot::MaximumCameras)
        return fail(QStringLiteral("the controller reports %1 cameras").arg(*count));
    return true;
}

bool SnapshotReader::read(SystemSnapshot* snapshot)
{
    m_error.clear();
    m_problems.clear();
    SystemSnapshot system;
    int count = 0;
    if (!readSystem(&system, &count))
        return false;
    QSet<QString> serials;
    for (int position = 1; position <= count; ++position) {
        CameraSnapshot camera;
        const bool identified = readCamera(position, &camera);
        if (m_link->lost())
            return fail(failure());
        if (!identified)
            continue;
        // A file keys cameras by serial; two cameras with one serial cannot be told apart.
        if (serials.contains(camera.serial))
            return fail(QStringLiteral("two cameras have serial %1").arg(camera.serial));
        serials.insert(camera.serial);
        system.cameras.append(camera);
    }
    *snapshot = system;
    return true;
}

bool SnapshotReader::readCamera(int position, CameraSnapshot* camera)
{
    const QString port = CameraSnapshot::portWord(position);
    char text[IOManager::ValueBufferSize];
    const QStringList identity = m_link->io()->getString(text, "camera camera c%02d", position) == 0
                                     ? QString::fromLatin1(text).split(QLatin1Char(' '))
                                     : QStringList();
    if (identity.size() != 2 || !SettingValue::check(SettingDefinition::Kind::Word, identity.at(0), nullptr)
        || !SettingValue::check(SettingDefinition::Kind::Word, identity.at(1), nullptr)) {
        m_problems << QStringLiteral("%1: no model and serial (%2); camera left out")
                          .arg(port, m_link->lost() ? failure() : QStringLiteral("answer \"%1\"").arg(QString::fromLatin1(text)));
        return false;
    }
    camera->position = position;
    camera->model = identity.at(0);
    camera->serial = identity.at(1);
    for (const SettingDefinition& definition : SnapshotSettings::all()) {
        if (m_link->lost())
            return true;
        QString why;
        QJsonValue value;
        const Presence has = presence(position, definition, &why);
        if (has == Presence::Has && readSetting(position, definition, &value, &why)) {
            camera->settings.insert(QLatin1String(definition.name), value);
        } else if (has != Presence::Lacks) {
            camera->unreadable << QLatin1String(definition.name);
            m_problems << QStringLiteral("%1 %2: %3; left out").arg(camera->label(), QLatin1String(definition.name), why);
        }
    }
    return true;
}

SnapshotReader::Presence SnapshotReader::presence(int position, const SettingDefinition& definition, QString* why)
{
    if (!(m_protocol >= VersionInfo(1, definition.sinceMinor, -1)))
        return Presence::Lacks;
    IOManager* io = m_link->io();
    if (definition.needsSeveralModes) {
        int modes = 0;
        if (io->getInt(&modes, "camera number_of_modes c%02d", position) != 0) {
            *why = QStringLiteral("number of modes not read (%1)").arg(failure());
            return Presence::Unknown;
        }
        return modes >= 2 ? Presence::Has : Presence::Lacks;
    }
    if (!definition.flags[0])
        return Presence::Has;
    for (const char* flag : definition.flags) {
        if (!flag)
            break;
        char text[IOManager::ValueBufferSize];
        if (io->getString(text, "camera %s c%02d", flag, position) != 0) {
            *why = QStringLiteral("%1 not read (%2)").arg(QLatin1String(flag), failure());
            return Presence::Unknown;
        }
        if (qstrcmp(text, "yes") == 0)
            return Presence::Has;
    }
    return Presence::Lacks;
}

bool SnapshotReader::readSetting(int position, const SettingDefinition& definition, QJsonValue* value, QString* why)
{
    char text[IOManager::ValueBufferSize];
    if (m_link->io()->getString(text, "camera %s c%02d", definition.name, position) != 0) {
        *why = QStringLiteral("not read (%1)").arg(failure());
        return false;
    }
    if (!SettingValue::fromWire(definition.kind, QByteArray(text), value)) {
        *why = QStringLiteral("the controller answered \"%1\", which is no valid value").arg(QString::fromLatin1(text));
        return false;
    }
    return true;
}
