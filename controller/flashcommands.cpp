#include "commandbuilders.h"
#include "commandfamilies.h"
#include "commandvocabulary.h"

using namespace CommandBuilders;

namespace {

// A maximum the power supply dictates: read-only on the wire, set up by tests.
CommandDefinition flashMaximum(const QByteArray& head, const VersionInfo& version, int CameraState::*member,
                               const std::function<CommandOutcome(CameraState&, int)>& apply)
{
    CommandDefinition definition = cameraValue(head, version, [member](const CameraState& camera) {
        return WireFormat::number(camera.*member);
    });
    definition.setupOnly = true;
    definition.set = [apply](ControllerState& state, const CommandCall& call) {
        int value = 0;
        if (!WireFormat::parseInt(call.value, &value) || value < 0)
            return invalid("invalid value");
        return apply(cameraOf(state, call), value);
    };
    return definition;
}

} // namespace

void addFlashCommands(CommandVocabulary& vocabulary)
{
    const VersionInfo always = since(1, 0);
    vocabulary.add(cameraSetting<int>(
        "camera flash_intensity", always, nullptr, &CameraState::flashIntensity,
        [](const CameraState& camera, const int& value) {
            if (value < 0)
                return invalid("flash intensity out of range");
            if (value > camera.maxFlashIntensity)
                return invalid("flash intensity above maximum");
            return CommandOutcome::accepted();
        },
        // A camera on a reduced power supply cannot go back above its reduced maximum.
        [](const CameraState& camera) { return qMin(camera.flashIntensity.defaultValue, camera.maxFlashIntensity); }));

    vocabulary.add(flashMaximum("camera max_flash_intensity", always, &CameraState::maxFlashIntensity,
                                [](CameraState& camera, int value) {
                                    if (value > camera.maxMaxFlashIntensity)
                                        return invalid("maximum flash intensity above its limit");
                                    camera.setMaxFlashIntensity(value);
                                    return CommandOutcome::accepted();
                                }));
    vocabulary.add(flashMaximum("camera max_max_flash_intensity", since(1, 27), &CameraState::maxMaxFlashIntensity,
                                [](CameraState& camera, int value) {
                                    camera.maxMaxFlashIntensity = value;
                                    camera.setMaxFlashIntensity(qMin(camera.maxFlashIntensity, value));
                                    return CommandOutcome::accepted();
                                }));
    vocabulary.add(cameraFlag("camera is_flash_low_power", since(1, 27), &CameraState::flashLowPower));

    vocabulary.add(cameraFlag("camera has_modulated_flash", always, &CameraState::hasModulatedFlash));
    vocabulary.add(cameraSwitch("camera modulated_flash", always, &CameraState::hasModulatedFlash,
                                &CameraState::modulatedFlash));
    vocabulary.add(cameraFlag("camera has_static_reflex_skip", always, &CameraState::hasStaticReflexSkip));
    vocabulary.add(cameraSwitch("camera static_reflex_skip", always, &CameraState::hasStaticReflexSkip,
                                &CameraState::staticReflexSkip));
    vocabulary.add(cameraFlag("camera has_dynamic_reflex_skip", always, &CameraState::hasDynamicReflexSkip));
    vocabulary.add(cameraSwitch("camera dynamic_reflex_skip", always, &CameraState::hasDynamicReflexSkip,
                                &CameraState::dynamicReflexSkip));
}
