# Hardening flags, for compilers that accept g++'s: people open files that others sent them, and a
# memory error should then crash the program, not be exploitable.
if(MSVC)
  return()
endif()

include(CheckCXXCompilerFlag)
include(CheckPIESupported)

string(FIND "${CMAKE_CXX_FLAGS}" "-fsanitize=" sanitizers)

# Loads the program at a random address.
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
check_pie_supported(LANGUAGES CXX)

add_compile_options(-fstack-protector-strong)
check_cxx_compiler_flag(-fstack-clash-protection PELMARK_HAS_STACK_CLASH_PROTECTION)
if(PELMARK_HAS_STACK_CLASH_PROTECTION)
  add_compile_options(-fstack-clash-protection)
endif()

# The C library's checked functions need the optimizer, and would bypass the sanitizers' checks.
if(CMAKE_BUILD_TYPE MATCHES "^(Release|RelWithDebInfo|MinSizeRel)$" AND sanitizers EQUAL -1)
  add_compile_options(-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
endif()

# Where speed does not matter, the standard library also checks each index.
if(CMAKE_BUILD_TYPE STREQUAL "Debug" OR NOT sanitizers EQUAL -1)
  add_compile_definitions(_GLIBCXX_ASSERTIONS)
endif()

# The table of library functions is filled at startup and read-only afterwards.
if(CMAKE_EXECUTABLE_FORMAT STREQUAL "ELF")
  add_link_options(LINKER:-z,relro LINKER:-z,now)
  # Each program depends on the libraries that it calls, and on no others.
  add_link_options(LINKER:--as-needed)
endif()
