// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "operators/curves/TonedFrame.h"

namespace vastrelline {

// The numbered dumps of a run: whether they are written, where to, and under which number. Refers to the
// process-wide state of its chain, which a run sets before its first dump.
class RunDumps {
public:
    // Of the configured chain, whose dump number is process-wide.
    static RunDumps Configured();

    // Of the fixed chain, where each run has a number of its own.
    //
    // dumpCounter   of the next dump; must outlive this
    static RunDumps Fixed(int32_t& dumpCounter);

    // Whether image saving is on, and the folder text that names are joined to: for what a stage writes
    // beside its dumps.
    bool AreOn() const { return areOn_; }
    const std::wstring& WritePath() const { return writePath_; }

    // If image saving is on: dumps the frame under the dump number and steps that number.
    //
    // nameFormat   takes the number, as "%02d_Result_Gamma.raw"
    void Dump(std::wstring_view nameFormat, const uint16_t* pixels, int32_t width, int32_t height) const;

    // The same of a frame whose curves wait: a dump makes them apply.
    void Dump(std::wstring_view nameFormat, TonedFrame& frame) const;

    // The same without stepping: the next dump shares the number.
    void DumpBeside(std::wstring_view nameFormat, const uint16_t* pixels, int32_t width,
                    int32_t height) const;

private:
    RunDumps(bool areOn, const std::wstring& writePath, int32_t& number);

    bool areOn_;
    const std::wstring& writePath_;
    int32_t& number_;
};

}  // namespace vastrelline
