#include "Vornic/qt/QtProgram.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <optional>

namespace vornic {
namespace {

struct Ending {
    int status;
    std::string complaint;
};

class QtProgramTest : public ::testing::Test {
  protected:
    std::optional<Ending> endOf(const std::vector<std::string>& command) {
        startProgram(command, [this](int status, const std::string& complaint) {
            ending = {status, complaint};
        });
        QElapsedTimer timer;
        timer.start();
        while (!ending && timer.elapsed() < 10'000) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);
        }
        return ending;
    }

    int count = 1;
    char name[5] = "test";
    char* arguments[2] = {name, nullptr};
    QCoreApplication application{count, arguments};
    std::optional<Ending> ending;
};

TEST_F(QtProgramTest, tellsHowAProgramEndedAndWhatItComplainedAbout) {
    const auto end = endOf({"/bin/sh", "-c", "echo \"$1\" >&2; exit 3", "sh", "two words"});
    ASSERT_TRUE(end);
    EXPECT_EQ(end->status, 3);
    EXPECT_EQ(end->complaint, "two words");
}

TEST_F(QtProgramTest, aProgramThatIsNotThereEndsAtOnce) {
    const auto end = endOf({"/no/such/program"});
    ASSERT_TRUE(end);
    EXPECT_EQ(end->status, -1);
}

TEST_F(QtProgramTest, aProgramThatIsKilledHasNoStatus) {
    const auto end = endOf({"/bin/sh", "-c", "kill -KILL $$"});
    ASSERT_TRUE(end);
    EXPECT_EQ(end->status, -1);
}

TEST(QtProgram, whatStillRunsAtTheEndIsEndedAndNobodyIsTold) {
    bool told = false;
    QElapsedTimer timer;
    {
        int count = 1;
        char name[] = "test";
        char* arguments[] = {name, nullptr};
        QCoreApplication application(count, arguments);
        startProgram({"/bin/sleep", "60"}, [&told](int, const std::string&) { told = true; });
        QCoreApplication::processEvents();
        timer.start();
        QMetaObject::invokeMethod(&application, &QCoreApplication::quit, Qt::QueuedConnection);
        QCoreApplication::exec();
    }
    EXPECT_FALSE(told);
    EXPECT_LT(timer.elapsed(), 10'000);
}

} // namespace
} // namespace vornic
