#ifndef CAMERACOMMANDS_H
#define CAMERACOMMANDS_H

// The controller commands that more than one step of the module sends, each written
// once. They are printf formats for IOManager: the compiler checks their arguments at
// every call. "c%02d" takes the 1-based camera number; a switch's "%s" takes the word
// of CameraSettings::yesNo.
namespace CameraCommand {

constexpr char NumberOfCameras[] = "camera number_of_cameras";
constexpr char Identity[] = "quarvo2 get camera camera c%02d";
constexpr char SerialDesc[] = "camera serial_desc %s";

constexpr char FlashIntensity[] = "camera flash_intensity c%02d";
constexpr char SetFlashIntensity[] = "camera flash_intensity c%02d %d";
constexpr char MaxFlashIntensity[] = "camera max_flash_intensity c%02d";
constexpr char ModulatedFlash[] = "camera modulated_flash c%02d";
constexpr char SwitchModulatedFlash[] = "camera modulated_flash c%02d %s";
constexpr char HasStaticReflexSkip[] = "camera has_static_reflex_skip c%02d";
constexpr char StaticReflexSkip[] = "camera static_reflex_skip c%02d";
constexpr char SwitchStaticReflexSkip[] = "camera static_reflex_skip c%02d %s";
constexpr char HasDynamicReflexSkip[] = "camera has_dynamic_reflex_skip c%02d";

constexpr char HasSyncGroup[] = "camera has_sync_group c%02d";
constexpr char SyncGroup[] = "camera sync_group c%02d";
constexpr char SetSyncGroup[] = "camera sync_group c%02d d01 %s";
constexpr char ShowSyncGroupOnDisplays[] = "camera display_show_syncgroup all %s";

constexpr char HasMarkerModeAccurate[] = "camera has_marker_mode_accurate c%02d";
constexpr char HasMarkerModeFast[] = "camera has_marker_mode_fast c%02d";
constexpr char MarkerMinSize[] = "camera marker_min_size c%02d";

constexpr char NumberOfModes[] = "camera number_of_modes c%02d";
constexpr char SetMode[] = "camera mode c%02d %s";
constexpr char ModeDesc[] = "camera mode_desc c%02d %s";

constexpr char SwitchDisplayMark[] = "camera display_mark c%02d %s";
constexpr char DisplayIntensity[] = "camera display_intensity c%02d";
constexpr char NumberOfDisplaySettings[] = "camera number_of_display_settings";
constexpr char DisplaySettingId[] = "camera display_setting_id t%02d";
constexpr char HasDisplaySetting[] = "camera has_display_setting c%02d %s";
constexpr char DisplaySettingDesc[] = "camera display_setting_desc %s";

constexpr char HasMarkerThreshold[] = "camera has_marker_threshold c%02d";
constexpr char MarkerThreshold[] = "camera marker_threshold c%02d";
constexpr char SetMarkerThreshold[] = "camera marker_threshold c%02d %f";
constexpr char HasSensorGain[] = "camera has_sensor_gain c%02d";
constexpr char SensorGain[] = "camera sensor_gain c%02d";
constexpr char SetSensorGain[] = "camera sensor_gain c%02d %f";
constexpr char HasSensorExposure[] = "camera has_sensor_exposure c%02d";
constexpr char SensorExposure[] = "camera sensor_exposure c%02d";
constexpr char SetSensorExposure[] = "camera sensor_exposure c%02d %f";
// "auto" or "default": automatic exposure, or the mode's default exposure time.
constexpr char SetSensorExposureWord[] = "camera sensor_exposure c%02d %s";

} // namespace CameraCommand

#endif // CAMERACOMMANDS_H
