# The camera page, driven against the simulated controller.
quarvo_add_test(tst_camerawdg
    SOURCES tst_camerawdg.cpp
    LIBS camerasettings_core camerasettings_resources quarvo_hostapi quarvo_controller Qt5::Widgets)
