# What nearly every test includes takes half of the time that it compiles, so tests share it, compiled
# once. Those that share it have the same options and use no widgets. Qt's own header for tests
# can't be shared: it depends on the test's folder.
function(pelmark_add_test_headers name)
  add_executable(${name} ${PROJECT_SOURCE_DIR}/tests/support/no_test.cpp)
  target_link_libraries(${name} PRIVATE Qt6::Gui pelmark_warnings)
  # The last option is for compiler caches.
  target_compile_options(${name} PRIVATE ${ARGN} $<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>)
  target_precompile_headers(${name} PRIVATE
    <QtCore> <QtGui> <algorithm> <cmath> <functional> <limits> <memory> <utility>)
endfunction()

# AUTOMOC would start CMake and the compiler once more for each test.
function(pelmark_add_moc name)
  qt_generate_moc(${name}.cpp ${name}.moc TARGET ${name})
  set_source_files_properties(${name}.cpp PROPERTIES
    OBJECT_DEPENDS ${CMAKE_CURRENT_BINARY_DIR}/${name}.moc)
  target_include_directories(${name} PRIVATE ${CMAKE_CURRENT_BINARY_DIR})
endfunction()

function(pelmark_add_test_program name headers)
  add_executable(${name} ${name}.cpp)
  pelmark_add_moc(${name})
  target_link_libraries(${name} PRIVATE ${ARGN} Qt6::Gui Qt6::Test pelmark_warnings)
  target_precompile_headers(${name} REUSE_FROM ${headers})
  target_compile_options(${name} PRIVATE $<TARGET_PROPERTY:${headers},COMPILE_OPTIONS>)
  target_compile_definitions(${name} PRIVATE
    PELMARK_EXAMPLES="${PROJECT_SOURCE_DIR}/examples"
    PELMARK_TEST_DATA="${PROJECT_SOURCE_DIR}/tests/data")
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES
    ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;QT_FONT_DPI=96"
    TIMEOUT 900)
endfunction()

pelmark_add_test_headers(pelmark_test_headers)
# What the sanitizers look at is in the programs: a test that only runs them compiles in a quarter of
# the time without.
if(CMAKE_CXX_FLAGS MATCHES "-fsanitize")
  pelmark_add_test_headers(pelmark_process_test_headers -fno-sanitize=all -O0 -g0)
else()
  add_executable(pelmark_process_test_headers ALIAS pelmark_test_headers)
endif()

# pelmark_add_qt_test(name library...): a Qt Test program, `name`.cpp in the calling folder, that needs
# no screen. The libraries are what it tests, and what it tests that with.
function(pelmark_add_qt_test name)
  pelmark_add_test_program(${name} pelmark_test_headers ${ARGN})
endfunction()

# The same for a test that only runs the programs.
function(pelmark_add_process_test name)
  pelmark_add_test_program(${name} pelmark_process_test_headers ${ARGN})
endfunction()

# One of the core, without a window.
function(pelmark_add_core_test name)
  pelmark_add_qt_test(${name} pelmark_test_support)
endfunction()

# Tests that take long, in seconds, so that they start first and no processor waits for them at the end.
function(pelmark_start_early seconds)
  set_tests_properties(${ARGN} PROPERTIES COST ${seconds})
endfunction()

# Random comparisons run on `count` cases where the sanitizers make every one of them slow.
function(pelmark_fewer_random_cases name count)
  if(CMAKE_CXX_FLAGS MATCHES "-fsanitize")
    set_property(TEST ${name} APPEND PROPERTY ENVIRONMENT "PELMARK_RANDOM_CASES=${count}")
  endif()
endfunction()
