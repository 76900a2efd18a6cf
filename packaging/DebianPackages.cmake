# cpack -G DEB makes orrivane and orrivane-desktop.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME orrivane)
set(CPACK_PACKAGE_VENDOR "The Orrivane developers")
set(CPACK_PACKAGE_CONTACT "${ORRIVANE_MAINTAINER}")
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL program desktop)
set(CPACK_VERBATIM_VARIABLES ON)
# Whatever mask the maker of the package works under.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${ORRIVANE_MAINTAINER}")
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SECTION x11)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)

set(CPACK_DEBIAN_PROGRAM_PACKAGE_NAME orrivane)
# Spacing is applied by killall; what a global menu bar takes is asked over accessibility.
set(CPACK_DEBIAN_PROGRAM_PACKAGE_RECOMMENDS "psmisc, at-spi2-core")
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SUGGESTS "orrivane-desktop")
set(CPACK_DEBIAN_PROGRAM_DESCRIPTION "shows the status items that a display's notch hides
A laptop with a camera notch in its menu bar swallows status items: those
that fall behind the notch can be neither seen nor clicked. Orrivane finds
them and mirrors them in a small tray directly left of the notch. A click on
a mirrored icon opens the real item's menu.
.
It works in X11 sessions, with icons that dock as windows (XEmbed).")

set(CPACK_DEBIAN_DESKTOP_PACKAGE_NAME orrivane-desktop)
set(CPACK_DEBIAN_DESKTOP_PACKAGE_DEPENDS
    "dbus-bin, dbus-daemon, openbox, xserver-xephyr, xvfb")
set(CPACK_DEBIAN_DESKTOP_PACKAGE_RECOMMENDS "orrivane, at-spi2-core, fonts-dejavu-core")
set(CPACK_DEBIAN_DESKTOP_DESCRIPTION "laptop with a notch in a window
A menu bar, status items and two applications in a nested X server, with a
notch laid over them: a desktop to see Orrivane on without such a laptop, and
to try tray applications on.")

include(CPack)
