#include "hostoptions.h"

#include <TcpControllerLink.h>

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QLocale>
#include <QScopedPointer>

bool HostOptions::parse(const QStringList& arguments, HostOptions* options, QString* error)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Stand-in QUARVO frontend: loads the frontend modules and runs them against a simulated tracking controller."));
    parser.addHelpOption();
    const QCommandLineOption scenario(QStringList() << "s" << "scenario",
        QStringLiteral("Controller scenario: a built-in name (default, briskbox, legacy) or a scenario JSON file."),
        QStringLiteral("name-or-file"), options->scenario);
    const QCommandLineOption plugins(QStringLiteral("plugins"),
        QStringLiteral("Folder with the module plug-ins (default: ../plugins next to the executable)."),
        QStringLiteral("dir"));
    const QCommandLineOption headless(QStringLiteral("headless"),
        QStringLiteral("Do not show windows: open each module's dialog offscreen, save pictures, print the command log."));
    const QCommandLineOption output(QStringLiteral("output"),
        QStringLiteral("Folder for the pictures of a headless run."), QStringLiteral("dir"), options->outputDir);
    const QCommandLineOption list(QStringLiteral("list-scenarios"), QStringLiteral("List the built-in scenarios."));
    const QCommandLineOption controller(QStringLiteral("controller"),
        QStringLiteral("Talk to the controller at this address over TCP (such as a quarvo2-sim) instead of the simulated one."),
        QStringLiteral("host:port"));
    const QCommandLineOption timeout(QStringLiteral("reply-timeout"),
        QStringLiteral("Milliseconds a call to the network controller may take before it fails."), QStringLiteral("ms"),
        QString::number(options->replyTimeoutMs));
    parser.addOptions({scenario, plugins, headless, output, list, controller, timeout});
    const QCommandLineOption version(QStringLiteral("version"), QStringLiteral("Print the version and quit."));
    const QCommandLineOption language(QStringLiteral("language"),
        QStringLiteral("Language of the windows, such as de or en (default: the system's)."), QStringLiteral("code"));
    const QCommandLineOption details(QStringLiteral("details"),
        QStringLiteral("Headless: take each dialog's pictures once more with its details shown."));
    parser.addOptions({version, language, details});

    if (!parser.parse(arguments)) {
        *error = parser.errorText();
        return false;
    }
    // --help-all, which the parser offers beside --help, asks for the same text here.
    if (parser.isSet(QStringLiteral("help")) || parser.isSet(QStringLiteral("help-all"))) {
        // The help names the executable as the application object knows it, and the host
        // makes that object only after reading its options (it chooses the platform by
        // them): a plain one stands in meanwhile.
        QByteArray name = arguments.value(0, QStringLiteral("quarvo2-host")).toLocal8Bit();
        int argc = 1;
        char* argv[] = {name.data(), nullptr};
        QScopedPointer<QCoreApplication> standIn(QCoreApplication::instance() ? nullptr : new QCoreApplication(argc, argv));
        options->helpText = parser.helpText();
        return true;
    }
    if (!parser.positionalArguments().isEmpty()) {
        *error = QStringLiteral("Unexpected argument: %1").arg(parser.positionalArguments().first());
        return false;
    }
    if (parser.isSet(controller)) {
        if (parser.isSet(scenario)) {
            *error = QStringLiteral("--scenario and --controller exclude each other: the controller serves its own scenario");
            return false;
        }
        if (!TcpControllerLink::parseAddress(parser.value(controller), &options->controllerHost,
                                             &options->controllerPort, error))
            return false;
        if (options->controllerPort == 0) {
            *error = QStringLiteral("--controller needs a port other than 0");
            return false;
        }
    }
    bool numeric = false;
    options->replyTimeoutMs = parser.value(timeout).toInt(&numeric);
    if (!numeric || options->replyTimeoutMs < 1) {
        *error = QStringLiteral("--reply-timeout needs a number of milliseconds, 1 or more");
        return false;
    }
    options->scenario = parser.value(scenario);
    options->pluginDir = parser.value(plugins);
    options->outputDir = parser.value(output);
    options->headless = parser.isSet(headless);
    options->listScenarios = parser.isSet(list);
    options->showVersion = parser.isSet(version);
    options->details = parser.isSet(details);
    options->language = parser.value(language);
    if (parser.isSet(language) && QLocale(options->language).language() == QLocale::C) {
        *error = QStringLiteral("--language needs a language code, such as de or en");
        return false;
    }
    return true;
}

QString HostOptions::defaultPluginDir()
{
    const QDir bin(QCoreApplication::applicationDirPath());
    const QString buildTree = bin.absoluteFilePath(QStringLiteral("../plugins"));
    const QString installed = bin.absoluteFilePath(QStringLiteral(QUARVO_BIN_TO_PLUGINDIR));
    return QDir(buildTree).exists() || !QDir(installed).exists() ? QDir::cleanPath(buildTree) : QDir::cleanPath(installed);
}
