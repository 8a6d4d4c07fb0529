# SPDX-License-Identifier: Apache-2.0
#
# libvastrelline.a, for hosts that want no library beside their program: vastrelline::vastrelline_static in the CMake
# package, `pkg-config --static` elsewhere. It has nothing to do with vastrelline_static of this build, which shows
# tests all the insides.
set(objects $<TARGET_OBJECTS:vastrelline_objects> $<TARGET_OBJECTS:vastrelline_profile_text_objects>)
if(WIN32)
    # Objects of Windows cannot hide a name: all of them are in reach, in the namespace vastrelline.
    add_library(vastrelline_archive STATIC ${objects})
else()
    # Hidden names are hidden from other files only once they are linked; in an archive each could clash with one of the
    # host's. So all objects are linked into one, and what is not among the eight becomes its own. Groups are dissolved
    # first: a group that the host has as well would be dropped, and what is private here would go with it.
    set(map ${CMAKE_CURRENT_LIST_DIR}/../src/vastrelline.map)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${map})
    file(STRINGS ${map} names REGEX "^        [A-Za-z_]+;$")
    list(TRANSFORM names REPLACE "[ ;]" "")
    list(JOIN names "\n" names)
    set(folder ${CMAKE_CURRENT_BINARY_DIR}/one_object)
    file(CONFIGURE OUTPUT ${folder}/names.txt CONTENT "${names}\n")
    add_custom_command(OUTPUT ${folder}/vastrelline.o
        COMMAND ${CMAKE_CXX_COMPILER} -r -nostdlib -Wl,--force-group-allocation -o ${folder}/all.o ${objects}
        COMMAND ${CMAKE_OBJCOPY} --strip-debug --keep-global-symbols=${folder}/names.txt ${folder}/all.o ${folder}/vastrelline.o
        DEPENDS ${objects} ${folder}/names.txt COMMAND_EXPAND_LISTS VERBATIM)
    add_library(vastrelline_archive STATIC ${folder}/vastrelline.o)
    set_target_properties(vastrelline_archive PROPERTIES LINKER_LANGUAGE CXX)
endif()
add_library(vastrelline::vastrelline_static ALIAS vastrelline_archive)
set_target_properties(vastrelline_archive PROPERTIES OUTPUT_NAME vastrelline EXPORT_NAME vastrelline_static)
target_include_directories(vastrelline_archive INTERFACE
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
target_compile_definitions(vastrelline_archive INTERFACE VASTRELLINE_STATIC)
# By name, since a host in C asks for none of it.
if(WIN32)
    target_link_libraries(vastrelline_archive INTERFACE stdc++ winpthread)
else()
    target_link_libraries(vastrelline_archive INTERFACE stdc++ m pthread)
endif()
