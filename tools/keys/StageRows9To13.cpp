// SPDX-License-Identifier: Apache-2.0

// Written by scripts/make-docs.py from docs/keys.toml: edit there.
// clang-format off

#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <string_view>

#include "keys/KeyRows.h"
#include "keys/KeyTable.h"

namespace vastrelline {

namespace {

constexpr std::string_view kSigmoidLUTNotes[] = {
    "A level counts as occupied with more than 10 pixels, smoothed over 50 levels; the low end is taken 100 levels lower.",
    "A fraction so high that the centre lies above the highest occupied level inverts the curve.",
    "OUTPUTRANGE, a [common setting](../settings/common.md), is the top of the result.",
};
constexpr std::string_view kSigmoidLUTLog[] = {"Sigmoid Curve"};
constexpr std::string_view kSigmoidLUTFixedLog[] = {"Sigmoid Curve", "Linear Curve"};
constexpr std::string_view kSigmoidLUTDumps[] = {"NN_ResultSigmoid.raw"};
constexpr std::string_view kSigmoidLUTCurves[] = {"NN_SigmoidCurve.txt"};
constexpr std::string_view kSigmoidLUTSwitches[] = {"POST_SIGMOID_LUT"};
constexpr std::string_view kSigmoidLUTPOSTSIGMOIDRATIOFixed[] = {"POST_SIGMOID_RATIO"};
constexpr SensibleRange kSigmoidLUTPOSTSIGMOIDRATIOSensible[] = {
    {"", {}, 0.0, 0.0, ValueShape::Any},
    {"", {}, 0.3, 0.7, ValueShape::Any},
};
constexpr Key kSigmoidLUTKeys[] = {
    {"POST_SIGMOID_RATIO", KeyType::Number, "0", "0", 9, true, kSigmoidLUTPOSTSIGMOIDRATIOFixed,
     "0, or 0.3 to 0.7", kSigmoidLUTPOSTSIGMOIDRATIOSensible,
     "0: the centre lies in the middle of the occupied levels. Otherwise the fraction of the pixels below "
     "the centre.",
     "More: darker.", std::nullopt},
};
constexpr std::string_view kGammaLUTNotes[] = {
    "A frame of one level becomes 0.",
    "A negative fraction always derives the exponent 2; a fraction of 0 derives it from the highest occupied level.",
    "OUTPUTRANGE, a [common setting](../settings/common.md), is the top of the result.",
};
constexpr std::string_view kGammaLUTLog[] = {"Gamma Curve"};
constexpr std::string_view kGammaLUTDumps[] = {"NN_Result_Gamma.raw"};
constexpr std::string_view kGammaLUTCurves[] = {"NN_GammaCurve.txt"};
constexpr std::string_view kGammaLUTSwitches[] = {"POST_GAMMA_LUT"};
constexpr std::string_view kGammaLUTPOSTGAMMARATIOFixed[] = {"POST_GAMMA_RATIO"};
constexpr SensibleRange kGammaLUTPOSTGAMMARATIOSensible[] = {
    {"", {}, 1.0, 2.0, ValueShape::Any},
    {"", {}, -2.0, -1.0, ValueShape::Any},
    {"", {}, 0.01, 0.5, ValueShape::Any},
};
constexpr Key kGammaLUTKeys[] = {
    {"POST_GAMMA_RATIO", KeyType::Number, "0.5", "0.5", 10, true, kGammaLUTPOSTGAMMARATIOFixed,
     "1 to 2, -2 to -1, or a fraction of 0.01 to 0.5", kGammaLUTPOSTGAMMARATIOSensible,
     "Magnitude 1 or more: the exponent, its sign the family. Below 1: the fraction of the brightest "
     "pixels from whose level the exponent is derived.",
     "1 is a straight stretch; more is darker.", std::nullopt},
};
constexpr std::string_view kLinearLUTNotes[] = {
    "The stage writes no dump and does not step the running number: its curve file carries the number of the next dump. Mode 2 writes NN_LinearCurve2.txt, the others NN_LinearCurve.txt.",
    "Mode 1 with a limit that no count passes makes the frame black.",
    "Fractions of the three keys are cut off. OUTPUTRANGE, a [common setting](../settings/common.md), is the top of the result.",
};
constexpr std::string_view kLinearLUTLog[] = {"Linear Curve"};
constexpr std::string_view kLinearLUTCurves[] = {"NN_LinearCurve.txt", "NN_LinearCurve2.txt"};
constexpr SensibleRange kLinearLUTPOSTLINEARMODESensible[] = {
    {"", {}, 0.0, 0.0, ValueShape::Any},
    {"", {}, 1.0, 1.0, ValueShape::Any},
    {"", {}, 2.0, 2.0, ValueShape::Any},
};
constexpr int32_t kLinearLUTPOSTLINEARLIMITBINWhen0[] = {0};
constexpr int32_t kLinearLUTPOSTLINEARLIMITBINWhen2[] = {1};
constexpr SensibleRange kLinearLUTPOSTLINEARLIMITBINSensible[] = {
    {"POST_LINEAR_MODE", kLinearLUTPOSTLINEARLIMITBINWhen0, 0.0, 100.0, ValueShape::Any},
    {"POST_LINEAR_MODE", kLinearLUTPOSTLINEARLIMITBINWhen0, -1.0, -1.0, ValueShape::Any},
    {"POST_LINEAR_MODE", kLinearLUTPOSTLINEARLIMITBINWhen2, 1.0, std::numeric_limits<double>::infinity(), ValueShape::Any},
};
constexpr SensibleRange kLinearLUTPOSTLINEARBRIGHTOPTSensible[] = {{"", {}, -300.0, 300.0, ValueShape::Any}};
constexpr Key kLinearLUTKeys[] = {
    {"POST_LINEAR_MODE", KeyType::CutNumber, "0", "0", 11, true, {},
     "0, 1, 2", kLinearLUTPOSTLINEARMODESensible,
     "See the table above.",
     "", std::nullopt},
    {"POST_LINEAR_LIMITBIN", KeyType::CutNumber, "0", "0", 11, true, {},
     "mode 0: 0 to 100, or -1; mode 1: 1 or more, some thousandths of the pixel count", kLinearLUTPOSTLINEARLIMITBINSensible,
     "Modes 0 and 1: see the table above.",
     "More: brighter, and more of the brightest pixels run into white.", std::nullopt},
    {"POST_LINEAR_BRIGHTOPT", KeyType::CutNumber, "0", "0", 11, true, {},
     "-300 to 300", kLinearLUTPOSTLINEARBRIGHTOPTSensible,
     "Mode 2: shift in levels. The ramp runs from b / 2 to the top + 3 b / 2 for b above 0, from 3 b / 2 "
     "to the top + b / 2 below.",
     "Above 0 darker, below 0 lighter; a small negative value lifts black off 0.", std::nullopt},
};
constexpr std::string_view kPreProcessingNotes[] = {
    "The stage writes no log line.",
    "The radius follows from the sigma; in frames narrower than 1000 pixels it is halved.",
    "A frame of zeros comes out at level 4095.",
};
constexpr std::string_view kPreProcessingDumps[] = {"NN_Preprocessing.raw"};
constexpr SensibleRange kPreProcessingPREPROCESSINGENHANCESCALESensible[] = {
    {"", {}, 1.0, 2.5, ValueShape::Any},
};
constexpr SensibleRange kPreProcessingPREPROCESSINGGAUSSIANPOWERSensible[] = {
    {"", {}, 3.0, 12.0, ValueShape::Any},
};
constexpr Key kPreProcessingKeys[] = {
    {"PREPROCESSING_ENHANCESCALE", KeyType::Number, "2.5", "2.5", 12, true, {},
     "1 to 2.5", kPreProcessingPREPROCESSINGENHANCESCALESensible,
     "Gain of the middle scales. 1 leaves them.",
     "The strength.", std::nullopt},
    {"PREPROCESSING_GAUSSIANPOWER", KeyType::Number, "6", "6", 12, true, {},
     "3 to 12", kPreProcessingPREPROCESSINGGAUSSIANPOWERSensible,
     "Sigma from which the radius of the box follows: about 2.5 times as much.",
     "More: broader structures are lifted.", std::nullopt},
    {"PREPROCESSING_AUMALPHA", KeyType::Number, "1", "1", 12, false, {},
     "", {},
     "No effect.",
     "", std::nullopt},
    {"PREPROCESSING_AUMWEIGHT", KeyType::Number, "1", "1", 12, false, {},
     "", {},
     "No effect.",
     "", std::nullopt},
    {"PREPROCESSING_AUMPOWER", KeyType::Number, "0", "0", 12, false, {},
     "", {},
     "No effect.",
     "", std::nullopt},
    {"PREPROCESSING_AUMRANGE", KeyType::Number, "1", "1", 12, false, {},
     "", {},
     "No effect.",
     "", std::nullopt},
};
constexpr std::string_view kHDRNotes[] = {
    "The scale is fixed at 12 bits. The last row is scaled by a range measured without it.",
    "One of the slower stages: its blurs span the whole frame and go round to the opposite edge. At an odd width the last column, at an odd height the last row holds no picture.",
    "LAYER and WF_SLOPE matter only by being 0. With 0 in one of MAX_LAMBDA, WF_SLOPE, ALPHA_NORM, ALPHA_HE and LAYER the frame comes out as it went in.",
};
constexpr std::string_view kHDRLog[] = {"HDR"};
constexpr std::string_view kHDRDumps[] = {"NN_HDR.raw"};
constexpr SensibleRange kHDRHDRBLOCKSIZESensible[] = {{"", {}, 64.0, 256.0, ValueShape::PowerOfTwo}};
constexpr SensibleRange kHDRHDRHISTOBINSSensible[] = {{"", {}, 128.0, 1024.0, ValueShape::Any}};
constexpr SensibleRange kHDRHDRCLIpLIMITSensible[] = {{"", {}, 1.2, 2.0, ValueShape::Any}};
constexpr SensibleRange kHDRMAXLAMBDASensible[] = {{"", {}, 0.3, 0.9, ValueShape::Any}};
constexpr SensibleRange kHDRWFSLOPESensible[] = {
    {"", {}, -std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity(), ValueShape::NotZero},
};
constexpr SensibleRange kHDRALPHANORMSensible[] = {{"", {}, 0.1, 0.4, ValueShape::Any}};
constexpr Key kHDRKeys[] = {
    {"HDR_BLOCK_SIZE", KeyType::Integer, "128", "128", 13, true, {},
     "64 to 256, a power of two", kHDRHDRBLOCKSIZESensible,
     "Edge of a tile of the equalisation, in pixels.",
     "As BLOCK_SIZE of CLAHE.", std::nullopt},
    {"HDR_HISTO_BINS", KeyType::Integer, "256", "256", 13, true, {},
     "128 to 1024", kHDRHDRHISTOBINSSensible,
     "Bins of a tile histogram; 0 means 128.",
     "As HISTO_BINS of CLAHE.", std::nullopt},
    {"HDR_CLIp_LIMIT", KeyType::Number, "1.375", "1.375", 13, true, {},
     "1.2 to 2", kHDRHDRCLIpLIMITSensible,
     "Clip limit of the equalisation. The key is spelled so. Exactly 1: no equalisation, the fusion still "
     "runs.",
     "As MAX_SLOPE of CLAHE.", std::nullopt},
    {"MAX_LAMBDA", KeyType::SingleNumber, "0.9", "0.9", 13, true, {},
     "0.3 to 0.9", kHDRMAXLAMBDASensible,
     "Share of the equalised image in the coarse layer. 0 switches the stage's effect off.",
     "More: more compression of the range.", std::nullopt},
    {"WF_SLOPE", KeyType::SingleNumber, "0.005", "0.005", 13, true, {},
     "not 0", kHDRWFSLOPESensible,
     "0 switches the stage's effect off; no other value matters.",
     "", std::nullopt},
    {"ALPHA_NORM", KeyType::SingleNumber, "0.3", "0.3", 13, true, {},
     "0.1 to 0.4", kHDRALPHANORMSensible,
     "Share of the blurred image that is taken away from the frame. 0 switches the stage's effect off.",
     "More: harder fine detail.", std::nullopt},
    {"ALPHA_HE", KeyType::SingleNumber, "0.3", "0.3", 13, true, {},
     "0.1 to 0.4", kHDRALPHANORMSensible,
     "The same for the equalised image. 0 switches the stage's effect off.",
     "More: harder coarse detail.", std::nullopt},
    {"LAYER", KeyType::Integer, "20", "20", 13, true, {},
     "not 0", kHDRWFSLOPESensible,
     "0 switches the stage's effect off; no other value matters.",
     "", std::nullopt},
};
constexpr Stage kStages[] = {
    {9, "SigmoidLUT", "Sigmoid curve", "sigmoid",
     R"text(Maps the frame through an S-shaped curve from 0 at the lowest occupied level to OUTPUTRANGE at the highest. In the fixed
chain the stage always runs: with POST_SIGMOID_LUT off it is the plain [linear curve](linear.md), without a dump.)text",
     "More contrast in the middle, softer shadows and highlights. With the centre too low the frame is "
     "pale, too high it is dark.",
     "Logistic curve (Verhulst, 1845), fitted to the occupied levels.",
     kSigmoidLUTNotes, kSigmoidLUTLog, kSigmoidLUTFixedLog, kSigmoidLUTDumps, kSigmoidLUTDumps, kSigmoidLUTCurves, {}, kSigmoidLUTSwitches, kSigmoidLUTKeys},
    {10, "GammaLUT", "Gamma curve", "gamma",
     R"text(Spreads the levels from the frame's smallest to its largest pixel over 0 to OUTPUTRANGE along a power curve. With `x`
from 0 to 1 the positive family is `x^g`, the negative one `1 - (1 - x)^(1/g)`: the same curve, turned half round. A
ratio of magnitude below 1 derives the exponent from the frame: 1 for a dark frame, 2 for a bright one.)text",
     "Both families darken the middle. The positive one closes shadows and spreads highlights; the "
     "negative one keeps shadows open and is steepest at the very top.",
     "Power curve.",
     kGammaLUTNotes, kGammaLUTLog, kGammaLUTLog, kGammaLUTDumps, kGammaLUTDumps, kGammaLUTCurves, {}, kGammaLUTSwitches, kGammaLUTKeys},
    {11, "LinearLUT", "Linear curve", "linear",
     R"text(Rescales the frame along a straight ramp from 0 to OUTPUTRANGE and cuts at both ends.

| POST_LINEAR_MODE | Where the ramp ends |
|---|---|
| 0 | at the last level with more than POST_LINEAR_LIMITBIN pixels, smoothed over 50 levels; -1: at the full range |
| 1 | where more than POST_LINEAR_LIMITBIN pixels lie, counted from the top |
| 2 | a window around mid-range, shifted and widened by POST_LINEAR_BRIGHTOPT |

Modes 0 and 1 always begin at level 0. The fixed chain has no such stage; see [sigmoid](sigmoid.md).)text",
     "Whites become white; in mode 2 the whole frame becomes lighter or darker.",
     "Straight ramp.",
     kLinearLUTNotes, kLinearLUTLog, {}, {}, {}, kLinearLUTCurves, {}, {}, kLinearLUTKeys},
    {12, "preProcessing", "preProcessing", "preprocessing",
     R"text(Takes the median (3 x 3) twice, lifts the middle scales of the result against a box blur, and adds back the fine detail
that the second median took away, but only where it is positive. The smallest pixel above 0 stays the floor. The fixed
chain has no such stage.)text",
     "Bone and roots gain relief while single noisy pixels are gone: made for weak frames. Too much gain "
     "gives dark seams along bright structures.",
     "Unsharp masking of the middle scales on a median-filtered frame; a composition of this system's own.",
     kPreProcessingNotes, {}, {}, kPreProcessingDumps, {}, {}, {}, {}, kPreProcessingKeys},
    {13, "HDR", "HDR", "hdr",
     R"text(Makes a [CLAHE](clahe.md) of the frame and fuses frame and equalised frame in a fine and a coarse layer, each sharpened
against its own Gaussian blur. Results stay between the frame's smallest and largest pixel. The stage runs for PROCMODE
3, and for PROCMODE 2 from `ImageProcessing_NE`; elsewhere its number is passed over.)text",
     "Dense and thin regions are both readable at once. Too much share of the equalised image makes the "
     "frame flat and grey.",
     "CLAHE (Zuiderveld, 1994, after Pizer et al., 1987), fused with the frame in two layers by Gaussian "
     "blurs in the frequency domain; the fusion is this system's own.",
     kHDRNotes, kHDRLog, {}, kHDRDumps, {}, {}, {}, {}, kHDRKeys},
};

}  // namespace

std::span<const Stage> StageRows9To13() { return kStages; }

}  // namespace vastrelline
