#include "Vornic/app/SettingsFile.h"

#include "tests/support/ScratchFolder.h"
#include "tests/support/SmallDisk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cstddef>
#include <fstream>
#include <limits>
#include <map>
#include <string>
#include <utility>

namespace vornic {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class SettingsFileTest : public ::testing::Test {
  protected:
    SettingsFile open() const { return SettingsFile(path); }
    static std::error_code change(SettingsFile& file, const Settings& settings) {
        file.set(settings);
        return file.write();
    }
    nlohmann::json written() const { return nlohmann::json::parse(readBytes(path)); }

    ScratchFolder scratch;
    std::filesystem::path path = scratch / "config/Vornic/settings.json";
};

TEST_F(SettingsFileTest, aFreshInstallationHasTheDefaultsAndNoFile) {
    const SettingsFile file = open();
    EXPECT_TRUE(file.settings().hearMyself);
    EXPECT_TRUE(file.settings().quietDuringCalls);
    EXPECT_FALSE(file.settings().advanced);
    EXPECT_EQ(file.settings().volume, 0.7);
    EXPECT_EQ(rawString(file.settings().outputKind), "auto");
    EXPECT_EQ(file.settings().board, "deep");
    EXPECT_EQ(file.settings().stage, StageSpec());
    EXPECT_THAT(file.settings().tweaks, IsEmpty());
    EXPECT_THAT(file.problems(), IsEmpty());
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(SettingsFileTest, everySettingIsThereAgainAtTheNextStart) {
    Settings settings;
    settings.hearMyself = false;
    settings.quietDuringCalls = false;
    settings.advanced = true;
    settings.volume = 0.25;
    settings.outputKind = OutputKind::headphones;
    settings.board = "mine-12345678";
    settings.stage.room = Room::wood;
    settings.tweaks["deep"] = {.deeper = 0.5, .crisper = -0.25, .feel = Feel::clicky};
    settings.tweaks["soft"] = {};
    SettingsFile file = open();
    EXPECT_FALSE(change(file, settings));
    EXPECT_EQ(open().settings(), settings);
}

TEST_F(SettingsFileTest, standsInTheFileUnderTheAgreedKeysAndTypes) {
    Settings settings;
    settings.hearMyself = false;
    settings.volume = 0.5;
    settings.outputKind = OutputKind::speakers;
    settings.board = "soft";
    settings.stage.placement = Placement::close;
    settings.tweaks["deep"] = {.deeper = 1, .crisper = 0, .feel = Feel::tactile};
    SettingsFile file = open();
    change(file, settings);
    EXPECT_EQ(written(), nlohmann::json::parse(R"({
        "hearMyself": false, "volume": 0.5, "outputKind": "speakers", "board": "soft",
        "stage": {"placement": "close", "distance": 0.0, "width": 1.0, "room": "desk",
                  "deskMat": false},
        "tweaks": {"deep": {"deeper": 1.0, "crisper": 0.0, "feel": "tactile"}}})"));
}

/// The table of settings in the description of the formats: the default by key, as it stands there.
std::map<std::string, std::string> describedSettings() {
    std::ifstream formats(VORNIC_FORMATS);
    std::map<std::string, std::string> described;
    bool inside = false;
    for (std::string line; std::getline(formats, line);) {
        if (line.starts_with("## ")) {
            inside = line == "## Settings";
        } else if (inside && line.starts_with("| `")) {
            const std::size_t last = line.rfind(" | ");
            const std::string rest = line.substr(last + 3);
            described[line.substr(3, line.find('`', 3) - 3)] = rest.substr(0, rest.rfind(" |"));
        }
    }
    return described;
}

/// Changes a setting into something other than its default.
void alter(bool& value) {
    value = !value;
}
void alter(double& value) {
    value = 0.1;
}
void alter(std::string& value) {
    value = "other";
}
void alter(OutputKind& value) {
    value = OutputKind::speakers;
}
void alter(StageSpec& value) {
    value.width = 0.5;
}
void alter(TweaksByBoard& value) {
    value["deep"].deeper = 1;
}

struct Anything {
    template <typename T>
    operator T() const;
};

/// How many fields there are, by how many values initialise them.
template <std::size_t count = 0>
consteval std::size_t fieldsOfSettings() {
    constexpr bool more = []<std::size_t... place>(std::index_sequence<place...>) {
        return requires { Settings{(static_cast<void>(place), Anything())...}; };
    }(std::make_index_sequence<count + 1>());
    if constexpr (more) {
        return fieldsOfSettings<count + 1>();
    } else {
        return count;
    }
}

TEST_F(SettingsFileTest, isDescribedWithEveryKeyAndItsDefault) {
    Settings settings;
    std::size_t count = 0;
    forEachSetting([&](const char*, auto setting) {
        alter(settings.*setting);
        ++count;
    });
    EXPECT_EQ(count, fieldsOfSettings()) << "a setting that is not kept";
    SettingsFile file = open();
    file.set(settings);
    ASSERT_FALSE(change(file, Settings()));
    const nlohmann::json defaults = written();
    const std::map<std::string, std::string> described = describedSettings();
    EXPECT_EQ(described.size(), count);
    EXPECT_EQ(defaults.size(), count);
    for (const auto& [key, value] : defaults.items()) {
        ASSERT_TRUE(described.contains(key)) << key << " is not described";
        const std::string& text = described.at(key);
        // Larger ones are described in words.
        if (!value.is_structured()) {
            EXPECT_EQ(text, value.dump()) << key;
        }
    }
}

TEST_F(SettingsFileTest, whatWasNeverChangedHasNoEntry) {
    SettingsFile file = open();
    Settings settings = file.settings();
    EXPECT_FALSE(change(file, settings));
    EXPECT_FALSE(std::filesystem::exists(path));
    settings.volume = 1;
    EXPECT_FALSE(change(file, settings));
    EXPECT_EQ(written().size(), 1U);
}

TEST_F(SettingsFileTest, keepsKeysThatItDoesNotKnow) {
    scratch.write("config/Vornic/settings.json", R"({"later": {"a": [1, 2]}, "volume": 0.5})");
    SettingsFile file = open();
    Settings settings = file.settings();
    EXPECT_EQ(settings.volume, 0.5);
    settings.advanced = true;
    change(file, settings);
    EXPECT_EQ(written(), nlohmann::json::parse(
                             R"({"later": {"a": [1, 2]}, "volume": 0.5, "advanced": true})"));
}

TEST_F(SettingsFileTest, keepsWhatANewerVersionHasPutIntoASetting) {
    scratch.write("config/Vornic/settings.json",
                  R"({"stage": {"placement": "desk", "distance": 0, "width": 1, "room": "dry",
                      "deskMat": false, "later": 7}})");
    SettingsFile file = open();
    Settings settings = file.settings();
    settings.stage.room = Room::wood;
    change(file, settings);
    EXPECT_EQ(written()["stage"]["later"], 7);
    EXPECT_EQ(written()["stage"]["room"], "wood");
}

