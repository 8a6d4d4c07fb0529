# SPDX-License-Identifier: Apache-2.0
#
# Run by the build: writes OUTPUT, an SPDX 2.3 document of what is in it.
#
# VERSION       of the library and the tool
# COMMIT_FILE   holds the commit that was built
# HAS_TOOL      whether the tool is built, too
# FILES         of the library, as they are installed: the library first
# PARTS         of others, each OWNER|NAME|VERSION|LICENCE|LINK: of library, tool or both; how it is linked
# PAGE_LICENCES  licences.txt of the tool's page, with a line for each package in it; empty: the tool has no page
# SOURCE        of the tree, for the time of its commit
cmake_minimum_required(VERSION 3.25)

set(ENV{TZ} UTC)
if(NOT DEFINED ENV{SOURCE_DATE_EPOCH})
    find_program(git git)
    if(git AND EXISTS ${SOURCE}/.git)
        execute_process(COMMAND ${git} log -1 --format=%ct WORKING_DIRECTORY ${SOURCE}
            OUTPUT_VARIABLE epoch OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
        if(epoch)
            set(ENV{SOURCE_DATE_EPOCH} ${epoch})
        endif()
    endif()
endif()
string(TIMESTAMP created "%Y-%m-%dT%H:%M:%SZ" UTC)
file(READ ${COMMIT_FILE} commit)

set(packages "")
set(relations "")
function(add_package id name version licence more)
    string(APPEND packages "    {
      \"SPDXID\": \"SPDXRef-Package-${id}\",
      \"name\": \"${name}\",
      \"versionInfo\": \"${version}\",
      \"supplier\": \"NOASSERTION\",
      \"downloadLocation\": \"NOASSERTION\",
      \"licenseConcluded\": \"${licence}\",
      \"licenseDeclared\": \"${licence}\",
      \"copyrightText\": \"NOASSERTION\",
${more}
    },\n")
    set(packages "${packages}" PARENT_SCOPE)
endfunction()
function(add_relation from type to)
    string(APPEND relations "    {
      \"spdxElementId\": \"${from}\",
      \"relationshipType\": \"${type}\",
      \"relatedSpdxElement\": \"${to}\"
    },\n")
    set(relations "${relations}" PARENT_SCOPE)
endfunction()

set(files "")
set(sums "")
foreach(file IN LISTS FILES)
    get_filename_component(name ${file} NAME)
    string(REGEX REPLACE "[^A-Za-z0-9.-]" "-" id ${name})
    file(SHA1 ${file} sha1)
    file(SHA256 ${file} sha256)
    list(APPEND sums ${sha1})
    string(APPEND files "    {
      \"SPDXID\": \"SPDXRef-File-${id}\",
      \"fileName\": \"./${name}\",
      \"checksums\": [
        {\"algorithm\": \"SHA1\", \"checksumValue\": \"${sha1}\"},
        {\"algorithm\": \"SHA256\", \"checksumValue\": \"${sha256}\"}
      ],
      \"licenseConcluded\": \"Apache-2.0\",
      \"licenseInfoInFiles\": [\"Apache-2.0\"],
      \"copyrightText\": \"Copyright 2026 The Vastrelline authors\"
    },\n")
    add_relation(SPDXRef-Package-vastrelline CONTAINS SPDXRef-File-${id})
endforeach()
# The code of a package: the SHA-1 of its files' SHA-1, sorted.
list(SORT sums)
list(JOIN sums "" joined)
string(SHA1 code "${joined}")
list(GET FILES 0 library)
file(SHA256 ${library} unique)

add_package(vastrelline vastrelline ${VERSION} Apache-2.0 "      \"sourceInfo\": \"commit ${commit}\",
      \"filesAnalyzed\": true,
      \"licenseInfoFromFiles\": [\"Apache-2.0\"],
      \"packageVerificationCode\": {\"packageVerificationCodeValue\": \"${code}\"}")
add_relation(SPDXRef-DOCUMENT DESCRIBES SPDXRef-Package-vastrelline)
if(HAS_TOOL)
    add_package(vastrelline-tools vastrelline-tools ${VERSION} Apache-2.0
        "      \"sourceInfo\": \"commit ${commit}\",\n      \"filesAnalyzed\": false")
    add_relation(SPDXRef-DOCUMENT DESCRIBES SPDXRef-Package-vastrelline-tools)
    add_relation(SPDXRef-Package-vastrelline-tools DYNAMIC_LINK SPDXRef-Package-vastrelline)
endif()
if(PAGE_LICENCES)
    file(STRINGS ${PAGE_LICENCES} lines REGEX "^---- ")
    foreach(line IN LISTS lines)
        if(NOT line MATCHES "^---- ([^ ]+) ([^ ]+), (.+)$")
            message(FATAL_ERROR "${PAGE_LICENCES} has a line that was not understood: ${line}")
        endif()
        list(APPEND PARTS "tool|${CMAKE_MATCH_1}|${CMAKE_MATCH_2}|${CMAKE_MATCH_3}|STATIC_LINK")
    endforeach()
endif()
foreach(row IN LISTS PARTS)
    string(REPLACE "|" ";" row "${row}")
    list(GET row 0 owner)
    list(GET row 1 name)
    list(GET row 2 version)
    list(GET row 3 licence)
    list(GET row 4 link)
    if(owner STREQUAL "tool" AND NOT HAS_TOOL)
        continue()
    endif()
    string(REGEX REPLACE "[^A-Za-z0-9.-]" "-" id ${name})
    add_package(${id} "${name}" "${version}" "${licence}" "      \"filesAnalyzed\": false")
    if(NOT owner STREQUAL "tool")
        add_relation(SPDXRef-Package-vastrelline ${link} SPDXRef-Package-${id})
    endif()
    if(HAS_TOOL AND NOT owner STREQUAL "library")
        add_relation(SPDXRef-Package-vastrelline-tools ${link} SPDXRef-Package-${id})
    endif()
endforeach()

foreach(list packages files relations)
    string(REGEX REPLACE ",\n$" "" ${list} "${${list}}")
endforeach()
string(SUBSTRING ${unique} 0 32 unique)
file(CONFIGURE OUTPUT ${OUTPUT} CONTENT [[{
  "spdxVersion": "SPDX-2.3",
  "dataLicense": "CC0-1.0",
  "SPDXID": "SPDXRef-DOCUMENT",
  "name": "vastrelline-@VERSION@",
  "documentNamespace": "https://spdx.org/spdxdocs/vastrelline-@VERSION@-@unique@",
  "creationInfo": {
    "created": "@created@",
    "creators": ["Organization: The Vastrelline authors", "Tool: vastrelline-build"]
  },
  "packages": [
@packages@
  ],
  "files": [
@files@
  ],
  "relationships": [
@relations@
  ]
}
]] @ONLY)
