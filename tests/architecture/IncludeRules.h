#pragma once

#include <map>
#include <string>
#include <vector>

namespace vastrelline {

// Texts of files by their path below src/, with '/' between folders.
using SourceTree = std::map<std::string, std::string>;

// Each function lists what breaks its rule, one line each, and nothing if all is well.

// Includes point one way: entry -> stages (prepare, tone, detail, contrast, noise) -> image -> platform.
// config stands on platform; diagnostics on config, image and platform; both serve stages and entry. Of
// another stage's folder a stage and diagnostics may use a core, which is any header but ...Stage.h and
// ...Params.h. Every quoted include names a file by its path below src/, or the public header, which
// neither image nor platform needs.
std::vector<std::string> FindWrongIncludes(const SourceTree& tree);

// Headers of the operating system are met in platform only.
std::vector<std::string> FindSystemHeadersOutsidePlatform(const SourceTree& tree);

// No file reaches itself by its includes.
std::vector<std::string> FindIncludeCircles(const SourceTree& tree);

// A name without its ending stands in one folder only.
std::vector<std::string> FindRepeatedBaseNames(const SourceTree& tree);

}  // namespace vastrelline
