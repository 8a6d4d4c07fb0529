// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "files/Sha256.h"
#include "messages/ToolError.h"
#include "profile/SensorProfile.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

namespace fs = std::filesystem;

// The plain profile, and those of the sensors S1 and S2.
class SensorProfileTest : public testing::Test {
protected:
    SensorProfileTest() {
        for (const char* const sensor : {"S1", "S2"}) {
            fs::create_directories(folder_.Path() / "MultiSensor" / sensor);
            WriteBytes(folder_.Path() / "MultiSensor" / sensor / "Brindmap.ini", sensor);
        }
    }

    void WritePlain(const std::string& text) { WriteBytes(folder_.Path() / "Brindmap.ini", text); }
    std::optional<std::string> Hash(const std::string& sensor) const {
        return HashSensorProfile(folder_.Path().string(), sensor);
    }

    // NOLINTNEXTLINE(misc-non-private-member-variables-in-classes): every test is a class derived from it
    TemporaryFolder folder_;
};

TEST_F(SensorProfileTest, IsThatOfTheNamedSensor) {
    WritePlain("[Settings]\nSerialId=S1\n");
    EXPECT_EQ(Hash("S2"), Sha256Of(std::string("S2")));
    EXPECT_EQ(Hash("S3"), std::nullopt);
}

TEST_F(SensorProfileTest, IsElseThatWhichThePlainOneNames) {
    WritePlain("[Settings]\nSerialId=S1\n");
    EXPECT_EQ(Hash(""), Sha256Of(std::string("S1")));
    WritePlain("[Settings]\nSerialId=S3\n");
    EXPECT_EQ(Hash(""), std::nullopt);
}

TEST_F(SensorProfileTest, IsElseThePlainOne) {
    EXPECT_EQ(Hash(""), std::nullopt);
    const std::string plain = "[Settings]\nRotation=1\n";
    WritePlain(plain);
    EXPECT_EQ(Hash(""), Sha256Of(plain));
}

TEST_F(SensorProfileTest, ThatCannotBeReadIsAnError) {
    fs::create_directory(folder_.Path() / "Brindmap.ini");
    EXPECT_THROW(static_cast<void>(Hash("")), InputError);
}

}  // namespace
}  // namespace vastrelline
