# The same sources give the same programs, in whichever folders they are and are built, with debug
# information too if CXXFLAGS ask for it. Other builds than Release are for debuggers and coverage, which
# have to find the sources.
if(CMAKE_BUILD_TYPE STREQUAL "Release" AND NOT MSVC)
  # Of two options that fit, the compiler takes the last: the build folder may be inside the sources.
  add_compile_options(-ffile-prefix-map=${PROJECT_SOURCE_DIR}=. -ffile-prefix-map=${PROJECT_BINARY_DIR}=build)
endif()
# The first format of resources has no dates of files.
set(CMAKE_AUTORCC_OPTIONS --format-version 1)
