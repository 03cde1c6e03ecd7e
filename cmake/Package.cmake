# The Debian package: cpack makes it of what `cmake --install` installs. What only a package of Debian has is added by
# DebianFiles.cmake.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME skarn)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR})
set(CPACK_PACKAGE_CONTACT "${SKARN_MAINTAINER}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "configurator of a gaming mouse and its core engine")
set(CPACK_VERBATIM_VARIABLES ON)
# By its component, so that what cmake --install has listed in install_manifest.txt stays.
set(CPACK_INSTALL_CMAKE_PROJECTS "${CMAKE_BINARY_DIR};skarn;skarn;/")
# Files name programs by their paths, so the prefix has to be the one that is meant: files go below it by DESTDIR.
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Sets up the 27 programmable controls of a gaming mouse, five sensitivity
stages, five profiles of eight keymaps each, recorded macros, lighting and the
power settings of a wireless one, on X11 and on Wayland.
.
A core engine in the background owns the mouse and stores its settings; the
configurator and the command line vornctl are its clients over the session bus.
A virtual mouse is built in, so that all of it can be tried without the
hardware.")
# The libraries by dpkg-shlibdeps. Debian's alternative is for sessions without systemd.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "default-dbus-session-bus | dbus-session-bus")
# Icons of applications, windows on Wayland, Qt's own texts, web pages, and mice.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "libqt6svg6, qt6-translations-l10n, qt6-wayland, udev, xdg-utils")
# What mice keep in their hardware, and their batteries.
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "ratbagd, upower")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
foreach(script postinst prerm postrm)
  list(APPEND CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/resources/debian/${script})
endforeach()

execute_process(COMMAND date -u -R -d ${SKARN_RELEASE_DATE} OUTPUT_VARIABLE SKARN_RELEASE_TIME
  OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
configure_file(resources/debian/changelog.in ${CMAKE_BINARY_DIR}/debian/changelog @ONLY)
configure_file(cmake/DebianFiles.cmake.in ${CMAKE_BINARY_DIR}/debian/DebianFiles.cmake @ONLY)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_BINARY_DIR}/debian/DebianFiles.cmake)

include(CPack)
