# SPDX-License-Identifier: Apache-2.0
#
# Tests that do not run on an emulated processor, each with its reason.
set(VASTRELLINE_SKIPS
    # What the process keeps of memory is mostly the emulator's: the instructions that it has translated.
    "ManyFrames.LeaveNothingBehindInTheProcess"
    # Real frames are PNG files, and no distribution has the PNG library for the cross compiler.
    "PngFrame.*"
    "RealFrames.*"
    "Frames/RightWayRoundTest.*"
    "Frames/DentalSampleTest.*"
    "Stages/SingleStageTest.*"
    "Ratios/RealFrameTest.*"
    "ProcessFrameExample.EnhancesEveryRealFrame"
)
