#include "Vornic/library/AppFolders.h"

#include "tests/support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace vornic {
namespace {

namespace fs = std::filesystem;

/// Gives the environment back as it was.
class Environment {
  public:
    explicit Environment(const char* name) : name_(name) {
        if (const char* const value = std::getenv(name)) {
            former_ = value;
            was_ = true;
        }
    }
    ~Environment() {
        if (was_) {
            setenv(name_, former_.c_str(), 1);
        } else {
            unsetenv(name_);
        }
    }
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;

    void set(const std::string& value) const { setenv(name_, value.c_str(), 1); }
    void unset() const { unsetenv(name_); }

  private:
    const char* name_;
    std::string former_;
    bool was_ = false;
};

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

} // namespace
} // namespace vornic
