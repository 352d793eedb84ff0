# Compiles for Windows with mingw-w64.
#
#   KOVA_WINDOWS_CPU        x86_64, or i686 for hosts of 32 bits
#   KOVA_WINDOWS_LIBRARIES  folder of the libraries that were built for it

set(CMAKE_SYSTEM_NAME Windows)
if(NOT DEFINED KOVA_WINDOWS_CPU)
  set(KOVA_WINDOWS_CPU x86_64)
endif()
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES KOVA_WINDOWS_CPU KOVA_WINDOWS_LIBRARIES)
set(CMAKE_SYSTEM_PROCESSOR "${KOVA_WINDOWS_CPU}")
set(CMAKE_CXX_COMPILER "${KOVA_WINDOWS_CPU}-w64-mingw32-g++-posix")
set(CMAKE_C_COMPILER "${KOVA_WINDOWS_CPU}-w64-mingw32-gcc-posix")
set(CMAKE_RC_COMPILER "${KOVA_WINDOWS_CPU}-w64-mingw32-windres")

# Libraries of the build machine are not for Windows; its programs run.
set(CMAKE_FIND_ROOT_PATH "${KOVA_WINDOWS_LIBRARIES}" "/usr/${KOVA_WINDOWS_CPU}-w64-mingw32")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE BOTH)

# The compiler's own libraries go into each program: nothing but Windows is needed to run it.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static")
set(CMAKE_LINK_SEARCH_START_STATIC ON)
set(CMAKE_LINK_SEARCH_END_STATIC ON)

# Qt's own tools are those of the build machine.
set(QT_HOST_PATH /usr)
set(QT_HOST_PATH_CMAKE_DIR "/usr/lib/${CMAKE_HOST_SYSTEM_PROCESSOR}-linux-gnu/cmake")
set(Qt6_DIR "${KOVA_WINDOWS_LIBRARIES}/lib/cmake/Qt6")

set(CMAKE_CROSSCOMPILING_EMULATOR wine)
