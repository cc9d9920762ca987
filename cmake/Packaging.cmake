# The Debian package: `cpack` in the build folder, or scripts/package. Its dependencies are computed
# from the libraries that the program links.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_CONTACT "the Pelmark authors <authors@pelmark.invalid>")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION}) # as in share/debian/changelog
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
# Everyone may enter the installed folders, whatever the umask at build time.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The plots ask for Calibri; Carlito has the same metrics. Qt itself only brings X11 support.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-crosextra-carlito, qt6-wayland")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "viewer and cleaner of genome-wide association results")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Pelmark opens a text file of association results, one line per marker with
its chromosome, position and p-value, and draws it as a Manhattan plot. A box
drawn over the whole genome opens one chromosome; a box drawn over a
chromosome zooms in. Points can be removed from the data, and the rest saved
as a table with a picture.")
include(CPack)
