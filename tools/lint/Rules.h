// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "lint/FindingSink.h"
#include "lint/LintedSection.h"
#include "profile/ProfileFile.h"

namespace vastrelline {

// One function a rule. What each looks for stands in the table of LintRules.cpp.

// Of the file.
void FindMissingSections(const ProfileFile& file, FindingSink& sink);
void FindOddEncoding(const ProfileFile& file, FindingSink& sink);
void FindLinesBeforeHeads(const ProfileFile& file, FindingSink& sink);
void FindRepeatedSections(const ProfileFile& file, FindingSink& sink);
void FindUnnameableSections(const ProfileFile& file, FindingSink& sink);

// Of the lines of a section.
void FindLinesWithoutKey(const LintedSection& section, FindingSink& sink);
void FindUnknownKeys(const LintedSection& section, FindingSink& sink);
void FindKeysOfOtherStages(const LintedSection& section, FindingSink& sink);
void FindKeysOfOtherPositions(const LintedSection& section, FindingSink& sink);
void FindKeysOfOtherChains(const LintedSection& section, FindingSink& sink);
void FindKeysOfOtherSections(const LintedSection& section, FindingSink& sink);
void FindRepeatedKeys(const LintedSection& section, FindingSink& sink);
void FindKeysWithoutEffect(const LintedSection& section, FindingSink& sink);

// Of the values.
void FindDecimalCommas(const LintedSection& section, FindingSink& sink);
void FindTextInNumbers(const LintedSection& section, FindingSink& sink);
void FindFractionsInIntegers(const LintedSection& section, FindingSink& sink);
void FindNumbersOutOfReach(const LintedSection& section, FindingSink& sink);
void FindCutValues(const LintedSection& section, FindingSink& sink);
void FindEvenWindows(const LintedSection& section, FindingSink& sink);
void FindSenselessValues(const LintedSection& section, FindingSink& sink);

// Of the stage list.
void FindUnknownStages(const LintedSection& section, FindingSink& sink);
void FindStagesPassedOver(const LintedSection& section, FindingSink& sink);
void FindListEnds(const LintedSection& section, FindingSink& sink);
void FindListGaps(const LintedSection& section, FindingSink& sink);
void FindEmptyLists(const LintedSection& section, FindingSink& sink);
void FindUnusedLists(const LintedSection& section, FindingSink& sink);

// Of the settings.
void FindMissingModes(const LintedSection& section, FindingSink& sink);
void FindMissingPartners(const LintedSection& section, FindingSink& sink);
void FindUnusedLowSections(const LintedSection& section, FindingSink& sink);
void FindEmptySections(const LintedSection& section, FindingSink& sink);
void FindMissingFolders(const LintedSection& section, FindingSink& sink);
void FindFoldersWithoutSeparator(const LintedSection& section, FindingSink& sink);
void FindMessageBoxes(const LintedSection& section, FindingSink& sink);

}  // namespace vastrelline
