# SPDX-License-Identifier: Apache-2.0
#
# `cpack` in a build by the preset "packages" makes the Debian packages. CPack installs the parts, each into a folder of
# its own; Debian's tools make the packages of these (packaging/debian/make-debs.sh). CPack's own way to a .deb is not
# taken: it knows no Multi-Arch, and has scripts call ldconfig where a trigger is due.
set(CPACK_GENERATOR External)
set(CPACK_PACKAGE_NAME vastrelline)
set(CPACK_PACKAGE_VERSION ${VASTRELLINE_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_EXTERNAL_ENABLE_STAGING ON)
set(CPACK_EXTERNAL_PACKAGE_SCRIPT ${PROJECT_SOURCE_DIR}/cmake/MakeDebianPackages.cmake)
set(CPACK_VASTRELLINE_SOURCE ${PROJECT_SOURCE_DIR})
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_COMPONENTS_ALL runtime development tools docs examples python)
get_cmake_property(components COMPONENTS)
if(debug IN_LIST components)
    list(APPEND CPACK_COMPONENTS_ALL debug)
endif()
include(CPack)
