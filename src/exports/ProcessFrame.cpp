// SPDX-License-Identifier: Apache-2.0
#include "exports/ProcessFrame.h"

#include <optional>
#include <vector>

#include "chains/ConfiguredChain.h"
#include "chains/DriverCall.h"
#include "chains/ExtendedChain.h"
#include "chains/FixedChain.h"
#include "chains/LowExposureChain.h"
#include "config/CRegistryIO.h"
#include "exports/CallScope.h"
#include "exports/OutputMapping.h"
#include "operators/curves/TonedFrame.h"
#include "pixels/AllocFrame.h"
#include "report/Bitmap.h"
#include "sensor/ExposureCurve.h"
#include "sensor/SpotCorrection.h"

namespace vastrelline {

namespace {

// A missing profile, section or key selects the fixed chain.
int32_t ReadProcessingMode(const ProcessCall& call) {
    constexpr int32_t kFixedMode = 1;
    const CRegistryIO profile(nullptr, call.iniPath.c_str(), 1);
    return profile.ReadProfileInt(call.sectionName, L"PROCMODE", kFixedMode);
}

// Evens out the brightness of the caller's frame. No key sets the window: it is the same for all sensors.
void CorrectSpots(const ProcessCall& call) {
    constexpr int32_t kWindow = 15;
    constexpr float kStrength = 1.5F;
    ApplySpotCorrection(call.input, kWindow, call.width, call.height, kStrength);
}

// Clips the highlights of the caller's frame and lifts very dark frames. No key sets the knees either.
void CorrectExposure(const ProcessCall& call, TonedFrame& input) {
    constexpr int32_t kLowKnee = 250;
    constexpr int32_t kHighKnee = 3800;
    constexpr double kLiftExponent = 0.45;
    constexpr double kReserved = 0.6;
    ApplyExposureCurve(input, kLowKnee, kHighKnee, kLiftExponent, kReserved, call.iniPath, call.geometry);
}

// The caller's frame, corrected in place. The exposure curve waits for the run, which may need the frame only
// once, and reaches the caller's pixels in any case.
class CorrectedInput {
public:
    explicit CorrectedInput(const ProcessCall& call) {
        if (call.input == nullptr || call.width <= 0 || call.height <= 0) return;
        CountPixels(call.width, call.height);
        if (call.isSpotCorrectionOn) CorrectSpots(call);
        frame_.emplace(FrameView(call.input, call.width, call.height));
        CorrectExposure(call, *frame_);
    }
    ~CorrectedInput() { Finish(); }
    CorrectedInput(const CorrectedInput&) = delete;
    CorrectedInput& operator=(const CorrectedInput&) = delete;
    CorrectedInput(CorrectedInput&&) = delete;
    CorrectedInput& operator=(CorrectedInput&&) = delete;

    // Brings the curve to the caller's pixels, if it still waits. Asks for no memory, of which there may be
    // none.
    void Finish() {
        if (frame_) frame_->Change();
    }

    // Null without a frame.
    TonedFrame* Frame() { return frame_ ? &*frame_ : nullptr; }

private:
    std::optional<TonedFrame> frame_;
};

ReturnCode RunDriver(int32_t mode, const ProcessCall& call, TonedFrame* input, uint16_t* output) {
    constexpr int32_t kListedMode = 2;
    constexpr int32_t kDecidingMode = 3;
    const DriverCall driver{call.input,   output,           call.width, call.height,
                            call.iniPath, call.sectionName, input};
    if (mode == kListedMode) {
        return call.mode2 == ListedChain::Extended
                   ? RunExtendedChain(driver, call.sensorFolder, call.sensorMode)
                   : RunConfiguredChain(driver, call.geometry);
    }
    if (mode == kDecidingMode && call.mode3 == DecidingChain::LowExposure)
        return RunLowExposureChain(driver, call.geometry);
    return RunFixedChain(driver);
}

// The steps of a call whose profile has been read.
ReturnCode RunCall(const ProcessCall& call, uint16_t* output) {
    const int32_t mode = ReadProcessingMode(call);
    CorrectedInput input(call);
    const ReturnCode code = RunDriver(mode, call, input.Frame(), output);
    // Before the mapping, for the output of a run that ended early may be the very input.
    input.Finish();
    // The mapping runs on any code of the driver, as long as there is a frame.
    const bool hasFrames = call.input != nullptr && output != nullptr && call.width > 0 && call.height > 0;
    if (call.isMappingOn && hasFrames) ApplyOutputMapping(output, call.width, call.height);
    return code;
}

}  // namespace

ReturnCode ProcessFrame(const ProcessCall& call, uint16_t* output) {
    const CallScope scope(call.iniPath);
    const ScratchCall scratchOfCall(call.width, call.height);
    // Without its profile nobody knows what the frame's picture is, and the frame stays as it came.
    if (scope.ProfileState() == ReadResult::Failed) return kInternalFailure;
    return RunCall(call, output);
}

ReturnCode ProcessFrameToBitmap(const ProcessCall& call, const std::wstring& bitmapPath) {
    const CallScope scope(call.iniPath);
    const ScratchCall scratchOfCall(call.width, call.height);
    if (scope.ProfileState() == ReadResult::Failed) return kInternalFailure;
    const bool hasPixels = call.width > 0 && call.height > 0;
    // A call that ends with an argument's code asks for no frame, however large its sizes are.
    const bool isFrameNeeded = hasPixels && call.input != nullptr;
    if (isFrameNeeded) CountPixels(call.width, call.height);
    ScratchVector<uint16_t> scratch =
        AllocFrame<uint16_t>(isFrameNeeded ? call.width : 1, isFrameNeeded ? call.height : 1);
    const ReturnCode code = RunCall(call, scratch.data());
    if (code != kSuccess || !hasPixels || bitmapPath.empty()) return code;
    const int32_t isSaved = SaveFrameBitmap(scratch.data(), call.width, call.height, bitmapPath);
    return isSaved != 0 ? kSuccess : kNoBitmap;
}

}  // namespace vastrelline
