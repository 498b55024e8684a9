# The stand-in host as the frontend it stands in for (its executable: tst_network).
quarvo_add_test(tst_host SOURCES tst_host.cpp LIBS quarvo_testsupport)
