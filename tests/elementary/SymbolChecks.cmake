# SPDX-License-Identifier: Apache-2.0
#
# No compiled code of the library calls the C library's mathematics.
set(library "")
set(mathLibrary "")
if(NOT WIN32)
    set(library $<TARGET_FILE:vastrelline>)
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=libm.so.6
        OUTPUT_VARIABLE mathLibrary OUTPUT_STRIP_TRAILING_WHITESPACE)
    if(NOT EXISTS "${mathLibrary}")
        set(mathLibrary "")
    endif()
endif()
function(add_symbol_check name archive)
    add_test(NAME Elementary.${name}
        COMMAND ${CMAKE_COMMAND} -DARCHIVE=${archive} -DLIBRARY=${library} -DMATH_LIBRARY=${mathLibrary}
            -DNM=${CMAKE_NM} -P ${PROJECT_SOURCE_DIR}/tests/elementary/CheckMathSymbols.cmake)
endfunction()
add_symbol_check(NoObjectCallsForeignMathematics $<TARGET_FILE:vastrelline_static>)

# The check sees what it is for.
file(CONFIGURE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/foreign_mathematics.cpp CONTENT [[
#include <cmath>
#include <cstring>
double CallForeignMathematics(double x, float y, char* to, const char* from, std::size_t size);
double CallForeignMathematics(double x, float y, char* to, const char* from, std::size_t size) {
    std::memcpy(to, from, size);
    return std::exp(x) + static_cast<double>(std::pow(y, y));
}
]])
add_library(foreign_mathematics STATIC ${CMAKE_CURRENT_BINARY_DIR}/foreign_mathematics.cpp)
target_link_libraries(foreign_mathematics PRIVATE vastrelline_settings)
add_symbol_check(ForeignMathematicsIsSeen $<TARGET_FILE:foreign_mathematics>)
set_tests_properties(Elementary.ForeignMathematicsIsSeen PROPERTIES
    PASS_REGULAR_EXPRESSION "calls exp, .*calls powf, |calls powf, .*calls exp, ")
