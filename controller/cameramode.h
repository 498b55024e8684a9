#ifndef CAMERAMODE_H
#define CAMERAMODE_H

#include <QString>

// One operating mode of a camera (frame rate, sensor window); each mode brings its
// own longest exposure time.
struct CameraMode
{
    QString key;                       // the single word the protocol uses: m01, m02, ...
    QString description;               // may hold blanks
    double maxSensorExposureMs = 1.0;
    double defaultSensorExposureMs = -1.0; // below 0: the camera's default, clamped to the mode
};

#endif // CAMERAMODE_H
