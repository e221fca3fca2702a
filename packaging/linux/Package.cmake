# The Debian package, made by cpack in the build folder; packaging/linux/build does it all.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME pictavo)
set(CPACK_PACKAGE_VENDOR "the Pictavo developers")
set(CPACK_PACKAGE_CONTACT "the Pictavo developers <pictavo@example.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "picture editor for the firmware of Siemens mobile phones")
set(CPACK_PACKAGE_DESCRIPTION
    "Pictavo looks into a fullflash, a copy of the whole flash memory of a Siemens
mobile phone of the SGold or New-SGold platform. It identifies the phone,
shows its pictures, and saves them as bitmaps, PNG or GPF files.
.
Pictures can be replaced, one by one or a whole folder at once. What comes of
it is a ViKlay patch, which a flashing tool applies to the phone. The fullflash
itself is never written.
.
The program pictavo-cli does the same work without a window.")
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ
    OWNER_WRITE
    OWNER_EXECUTE
    GROUP_READ
    GROUP_EXECUTE
    WORLD_READ
    WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# To open the manual, and to register the file types for one user.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "desktop-file-utils, shared-mime-info, xdg-utils")

include(CPack)
