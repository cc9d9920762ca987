# Read by cpack. Dates everything in the packages as the changelog's newest entry, so that packages
# built at another time have the same bytes.
if(NOT DEFINED ENV{SOURCE_DATE_EPOCH})
  execute_process(
    COMMAND dpkg-parsechangelog --file ${CMAKE_CURRENT_LIST_DIR}/../share/debian/changelog
            --show-field Timestamp
    OUTPUT_VARIABLE timestamp OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  set(ENV{SOURCE_DATE_EPOCH} ${timestamp})
endif()
