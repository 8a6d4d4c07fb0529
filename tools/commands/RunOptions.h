// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "library/ExportRequest.h"

namespace CLI {
class App;
}

namespace vastrelline {

// What the command line of `run` says; an empty text stands for an option that is not there.
struct RunOptions {
    std::string frame;
    std::string size;
    std::string profile;
    std::string section;
    std::string picture;
    std::string exportName;
    std::string window;
    std::string log;
    std::string strip;
    std::string record;
    std::string against;  // another build of the library
    std::vector<int32_t> geometry;
    std::string sensorFolder;
    int32_t sensorMode = 0;
    double timeoutSeconds = 0.0;
    bool hasSensor = false;
    bool hasTimeout = false;
    bool applyMapping = false;
    bool applySpotCorrection = false;
    bool isPng16 = false;
    bool isInPlace = false;
    bool mayReplace = false;
    bool forceSection = false;
};

// Adds the options, bound to the record.
void AddRunOptions(CLI::App& command, RunOptions& options);

// Those among them that every run needs: frame, profile, section.
void AddInputOptions(CLI::App& command, RunOptions& options);
// Those among them that name profile and section.
void AddSettingsOptions(CLI::App& command, RunOptions& options);

// Those among them that say how levels go into a .png.
void AddLevelOptions(CLI::App& command, RunOptions& options);

// Those among them that make the call: the export, what it takes, its time.
void AddCallOptions(CLI::App& command, RunOptions& options);

// The size of a raw frame.
void AddFrameSizeOption(CLI::App& command, RunOptions& options);

// What is wrong with the options of the call and needs no file: export, time.
//
// Errors   UsageError
void TestCallOptions(const RunOptions& options);

// What they ask of an export that it does not take.
//
// Errors   UsageError
void TestCallExport(const RunOptions& options, const ExportTraits& traits);

// Everything that is wrong with the options and needs no file.
//
// Errors   UsageError
void TestRunOptions(const RunOptions& options);

// Whether they go together with an export.
//
// Errors   UsageError
void TestRunExport(const RunOptions& options, const ExportTraits& traits);

}  // namespace vastrelline
