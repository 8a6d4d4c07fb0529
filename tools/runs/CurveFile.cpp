// SPDX-License-Identifier: Apache-2.0
#include "runs/CurveFile.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <system_error>

#include "files/InputFile.h"

namespace vastrelline {
namespace {

constexpr uint64_t kMaxCurveBytes = uint64_t{1} << 26;

bool ReadNumber(std::string_view text, int32_t& number) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
    return std::from_chars(text.data(), text.data() + text.size(), number).ec == std::errc();
}

}  // namespace

std::vector<CurvePoint> ReadCurveFile(const std::string& path) {
    const std::vector<uint8_t> bytes = ReadInputFile(path, kMaxCurveBytes);
    std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    std::vector<CurvePoint> points;
    while (!text.empty()) {
        const size_t end = std::min(text.find('\n'), text.size());
        const std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        const size_t tab = line.find('\t');
        CurvePoint point;
        if (tab == std::string_view::npos || !ReadNumber(line, point.level)) continue;
        if (ReadNumber(line.substr(tab), point.value)) points.push_back(point);
    }
    return points;
}

}  // namespace vastrelline
