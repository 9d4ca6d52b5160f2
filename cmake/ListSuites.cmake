# Asks a GoogleTest program for its tests and writes what ctest runs.
#   cmake -D PROGRAM=FILE -D NAME=PREFIX -D SUITES=OUT -D SPREAD=SUITES -P ListSuites.cmake

cmake_minimum_required(VERSION 3.25)
execute_process(COMMAND ${PROGRAM} --gtest_list_tests OUTPUT_VARIABLE listed RESULT_VARIABLE result TIMEOUT 60)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "${PROGRAM} --gtest_list_tests failed (${result}):\n${listed}")
endif()

# A suite that runs no test fails: it is a leftover. Skips are not looked for here, since ctest would then call a suite
# skipped even when another of its tests fails; runTests in scripts/common.sh names them.
function(add name filter)
  string(APPEND script "add_test([[${NAME}.${name}]] [[${PROGRAM}]] [[--gtest_filter=${filter}]])\n"
                       "set_tests_properties([[${NAME}.${name}]] PROPERTIES LABELS ${NAME} TIMEOUT 240"
                       " FAIL_REGULAR_EXPRESSION [[Running 0 tests]])\n")
  set(script "${script}" PARENT_SCOPE)
endfunction()

# "Suite." begins a suite, "  test" is one of its tests; "# ..." behind either shows a parameter, which may hold anything.
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
    message(FATAL_ERROR "${PROGRAM} --gtest_list_tests says what nobody understands: ${line}")
  endif()
endforeach()
file(WRITE ${SUITES} "${script}")
