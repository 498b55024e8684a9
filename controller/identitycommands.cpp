#include "commandbuilders.h"
#include "commandfamilies.h"
#include "commandvocabulary.h"

using namespace CommandBuilders;

void addIdentityCommands(CommandVocabulary& vocabulary)
{
    const VersionInfo always = since(1, 0);
    vocabulary.add(cameraValue("camera camera", always, [](const CameraState& camera) {
        return WireFormat::word(camera.model) + ' ' + WireFormat::word(camera.serial);
    }));
    vocabulary.add(cameraValue("camera version", always, [](const CameraState& camera) {
        return WireFormat::word(camera.version);
    }));
    vocabulary.add(cameraValue("camera focal_length", always, [](const CameraState& camera) {
        return WireFormat::number(camera.focalLength);
    }));
    vocabulary.add(cameraValue("camera sensor_pixel_horizontal", since(1, 11), [](const CameraState& camera) {
        return WireFormat::number(camera.sensorPixelHorizontal);
    }));
    vocabulary.add(cameraValue("camera sensor_pixel_vertical", since(1, 11), [](const CameraState& camera) {
        return WireFormat::number(camera.sensorPixelVertical);
    }));

    CommandDefinition modelDesc;
    modelDesc.head = "camera model_desc";
    modelDesc.words = 1;
    modelDesc.get = [](const ControllerState& state, const CommandCall& call) {
        QString description;
        if (!state.modelDescription(QString::fromUtf8(call.args.at(0)), &description))
            return unknownArgument("camera model", call.args.at(0));
        return CommandOutcome::answer(WireFormat::description(description));
    };
    vocabulary.add(modelDesc);

    // Asked with the model and serial words of a present or a missing camera.
    CommandDefinition serialDesc;
    serialDesc.head = "camera serial_desc";
    serialDesc.since = since(1, 23);
    serialDesc.words = 2;
    serialDesc.get = [](const ControllerState& state, const CommandCall& call) {
        QString description;
        if (!state.serialDescription(QString::fromUtf8(call.args.at(0)), QString::fromUtf8(call.args.at(1)),
                                     &description))
            return unknownArgument("camera", call.args.at(0) + ' ' + call.args.at(1));
        return CommandOutcome::answer(WireFormat::description(description));
    };
    vocabulary.add(serialDesc);
}
