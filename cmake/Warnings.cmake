# The warnings for the project's own code, as a target to link to.
# CI turns them into errors; elsewhere a newer compiler must not break the build.
option(PELMARK_WARNINGS_AS_ERRORS "Stop the build at the first warning" OFF)

add_library(pelmark_warnings INTERFACE)
# Hides whatever was deprecated in the oldest supported version of Qt.
target_compile_definitions(pelmark_warnings INTERFACE QT_DISABLE_DEPRECATED_BEFORE=0x060400)
if(MSVC)
  target_compile_options(pelmark_warnings INTERFACE
    /W4 $<$<BOOL:${PELMARK_WARNINGS_AS_ERRORS}>:/WX>)
  return()
endif()
target_compile_options(pelmark_warnings INTERFACE
  -Wall
  -Wextra
  -Wpedantic
  -Wconversion        # positions have 32 bits, sizes 64: every narrowing must be explicit
  -Wsign-conversion
  -Wshadow            # the session variables have short names that a local could hide
  -Wold-style-cast
  -Wnon-virtual-dtor
  -Woverloaded-virtual
  -Wcast-align
  -Wcast-qual
  -Wdouble-promotion
  -Wextra-semi
  -Wformat=2
  -Wnull-dereference
  $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-branches>
  $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond>
  $<$<CXX_COMPILER_ID:GNU>:-Wlogical-op>
  $<$<CXX_COMPILER_ID:GNU>:-Wsuggest-override>
  # False positives on std::optional in g++ 12 (its bug 80635); clang-tidy checks this too.
  $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>
  # A unity build includes the sources: what is local to one then looks as if a header declared it, and
  # is seen in the next.
  $<$<BOOL:$<TARGET_PROPERTY:UNITY_BUILD>>:-Wno-shadow>
  $<$<AND:$<CXX_COMPILER_ID:GNU>,$<BOOL:$<TARGET_PROPERTY:UNITY_BUILD>>>:-Wno-subobject-linkage>
  $<$<BOOL:${PELMARK_WARNINGS_AS_ERRORS}>:-Werror>)
