quarvo_add_test(tst_host SOURCES tst_host.cpp LIBS quarvo_hostcore)
if(TARGET CameraSettingsModule)
    add_dependencies(tst_host CameraSettingsModule quarvo2-host)
endif()
