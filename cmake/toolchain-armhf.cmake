# Cross build for the console's 32-bit ARM CPU (Debian's armhf cross compiler). Test programs run
# under qemu-user with the ARM C library that the cross compiler brings.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR arm)

set(CMAKE_C_COMPILER arm-linux-gnueabihf-gcc)
set(CMAKE_CXX_COMPILER arm-linux-gnueabihf-g++)

set(CMAKE_FIND_ROOT_PATH /usr/arm-linux-gnueabihf)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_CROSSCOMPILING_EMULATOR qemu-arm;-L;/usr/arm-linux-gnueabihf)

# Every program here is built with this one compiler, so GCC's note that argument passing of some
# library types changed in GCC 7.1 cannot concern us; it would only bury real messages.
set(CMAKE_CXX_FLAGS_INIT "-Wno-psabi")
