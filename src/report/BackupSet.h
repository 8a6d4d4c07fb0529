// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

namespace vastrelline {

// Makes the folder of the backups, only the last level of it, and gives what all names of one set begin with:
// the folder, a backslash and the wall clock, as "20260131_235959_".
std::wstring MakeBackupPrefix(const std::wstring& folder);

// The window through which a backup is rendered, in levels.
struct BackupWindow {
    int32_t centre;
    int32_t width;
};

// Shows frames of 12 bits in full.
inline constexpr BackupWindow kTwelveBitWindow{2047, 4096};

// Writes the backup set of a run: the input as a raw file, the output as a bitmap. The names are the prefix,
// the last level of the folder, and "Calibrated.raw" or the section with ".bmp"; the raw file's name is
// stored in lower case. A file takes its name only when it is whole.
//
// folder        the profile's backup folder; an empty one stands for the root
// input         the driver's input, width * height pixels
// output        the run's result, width * height pixels
// Errors        none: what cannot be written is left out, for the frame is processed all the same
void WriteBackupSet(const std::wstring& folder, const std::wstring& sectionName, const uint16_t* input,
                    const uint16_t* output, int32_t width, int32_t height, const BackupWindow& window);

// Writes the backup set of the CR chain: input and output as raw files, "_Calibrated.raw" and
// "_Enhanced.raw", the output as a bitmap through kTwelveBitWindow, "_Enhanced.bmp", and the profile
// as the run has read it, an underscore and the section with ".ini". Names begin as those of WriteBackupSet.
void WriteCrBackupSet(const std::wstring& folder, const std::wstring& sectionName,
                      const std::string& profileBytes, const uint16_t* input, const uint16_t* output,
                      int32_t width, int32_t height);

}  // namespace vastrelline
