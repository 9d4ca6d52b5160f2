# One ctest test per suite of a GoogleTest program: starting a program costs more than most tests do. A suite named in
# TOLVANE_SPREAD_SUITES gets one per test. The list is made after each link, so a new test needs no further step.
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
  # Without its program a suite must not vanish unseen.
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
