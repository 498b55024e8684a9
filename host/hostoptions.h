#ifndef HOSTOPTIONS_H
#define HOSTOPTIONS_H

#include <QString>
#include <QStringList>

// What the stand-in host was asked to do on its command line.
struct HostOptions
{
    QString scenario = QStringLiteral("default"); // built-in scenario name or scenario file
    QString pluginDir;                             // where the modules are; empty: next to the binary
    QString outputDir = QStringLiteral("host-output"); // pictures of a headless run
    bool headless = false;                         // no display: snapshot the dialog, print the log, quit
    bool listScenarios = false;
    QString controllerHost;                        // a controller on the network; empty: the simulated one in the process
    quint16 controllerPort = 0;
    int replyTimeoutMs = 3000;                     // how long a call to a network controller may take
    bool showVersion = false;
    QString language;                              // catalogues to load; empty: the system's language
    bool details = false;                          // headless: pictures with the details shown as well
    QString helpText;                              // --help or -h: print this and stop

    bool remoteController() const { return !controllerHost.isEmpty(); }

    // Parses the arguments; on a usage error returns false with the message in *error.
    static bool parse(const QStringList& arguments, HostOptions* options, QString* error);
    // The plug-in folder of the build tree (../plugins from the executable) or, where
    // that does not exist, of the installed tree.
    static QString defaultPluginDir();
};

#endif // HOSTOPTIONS_H
