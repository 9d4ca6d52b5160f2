# "Inter Tabular", made at build time from the installed Inter if fonttools is available; without it numbers use the
# interface font. The licence text is embedded in the same resources.
#
#   tolvane_tabular_font(OUT_FILES)

find_program(TOLVANE_PYTHON NAMES python3 PATHS /usr/bin NO_DEFAULT_PATH)
find_path(TOLVANE_INTER Inter-Regular.otf PATHS /usr/share/fonts/opentype/inter NO_DEFAULT_PATH)
if(TOLVANE_PYTHON)
  execute_process(COMMAND ${TOLVANE_PYTHON} -c "import fontTools" RESULT_VARIABLE TOLVANE_FONTTOOLS_MISSING
                  OUTPUT_QUIET ERROR_QUIET)
endif()

function(tolvane_tabular_font out)
  set(files)
  if(TOLVANE_PYTHON AND TOLVANE_INTER AND NOT TOLVANE_FONTTOOLS_MISSING)
    foreach(weight Regular Medium SemiBold)
      set(file ${CMAKE_CURRENT_BINARY_DIR}/fonts/InterTabular-${weight}.otf)
      add_custom_command(
        OUTPUT ${file}
        COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_CURRENT_BINARY_DIR}/fonts
        COMMAND ${TOLVANE_PYTHON} ${PROJECT_SOURCE_DIR}/scripts/tabular-font ${TOLVANE_INTER}/Inter-${weight}.otf ${file}
        DEPENDS ${PROJECT_SOURCE_DIR}/scripts/tabular-font
        VERBATIM)
      list(APPEND files ${file})
    endforeach()
  else()
    message(STATUS "python3-fonttools or fonts-inter is missing: figures use the interface font's own digits")
  endif()
  set(${out} ${files} PARENT_SCOPE)
endfunction()
