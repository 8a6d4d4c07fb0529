// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace vastrelline {

// The files beside this header that go into reports as they are: the build puts them into the tool.
std::string_view ReportStyle();     // report.css: how a page looks, on the screen and on paper
std::string_view ViewerStyle();     // viewer.css: how a viewer of two frames looks
std::string_view ViewerControls();  // viewer.html: its parts, with @id@ for its number
std::string_view ViewerScript();    // levels.js and viewer.js: what it does

}  // namespace vastrelline
