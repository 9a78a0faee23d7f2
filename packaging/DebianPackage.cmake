# The Debian package. Desktop, MIME and icon caches are refreshed by the triggers of the packages that keep them.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vorlant)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "Vorlant maintainers")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "parameter tool for KX process controllers")
set(CPACK_PACKAGE_DESCRIPTION
"Vorlant connects to one controller of the KX series over a serial line
(Modbus RTU or ASCII), reads all its parameters into a grid, lets them be
changed under their limits and interlocks, writes one, a block or all of
them back, and keeps whole sets as files. It speaks English and Japanese.

vorlantctl does the same from scripts; vorlant-sim simulates a controller.")
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_SOURCE_DIR}/build/package)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER ${VORLANT_MAINTAINER})
set(CPACK_DEBIAN_PACKAGE_SECTION electronics)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_SOURCE_DIR}/debian/postrm)
# Linked libraries are found by themselves (the window systems X11 and offscreen are in the library packages); the SVG
# library draws the icon through a plug-in, and the icon is looked up below the hicolor theme.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "hicolor-icon-theme, libqt6svg6")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-noto-cjk, qt6-translations-l10n, qt6-wayland")

include(CPack)
