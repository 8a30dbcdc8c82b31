# GoogleTest and GoogleMock: Debian's libraries for native builds. Debian ships no ARM build of
# them, so the cross build compiles them from the sources in /usr/src/googletest.
if(CMAKE_CROSSCOMPILING)
    set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
    # The sources define the same GTest:: targets as Debian's CMake package.
    add_subdirectory(/usr/src/googletest "${CMAKE_BINARY_DIR}/googletest" EXCLUDE_FROM_ALL)
else()
    find_package(GTest REQUIRED)
endif()
include(GoogleTest)

# gnss_add_test(name SOURCES ... LIBS ...): one test program whose cases ctest runs one by one, so
# that the slow ones (real time-outs) run in parallel with the rest.
#
# A parameterised case is named by its suite's name generator alone (NO_PRETTY_VALUES): without it
# ctest appends what GoogleTest prints of the parameter, which for a structure without PrintTo is
# its raw bytes, pointers included, different from build to build. ctest pads each line of its
# report to the longest name, so names stay short enough for the report to fit a terminal: at most
# 76 characters, 120 columns.
function(gnss_add_test name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LIBS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE ${ARG_LIBS} GTest::gmock GTest::gtest_main)
    gtest_discover_tests(${name}
        DISCOVERY_MODE PRE_TEST
        DISCOVERY_TIMEOUT 60
        NO_PRETTY_VALUES
        PROPERTIES TIMEOUT 300)
endfunction()
