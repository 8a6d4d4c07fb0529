// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "library/ExportRequest.h"

namespace vastrelline {

// The word by which the tool starts itself as a worker.
inline constexpr const char* kWorkerWord = "__worker";

// Calls the export in a process of its own: the library keeps state for the life of a process, and a call
// that crashes or takes too long ends nothing but the worker. What the library says on standard error comes
// back in the record. Bitmap and logs are written by the worker, under the paths of the request.
//
// Errors   ProcessingError if the worker crashes, runs out of memory or passes request.timeout; InputError if
//          request.library cannot be used; CancelledError
int32_t CallInWorker(ExportRequest& request);

// The worker's side: does the one job that lies in a folder. Returns its exit code.
int RunWorker(const std::string& folder, const ExportCaller& callExport);

}  // namespace vastrelline
