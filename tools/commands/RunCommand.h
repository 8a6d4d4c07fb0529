#pragma once

#include <cstdint>
#include <ostream>
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
    std::string exportName = "ImageProcessing";
    std::string window;
    std::vector<int32_t> geometry;
    std::string sensorFolder;
    int32_t sensorMode = 0;
    bool hasSensor = false;
    bool applyMapping = false;
    bool applySpotCorrection = false;
    bool isPng16 = false;
    bool mayReplace = false;
};

CLI::App* AddRunCommand(CLI::App& app, RunOptions& options);

// Reads the frame, calls the export once, writes the picture and tells about it. Returns 0.
//
// Errors   UsageError for options that do not go together; std::runtime_error for a code other than 0 and
//          for everything that is wrong with a file. No picture is then left behind
int ExecuteRun(const RunOptions& options, const ExportCaller& callExport, std::ostream& report);

}  // namespace vastrelline
