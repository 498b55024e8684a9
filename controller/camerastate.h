#ifndef CAMERASTATE_H
#define CAMERASTATE_H

#include "cameramode.h"
#include "setting.h"

#include <QString>
#include <QStringList>
#include <QVector>

// Everything one present camera knows about itself: identity, capabilities, the
// settings with their defaults, and the rules that tie settings together (the
// camera mode decides the exposure range).
struct CameraState
{
    // Identity
    QString model = QStringLiteral("0x0901"); // model id word
    QString serial = QStringLiteral("1");
    QString serialDesc;                       // empty: the serial itself
    QString version = QStringLiteral("1.0.0");
    double focalLength = 12.5;
    int sensorPixelHorizontal = 1280;
    int sensorPixelVertical = 1024;

    // Flash
    Setting<int> flashIntensity;
    int maxFlashIntensity = 100;
    int maxMaxFlashIntensity = 100;
    bool flashLowPower = false;
    bool hasModulatedFlash = false;
    Setting<bool> modulatedFlash;

    // Reflex suppression
    bool hasStaticReflexSkip = false;
    Setting<bool> staticReflexSkip;
    bool hasDynamicReflexSkip = false;
    Setting<bool> dynamicReflexSkip;

    // The camera's own display and light ring
    Setting<bool> displayUpsideDown;
    Setting<bool> displayMark;
    bool hasDisplayIntensity = false;
    Setting<double> displayIntensity;       // fraction 0..1
    bool hasDisplayRingIntensity = false;
    Setting<double> displayRingIntensity;   // fraction 0..1
    QStringList displaySettings;            // ids of the system's settings this camera supports
    Setting<QString> displaySetting;

    // Marker detection; sizes in pixels
    bool hasMarkerModeAccurate = false;
    bool hasMarkerModeFast = false;
    Setting<QString> markerMode;
    Setting<int> markerMaxNumber;
    Setting<double> markerMaxSize;
    double markerSizeLimit = 30.0;
    Setting<double> markerMinSize;
    bool hasMarkerThreshold = false;
    Setting<double> markerThreshold;        // fraction 0..1

    // Sensor
    bool hasSensorGain = false;
    double minSensorGain = 1.0;
    double maxSensorGain = 4.0;
    Setting<double> sensorGain;
    bool hasSensorExposure = false;
    double minSensorExposureMs = 0.01;
    Setting<double> sensorExposureMs;       // manual exposure time; its default is the camera's
    Setting<bool> sensorExposureAuto;

    // Camera modes: never empty
    QVector<CameraMode> modes;
    Setting<QString> mode;                  // key of the current mode

    // Synchronisation: channel on sync card d01, 0 = no sync group
    bool hasSyncGroup = false;
    Setting<int> syncChannel;

    QString cascadeSlave = QStringLiteral("none");
    bool hasRoom = true;

    static const int MarkerMaxNumberLimit = 400;

    CameraState();

    QString serialDescription() const;
    int modeIndex(const QString& key) const; // -1 when the camera has no such mode
    const CameraMode& currentMode() const;
    double maxSensorExposureMs() const;      // of the current mode
    double defaultSensorExposureMs() const;  // of the current mode
    // Switches the mode; a shorter maximum exposure of the new mode cuts the exposure.
    void setMode(const QString& key);
    // Lowers the flash to a reduced maximum, as the power supply forces it.
    void setMaxFlashIntensity(int maximum);
};

#endif // CAMERASTATE_H
