// quarvo2-host: a stand-in for the QUARVO frontend that loads the frontend modules the
// way the real frontend does and connects them to a simulated tracking controller, or
// to a controller on the network (--controller HOST:PORT, such as a quarvo2-sim).
#include "commandlogpanel.h"
#include "controllersession.h"
#include "headlessrun.h"
#include "hostoptions.h"
#include "hostwindow.h"
#include "simulatedcontroller.h"

#include <QApplication>

#include <cstdio>

int main(int argc, char* argv[])
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    HostOptions options;
    QString error;
    if (!HostOptions::parse(arguments, &options, &error)) {
        fprintf(stderr, "%s\n", qPrintable(error));
        return arguments.contains(QStringLiteral("--help")) || arguments.contains(QStringLiteral("-h")) ? 0 : 2;
    }
    if (options.listScenarios) {
        for (const QString& name : SimulatedController::builtInScenarios())
            printf("%s\n", qPrintable(name));
        return 0;
    }
    // Without a display the host still does its job offscreen.
    const bool noDisplay = qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")
                           && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
    if (noDisplay || options.headless) {
        options.headless = true;
        if (noDisplay)
            qputenv("QT_QPA_PLATFORM", "offscreen");
    }

    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("quarvo2-host"));

    ControllerSession session;
    if (options.remoteController()) {
        if (!session.connectToController(options.controllerHost, options.controllerPort, options.replyTimeoutMs, &error)) {
            fprintf(stderr, "Cannot reach the controller: %s\n", qPrintable(error));
            return 2;
        }
    } else if (!session.loadScenario(options.scenario, &error)) {
        fprintf(stderr, "Cannot load scenario %s: %s\n", qPrintable(options.scenario), qPrintable(error));
        return 2;
    }
    HostWindow window(&session, options.pluginDir.isEmpty() ? HostOptions::defaultPluginDir() : options.pluginDir);
    if (window.loadModules() == 0)
        fprintf(stderr, "No module was loaded.\n");

    if (options.headless) {
        if (noDisplay)
            printf("No display found: running headless, pictures go to %s\n", qPrintable(options.outputDir));
        const int result = HeadlessRun(&window, &session, options.outputDir).run();
        // The run prints the simulated controller's log; a network controller keeps its
        // own, so the host prints what went over the link.
        if (session.isRemote()) {
            printf("\nTraffic with the controller (%s):\n", qPrintable(session.connectionState()));
            for (const CommandLogEntry& entry : session.traffic())
                printf("%s\n", qPrintable(CommandLogPanel::format(entry)));
            fflush(stdout);
        }
        return result;
    }
    window.show();
    return app.exec();
}
