# The camera settings plug-in: its pure parts directly, the plug-in through QPluginLoader.
quarvo_add_test(tst_changetrackingstandarditemmodel
    SOURCES tst_changetrackingstandarditemmodel.cpp LIBS camerasettings_core Qt5::Gui)
quarvo_add_test(tst_globalflashintensitycalculator
    SOURCES tst_globalflashintensitycalculator.cpp LIBS camerasettings_core Qt5::Gui)
quarvo_add_test(tst_camerasettingshelpers
    SOURCES tst_camerasettingshelpers.cpp LIBS camerasettings_core quarvo_hostapi)
quarvo_add_test(tst_camerasettingsmodule
    SOURCES tst_camerasettingsmodule.cpp LIBS Qt5::Widgets quarvo_hostapi)
add_dependencies(tst_camerasettingsmodule CameraSettingsModule)
quarvo_add_test(tst_camerasettingsdlg
    SOURCES tst_camerasettingsdlg.cpp LIBS Qt5::Widgets quarvo_hostapi quarvo_controller)
add_dependencies(tst_camerasettingsdlg CameraSettingsModule)
