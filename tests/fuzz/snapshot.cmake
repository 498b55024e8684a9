# Snapshot files, which people edit by hand and pass around: read, written back,
# compared and restored onto themselves.
quarvo_add_fuzzer(snapshotfile SOURCES fuzz_snapshotfile.cpp LIBS quarvo_snapshot)
