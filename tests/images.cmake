# The pictures are tested straight from the resource objects, without the plug-in.
if(NOT TARGET camerasettings_resources)
    add_subdirectory(${CMAKE_SOURCE_DIR}/modules/CameraSettingsModule/images
                     ${CMAKE_BINARY_DIR}/camerasettings_images)
endif()

quarvo_add_test(tst_cameraimages SOURCES tst_cameraimages.cpp LIBS camerasettings_resources Qt5::Gui)
