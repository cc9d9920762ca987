# A Qt Test program of the core, without a window: `name`.cpp in the calling folder.
function(pelmark_add_core_test name)
  add_executable(${name} ${name}.cpp)
  set_target_properties(${name} PROPERTIES AUTOMOC ON)
  target_link_libraries(${name} PRIVATE pelmark_test_support Qt6::Test pelmark_warnings)
  target_compile_definitions(${name} PRIVATE
    PELMARK_EXAMPLES="${PROJECT_SOURCE_DIR}/examples"
    PELMARK_TEST_DATA="${PROJECT_SOURCE_DIR}/tests/data")
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES
    ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;QT_FONT_DPI=96"
    TIMEOUT 600)
endfunction()

# Random comparisons run on `count` cases where the sanitizers make every one of them slow.
function(pelmark_fewer_random_cases name count)
  if(CMAKE_CXX_FLAGS MATCHES "-fsanitize")
    set_property(TEST ${name} APPEND PROPERTY ENVIRONMENT "PELMARK_RANDOM_CASES=${count}")
  endif()
endfunction()
