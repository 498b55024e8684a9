#ifndef CAMERAPAGEROW_H
#define CAMERAPAGEROW_H

// Test support: fills a camera table row from a loaded camera page, column by column,
// the way the dialog fills it when it opens, for suites that drive a page or the
// overview without the dialog.
#include "CameraWdg.h"
#include "ChangeTrackingStandardItemModel.h"
#include "camerasettingshelpers.h"
#include "cameratablecolumns.h"

inline void appendCameraPageRow(ChangeTrackingStandardItemModel& table, CameraWdg* page, int row)
{
    table.insertRow(row);
    const QVariant values[CameraTable::ColumnCount] = {
        CameraSettings::cameraId(row + 1), page->getModel(), page->getSerial(), page->getFlash(),
        page->getMaxFlash(), page->getHasModulatedFlash(), page->isActiveModulatedFlash(),
        page->isActiveStaticReflexSkip(), page->isActiveDynamicReflexSkip(), page->camera_orientation,
        page->getHasStaticReflexSkip(), page->getHasDynamicReflexSkip(), int(page->markerMode),
        page->iMarkerMaxNumber, page->dMarkerMaxSize, page->dMarkerMaxSizePercent, page->dMarkerMinSize,
        page->sSyncGroup, page->sCascadeInfos, page->dMarkerSizeLimit, page->dMarkerSizeLimitPercent,
        page->dChipsize, page->num_camera_modes > 1, page->sCameraMode,
        page->getCameraModeDesc(row, page->sCameraMode), page->bHasDisplayIntensity,
        page->iDisplayIntensity, page->bHasDisplayMode, page->sDisplayMode, page->getHasRoomcal(), false,
        page->getHasMarkerThreshold(), page->getMarkerThreshold(), page->getSensorGain(),
        page->getHasSensorGain(), page->getHasExposureTime(), page->getExposureTime(),
        page->getIsAutoExposureTime(), page->hasDisplayRingIntensity, page->displayRingIntensity};
    for (int column = 0; column < CameraTable::ColumnCount; ++column)
        table.setData(table.index(row, column), values[column]);
}

#endif // CAMERAPAGEROW_H
