# The whole camera settings dialog behind a link that mutates the simulated
# controller's real replies.
quarvo_add_fuzzer(dialog SOURCES dialogfuzzer.cpp LIBS quarvo_testsupport)
