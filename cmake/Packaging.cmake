# The Debian packages, one for each component: `cpack` in the build folder, or scripts/package. Their
# dependencies are computed from the libraries that each program links.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_CONTACT "the Pelmark authors <authors@pelmark.invalid>")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION}) # as in share/debian/changelog
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
# Everyone may enter the installed folders, whatever the umask at build time.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PROJECT_CONFIG_FILE ${PROJECT_SOURCE_DIR}/cmake/PackageDate.cmake)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL window tools)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)

# Otherwise the project's description would precede each package's own.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
# The plots ask for Calibri; Carlito has the same metrics. Qt itself only brings X11 support.
set(CPACK_DEBIAN_WINDOW_PACKAGE_NAME pelmark)
set(CPACK_DEBIAN_WINDOW_PACKAGE_RECOMMENDS "pelmark-tools, fonts-crosextra-carlito, qt6-wayland")
set(CPACK_DEBIAN_WINDOW_DESCRIPTION
"viewer and cleaner of genome-wide association results
Pelmark opens a text file of association results, one line per marker with
its chromosome, position and p-value, and draws it as a Manhattan plot. A box
drawn over the whole genome opens one chromosome; a box drawn over a
chromosome zooms in. Points can be removed from the data, and the rest saved
as a table with a picture.")

set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME pelmark-tools)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SOURCE pelmark)
set(CPACK_DEBIAN_TOOLS_PACKAGE_RECOMMENDS fonts-crosextra-carlito)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SUGGESTS pelmark)
set(CPACK_DEBIAN_TOOLS_DESCRIPTION
"command-line tools for genome-wide association results
Checks, prepares, draws and cuts files of association results, compressed or
not, as most programs of the field write them, and lists the lead markers.
What it prepares, the viewer of the package pelmark opens; what was saved
there, it cuts out of the original file. It needs no display.")
include(CPack)
