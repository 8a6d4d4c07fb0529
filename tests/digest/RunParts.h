// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "DigestFrames.h"
#include "DigestRun.h"
#include "Generator.h"
#include "KeyTables.h"
#include "ProfileLines.h"

namespace vastrelline::digest {

// Small frames of every kind, even and odd, narrow and down to a pixel, in turn.
const FrameRecipe& AnyFrame(size_t turn);

// Of them those of pictures, in turn.
const FrameRecipe& PictureFrame(size_t turn);

// The sensor's values of a frame whose place on the sensor is not known, so that its corners are found in
// itself. The default values would fit no frame, and the library would say so in a message box.
void AddSensorSection(ProfileLines& lines);

// Section "General" with log and dumps on.
void BeginSection(ProfileLines& lines, int32_t procMode);

// A value of a key; odd ones now and then only if asked for.
std::string DrawValue(Generator& generator, const KeyValues& values, bool isOddAllowed);

// Adds values drawn for the keys of a stage, leaving some out. Those of the configured chain stand under the
// current position of the list.
void AddDrawnKeys(ProfileLines& lines, Generator& generator, const StageValues& stage, bool isOddAllowed);

// Adds one key, under the current position of the list for a stage of the configured chain.
void AddStageKey(ProfileLines& lines, const StageValues& stage, std::string_view key, std::string_view value);

}  // namespace vastrelline::digest
