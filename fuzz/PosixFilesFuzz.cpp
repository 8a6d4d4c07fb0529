// SPDX-License-Identifier: Apache-2.0

// The files of the operating system beside a plain picture of them: a short run of saves, reads, replacements
// and appends on a few names of a folder of its own, some of which are folders, links or nothing. The input's
// tail picks the steps, its head is what is written.

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <map>
#include <set>
#include <string>

#include "faults/FaultInjector.h"
#include "platform/Files.h"
#include "platform/WholeFile.h"
#include "support/FuzzInput.h"
#include "support/TemporaryFolder.h"

namespace {

using namespace vastrelline;

// As the steps name them. "link" leads to "a", "lost" to nothing; "d" is a folder, "e" may become one.
constexpr std::array<const wchar_t*, 10> kNames{L"a",    L"b",    L"d\\a", L"d/./b", L"e/a",
                                                L"link", L"lost", L"d",    L"",      L"missing/a"};

// The same file under one name; empty for what is no place of a file.
std::string PlainName(size_t name, bool hasFolderE) {
    constexpr std::array<const char*, kNames.size()> kPlain{"a", "b",          "d/a", "d/b", "e/a",
                                                            "a", "at the end", "",    "",    ""};
    const std::string plain = kPlain[name];
    return plain == "e/a" && !hasFolderE ? "" : plain;
}

class Steps {
public:
    Steps() {
        std::filesystem::create_directory(folder_.Path() / "d");
        std::filesystem::create_symlink("a", folder_.Path() / "link");
        std::filesystem::create_symlink("at the end", folder_.Path() / "lost");
    }

    void Take(InputTail& tail) {
        const uint8_t step = tail.Take<uint8_t>();
        const size_t name = tail.Take<uint8_t>() % kNames.size();
        const auto count = std::min<size_t>(tail.Take<uint8_t>() * size_t{37}, tail.Size());
        const std::string bytes(tail.Data(), tail.Data() + count);
        if (step >= kFirstFaultyStep) return TakeFaulty(step, name, bytes, tail.Take<uint8_t>());
        switch (step % 8) {
            case 0:
            case 1:
                return Save(name, bytes);
            case 2:
                return Replace(name, bytes, step / 8 % 4 == 0);
            case 3:
                return Append(name, bytes, OpenMode::AppendExclusive);
            case 4:
                return Append(name, bytes, OpenMode::TruncateExclusive);
            case 5:
                Require(CreateFolder(folder_.Wide(L"e")) != hasFolderE_, "a folder is made once");
                hasFolderE_ = true;
                return;
            case 6:
                return RemoveLeftover(PathOf(name));
            default:
                return Forbid(name);
        }
    }

    // All names tell what the picture tells, and nothing lies beside them.
    void Check() const {
        for (size_t name = 0; name < kNames.size(); ++name) {
            const std::string plain = PlainName(name, hasFolderE_);
            const auto file = files_.find(plain);
            const bool isThere = !plain.empty() && file != files_.end();
            std::string bytes;
            WaitBudget none(std::chrono::milliseconds(0));
            const ReadResult result = ReadWholeFile(PathOf(name), kLargestFile, none, bytes);
            Require((result == ReadResult::Done) == isThere, "a file is read where there is one");
            if (isThere) Require(bytes == file->second, "with the bytes that were written");
            if (isThere && !bytes.empty())
                Require(ReadWholeFile(PathOf(name), bytes.size() - 1, none, bytes) == ReadResult::NoFile,
                        "a file beyond the limit is none");
            const bool isFolder = kNames[name] == std::wstring(L"d") || kNames[name] == std::wstring(L"");
            Require(FileExists(PathOf(name)) == (isThere || isFolder), "what is there is found");
        }
        size_t count = 0;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder_.Path()))
            if (entry.is_regular_file() && !entry.is_symlink()) ++count;
        Require(count == files_.size() || mayHaveLeft_, "nothing was left beside");
    }

