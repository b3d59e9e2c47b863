#include "Vornic/linux/desktop/AutostartEntry.h"

#include "tests/support/ScratchFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vornic {
namespace {

using ::testing::HasSubstr;

class AutostartEntryTest : public ::testing::Test {
  protected:
    ScratchFolder scratch;
    std::filesystem::path entry = scratch / "config/autostart/vornic.desktop";
    AutostartEntry autostart{entry, "/opt/vornic/bin/vornic"};
};

TEST_F(AutostartEntryTest, isOffUntilTheUserTurnsItOn) {
    EXPECT_FALSE(autostart.enabled());
    EXPECT_FALSE(autostart.setEnabled(true));
    EXPECT_TRUE(autostart.enabled());
    EXPECT_THAT(readBytes(entry), HasSubstr("\nExec=\"/opt/vornic/bin/vornic\"\n"));
    EXPECT_FALSE(autostart.setEnabled(false));
    EXPECT_FALSE(autostart.enabled());
    EXPECT_FALSE(std::filesystem::exists(entry));
    EXPECT_FALSE(autostart.setEnabled(false));
}

TEST_F(AutostartEntryTest, believesWhatTheDesktopHasSwitchedOff) {
    autostart.setEnabled(true);
    const std::string text = readBytes(entry);
    scratch.write("config/autostart/vornic.desktop", text + "Hidden=true\n");
    EXPECT_FALSE(autostart.enabled());
    std::string gnome = text;
    gnome.replace(gnome.find("enabled=true"), 12, "enabled=false");
    scratch.write("config/autostart/vornic.desktop", gnome);
    EXPECT_FALSE(autostart.enabled());
    EXPECT_FALSE(autostart.setEnabled(true));
    EXPECT_TRUE(autostart.enabled());
}

TEST_F(AutostartEntryTest, aPathMayHoldAnyCharacter) {
    AutostartEntry strange(entry, R"(/a b/100%/"x"/$y/`z`/\w)");
    strange.setEnabled(true);
    EXPECT_THAT(readBytes(entry), HasSubstr(R"(Exec="/a b/100%%/\\"x\\"/\\$y/\\`z\\`/\\\\w")"));
}

TEST_F(AutostartEntryTest, saysWhyItCannotBeTurnedOn) {
    scratch.write("config", "a file where the folder should be");
    EXPECT_EQ(autostart.setEnabled(true), std::errc::not_a_directory);
    EXPECT_FALSE(autostart.enabled());
}

} // namespace
} // namespace vornic
