#include "commandbuilders.h"
#include "commandfamilies.h"
#include "commandvocabulary.h"

using namespace CommandBuilders;

namespace {

const QByteArray kSyncCard("d01");

bool hasSyncGroup(const ControllerState& state, const CameraState& camera)
{
    return state.syncCardAvailable && camera.hasSyncGroup;
}

CommandOutcome noSyncCard()
{
    return CommandOutcome::refuse(ControllerError::NotSupported, "no sync card");
}

} // namespace

void addSyncCommands(CommandVocabulary& vocabulary)
{
    const VersionInfo syncs = since(1, 6);
    CommandDefinition available = systemValue("synccard available", syncs, [](const ControllerState& state) {
        return WireFormat::yesNo(state.syncCardAvailable);
    });
    available.setupOnly = true;
    available.set = [](ControllerState& state, const CommandCall& call) {
        return WireFormat::parseYesNo(call.value, &state.syncCardAvailable) ? CommandOutcome::accepted()
                                                                            : invalid("invalid value");
    };
    vocabulary.add(available);

    CommandDefinition channels;
    channels.head = "synccard number_of_channels";
    channels.since = syncs;
    channels.words = 1;
    channels.setupOnly = true;
    channels.get = [](const ControllerState& state, const CommandCall& call) {
        if (call.args.at(0) != kSyncCard)
            return unknownArgument("sync card", call.args.at(0));
        return state.syncCardAvailable ? CommandOutcome::answer(WireFormat::number(state.syncCardChannels))
                                       : noSyncCard();
    };
    channels.set = [](ControllerState& state, const CommandCall& call) {
        int count = 0;
        if (call.args.at(0) != kSyncCard)
            return unknownArgument("sync card", call.args.at(0));
        if (!WireFormat::parseInt(call.value, &count) || count < 0)
            return invalid("invalid value");
        state.syncCardChannels = count;
        // Cameras on a channel the card no longer has fall out of their group.
        for (CameraState& camera : state.cameras) {
            if (camera.syncChannel.value > count)
                camera.syncChannel.value = 0;
        }
        return CommandOutcome::accepted();
    };
    vocabulary.add(channels);

    CommandDefinition has = cameraFlag("camera has_sync_group", syncs, &CameraState::hasSyncGroup);
    // A camera can only join a group when there is a sync card to run it.
    has.get = [](const ControllerState& state, const CommandCall& call) {
        return CommandOutcome::answer(WireFormat::yesNo(hasSyncGroup(state, cameraOf(state, call))));
    };
    vocabulary.add(has);

    CommandDefinition group;
    group.head = "camera sync_group";
    group.since = syncs;
    group.onCamera = true;
    group.get = [](const ControllerState& state, const CommandCall& call) {
        const CameraState& camera = cameraOf(state, call);
        if (!hasSyncGroup(state, camera))
            return state.syncCardAvailable ? notSupported() : noSyncCard();
        return CommandOutcome::answer(WireFormat::syncGroup(camera.syncChannel.value));
    };
    group.set = [](ControllerState& state, const CommandCall& call) {
        CameraState& camera = cameraOf(state, call);
        if (!hasSyncGroup(state, camera))
            return state.syncCardAvailable ? notSupported() : noSyncCard();
        int channel = camera.syncChannel.defaultValue;
        if (call.value != "default" && !WireFormat::parseSyncGroup(call.value, &channel))
            return invalid("invalid sync group");
        if (channel > state.syncCardChannels)
            return invalid("sync card has no channel " + QByteArray::number(channel));
        camera.syncChannel.value = channel;
        return CommandOutcome::accepted();
    };
    vocabulary.add(group);
}
