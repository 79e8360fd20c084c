# Run by an installation: the files that name a place below the prefix.
get_filename_component(prefix "${CMAKE_INSTALL_PREFIX}" ABSOLUTE)

# install_filled(FILE FOLDER): FILE is what FILE.in becomes.
function(install_filled file folder)
  configure_file(${desktop}/${file}.in ${filled}/${file} @ONLY)
  file(INSTALL ${filled}/${file} DESTINATION ${folder})
endfunction()

# IBus looks nowhere else by itself.
if(NOT prefix STREQUAL "/usr")
  set(component_path
      "IBUS_COMPONENT_PATH=${prefix}/share/ibus/component:/usr/share/ibus/component\n")
endif()

install_filled(quorvane.xml ${prefix}/share/ibus/component)
install_filled(quorvane.service ${prefix}/lib/systemd/user)
install_filled(60-quorvane.conf ${prefix}/lib/environment.d)
# For sessions that systemd doesn't start.
if(prefix STREQUAL "/usr")
  file(INSTALL ${desktop}/75quorvane DESTINATION /etc/X11/Xsession.d)
endif()
