# The module and the host in German, through the host's translators and module loader.
quarvo_add_test(tst_translations SOURCES tst_translations.cpp LIBS quarvo_testsupport)
add_dependencies(tst_translations translations)
