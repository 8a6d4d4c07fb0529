// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vastrelline {

// A profile in the one form that a full rewrite leaves: no blank lines, no blanks around lines, heads, names
// and values, every line ending with CR LF. Two edits of a file agree if these are the same. UTF-16LE is
// told by its byte order mark and comes back as such.
//
// Written for tests alone, apart from the library's own reader.
inline std::string ProfileNormalForm(const std::string& bytes) {
    // Every unit gets 16 bits, so that both encodings go the same way.
    const bool isUtf16 = bytes.starts_with("\xFF\xFE");
    std::u16string text;
    const size_t step = isUtf16 ? 2 : 1;
    for (size_t i = 0; i + step <= bytes.size(); i += step) {
        const auto low = static_cast<unsigned char>(bytes[i]);
        const auto high = isUtf16 ? static_cast<unsigned char>(bytes[i + 1]) : 0U;
        text.push_back(static_cast<char16_t>(high * 256U + low));
    }
    std::u16string mark;
    for (const std::u16string_view candidate :
         {std::u16string_view(u"\uFEFF"), std::u16string_view(u"\u00EF\u00BB\u00BF")})
        if (text.starts_with(candidate)) mark = candidate;
    text.erase(0, mark.size());

    const auto strip = [](std::u16string part) {
        const std::u16string_view blanks = u" \t";
        const size_t begin = part.find_first_not_of(blanks);
        if (begin == std::u16string::npos) return std::u16string();
        return part.substr(begin, part.find_last_not_of(blanks) - begin + 1);
    };
    std::vector<std::u16string> lines(1);
    for (const char16_t unit : text) {
        if (unit == u'\n' || unit == u'\r')
            lines.emplace_back();
        else
            lines.back().push_back(unit);
    }
    std::u16string normal = mark;
    for (std::u16string line : lines) {
        line = strip(line);
        if (line.empty()) continue;
        const size_t close = line.rfind(u']');
        const size_t equals = line.find(u'=');
        if (line.front() == u'[' && close != std::u16string::npos)
            line = u"[" + strip(line.substr(1, close - 1)) + u"]";
        else if (line.front() != u';' && equals != std::u16string::npos)
            line = strip(line.substr(0, equals)) + u"=" + strip(line.substr(equals + 1));
        normal += line + u"\r\n";
    }

    std::string result;
    for (const char16_t unit : normal) {
        result.push_back(static_cast<char>(unit & 0xFFU));
        if (isUtf16) result.push_back(static_cast<char>(unit >> 8U));
    }
    return result;
}

}  // namespace vastrelline
