// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

namespace vastrelline {

// Settings that the drivers and stages of the configured chain share, one record per run. The fields are
// named as their keys. Default-made records stand for an empty section: all numbers 0, all texts empty.
struct CommonSettings {
    std::wstring CAPTION;           // without effect
    std::wstring VERSION;           // text in the log's start line
    int32_t PROCMODE = 0;           // without effect here: the exports read it themselves, with default 1
    int32_t SAVE_IMAGE = 0;         // not 0: raw dumps on
    int32_t SAVE_LOG = 0;           // not 0: log on
    int32_t AUTOWINDOWING = 0;      // without effect
    std::wstring WRITE_PATH;        // what a dump's name is joined to
    int32_t BITALLOCATED = 0;       // without effect
    int32_t BITSTORED = 0;          // significant bits of a pixel
    int32_t LITTLEENDIAN = 0;       // without effect
    int32_t SATURATION_VALUE = 0;   // pixels from this level on count as saturated
    int32_t OUTPUTRANGE = 0;        // top of the output range of the stages that read it
    double SETCLIPBIN = 0.0;        // threshold of the exposure decision
    int32_t MSGBOX_ENABLE = 0;      // not 0: the exposure decision is shown
    int32_t INTRAORAL_MASK = 0;     // not 0: round-corner mask on
    int32_t INVERSE_INTENSITY = 0;  // not 0: inversion on; the value selects its mode
    double INVERSE_LOGRATIO = 0.0;  // shape of the inversion's curve
    int32_t FunctionCount = 0;      // length of the stage list
    int32_t SAVE_BACKUP = 0;        // not 0: backup set on
    std::wstring SAVE_BACKUPPATH;   // folder of the backup set
};

// Fills a run's own record from a section of a profile, with the default of each missing key. Returns 1, or 0
// if the section holds no line; the record then stays as it is.
int32_t ReadCommonSettings(const std::wstring& iniPath, const std::wstring& section, CommonSettings& record);

// The same for a stage that reads the section for itself: one without a line, or none at all, gives the
// defaults there. An output range of 0 would make the frame black.
CommonSettings ReadStageSettings(const std::wstring& iniPath, const std::wstring& section);

// The largest pixel value of frames with so many significant bits: 2^bits - 1. Bits below 0 count as 0,
// above 31 as 31.
int32_t MaxValueOfBits(int32_t bitsStored);

}  // namespace vastrelline
