// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <stop_token>
#include <string>

#include "frames/Frame.h"
#include "library/ExportRequest.h"
#include "workbench/KeptRun.h"

namespace vastrelline {

// What a run of the desk needs beside its state.
struct DeskRunInput {
    std::string profilePath;             // for messages and for the name of the private copy
    std::shared_ptr<const Frame> frame;  // as it was read
    ExportRequest call;                  // with everything but frame, profile and section
};

// Errors: those of the frame's file.
using DeskInputMaker = std::function<DeskRunInput(const DeskState& desk)>;

// Runs the export once without dumps, for picture and times, and once with them, for the frame after every
// stage. Whatever goes wrong is told in the run, too.
//
// run         its number, desk and words; the rest is filled in
// makeInput   called once, with the run's desk
// stop        ends the worker that is at work within 50 ms
// publish     called with what is there: Picture, then Complete; or Failed, or Ended
void RunDesk(KeptRun run, const DeskInputMaker& makeInput, const ExportCaller& callExport,
             const std::stop_token& stop, const std::function<void(KeptRun)>& publish);

// Runs the export once and gives its result, for whoever looks at nothing between. Of an export that gives a
// bitmap only, it is the last frame that the run shows.
//
// stop     as RunDesk
// Errors   ToolError; CancelledError when it is stopped
Frame RunDeskForResult(const DeskState& desk, const DeskRunInput& input, const ExportCaller& callExport,
                       const std::stop_token& stop);

}  // namespace vastrelline
