# The program as a bundle: Tolvane.app, with its icon and what the system is to know of it.
set(icon ${CMAKE_CURRENT_BINARY_DIR}/Tolvane.icns)
add_custom_command(
  OUTPUT ${icon}
  COMMAND ${PROJECT_SOURCE_DIR}/packaging/macos/make-icon ${PROJECT_SOURCE_DIR}/packaging/dev.tolvane.Tolvane.svg ${icon}
  DEPENDS ${PROJECT_SOURCE_DIR}/packaging/macos/make-icon ${PROJECT_SOURCE_DIR}/packaging/dev.tolvane.Tolvane.svg
  VERBATIM)
target_sources(tolvane PRIVATE ${icon})
set_source_files_properties(${icon} PROPERTIES MACOSX_PACKAGE_LOCATION Resources)
set_target_properties(tolvane PROPERTIES MACOSX_BUNDLE ON OUTPUT_NAME Tolvane
                      MACOSX_BUNDLE_INFO_PLIST ${PROJECT_SOURCE_DIR}/packaging/macos/Info.plist.in)
