#ifndef MODULEINTERFACE_H
#define MODULEINTERFACE_H

#include <QList>
#include <QString>
#include <QVariant>
#include <QtPlugin>

class QAction;
class QWidget;

// One menu contribution of a module.
struct _GuiElement
{
    QAction* menu_entry = nullptr;          // the action the host puts into the menu
    int menu_entry_order_number = 0;        // position of the entry inside its menu
    QString menu_name;                      // text of the host menu receiving the entry
    int menu_order_number = 0;              // position of that menu in the menu bar
    QWidget* content = nullptr;             // the widget the entry belongs to
    int action_active_during_measurement = 0; // whether the entry stays usable while measuring
};
typedef _GuiElement GuiElement;

// What every frontend module implements; the host loads modules as Qt plug-ins and
// casts their instance to this interface.
class ModuleInterface
{
public:
    virtual ~ModuleInterface() {}
    virtual void about_to_exit_module() = 0;
    virtual void exit_module() = 0;
    virtual QString get_module_name() const = 0;
    virtual QString get_module_version() const = 0;
    virtual QList<_GuiElement*> get_gui_elements() = 0;
    virtual void set_param(QString key, QVariant value) = 0;
};

#define ModuleInterface_iid "com.quarvo.quarvo2.gui.Module/0.2.0"
#define CameraSettingsModule_iid "com.quarvo.Quarvo2.CameraSettingsModule"

Q_DECLARE_INTERFACE(ModuleInterface, ModuleInterface_iid)

#endif // MODULEINTERFACE_H
