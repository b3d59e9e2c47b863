#include "Vornic/linux/permission/InputMonitoringSwitch.h"

#include "Vornic/linux/permission/KeyGrant.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <map>

namespace vornic {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

/// A computer in memory that writes down what is done to it.
class FakeSystem final : public SystemChanges {
  public:
    std::map<std::string, std::string> files;
    bool readOnly = false;
    bool deviceManagerAnswers = true;
    std::vector<std::string> done;

    bool exists(const std::filesystem::path& path) const override {
        return files.contains(path.string());
    }
    bool write(const std::filesystem::path& path, const std::string& text) override {
        if (!readOnly) {
            files[path.string()] = text;
            done.push_back("write " + path.string());
        }
        return !readOnly;
    }
    bool remove(const std::filesystem::path& path) override {
        if (!readOnly) {
            files.erase(path.string());
            done.push_back("remove " + path.string());
        }
        return !files.contains(path.string());
    }
    bool run(const std::vector<std::string>& command) override {
        done.push_back(command.at(0) + " " + command.at(1));
        return deviceManagerAnswers;
    }
    std::vector<std::string> keyboards() const override {
        return {"/dev/input/event3", "/dev/input/event7"};
    }
    void dropUsers(const std::string& node) override { done.push_back("drop " + node); }
};

struct InputMonitoringSwitchTest : ::testing::Test {
    InputMonitoringSwitchTest() { system.files[InputMonitoringFiles::rules.front()] = "a rule"; }
    FakeSystem system;
    InputMonitoringSwitch monitoring{system};
};

TEST_F(InputMonitoringSwitchTest, onMakesOneFileAndAppliesTheRule) {
    EXPECT_EQ(monitoring.enable(), "");
    EXPECT_THAT(system.done, ElementsAre("write /etc/vornic/input-monitoring", "udevadm control",
                                         "udevadm trigger"));
    EXPECT_THAT(system.files[InputMonitoringFiles::agreement], HasSubstr("remove this file"));
}

TEST_F(InputMonitoringSwitchTest, withTheKeyReaderOnlyPolkitIsTold) {
    system.files[InputMonitoringFiles::readerSocket] = "";
    EXPECT_EQ(monitoring.enable(), "");
    EXPECT_THAT(system.done, ElementsAre("write /etc/polkit-1/rules.d/50-vornic.rules",
                                         "write /etc/vornic/key-reader"));
    EXPECT_THAT(system.files[InputMonitoringFiles::readerRule],
                HasSubstr("action.id == \"org.vornic.Vornic.hear-keys\""));
    system.done.clear();
    EXPECT_EQ(monitoring.disable(), "");
    EXPECT_THAT(system.done, ::testing::IsSupersetOf(
                                 {std::string("remove /etc/polkit-1/rules.d/50-vornic.rules"),
                                  std::string("remove /etc/vornic/key-reader")}));
    EXPECT_FALSE(system.exists(InputMonitoringFiles::readerRule));
    EXPECT_FALSE(system.exists(InputMonitoringFiles::readerAgreement));
}

TEST_F(InputMonitoringSwitchTest, theKeyReaderReplacesTheRule) {
    ASSERT_EQ(monitoring.enable(), "");
    system.files[InputMonitoringFiles::readerSocket] = "";
    EXPECT_EQ(monitoring.enable(), "");
    EXPECT_FALSE(system.exists(InputMonitoringFiles::agreement));
    EXPECT_THAT(system.done, ::testing::Contains("drop /dev/input/event3"));
}

TEST_F(InputMonitoringSwitchTest, offWorksWithoutTheReaderThatItWasOnWith) {
    system.files[InputMonitoringFiles::readerSocket] = "";
    ASSERT_EQ(monitoring.enable(), "");
    system.files.erase(InputMonitoringFiles::readerSocket);
    EXPECT_EQ(monitoring.disable(), "");
    EXPECT_FALSE(system.exists(InputMonitoringFiles::readerRule));
}

TEST_F(InputMonitoringSwitchTest, onIsRefusedWithoutTheRule) {
    system.files.clear();
    EXPECT_THAT(monitoring.enable(), HasSubstr("not installed"));
    EXPECT_THAT(system.done, IsEmpty());
}

TEST_F(InputMonitoringSwitchTest, aRuleOfTheAdministratorsIsARuleToo) {
    system.files = {{"/etc/udev/rules.d/70-vornic.rules", "a rule"}};
    EXPECT_EQ(monitoring.enable(), "");
}

TEST_F(InputMonitoringSwitchTest, saysThatTheFileCannotBeWritten) {
    system.readOnly = true;
    EXPECT_THAT(monitoring.enable(), HasSubstr("/etc/vornic/input-monitoring"));
    EXPECT_THAT(system.done, IsEmpty());
}

TEST_F(InputMonitoringSwitchTest, offTakesTheFileAndTheOpenDoorsAway) {
    ASSERT_EQ(monitoring.enable(), "");
    system.done.clear();
    EXPECT_EQ(monitoring.disable(), "");
    EXPECT_FALSE(system.exists(InputMonitoringFiles::agreement));
    // The rules are applied last, so that another program's keep what they give.
    EXPECT_THAT(system.done,
                ElementsAre("remove /etc/vornic/input-monitoring", "drop /dev/input/event3",
                            "drop /dev/input/event7", "udevadm control", "udevadm trigger"));
}

TEST_F(InputMonitoringSwitchTest, offTwiceIsHarmless) {
    EXPECT_EQ(monitoring.disable(), "");
    EXPECT_EQ(monitoring.disable(), "");
}

TEST_F(InputMonitoringSwitchTest, offSaysThatTheFileIsStillThere) {
    ASSERT_EQ(monitoring.enable(), "");
    system.readOnly = true;
    EXPECT_THAT(monitoring.disable(), HasSubstr("could not be removed"));
}

TEST_F(InputMonitoringSwitchTest, aDeviceManagerThatDoesNotAnswerNeedsARestart) {
    system.deviceManagerAnswers = false;
    EXPECT_THAT(monitoring.enable(), HasSubstr("restart the computer"));
    EXPECT_THAT(monitoring.disable(), HasSubstr("restart the computer"));
}

TEST(InputMonitoringRule, looksForTheFileThatTheSwitchMakes) {
    std::ifstream stream(VORNIC_RULE);
    const std::string rule{std::istreambuf_iterator<char>(stream), {}};
    EXPECT_THAT(rule, HasSubstr(std::string("\nTEST!=\"") + InputMonitoringFiles::agreement +
                                "\", GOTO=\"vornic_end\"\n"));
    EXPECT_THAT(rule, HasSubstr("ENV{ID_INPUT_KEYBOARD}==\"1\", TAG+=\"uaccess\""));
    EXPECT_LT(rule.find("TEST!="), rule.find("TAG+="));
}

} // namespace
} // namespace vornic
