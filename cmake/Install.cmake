# Where `cmake --install` puts what (Linux). The programs look for each other, for the drivers and for the engine in the
# folder that they lie in, so they have one of their own, and a link in the folder of programs.

include_guard(GLOBAL)

option(VELORINTH_INSTALL_SAMPLE "Install the stand-in engine and drivers too" OFF)

set(programs ${CMAKE_INSTALL_LIBDIR}/velorinth-launcher)
set(documents ${CMAKE_INSTALL_DATAROOTDIR}/doc/velorinth-launcher)

install(TARGETS velorinth-launcher launch_console wine_supervisor RUNTIME DESTINATION ${programs})
install(FILES ${CMAKE_BINARY_DIR}/bin/engine_host.exe ${CMAKE_BINARY_DIR}/bin/engine_bridge.exe DESTINATION ${programs})
# Empty: the player's own files go there, or a package's that has them.
install(DIRECTORY DESTINATION ${programs}/Drivers)
install(DIRECTORY DESTINATION ${programs}/Engine)
if(VELORINTH_INSTALL_SAMPLE)
  set(stand_ins ${CMAKE_BINARY_DIR}/tools/sample/stand-ins)
  install(FILES ${stand_ins}/KVR.dll ${stand_ins}/KVR2.dll DESTINATION ${programs}/Drivers)
  install(FILES ${stand_ins}/quake2.exe DESTINATION ${programs}/Engine)
endif()

# Relative, so that the tree may be moved as a whole.
cmake_path(ABSOLUTE_PATH CMAKE_INSTALL_BINDIR BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX} NORMALIZE OUTPUT_VARIABLE from)
cmake_path(ABSOLUTE_PATH programs BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX} NORMALIZE OUTPUT_VARIABLE to)
cmake_path(RELATIVE_PATH to BASE_DIRECTORY ${from})
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/install)
file(CREATE_LINK ${to}/velorinth-launcher ${CMAKE_BINARY_DIR}/install/velorinth-launcher SYMBOLIC)
install(FILES ${CMAKE_BINARY_DIR}/install/velorinth-launcher DESTINATION ${CMAKE_INSTALL_BINDIR})

install(FILES ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION ${documents})
# The launcher carries fonts of this licence within itself (docs/assets.md).
install(
  FILES /usr/share/doc/fonts-open-sans/copyright
  DESTINATION ${documents}
  RENAME fonts-open-sans)
install(FILES /usr/share/common-licenses/Apache-2.0 DESTINATION ${documents})
