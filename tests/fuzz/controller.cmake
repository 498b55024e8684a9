# The simulated controller's readers of untrusted input: scenario documents and the
# request lines of any client.
quarvo_add_fuzzer(scenarioloader
    SOURCES fuzz_scenarioloader.cpp controllerinvariants.cpp controllerinvariants.h
    LIBS quarvo_controller)
quarvo_add_fuzzer(commandinterpreter
    SOURCES fuzz_commandinterpreter.cpp controllerinvariants.cpp controllerinvariants.h
    LIBS quarvo_controller)
