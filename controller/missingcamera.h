#ifndef MISSINGCAMERA_H
#define MISSINGCAMERA_H

#include <QString>

// A camera the controller knows from its configuration but cannot reach.
struct MissingCamera
{
    QString model;      // model id word, such as 0x0901
    QString serial;
    QString serialDesc; // empty: the serial itself
};

#endif // MISSINGCAMERA_H
