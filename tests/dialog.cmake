# The whole camera settings dialog, driven end to end through the dialog rig: the
# stand-in host's module loader, the plug-in from the plug-in folder, the simulated
# controller's command log. The hostile controller's suite makes the replies hostile;
# the German one runs under LC_NUMERIC de_DE with the German catalogues (its own main
# chooses the locale before the application object adopts it).
foreach(suite tst_dialogloading tst_dialogapply tst_dialogrestore tst_briskboxpanel tst_hostilecontroller
        tst_germanlocale)
    quarvo_add_test(${suite} SOURCES ${suite}.cpp LIBS quarvo_testsupport)
endforeach()
add_dependencies(tst_germanlocale translations)
