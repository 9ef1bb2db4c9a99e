# Installs the agent-data component into an empty prefix and checks what arrived: the D-Bus
# activation file naming the agent under that prefix, and a valid autostart entry.
# Arguments: BUILD_DIR, PREFIX, DATADIR, BINDIR, APP_ID, DESKTOP_FILE_VALIDATE.
file(REMOVE_RECURSE ${PREFIX})
execute_process(
  COMMAND ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${PREFIX} --component agent-data
  RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "cmake --install failed (${result}):\n${output}")
endif()

set(service ${PREFIX}/${DATADIR}/dbus-1/services/${APP_ID}.Agent.service)
set(autostart ${PREFIX}/etc/xdg/autostart/${APP_ID}.Agent.desktop)
file(GLOB_RECURSE installed LIST_DIRECTORIES false RELATIVE ${PREFIX} ${PREFIX}/*)
list(SORT installed)
set(expected ${DATADIR}/dbus-1/services/${APP_ID}.Agent.service
  etc/xdg/autostart/${APP_ID}.Agent.desktop)
list(SORT expected)
if(NOT installed STREQUAL expected)
  message(FATAL_ERROR "installed: ${installed}\nexpected: ${expected}")
endif()

file(READ ${service} text)
set(wanted "[D-BUS Service]\nName=${APP_ID}.Agent\nExec=${PREFIX}/${BINDIR}/tidemark-agent\n")
if(NOT text STREQUAL wanted)
  message(FATAL_ERROR "the activation file reads:\n${text}\nexpected:\n${wanted}")
endif()

execute_process(COMMAND ${DESKTOP_FILE_VALIDATE} ${autostart}
  RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
if(NOT result EQUAL 0 OR output MATCHES ": (error|warning|hint): ")
  message(FATAL_ERROR "desktop-file-validate:\n${output}")
endif()
file(REMOVE_RECURSE ${PREFIX})
