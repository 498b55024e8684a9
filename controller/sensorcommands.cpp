#include "commandbuilders.h"
#include "commandfamilies.h"
#include "commandvocabulary.h"

using namespace CommandBuilders;

namespace {

CommandDefinition exposureCommand(const VersionInfo& version)
{
    CommandDefinition definition;
    definition.head = "camera sensor_exposure";
    definition.since = version;
    definition.onCamera = true;
    definition.get = [](const ControllerState& state, const CommandCall& call) {
        const CameraState& camera = cameraOf(state, call);
        if (!camera.hasSensorExposure)
            return notSupported();
        return CommandOutcome::answer(camera.sensorExposureAuto.value ? QByteArray("auto")
                                                                      : WireFormat::number(camera.sensorExposureMs.value));
    };
    definition.set = [](ControllerState& state, const CommandCall& call) {
        CameraState& camera = cameraOf(state, call);
        if (!camera.hasSensorExposure)
            return notSupported();
        if (call.value == "auto") {
            camera.sensorExposureAuto.value = true;
            return CommandOutcome::accepted();
        }
        // "default" leaves automatic control: it is how a frontend returns to a manual time.
        double exposure = camera.defaultSensorExposureMs();
        if (call.value != "default") {
            if (!WireFormat::parseDouble(call.value, &exposure))
                return invalid("invalid value");
            if (exposure < camera.minSensorExposureMs || exposure > camera.maxSensorExposureMs())
                return invalid("exposure time out of range");
        }
        camera.sensorExposureAuto.value = false;
        camera.sensorExposureMs.value = exposure;
        return CommandOutcome::accepted();
    };
    return definition;
}

} // namespace

void addSensorCommands(CommandVocabulary& vocabulary)
{
    const VersionInfo gains = since(1, 27);
    vocabulary.add(cameraFlag("camera has_sensor_gain", gains, &CameraState::hasSensorGain));
    CommandDefinition gainRange = cameraValue("camera min_max_sensor_gain", gains, [](const CameraState& camera) {
        return WireFormat::number(camera.minSensorGain) + ' ' + WireFormat::number(camera.maxSensorGain);
    });
    gainRange.setupOnly = true;
    gainRange.set = [](ControllerState& state, const CommandCall& call) {
        const QList<QByteArray> words = call.value.split(' ');
        double low = 0.0;
        double high = 0.0;
        if (words.size() != 2 || !WireFormat::parseDouble(words.at(0), &low)
            || !WireFormat::parseDouble(words.at(1), &high) || low <= 0.0 || low > high)
            return invalid("invalid value");
        CameraState& camera = cameraOf(state, call);
        camera.minSensorGain = low;
        camera.maxSensorGain = high;
        camera.sensorGain.value = qBound(low, camera.sensorGain.value, high);
        return CommandOutcome::accepted();
    };
    vocabulary.add(gainRange);
    vocabulary.add(cameraSetting<double>("camera sensor_gain", gains, &CameraState::hasSensorGain,
                                         &CameraState::sensorGain,
                                         [](const CameraState& camera, const double& gain) {
                                             return gain < camera.minSensorGain || gain > camera.maxSensorGain
                                                        ? invalid("sensor gain out of range")
                                                        : CommandOutcome::accepted();
                                         }));

    const VersionInfo exposures = since(1, 24);
    vocabulary.add(cameraFlag("camera has_sensor_exposure", exposures, &CameraState::hasSensorExposure));
    CommandDefinition maxExposure;
    maxExposure.head = "camera max_sensor_exposure";
    maxExposure.since = exposures;
    maxExposure.onCamera = true;
    maxExposure.get = [](const ControllerState& state, const CommandCall& call) {
        const CameraState& camera = cameraOf(state, call);
        return camera.hasSensorExposure ? CommandOutcome::answer(WireFormat::number(camera.maxSensorExposureMs()))
                                        : notSupported();
    };
    vocabulary.add(maxExposure);
    vocabulary.add(exposureCommand(exposures));

    const VersionInfo modes = since(1, 15);
    vocabulary.add(cameraValue("camera number_of_modes", modes, [](const CameraState& camera) {
        return WireFormat::number(camera.modes.size());
    }));
    CommandDefinition modeDesc;
    modeDesc.head = "camera mode_desc";
    modeDesc.since = modes;
    modeDesc.onCamera = true;
    modeDesc.words = 1;
    modeDesc.get = [](const ControllerState& state, const CommandCall& call) {
        const CameraState& camera = cameraOf(state, call);
        const int index = camera.modeIndex(QString::fromUtf8(call.args.at(0)));
        if (index < 0)
            return unknownArgument("camera mode", call.args.at(0));
        return CommandOutcome::answer(WireFormat::description(camera.modes.at(index).description));
    };
    vocabulary.add(modeDesc);
    vocabulary.add(cameraSetting<QString>(
        "camera mode", modes, nullptr, &CameraState::mode,
        [](const CameraState& camera, const QString& key) {
            return camera.modeIndex(key) < 0 ? unknownArgument("camera mode", key.toUtf8())
                                             : CommandOutcome::accepted();
        },
        DefaultOf<QString>(), [](CameraState& camera, const QString& key) { camera.setMode(key); }));
}
