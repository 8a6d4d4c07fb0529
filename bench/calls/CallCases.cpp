// SPDX-License-Identifier: Apache-2.0
#include "CallCases.h"

#include <algorithm>
#include <string>
#include <utility>

#include "support/ProfileWriter.h"
#include "support/RealFrames.h"
#include "support/SourceTree.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {

namespace {

// Every section that a case names and the sample profile does not have.
std::string CaseSections() {
    ProfileWriter writer;
    const auto configured = [&writer](const char* name, const char* mode) -> ProfileWriter& {
        return writer.Section(name)
            .Key("PROCMODE", mode)
            .Key("BITSTORED", "12")
            .Key("SATURATION_VALUE", "4095")
            .Key("OUTPUTRANGE", "4095")
            .Key("INVERSE_INTENSITY", "1");
    };
    configured("None", "2").Key("FunctionCount", "0");
    configured("Ten", "2")
        .Stage("7")
        .Stage("8")
        .Stage("12")
        .Stage("1")
        .Stage("2")
        .Stage("6")
        .Stage("4", {{"MODE_CONTRAST", "1"}})
        .Stage("3")
        .Stage("5")
        .Stage("9");
    // A threshold that every frame passes, and then the sequence for weak ones with the defaults of its keys.
    configured("Low", "3").Key("SETCLIPBIN", "-1");
    configured("Hdr", "3")
        .Key("SETCLIPBIN", "2")
        .Stage("8", {{"GAUSSIAN_SIZE", "0.9"}})
        .Stage("10", {{"POST_GAMMA_RATIO", "-1.15"}})
        .Stage("11", {{"POST_LINEAR_MODE", "2"}, {"POST_LINEAR_BRIGHTOPT", "-80"}})
        .Stage("6", {{"PYRAMID_LAYER", "4"}, {"APPLY_VARIABLE_RATIO", "1"}, {"ENHANCED_RATIO", "1.3"}})
        .Stage("3", {{"BLOCK_SIZE", "256"}})
        .Stage("13");
    configured("Fixed", "1").Key("MODE_CONTRAST", "1").Key("NOISE_WIDTH_CONTRAST", "150");
    for (const char* flag :
         {"PRE_MEDIAN", "PRE_GAUSSIAN", "PRE_CONTRAST", "HISTOGRAM_STRETCH", "PYRAMID_PROCESSING",
          "CONTRAST_ENHANCE", "CONTRAST_ENHANCE2", "ADAPTIVE_SMOOTHING", "POST_MEDIAN", "POST_GAUSSIAN",
          "POST_SIGMOID_LUT", "POST_GAMMA_LUT", "INTRAORAL_MASK"})
        writer.Key(flag, "1");
    return writer.Text();
}

std::string SensorValues(const Frame& frame) {
    const SensorGeometry geometry = GeometryOf(frame);
    const auto line = [](const char* key, int32_t value) {
        return std::string(key) + "=" + std::to_string(value) + "\r\n";
    };
    std::string text;
    for (const char* key : {"ImgCutLeft", "ImgCutTop", "ImgCutRight", "ImgCutBottom", "Rotation", "Flip"})
        text += line(key, 0);
    return text + line("RCCutOff", geometry.RCCutOff) + line("RCCutOffR", geometry.RCCutOffR) +
           line("FrameWidth", geometry.FrameWidth) + line("FrameHeight", geometry.FrameHeight);
}

// The sample, with the sensor's values in its section for them.
std::string SampleWithSensorValues(const Frame& frame) {
    std::string text = ReadBytes(SourceTreeFolder() / "profiles" / "dental.ini");
    const std::string head = "[Settings]\n";
    text.insert(text.find(head) + head.size(), SensorValues(frame));
    return text;
}

}  // namespace

std::vector<CallCase> MakeCallCases(bool isSmall) {
    const Frame whole = isSmall ? ReadPieceOfBitewing(65, 43) : ReadBitewing();
    const Frame cornered = isSmall ? whole : WithBlackCorners(whole);
    using enum CalledExport;
    return {
        {"no stage", ImageProcessingS, "None", whole, {}},
        {"General", ImageProcessingS, "General", cornered, {}},
        {"Endodontic", ImageProcessingS, "Endodontic", cornered, {}},
        {"Periodontal", ImageProcessingS, "Periodontal", cornered, {}},
        {"LowDose, weak frame", ImageProcessingS, "LowDose", Weakened(cornered), true},
        {"ten stages", ImageProcessingS, "Ten", whole, {}},
        {"low sequence", ImageProcessingS, "Low", whole, true},
        {"five stages, HDR", ImageProcessingS, "Hdr", whole, false},
        {"fixed, all switches", ImageProcessingS, "Fixed", cornered, {}},
        {"CR, all switches", ImageProcessingCR, "Fixed", whole, {}},
        {"General, 32 x 32", ImageProcessingS, "General", ReadPieceOfBitewing(32, 32), {}},
    };
}

SensorGeometry GeometryOf(const Frame& frame) {
    // As large as those of WithBlackCorners, or as small frames allow.
    const int32_t radius = std::min(150, std::min(frame.width, frame.height) / 4);
    SensorGeometry geometry{};
    geometry.RCCutOff = radius;
    geometry.RCCutOffR = radius;
    geometry.FrameWidth = frame.width;
    geometry.FrameHeight = frame.height;
    return geometry;
}

void WriteCaseProfile(const std::filesystem::path& path, const Frame& frame) {
    WriteBytes(path, SampleWithSensorValues(frame) + "\n" + CaseSections());
}

}  // namespace vastrelline
