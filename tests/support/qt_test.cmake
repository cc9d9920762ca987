# pelmark_add_qt_test(name library...): a Qt Test program, `name`.cpp in the calling folder, that needs
# no screen. The libraries are what it tests, and what it tests that with.
function(pelmark_add_qt_test name)
  add_executable(${name} ${name}.cpp)
  set_target_properties(${name} PROPERTIES AUTOMOC ON)
  target_link_libraries(${name} PRIVATE ${ARGN} Qt6::Test pelmark_warnings)
  target_compile_definitions(${name} PRIVATE
    PELMARK_EXAMPLES="${PROJECT_SOURCE_DIR}/examples"
    PELMARK_TEST_DATA="${PROJECT_SOURCE_DIR}/tests/data")
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES
    ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;QT_FONT_DPI=96"
    TIMEOUT 900)
endfunction()

# One of the core, without a window.
function(pelmark_add_core_test name)
  pelmark_add_qt_test(${name} pelmark_test_support)
endfunction()

# Random comparisons run on `count` cases where the sanitizers make every one of them slow.
function(pelmark_fewer_random_cases name count)
  if(CMAKE_CXX_FLAGS MATCHES "-fsanitize")
    set_property(TEST ${name} APPEND PROPERTY ENVIRONMENT "PELMARK_RANDOM_CASES=${count}")
  endif()
endfunction()
