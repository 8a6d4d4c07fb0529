// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace vastrelline {

// How the tool ends: one table for all commands. A part that failed is never Well.
enum class ExitCode : int {
    Well = 0,
    Findings = 1,    // differences, or something to be mended
    WrongUse = 2,    // the command line asks for something that cannot be
    Input = 3,       // a frame, profile or other input that cannot be read or makes no sense
    Processing = 4,  // the library gave a code, crashed or took too long
    Output = 5,      // a result that could not be written
    Cancelled = 130,
};

}  // namespace vastrelline
