# SPDX-License-Identifier: Apache-2.0
#
# Writes OUTPUT, a C++ file that holds the files PARTS of FOLDER.
set(arrays "")
set(rows "")
set(type.html "text/html; charset=utf-8")
set(type.css "text/css; charset=utf-8")
set(type.js "text/javascript; charset=utf-8")
foreach(part IN LISTS PARTS)
    file(READ ${FOLDER}/${part} bytes HEX)
    string(LENGTH "${bytes}" digits)
    math(EXPR size "${digits} / 2")
    string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${bytes}")
    string(MAKE_C_IDENTIFIER ${part} name)
    get_filename_component(ending ${part} LAST_EXT)
    string(APPEND arrays "constexpr unsigned char ${name}[] = {${bytes}};\n")
    string(APPEND rows "    {\"${part}\", \"${type${ending}}\", {reinterpret_cast<const char*>(${name}), ${size}}},\n")
endforeach()
file(WRITE ${OUTPUT} "#include \"server/PageParts.h\"

namespace vastrelline {
namespace {

${arrays}
// Not constant expressions: bytes as characters are none.
const PagePart kParts[] = {
${rows}};

}  // namespace

const PagePart* FindPagePart(std::string_view name) {
    for (const PagePart& part : kParts)
        if (part.name == name) return &part;
    return nullptr;
}

}  // namespace vastrelline
")
