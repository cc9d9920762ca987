# What makes a fault end the program rather than be used against its user: people open files that
# others sent them. For compilers that take g++'s flags.
if(MSVC)
  return()
endif()

include(CheckCXXCompilerFlag)
include(CheckPIESupported)

string(FIND "${CMAKE_CXX_FLAGS}" "-fsanitize=" sanitizers)

# The program lies at another address at each start.
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
check_pie_supported(LANGUAGES CXX)

add_compile_options(-fstack-protector-strong)
check_cxx_compiler_flag(-fstack-clash-protection PELMARK_HAS_STACK_CLASH_PROTECTION)
if(PELMARK_HAS_STACK_CLASH_PROTECTION)
  add_compile_options(-fstack-clash-protection)
endif()

# The C library's checked functions need the optimizer, and would hide from the sanitizers' own.
if(CMAKE_BUILD_TYPE MATCHES "^(Release|RelWithDebInfo|MinSizeRel)$" AND sanitizers EQUAL -1)
  add_compile_options(-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
endif()

# Where speed does not matter the standard library checks each index, too.
if(CMAKE_BUILD_TYPE STREQUAL "Debug" OR NOT sanitizers EQUAL -1)
  add_compile_definitions(_GLIBCXX_ASSERTIONS)
endif()

# The table of library functions is filled at the start and can't be written to after.
if(CMAKE_EXECUTABLE_FORMAT STREQUAL "ELF")
  add_link_options(LINKER:-z,relro LINKER:-z,now)
endif()
