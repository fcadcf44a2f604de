# Shared build rules: warnings, sanitizers, and one library target per folder.

include_guard(GLOBAL)

# What every target of ours compiles with.
add_library(velorinth_options INTERFACE)
target_compile_features(velorinth_options INTERFACE cxx_std_20)
target_compile_options(
  velorinth_options
  INTERFACE -Wall
            -Wextra
            -Wpedantic
            -Wconversion
            -Werror
            -pthread
            # The same picture and the same numbers on every machine.
            -ffp-contract=off)
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  # What Clang means by these options beyond GCC, whose word counts: that of the release build.
  target_compile_options(velorinth_options INTERFACE -Wno-keyword-macro -Wno-missing-braces -Wno-sign-conversion
                                                     -Wno-unused-private-field)
endif()
target_link_options(velorinth_options INTERFACE -pthread)
if(WIN32)
  target_compile_definitions(velorinth_options INTERFACE UNICODE _UNICODE _WIN32_WINNT=0x0A00 WINVER=0x0A00 NOMINMAX)
  # One file to copy: no runtime library has to lie beside a Windows program.
  target_link_options(velorinth_options INTERFACE -static)
endif()
# Hundreds of test programs, each with the static libraries under it: a linker that works in parallel takes a fifth of the
# time. GCC knows the name from version 12 on, as Debian 12 has it.
find_program(VELORINTH_MOLD mold)
if(VELORINTH_MOLD AND NOT WIN32)
  target_link_options(velorinth_options INTERFACE -fuse-ld=mold)
