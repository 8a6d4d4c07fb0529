// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace vastrelline {

// The path that a text of the tool's names: UTF-8 on Windows, where a path made of the text itself would be
// in another character set; bytes elsewhere. Back it goes by `string`, and by `generic_string` where other
// systems may read it.
std::filesystem::path PathOf(std::string_view text);

// One form of all names that the system takes for the same: on Windows whatever the case of their letters and
// the way of their separators, elsewhere the name itself.
std::string FoldName(std::string_view name);

}  // namespace vastrelline
