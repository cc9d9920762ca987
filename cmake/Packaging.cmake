# The Debian package, built by `cpack` in the build folder or by scripts/package. Dependencies come
# from the libraries that the program links.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_CONTACT "the Pelmark authors <authors@pelmark.invalid>")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION}) # as in share/debian/changelog
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
# All users can enter the folders, whatever the builder's umask.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The plots ask for Calibri, and Carlito has the same metrics. Qt's own packages support only X11.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-crosextra-carlito, qt6-wayland")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "viewer and cleaner of genome-wide association results")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Pelmark opens a text file of association results, one line per marker with
its chromosome, position and p-value, and draws it as a Manhattan plot. A box
drawn over the whole genome opens one chromosome; a box drawn over a
chromosome zooms in. Points can be taken out of the data, and what is shown
saved as a table with a picture.")
include(CPack)