private:
    static constexpr size_t kLargestFile = 1U << 20U;
    static constexpr uint8_t kFirstFaultyStep = 128;

    // A step during which a call of the system fails, or all from one on. The file is the old one or the new.
    void TakeFaulty(uint8_t step, size_t name, const std::string& bytes, uint8_t fault) {
        const std::string plain = PlainName(name, hasFolderE_);
        const auto file = files_.find(plain);
        const bool wasThere = !plain.empty() && file != files_.end();
        const std::string old = wasThere ? file->second : "";
        FaultPlan plan{.kind = FaultKind::Files, .first = fault % 40 + 1};
        plan.isForGood = fault >= 200;
        plan.reason = step / 8 % 2 == 0 ? FaultReason::Broken : FaultReason::Refused;
        bool isDone = false;
        bool isWritten = true;  // whether a step that succeeds leaves the new bytes
        std::string expected = bytes;
        std::string read;
        WaitBudget none(std::chrono::milliseconds(0));
        {
            const ScopedFaults faults(plan);
            switch (step % 4) {
                case 0:
                    isDone = SaveWholeFile(PathOf(name), bytes);
                    break;
                case 1:
                    isDone = ReplaceWholeFile(PathOf(name), old, bytes, none);
                    break;
                case 2:
                    isWritten = false;
                    if (ReadWholeFile(PathOf(name), kLargestFile, none, read) == ReadResult::Done)
                        Require(wasThere && read == old, "what is read is what was written");
                    RemoveLeftover(PathOf(name));
                    break;
                default: {
                    OutputFile output(PathOf(name), OpenMode::AppendExclusive);
                    isDone = output.IsOpen() && output.Append(bytes.data(), bytes.size());
                    expected = old + bytes;
                }
            }
            mayHaveLeft_ = mayHaveLeft_ || plan.isForGood || faults.HasKeptFile();
        }
        if (plain.empty()) return Require(!isDone, "where there is no place nothing is written");
        Learn(plain, wasThere);
        const std::string now = files_.contains(plain) ? files_[plain] : "";
        if (isDone && isWritten) Require(now == expected, "success leaves the new bytes");
        const bool isPart = step % 4 == 3 && now.starts_with(old) && expected.starts_with(now);
        Require(now == old || (isWritten && now == expected) || isPart, "a file is the old one or the new");
    }

    // What stands there after a step that may have failed.
    void Learn(const std::string& plain, bool wasThere) {
        const std::filesystem::path path = folder_.Path() / plain;
        const bool isThere = std::filesystem::is_regular_file(path);
        Require(isThere || !wasThere, "a file stays");
        if (isThere) files_[plain] = ReadBytes(path);
    }

    std::wstring PathOf(size_t name) const { return folder_.Wide(kNames[name]); }

    void Save(size_t name, const std::string& bytes) {
        const std::string plain = PlainName(name, hasFolderE_);
        const bool isSaved = SaveWholeFile(PathOf(name), bytes);
        Require(isSaved == (!plain.empty() && !forbidden_.contains(plain)),
                "a file is saved where there is a place for it");
        if (isSaved) files_[plain] = bytes;
    }

    void Replace(size_t name, const std::string& bytes, bool isFromOtherBytes) {
        const std::string plain = PlainName(name, hasFolderE_);
        const auto file = files_.find(plain);
        const bool isThere = !plain.empty() && file != files_.end();
        const std::string old = (isThere ? file->second : "") + (isFromOtherBytes ? "other" : "");
        WaitBudget none(std::chrono::milliseconds(0));
        // A file that was appended to just now is not quiet, so it may well be refused.
        if (!ReplaceWholeFile(PathOf(name), old, bytes, none)) return;
        Require(isThere && !isFromOtherBytes && !forbidden_.contains(plain),
                "only what was read is replaced");
        file->second = bytes;
    }

    void Append(size_t name, const std::string& bytes, OpenMode mode) {
        const std::string plain = PlainName(name, hasFolderE_);
        OutputFile file(PathOf(name), mode);
        // The superuser opens what nobody may write.
        if (forbidden_.contains(plain) && !file.IsOpen()) return;
        Require(file.IsOpen() == !plain.empty(), "a file opens where there is a place for it");
        if (!file.IsOpen()) return;
        Require(!OutputFile(PathOf(name), OpenMode::AppendExclusive).IsOpen(), "one writer at a time");
        Require(file.Append(bytes.data(), bytes.size()), "all bytes are written");
        std::string& known = files_[plain];
        if (mode == OpenMode::TruncateExclusive) known.clear();
        known += bytes;
    }

    void Forbid(size_t name) {
        const std::string plain = PlainName(name, hasFolderE_);
        if (!files_.contains(plain)) return;
        forbidden_.insert(plain);
        std::filesystem::permissions(folder_.Path() / plain, std::filesystem::perms::owner_read);
    }

    TemporaryFolder folder_;
    std::map<std::string, std::string> files_;
    std::set<std::string> forbidden_;
    bool hasFolderE_ = false;
    bool mayHaveLeft_ = false;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    constexpr int kMostSteps = 12;
    InputTail tail(data, size);
    Steps steps;
    const int count = tail.Take<uint8_t>() % (kMostSteps + 1);
    for (int i = 0; i < count; ++i) steps.Take(tail);
    steps.Check();
    return 0;
}
