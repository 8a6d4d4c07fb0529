// SPDX-License-Identifier: Apache-2.0
#include "batch/FrameList.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <string_view>
#include <system_error>
#include <utility>

#include "files/FileKind.h"
#include "messages/ToolError.h"
#include "platform/PathPattern.h"
#include "platform/PathText.h"
#include "platform/Reason.h"

namespace vastrelline {
namespace {

namespace fs = std::filesystem;

fs::path Absolute(const fs::path& path) {
    std::error_code error;
    fs::path whole = fs::weakly_canonical(fs::absolute(path, error), error);
    if (error) whole = fs::absolute(path).lexically_normal();
    return whole.has_filename() ? whole : whole.parent_path();
}

bool IsSameFolder(const fs::path& one, const fs::path& other) {
    return FoldName(one.string()) == FoldName(other.string());
}

// Files by their whole paths, with the names under which they are shown, and the folders they were asked
// from.
class Gathering {
public:
    explicit Gathering(const std::string& outputFolder) : outputFolder_(Absolute(PathOf(outputFolder))) {}

    void Add(const std::string& input) {
        std::error_code error;
        const fs::file_status status = fs::status(PathOf(input), error);
        if (fs::is_directory(status))
            AddFolder(input);
        else if (fs::exists(status))
            AddFile(input);
        else
            AddPattern(input);
    }

    const std::map<fs::path, std::string>& Files() const { return files_; }

    // The deepest folder that holds all of them.
    const fs::path& Root() const { return root_; }

private:
    void Widen(const fs::path& folder) {
        if (files_.empty() && root_.empty()) {
            root_ = folder;
            return;
        }
        const auto [end, unused] = std::mismatch(root_.begin(), root_.end(), folder.begin(), folder.end());
        fs::path common;
        for (auto part = root_.begin(); part != end; ++part) common /= *part;
        root_ = common;
    }

    void AddFile(const std::string& path) {
        // The folder alone: a link to a file keeps its own name.
        const fs::path folder = Absolute(fs::absolute(PathOf(path)).parent_path());
        Widen(folder);
        files_.emplace(folder / PathOf(path).filename(), path);
    }

    void AddFolder(const std::string& path) {
        const fs::path whole = Absolute(PathOf(path));
        if (IsSameFolder(whole, outputFolder_))
            throw UsageError("--out is the folder of the frames: " + path, "name another folder");
        Widen(whole);
        std::error_code error;
        fs::recursive_directory_iterator entries(PathOf(path), error);
        for (; !error && entries != fs::recursive_directory_iterator(); entries.increment(error)) {
            const fs::path& entry = entries->path();
            const bool isHidden = entry.filename().string().starts_with('.');
            std::error_code ignored;
            if (entries->is_directory(ignored)) {
                if (isHidden || IsSameFolder(Absolute(entry), outputFolder_))
                    entries.disable_recursion_pending();
            } else if (!isHidden && FileKindOf(entry.string()) != FileKind::Other &&
                       entries->is_regular_file(ignored)) {
                files_.emplace(whole / entry.lexically_relative(PathOf(path)), entry.string());
            }
        }
        if (error) throw InputError(path, "cannot be read: " + DescribeReason(error));
    }

    void AddPattern(const std::string& pattern) {
        if (pattern.find_first_of("*?[") == std::string::npos) throw InputError(pattern, "does not exist");
        const std::vector<std::string> paths = ExpandPattern(pattern);
        if (paths.empty()) throw InputError(pattern, "fits no file");
        for (const std::string& path : paths) {
            if (fs::is_directory(PathOf(path)))
                AddFolder(path);
            else
                AddFile(path);
        }
    }

    fs::path outputFolder_;
    fs::path root_;
    std::map<fs::path, std::string> files_;
};

// "a.raw" gives "a.png"; an ending that tells nothing of the format belongs to the name.
std::string ResultName(fs::path frame, const std::string& ending, bool keepsEnding) {
    if (!keepsEnding && FileKindOf(frame.string()) != FileKind::Other) frame.replace_extension();
    return frame.generic_string() + "." + ending;
}

void TestResults(const std::vector<ListedFrame>& frames, const Gathering& gathering,
                 const std::string& outputFolder) {
    std::map<std::string, const ListedFrame*> results;
    std::set<std::string> taken;
    for (const auto& [path, shown] : gathering.Files()) taken.insert(FoldName(path.string()));
    const fs::path folder = Absolute(PathOf(outputFolder));
    for (const ListedFrame& frame : frames) {
        const auto [other, isNew] = results.emplace(FoldName(frame.result), &frame);
        if (!isNew)
            throw UsageError(
                frame.path + " and " + other->second->path + " would both become " + frame.result,
                "rename one of them");
        if (taken.contains(FoldName((folder / PathOf(frame.result)).string())))
            throw UsageError("the result of " + frame.path +
                                 " would replace a frame: " + (folder / PathOf(frame.result)).string(),
                             "name another folder in --out");
    }
}

}  // namespace

std::vector<ListedFrame> ListFrames(const std::vector<std::string>& inputs, const std::string& outputFolder,
                                    const std::string& ending) {
    Gathering gathering(outputFolder);
    for (const std::string& input : inputs) gathering.Add(input);
    if (gathering.Files().empty())
        throw InputError(inputs.empty() ? std::string() : inputs.front(), "holds no frame",
                         "frames end in .raw, .pgm, .png, .tif or .bmp");

    std::map<std::string, int> wanted;
    for (const auto& [path, shown] : gathering.Files())
        ++wanted[FoldName(ResultName(path.lexically_relative(gathering.Root()), ending, false))];
    std::vector<ListedFrame> frames;
    frames.reserve(gathering.Files().size());
    for (const auto& [path, shown] : gathering.Files()) {
        const fs::path name = path.lexically_relative(gathering.Root());
        const bool isAlone = wanted[FoldName(ResultName(name, ending, false))] == 1;
        frames.push_back({shown, ResultName(name, ending, !isAlone)});
    }
    TestResults(frames, gathering, outputFolder);
    return frames;
}

}  // namespace vastrelline
