# The Debian package; scripts/package makes it.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME quorvane)
set(CPACK_PACKAGE_CONTACT "Quorvane <quorvane@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "input method that corrects and completes what is typed")
set(CPACK_PACKAGE_DESCRIPTION
    "Quorvane follows what is typed in any text field, corrects mistakes at the end of a word,
and completes words. The command quorvane setup adds it to the input sources of a user;
quorvane doctor tells what keeps it from working.")
set(CPACK_STRIP_FILES ON)
# Installed by its absolute paths, so that files name the prefix that they will have.
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS
    "ibus, dconf-gsettings-backend | gsettings-backend, xkb-data, hunspell-en-us | aspell-en, less")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "ibus-gtk3, ibus-gtk4, im-config")
include(CPack)
