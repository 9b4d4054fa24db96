# Registers a GoogleTest program with CTest as one entry per test suite: each entry runs
# the program once with --gtest_filter=Suite.*, so a process starts per group of tests, not
# per test. GoogleTest's output names a failing test, and the program's main names the test
# a crash happened in. The suites are listed when CTest starts (the program must run under
# the cross-compiling emulator to say them), and listed again only when the program changed.
#
#   kel_add_test_groups(TARGET [TIMEOUT seconds] [WHOLE])
#
# WHOLE registers the program as a single entry that runs it whole, for a program whose
# point is how the process as a whole behaves (its exit, for one).
#
# Entries are named PROGRAM/SUITE (test_framework/WndTest), so `ctest -R WndTest` runs one
# suite and `ctest -L test_framework` one program.

set(KEL_TEST_GROUPS_SCRIPT ${CMAKE_CURRENT_LIST_FILE})

function(kel_add_test_groups target)
  cmake_parse_arguments(ARG "WHOLE" "TIMEOUT" "" ${ARGN})
  if(NOT ARG_TIMEOUT)
    set(ARG_TIMEOUT 300)
  endif()
  if(ARG_WHOLE)
    add_test(NAME ${target} COMMAND ${target})
    set_tests_properties(${target} PROPERTIES TIMEOUT ${ARG_TIMEOUT} LABELS ${target})
    return()
  endif()
  set(base ${CMAKE_CURRENT_BINARY_DIR}/${target}_groups)
  file(GENERATE OUTPUT ${base}_include.cmake CONTENT
"set(KEL_TG_PROGRAM [==[$<TARGET_FILE:${target}>]==])
set(KEL_TG_NAME [==[${target}]==])
set(KEL_TG_EMULATOR [==[${CMAKE_CROSSCOMPILING_EMULATOR}]==])
set(KEL_TG_LIST [==[${base}_tests.cmake]==])
set(KEL_TG_TIMEOUT [==[${ARG_TIMEOUT}]==])
set(KEL_TG_CMAKE [==[${CMAKE_COMMAND}]==])
include([==[${KEL_TEST_GROUPS_SCRIPT}]==])
kel_test_groups_discover()
")
  set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES ${base}_include.cmake)
endfunction()

# Run by CTest through the include file above: writes the list of entries when it is missing
# or older than the program, then reads it.
macro(kel_test_groups_discover)
  if(NOT EXISTS "${KEL_TG_PROGRAM}")
    add_test(${KEL_TG_NAME}_NOT_BUILT ${KEL_TG_NAME}_NOT_BUILT)
  else()
    if(NOT EXISTS "${KEL_TG_LIST}" OR NOT "${KEL_TG_LIST}" IS_NEWER_THAN "${KEL_TG_PROGRAM}")
      kel_test_groups_write()
    endif()
    include("${KEL_TG_LIST}")
    # A failed listing is reported once and tried again at the next run.
    file(STRINGS "${KEL_TG_LIST}" kel_tg_failed REGEX "LISTING_FAILED")
    if(kel_tg_failed)
      file(REMOVE "${KEL_TG_LIST}")
    endif()
  endif()
endmacro()

function(kel_test_groups_write)
  execute_process(COMMAND ${KEL_TG_EMULATOR} "${KEL_TG_PROGRAM}" --gtest_list_tests
                  OUTPUT_VARIABLE listing RESULT_VARIABLE rc TIMEOUT 120)
  set(content "")
  if(NOT rc EQUAL 0)
    # An entry that fails and says why; the suites the listing did name are still entered.
    string(REPLACE "]==]" "" said "${listing}")
    string(APPEND content
      "add_test([==[${KEL_TG_NAME}/LISTING_FAILED]==] [==[${KEL_TG_CMAKE}]==] -E echo "
      "[==[listing the tests of ${KEL_TG_PROGRAM} failed (${rc}): ${said}]==])\n"
      "set_tests_properties([==[${KEL_TG_NAME}/LISTING_FAILED]==] PROPERTIES WILL_FAIL TRUE "
      "LABELS [==[${KEL_TG_NAME}]==])\n")
  endif()
  string(REPLACE "\r" "" listing "${listing}")
  string(REPLACE ";" "\\;" listing "${listing}")
  string(REPLACE "\n" ";" lines "${listing}")
  set(suites "")
  foreach(line IN LISTS lines)
    # A suite line starts in the first column and ends with a dot, before any comment
    # ("Prefix/Suite.  # TypeParam = int"); test lines are indented.
    if(line MATCHES "^([A-Za-z_][A-Za-z0-9_/]*)\\.( .*)?$")
      list(APPEND suites "${CMAKE_MATCH_1}")
    endif()
  endforeach()
  list(REMOVE_DUPLICATES suites)
  foreach(suite IN LISTS suites)
    set(name "${KEL_TG_NAME}/${suite}")
    string(APPEND content
      "add_test([==[${name}]==] [==[${KEL_TG_EMULATOR}]==] [==[${KEL_TG_PROGRAM}]==] "
      "[==[--gtest_filter=${suite}.*]==])\n"
      "set_tests_properties([==[${name}]==] PROPERTIES TIMEOUT ${KEL_TG_TIMEOUT} "
      "LABELS [==[${KEL_TG_NAME}]==])\n")
  endforeach()
  if(suites STREQUAL "")
    string(APPEND content
      "add_test([==[${KEL_TG_NAME}/NO_TESTS]==] [==[${KEL_TG_CMAKE}]==] -E false)\n")
  endif()
  file(WRITE "${KEL_TG_LIST}" "${content}")
endfunction()
