# The module and the host in German, through the host's translators and module loader.
quarvo_add_test(tst_translations SOURCES tst_translations.cpp LIBS quarvo_hostcore)
target_include_directories(tst_translations PRIVATE ${PROJECT_SOURCE_DIR}/modules/CameraSettingsModule)
add_dependencies(tst_translations CameraSettingsModule translations)
