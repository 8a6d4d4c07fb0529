#pragma once

#include <cstdint>

#include "library/ExportRequest.h"

namespace vastrelline {

// Calls the shared library's export that the request names. request.output must have as many pixels as
// request.frame. Fills request.record; the figures of the dose are those of the process' last decision.
int32_t CallExport(ExportRequest& request);

}  // namespace vastrelline
