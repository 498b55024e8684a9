# The overview page and its cell editors, driven against the simulated controller.
quarvo_add_test(tst_overviewwdg
    SOURCES tst_overviewwdg.cpp
    LIBS quarvo_testsupport camerasettings_resources)
