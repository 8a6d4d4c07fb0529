# SPDX-License-Identifier: Apache-2.0
#
# The install tree: header, shared library, CMake package (target vastrelline::vastrelline), pkg-config file. Its parts
# can be installed alone by `cmake --install --component`: runtime (the library), development, tools, docs, examples,
# licences, and python where VASTRELLINE_PYTHON_MODULE asks for it.
include(CMakePackageConfigHelpers)

install(FILES ${PROJECT_SOURCE_DIR}/include/vastrelline.h ${PROJECT_SOURCE_DIR}/bindings/cpp/vastrelline.hpp
        TYPE INCLUDE COMPONENT development)
install(TARGETS vastrelline EXPORT vastrelline
    RUNTIME COMPONENT runtime
    LIBRARY COMPONENT runtime NAMELINK_COMPONENT development
    ARCHIVE COMPONENT development)
set(packageFolder ${CMAKE_INSTALL_LIBDIR}/cmake/vastrelline)
if(TARGET vastrelline_archive)
    install(TARGETS vastrelline_archive EXPORT vastrelline ARCHIVE COMPONENT development)
    get_target_property(needs vastrelline_archive INTERFACE_LINK_LIBRARIES)
    list(TRANSFORM needs PREPEND -l)
    list(JOIN needs " " needs)
    set(pkgConfigPrivate "\nLibs.private: ${needs}")
endif()
install(EXPORT vastrelline DESTINATION ${packageFolder}
        FILE vastrellineTargets.cmake NAMESPACE vastrelline:: COMPONENT development)
if(WIN32)
    # For hosts whose own linker makes its import library from the list of names.
    install(FILES ${PROJECT_SOURCE_DIR}/src/Vastrelline.def DESTINATION ${CMAKE_INSTALL_LIBDIR}
            COMPONENT development)
endif()

install(DIRECTORY ${PROJECT_SOURCE_DIR}/profiles DESTINATION ${CMAKE_INSTALL_DATADIR}/vastrelline COMPONENT tools)

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/vastrellineConfig.cmake.in
    ${CMAKE_BINARY_DIR}/package/vastrellineConfig.cmake INSTALL_DESTINATION ${packageFolder})
write_basic_package_version_file(${CMAKE_BINARY_DIR}/package/vastrellineConfigVersion.cmake
    VERSION ${PROJECT_VERSION} COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/package/vastrellineConfig.cmake
              ${CMAKE_BINARY_DIR}/package/vastrellineConfigVersion.cmake
        DESTINATION ${packageFolder} COMPONENT development)

if(NOT WIN32)
    # The prefix is found from where the file lies, so that `cmake --install --prefix` and a moved tree work.
    set(pkgConfigFolder ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
    file(RELATIVE_PATH prefixFromPkgConfig
         ${CMAKE_INSTALL_PREFIX}/${pkgConfigFolder} ${CMAKE_INSTALL_PREFIX})
    configure_file(${PROJECT_SOURCE_DIR}/cmake/vastrelline.pc.in
                   ${CMAKE_BINARY_DIR}/package/vastrelline.pc @ONLY)
    install(FILES ${CMAKE_BINARY_DIR}/package/vastrelline.pc DESTINATION ${pkgConfigFolder}
            COMPONENT development)
endif()
