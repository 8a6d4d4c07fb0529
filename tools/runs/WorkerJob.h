// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "library/ExportRequest.h"

namespace vastrelline {

// A call on its way to a worker process and back, as files in a folder that only the two know. Texts keep
// every byte: a path need not be UTF-8.

// Errors   OutputError if a file cannot be written
void WriteJob(const std::string& folder, const ExportRequest& request);

// Errors   InputError for a folder that holds no job
ExportRequest ReadJob(const std::string& folder);

// What the call gave: its code, its record, and the output frame.
//
// Errors   as WriteJob
void WriteJobResult(const std::string& folder, int32_t code, const ExportRequest& request);

// Fills output and record of the request that the job was made from, and returns the code.
//
// Errors   InputError for a folder that holds no result of this job
int32_t ReadJobResult(const std::string& folder, ExportRequest& request);

}  // namespace vastrelline
