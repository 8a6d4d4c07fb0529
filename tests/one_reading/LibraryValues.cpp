// SPDX-License-Identifier: Apache-2.0
#include "LibraryValues.h"

#include "config/CommonSettings.h"
#include "config/FixedSettings.h"
#include "config/SensorSettings.h"
#include "config/StageId.h"
#include "stages/adaptive_smoothing/AdaptiveSmoothingParams.h"
#include "stages/adaptive_unsharp/UnsharpParams.h"
#include "stages/clahe/ClaheParams.h"
#include "stages/gamma/GammaParams.h"
#include "stages/gaussian/GaussianParams.h"
#include "stages/hdr/HdrParams.h"
#include "stages/linear/LinearParams.h"
#include "stages/median/MedianParams.h"
#include "stages/pre_contrast/PreContrastParams.h"
#include "stages/pre_processing/PreProcessingParams.h"
#include "stages/pyramid/PyramidParams.h"
#include "stages/sigmoid/SigmoidParams.h"
#include "stages/stretch/StretchParams.h"

namespace vastrelline {

namespace {

// A key and the field of the same name.
#define VALUE(record, field) \
    { #field, (record).field }

LibraryValues ValuesOf(const PreContrastParams& params) {
    return {VALUE(params, PRECONTRAST_MASK), VALUE(params, PRECONTRAST_RATIO),
            VALUE(params, PRECONTRAST_RESCALE)};
}

LibraryValues ValuesOf(const StretchParams& params) {
    return {VALUE(params, STRETCH_SEPARATION_CNT), VALUE(params, RESTRETCH_OPTION),
            VALUE(params, LEFT_LEN_LIMIT),         VALUE(params, RIGHT_LEN_LIMIT),
            VALUE(params, STRETCH_LEFT_WEIGHT),    VALUE(params, STRETCH_RIGHT_WEIGHT),
            VALUE(params, STRETCH_LIMITBIN)};
}

LibraryValues ValuesOf(const ClaheParams& params) {
    return {VALUE(params, BLOCK_SIZE), VALUE(params, HISTO_BINS), VALUE(params, MAX_SLOPE)};
}

LibraryValues ValuesOf(const UnsharpParams& params) {
    return {VALUE(params, GAUSSIAN_SIZE_CONTRAST),  VALUE(params, ENAHCNED_RATIO_CONTRAST),
            VALUE(params, NOISE_WIDTH_CONTRAST),    VALUE(params, MODE_CONTRAST),
            VALUE(params, PROTECTOUTLINE_CONTRAST), VALUE(params, ReduceTimeRatio_CONTRAST)};
}

LibraryValues ValuesOf(const AdaptiveSmoothingParams& params) {
    return {VALUE(params, ADAPTIVESMOOTHING_MASK), VALUE(params, ADAPTIVESMOOTHING_ORDER),
            VALUE(params, ADAPTIVESMOOTHING_Mode)};
}

LibraryValues ValuesOf(const PyramidParams& params) {
    return {VALUE(params, PYRAMID_LAYER),  VALUE(params, GAUSSIAN_SIZE), VALUE(params, APPLY_VARIABLE_RATIO),
            VALUE(params, ENHANCED_RATIO), VALUE(params, NOISE_WIDTH),   VALUE(params, APPLY_DIFF_ENHANCE),
            VALUE(params, NOISE_CUTLIMIT)};
}

LibraryValues ValuesOf(const MedianParams& params) {
    return {VALUE(params, MEDIAN_SIZE), VALUE(params, MEDIAN_REPEAT), VALUE(params, MEDIAN_Mode)};
}

LibraryValues ValuesOf(const GaussianParams& params) {
    return {VALUE(params, GAUSSIAN_SIZE), VALUE(params, GAUSSIAN_REPEAT),
            VALUE(params, GAUSSIAN_ReduceTimeRatio), VALUE(params, GAUSSIAN_ProtectOutline)};
}

LibraryValues ValuesOf(const SigmoidParams& params) { return {VALUE(params, POST_SIGMOID_RATIO)}; }

LibraryValues ValuesOf(const GammaParams& params) { return {VALUE(params, POST_GAMMA_RATIO)}; }

LibraryValues ValuesOf(const LinearParams& params) {
    return {VALUE(params, POST_LINEAR_MODE), VALUE(params, POST_LINEAR_LIMITBIN),
            VALUE(params, POST_LINEAR_BRIGHTOPT)};
}

LibraryValues ValuesOf(const PreProcessingParams& params) {
    return {VALUE(params, PREPROCESSING_ENHANCESCALE), VALUE(params, PREPROCESSING_GAUSSIANPOWER),
            VALUE(params, PREPROCESSING_AUMALPHA),     VALUE(params, PREPROCESSING_AUMWEIGHT),
            VALUE(params, PREPROCESSING_AUMPOWER),     VALUE(params, PREPROCESSING_AUMRANGE)};
}

LibraryValues ValuesOf(const HdrParams& params) {
    return {VALUE(params, HDR_BLOCK_SIZE), VALUE(params, HDR_HISTO_BINS), VALUE(params, HDR_CLIp_LIMIT),
            VALUE(params, MAX_LAMBDA),     VALUE(params, WF_SLOPE),       VALUE(params, ALPHA_NORM),
            VALUE(params, ALPHA_HE),       VALUE(params, LAYER)};
}

}  // namespace

LibraryValues ReadLibraryCommon(const std::wstring& iniPath, const std::wstring& section) {
    CommonSettings record;
    static_cast<void>(ReadCommonSettings(iniPath, section, record));
    return {VALUE(record, CAPTION),           VALUE(record, VERSION),          VALUE(record, PROCMODE),
            VALUE(record, SAVE_IMAGE),        VALUE(record, SAVE_LOG),         VALUE(record, AUTOWINDOWING),
            VALUE(record, WRITE_PATH),        VALUE(record, BITALLOCATED),     VALUE(record, BITSTORED),
            VALUE(record, LITTLEENDIAN),      VALUE(record, SATURATION_VALUE), VALUE(record, OUTPUTRANGE),
            VALUE(record, SETCLIPBIN),        VALUE(record, MSGBOX_ENABLE),    VALUE(record, INTRAORAL_MASK),
            VALUE(record, INVERSE_INTENSITY), VALUE(record, INVERSE_LOGRATIO), VALUE(record, FunctionCount),
            VALUE(record, SAVE_BACKUP),       VALUE(record, SAVE_BACKUPPATH)};
}

LibraryValues ReadLibraryCurveSettings(const std::wstring& iniPath, const std::wstring& section) {
    const CommonSettings record = ReadStageSettings(iniPath, section);
    return {VALUE(record, OUTPUTRANGE)};
}

LibraryValues ReadLibraryFixed(const std::wstring& iniPath, const std::wstring& section) {
    FixedSettings record;
    ReadFixedSettings(iniPath, section, record);
    return {VALUE(record, VERSION),
            VALUE(record, SAVE_IMAGE),
            VALUE(record, SAVE_LOG),
            VALUE(record, WRITE_PATH),
            VALUE(record, BITALLOCATED),
            VALUE(record, BITSTORED),
            VALUE(record, LITTLEENDIAN),
            VALUE(record, SATURATION_VALUE),
            VALUE(record, OUTPUTRANGE),
            VALUE(record, INTRAORAL_MASK),
            VALUE(record, HISTOGRAM_STRETCH),
            VALUE(record, PRE_MEDIAN),
            VALUE(record, PRE_GAUSSIAN),
            VALUE(record, POST_GAUSSIAN),
            VALUE(record, POST_SIGMOID_LUT),
            VALUE(record, POST_GAMMA_LUT),
            VALUE(record, POST_MEDIAN),
            VALUE(record, CONTRAST_ENHANCE2),
            VALUE(record, CONTRAST_ENHANCE),
            VALUE(record, PYRAMID_PROCESSING),
            VALUE(record, PRE_CONTRAST),
            VALUE(record, ADAPTIVE_SMOOTHING),
            VALUE(record, STRETCH_SEPARATION_CNT),
            VALUE(record, RESTRETCH_OPTION),
            VALUE(record, LEFT_LEN_LIMIT),
            VALUE(record, RIGHT_LEN_LIMIT),
            VALUE(record, STRETCH_LEFT_WEIGHT),
            VALUE(record, STRETCH_RIGHT_WEIGHT),
            VALUE(record, STRETCH_LIMITBIN),
            VALUE(record, INVERSE_INTENSITY),
            VALUE(record, INVERSE_LOGRATIO),
            VALUE(record, PRE_MEDIAN_SIZE),
            VALUE(record, PRE_GAUSSIAN_SIZE),
            VALUE(record, GAUSSIAN_SIZE_CONTRAST),
            VALUE(record, ENAHCNED_RATIO_CONTRAST),
            VALUE(record, NOISE_WIDTH_CONTRAST),
            VALUE(record, MODE_CONTRAST),
            VALUE(record, BLOCK_SIZE),
            VALUE(record, HISTO_BINS),
            VALUE(record, MAX_SLOPE),
            VALUE(record, CORRECTVAL),
            VALUE(record, PYRAMID_LAYER),
            VALUE(record, GAUSSIAN_SIZE),
            VALUE(record, APPLY_VARIABLE_RATIO),
            VALUE(record, ENHANCED_RATIO),
            VALUE(record, NOISE_WIDTH),
            VALUE(record, APPLY_DIFF_ENHANCE),
            VALUE(record, NOISE_CUTLIMIT),
            VALUE(record, POST_GAUSSIAN_SIZE),
            VALUE(record, POST_SIGMOID_RATIO),
            VALUE(record, POST_GAMMA_RATIO),
            VALUE(record, POST_MEDIAN_SIZE),
            VALUE(record, POST_MEDIAN_REPEAT),
            VALUE(record, PRECONTRAST_MASK),
            VALUE(record, PRECONTRAST_RATIO),
            VALUE(record, PRECONTRAST_RESCALE),
            VALUE(record, ADAPTIVESMOOTHING_MASK),
            VALUE(record, ADAPTIVESMOOTHING_ORDER),
            VALUE(record, SAVE_BACKUP),
            VALUE(record, SAVE_BACKUPPATH)};
}

LibraryValues ReadLibraryGeometry(const std::wstring& iniPath) {
    SensorGeometry geometry{};
    ReadSensorGeometry(iniPath, L"", geometry);
    return {VALUE(geometry, Rotation),    VALUE(geometry, Flip),       VALUE(geometry, RCCutOff),
            VALUE(geometry, RCCutOffR),   VALUE(geometry, FrameWidth), VALUE(geometry, FrameHeight),
            VALUE(geometry, ImgCutLeft),  VALUE(geometry, ImgCutTop),  VALUE(geometry, ImgCutRight),
            VALUE(geometry, ImgCutBottom)};
}

LibraryValues ReadLibraryTargetRange(const std::wstring& iniPath) {
    TargetRangeParams range;
    ReadTargetRange(iniPath, L"", range);
    return {VALUE(range, TargetRange), VALUE(range, MinimumValue), VALUE(range, MaxCut),
            VALUE(range, MinCut)};
}

LibraryValues ReadLibraryStage(const std::wstring& iniPath, const std::wstring& section, int32_t position,
                               int32_t number) {
    switch (static_cast<StageId>(number)) {
        case StageId::PreContrastProc:
            return ValuesOf(ReadPreContrastParams(iniPath, section, position));
        case StageId::HistogramStretch:
            return ValuesOf(ReadStretchParams(iniPath, section, position));
        case StageId::CLAHE:
            return ValuesOf(ReadClaheParams(iniPath, section, position));
        case StageId::Unsharp:
            return ValuesOf(ReadUnsharpParams(iniPath, section, position));
        case StageId::AdaptiveSmoothing:
            return ValuesOf(ReadAdaptiveSmoothingParams(iniPath, section, position));
        case StageId::Pyramid:
            return ValuesOf(ReadPyramidParams(iniPath, section, position));
        case StageId::Median:
            return ValuesOf(ReadMedianParams(iniPath, section, position));
        case StageId::Gaussian:
            return ValuesOf(ReadGaussianParams(iniPath, section, position));
        case StageId::SigmoidLUT:
            return ValuesOf(ReadSigmoidParams(iniPath, section, position));
        case StageId::GammaLUT:
            return ValuesOf(ReadGammaParams(iniPath, section, position));
        case StageId::LinearLUT:
            return ValuesOf(ReadLinearParams(iniPath, section, position));
        case StageId::PreProcessing:
            return ValuesOf(ReadPreProcessingParams(iniPath, section, position));
        case StageId::HDR:
            return ValuesOf(ReadHdrParams(iniPath, section, position));
    }
    return {};
}

#undef VALUE

}  // namespace vastrelline
