// How the camera settings dialog scales with the number of cameras: it opens and cancels
// the dialog on the in-process simulated controller with 8, 32 and 64 cameras, times OK
// with every camera changed and one step of the overview's flash slider, and reports
// for each the module's own time (the controller's handling time subtracted, from its
// own accounting), the number of controller commands and the peak resident memory.
// Each figure is the median of several runs. Run by hand: bin/bench_cameradialog [runs]
#include "CameraSettingsDlg.h"
#include "benchsupport.h"
#include "cameratablecolumns.h"
#include "inprocesssystem.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPushButton>
#include <QSlider>
#include <QStandardItemModel>
#include <QTabWidget>
#include <QTimer>
#include <QtTest>

#include <cstdio>

namespace Col = CameraTable;
using Bench::median;
using Bench::peakRssKb;

namespace {

struct Run
{
    Measure open, cancel, pageTimers, ok, sliderStep;
};

// Times fn; the controller's own handling time is taken off.
Measure measure(SimulatedController& controller, const std::function<void()>& fn)
{
    controller.clearLog();
    QElapsedTimer timer;
    timer.start();
    fn();
    const qint64 wall = timer.nsecsElapsed();
    Measure m;
    m.moduleMs = (wall - controller.handlingNanoseconds()) / 1e6;
    m.commands = controller.log().size();
    return m;
}

// Lets the camera pages' debounce timers, armed by loading, run out, so the next
// measurement sees only its own commands.
void settle()
{
    QTest::qWait(600);
}

Run runOnce(int cameras)
{
    InProcessSystem system(cameras);
    SimulatedController& controller = system.controller;
    QWidget host;
    CameraSettingsDlg dialog(&system.channel, &host, &system.versions);
    Run run;

    // Open (loading until the dialog is shown and its event loop runs), then Cancel.
    run.open = Bench::openInProcess(controller, dialog,
                                    [&] { run.cancel = measure(controller, [&] { dialog.reject(); }); });
    // What the dialog sends in the second after it was opened and closed untouched: a
    // debounce timer left running by loading would write and re-read half a second later.
    run.pageTimers = measure(controller, [&] { QTest::qWait(1000); });

    // OK with every camera changed, and one step of the global flash slider.
    QTimer::singleShot(0, [&] {
        settle();
        auto* slider = dialog.findChild<QTabWidget*>("tabWidget")->widget(0)
                           ->findChild<QSlider*>("horizontalSlider_flash_intensity");
        run.sliderStep = measure(controller, [&] { slider->triggerAction(QAbstractSlider::SliderSingleStepAdd); });
        auto* model = dialog.findChild<QStandardItemModel*>(QString(), Qt::FindDirectChildrenOnly);
        for (int row = 0; row < model->rowCount(); ++row) {
            model->setData(model->index(row, Col::FlashIntensity), 20 + row % 50);
            model->setData(model->index(row, Col::MarkerMaxNumber), 100 + row);
            model->setData(model->index(row, Col::MarkerThreshold), 0.2);
            model->setData(model->index(row, Col::SensorGain), 2.0);
            model->setData(model->index(row, Col::ExposureTime), 0.7);
            model->setData(model->index(row, Col::StaticReflexSuppr), true);
        }
        run.ok = measure(controller, [&] { dialog.findChild<QPushButton*>("btnOk")->click(); });
    });
    dialog.update_and_exec();
    settle();
    return run;
}

} // namespace

int main(int argc, char** argv)
{
    const int runs = Bench::prepare(argc, argv);
    QApplication app(argc, argv);

    std::printf("%-8s %-12s %12s %10s\n", "cameras", "operation", "module ms", "commands");
    double open8 = 0, open64 = 0, step64 = 0;
    for (int cameras : {8, 32, 64}) {
        QVector<double> open, cancel, ok, step;
        Run last;
        for (int i = 0; i < runs; ++i) {
            last = runOnce(cameras);
            open << last.open.moduleMs;
            cancel << last.cancel.moduleMs;
            ok << last.ok.moduleMs;
            step << last.sliderStep.moduleMs;
        }
        std::printf("%-8d %-12s %12.2f %10d\n", cameras, "open", median(open), last.open.commands);
        std::printf("%-8d %-12s %12.2f %10d\n", cameras, "cancel", median(cancel), last.cancel.commands);
        // Commands only: the time of the wait is not the module's.
        std::printf("%-8d %-12s %12s %10d\n", cameras, "second after", "-", last.pageTimers.commands);
        std::printf("%-8d %-12s %12.2f %10d\n", cameras, "ok", median(ok), last.ok.commands);
        std::printf("%-8d %-12s %12.2f %10d\n", cameras, "slider step", median(step), last.sliderStep.commands);
        std::printf("%-8d %-12s %9ld KB\n", cameras, "peak RSS", peakRssKb());
        if (cameras == 8)
            open8 = median(open);
        if (cameras == 64) {
            open64 = median(open);
            step64 = median(step);
        }
    }
    std::printf("\nopen(64) %.1f ms (target <= 70), open(64)/open(8) %.2f (target <= 8.0), "
                "slider step(64) %.2f ms (target <= 16), peak RSS %.1f MB (target <= 46)\n",
                open64, open8 > 0 ? open64 / open8 : 0.0, step64, peakRssKb() / 1024.0);
    std::printf("load average %s\n", Bench::loadAverage().constData());
    return 0;
}
