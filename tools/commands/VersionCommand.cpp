// SPDX-License-Identifier: Apache-2.0
#include "commands/VersionCommand.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include "commands/JsonObject.h"
#include "commands/LibraryOption.h"
#include "library/BuildNote.h"
#include "library/LibraryFile.h"
#include "messages/Messages.h"

namespace vastrelline {

std::string_view VersionCommand::Examples() const {
    return "  vastrelline version\n"
           "  vastrelline version --library Vastrelline.dll\n"
           "  vastrelline version --library libvastrelline.so.1 --json\n";
}

std::string_view VersionCommand::Notes() const {
    return "A library is read and not loaded: it may be for another system or another processor. '--version' "
           "with\n"
           "more words behind it is this command, alone it prints the tool's version in one line.\n";
}

void VersionCommand::AddOptions(CLI::App& command) {
    AddLibraryOption(command, "Library to look at, in place of the one that the tool calls", "FILE",
                     library_);
}

ExitCode VersionCommand::Execute(CommandContext& context) {
    const std::string file = library_.empty() ? LibraryFile() : library_;
    const BuildNote note = ReadBuildNote(file);
    if (context.wantsJson) {
        PrintObject(context, ExitCode::Well,
                    {{"library",
                      {{"file", file},
                       {"version", note.version},
                       {"commit", note.commit},
                       {"compiler", note.compiler},
                       {"build", note.build},
                       {"flags", note.flags},
                       {"forms", note.forms}}}});
        return ExitCode::Well;
    }
    context.report << "vastrelline " << VASTRELLINE_VERSION << "\n\n"
                   << OneLine(file) << "\n"
                   << "  version   " << OneLine(note.version) << '\n'
                   << "  commit    " << OneLine(note.commit) << '\n'
                   << "  compiler  " << OneLine(note.compiler) << '\n'
                   << "  build     " << OneLine(note.build) << '\n'
                   << "  flags     " << OneLine(note.flags) << '\n'
                   << "  forms     " << OneLine(note.forms) << '\n';
    return ExitCode::Well;
}

}  // namespace vastrelline
