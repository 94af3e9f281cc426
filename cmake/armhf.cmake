# Builds on a PC for a device with a 32-bit ARM processor. For a device maker's own SDK these are the lines to change;
# docs/porting.md says how.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR armv7l)
set(CMAKE_LIBRARY_ARCHITECTURE arm-linux-gnueabihf)
set(CMAKE_C_COMPILER arm-linux-gnueabihf-gcc)
set(CMAKE_CXX_COMPILER arm-linux-gnueabihf-g++)
set(CMAKE_CXX_FLAGS_INIT -Wno-psabi) # no word on what compilers before g++ 9 passed in another way
cmake_path(GET CMAKE_CURRENT_LIST_DIR PARENT_PATH CMAKE_SYSROOT)
string(APPEND CMAKE_SYSROOT /build/armhf/sysroot)

# Programs that run during the build are the PC's, Qt's own included; all else is the device's.
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(QT_HOST_PATH /usr)
file(GLOB QT_HOST_PATH_CMAKE_DIR /usr/lib/*/cmake/Qt6HostInfo)
cmake_path(GET QT_HOST_PATH_CMAKE_DIR PARENT_PATH QT_HOST_PATH_CMAKE_DIR)
# Tools alone, but looked for among the device's libraries.
set(Qt6LinguistTools_DIR ${QT_HOST_PATH_CMAKE_DIR}/Qt6LinguistTools)