endif()
# For Windows it is LLVM's, which takes a fiftieth of the time of the one that mingw-w64's GCC always calls. So Clang links
# what that GCC compiled, with its libraries and the stack that its programs have.
if(WIN32)
  find_program(VELORINTH_CLANG clang++-14)
  find_program(VELORINTH_LLD ld.lld-14)
  if(VELORINTH_CLANG AND VELORINTH_LLD)
    execute_process(
      COMMAND ${CMAKE_CXX_COMPILER} -print-libgcc-file-name
      OUTPUT_VARIABLE libgcc
      OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    cmake_path(GET libgcc PARENT_PATH libgcc)
    string(
      JOIN " " CMAKE_CXX_LINK_EXECUTABLE
      "${VELORINTH_CLANG} --target=x86_64-w64-mingw32 -fuse-ld=lld-14 -Wno-unused-command-line-argument -L${libgcc}"
      "-Wl,--stack,0x200000 <CMAKE_CXX_LINK_FLAGS> <LINK_FLAGS> <OBJECTS> -o <TARGET> <LINK_LIBRARIES>")
  endif()
endif()
if(CMAKE_BUILD_TYPE STREQUAL "Debug")
  target_compile_definitions(velorinth_options INTERFACE _GLIBCXX_ASSERTIONS)
endif()
if(VELORINTH_SANITIZE)
  # Undefined behaviour is looked for in what is tested, not in the tests: those checks are a third of what compiling costs.
  string(REPLACE ",undefined" "" everywhere "${VELORINTH_SANITIZE}")
  target_compile_options(velorinth_options INTERFACE -fsanitize=${everywhere} -fno-omit-frame-pointer
                                                     -fno-sanitize-recover=all)
  target_link_options(velorinth_options INTERFACE -fsanitize=${VELORINTH_SANITIZE})
endif()

# What sources with precompiled headers compile with. The first option of each lets ccache see through such headers.
# GCC 12 takes ordinary uses of its own strings for overruns once their header comes precompiled (GCC bug 105651).
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  set(VELORINTH_PRECOMPILED_OPTIONS "SHELL:-Xclang -fno-pch-timestamp")
else()
  set(VELORINTH_PRECOMPILED_OPTIONS -fpch-preprocess -Wno-array-bounds -Wno-restrict -Wno-stringop-overflow
                                    -Wno-stringop-overread)
endif()

# What our libraries and programs compile with beside that, unlike tests. Whether an object is of the class that it is used
# as (vptr) isn't asked: asking ahead of each call makes compiling and testing longer.
add_library(velorinth_product_options INTERFACE)
if(VELORINTH_SANITIZE MATCHES ",undefined")
  target_compile_options(velorinth_product_options INTERFACE -fsanitize=undefined -fno-sanitize=vptr)
endif()
if(VELORINTH_UNITY)
  target_compile_options(velorinth_product_options INTERFACE ${VELORINTH_PRECOMPILED_OPTIONS})
endif()

# What a sanitizer's program passes over (SanitizerDefaults.cpp).
function(velorinth_sanitizer_defaults target)
  if(VELORINTH_SANITIZE)
    target_sources(${target} PRIVATE ${PROJECT_SOURCE_DIR}/cmake/SanitizerDefaults.cpp)
  endif()
endfunction()

# The headers of the standard library and of Windows cost most sources more than all of their own lines: they are compiled
# once. Not in the debug build, where tests alone have them precompiled: that goes file by file and tells of a source that
# forgets to include what it uses, and of all that GCC warns of.
set(VELORINTH_SYSTEM_HEADERS
    <algorithm> <array> <atomic> <chrono> <condition_variable> <deque> <filesystem> <functional> <map> <memory> <mutex>
    <optional> <set> <span> <string> <thread> <variant> <vector>)
if(WIN32)
  list(APPEND VELORINTH_SYSTEM_HEADERS <windows.h> <d3d11_4.h> <d2d1_3.h> <dwrite_3.h> <dcomp.h> <wincodec.h>
       <wrl/client.h>)
endif()
if(VELORINTH_UNITY)
  file(WRITE ${CMAKE_BINARY_DIR}/system_headers.cpp "")
  add_library(velorinth_system_headers STATIC ${CMAKE_BINARY_DIR}/system_headers.cpp)
  target_link_libraries(velorinth_system_headers PRIVATE velorinth_options velorinth_product_options)
  if(WIN32)
    target_include_directories(velorinth_system_headers SYSTEM PRIVATE ${PROJECT_SOURCE_DIR}/Platform/Windows/include)
  endif()
  target_precompile_headers(velorinth_system_headers PRIVATE ${VELORINTH_SYSTEM_HEADERS})
endif()

# Makes the folder `prefix` (a path from the project's root) includable as "prefix/Header.h" by this target and by what
# links to it, and by nobody else. That is what makes an include against the direction of the arrows fail to build.
function(velorinth_expose target prefix)
  cmake_path(GET prefix PARENT_PATH parent)
  set(root ${CMAKE_BINARY_DIR}/include/${target})
  file(MAKE_DIRECTORY ${root}/${parent})
  if(NOT EXISTS ${root}/${prefix})
    file(CREATE_LINK ${PROJECT_SOURCE_DIR}/${prefix} ${root}/${prefix} SYMBOLIC)
  endif()
  get_target_property(type ${target} TYPE)
  if(type STREQUAL "INTERFACE_LIBRARY")
    target_include_directories(${target} INTERFACE ${root})
  else()
    target_include_directories(${target} PUBLIC ${root})
  endif()
endfunction()

# velorinth_library(<target> SOURCES ... DEPENDS ...): the library of the current folder.
# DEPENDS are the only folders whose headers its sources, and those of its users, can see.
function(velorinth_library target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;DEPENDS;PRIVATE")
  add_library(${target} STATIC ${arg_SOURCES})
  cmake_path(RELATIVE_PATH CMAKE_CURRENT_SOURCE_DIR BASE_DIRECTORY ${PROJECT_SOURCE_DIR} OUTPUT_VARIABLE prefix)
  velorinth_expose(${target} ${prefix})
  target_link_libraries(${target} PUBLIC ${arg_DEPENDS} PRIVATE velorinth_options velorinth_product_options ${arg_PRIVATE})
  if(TARGET velorinth_system_headers)
    target_precompile_headers(${target} REUSE_FROM velorinth_system_headers)
  endif()
endfunction()

# velorinth_file_by_file(<target> [WINDOWS <file>...]): compiles each file of a library by itself, so that a program links
# only what it calls, and a test or a fake can stand in for the rest. With WINDOWS the others go several at a time there.
function(velorinth_file_by_file target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "WINDOWS")
  if(WIN32 AND arg_WINDOWS)
    set_source_files_properties(${arg_WINDOWS} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
  else()
    set_target_properties(${target} PROPERTIES UNITY_BUILD OFF)
  endif()
endfunction()

# velorinth_program(<target> SOURCES ... DEPENDS ...): a program that lands in the build's bin folder.
function(velorinth_program target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;DEPENDS")
  add_executable(${target} ${arg_SOURCES})
  target_link_libraries(${target} PRIVATE velorinth_options velorinth_product_options ${arg_DEPENDS})
  if(TARGET velorinth_system_headers)
    target_precompile_headers(${target} REUSE_FROM velorinth_system_headers)
  endif()
  set_target_properties(${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
  velorinth_sanitizer_defaults(${target})
endfunction()
