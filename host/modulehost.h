#ifndef MODULEHOST_H
#define MODULEHOST_H

#include "ModuleInterface.h"

#include <QList>
#include <QObject>
#include <QStringList>

class BackendVersions;
class IOManager;
class QPluginLoader;
class QWidget;

// Loads the frontend modules from a plug-in folder and runs them through their life:
// parameters, GUI elements, and the orderly shut-down.
class ModuleHost : public QObject
{
    Q_OBJECT

public:
    struct Context
    {
        IOManager* commandManager = nullptr;
        QWidget* moduleParent = nullptr;
        BackendVersions* backendVersions = nullptr;
        bool observerMode = false;
    };

    explicit ModuleHost(QObject* parent = nullptr);
    ~ModuleHost() override;

    // Loads every plug-in of the folder that offers ModuleInterface and hands it the
    // context; returns how many were loaded. Files that are no module are reported in errors().
    int loadModules(const QString& pluginDir, const Context& context);
    // about_to_exit_module for every module, then exit_module, then unload, as the
    // frontend does when it closes.
    void shutDown();

    QList<ModuleInterface*> modules() const;
    // "name version (file)" of every loaded module, for the operator.
    QStringList descriptions() const;
    // The GUI elements of all modules, ordered by menu and by entry.
    QList<_GuiElement*> guiElements() const { return m_elements; }
    QStringList errors() const { return m_errors; }

private:
    struct Loaded
    {
        QPluginLoader* loader;
        ModuleInterface* module;
    };

    QList<Loaded> m_loaded;
    QList<_GuiElement*> m_elements;
    QStringList m_errors;
};

#endif // MODULEHOST_H
