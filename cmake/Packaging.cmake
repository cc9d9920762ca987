# The Debian package: `cpack` in the build folder, or scripts/package. What it depends on is found
# from the program's own libraries.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_CONTACT "the Pelmark authors <pelmark@pelmark.org>")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION}) # as in share/debian/changelog
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
# Folders are for all to enter, whatever the umask of whoever builds.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The plots ask for Calibri; Carlito has its measures. The toolkit comes with X11 alone.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-crosextra-carlito, qt6-wayland")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "viewer and cleaner of genome-wide association results")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Pelmark opens a text file of association results, one line per marker with
its chromosome, position and p-value, and draws it as a Manhattan plot. A box
drawn over the whole genome opens one chromosome; a box drawn over a
chromosome zooms in. Points can be taken out of the data, and what is shown
saved as a table with a picture.")
include(CPack)
