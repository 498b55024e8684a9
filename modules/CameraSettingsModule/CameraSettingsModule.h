#ifndef CAMERASETTINGSMODULE_H
#define CAMERASETTINGSMODULE_H

#include "ModuleInterface.h"

class BackendVersions;
class IOManager;

// The plug-in's single object: takes the host's context, contributes the "C&ameras"
// entry of the "H&ardware" menu and owns the camera settings dialog behind it.
class CameraSettingsModule : public QObject, public ModuleInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID CameraSettingsModule_iid FILE "CameraSettingsModule.json")
    Q_INTERFACES(ModuleInterface)

public:
    void about_to_exit_module() override;
    void exit_module() override;
    QString get_module_name() const override { return tr("GUI Camera Settings"); }
    QString get_module_version() const override;
    QList<_GuiElement*> get_gui_elements() override;
    void set_param(QString key, QVariant value) override;

private:
    QWidget* mod_parent = nullptr;
    QList<_GuiElement*> gui_elements;
    GuiElement gui_camerasettings;
    IOManager* iom = nullptr;
    BackendVersions* beVers = nullptr;
    bool bObserverMode = false;
};

#endif // CAMERASETTINGSMODULE_H
