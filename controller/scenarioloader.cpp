#include "scenarioloader.h"

#include "jsonlocator.h"
#include "jsonobjectreader.h"
#include "wireformat.h"

#include <QJsonDocument>
#include <QJsonParseError>

using namespace JsonConverters;

namespace {

const double kLarge = 1e9;

QStringList cameraKeys()
{
    return {QStringLiteral("model"), QStringLiteral("serial"), QStringLiteral("serial_desc"),
            QStringLiteral("version"), QStringLiteral("focal_length"), QStringLiteral("sensor_pixel_horizontal"),
            QStringLiteral("sensor_pixel_vertical"), QStringLiteral("flash_intensity"),
            QStringLiteral("max_flash_intensity"), QStringLiteral("max_max_flash_intensity"),
            QStringLiteral("is_flash_low_power"), QStringLiteral("has_modulated_flash"),
            QStringLiteral("modulated_flash"), QStringLiteral("has_static_reflex_skip"),
            QStringLiteral("static_reflex_skip"), QStringLiteral("has_dynamic_reflex_skip"),
            QStringLiteral("dynamic_reflex_skip"), QStringLiteral("display_upside_down"),
            QStringLiteral("has_display_intensity"), QStringLiteral("display_intensity"),
            QStringLiteral("has_display_ring_intensity"), QStringLiteral("display_ring_intensity"),
            QStringLiteral("display_settings"), QStringLiteral("display_setting"),
            QStringLiteral("has_marker_mode_accurate"), QStringLiteral("has_marker_mode_fast"),
            QStringLiteral("marker_mode"), QStringLiteral("marker_max_number"), QStringLiteral("marker_max_size"),
            QStringLiteral("limit_marker_max_size"), QStringLiteral("marker_min_size"),
            QStringLiteral("has_marker_threshold"), QStringLiteral("marker_threshold"),
            QStringLiteral("has_sensor_gain"), QStringLiteral("min_max_sensor_gain"), QStringLiteral("sensor_gain"),
            QStringLiteral("has_sensor_exposure"), QStringLiteral("min_sensor_exposure"),
            QStringLiteral("sensor_exposure"), QStringLiteral("modes"), QStringLiteral("mode"),
            QStringLiteral("has_sync_group"), QStringLiteral("sync_group"), QStringLiteral("cascade_slave"),
            QStringLiteral("has_room")};
}

JsonConverter<int> syncGroup()
{
    return [](const QJsonValue& value, int* channel, QString* why) {
        if (value.isString() && WireFormat::parseSyncGroup(value.toString().toUtf8(), channel))
            return true;
        *why = QStringLiteral("expected \"none\" or a group such as \"d01 ch03\"");
        return false;
    };
}

// Exposure times in milliseconds, or "auto" (read as -1) for automatic control.
JsonConverter<double> exposure()
{
    const JsonConverter<double> milliseconds = real(0.0, kLarge);
    return [milliseconds](const QJsonValue& value, double* out, QString* why) {
        if (value.toString() == QLatin1String("auto")) {
            *out = -1.0;
            return true;
        }
        return milliseconds(value, out, why);
    };
}

bool readExposure(JsonObjectReader& reader, CameraState* camera)
{
    if (!reader.has(QStringLiteral("sensor_exposure")))
        return true;
    Setting<double> exposureSetting = camera->sensorExposureMs;
    if (!reader.readSetting(QStringLiteral("sensor_exposure"), &exposureSetting, exposure()))
        return false;
    camera->sensorExposureAuto.assign(exposureSetting.value < 0.0);
    if (exposureSetting.value >= 0.0)
        camera->sensorExposureMs.value = exposureSetting.value;
    // Automatic control has no time of its own; the default stays a time.
    if (exposureSetting.defaultValue >= 0.0)
        camera->sensorExposureMs.defaultValue = exposureSetting.defaultValue;
    return true;
}

bool readModes(JsonObjectReader& reader, CameraState* camera)
{
    if (!reader.has(QStringLiteral("modes")))
        return true;
    QVector<CameraMode> modes;
    const QVector<JsonObjectReader> entries = reader.objects(QStringLiteral("modes"));
    for (int i = 0; reader.ok() && i < entries.size(); ++i) {
        JsonObjectReader entry = entries.at(i);
        CameraMode mode;
        mode.key = QString::fromLatin1(WireFormat::indexWord('m', i + 1));
        mode.description.clear();
        if (!entry.checkKeys({QStringLiteral("key"), QStringLiteral("description"),
                              QStringLiteral("max_sensor_exposure"), QStringLiteral("default_sensor_exposure")})
            || !entry.read(QStringLiteral("key"), &mode.key, word())
            || !entry.read(QStringLiteral("description"), &mode.description, text())
            || !entry.read(QStringLiteral("max_sensor_exposure"), &mode.maxSensorExposureMs, real(1e-6, kLarge))
            || !entry.read(QStringLiteral("default_sensor_exposure"), &mode.defaultSensorExposureMs,
                           real(0.0, kLarge)))
            return false;
        if (mode.description.isEmpty())
            return entry.fail(QStringLiteral("description"), QStringLiteral("missing"));
        for (const CameraMode& other : modes) {
            if (other.key == mode.key)
                return entry.fail(QStringLiteral("key"), QStringLiteral("mode %1 given twice").arg(ScenarioProblem::quoted(mode.key)));
        }
        modes.append(mode);
    }
    if (modes.isEmpty())
        return reader.fail(QStringLiteral("modes"), QStringLiteral("a camera has at least one mode"));
    camera->modes = modes;
    camera->mode.assign(modes.first().key);
    return true;
}

bool readCamera(JsonObjectReader& reader, CameraState* camera)
{
    if (!reader.checkKeys(cameraKeys()))
        return false;
    reader.read(QStringLiteral("model"), &camera->model, word());
    reader.read(QStringLiteral("serial"), &camera->serial, word());
    reader.read(QStringLiteral("serial_desc"), &camera->serialDesc, text());
    reader.read(QStringLiteral("version"), &camera->version, word());
    reader.read(QStringLiteral("focal_length"), &camera->focalLength, real(0.0, kLarge));
    reader.read(QStringLiteral("sensor_pixel_horizontal"), &camera->sensorPixelHorizontal, integer(1, 100000));
    reader.read(QStringLiteral("sensor_pixel_vertical"), &camera->sensorPixelVertical, integer(1, 100000));

    reader.readSetting(QStringLiteral("flash_intensity"), &camera->flashIntensity, integer(0, 100000));
    reader.read(QStringLiteral("max_flash_intensity"), &camera->maxFlashIntensity, integer(0, 100000));
    // Without a limit of its own the maximum is not reduced.
    if (reader.has(QStringLiteral("max_flash_intensity")) && !reader.has(QStringLiteral("max_max_flash_intensity")))
        camera->maxMaxFlashIntensity = camera->maxFlashIntensity;
    reader.read(QStringLiteral("max_max_flash_intensity"), &camera->maxMaxFlashIntensity, integer(0, 100000));
    reader.read(QStringLiteral("is_flash_low_power"), &camera->flashLowPower, flag());
    reader.read(QStringLiteral("has_modulated_flash"), &camera->hasModulatedFlash, flag());
    reader.readSetting(QStringLiteral("modulated_flash"), &camera->modulatedFlash, flag());
    reader.read(QStringLiteral("has_static_reflex_skip"), &camera->hasStaticReflexSkip, flag());
    reader.readSetting(QStringLiteral("static_reflex_skip"), &camera->staticReflexSkip, flag());
    reader.read(QStringLiteral("has_dynamic_reflex_skip"), &camera->hasDynamicReflexSkip, flag());
    reader.readSetting(QStringLiteral("dynamic_reflex_skip"), &camera->dynamicReflexSkip, flag());

    reader.readSetting(QStringLiteral("display_upside_down"), &camera->displayUpsideDown, flag());
    reader.read(QStringLiteral("has_display_intensity"), &camera->hasDisplayIntensity, flag());
    reader.readSetting(QStringLiteral("display_intensity"), &camera->displayIntensity, real(0.0, 1.0));
    reader.read(QStringLiteral("has_display_ring_intensity"), &camera->hasDisplayRingIntensity, flag());
    reader.readSetting(QStringLiteral("display_ring_intensity"), &camera->displayRingIntensity, real(0.0, 1.0));
    if (reader.ok() && reader.has(QStringLiteral("display_settings"))) {
        QStringList ids;
        const QJsonArray array = reader.array(QStringLiteral("display_settings"));
        for (const QJsonValue& value : array) {
            QString id;
            QString why;
            if (!word()(value, &id, &why))
                return reader.fail(QStringLiteral("display_settings"), why);
            ids.append(id);
        }
        camera->displaySettings = ids;
    }
    reader.readSetting(QStringLiteral("display_setting"), &camera->displaySetting, word());

    reader.read(QStringLiteral("has_marker_mode_accurate"), &camera->hasMarkerModeAccurate, flag());
    reader.read(QStringLiteral("has_marker_mode_fast"), &camera->hasMarkerModeFast, flag());
    reader.read(QStringLiteral("marker_mode"), &camera->markerMode.value, word());
    reader.readSetting(QStringLiteral("marker_max_number"), &camera->markerMaxNumber,
                       integer(0, CameraState::MarkerMaxNumberLimit));
    reader.readSetting(QStringLiteral("marker_max_size"), &camera->markerMaxSize, real(0.0, kLarge));
    reader.read(QStringLiteral("limit_marker_max_size"), &camera->markerSizeLimit, real(0.0, kLarge));
    reader.readSetting(QStringLiteral("marker_min_size"), &camera->markerMinSize, real(0.0, kLarge));
    reader.read(QStringLiteral("has_marker_threshold"), &camera->hasMarkerThreshold, flag());
    reader.readSetting(QStringLiteral("marker_threshold"), &camera->markerThreshold, real(0.0, 1.0));

    reader.read(QStringLiteral("has_sensor_gain"), &camera->hasSensorGain, flag());
    if (reader.ok() && reader.has(QStringLiteral("min_max_sensor_gain"))) {
        const QJsonArray range = reader.array(QStringLiteral("min_max_sensor_gain"));
        if (range.size() != 2 || !range.at(0).isDouble() || !range.at(1).isDouble()
            || range.at(0).toDouble() <= 0.0 || range.at(0).toDouble() > range.at(1).toDouble())
            return reader.fail(QStringLiteral("min_max_sensor_gain"),
                               QStringLiteral("expected [minimum, maximum] with 0 < minimum <= maximum"));
        camera->minSensorGain = range.at(0).toDouble();
        camera->maxSensorGain = range.at(1).toDouble();
    }
    reader.readSetting(QStringLiteral("sensor_gain"), &camera->sensorGain, real(0.0, kLarge));
    reader.read(QStringLiteral("has_sensor_exposure"), &camera->hasSensorExposure, flag());
    reader.read(QStringLiteral("min_sensor_exposure"), &camera->minSensorExposureMs, real(0.0, kLarge));
    if (!readExposure(reader, camera) || !readModes(reader, camera))
        return false;
    reader.readSetting(QStringLiteral("mode"), &camera->mode, word());

    reader.read(QStringLiteral("has_sync_group"), &camera->hasSyncGroup, flag());
    reader.readSetting(QStringLiteral("sync_group"), &camera->syncChannel, syncGroup());
    reader.read(QStringLiteral("cascade_slave"), &camera->cascadeSlave, word());
    reader.read(QStringLiteral("has_room"), &camera->hasRoom, flag());
    return reader.ok();
}

// What the controller itself would never hold: values beyond their limits, names
// the system does not know.
bool checkCamera(JsonObjectReader& reader, const ControllerState& state, const CameraState& camera)
{
    if (camera.maxFlashIntensity > camera.maxMaxFlashIntensity)
        return reader.fail(QStringLiteral("max_flash_intensity"), QStringLiteral("above max_max_flash_intensity"));
    if (qMax(camera.flashIntensity.value, camera.flashIntensity.defaultValue) > camera.maxFlashIntensity)
        return reader.fail(QStringLiteral("flash_intensity"), QStringLiteral("above max_flash_intensity"));
    if (camera.markerMaxSize.value > camera.markerSizeLimit || camera.markerMaxSize.defaultValue > camera.markerSizeLimit)
        return reader.fail(QStringLiteral("marker_max_size"), QStringLiteral("above limit_marker_max_size"));
    if (camera.markerMinSize.value > camera.markerMaxSize.value
        || camera.markerMinSize.defaultValue > camera.markerMaxSize.defaultValue)
        return reader.fail(QStringLiteral("marker_min_size"), QStringLiteral("above marker_max_size"));
    const QString markerMode = camera.markerMode.value;
    if (!(markerMode == QLatin1String("default") || (markerMode == QLatin1String("accurate") && camera.hasMarkerModeAccurate)
          || (markerMode == QLatin1String("fast") && camera.hasMarkerModeFast)))
        return reader.fail(QStringLiteral("marker_mode"), QStringLiteral("%1 is not offered").arg(ScenarioProblem::quoted(markerMode)));
    for (const QString& id : camera.displaySettings) {
        if (state.displaySettingIndex(id) < 0)
            return reader.fail(QStringLiteral("display_settings"),
                               QStringLiteral("unknown display setting %1").arg(ScenarioProblem::quoted(id)));
    }
    if (!state.displaySettings.isEmpty() && (!camera.displaySettings.contains(camera.displaySetting.value)
                                             || !camera.displaySettings.contains(camera.displaySetting.defaultValue)))
        return reader.fail(QStringLiteral("display_setting"),
                           QStringLiteral("%1 is not in display_settings").arg(ScenarioProblem::quoted(camera.displaySetting.value)));
    if (camera.modeIndex(camera.mode.value) < 0 || camera.modeIndex(camera.mode.defaultValue) < 0)
        return reader.fail(QStringLiteral("mode"), QStringLiteral("unknown mode %1").arg(ScenarioProblem::quoted(camera.mode.value)));
    if (!camera.sensorExposureAuto.value
        && (camera.sensorExposureMs.value < camera.minSensorExposureMs
            || camera.sensorExposureMs.value > camera.maxSensorExposureMs()))
        return reader.fail(QStringLiteral("sensor_exposure"),
                           QStringLiteral("outside the exposure range of mode %1").arg(ScenarioProblem::quoted(camera.mode.value)));
    if (camera.sensorGain.value < camera.minSensorGain || camera.sensorGain.value > camera.maxSensorGain)
        return reader.fail(QStringLiteral("sensor_gain"), QStringLiteral("outside min_max_sensor_gain"));
    if (qMax(camera.syncChannel.value, camera.syncChannel.defaultValue) > state.syncCardChannels)
        return reader.fail(QStringLiteral("sync_group"), QStringLiteral("the sync card has no such channel"));
    if (camera.cascadeSlave != QLatin1String("none") && state.cascadeSlaveIndex(camera.cascadeSlave) < 0)
        return reader.fail(QStringLiteral("cascade_slave"),
                           QStringLiteral("unknown slave %1").arg(ScenarioProblem::quoted(camera.cascadeSlave)));
    return true;
}

bool readFault(JsonObjectReader& reader, FaultRule* rule)
{
    QString action = FaultRule::actionName(rule->action);
    QString text;
    int repeat = 1;
    if (!reader.checkKeys({QStringLiteral("name"), QStringLiteral("match"), QStringLiteral("action"),
                           QStringLiteral("text"), QStringLiteral("repeat"), QStringLiteral("delay_ms"),
                           QStringLiteral("times")}))
        return false;
    reader.read(QStringLiteral("name"), &rule->name, JsonConverters::text());
    reader.read(QStringLiteral("match"), &rule->match, JsonConverters::text());
    reader.read(QStringLiteral("action"), &action, word());
    reader.read(QStringLiteral("text"), &text, verbatim());
    reader.read(QStringLiteral("repeat"), &repeat, integer(1, 16 * 1024 * 1024));
    reader.read(QStringLiteral("delay_ms"), &rule->delayMs, integer(0, 600000));
    reader.read(QStringLiteral("times"), &rule->times, integer(-1, 1000000000));
    if (!reader.ok())
        return false;
    if (rule->match.isEmpty())
        return reader.fail(QStringLiteral("match"), QStringLiteral("missing"));
    if (!FaultRule::actionFromName(action, &rule->action))
        return reader.fail(QStringLiteral("action"), QStringLiteral("expected fail, reply, late or drop"));
    // A reply is answered verbatim, garbage and line breaks included, to put a frontend
    // out of step on purpose; an error text goes inside an ordinary error line.
    QString why;
    if (rule->action == FaultRule::Fail && !JsonConverters::text()(QJsonValue(text), &text, &why))
        return reader.fail(QStringLiteral("text"), why);
    if (text.toUtf8().size() * qint64(repeat) > 64 * 1024 * 1024)
        return reader.fail(QStringLiteral("repeat"), QStringLiteral("the answer would exceed 64 MiB"));
    // Long answers are written as a short text and a repeat count.
    rule->text = text.toUtf8().repeated(repeat);
    return true;
}

bool readSystem(JsonObjectReader& root, ControllerState* state)
{
    QString protocol = state->protocolVersion.toString();
    root.read(QStringLiteral("protocol_version"), &protocol, word());
    if (root.ok() && !state->protocolVersion.fromString(protocol))
        return root.fail(QStringLiteral("protocol_version"), QStringLiteral("expected a version such as 1.27.0"));
    root.read(QStringLiteral("system_model"), &state->systemModel, word());
    root.read(QStringLiteral("system_version"), &state->systemVersion, word());
    state->controllerVersion = state->systemVersion;
    root.read(QStringLiteral("controller_version"), &state->controllerVersion, word());
    root.read(QStringLiteral("is_changeable"), &state->configChangeable, flag());
    root.read(QStringLiteral("display_show_syncgroup"), &state->displayShowSyncgroup, flag());

    JsonObjectReader syncCard = root.object(QStringLiteral("synccard"));
    if (root.has(QStringLiteral("synccard"))) {
        state->syncCardAvailable = true;
        syncCard.checkKeys({QStringLiteral("available"), QStringLiteral("number_of_channels")});
        syncCard.read(QStringLiteral("available"), &state->syncCardAvailable, flag());
        syncCard.read(QStringLiteral("number_of_channels"), &state->syncCardChannels, integer(0, 99));
    }

    // Model descriptions are single words: the frontend takes one word of the reply.
    JsonObjectReader models = root.object(QStringLiteral("models"));
    for (const QString& model : models.keys()) {
        QString description;
        QString why;
        if (!word()(QJsonValue(model), &description, &why))
            return models.fail(model, why);
        if (!models.read(model, &description, word()))
            return false;
        state->modelDescriptions.append(qMakePair(model, description));
    }

    for (JsonObjectReader entry : root.objects(QStringLiteral("display_settings"))) {
        DisplaySetting setting;
        if (!entry.checkKeys({QStringLiteral("id"), QStringLiteral("description")})
            || !entry.read(QStringLiteral("id"), &setting.id, word())
            || !entry.read(QStringLiteral("description"), &setting.description, text()))
            return false;
        if (setting.id.isEmpty())
            return entry.fail(QStringLiteral("id"), QStringLiteral("missing"));
        if (state->displaySettingIndex(setting.id) >= 0)
            return entry.fail(QStringLiteral("id"), QStringLiteral("%1 given twice").arg(ScenarioProblem::quoted(setting.id)));
        state->displaySettings.append(setting);
    }

    for (JsonObjectReader entry : root.objects(QStringLiteral("cascade_slaves"))) {
        CascadeSlave slave;
        if (!entry.checkKeys({QStringLiteral("id"), QStringLiteral("controller"), QStringLiteral("hostname"),
                              QStringLiteral("model")})
            || !entry.read(QStringLiteral("id"), &slave.id, word())
            || !entry.read(QStringLiteral("controller"), &slave.controller, word())
            || !entry.read(QStringLiteral("hostname"), &slave.hostname, word())
            || !entry.read(QStringLiteral("model"), &slave.model, integer(0, 1000000)))
            return false;
        if (slave.id.isEmpty() || slave.id == QLatin1String("none"))
            return entry.fail(QStringLiteral("id"), QStringLiteral("a slave needs an id other than none"));
        state->cascadeSlaves.append(slave);
    }

    for (JsonObjectReader entry : root.objects(QStringLiteral("missing_cameras"))) {
        MissingCamera camera;
        if (!entry.checkKeys({QStringLiteral("model"), QStringLiteral("serial"), QStringLiteral("serial_desc")})
            || !entry.read(QStringLiteral("model"), &camera.model, word())
            || !entry.read(QStringLiteral("serial"), &camera.serial, word())
            || !entry.read(QStringLiteral("serial_desc"), &camera.serialDesc, text()))
            return false;
        if (camera.model.isEmpty() || camera.serial.isEmpty())
            return entry.fail(QString(), QStringLiteral("a missing camera needs model and serial"));
        state->missingCameras.append(camera);
    }
    return root.ok();
}

// "<source>:<line>: <what is wrong>", as compilers write it, so editors jump to the line.
QString located(const QString& source, int line, const QString& text)
{
    // One pass: a '%2' in the file name must not take the line's place.
    return QStringLiteral("%1:%2: %3").arg(source, QString::number(line), text);
}

} // namespace

