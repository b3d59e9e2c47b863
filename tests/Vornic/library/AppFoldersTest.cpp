#include "Vornic/library/AppFolders.h"

#include "tests/support/Environment.h"
#include "tests/support/ScratchFolder.h"

#include <gtest/gtest.h>

namespace vornic {
namespace {

namespace fs = std::filesystem;

TEST(AppFolders, areInTheFoldersThatTheSessionNames) {
    const ScratchFolder scratch;
    const Environment data("XDG_DATA_HOME");
    const Environment config("XDG_CONFIG_HOME");
    data.set((scratch / "data").string());
    config.set((scratch / "config").string());
    EXPECT_EQ(AppFolders::folder("Boards"), scratch / "data/Vornic/Boards");
    EXPECT_TRUE(fs::is_directory(scratch / "data/Vornic/Boards"));
    EXPECT_EQ(AppFolders::settingsFile(), scratch / "config/Vornic/settings.json");
    EXPECT_EQ(AppFolders::autostartEntry(), scratch / "config/autostart/vornic.desktop");
    EXPECT_FALSE(fs::exists(scratch / "config"));
}

TEST(AppFolders, areInTheHomeFolderWhereTheSessionNamesNoneOrARelativeOne) {
    const ScratchFolder scratch;
    const Environment data("XDG_DATA_HOME");
    const Environment config("XDG_CONFIG_HOME");
    const Environment home("HOME");
    home.set(scratch.path().string());
    data.unset();
    config.set("not/absolute");
    EXPECT_EQ(AppFolders::support(), scratch / ".local/share/Vornic");
    EXPECT_TRUE(fs::is_directory(AppFolders::support()));
    EXPECT_EQ(AppFolders::settingsFile(), scratch / ".config/Vornic/settings.json");
}

TEST(AppFolders, areTheUsersAloneAlsoThoseFromBefore) {
    const ScratchFolder scratch;
    const Environment data("XDG_DATA_HOME");
    const Environment config("XDG_CONFIG_HOME");
    data.set((scratch / "data").string());
    config.set((scratch / "config").string());
    for (const char* const folder : {"data/Vornic/Boards", "config/Vornic"}) {
        fs::create_directories(scratch / folder);
        fs::permissions(scratch / folder, fs::perms::all);
    }
    AppFolders::folder("Boards");
    AppFolders::folder("Samples");
    AppFolders::settingsFile();
    for (const char* const folder :
         {"data/Vornic", "data/Vornic/Boards", "data/Vornic/Samples", "config/Vornic"}) {
        EXPECT_EQ(fs::status(scratch / folder).permissions(), fs::perms::owner_all) << folder;
    }
}

} // namespace
} // namespace vornic
