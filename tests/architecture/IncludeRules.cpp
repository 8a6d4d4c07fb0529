#include "IncludeRules.h"

#include <algorithm>
#include <array>
#include <set>
#include <sstream>
#include <string_view>

namespace vastrelline {

namespace {

constexpr std::string_view kPublicHeader = "vastrelline.h";

// What stands between `open` and `close` in the include lines of a text.
std::vector<std::string> ListIncludes(const std::string& text, char open, char close) {
    std::vector<std::string> includes;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        const std::string start = std::string("#include ") + open;
        if (!line.starts_with(start)) continue;
        includes.push_back(line.substr(start.size(), line.find(close, start.size()) - start.size()));
    }
    return includes;
}

std::string TopFolder(const std::string& path) { return path.substr(0, path.find('/')); }

bool IsStageFolder(std::string_view folder) {
    constexpr std::array<std::string_view, 5> kStages{"prepare", "tone", "detail", "contrast", "noise"};
    return std::find(kStages.begin(), kStages.end(), folder) != kStages.end();
}

bool MayInclude(const std::string& from, const std::string& header) {
    const std::string to = TopFolder(header);
    if (from == to || from == "entry") return true;
    if (to == "platform") return true;
    const bool isStage = IsStageFolder(from);
    if (header == kPublicHeader) return isStage || from == "config";
    if (IsStageFolder(to)) {
        const bool isCore = !header.ends_with("Stage.h") && !header.ends_with("Params.h");
        return isCore && (isStage || from == "diagnostics");
    }
    if (to == "image" || to == "config") return isStage || from == "diagnostics";
    if (to == "diagnostics") return isStage;
    return false;
}

std::string BaseName(const std::string& path) {
    const std::string leaf = path.substr(path.rfind('/') + 1);
    return leaf.substr(0, leaf.rfind('.'));
}

// Walks the includes depth first; `trail` holds the files from the start to here.
class CircleSearch {
public:
    explicit CircleSearch(const SourceTree& tree) : tree_(tree) {}

    void Visit(const std::string& path) {
        const auto onTrail = std::find(trail_.begin(), trail_.end(), path);
        if (onTrail != trail_.end()) {
            std::string circle;
            for (auto file = onTrail; file != trail_.end(); ++file) circle += *file + " -> ";
            circles_.push_back(circle + path);
            return;
        }
        const auto file = tree_.find(path);
        if (file == tree_.end() || !seen_.insert(path).second) return;
        trail_.push_back(path);
        for (const std::string& next : ListIncludes(file->second, '"', '"')) Visit(next);
        trail_.pop_back();
    }

    const std::vector<std::string>& Circles() const { return circles_; }

private:
    const SourceTree& tree_;
    std::vector<std::string> trail_;
    std::set<std::string> seen_;
    std::vector<std::string> circles_;
};

}  // namespace

std::vector<std::string> FindWrongIncludes(const SourceTree& tree) {
    std::vector<std::string> wrong;
    for (const auto& [path, text] : tree) {
        for (const std::string& header : ListIncludes(text, '"', '"')) {
            if (header != kPublicHeader && !tree.contains(header))
                wrong.push_back(path + " includes " + header + ", which is no path below src/");
            else if (!MayInclude(TopFolder(path), header))
                wrong.push_back(path + " may not include " + header);
        }
    }
    return wrong;
}

std::vector<std::string> FindSystemHeadersOutsidePlatform(const SourceTree& tree) {
    static const std::set<std::string> systemHeaders{"dirent.h",  "direct.h", "dlfcn.h",  "fcntl.h",  "io.h",
                                                     "pthread.h", "pwd.h",    "unistd.h", "windows.h"};
    std::vector<std::string> wrong;
    for (const auto& [path, text] : tree) {
        if (TopFolder(path) == "platform") continue;
        for (const std::string& header : ListIncludes(text, '<', '>')) {
            if (header.starts_with("sys/") || systemHeaders.contains(header))
                wrong.push_back(path + " includes " + header);
        }
    }
    return wrong;
}

std::vector<std::string> FindIncludeCircles(const SourceTree& tree) {
    CircleSearch search(tree);
    for (const auto& [path, text] : tree) search.Visit(path);
    return search.Circles();
}

std::vector<std::string> FindRepeatedBaseNames(const SourceTree& tree) {
    std::map<std::string, std::set<std::string>> foldersByName;
    for (const auto& [path, text] : tree)
        foldersByName[BaseName(path)].insert(path.substr(0, path.rfind('/')));
    std::vector<std::string> repeated;
    for (const auto& [name, folders] : foldersByName) {
        if (folders.size() > 1) repeated.push_back(name + " stands in " + std::to_string(folders.size()));
    }
    return repeated;
}

}  // namespace vastrelline
