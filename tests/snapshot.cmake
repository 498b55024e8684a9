# quarvo2-snapshot: the tool's core against the simulated controller in the process,
# the executable against quarvo2-sim over TCP, and the host's snapshot menu.
quarvo_add_test(tst_snapshot SOURCES tst_snapshot.cpp controllerdump.h scratchfile.h simprocess.h
                LIBS quarvo_testsupport quarvo_snapshot Qt5::Network)
add_dependencies(tst_snapshot quarvo2-sim quarvo2-snapshot)
