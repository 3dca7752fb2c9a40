# Adds the program <folder>_test. Every file <class>_test.cpp in `folder` contains the test class
# <class>Test, which ctest runs as <folder>.<class>. SOURCES: additional sources. LIBRARIES:
# additional libraries.
function(cartonpick_test_folder folder)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LIBRARIES")
  string(REGEX REPLACE ".*/" "" name ${folder})
  set(target ${name}_test)
  file(GLOB tests CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*_test.cpp)
  qt_add_executable(${target} ${tests} ${arg_SOURCES})
  target_link_libraries(${target} PRIVATE cartonpick_test_main ${arg_LIBRARIES})
  target_compile_options(${target} PRIVATE -O0)
  # Qt defines a macro with the source folder's path, so the precompiled header fits only tests/.
  if(CMAKE_CURRENT_SOURCE_DIR STREQUAL "${CMAKE_SOURCE_DIR}/tests")
    target_precompile_headers(${target} REUSE_FROM cartonpick_test_main)
  endif()
  set_target_properties(${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/test-bin)
  foreach(test IN LISTS tests)
    get_filename_component(class ${test} NAME_WE)
    string(REGEX REPLACE "_test$" "" class ${class})
    add_test(NAME ${name}.${class} COMMAND ${target} ${class}Test)
    set_tests_properties(${name}.${class} PROPERTIES
      ENVIRONMENT "QT_QPA_PLATFORM=offscreen;QT_QUICK_BACKEND=software;LC_ALL=C.UTF-8;TZ=Europe/Athens;LSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/tests/lsan.supp"
      TIMEOUT 600)
  endforeach()
endfunction()

# Adds a test that runs a command with real processes. `timeout` is in seconds.
function(cartonpick_run name timeout)
  add_test(NAME ${name} COMMAND ${ARGN})
  set_tests_properties(${name} PROPERTIES
    ENVIRONMENT
      "LC_ALL=C.UTF-8;TZ=Europe/Athens;PYTHONPATH=${CMAKE_SOURCE_DIR}/tests/acceptance:${CMAKE_SOURCE_DIR}/campaigns/fleet:${CMAKE_SOURCE_DIR}/campaigns"
    TIMEOUT ${timeout} RUN_SERIAL TRUE)
endfunction()

set(own_session ${CMAKE_SOURCE_DIR}/tests/acceptance/own-session)
