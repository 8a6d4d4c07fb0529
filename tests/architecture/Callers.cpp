// SPDX-License-Identifier: Apache-2.0
#include "Callers.h"

#include <algorithm>
#include <utility>

#include "IncludeGraph.h"

namespace vastrelline {

namespace {

std::string FullName(const std::string& record, const std::string& name) {
    return record.empty() ? name : record + "::" + name;
}

// Which headers each file sees.
class Sight {
public:
    explicit Sight(const ParsedTree& tree) {
        const Graph includes = MakeIncludeGraph(tree);
        for (const auto& [path, targets] : includes) seen_[path] = FindReached(includes, path);
        for (const auto& [path, targets] : includes) {
            for (const std::string& target : targets)
                if (target.ends_with(".inl")) seen_[target].insert(seen_[path].begin(), seen_[path].end());
        }
    }

    bool IsSeen(const std::string& header, const std::string& from) const {
        return seen_.at(from).contains(header);
    }

private:
    std::map<std::string, std::set<std::string>> seen_;
};

// One occurrence of a name that declares or defines nothing.
struct Use {
    std::string path;
    std::string before;                    // the token before the name
    std::string qualifier;                 // the name before "::", if any
    const FunctionSite* inside = nullptr;  // the function in whose body it stands, if any
};

class UseIndex {
public:
    explicit UseIndex(const ParsedTree& tree) : sight_(tree) {
        for (const auto& [path, file] : tree) {
            for (const FunctionSite& site : file.functions.sites)
                declared_.insert(FullName(site.record, site.name));
        }
        for (const auto& [path, file] : tree) {
            AddUses(path, file);
            for (const std::string& word : file.text.macroWords)
                uses_[word].push_back({path, "", "", nullptr});
        }
    }

    bool IsCalled(const std::string& header, const FunctionSite& function) const {
        const auto uses = uses_.find(function.name);
        return uses != uses_.end() &&
               std::any_of(uses->second.begin(), uses->second.end(), [&](const Use& use) {
                   return IsCall(use, function) && sight_.IsSeen(header, use.path);
               });
    }

private:
    void AddUses(const std::string& path, const ParsedFile& file) {
        const std::vector<Token>& tokens = file.text.tokens;
        auto site = file.functions.sites.begin();  // in the order of the text
        const FunctionSite* last = nullptr;
        for (size_t i = 0; i < tokens.size(); ++i) {
            if (site != file.functions.sites.end() && site->nameToken == i) {
                last = &*site++;
                continue;
            }
            if (!tokens[i].isWord) continue;
            Use use{path, i > 0 ? tokens[i - 1].text : "", "", nullptr};
            if (use.before == "::" && i > 1) use.qualifier = tokens[i - 2].text;
            if (last != nullptr && last->bodyBegin <= i && i < last->bodyEnd) use.inside = last;
            uses_[tokens[i].text].push_back(std::move(use));
        }
    }

    bool IsCall(const Use& use, const FunctionSite& function) const {
        const bool isOwnBody = use.inside != nullptr && use.inside->name == function.name &&
                               use.inside->record == function.record;
        if (isOwnBody) return false;
        if (function.record.empty() && (use.before == "." || use.before == "->")) return false;
        return use.qualifier == function.record ||
               !declared_.contains(FullName(use.qualifier, function.name)) || use.qualifier.empty();
    }

    Sight sight_;
    std::set<std::string> declared_;
    std::map<std::string, std::vector<Use>> uses_;
};

}  // namespace

Findings FindUncalledFunctions(const ParsedTree& tree) {
    const UseIndex uses(tree);
    Findings found;
    for (const auto& [path, file] : tree) {
        if (!path.ends_with(".h")) continue;
        for (const FunctionSite& function : file.functions.sites) {
            if (uses.IsCalled(path, function)) continue;
            const std::string name = FullName(function.record, function.name);
            found[name] =
                name + " of " + path +
                " has no caller in src/: delete it, move it to the file that uses it, or list it with a "
                "reason";
        }
    }
    return found;
}

}  // namespace vastrelline
