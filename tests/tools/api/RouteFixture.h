// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <optional>
#include <string>
#include <utility>

#include "api/ApiRoutes.h"
#include "workbench/BenchFixture.h"

namespace vastrelline {

// A workbench that is asked as a page asks it.
class RouteFixture : public BenchFixture {
protected:
    using Json = nlohmann::ordered_json;

    void SetUp() override { bench_.emplace(BenchSetup(), TimesRatio, events_); }

    virtual WorkbenchSetup BenchSetup() const { return Setup(); }

    HttpAnswer Get(const std::string& path, std::map<std::string, std::string> query = {}) {
        return AnswerApi(*bench_, {"GET", path, std::move(query), {}});
    }
    HttpAnswer Post(const std::string& path, const Json& body) {
        return AnswerApi(*bench_, {"POST", path, {}, body.dump()});
    }
    // What a path tells of a job, once the job has ended.
    Json AwaitJob(const std::string& path) {
        for (int i = 0; i < 3000; ++i) {
            Json answer = Json::parse(Get(path).body);
            if (answer.value("state", "") != "running") return answer;
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        throw std::runtime_error("the job did not end");
    }

    // NOLINTNEXTLINE(misc-non-private-member-variables-in-classes): every test is a class derived from it
    std::optional<Workbench> bench_;
};

}  // namespace vastrelline
