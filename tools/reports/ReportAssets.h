#pragma once

#include <string_view>

namespace vastrelline {

// The files beside this header that go into every report as they are: the build puts them into the tool.
std::string_view ReportStyle();   // report.css: how a page looks, on the screen and on paper
std::string_view ViewerStyle();   // viewer.css: how a viewer of two pictures looks
std::string_view ViewerScript();  // viewer.js: what that viewer does

}  // namespace vastrelline
