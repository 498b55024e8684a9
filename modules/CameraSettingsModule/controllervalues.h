#ifndef CONTROLLERVALUES_H
#define CONTROLLERVALUES_H

#include <QtGlobal>

class QByteArray;

// Everything the controller answers is untrusted: an int may be INT_MIN or INT_MAX, a
// double 1e308, a count two billion. The module's arithmetic on such values goes
// through these few helpers; each gives the formula's own result wherever it is
// defined and says what it gives elsewhere.
namespace CameraSettings {

// Caps of the counts the controller reports. Each covers every real system and is as
// far as the protocol's words can number: the camera word (c01 ... c999), the two
// digits of the mode, display setting and sync channel words.
const int MaxCameras = 999;
const int MaxCameraModes = 99;
const int MaxDisplaySettings = 99;
const int MaxSyncChannels = 99;

// A count as the number of calls or items it may cause: a negative count is none, a
// count above cap is cap.
inline int boundedCount(int count, int cap) { return qBound(0, count, cap); }

// value truncated toward zero: exact wherever the result fits into an int; beyond the
// int range the nearest end of it (a widget then clamps to its own range); fallback
// for NaN.
int truncatedToInt(double value, int fallback = 0);

// value x factor truncated toward zero, as the widgets show controller values
// (percent, factor x 100, microseconds); out of range and NaN as truncatedToInt. In
// double precision like the widgets' own conversions: 0.29 x 100 gives 28, as always.
inline int scaledToInt(double value, int factor, int fallback = 0)
    { return truncatedToInt(value * factor, fallback); }

// value rounded to the nearest int, halves up (qRound's result wherever that is
// defined); out of range and NaN as truncatedToInt.
int roundedToInt(double value, int fallback = 0);

// The share part has of whole, in percent, integer division: exact for
// 0 <= part <= whole with whole > 0, computed without overflow. Any other pair has
// no share: false, *percent untouched.
bool percentShare(int part, int whole, int* percent);

// A decimal number of a controller text, in the C convention whatever the locale;
// false for anything else, NaN and infinities included.
bool parseFiniteNumber(const QByteArray& text, double* value);

} // namespace CameraSettings

#endif // CONTROLLERVALUES_H
