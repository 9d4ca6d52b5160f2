# Asks a GoogleTest program for its tests and writes what ctest runs.
#   cmake -D PROGRAM=FILE -D NAME=PREFIX -D SUITES=OUT -D SPREAD=SUITES -P ListSuites.cmake

cmake_minimum_required(VERSION 3.25)
execute_process(COMMAND ${PROGRAM} --gtest_list_tests OUTPUT_VARIABLE listed RESULT_VARIABLE result TIMEOUT 60)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "${PROGRAM} --gtest_list_tests failed (${result}):\n${listed}")
endif()

# A suite that runs no test is a leftover, so it fails. There is no SKIP_REGULAR_EXPRESSION: with one, ctest would call
# a suite skipped even if another of its tests fails. runTests in scripts/common.sh lists skipped tests instead.
function(add name filter)
  string(APPEND script "add_test([[${NAME}.${name}]] [[${PROGRAM}]] [[--gtest_filter=${filter}]])\n"
                       "set_tests_properties([[${NAME}.${name}]] PROPERTIES LABELS ${NAME} TIMEOUT 240"
                       " FAIL_REGULAR_EXPRESSION [[Running 0 tests]])\n")
  set(script "${script}" PARENT_SCOPE)
endfunction()

# "Suite." starts a suite, "  test" is one of its tests; "# ..." after either is a parameter, which can be any text.
string(REGEX REPLACE "[ ]*#[^\n]*" "" listed "${listed}")
string(REGEX MATCHALL "[^\n]+" lines "${listed}")
foreach(line IN LISTS lines)
  if(line MATCHES "^([A-Za-z0-9_/]+)\\.$")
    set(suite ${CMAKE_MATCH_1})
    if(NOT suite IN_LIST SPREAD)
      add(${suite} "${suite}.*")
    endif()
  elseif(line MATCHES "^  ([A-Za-z0-9_/]+)$")
    if(suite IN_LIST SPREAD)
      add(${suite}.${CMAKE_MATCH_1} ${suite}.${CMAKE_MATCH_1})
    endif()
  elseif(NOT line MATCHES "gtest_main\\.cc$")
    message(FATAL_ERROR "${PROGRAM} --gtest_list_tests printed an unexpected line: ${line}")
  endif()
endforeach()
file(WRITE ${SUITES} "${script}")
