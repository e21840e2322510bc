# Windows x86-64 from Debian's mingw-w64, with the compiler's runtime linked in: nothing that we ship needs a DLL which
# Windows doesn't have. Tests and programs run under Wine through tools/under-wine.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

# 0x0601 is Windows 7: what came later is looked up late or not used.
set(CMAKE_C_FLAGS_INIT "-D_WIN32_WINNT=0x0601")
set(CMAKE_CXX_FLAGS_INIT "-D_WIN32_WINNT=0x0601")
foreach(kind IN ITEMS EXE SHARED MODULE)
    set(CMAKE_${kind}_LINKER_FLAGS_INIT "-static")
endforeach()

# Where tools/windows-libraries has put the libraries. They are static, and their .pc files name what they need in turn.
execute_process(COMMAND ${CMAKE_CURRENT_LIST_DIR}/../tools/windows-libraries --where
    OUTPUT_VARIABLE tesx_windows_libraries OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
list(PREPEND CMAKE_PREFIX_PATH ${tesx_windows_libraries})
set(CMAKE_FIND_ROOT_PATH ${tesx_windows_libraries} /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ENV{PKG_CONFIG_LIBDIR} ${tesx_windows_libraries}/lib/pkgconfig)
set(PKG_CONFIG_ARGN --static)

set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../tools/under-wine --prefixes ${CMAKE_BINARY_DIR}/wine)
