# The controller on the network: quarvo2-sim as a separate process on a loopback port,
# the host's link to it and the stand-in host on it; and each tool's executable as users start it.
quarvo_add_test(tst_network SOURCES tst_network.cpp simprocess.h scratchfile.h LIBS quarvo_testsupport Qt5::Network)
add_dependencies(tst_network quarvo2-sim quarvo2-host quarvo2-snapshot)
