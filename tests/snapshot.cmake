# quarvo2-snapshot: the tool's core against the simulated controller in the process,
# the executable against quarvo2-sim over TCP, and the host's snapshot menu.
quarvo_add_test(tst_snapshot SOURCES tst_snapshot.cpp snapshotstate.h LIBS quarvo_snapshot)
quarvo_add_test(tst_snapshottcp SOURCES tst_snapshottcp.cpp snapshotstate.h tst_tcpsimprocess.h
                LIBS quarvo_snapshot Qt5::Network)
add_dependencies(tst_snapshottcp quarvo2-sim quarvo2-snapshot)
quarvo_add_test(tst_snapshotmenu SOURCES tst_snapshotmenu.cpp snapshotstate.h LIBS quarvo_hostcore)
