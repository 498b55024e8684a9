#include "commandbuilders.h"
#include "commandfamilies.h"
#include "commandvocabulary.h"

using namespace CommandBuilders;

void addMarkerCommands(CommandVocabulary& vocabulary)
{
    const VersionInfo always = since(1, 0);
    vocabulary.add(cameraFlag("camera has_marker_mode_accurate", always, &CameraState::hasMarkerModeAccurate));
    vocabulary.add(cameraFlag("camera has_marker_mode_fast", always, &CameraState::hasMarkerModeFast));
    // "default" is itself a marker mode here, so it names that mode and not a restore.
    vocabulary.add(cameraSetting<QString>(
        "camera marker_mode", always, nullptr, &CameraState::markerMode,
        [](const CameraState& camera, const QString& mode) {
            const bool offered = mode == QLatin1String("default")
                                 || (mode == QLatin1String("accurate") && camera.hasMarkerModeAccurate)
                                 || (mode == QLatin1String("fast") && camera.hasMarkerModeFast);
            if (offered)
                return CommandOutcome::accepted();
            if (mode == QLatin1String("accurate") || mode == QLatin1String("fast"))
                return CommandOutcome::refuse(ControllerError::NotSupported, "marker mode not offered by this camera");
            return unknownArgument("marker mode", mode.toUtf8());
        },
        [](const CameraState&) { return QStringLiteral("default"); }));

    vocabulary.add(cameraSetting<int>("camera marker_max_number", always, nullptr, &CameraState::markerMaxNumber,
                                      inRange(1, int(CameraState::MarkerMaxNumberLimit),
                                              "maximum number of markers out of range")));

    // Sizes are in pixels. The controller never holds a minimum above the maximum.
    vocabulary.add(cameraSetting<double>("camera marker_max_size", always, nullptr, &CameraState::markerMaxSize,
                                         [](const CameraState& camera, const double& size) {
                                             if (size <= 0.0)
                                                 return invalid("marker size out of range");
                                             if (size > camera.markerSizeLimit)
                                                 return invalid("marker size above limit");
                                             if (size < camera.markerMinSize.value)
                                                 return invalid("marker maximum size below minimum");
                                             return CommandOutcome::accepted();
                                         }));
    vocabulary.add(cameraSetting<double>("camera marker_min_size", always, nullptr, &CameraState::markerMinSize,
                                         [](const CameraState& camera, const double& size) {
                                             if (size < 0.0)
                                                 return invalid("marker size out of range");
                                             if (size > camera.markerSizeLimit)
                                                 return invalid("marker size above limit");
                                             if (size > camera.markerMaxSize.value)
                                                 return invalid("marker minimum size above maximum");
                                             return CommandOutcome::accepted();
                                         }));

    CommandDefinition limit = cameraValue("camera limit marker_max_size", since(1, 10), [](const CameraState& camera) {
        return WireFormat::number(camera.markerSizeLimit);
    });
    limit.setupOnly = true;
    limit.set = [](ControllerState& state, const CommandCall& call) {
        CameraState& camera = cameraOf(state, call);
        double value = 0.0;
        if (!WireFormat::parseDouble(call.value, &value) || value <= 0.0)
            return invalid("invalid value");
        if (value < camera.markerMaxSize.value)
            return invalid("marker size limit below maximum size");
        camera.markerSizeLimit = value;
        return CommandOutcome::accepted();
    };
    vocabulary.add(limit);

    const VersionInfo thresholds = since(1, 24);
    vocabulary.add(cameraFlag("camera has_marker_threshold", thresholds, &CameraState::hasMarkerThreshold));
    vocabulary.add(cameraSetting<double>("camera marker_threshold", thresholds, &CameraState::hasMarkerThreshold,
                                         &CameraState::markerThreshold,
                                         inRange(0.0, 1.0, "marker threshold out of range")));
}
