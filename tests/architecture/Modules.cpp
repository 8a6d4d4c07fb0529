// SPDX-License-Identifier: Apache-2.0
#include "Modules.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <string_view>

#include "IncludeGraph.h"

namespace vastrelline {

namespace {

std::string PathWithoutEnding(const std::string& path) { return path.substr(0, path.rfind('.')); }

std::string LeafOf(const std::string& path) { return path.substr(path.rfind('/') + 1); }

std::string WithoutSystem(const std::string& folder) {
    const std::string leaf = LeafOf(folder);
    const bool isOfSystem = leaf == "posix" || leaf == "windows" || leaf == "memory";
    return isOfSystem ? FolderOf(folder) : folder;
}

// The module that a file belongs to: of its own name, or of the name without the form if that has a header or
// a plain form. The header may lie in the folder above for the forms of an operating system.
std::string ModuleOf(const ParsedTree& tree, const std::string& file) {
    constexpr std::array<std::string_view, 9> kForms{"Scalar",   "Baseline", "Avx2",    "Avx512", "Vector",
                                                     "Schedule", "Posix",    "Windows", "Memory"};
    const std::string path = PathWithoutEnding(file);
    for (const std::string_view form : kForms) {
        if (!path.ends_with(form)) continue;
        const std::string name = path.substr(0, path.size() - form.size());
        const std::string above = WithoutSystem(FolderOf(name)) + "/" + LeafOf(name);
        if (tree.contains(above + ".h")) return above;
        if (tree.contains(name + "Scalar.cpp")) return name;
    }
    return path;
}

// Whether `name` begins with whole words of it.
bool BeginsWith(const std::string& name, const std::string& words) {
    if (!name.starts_with(words)) return false;
    return name.size() == words.size() || std::islower(static_cast<unsigned char>(name[words.size()])) == 0;
}

// Of the modules that the name begins with, the one with the longest name; empty without one.
std::string FindNamesake(const Modules& modules, const std::string& name) {
    std::string best;
    for (const auto& [path, module] : modules)
        if (BeginsWith(name, LeafOf(path)) && LeafOf(path).size() > LeafOf(best).size()) best = path;
    return best;
}

bool UsesFolder(const ParsedFile& file, const std::string& folder, const Mirror& mirror) {
    const auto& includes = file.text.quotedIncludes;
    return std::any_of(includes.begin(), includes.end(), [&](const std::string& header) {
        return FolderOf(header) == folder ||
               (header == "vastrelline.h" && mirror.outerFolders.contains(folder));
    });
}

// From each module to those of its folder that it includes.
Graph MakeUses(const Modules& modules) {
    std::map<std::string, std::string> moduleByFile;
    for (const auto& [path, module] : modules)
        for (const std::string& file : module.files) moduleByFile[file] = path;
    Graph uses;
    for (const auto& [path, module] : modules) {
        for (const std::string& header : module.includes) {
            const auto used = moduleByFile.find(header);
            if (used != moduleByFile.end() && FolderOf(used->second) == FolderOf(path))
                uses[path].insert(used->second);
        }
    }
    return uses;
}

bool Exercises(const ParsedFile& test, const std::string& path, const Modules& modules, const Graph& uses) {
    const Module& module = modules.at(path);
    const auto& tokens = test.text.tokens;
    const bool isNamed = std::any_of(tokens.begin(), tokens.end(), [&](const Token& token) {
        return module.functions.contains(token.text);
    });
    const auto& includes = test.text.quotedIncludes;
    return isNamed || std::any_of(includes.begin(), includes.end(), [&](const std::string& header) {
               return FindReached(uses, PathWithoutEnding(header)).contains(path);
           });
}

}  // namespace

Modules ListModules(const ParsedTree& tree) {
    Modules modules;
    for (const auto& [path, file] : tree) {
        const std::string name = ModuleOf(tree, path);
        if (path.ends_with(".inl") && name == PathWithoutEnding(path)) continue;
        Module& module = modules[name];
        module.files.insert(path);
        module.includes.insert(file.text.quotedIncludes.begin(), file.text.quotedIncludes.end());
        if (path.ends_with(".h") || !tree.contains(name + ".h"))
            for (const FunctionSite& site : file.functions.sites) module.functions.insert(site.name);
        module.hasCode = module.hasCode || file.functions.hasCode;
    }
    return modules;
}

std::vector<std::string> FindUntestedModules(const Modules& modules, const ParsedTree& tests,
                                             const Coverings& covered) {
    const Graph uses = MakeUses(modules);
    std::vector<std::string> complaints;
    Findings withoutOwnTest;
    for (const auto& [path, module] : modules) {
        if (module.hasCode && !tests.contains(path + "Test.cpp"))
            withoutOwnTest[path] = path + " has no test: write tests/" + path + "Test.cpp";
    }
    Exceptions listed;
    for (const auto& [path, coveringTests] : covered) {
        listed[path] = "";
        for (const std::string& test : coveringTests) {
            const auto file = tests.find(test);
            if (file == tests.end())
                complaints.push_back("tests/" + test + ", listed for " + path + ", is not there");
            else if (modules.contains(path) && !Exercises(file->second, path, modules, uses))
                complaints.push_back("tests/" + test + ", listed for " + path + ", does not exercise it");
        }
    }
    const std::vector<std::string> gaps = CompareFindings(withoutOwnTest, listed);
    complaints.insert(complaints.end(), gaps.begin(), gaps.end());
    return complaints;
}

Findings FindStrayFiles(const Modules& modules, const ParsedTree& files, const Mirror& mirror) {
    Findings stray;
    for (const auto& [path, file] : files) {
        const bool isOwn = mirror.ownFolders.contains(path.substr(0, path.find('/')));
        if (isOwn || !path.ends_with(mirror.suffix)) continue;
        const std::string folder = FolderOf(path);
        const std::string mirrored = WithoutSystem(folder);
        const std::string leaf = LeafOf(path);
        const std::string namesake =
            FindNamesake(modules, leaf.substr(0, leaf.size() - mirror.suffix.size()));
        const std::string home = FolderOf(namesake);
        if (namesake.empty()) {
            if (!UsesFolder(file, folder, mirror) && !UsesFolder(file, mirrored, mirror))
                stray[path] = path + " is named for no module and uses none of its folder: rename or move it";
        } else if (home != folder && home != mirrored) {
            stray[path] = path + " is named for " + namesake + ": move it to " + home + "/, or rename it";
        }
    }
    return stray;
}

}  // namespace vastrelline
