# The architecture as the build states it, and the tests that hold the code to it.
#
# Every library lists its sources and headers and links the libraries it uses, PUBLIC when its own
# headers include theirs. Every folder includes its neighbours from the source root, as
# "serial/CComPort.h", so the include path alone cannot keep a file from including a header of a
# library its target does not link: the test "architecture" does (cmake/CheckArchitecture.cmake
# says how). The links are the picture of the allowed arrows; docs/architecture.md draws it.
#
# The floors order the tool's libraries and the simulator's, bottom first: a library links only
# libraries on floors below its own, the tool and the simulator link nothing of each other (a
# misunderstanding of the receivers' protocols cannot hide on both sides of the line), and neither
# links what tests/, bench/ and fuzz/ build. A new library of the tool or the simulator gets a floor
# here, or the test names it.
set(GNSS_TOOL_FLOORS
    "gnss_util gnss_driver"
    "gnss_serial"
    "gnss_receivers"
    "gnss_novatel gnss_other gnss_cmdline"
    "gnss_detection"
    "gnss_app")
set(GNSS_SIMULATOR_FLOORS
    "gnss_sim_text"
    "gnss_sim_line"
    "gnss_sim_model gnss_sim_timeline"
    "gnss_sim_receivers"
    "gnss_sim"
    "gnss_sim_program")

# Every target that a folder of this project defines, in the global property GNSS_PROJECT_TARGETS.
function(gnss_collect_targets folder)
    get_property(targets DIRECTORY "${folder}" PROPERTY BUILDSYSTEM_TARGETS)
    get_property(subfolders DIRECTORY "${folder}" PROPERTY SUBDIRECTORIES)
    string(FIND "${folder}/" "${PROJECT_SOURCE_DIR}/" at)
    if(at EQUAL 0)
        set_property(GLOBAL APPEND PROPERTY GNSS_PROJECT_TARGETS ${targets})
    endif()
    foreach(subfolder IN LISTS subfolders)
        gnss_collect_targets("${subfolder}")
    endforeach()
endfunction()

# The project's libraries among a target's links, each once; $<LINK_ONLY:...> entries (a static
# library's private links) are left out, as they carry no headers to the target's users.
function(gnss_project_links target property out)
    get_target_property(links ${target} ${property})
    set(result "")
    foreach(link IN LISTS links)
        if(link MATCHES "^\\$<LINK_ONLY:" OR NOT TARGET "${link}")
            continue()
        endif()
        get_target_property(imported ${link} IMPORTED)
        if(NOT imported AND NOT link IN_LIST result)
            list(APPEND result ${link})
        endif()
    endforeach()
    set(${out} ${result} PARENT_SCOPE)
endfunction()

# Writes what the check needs to know of every target: its folder, its kind, its files (relative
# to the source root), the libraries it links and those it links PUBLIC (or INTERFACE).
function(gnss_write_architecture manifest)
    gnss_collect_targets("${PROJECT_SOURCE_DIR}")
    get_property(all GLOBAL PROPERTY GNSS_PROJECT_TARGETS)
    set(kinds EXECUTABLE STATIC_LIBRARY SHARED_LIBRARY MODULE_LIBRARY OBJECT_LIBRARY INTERFACE_LIBRARY)
    set(text "# Written by cmake/Architecture.cmake at configure time; read by cmake/CheckArchitecture.cmake.\n")
    string(APPEND text "set(GNSS_TOOL_FLOORS \"${GNSS_TOOL_FLOORS}\")\n")
    string(APPEND text "set(GNSS_SIMULATOR_FLOORS \"${GNSS_SIMULATOR_FLOORS}\")\n")
    set(listed "")
    foreach(target IN LISTS all)
        get_target_property(kind ${target} TYPE)
        if(NOT kind IN_LIST kinds)
            continue()
        endif()
        list(APPEND listed ${target})
        get_target_property(folder ${target} SOURCE_DIR)
        file(RELATIVE_PATH folder "${PROJECT_SOURCE_DIR}" "${folder}")
        get_target_property(sources ${target} SOURCES)
        set(files "")
        foreach(source IN LISTS sources)
            if(NOT IS_ABSOLUTE "${source}")
                set(source "${PROJECT_SOURCE_DIR}/${folder}/${source}")
            endif()
            file(RELATIVE_PATH source "${PROJECT_SOURCE_DIR}" "${source}")
            if(NOT source MATCHES "^\\.\\./")
                list(APPEND files "${source}")
            endif()
        endforeach()
        set(links "")
        if(NOT kind STREQUAL "INTERFACE_LIBRARY")
            gnss_project_links(${target} LINK_LIBRARIES links)
        endif()
        gnss_project_links(${target} INTERFACE_LINK_LIBRARIES public)
        string(APPEND text "set(FOLDER_${target} \"${folder}\")\n"
            "set(KIND_${target} ${kind})\n"
            "set(FILES_${target} \"${files}\")\n"
            "set(LINKS_${target} \"${links}\")\n"
            "set(PUBLIC_${target} \"${public}\")\n")
    endforeach()
    string(APPEND text "set(GNSS_TARGETS \"${listed}\")\n")
    file(WRITE "${manifest}" "${text}")
endfunction()

set(GNSS_ARCHITECTURE "${CMAKE_BINARY_DIR}/architecture.cmake")
gnss_write_architecture("${GNSS_ARCHITECTURE}")

set(check_architecture ${CMAKE_COMMAND} -DMANIFEST=${GNSS_ARCHITECTURE} -DSOURCE_DIR=${PROJECT_SOURCE_DIR})
set(check_script -P ${PROJECT_SOURCE_DIR}/cmake/CheckArchitecture.cmake)
add_test(NAME architecture COMMAND ${check_architecture} ${check_script})
# The check itself, on two faults planted in what it reads: the serial port including a header of
# the receivers above it, and the simulator linking the tool's serial port.
add_test(NAME architecture.catches_an_include COMMAND ${check_architecture}
    -DPLANT_INCLUDE=serial/CComPort.cpp:receivers/CGPSConfigurer.h ${check_script})
add_test(NAME architecture.catches_a_link COMMAND ${check_architecture}
    -DPLANT_LINK=gnss_sim_line:gnss_serial ${check_script})
set_tests_properties(architecture.catches_an_include PROPERTIES PASS_REGULAR_EXPRESSION
    "serial/CComPort.cpp includes receivers/CGPSConfigurer.h of gnss_receivers, which gnss_serial does not link")
set_tests_properties(architecture.catches_a_link PROPERTIES PASS_REGULAR_EXPRESSION
    "gnss_sim_line links gnss_serial: the simulator shares nothing with the tool")
