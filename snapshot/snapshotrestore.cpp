#include "snapshotrestore.h"

#include "settingvalue.h"
#include "snapshotlink.h"
#include "snapshotreader.h"
#include "snapshotsettings.h"

#include <IOManager.h>
#include <VersionInfo.h>

namespace {
const QString kMode = QStringLiteral("mode");
const QString kExposure = QStringLiteral("sensor_exposure");
const QString kMaxSize = QStringLiteral("marker_max_size");
const QString kMinSize = QStringLiteral("marker_min_size");
} // namespace

SnapshotRestore::SnapshotRestore(const SystemSnapshot& saved, const SystemSnapshot& live)
    : m_protocol(live.protocolVersion)
{
    for (const CameraSnapshot& camera : live.cameras) {
        if (const CameraSnapshot* wanted = saved.camera(camera.serial))
            planCamera(*wanted, camera);
    }
    for (const CameraSnapshot& camera : saved.cameras) {
        if (!live.camera(camera.serial))
            m_problems << QStringLiteral("%1 (%2, %3 in the snapshot): not on the controller; not restored")
                              .arg(camera.serial, camera.model, CameraSnapshot::portWord(camera.position));
    }
}

QByteArray SnapshotRestore::command(const Write& write)
{
    // A sync group goes back as the controller wrote it, "d01 ch03" or "none", which
    // for a group is the dialog's "camera sync_group cNN d01 chNN".
    return QByteArray("camera ") + write.definition->name + ' ' + CameraSnapshot::portWord(write.position).toLatin1() + ' '
           + SettingValue::text(write.after);
}

QString SnapshotRestore::label(const Write& write)
{
    return QStringLiteral("%1 %2 %3").arg(CameraSnapshot::portWord(write.position), write.serial,
                                          QLatin1String(write.definition->name));
}

QString SnapshotRestore::count(int n, const QString& noun)
{
    return QStringLiteral("%1 %2%3").arg(n).arg(noun, n == 1 ? QString() : QStringLiteral("s"));
}

bool SnapshotRestore::differs(const CameraSnapshot& saved, const CameraSnapshot& live, const QString& name)
{
    const QJsonValue wanted = saved.value(name);
    if (wanted.isUndefined())
        return false;
    const QJsonValue now = live.value(name);
    if (now.isUndefined()) {
        m_problems << QStringLiteral("%1 %2: %3; not restored")
                          .arg(live.label(), name,
                               live.unreadable.contains(name) ? QStringLiteral("cannot be read on the controller")
                                                              : QStringLiteral("the controller does not offer it"));
        return false;
    }
    return wanted != now;
}

void SnapshotRestore::add(const CameraSnapshot& saved, const CameraSnapshot& live, const QString& name)
{
    m_writes.append({live.position, live.serial, SnapshotSettings::find(name), live.value(name), saved.value(name)});
}

void SnapshotRestore::planCamera(const CameraSnapshot& saved, const CameraSnapshot& live)
{
    if (saved.model != live.model) {
        m_problems << QStringLiteral("%1: the controller's camera is a %2, the snapshot's a %3; not restored")
                          .arg(live.label(), live.model, saved.model);
        return;
    }
    bool modeWritten = false;
    for (const SettingDefinition& definition : SnapshotSettings::all()) {
        const QString name = QLatin1String(definition.name);
        if (name == kMinSize)
            continue; // written together with the maximum
        if (name == kMaxSize) {
            const bool max = differs(saved, live, kMaxSize);
            const bool min = differs(saved, live, kMinSize);
            // The controller never holds a minimum above the maximum: a maximum that
            // shrinks below the current minimum needs the new minimum first.
            const QJsonValue newMax = max ? saved.value(kMaxSize) : live.value(kMaxSize);
            const bool minFirst = min && live.value(kMinSize).toDouble() > newMax.toDouble();
            if (min && minFirst)
                add(saved, live, kMinSize);
            if (max)
                add(saved, live, kMaxSize);
            if (min && !minFirst)
                add(saved, live, kMinSize);
            continue;
        }
        // A camera mode brings its own exposure range, and a controller may move the
        // exposure with the mode: the saved exposure follows every mode write.
        const bool follows = name == kExposure && modeWritten && !saved.value(name).isUndefined()
                             && !live.value(name).isUndefined();
        if (differs(saved, live, name) || follows) {
            add(saved, live, name);
            modeWritten = modeWritten || name == kMode;
        }
    }
}

