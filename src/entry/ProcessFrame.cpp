#include "entry/ProcessFrame.h"

#include <vector>

#include "entry/ConfiguredChain.h"
#include "entry/OutputMapping.h"
#include "image/AllocZeroed.h"

namespace vastrelline {

ReturnCode ProcessFrame(const ProcessCall& call, uint16_t* output) {
    const ReturnCode code =
        RunConfiguredChain(call.input, output, call.width, call.height, call.iniPath, call.sectionName);
    // The mapping runs on any code of the driver, as long as there is a frame.
    const bool hasFrames = call.input != nullptr && output != nullptr && call.width > 0 && call.height > 0;
    if (call.isMappingOn && hasFrames) {
        CountPixels(call.width, call.height);  // a driver that returned early has not refused the size
        ApplyOutputMapping(output, call.width, call.height);
    }
    return code;
}

ReturnCode ProcessFrameToBitmap(const ProcessCall& call, const std::wstring& bitmapPath) {
    const bool hasPixels = call.width > 0 && call.height > 0;
    if (hasPixels) CountPixels(call.width, call.height);
    std::vector<uint16_t> scratch =
        AllocZeroed<uint16_t>(hasPixels ? call.width : 1, hasPixels ? call.height : 1);
    const ReturnCode code = ProcessFrame(call, scratch.data());
    if (code != kSuccess || !hasPixels || bitmapPath.empty()) return code;
    return kNoBitmap;
}

}  // namespace vastrelline
