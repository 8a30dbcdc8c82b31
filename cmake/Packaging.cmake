# Debian packages, one per program: gnss-setup for the console and gnss-sim for whoever tries the
# tool without a receiver. `cpack` in a release build folder writes both; scripts/package builds
# them for the build machine and for the console and checks them.
#
#   cmake --preset release && cmake --build --preset release && (cd build/release && cpack)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME gnss-setup)
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGE_VENDOR "gnss-setup developers")
# Whoever ships the packages names themselves in the environment's GNSS_PACKAGE_MAINTAINER="Name
# <address>" when the build folder is configured; it is read afresh at every configuration, so a
# folder never keeps an earlier run's name. The default is the project under the reserved top-level
# domain .invalid: an address that honestly reaches nobody, yet one that Debian's checks accept as
# an address (a bare host such as localhost they reject).
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "gnss-setup developers <gnss-setup@gnss-setup.invalid>")
if(NOT "$ENV{GNSS_PACKAGE_MAINTAINER}" STREQUAL "")
    set(CPACK_DEBIAN_PACKAGE_MAINTAINER "$ENV{GNSS_PACKAGE_MAINTAINER}")
endif()
# name_version_architecture.deb, as Debian names its own.
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
# The debugging information of a RelWithDebInfo build is no use on the console.
set(CPACK_STRIP_FILES ON)

# One package per install component; the libraries and test programs of the build install nothing.
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL gnss-setup gnss-sim)

set(CPACK_DEBIAN_GNSS-SETUP_PACKAGE_NAME gnss-setup)
set(CPACK_DEBIAN_GNSS-SETUP_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_GNSS-SETUP_DESCRIPTION
"set-up tool for the display console's GNSS receiver
gnss-setup finds which GNSS receiver is attached to a serial port of the
display console (NovAtel OEMV, OEM-Star, OEM6 and OEM7 receivers, CSI
receivers and $PMCAG receivers), queries or configures it (satellite
systems, SBAS and PPP corrections, NMEA sentences and their rates) and tells
the console's kernel GPS driver which receiver, firmware and model are
attached. Start-up scripts and field engineers rely on its output and exit
statuses.")

set(CPACK_DEBIAN_GNSS-SIM_PACKAGE_NAME gnss-sim)
# Both packages come from this one source tree, and their changelogs say so.
set(CPACK_DEBIAN_GNSS-SIM_PACKAGE_SOURCE gnss-setup)
set(CPACK_DEBIAN_GNSS-SIM_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_GNSS-SIM_DESCRIPTION
"GNSS receiver simulator on a pseudo-terminal, for trying gnss-setup
gnss-sim plays one of the GNSS receivers that gnss-setup knows on a
pseudo-terminal, optionally linked at one of the console's port names,
answers as the receiver would, and logs everything that crosses the line.
Faults (unanswered commands, delays, noise, over-long lines, a hang-up,
another start-up speed, unsolicited NMEA sentences) combine on its command
line. With a command it runs the command against the receiver and exits
with its status.")

# The Debian architecture of the programs: the build machine's for a native build; for a cross
# build the one of the compiler's target, which dpkg-architecture knows by its GNU triplet.
function(gnss_debian_architecture result)
    set(query dpkg-architecture -qDEB_HOST_ARCH)
    if(CMAKE_CROSSCOMPILING)
        execute_process(COMMAND ${CMAKE_CXX_COMPILER} -dumpmachine
            OUTPUT_VARIABLE triplet OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
        list(APPEND query -t${triplet})
    endif()
    execute_process(COMMAND ${query}
        OUTPUT_VARIABLE architecture ERROR_QUIET OUTPUT_STRIP_TRAILING_WHITESPACE RESULT_VARIABLE failed)
    if(failed OR architecture STREQUAL "")
        # Only packaging needs it; the other builds should not hear of it at every configure.
        message(STATUS "dpkg-architecture (dpkg-dev) is missing: no Debian packages from this build "
                       "(./scripts/install-deps --package)")
        set(architecture "")
    endif()
    set(${result} "${architecture}" PARENT_SCOPE)
endfunction()

gnss_debian_architecture(GNSS_DEBIAN_ARCHITECTURE)
set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE "${GNSS_DEBIAN_ARCHITECTURE}")

if(NOT CMAKE_CROSSCOMPILING)
    # dpkg-shlibdeps reads what the installed libraries' packages declare.
    set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
else()
    # The cross libraries belong to the *-armhf-cross packages, whose shared-library data names
    # those packages (or "libc6:armhf" without a symbols file), not what the console installs, so
    # dpkg-shlibdeps cannot be used. The minimum versions are those that introduced the newest
    # symbol versions the programs need from the Debian 12 cross toolchain: GLIBC_2.34,
    # GLIBCXX_3.4.29 (GCC 11) and, on ARM, GCC_3.5 for the unwinder. scripts/package checks them
    # against the binaries.
    set(CPACK_DEBIAN_PACKAGE_DEPENDS "libc6 (>= 2.34), libgcc-s1 (>= 3.5), libstdc++6 (>= 11)")
endif()

# What Debian's policy asks of every package, in /usr/share/doc/<package>: the machine-readable
# copyright file as it is, and the changelog in Debian's format compressed with gzip -9n (no name,
# no time stamp: the same changelog always gives the same bytes). The version carries no Debian
# revision (1.0.0, not 1.0.0-1) because the project packages itself; Debian's policy and lintian
# take such a package as Debian-native, whose one changelog is changelog.gz. changelog.Debian.gz
# belongs to a version with a revision: someone's packaging of another project's release, beside
# that project's own changelog.gz. Each release adds an entry (scripts/package checks the version).
find_program(GZIP_PROGRAM gzip REQUIRED)
set(gnss_debian_folder "${PROJECT_SOURCE_DIR}/cmake/debian")
set(gnss_zipped_changelog "${PROJECT_BINARY_DIR}/debian/changelog.gz")
add_custom_command(OUTPUT "${gnss_zipped_changelog}"
    COMMAND "${CMAKE_COMMAND}" -E make_directory "${PROJECT_BINARY_DIR}/debian"
    COMMAND "${GZIP_PROGRAM}" -9n -c "${gnss_debian_folder}/changelog" > "${gnss_zipped_changelog}"
    DEPENDS "${gnss_debian_folder}/changelog"
    COMMENT "Compressing the Debian changelog")
add_custom_target(debian-changelog ALL DEPENDS "${gnss_zipped_changelog}")
foreach(program gnss-setup gnss-sim)
    install(FILES "${gnss_debian_folder}/copyright" "${gnss_zipped_changelog}"
        DESTINATION "${CMAKE_INSTALL_DATAROOTDIR}/doc/${program}" COMPONENT ${program})
endforeach()

include(CPack)
