// SPDX-License-Identifier: Apache-2.0
#include "workbench/RunHistory.h"

#include <filesystem>
#include <system_error>
#include <vector>

#include "files/Sha256.h"
#include "files/WholeWrite.h"
#include "messages/ToolError.h"
#include "platform/FileSteps.h"
#include "platform/PathText.h"
#include "platform/Reason.h"
#include "platform/StateFolder.h"

namespace vastrelline {
namespace {

namespace fs = std::filesystem;

constexpr size_t kNameDigits = 16;
constexpr size_t kPieceBytes = size_t{1} << 20;

}  // namespace

std::string HistoryFileOf(const std::string& profile) {
    const std::string states = StateFolder();
    if (states.empty()) return {};
    const fs::path folder = PathOf(states) / "tune";
    std::error_code error;
    fs::create_directory(folder, error);
    if (!fs::is_directory(folder, error)) return {};
    const std::string whole = FoldName(fs::absolute(PathOf(profile)).lexically_normal().string());
    return (folder / PathOf(Sha256Of(whole).substr(0, kNameDigits) + ".jsonl")).string();
}

RunHistory::RunHistory(std::string path) : path_(std::move(path)) {
    if (path_.empty()) return;
    Open();
    if (file_ == nullptr) return;
    const std::string text = ReadAll();
    bytes_ = text.size();
    isTorn_ = !text.empty() && text.back() != '\n';
    past_ = ReadHistoryLines(text);
    runs_ = past_.runs.size();
    if (runs_ > 0) lastProfile_ = past_.runs.back().row.desk.bytes;
}

void RunHistory::Open() {
    auto file = std::make_unique<JournalFile>();
    std::error_code error = file->Open(path_);
    if (!error) error = file->Hold();
    if (error == std::errc::resource_unavailable_try_again)
        return GiveUp("another workbench works on this profile: the runs of this one are not kept for later");
    if (error) return GiveUp("the runs are not kept for later: " + path_ + ": " + DescribeReason(error));
    file_ = std::move(file);
}

std::string RunHistory::ReadAll() const {
    std::string text;
    std::vector<char> piece(kPieceBytes);
    // A file of another maker may be of any length.
    while (text.size() <= 2 * kMostBytes) {
        size_t count = 0;
        if (file_->Read(text.size(), piece, count) || count == 0) break;
        text.append(piece.data(), count);
    }
    return text;
}

void RunHistory::AddRun(const PastRun& run) {
    if (file_ == nullptr || run.row.desk.bytes.size() > kMostProfileBytes) return;
    if (runs_ >= kMostRuns || bytes_ >= kMostBytes) Shorten();
    const bool isOther = runs_ == 0 || run.row.desk.bytes != lastProfile_;
    Append(RunLine(run, isOther));
    lastProfile_ = run.row.desk.bytes;
    ++runs_;
}

void RunHistory::Append(std::string line) {
    if (file_ == nullptr) return;
    if (isTorn_) line.insert(0, 1, '\n');
    isTorn_ = false;
    const std::error_code error = file_->Append(line);
    if (error) GiveUp("the runs are no longer kept for later: " + path_ + ": " + DescribeReason(error));
    bytes_ += line.size();
}

void RunHistory::Shorten() {
    PastRuns past = ReadHistoryLines(ReadAll());
    size_t count = std::min(past.runs.size(), kKeptRuns);
    std::string text = WriteHistoryLines(past, count);
    while (text.size() > kMostBytes / 2 && count > 1) text = WriteHistoryLines(past, count /= 2);
    const std::string draft = path_ + ".new";
    // Windows moves no file over one that is open. Who takes the name in between has the history then.
    file_.reset();
    try {
        WriteWhole(draft, text);
    } catch (const ToolError& error) {
        return GiveUp(std::string("the runs are no longer kept for later: ") + error.what());
    }
    // The name of the old file must not come to stand for one that the disk does not have yet.
    std::error_code error = FlushToDisk(draft);
    if (!error) error = MoveOver(draft, path_);
    if (error)
        return GiveUp("the runs are no longer kept for later: " + path_ + ": " + DescribeReason(error));
    Open();
    runs_ = count;
    bytes_ = text.size();
    isTorn_ = false;
    lastProfile_ = past.runs.empty() ? std::string() : past.runs.back().row.desk.bytes;
}

void RunHistory::GiveUp(std::string why) {
    file_.reset();
    note_ = std::move(why);
}

}  // namespace vastrelline
