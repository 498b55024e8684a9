# The camera settings plug-in: its pure parts directly; the plug-in and its dialog as the
# host loads them.
quarvo_add_test(tst_camerasettingshelpers SOURCES tst_camerasettingshelpers.cpp LIBS quarvo_testsupport)
quarvo_add_test(tst_camerasettingsmodule SOURCES tst_camerasettingsmodule.cpp LIBS quarvo_testsupport)
