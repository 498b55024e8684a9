# The camera page. The plug-in is a MODULE library that nothing can link, so the page
# and its form are compiled into the test together with the plug-in's pure parts and
# its pictures, and driven against the simulated controller.
set(camerapage_dir ${CMAKE_SOURCE_DIR}/modules/CameraSettingsModule)
quarvo_add_test(tst_camerawdg
    SOURCES tst_camerawdg.cpp
            ${camerapage_dir}/CameraWdg.cpp
            ${camerapage_dir}/CameraWdg.h
            ${camerapage_dir}/camerawidget.ui
    LIBS camerasettings_core camerasettings_resources quarvo_hostapi quarvo_controller Qt5::Widgets)
target_include_directories(tst_camerawdg PRIVATE ${camerapage_dir})
