#include "camerastate.h"

CameraState::CameraState()
{
    flashIntensity.assign(50);
    displayIntensity.assign(0.5);
    displayRingIntensity.assign(0.5);
    displaySetting.assign(QStringLiteral("camera_id"));
    markerMode.assign(QStringLiteral("default"));
    markerMaxNumber.assign(200);
    markerMaxSize.assign(30.0);
    markerMinSize.assign(2.0);
    markerThreshold.assign(0.1);
    sensorGain.assign(1.0);
    sensorExposureMs.assign(0.5);
    modes.append(CameraMode{QStringLiteral("m01"), QStringLiteral("Standard"), 1.0, -1.0});
    mode.assign(QStringLiteral("m01"));
}

QString CameraState::serialDescription() const
{
    return serialDesc.isEmpty() ? serial : serialDesc;
}

int CameraState::modeIndex(const QString& key) const
{
    for (int i = 0; i < modes.size(); ++i) {
        if (modes.at(i).key == key)
            return i;
    }
    return -1;
}

const CameraMode& CameraState::currentMode() const
{
    const int index = modeIndex(mode.value);
    return modes.at(index < 0 ? 0 : index);
}

double CameraState::maxSensorExposureMs() const
{
    return currentMode().maxSensorExposureMs;
}

double CameraState::defaultSensorExposureMs() const
{
    const CameraMode& current = currentMode();
    const double wanted = current.defaultSensorExposureMs >= 0.0 ? current.defaultSensorExposureMs
                                                                 : sensorExposureMs.defaultValue;
    return qBound(minSensorExposureMs, wanted, current.maxSensorExposureMs);
}

void CameraState::setMode(const QString& key)
{
    mode.value = key;
    sensorExposureMs.value = qBound(minSensorExposureMs, sensorExposureMs.value, maxSensorExposureMs());
}

void CameraState::setMaxFlashIntensity(int maximum)
{
    maxFlashIntensity = maximum;
    flashIntensity.value = qMin(flashIntensity.value, maximum);
}
