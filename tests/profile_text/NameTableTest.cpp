// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "profile_text/NameTable.h"

namespace vastrelline {
namespace {

// A table of names that stand at positions 0, 1, 2 ..., whose hashes the test picks.
class Names {
public:
    void Add(uint64_t hash, const std::string& name) {
        names_.push_back(name);
        const size_t number = names_.size() - 1;
        table_.Add(hash, number, {number, number + 1}, Is(name));
    }
    std::optional<size_t> Find(uint64_t hash, const std::string& name) const {
        return table_.Find(hash, Is(name));
    }

private:
    NameTable::IsName Is(const std::string& name) const {
        return [this, name](ByteRange stands) {
            EXPECT_EQ(stands.Size(), 1U);
            return names_[stands.begin] == name;
        };
    }

    std::vector<std::string> names_;
    NameTable table_;
};

TEST(NameTable, IsEmptyAtFirst) { EXPECT_EQ(Names().Find(5, "a"), std::nullopt); }

TEST(NameTable, FirstOfTwoStays) {
    Names names;
    names.Add(5, "a");
    names.Add(6, "b");
    names.Add(5, "a");
    EXPECT_EQ(names.Find(5, "a"), 0U);
    EXPECT_EQ(names.Find(6, "b"), 1U);
    EXPECT_EQ(names.Find(7, "c"), std::nullopt);
}

TEST(NameTable, NamesOfOneHashStayApart) {
    Names names;
    for (const char* name : {"a", "b", "c"}) names.Add(UINT64_MAX, name);
    EXPECT_EQ(names.Find(UINT64_MAX, "a"), 0U);
    EXPECT_EQ(names.Find(UINT64_MAX, "b"), 1U);
    EXPECT_EQ(names.Find(UINT64_MAX, "c"), 2U);
    EXPECT_EQ(names.Find(UINT64_MAX, "d"), std::nullopt);
}

// Hashes that all begin at the same slot, whatever the size of the table.
TEST(NameTable, GrowingLosesNone) {
    Names names;
    for (uint64_t i = 0; i < 1000; ++i) names.Add((i % 7) << 40U, std::to_string(i));
    for (uint64_t i = 0; i < 1000; ++i) EXPECT_EQ(names.Find((i % 7) << 40U, std::to_string(i)), i);
    EXPECT_EQ(names.Find(0, "1000"), std::nullopt);
}

}  // namespace
}  // namespace vastrelline
