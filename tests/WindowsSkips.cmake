# SPDX-License-Identifier: Apache-2.0
#
# Tests that do not run on Windows, each with its reason. Tests of the POSIX parts are no matter of this
# list: they lie in folders named posix and are not built there.
set(VASTRELLINE_SKIPS
    # Under Wine the superuser writes files that are marked read-only, as no Windows user does.
    "Exports/BadProfileTest.ReadOnlyProfileIsReadAndStays/*"
    # A profile in UTF-8 is read in the code page of the thread there, which has no such names.
    "LongTextTest.LimitCountsUtf16Units"
    # Nothing here makes symbolic links on Windows, which takes a right that users lack.
    "FollowLinks.*"
    "OutputFile.FollowsASymbolicLink"
    "OutputFolderTest.ReplacesWhatALinkNamesAndNotTheLink"
    "FolderPairsTest.BrokenLinksAreListed"
    "RunCommandTest.TwoResultsNeverGoToOneFileThroughALink"
    "RerunCommandTest.FindsFilesFromARecordInALinkedFolder"
    "BatchCommandTest.NeverWritesThroughALinkToAFrame"
    # Files have no mode, a folder no file of the device's kind, and no name has a quotation mark or "<".
    "OutputFile.KeepsTheModeOfTheFileItReplaces"
    "OutputFile.WhatCannotBeAFileIsRefusedEvenWithForce"
    "FrameFile.WhatIsNoFileIsRefused"
    "ComparePageTest.OfFoldersHasTheFramesOfTheWorst"
    "CompareFoldersTest.WriteJunitOfNamesAsTheyAre"
    # A name that is too long is one that is not there.
    "OutputFolderTest.IsRefusedWhereItCannotBe"
    "VerifyCommandTest.TellsWhereANameIsTooLong"
    # A backslash is a separator of its own, and "C:" no folder of another system.
    "PrivateProfile.HasAnotherNameThanTheLogAndNoSeparatorInIt"
    "RunPreparation.FindsAProfileBehindTheOtherSeparator"
    "Fixes/EachFix.ChangesWhatIsCertainAndNothingElse/Separator"
    "Fixes/EachFix.ChangesWhatIsCertainAndNothingElse/WhatIsNoFolderMayBeAPrefix"
    # The run-time library of C++ makes no file of more than 2 GiB there.
    "FrameFile.AHugeFileThatHoldsNothingIsRefusedAtOnce"
)
