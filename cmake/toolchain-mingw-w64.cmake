# Cross build for 64-bit Windows. The posix variant is the one whose libstdc++ has std::thread and std::future.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# LLVM's linker takes a fiftieth of the time of the one that this GCC always calls, so Clang links what GCC compiled, with
# the libraries of that GCC and the stack that its programs have. Debian: clang-14, lld-14.
find_program(VELORINTH_WINDOWS_LINKER clang++-14)
find_program(VELORINTH_LLD ld.lld-14)
if(VELORINTH_WINDOWS_LINKER AND VELORINTH_LLD)
  execute_process(
    COMMAND ${CMAKE_CXX_COMPILER} -print-libgcc-file-name
    OUTPUT_VARIABLE libgcc
    OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  cmake_path(GET libgcc PARENT_PATH libgcc)
  set(CMAKE_CXX_LINK_EXECUTABLE
      "${VELORINTH_WINDOWS_LINKER} --target=x86_64-w64-mingw32 -fuse-ld=lld-14 -Wno-unused-command-line-argument -L${libgcc} -Wl,--stack,0x200000 <CMAKE_CXX_LINK_FLAGS> <LINK_FLAGS> <OBJECTS> -o <TARGET> <LINK_LIBRARIES>"
  )
endif()
