#include "commands/OutputRange.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "files/InputFile.h"
#include "messages/ToolError.h"

namespace vastrelline {
namespace {

constexpr int32_t kDefaultRange = 4095;  // frames of 12 bits
constexpr int32_t kTopPixel = 65535;
constexpr uint64_t kMaxProfileBytes = uint64_t{64} << 20;

std::string_view Trim(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r\n\v\f";
    const size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

char ToLower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool IsSameName(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return ToLower(x) == ToLower(y); });
}

std::string Narrow(std::string_view text) {
    if (text.starts_with("\xEF\xBB\xBF")) return std::string(text.substr(3));
    if (!text.starts_with("\xFF\xFE")) return std::string(text);
    std::string narrow;
    for (size_t i = 2; i + 1 < text.size(); i += 2) narrow.push_back(text[i + 1] == 0 ? text[i] : '?');
    return narrow;
}

int32_t LeadingNumber(std::string_view value) {
    if (!value.empty() && (value.front() == '"' || value.front() == '\'')) value.remove_prefix(1);
    const bool isNegative = value.starts_with('-');
    if (isNegative) value.remove_prefix(1);
    uint32_t number = 0;  // wraps, as the library's own reader does
    for (const char c : value) {
        if (c < '0' || c > '9') break;
        number = number * 10 + static_cast<uint32_t>(c - '0');
    }
    return static_cast<int32_t>(isNegative ? 0 - number : number);
}

}  // namespace

int32_t ProfileNumber(std::string_view text, std::string_view section, std::string_view key,
                      int32_t defaultValue) {
    const std::string narrow = Narrow(text);
    std::string_view rest = narrow;
    bool isInside = false;
    while (!rest.empty()) {
        const size_t end = std::min(rest.find_first_of("\r\n"), rest.size());
        const std::string_view line = Trim(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
        if (line.empty() || line.front() == ';') continue;
        if (line.front() == '[') {
            if (isInside) return defaultValue;  // a second section of the same name does not count
            const size_t close = line.find(']');
            isInside =
                close != std::string_view::npos && IsSameName(Trim(line.substr(1, close - 1)), Trim(section));
        } else if (const size_t equals = line.find('='); isInside && equals != std::string_view::npos &&
                                                         IsSameName(Trim(line.substr(0, equals)), key)) {
            return LeadingNumber(Trim(line.substr(equals + 1)));
        }
    }
    return defaultValue;
}

int32_t ReadOutputRange(const std::string& profilePath, const std::string& section) {
    std::string path = profilePath;
    std::replace(path.begin(), path.end(), '\\', '/');  // the library takes both as separators
    std::vector<uint8_t> bytes;
    try {
        bytes = ReadInputFile(path, kMaxProfileBytes);
    } catch (const InputError&) {
        return kDefaultRange;  // the library tells what is wrong with its profile
    }
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    const int32_t range = ProfileNumber(text, section, "OUTPUTRANGE", kDefaultRange);
    return range >= 1 && range <= kTopPixel ? range : kDefaultRange;
}

}  // namespace vastrelline
