// SPDX-License-Identifier: Apache-2.0
#include "api/ApiRoutes.h"
#include "reports/Base64.h"
#include "views/SmallPicture.h"

namespace vastrelline {
namespace {

HttpAnswer GetHistory(const ApiCall& call) {
    return JsonAnswer(call.bench.HistoryBefore(call.WholeNumber("before")));
}

HttpAnswer GetPicture(const ApiCall& call) {
    const SmallPicture picture = call.bench.HistoryPicture(call.PartNumber(0));
    return JsonAnswer(
        {{"width", picture.width}, {"height", picture.height}, {"grey", EncodeBase64(picture.grey)}});
}

constexpr ApiRoute kRoutes[] = {
    {"GET", "api/history", GetHistory},
    {"GET", "api/history/*/picture", GetPicture},
};

}  // namespace

std::span<const ApiRoute> HistoryRoutes() { return kRoutes; }

}  // namespace vastrelline
