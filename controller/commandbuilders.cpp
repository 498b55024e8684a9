#include "commandbuilders.h"

namespace CommandBuilders {

CommandOutcome notSupported()
{
    return CommandOutcome::refuse(ControllerError::NotSupported, "not supported by this camera");
}

CommandOutcome invalid(const QByteArray& text)
{
    return CommandOutcome::refuse(ControllerError::InvalidValue, text);
}

CommandOutcome unknownArgument(const QByteArray& what, const QByteArray& word)
{
    return invalid("unknown " + what + ' ' + word);
}

const CameraState& cameraOf(const ControllerState& state, const CommandCall& call)
{
    return state.cameras.at(call.camera);
}

CameraState& cameraOf(ControllerState& state, const CommandCall& call)
{
    return state.cameras[call.camera];
}

CommandDefinition systemValue(const QByteArray& head, const VersionInfo& since, const SystemValue& value)
{
    CommandDefinition definition;
    definition.head = head;
    definition.since = since;
    definition.get = [value](const ControllerState& state, const CommandCall&) {
        return CommandOutcome::answer(value(state));
    };
    return definition;
}

CommandDefinition cameraValue(const QByteArray& head, const VersionInfo& since, const CameraValue& value)
{
    CommandDefinition definition;
    definition.head = head;
    definition.since = since;
    definition.onCamera = true;
    definition.get = [value](const ControllerState& state, const CommandCall& call) {
        return CommandOutcome::answer(value(cameraOf(state, call)));
    };
    return definition;
}

CommandDefinition cameraFlag(const QByteArray& head, const VersionInfo& since, bool CameraState::*flag)
{
    CommandDefinition definition = cameraValue(head, since, [flag](const CameraState& camera) {
        return WireFormat::yesNo(camera.*flag);
    });
    definition.setupOnly = true;
    definition.set = [flag](ControllerState& state, const CommandCall& call) {
        bool on = false;
        if (!WireFormat::parseYesNo(call.value, &on))
            return invalid("invalid value");
        cameraOf(state, call).*flag = on;
        return CommandOutcome::accepted();
    };
    return definition;
}

CommandDefinition cameraSwitch(const QByteArray& head, const VersionInfo& since, bool CameraState::*support,
                               Setting<bool> CameraState::*setting)
{
    CommandDefinition definition = cameraSetting<bool>(head, since, support, setting);
    definition.get = [support, setting](const ControllerState& state, const CommandCall& call) {
        const CameraState& camera = cameraOf(state, call);
        return CommandOutcome::answer(WireFormat::yesNo(camera.*support && (camera.*setting).value));
    };
    return definition;
}

} // namespace CommandBuilders
