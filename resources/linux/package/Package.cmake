# A package for Debian: ./dev package.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vornic)
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "sound of a mechanical keyboard for every key")
set(CPACK_PACKAGE_DESCRIPTION
"Vornic plays the sound of a mechanical keyboard for every key that is pressed
and released, in whatever window. Its sounds are recorded or modelled after
real keyboards; each key sits where it is on the board, from left to right.
It goes quiet while a program records from the microphone and in password
fields, and it keeps nothing: no keystroke is stored or sent anywhere.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "The Vornic developers <developers@vornic.example>")
set(CPACK_DEBIAN_PACKAGE_SECTION sound)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
# Libraries are found out; what the views import at run time is not.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
string(JOIN ", " CPACK_DEBIAN_PACKAGE_DEPENDS
    qml6-module-qtqml qml6-module-qtqml-workerscript qml6-module-qtquick
    qml6-module-qtquick-controls qml6-module-qtquick-dialogs qml6-module-qtquick-layouts
    qml6-module-qtquick-templates qml6-module-qtquick-window qml6-module-qt-labs-folderlistmodel
    qt6-qpa-plugins)
string(JOIN ", " CPACK_DEBIAN_PACKAGE_RECOMMENDS
    at-spi2-core fonts-inter pipewire-audio pkexec polkitd qt6-wayland systemd)
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA
    "${CMAKE_CURRENT_LIST_DIR}/postinst" "${CMAKE_CURRENT_LIST_DIR}/prerm"
    "${CMAKE_CURRENT_LIST_DIR}/postrm")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

include(CPack)
