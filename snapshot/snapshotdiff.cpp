#include "snapshotdiff.h"

#include "settingvalue.h"
#include "snapshotsettings.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

void addChange(QVector<SnapshotDiff::Change>* changes, const QString& name, const QJsonValue& before,
               const QJsonValue& after)
{
    if (before != after)
        changes->append({name, before, after});
}

QJsonValue orNull(const QJsonValue& value)
{
    return value.isUndefined() ? QJsonValue(QJsonValue::Null) : value;
}

QJsonValue positionOrNull(int position)
{
    return position > 0 ? QJsonValue(position) : QJsonValue(QJsonValue::Null);
}

QJsonArray changesJson(const QVector<SnapshotDiff::Change>& changes, const QString& nameKey)
{
    QJsonArray array;
    for (const SnapshotDiff::Change& change : changes)
        array.append(QJsonObject{{nameKey, change.name},
                                 {QStringLiteral("old"), orNull(change.before)},
                                 {QStringLiteral("new"), orNull(change.after)}});
    return array;
}

} // namespace

SnapshotDiff::SnapshotDiff(const SystemSnapshot& before, const SystemSnapshot& after)
{
    addChange(&m_system, QStringLiteral("system_model"), before.systemModel, after.systemModel);
    addChange(&m_system, QStringLiteral("protocol_version"), before.protocolVersion, after.protocolVersion);
    for (const CameraSnapshot& old : before.cameras) {
        const CameraSnapshot* now = after.camera(old.serial);
        if (now)
            compare(old, *now);
        else
            m_cameras.append({old.serial, old.model, old.position, 0, {}});
    }
    for (const CameraSnapshot& now : after.cameras) {
        if (!before.camera(now.serial))
            m_cameras.append({now.serial, now.model, 0, now.position, {}});
    }
}

void SnapshotDiff::compare(const CameraSnapshot& before, const CameraSnapshot& after)
{
    Camera camera{before.serial, before.model, before.position, after.position, {}};
    addChange(&camera.changes, QStringLiteral("model"), before.model, after.model);
    for (const SettingDefinition& definition : SnapshotSettings::all()) {
        const QString name = QLatin1String(definition.name);
        addChange(&camera.changes, name, before.value(name), after.value(name));
    }
    if (!camera.changes.isEmpty())
        m_cameras.append(camera);
}

QString SnapshotDiff::ports(const Camera& camera)
{
    if (camera.positionBefore > 0 && camera.positionAfter > 0 && camera.positionBefore != camera.positionAfter)
        return CameraSnapshot::portWord(camera.positionBefore) + QStringLiteral(" -> ")
               + CameraSnapshot::portWord(camera.positionAfter);
    return CameraSnapshot::portWord(camera.positionBefore > 0 ? camera.positionBefore : camera.positionAfter);
}

QString SnapshotDiff::text(const QString& beforeLabel, const QString& afterLabel) const
{
    QString out;
    const auto line = [&out](const QString& indent, const Change& change) {
        out += QStringLiteral("%1%2: %3 -> %4\n")
                   .arg(indent, change.name, SettingValue::shown(change.before), SettingValue::shown(change.after));
    };
    for (const Change& change : m_system)
        line(QString(), change);
    for (const Camera& camera : m_cameras) {
        out += QStringLiteral("camera %1 (%2, %3):").arg(camera.serial, camera.model, ports(camera));
        if (camera.positionAfter == 0)
            out += QStringLiteral(" only in %1").arg(beforeLabel);
        else if (camera.positionBefore == 0)
            out += QStringLiteral(" only in %1").arg(afterLabel);
        out += QLatin1Char('\n');
        for (const Change& change : camera.changes)
            line(QStringLiteral("  "), change);
    }
    return out;
}

QByteArray SnapshotDiff::json(const QString& beforeLabel, const QString& afterLabel) const
{
    QJsonArray cameras;
    for (const Camera& camera : m_cameras)
        cameras.append(QJsonObject{{QStringLiteral("serial"), camera.serial},
                                   {QStringLiteral("model"), camera.model},
                                   {QStringLiteral("old_camera"), positionOrNull(camera.positionBefore)},
                                   {QStringLiteral("new_camera"), positionOrNull(camera.positionAfter)},
                                   {QStringLiteral("settings"), changesJson(camera.changes, QStringLiteral("setting"))}});
    const QJsonObject root{{QStringLiteral("differ"), differ()},
                           {QStringLiteral("old"), beforeLabel},
                           {QStringLiteral("new"), afterLabel},
                           {QStringLiteral("system"), changesJson(m_system, QStringLiteral("field"))},
                           {QStringLiteral("cameras"), cameras}};
    return QJsonDocument(root).toJson(QJsonDocument::Indented);
}
