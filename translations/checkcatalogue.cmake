# Runs lupdate from the sources into a copy of CATALOGUE and fails when the copy has
# texts without a finished translation (new in the sources, or marked unfinished) or
# texts the sources no longer have. The catalogue itself is left alone.
get_filename_component(name ${CATALOGUE} NAME)
file(MAKE_DIRECTORY ${WORK_DIR})
set(copy ${WORK_DIR}/${name})
configure_file(${CATALOGUE} ${copy} COPYONLY)
execute_process(COMMAND ${LUPDATE} ${OPTIONS} ${SOURCES} -ts ${copy}
    RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "lupdate failed on ${name}:\n${output}")
endif()
file(READ ${copy} text)
set(problems "")
string(REGEX MATCHALL "<source>[^<]*</source>[^<]*(<comment>[^<]*</comment>[^<]*)?<translation type=\"(unfinished|vanished|obsolete)\"" hits "${text}")
foreach(hit IN LISTS hits)
    string(REGEX REPLACE "<source>([^<]*)</source>.*type=\"([a-z]+)\"" "  \\2: \\1" line "${hit}")
    string(APPEND problems "${line}\n")
endforeach()
if(problems)
    message(FATAL_ERROR "${name} is not up to date with the sources (cmake --build <build> --target update_translations, then translate):\n${problems}")
endif()
message(STATUS "${name}: every text of the sources is translated, none is left over")
