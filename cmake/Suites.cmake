# One ctest test per suite of a GoogleTest program, because starting a program takes longer than most tests. Suites in
# TOLVANE_SPREAD_SUITES get one per test. The list is made after each link, so a new test needs no further step.
#
#   tolvane_suites(PROGRAM)

set(TOLVANE_LIST_SUITES ${CMAKE_CURRENT_LIST_DIR}/ListSuites.cmake)

function(tolvane_suites program)
  set(suites ${CMAKE_CURRENT_BINARY_DIR}/${program}_suites.cmake)
  add_custom_command(
    TARGET ${program} POST_BUILD
    COMMAND ${CMAKE_COMMAND} -D PROGRAM=$<TARGET_FILE:${program}> -D NAME=${program} -D SUITES=${suites}
            "-DSPREAD=${TOLVANE_SPREAD_SUITES}" -P ${TOLVANE_LIST_SUITES}
    BYPRODUCTS ${suites}
    VERBATIM)
  set_property(TARGET ${program} APPEND PROPERTY LINK_DEPENDS ${TOLVANE_LIST_SUITES})
  # If the program was not built, its suites must fail, not disappear.
  set(include ${CMAKE_CURRENT_BINARY_DIR}/${program}_include.cmake)
  file(CONFIGURE OUTPUT ${include} @ONLY CONTENT [[
if(EXISTS "@suites@")
  include("@suites@")
else()
  add_test(@program@_NOT_BUILT @program@_NOT_BUILT)
endif()
]])
  set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES ${include})
endfunction()
