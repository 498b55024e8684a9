#include "CameraSettingsModule.h"

#include "BackendVersions.h"
#include "CameraSettingsDlg.h"
#include "IOManager.h"

#include <QAction>
#include <QKeySequence>
#include <QMetaType>
#include <QWidget>

void CameraSettingsModule::set_param(QString key, QVariant value)
{
    // The host hands its objects over in QVariants under these names.
    qRegisterMetaType<IOManager*>("IOManager*");
    qRegisterMetaType<BackendVersions*>("BackendVersions*");
    qRegisterMetaType<QWidget*>("QWidget*");

    if (key == QLatin1String("CommandManager"))
        iom = value.value<IOManager*>();
    else if (key == QLatin1String("ModuleParent"))
        mod_parent = value.value<QWidget*>();
    else if (key == QLatin1String("BackendVersions"))
        beVers = value.value<BackendVersions*>();
    else if (key == QLatin1String("ObserverMode"))
        bObserverMode = value.toBool();
}

QString CameraSettingsModule::get_module_version() const
{
    return QStringLiteral("v%1.%2.%3").arg(CAMERASETTINGS_VERSION_MAJOR).arg(CAMERASETTINGS_VERSION_MINOR)
        .arg(CAMERASETTINGS_VERSION_PATCH);
}

QList<_GuiElement*> CameraSettingsModule::get_gui_elements()
{
    if (gui_elements.isEmpty()) {
        auto* dialog = new CameraSettingsDlg(iom, mod_parent, beVers);
        gui_camerasettings.content = dialog;
        // The host's main window owns the dialog as a child and may destroy it first;
        // forget it then instead of deleting it a second time in exit_module().
        connect(dialog, &QObject::destroyed, this, [this] { gui_camerasettings.content = nullptr; });

        gui_camerasettings.menu_name = tr("H&ardware");
        gui_camerasettings.menu_order_number = 200;
        gui_camerasettings.menu_entry_order_number = 120;
        gui_camerasettings.action_active_during_measurement = 0;

        auto* action = new QAction(tr("C&ameras"), this);
        action->setShortcut(QKeySequence(tr("F7")));
        action->setStatusTip(tr("Change camera settings"));
        action->setWhatsThis(tr("Change camera settings"));
        connect(action, &QAction::triggered, dialog, &CameraSettingsDlg::update_and_exec);

        gui_camerasettings.menu_entry = action;
        gui_elements.append(&gui_camerasettings);
    }
    return gui_elements;
}

void CameraSettingsModule::about_to_exit_module()
{
    if (auto* dialog = qobject_cast<CameraSettingsDlg*>(gui_camerasettings.content))
        dialog->about_to_exit();
}

void CameraSettingsModule::exit_module()
{
    delete gui_camerasettings.content;
    gui_camerasettings.content = nullptr;
    gui_elements.clear();
}
