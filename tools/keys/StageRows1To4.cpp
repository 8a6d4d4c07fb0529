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

constexpr std::string_view kPreContrastProcNotes[] = {
    "In the configured chain a PRECONTRAST_MASK of exactly 0 ends the stage without dump and log line; in the fixed chain the stage goes on with the fixed five-tap kernel.",
    "The log prints PRECONTRAST_MASK as MaskSize, PRECONTRAST_RATIO as CurveRatio, and the factor as an integer.",
};
constexpr std::string_view kPreContrastProcLog[] = {"PreConstrast"};
constexpr std::string_view kPreContrastProcDumps[] = {"NN_PreContrastGaussian.raw", "NN_PreContrast.raw"};
constexpr std::string_view kPreContrastProcSwitches[] = {"PRE_CONTRAST"};
constexpr std::string_view kPreContrastProcPRECONTRASTMASKFixed[] = {"PRECONTRAST_MASK"};
constexpr SensibleRange kPreContrastProcPRECONTRASTMASKSensible[] = {{"", {}, 10.0, 80.0, ValueShape::Any}};
constexpr std::string_view kPreContrastProcPRECONTRASTRATIOFixed[] = {"PRECONTRAST_RATIO"};
constexpr SensibleRange kPreContrastProcPRECONTRASTRATIOSensible[] = {{"", {}, 1.05, 1.5, ValueShape::Any}};
constexpr std::string_view kPreContrastProcPRECONTRASTRESCALEFixed[] = {"PRECONTRAST_RESCALE"};
constexpr SensibleRange kPreContrastProcPRECONTRASTRESCALESensible[] = {{"", {}, 1.0, 4.0, ValueShape::Any}};
constexpr Key kPreContrastProcKeys[] = {
    {"PRECONTRAST_MASK", KeyType::Number, "15", "15", 1, true, kPreContrastProcPRECONTRASTMASKFixed,
     "10 to 80", kPreContrastProcPRECONTRASTMASKSensible,
     "Sigma of the blur, in pixels of the frame.",
     "Small: edges of single structures. Large: whole teeth against their surroundings.", std::nullopt},
    {"PRECONTRAST_RATIO", KeyType::Number, "1.25", "1.25", 1, true, kPreContrastProcPRECONTRASTRATIOFixed,
     "1.05 to 1.5", kPreContrastProcPRECONTRASTRATIOSensible,
     "Gain of the difference. 1 changes nothing; below 1 softens.",
     "More: more relief, and seams along hard edges.", std::nullopt},
    {"PRECONTRAST_RESCALE", KeyType::Number, "2", "2", 1, true, kPreContrastProcPRECONTRASTRESCALEFixed,
     "1 to 4", kPreContrastProcPRECONTRASTRESCALESensible,
     "Above 1: the blur runs on a frame reduced by this factor, whole part only. Otherwise at full size.",
     "Hardly seen at a broad blur; it saves time.", std::nullopt},
};
constexpr std::string_view kHistogramStretchNotes[] = {
    "Modes 3 to 5 write no curve file and no NN_StretchImage0.raw; NN_StretchImage2.raw appears with RESTRETCH_OPTION 1 or 2.",
    "AdjustCurve_Sigmoid.txt carries no number: each run replaces it. It belongs to this stage, not to the sigmoid.",
    "In modes 0 to 2 the tail lengths are reduced to what the tails have; modes 3 to 5 take them as they stand.",
    "In the fixed chain modes 0 to 2 mark the dark tail, NN_UnsharpMasking.raw, which [adaptive unsharp](adaptive-unsharp.md) in mode 3 then spares.",
    "The log prints the two valleys as Segment, also in mode 0, which does not use them; in modes 3 to 5 it prints 0, 0.",
};
constexpr std::string_view kHistogramStretchLog[] = {"StretchCurve"};
constexpr std::string_view kHistogramStretchDumps[] = {"NN_StretchImage0.raw", "NN_StretchImage2.raw"};
constexpr std::string_view kHistogramStretchFixedDumps[] = {
    "NN_UnsharpMasking.raw",
    "NN_StretchImage0.raw",
    "NN_StretchImage2.raw",
};
constexpr std::string_view kHistogramStretchCurves[] = {"AdjustCurve_Sigmoid.txt"};
constexpr std::string_view kHistogramStretchSwitches[] = {"HISTOGRAM_STRETCH"};
constexpr std::string_view kHistogramStretchSTRETCHSEPARATIONCNTFixed[] = {"STRETCH_SEPARATION_CNT"};
constexpr SensibleRange kHistogramStretchSTRETCHSEPARATIONCNTSensible[] = {
    {"", {}, 0.0, 5.0, ValueShape::Any},
    {"", {}, 9.0, 9.0, ValueShape::Any},
};
constexpr std::string_view kHistogramStretchRESTRETCHOPTIONFixed[] = {"RESTRETCH_OPTION"};
constexpr SensibleRange kHistogramStretchRESTRETCHOPTIONSensible[] = {
    {"", {}, 0.0, 0.0, ValueShape::Any},
    {"", {}, 1.0, 1.0, ValueShape::Any},
    {"", {}, 2.0, 2.0, ValueShape::Any},
};
constexpr std::string_view kHistogramStretchLEFTLENLIMITFixed[] = {"LEFT_LEN_LIMIT"};
constexpr SensibleRange kHistogramStretchLEFTLENLIMITSensible[] = {{"", {}, 0.0, 1500.0, ValueShape::Any}};
constexpr std::string_view kHistogramStretchRIGHTLENLIMITFixed[] = {"RIGHT_LEN_LIMIT"};
constexpr SensibleRange kHistogramStretchRIGHTLENLIMITSensible[] = {{"", {}, 0.0, 1000.0, ValueShape::Any}};
constexpr std::string_view kHistogramStretchSTRETCHLEFTWEIGHTFixed[] = {"STRETCH_LEFT_WEIGHT"};
constexpr SensibleRange kHistogramStretchSTRETCHLEFTWEIGHTSensible[] = {{"", {}, 2.0, 8.0, ValueShape::Any}};
constexpr std::string_view kHistogramStretchSTRETCHRIGHTWEIGHTFixed[] = {"STRETCH_RIGHT_WEIGHT"};
constexpr std::string_view kHistogramStretchSTRETCHLIMITBINFixed[] = {"STRETCH_LIMITBIN"};
constexpr int32_t kHistogramStretchSTRETCHLIMITBINWhen0[] = {0, 1, 2};
constexpr int32_t kHistogramStretchSTRETCHLIMITBINWhen1[] = {3, 4, 5};
constexpr SensibleRange kHistogramStretchSTRETCHLIMITBINSensible[] = {
    {"STRETCH_SEPARATION_CNT", kHistogramStretchSTRETCHLIMITBINWhen0, 20.0, 200.0, ValueShape::Any},
    {"STRETCH_SEPARATION_CNT", kHistogramStretchSTRETCHLIMITBINWhen1, 1.0, 5.0, ValueShape::Any},
};
constexpr Key kHistogramStretchKeys[] = {
    {"STRETCH_SEPARATION_CNT", KeyType::Integer, "0", "0", 2, true, kHistogramStretchSTRETCHSEPARATIONCNTFixed,
     "0 to 5; 9 for the re-stretch alone", kHistogramStretchSTRETCHSEPARATIONCNTSensible,
     "How the object is found: see the table above.",
     "2 gives the strongest object contrast, 0 the gentlest. A value outside the table leaves only the "
     "re-stretch.", std::nullopt},
    {"RESTRETCH_OPTION", KeyType::Integer, "2", "2", 2, true, kHistogramStretchRESTRETCHOPTIONFixed,
     "0, 1, 2", kHistogramStretchRESTRETCHOPTIONSensible,
     "2: linear stretch from 0 to the brightest level that counts. 1: the smallest pixel is subtracted "
     "from all. Other: nothing.",
     "2 makes whites white, 1 makes air black.", std::nullopt},
    {"LEFT_LEN_LIMIT", KeyType::Integer, "1000", "1000", 2, true, kHistogramStretchLEFTLENLIMITFixed,
     "0 to 1500", kHistogramStretchLEFTLENLIMITSensible,
     "Output levels for the dark tail, at most.",
     "More: shadows open, the object begins lighter.", std::nullopt},
    {"RIGHT_LEN_LIMIT", KeyType::Integer, "500", "500", 2, true, kHistogramStretchRIGHTLENLIMITFixed,
     "0 to 1000", kHistogramStretchRIGHTLENLIMITSensible,
     "Output levels for the bright tail, at most.",
     "More: drawing in enamel and fillings; less: the object gets brighter.", std::nullopt},
    {"STRETCH_LEFT_WEIGHT", KeyType::Number, "4", "4", 2, true, kHistogramStretchSTRETCHLEFTWEIGHTFixed,
     "2 to 8", kHistogramStretchSTRETCHLEFTWEIGHTSensible,
     "Steepness of the dark tail.",
     "More: the tail keeps its contrast near the object and drops to black sooner.", std::nullopt},
    {"STRETCH_RIGHT_WEIGHT", KeyType::Number, "4", "4", 2, true, kHistogramStretchSTRETCHRIGHTWEIGHTFixed,
     "2 to 8", kHistogramStretchSTRETCHLEFTWEIGHTSensible,
     "Steepness of the bright tail.",
     "More: highlights leave the object sooner and flatten sooner.", std::nullopt},
    {"STRETCH_LIMITBIN", KeyType::Integer, "50", "50", 2, true, kHistogramStretchSTRETCHLIMITBINFixed,
     "modes 0, 1, 2: 20 to 200; modes 3, 4, 5: 1 to 5", kHistogramStretchSTRETCHLIMITBINSensible,
     "Modes 0 to 2: a valley must have fewer pixels than this per level, smoothed. Modes 3 to 5: percent "
     "of the pixels.",
     "Modes 3 to 5: more percent, more contrast and more cut off at the ends. The default is made for "
     "modes 0 to 2.", std::nullopt},
};
constexpr std::string_view kCLAHENotes[] = {
    "A flat frame, and a MAX_SLOPE of exactly 1, stay as they are; log and dump appear all the same.",
    "With an odd BLOCK_SIZE the last row of the padded frame is not mapped and rows of tiles shift by a pixel each: choose an even one, best a power of two.",
    "The fixed chain can give dark areas back their earlier values (CORRECTVAL): air and soft tissue stay free of lifted noise. NN_clahe_00.raw is the frame before, NN_clahe_01.raw after equalisation, NN_clahe.raw after this correction.",
    "The log prints MAX_SLOPE as CurveRatio.",
};
constexpr std::string_view kCLAHELog[] = {"CLAHE"};
constexpr std::string_view kCLAHEDumps[] = {"NN_clahe.raw"};
constexpr std::string_view kCLAHEFixedDumps[] = {"NN_clahe_00.raw", "NN_clahe_01.raw", "NN_clahe.raw"};
constexpr std::string_view kCLAHESwitches[] = {"CONTRAST_ENHANCE2"};
constexpr std::string_view kCLAHEBLOCKSIZEFixed[] = {"BLOCK_SIZE"};
constexpr SensibleRange kCLAHEBLOCKSIZESensible[] = {{"", {}, 64.0, 256.0, ValueShape::PowerOfTwo}};
constexpr std::string_view kCLAHEHISTOBINSFixed[] = {"HISTO_BINS"};
constexpr SensibleRange kCLAHEHISTOBINSSensible[] = {{"", {}, 128.0, 1024.0, ValueShape::Any}};
constexpr std::string_view kCLAHEMAXSLOPEFixed[] = {"MAX_SLOPE"};
constexpr SensibleRange kCLAHEMAXSLOPESensible[] = {{"", {}, 1.2, 3.0, ValueShape::Any}};
constexpr Key kCLAHEKeys[] = {
    {"BLOCK_SIZE", KeyType::Integer, "64", "64", 3, true, kCLAHEBLOCKSIZEFixed,
     "64 to 256, a power of two", kCLAHEBLOCKSIZESensible,
     "Edge of a tile, in pixels.",
     "Small: contrast of details; large: contrast of whole structures, more natural.", std::nullopt},
    {"HISTO_BINS", KeyType::Integer, "256", "256", 3, true, kCLAHEHISTOBINSFixed,
     "128 to 1024", kCLAHEHISTOBINSSensible,
     "Bins of a tile histogram; 0 means 128.",
     "Few: visible steps in smooth areas. Many: slower, smoother.", std::nullopt},
    {"MAX_SLOPE", KeyType::Number, "1.5", "1.5", 3, true, kCLAHEMAXSLOPEFixed,
     "1.2 to 3", kCLAHEMAXSLOPESensible,
     "Clip limit: how many times its fair share a bin may keep. 0 or below: in effect no limit.",
     "The strength. 1.3 is gentle, 2 is clear, above 3 noise rules.", std::nullopt},
};
constexpr std::string_view kUnsharpNotes[] = {
    "The stage dumps and logs in every mode, also where it changes nothing.",
    "Mode 3 with NOISE_WIDTH_CONTRAST 0 finds no tails.",
    "In mode 5 a ReduceTimeRatio_CONTRAST of 0 or less takes the frame itself for its smoothed copy: nothing differs from it, so that the first term adds nothing and only the second one is left.",
    "Mode 5 needs NOISE_WIDTH_CONTRAST above 0; at 0 there is no activity and only the upper limit is applied. A sum below 0 wraps around and comes out white, as specks in the dark beside an edge. Where black lies near level 0 this happens at a gain of 0.25 already: lift black by some hundred levels first (see [linear](linear.md)).",
    "In the fixed chain mode 3 spares the dark tail that the [stretch](stretch.md) marked, with a soft border.",
};
constexpr std::string_view kUnsharpLog[] = {"AdaptiveUnsharp"};
constexpr std::string_view kUnsharpDumps[] = {"NN_Unsharp<mode>.raw"};
constexpr std::string_view kUnsharpSwitches[] = {"CONTRAST_ENHANCE"};
constexpr std::string_view kUnsharpGAUSSIANSIZECONTRASTFixed[] = {"GAUSSIAN_SIZE_CONTRAST"};
constexpr int32_t kUnsharpGAUSSIANSIZECONTRASTWhen0[] = {1, 3};
constexpr int32_t kUnsharpGAUSSIANSIZECONTRASTWhen1[] = {5};
constexpr SensibleRange kUnsharpGAUSSIANSIZECONTRASTSensible[] = {
    {"MODE_CONTRAST", kUnsharpGAUSSIANSIZECONTRASTWhen0, 2.0, 12.0, ValueShape::Any},
    {"MODE_CONTRAST", kUnsharpGAUSSIANSIZECONTRASTWhen1, 0.1, 0.5, ValueShape::Any},
};
constexpr std::string_view kUnsharpENAHCNEDRATIOCONTRASTFixed[] = {"ENAHCNED_RATIO_CONTRAST"};
constexpr int32_t kUnsharpENAHCNEDRATIOCONTRASTWhen0[] = {1};
constexpr int32_t kUnsharpENAHCNEDRATIOCONTRASTWhen1[] = {3};
constexpr SensibleRange kUnsharpENAHCNEDRATIOCONTRASTSensible[] = {
    {"MODE_CONTRAST", kUnsharpENAHCNEDRATIOCONTRASTWhen0, 0.8, 3.0, ValueShape::Any},
    {"MODE_CONTRAST", kUnsharpENAHCNEDRATIOCONTRASTWhen1, 1.0, 3.0, ValueShape::Any},
    {"MODE_CONTRAST", kUnsharpGAUSSIANSIZECONTRASTWhen1, 0.0, 0.5, ValueShape::Any},
};
constexpr std::string_view kUnsharpNOISEWIDTHCONTRASTFixed[] = {"NOISE_WIDTH_CONTRAST"};
constexpr SensibleRange kUnsharpNOISEWIDTHCONTRASTSensible[] = {
    {"MODE_CONTRAST", kUnsharpENAHCNEDRATIOCONTRASTWhen0, 0.0, 200.0, ValueShape::Any},
    {"MODE_CONTRAST", kUnsharpENAHCNEDRATIOCONTRASTWhen1, 1.0, 20.0, ValueShape::Any},
    {"MODE_CONTRAST", kUnsharpGAUSSIANSIZECONTRASTWhen1, 3.0, 15.0, ValueShape::Any},
};
constexpr std::string_view kUnsharpMODECONTRASTFixed[] = {"MODE_CONTRAST"};
constexpr SensibleRange kUnsharpMODECONTRASTSensible[] = {
    {"", {}, 1.0, 1.0, ValueShape::Any},
    {"", {}, 3.0, 3.0, ValueShape::Any},
    {"", {}, 5.0, 5.0, ValueShape::Any},
};
constexpr SensibleRange kUnsharpPROTECTOUTLINECONTRASTSensible[] = {
    {"MODE_CONTRAST", kUnsharpGAUSSIANSIZECONTRASTWhen1, 0.0, 40.0, ValueShape::Any},
};
constexpr SensibleRange kUnsharpReduceTimeRatioCONTRASTSensible[] = {
    {"MODE_CONTRAST", kUnsharpENAHCNEDRATIOCONTRASTWhen0, 1.0, 4.0, ValueShape::Any},
    {"MODE_CONTRAST", kUnsharpENAHCNEDRATIOCONTRASTWhen0, -1.0, -1.0, ValueShape::Any},
    {"MODE_CONTRAST", kUnsharpGAUSSIANSIZECONTRASTWhen1, 10.0, 40.0, ValueShape::Any},
};
constexpr Key kUnsharpKeys[] = {
    {"GAUSSIAN_SIZE_CONTRAST", KeyType::Number, "3", "3", 4, true, kUnsharpGAUSSIANSIZECONTRASTFixed,
     "modes 1 and 3: 2 to 12; mode 5: 0.1 to 0.5", kUnsharpGAUSSIANSIZECONTRASTSensible,
     "See the table above; sigma in pixels in modes 1 and 3.",
     "Small: fine lines. Large: whole structures get relief.", std::nullopt},
    {"ENAHCNED_RATIO_CONTRAST", KeyType::Number, "2", "2", 4, true, kUnsharpENAHCNEDRATIOCONTRASTFixed,
     "mode 1: 0.8 to 3; mode 3: 1 to 3; mode 5: 0 to 0.5", kUnsharpENAHCNEDRATIOCONTRASTSensible,
     "See the table above. The key is spelled so.",
     "The strength; in mode 1 at hard edges.", std::nullopt},
    {"NOISE_WIDTH_CONTRAST", KeyType::Integer, "0", "0", 4, true, kUnsharpNOISEWIDTHCONTRASTFixed,
     "mode 1: 0 to 200; mode 3: 1 to 20; mode 5: 3 to 15", kUnsharpNOISEWIDTHCONTRASTSensible,
     "See the table above.",
     "Mode 1: 0 turns flat areas into their blurred copy, 100 leaves them, above 100 sharpens them too, "
     "noise included.", std::nullopt},
    {"MODE_CONTRAST", KeyType::Integer, "0", "0", 4, true, kUnsharpMODECONTRASTFixed,
     "1, 3, 5", kUnsharpMODECONTRASTSensible,
     "Method: see the table above. The default does nothing.",
     "1 for general use.", std::nullopt},
    {"PROTECTOUTLINE_CONTRAST", KeyType::Integer, "1", "1", 4, true, {},
     "mode 5: 0 to 40", kUnsharpPROTECTOUTLINECONTRASTSensible,
     "Configured chain only, read by mode 5: see the table above.",
     "A second, broader scale of detail.", std::nullopt},
    {"ReduceTimeRatio_CONTRAST", KeyType::Integer, "1", "1", 4, true, {},
     "mode 1: 1 to 4, or -1; mode 5: 10 to 40", kUnsharpReduceTimeRatioCONTRASTSensible,
     "Configured chain only (the fixed chain works as with 1): see the table above.",
     "Mode 1: more is faster; beyond a third of sigma it shows.", std::nullopt},
};
constexpr Stage kStages[] = {
    {1, "PreContrastProc", "Pre-contrast", "pre-contrast",
     R"text(Raises contrast between large structures: the difference between the frame and a heavily blurred copy of it is
multiplied and added back to the copy, `blurred + (frame - blurred) * ratio`. Results are cut to 0 and the largest
pixel value.)text",
     "Teeth stand out from bone, and the slow drift of brightness over the frame becomes smaller. Too much"
     " gives broad dark and bright seams along crowns and fillings, as wide as the blur.",
     "Unsharp masking with a very broad mask; in pictures since Schreiber (1970).",
     kPreContrastProcNotes, kPreContrastProcLog, kPreContrastProcLog, kPreContrastProcDumps, kPreContrastProcDumps, {}, {}, kPreContrastProcSwitches, kPreContrastProcKeys},
    {2, "HistogramStretch", "Histogram stretch", "stretch",
     R"text(Divides the levels into dark tail, object and bright tail, gives most of the output range to the object by a straight
ramp and folds each tail into a small share. Afterwards the re-stretch fills the range again.

| STRETCH_SEPARATION_CNT | Object begins (configured chain) | Object ends (configured chain) | In the fixed chain |
|---|---|---|---|
| 0 | level 0 | last occupied level | smallest to largest pixel |
| 1 | left valley | last occupied level | left valley to largest pixel |
| 2 | left valley | right valley | the same |
| 3 | STRETCH_LIMITBIN percent of the pixels from below | the same percent from above | no curve, re-stretch only |
| 4 | that percent from below | last occupied level | no curve, re-stretch only |
| 5 | first occupied level | that percent from above | no curve, re-stretch only |
| other | no curve, re-stretch only | | no curve, re-stretch only |)text",
     "The object gains contrast over its whole range while air and metal keep a trace of drawing. With too"
     " little room for a tail its structures run together; with too much the object turns flat.",
     "A piecewise curve of this system: a straight ramp for the object, halves of logistic curves "
     "(Verhulst, 1845) for the tails. Valleys of the smoothed histogram bound the object; their search "
     "starts at the threshold of Otsu (1979).",
     kHistogramStretchNotes, kHistogramStretchLog, kHistogramStretchLog, kHistogramStretchDumps, kHistogramStretchFixedDumps, kHistogramStretchCurves, kHistogramStretchCurves, kHistogramStretchSwitches, kHistogramStretchKeys},
    {3, "CLAHE", "CLAHE", "clahe",
     R"text(Divides the frame into square tiles, equalises a clipped histogram of each, and maps every pixel through the curves of
the four nearest tiles, weighted by distance. Results stay between the frame's smallest and largest pixel. A frame
whose size is a whole multiple of the tile gets one more row and column of tiles.)text",
     "Dark and bright regions show the same amount of structure. Too steep a limit lifts noise in air and "
     "soft tissue and draws halos around fillings; too small a tile makes large structures flat and "
     "patchy.",
     "Contrast-limited adaptive histogram equalisation: Zuiderveld (1994), after Pizer et al. (1987).",
     kCLAHENotes, kCLAHELog, kCLAHELog, kCLAHEDumps, kCLAHEFixedDumps, {}, {}, kCLAHESwitches, kCLAHEKeys},
    {4, "Unsharp", "Adaptive unsharp", "adaptive-unsharp",
     R"text(Sharpens by adding a multiple of the difference to a blurred copy. MODE_CONTRAST picks the method, and with it what
the other keys mean:

| Key | Mode 1: weighted by edges | Mode 3: shaped by the detail histogram | Mode 4 | Mode 5: weighted by activity |
|---|---|---|---|---|
| GAUSSIAN_SIZE_CONTRAST | sigma of the blur | sigma of the blur | none | gain of the first term |
| ENAHCNED_RATIO_CONTRAST | gain at the strongest edge | gain | none | gain of the second term |
| NOISE_WIDTH_CONTRAST | gain of the flattest pixel, in percent | limit for the histogram's tails, in percent of the counts beside its peak | none | radius of the activity measure |
| ReduceTimeRatio_CONTRAST | reduction factor of the blur; -1: a box instead | none | none | radius of the first term's box |
| PROTECTOUTLINE_CONTRAST | none | none | none | radius of the second term's box; 0 or below: no second term |

Mode 4 gives the frame back as it is, limited to the largest pixel value. Modes 0 and 2, the default and all others do
nothing. The fixed chain has no mode 5.)text",
     "Lines, canals and trabeculae become crisp. Too much gives bright and dark rims along enamel and "
     "metal, and grain. In mode 1 a ratio at or below the flat gain (NOISE_WIDTH_CONTRAST / 100) spares "
     "hard edges: fine detail without rims.",
     "Unsharp masking (Schreiber, 1970) with a gain that depends on the pixel. Mode 1 weighs by the edge "
     "operator of Sobel and Feldman (1968); modes 3 and 5 are this system's own.",
     kUnsharpNotes, kUnsharpLog, kUnsharpLog, kUnsharpDumps, kUnsharpDumps, {}, {}, kUnsharpSwitches, kUnsharpKeys},
};

}  // namespace

std::span<const Stage> StageRows1To4() { return kStages; }

}  // namespace vastrelline
