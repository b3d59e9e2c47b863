// What the user changes counts at once; the files follow, written by a thread of their own.

#include "VornicCore/board/BoardJson.h"
#include "tests/support/ModelFixture.h"
#include "tests/support/SmallDisk.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>
#include <sys/syscall.h>

#include <atomic>

namespace {

thread_local bool isMain = false;
std::atomic<int> waitsOfMain{0};
std::atomic<int> waitsOfOthers{0};

} // namespace

/// Takes the place of the C library's in this program: counts who waits for the disk.
extern "C" int fsync(int descriptor) {
    ++(isMain ? waitsOfMain : waitsOfOthers);
    return static_cast<int>(syscall(SYS_fsync, descriptor));
}

namespace vornic {
namespace {

using namespace std::chrono_literals;

class FilesFollowTest : public ModelFixture {
  protected:
    void SetUp() override {
        start();
        model->newBoard();
        ASSERT_EQ(written(), "");
        isMain = true;
        waitsOfMain = 0;
        waitsOfOthers = 0;
    }
    void TearDown() override { isMain = false; }

    /// Waits until the disk has everything; what it would not take.
    std::string written() {
        std::optional<std::string> problem;
        model->whenWritten([&](const std::string& text) { problem = text; });
        EXPECT_TRUE(eventually([&] { return problem.has_value(); }));
        return problem.value_or("nothing came back");
    }
    std::filesystem::path boardFile() const {
        return scratch / ("data/Boards/" + model->board()->id + ".json");
    }
    double volumeOnDisk() const {
        return nlohmann::json::parse(readBytes(scratch / "config/settings.json"))
            .value("volume", -1.0);
    }
    double rattleOnDisk() const { return decodeBoard(readBytes(boardFile())).stabs.rattle; }
    void drag(double rattle) {
        model->edit([&](Board& board) { board.stabs.rattle = rattle; });
        model->setVolume(rattle);
    }
};

TEST_F(FilesFollowTest, theMainThreadNeverWaitsForTheDiskWhileASliderIsDragged) {
    for (int step = 1; step <= 100; ++step) {
        drag(step / 100.0);
        scheduler.advance(16ms);
    }
    EXPECT_EQ(model->board()->stabs.rattle, 1.0) << "it counts at once";
    EXPECT_EQ(written(), "");
    EXPECT_EQ(waitsOfMain, 0);
    EXPECT_GT(waitsOfOthers, 0) << "or nothing was counted";
    EXPECT_LT(waitsOfOthers, 50) << "five times in these 1.6 s, two files, each with its folder";
    EXPECT_EQ(rattleOnDisk(), 1.0);
    EXPECT_EQ(volumeOnDisk(), 1.0);
}

TEST_F(FilesFollowTest, theFilesFollowWithinAThirdOfASecondOfTheFirstChange) {
    drag(0.25);
    scheduler.advance(299ms);
    EXPECT_EQ(waitsOfOthers, 0);
    scheduler.advance(1ms);
    EXPECT_TRUE(eventually([&] { return rattleOnDisk() == 0.25 && volumeOnDisk() == 0.25; }));
}

TEST_F(FilesFollowTest, aChangeOfBoardWritesWhatWaited) {
    drag(0.25);
    const std::filesystem::path file = boardFile();
    ASSERT_TRUE(model->selectBoard("spring"));
    EXPECT_TRUE(eventually([&] {
        return decodeBoard(readBytes(file)).stabs.rattle == 0.25 && volumeOnDisk() == 0.25;
    }));
}

TEST_F(FilesFollowTest, whatIsWaitedForIsOnTheDisk) {
    drag(0.5);
    EXPECT_EQ(written(), "");
    EXPECT_EQ(rattleOnDisk(), 0.5);
    EXPECT_EQ(volumeOnDisk(), 0.5);
    EXPECT_EQ(waitsOfMain, 0);
}

TEST_F(FilesFollowTest, aBoardThatIsDeletedTakesItsFileAlong) {
    drag(0.5);
    const std::filesystem::path file = boardFile();
    model->deleteBoard();
    EXPECT_EQ(written(), "");
    EXPECT_FALSE(std::filesystem::exists(file));
    EXPECT_EQ(waitsOfMain, 0);
}

TEST_F(FilesFollowTest, whatTheDiskWouldNotTakeIsSaidAndTriedAgain) {
    drag(0.5);
    {
        const SmallDisk disk(10);
        EXPECT_THAT(written(), testing::HasSubstr("File too large"));
        EXPECT_TRUE(eventually([&] { return model->lastError().has_value(); }));
    }
    EXPECT_EQ(written(), "");
    EXPECT_EQ(rattleOnDisk(), 0.5);
    EXPECT_EQ(volumeOnDisk(), 0.5);
}

TEST_F(FilesFollowTest, theEndWritesWhatWaited) {
    drag(0.75);
    const std::filesystem::path file = boardFile();
    model.reset();
    EXPECT_EQ(decodeBoard(readBytes(file)).stabs.rattle, 0.75);
    EXPECT_EQ(volumeOnDisk(), 0.75);
}

} // namespace
} // namespace vornic
