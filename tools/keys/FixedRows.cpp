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

constexpr std::string_view kFixedNotes[] = {
    "A missing section runs on the defaults: inversion, corners and the linear curve. There is no range normalisation, and the sensor's values are not brought into the profile.",
    "The log is started anew by each run, and dumps count from 00 in each run.",
    "In the CR chain INTRAORAL_MASK and PYRAMID_PROCESSING have no effect; its backup also keeps the profile.",
};
constexpr SensibleRange kFixedSAVEIMAGESensible[] = {
    {"", {}, 0.0, 0.0, ValueShape::Any},
    {"", {}, 1.0, 1.0, ValueShape::Any},
};
constexpr SensibleRange kFixedBITSTOREDSensible[] = {{"", {}, 12.0, 12.0, ValueShape::Any}};
constexpr SensibleRange kFixedSATURATIONVALUESensible[] = {
    {"", {}, 1.0, std::numeric_limits<double>::infinity(), ValueShape::Any},
};
constexpr SensibleRange kFixedOUTPUTRANGESensible[] = {{"", {}, 4095.0, 4095.0, ValueShape::Any}};
constexpr SensibleRange kFixedSTRETCHSEPARATIONCNTSensible[] = {
    {"", {}, 0.0, 5.0, ValueShape::Any},
    {"", {}, 9.0, 9.0, ValueShape::Any},
};
constexpr SensibleRange kFixedRESTRETCHOPTIONSensible[] = {
    {"", {}, 0.0, 0.0, ValueShape::Any},
    {"", {}, 1.0, 1.0, ValueShape::Any},
    {"", {}, 2.0, 2.0, ValueShape::Any},
};
constexpr SensibleRange kFixedLEFTLENLIMITSensible[] = {{"", {}, 0.0, 1500.0, ValueShape::Any}};
constexpr SensibleRange kFixedRIGHTLENLIMITSensible[] = {{"", {}, 0.0, 1000.0, ValueShape::Any}};
constexpr SensibleRange kFixedSTRETCHLEFTWEIGHTSensible[] = {{"", {}, 2.0, 8.0, ValueShape::Any}};
constexpr int32_t kFixedSTRETCHLIMITBINWhen0[] = {0, 1, 2};
constexpr int32_t kFixedSTRETCHLIMITBINWhen1[] = {3, 4, 5};
constexpr SensibleRange kFixedSTRETCHLIMITBINSensible[] = {
    {"STRETCH_SEPARATION_CNT", kFixedSTRETCHLIMITBINWhen0, 20.0, 200.0, ValueShape::Any},
    {"STRETCH_SEPARATION_CNT", kFixedSTRETCHLIMITBINWhen1, 1.0, 5.0, ValueShape::Any},
};
constexpr SensibleRange kFixedINVERSEINTENSITYSensible[] = {{"", {}, 0.0, 2.0, ValueShape::Any}};
constexpr int32_t kFixedINVERSELOGRATIOWhen0[] = {2};
constexpr SensibleRange kFixedINVERSELOGRATIOSensible[] = {
    {"INVERSE_INTENSITY", kFixedINVERSELOGRATIOWhen0, 0.05, 2.0, ValueShape::Any},
};
constexpr SensibleRange kFixedPREMEDIANSIZESensible[] = {{"", {}, 3.0, 7.0, ValueShape::Odd}};
constexpr SensibleRange kFixedPREGAUSSIANSIZESensible[] = {{"", {}, 0.5, 2.0, ValueShape::Any}};
constexpr int32_t kFixedGAUSSIANSIZECONTRASTWhen0[] = {1, 3};
constexpr int32_t kFixedGAUSSIANSIZECONTRASTWhen1[] = {5};
constexpr SensibleRange kFixedGAUSSIANSIZECONTRASTSensible[] = {
    {"MODE_CONTRAST", kFixedGAUSSIANSIZECONTRASTWhen0, 2.0, 12.0, ValueShape::Any},
    {"MODE_CONTRAST", kFixedGAUSSIANSIZECONTRASTWhen1, 0.1, 0.5, ValueShape::Any},
};
constexpr int32_t kFixedENAHCNEDRATIOCONTRASTWhen0[] = {1};
constexpr int32_t kFixedENAHCNEDRATIOCONTRASTWhen1[] = {3};
constexpr SensibleRange kFixedENAHCNEDRATIOCONTRASTSensible[] = {
    {"MODE_CONTRAST", kFixedENAHCNEDRATIOCONTRASTWhen0, 0.8, 3.0, ValueShape::Any},
    {"MODE_CONTRAST", kFixedENAHCNEDRATIOCONTRASTWhen1, 1.0, 3.0, ValueShape::Any},
    {"MODE_CONTRAST", kFixedGAUSSIANSIZECONTRASTWhen1, 0.0, 0.5, ValueShape::Any},
};
constexpr SensibleRange kFixedNOISEWIDTHCONTRASTSensible[] = {
    {"MODE_CONTRAST", kFixedENAHCNEDRATIOCONTRASTWhen0, 0.0, 200.0, ValueShape::Any},
    {"MODE_CONTRAST", kFixedENAHCNEDRATIOCONTRASTWhen1, 1.0, 20.0, ValueShape::Any},
    {"MODE_CONTRAST", kFixedGAUSSIANSIZECONTRASTWhen1, 3.0, 15.0, ValueShape::Any},
};
constexpr SensibleRange kFixedMODECONTRASTSensible[] = {
    {"", {}, 1.0, 1.0, ValueShape::Any},
    {"", {}, 3.0, 3.0, ValueShape::Any},
};
constexpr SensibleRange kFixedBLOCKSIZESensible[] = {{"", {}, 64.0, 256.0, ValueShape::PowerOfTwo}};
constexpr SensibleRange kFixedHISTOBINSSensible[] = {{"", {}, 128.0, 1024.0, ValueShape::Any}};
constexpr SensibleRange kFixedMAXSLOPESensible[] = {{"", {}, 1.2, 3.0, ValueShape::Any}};
constexpr SensibleRange kFixedPYRAMIDLAYERSensible[] = {{"", {}, 2.0, 6.0, ValueShape::Any}};
constexpr SensibleRange kFixedGAUSSIANSIZESensible[] = {{"", {}, 0.8, 1.5, ValueShape::Any}};
constexpr SensibleRange kFixedENHANCEDRATIOSensible[] = {{"", {}, 1.0, 2.0, ValueShape::Any}};
constexpr SensibleRange kFixedNOISEWIDTHSensible[] = {{"", {}, 50.0, 100.0, ValueShape::Any}};
constexpr SensibleRange kFixedNOISECUTLIMITSensible[] = {{"", {}, 0.001, 0.05, ValueShape::Any}};
constexpr SensibleRange kFixedPOSTSIGMOIDRATIOSensible[] = {
    {"", {}, 0.0, 0.0, ValueShape::Any},
    {"", {}, 0.3, 0.7, ValueShape::Any},
};
constexpr SensibleRange kFixedPOSTGAMMARATIOSensible[] = {
    {"", {}, 1.0, 2.0, ValueShape::Any},
    {"", {}, -2.0, -1.0, ValueShape::Any},
    {"", {}, 0.01, 0.5, ValueShape::Any},
};
constexpr SensibleRange kFixedPOSTMEDIANREPEATSensible[] = {{"", {}, 1.0, 3.0, ValueShape::Any}};
constexpr SensibleRange kFixedPRECONTRASTMASKSensible[] = {{"", {}, 10.0, 80.0, ValueShape::Any}};
constexpr SensibleRange kFixedPRECONTRASTRATIOSensible[] = {{"", {}, 1.05, 1.5, ValueShape::Any}};
constexpr SensibleRange kFixedPRECONTRASTRESCALESensible[] = {{"", {}, 1.0, 4.0, ValueShape::Any}};
constexpr SensibleRange kFixedADAPTIVESMOOTHINGMASKSensible[] = {{"", {}, 5.0, 21.0, ValueShape::Odd}};
constexpr SensibleRange kFixedADAPTIVESMOOTHINGORDERSensible[] = {{"", {}, 2.0, 6.0, ValueShape::Even}};
constexpr Key kFixedKeys[] = {
    {"VERSION", KeyType::Text, "", "", 0, true, {},
     "any text", {},
     "Printed in the log's start line.",
     "", std::nullopt},
    {"SAVE_IMAGE", KeyType::Integer, "0", "0", 0, true, {},
     "0 or 1", kFixedSAVEIMAGESensible,
     "Not 0: raw dumps and curve files.",
     "", std::nullopt},
    {"SAVE_LOG", KeyType::Integer, "0", "0", 0, true, {},
     "0 or 1", kFixedSAVEIMAGESensible,
     "Not 0: ExtraOralLog.txt beside the profile, written anew.",
     "", std::nullopt},
    {"WRITE_PATH", KeyType::Text, "", "", 0, true, {},
     "a folder that exists, with a separator at its end", {},
     "Folder of the dumps, with a separator at its end.",
     "", std::nullopt},
    {"BITALLOCATED", KeyType::Integer, "16", "16", 0, false, {},
     "", {},
     "No effect.",
     "", std::nullopt},
    {"BITSTORED", KeyType::Integer, "12", "12", 0, true, {},
     "12", kFixedBITSTOREDSensible,
     "Significant bits of a pixel.",
     "", std::nullopt},
    {"LITTLEENDIAN", KeyType::Integer, "1", "1", 0, false, {},
     "", {},
     "No effect.",
     "", std::nullopt},
    {"SATURATION_VALUE", KeyType::Integer, "4095", "4095", 0, true, {},
     "1 or more: the level at which the sensor saturates", kFixedSATURATIONVALUESensible,
     "Pixels from here on count as saturated.",
     "", std::nullopt},
    {"OUTPUTRANGE", KeyType::Integer, "4095", "4095", 0, true, {},
     "4095", kFixedOUTPUTRANGESensible,
     "Top of the result of sigmoid, linear and gamma curve.",
     "", std::nullopt},
    {"INTRAORAL_MASK", KeyType::Integer, "1", "1", 0, true, {},
     "0 or 1", kFixedSAVEIMAGESensible,
     "Not 0: rounded corners are filled and restored. The mask comes from section Settings.",
     "", std::nullopt},
    {"HISTOGRAM_STRETCH", KeyType::Integer, "0", "0", 2, true, {},
     "0 or 1", kFixedSAVEIMAGESensible,
     "Not 0: the stretch runs.",
     "", std::nullopt},
    {"PRE_MEDIAN", KeyType::Integer, "0", "0", 7, true, {},
     "0 or 1", kFixedSAVEIMAGESensible,
     "Not 0: the first median runs.",
     "", std::nullopt},
    {"PRE_GAUSSIAN", KeyType::Integer, "0", "0", 8, true, {},
     "0 or 1", kFixedSAVEIMAGESensible,
     "Not 0: the first Gaussian runs.",
     "", std::nullopt},
    {"POST_GAUSSIAN", KeyType::Integer, "0", "0", 8, true, {},
     "0 or 1", kFixedSAVEIMAGESensible,
     "Not 0: the second Gaussian runs.",
     "", std::nullopt},
    {"POST_SIGMOID_LUT", KeyType::Integer, "0", "0", 9, true, {},
     "0 or 1", kFixedSAVEIMAGESensible,
     "Not 0: sigmoid curve; 0: linear curve.",
     "", std::nullopt},
    {"POST_GAMMA_LUT", KeyType::Integer, "0", "0", 10, true, {},
     "0 or 1", kFixedSAVEIMAGESensible,
     "Not 0: the gamma curve runs.",
     "", std::nullopt},
    {"POST_MEDIAN", KeyType::Integer, "0", "0", 7, true, {},
     "0 or 1", kFixedSAVEIMAGESensible,
     "Not 0: the second median runs.",
     "", std::nullopt},
    {"CONTRAST_ENHANCE2", KeyType::Integer, "0", "0", 3, true, {},
     "0 or 1", kFixedSAVEIMAGESensible,
     "Not 0: CLAHE runs.",
     "", std::nullopt},
    {"CONTRAST_ENHANCE", KeyType::Integer, "0", "0", 4, true, {},
     "0 or 1", kFixedSAVEIMAGESensible,
     "Not 0: adaptive unsharp runs.",
     "", std::nullopt},
    {"PYRAMID_PROCESSING", KeyType::Integer, "0", "0", 6, true, {},
     "0 or 1", kFixedSAVEIMAGESensible,
     "Not 0: the pyramid runs.",
     "", std::nullopt},
    {"PRE_CONTRAST", KeyType::Integer, "0", "0", 1, true, {},
     "0 or 1", kFixedSAVEIMAGESensible,
     "Not 0: pre-contrast runs.",
     "", std::nullopt},
    {"ADAPTIVE_SMOOTHING", KeyType::Integer, "0", "0", 5, true, {},
     "0 or 1", kFixedSAVEIMAGESensible,
     "Not 0: adaptive smoothing runs.",
     "", std::nullopt},
    {"STRETCH_SEPARATION_CNT", KeyType::Integer, "0", "0", 2, true, {},
     "0 to 5; 9 for the re-stretch alone", kFixedSTRETCHSEPARATIONCNTSensible,
     "How the object is found: see the table above.",
     "2 gives the strongest object contrast, 0 the gentlest. A value outside the table leaves only the "
     "re-stretch.", std::nullopt},
    {"RESTRETCH_OPTION", KeyType::Integer, "2", "2", 2, true, {},
     "0, 1, 2", kFixedRESTRETCHOPTIONSensible,
     "2: linear stretch from 0 to the brightest level that counts. 1: the smallest pixel is subtracted "
     "from all. Other: nothing.",
     "2 makes whites white, 1 makes air black.", std::nullopt},
    {"LEFT_LEN_LIMIT", KeyType::Integer, "1000", "1000", 2, true, {},
     "0 to 1500", kFixedLEFTLENLIMITSensible,
     "Output levels for the dark tail, at most.",
     "More: shadows open, the object begins lighter.", std::nullopt},
    {"RIGHT_LEN_LIMIT", KeyType::Integer, "500", "500", 2, true, {},
     "0 to 1000", kFixedRIGHTLENLIMITSensible,
     "Output levels for the bright tail, at most.",
     "More: drawing in enamel and fillings; less: the object gets brighter.", std::nullopt},
    {"STRETCH_LEFT_WEIGHT", KeyType::Number, "4", "4", 2, true, {},
     "2 to 8", kFixedSTRETCHLEFTWEIGHTSensible,
     "Steepness of the dark tail.",
     "More: the tail keeps its contrast near the object and drops to black sooner.", std::nullopt},
    {"STRETCH_RIGHT_WEIGHT", KeyType::Number, "4", "4", 2, true, {},
     "2 to 8", kFixedSTRETCHLEFTWEIGHTSensible,
     "Steepness of the bright tail.",
     "More: highlights leave the object sooner and flatten sooner.", std::nullopt},
    {"STRETCH_LIMITBIN", KeyType::Integer, "50", "50", 2, true, {},
     "modes 0, 1, 2: 20 to 200; modes 3, 4, 5: 1 to 5", kFixedSTRETCHLIMITBINSensible,
     "Modes 0 to 2: a valley must have fewer pixels than this per level, smoothed. Modes 3 to 5: percent "
     "of the pixels.",
     "Modes 3 to 5: more percent, more contrast and more cut off at the ends. The default is made for "
     "modes 0 to 2.", std::nullopt},
    {"INVERSE_INTENSITY", KeyType::Integer, "1", "1", 0, true, {},
     "0 to 2", kFixedINVERSEINTENSITYSensible,
     "0: no inversion. 1: plain. 2: logarithmic. Other: pixels stay, and corners are restored as in an "
     "inverted frame.",
     "", std::nullopt},
    {"INVERSE_LOGRATIO", KeyType::Number, "0.2", "0.2", 0, true, {},
     "mode 2: 0.05 to 2", kFixedINVERSELOGRATIOSensible,
     "Mode 2: how straight the curve is.",
     "", std::nullopt},
    {"PRE_MEDIAN_SIZE", KeyType::Integer, "3", "3", 7, true, {},
     "3 to 7, odd", kFixedPREMEDIANSIZESensible,
     "Window of the first median, in pixels.",
     "More: larger specks disappear, and fine detail with them.", std::nullopt},
    {"PRE_GAUSSIAN_SIZE", KeyType::Number, "1", "1", 8, true, {},
     "0.5 to 2", kFixedPREGAUSSIANSIZESensible,
     "Sigma of the first Gaussian, in pixels.",
     "More: softer.", std::nullopt},
    {"GAUSSIAN_SIZE_CONTRAST", KeyType::Number, "3", "3", 4, true, {},
     "modes 1 and 3: 2 to 12; mode 5: 0.1 to 0.5", kFixedGAUSSIANSIZECONTRASTSensible,
     "See the table above; sigma in pixels in modes 1 and 3.",
     "Small: fine lines. Large: whole structures get relief.", std::nullopt},
    {"ENAHCNED_RATIO_CONTRAST", KeyType::Number, "2", "2", 4, true, {},
     "mode 1: 0.8 to 3; mode 3: 1 to 3; mode 5: 0 to 0.5", kFixedENAHCNEDRATIOCONTRASTSensible,
     "See the table above. The key is spelled so.",
     "The strength; in mode 1 at hard edges.", std::nullopt},
    {"NOISE_WIDTH_CONTRAST", KeyType::Integer, "0", "0", 4, true, {},
     "mode 1: 0 to 200; mode 3: 1 to 20; mode 5: 3 to 15", kFixedNOISEWIDTHCONTRASTSensible,
     "See the table above.",
     "Mode 1: 0 turns flat areas into their blurred copy, 100 leaves them, above 100 sharpens them too, "
     "noise included.", std::nullopt},
    {"MODE_CONTRAST", KeyType::Integer, "0", "0", 4, true, {},
     "1, 3", kFixedMODECONTRASTSensible,
     "Method: see the table above. The default does nothing.",
     "1 for general use.", std::nullopt},
    {"BLOCK_SIZE", KeyType::Integer, "64", "64", 3, true, {},
     "64 to 256, a power of two", kFixedBLOCKSIZESensible,
     "Edge of a tile, in pixels.",
     "Small: contrast of details; large: contrast of whole structures, more natural.", std::nullopt},
    {"HISTO_BINS", KeyType::Integer, "256", "256", 3, true, {},
     "128 to 1024", kFixedHISTOBINSSensible,
     "Bins of a tile histogram; 0 means 128.",
     "Few: visible steps in smooth areas. Many: slower, smoother.", std::nullopt},
    {"MAX_SLOPE", KeyType::Number, "1.5", "1.5", 3, true, {},
     "1.2 to 3", kFixedMAXSLOPESensible,
     "Clip limit: how many times its fair share a bin may keep. 0 or below: in effect no limit.",
     "The strength. 1.3 is gentle, 2 is clear, above 3 noise rules.", std::nullopt},
    {"CORRECTVAL", KeyType::Integer, "1", "1", 3, true, {},
     "0 or 1", kFixedSAVEIMAGESensible,
     "Fixed chain only. Not 0: dark areas take their values from before, with a soft border.",
     "1 keeps air calm and dark.", std::nullopt},
    {"PYRAMID_LAYER", KeyType::Integer, "3", "3", 6, true, {},
     "2 to 6", kFixedPYRAMIDLAYERSensible,
     "Layers; one band fewer is made. 1 changes nothing.",
     "More: coarser structures are lifted too.", std::nullopt},
    {"GAUSSIAN_SIZE", KeyType::Number, "1", "1", 6, true, {},
     "0.8 to 1.5", kFixedGAUSSIANSIZESensible,
     "Sigma of every smoothing in the stage, in pixels of the layer.",
     "More: broader bands; in the configured chain also a slightly softer frame.", std::nullopt},
    {"APPLY_VARIABLE_RATIO", KeyType::Integer, "0", "0", 6, true, {},
     "0 or 1", kFixedSAVEIMAGESensible,
     "Not 0: band i of L layers gets the gain times (i + 1) / L, the first times 1 / L, clamped to 1 and "
     "the gain; the cut limit falls from band to band.",
     "1 spares the finest band, which is mostly noise.", std::nullopt},
    {"ENHANCED_RATIO", KeyType::Number, "1.5", "1.5", 6, true, {},
     "1 to 2", kFixedENHANCEDRATIOSensible,
     "Gain.",
     "The strength.", std::nullopt},
    {"NOISE_WIDTH", KeyType::Integer, "100", "100", 6, true, {},
     "0.5 to 1; fixed chain 50 to 100", kFixedNOISEWIDTHSensible,
     "Share of the noise limit up to which the curve is a straight line. In the fixed chain an integer in "
     "percent.",
     "Less: small differences, noise with them, are lifted much more.", std::nullopt},
    {"APPLY_DIFF_ENHANCE", KeyType::Integer, "1", "1", 6, true, {},
     "0 or 1", kFixedSAVEIMAGESensible,
     "0: bands are taken apart and added up as they are.",
     "0 shows what splitting and adding up alone do.", std::nullopt},
    {"NOISE_CUTLIMIT", KeyType::Number, "0.01", "0.01", 6, true, {},
     "0.001 to 0.05", kFixedNOISECUTLIMITSensible,
     "Fraction of a band histogram's peak at which the noise limit lies.",
     "Less: the limit lies further out, and more structure is lifted.", std::nullopt},
    {"POST_GAUSSIAN_SIZE", KeyType::Number, "1", "1", 8, true, {},
     "0.5 to 2", kFixedPREGAUSSIANSIZESensible,
     "Sigma of the second Gaussian, in pixels.",
     "More: softer.", std::nullopt},
    {"POST_SIGMOID_RATIO", KeyType::Number, "0", "0", 9, true, {},
     "0, or 0.3 to 0.7", kFixedPOSTSIGMOIDRATIOSensible,
     "0: the centre lies in the middle of the occupied levels. Otherwise the fraction of the pixels below "
     "the centre.",
     "More: darker.", std::nullopt},
    {"POST_GAMMA_RATIO", KeyType::Number, "0.5", "0.5", 10, true, {},
     "1 to 2, -2 to -1, or a fraction of 0.01 to 0.5", kFixedPOSTGAMMARATIOSensible,
     "Magnitude 1 or more: the exponent, its sign the family. Below 1: the fraction of the brightest "
     "pixels from whose level the exponent is derived.",
     "1 is a straight stretch; more is darker.", std::nullopt},
    {"POST_MEDIAN_SIZE", KeyType::Integer, "3", "3", 7, true, {},
     "3 to 7, odd", kFixedPREMEDIANSIZESensible,
     "Window of the second median, in pixels.",
     "More: larger specks disappear, and fine detail with them.", std::nullopt},
    {"POST_MEDIAN_REPEAT", KeyType::Integer, "3", "3", 7, true, {},
     "1 to 3", kFixedPOSTMEDIANREPEATSensible,
     "Passes of the second median.",
     "More: flatter patches.", std::nullopt},
    {"PRECONTRAST_MASK", KeyType::Number, "15", "15", 1, true, {},
     "10 to 80", kFixedPRECONTRASTMASKSensible,
     "Sigma of the blur, in pixels of the frame.",
     "Small: edges of single structures. Large: whole teeth against their surroundings.", std::nullopt},
    {"PRECONTRAST_RATIO", KeyType::Number, "1.25", "1.25", 1, true, {},
     "1.05 to 1.5", kFixedPRECONTRASTRATIOSensible,
     "Gain of the difference. 1 changes nothing; below 1 softens.",
     "More: more relief, and seams along hard edges.", std::nullopt},
    {"PRECONTRAST_RESCALE", KeyType::Number, "2", "2", 1, true, {},
     "1 to 4", kFixedPRECONTRASTRESCALESensible,
     "Above 1: the blur runs on a frame reduced by this factor, whole part only. Otherwise at full size.",
     "Hardly seen at a broad blur; it saves time.", std::nullopt},
    {"ADAPTIVESMOOTHING_MASK", KeyType::Integer, "15", "15", 5, true, {},
     "mode 0: 5 to 21, odd; mode 1: 0.8 to 3", kFixedADAPTIVESMOOTHINGMASKSensible,
     "Mode 0: taps of the kernel, whole part (an integer key in the fixed chain). Mode 1: sigma of the "
     "blur, in pixels.",
     "More: smoother.", std::nullopt},
    {"ADAPTIVESMOOTHING_ORDER", KeyType::Integer, "4", "4", 5, true, {},
     "mode 0: 2 to 6, even; mode 1: -30 to 30", kFixedADAPTIVESMOOTHINGORDERSensible,
     "Mode 0: degree of the polynomial. Mode 1: threshold in percent of the deviation that counts as full;"
     " below it all is blurred; a negative one keeps more of the frame.",
     "Mode 0: higher keeps more detail and noise. Mode 1: higher blurs more.", std::nullopt},
    {"SAVE_BACKUP", KeyType::Integer, "0", "0", 0, true, {},
     "0 or 1", kFixedSAVEIMAGESensible,
     "Not 0: a backup set is kept.",
     "", std::nullopt},
    {"SAVE_BACKUPPATH", KeyType::Text, "", "", 0, true, {},
     "a folder; its last level is made", {},
     "Folder of the backup sets.",
     "", std::nullopt},
};
constexpr Settings kFixedSettings = {SettingsGroup::Fixed, "Settings of the fixed chain", "fixed",
    R"text(Plain keys of the section that the host names, read by every PROCMODE but 2 and 3 and by `ImageProcessingCR`. The order
of the stages is fixed; keys switch them on:

1. inversion (`INVERSE_INTENSITY`)
2. median (`PRE_MEDIAN`)
3. Gaussian (`PRE_GAUSSIAN`)
4. pre-contrast (`PRE_CONTRAST`)
5. stretch (`HISTOGRAM_STRETCH`)
6. pyramid (`PYRAMID_PROCESSING`)
7. adaptive unsharp (`CONTRAST_ENHANCE`)
8. CLAHE (`CONTRAST_ENHANCE2`)
9. adaptive smoothing (`ADAPTIVE_SMOOTHING`)
10. median (`POST_MEDIAN`)
11. Gaussian (`POST_GAUSSIAN`)
12. sigmoid (`POST_SIGMOID_LUT`), or else the plain linear curve
13. gamma (`POST_GAMMA_LUT`))text",
    kFixedNotes, kFixedKeys};

}  // namespace

const Settings& FixedRows() { return kFixedSettings; }

}  // namespace vastrelline
