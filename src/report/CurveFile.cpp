#include "report/CurveFile.h"

#include <string>

#include "platform/Files.h"

namespace vastrelline {

void WriteCurveFile(const std::wstring& path, int32_t first, int32_t last,
                    const std::function<int32_t(int32_t level)>& valueAt) {
    std::string text;
    for (int64_t level = first; level <= last; ++level) {
        text += std::to_string(level);
        text += '\t';
        text += std::to_string(valueAt(static_cast<int32_t>(level)));
        text += "\r\n";
    }
    OutputFile file(path, OpenMode::TruncateExclusive);
    if (file.IsOpen()) (void)file.Append(text.data(), text.size());
}

}  // namespace vastrelline
