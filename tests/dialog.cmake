# The whole camera settings dialog, driven end to end through the dialog rig: the
# stand-in host's module loader, the plug-in from the plug-in folder, the simulated
# controller's command log.
foreach(suite tst_dialogloading tst_dialogapply tst_dialogrestore tst_briskboxpanel)
    quarvo_add_test(${suite} SOURCES ${suite}.cpp LIBS quarvo_testsupport)
    # The column names only; the dialog itself comes from the plug-in.
    target_include_directories(${suite} PRIVATE ${PROJECT_SOURCE_DIR}/modules/CameraSettingsModule)
endforeach()
# Hostile controller values: each formula's safe result, each capped count, and seeded
# random openings with hostile replies.
quarvo_add_test(tst_hostilecontroller SOURCES tst_hostilecontroller.cpp LIBS quarvo_testsupport)
target_include_directories(tst_hostilecontroller PRIVATE ${PROJECT_SOURCE_DIR}/modules/CameraSettingsModule)
# A German desktop: the channel and the dialog under LC_NUMERIC de_DE (own main, which
# chooses the locale before the application object adopts it).
quarvo_add_test(tst_germanlocale SOURCES tst_germanlocale.cpp LIBS quarvo_testsupport)
target_include_directories(tst_germanlocale PRIVATE ${PROJECT_SOURCE_DIR}/modules/CameraSettingsModule)
