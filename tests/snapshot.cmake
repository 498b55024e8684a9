# quarvo2-snapshot: the tool's core against the simulated controller in the process and
# the host's snapshot menu (the executable over TCP: tst_network).
quarvo_add_test(tst_snapshot SOURCES tst_snapshot.cpp controllerdump.h scratchfile.h LIBS quarvo_testsupport quarvo_snapshot)
