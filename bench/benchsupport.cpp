#include "benchsupport.h"

#include "CameraSettingsDlg.h"

#include <simulatedcontroller.h>

#include <QElapsedTimer>
#include <QFile>
#include <QTimer>

#include <sys/resource.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace Bench {

int prepare(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    const int runs = argc > 1 ? std::max(1, std::atoi(argv[1])) : 5;
    std::printf("load average %s, %d runs\n\n", loadAverage().constData(), runs);
    return runs;
}

QByteArray scenario(int cameras)
{
    QByteArray list;
    for (int i = 1; i <= cameras; ++i)
        list += QByteArray(i > 1 ? ", " : "") + "{ \"serial\": \"" + QByteArray::number(1000 + i) + "\" }";
    return R"({
    "protocol_version": "1.27.0",
    "synccard": { "available": true, "number_of_channels": 8 },
    "models": { "0x0901": "LUMACAM5" },
    "display_settings": [ { "id": "camera_id", "description": "Camera number" }, { "id": "off", "description": "Off" } ],
    "camera_defaults": {
        "model": "0x0901", "flash_intensity": 40, "max_flash_intensity": 100, "has_modulated_flash": true,
        "has_static_reflex_skip": true, "has_dynamic_reflex_skip": true,
        "has_display_intensity": true, "display_intensity": 0.5, "has_display_ring_intensity": true,
        "display_settings": ["camera_id", "off"], "display_setting": "camera_id",
        "has_marker_mode_accurate": true, "has_marker_mode_fast": true,
        "marker_max_size": 30, "limit_marker_max_size": 60, "marker_min_size": 2,
        "has_marker_threshold": true, "marker_threshold": 0.1, "has_sensor_gain": true, "sensor_gain": 1.5,
        "has_sensor_exposure": true, "sensor_exposure": 0.5,
        "modes": [ { "description": "Standard 180 Hz", "max_sensor_exposure": 1.0 },
                   { "description": "Fast 300 Hz", "max_sensor_exposure": 0.8 } ],
        "has_sync_group": true, "sync_group": "d01 ch01"
    },
    "cameras": [ )" + list + " ]\n}";
}

void open(CameraSettingsDlg& dialog, const std::function<void(qint64 elapsedNs)>& shown)
{
    QElapsedTimer timer;
    QTimer::singleShot(0, &dialog, [&] { shown(timer.nsecsElapsed()); });
    timer.start();
    dialog.update_and_exec();
}

Measure openInProcess(SimulatedController& controller, CameraSettingsDlg& dialog, const std::function<void()>& shown)
{
    Measure opening;
    controller.clearLog();
    open(dialog, [&](qint64 elapsedNs) {
        opening.moduleMs = (elapsedNs - controller.handlingNanoseconds()) / 1e6;
        opening.commands = controller.log().size();
        shown();
    });
    return opening;
}

double median(QVector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.isEmpty() ? 0 : values.at(values.size() / 2);
}

long peakRssKb()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

QByteArray loadAverage()
{
    QFile file(QStringLiteral("/proc/loadavg"));
    if (!file.open(QIODevice::ReadOnly))
        return "unknown";
    const QList<QByteArray> fields = file.readAll().split(' ');
    return fields.mid(0, 3).join(' ');
}

} // namespace Bench
