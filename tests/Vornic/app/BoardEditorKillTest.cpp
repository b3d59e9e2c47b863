// Whenever the program is killed, the user's boards and settings are whole and hold the last edit
// that was done.

#include "Vornic/app/BoardEditor.h"
#include "Vornic/app/SettingsFile.h"
#include "VornicCore/base/SplitMix64.h"
#include "tests/support/ClickPack.h"
#include "tests/support/ManualClock.h"
#include "tests/support/ScratchFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cmath>
#include <csignal>
#include <thread>

namespace vornic {
namespace {

using ::testing::IsEmpty;

class BoardEditorKillTest : public ::testing::Test {
  protected:
    BoardEditorKillTest() {
        writeClickPack(scratch / "Packs");
        packs = SoundPack::all(scratch / "Packs");
    }

    /// Edits for ever, in a process of its own; tells through `done` how many edits it has done.
    [[noreturn]] void editForEver(int done) const {
        BoardStore store(packs, scratch / "Boards");
        SettingsFile settings(scratch / "settings.json");
        const ManualClock clock;
        BoardEditor editor(store, clock, {});
        editor.select("spring");
        for (std::int32_t count = 1;; ++count) {
            editor.edit([count](Board& board) { board.stabs.rattle = count; });
            Settings changed = settings.settings();
            changed.board = editor.board()->id;
            changed.volume = count / 1e6; // within its range
            settings.set(changed);
            if (settings.write() || write(done, &count, sizeof count) != sizeof count) {
                _exit(1);
            }
        }
    }

    /// Kills the editing process after some edits; how many it had told of.
    std::int32_t killAfter(std::int32_t edits, std::chrono::microseconds more) const {
        int ends[2] = {-1, -1};
        EXPECT_EQ(pipe(ends), 0);
        const pid_t child = fork();
        if (child == 0) {
            editForEver(ends[1]);
        }
        close(ends[1]);
        std::int32_t told = 0;
        while (told < edits && read(ends[0], &told, sizeof told) == sizeof told) {
        }
        // Anywhere within the next edit: that is the point, so there is nothing to wait for.
        std::this_thread::sleep_for(more);
        kill(child, SIGKILL);
        while (read(ends[0], &told, sizeof told) == sizeof told) {
        }
        close(ends[0]);
        int status = 0;
        waitpid(child, &status, 0);
        EXPECT_TRUE(WIFSIGNALED(status));
        return told;
    }

    ScratchFolder scratch;
    std::vector<SoundPack> packs;
};

TEST_F(BoardEditorKillTest, theLastEditIsThereAndWhole) {
    SplitMix64 random(1);
    for (int attempt = 0; attempt < 25; ++attempt) {
        std::filesystem::remove_all(scratch / "Boards");
        std::filesystem::remove(scratch / "settings.json");
        const std::int32_t told = killAfter(1 + static_cast<std::int32_t>(random.next(5)),
                                            std::chrono::microseconds(random.next(20'000)));
        ASSERT_GE(told, 1);
        const BoardStore store(packs, scratch / "Boards");
        const SettingsFile settings(scratch / "settings.json");
        EXPECT_THAT(store.problems(), IsEmpty());
        EXPECT_THAT(settings.problems(), IsEmpty());
        ASSERT_EQ(store.mine().size(), 1U);
        EXPECT_EQ(store.mine().front().id, settings.settings().board);
        EXPECT_GE(store.mine().front().stabs.rattle, told);
        EXPECT_LE(store.mine().front().stabs.rattle, told + 1);
        EXPECT_GE(std::lround(settings.settings().volume * 1e6), told);
        // What the cut-off write has left is gone with the next start.
        EXPECT_EQ(std::distance(std::filesystem::directory_iterator(scratch / "Boards"), {}), 1);
    }
}

} // namespace
} // namespace vornic
