# The overview page and its cell editors, driven against the simulated controller.
quarvo_add_test(tst_overviewwdg
    SOURCES tst_overviewwdg.cpp
    LIBS quarvo_testsupport camerasettings_resources)
quarvo_add_test(tst_overviewdelegates
    SOURCES tst_overviewdelegates.cpp
    LIBS quarvo_testsupport)
