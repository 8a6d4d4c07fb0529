// SPDX-License-Identifier: Apache-2.0
#include "commands/SweepCommand.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <mutex>
#include <nlohmann/json.hpp>
#include <optional>
#include <sstream>
#include <utility>

#include "batch/Crew.h"
#include "commands/FolderRun.h"
#include "commands/JobsOption.h"
#include "commands/JsonObject.h"
#include "commands/SweepReport.h"
#include "commands/SweepRun.h"
#include "files/OutputFolder.h"
#include "formats/PngFormat.h"
#include "messages/ToolError.h"
#include "platform/Cancellation.h"

namespace vastrelline {
namespace {

constexpr size_t kUsualLimit = 100;
constexpr size_t kMostPictures = 1000;  // that one sheet has room for
constexpr size_t kMostKeys = 2;

// How many runs have ended, told by whoever ends one.
class Count {
public:
    Count(Messages& messages, size_t total) : progress_(messages.Follow("pictures", total)) {}

    void Wait() {
        const std::lock_guard lock(mutex_);
        progress_.Update(done_, failed_);
    }

    void Take(const SweptPicture& picture) {
        const std::lock_guard lock(mutex_);
        ++done_;
        failed_ += picture.error ? 1U : 0U;
        progress_.Update(done_, failed_);
    }

