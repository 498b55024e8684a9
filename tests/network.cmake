# The controller on the network: quarvo2-sim as a separate process on a loopback port.
quarvo_add_test(tst_tcpcontrollerlink SOURCES tst_tcpcontrollerlink.cpp tst_tcpsimprocess.h LIBS quarvo_hostapi Qt5::Network)
add_dependencies(tst_tcpcontrollerlink quarvo2-sim)
quarvo_add_test(tst_tcpserver SOURCES tst_tcpserver.cpp tst_tcpsimprocess.h LIBS Qt5::Network)
add_dependencies(tst_tcpserver quarvo2-sim)
quarvo_add_test(tst_tcphost SOURCES tst_tcphost.cpp tst_tcpsimprocess.h LIBS quarvo_hostcore)
add_dependencies(tst_tcphost quarvo2-sim quarvo2-host)
