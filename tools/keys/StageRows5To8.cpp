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

constexpr std::string_view kAdaptiveSmoothingNotes[] = {
    "Mode 0, and the light blur of mode 1, wrap around at the frame's edges: a bright strip at one side shows as a line of a few pixels at the other. Where that disturbs, take the [Gaussian](gaussian.md).",
    "A mask too small for its order gives the plain Gaussian taper. A mask below 2 leaves the frame as it is.",
    "The log has AdapSmooth - SEP for mode 1 and AdapSmooth - Savgol for every other, and prints the mode under a second label Order.",
};
constexpr std::string_view kAdaptiveSmoothingLog[] = {"AdapSmooth - SEP", "AdapSmooth - Savgol"};
constexpr std::string_view kAdaptiveSmoothingFixedLog[] = {"AdaptiveSmoothing"};
constexpr std::string_view kAdaptiveSmoothingDumps[] = {"NN_SavgolProc.raw"};
constexpr std::string_view kAdaptiveSmoothingFixedDumps[] = {"NN_AdaptiveSmooting.raw"};
constexpr std::string_view kAdaptiveSmoothingSwitches[] = {"ADAPTIVE_SMOOTHING"};
constexpr std::string_view kAdaptiveSmoothingADAPTIVESMOOTHINGMASKFixed[] = {"ADAPTIVESMOOTHING_MASK"};
constexpr int32_t kAdaptiveSmoothingADAPTIVESMOOTHINGMASKWhen0[] = {0};
constexpr int32_t kAdaptiveSmoothingADAPTIVESMOOTHINGMASKWhen1[] = {1};
constexpr SensibleRange kAdaptiveSmoothingADAPTIVESMOOTHINGMASKSensible[] = {
    {"ADAPTIVESMOOTHING_Mode", kAdaptiveSmoothingADAPTIVESMOOTHINGMASKWhen0, 5.0, 21.0, ValueShape::Odd},
    {"ADAPTIVESMOOTHING_Mode", kAdaptiveSmoothingADAPTIVESMOOTHINGMASKWhen1, 0.8, 3.0, ValueShape::Any},
};
constexpr std::string_view kAdaptiveSmoothingADAPTIVESMOOTHINGORDERFixed[] = {"ADAPTIVESMOOTHING_ORDER"};
constexpr SensibleRange kAdaptiveSmoothingADAPTIVESMOOTHINGORDERSensible[] = {
    {"ADAPTIVESMOOTHING_Mode", kAdaptiveSmoothingADAPTIVESMOOTHINGMASKWhen0, 2.0, 6.0, ValueShape::Even},
    {"ADAPTIVESMOOTHING_Mode", kAdaptiveSmoothingADAPTIVESMOOTHINGMASKWhen1, -30.0, 30.0, ValueShape::Any},
};
constexpr SensibleRange kAdaptiveSmoothingADAPTIVESMOOTHINGModeSensible[] = {
    {"", {}, 0.0, 0.0, ValueShape::Any},
    {"", {}, 1.0, 1.0, ValueShape::Any},
};
constexpr Key kAdaptiveSmoothingKeys[] = {
    {"ADAPTIVESMOOTHING_MASK", KeyType::Number, "15", "15", 5, true, kAdaptiveSmoothingADAPTIVESMOOTHINGMASKFixed,
     "mode 0: 5 to 21, odd; mode 1: 0.8 to 3", kAdaptiveSmoothingADAPTIVESMOOTHINGMASKSensible,
     "Mode 0: taps of the kernel, whole part (an integer key in the fixed chain). Mode 1: sigma of the "
     "blur, in pixels.",
     "More: smoother.", std::nullopt},
    {"ADAPTIVESMOOTHING_ORDER", KeyType::Integer, "4", "4", 5, true, kAdaptiveSmoothingADAPTIVESMOOTHINGORDERFixed,
     "mode 0: 2 to 6, even; mode 1: -30 to 30", kAdaptiveSmoothingADAPTIVESMOOTHINGORDERSensible,
     "Mode 0: degree of the polynomial. Mode 1: threshold in percent of the deviation that counts as full;"
     " below it all is blurred; a negative one keeps more of the frame.",
     "Mode 0: higher keeps more detail and noise. Mode 1: higher blurs more.", std::nullopt},
    {"ADAPTIVESMOOTHING_Mode", KeyType::Integer, "0", "0", 5, true, {},
     "0 or 1", kAdaptiveSmoothingADAPTIVESMOOTHINGModeSensible,
     "Configured chain only. 0: least squares; 1: local deviation; other: nothing.",
     "1 keeps edges best.", std::nullopt},
};
constexpr std::string_view kPyramidNotes[] = {
    "A band of fewer than 20 different values is left alone.",
    "Beyond the noise limit the configured chain leaves a band's values as they are; the fixed chain sets them to 0, which softens hard edges.",
    "The fixed chain does not smooth while it adds up, so its result is harder.",
    "Files but NN_Pyramid.raw carry no running number: <i> is the band, <w> and <h> its size; each run replaces them. Bands are signed. Diff2 and EnhancedSlope appear for bands that were changed.",
    "The CR chain has no pyramid.",
};
constexpr std::string_view kPyramidLog[] = {"pyramid"};
constexpr std::string_view kPyramidDumps[] = {
    "NN_Pyramid.raw",
    "PyramidProc_00_OriginalExp_<w>X<h>.raw",
    "PyramidProc_Gaussian<i>_<w>X<h>.raw",
    "Laplacian<i>_<w>X<h>.raw",
    "Diff1_<i>.raw",
    "Diff2_<i>.raw",
    "EnhancedLaplacian<i>_<w>X<h>.raw",
    "EnhancedSum<i>_<w>X<h>.raw",
};
constexpr std::string_view kPyramidCurves[] = {"EnhancedSlope_<i>.txt"};
constexpr std::string_view kPyramidSwitches[] = {"PYRAMID_PROCESSING"};
constexpr std::string_view kPyramidPYRAMIDLAYERFixed[] = {"PYRAMID_LAYER"};
constexpr SensibleRange kPyramidPYRAMIDLAYERSensible[] = {{"", {}, 2.0, 6.0, ValueShape::Any}};
constexpr std::string_view kPyramidGAUSSIANSIZEFixed[] = {"GAUSSIAN_SIZE"};
constexpr SensibleRange kPyramidGAUSSIANSIZESensible[] = {{"", {}, 0.8, 1.5, ValueShape::Any}};
constexpr std::string_view kPyramidAPPLYVARIABLERATIOFixed[] = {"APPLY_VARIABLE_RATIO"};
constexpr std::string_view kPyramidENHANCEDRATIOFixed[] = {"ENHANCED_RATIO"};
constexpr SensibleRange kPyramidENHANCEDRATIOSensible[] = {{"", {}, 1.0, 2.0, ValueShape::Any}};
constexpr std::string_view kPyramidNOISEWIDTHFixed[] = {"NOISE_WIDTH"};
constexpr SensibleRange kPyramidNOISEWIDTHSensible[] = {{"", {}, 0.5, 1.0, ValueShape::Any}};
constexpr std::string_view kPyramidAPPLYDIFFENHANCEFixed[] = {"APPLY_DIFF_ENHANCE"};
constexpr std::string_view kPyramidNOISECUTLIMITFixed[] = {"NOISE_CUTLIMIT"};
constexpr SensibleRange kPyramidNOISECUTLIMITSensible[] = {{"", {}, 0.001, 0.05, ValueShape::Any}};
constexpr Key kPyramidKeys[] = {
    {"PYRAMID_LAYER", KeyType::Integer, "3", "3", 6, true, kPyramidPYRAMIDLAYERFixed,
     "2 to 6", kPyramidPYRAMIDLAYERSensible,
     "Layers; one band fewer is made. 1 changes nothing.",
     "More: coarser structures are lifted too.", std::nullopt},
    {"GAUSSIAN_SIZE", KeyType::Number, "1", "1", 6, true, kPyramidGAUSSIANSIZEFixed,
     "0.8 to 1.5", kPyramidGAUSSIANSIZESensible,
     "Sigma of every smoothing in the stage, in pixels of the layer.",
     "More: broader bands; in the configured chain also a slightly softer frame.", std::nullopt},
    {"APPLY_VARIABLE_RATIO", KeyType::Integer, "0", "0", 6, true, kPyramidAPPLYVARIABLERATIOFixed,
     "0 or 1", kAdaptiveSmoothingADAPTIVESMOOTHINGModeSensible,
     "Not 0: band i of L layers gets the gain times (i + 1) / L, the first times 1 / L, clamped to 1 and "
     "the gain; the cut limit falls from band to band.",
     "1 spares the finest band, which is mostly noise.", std::nullopt},
    {"ENHANCED_RATIO", KeyType::Number, "1.5", "1.5", 6, true, kPyramidENHANCEDRATIOFixed,
     "1 to 2", kPyramidENHANCEDRATIOSensible,
     "Gain.",
     "The strength.", std::nullopt},
    {"NOISE_WIDTH", KeyType::Number, "0.7", "0.7", 6, true, kPyramidNOISEWIDTHFixed,
     "0.5 to 1; fixed chain 50 to 100", kPyramidNOISEWIDTHSensible,
     "Share of the noise limit up to which the curve is a straight line. In the fixed chain an integer in "
     "percent.",
     "Less: small differences, noise with them, are lifted much more.", std::nullopt},
    {"APPLY_DIFF_ENHANCE", KeyType::Integer, "1", "1", 6, true, kPyramidAPPLYDIFFENHANCEFixed,
     "0 or 1", kAdaptiveSmoothingADAPTIVESMOOTHINGModeSensible,
     "0: bands are taken apart and added up as they are.",
     "0 shows what splitting and adding up alone do.", std::nullopt},
    {"NOISE_CUTLIMIT", KeyType::Number, "0.01", "0.01", 6, true, kPyramidNOISECUTLIMITFixed,
     "0.001 to 0.05", kPyramidNOISECUTLIMITSensible,
     "Fraction of a band histogram's peak at which the noise limit lies.",
     "Less: the limit lies further out, and more structure is lifted.", std::nullopt},
};
constexpr std::string_view kMedianNotes[] = {
    "From 17 x 17 pixels on a square window takes some tenths of a second a pass, whatever its size. Passes end with the first that changes nothing, or where the frames go round in a circle; large windows need hundreds of passes until then.",
    "In the configured chain an even size becomes the next odd one, and sizes below 3 become 3. In the fixed chain an even size is an even window, whose centre lies right of and below the middle.",
    "Two worker threads share the rows of the square window of the configured chain; the result does not depend on them.",
    "The log spells the number of passes RepaetCnt.",
};
constexpr std::string_view kMedianLog[] = {"Median"};
constexpr std::string_view kMedianFixedLog[] = {"Pre-Median", "Post-NoiseReduction"};
constexpr std::string_view kMedianDumps[] = {"NN_Median.raw"};
constexpr std::string_view kMedianFixedDumps[] = {"NN_PreMedian.raw", "NN_Post_Median.raw"};
constexpr std::string_view kMedianSwitches[] = {"PRE_MEDIAN", "POST_MEDIAN"};
constexpr std::string_view kMedianMEDIANSIZEFixed[] = {"PRE_MEDIAN_SIZE", "POST_MEDIAN_SIZE"};
constexpr SensibleRange kMedianMEDIANSIZESensible[] = {{"", {}, 3.0, 7.0, ValueShape::Odd}};
constexpr std::string_view kMedianMEDIANREPEATFixed[] = {"POST_MEDIAN_REPEAT"};
constexpr SensibleRange kMedianMEDIANREPEATSensible[] = {{"", {}, 1.0, 3.0, ValueShape::Any}};
constexpr SensibleRange kMedianMEDIANModeSensible[] = {{"", {}, 0.0, 3.0, ValueShape::Any}};
constexpr Key kMedianKeys[] = {
    {"MEDIAN_SIZE", KeyType::Integer, "3", "3", 7, true, kMedianMEDIANSIZEFixed,
     "3 to 7, odd", kMedianMEDIANSIZESensible,
     "Width of the window, in pixels.",
     "More: larger specks disappear, and fine detail with them.", std::nullopt},
    {"MEDIAN_REPEAT", KeyType::Integer, "1", "1", 7, true, kMedianMEDIANREPEATFixed,
     "1 to 3", kMedianMEDIANREPEATSensible,
     "Passes. 0 or below: none.",
     "More: flatter patches.", std::nullopt},
    {"MEDIAN_Mode", KeyType::Integer, "0", "0", 7, true, {},
     "0 to 3", kMedianMEDIANModeSensible,
     "Shape of the window: see the table above.",
     "2 and 3 take away lines of a pixel's width across their direction.", std::nullopt},
};
constexpr std::string_view kGaussianNotes[] = {
    "A GAUSSIAN_SIZE of 0 is a fixed kernel of five taps that wraps around at the edges.",
    "The kernel reaches 2.5 sigma on each side, rounded up to whole pixels. One with which the frame, extended by that reach on all four sides, would come to 2^29 pixels or more does nothing: on 1300 x 1668 pixels a sigma above 4337.2.",
    "A GAUSSIAN_REPEAT without end comes to an end where a pass changes nothing, but a radiograph goes on changing for thousands of passes: 13 seconds at a sigma of 1.",
    "The dump has this name wherever the stage stands.",
    "The log spells the number of passes RepaetCnt.",
};
constexpr std::string_view kGaussianLog[] = {"Gaussian"};
constexpr std::string_view kGaussianFixedLog[] = {"Pre-Gaussian", "Post-Gaussian"};
constexpr std::string_view kGaussianDumps[] = {"NN_PreGaussian.raw"};
constexpr std::string_view kGaussianSwitches[] = {"PRE_GAUSSIAN", "POST_GAUSSIAN"};
constexpr std::string_view kGaussianGAUSSIANSIZEFixed[] = {"PRE_GAUSSIAN_SIZE", "POST_GAUSSIAN_SIZE"};
constexpr SensibleRange kGaussianGAUSSIANSIZESensible[] = {{"", {}, 0.5, 2.0, ValueShape::Any}};
constexpr SensibleRange kGaussianGAUSSIANREPEATSensible[] = {{"", {}, 1.0, 1.0, ValueShape::Any}};
constexpr SensibleRange kGaussianGAUSSIANReduceTimeRatioSensible[] = {{"", {}, 1.0, 4.0, ValueShape::Any}};
constexpr Key kGaussianKeys[] = {
    {"GAUSSIAN_SIZE", KeyType::Number, "1", "1", 8, true, kGaussianGAUSSIANSIZEFixed,
     "0.5 to 2", kGaussianGAUSSIANSIZESensible,
     "Sigma, in pixels.",
     "More: softer.", std::nullopt},
    {"GAUSSIAN_REPEAT", KeyType::Integer, "1", "1", 8, true, {},
     "1", kGaussianGAUSSIANREPEATSensible,
     "Passes. 0 or below: none.",
     "n passes smooth like one of sigma times the root of n.", std::nullopt},
    {"GAUSSIAN_ReduceTimeRatio", KeyType::Integer, "1", "1", 8, true, {},
     "1 to 4", kGaussianGAUSSIANReduceTimeRatioSensible,
     "Not 1: the filter runs on a frame reduced by this factor.",
     "Above 1 detail finer than the reduced frame is lost, whatever sigma is.", std::nullopt},
    {"GAUSSIAN_ProtectOutline", KeyType::Integer, "1", "1", 8, true, {},
     "1", kGaussianGAUSSIANREPEATSensible,
     "With factor 1: not 0 repeats the edge pixels, 0 wraps around.",
     "0 brings a seam of the opposite side into the edges.", std::nullopt},
};
constexpr Stage kStages[] = {
    {5, "AdaptiveSmoothing", "Adaptive smoothing", "adaptive-smoothing",
     R"text(Reduces noise and keeps the shape of the signal. Mode 0 fits a polynomial to a run of pixels, along rows and then along
columns, tapered by a Gaussian window. Mode 1 measures the deviation in the neighbourhood of each pixel and replaces
flat areas by a blurred copy, structured ones not; a light blur over all ends it. Any other mode filters nothing. The
fixed chain has mode 0 only.)text",
     "Mode 0 calms grain and keeps edges straight; a wide mask of low order blurs. Mode 1 makes flat areas"
     " smooth beside crisp edges; too much looks like wax.",
     "Least-squares smoothing: Savitzky and Golay (1964), solved by the method of Crout (1941). Local "
     "statistics: Lee (1980).",
     kAdaptiveSmoothingNotes, kAdaptiveSmoothingLog, kAdaptiveSmoothingFixedLog, kAdaptiveSmoothingDumps, kAdaptiveSmoothingFixedDumps, {}, {}, kAdaptiveSmoothingSwitches, kAdaptiveSmoothingKeys},
    {6, "Pyramid", "Pyramid enhancement", "pyramid",
     R"text(Splits the frame into bands of detail, from fine to coarse, each half the size of the one before; passes each band
through a power curve that treats small differences (noise), structure, and hard edges differently; and adds the bands
up again. The noise limit of a band is where its histogram falls below NOISE_CUTLIMIT of its peak.)text",
     "Texture of bone and the course of canals become clearer without rims along hard edges. Too much gain"
     " makes the frame grainy and harsh.",
     "Laplacian pyramid: Burt and Adelson (1983). The gain curve, fitted to each band's histogram, is this"
     " system's own.",
     kPyramidNotes, kPyramidLog, kPyramidLog, kPyramidDumps, kPyramidDumps, kPyramidCurves, kPyramidCurves, kPyramidSwitches, kPyramidKeys},
    {7, "Median", "Median", "median",
     R"text(Each pixel becomes the median of a window around it. Pixels nearer to the frame's edge than half a window stay.

| MEDIAN_Mode | Window |
|---|---|
| 1 | a row, then a column |
| 2 | a row |
| 3 | a column |
| other | a square |

The fixed chain has the square window, twice: before all other stages and after smoothing.)text",
     "Single bright or dark pixels disappear and edges stay sharp. Large windows and many passes round off"
     " thin lines and make flat patches.",
     "Running median: Tukey (1971).",
     kMedianNotes, kMedianLog, kMedianFixedLog, kMedianDumps, kMedianFixedDumps, {}, {}, kMedianSwitches, kMedianKeys},
    {8, "Gaussian", "Gaussian", "gaussian",
     R"text(Smooths the frame, rows first, then columns. In the fixed chain it stands twice, before and after the contrast stages,
a single pass each with replicated edges.)text",
     "Grain becomes softer, and so do edges. Above a sigma of 2 the frame looks out of focus.",
     "Separable Gaussian kernel of 2.5 sigma on each side.",
     kGaussianNotes, kGaussianLog, kGaussianFixedLog, kGaussianDumps, kGaussianDumps, {}, {}, kGaussianSwitches, kGaussianKeys},
};

}  // namespace

std::span<const Stage> StageRows5To8() { return kStages; }

}  // namespace vastrelline
