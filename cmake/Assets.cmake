# Enciphers assets at build time and builds them into a target.

include_guard(GLOBAL)

# A script and no program: the same runs on the building machine whatever it builds for. Debian: python3,
# python3-cryptography.
find_program(VELORINTH_PYTHON3 python3)
if(NOT VELORINTH_PYTHON3)
  message(FATAL_ERROR "python3 is needed to encipher the assets (Debian: python3, python3-cryptography)")
endif()
set(VELORINTH_ENCIPHER ${PROJECT_SOURCE_DIR}/tools/encipher/encipher.py CACHE INTERNAL "")
set(VELORINTH_ASSET_KEY ${PROJECT_SOURCE_DIR}/assets/key.hex CACHE INTERNAL "")

# velorinth_asset_key(<target>): defines Tamborel::EmbeddedKey in the target.
function(velorinth_asset_key target)
  set(source ${CMAKE_CURRENT_BINARY_DIR}/${target}_assets/EmbeddedKey.cpp)
  file(MAKE_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/${target}_assets)
  add_custom_command(
    OUTPUT ${source}
    COMMAND ${VELORINTH_PYTHON3} ${VELORINTH_ENCIPHER} --key ${VELORINTH_ASSET_KEY} --out ${source}
    DEPENDS ${VELORINTH_ENCIPHER} ${VELORINTH_ASSET_KEY}
    COMMENT "Writing the assets' key"
    VERBATIM)
  target_sources(${target} PRIVATE ${source})
endfunction()

# velorinth_assets(<target> <Name> <file> [<Name> <file> ...]): defines Tamborel::Assets::<Name> in the target for each
# file. A file that is missing ends the configuration, and later the build, with a line that names it.
function(velorinth_assets target)
  set(folder ${CMAKE_CURRENT_BINARY_DIR}/${target}_assets)
  file(MAKE_DIRECTORY ${folder})
  set(rest ${ARGN})
  while(rest)
    list(POP_FRONT rest name asset)
    cmake_path(ABSOLUTE_PATH asset BASE_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR} NORMALIZE)
    if(NOT EXISTS ${asset})
      message(FATAL_ERROR "The asset ${name} is missing: there is no file ${asset} (docs/assets.md tells where assets come from)")
    endif()
    set(source ${folder}/${name}.cpp)
    add_custom_command(
      OUTPUT ${source}
      COMMAND ${VELORINTH_PYTHON3} ${VELORINTH_ENCIPHER} --key ${VELORINTH_ASSET_KEY} --name ${name} --out ${source} ${asset}
      DEPENDS ${VELORINTH_ENCIPHER} ${VELORINTH_ASSET_KEY} ${asset}
      COMMENT "Enciphering ${name}"
      VERBATIM)
    set_source_files_properties(${source} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
    target_sources(${target} PRIVATE ${source})
  endwhile()
endfunction()