SnapshotRestore::Outcome SnapshotRestore::apply(SnapshotLink* link)
{
    m_report = m_problems;
    // A locked configuration refuses every write; one line says so better than one per setting.
    VersionInfo protocol;
    protocol.fromString(m_protocol);
    char changeable[IOManager::ValueBufferSize] = "";
    if (!m_writes.isEmpty() && protocol >= VersionInfo(1, 9, -1)
        && link->io()->getString(changeable, "config is_changeable") == 0 && qstrcmp(changeable, "no") == 0) {
        m_report << QStringLiteral("the controller's configuration is locked; nothing was written");
        return Outcome::NotAllTaken;
    }
    if (link->lost()) {
        m_report << QStringLiteral("connection lost: %1; nothing was written").arg(link->lostReason());
        return Outcome::ConnectionLost;
    }
    QVector<Write> written;
    int notTaken = m_problems.size();
    for (const Write& write : m_writes) {
        const QByteArray value = SettingValue::text(write.after);
        if (link->io()->setParameter("camera %s c%02d %s", write.definition->name, write.position, value.constData()) == 0) {
            written.append(write);
            m_report << QStringLiteral("%1: %2 -> %3")
                            .arg(label(write), SettingValue::shown(write.before), SettingValue::shown(write.after));
        } else if (link->lost()) {
            m_report << QStringLiteral("connection lost at %1: %2").arg(label(write), link->lostReason());
            m_report << QStringLiteral("%1 of %2 settings written before the connection was lost; restore again to "
                                       "complete the rest")
                            .arg(written.size())
                            .arg(m_writes.size());
            return Outcome::ConnectionLost;
        } else {
            ++notTaken;
            m_report << QStringLiteral("%1: refused: %2").arg(label(write), QString::fromLatin1(link->lastReply()));
        }
    }
    int restored = 0;
    if (!verify(link, written, &restored))
        return Outcome::ConnectionLost;
    notTaken += written.size() - restored;
    if (m_writes.isEmpty())
        m_report << (notTaken == 0 ? QStringLiteral("nothing to restore: the controller matches the snapshot")
                                   : QStringLiteral("nothing to write, %1 not restored").arg(notTaken));
    else if (notTaken == 0)
        m_report << QStringLiteral("restored %1").arg(count(restored, QStringLiteral("setting")));
    else
        m_report << QStringLiteral("restored %1 of %2 settings, %3 not restored").arg(restored).arg(m_writes.size()).arg(notTaken);
    return notTaken == 0 ? Outcome::Restored : Outcome::NotAllTaken;
}

bool SnapshotRestore::verify(SnapshotLink* link, const QVector<Write>& written, int* restored)
{
    SnapshotReader reader(link);
    for (const Write& write : written) {
        QJsonValue now;
        QString why;
        if (!reader.readSetting(write.position, *write.definition, &now, &why)) {
            if (link->lost()) {
                m_report << QStringLiteral("connection lost while reading back %1: %2").arg(label(write), link->lostReason());
                m_report << QStringLiteral("%1 settings written, not all read back; diff to see what took").arg(written.size());
                return false;
            }
            m_report << QStringLiteral("%1: cannot be read back: %2").arg(label(write), why);
        } else if (now != write.after) {
            m_report << QStringLiteral("%1: reads back %2, not %3")
                            .arg(label(write), SettingValue::shown(now), SettingValue::shown(write.after));
        } else {
            ++*restored;
        }
    }
    return true;
}
