quarvo_add_test(tst_versioninfo SOURCES tst_versioninfo.cpp LIBS quarvo_hostapi)
quarvo_add_test(tst_iomanager SOURCES tst_iomanager.cpp LIBS quarvo_hostapi)
