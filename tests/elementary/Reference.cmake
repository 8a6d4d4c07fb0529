# SPDX-License-Identifier: Apache-2.0
#
# The elementary functions beside MPFR, which has them to any precision. Builds for other machines do without: the
# sums and the hard cases in the tree carry what MPFR says.
set(reference ON)
if(WIN32 OR CMAKE_CROSSCOMPILING)
    set(reference OFF)
endif()
option(VASTRELLINE_MPFR "Test the elementary functions against MPFR" ${reference})
if(NOT VASTRELLINE_MPFR)
    return()
endif()
find_path(VASTRELLINE_MPFR_INCLUDE mpfr.h)
find_library(VASTRELLINE_MPFR_LIBRARY mpfr)
if(NOT VASTRELLINE_MPFR_INCLUDE OR NOT VASTRELLINE_MPFR_LIBRARY)
    message(FATAL_ERROR "The tests of the elementary functions compare them with MPFR, which is missing: install "
        "libmpfr-dev, or configure with -DVASTRELLINE_MPFR=OFF to do without them")
endif()

add_test_program(elementary_reference_tests
    elementary/EachFunction.cpp elementary/HardCases.cpp elementary/MadeArguments.cpp elementary/ReferenceTest.cpp
    elementary/ReferenceValue.cpp)
target_compile_definitions(elementary_reference_tests PRIVATE
    VASTRELLINE_CHECKED_ARGUMENTS=${VASTRELLINE_CHECKED_ARGUMENTS})
# How the table of hard cases was found.
add_executable(hard_case_search
    elementary/EachFunction.cpp elementary/HardCaseSearch.cpp elementary/ReferenceValue.cpp)
target_include_directories(hard_case_search PRIVATE elementary)
foreach(program elementary_reference_tests hard_case_search)
    target_include_directories(${program} SYSTEM PRIVATE ${VASTRELLINE_MPFR_INCLUDE})
    target_link_libraries(${program} PRIVATE vastrelline_settings vastrelline_static ${VASTRELLINE_MPFR_LIBRARY})
endforeach()
