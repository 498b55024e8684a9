#ifndef DISPLAYSETTING_H
#define DISPLAYSETTING_H

#include <QString>

// What the small display on the cameras can show; the system offers a list of
// them, each camera supports a subset.
struct DisplaySetting
{
    QString id;          // a single word, such as camera_id
    QString description; // may hold blanks
};

#endif // DISPLAYSETTING_H
