# What both Windows toolchains share; each names its processor and includes this.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_C_COMPILER ${HEARTHMAKE_TARGET}-gcc-posix)
set(CMAKE_CXX_COMPILER ${HEARTHMAKE_TARGET}-g++-posix)
set(CMAKE_RC_COMPILER ${HEARTHMAKE_TARGET}-windres)

# Nothing of the machine that builds: its headers and libraries are for another system.
set(CMAKE_FIND_ROOT_PATH /usr/${HEARTHMAKE_TARGET})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# A program or DLL needs nothing beside it but what Windows has.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -static-libgcc -static-libstdc++")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static -static-libgcc -static-libstdc++")
set(CMAKE_MODULE_LINKER_FLAGS_INIT "-static -static-libgcc -static-libstdc++")
