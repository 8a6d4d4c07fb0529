#pragma once

#include <cstdint>

namespace vastrelline {

// The platform's four operations on sectioned text files (a head in square brackets, then lines
// key=value), with the meaning that the Windows functions GetPrivateProfileIntW, ...StringW, ...SectionW
// and WritePrivateProfileStringW have. Windows calls those; elsewhere the library has its own.
//
// Shared by all four: each call opens and closes the file; section and key names match without regard to
// case; of a name that stands twice only the first counts; a line that starts with a semicolon is a
// comment; blanks around names and values are dropped; a missing file, section or key is no error.
//
// Bytes elsewhere than on Windows: UTF-8, where bytes that are no valid UTF-8 come through unchanged; a
// byte order mark of UTF-16LE makes the file UTF-16LE.

// The number of a key. Blanks, an optional minus sign and decimal digits up to the first other character,
// modulo 2^32; a text without a number gives 0, a missing key gives `defaultValue`.
int32_t PlatformProfileInt(const wchar_t* section, const wchar_t* key, int32_t defaultValue,
                           const wchar_t* path);

// The text of a key, without one pair of matching quotes around it, cut to size - 1 characters and
// terminated. Returns the number of characters without the terminator. A missing key gives `defaultValue`
// (null: the empty text) without its trailing blanks. A null key lists the section's keys, a null section
// the sections, each terminated, with one more terminator at the end, cut to size - 2 characters.
uint32_t PlatformProfileString(const wchar_t* section, const wchar_t* key, const wchar_t* defaultValue,
                               wchar_t* buffer, uint32_t size, const wchar_t* path);

// All lines "key=value" of a section, each terminated, with one more terminator at the end. Comments and
// blank lines are left out, quotes are kept. Returns the number of characters without the last terminator,
// 0 for a section that is missing or holds no line; a list that does not fit is cut to size - 2.
uint32_t PlatformProfileSection(const wchar_t* section, wchar_t* buffer, uint32_t size, const wchar_t* path);

// Sets one key, or takes away the key (null value) or the whole section (null key). All other lines stay
// byte for byte, and a value that is there already leaves the file untouched. False if the file could not
// be written; it then holds what it held before, also after a crash in the middle.
bool PlatformWriteProfile(const wchar_t* section, const wchar_t* key, const wchar_t* value,
                          const wchar_t* path);

}  // namespace vastrelline
