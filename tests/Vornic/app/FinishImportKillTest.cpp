// Whenever the program is killed while it keeps a recording, nothing that the user had before is
// lost, and what is there is whole.

#include "VornicCore/base/SplitMix64.h"
#include "tests/support/ModelFixture.h"
#include "tests/support/TypingNoise.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <set>

namespace vornic {
namespace {

using ::testing::IsEmpty;
using ::testing::IsSupersetOf;

class FinishImportKillTest : public ModelFixture {
  protected:
    /// What the user has.
    struct Belongings {
        std::set<std::string> samples;
        /// Names of the sounds of the user's boards.
        std::multiset<std::string> sounds;
    };

    /// In a process of its own, which is stopped before and after: keeps a recording.
    [[noreturn]] void keepRecording() {
        if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0 || !startToPlay()) {
            _exit(1);
        }
        if (!openSession(TypingNoise(2, 48000, 1e-4F).hit(0.3, 0.4F).hit(1, 0.6F).samples(),
                         "My keyboard")) {
            _exit(1);
        }
        raise(SIGSTOP);
        const bool kept = model->finishImport().has_value();
        bool written = false;
        model->whenWritten([&](const std::string& problem) { written = problem.empty(); });
        eventually([&] { return written; });
        raise(SIGSTOP);
        _exit(kept ? 0 : 1);
    }

    /// Lets another process keep a recording and kills it at its system call `last`, counting the
    /// beginning and the end of each; how many there were until then.
    int keepAndKill(int last) {
        const pid_t child = fork();
        if (child == 0) {
            keepRecording();
        }
        int status = 0;
        EXPECT_EQ(waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFSTOPPED(status) && WSTOPSIG(status) == SIGSTOP);
        ptrace(PTRACE_SETOPTIONS, child, 0, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL);
        constexpr int systemCall = SIGTRAP | 0x80;
        int calls = 0;
        while (calls < last && ptrace(PTRACE_SYSCALL, child, nullptr, nullptr) == 0 &&
               waitpid(child, &status, 0) == child && WIFSTOPPED(status) &&
               WSTOPSIG(status) != SIGSTOP) {
            calls += WSTOPSIG(status) == systemCall ? 1 : 0;
        }
        kill(child, SIGKILL);
        while (waitpid(child, &status, 0) == child && !WIFSIGNALED(status)) {
        }
        EXPECT_TRUE(WIFSIGNALED(status));
        return calls;
    }

    /// What the next start of the program finds.
    Belongings findAll() const {
        Belongings all;
        const std::vector<SoundPack> packs = SoundPack::all(options().packs);
        const SampleLibrary library(packs, options().samples);
        for (const SampleInfo& info : UserSampleFolder(options().samples).listed()) {
            // Listed means whole: the file is there and can be read.
            EXPECT_TRUE(library.samples(info.id)) << info.id;
            all.samples.insert(info.id);
        }
        EXPECT_FALSE(std::filesystem::exists(options().samples / "index-damaged-1.json"));
        const BoardStore store(packs, options().boards);
        EXPECT_THAT(store.problems(), IsEmpty());
        EXPECT_THAT(SettingsFile(options().settingsFile).problems(), IsEmpty());
        for (const Board& board : store.mine()) {
            for (const SoundSpec& sound : board.sounds) {
                all.sounds.insert(board.id + sound.id);
                for (const LayerSpec& layer : sound.press.layers) {
                    for (const std::string& sample : layer.samples) {
                        EXPECT_TRUE(library.samples(sample)) << sound.name << " lacks " << sample;
                    }
                }
            }
        }
        return all;
    }
};

TEST_F(FinishImportKillTest, nothingEarlierIsLostAndEverythingIsWhole) {
    constexpr int never = 1'000'000;
    // The first one copies the built-in board, the others add to the copy.
    ASSERT_GT(keepAndKill(never), 0);
    const int calls = keepAndKill(never);
    Belongings before = findAll();
    ASSERT_EQ(before.samples.size(), 4U);

    constexpr int attempts = 40;
    // Two files, the index, the board and the settings, each written beside and renamed.
    ASSERT_GT(calls, 2 * attempts);
    SplitMix64 random(1);
    int unfinished = 0;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        // One moment in each fortieth of the whole.
        const int from = calls * attempt / attempts;
        const int to = calls * (attempt + 1) / attempts;
        const int last =
            from + 1 + static_cast<int>(random.next(static_cast<std::uint64_t>(to - from)));
        keepAndKill(last);
        const Belongings after = findAll();
        EXPECT_THAT(after.samples, IsSupersetOf(before.samples)) << "killed at " << last;
        EXPECT_THAT(after.sounds, IsSupersetOf(before.sounds)) << "killed at " << last;
        unfinished += after.sounds.size() == before.sounds.size() ? 1 : 0;
        before = after;
    }
    // Some were early enough that the sound is not there. How many calls it takes differs from time
    // to time, since they wait for other threads: one that nobody kills is there in the end.
    EXPECT_GT(unfinished, 0);
    keepAndKill(never);
    EXPECT_GT(findAll().sounds.size(), before.sounds.size());
}

} // namespace
} // namespace vornic
