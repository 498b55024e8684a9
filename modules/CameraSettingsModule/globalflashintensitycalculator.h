#ifndef GLOBALFLASHINTENSITYCALCULATOR_H
#define GLOBALFLASHINTENSITYCALCULATOR_H

#include <QVector>

#include <array>

class QStandardItemModel;

// Maps the overview's one flash slider (0 to 200) to a flash intensity per camera,
// proportional to each camera's maximum, and the cameras' flash intensities back to a
// slider position. The table is computed once per showing, so that slider moves and
// refreshes are a lookup and a comparison, without floating-point work.
class GlobalFlashIntensityCalculator
{
public:
    static const int PositionCount = 201; // slider positions 0 ... 200 inclusive

    void initValues(QStandardItemModel* model);
    // The lowest slider position whose flash values equal the cameras' current ones, or -1.
    int getSliderPosition(QStandardItemModel* model);
    void setCamFlashValues(int position, QStandardItemModel* model);
    bool vectorFlashValues_equals_vectorSliderPosTableI(QVector<int>& values, int position);

private:
    int iCountCam = 0;
    QVector<int> camMaxFlash;
    QVector<int> camFlashValues;
    std::array<QVector<int>, PositionCount> sliderPosTable;
};

#endif // GLOBALFLASHINTENSITYCALCULATOR_H
