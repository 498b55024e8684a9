#include "globalflashintensitycalculator.h"

#include "camerasettingshelpers.h"
#include "cameratablecolumns.h"

#include <QStandardItemModel>

#include <algorithm>

using CameraSettings::cell;

void GlobalFlashIntensityCalculator::initValues(QStandardItemModel* model)
{
    iCountCam = model ? model->rowCount() : 0;
    camFlashValues.fill(0, iCountCam);
    camMaxFlash.resize(iCountCam);
    for (int i = 0; i < iCountCam; ++i)
        camMaxFlash[i] = cell(model, i, CameraTable::MaxFlash).toInt();

    for (int p = 0; p < PositionCount; ++p) {
        QVector<int>& row = sliderPosTable[size_t(p)];
        row.resize(iCountCam);
        // Divided by 201, not 200: the top position gives 200/201 of the maximum before
        // rounding, which is what the cameras were always set to.
        for (int i = 0; i < iCountCam; ++i)
            row[i] = int(camMaxFlash.at(i) * (p / 201.0) + 0.5);
    }
}

int GlobalFlashIntensityCalculator::getSliderPosition(QStandardItemModel* model)
{
    for (int i = 0; i < iCountCam; ++i)
        camFlashValues[i] = cell(model, i, CameraTable::FlashIntensity).toInt();
    for (int p = 0; p < PositionCount; ++p) {
        if (vectorFlashValues_equals_vectorSliderPosTableI(camFlashValues, p))
            return p;
    }
    return -1;
}

void GlobalFlashIntensityCalculator::setCamFlashValues(int position, QStandardItemModel* model)
{
    // The slider never goes below 0; a negative position has no row, so write nothing.
    if (iCountCam < 1 || !model || position < 0)
        return;
    const QVector<int>& row = sliderPosTable[size_t(qMin(position, PositionCount - 1))];
    // The model may have lost rows since initValues; never write past its end.
    const int count = qMin(iCountCam, model->rowCount());
    for (int i = 0; i < count; ++i)
        model->setData(model->index(i, CameraTable::FlashIntensity), row.at(i), Qt::EditRole);
}

bool GlobalFlashIntensityCalculator::vectorFlashValues_equals_vectorSliderPosTableI(QVector<int>& values, int position)
{
    if (iCountCam < 1)
        return true;
    // A position off the slider or a shorter vector matches nothing; never read past either.
    if (position < 0 || position >= PositionCount || values.size() < iCountCam)
        return false;
    const QVector<int>& row = sliderPosTable[size_t(position)];
    return std::equal(row.cbegin(), row.cbegin() + iCountCam, values.cbegin());
}
