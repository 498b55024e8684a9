// quarvo2-host: a stand-in for the QUARVO frontend that loads the frontend modules the
// way the real frontend does and connects them to a simulated tracking controller, or
// to a controller on the network (--controller HOST:PORT, such as a quarvo2-sim).
#include "controllersession.h"
#include "headlessrun.h"
#include "hostoptions.h"
#include "hosttranslations.h"
#include "hostwindow.h"
#include "modulehost.h"
#include "simulatedcontroller.h"

#include <QApplication>
#include <QDir>
#include <QLocale>

#include <cstdio>

namespace {

QtMessageHandler g_qtMessageHandler = nullptr;

// The offscreen platform warns about every window whose size hints it cannot pass on;
// nothing anyone could act on, and it buries the run's report.
void withoutOffscreenNoise(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (message.contains(QLatin1String("does not support propagateSizeHints")))
        return;
    g_qtMessageHandler(type, context, message);
}

} // namespace

int main(int argc, char* argv[])
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    HostOptions options;
    QString error;
    if (!HostOptions::parse(arguments, &options, &error)) {
        fprintf(stderr, "%s\n", qPrintable(error));
        return 2;
    }
    if (!options.helpText.isEmpty()) {
        printf("%s", qPrintable(options.helpText));
        return 0;
    }
    if (options.showVersion) {
        printf("quarvo2-host %s\n", QUARVO_VERSION);
        return 0;
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
        g_qtMessageHandler = qInstallMessageHandler(withoutOffscreenNoise);
    }

    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("quarvo2-host"));
    QApplication::setApplicationVersion(QStringLiteral(QUARVO_VERSION));
    const QString pluginDir = options.pluginDir.isEmpty() ? HostOptions::defaultPluginDir() : options.pluginDir;
    HostTranslations translations;
    translations.install(options.language.isEmpty() ? QLocale::system() : QLocale(options.language),
                         HostTranslations::folderBeside(pluginDir));

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
    HostWindow window(&session, pluginDir);
    if (window.loadModules() == 0)
        fprintf(stderr, "No module was loaded.\n");

    if (options.headless) {
        if (noDisplay)
            printf("No display found: running headless, pictures go to %s\n", qPrintable(options.outputDir));
        const QStringList catalogues = translations.loaded();
        printf("Modules from %s: %s\nCatalogues: %s\n", qPrintable(QDir::toNativeSeparators(pluginDir)),
               window.moduleHost()->descriptions().join(QStringLiteral(", ")).toUtf8().constData(),
               catalogues.isEmpty() ? "none" : qPrintable(catalogues.join(QStringLiteral(", "))));
        HeadlessRun run(&window, &session, options.outputDir);
        run.setDetails(options.details);
        return run.run();
    }
    window.show();
    return app.exec();
}
