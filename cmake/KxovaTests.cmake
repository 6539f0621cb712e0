# GoogleTest from Debian's source package, and kxova_test(), which makes every case of a test program a ctest entry, or
# the whole program where a table gives it hundreds of them.
include(GoogleTest)

set(KXOVA_GTEST_SOURCE /usr/src/googletest CACHE PATH "GoogleTest's source tree")
set(INSTALL_GTEST OFF)
add_subdirectory(${KXOVA_GTEST_SOURCE} ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)

# kxova_test(NAME SOURCES file... [LIBRARIES lib...] [DIRECTORY dir] [EXCLUSIVE] [WHOLE] [LABEL label])
# EXCLUSIVE: the cases use what exists once per machine (the trace's kernel objects, the server's pipes) and run
# with nothing beside them. WHOLE: the program is one ctest entry, for hundreds of cases that take less time than a
# process each; its log names them. DIRECTORY: where the program is put, beside the libraries that it is to load.
function(kxova_test name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "EXCLUSIVE;WHOLE" "DIRECTORY;LABEL" "SOURCES;LIBRARIES")
  add_executable(${name} ${arg_SOURCES})
  kxova_target(${name})
  target_link_libraries(${name} PRIVATE kxova_test_support ${arg_LIBRARIES} gtest gmock)
  if(arg_DIRECTORY)
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${arg_DIRECTORY})
  endif()
  set(properties TIMEOUT 120)
  if(arg_EXCLUSIVE)
    list(APPEND properties RUN_SERIAL TRUE)
  endif()
  if(arg_LABEL)
    list(APPEND properties LABELS ${arg_LABEL})
  endif()
  if(arg_WHOLE)
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES ${properties} TIMEOUT 400)
    return()
  endif()
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60 PROPERTIES ${properties})
endfunction()