TEST_F(SettingsFileTest, keepsNoMoreThan64KiBThatItDoesNotKnow) {
    const nlohmann::json large{{"later", std::string(70'000, 'x')}, {"few", 1}, {"volume", 0.5}};
    scratch.write("config/Vornic/settings.json", large.dump());
    SettingsFile file = open();
    Settings settings = file.settings();
    EXPECT_EQ(settings.volume, 0.5);
    settings.advanced = true;
    change(file, settings);
    EXPECT_EQ(written(), nlohmann::json::parse(R"({"few": 1, "volume": 0.5, "advanced": true})"));
}

TEST_F(SettingsFileTest, aValueOfTheWrongKindCountsAsTheDefaultAndStaysUntilChanged) {
    scratch.write("config/Vornic/settings.json",
                  R"({"stage": {"placement": "moon"}, "tweaks": 5, "volume": 0.5})");
    SettingsFile file = open();
    EXPECT_EQ(file.settings().stage, StageSpec());
    EXPECT_THAT(file.settings().tweaks, IsEmpty());
    EXPECT_EQ(file.settings().volume, 0.5);
    EXPECT_THAT(file.problems(), ElementsAre(HasSubstr("stage.placement"), HasSubstr("tweaks")));
    Settings settings = file.settings();
    settings.tweaks["deep"] = {};
    change(file, settings);
    EXPECT_EQ(written()["stage"]["placement"], "moon");
    EXPECT_TRUE(written()["tweaks"].is_object());
}

TEST_F(SettingsFileTest, aValueOutsideItsRangeCountsAsTheNearestEndAndStaysUntilChanged) {
    scratch.write("config/Vornic/settings.json",
                  R"({"volume": 1e300, "stage": {"placement": "desk", "distance": -3,
                      "width": 7, "room": "dry", "deskMat": false},
                      "tweaks": {"deep": {"deeper": -9, "crisper": 9}}})");
    SettingsFile file = open();
    EXPECT_THAT(file.problems(), IsEmpty());
    Settings settings = file.settings();
    EXPECT_EQ(settings.volume, 1);
    EXPECT_EQ(settings.stage.distance, 0);
    EXPECT_EQ(settings.stage.width, 1);
    EXPECT_EQ(settings.tweaks["deep"], (SimpleTweaks{.deeper = -1, .crisper = 1}));
    settings.advanced = true;
    change(file, settings);
    EXPECT_EQ(written()["volume"], 1e300);
}

TEST_F(SettingsFileTest, aDamagedFileIsPutAsideByNameAndNeverOverwritten) {
    for (const char* const damage : {"{\"volume\": 0.", "[1, 2]", ""}) {
        SCOPED_TRACE(damage);
        const ScratchFolder folder;
        const auto file = folder.write("settings.json", damage);
        folder.write("settings.damaged.json", "an earlier one");
        SettingsFile damaged(file);
        EXPECT_EQ(damaged.settings(), Settings());
        EXPECT_THAT(damaged.problems(),
                    ElementsAre(AllOf(HasSubstr(file.string()),
                                      HasSubstr((folder / "settings.damaged-2.json").string()))));
        EXPECT_EQ(readBytes(folder / "settings.damaged-2.json"), damage);
        EXPECT_EQ(readBytes(folder / "settings.damaged.json"), "an earlier one");
        Settings settings;
        settings.volume = 0.1;
        EXPECT_FALSE(change(damaged, settings));
        EXPECT_EQ(SettingsFile(file).settings().volume, 0.1);
    }
}

TEST_F(SettingsFileTest, aDamagedFileThatCannotBePutAsideIsNotOverwrittenEither) {
    // There is no room in the name for another ending.
    const std::string name(std::string(245, 's') + ".json");
    const auto damaged = scratch.write(name, "[");
    SettingsFile file(damaged);
    EXPECT_THAT(file.problems(), ElementsAre(HasSubstr("left as they are")));
    Settings settings;
    settings.advanced = true;
    EXPECT_EQ(change(file, settings), std::errc::operation_not_permitted);
    EXPECT_TRUE(file.settings().advanced);
    EXPECT_EQ(readBytes(damaged), "[");
}

TEST_F(SettingsFileTest, aFolderInTheWayIsPutAsideToo) {
    scratch.write("config/Vornic/settings.json/inside", "kept");
    EXPECT_THAT(open().problems(), ElementsAre(HasSubstr("it is a folder")));
    EXPECT_EQ(readBytes(scratch / "config/Vornic/settings.damaged.json/inside"), "kept");
}

TEST_F(SettingsFileTest, nobodyElseCanReadIt) {
    using std::filesystem::perms;
    constexpr perms mine = perms::owner_read | perms::owner_write;
    SettingsFile file = open();
    Settings settings = file.settings();
    settings.advanced = true;
    EXPECT_FALSE(change(file, settings));
    EXPECT_EQ(std::filesystem::status(path).permissions(), mine);
    EXPECT_EQ(std::filesystem::status(path.parent_path()).permissions(), perms::owner_all);
    std::filesystem::permissions(path, mine | perms::others_read);
    open();
    EXPECT_EQ(std::filesystem::status(path).permissions(), mine) << "one from before is narrowed";
}

TEST_F(SettingsFileTest, aLinkToTheFileStaysALink) {
    const auto real = scratch.write("dotfiles/vornic.json", R"({"volume": 0.5})");
    std::filesystem::create_directories(path.parent_path());
    std::filesystem::create_symlink(real, path);
    SettingsFile file = open();
    Settings settings = file.settings();
    settings.volume = 0.25;
    EXPECT_FALSE(change(file, settings));
    EXPECT_TRUE(std::filesystem::is_symlink(path));
    EXPECT_EQ(SettingsFile(real).settings().volume, 0.25);
}

TEST_F(SettingsFileTest, aFullDiskIsReportedAndLosesNothing) {
    SettingsFile file = open();
    Settings settings = file.settings();
    settings.volume = 0.2;
    ASSERT_FALSE(change(file, settings));
    settings.volume = 0.9;
    {
        const SmallDisk disk(4);
        EXPECT_EQ(change(file, settings), std::errc::file_too_large);
    }
    EXPECT_EQ(file.settings().volume, 0.9);
    EXPECT_EQ(open().settings().volume, 0.2);
    settings.advanced = true;
    EXPECT_FALSE(change(file, settings));
    EXPECT_EQ(open().settings(), settings);
}

TEST_F(SettingsFileTest, aNumberThatNoFileHoldsIsReportedAndLosesNothing) {
    SettingsFile file = open();
    Settings settings;
    settings.advanced = true;
    change(file, settings);
    settings.volume = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(change(file, settings), std::errc::invalid_argument);
    EXPECT_TRUE(open().settings().advanced);
}

TEST_F(SettingsFileTest, whatIsSetWaitsToBeWritten) {
    SettingsFile file = open();
    Settings settings;
    settings.volume = 0.25;
    file.set(settings);
    EXPECT_TRUE(file.unwritten());
    EXPECT_EQ(file.settings().volume, 0.25);
    EXPECT_FALSE(std::filesystem::exists(path));
    EXPECT_FALSE(file.write());
    EXPECT_FALSE(file.unwritten());
    EXPECT_EQ(written()["volume"], 0.25);
}

TEST_F(SettingsFileTest, whatCouldNotBeWrittenIsTriedAgain) {
    SettingsFile file = open();
    Settings settings;
    settings.volume = 0.25;
    {
        const SmallDisk disk(10);
        EXPECT_EQ(change(file, settings), std::errc::file_too_large);
    }
    EXPECT_TRUE(file.unwritten());
    EXPECT_FALSE(file.write());
    EXPECT_EQ(written()["volume"], 0.25);
}

} // namespace
} // namespace vornic
