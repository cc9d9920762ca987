# The warnings that the project's own code is held to, as a target to link to.
# CI turns them into errors; a user's newer compiler must not stop a build.
option(PELMARK_WARNINGS_AS_ERRORS "Stop the build at the first warning" OFF)

add_library(pelmark_warnings INTERFACE)
# What the toolkit's oldest supported version has replaced is not there at all.
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
  -Wconversion        # positions are 32 bits wide, sizes 64: every narrowing is to be written out
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
  # g++ 12 takes the value of an empty std::optional for read (its bug 80635); clang-tidy looks, too.
  $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>
  $<$<BOOL:${PELMARK_WARNINGS_AS_ERRORS}>:-Werror>)
