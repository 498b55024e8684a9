#include "controllervalues.h"

#include <QByteArray>

#include <cmath>
#include <limits>

namespace CameraSettings {

int truncatedToInt(double value, int fallback)
{
    if (std::isnan(value))
        return fallback;
    const double whole = std::trunc(value);
    if (whole >= std::numeric_limits<int>::max())
        return std::numeric_limits<int>::max();
    if (whole <= std::numeric_limits<int>::min())
        return std::numeric_limits<int>::min();
    return static_cast<int>(whole);
}

int roundedToInt(double value, int fallback)
{
    return truncatedToInt(std::floor(value + 0.5), fallback);
}

bool percentShare(int part, int whole, int* percent)
{
    if (whole <= 0 || part < 0 || part > whole)
        return false;
    // 64 bits hold every int times 100; the quotient is then between 0 and 100.
    *percent = static_cast<int>(qint64(part) * 100 / whole);
    return true;
}

bool parseFiniteNumber(const QByteArray& text, double* value)
{
    // QByteArray reads numbers in the C convention, independent of the process locale.
    bool ok = false;
    const double number = text.toDouble(&ok);
    if (!ok || !std::isfinite(number))
        return false;
    *value = number;
    return true;
}

} // namespace CameraSettings
