// What the camera settings dialog costs with its controller on the network. For 8, 32 and
// 64 cameras it starts quarvo2-sim on a free loopback port, opens the dialog over the
// TCP link as the host does, watches the second after the dialog shows and cancels;
// then replays the opening's requests with a bare client of its own (one blocking
// socket, one request at a time) and opens the dialog once more on the in-process
// controller for the module's own time. The TCP opening can be no cheaper than module
// time plus bare replay time; the ratio says what the link and the server add.
// Last, the 64-camera opening against a controller that holds each reply 500 us,
// against requests x 500 us + module time. Figures are medians of several runs, the
// three openings of a run taken back to back. Run by hand: bin/bench_network [runs]
#include "CameraSettingsDlg.h"
#include "bareclient.h"
#include "benchsupport.h"
#include "inprocesssystem.h"
#include "simprocess.h"

#include <TcpControllerLink.h>

#include <QApplication>
#include <QTimer>

#include <cstdio>

using Bench::median;

namespace {

const int kLatencyUs = 500;
const int kLatencyCameras = 64;

struct TcpOpening
{
    double ms = 0;
    QList<QByteArray> trace;   // the opening's requests, in order
    int afterOpening = 0;      // requests in the watched time after the dialog showed
};

// Opens the dialog over a TCP link to the server; once it shows, lets the event loop run
// for watchMs (0: not at all) counting requests, then cancels.
TcpOpening openOverTcp(quint16 port, BackendVersions versions, int watchMs)
{
    TcpControllerLink link(QStringLiteral("127.0.0.1"), port);
    QList<QByteArray> requests;
    int failed = 0;
    link.setTrafficObserver([&](const QByteArray& request, const QByteArray&, bool ok) {
        requests.append(request);
        failed += ok ? 0 : 1;
    });
    QuietSink sink;
    IOManager channel(&link, &sink);
    QWidget host;
    CameraSettingsDlg dialog(&channel, &host, &versions);
    TcpOpening opening;
    Bench::open(dialog, [&](qint64 elapsedNs) {
        opening.ms = elapsedNs / 1e6;
        opening.trace = requests;
        if (watchMs <= 0) {
            dialog.reject();
            return;
        }
        // The one place where time is waited out: what the dialog sends by itself in the
        // second after it shows is the measurement.
        QTimer::singleShot(watchMs, &dialog, [&] {
            opening.afterOpening = requests.size() - opening.trace.size();
            dialog.reject();
        });
    });
    if (failed > 0)
        qFatal("%d requests over TCP failed: %s", failed, qPrintable(link.lastError()));
    return opening;
}

double bareReplayMs(quint16 port, const QList<QByteArray>& trace)
{
    QElapsedTimer timer;
    timer.start();
    BareClient client;
    if (!client.connectTo(port) || !client.replay(trace))
        qFatal("the bare replay of %d requests failed", int(trace.size()));
    return timer.nsecsElapsed() / 1e6;
}

// The module's own time for an opening on the in-process controller (its handling time
// taken off), with the versions the dialog gets.
Measure openInProcess(InProcessSystem& system)
{
    QWidget host;
    CameraSettingsDlg dialog(&system.channel, &host, &system.versions);
    return Bench::openInProcess(system.controller, dialog, [&] { dialog.reject(); });
}

void startServer(SimProcess* server, int cameras, const QStringList& arguments = QStringList())
{
    if (!server->start(arguments, 0, Bench::scenario(cameras)))
        qFatal("quarvo2-sim did not start: %s%s", qPrintable(server->firstLine()),
               server->process().readAllStandardError().constData());
}

} // namespace

int main(int argc, char** argv)
{
    const int runs = Bench::prepare(argc, argv);
    QApplication app(argc, argv);
    {
        // The first dialog of the process loads its pictures, fonts and styles; that is
        // no opening's cost.
        InProcessSystem warmUp(8);
        openInProcess(warmUp);
    }
    std::printf("%-8s %9s %12s %10s %10s %10s %12s\n", "cameras", "requests", "tcp open ms", "module ms", "replay ms",
                "ratio", "after open");
    double ratio64 = 0, module64 = 0;
    int after64 = 0;
    for (int cameras : {8, 32, 64}) {
        SimProcess server;
        startServer(&server, cameras);
        QVector<double> tcp, module, replay, ratio;
        TcpOpening last;
        for (int i = 0; i < runs; ++i) {
            InProcessSystem system(cameras);
            last = openOverTcp(server.port(), system.versions, 1000);
            const double replayMs = bareReplayMs(server.port(), last.trace);
            const double moduleMs = openInProcess(system).moduleMs;
            tcp << last.ms;
            replay << replayMs;
            module << moduleMs;
            ratio << last.ms / (moduleMs + replayMs);
        }
        std::printf("%-8d %9d %12.2f %10.2f %10.2f %10.2f %12d\n", cameras, int(last.trace.size()), median(tcp),
                    median(module), median(replay), median(ratio), last.afterOpening);
        if (cameras == 64) {
            ratio64 = median(ratio);
            module64 = median(module);
            after64 = last.afterOpening;
        }
    }

    SimProcess slow;
    startServer(&slow, kLatencyCameras, {QStringLiteral("--latency"), QString::number(kLatencyUs)});
    QVector<double> tcp, replay, expected, ratio;
    int requests = 0;
    for (int i = 0; i < runs; ++i) {
        InProcessSystem system(kLatencyCameras);
        const TcpOpening opening = openOverTcp(slow.port(), system.versions, 0);
        requests = opening.trace.size();
        // The bare replay shows how much of the difference is the server's hold itself.
        replay << bareReplayMs(slow.port(), opening.trace);
        const double expectedMs = requests * kLatencyUs / 1000.0 + openInProcess(system).moduleMs;
        tcp << opening.ms;
        expected << expectedMs;
        ratio << opening.ms / expectedMs;
    }
    std::printf("\n%d cameras at %d us latency: tcp open %.1f ms, %d requests x %d us + module time = %.1f ms, "
                "ratio %.3f; bare replay %.1f ms (%.0f us a request)\n",
                kLatencyCameras, kLatencyUs, median(tcp), requests, kLatencyUs, median(expected), median(ratio),
                median(replay), requests > 0 ? median(replay) * 1000 / requests : 0.0);

    std::printf("\nat 64 cameras: tcp/(module+replay) %.2f (target <= 1.15), commands in the second after opening %d "
                "(target 0), module time %.1f ms; at %d us: ratio %.3f (target within 0.90..1.10)\n",
                ratio64, after64, module64, kLatencyUs, median(ratio));
    std::printf("load average %s\n", Bench::loadAverage().constData());
    return 0;
}
