// SPDX-License-Identifier: Apache-2.0
#include "RunParts.h"

namespace vastrelline::digest {

namespace {

constexpr FrameRecipe kPictures[] = {{FrameKind::Radiograph, 96, 72}, {FrameKind::Corners, 101, 57},
                                     {FrameKind::Noise, 64, 48},      {FrameKind::Radiograph, 57, 131},
                                     {FrameKind::Weak, 80, 64},       {FrameKind::Ramp, 63, 47},
                                     {FrameKind::Corners, 128, 64}};

constexpr FrameRecipe kFrames[] = {
    {FrameKind::Radiograph, 96, 72}, {FrameKind::Noise, 64, 48},      {FrameKind::Corners, 101, 57},
    {FrameKind::Ramp, 63, 47},       {FrameKind::Weak, 80, 64},       {FrameKind::Steps, 37, 90},
    {FrameKind::Specks, 96, 96},     {FrameKind::Stripes, 33, 40},    {FrameKind::Deep, 70, 50},
    {FrameKind::Flat, 40, 30},       {FrameKind::Radiograph, 97, 95}, {FrameKind::Corners, 150, 110},
    {FrameKind::Noise, 3, 70},       {FrameKind::Ramp, 70, 3},        {FrameKind::Radiograph, 1, 1},
    {FrameKind::Noise, 17, 16},      {FrameKind::Radiograph, 65, 64}};

}  // namespace

const FrameRecipe& AnyFrame(size_t turn) { return kFrames[turn % std::size(kFrames)]; }

const FrameRecipe& PictureFrame(size_t turn) { return kPictures[turn % std::size(kPictures)]; }

void AddSensorSection(ProfileLines& lines) {
    lines.Section("Settings");
    for (const char* key : {"ImgCutLeft", "ImgCutTop", "ImgCutRight", "ImgCutBottom", "Flip"})
        lines.Key(key, "0");
    lines.Key("Rotation", "-10")
        .Key("RCCutOff", "159")
        .Key("RCCutOffR", "159")
        .Key("FrameWidth", "0")
        .Key("FrameHeight", "0");
}

void BeginSection(ProfileLines& lines, int32_t procMode) {
    lines.Section("General").Key("PROCMODE", std::to_string(procMode));
    lines.Key("SAVE_LOG", "1").Key("SAVE_IMAGE", "1").Key("WRITE_PATH", "{folder}/out/");
}

std::string DrawValue(Generator& generator, const KeyValues& values, bool isOddAllowed) {
    const bool isOdd = isOddAllowed && !values.odd.empty() && generator.Below(6) == 0;
    return std::string(generator.Pick(ListOf(isOdd ? values.odd : values.ordinary)));
}

void AddStageKey(ProfileLines& lines, const StageValues& stage, std::string_view key,
                 std::string_view value) {
    if (stage.number == 0) {
        lines.Key(key, value);
    } else {
        lines.StageKey(key, value);
    }
}

void AddDrawnKeys(ProfileLines& lines, Generator& generator, const StageValues& stage, bool isOddAllowed) {
    if (!stage.mode.key.empty())
        AddStageKey(lines, stage, stage.mode.key, DrawValue(generator, stage.mode, isOddAllowed));
    for (const KeyValues& values : stage.keys)
        if (generator.Below(5) != 0)
            AddStageKey(lines, stage, values.key, DrawValue(generator, values, isOddAllowed));
}

}  // namespace vastrelline::digest
