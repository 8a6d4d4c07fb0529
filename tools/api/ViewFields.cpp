// SPDX-License-Identifier: Apache-2.0
#include "api/ViewFields.h"

#include <algorithm>
#include <string>

#include "messages/ToolError.h"

namespace vastrelline {

ViewRequest ViewOf(const ApiCall& call) {
    const int32_t pw = call.Integer("pw");
    const int32_t ph = call.Integer("ph");
    const ViewRequest view{call.Number("x"),
                           call.Number("y"),
                           call.Number("w"),
                           call.Number("h"),
                           static_cast<uint32_t>(std::max(pw, 0)),
                           static_cast<uint32_t>(std::max(ph, 0))};
    if (!IsUsableView(view)) throw UsageError("this is no view", {});
    return view;
}

GreyWindow WindowOf(const ApiCall& call) {
    const GreyWindow window{call.Integer("low"), call.Integer("high")};
    if (window.low >= window.high) throw UsageError("the window's low should be below its high", {});
    return window;
}

HttpAnswer PixelsAnswer(const std::vector<uint8_t>& pixels) {
    return BytesAnswer({pixels.begin(), pixels.end()});
}

}  // namespace vastrelline
