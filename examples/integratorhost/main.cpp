// The smallest frontend that hosts QUARVO modules: it connects to a tracking controller
// (or quarvo2-sim) over TCP, loads every module of a plug-in folder, hands each what
// the frontend hands it, lists the menu entries they offer and shuts them down in order.
//   integratorhost PLUGIN-FOLDER [HOST:PORT]
#include <BackendVersions.h>
#include <IOManager.h>
#include <ModuleInterface.h>
#include <TcpControllerLink.h>

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QMainWindow>
#include <QPluginLoader>

#include <cstdio>

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    if (argc < 2) {
        fprintf(stderr, "usage: integratorhost PLUGIN-FOLDER [HOST:PORT]\n");
        return 2;
    }
    QString hostName = QStringLiteral("127.0.0.1");
    quint16 port = 4711;
    QString error;
    if (argc > 2 && !TcpControllerLink::parseAddress(QString::fromLocal8Bit(argv[2]), &hostName, &port, &error)) {
        fprintf(stderr, "%s\n", qPrintable(error));
        return 2;
    }
    TcpControllerLink link(hostName, port);
    IOManager io(&link);
    // Without a controller every call fails and the modules fall back to their defaults.
    char model[IOManager::ValueBufferSize] = "";
    char protocol[IOManager::ValueBufferSize] = "";
    io.getString(model, "system model");
    io.getString(protocol, "system protocol_version");
    VersionInfo protocolVersion;
    protocolVersion.fromString(QString::fromLatin1(protocol));
    BackendVersions versions(VersionInfo(), protocolVersion, VersionInfo(), QString::fromLatin1(model));
    QMainWindow window;

    const QDir folder(QString::fromLocal8Bit(argv[1]));
    int loaded = 0;
    for (const QString& name : folder.entryList(QDir::Files)) {
        QPluginLoader loader(folder.absoluteFilePath(name));
        auto* module = qobject_cast<ModuleInterface*>(loader.instance());
        if (!module)
            continue;
        ++loaded;
        module->set_param(QStringLiteral("CommandManager"), QVariant::fromValue(&io));
        module->set_param(QStringLiteral("ModuleParent"), QVariant::fromValue(static_cast<QWidget*>(&window)));
        module->set_param(QStringLiteral("BackendVersions"), QVariant::fromValue(&versions));
        module->set_param(QStringLiteral("ObserverMode"), QVariant(false));
        for (const _GuiElement* element : module->get_gui_elements())
            printf("%s %s: %s > %s (%s)\n", qPrintable(module->get_module_name()),
                   qPrintable(module->get_module_version()), qPrintable(element->menu_name),
                   qPrintable(element->menu_entry->text()), qPrintable(element->menu_entry->shortcut().toString()));
        module->about_to_exit_module();
        module->exit_module();
        loader.unload();
    }
    return loaded > 0 ? 0 : 1;
}