    void Finish() { progress_.Finish(); }

private:
    std::mutex mutex_;
    Progress progress_;
    size_t done_ = 0;
    size_t failed_ = 0;
};

// All values, those of the first key changing first.
std::vector<std::vector<std::string>> AllValues(const SweepPlan& plan) {
    std::vector<std::vector<std::string>> all;
    if (plan.places.size() == 1) {
        for (const std::string& value : plan.places[0].swept.values) all.push_back({value});
        return all;
    }
    for (const std::string& down : plan.places[1].swept.values)
        for (const std::string& across : plan.places[0].swept.values) all.push_back({across, down});
    return all;
}

std::string TextOf(const std::vector<uint8_t>& bytes) { return {bytes.begin(), bytes.end()}; }

void ShowFailures(const SweepReport& report, Messages& messages) {
    const auto show = [&](const SweptPicture& picture) {
        if (!picture.error) return;
        const std::string where = DescribeSettings(*report.plan, picture.values);
        messages.Fail(OneLine(where + ": " + picture.error->what()));
    };
    show(*report.unchanged);
    for (const SweptPicture& picture : *report.pictures) show(picture);
}

}  // namespace

std::string_view SweepCommand::Examples() const {
    return "  vastrelline sweep tooth_1300x1668.raw --profile dental.ini --section General --out slopes \\\n"
           "      --set 04_MAX_SLOPE=1:3:0.25\n"
           "  vastrelline sweep tooth.png --profile dental.ini --section General --out grid \\\n"
           "      --set 04_MAX_SLOPE=1.5:2.5:0.5 --set 03_ENHANCED_RATIO=1.1,1.3,1.6\n"
           "  vastrelline sweep tooth.png --profile dental.ini --section General --out clips \\\n"
           "      --set 04_MAX_SLOPE=1,2,4 --jobs 1 --json\n";
}

std::string_view SweepCommand::Notes() const {
    return "FROM:TO:STEP counts in decimal, up or down; TO is a value if a step hits it. Two --set make a "
           "grid, the\n"
           "first across. The folder holds a picture for each value, unchanged.png of the profile as it is, "
           "contact.png\n"
           "with all of them, sweep.txt with the table, and sweep.json as docs/tool-json.md tells. Times of "
           "several jobs\n"
           "hold each other up: --jobs 1 gives true ones.\n";
}

void SweepCommand::AddOptions(CLI::App& command) {
    AddFolderRunOptions(command, options_, folder_);
    command
        .add_option("--set", settings_,
                    "A key and its values: KEY=FROM:TO:STEP or KEY=V1,V2,V3; a second one makes a grid")
        ->required()
        ->allow_extra_args(false)
        ->type_name("KEY=VALUES");
    AddJobsOption(command,
                  "Values that are worked on at a time, each in a process of its own; without it as many as "
                  "there are processors",
                  jobs_);
    limit_ = kUsualLimit;
    command.add_option("--limit", limit_, "The most pictures that are made; without it 100")
        ->type_name("NUMBER");
}

std::vector<SweptKey> SweepCommand::ParseKeys() const {
    if (limit_ < 1 || limit_ > kMostPictures)
        throw UsageError("--limit should be a number from 1 to " + std::to_string(kMostPictures));
    if (settings_.size() > kMostKeys)
        throw UsageError("--set stands " + std::to_string(settings_.size()) + " times",
                         "name one key, or two for a grid");
    std::vector<SweptKey> keys;
    size_t count = 1;
    for (const std::string& setting : settings_) {
        keys.push_back(ParseSweptKey(setting, limit_));
        count *= keys.back().values.size();
    }
    if (count > limit_)
        throw UsageError("the grid has " + std::to_string(count) + " pictures, and at most " +
                             std::to_string(limit_) + " are made",
                         "take larger steps, or more by --limit");
    return keys;
}

ExitCode SweepCommand::Execute(CommandContext& context) {
    const std::optional<GreyWindow> window = TestFolderRunOptions(options_);
    TestJobs(jobs_);
    std::vector<SweptKey> keys = ParseKeys();
    // Before the work, so that a name that is taken costs no time.
    OutputFolder folder(folder_, kSweepIndexLeaf, options_.mayReplace);
    const FolderRun input = PrepareFolderRun(options_, context);
    const SweepPlan plan{options_, input, FindSweptPlaces(input, options_.section, std::move(keys)), window,
                         context.callExport};

    const std::vector<std::vector<std::string>> all = AllValues(plan);
    PictureLeaves leaves;
    std::vector<SweptPicture> pictures(all.size());
    for (size_t i = 0; i < all.size(); ++i) pictures[i].leaf = leaves.Name(SettingsOf(plan, all[i]));
    Count count(context.messages, all.size() + 1);
    Frame frame;
    const SweptPicture unchanged = RunSwept(
        plan, {}, "unchanged.png", nullptr, folder, [&count] { count.Wait(); }, &frame);
    count.Take(unchanged);
    const Frame* const base = unchanged.error ? nullptr : &frame;
    ShareOut(jobs_, all.size(), [&](size_t part) {
        if (IsCancelled()) throw CancelledError();
        pictures[part] = RunSwept(
            plan, all[part], std::move(pictures[part].leaf), base, folder, [&count] { count.Wait(); },
            nullptr);
        count.Take(pictures[part]);
        return true;
    });
    count.Finish();

    const SweepReport report{&plan, &unchanged, &pictures, folder.Path()};
    for (const Finding& finding : SumUpFindings(report)) context.messages.Show(finding);
    ShowFailures(report, context.messages);
    const ExitCode code = CodeOf(report);
    const bool hasPicture = std::any_of(pictures.begin(), pictures.end(),
                                        [](const SweptPicture& picture) { return !picture.error; });
    if (!hasPicture) throw ToolError(code, {}, "the run failed with every value", "no folder was made");
    const Canvas sheet = DrawSweepSheet(report);
    folder.Write(kSweepSheetLeaf, TextOf(EncodePng8(sheet.Levels(), sheet.Width(), sheet.Height())));
    folder.Write(kSweepTableLeaf, FormatSweep(report));
    const nlohmann::ordered_json json = SweepToJson(report);
    std::ostringstream index;
    PrintObject(index, context.command, code, json);
    folder.Write(kSweepIndexLeaf, index.str());
    if (IsCancelled()) throw CancelledError();
    folder.Publish();
    if (context.wantsJson)
        PrintObject(context, code, json);
    else
        context.report << FormatSweep(report) << "\nfolder   " << folder.Path() << '\n';
    return code;
}

}  // namespace vastrelline
