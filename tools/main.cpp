// SPDX-License-Identifier: Apache-2.0
#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include "commands/CommandLine.h"
#include "library/ExportCall.h"
#include "messages/ExitCode.h"
#include "platform/Cancellation.h"
#include "platform/OwnProcess.h"
#include "runs/Worker.h"

namespace {

// Colours are for a terminal whose owner has not asked for none.
bool AreColoursWanted() { return vastrelline::EnvironmentText("NO_COLOR").value_or("").empty(); }

}  // namespace

int main(int argc, char** argv) {
    const std::optional<std::vector<std::string>> words = vastrelline::TakeCommandLine(argc, argv);
    if (!words) {
        std::cerr << "vastrelline: a word of the command line is no text\n";
        return static_cast<int>(vastrelline::ExitCode::WrongUse);
    }
    vastrelline::PrepareStandardStreams();
    constexpr size_t kWorkerArguments = 3;
    if (words->size() == kWorkerArguments && (*words)[1] == vastrelline::kWorkerWord)
        return vastrelline::RunWorker((*words)[2], vastrelline::CallExport);
    vastrelline::CatchCancellation();
    std::vector<const char*> pointers;
    for (const std::string& word : *words) pointers.push_back(word.c_str());
    const bool isTerminal = vastrelline::IsErrorStreamTerminal();
    return vastrelline::RunCommandLine(static_cast<int>(pointers.size()), pointers.data(),
                                       vastrelline::CallInWorker,
                                       {std::cout, std::cerr, isTerminal && AreColoursWanted(), isTerminal});
}
