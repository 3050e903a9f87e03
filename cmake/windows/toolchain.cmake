# Windows x64 from Linux: mingw-w64's GCC with POSIX threads; the C++ runtime and winpthread go into each binary, so that
# a DLL or a program asks for nothing but Windows. cmake/windows/libraries.sh makes the libraries that are found here.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static")

cmake_path(SET libraries NORMALIZE "${CMAKE_CURRENT_LIST_DIR}/../../build/windows-libraries")
if(DEFINED ENV{ZELCLR_WINDOWS_LIBRARIES})
  set(libraries "$ENV{ZELCLR_WINDOWS_LIBRARIES}")
endif()
set(CMAKE_FIND_ROOT_PATH "${libraries}" /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ENV{PKG_CONFIG_LIBDIR} "${libraries}/lib/pkgconfig")
# Paths through the link, so that a configured build outlives another set of libraries.
set(PKG_CONFIG_ARGN --static --define-prefix)

# A program that the build has made runs under Wine.
set(CMAKE_CROSSCOMPILING_EMULATOR "${CMAKE_CURRENT_LIST_DIR}/wine.sh")
