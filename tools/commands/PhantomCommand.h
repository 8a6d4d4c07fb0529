#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "commands/Command.h"

namespace vastrelline {

struct PhantomOptions {
    std::string frame;
    std::string size = "1300x1668";
    double dose = 1.0;
    uint64_t seed = 1;
    std::string window;  // empty: all levels are kept
    bool mayReplace = false;
};

// Makes the phantom's frame, writes it and tells about it.
class PhantomCommand : public Command {
public:
    std::string_view Examples() const override;
    std::string_view Notes() const override;
    void AddOptions(CLI::App& command) override;

    // Errors   UsageError for a size, dose or ending that cannot be; OutputError if the file cannot be
    // written
    ExitCode Execute(CommandContext& context) override;

private:
    PhantomOptions options_;
};

}  // namespace vastrelline
