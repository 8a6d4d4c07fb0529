// SPDX-License-Identifier: Apache-2.0
//
// In the place of the workbench's server where the tool is built without Boost or Node.
#include "messages/ToolError.h"
#include "server/PageServer.h"

namespace vastrelline {

void ServePage(uint16_t /*port*/, const HttpHandler& /*api*/, EventChannel& /*events*/,
               const PageMoments& /*moments*/) {
    throw UsageError("this build of the tool has no workbench",
                     "build it with Boost's headers and Node.js, or install the packaged one");
}

}  // namespace vastrelline
