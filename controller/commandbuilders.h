#ifndef COMMANDBUILDERS_H
#define COMMANDBUILDERS_H

#include "commanddefinition.h"
#include "controllerstate.h"
#include "wireformat.h"

#include <functional>

// The shapes most commands share, written once: a value of the system, a read-only
// fact about a camera, a camera setting with its validation and its default.
namespace CommandBuilders {

using SystemValue = std::function<QByteArray(const ControllerState&)>;
using CameraValue = std::function<QByteArray(const CameraState&)>;

inline VersionInfo since(int major, int minor) { return VersionInfo(major, minor, -1); }

CommandOutcome notSupported();
CommandOutcome invalid(const QByteArray& text);
CommandOutcome unknownArgument(const QByteArray& what, const QByteArray& word);

const CameraState& cameraOf(const ControllerState& state, const CommandCall& call);
CameraState& cameraOf(ControllerState& state, const CommandCall& call);

// A value of the whole system, read-only.
CommandDefinition systemValue(const QByteArray& head, const VersionInfo& since, const SystemValue& value);
// A value of one camera, read-only.
CommandDefinition cameraValue(const QByteArray& head, const VersionInfo& since, const CameraValue& value);
// A yes/no fact about a camera (a capability); test set-up may change it.
CommandDefinition cameraFlag(const QByteArray& head, const VersionInfo& since, bool CameraState::*flag);

template <typename T>
using Check = std::function<CommandOutcome(const CameraState&, const T&)>;
template <typename T>
using DefaultOf = std::function<T(const CameraState&)>;
template <typename T>
using Apply = std::function<void(CameraState&, const T&)>;

// A camera setting, read and written as one word, "default" restoring its default.
// Without support (support member false) reads and writes are refused.
template <typename T>
CommandDefinition cameraSetting(const QByteArray& head, const VersionInfo& since, bool CameraState::*support,
                                Setting<T> CameraState::*setting, const Check<T>& check = Check<T>(),
                                const DefaultOf<T>& defaultOf = DefaultOf<T>(), const Apply<T>& apply = Apply<T>())
{
    CommandDefinition definition;
    definition.head = head;
    definition.since = since;
    definition.onCamera = true;
    definition.get = [support, setting](const ControllerState& state, const CommandCall& call) {
        const CameraState& camera = cameraOf(state, call);
        if (support && !(camera.*support))
            return notSupported();
        return CommandOutcome::answer(WireFormat::formatValue((camera.*setting).value));
    };
    definition.set = [support, setting, check, defaultOf, apply](ControllerState& state, const CommandCall& call) {
        CameraState& camera = cameraOf(state, call);
        if (support && !(camera.*support))
            return notSupported();
        T candidate{};
        if (call.value == "default")
            candidate = defaultOf ? defaultOf(camera) : (camera.*setting).defaultValue;
        else if (!WireFormat::parseValue(call.value, &candidate))
            return invalid("invalid value");
        if (check) {
            const CommandOutcome verdict = check(camera, candidate);
            if (!verdict.ok)
                return verdict;
        }
        if (apply)
            apply(camera, candidate);
        else
            (camera.*setting).value = candidate;
        return CommandOutcome::accepted();
    };
    return definition;
}

// An on/off setting of a camera feature. A camera without the feature reads it as
// off, as the controller reports a feature it lacks, but refuses to switch it.
CommandDefinition cameraSwitch(const QByteArray& head, const VersionInfo& since, bool CameraState::*support,
                               Setting<bool> CameraState::*setting);

// A check that a number lies in [low, high], refused with the given text.
template <typename T>
Check<T> inRange(T low, T high, const QByteArray& text)
{
    return [low, high, text](const CameraState&, const T& value) {
        return value < low || value > high ? invalid(text) : CommandOutcome::accepted();
    };
}

} // namespace CommandBuilders

#endif // COMMANDBUILDERS_H
