#include "snapshotsettings.h"

namespace SnapshotSettings {

using Kind = SettingDefinition::Kind;

const QVector<SettingDefinition>& all()
{
    static const QVector<SettingDefinition> settings = {
        {"static_reflex_skip", 0, Kind::Flag, {"has_static_reflex_skip", nullptr}, false},
        {"dynamic_reflex_skip", 0, Kind::Flag, {"has_dynamic_reflex_skip", nullptr}, false},
        {"mode", 15, Kind::Word, {nullptr, nullptr}, true},
        {"display_intensity", 15, Kind::Number, {"has_display_intensity", nullptr}, false},
        {"display_setting", 15, Kind::Word, {nullptr, nullptr}, false},
        {"display_ring_intensity", 27, Kind::Number, {"has_display_ring_intensity", nullptr}, false},
        {"display_upside_down", 0, Kind::Flag, {nullptr, nullptr}, false},
        // A camera that offers neither mode has no choice of marker mode.
        {"marker_mode", 0, Kind::MarkerMode, {"has_marker_mode_accurate", "has_marker_mode_fast"}, false},
        {"marker_max_number", 0, Kind::Integer, {nullptr, nullptr}, false},
        {"marker_max_size", 0, Kind::Number, {nullptr, nullptr}, false},
        {"marker_min_size", 0, Kind::Number, {nullptr, nullptr}, false},
        {"sync_group", 6, Kind::SyncGroup, {"has_sync_group", nullptr}, false},
        {"flash_intensity", 0, Kind::Integer, {nullptr, nullptr}, false},
        {"modulated_flash", 0, Kind::Flag, {"has_modulated_flash", nullptr}, false},
        {"marker_threshold", 24, Kind::Number, {"has_marker_threshold", nullptr}, false},
        {"sensor_gain", 27, Kind::Number, {"has_sensor_gain", nullptr}, false},
        {"sensor_exposure", 24, Kind::Exposure, {"has_sensor_exposure", nullptr}, false},
    };
    return settings;
}

int orderOf(const QString& name)
{
    const QVector<SettingDefinition>& settings = all();
    for (int i = 0; i < settings.size(); ++i) {
        if (name == QLatin1String(settings.at(i).name))
            return i;
    }
    return -1;
}

const SettingDefinition* find(const QString& name)
{
    const int index = orderOf(name);
    return index < 0 ? nullptr : &all().at(index);
}

} // namespace SnapshotSettings