bool ScenarioLoader::load(const QByteArray& json, const QString& source, Scenario* scenario, QString* error)
{
    // A scenario that says two things about one value is refused; and before the parser
    // sees it, which would keep the last silently and leak the first.
    const JsonLocator locator(json);
    JsonLocator::DuplicateKey duplicate;
    if (locator.findDuplicateKey(&duplicate)) {
        const ScenarioProblem problem{
            duplicate.path, QStringLiteral("key %1 given twice, first on line ") + QString::number(duplicate.firstLine), true};
        if (error)
            *error = located(source, duplicate.secondLine, problem.text());
        return false;
    }

    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(json, &parseError);
    if (parseError.error != QJsonParseError::NoError || !document.isObject()) {
        if (error) {
            const QString reason = parseError.error != QJsonParseError::NoError
                                       ? parseError.errorString()
                                       : QStringLiteral("a scenario is a JSON object");
            *error = located(source, JsonLocator::lineAt(json, parseError.offset), reason);
        }
        return false;
    }

    ScenarioProblem problem;
    JsonObjectReader root(document.object(), QStringList(), &problem);
    Scenario loaded;
    loaded.name = QStringLiteral("unnamed");
    root.checkKeys({QStringLiteral("name"), QStringLiteral("protocol_version"), QStringLiteral("system_model"),
                    QStringLiteral("system_version"), QStringLiteral("controller_version"),
                    QStringLiteral("is_changeable"), QStringLiteral("display_show_syncgroup"),
                    QStringLiteral("synccard"), QStringLiteral("models"), QStringLiteral("display_settings"),
                    QStringLiteral("cascade_slaves"), QStringLiteral("missing_cameras"),
                    QStringLiteral("camera_defaults"), QStringLiteral("cameras"), QStringLiteral("faults")});
    root.read(QStringLiteral("name"), &loaded.name, text());
    readSystem(root, &loaded.state);

    CameraState defaults;
    JsonObjectReader defaultsReader = root.object(QStringLiteral("camera_defaults"));
    if (root.ok())
        readCamera(defaultsReader, &defaults);
    for (JsonObjectReader entry : root.objects(QStringLiteral("cameras"))) {
        CameraState camera = defaults;
        if (!readCamera(entry, &camera) || !checkCamera(entry, loaded.state, camera))
            break;
        loaded.state.cameras.append(camera);
    }
    for (JsonObjectReader entry : root.objects(QStringLiteral("faults"))) {
        FaultRule rule;
        if (!readFault(entry, &rule))
            break;
        loaded.faults.append(rule);
    }

    if (problem.found()) {
        if (error)
            *error = located(source, locator.lineOf(problem.path), problem.text());
        return false;
    }
    *scenario = loaded;
    return true;
}
