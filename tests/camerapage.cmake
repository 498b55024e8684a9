# The camera page, driven against the simulated controller.
quarvo_add_test(tst_camerawdg
    SOURCES tst_camerawdg.cpp
    LIBS quarvo_testsupport camerasettings_resources)
