# Puts files into programs as resources, for FindResourceW to find.

include_guard(GLOBAL)

if(WIN32)
  enable_language(RC)
endif()

# velorinth_resource(<target> NAME <name> TYPE <type> [GENERATED] FILE <file>): a file within the program `target`. NAME and
# TYPE are words in ASCII. GENERATED: the build makes the file, in a target that `target` depends on.
function(velorinth_resource target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "GENERATED" "NAME;TYPE;FILE" "")
  cmake_path(ABSOLUTE_PATH arg_FILE NORMALIZE)
  if(NOT arg_GENERATED AND NOT EXISTS ${arg_FILE})
    message(FATAL_ERROR "${target}: the resource ${arg_NAME} has no file ${arg_FILE}.")
  endif()
  set(source ${CMAKE_CURRENT_BINARY_DIR}/${target}_${arg_TYPE}_${arg_NAME})
  if(WIN32)
    file(CONFIGURE OUTPUT ${source}.rc CONTENT "@arg_NAME@ @arg_TYPE@ \"@arg_FILE@\"\n" @ONLY)
    set_source_files_properties(${source}.rc PROPERTIES OBJECT_DEPENDS ${arg_FILE})
    target_sources(${target} PRIVATE ${source}.rc)
    return()
  endif()
  file(CONFIGURE OUTPUT ${source}.cpp @ONLY CONTENT [=[
#include "Platform/Linux/Resources/ResourceEntry.h"

asm(".pushsection .rodata\n"
    "velorinth_resource_@arg_TYPE@_@arg_NAME@:\n"
    ".incbin \"@arg_FILE@\"\n"
    "velorinth_resource_end_@arg_TYPE@_@arg_NAME@:\n"
    ".byte 0\n"
    ".popsection\n");

extern const std::uint8_t first[] asm("velorinth_resource_@arg_TYPE@_@arg_NAME@");
extern const std::uint8_t last[] asm("velorinth_resource_end_@arg_TYPE@_@arg_NAME@");

namespace {
const Platform::ResourceEntry entry(L"@arg_NAME@", L"@arg_TYPE@", first, last);
}  // namespace
]=])
  # On its own: every one of these has the same names within.
  set_source_files_properties(${source}.cpp PROPERTIES OBJECT_DEPENDS ${arg_FILE} SKIP_UNITY_BUILD_INCLUSION ON)
  target_sources(${target} PRIVATE ${source}.cpp)
  target_link_libraries(${target} PRIVATE platform_resources)
endfunction()
