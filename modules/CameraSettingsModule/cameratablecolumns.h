#ifndef CAMERATABLECOLUMNS_H
#define CAMERATABLECOLUMNS_H

#include <QString>

// The columns of the camera table: one row per camera, one column per property.
// Their numbers are fixed because the overview, the camera pages and the dialog's
// load, save and restore all address the same cells; code names them here and never
// by bare number.
namespace CameraTable {

// Every column once, in number order: its name, number and header text (nullptr for the
// columns without header, whose values only serve conversions).
#define CAMERA_TABLE_COLUMNS(COLUMN) \
    COLUMN(Camera, 0, QT_TRANSLATE_NOOP("CameraSettingsDlg", "Camera")) /* "c01", 1-based camera number */ \
    COLUMN(Model, 1, QT_TRANSLATE_NOOP("CameraSettingsDlg", "Model")) \
    COLUMN(Serial, 2, QT_TRANSLATE_NOOP("CameraSettingsDlg", "Serial")) \
    COLUMN(FlashIntensity, 3, QT_TRANSLATE_NOOP("CameraSettingsDlg", "Flash intensity")) \
    COLUMN(MaxFlash, 4, QT_TRANSLATE_NOOP("CameraSettingsDlg", "MaxFlash")) \
    COLUMN(HasModFlash, 5, QT_TRANSLATE_NOOP("CameraSettingsDlg", "HasModFlash")) \
    COLUMN(ModFlash, 6, QT_TRANSLATE_NOOP("CameraSettingsDlg", "Mod. flash")) \
    COLUMN(StaticReflexSuppr, 7, QT_TRANSLATE_NOOP("CameraSettingsDlg", "Static reflex suppr.")) \
    COLUMN(DynReflexSuppr, 8, QT_TRANSLATE_NOOP("CameraSettingsDlg", "Dyn. reflex suppr.")) \
    COLUMN(CameraOrientation, 9, QT_TRANSLATE_NOOP("CameraSettingsDlg", "CameraOrientation")) \
    COLUMN(HasStaticReflexSuppr, 10, QT_TRANSLATE_NOOP("CameraSettingsDlg", "Has static reflex suppr.")) \
    COLUMN(HasDynReflexSuppr, 11, QT_TRANSLATE_NOOP("CameraSettingsDlg", "Has dyn. reflex suppr.")) \
    COLUMN(MarkerMode, 12, QT_TRANSLATE_NOOP("CameraSettingsDlg", "Marker mode")) \
    COLUMN(MarkerMaxNumber, 13, QT_TRANSLATE_NOOP("CameraSettingsDlg", "Marker max number")) \
    COLUMN(MarkerMaxSizeAbsolute, 14, nullptr) /* in percent only */ \
    COLUMN(MarkerMaxSize, 15, QT_TRANSLATE_NOOP("CameraSettingsDlg", "Marker max size")) /* % of chip size */ \
    COLUMN(MarkerMinSize, 16, QT_TRANSLATE_NOOP("CameraSettingsDlg", "Marker min size")) \
    COLUMN(SyncGroup, 17, QT_TRANSLATE_NOOP("CameraSettingsDlg", "Sync group")) /* "Channel N" */ \
    COLUMN(CascadedSystem, 18, QT_TRANSLATE_NOOP("CameraSettingsDlg", "Cascaded System")) \
    COLUMN(MarkerSizeLimitAbsolute, 19, nullptr) /* in percent only */ \
    COLUMN(MarkerSizeLimit, 20, QT_TRANSLATE_NOOP("CameraSettingsDlg", "Marker size limit")) /* % of chip size */ \
    COLUMN(Chipsize, 21, QT_TRANSLATE_NOOP("CameraSettingsDlg", "Chipsize")) \
    COLUMN(HasCameraMode, 22, QT_TRANSLATE_NOOP("CameraSettingsDlg", "Has camera mode")) \
    COLUMN(CameraModeData, 23, QT_TRANSLATE_NOOP("CameraSettingsDlg", "Camera mode data")) /* the key */ \
    COLUMN(CameraMode, 24, QT_TRANSLATE_NOOP("CameraSettingsDlg", "Camera mode")) /* its description */ \
    COLUMN(HasDisplayIntensity, 25, QT_TRANSLATE_NOOP("CameraSettingsDlg", "Has display intensity")) \
    COLUMN(DisplayIntensity, 26, QT_TRANSLATE_NOOP("CameraSettingsDlg", "Display intensity")) \
    COLUMN(HasDisplayMode, 27, QT_TRANSLATE_NOOP("CameraSettingsDlg", "Has display mode")) \
    COLUMN(DisplayMode, 28, QT_TRANSLATE_NOOP("CameraSettingsDlg", "Display mode")) \
    COLUMN(RoomCal, 29, QT_TRANSLATE_NOOP("CameraSettingsDlg", "Room cal")) \
    COLUMN(Missing, 30, QT_TRANSLATE_NOOP("CameraSettingsDlg", "Missing")) \
    COLUMN(HasMarkerThreshold, 31, QT_TRANSLATE_NOOP("CameraSettingsDlg", "Has marker threshold")) \
    COLUMN(MarkerThreshold, 32, QT_TRANSLATE_NOOP("CameraSettingsDlg", "Marker threshold")) \
    COLUMN(SensorGain, 33, QT_TRANSLATE_NOOP("CameraSettingsDlg", "Sensor gain")) /* before its flag */ \
    COLUMN(HasSensorGain, 34, QT_TRANSLATE_NOOP("CameraSettingsDlg", "Has sensor gain")) \
    COLUMN(HasExposureTime, 35, QT_TRANSLATE_NOOP("CameraSettingsDlg", "Has exposure time")) \
    COLUMN(ExposureTime, 36, QT_TRANSLATE_NOOP("CameraSettingsDlg", "Exposure time")) \
    COLUMN(AutoExposureTime, 37, QT_TRANSLATE_NOOP("CameraSettingsDlg", "Auto exposure time")) \
    COLUMN(HasRingDisplayIntensity, 38, QT_TRANSLATE_NOOP("CameraSettingsDlg", "Has ring display intensity")) \
    COLUMN(RingDisplayIntensity, 39, QT_TRANSLATE_NOOP("CameraSettingsDlg", "Ring display intensity"))

enum Column : int {
#define CAMERA_TABLE_NAME(name, number, header) name,
    CAMERA_TABLE_COLUMNS(CAMERA_TABLE_NAME)
#undef CAMERA_TABLE_NAME
    ColumnCount = 40
};

// The untranslated header text of a column (marked for translation in the dialog's
// context); nullptr for the columns without header and for numbers outside the table.
const char* headerSource(int column);

// The header text as the operator sees it; empty where a column has no header.
QString headerText(int column);

} // namespace CameraTable

#endif // CAMERATABLECOLUMNS_H
