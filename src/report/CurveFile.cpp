// SPDX-License-Identifier: Apache-2.0
#include "report/CurveFile.h"

#include <algorithm>
#include <cstddef>
#include <string>

#include "platform/Files.h"
#include "report/TellIfPossible.h"

namespace vastrelline {

void WriteCurveFile(const std::wstring& path, int32_t first, int32_t last,
                    const std::function<int32_t(int32_t level)>& valueAt) {
    TellIfPossible([&] {
        std::string text;
        for (int64_t level = first; level <= last; ++level) {
            text += std::to_string(level);
            text += '\t';
            text += std::to_string(valueAt(static_cast<int32_t>(level)));
            text += "\r\n";
        }
        OutputFile file(path, OpenMode::TruncateExclusive);
        if (file.IsOpen()) (void)file.Append(text.data(), text.size());
    });
}

void WriteCurveFile(const std::wstring& path, int32_t first, int32_t last, std::span<const uint16_t> table) {
    WriteCurveFile(path, first, std::min(last, static_cast<int32_t>(table.size()) - 1),
                   [&](int32_t level) { return table[static_cast<size_t>(level)]; });
}

}  // namespace vastrelline
