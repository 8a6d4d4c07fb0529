// SPDX-License-Identifier: Apache-2.0
#include "RunGroups.h"

#include <iterator>
#include <utility>

namespace vastrelline::digest {

std::vector<RunGroup> AllGroups() {
    std::vector<RunGroup> groups;
    for (const StageValues& stage : ConfiguredStages())
        groups.push_back({std::string(stage.group), StageRuns(stage)});
    for (const StageValues& stage : FixedStages())
        groups.push_back({std::string(stage.group), StageRuns(stage)});
    for (std::vector<RunGroup> more : {SettingGroups(), ChainGroups(), ExportGroups()})
        groups.insert(groups.end(), std::make_move_iterator(more.begin()),
                      std::make_move_iterator(more.end()));
    return groups;
}

}  // namespace vastrelline::digest
