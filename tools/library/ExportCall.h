// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "library/ExportRequest.h"

namespace vastrelline {

// Calls the export that the request names, of the library that it names. request.output must have as many
// pixels as request.frame. Fills request.record; the figures of the dose are those of the process' last
// decision.
//
// Errors   as LoadExportFunctions
int32_t CallExport(ExportRequest& request);

}  // namespace vastrelline
