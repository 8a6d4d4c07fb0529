// SPDX-License-Identifier: Apache-2.0
#include "library/BuildNote.h"

#include <algorithm>
#include <map>
#include <sstream>
#include <vector>

#include "files/InputFile.h"
#include "library/ElfNote.h"
#include "library/VersionResource.h"
#include "messages/ToolError.h"

namespace vastrelline {
namespace {

constexpr const char* kOwner = "vastrelline";

struct NoteField {
    const char* noteKey;
    const char* resourceKey;
    std::string BuildNote::*text;
};

constexpr NoteField kFields[] = {
    {"version", "FileVersion", &BuildNote::version}, {"commit", "Commit", &BuildNote::commit},
    {"compiler", "Compiler", &BuildNote::compiler},  {"build", "Build", &BuildNote::build},
    {"flags", "Flags", &BuildNote::flags},           {"forms", "Forms", &BuildNote::forms},
};

BuildNote FromLines(const std::string& text) {
    BuildNote note;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
        for (const NoteField& field : kFields)
            if (line.starts_with(std::string(field.noteKey) + '='))
                note.*field.text = line.substr(line.find('=') + 1);
    return note;
}

std::optional<BuildNote> FromStrings(const std::map<std::string, std::string>& strings) {
    const auto name = strings.find("InternalName");
    if (name == strings.end() || name->second != "Vastrelline") return std::nullopt;
    BuildNote note;
    for (const NoteField& field : kFields)
        if (const auto found = strings.find(field.resourceKey); found != strings.end())
            note.*field.text = found->second;
    return note;
}

}  // namespace

std::optional<BuildNote> FindBuildNote(std::span<const uint8_t> file) {
    std::optional<BuildNote> note;
    if (const std::optional<std::string> text = FindElfNote(file, kOwner)) note = FromLines(*text);
    if (const auto strings = FindVersionStrings(file)) note = FromStrings(*strings);
    return note && note->version.empty() ? std::nullopt : note;
}

BuildNote ReadBuildNote(const std::string& path) {
    constexpr uint64_t kMostBytes = uint64_t{1} << 30U;
    const std::vector<uint8_t> bytes = ReadInputFile(path, kMostBytes);
    if (std::optional<BuildNote> note = FindBuildNote(bytes)) return *std::move(note);
    if (!IsElf(bytes) && !IsPortableExecutable(bytes))
        throw InputError(path, "is no library of Linux or Windows",
                         "name libvastrelline.so.1 or Vastrelline.dll");
    throw InputError(path, "says nothing of its build",
                     "it is another library, a build from before there were notes, or it is cut off");
}

}  // namespace vastrelline
