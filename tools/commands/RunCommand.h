#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "commands/Command.h"

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

// Reads the frame, calls the export once, writes the picture and tells about it.
class RunCommand : public Command {
public:
    std::string_view Examples() const override;
    void AddOptions(CLI::App& command) override;

    // Errors   UsageError for options that do not go together; ProcessingError for a code other than 0. No
    //          picture is then left behind
    ExitCode Execute(CommandContext& context) override;

private:
    RunOptions options_;
};

}  // namespace vastrelline
