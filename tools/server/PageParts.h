// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace vastrelline {

// A file of the page, as it is within the tool.
struct PagePart {
    std::string_view name;  // "app.js"
    std::string_view type;  // "text/javascript"
    std::string_view bytes;
};

// Null if there is none of the name.
const PagePart* FindPagePart(std::string_view name);

}  // namespace vastrelline
