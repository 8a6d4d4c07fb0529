// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "vastrelline.h"

namespace vastrelline {

// The library's functions that a call needs.
struct ExportFunctions {
    decltype(&::ImageProcessing) plain;
    decltype(&::ImageProcessingS) s;
    decltype(&::ImageProcessing_N) n;
    decltype(&::ImageProcessing_NS) ns;
    decltype(&::ImageProcessing_NE) ne;
    decltype(&::ImageProcessingCR) cr;
    decltype(&::Getdose_ImageInfo) dose;
};

// By this name a library that knows it is told to use no more than a set of instructions: "reference",
// "baseline", "avx2" or "avx512". 0: done, 1: this machine, or this build, has no such forms.
inline constexpr const char* kLimitFunction = "LimitVastrellineForms";

// Loads another library than the one that the tool is linked with; it stays until the process ends.
//
// instructions   empty: the best that the machine has
// Errors         InputError: no such library, a function is missing, it does not know the set
ExportFunctions LoadExportFunctions(const std::string& library, const std::string& instructions);

}  // namespace vastrelline
