# Installs the desktop-data component into an empty prefix and compares what arrived with the
# expected list, then has AppStream check the installed tree as a whole (the launchable resolves to
# the installed desktop file). Arguments: BUILD_DIR, PREFIX, DATADIR, APP_ID, APPSTREAMCLI.
file(REMOVE_RECURSE ${PREFIX})
execute_process(
  COMMAND ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${PREFIX} --component desktop-data
  RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "cmake --install failed (${result}):\n${output}")
endif()

set(expected
  ${DATADIR}/applications/${APP_ID}.desktop
  ${DATADIR}/applications/${APP_ID}.Widget.desktop
  ${DATADIR}/icons/hicolor/scalable/apps/${APP_ID}.svg
  ${DATADIR}/icons/hicolor/symbolic/apps/${APP_ID}-symbolic.svg
  ${DATADIR}/metainfo/${APP_ID}.metainfo.xml)
file(GLOB_RECURSE installed LIST_DIRECTORIES false RELATIVE ${PREFIX} ${PREFIX}/*)
list(SORT installed)
list(SORT expected)
if(NOT installed STREQUAL expected)
  string(REPLACE ";" "\n  " installed_lines "${installed}")
  string(REPLACE ";" "\n  " expected_lines "${expected}")
  message(FATAL_ERROR "installed:\n  ${installed_lines}\nexpected:\n  ${expected_lines}")
endif()
execute_process(COMMAND ${APPSTREAMCLI} validate-tree --no-net --strict ${PREFIX}
  RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "appstreamcli validate-tree failed (${result}):\n${output}")
endif()
file(REMOVE_RECURSE ${PREFIX})
