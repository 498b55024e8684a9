quarvo_add_test(tst_host SOURCES tst_host.cpp scratchfile.h LIBS quarvo_testsupport)
add_dependencies(tst_host quarvo2-host)
