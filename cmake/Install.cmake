# Installs everything to the freedesktop locations, under any prefix. Each component becomes a Debian
# package: `window` is pelmark, `tools` is pelmark-tools.
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME window)
set(PELMARK_ID org.pelmark.Pelmark)
set(PELMARK_SHARE ${PROJECT_SOURCE_DIR}/share)

install(TARGETS pelmark RUNTIME)
install(FILES ${PELMARK_SHARE}/${PELMARK_ID}.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${PELMARK_SHARE}/${PELMARK_ID}.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)

set(PELMARK_ICONS ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
install(FILES ${PELMARK_SHARE}/icons/pelmark.svg
        DESTINATION ${PELMARK_ICONS}/scalable/apps RENAME ${PELMARK_ID}.svg)
foreach(size 16 22 24 32 48 64 128 256)
  install(FILES ${PELMARK_SHARE}/icons/${size}.png
          DESTINATION ${PELMARK_ICONS}/${size}x${size}/apps RENAME ${PELMARK_ID}.png)
endforeach()

set(PELMARK_TOOLS_DOCDIR ${CMAKE_INSTALL_DATAROOTDIR}/doc/pelmark-tools)
install(FILES docs/guide.md docs/recipes.md docs/tools.md ${PELMARK_SHARE}/debian/copyright
        DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY docs/pictures DESTINATION ${CMAKE_INSTALL_DOCDIR} FILES_MATCHING PATTERN *.png)
install(DIRECTORY examples DESTINATION ${CMAKE_INSTALL_DOCDIR})

install(TARGETS pelmark-tools RUNTIME COMPONENT tools)
install(FILES docs/recipes.md docs/tools.md ${PELMARK_SHARE}/debian/copyright
        DESTINATION ${PELMARK_TOOLS_DOCDIR} COMPONENT tools)

# made_by_describe(FILE WORD [INPUT]): FILE in the build folder, written by pelmark-describe.
set(made)
function(made_by_describe file word)
  set(input)
  if(ARGC GREATER 2)
    set(input < ${ARGV2})
  endif()
  cmake_path(GET file PARENT_PATH folder)
  file(MAKE_DIRECTORY ${folder})
  add_custom_command(OUTPUT ${file} COMMAND pelmark-describe ${word} ${input} > ${file}
                     DEPENDS pelmark-describe ${ARGV2} VERBATIM)
  set(made ${made} ${file} PARENT_SCOPE)
endfunction()

# Where each shell looks for completions, below its prefix.
set(PELMARK_BASH_COMPLETIONS ${CMAKE_INSTALL_DATADIR}/bash-completion/completions
    CACHE STRING "Where bash's completion goes")
set(PELMARK_ZSH_COMPLETIONS ${CMAKE_INSTALL_DATADIR}/zsh/site-functions
    CACHE STRING "Where zsh's completion goes")
set(PELMARK_FISH_COMPLETIONS ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d
    CACHE STRING "Where fish's completion goes")
set(completions ${PROJECT_BINARY_DIR}/completions)
made_by_describe(${completions}/pelmark-tools bash)
made_by_describe(${completions}/_pelmark-tools zsh)
made_by_describe(${completions}/pelmark-tools.fish fish)
install(FILES ${completions}/pelmark-tools DESTINATION ${PELMARK_BASH_COMPLETIONS} COMPONENT tools)
install(FILES ${completions}/_pelmark-tools DESTINATION ${PELMARK_ZSH_COMPLETIONS} COMPONENT tools)
install(FILES ${completions}/pelmark-tools.fish
        DESTINATION ${PELMARK_FISH_COMPLETIONS} COMPONENT tools)

# Debian requires the manual pages and the changelog to be compressed.
configure_file(${PELMARK_SHARE}/pelmark.1.in ${PROJECT_BINARY_DIR}/pelmark.1 @ONLY)
configure_file(${PELMARK_SHARE}/pelmark-tools.1.in ${PROJECT_BINARY_DIR}/pelmark-tools.1.in @ONLY)
made_by_describe(${PROJECT_BINARY_DIR}/pelmark-tools.1 manual
                 ${PROJECT_BINARY_DIR}/pelmark-tools.1.in)
if(UNIX)
  find_program(GZIP gzip REQUIRED)
  foreach(document ${PROJECT_BINARY_DIR}/pelmark.1 ${PROJECT_BINARY_DIR}/pelmark-tools.1
          ${PELMARK_SHARE}/debian/changelog)
    cmake_path(GET document FILENAME name)
    add_custom_command(OUTPUT ${PROJECT_BINARY_DIR}/${name}.gz
                       COMMAND ${GZIP} -9nc ${document} > ${PROJECT_BINARY_DIR}/${name}.gz
                       DEPENDS ${document} VERBATIM)
    list(APPEND made ${PROJECT_BINARY_DIR}/${name}.gz)
  endforeach()
  install(FILES ${PROJECT_BINARY_DIR}/pelmark.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
  install(FILES ${PROJECT_BINARY_DIR}/changelog.gz DESTINATION ${CMAKE_INSTALL_DOCDIR})
  install(FILES ${PROJECT_BINARY_DIR}/pelmark-tools.1.gz
          DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tools)
  install(FILES ${PROJECT_BINARY_DIR}/changelog.gz
          DESTINATION ${PELMARK_TOOLS_DOCDIR} COMPONENT tools)
endif()
add_custom_target(pelmark_documents ALL DEPENDS ${made})
