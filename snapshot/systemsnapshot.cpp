#include "systemsnapshot.h"

#include "settingvalue.h"
#include "snapshotsettings.h"

#include <jsonlocator.h>

#include <VersionInfo.h>

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>
#include <QSet>

#include <algorithm>

namespace {

const QString kFormat = QStringLiteral("quarvo2-snapshot");

// Where in the document the first problem is, and what it is.
struct Problem
{
    QStringList path;
    QString reason;
};

bool fail(Problem* problem, const QStringList& path, const QString& reason)
{
    problem->path = path;
    problem->reason = reason;
    return false;
}

// A misspelt key must not pass unnoticed: it would silently drop a setting.
bool checkKeys(const QJsonObject& object, const QStringList& known, const QStringList& path, Problem* problem)
{
    for (auto it = object.begin(); it != object.end(); ++it) {
        if (!known.contains(it.key()))
            return fail(problem, path + QStringList(it.key()), QStringLiteral("unknown key"));
    }
    return true;
}

bool readWord(const QJsonObject& object, const QString& key, const QStringList& path, QString* out, Problem* problem)
{
    const QJsonValue value = object.value(key);
    if (!SettingValue::check(SettingDefinition::Kind::Word, value, nullptr))
        return fail(problem, path + QStringList(key), QStringLiteral("expected a single word"));
    *out = value.toString();
    return true;
}

bool readSettings(const QJsonObject& settings, const QStringList& path, CameraSnapshot* camera, Problem* problem)
{
    for (auto it = settings.begin(); it != settings.end(); ++it) {
        const SettingDefinition* definition = SnapshotSettings::find(it.key());
        if (!definition)
            return fail(problem, path + QStringList(it.key()), QStringLiteral("unknown setting"));
        QString why;
        if (!SettingValue::check(definition->kind, it.value(), &why))
            return fail(problem, path + QStringList(it.key()), why);
        camera->settings.insert(it.key(), it.value());
    }
    return true;
}

bool readCamera(const QString& serial, const QJsonValue& value, const QStringList& path, CameraSnapshot* camera,
                Problem* problem)
{
    if (!SettingValue::check(SettingDefinition::Kind::Word, serial, nullptr))
        return fail(problem, path, QStringLiteral("a serial number is a single word"));
    if (!value.isObject())
        return fail(problem, path, QStringLiteral("expected an object"));
    const QJsonObject object = value.toObject();
    if (!checkKeys(object, {QStringLiteral("camera"), QStringLiteral("model"), QStringLiteral("settings")}, path,
                   problem))
        return false;
    camera->serial = serial;
    const double position = object.value(QStringLiteral("camera")).toDouble(-1.0);
    if (position < 1.0 || position > SystemSnapshot::MaximumCameras || position != int(position))
        return fail(problem, path + QStringList(QStringLiteral("camera")),
                    QStringLiteral("expected a camera number from 1 to %1").arg(SystemSnapshot::MaximumCameras));
    camera->position = int(position);
    if (!readWord(object, QStringLiteral("model"), path, &camera->model, problem))
        return false;
    const QJsonValue settings = object.value(QStringLiteral("settings"));
    if (!settings.isObject())
        return fail(problem, path + QStringList(QStringLiteral("settings")), QStringLiteral("expected an object"));
    return readSettings(settings.toObject(), path + QStringList(QStringLiteral("settings")), camera, problem);
}

bool readSnapshot(const QJsonObject& root, SystemSnapshot* out, Problem* problem)
{
    if (root.value(QStringLiteral("format")).toString() != kFormat)
        return fail(problem, {QStringLiteral("format")},
                    QStringLiteral("not a camera settings snapshot (\"format\" is not \"%1\")").arg(kFormat));
    if (!checkKeys(root, {QStringLiteral("format"), QStringLiteral("version"), QStringLiteral("system_model"),
                          QStringLiteral("protocol_version"), QStringLiteral("cameras")},
                   QStringList(), problem))
        return false;
    const QJsonValue version = root.value(QStringLiteral("version"));
    if (version.toDouble(-1.0) != SystemSnapshot::FormatVersion)
        return fail(problem, {QStringLiteral("version")},
                    QStringLiteral("this tool reads snapshot version %1 only").arg(SystemSnapshot::FormatVersion));
    if (!readWord(root, QStringLiteral("system_model"), QStringList(), &out->systemModel, problem))
        return false;
    bool ok = false;
    VersionInfo protocol;
    protocol.fromString(root.value(QStringLiteral("protocol_version")).toString(), &ok);
    if (!ok)
        return fail(problem, {QStringLiteral("protocol_version")}, QStringLiteral("expected a version such as \"1.27.0\""));
    out->protocolVersion = root.value(QStringLiteral("protocol_version")).toString();

    const QJsonValue cameras = root.value(QStringLiteral("cameras"));
    if (!cameras.isObject())
        return fail(problem, {QStringLiteral("cameras")}, QStringLiteral("expected an object of cameras by serial"));
    const QJsonObject bySerial = cameras.toObject();
    if (bySerial.size() > SystemSnapshot::MaximumCameras)
        return fail(problem, {QStringLiteral("cameras")},
                    QStringLiteral("more than %1 cameras").arg(SystemSnapshot::MaximumCameras));
    QSet<int> positions;
    for (auto it = bySerial.begin(); it != bySerial.end(); ++it) {
        const QStringList path{QStringLiteral("cameras"), it.key()};
        CameraSnapshot camera;
        if (!readCamera(it.key(), it.value(), path, &camera, problem))
            return false;
        if (positions.contains(camera.position))
            return fail(problem, path + QStringList(QStringLiteral("camera")),
                        QStringLiteral("two cameras at %1").arg(CameraSnapshot::portWord(camera.position)));
        positions.insert(camera.position);
        out->cameras.append(camera);
    }
    std::sort(out->cameras.begin(), out->cameras.end(),
              [](const CameraSnapshot& a, const CameraSnapshot& b) { return a.position < b.position; });
    return true;
}

} // namespace

