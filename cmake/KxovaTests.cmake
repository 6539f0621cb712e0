# GoogleTest from Debian's source package, and kxova_test(), which makes every case of a test program a ctest entry, or
# the whole program where a table gives it hundreds of them.
include(GoogleTest)

set(KXOVA_GTEST_SOURCE /usr/src/googletest CACHE PATH "GoogleTest's source tree")
set(INSTALL_GTEST OFF)
add_subdirectory(${KXOVA_GTEST_SOURCE} ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)

# Test programs are built more often than they run: not optimised, without debug information.
function(kxova_quick_to_build name)
  if(NOT MSVC)
    target_compile_options(${name} PRIVATE -O0 -g0)
  endif()
endfunction()

# kxova_test(NAME SOURCES file... [LIBRARIES lib...] [DIRECTORY dir] [EXCLUSIVE] [WHOLE] [LABEL label])
# EXCLUSIVE: the cases use what exists once per machine (the trace's kernel objects, the server's pipes) and run
# with nothing beside them. WHOLE: the program is one ctest entry, for hundreds of cases that take less time than a
# process each; its log names them. DIRECTORY: where the program is put, beside the libraries that it is to load.
function(kxova_test name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "EXCLUSIVE;WHOLE" "DIRECTORY;LABEL" "SOURCES;LIBRARIES")
  if(arg_UNPARSED_ARGUMENTS OR arg_KEYWORDS_MISSING_VALUES)
    message(FATAL_ERROR "${name}: \"${arg_UNPARSED_ARGUMENTS}\" is unknown, \"${arg_KEYWORDS_MISSING_VALUES}\" lacks its value")
  endif()
  add_executable(${name} ${arg_SOURCES})
  kxova_target(${name})
  kxova_quick_to_build(${name})
  target_precompile_headers(${name} REUSE_FROM kxova_test_headers)
  set(c_sources ${arg_SOURCES})
  list(FILTER c_sources INCLUDE REGEX "\\.c$")
  set_source_files_properties(${c_sources} PROPERTIES SKIP_PRECOMPILE_HEADERS ON)
  target_link_libraries(${name} PRIVATE kxova_test_support ${arg_LIBRARIES} gtest gmock)
  if(arg_DIRECTORY)
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${arg_DIRECTORY})
  endif()
  set(properties TIMEOUT 60)
  if(arg_EXCLUSIVE)
    list(APPEND properties RUN_SERIAL TRUE)
  endif()
  if(arg_LABEL)
    list(APPEND properties LABELS ${arg_LABEL})
  endif()
  if(arg_WHOLE)
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES ${properties} TIMEOUT 240)
    return()
  endif()
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60 PROPERTIES ${properties})
endfunction()
