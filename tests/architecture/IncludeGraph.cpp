// SPDX-License-Identifier: Apache-2.0
#include "IncludeGraph.h"

#include <algorithm>

namespace vastrelline {

namespace {

// Walks the arrows depth first; `trail` holds the names from the start to here.
class CycleSearch {
public:
    explicit CycleSearch(const Graph& graph) : graph_(graph) {}

    void Visit(const std::string& name) {
        const auto onTrail = std::find(trail_.begin(), trail_.end(), name);
        if (onTrail != trail_.end()) {
            std::string cycle;
            for (auto step = onTrail; step != trail_.end(); ++step) cycle += *step + " -> ";
            cycles_.push_back(cycle + name);
            return;
        }
        const auto arrows = graph_.find(name);
        if (arrows == graph_.end() || !seen_.insert(name).second) return;
        trail_.push_back(name);
        for (const std::string& next : arrows->second) Visit(next);
        trail_.pop_back();
    }

    const std::vector<std::string>& Cycles() const { return cycles_; }

private:
    const Graph& graph_;
    std::vector<std::string> trail_;
    std::set<std::string> seen_;
    std::vector<std::string> cycles_;
};

}  // namespace

Graph MakeIncludeGraph(const ParsedTree& tree) {
    Graph graph;
    for (const auto& [path, file] : tree)
        graph[path].insert(file.text.quotedIncludes.begin(), file.text.quotedIncludes.end());
    return graph;
}

Graph GroupGraph(const Graph& graph, const std::function<std::string(const std::string&)>& groupOf) {
    Graph groups;
    for (const auto& [from, targets] : graph) {
        for (const std::string& to : targets)
            if (groupOf(from) != groupOf(to)) groups[groupOf(from)].insert(groupOf(to));
    }
    return groups;
}

std::set<std::string> FindReached(const Graph& graph, const std::string& start) {
    std::set<std::string> reached{start};
    std::vector<std::string> open{start};
    while (!open.empty()) {
        const auto arrows = graph.find(open.back());
        open.pop_back();
        if (arrows == graph.end()) continue;
        for (const std::string& next : arrows->second)
            if (reached.insert(next).second) open.push_back(next);
    }
    return reached;
}

std::vector<std::string> FindCycles(const Graph& graph) {
    CycleSearch search(graph);
    for (const auto& [name, arrows] : graph) search.Visit(name);
    return search.Cycles();
}

}  // namespace vastrelline
