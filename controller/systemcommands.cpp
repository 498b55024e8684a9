#include "commandbuilders.h"
#include "commandfamilies.h"
#include "commandvocabulary.h"

using namespace CommandBuilders;

namespace {

// The slave controller named by the single argument word, or a refusal.
CommandOutcome withSlave(const ControllerState& state, const CommandCall& call,
                         const std::function<QByteArray(const CascadeSlave&)>& value)
{
    const QByteArray id = call.args.value(0);
    const int index = state.cascadeSlaveIndex(QString::fromUtf8(id));
    if (index < 0)
        return unknownArgument("slave controller", id);
    return CommandOutcome::answer(value(state.cascadeSlaves.at(index)));
}

CommandDefinition slaveValue(const QByteArray& head, const std::function<QByteArray(const CascadeSlave&)>& value)
{
    CommandDefinition definition;
    definition.head = head;
    definition.since = since(1, 7);
    definition.words = 1;
    definition.get = [value](const ControllerState& state, const CommandCall& call) {
        return withSlave(state, call, value);
    };
    return definition;
}

} // namespace

void addSystemCommands(CommandVocabulary& vocabulary)
{
    const VersionInfo always = since(1, 0);
    vocabulary.add(systemValue("system protocol_version", always, [](const ControllerState& state) {
        return state.protocolVersion.toString().toLatin1();
    }));
    vocabulary.add(systemValue("system model", always, [](const ControllerState& state) {
        return WireFormat::word(state.systemModel);
    }));
    vocabulary.add(systemValue("system version", always, [](const ControllerState& state) {
        return WireFormat::word(state.systemVersion);
    }));
    vocabulary.add(systemValue("camera number_of_cameras", always, [](const ControllerState& state) {
        return WireFormat::number(state.cameras.size());
    }));

    // The lock is the controller's own business; only test set-up changes it.
    CommandDefinition lock = systemValue("config is_changeable", since(1, 9), [](const ControllerState& state) {
        return WireFormat::yesNo(state.configChangeable);
    });
    lock.setupOnly = true;
    lock.configuration = false;
    lock.set = [](ControllerState& state, const CommandCall& call) {
        return WireFormat::parseYesNo(call.value, &state.configChangeable) ? CommandOutcome::accepted()
                                                                           : invalid("invalid value");
    };
    vocabulary.add(lock);

    vocabulary.add(systemValue("cascade number_of_connected_slaves", since(1, 7), [](const ControllerState& state) {
        return WireFormat::number(state.cascadeSlaves.size());
    }));
    vocabulary.add(slaveValue("cascade connected_slave_controller", [](const CascadeSlave& slave) {
        return WireFormat::word(slave.id) + ' ' + WireFormat::word(slave.controller);
    }));
    vocabulary.add(slaveValue("system hostname_slave", [](const CascadeSlave& slave) {
        return WireFormat::word(slave.hostname);
    }));
    vocabulary.add(slaveValue("system model_slave", [](const CascadeSlave& slave) {
        return WireFormat::number(slave.model);
    }));

    CommandDefinition cascadeSlave = cameraValue("camera cascade_slave", since(1, 7), [](const CameraState& camera) {
        return WireFormat::word(camera.cascadeSlave);
    });
    cascadeSlave.setupOnly = true;
    cascadeSlave.set = [](ControllerState& state, const CommandCall& call) {
        const QString id = QString::fromUtf8(call.value);
        if (id != QLatin1String("none") && state.cascadeSlaveIndex(id) < 0)
            return unknownArgument("slave controller", call.value);
        cameraOf(state, call).cascadeSlave = id;
        return CommandOutcome::accepted();
    };
    vocabulary.add(cascadeSlave);

    vocabulary.add(systemValue("tracking number_of_missing_cameras", since(1, 18), [](const ControllerState& state) {
        return WireFormat::number(state.missingCameras.size());
    }));
    // Missing cameras are numbered on their own, 1 to their count.
    CommandDefinition missing;
    missing.head = "tracking missing_camera";
    missing.since = since(1, 18);
    missing.words = 1;
    missing.get = [](const ControllerState& state, const CommandCall& call) {
        int number = 0;
        if (!WireFormat::parseIndexWord(call.args.value(0), "c", &number) || number > state.missingCameras.size())
            return CommandOutcome::refuse(ControllerError::NoSuchCamera, "no such missing camera");
        const MissingCamera& camera = state.missingCameras.at(number - 1);
        return CommandOutcome::answer(WireFormat::word(camera.model) + ' ' + WireFormat::word(camera.serial));
    };
    vocabulary.add(missing);
    vocabulary.add(cameraFlag("tracking has_room", since(1, 18), &CameraState::hasRoom));
}
