#include "Vornic/linux/permission/InputMonitoringRequest.h"

#include "tests/support/ScratchFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>

namespace vornic {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

struct Answer {
    PermissionAnswer answer;
    std::string message;
};

struct InputMonitoringRequestTest : ::testing::Test {
    InputMonitoringRequestTest() {
        namespace fs = std::filesystem;
        fs::create_directory(helper().parent_path());
        std::ofstream(helper()) << "helper";
        for (const fs::path& path : {helper(), helper().parent_path()}) {
            fs::permissions(path, fs::perms::owner_all);
        }
    }

    std::filesystem::path helper() const { return scratch / "lib" / "vornic-input-monitoring"; }

    std::filesystem::path agreement() const { return scratch / "input-monitoring"; }

    PermissionRequest::Done take() {
        return [this](PermissionAnswer answer, const std::string& message) {
            answers.push_back({answer, message});
        };
    }

    /// The answer to a request whose program ended so.
    Answer requestEndingWith(int status, const std::string& complaint = {}) {
        request.request(take());
        ended(status, complaint);
        return answers.back();
    }

    ScratchFolder scratch;
    std::vector<std::vector<std::string>> commands;
    InputMonitoringRequest::Ended ended;
    std::vector<Answer> answers;
    InputMonitoringRequest request{
        helper(),
        [this](const std::vector<std::string>& command, InputMonitoringRequest::Ended whenEnded) {
            commands.push_back(command);
            ended = std::move(whenEnded);
        },
        {.readerSocket = scratch / "keys",
         .readerAgreement = scratch / "key-reader",
         .agreement = agreement()},
        ::getuid()};
};

TEST_F(InputMonitoringRequestTest, asksPolkitToRunTheHelper) {
    EXPECT_TRUE(request.possible());
    const Answer answer = requestEndingWith(0);
    EXPECT_EQ(answer.answer, PermissionAnswer::granted);
    EXPECT_EQ(answer.message, "");
    EXPECT_THAT(commands, ElementsAre(ElementsAre("pkexec", helper().string(), "enable")));
    request.revoke(take());
    ended(0, {});
    EXPECT_THAT(commands.back(), ElementsAre("pkexec", helper().string(), "disable"));
}

TEST_F(InputMonitoringRequestTest, mayBeDeclinedAndTriedAgain) {
    const Answer dismissed = requestEndingWith(126);
    EXPECT_EQ(dismissed.answer, PermissionAnswer::declined);
    EXPECT_THAT(dismissed.message, HasSubstr("try again"));
    EXPECT_EQ(requestEndingWith(127).answer, PermissionAnswer::declined);
    EXPECT_EQ(requestEndingWith(0).answer, PermissionAnswer::granted);
    EXPECT_EQ(commands.size(), 3U);
}

TEST_F(InputMonitoringRequestTest, saysWhatWentWrong) {
    const Answer failed = requestEndingWith(1, "The device manager did not answer.");
    EXPECT_EQ(failed.answer, PermissionAnswer::failed);
    EXPECT_EQ(failed.message, "The device manager did not answer.");
    EXPECT_FALSE(requestEndingWith(1).message.empty());
    const Answer missing = requestEndingWith(-1);
    EXPECT_EQ(missing.answer, PermissionAnswer::failed);
    EXPECT_THAT(missing.message, HasSubstr("pkexec"));
}

TEST_F(InputMonitoringRequestTest, whereNobodyAsksForThePasswordTheCommandIsNamed) {
    const Answer nobody = requestEndingWith(
        127, "Error executing command as another user: No authentication agent found.");
    EXPECT_EQ(nobody.answer, PermissionAnswer::failed);
    EXPECT_THAT(nobody.message, HasSubstr("sudo " + helper().string() + " enable"));
}

TEST_F(InputMonitoringRequestTest, aRefusalOfWhomNobodyCouldAskIsNone) {
    std::optional<bool> agent = false;
    request.hasPasswordAgent = [&agent] { return agent; };
    const std::string refused = "Error executing command as another user: Not authorized";
    const Answer nobody = requestEndingWith(127, refused);
    EXPECT_EQ(nobody.answer, PermissionAnswer::failed);
    EXPECT_THAT(nobody.message, HasSubstr("sudo " + helper().string() + " enable"));
    agent = true;
    EXPECT_EQ(requestEndingWith(127, refused).answer, PermissionAnswer::declined);
    agent = std::nullopt;
    EXPECT_EQ(requestEndingWith(127, refused).answer, PermissionAnswer::declined);
}

TEST_F(InputMonitoringRequestTest, aSecondRequestWaitsForTheFirstOnesAnswer) {
    request.request(take());
    request.request(take());
    EXPECT_EQ(commands.size(), 1U);
    ended(126, {});
    ASSERT_EQ(answers.size(), 2U);
    EXPECT_EQ(answers[1].answer, PermissionAnswer::declined);
}

TEST_F(InputMonitoringRequestTest, theOppositeOfAnOpenQuestionIsRefused) {
    request.request(take());
    request.revoke(take());
    EXPECT_EQ(commands.size(), 1U);
    ASSERT_EQ(answers.size(), 1U);
    EXPECT_EQ(answers[0].answer, PermissionAnswer::failed);
    ended(0, {});
    EXPECT_EQ(answers.back().answer, PermissionAnswer::granted);
}

TEST_F(InputMonitoringRequestTest, anAnswerMayLeadToTheNextRequest) {
    request.request([this](PermissionAnswer, const std::string&) { request.request(take()); });
    const auto first = std::move(ended);
    first(126, {});
    EXPECT_EQ(commands.size(), 2U);
    ended(0, {});
    ASSERT_EQ(answers.size(), 1U);
    EXPECT_EQ(answers[0].answer, PermissionAnswer::granted);
}

TEST_F(InputMonitoringRequestTest, withoutTheHelperThereIsNothingToAsk) {
    std::filesystem::remove(helper());
    EXPECT_FALSE(request.possible());
    request.request(take());
    EXPECT_TRUE(commands.empty());
    ASSERT_EQ(answers.size(), 1U);
    EXPECT_EQ(answers[0].answer, PermissionAnswer::failed);
}

TEST_F(InputMonitoringRequestTest, aHelperThatOthersCouldReplaceIsNotAskedFor) {
    namespace fs = std::filesystem;
    fs::permissions(helper(), fs::perms::others_write, fs::perm_options::add);
    EXPECT_FALSE(request.possible());
    fs::permissions(helper(), fs::perms::others_write, fs::perm_options::remove);
    EXPECT_TRUE(request.possible());
    fs::permissions(helper().parent_path(), fs::perms::group_write, fs::perm_options::add);
    EXPECT_FALSE(request.possible());
    fs::permissions(helper().parent_path(), fs::perms::group_write, fs::perm_options::remove);
    const InputMonitoringRequest someoneElses(helper(), {}, {}, ::getuid() + 1);
    EXPECT_FALSE(someoneElses.possible());
}

TEST_F(InputMonitoringRequestTest, saysWhatIsReadWhoElseGainsAndHowToTakeItBack) {
    std::string text;
    for (const PermissionRequest::Point& point : request.explanation()) {
        text.append(point.heading).append("\n").append(point.text).append("\n");
    }
    EXPECT_THAT(text, HasSubstr(agreement().string()));
    EXPECT_THAT(text, HasSubstr("What it reads\n"));
    EXPECT_THAT(text, HasSubstr("What never happens\n"));
    EXPECT_THAT(text, HasSubstr("Every program"));
    EXPECT_THAT(text, HasSubstr("passwords"));
    EXPECT_THAT(text, HasSubstr("type keys of its own"));
    EXPECT_THAT(text, HasSubstr("How to take it back\n"));
    EXPECT_THAT(text, HasSubstr("keeps it until that program ends"));
    EXPECT_THAT(text, HasSubstr("pkexec " + helper().string() + " disable"));
}

TEST_F(InputMonitoringRequestTest, withTheKeyReaderItSaysThatNobodyElseGains) {
    std::ofstream(scratch / "keys") << "a socket";
    std::string text;
    for (const PermissionRequest::Point& point : request.explanation()) {
        text.append(point.heading).append("\n").append(point.text).append("\n");
    }
    EXPECT_THAT(text, HasSubstr("No other program"));
    EXPECT_THAT(text, HasSubstr("breaking into Vornic"));
    EXPECT_THAT(text, HasSubstr("/etc/polkit-1/rules.d/50-vornic.rules"));
    EXPECT_THAT(text, HasSubstr((scratch / "key-reader").string()));
    EXPECT_THAT(text, ::testing::Not(HasSubstr("Every program")));
    EXPECT_FALSE(request.granted());
    std::ofstream(agreement()) << "agreed to something else";
    EXPECT_FALSE(request.granted());
    std::ofstream(scratch / "key-reader") << "agreed";
    EXPECT_TRUE(request.granted());
}

TEST_F(InputMonitoringRequestTest, isGrantedWhileTheAgreementIsThere) {
    EXPECT_FALSE(request.granted());
    std::ofstream(agreement()) << "agreed";
    EXPECT_TRUE(request.granted());
    std::filesystem::remove(agreement());
    EXPECT_FALSE(request.granted());
}

TEST(InputMonitoringRequest, theHelperLiesWhereThePackagePutsIt) {
    EXPECT_EQ(InputMonitoringRequest::helperOf("/usr/bin/vornic"),
              "/usr/lib/vornic/vornic-input-monitoring");
}

} // namespace
} // namespace vornic
