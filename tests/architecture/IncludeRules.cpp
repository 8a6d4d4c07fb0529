#include "IncludeRules.h"

#include <algorithm>
#include <map>
#include <set>
#include <sstream>
#include <string_view>
#include <utility>

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

// The folder that counts: each stage and each operator has one of its own.
std::string Room(const std::string& path) {
    const std::string top = TopFolder(path);
    if (top != "stages" && top != "operators") return top;
    return path.substr(0, path.find('/', top.size() + 1));
}

int32_t RankOf(const std::string& path) {
    static const std::map<std::string, int32_t> ranks{
        {"platform", 0}, {"profile_text", 0}, {"pixels", 1}, {"operators", 2}, {"config", 2},
        {"report", 3},   {"sensor", 3},       {"stages", 4}, {"chains", 5},    {"exports", 6}};
    return ranks.at(TopFolder(path));
}

// Arrows beside the ranks.
bool IsListed(const std::string& from, const std::string& to) {
    static const std::set<std::pair<std::string, std::string>> arrows{
        {"platform", "profile_text"},
        {"operators/box_mean", "operators/histogram"},
        {"operators/curves", "operators/histogram"},
        {"operators/tile_equalise", "operators/histogram"},
        {"operators/resample", "operators/separable"}};
    return arrows.contains({from, to});
}

bool MayInclude(const std::string& from, const std::string& header) {
    if (header == kPublicHeader) return RankOf(from) >= RankOf("config") && TopFolder(from) != "operators";
    const std::string to = Room(header);
    return Room(from) == to || RankOf(header) < RankOf(from) || IsListed(Room(from), to);
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
            else if (!MayInclude(path, header))
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
