# The camera settings plug-in: its pure parts directly; the plug-in and its dialog as the
# host loads them.
quarvo_add_test(tst_changetrackingstandarditemmodel
    SOURCES tst_changetrackingstandarditemmodel.cpp LIBS camerasettings_core Qt5::Gui)
quarvo_add_test(tst_globalflashintensitycalculator
    SOURCES tst_globalflashintensitycalculator.cpp LIBS camerasettings_core Qt5::Gui)
quarvo_add_test(tst_camerasettingshelpers
    SOURCES tst_camerasettingshelpers.cpp LIBS quarvo_testsupport)
quarvo_add_test(tst_camerasettingsmodule SOURCES tst_camerasettingsmodule.cpp LIBS quarvo_testsupport)
