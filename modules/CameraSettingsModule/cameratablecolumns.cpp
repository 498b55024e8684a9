#include "cameratablecolumns.h"

#include <QCoreApplication>

namespace CameraTable {

const char* const TranslationContext = "CameraSettingsDlg";

namespace {

// Indexed by column number; the static_assert below keeps it in step with the enum.
const char* const kHeaderTexts[] = {
    QT_TRANSLATE_NOOP("CameraSettingsDlg", "Camera"),
    QT_TRANSLATE_NOOP("CameraSettingsDlg", "Model"),
    QT_TRANSLATE_NOOP("CameraSettingsDlg", "Serial"),
    QT_TRANSLATE_NOOP("CameraSettingsDlg", "Flash intensity"),
    QT_TRANSLATE_NOOP("CameraSettingsDlg", "MaxFlash"),
    QT_TRANSLATE_NOOP("CameraSettingsDlg", "HasModFlash"),
    QT_TRANSLATE_NOOP("CameraSettingsDlg", "Mod. flash"),
    QT_TRANSLATE_NOOP("CameraSettingsDlg", "Static reflex suppr."),
    QT_TRANSLATE_NOOP("CameraSettingsDlg", "Dyn. reflex suppr."),
    QT_TRANSLATE_NOOP("CameraSettingsDlg", "CameraOrientation"),
    QT_TRANSLATE_NOOP("CameraSettingsDlg", "Has static reflex suppr."),
    QT_TRANSLATE_NOOP("CameraSettingsDlg", "Has dyn. reflex suppr."),
    QT_TRANSLATE_NOOP("CameraSettingsDlg", "Marker mode"),
    QT_TRANSLATE_NOOP("CameraSettingsDlg", "Marker max number"),
    nullptr,
    QT_TRANSLATE_NOOP("CameraSettingsDlg", "Marker max size"),
    QT_TRANSLATE_NOOP("CameraSettingsDlg", "Marker min size"),
    QT_TRANSLATE_NOOP("CameraSettingsDlg", "Sync group"),
    QT_TRANSLATE_NOOP("CameraSettingsDlg", "Cascaded System"),
    nullptr,
    QT_TRANSLATE_NOOP("CameraSettingsDlg", "Marker size limit"),
    QT_TRANSLATE_NOOP("CameraSettingsDlg", "Chipsize"),
    QT_TRANSLATE_NOOP("CameraSettingsDlg", "Has camera mode"),
    QT_TRANSLATE_NOOP("CameraSettingsDlg", "Camera mode data"),
    QT_TRANSLATE_NOOP("CameraSettingsDlg", "Camera mode"),
    QT_TRANSLATE_NOOP("CameraSettingsDlg", "Has display intensity"),
    QT_TRANSLATE_NOOP("CameraSettingsDlg", "Display intensity"),
    QT_TRANSLATE_NOOP("CameraSettingsDlg", "Has display mode"),
    QT_TRANSLATE_NOOP("CameraSettingsDlg", "Display mode"),
    QT_TRANSLATE_NOOP("CameraSettingsDlg", "Room cal"),
    QT_TRANSLATE_NOOP("CameraSettingsDlg", "Missing"),
    QT_TRANSLATE_NOOP("CameraSettingsDlg", "Has marker threshold"),
    QT_TRANSLATE_NOOP("CameraSettingsDlg", "Marker threshold"),
    QT_TRANSLATE_NOOP("CameraSettingsDlg", "Sensor gain"),
    QT_TRANSLATE_NOOP("CameraSettingsDlg", "Has sensor gain"),
    QT_TRANSLATE_NOOP("CameraSettingsDlg", "Has exposure time"),
    QT_TRANSLATE_NOOP("CameraSettingsDlg", "Exposure time"),
    QT_TRANSLATE_NOOP("CameraSettingsDlg", "Auto exposure time"),
    QT_TRANSLATE_NOOP("CameraSettingsDlg", "Has ring display intensity"),
    QT_TRANSLATE_NOOP("CameraSettingsDlg", "Ring display intensity"),
};

static_assert(sizeof kHeaderTexts / sizeof kHeaderTexts[0] == ColumnCount,
              "one header entry per camera table column");

} // namespace

const char* headerSource(int column)
{
    if (column < 0 || column >= ColumnCount)
        return nullptr;
    return kHeaderTexts[column];
}

QString headerText(int column)
{
    const char* source = headerSource(column);
    return source ? QCoreApplication::translate(TranslationContext, source) : QString();
}

} // namespace CameraTable
