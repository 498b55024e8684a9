# The channel's reply handling: every get and sendCommand into the callers' 100- and
# 200-byte buffers between guard bytes.
quarvo_add_fuzzer(channel SOURCES channelfuzzer.cpp LIBS quarvo_hostapi)
