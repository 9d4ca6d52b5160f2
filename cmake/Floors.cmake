# A floor is a library of all sources in its folder, with includes relative to the project's root.
#
#   tolvane_floor(NAME FOLDER LINKS...)      a static library of every .cpp below FOLDER
#   tolvane_tests(NAME FOLDER LINKS...)      a GoogleTest program of every .cpp below tests/FOLDER

include(${CMAKE_CURRENT_LIST_DIR}/Suites.cmake)

function(tolvane_sources out folder)
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${folder}/*.cpp ${folder}/*.h)
  set(${out} ${sources} PARENT_SCOPE)
endfunction()

function(tolvane_floor name folder)
  tolvane_sources(sources ${folder})
  add_library(${name} STATIC ${sources})
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR})
  target_compile_options(${name} PRIVATE ${TOLVANE_WARNINGS})
  target_link_libraries(${name} PUBLIC ${ARGN})
endfunction()

# The sources of a folder, except those for the other platform.
function(tolvane_sources_here out folder)
  tolvane_sources(sources ${folder})
  if(APPLE)
    list(FILTER sources EXCLUDE REGEX "/${folder}/linux/")
  else()
    list(FILTER sources EXCLUDE REGEX "/${folder}/macos/")
  endif()
  set(${out} ${sources} PARENT_SCOPE)
endfunction()

function(tolvane_tests name folder)
  tolvane_sources_here(sources ${folder})
  if(NOT sources)
    return()
  endif()
  add_executable(${name} ${sources})
  # Test code runs once, so optimising it would take longer than it saves.
  target_compile_options(${name} PRIVATE ${TOLVANE_WARNINGS} $<$<CONFIG:Debug>:-O0>)
  target_link_libraries(${name} PRIVATE ${ARGN} GTest::gmock)
  tolvane_precompile(${name} ${TOLVANE_TEST_HEADERS})
  tolvane_suites(${name})
endfunction()
