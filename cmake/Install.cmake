# Installs everything to the freedesktop locations, under any prefix.
set(PELMARK_ID org.pelmark.Pelmark)
set(PELMARK_SHARE ${PROJECT_SOURCE_DIR}/share)

install(TARGETS pelmark pelmark-tools RUNTIME)
install(FILES ${PELMARK_SHARE}/${PELMARK_ID}.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${PELMARK_SHARE}/${PELMARK_ID}.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)

set(PELMARK_ICONS ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
install(FILES ${PELMARK_SHARE}/icons/pelmark.svg
        DESTINATION ${PELMARK_ICONS}/scalable/apps RENAME ${PELMARK_ID}.svg)
foreach(size 16 22 24 32 48 64 128 256)
  install(FILES ${PELMARK_SHARE}/icons/${size}.png
          DESTINATION ${PELMARK_ICONS}/${size}x${size}/apps RENAME ${PELMARK_ID}.png)
endforeach()

install(FILES docs/guide.md docs/recipes.md docs/tools.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY docs/pictures DESTINATION ${CMAKE_INSTALL_DOCDIR} FILES_MATCHING PATTERN *.png)
install(DIRECTORY examples DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(FILES ${PELMARK_SHARE}/debian/copyright DESTINATION ${CMAKE_INSTALL_DOCDIR})

# Debian requires the manual page and the changelog to be compressed.
configure_file(${PELMARK_SHARE}/pelmark.1.in ${PROJECT_BINARY_DIR}/pelmark.1 @ONLY)
configure_file(${PELMARK_SHARE}/pelmark-tools.1.in ${PROJECT_BINARY_DIR}/pelmark-tools.1 @ONLY)
if(UNIX)
  find_program(GZIP gzip REQUIRED)
  set(compressed)
  foreach(document ${PROJECT_BINARY_DIR}/pelmark.1 ${PROJECT_BINARY_DIR}/pelmark-tools.1
          ${PELMARK_SHARE}/debian/changelog)
    cmake_path(GET document FILENAME name)
    add_custom_command(OUTPUT ${PROJECT_BINARY_DIR}/${name}.gz
                       COMMAND ${GZIP} -9nc ${document} > ${PROJECT_BINARY_DIR}/${name}.gz
                       DEPENDS ${document} VERBATIM)
    list(APPEND compressed ${PROJECT_BINARY_DIR}/${name}.gz)
  endforeach()
  add_custom_target(pelmark_documents ALL DEPENDS ${compressed})
  install(FILES ${PROJECT_BINARY_DIR}/pelmark.1.gz ${PROJECT_BINARY_DIR}/pelmark-tools.1.gz
          DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
  install(FILES ${PROJECT_BINARY_DIR}/changelog.gz DESTINATION ${CMAKE_INSTALL_DOCDIR})
endif()
