# The pictures are tested straight from the resource objects, without the plug-in.
quarvo_add_test(tst_cameraimages SOURCES tst_cameraimages.cpp LIBS camerasettings_resources Qt5::Gui)
