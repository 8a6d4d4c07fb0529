// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

#include "vastrelline.h"

namespace vastrelline {

// Arguments of any processing export; one that lacks an argument leaves it out.
struct ExportArguments {
    uint16_t* input = nullptr;
    uint16_t* output = nullptr;
    int32_t width = 0;
    int32_t height = 0;
    const char* iniPath = nullptr;
    const char* sectionName = nullptr;
    uint8_t applyMapping = 0;
    const char* bitmapPath = nullptr;
};

// One of the six processing exports, so that one test can walk them all.
struct ProcessingExport {
    std::string name;
    bool hasOutput;
    bool hasMapping;
    int32_t (*call)(const ExportArguments& a);
};

inline void PrintTo(const ProcessingExport& processing, std::ostream* out) { *out << processing.name; }

inline std::vector<ProcessingExport> ProcessingExports() {
    using A = ExportArguments;
    return {
        {"ImageProcessing", true, true,
         [](const A& a) {
             return ImageProcessing(a.input, a.output, a.width, a.height, a.iniPath, a.sectionName,
                                    a.applyMapping, 0);
         }},
        {"ImageProcessingS", true, true,
         [](const A& a) {
             return ImageProcessingS(a.input, a.output, a.width, a.height, a.iniPath, a.sectionName,
                                     a.applyMapping, 0, nullptr);
         }},
        {"ImageProcessing_N", false, true,
         [](const A& a) {
             return ImageProcessing_N(a.input, a.width, a.height, a.iniPath, a.sectionName, a.applyMapping, 0,
                                      a.bitmapPath);
         }},
        {"ImageProcessing_NS", false, true,
         [](const A& a) {
             return ImageProcessing_NS(a.input, a.width, a.height, a.iniPath, a.sectionName, a.applyMapping,
                                       0, a.bitmapPath, nullptr);
         }},
        {"ImageProcessing_NE", false, true,
         [](const A& a) {
             return ImageProcessing_NE(a.input, a.width, a.height, a.iniPath, a.sectionName, a.applyMapping,
                                       0, a.bitmapPath, nullptr, 0);
         }},
        {"ImageProcessingCR", true, false,
         [](const A& a) {
             return ImageProcessingCR(a.input, a.output, a.width, a.height, a.iniPath, a.sectionName);
         }},
    };
}

}  // namespace vastrelline