const CameraSnapshot* SystemSnapshot::camera(const QString& serial) const
{
    for (const CameraSnapshot& camera : cameras) {
        if (camera.serial == serial)
            return &camera;
    }
    return nullptr;
}

QByteArray SystemSnapshot::toJson() const
{
    QJsonObject bySerial;
    for (const CameraSnapshot& camera : cameras) {
        QJsonObject settings;
        for (auto it = camera.settings.begin(); it != camera.settings.end(); ++it)
            settings.insert(it.key(), it.value());
        bySerial.insert(camera.serial, QJsonObject{{QStringLiteral("camera"), camera.position},
                                                   {QStringLiteral("model"), camera.model},
                                                   {QStringLiteral("settings"), settings}});
    }
    const QJsonObject root{{QStringLiteral("format"), kFormat},
                           {QStringLiteral("version"), FormatVersion},
                           {QStringLiteral("system_model"), systemModel},
                           {QStringLiteral("protocol_version"), protocolVersion},
                           {QStringLiteral("cameras"), bySerial}};
    return QJsonDocument(root).toJson(QJsonDocument::Indented);
}

bool SystemSnapshot::fromJson(const QByteArray& json, const QString& source, SystemSnapshot* out, QString* error)
{
    // A setting or camera given twice leaves open which one a restore should write; and
    // Qt's parser would keep the last silently and leak an object given first.
    JsonLocator::DuplicateKey duplicate;
    if (JsonLocator(json).findDuplicateKey(&duplicate)) {
        *error = QStringLiteral("%1:%2: %3: given twice, first on line %4")
                     .arg(source, QString::number(duplicate.secondLine), duplicate.path.join(QLatin1Char('/')),
                          QString::number(duplicate.firstLine));
        return false;
    }
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(json, &parseError);
    if (parseError.error != QJsonParseError::NoError) {
        *error = QStringLiteral("%1:%2: not a camera settings snapshot: %3")
                     .arg(source, QString::number(JsonLocator::lineAt(json, parseError.offset)), parseError.errorString());
        return false;
    }
    if (!document.isObject()) {
        *error = QStringLiteral("%1:1: not a camera settings snapshot: expected a JSON object").arg(source);
        return false;
    }
    SystemSnapshot snapshot;
    Problem problem;
    if (!readSnapshot(document.object(), &snapshot, &problem)) {
        const QString where = problem.path.isEmpty() ? QString() : problem.path.join(QLatin1Char('/')) + QStringLiteral(": ");
        *error = QStringLiteral("%1:%2: %3%4")
                     .arg(source, QString::number(JsonLocator(json).lineOf(problem.path)), where, problem.reason);
        return false;
    }
    *out = snapshot;
    return true;
}

bool SystemSnapshot::load(const QString& fileName, SystemSnapshot* out, QString* error)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = QStringLiteral("%1: %2").arg(fileName, file.errorString());
        return false;
    }
    if (file.size() > MaximumFileSize) {
        *error = QStringLiteral("%1: not a camera settings snapshot: %2 bytes is too large")
                     .arg(fileName, QString::number(file.size()));
        return false;
    }
    return fromJson(file.read(MaximumFileSize), fileName, out, error);
}

bool SystemSnapshot::save(const QString& fileName, QString* error) const
{
    QSaveFile file(fileName);
    const QByteArray json = toJson();
    if (!file.open(QIODevice::WriteOnly) || file.write(json) != json.size() || !file.commit()) {
        *error = QStringLiteral("%1: %2").arg(fileName, file.errorString());
        return false;
    }
    return true;
}
