# The stand-in host as the frontend it stands in for (its executable: tst_network).
quarvo_add_test(tst_host SOURCES tst_host.cpp controllerdump.h LIBS quarvo_testsupport)
