#ifndef BENCHSUPPORT_H
#define BENCHSUPPORT_H

// What the benchmarks share: the system they open, how an opening is timed, medians.
#include "measure.h"

#include <QByteArray>
#include <QVector>

#include <functional>

class CameraSettingsDlg;
class SimulatedController;

namespace Bench {

// Call first thing in main, before the application object: the offscreen platform
// unless the caller chose one, output line by line (a run takes a while, and a failure
// should not swallow the lines before it), and the machine's load printed. Returns the
// number of runs, the first argument (default 5).
int prepare(int argc, char** argv);

// A system of n alike cameras with every feature the dialog handles.
QByteArray scenario(int cameras);

// Opens the dialog; once its event loop runs (the dialog is shown), calls shown with the
// nanoseconds since the opening began. shown ends the dialog, at once or later.
void open(CameraSettingsDlg& dialog, const std::function<void(qint64 elapsedNs)>& shown);

// Opens the dialog on the in-process controller and measures the opening up to the
// moment it is shown; then calls shown, which ends the dialog.
Measure openInProcess(SimulatedController& controller, CameraSettingsDlg& dialog, const std::function<void()>& shown);

double median(QVector<double> values);
long peakRssKb();
// The machine's load averages over 1, 5 and 15 minutes, to read the figures beside.
QByteArray loadAverage();

} // namespace Bench

#endif // BENCHSUPPORT_H
