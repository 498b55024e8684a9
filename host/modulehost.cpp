#include "modulehost.h"

#include "BackendVersions.h"
#include "IOManager.h"

#include <QDir>
#include <QFileInfo>
#include <QLibrary>
#include <QPluginLoader>
#include <QVariant>
#include <QWidget>

#include <algorithm>

ModuleHost::ModuleHost(QObject* parent)
    : QObject(parent)
{
    qRegisterMetaType<IOManager*>("IOManager*");
    qRegisterMetaType<BackendVersions*>("BackendVersions*");
    qRegisterMetaType<QWidget*>("QWidget*");
}

ModuleHost::~ModuleHost()
{
    shutDown();
}

int ModuleHost::loadModules(const QString& pluginDir, const Context& context)
{
    const QDir dir(pluginDir);
    if (!dir.exists()) {
        m_errors << tr("Plug-in folder %1 does not exist").arg(QDir::toNativeSeparators(pluginDir));
        return 0;
    }
    int count = 0;
    for (const QString& name : dir.entryList(QDir::Files, QDir::Name)) {
        const QString path = dir.absoluteFilePath(name);
        if (!QLibrary::isLibrary(path))
            continue;
        auto* loader = new QPluginLoader(path, this);
        ModuleInterface* module = qobject_cast<ModuleInterface*>(loader->instance());
        if (!module) {
            m_errors << tr("%1 is no frontend module: %2").arg(name, loader->errorString());
            loader->unload();
            delete loader;
            continue;
        }
        module->set_param(QStringLiteral("CommandManager"), QVariant::fromValue(context.commandManager));
        module->set_param(QStringLiteral("ModuleParent"), QVariant::fromValue(context.moduleParent));
        module->set_param(QStringLiteral("BackendVersions"), QVariant::fromValue(context.backendVersions));
        module->set_param(QStringLiteral("ObserverMode"), QVariant(context.observerMode));
        m_elements << module->get_gui_elements();
        m_loaded << Loaded{loader, module};
        ++count;
    }
    std::stable_sort(m_elements.begin(), m_elements.end(), [](const _GuiElement* a, const _GuiElement* b) {
        if (a->menu_order_number != b->menu_order_number)
            return a->menu_order_number < b->menu_order_number;
        return a->menu_entry_order_number < b->menu_entry_order_number;
    });
    return count;
}

void ModuleHost::shutDown()
{
    m_elements.clear();
    for (const Loaded& l : qAsConst(m_loaded))
        l.module->about_to_exit_module();
    for (const Loaded& l : qAsConst(m_loaded))
        l.module->exit_module();
    for (const Loaded& l : qAsConst(m_loaded)) {
        l.loader->unload();
        delete l.loader;
    }
    m_loaded.clear();
}

QList<ModuleInterface*> ModuleHost::modules() const
{
    QList<ModuleInterface*> list;
    for (const Loaded& l : m_loaded)
        list << l.module;
    return list;
}

QStringList ModuleHost::descriptions() const
{
    QStringList list;
    for (const Loaded& l : m_loaded)
        list << QStringLiteral("%1 %2 (%3)").arg(l.module->get_module_name(), l.module->get_module_version(),
                                                 QFileInfo(l.loader->fileName()).fileName());
    return list;
}
