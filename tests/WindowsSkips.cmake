# SPDX-License-Identifier: Apache-2.0
#
# Tests that do not run on Windows, each with its reason. Tests of the POSIX parts are no matter of this
# list: they lie in folders named posix and are not built there.
set(VASTRELLINE_SKIPS
    # Under Wine the superuser writes files that are marked read-only, as no Windows user does.
    "Exports/BadProfileTest.ReadOnlyProfileIsReadAndStays/*"
    # A profile in UTF-8 is read in the code page of the thread there, which has no such names.
    "LongTextTest.LimitCountsUtf16Units"
    # Real frames are PNG files, and no distribution has the PNG library for the cross compiler.
    "PngFrame.*"
    "RealFrames.*"
    "Frames/RightWayRoundTest.*"
    "Frames/DentalSampleTest.*"
    "Stages/SingleStageTest.*"
    "Ratios/RealFrameTest.*"
    "ProcessFrameExample.EnhancesEveryRealFrame"
)
