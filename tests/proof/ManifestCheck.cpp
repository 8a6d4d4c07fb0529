// SPDX-License-Identifier: Apache-2.0

// Holds a build to the manifest where the tool itself is not built: on Windows and on an emulated processor.
// One entry a process, as the library counts its dumps for the life of one.
//
//     manifest_check MANIFEST ENTRY FRAMES
//
// FRAMES is a folder with the frames of the manifest as PGM. Ends with 0 if all points of the entry are
// equal, with 1 after naming the first that is not, with 2 if the entry cannot be run.
#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "files/Sha256.h"
#include "library/ExportCall.h"
#include "library/ExportFunctions.h"
#include "phantom/PhantomFrame.h"
#include "profile_text/ProfileEdit.h"
#include "profile_text/Utf8.h"
#include "proof/ProofManifest.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {

// The one library is that which this program is linked with.
ExportFunctions LoadExportFunctions(const std::string& library, const std::string& /*instructions*/) {
    throw std::runtime_error(library + ": no other library is loaded here");
}

namespace {

namespace fs = std::filesystem;

std::string HashOf(const std::vector<uint16_t>& levels) {
    std::vector<uint8_t> bytes;
    bytes.reserve(2 * levels.size());
    for (const uint16_t level : levels) {
        bytes.push_back(static_cast<uint8_t>(level & 0xFFU));
        bytes.push_back(static_cast<uint8_t>(level >> 8U));
    }
    return Sha256Of(bytes);
}

// A PGM of 16 bits as Netpbm writes them: no comment, high byte first.
Frame ReadPgm(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::string kind;
    Frame frame;
    int32_t top = 0;
    file >> kind >> frame.width >> frame.height >> top;
    file.get();
    if (!file || kind != "P5" || top != 65535) throw std::runtime_error(path.string() + " is no such PGM");
    frame.pixels.resize(PixelCount(frame.width, frame.height));
    for (uint16_t& pixel : frame.pixels) {
        const int high = file.get();
        pixel = static_cast<uint16_t>(high << 8 | file.get());
    }
    if (!file) throw std::runtime_error(path.string() + " ends early");
    return frame;
}

Frame MakeFrame(const ProofEntry& entry, const fs::path& frames) {
    if (const std::optional<PhantomRecipe>& phantom = entry.frame.phantom)
        return MakePhantomFrame(phantom->size, phantom->dose, phantom->seed);
    return ReadPgm(frames / (fs::path(entry.frame.file).stem().string() + ".pgm"));
}

// The entry's profile in the folder, told to write its dumps beside it.
void WriteProfile(const fs::path& path, std::string bytes, const std::string& section,
                  const fs::path& folder) {
    const std::string dumps = folder.string() + static_cast<char>(fs::path::preferred_separator);
    for (const auto& [key, value] : std::map<std::string, std::string>{{"SAVE_LOG", "1"},
                                                                       {"MSGBOX_ENABLE", "0"},
                                                                       {"SAVE_IMAGE", "1"},
                                                                       {"SAVE_BACKUP", "0"},
                                                                       {"WRITE_PATH", dumps}})
        EditProfile(bytes, DecodeUtf8(section).c_str(), DecodeUtf8(key).c_str(), DecodeUtf8(value).c_str());
    WriteBytes(path, bytes);
}

int Differ(const ProofEntry& entry, const std::string& what) {
    std::cerr << NameProofEntry(entry) << ": " << what << " is not that of the manifest\n";
    return 1;
}

// The hash of what the build gives at a point; nothing for a point that only a curve file shows.
std::optional<std::string> HashAt(const ProofPoint& point, const ExportRequest& call, const fs::path& dumps) {
    if (point.point == "bitmap") return Sha256Of(ReadBytes(call.bitmapPath));
    if (point.point == "result" && call.bitmapPath.empty()) return HashOf(call.output);
    if (!point.dump.ends_with(".raw")) return std::nullopt;
    const fs::path dump = dumps / point.dump;
    return fs::exists(dump) ? Sha256Of(ReadBytes(dump)) : "none";
}

int Check(const ProofManifest& manifest, const ProofEntry& entry, const fs::path& frames) {
    if (!entry.facts) throw std::runtime_error("the manifest has no hashes of this entry");
    const std::string profile = ReadBytes(ResolveInManifest(manifest, entry.profile));
    if (Sha256Of(profile) != entry.facts->profileHash) return Differ(entry, "the profile");
    ExportRequest call;
    call.kind = entry.exportKind;
    call.frame = MakeFrame(entry, frames);
    call.output.resize(call.frame.pixels.size());
    if (HashOf(call.frame.pixels) != entry.facts->frameHash) return Differ(entry, "the frame");

    const TemporaryFolder folder;
    const fs::path dumps = folder.Path() / "d";
    fs::create_directory(dumps);
    WriteProfile(folder.Path() / "p.ini", profile, entry.section, dumps);
    call.profile = (folder.Path() / "p.ini").string();
    call.section = entry.section;
    if (TraitsOf(call.kind).takesBitmapPath) call.bitmapPath = (folder.Path() / "b.bmp").string();
    if (const int32_t code = CallExport(call); code != 0)
        throw std::runtime_error("the library returned " + std::to_string(code));

    size_t seen = 0;
    for (const ProofPoint& point : entry.facts->points) {
        const std::optional<std::string> hash = HashAt(point, call, dumps);
        if (!hash) continue;
        ++seen;
        if (*hash != point.hash) return Differ(entry, point.title + " (" + point.dump + ")");
    }
    if (seen < 2) throw std::runtime_error("the entry has too few points to be a run");
    std::cout << NameProofEntry(entry) << ": " << seen << " points are equal\n";
    return 0;
}

}  // namespace
}  // namespace vastrelline

int main(int argc, char** argv) {
    try {
        if (argc != 4) throw std::runtime_error("MANIFEST ENTRY FRAMES");
        const vastrelline::ProofManifest manifest = vastrelline::ReadProofManifest(argv[1]);
        return vastrelline::Check(manifest, manifest.entries.at(std::stoul(argv[2])), argv[3]);
    } catch (const std::exception& error) {
        std::cerr << "manifest_check: " << error.what() << '\n';
        return 2;
    }
}
