# `cmake --install`: the program below bin, what it reads below share/quorvane, and what the desktop
# reads. The program finds its data from its own place, so that the prefix may be moved; a few files
# name the program and get their prefix when they are installed.
set(bundle ${PROJECT_BINARY_DIR}/../data)
set(manual ${PROJECT_BINARY_DIR}/manual)
set(desktop ${PROJECT_SOURCE_DIR}/data/install)

add_custom_command(OUTPUT ${manual}.stamp
                   COMMAND ${CMAKE_COMMAND} -E rm -rf ${manual}
                   COMMAND quorvane manual ${manual}
                   COMMAND ${CMAKE_COMMAND} -E touch ${manual}.stamp
                   DEPENDS quorvane VERBATIM)
add_custom_target(quorvane_manual_pages ALL DEPENDS ${manual}.stamp)

install(CODE "if(NOT EXISTS \"${bundle}/DATA-NOTICES.txt\")
  message(FATAL_ERROR \"There is no word data in ${bundle}: run scripts/word_data\")
endif()")
install(TARGETS quorvane DESTINATION bin)
install(DIRECTORY ${bundle}/ DESTINATION share/quorvane)
install(DIRECTORY ${manual}/share DESTINATION .)
install(FILES ${desktop}/copyright DESTINATION share/doc/quorvane)
install(FILES ${desktop}/quorvane.svg DESTINATION share/icons/hicolor/scalable/apps)
install(FILES ${desktop}/quorvane-settings.desktop DESTINATION share/applications)
install(CODE "set(PROJECT_VERSION ${PROJECT_VERSION})
set(desktop \"${desktop}\")
set(filled \"${PROJECT_BINARY_DIR}/install\")")
install(SCRIPT ${PROJECT_SOURCE_DIR}/cmake/InstallFilled.cmake)
include(${PROJECT_SOURCE_DIR}/cmake/Package.cmake)
