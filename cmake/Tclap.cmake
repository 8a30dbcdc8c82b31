# TCLAP is header-only and comes from Debian's libtclap-dev. The package has a pkg-config file but no
# CMake config, and it is not multi-arch: the ARM build uses the same headers. Adding /usr/include
# itself to an ARM compile would put the build machine's C library headers ahead of the ARM ones, so
# the headers are offered through a folder of the build tree that holds only a link to them.
find_path(TCLAP_HEADERS tclap/CmdLine.h
    PATHS /usr/include
    NO_CMAKE_FIND_ROOT_PATH
    REQUIRED)

set(TCLAP_INCLUDE_FOLDER "${CMAKE_BINARY_DIR}/tclap-include")
file(MAKE_DIRECTORY "${TCLAP_INCLUDE_FOLDER}")
file(CREATE_LINK "${TCLAP_HEADERS}/tclap" "${TCLAP_INCLUDE_FOLDER}/tclap" SYMBOLIC)

add_library(tclap INTERFACE)
target_include_directories(tclap SYSTEM INTERFACE "${TCLAP_INCLUDE_FOLDER}")
