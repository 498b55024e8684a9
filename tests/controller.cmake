quarvo_add_test(tst_controller SOURCES tst_controller.cpp controllerdump.h scratchfile.h LIBS quarvo_testsupport)
