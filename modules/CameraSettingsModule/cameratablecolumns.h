#ifndef CAMERATABLECOLUMNS_H
#define CAMERATABLECOLUMNS_H

#include <QString>

// The columns of the camera table: one row per camera, one column per property.
// Their numbers are fixed because the overview, the camera pages and the dialog's
// load, save and restore all address the same cells; code names them here and never
// by bare number.
namespace CameraTable {

enum Column : int {
    Camera = 0,               // "c01", 1-based camera number
    Model = 1,
    Serial = 2,
    FlashIntensity = 3,
    MaxFlash = 4,
    HasModFlash = 5,
    ModFlash = 6,
    StaticReflexSuppr = 7,
    DynReflexSuppr = 8,
    CameraOrientation = 9,
    HasStaticReflexSuppr = 10,
    HasDynReflexSuppr = 11,
    MarkerMode = 12,
    MarkerMaxNumber = 13,
    MarkerMaxSizeAbsolute = 14, // no header: only the percent column is shown
    MarkerMaxSize = 15,         // percent of the chip size
    MarkerMinSize = 16,
    SyncGroup = 17,             // "Channel N"
    CascadedSystem = 18,
    MarkerSizeLimitAbsolute = 19, // no header: only the percent column is shown
    MarkerSizeLimit = 20,       // percent of the chip size
    Chipsize = 21,
    HasCameraMode = 22,
    CameraModeData = 23,        // the mode as the controller names it
    CameraMode = 24,            // the mode as described to the operator
    HasDisplayIntensity = 25,
    DisplayIntensity = 26,
    HasDisplayMode = 27,
    DisplayMode = 28,
    RoomCal = 29,
    Missing = 30,
    HasMarkerThreshold = 31,
    MarkerThreshold = 32,
    SensorGain = 33,            // value before its support flag, unlike the others
    HasSensorGain = 34,
    HasExposureTime = 35,
    ExposureTime = 36,
    AutoExposureTime = 37,
    HasRingDisplayIntensity = 38,
    RingDisplayIntensity = 39,

    ColumnCount = 40
};

// The translation context of the header texts: they belong to the dialog that sets them.
extern const char* const TranslationContext;

// The untranslated header text of a column (marked for translation in the dialog's
// context); nullptr for the columns without header and for numbers outside the table.
const char* headerSource(int column);

// The header text as the operator sees it; empty where a column has no header.
QString headerText(int column);

} // namespace CameraTable

#endif // CAMERATABLECOLUMNS_H
