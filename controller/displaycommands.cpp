#include "commandbuilders.h"
#include "commandfamilies.h"
#include "commandvocabulary.h"

using namespace CommandBuilders;

namespace {

CommandOutcome checkDisplaySetting(const ControllerState& state, const CameraState& camera, const QString& id)
{
    if (state.displaySettingIndex(id) < 0)
        return unknownArgument("display setting", id.toUtf8());
    if (!camera.displaySettings.contains(id))
        return CommandOutcome::refuse(ControllerError::NotSupported, "display setting not supported by this camera");
    return CommandOutcome::accepted();
}

} // namespace

void addDisplayCommands(CommandVocabulary& vocabulary)
{
    const VersionInfo displays = since(1, 15);
    const VersionInfo rings = since(1, 27);

    // The camera's orientation is as old as the protocol; the frontend reads it unguarded.
    vocabulary.add(cameraSetting<bool>("camera display_upside_down", since(1, 0), nullptr,
                                       &CameraState::displayUpsideDown));
    // Marking a camera on its display is a presentation aid, not configuration.
    CommandDefinition mark = cameraSetting<bool>("camera display_mark", displays, nullptr, &CameraState::displayMark);
    mark.configuration = false;
    vocabulary.add(mark);

    vocabulary.add(cameraFlag("camera has_display_intensity", displays, &CameraState::hasDisplayIntensity));
    vocabulary.add(cameraSetting<double>("camera display_intensity", displays, &CameraState::hasDisplayIntensity,
                                         &CameraState::displayIntensity,
                                         inRange(0.0, 1.0, "display intensity out of range")));
    vocabulary.add(cameraFlag("camera has_display_ring_intensity", rings, &CameraState::hasDisplayRingIntensity));
    vocabulary.add(cameraSetting<double>("camera display_ring_intensity", rings,
                                         &CameraState::hasDisplayRingIntensity, &CameraState::displayRingIntensity,
                                         inRange(0.0, 1.0, "ring display intensity out of range")));

    vocabulary.add(systemValue("camera number_of_display_settings", displays, [](const ControllerState& state) {
        return WireFormat::number(state.displaySettings.size());
    }));
    CommandDefinition settingId;
    settingId.head = "camera display_setting_id";
    settingId.since = displays;
    settingId.words = 1;
    settingId.get = [](const ControllerState& state, const CommandCall& call) {
        int number = 0;
        if (!WireFormat::parseIndexWord(call.args.at(0), "t", &number) || number > state.displaySettings.size())
            return unknownArgument("display setting", call.args.at(0));
        return CommandOutcome::answer(WireFormat::word(state.displaySettings.at(number - 1).id));
    };
    vocabulary.add(settingId);

    CommandDefinition settingDesc;
    settingDesc.head = "camera display_setting_desc";
    settingDesc.since = displays;
    settingDesc.words = 1;
    settingDesc.get = [](const ControllerState& state, const CommandCall& call) {
        const int index = state.displaySettingIndex(QString::fromUtf8(call.args.at(0)));
        if (index < 0)
            return unknownArgument("display setting", call.args.at(0));
        return CommandOutcome::answer(WireFormat::description(state.displaySettings.at(index).description));
    };
    vocabulary.add(settingDesc);

    CommandDefinition hasSetting;
    hasSetting.head = "camera has_display_setting";
    hasSetting.since = displays;
    hasSetting.onCamera = true;
    hasSetting.words = 1;
    hasSetting.get = [](const ControllerState& state, const CommandCall& call) {
        const QString id = QString::fromUtf8(call.args.at(0));
        if (state.displaySettingIndex(id) < 0)
            return unknownArgument("display setting", call.args.at(0));
        return CommandOutcome::answer(WireFormat::yesNo(cameraOf(state, call).displaySettings.contains(id)));
    };
    vocabulary.add(hasSetting);

    CommandDefinition setting = cameraSetting<QString>("camera display_setting", displays, nullptr,
                                                       &CameraState::displaySetting);
    // The check needs the system's list of settings, so it wraps the plain setter.
    const CommandDefinition::Setter plainSet = setting.set;
    setting.set = [plainSet](ControllerState& state, const CommandCall& call) {
        const CameraState& camera = cameraOf(state, call);
        const QString id = call.value == "default" ? camera.displaySetting.defaultValue : QString::fromUtf8(call.value);
        const CommandOutcome verdict = checkDisplaySetting(state, camera, id);
        return verdict.ok ? plainSet(state, call) : verdict;
    };
    vocabulary.add(setting);

    CommandDefinition showSyncgroup;
    showSyncgroup.head = "camera display_show_syncgroup";
    showSyncgroup.since = rings;
    showSyncgroup.words = 1;
    showSyncgroup.configuration = false;
    showSyncgroup.get = [](const ControllerState& state, const CommandCall& call) {
        if (call.args.at(0) != "all")
            return invalid("expected all");
        return CommandOutcome::answer(WireFormat::yesNo(state.displayShowSyncgroup));
    };
    showSyncgroup.set = [](ControllerState& state, const CommandCall& call) {
        if (call.args.at(0) != "all")
            return invalid("expected all");
        return WireFormat::parseYesNo(call.value, &state.displayShowSyncgroup) ? CommandOutcome::accepted()
                                                                               : invalid("invalid value");
    };
    vocabulary.add(showSyncgroup);
}
