# SPDX-License-Identifier: Apache-2.0
#
# The documents as they are installed. Pages of the tree point at its files; installed ones point at where these lie
# then, and what is not installed is a word and no link.
set(pages ${CMAKE_BINARY_DIR}/package/pages)
set(shared ${CMAKE_INSTALL_DATADIR}/vastrelline)
file(REMOVE_RECURSE ${pages})

# Where a file or folder of the tree lies below the prefix; empty: nowhere.
function(find_installed_place output path)
    set(place "")
    if(path STREQUAL "include/vastrelline.h")
        set(place ${CMAKE_INSTALL_INCLUDEDIR}/vastrelline.h)
    elseif(path MATCHES "^profiles(/|$)")
        set(place ${shared}/${path})
    elseif(path MATCHES "^tests/data/frames(/|$)")
        string(REPLACE "tests/data/frames" "${shared}/frames" place "${path}")
    elseif(path MATCHES "^(docs|examples|bindings)(/|$)|^(README|CHANGELOG|SECURITY)\\.md$|^(LICENSE|NOTICE)$")
        set(place ${CMAKE_INSTALL_DOCDIR}/${path})
    endif()
    set(${output} "${place}" PARENT_SCOPE)
endfunction()

function(write_installed_page page)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${page})
    file(READ ${PROJECT_SOURCE_DIR}/${page} text)
    get_filename_component(folder /${page} DIRECTORY)
    find_installed_place(ownPlace ${page})
    get_filename_component(ownFolder /${ownPlace} DIRECTORY)
    string(REGEX MATCHALL "\\([^][() #;:]+[)#]" targets "${text}")
    list(TRANSFORM targets REPLACE "[()#]" "")
    list(REMOVE_DUPLICATES targets)
    foreach(target IN LISTS targets)
        get_filename_component(path "${target}" ABSOLUTE BASE_DIR ${folder})
        string(SUBSTRING "${path}" 1 -1 path)
        if(NOT path OR NOT EXISTS ${PROJECT_SOURCE_DIR}/${path})
            continue()
        endif()
        find_installed_place(place ${path})
        string(REPLACE "." "\\." pattern "${target}")
        if(place)
            file(RELATIVE_PATH place ${ownFolder} /${place})
            string(REGEX REPLACE "\\]\\(${pattern}([)#])" "](${place}\\1" text "${text}")
        else()
            string(REGEX REPLACE "\\[([^][]*)\\]\\(${pattern}(#[^()]*)?\\)" "\\1" text "${text}")
        endif()
    endforeach()
    file(WRITE ${pages}/${page} "${text}")
endfunction()

file(GLOB_RECURSE pageNames CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/docs/*.md)
file(GLOB bindingPages CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/bindings/*/README.md)
foreach(page IN LISTS pageNames bindingPages ITEMS README.md CHANGELOG.md SECURITY.md)
    write_installed_page(${page})
endforeach()
install(DIRECTORY ${pages}/ DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT docs)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs/pictures DESTINATION ${CMAKE_INSTALL_DOCDIR}/docs COMPONENT docs)

install(DIRECTORY ${PROJECT_SOURCE_DIR}/examples DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT examples)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/bindings DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT examples
    PATTERN README.md EXCLUDE
    PATTERN .npmrc EXCLUDE
    PATTERN py.typed EXCLUDE
    # What trying them leaves behind.
    PATTERN node_modules EXCLUDE
    PATTERN __pycache__ EXCLUDE
    PATTERN "*.egg-info" EXCLUDE
    PATTERN build EXCLUDE
    PATTERN dist EXCLUDE)

install(FILES ${PROJECT_SOURCE_DIR}/LICENSE ${PROJECT_SOURCE_DIR}/NOTICE DESTINATION ${CMAKE_INSTALL_DOCDIR}
        COMPONENT licences)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/LICENSES DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT licences)
