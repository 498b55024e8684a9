#include "dialogscenarios.h"

namespace DialogScenarios {

const QByteArray ThreeAndTwoMissing = R"({
    "protocol_version": "1.27.0",
    "synccard": { "available": true, "number_of_channels": 4 },
    "models": { "0x0901": "LUMACAM5", "0x0402": "LUMACAMKP", "0x0802": "LUMACAMKPE" },
    "display_settings": [ { "id": "camera_id", "description": "Camera number" }, { "id": "off", "description": "Off" } ],
    "missing_cameras": [ { "model": "0x0802", "serial": "5120", "serial_desc": "KPE 5120" },
                         { "model": "0x0999", "serial": "6000" } ],
    "camera_defaults": { "has_static_reflex_skip": true, "has_sync_group": true, "sync_group": "d01 ch01",
                         "has_display_intensity": true, "display_intensity": 0.5,
                         "display_settings": ["camera_id", "off"] },
    "cameras": [
        { "model": "0x0901", "serial": "101", "flash_intensity": 30, "has_modulated_flash": true, "modulated_flash": true,
          "modes": [ { "description": "Standard 180 Hz" }, { "description": "Fast 300 Hz" } ] },
        { "model": "0x0402", "serial": "102", "has_static_reflex_skip": false, "sync_group": "d01 ch02" },
        { "model": "0x0901", "serial": "103", "has_modulated_flash": true, "static_reflex_skip": true }
    ]
})";

const QByteArray Three = R"({
    "protocol_version": "1.27.0",
    "cameras": [ { "serial": "101" }, { "serial": "102" }, { "serial": "103" } ]
})";

const QByteArray Five = R"({
    "protocol_version": "1.27.0",
    "synccard": { "available": true, "number_of_channels": 12 },
    "models": { "0x0901": "LUMACAM5", "0x0402": "LUMACAMKP", "0x0A01": "LUMACAM5C" },
    "display_settings": [ { "id": "camera_id", "description": "Camera number" },
                          { "id": "sync_group", "description": "Sync group" }, { "id": "off", "description": "Off" } ],
    "camera_defaults": {
        "model": "0x0402", "flash_intensity": 40, "max_flash_intensity": 100,
        "has_modulated_flash": true, "has_static_reflex_skip": true, "has_dynamic_reflex_skip": true,
        "has_display_intensity": true, "display_intensity": 0.5,
        "display_settings": ["camera_id", "sync_group", "off"], "display_setting": "camera_id",
        "has_marker_mode_accurate": true, "marker_max_size": 30, "limit_marker_max_size": 60, "marker_min_size": 2,
        "has_marker_threshold": true, "marker_threshold": 0.1,
        "has_sensor_gain": true, "sensor_gain": 1.5,
        "has_sensor_exposure": true, "sensor_exposure": 0.5,
        "modes": [ { "description": "Standard 180 Hz", "max_sensor_exposure": 1.0 },
                   { "description": "Fast 300 Hz", "max_sensor_exposure": 0.8 } ],
        "has_sync_group": true, "sync_group": "d01 ch01"
    },
    "cameras": [
        { "serial": "201", "model": "0x0901", "has_display_ring_intensity": true, "display_ring_intensity": 0.3 },
        { "serial": "202", "has_sync_group": false },
        { "serial": "203", "sync_group": "d01 ch02" },
        { "serial": "204", "model": "0x0A01", "flash_intensity": 60 },
        { "serial": "205", "sync_group": "d01 ch03", "sensor_exposure": { "value": "auto", "default": 0.6 } }
    ]
})";

const QByteArray EveryFeature = R"({
    "synccard": { "available": true, "number_of_channels": 4 },
    "display_settings": [ { "id": "camera_id", "description": "Camera number" }, { "id": "off", "description": "Off" } ],
    "missing_cameras": [ { "model": "0x0802", "serial": "5120", "serial_desc": "KPE 5120" } ],
    "camera_defaults": { "has_modulated_flash": true, "has_static_reflex_skip": true, "has_dynamic_reflex_skip": true,
                         "has_sync_group": true, "has_display_intensity": true, "has_display_ring_intensity": true,
                         "display_settings": ["camera_id", "off"], "has_marker_mode_accurate": true,
                         "has_marker_threshold": true, "has_sensor_gain": true, "has_sensor_exposure": true,
                         "modes": [ { "description": "Standard" }, { "description": "Fast" } ] },
    "cameras": [ { "serial": "101" },
                 { "serial": "102", "sync_group": "d01 ch02", "modulated_flash": true,
                   "sensor_exposure": { "value": "auto", "default": 0.6 } } ]
})";

QByteArray briskbox(int cameras)
{
    QByteArray list;
    for (int i = 1; i <= cameras; ++i)
        list += QByteArray(i > 1 ? ", " : "") + "{ \"serial\": \"2031" + QByteArray::number(i) + "\" }";
    return R"({
    "protocol_version": "1.27.0", "system_model": "BRISKBOX",
    "models": { "0x0B01": "BRISKBOX3" },
    "camera_defaults": { "model": "0x0B01", "flash_intensity": 5, "max_flash_intensity": 50,
                         "has_modulated_flash": true, "has_static_reflex_skip": true, "static_reflex_skip": false },
    "cameras": [ )" + list + " ]\n}";
}

} // namespace DialogScenarios
